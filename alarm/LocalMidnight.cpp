// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/LocalMidnight_p.h"

#include <QtCore/QDateTime>

#include <ctime>
#include <limits>
#include <optional>

namespace vn::internal {

namespace {

constexpr qint64 kSecondsOfHour = 3600;
constexpr qint64 kSecondsOfDay = 24 * kSecondsOfHour;
constexpr qint64 kJulianDayOf1970 = 2440588;

// Midnight is as many hours before the one in UTC, or behind it, as the zone is east or west.
constexpr qint64 kMostEast = 14 * kSecondsOfHour;
constexpr qint64 kMostWest = 12 * kSecondsOfHour;
constexpr qint64 kMargin = 2 * kSecondsOfHour;

// Before and after, Qt has rules of its own.
constexpr int kFirstYear = 1971;
constexpr int kLastYear = 2036;

/** Seconds that the local time is ahead of UTC at @p seconds since 1970. */
std::optional<long> offsetAt(qint64 seconds)
{
    const std::time_t time = seconds;
    std::tm local{};
    if (!localtime_r(&time, &local))
        return std::nullopt;
    return local.tm_gmtoff;
}

/** Whether the clock of the zone passes over leap seconds, as nearly all do. */
bool passesOverLeapSeconds()
{
    const std::time_t time = kSecondsOfDay * 365 * 50;
    std::tm utc{};
    return gmtime_r(&time, &utc) && utc.tm_sec == 0;
}

double startOfDay(const QDate &date, bool isSimple)
{
    if (!date.isValid())
        return std::numeric_limits<double>::quiet_NaN();
    if (isSimple) {
        const qint64 midnight = (date.toJulianDay() - kJulianDayOf1970) * kSecondsOfDay;
        const std::optional<long> before = offsetAt(midnight - kMostEast - kMargin);
        if (before && before == offsetAt(midnight + kMostWest + kMargin))
            return static_cast<double>((midnight - *before) * 1000);
    }
    const QDateTime start = date.startOfDay();
    return start.isValid() ? static_cast<double>(start.toMSecsSinceEpoch())
                           : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

double LocalMidnights::milliseconds(int day)
{
    if (m_zone == Zone::Unknown) {
        tzset();
        m_zone = passesOverLeapSeconds() ? Zone::Simple : Zone::OfQt;
    } else if (day == m_lastDay) {
        return m_lastMilliseconds;
    }
    m_lastDay = day;
    const int year = day / 10000;
    m_lastMilliseconds =
        startOfDay(QDate(year, day / 100 % 100, day % 100),
                   m_zone == Zone::Simple && year >= kFirstYear && year <= kLastYear);
    return m_lastMilliseconds;
}

} // namespace vn::internal
