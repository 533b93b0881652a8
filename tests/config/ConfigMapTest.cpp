// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigMap.h"

#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "support/Random.h"

#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <map>
#include <type_traits>
#include <vector>

using vn::EMPTY_MAP;
using vn::EMPTY_STRING;
using vn::VanteroConfigMap;

namespace {

/** Section "s": a = 2 (newest), 1; b = 3; c = null. */
VanteroConfigMap sample()
{
    VanteroConfigMap map;
    map.addValue("s"_q, "a"_q, "1"_q);
    map.addValue("s"_q, "a"_q, "2"_q);
    map.addValue("s"_q, "b"_q, "3"_q);
    map.addValue("s"_q, "c"_q, QString());
    return map;
}

QString printed(const VanteroConfigMap &map)
{
    QString text;
    QTextStream stream(&text);
    map.print(stream);
    stream.flush();
    return text;
}

} // namespace

// A value that is one map of sections and nothing more.
static_assert(!std::is_polymorphic_v<VanteroConfigMap>);
static_assert(sizeof(VanteroConfigMap) == sizeof(QMap<QString, QMultiMap<QString, QString>>));
static_assert(std::is_nothrow_destructible_v<VanteroConfigMap>);
static_assert(std::is_copy_constructible_v<VanteroConfigMap>);
static_assert(std::is_copy_assignable_v<VanteroConfigMap>);

TEST(ConfigMapConstants, areNullAndEmpty)
{
    EXPECT_TRUE(EMPTY_STRING.isNull());
    EXPECT_TRUE(EMPTY_MAP.isEmpty());
}

TEST(ConfigMapLookup, missesGiveTheConstants)
{
    const VanteroConfigMap map = sample();
    EXPECT_EQ(&map.section("none"_q), &EMPTY_MAP);
    EXPECT_EQ(&map.value("none"_q, "a"_q, 0), &EMPTY_STRING);
    EXPECT_EQ(&map.value("s"_q, "none"_q, 0), &EMPTY_STRING);
    EXPECT_EQ(map.find("none"_q, "a"_q), EMPTY_MAP.constEnd());
    EXPECT_EQ(map.find("s"_q, "none"_q), map.section("s"_q).constEnd());
    EXPECT_FALSE(map.contains("none"_q, "a"_q));
    EXPECT_FALSE(map.contains("s"_q, "none"_q));
    EXPECT_EQ(map.count("none"_q, "a"_q), 0);
    EXPECT_EQ(map.count("s"_q, "none"_q), 0);
    EXPECT_TRUE(map.values("none"_q, "a"_q).isEmpty());
    EXPECT_TRUE(map.values("s"_q, "none"_q).isEmpty());
    EXPECT_FALSE(map.containsSection("none"_q)) << "a lookup must not create the section";
}

TEST(ConfigMapLookup, findsTheNewestFirst)
{
    const VanteroConfigMap map = sample();
    EXPECT_TRUE(map.contains("s"_q, "a"_q));
    EXPECT_EQ(map.count("s"_q, "a"_q), 2);
    EXPECT_EQ(map.values("s"_q, "a"_q), (QStringList{"2"_q, "1"_q}));
    EXPECT_EQ(map.find("s"_q, "a"_q).value(), "2"_q);
    EXPECT_TRUE(map.value("s"_q, "c"_q, 0).isNull());
}

TEST(ConfigMapLookup, negativeIndexCountsAsZero)
{
    const VanteroConfigMap map = sample();
    EXPECT_EQ(map.value("s"_q, "a"_q, -5), "2"_q);
    EXPECT_EQ(map.value("s"_q, "a"_q, -5), map.value("s"_q, "a"_q, 0));
}

TEST(ConfigMapLookup, indexCountsFromTheNewest)
{
    const VanteroConfigMap map = sample();
    EXPECT_EQ(map.value("s"_q, "a"_q, 0), "2"_q);
    EXPECT_EQ(map.value("s"_q, "a"_q, 1), "1"_q);
}

TEST(ConfigMapLookup, indexBeyondTheKeyReachesIntoFollowingKeys)
{
    const VanteroConfigMap map = sample();
    EXPECT_EQ(map.value("s"_q, "a"_q, 2), "3"_q);
    EXPECT_EQ(map.value("s"_q, "b"_q, 1), QString());
}

TEST(ConfigMapLookup, indexPastTheSectionGivesTheEmptyString)
{
    const VanteroConfigMap map = sample();
    EXPECT_EQ(&map.value("s"_q, "a"_q, 4), &EMPTY_STRING);
    EXPECT_EQ(&map.value("s"_q, "a"_q, 2147483647), &EMPTY_STRING);
}

