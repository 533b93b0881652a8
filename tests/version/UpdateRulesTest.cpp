// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/UpdateRules.h"

#include "VersionSupport.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <gtest/gtest.h>

using vn::UpdateModelClass;
using vn::UpdateRule;
using vn::UpdateRules;
using vn::VanteroSoftwareVersion;

namespace {

constexpr auto kDecides = UpdateRule::Effect::Decides;
constexpr auto kRefuses = UpdateRule::Effect::Refuses;

TEST(UpdateRules, areTheTableInItsOrder)
{
    const QString any = "any version"_q;
    const QString first = "must first be updated to"_q;
    const QString stay = "must stay on"_q;
    const QString only = "may only be updated to"_q;
    const QStringList family{"K30"_q, "H30"_q, "K40"_q};
    const UpdateRule expected[] = {
        {"platform"_q,
         ""_q,
         {},
         any,
         kRefuses,
         stay,
         "their platform"_q,
         "Cameras must stay on their platform"_q},
        {"major"_q,
         ""_q,
         {},
         "major version 4 or later"_q,
         kRefuses,
         stay,
         "major version 4 or later"_q,
         "Cameras on major version 4 or later must stay on major version 4 or later"_q},
        {"r16-step"_q,
         "R16"_q,
         {},
         "R16-2.1.* or earlier"_q,
         kDecides,
         first,
         "R16-2.2.1.10"_q,
         "Cameras on R16-2.1.* or earlier must first be updated to R16-2.2.1.10"_q},
        {"r16-return"_q,
         "R16"_q,
         {},
         "R16-2.2.1.* or later"_q,
         kDecides,
         stay,
         "R16-2.2.1.* or later"_q,
         "Cameras on R16-2.2.1.* or later must stay on R16-2.2.1.* or later"_q},
        {"k40-step"_q,
         "VN"_q,
         {"K40"_q},
         "VN-3.0.3.*"_q,
         kDecides,
         first,
         "VN-3.0.6.29 or later"_q,
         "K40 cameras on VN-3.0.3.* must first be updated to VN-3.0.6.29 or later"_q},
        {"h40-return"_q,
         "VN"_q,
         {"H40"_q},
         "VN-3.0.8.* or later"_q,
         kDecides,
         stay,
         "VN-3.0.8.* or later"_q,
         "H40 cameras on VN-3.0.8.* or later must stay on VN-3.0.8.* or later"_q},
        {"k30-h30-k40-return"_q, "VN"_q, family, "VN-3.0.6.24 or later"_q, kDecides, stay,
         "VN-3.0.6.* or later"_q,
         "K30, H30 and K40 cameras on VN-3.0.6.24 or later must stay on VN-3.0.6.* or later"_q},
        {"k30-h30-k40-pattern"_q, "VN"_q, family, "VN-3.0.8.* or later"_q, kDecides, stay,
         "VN-3.0.6.* or later"_q,
         "K30, H30 and K40 cameras on VN-3.0.8.* or later must stay on VN-3.0.6.* or later"_q},
        {"w40-minimum"_q,
         "VN"_q,
         {"W40"_q},
         any,
         kDecides,
         only,
         "VN-3.4.5.4 or later"_q,
         "W40 cameras on VN may only be updated to VN-3.4.5.4 or later"_q},
        {"50-minimum"_q,
         "VN"_q,
         {"?50"_q},
         any,
         kDecides,
         only,
         "major version 4 or later"_q,
         "?50 cameras on VN may only be updated to major version 4 or later"_q},
        {"none"_q,
         ""_q,
         {},
         any,
         kDecides,
         "may otherwise be updated to"_q,
         any,
         "Cameras may otherwise be updated to any version"_q},
    };
    const QList<UpdateRule> rules = UpdateRules::all();
    ASSERT_EQ(rules.size(), int(std::size(expected)));
    for (int i = 0; i < rules.size(); ++i) {
        const UpdateRule &rule = rules.at(i);
        const UpdateRule &wanted = expected[i];
        SCOPED_TRACE(qPrintable(wanted.identifier));
        EXPECT_EQ(rule.identifier, wanted.identifier);
        EXPECT_EQ(rule.platform, wanted.platform);
        EXPECT_EQ(rule.models, wanted.models);
        EXPECT_EQ(rule.current, wanted.current);
        EXPECT_EQ(rule.effect, wanted.effect);
        EXPECT_EQ(rule.demand, wanted.demand);
        EXPECT_EQ(rule.target, wanted.target);
        EXPECT_EQ(rule.sentence, wanted.sentence);
    }
}

TEST(UpdateRules, tellSixClassesOfModelsApart)
{
    const QList<UpdateModelClass> classes = UpdateRules::modelClasses();
    const UpdateModelClass expected[] = {
        {{"K40"_q}, "K40"_q, "K40"_q},
        {{"H40"_q}, "H40"_q, "H40"_q},
        {{"K30"_q, "H30"_q}, "K30, H30"_q, "K30"_q},
        {{"W40"_q}, "W40"_q, "W40"_q},
        {{"?50"_q}, "?50"_q, "?50"_q},
        {{}, "other models"_q, "other"_q},
    };
    ASSERT_EQ(classes.size(), int(std::size(expected)));
    for (int i = 0; i < classes.size(); ++i) {
        EXPECT_EQ(classes.at(i).beginnings, expected[i].beginnings);
        EXPECT_EQ(classes.at(i).name, expected[i].name);
        EXPECT_EQ(classes.at(i).example, expected[i].example);
        EXPECT_EQ(UpdateRules::modelClass(classes.at(i).example), i);
    }
}

TEST(UpdateRules, everyModelHasAClass)
{
    const struct
    {
        QString model;
        int index;
    } rows[] = {
        {"K40xyz"_q, 0}, {"H40"_q, 1},  {"K30b"_q, 2},  {"H30"_q, 2},  {"W40"_q, 3},
        {"X50"_q, 4},    {"550"_q, 4},  {"x50-a"_q, 4}, {""_q, 5},     {QString(), 5},
        {"k40"_q, 5},    {"AB50"_q, 5}, {"K4"_q, 5},    {"D24M"_q, 5},
    };
    for (const auto &row : rows)
        EXPECT_EQ(UpdateRules::modelClass(row.model), row.index) << qPrintable(row.model);
}

TEST(UpdateRules, modelsOfOneClassAreJudgedAlike)
{
    Random random(11);
    const QList<UpdateModelClass> classes = UpdateRules::modelClasses();
    const QStringList pieces{"K"_q, "H"_q, "W"_q, "k"_q, "4"_q, "3"_q, "5"_q, "0"_q, "?"_q, " "_q};
    const QStringList numbers{"3.0.3.7"_q, "3.0.6.23"_q, "3.0.6.29"_q, "3.0.8.1"_q,
                              "3.4.5.4"_q, "4.0"_q,      "3.0.5"_q};
    for (int run = 0; run < 20000; ++run) {
        QString model;
        for (unsigned n = random.below(5); n > 0; --n)
            model += random.oneOf(pieces);
        const VanteroSoftwareVersion current("VN-"_q + random.oneOf(numbers));
        const VanteroSoftwareVersion target("VN-"_q + random.oneOf(numbers));
        const QString example = classes.at(UpdateRules::modelClass(model)).example;
        ASSERT_EQ(current.checkUpdate(model, target).rule,
                  current.checkUpdate(example, target).rule)
            << qPrintable(model);
    }
}

} // namespace
