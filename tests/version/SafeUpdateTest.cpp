// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include "VersionSupport.h"
#include "support/Expect.h"
#include "support/Literals.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

using vn::SafeUpdateVerdict;
using vn::VanteroSoftwareVersion;

namespace {

// ---- Single updates
// ------------------------------------------------------------------------------

struct Row
{
    const char *name;
    QString model;
    const char *current;
    const char *target;
    bool safe;
    const char *rule;
};

class SafeUpdate : public testing::TestWithParam<Row>
{
};

TEST_P(SafeUpdate, isDecidedByOneRule)
{
    const Row &row = GetParam();
    const VanteroSoftwareVersion current(row.current);
    EXPECT_EQ(current.isSafe(row.model, row.target), row.safe);
    const SafeUpdateVerdict verdict = current.checkUpdate(row.model, row.target);
    EXPECT_EQ(verdict.safe, row.safe);
    EXPECT_EQ(verdict.rule, QLatin1String(row.rule));
}

const Row rows[] = {
    {"noWayFromVnToR16", "K40"_q, "VN-3.0.6.30", "R16-2.2.1.10", false, "platform"},
    {"noWayFromR16ToVn", ""_q, "R16-2.2.1.10", "VN-3.0.6.30", false, "platform"},
    {"noWayFromR8ToR4", ""_q, "R8-1.5", "R4-1.5", false, "platform"},
    {"noWayFromUnknownToVn", ""_q, "x-3.0.6.30", "VN-3.0.6.31", false, "platform"},
    {"noWayFromPatternPlatformToVn", ""_q, "*-3.0.6.30", "VN-3.0.6.31", false, "platform"},
    {"wildcardPlatformPasses", "K40"_q, "VN-3.0.6.30", "*-3.0.6.31", true, "k30-h30-k40-return"},
    {"unknownPlatformPasses", ""_q, "VN-3.0.6.30", "x-3.0.6.31", true, "none"},
    {"unknownPlatformPasses_butIsLessThanALimit", "W40"_q, "VN-3.0.6.30", "x-3.4.5.4", false,
     "w40-minimum"},
    {"platformComesBeforeMajor", ""_q, "VN-4.0", "R16-2.2", false, "platform"},

    {"noWayBackBelow4", ""_q, "VN-4.0.1.2", "VN-3.4.5.6", false, "major"},
    {"noWayBackBelow4_onK40", "K40"_q, "VN-4.0.1.2", "VN-3.4.5.6", false, "major"},
    {"noWayBackBelow4_on50", "X50"_q, "VN-4.0.1.2", "VN-3.4.5.6", false, "major"},
    {"noWayBackBelow4_onW40", "W40"_q, "VN-4.0.1.2", "VN-3.4.5.6", false, "major"},
    {"noWayBackBelow4_onR16", ""_q, "R16-4.0", "R16-3.9", false, "major"},
    {"noWayBackBelow4_onR4", ""_q, "R4-4.0", "R4-3.9", false, "major"},
    {"noWayBackBelow4_onUnknownPlatform", ""_q, "x-4.0.1", "x-3.9.9", false, "major"},
    {"noWayBackBelow4_toAnyMajor", ""_q, "VN-4.0", "VN-*.9", false, "major"},
    {"from5To4", ""_q, "VN-5.1", "VN-4.0", true, "none"},
    {"from3To2", ""_q, "VN-3.1", "VN-2.0", true, "none"},
    {"wildcardMajorIsNotAbove3", ""_q, "VN-*", "VN-3.0", true, "none"},

    {"r16From21ToTheOneRelease", ""_q, "R16-2.1.3", "R16-2.2.1.10", true, "r16-step"},
    {"r16From21NotBeyond", ""_q, "R16-2.1.3", "R16-2.2.1.11", false, "r16-step"},
    {"r16From21NotBelow", ""_q, "R16-2.1.3", "R16-2.2.1.9", false, "r16-step"},
    {"r16From21ToPatternOfTheRelease", ""_q, "R16-2.1.3", "R16-2.2.1.*", true, "r16-step"},
    {"r16From21NotToUnknownPlatform", ""_q, "R16-2.1.3", "x-2.2.1.10", false, "r16-step"},
    {"r16From21ToWildcardPlatform", ""_q, "R16-2.1.3", "*-2.2.1.10", true, "r16-step"},
    {"r16From21NotToPreRelease", ""_q, "R16-2.1.3", "R16-2.2.1.10-pre", false, "r16-step"},
    {"r16From21ToAnyPreRelease", ""_q, "R16-2.1.3", "R16-2.2.1.10-rc", true, "r16-step"},
    {"r16From15", ""_q, "R16-1.5", "R16-2.1.3", false, "r16-step"},
    {"r16From15ToTheOneRelease", ""_q, "R16-1.5", "R16-2.2.1.10", true, "r16-step"},
    {"r16From215ToTheOneRelease", ""_q, "R16-2.1.5", "R16-2.2.1.10", true, "r16-step"},
    {"r16From215Only", ""_q, "R16-2.1.5", "R16-2.1.6", false, "r16-step"},
    {"r16From2199", ""_q, "R16-2.1.99", "R16-2.1.6", false, "r16-step"},
    {"r16From21_100_isFree", ""_q, "R16-2.1.100", "R16-2.1.6", true, "none"},
    {"r16From2153_isFree", ""_q, "R16-2.1.5.3", "R16-1.0", true, "none"},
    {"r16From2153_isFreeUpwards", ""_q, "R16-2.1.5.3", "R16-3.9", true, "none"},
    {"r16From2205_isFree", ""_q, "R16-2.2.0.5", "R16-1.0", true, "none"},
    {"r16From2205_isFreeUpwards", ""_q, "R16-2.2.0.5", "R16-2.2.1.11", true, "none"},
    {"r16From221NotBelow", ""_q, "R16-2.2.1.3", "R16-2.2.0.9", false, "r16-return"},
    {"r16From221ToItsBeginning", ""_q, "R16-2.2.1.3", "R16-2.2.1.0", true, "r16-return"},
    {"r16From221ToPreReleaseOfItsBeginning", ""_q, "R16-2.2.1.3", "R16-2.2.1.0-pre", true,
     "r16-return"},
    {"r16From221Upwards", ""_q, "R16-2.2.1.3", "R16-2.2.2.0", true, "r16-return"},
    {"r16From3NotBelow221", ""_q, "R16-3.0", "R16-2.2.0.99", false, "r16-return"},
    {"r16IgnoresTheModel", "W40"_q, "R16-2.2.0.5", "R16-1.0", true, "none"},
    {"r16IgnoresThe50s", "X50"_q, "R16-2.2.1.3", "R16-2.2.1.4", true, "r16-return"},

    {"r8IsFree", "K40"_q, "R8-1.5", "R8-0.1", true, "none"},
    {"r4IsFree", "W40"_q, "R4-1.0", "R4-0.1", true, "none"},
    {"r4IsFree_toUnknownPlatform", "X50"_q, "R4-1.0", "x-0.1", true, "none"},
    {"unknownPlatformIsFree", "W40"_q, "x-1.0", "x-0.1", true, "none"},
    {"nullVersionsAreFree", "W40"_q, "", "", true, "none"},

    {"k40From303NotBelow29", "K40xyz"_q, "VN-3.0.3.7", "VN-3.0.6.28", false, "k40-step"},
    {"k40From303To29", "K40xyz"_q, "VN-3.0.3.7", "VN-3.0.6.29", true, "k40-step"},
    {"k40From303To4", "K40xyz"_q, "VN-3.0.3.7", "VN-4.0", true, "k40-step"},
    {"k40FromPatternThatCovers303", "K40"_q, "VN-3.0.*", "VN-3.0.6.28", false, "k40-step"},
    {"k40From303_pre_isNotOn303", "K40"_q, "VN-3.0.3.7-pre", "VN-3.0.1", true, "none"},
    {"k40From304_isFree", "K40"_q, "VN-3.0.4.0", "VN-3.0.1", true, "none"},
    {"k40From302_isFree", "K40"_q, "VN-3.0.2.99", "VN-3.0.1", true, "none"},
    {"k40From3_0_6_25ToItsBeginning", "K40xyz"_q, "VN-3.0.6.25", "VN-3.0.6.0", true,
     "k30-h30-k40-return"},
    {"k40From3_0_6_25NotBelow", "K40xyz"_q, "VN-3.0.6.25", "VN-3.0.5.99", false,
     "k30-h30-k40-return"},
    {"k40From3_0_6_24NotBelow", "K40"_q, "VN-3.0.6.24", "VN-3.0.5.99", false, "k30-h30-k40-return"},
    {"k40From3_0_6_23_isFree", "K40"_q, "VN-3.0.6.23", "VN-3.0.5.99", true, "none"},
    {"k30From3_0_6_24NotBelow", "K30"_q, "VN-3.0.6.24", "VN-3.0.5.99", false, "k30-h30-k40-return"},
    {"k30From303_isFree", "K30"_q, "VN-3.0.3.7", "VN-3.0.1", true, "none"},
    {"h30From3_0_6_24NotBelow", "H30-x"_q, "VN-3.0.6.24", "VN-3.0.5.99", false,
     "k30-h30-k40-return"},
    {"h30From307To306", "H30"_q, "VN-3.0.7.1", "VN-3.0.6.0", true, "k30-h30-k40-return"},
    {"patternAtLeast308_decidesBesides", "K30"_q, "VN-3.0.*", "VN-3.0.5.99", false,
     "k30-h30-k40-pattern"},
    {"patternAtLeast308_to306", "H30"_q, "VN-3.0.*", "VN-3.0.6.0", true, "k30-h30-k40-pattern"},
    {"patternOf3_isBothAtMostAndAtLeast", "K30"_q, "VN-3.*.6.24", "VN-3.0.5", false,
     "k30-h30-k40-return"},

    {"h40From308NotBelow", "H40"_q, "VN-3.0.8.1", "VN-3.0.7.99", false, "h40-return"},
    {"h40From308ToItsBeginning", "H40"_q, "VN-3.0.8.1", "VN-3.0.8.0", true, "h40-return"},
    {"h40From307_isFree", "H40"_q, "VN-3.0.7.99", "VN-3.0.1", true, "none"},
    {"h40From4To4", "H40"_q, "VN-4.1", "VN-4.0", true, "h40-return"},
    {"h40IsNotInTheOtherList", "H40"_q, "VN-3.0.6.25", "VN-3.0.5.99", true, "none"},

    {"w40Below", "W40"_q, "VN-3.0.0.1", "VN-3.4.5.3", false, "w40-minimum"},
    {"w40At", "W40"_q, "VN-3.0.0.1", "VN-3.4.5.4", true, "w40-minimum"},
    {"w40FromAbove", "W40abc"_q, "VN-3.9", "VN-3.4.5.3", false, "w40-minimum"},

    {"x50To3", "X50"_q, "VN-3.1.0.0", "VN-3.9", false, "50-minimum"},
    {"x50To4", "X50"_q, "VN-3.1.0.0", "VN-4.0", true, "50-minimum"},
    {"lowerCaseX50To3", "x50-abc"_q, "VN-3.1.0.0", "VN-3.9", false, "50-minimum"},
    {"lowerCaseX50To4", "x50-abc"_q, "VN-3.1.0.0", "VN-4.0", true, "50-minimum"},
    {"x50ToWildcardMajor", "X50"_q, "VN-3.1.0.0", "VN-*", false, "50-minimum"},
    {"digitBefore50", "550"_q, "VN-3.1.0.0", "VN-3.9", false, "50-minimum"},
    {"lineEndBefore50", "\n50"_q, "VN-3.1.0.0", "VN-3.9", false, "50-minimum"},
    {"ab50_isNotAffected", "AB50"_q, "VN-3.1.0.0", "VN-3.0", true, "none"},
    {"only50_isNotAffected", "50"_q, "VN-3.1.0.0", "VN-3.0", true, "none"},
    {"x5_isNotAffected", "X5"_q, "VN-3.1.0.0", "VN-3.0", true, "none"},
    {"k40IsNo50", "K40 X50"_q, "VN-3.0.4.0", "VN-3.0.1", true, "none"},

    {"lowerCaseModel_matchesNothing", "k40"_q, "VN-3.0.3.7", "VN-3.0.6.28", true, "none"},
    {"modelInside_matchesNothing", "xW40"_q, "VN-3.0.3.7", "VN-3.0.6.28", true, "none"},
    {"shortModel_matchesNothing", "W4"_q, "VN-3.0.3.7", "VN-3.0.6.28", true, "none"},
    {"emptyModel", ""_q, "VN-3.0.3.7", "VN-3.0.6.28", true, "none"},
    {"nullModel", QString(), "VN-3.0.3.7", "VN-3.0.6.28", true, "none"},
    {"sameVersion", "K40"_q, "VN-3.0.6.29", "VN-3.0.6.29", true, "k30-h30-k40-return"},
};

INSTANTIATE_TEST_SUITE_P(Table, SafeUpdate, testing::ValuesIn(rows), nameOfRow);

// ---- All updates
// ---------------------------------------------------------------------------------

/** The rules once more, as one reads them aloud. */
bool mayUpdate(const QString &model, const VanteroSoftwareVersion &current,
               const VanteroSoftwareVersion &target)
{
    if (target[0] != 0 && target[0] != current[0])
        return false;
    if (current[1] > 3 && target[1] < 4)
        return false;
    if (current[0] == 10) {
        if (current <= VanteroSoftwareVersion("R16-2.1.*"))
            return target == VanteroSoftwareVersion("R16-2.2.1.10");
        if (current >= VanteroSoftwareVersion("R16-2.2.1.*"))
            return target >= VanteroSoftwareVersion("R16-2.2.1.*");
        return true;
    }
    if (current[0] != 20)
        return true;
    if (model.startsWith("K40"_q) && current == VanteroSoftwareVersion("VN-3.0.3.*"))
        return target >= VanteroSoftwareVersion("VN-3.0.6.29");
    if (model.startsWith("H40"_q) && current >= VanteroSoftwareVersion("VN-3.0.8.*"))
        return target >= VanteroSoftwareVersion("VN-3.0.8.*");
    if (model.startsWith("K30"_q) || model.startsWith("H30"_q) || model.startsWith("K40"_q)) {
        if (current >= VanteroSoftwareVersion("VN-3.0.6.24"))
            return target >= VanteroSoftwareVersion("VN-3.0.6.*");
        if (current >= VanteroSoftwareVersion("VN-3.0.8.*"))
            return target >= VanteroSoftwareVersion("VN-3.0.6.*");
    }
    if (model.startsWith("W40"_q))
        return target >= VanteroSoftwareVersion("VN-3.4.5.4");
    static const QRegExp fifty("?50"_q, Qt::CaseInsensitive, QRegExp::Wildcard);
    if (fifty.indexIn(model, 0) == 0)
        return target[1] > 3;
    return true;
}

const char *const models[] = {
    "",    "K",    "K4",  "K40", "K40xyz", "k40", "xK40", "H40", "H40-1", "h40",     "K30", "K30b",
    "H30", "h30x", "W40", "W4",  "W40 50", "X50", "x50b", "K50", "W50",   "50",      "550", "AB50",
    "A5",  "A05",  "?50", "K20", "K400",   "H50", "X5",   "X05", "*50",   "K40 X50",
};

std::vector<VanteroSoftwareVersion> versionsAroundTheLimits()
{
    const char *const numbers[] = {
        // R16: around 2.1.*, 2.2.1.* and 2.2.1.10
        "1.9.9.9",
        "2",
        "2.0.99.99",
        "2.1",
        "2.1.0.1",
        "2.1.3",
        "2.1.5.3",
        "2.1.99",
        "2.1.99.1",
        "2.1.100",
        "2.1.*",
        "2.1.*.*",
        "2.*",
        "2.2",
        "2.2.0.5",
        "2.2.0.99",
        "2.2.1",
        "2.2.1.0-pre",
        "2.2.1.9",
        "2.2.1.10",
        "2.2.1.10-pre",
        "2.2.1.10-rc",
        "2.2.1.11",
        "2.2.1.99",
        "2.2.1.100",
        "2.2.1.*",
        "2.2.2",
        "2.3",
        // VN: around 3.0.3.*, 3.0.6.24, 3.0.6.29, 3.0.6.*, 3.0.8.* and 3.4.5.4
        "3",
        "3.0.2.99",
        "3.0.2.100",
        "3.0.3",
        "3.0.3.7",
        "3.0.3.7-pre",
        "3.0.3.7-rc",
        "3.0.3.99",
        "3.0.3.100",
        "3.0.3.*",
        "3.0.4",
        "3.0.5.99",
        "3.0.5.100",
        "3.0.6",
        "3.0.6.0-pre",
        "3.0.6.23",
        "3.0.6.24",
        "3.0.6.24-pre",
        "3.0.6.25",
        "3.0.6.28",
        "3.0.6.29",
        "3.0.6.29-rc",
        "3.0.6.30",
        "3.0.6.99",
        "3.0.6.100",
        "3.0.6.*",
        "3.0.7.99",
        "3.0.8",
        "3.0.8.1",
        "3.0.8.99",
        "3.0.8.*",
        "3.0.9",
        "3.0.*",
        "3.0.*.*",
        "3.*",
        "3.*.6.24",
        "3.1",
        "3.4.5.3",
        "3.4.5.4",
        "3.4.5.4-pre",
        "3.4.5.5",
        "3.4.5.*",
        "3.4.6",
        // majors
        "3.99",
        "V3.99",
        "4",
        "V4",
        "4.0.0.1",
        "5",
        "*",
        "0",
        "-1",
        "32768",
        "99",
        "100",
        "word",
    };
    std::vector<VanteroSoftwareVersion> versions{"", "garbage", "VN", "R16", "*"};
    const auto add = [&](const char *platform, const char *number) {
        versions.emplace_back(QLatin1String(platform) + QLatin1Char('-') + QLatin1String(number));
    };
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
        add("R16", numbers[i]);
        add("VN", numbers[i]);
        if (i % 5 == 0) {
            for (const char *platform : {"R4", "R8", "vn", "*"})
                add(platform, numbers[i]);
        }
    }
    return versions;
}