TEST(ConfigMapLookup, namesAndKeysAreCaseSensitiveAndInCodeUnitOrder)
{
    VanteroConfigMap map;
    for (const QString &name : {"b"_q, "a"_q, "B"_q, "ä"_q, "_"_q})
        map.section(name);
    EXPECT_EQ(map.allSectionKeys(), (QStringList{"B"_q, "_"_q, "a"_q, "b"_q, "ä"_q}));
    EXPECT_FALSE(map.containsSection("A"_q));

    map.addValue("a"_q, "Key"_q, "1"_q);
    EXPECT_FALSE(map.contains("a"_q, "key"_q));
}

TEST(ConfigMapEdit, creatingLookupInsertsAnEmptySection)
{
    VanteroConfigMap map;
    EXPECT_TRUE(map.section("s"_q).isEmpty());
    EXPECT_TRUE(map.containsSection("s"_q)) << "an empty section counts";
    map.section("s"_q).insert("k"_q, "v"_q);
    EXPECT_EQ(map.value("s"_q, "k"_q, 0), "v"_q);
}

TEST(ConfigMapEdit, mutableFindCreatesTheSectionOnPurpose)
{
    VanteroConfigMap map;
    EXPECT_EQ(map.find("s"_q, "k"_q), map.section("s"_q).end());
    EXPECT_TRUE(map.containsSection("s"_q));

    map.addValue("s"_q, "k"_q, "old"_q);
    *map.find("s"_q, "k"_q) = "new"_q;
    EXPECT_EQ(map.value("s"_q, "k"_q, 0), "new"_q);
}

TEST(ConfigMapEdit, addValueNeverReplaces)
{
    VanteroConfigMap map;
    map.addValue("s"_q, "k"_q, "same"_q);
    map.addValue("s"_q, "k"_q, "same"_q);
    EXPECT_EQ(map.values("s"_q, "k"_q), (QStringList{"same"_q, "same"_q}));
}

TEST(ConfigMapEdit, setValueOverwritesTheNewestOnly)
{
    VanteroConfigMap map = sample();
    map.setValue("s"_q, "a"_q, "9"_q);
    EXPECT_EQ(map.values("s"_q, "a"_q), (QStringList{"9"_q, "1"_q}));

    map.setValue("new"_q, "k"_q, "v"_q);
    EXPECT_EQ(map.values("new"_q, "k"_q), QStringList{"v"_q});
}

TEST(ConfigMapEdit, removeTakesEveryEntryOfTheKey)
{
    VanteroConfigMap map = sample();
    EXPECT_EQ(map.remove("s"_q, "a"_q), 2);
    EXPECT_FALSE(map.contains("s"_q, "a"_q));
    EXPECT_TRUE(map.contains("s"_q, "b"_q));
    EXPECT_EQ(map.remove("s"_q, "a"_q), 0);
}

TEST(ConfigMapEdit, removeLeavesAnEmptySectionBehindOnPurpose)
{
    VanteroConfigMap map;
    EXPECT_EQ(map.remove("missing"_q, "k"_q), 0);
    EXPECT_TRUE(map.containsSection("missing"_q));
}

TEST(ConfigMapEdit, removeAcceptsTheKeyOfAnEntryThatGoes)
{
    VanteroConfigMap map = sample();
    const auto entry = map.find("s"_q, "a"_q);
    EXPECT_EQ(map.remove("s"_q, entry.key()), 2);
}

TEST(ConfigMapEdit, removeSectionCountsWhatItRemoved)
{
    VanteroConfigMap map = sample();
    EXPECT_EQ(map.removeSection("s"_q), 1);
    EXPECT_EQ(map.removeSection("s"_q), 0);
    EXPECT_FALSE(map.containsSection("s"_q));
}

TEST(ConfigMapEdit, removeAllSectionsTakesTheListed)
{
    VanteroConfigMap map;
    for (const QString &name : {"a"_q, "b"_q, "c"_q})
        map.section(name);
    map.removeAllSections({"c"_q, "missing"_q, "a"_q, "a"_q});
    EXPECT_EQ(map.allSectionKeys(), QStringList{"b"_q});
}

TEST(ConfigMapEdit, replaceSectionDiscardsTheOldEntries)
{
    VanteroConfigMap map = sample();
    map.replaceSection("s"_q, {{"x"_q, "1"_q}});
    EXPECT_EQ(map.section("s"_q), (VanteroConfigMap::Section{{"x"_q, "1"_q}}));
    map.replaceSection("t"_q, {});
    EXPECT_TRUE(map.containsSection("t"_q));
}

