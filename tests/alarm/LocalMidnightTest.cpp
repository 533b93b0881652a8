// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// When days begin, against Qt: in zones of every kind of change, for all days from 1900 to 2100.

#include "alarm/LocalMidnight_p.h"
#include "alarm/TimeZone.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <string>

using namespace vn;

namespace {

int numberOf(const QDate &day)
{
    return day.year() * 10000 + day.month() * 100 + day.day();
}

/** A zone as part of a test's name. */
std::string nameOfZone(const testing::TestParamInfo<const char *> &zone)
{
    std::string name = zone.param ? zone.param : "that of the machine";
    for (char &c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    }
    return name;
}

} // namespace

class LocalMidnightsOf : public testing::TestWithParam<const char *>
{
};

TEST_P(LocalMidnightsOf, areThoseOfQt)
{
    const TimeZone zone(GetParam());
    internal::LocalMidnights midnights;
    const QDate last(2100, 12, 31);
    for (QDate day(1900, 1, 1); day <= last; day = day.addDays(1)) {
        const QDateTime start = day.startOfDay();
        const double milliseconds = midnights.milliseconds(numberOf(day));
        if (start.isValid()) {
            ASSERT_EQ(milliseconds, double(start.toMSecsSinceEpoch()))
                << qPrintable(day.toString(Qt::ISODate));
        } else {
            ASSERT_TRUE(std::isnan(milliseconds)) << qPrintable(day.toString(Qt::ISODate));
        }
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Zone, LocalMidnightsOf, testing::Values(
    nullptr,                  // that of the machine
    "UTC",
    "Europe/Berlin",          // changes in the night, not at midnight
    "America/Sao_Paulo",      // changes at midnight
    "Asia/Beirut",
    "America/Havana",
    "Asia/Tehran",            // changes at midnight, by another calendar
    "Africa/Casablanca",      // four changes a year
    "Africa/Cairo",
    "Australia/Lord_Howe",    // changes by half an hour
    "Asia/Kathmandu",         // quarters of an hour
    "Pacific/Chatham",
    "Pacific/Apia",           // loses a day
    "Pacific/Kwajalein",
    "Pacific/Kiritimati",     // farthest east
    "Etc/GMT+12",             // farthest west
    "America/Anchorage",
    "Antarctica/Troll",       // changes by two hours
    "Europe/Dublin",          // negative summer time
    "EAST-14",                // rules in the variable itself
    "STD5DST,M3.2.0/0,M11.1.0/0",
    "right/Europe/Berlin",    // counts leap seconds
    "No/Such_Zone"), nameOfZone);
// clang-format on

TEST(LocalMidnights, ofDaysThatDoNotExistAreNotANumber)
{
    const TimeZone zone("UTC");
    internal::LocalMidnights midnights;
    for (const int day : {0, 101, 20110229, 20101345, 20100501 + 31, 99999999})
        EXPECT_TRUE(std::isnan(midnights.milliseconds(day))) << day;
    EXPECT_EQ(midnights.milliseconds(20100501), 1272672000000.0);
}

TEST(LocalMidnights, followTheZoneAfterReset)
{
    internal::LocalMidnights midnights;
    const auto milliseconds = [&](const char *name) {
        const TimeZone zone(name);
        midnights.reset();
        return midnights.milliseconds(20100501);
    };
    EXPECT_EQ(milliseconds("UTC"), 1272672000000.0);
    EXPECT_EQ(milliseconds("EAST-2"), 1272672000000.0 - 7200000);
    EXPECT_EQ(milliseconds("UTC"), 1272672000000.0);
}