TEST(SafeUpdate, agreesWithTheRulesReadAloud_onEveryModelAroundEveryLimit)
{
    const std::vector<VanteroSoftwareVersion> versions = versionsAroundTheLimits();
    int safe = 0;
    int unsafe = 0;
    for (const char *modelName : models) {
        const QString model = QLatin1String(modelName);
        for (const VanteroSoftwareVersion &current : versions) {
            for (const VanteroSoftwareVersion &target : versions) {
                const bool expected = mayUpdate(model, current, target);
                ++(expected ? safe : unsafe);
                if (current.isSafe(model, target) != expected) {
                    FAIL() << modelName << " from " << testing::PrintToString(current) << " to "
                           << testing::PrintToString(target) << " must be " << expected;
                }
            }
        }
    }
    EXPECT_GT(safe, 100000);
    EXPECT_GT(unsafe, 100000);
}

TEST(SafeUpdate, checkAgreesWithIsSafe_aroundEveryLimit)
{
    const std::vector<VanteroSoftwareVersion> versions = versionsAroundTheLimits();
    std::mt19937 random(41);
    for (int run = 0; run < 100000; ++run) {
        const QString model = QLatin1String(models[random() % std::size(models)]);
        const VanteroSoftwareVersion &current = versions[random() % versions.size()];
        const VanteroSoftwareVersion &target = versions[random() % versions.size()];
        const SafeUpdateVerdict verdict = current.checkUpdate(model, target);
        ASSERT_EQ(verdict.safe, current.isSafe(model, target));
        ASSERT_TRUE(verdict.safe || verdict.rule != "none"_q);
    }
}