TEST(ConfigMapEdit, copiesAreIndependent)
{
    VanteroConfigMap map = sample();
    const VanteroConfigMap copy = map;
    map.setValue("s"_q, "a"_q, "changed"_q);
    EXPECT_EQ(copy.value("s"_q, "a"_q, 0), "2"_q);
}

TEST(ConfigMapPrint, sectionBlock)
{
    VanteroConfigMap map = sample();
    const QString block = "SECTION s\na=2\na=1\nb=3\nc=\nENDSECTION s\n"_q;
    EXPECT_EQ(map.toString("s"_q), block);
    EXPECT_EQ(VanteroConfigMap::toString("s"_q, map.section("s"_q)), block);

    QString text;
    QTextStream stream(&text);
    map.printSection(stream, "s"_q);
    VanteroConfigMap::printSection(stream, "s"_q, map.section("s"_q));
    stream.flush();
    EXPECT_EQ(text, block + block);
}

TEST(ConfigMapPrint, missingSectionPrintsAsAnEmptyBlock)
{
    const VanteroConfigMap map;
    EXPECT_EQ(map.toString("none"_q), "SECTION none\nENDSECTION none\n"_q);
    EXPECT_FALSE(map.containsSection("none"_q));
}

TEST(ConfigMapPrint, nothingIsEscaped)
{
    EXPECT_EQ(VanteroConfigMap::toString("s"_q, {{"k=1\nx"_q, "v=2"_q}}),
              "SECTION s\nk=1\nx=v=2\nENDSECTION s\n"_q);
}

TEST(ConfigMapPrint, wholeMapSeparatesBlocksByTwoEmptyLines)
{
    VanteroConfigMap map;
    map.addValue("b"_q, "k"_q, "2"_q);
    map.addValue("a"_q, "k"_q, "1"_q);
    const QString text = "\nSECTION a\nk=1\nENDSECTION a\n\n"
                         "\nSECTION b\nk=2\nENDSECTION b\n\n"_q;
    EXPECT_EQ(map.toString(), text);
    EXPECT_EQ(printed(map), text);
}

TEST(ConfigMapPrint, emptyMapPrintsNothing)
{
    EXPECT_EQ(VanteroConfigMap().toString(), QString());
    EXPECT_EQ(printed(VanteroConfigMap()), QString());
}

TEST(ConfigMapPrint, nullAndEmptyValuesPrintAlike)
{
    EXPECT_EQ(VanteroConfigMap::toString("s"_q, {{"k"_q, QString()}}),
              VanteroConfigMap::toString("s"_q, {{"k"_q, ""_q}}));
}

/** Random edits, against a plain model of the documented rules. */
TEST(ConfigMapProperty, agreesWithAPlainModel)
{
    Random random(20260101);
    const auto pick = [&random](unsigned count) { return random.below(count); };
    const auto name = [&](const char *prefix) {
        return QString::fromLatin1(prefix) + QString::number(pick(6));
    };

    VanteroConfigMap map;
    std::map<QString, std::map<QString, std::vector<QString>>> model; // values newest first

    for (int step = 0; step < 20000; ++step) {
        const QString section = name("s");
        const QString key = name("k");
        const QString value = QString::number(step);
        switch (pick(16)) {
        default:
            map.addValue(section, key, value);
            model[section][key].insert(model[section][key].begin(), value);
            break;
        case 0:
        case 1: {
            map.setValue(section, key, value);
            auto &values = model[section][key];
            if (values.empty())
                values.push_back(value);
            else
                values.front() = value;
            break;
        }
        case 2: {
            const auto &values = model[section][key];
            ASSERT_EQ(map.remove(section, key), int(values.size()));
            model[section].erase(key);
            break;
        }
        case 3:
            ASSERT_EQ(map.removeSection(section), int(model.erase(section)));
            break;
        case 4:
            (void)map.find(section, key);
            model[section];
            break;
        }
    }

    QString expected;
    for (const auto &[section, keys] : model) {
        expected += "\nSECTION "_q + section + "\n"_q;
        for (const auto &[key, values] : keys) {
            for (std::size_t i = 0; i < values.size(); ++i) {
                expected += key + "="_q + values[i] + "\n"_q;
                ASSERT_EQ(map.value(section, key, int(i)), values[i]);
            }
            ASSERT_EQ(map.count(section, key), int(values.size()));
        }
        expected += "ENDSECTION "_q + section + "\n\n"_q;
    }
    EXPECT_EQ(map.toString(), expected);
    EXPECT_EQ(printed(map), expected);
}
