// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigDiff.h"

#include "support/ConfigMaps.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using vn::VanteroConfigFile;
using vn::VanteroConfigMap;

namespace {

/** As text: "s: a Changed [1] [2]; t+: b OnlyInSecond - [3]"; "-" and "+" behind the section tell
 * that only the first or the second map has it. */
QString shown(const vn::ConfigDiff &diff)
{
    const char *const kinds[] = {"OnlyInFirst", "OnlyInSecond", "Changed", "Reordered",
                                 "NullAgainstEmpty"};
    const auto values = [](const QStringList &list) {
        QStringList texts;
        for (const QString &value : list)
            texts += value.isNull() ? "(null)"_q : value;
        return list.isEmpty() ? " -"_q : " ["_q + texts.join(","_q) + "]"_q;
    };
    QStringList sections;
    for (const vn::ConfigSectionDifference &section : diff) {
        QString text = section.section;
        if (section.inFirst != section.inSecond)
            text += section.inFirst ? "-"_q : "+"_q;
        text += ":"_q;
        for (const vn::ConfigKeyDifference &key : section.keys)
            text += " "_q + key.key + " "_q + QString::fromLatin1(kinds[int(key.kind)]) +
                    values(key.first) + values(key.second);
        sections += text;
    }
    return sections.join("; "_q);
}

/** The first map with what @p diff tells of the second. */
VanteroConfigMap applied(VanteroConfigMap map, const vn::ConfigDiff &diff)
{
    for (const vn::ConfigSectionDifference &section : diff) {
        if (!section.inSecond) {
            map.removeSection(section.section);
            continue;
        }
        (void)map.section(section.section);
        for (const vn::ConfigKeyDifference &key : section.keys) {
            (void)map.remove(section.section, key.key);
            for (int i = key.second.size(); i > 0; --i)
                map.addValue(section.section, key.key, key.second.at(i - 1));
        }
    }
    return map;
}

struct Row
{
    const char *name;
    QString first;
    QString second;
    QString expected;
};

// clang-format off
const Row rows[] = {
    // name                          first                 second                expected
    {"nothingIsNothing",             ""_q,                 ""_q,                 ""_q},
    {"equalMaps",                    "s{a=1;}"_q,          "s{a=1;}"_q,          ""_q},
    {"orderOfKeysDoesNotMatter",     "s{a=1;b=2;}"_q,      "s{b=2;a=1;}"_q,      ""_q},
    {"anotherValue",                 "s{a=1;b=2;}"_q,      "s{a=3;b=2;}"_q,      "s: a Changed [1] [3]"_q},
    {"caseCounts",                   "s{a=x;}"_q,          "s{a=X;}"_q,          "s: a Changed [x] [X]"_q},
    {"keyOnlyInFirst",               "s{a=1;b=2;}"_q,      "s{b=2;}"_q,          "s: a OnlyInFirst [1] -"_q},
    {"keyOnlyInSecond",              "s{b=2;}"_q,          "s{b=2;c=3;}"_q,      "s: c OnlyInSecond - [3]"_q},
    {"caseOfKeysCounts",             "s{a=1;}"_q,          "s{A=1;}"_q,          "s: A OnlyInSecond - [1] a OnlyInFirst [1] -"_q},
    {"valuesNewestFirst",            "s{a=1;a=2;}"_q,      "s{a=1;a=2;a=3;}"_q,  "s: a Changed [2,1] [3,2,1]"_q},
    {"oneValueFewer",                "s{a=1;a=1;}"_q,      "s{a=1;}"_q,          "s: a Changed [1,1] [1]"_q},
    {"swappedValues",                "s{a=1;a=2;}"_q,      "s{a=2;a=1;}"_q,      "s: a Reordered [2,1] [1,2]"_q},
    {"otherNumbersOfEach",           "s{a=1;a=1;a=2;}"_q,  "s{a=1;a=2;a=2;}"_q,  "s: a Changed [2,1,1] [2,2,1]"_q},
    {"nullIsNotEmpty",               "s{a=(null);}"_q,     "s{a=;}"_q,           "s: a NullAgainstEmpty [(null)] []"_q},
    {"emptyIsNotNull",               "s{a=;}"_q,           "s{a=(null);}"_q,     "s: a NullAgainstEmpty [] [(null)]"_q},
    {"nullAndEmptySwapped",          "s{a=;a=(null);}"_q,  "s{a=(null);a=;}"_q,  "s: a NullAgainstEmpty [(null),] [,(null)]"_q},
    {"nullAmongSwappedValues",       "s{a=1;a=(null);}"_q, "s{a=(null);a=1;}"_q, "s: a Reordered [(null),1] [1,(null)]"_q},
    {"nullAgainstEmptyAndSwapped",   "s{a=1;a=(null);}"_q, "s{a=;a=1;}"_q,       "s: a Changed [(null),1] [1,]"_q},
    {"nullAgainstAValue",            "s{a=(null);}"_q,     "s{a=1;}"_q,          "s: a Changed [(null)] [1]"_q},
    {"nullAgainstMissing",           "s{a=(null);}"_q,     "s{}"_q,              "s: a OnlyInFirst [(null)] -"_q},
    {"emptyKey",                     "s{=1;}"_q,           "s{=2;}"_q,           "s:  Changed [1] [2]"_q},
    {"sectionOnlyInFirst",           "s{a=1;}t{b=2;}"_q,   "s{a=1;}"_q,          "t-: b OnlyInFirst [2] -"_q},
    {"sectionOnlyInSecond",          "t{b=2;}"_q,          "s{a=1;}t{b=2;}"_q,   "s+: a OnlyInSecond - [1]"_q},
    {"emptySectionOnlyInFirst",      "s{}"_q,              ""_q,                 "s-:"_q},
    {"emptySectionOnlyInSecond",     ""_q,                 "s{}"_q,              "s+:"_q},
    {"emptySectionsAreEqual",        "s{}"_q,              "s{}"_q,              ""_q},
    {"sectionsAscending",            "b{x=1;}a{x=1;}"_q,   "c{x=1;}"_q,          "a-: x OnlyInFirst [1] -; b-: x OnlyInFirst [1] -; c+: x OnlyInSecond - [1]"_q},
};
// clang-format on

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << row.name;
}