TEST(SafeUpdate, fiftiesAreTheModelsThatTheWildcardFindsAtTheBeginning)
{
    const QRegExp fifty("?50"_q, Qt::CaseInsensitive, QRegExp::Wildcard);
    const VanteroSoftwareVersion current("VN-3.1");
    const VanteroSoftwareVersion target("VN-3.9");
    const QString pieces[] = {"5"_q,      "0"_q,      "50"_q,         "X"_q,
                              "x"_q,      "\n"_q,     "\u0665"_q,     "\uff15"_q,
                              "\u00e9"_q, "\u0301"_q, "\U0001f3a5"_q, QString(QChar(0))};
    std::mt19937 random(42);
    int fifties = 0;
    for (int run = 0; run < 50000; ++run) {
        QString model;
        for (std::size_t n = random() % 6; n > 0; --n)
            model += pieces[random() % std::size(pieces)];
        const bool expected = fifty.indexIn(model, 0) == 0;
        fifties += expected;
        ASSERT_EQ(current.checkUpdate(model, target).rule == "50-minimum"_q, expected)
            << testing::PrintToString(model);
        ASSERT_EQ(current.isSafe(model, target), !expected) << testing::PrintToString(model);
    }
    EXPECT_GT(fifties, 1000);
}

// ---- Sentences
// -----------------------------------------------------------------------------------

