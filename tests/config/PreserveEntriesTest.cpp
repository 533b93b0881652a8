// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/PreservePresets.h"
#include "config/VanteroConfigFile.h"

#include "support/ConfigMaps.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

using vn::VanteroConfigFile;
using vn::VanteroConfigMap;
using Section = QMultiMap<QString, QString>;
using Preset = void (VanteroConfigFile::*)(const VanteroConfigFile &, VanteroConfigMap &) const;

namespace {

VanteroConfigFile configOf(const QString &section, const Section &content)
{
    VanteroConfigFile config;
    config.setSection(section, content);
    return config;
}

struct PresetRow
{
    const char *name;
    QString called;
    Preset preset;
    QString section;
    QStringList keys;
};

std::ostream &operator<<(std::ostream &out, const PresetRow &row)
{
    return out << row.name;
}

class Presets : public testing::TestWithParam<PresetRow>
{
};

} // namespace

// ---- preserveEntries -------------------------------------------------------------------------

TEST(PreserveEntries, takesListedKeysFromThePreviousAndTheRestFromTheNew)
{
    const VanteroConfigFile config = configOf("s"_q, {{"a"_q, "new"_q}, {"b"_q, "new"_q}});
    const VanteroConfigFile previous =
        configOf("s"_q, {{"a"_q, "old"_q}, {"b"_q, "old"_q}, {"c"_q, "old"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(previous, "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{a=old;b=new;}"_q);
    EXPECT_EQ(shown(config.section("s"_q)), "a=new;b=new;"_q);
    EXPECT_EQ(shown(previous.section("s"_q)), "a=old;b=old;c=old;"_q);
}

TEST(PreserveEntries, addsAListedKeyThatTheNewLacks)
{
    const VanteroConfigFile config = configOf("s"_q, {{"b"_q, "new"_q}});
    const VanteroConfigFile previous = configOf("s"_q, {{"a"_q, "old"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(previous, "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{a=old;b=new;}"_q);
}

TEST(PreserveEntries, writesANullValueForAKeyThatThePreviousLacks)
{
    const VanteroConfigFile config = configOf("s"_q, {{"a"_q, "new"_q}});
    const VanteroConfigFile previous = configOf("s"_q, {{"b"_q, "old"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(previous, "s"_q, {"a"_q, "none"_q}, result));
    EXPECT_EQ(shown(result), "s{a=(null);none=(null);}"_q);
    EXPECT_EQ(result.toString("s"_q), "SECTION s\na=\nnone=\nENDSECTION s\n"_q);
}

TEST(PreserveEntries, writesNullValuesWhenThePreviousLacksTheSection)
{
    const VanteroConfigFile config = configOf("s"_q, {{"a"_q, "new"_q}, {"b"_q, "new"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(VanteroConfigFile(), "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{a=(null);b=new;}"_q);
}

TEST(PreserveEntries, keepsAnEmptyValueOfThePreviousEmpty)
{
    const VanteroConfigFile config = configOf("s"_q, {{"a"_q, "new"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(configOf("s"_q, {{"a"_q, ""_q}}), "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{a=;}"_q);
}

TEST(PreserveEntries, takesAWholeSectionThatTheNewLacks)
{
    const VanteroConfigFile previous =
        configOf("s"_q, {{"a"_q, "1"_q}, {"a"_q, "2"_q}, {"b"_q, QString()}});
    VanteroConfigMap result;
    result.addValue("s"_q, "before"_q, "x"_q);
    result.addValue("t"_q, "before"_q, "x"_q);
    EXPECT_FALSE(VanteroConfigFile().preserveEntries(previous, "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{a=2;a=1;b=(null);}t{before=x;}"_q);
}

TEST(PreserveEntries, changesNothingWhenNeitherHasTheSection)
{
    VanteroConfigMap result;
    result.addValue("s"_q, "before"_q, "x"_q);
    EXPECT_FALSE(VanteroConfigFile().preserveEntries(VanteroConfigFile(), "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{before=x;}"_q);
    EXPECT_FALSE(VanteroConfigFile().preserveEntries(VanteroConfigFile(), "u"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{before=x;}"_q);
}

TEST(PreserveEntries, countsAnEmptySectionOfTheNewAsThere)
{
    const VanteroConfigFile previous = configOf("s"_q, {{"a"_q, "old"_q}, {"b"_q, "old"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(configOf("s"_q, {}).preserveEntries(previous, "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{a=old;}"_q);
}

TEST(PreserveEntries, takesAnEmptySectionOfThePreviousOver)
{
    VanteroConfigMap result;
    result.addValue("s"_q, "before"_q, "x"_q);
    EXPECT_FALSE(VanteroConfigFile().preserveEntries(configOf("s"_q, {}), "s"_q, {}, result));
    EXPECT_EQ(shown(result), "s{}"_q);
}

TEST(PreserveEntries, keepsTheSectionThatTheResultHas)
{
    const VanteroConfigFile config = configOf("s"_q, {{"a"_q, "new"_q}, {"b"_q, "new"_q}});
    const VanteroConfigFile previous = configOf("s"_q, {{"a"_q, "old"_q}});
    VanteroConfigMap result;
    result.addValue("s"_q, "unrelated"_q, "x"_q);
    EXPECT_TRUE(config.preserveEntries(previous, "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{a=old;unrelated=x;}"_q);
}

TEST(PreserveEntries, overwritesOnlyTheNewestOfSeveralEntries)
{
    const VanteroConfigFile config =
        configOf("s"_q, {{"a"_q, "oldest"_q}, {"a"_q, "older"_q}, {"a"_q, "newest"_q}});
    const VanteroConfigFile previous = configOf("s"_q, {{"a"_q, "p1"_q}, {"a"_q, "p2"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(previous, "s"_q, {"a"_q}, result));
    EXPECT_EQ(shown(result), "s{a=p2;a=older;a=oldest;}"_q);
}

TEST(PreserveEntries, copiesTheNewSectionForAnEmptyKeyList)
{
    const VanteroConfigFile config = configOf("s"_q, {{"a"_q, "1"_q}, {"a"_q, "2"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(configOf("s"_q, {{"a"_q, "old"_q}}), "s"_q, {}, result));
    EXPECT_EQ(shown(result), "s{a=2;a=1;}"_q);
}

TEST(PreserveEntries, writesAKeyThatIsListedTwiceOnce)
{
    const VanteroConfigFile config = configOf("s"_q, {{"a"_q, "new"_q}});
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(configOf("s"_q, {{"a"_q, "old"_q}, {"b"_q, "old"_q}}), "s"_q,
                                       {"b"_q, "a"_q, "b"_q}, result));
    EXPECT_EQ(shown(result), "s{a=old;b=old;}"_q);
}

TEST(PreserveEntries, acceptsTheConfigurationItselfAsPrevious)
{
    const VanteroConfigFile config = configOf("s"_q, {{"a"_q, "1"_q}, {"b"_q, "2"_q}});
    VanteroConfigMap result;
    result.addValue("s"_q, "a"_q, "before"_q);
    EXPECT_TRUE(config.preserveEntries(config, "s"_q, {"a"_q, "c"_q}, result));
    EXPECT_EQ(shown(result), "s{a=1;c=(null);}"_q);
    EXPECT_FALSE(config.preserveEntries(config, "t"_q, {"a"_q}, result));
}

TEST(PreserveEntries, treatsTheHeaderAsAnySection)
{
    VanteroConfigFile config;
    config.setFileVersion("1.4"_q);
    config.setFactoryIP("10.0.0.9"_q);
    VanteroConfigFile previous;
    previous.setFactoryIP("10.0.0.1"_q);
    VanteroConfigMap result;
    EXPECT_TRUE(config.preserveEntries(previous, VanteroConfigFile::HEAD_SECTION,
                                       {VanteroConfigFile::FACTORY_IP}, result));
    EXPECT_EQ(shown(result), "head{Factory IP=10.0.0.1;File Version=1.4;}"_q);
}

TEST(PreserveEntries, seesOneStateOfTheNewConfiguration)
{
    // Both keys always hold the same value. With the lock held throughout, the copy is of one
    // state though another thread replaces the section all the time.
    VanteroConfigFile config = configOf("s"_q, {{"a"_q, "0"_q}, {"b"_q, "0"_q}});
    const VanteroConfigFile previous = configOf("s"_q, {{"c"_q, "old"_q}});
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int i = 0; i < 5000; ++i) {
            const QString value = QString::number(i);
            config.setSection("s"_q, {{"a"_q, value}, {"b"_q, value}});
        }
        done = true;
    });
    do {
        VanteroConfigMap result;
        EXPECT_TRUE(config.preserveEntries(previous, "s"_q, {"c"_q}, result));
        EXPECT_EQ(result.value("s"_q, "a"_q, 0), result.value("s"_q, "b"_q, 0));
        EXPECT_EQ(result.value("s"_q, "c"_q, 0), "old"_q);
    } while (!done);
    writer.join();
}

TEST(PreserveEntries, leavesItsLockFree)
{
    VanteroConfigFile config = configOf("s"_q, {{"a"_q, "1"_q}});
    const VanteroConfigFile previous;
    VanteroConfigMap result;
    (void)config.preserveEntries(previous, "s"_q, {"a"_q}, result);
    (void)config.preserveEntries(previous, "t"_q, {"a"_q}, result);
    std::thread([&] { config.setValue("s"_q, "a"_q, "2"_q); }).join();
    EXPECT_EQ(config.value("s"_q, "a"_q), "2"_q);
}

TEST(PreserveEntries, agreesWithStepByStepEdits)
{
    Random random(20230503);
    const QStringList sections = {"s"_q, "t"_q};
    const QStringList keys = {"a"_q, "b"_q, "c"_q};
    const auto randomMap = [&] {
        VanteroConfigMap map;
        for (unsigned count = random.below(8); count > 0; --count)
            map.addValue(random.oneOf(sections), random.oneOf(keys),
                         random.below(4) ? QString::number(random.below(100)) : QString());
        return map;
    };
    for (int i = 0; i < 5000; ++i) {
        const VanteroConfigMap config = randomMap();
        const VanteroConfigMap previous = randomMap();
        VanteroConfigMap result = randomMap();
        const QString section = random.oneOf(sections);
        QStringList listed;
        for (unsigned count = random.below(4); count > 0; --count)
            listed += random.oneOf(keys);

        VanteroConfigMap expected = result;
        const bool there = config.containsSection(section);
        if (there && !expected.containsSection(section))
            expected.section(section) = config.section(section);
        if (!there && previous.containsSection(section))
            expected.section(section) = previous.section(section);
        for (const QString &key : there ? listed : QStringList()) {
            const QList<QString> values = previous.values(section, key);
            const QString value = values.isEmpty() ? QString() : values.first();
            Section &content = expected.section(section);
            if (content.contains(key))
                content.find(key).value() = value;
            else
                content.insert(key, value);
        }

        EXPECT_EQ(fileOf(config).preserveEntries(fileOf(previous), section, listed, result), there);
        ASSERT_EQ(shown(result), shown(expected));
    }
}

// ---- Presets ---------------------------------------------------------------------------------

TEST_P(Presets, takeTheirKeysAndNoOthersFromThePrevious)
{
    const PresetRow &row = GetParam();
    Section newSection;
    Section previousSection;
    Section expected;
    for (const QString &key : row.keys + QStringList{"other"_q}) {
        newSection.insert(key, "new"_q);
        previousSection.insert(key, "old "_q + key);
        expected.insert(key, key == "other"_q ? "new"_q : "old "_q + key);
    }
    previousSection.insert("lost"_q, "old"_q);
    const VanteroConfigFile config = configOf(row.section, newSection);
    const VanteroConfigFile previous = configOf(row.section, previousSection);
    VanteroConfigMap result;
    (config.*row.preset)(previous, result);
    EXPECT_EQ(result.allSectionKeys(), QStringList{row.section});
    EXPECT_EQ(shown(result.section(row.section)), shown(expected));
}

TEST_P(Presets, writeAllTheirKeysEvenWhereThePreviousHasNone)
{
    const PresetRow &row = GetParam();
    VanteroConfigMap result;
    (configOf(row.section, {}).*row.preset)(VanteroConfigFile(), result);
    Section expected;
    for (const QString &key : row.keys)
        expected.insert(key, QString());
    EXPECT_EQ(shown(result.section(row.section)), shown(expected));
}

TEST_P(Presets, takeAWholeSectionThatTheNewLacks)
{
    const PresetRow &row = GetParam();
    const Section content = {{row.keys.first(), "old"_q}, {"other"_q, "old"_q}};
    const VanteroConfigFile previous = configOf(row.section, content);
    VanteroConfigMap result;
    (VanteroConfigFile().*row.preset)(previous, result);
    EXPECT_EQ(shown(result.section(row.section)), shown(content));
}

TEST_P(Presets, touchNoOtherSection)
{
    const PresetRow &row = GetParam();
    const VanteroConfigFile config = configOf("other"_q, {{row.keys.first(), "new"_q}});
    const VanteroConfigFile previous = configOf("other"_q, {{row.keys.first(), "old"_q}});
    VanteroConfigMap result;
    (config.*row.preset)(previous, result);
    EXPECT_EQ(shown(result), ""_q);
}

TEST_P(Presets, canBeReadAsValues)
{
    const PresetRow &row = GetParam();
    const QList<vn::PreservePreset> presets = vn::preservePresets();
    ASSERT_EQ(presets.size(), 3);
    const auto preset = std::find_if(presets.begin(), presets.end(),
                                     [&](const auto &p) { return p.name == row.called; });
    ASSERT_NE(preset, presets.end());
    EXPECT_EQ(preset->section, row.section);
    EXPECT_EQ(preset->keys, row.keys);
}

INSTANTIATE_TEST_SUITE_P(
    , Presets,
    testing::Values(PresetRow{"timeTableReferences",
                              "time-tables"_q,
                              &VanteroConfigFile::preserveTimeTableReferences,
                              "eventdlite"_q,
                              {"edacttimetable"_q, "armcond_ac1_timetable"_q,
                               "armcond_ac2_timetable"_q, "actions_timetable"_q,
                               "messaging_timetable"_q, "messaging2_timetable"_q,
                               "recording_timetable"_q, "coverimage_timetable"_q}},
                    PresetRow{"videoMotion",
                              "motion"_q,
                              &VanteroConfigFile::preserveVideoMotion,
                              "eventdlite"_q,
                              {"motiondef"_q, "motioncheck"_q, "motion2_def"_q, "motion2_check"_q}},
                    PresetRow{"ipAddresses",
                              "network"_q,
                              &VanteroConfigFile::preserveIpAddresses,
                              "ethernet"_q,
                              {"IPADDR"_q, "HOSTNAME"_q}}),
    nameOfRow);

TEST(PresetCalls, fillOneResultOneAfterAnother)
{
    const VanteroConfigFile config =
        configOf("eventdlite"_q,
                 {{"edacttimetable"_q, "new"_q}, {"motiondef"_q, "new"_q}, {"other"_q, "new"_q}});
    const VanteroConfigFile previous =
        configOf("eventdlite"_q,
                 {{"edacttimetable"_q, "old"_q}, {"motiondef"_q, "old"_q}, {"other"_q, "old"_q}});
    VanteroConfigMap result;
    config.preserveTimeTableReferences(previous, result);
    EXPECT_EQ(result.value("eventdlite"_q, "edacttimetable"_q, 0), "old"_q);
    EXPECT_EQ(result.value("eventdlite"_q, "motiondef"_q, 0), "new"_q);
    config.preserveVideoMotion(previous, result);
    EXPECT_EQ(result.value("eventdlite"_q, "edacttimetable"_q, 0), "old"_q);
    EXPECT_EQ(result.value("eventdlite"_q, "motiondef"_q, 0), "old"_q);
    EXPECT_EQ(result.value("eventdlite"_q, "other"_q, 0), "new"_q);
}

TEST(PresetCalls, nullTheHostNameThatThePreviousLacks)
{
    const VanteroConfigFile config = configOf(
        "ethernet"_q, {{"IPADDR"_q, "new"_q}, {"HOSTNAME"_q, "new"_q}, {"DNS"_q, "new"_q}});
    const VanteroConfigFile previous = configOf("ethernet"_q, {{"IPADDR"_q, "10.0.0.1"_q}});
    VanteroConfigMap result;
    config.preserveIpAddresses(previous, result);
    EXPECT_EQ(shown(result), "ethernet{DNS=new;HOSTNAME=(null);IPADDR=10.0.0.1;}"_q);
}
