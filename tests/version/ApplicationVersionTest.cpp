// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include "support/Expect.h"
#include "support/Literals.h"

#include <gtest/gtest.h>

#include <random>

using vn::VanteroSoftwareVersion;

namespace {

struct Row
{
    const char *name;
    QString version;
    QString revision;
    short debug;
    QString text;
};

class ApplicationVersion : public testing::TestWithParam<Row>
{
};

TEST_P(ApplicationVersion, readsAs)
{
    const Row &row = GetParam();
    EXPECT_EQ(VanteroSoftwareVersion::applicationVersion(row.version, row.revision, row.debug),
              row.text);
}

const Row rows[] = {
    {"release", "4.1.3.0"_q, ""_q, 0, "4.1"_q},
    {"releaseWithBuild", "4.1.3.12"_q, ""_q, 0, "4.1.0.12"_q},
    {"alpha", "4.1.0.3"_q, ""_q, 0, "4.1 alpha 3"_q},
    {"beta", "4.1.1.5"_q, ""_q, 0, "4.1 beta 5"_q},
    {"releaseCandidate", "4.1.2.1"_q, ""_q, 0, "4.1 rc 1"_q},
    {"everything", "4.1.1.5"_q, "1234"_q, 1, "4.1 beta 5, revision 1234, debug"_q},

    {"threeParts_areARelease", "4.1.7"_q, ""_q, 0, "4.1.0.7"_q},
    {"threePartsWithBuild0", "4.1.0"_q, "?"_q, 0, "4.1"_q},
    {"revisionAfterColon", "4.1.1.2"_q, "1200:1234"_q, 1, "4.1 beta 2, revision 1234, debug"_q},
    {"unknownRevision", "4.1.2.1"_q, "?"_q, 1, "4.1 rc 1, debug"_q},
    {"unknownStage", "4.1.5.2"_q, "88"_q, 0, "4.1.5.2, revision 88"_q},
    {"twoParts_stay", "4.1"_q, ""_q, -1, "4.1"_q},
    {"noVersion", ""_q, "7"_q, 0, ", revision 7"_q},

    {"build00_isNotBuild0", "4.1.3.00"_q, ""_q, 0, "4.1.0.00"_q},
    {"emptyBuild", "4.1.3."_q, ""_q, 0, "4.1.0."_q},
    {"fifthPart_isIgnored", "4.1.3.0.99"_q, ""_q, 0, "4.1"_q},
    {"fifthPartAfterBeta_isIgnored", "4.1.1.5.99"_q, ""_q, 0, "4.1 beta 5"_q},
    {"unknownStageWithSuffixes", "4.1.9.2"_q, "5"_q, 1, "4.1.9.2, revision 5, debug"_q},
    {"stageIsComparedAsText", "4.1.03.2"_q, ""_q, 0, "4.1.03.2"_q},
    {"emptyStage", "4.1..2"_q, ""_q, 0, "4.1..2"_q},
    {"emptyMinor", "4..3.0"_q, ""_q, 0, "4."_q},
    {"onlyDots", "..."_q, ""_q, 0, "..."_q},
    {"twoDots_areAReleaseWithEmptyBuild", ".."_q, ""_q, 0, "..0."_q},
    {"onePart", "4"_q, "5"_q, 0, "4, revision 5"_q},
    {"words", "trunk"_q, ""_q, 0, "trunk"_q},
    {"threePartsWhoseLastLooksLikeAStage", "4.1.3"_q, ""_q, 0, "4.1.0.3"_q},

    {"twoQuestionMarks_areARevision", "4.1.3.0"_q, "\?\?"_q, 0, "4.1, revision \?\?"_q},
    {"onlyTheFirstColonCounts", "4.1.3.0"_q, "a:b:c"_q, 0, "4.1, revision b:c"_q},
    {"colonAtTheBeginningIsKept", "4.1.3.0"_q, ":1234"_q, 0, "4.1, revision :1234"_q},
    {"twoColonsAtTheBeginningAreKept", "4.1.3.0"_q, "::1"_q, 0, "4.1, revision ::1"_q},
    {"nothingAfterTheColon", "4.1.3.0"_q, "1234:"_q, 0, "4.1, revision "_q},
    {"questionMarkAfterTheColon", "4.1.3.0"_q, "1:?"_q, 0, "4.1, revision ?"_q},

    {"debug1", "4.1.3.0"_q, ""_q, 1, "4.1, debug"_q},
    {"debug32767", "4.1.3.0"_q, ""_q, 32767, "4.1, debug"_q},
    {"debugMinus1", "4.1.3.0"_q, ""_q, -1, "4.1"_q},
    {"nothingButDebug", ""_q, ""_q, 1, ", debug"_q},
    {"nothing", ""_q, ""_q, 0, ""_q},

    // Substitutions follow each other, so a part may hold what a later one fills.
    {"firstMarkerInMajor", "%1.2.1.3"_q, ""_q, 0, "2.3 beta %4"_q},
    {"secondMarkerInMajor", "%2.5.1.3"_q, ""_q, 0, "5.5 beta 3"_q},
    {"fourthMarkerInMinor", "4.%4.1.3"_q, ""_q, 0, "4.3 beta 3"_q},
    {"thirdMarkerInMinor_comesBeforeTheFourth", "4.%3.1.9"_q, ""_q, 0, "4.9 beta %4"_q},
    {"markerInBuild_staysAsItIs", "4.1.1.%1"_q, ""_q, 0, "4.1 beta %1"_q},
    {"markerInReleaseMajor", "%1.2.3.0"_q, ""_q, 0, "2.%2"_q},
    {"ninetyNinthMarkerInMajor_comesLast", "%99.1.1.2"_q, ""_q, 0, "%99.1 beta 2"_q},
    {"percentBeforeADot", "4%.1%.1.3%"_q, ""_q, 0, "4%.1% beta 3%"_q},
    {"markerInRevision_staysAsItIs", "4.1.1.2"_q, "%1"_q, 0, "4.1 beta 2, revision %1"_q},
};

INSTANTIATE_TEST_SUITE_P(Texts, ApplicationVersion, testing::ValuesIn(rows), nameOfRow);

TEST(ApplicationVersion, substitutesAsSuccessiveCallsDo)
{
    std::mt19937 random(34);
    const QString pieces[] = {"%"_q, "1"_q, "2"_q, "4"_q, "9"_q, "0"_q, "L"_q, "x"_q, ""_q};
    const auto part = [&] {
        QString text;
        for (std::size_t n = random() % 6; n > 0; --n)
            text += pieces[random() % std::size(pieces)];
        return text;
    };
    for (int run = 0; run < 5000; ++run) {
        const QString major = part();
        const QString minor = part();
        const QString build = "b"_q + part();
        const auto read = [&](const QString &stage) {
            return VanteroSoftwareVersion::applicationVersion(
                QStringList{major, minor, stage, build}.join(QLatin1Char('.')), QString(), 0);
        };
        ASSERT_EQ(read("0"_q), "%1.%2 alpha %4"_q.arg(major).arg(minor).arg(build));
        ASSERT_EQ(read("1"_q), "%1.%2 beta %4"_q.arg(major).arg(minor).arg(build));
        ASSERT_EQ(read("2"_q), "%1.%2 rc %4"_q.arg(major).arg(minor).arg(build));
        ASSERT_EQ(read("3"_q), "%1.%2.0.%4"_q.arg(major).arg(minor).arg(build));
    }
}

TEST(ApplicationVersion, leavesItsInputsAlone)
{
    const QString version = "4.1.7"_q;
    const QString revision = "1:2"_q;
    (void)VanteroSoftwareVersion::applicationVersion(version, revision, 1);
    EXPECT_EQ(version, "4.1.7"_q);
    EXPECT_EQ(revision, "1:2"_q);
}

} // namespace