TEST(SafeUpdateVerdict, saysItsRuleInOneSentence)
{
    const struct
    {
        QString model;
        const char *current;
        const char *target;
        QString rule;
        QString sentence;
    } cases[] = {
        {""_q, "VN-3.1", "R16-2.2", "platform"_q, "Cameras must stay on their platform"_q},
        {""_q, "VN-4.1", "VN-3.9", "major"_q,
         "Cameras on major version 4 or later must stay on major version 4 or later"_q},
        {""_q, "R16-2.1.3", "R16-2.3", "r16-step"_q,
         "Cameras on R16-2.1.* or earlier must first be updated to R16-2.2.1.10"_q},
        {""_q, "R16-2.2.1.3", "R16-2.2.0.9", "r16-return"_q,
         "Cameras on R16-2.2.1.* or later must stay on R16-2.2.1.* or later"_q},
        {"K40"_q, "VN-3.0.3.7", "VN-3.0.6.28", "k40-step"_q,
         "K40 cameras on VN-3.0.3.* must first be updated to VN-3.0.6.29 or later"_q},
        {"H40"_q, "VN-3.0.8.1", "VN-3.0.7", "h40-return"_q,
         "H40 cameras on VN-3.0.8.* or later must stay on VN-3.0.8.* or later"_q},
        {"H30"_q, "VN-3.0.6.25", "VN-3.0.5", "k30-h30-k40-return"_q,
         "K30, H30 and K40 cameras on VN-3.0.6.24 or later must stay on VN-3.0.6.* or later"_q},
        {"H30"_q, "VN-3.0.*", "VN-3.0.5", "k30-h30-k40-pattern"_q,
         "K30, H30 and K40 cameras on VN-3.0.8.* or later must stay on VN-3.0.6.* or later"_q},
        {"W40"_q, "VN-3.0", "VN-3.1", "w40-minimum"_q,
         "W40 cameras on VN may only be updated to VN-3.4.5.4 or later"_q},
        {"X50"_q, "VN-3.0", "VN-3.1", "50-minimum"_q,
         "?50 cameras on VN may only be updated to major version 4 or later"_q},
        {""_q, "VN-3.0", "VN-3.1", "none"_q, "Cameras may otherwise be updated to any version"_q},
    };
    for (const auto &c : cases) {
        const SafeUpdateVerdict verdict =
            VanteroSoftwareVersion(c.current).checkUpdate(c.model, c.target);
        EXPECT_EQ(verdict.rule, c.rule);
        EXPECT_EQ(verdict.sentence, c.sentence);
        EXPECT_EQ(verdict.safe, c.rule == "none"_q);
    }
}

