// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VersionOrder.h"

#include "VersionSupport.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QList>

#include <gtest/gtest.h>

#include <algorithm>

using vn::VanteroSoftwareVersion;
using vn::VersionOrder;

namespace {

TEST(VersionOrder, sortsWithPatternsBehindTheirLowest)
{
    const QList<QString> sorted{
        ""_q,
        "garbage"_q,
        "*"_q,
        "*-1"_q,
        "R4-9"_q,
        "R8-1"_q,
        "R16-2.2.1.9"_q,
        "R16-2.2.1.10"_q,
        "VN-3.0.6.29"_q,
        "VN-3.0.6.29-rc"_q,
        "VN-3.0.6.29-pre"_q,
        "VN-3.0.8"_q,
        "VN-3.0.8.*"_q,
        "VN-3.0.8.*.*"_q,
        "VN-3.0.8.1"_q,
        "VN-3.0.100"_q,
        "VN-3.1"_q,
        "VN-4"_q,
        "VN-V4"_q,
    };
    QList<VanteroSoftwareVersion> versions;
    for (const QString &text : sorted)
        versions.prepend(text);
    std::sort(versions.begin(), versions.end(), VersionOrder::before);
    for (int i = 0; i < sorted.size(); ++i)
        EXPECT_EQ(QString(versions.at(i)), sorted.at(i)) << i;
}

VanteroSoftwareVersion randomVersion(Random &random)
{
    const QStringList platforms{"VN"_q, "R16"_q, "R4"_q, "vn"_q, "*"_q};
    const QStringList numbers{"0"_q, "1"_q, "2"_q, "99"_q, "100"_q, "*"_q, "40000"_q};
    const QStringList endings{""_q, "-pre"_q, "-rc"_q, "."_q};
    QString text = random.oneOf(platforms);
    for (unsigned n = random.below(5); n > 0; --n)
        text += "."_q + random.oneOf(numbers);
    return text + random.oneOf(endings);
}

TEST(VersionOrder, isTotal_andAgreesWithTheOperatorsOnConcreteVersions)
{
    Random random(21);
    for (int run = 0; run < 100000; ++run) {
        const VanteroSoftwareVersion a = randomVersion(random);
        const VanteroSoftwareVersion b = randomVersion(random);
        const VanteroSoftwareVersion c = randomVersion(random);
        ASSERT_FALSE(VersionOrder::before(a, a));
        if (QString(a) != QString(b)) {
            ASSERT_NE(VersionOrder::before(a, b), VersionOrder::before(b, a));
        }
        if (VersionOrder::before(a, b) && VersionOrder::before(b, c)) {
            ASSERT_TRUE(VersionOrder::before(a, c));
        }
        if (!VersionOrder::isPattern(a) && !VersionOrder::isPattern(b) && a != b) {
            ASSERT_EQ(VersionOrder::before(a, b), a < b);
        }
    }
}

TEST(VersionOrder, knowsPatterns)
{
    for (const char *text :
         {"*", "VN-*", "VN-3.0.8.*", "VN-3.0.6.29-rc", "VN-3.0.6.29.", "VN-1.1.1.1.*"})
        EXPECT_TRUE(VersionOrder::isPattern(text)) << text;
    for (const char *text : {"", "garbage", "VN", "VN-3.0.6.29", "VN-3.0.6.29-pre", "VN-3."})
        EXPECT_FALSE(VersionOrder::isPattern(text)) << text;
}

TEST(VersionOrder, coversWhatLiesInEveryRange)
{
    const struct
    {
        const char *pattern;
        const char *version;
        bool covers;
    } rows[] = {
        {"VN-3.0.8.*", "VN-3.0.8.4", true},      {"VN-3.0.8.*", "VN-3.0.8.99", true},
        {"VN-3.0.8.*", "VN-3.0.8.100", false},   {"VN-3.0.8.*", "VN-3.0.9", false},
        {"VN-3.0.8.*", "VN-3.0.8.4-pre", false}, {"VN-3.0.8.*", "VN-3.0.8.*", true},
        {"VN-3.0.8.*", "VN-3.0.8.*.*", false},   {"VN-3.0.8.*.*", "VN-3.0.8.*", true},
        {"VN-3.0.8", "VN-3.0.8.0", true},        {"VN-3.0.8.4", "VN-3.0.8.*", false},
        {"VN-3.0.*", "VN-3.0.8.4", false},       {"VN-3.0.*", "VN-3.0.8", true},
        {"VN-3.0.8.4-rc", "VN-3.0.8.4", true},   {"VN-3.0.8.4-rc", "VN-3.0.8.4-pre", true},
        {"*-3.0.8.4", "VN-3.0.8.4", true},       {"", "garbage", true},
    };
    for (const auto &row : rows)
        EXPECT_EQ(VersionOrder::covers(row.pattern, row.version), row.covers)
            << row.pattern << " and " << row.version;
}

TEST(VersionOrder, whatIsCoveredIsEqual)
{
    Random random(22);
    int covered = 0;
    for (int run = 0; run < 100000; ++run) {
        const VanteroSoftwareVersion a = randomVersion(random);
        const VanteroSoftwareVersion b = randomVersion(random);
        if (VersionOrder::covers(a, b)) {
            ++covered;
            ASSERT_TRUE(a == b);
        } else if (!VersionOrder::isPattern(b)) {
            ASSERT_FALSE(a == b);
        }
    }
    EXPECT_GT(covered, 1000);
}

} // namespace