class ConfigDiffTest : public testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(ConfigDiffTest, tellsWhatDiffers)
{
    const Row &row = GetParam();
    EXPECT_EQ(shown(vn::configDiff(mapOf(row.first), mapOf(row.second))), row.expected);
}

TEST_P(ConfigDiffTest, mapsAreEqualExactlyWhenNothingDiffers)
{
    const Row &row = GetParam();
    const VanteroConfigMap first = mapOf(row.first);
    const VanteroConfigMap second = mapOf(row.second);
    EXPECT_EQ(first == second, row.expected.isEmpty());
    EXPECT_EQ(first != second, !row.expected.isEmpty());
    EXPECT_EQ(second == first, row.expected.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(, ConfigDiffTest, testing::ValuesIn(rows), nameOfRow);

TEST(ConfigDiff, leadsFromOneMapToTheOther)
{
    Random random(20261122);
    int differing = 0;
    for (int i = 0; i < 20000; ++i) {
        const VanteroConfigMap first = randomMap(random);
        const VanteroConfigMap second = randomMap(random);
        const vn::ConfigDiff diff = vn::configDiff(first, second);
        ASSERT_EQ(shown(applied(first, diff)), shown(second)) << shown(first).toStdString();
        // As texts, null and "(null)" would be one; no value is called so.
        ASSERT_EQ(first == second, shown(first) == shown(second));
        ASSERT_EQ(diff.isEmpty(), first == second);
        differing += !diff.isEmpty();
    }
    EXPECT_GT(differing, 10000);
    EXPECT_LT(differing, 20000);
}

TEST(ConfigDiff, comparesSharedMapsAtOnce)
{
    const VanteroConfigMap map = mapOf("s{a=1;a=2;}t{}"_q);
    const VanteroConfigMap copy = map;
    EXPECT_TRUE(copy == map);
    VanteroConfigMap changed = map;
    changed.setValue("s"_q, "a"_q, "3"_q);
    EXPECT_TRUE(changed != map);
    changed.setValue("s"_q, "a"_q, "2"_q);
    EXPECT_TRUE(changed == map); // equal again, though it shares nothing
}

TEST(ConfigDiff, ofTheExampleAndItsFactoryConfiguration)
{
    const auto load = [](const char *name) {
        return VanteroConfigFile::open(QStringLiteral(VANTERO_EXAMPLE_DATA "/") +
                                           QString::fromLatin1(name),
                                       QDateTime())
            .map();
    };
    const vn::ConfigDiff diff = vn::configDiff(load("gate.cfg"), load("gate-factory.cfg"));
    QStringList names;
    for (const vn::ConfigSectionDifference &section : diff)
        names += section.section;
    EXPECT_EQ(names, (QStringList{"audio"_q, "ethernet"_q, "eventdlite"_q, "head"_q, "image"_q,
                                  "messaging"_q, "text"_q, "timetables"_q}));
    EXPECT_EQ(shown({diff.first()}),
              "audio: level Changed [62] [50] microphone Changed [on] [off]"_q);
    EXPECT_EQ(shown({diff.at(4)}), "image: framerate Changed [12] [8] lens_correction OnlyInSecond "
                                   "- [1] quality Changed [70] [60]"_q);
}

// ---- VanteroConfigFile::map() ------------------------------------------------------------------

TEST(ConfigFileMap, holdsHeaderAndSections)
{
    VanteroConfigFile config;
    EXPECT_TRUE(
        config.parse("#:1.3=\n#:VN-3\n\nSECTION s\na=1\na=2\nb\nENDSECTION s\n"_q, QDateTime()));
    EXPECT_EQ(shown(config.map()),
              "head{File Version=1.3;Software Version=VN-3;}s{a=2;a=1;b=(null);}"_q);
}

TEST(ConfigFileMap, isACopy)
{
    VanteroConfigFile config = fileOf(mapOf("s{a=1;}"_q));
    VanteroConfigMap map = config.map();
    config.setValue("s"_q, "a"_q, "2"_q);
    EXPECT_EQ(shown(map), "s{a=1;}"_q);
    map.setValue("s"_q, "a"_q, "3"_q);
    EXPECT_EQ(shown(config.map()), "s{a=2;}"_q);
}

TEST(ConfigFileMap, isOfOneMoment)
{
    VanteroConfigFile config;
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int i = 0; i < 2000; ++i) {
            const QString value = QString::number(i);
            (void)config.parse("\n\n\nSECTION s\na="_q + value + "\nENDSECTION s\nSECTION t\na="_q +
                                   value + "\nENDSECTION t\n"_q,
                               QDateTime());
        }
        done = true;
    });
    do {
        const VanteroConfigMap map = config.map();
        EXPECT_EQ(map.value("s"_q, "a"_q, 0), map.value("t"_q, "a"_q, 0));
    } while (!done);
    writer.join();
}