TEST(SafeUpdateVerdict, saysTheSameWhereTheRuleIsMet)
{
    const SafeUpdateVerdict verdict =
        VanteroSoftwareVersion("VN-3.0.3.7").checkUpdate("K40D"_q, "VN-3.4.5.4");
    EXPECT_TRUE(verdict.safe);
    EXPECT_EQ(verdict.rule, "k40-step"_q);
    EXPECT_EQ(verdict.sentence,
              "K40 cameras on VN-3.0.3.* must first be updated to VN-3.0.6.29 or later"_q);
}

// ---- While the process ends
// ----------------------------------------------------------------------

void judge(const char *when)
{
    const SafeUpdateVerdict verdict =
        VanteroSoftwareVersion("VN-3.0.3.7").checkUpdate("K40D"_q, "VN-3.0.6.2");
    std::fprintf(stderr, "%s: %s. ", qPrintable(verdict.rule), when);
}

/** A static object of an application: made before the first update is judged, destroyed after. */
class LastJudge
{
public:
    ~LastJudge()
    {
        if (m_isWanted)
            judge("by a static object");
    }
    void want() { m_isWanted = true; }

private:
    bool m_isWanted = false;
};

LastJudge s_lastJudge;

TEST(SafeUpdateDeathTest, updatesAreJudgedInHandlersAndDestructorsThatAreOlderThanTheFirstOne)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe"; // a process that has judged none yet
    EXPECT_EXIT(
        {
            std::atexit([] { judge("by a handler"); });
            s_lastJudge.want();
            judge("at first");
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        "k40-step: at first. k40-step: by a handler. k40-step: by a static object");
}

} // namespace
