// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/UpdateAdvisor.h"

#include "PlanProof.h"
#include "VersionSupport.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>

using vn::InstallableVersion;
using vn::UpdateAdvisor;
using vn::UpdateJudgement;
using vn::UpdatePlan;
using vn::UpdateReason;
using vn::VanteroSoftwareVersion;

namespace {

constexpr auto kSafe = UpdateJudgement::Verdict::Safe;
constexpr auto kUnsafe = UpdateJudgement::Verdict::Unsafe;
constexpr auto kDepends = UpdateJudgement::Verdict::Depends;
constexpr auto kUnknown = UpdateJudgement::Verdict::Unknown;

QStringList rulesOf(const QList<UpdateReason> &reasons)
{
    QStringList rules;
    for (const UpdateReason &reason : reasons)
        rules.append(reason.rule);
    return rules;
}

QList<VanteroSoftwareVersion> versions(const QStringList &texts)
{
    QList<VanteroSoftwareVersion> list;
    for (const QString &text : texts)
        list.append(text);
    return list;
}

// ---- Judgements
// ----------------------------------------------------------------------------------

struct Row
{
    const char *name;
    QString model;
    const char *current;
    const char *target;
    UpdateJudgement::Verdict verdict;
    QStringList rules;     ///< that refuse
    QStringList obstacles; ///< or what keeps it from being judged
    QStringList candidates;
};

class Judgement : public testing::TestWithParam<Row>
{
};

TEST_P(Judgement, isSafeOnlyWhereNothingIsGuessed)
{
    const Row &row = GetParam();
    const UpdateJudgement judgement = UpdateAdvisor::judge(row.model, row.current, row.target);
    EXPECT_EQ(judgement.verdict, row.verdict);
    EXPECT_EQ(rulesOf(judgement.reasons), row.rules);
    EXPECT_EQ(judgement.obstacles, row.obstacles);
    EXPECT_EQ(judgement.candidates, row.candidates);
    EXPECT_EQ(judgement.classes.isEmpty(), row.verdict != kDepends);
}

const Row judgements[] = {
    {"safe", "D24M"_q, "VN-3.0.6.29", "VN-3.0.8.4", kSafe, {}, {}, {}},
    {"unsafe", "H40"_q, "VN-3.0.8.7", "VN-3.0.6.2", kUnsafe, {"h40-return"_q}, {}, {}},
    {"allReasons",
     "K40"_q,
     "VN-4.0.1",
     "R16-2.2.1.10",
     kUnsafe,
     {"platform"_q, "major"_q, "k30-h30-k40-return"_q},
     {},
     {}},
    {"aRuleThatDecidesEndsTheReasons",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.6.2",
     kUnsafe,
     {"k40-step"_q},
     {},
     {}},
    {"preReleaseIsOneVersion", "K40"_q, "VN-3.0.6.29-pre", "VN-3.0.6.30", kSafe, {}, {}, {}},
    {"missingNumbersAreZero", "D24"_q, "VN-3", "VN-3.1", kSafe, {}, {}, {}},
    {"majorWithItsSign", "D24"_q, "VN-V3.1", "VN-V4", kSafe, {}, {}, {}},
    {"sameVersion", "D24"_q, "VN-3.1", "VN-3.1", kSafe, {}, {}, {}},
    {"otherPlatform", "D24"_q, "R8-1.5", "R8-1.6", kSafe, {}, {}, {}},
    {"firstCharacterOf50MayBeAnything",
     "x50"_q,
     "VN-3.1",
     "VN-3.2",
     kUnsafe,
     {"50-minimum"_q},
     {},
     {}},

    {"noModel_agreesOnAll", ""_q, "VN-3.0.8.1", "VN-4.0", kSafe, {}, {}, {}},
    {"noModel_unsafeOnAll",
     QString(),
     "VN-4.0.1",
     "VN-3.9",
     kUnsafe,
     {"major"_q, "50-minimum"_q},
     {},
     {}},
    {"noModel_unsafeOnAll_withTheReasonsOfAll",
     ""_q,
     "VN-4.0.1",
     "VN-3.0.5",
     kUnsafe,
     {"major"_q, "h40-return"_q, "k30-h30-k40-return"_q, "w40-minimum"_q, "50-minimum"_q},
     {},
     {}},
    {"noModel_depends",
     ""_q,
     "VN-3.0.8.7",
     "VN-3.0.6.2",
     kDepends,
     {"h40-return"_q, "w40-minimum"_q, "50-minimum"_q},
     {},
     {}},
    {"noModel_r16IsTheSameForAll", ""_q, "R16-2.1.3", "R16-2.3", kUnsafe, {"r16-step"_q}, {}, {}},

    {"lowerCase",
     "h40"_q,
     "VN-3.0.8.7",
     "VN-3.0.6.2",
     kUnknown,
     {},
     {"model h40: did you mean H40?"_q},
     {"H40"_q}},
    {"lowerCaseWithMore",
     "k30b-out"_q,
     "VN-3.1",
     "VN-3.2",
     kUnknown,
     {},
     {"model k30b-out: did you mean K30b-out?"_q},
     {"K30b-out"_q}},
    {"blankBefore",
     " K40"_q,
     "VN-3.1",
     "VN-3.2",
     kUnknown,
     {},
     {"model \" K40\": did you mean K40?"_q},
     {"K40"_q}},
    {"blankInside",
     "W 40"_q,
     "VN-3.1",
     "VN-3.2",
     kUnknown,
     {},
     {"model \"W 40\": did you mean W40?"_q},
     {"W40"_q}},
    {"blankBefore50",
     "\tX50"_q,
     "VN-3.1",
     "VN-3.2",
     kUnknown,
     {},
     {"model \"\tX50\": did you mean X50?"_q},
     {"X50"_q}},
    {"blankBehindIsNoMatter", "K40 "_q, "VN-3.0.6.25", "VN-3.0.6.26", kSafe, {}, {}, {}},
    {"otherModelInLowerCase", "d24"_q, "VN-3.1", "VN-3.2", kSafe, {}, {}, {}},

    {"garbage",
     "D24"_q,
     "garbage",
     "trash",
     kUnknown,
     {},
     {"\"garbage\" names no known platform"_q, "\"trash\" names no known platform"_q},
     {}},
    {"emptyVersion", "D24"_q, "", "VN-3.1", kUnknown, {}, {"\"\" names no known platform"_q}, {}},
    {"lowerCasePlatform",
     "D24"_q,
     "VN-3.0",
     "vn-3.1",
     kUnknown,
     {},
     {"\"vn-3.1\" names no known platform"_q},
     {}},
    {"pattern",
     "D24"_q,
     "VN-3.0.*",
     "VN-3.1",
     kUnknown,
     {},
     {"\"VN-3.0.*\" is a pattern, where one version is needed"_q},
     {}},
    {"patternOfPlatforms",
     "D24"_q,
     "VN-3.0",
     "*-3.1",
     kUnknown,
     {},
     {"\"*-3.1\" is a pattern, where one version is needed"_q},
     {}},
    {"anyPreRelease",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.6.29-rc",
     kUnknown,
     {},
     {"\"VN-3.0.6.29-rc\" stands for any pre-release, where one version is needed"_q},
     {}},
    {"separatorAtTheEnd",
     "K40"_q,
     "VN-3.0.6.29.",
     "VN-3.0.6.30",
     kUnknown,
     {},
     {"\"VN-3.0.6.29.\" stands for any pre-release, where one version is needed"_q},
     {}},
    {"letterForANumber",
     "D24"_q,
     "VN-3.O.6",
     "VN-3.1",
     kUnknown,
     {},
     {"\"VN-3.O.6\": \"O\" is no number and is read as 0"_q},
     {}},
    {"numberOfTooManyBits",
     "D24"_q,
     "VN-3.0",
     "VN-65540.0",
     kUnknown,
     {},
     {"\"VN-65540.0\": \"65540\" has more than 16 bits and is read as 4"_q},
     {}},
    {"allThatIsWrong",
     "h40"_q,
     "x",
     "VN-*",
     kUnknown,
     {},
     {"model h40: did you mean H40?"_q, "\"x\" names no known platform"_q,
      "\"VN-*\" is a pattern, where one version is needed"_q},
     {"H40"_q}},
};

INSTANTIATE_TEST_SUITE_P(Table, Judgement, testing::ValuesIn(judgements), nameOfRow);

TEST(UpdateAdvisor, listsTheClassesWhereItDependsOnTheModel)
{
    const UpdateJudgement judgement = UpdateAdvisor::judge(QString(), "VN-3.0.8.7", "VN-3.0.6.2");
    const struct
    {
        QString name;
        QStringList rules;
    } rows[] = {
        {"K40"_q, {}},
        {"H40"_q, {"h40-return"_q}},
        {"K30, H30"_q, {}},
        {"W40"_q, {"w40-minimum"_q}},
        {"?50"_q, {"50-minimum"_q}},
        {"other models"_q, {}},
    };
    ASSERT_EQ(judgement.classes.size(), int(std::size(rows)));
    for (int i = 0; i < judgement.classes.size(); ++i) {
        EXPECT_EQ(judgement.classes.at(i).models.name, rows[i].name);
        EXPECT_EQ(judgement.classes.at(i).safe, rows[i].rules.isEmpty());
        EXPECT_EQ(rulesOf(judgement.classes.at(i).reasons), rows[i].rules);
    }
    EXPECT_EQ(judgement.reasons.first().sentence,
              "H40 cameras on VN-3.0.8.* or later must stay on VN-3.0.8.* or later"_q);
}

TEST(UpdateAdvisor, saysYesOnlyWhereIsSafeDoes_andNamesTheRuleThatDecides)
{
    Random random(31);
    const QStringList models{"K40"_q, "H40x"_q, "K30"_q, "W40"_q, "X50"_q, "D24"_q, "h40"_q, ""_q};
    const QStringList platforms{"VN"_q, "VN"_q, "R16"_q, "R8"_q, "*"_q, "vn"_q};
    const QStringList numbers{"2.1.3"_q,    "2.2.1.10"_q, "2.2.1.11"_q, "3.0.3.7"_q,
                              "3.0.6.23"_q, "3.0.6.29"_q, "3.0.8.1"_q,  "3.0.8.*"_q,
                              "3.4.5.4"_q,  "4.0"_q,      "3.x"_q,      "3.0.6.29-rc"_q};
    int counts[4] = {};
    for (int run = 0; run < 50000; ++run) {
        const QString model = random.oneOf(models);
        const VanteroSoftwareVersion current(random.oneOf(platforms) + "-"_q +
                                             random.oneOf(numbers));
        const VanteroSoftwareVersion target(random.oneOf(platforms) + "-"_q +
                                            random.oneOf(numbers));
        const UpdateJudgement judgement = UpdateAdvisor::judge(model, current, target);
        ++counts[int(judgement.verdict)];
        const vn::SafeUpdateVerdict verdict = current.checkUpdate(model, target);
        if (judgement.verdict == kSafe) {
            ASSERT_TRUE(verdict.safe);
        } else if (judgement.verdict == kUnsafe && !verdict.safe) {
            ASSERT_EQ(judgement.reasons.first().rule, verdict.rule);
        } else if (judgement.verdict == kUnsafe) {
            ADD_FAILURE() << "isSafe allows it";
        }
        ASSERT_EQ(judgement.verdict == kUnknown, !judgement.obstacles.isEmpty());
        ASSERT_TRUE(judgement.verdict != kDepends || model.isEmpty());
    }
    for (const int count : counts)
        EXPECT_GT(count, 100);
}

// ---- Plans
// ---------------------------------------------------------------------------------------

struct PlanRow
{
    const char *name;
    QString model;
    const char *current;
    const char *target;
    QStringList available;
    QStringList hops; ///< empty where there is no way
    const char *nearest;
    QStringList blockedBy;
    QString needed;
    const char *bridge;
};

class Plan : public testing::TestWithParam<PlanRow>
{
};

TEST_P(Plan, isTheShortestWay_orSaysWhatIsMissing)
{
    const PlanRow &row = GetParam();
    const UpdatePlan plan =
        UpdateAdvisor::plan(row.model, row.current, row.target, versions(row.available));
    QStringList hops;
    for (const vn::UpdateHop &hop : plan.hops) {
        hops.append(hop.version);
        EXPECT_TRUE(hop.verdict.safe);
    }
    EXPECT_EQ(hops, row.hops);
    EXPECT_EQ(plan.reachable, row.blockedBy.isEmpty());
    EXPECT_EQ(QString(plan.nearest), QLatin1String(row.nearest));
    EXPECT_EQ(rulesOf(plan.blockedBy), row.blockedBy);
    EXPECT_EQ(plan.needed, row.needed);
    EXPECT_EQ(QString(plan.bridge), QLatin1String(row.bridge));
    EXPECT_TRUE(plan.obstacles.isEmpty());
}

const PlanRow plans[] = {
    {"direct", "D24"_q, "VN-3.0", "VN-3.1", {}, {"VN-3.1"_q}, "", {}, ""_q, ""},
    {"alreadyThere", "W40"_q, "VN-3.1", "VN-V3.1.0", {}, {}, "", {}, ""_q, ""},
    {"stepInBetween",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.6.2",
     {"VN-3.0.6.29"_q},
     {"VN-3.0.6.29"_q, "VN-3.0.6.2"_q},
     "",
     {},
     ""_q,
     ""},
    {"highestFirst",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.6.2",
     {"VN-3.0.6.29"_q, "VN-3.4.5.4"_q, "VN-3.0.8.1"_q, "VN-4.0"_q},
     {"VN-3.4.5.4"_q, "VN-3.0.6.2"_q},
     "",
     {},
     ""_q,
     ""},
    {"shortBeforeHigh",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.6.29",
     {"VN-3.4.5.4"_q, "VN-3.9"_q},
     {"VN-3.0.6.29"_q},
     "",
     {},
     ""_q,
     ""},
    {"firstOfTheSameNumbers",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.6.2",
     {"VN-V3.0.7"_q, "VN-3.0.7.0"_q, "VN-3.0.7"_q},
     {"VN-V3.0.7"_q, "VN-3.0.6.2"_q},
     "",
     {},
     ""_q,
     ""},
    {"backByADetour",
     "K30"_q,
     "VN-3.0.6.25",
     "VN-3.0.5",
     {"VN-3.0.6.3"_q, "VN-3.0.6.30"_q},
     {"VN-3.0.6.3"_q, "VN-3.0.5"_q},
     "",
     {},
     ""_q,
     ""},
    {"threeUpdates",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.5",
     {"VN-3.0.6.29"_q, "VN-3.0.6.1"_q},
     {"VN-3.0.6.29"_q, "VN-3.0.6.1"_q, "VN-3.0.5"_q},
     "",
     {},
     ""_q,
     ""},
    {"r16ByTheOneRelease",
     ""_q,
     "R16-2.1.3",
     "R16-2.3",
     {"R16-2.2.1.11"_q, "R16-2.2.1.10"_q},
     {"R16-2.2.1.10"_q, "R16-2.3"_q},
     "",
     {},
     ""_q,
     ""},
    {"noModel_safeOnAll", ""_q, "VN-3.0.8.1", "VN-4.1", {}, {"VN-4.1"_q}, "", {}, ""_q, ""},

    {"nothingAtHand",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.6.2",
     {},
     {},
     "VN-3.0.3.7",
     {"k40-step"_q},
     "VN-3.0.6.29 or later"_q,
     "VN-3.0.6.29"},
    {"whatIsAtHandDoesNotHelp",
     "K40"_q,
     "VN-3.0.3.7",
     "VN-3.0.6.2",
     {"VN-3.0.6.28"_q, "VN-4.1"_q},
     {},
     "VN-3.0.3.7",
     {"k40-step"_q},
     "VN-3.0.6.29 or later"_q,
     "VN-3.0.6.29"},
    {"r16Step",
     "D24"_q,
     "R16-2.1.3",
     "R16-2.3",
     {},
     {},
     "R16-2.1.3",
     {"r16-step"_q},
     "R16-2.2.1.10"_q,
     "R16-2.2.1.10"},
    {"noPackageHelps",
     "W40"_q,
     "VN-3.0",
     "VN-3.1",
     {"VN-3.4.5.4"_q},
     {},
     "VN-3.0",
     {"w40-minimum"_q},
     "VN-3.4.5.4 or later"_q,
     ""},
    {"comesNearer",
     "H40"_q,
     "VN-3.4",
     "VN-3.0.7",
     {"VN-3.0.9"_q, "VN-3.1"_q, "VN-3.0.6"_q},
     {},
     "VN-3.0.9",
     {"h40-return"_q},
     "VN-3.0.8.* or later"_q,
     ""},
    {"noWayBackBelow4",
     "D24"_q,
     "VN-4.5",
     "VN-3.9",
     {"VN-4.1"_q, "VN-3.8"_q},
     {},
     "VN-4.1",
     {"major"_q},
     "major version 4 or later"_q,
     ""},
    {"anotherPlatform",
     "D24"_q,
     "VN-3.0",
     "R16-2.2",
     {"VN-2.0"_q},
     {},
     "VN-2.0",
     {"platform"_q},
     "a version of platform VN"_q,
     ""},
    {"twoReasons",
     "D24"_q,
     "VN-4.0",
     "R16-2.2",
     {},
     {},
     "VN-4.0",
     {"platform"_q, "major"_q},
     "a version of platform VN"_q,
     ""},
    {"backBelowTheStep",
     "K30"_q,
     "VN-3.0.6.25",
     "VN-3.0.5",
     {"VN-3.0.6.30"_q},
     {},
     "VN-3.0.6.25",
     {"k30-h30-k40-return"_q},
     "VN-3.0.6.* or later"_q,
     "VN-3.0.6.0"},
    {"noModel_blockedOnOneClass",
     ""_q,
     "VN-3.0",
     "VN-3.1",
     {},
     {},
     "VN-3.0",
     {"w40-minimum"_q, "50-minimum"_q},
     "VN-3.4.5.4 or later"_q,
     ""},
};

INSTANTIATE_TEST_SUITE_P(Table, Plan, testing::ValuesIn(plans), nameOfRow);

TEST(UpdateAdvisor, plansNothingThatItCannotJudge)
{
    UpdatePlan plan =
        UpdateAdvisor::plan("k40"_q, "VN-3.0.3.7", "VN-3.0.6.*", versions({"VN-3.0.6.29"_q}));
    EXPECT_FALSE(plan.reachable);
    EXPECT_TRUE(plan.hops.isEmpty());
    EXPECT_EQ(plan.obstacles,
              (QStringList{"model k40: did you mean K40?"_q,
                           "\"VN-3.0.6.*\" is a pattern, where one version is needed"_q}));
    EXPECT_EQ(plan.candidates, QStringList{"K40"_q});
}

TEST(UpdateAdvisor, leavesOutWhatIsNoOneVersion)
{
    const UpdatePlan plan =
        UpdateAdvisor::plan("K40"_q, "VN-3.0.3.7", "VN-3.0.6.2",
                            versions({"VN-3.9-rc"_q, "VN-3.0.6.30"_q, "VN-3.8.*"_q, "image"_q,
                                      "VN-3.x"_q, "VN-3.8.1.1.rc"_q}));
    ASSERT_EQ(plan.hops.size(), 2);
    EXPECT_EQ(QString(plan.hops.first().version), "VN-3.0.6.30"_q);
    QStringList leftOut;
    for (const VanteroSoftwareVersion &version : plan.leftOut)
        leftOut.append(version);
    EXPECT_EQ(leftOut,
              (QStringList{"VN-3.9-rc"_q, "VN-3.8.*"_q, "image"_q, "VN-3.x"_q, "VN-3.8.1.1.rc"_q}));
}

TEST(UpdateAdvisor, plansAsBruteForceDoes_aSample)
{
    Random random(41);
    PlanProof::Figures figures;
    for (const QString &platform : PlanProof::platforms()) {
        for (const QString &model : PlanProof::models()) {
            PlanProof proof(model, platform);
            const auto one = [&] { return int(random.below(unsigned(proof.versionCount()))); };
            for (int run = 0; run < 2000; ++run) {
                const int current = one();
                const int target = one();
                std::vector<int> available;
                for (unsigned n = random.below(7); n > 0; --n) {
                    const int version = one();
                    if (std::find(available.begin(), available.end(), version) == available.end())
                        available.push_back(version);
                }
                ASSERT_EQ(proof.compare(current, target, available, figures), QString())
                    << qPrintable(model) << " on " << qPrintable(platform) << " from " << current
                    << " to " << target << " by " << testing::PrintToString(available);
            }
        }
    }
    EXPECT_GT(figures.longWays, 100U);
    EXPECT_GT(figures.noWays, 1000U);
    EXPECT_GT(figures.bridges, 100U);
}

/** No more than the square of the number of versions is compared: the chain below makes each
 * version wait for the one before. */
TEST(UpdateAdvisor, plansWithAThousandVersions)
{
    QList<VanteroSoftwareVersion> available;
    for (int i = 0; i < 500; ++i) {
        available.append("VN-3.0.6.%1"_q.arg(i));
        available.append("VN-3.0.%1.1"_q.arg(i % 4));
    }
    const UpdatePlan way = UpdateAdvisor::plan("K40"_q, "VN-3.0.3.7", "VN-3.0.5", available);
    ASSERT_EQ(way.hops.size(), 3);
    EXPECT_EQ(QString(way.hops.at(0).version), "VN-3.0.6.499"_q);
    EXPECT_EQ(QString(way.hops.at(1).version), "VN-3.0.6.23"_q);
    const UpdatePlan none = UpdateAdvisor::plan("W40"_q, "VN-3.0.3.7", "VN-3.0.5", available);
    EXPECT_FALSE(none.reachable);
    EXPECT_EQ(UpdateAdvisor::installable("K30"_q, "VN-3.0.6.499", available).size(), 1000);
}

// ---- What may be installed
// -----------------------------------------------------------------------

TEST(UpdateAdvisor, saysOfEachVersionHowItMayBeInstalled)
{
    using Way = InstallableVersion::Way;
    const QStringList offered{"VN-3.0.6.2"_q, "VN-3.0.6.29"_q, "VN-3.0.3.7"_q, "VN-4.1"_q,
                              "R16-2.2"_q,    "VN-3.0.8.*"_q,  "VN-3.0.5"_q};
    const QList<InstallableVersion> rows =
        UpdateAdvisor::installable("K40"_q, "VN-3.0.3.7", versions(offered));
    const struct
    {
        Way way;
        QStringList rules;
        QStringList hops;
    } expected[] = {
        {Way::ByPlan, {"k40-step"_q}, {"VN-3.0.6.29"_q, "VN-3.0.6.2"_q}},
        {Way::Directly, {}, {"VN-3.0.6.29"_q}},
        {Way::Directly, {}, {}}, // the camera has it
        {Way::Directly, {}, {"VN-4.1"_q}},
        {Way::Never, {"platform"_q, "k40-step"_q}, {}},
        {Way::Unknown, {}, {}},
        {Way::ByPlan, {"k40-step"_q}, {"VN-3.0.6.29"_q, "VN-3.0.6.2"_q, "VN-3.0.5"_q}},
    };
    ASSERT_EQ(rows.size(), offered.size());
    for (int i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(qPrintable(offered.at(i)));
        EXPECT_EQ(QString(rows.at(i).version), offered.at(i));
        EXPECT_EQ(rows.at(i).way, expected[i].way);
        EXPECT_EQ(rulesOf(rows.at(i).reasons), expected[i].rules);
        QStringList hops;
        for (const vn::UpdateHop &hop : rows.at(i).plan.hops)
            hops.append(hop.version);
        EXPECT_EQ(hops, expected[i].hops);
    }
    EXPECT_EQ(rows.at(5).plan.obstacles,
              QStringList{"\"VN-3.0.8.*\" is a pattern, where one version is needed"_q});
    EXPECT_EQ(rulesOf(rows.at(4).plan.blockedBy), (QStringList{"platform"_q, "k40-step"_q}));
}

TEST(UpdateAdvisor, saysTheSameOfEachVersionAsItsPlan)
{
    Random random(51);
    const QStringList numbers{"VN-3.0.3.7"_q,  "VN-3.0.5"_q,   "VN-3.0.6.1"_q,     "VN-3.0.6.23"_q,
                              "VN-3.0.6.29"_q, "VN-3.0.8.1"_q, "VN-3.4.5.4"_q,     "VN-4.0"_q,
                              "VN-V4"_q,       "R16-2.2"_q,    "VN-3.0.6.29-rc"_q, "junk"_q};
    const QStringList models{"K40"_q, "H40"_q, "K30"_q, "W40"_q, "X50"_q, ""_q};
    for (int run = 0; run < 2000; ++run) {
        QStringList offered;
        for (unsigned n = random.below(8); n > 0; --n)
            offered.append(random.oneOf(numbers));
        const QString model = random.oneOf(models);
        const VanteroSoftwareVersion current(random.oneOf(numbers));
        const QList<VanteroSoftwareVersion> available = versions(offered);
        const auto rows = UpdateAdvisor::installable(model, current, available);
        ASSERT_EQ(rows.size(), available.size());
        for (int i = 0; i < rows.size(); ++i) {
            const UpdatePlan &plan = rows.at(i).plan;
            const UpdatePlan alone =
                UpdateAdvisor::plan(model, current, available.at(i), available);
            ASSERT_EQ(plan.reachable, alone.reachable);
            ASSERT_EQ(plan.obstacles, alone.obstacles);
            ASSERT_EQ(QString(plan.nearest), QString(alone.nearest));
            ASSERT_EQ(QString(plan.bridge), QString(alone.bridge));
            ASSERT_EQ(plan.hops.size(), alone.hops.size());
            for (int hop = 0; hop < plan.hops.size(); ++hop)
                ASSERT_EQ(plan.hops.at(hop).version, alone.hops.at(hop).version);
        }
    }
}

} // namespace
