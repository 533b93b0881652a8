// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/PreserveReport.h"

#include "support/ConfigMaps.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

#include <set>

using vn::VanteroConfigFile;
using vn::VanteroConfigMap;

namespace {

using Outcome = vn::PreservedKey::Outcome;

QString values(const QStringList &list)
{
    QStringList texts;
    for (const QString &value : list)
        texts += value.isNull() ? "(null)"_q : value;
    return list.isEmpty() ? "-"_q : "["_q + texts.join(","_q) + "]"_q;
}

/** As text: "s: a CarriedOver [new]>[old] lost [older]"; "*" behind a section that is taken over.
 */
QString shown(const vn::PreserveReport &report)
{
    const char *const outcomes[] = {"CarriedOver", "Unchanged", "BecameNull", "SectionTakenOver",
                                    "Lost"};
    QStringList sections;
    for (const vn::PreservedSection &section : report) {
        QStringList keys;
        for (const vn::PreservedKey &key : section.keys)
            keys += key.key + " "_q + QString::fromLatin1(outcomes[int(key.outcome)]) + " "_q +
                    values(key.before) + ">"_q + values(key.after) +
                    (key.lost.isEmpty() ? QString() : " lost "_q + values(key.lost));
        sections += section.section + (section.takenOver ? "*: "_q : ": "_q) + keys.join(", "_q);
    }
    return sections.join("; "_q);
}

/** What the operations themselves make of @p result. */
VanteroConfigMap preserved(const VanteroConfigMap &config, const VanteroConfigMap &previous,
                           const QList<vn::PreservePreset> &presets, VanteroConfigMap result)
{
    const VanteroConfigFile configFile = fileOf(config);
    const VanteroConfigFile previousFile = fileOf(previous);
    for (const vn::PreservePreset &preset : presets)
        (void)configFile.preserveEntries(previousFile, preset.section, preset.keys, result);
    return result;
}

/** What the report says that they make of it. */
VanteroConfigMap foretold(const vn::PreserveReport &report, VanteroConfigMap result)
{
    for (const vn::PreservedSection &section : report) {
        VanteroConfigMap::Section content;
        for (const vn::PreservedKey &key : section.keys)
            for (int i = key.after.size(); i > 0; --i)
                content.insert(key.key, key.after.at(i - 1));
        result.replaceSection(section.section, content);
    }
    return result;
}

struct Row
{
    const char *name;
    QString config;
    QString previous;
    QStringList keys; // of the section "s"
    QString result;
    QString expected;
};

// clang-format off
const Row rows[] = {
    // name                          config             previous           keys                 result           expected
    {"listedKeyIsCarriedOver",       "s{a=1;}"_q,       "s{a=2;}"_q,       {"a"_q},             ""_q,            "s: a CarriedOver [1]>[2]"_q},
    {"listedKeyThatTheNewLacks",     "s{}"_q,           "s{a=2;}"_q,       {"a"_q},             ""_q,            "s: a CarriedOver ->[2]"_q},
    {"sameValueIsUnchanged",         "s{a=1;}"_q,       "s{a=1;}"_q,       {"a"_q},             ""_q,            "s: a Unchanged [1]>[1]"_q},
    {"emptyForNullIsCarriedOver",    "s{a=(null);}"_q,  "s{a=;}"_q,        {"a"_q},             ""_q,            "s: a CarriedOver [(null)]>[]"_q},
    {"nullThatWasSetIsCarriedOver",  "s{a=1;}"_q,       "s{a=(null);}"_q,  {"a"_q},             ""_q,            "s: a CarriedOver [1]>[(null)]"_q},
    {"missingKeyBecomesNull",        "s{a=1;}"_q,       "s{}"_q,           {"a"_q},             ""_q,            "s: a BecameNull [1]>[(null)]"_q},
    {"missingSectionBecomesNull",    "s{a=1;}"_q,       ""_q,              {"a"_q},             ""_q,            "s: a BecameNull [1]>[(null)]"_q},
    {"keyThatBothLackBecomesNull",   "s{}"_q,           "s{}"_q,           {"a"_q},             ""_q,            "s: a BecameNull ->[(null)]"_q},
    {"nullStaysNull",                "s{a=(null);}"_q,  "s{}"_q,           {"a"_q},             ""_q,            "s: a Unchanged [(null)]>[(null)]"_q},
    {"otherKeysAreUnchanged",        "s{a=1;b=2;}"_q,   "s{a=1;b=2;}"_q,   {"a"_q},             ""_q,            "s: a Unchanged [1]>[1], b Unchanged [2]>[2]"_q},
    {"otherKeysAreThoseOfTheNew",    "s{b=2;}"_q,       "s{b=3;}"_q,       {},                  ""_q,            "s: b Unchanged [2]>[2] lost [3]"_q},
    {"unlistedKeyOfThePreviousGoes", "s{}"_q,           "s{b=3;b=4;}"_q,   {},                  ""_q,            "s: b Lost ->- lost [4,3]"_q},
    {"onlyTheNewestIsCarriedOver",   "s{a=1;}"_q,       "s{a=2;a=3;}"_q,   {"a"_q},             ""_q,            "s: a CarriedOver [1]>[3] lost [2]"_q},
    {"onlyTheNewestIsOverwritten",   "s{a=1;a=2;}"_q,   "s{a=3;}"_q,       {"a"_q},             ""_q,            "s: a CarriedOver [2,1]>[3,1]"_q},
    {"olderValuesThatBothHaveStay",  "s{a=1;a=2;}"_q,   "s{a=1;a=3;}"_q,   {"a"_q},             ""_q,            "s: a CarriedOver [2,1]>[3,1]"_q},
    {"keyIsListedTwice",             "s{a=1;}"_q,       "s{a=2;}"_q,       {"a"_q, "a"_q},      ""_q,            "s: a CarriedOver [1]>[2]"_q},
    {"sectionIsTakenOver",           ""_q,              "s{a=1;b=2;}"_q,   {"a"_q},             ""_q,            "s*: a SectionTakenOver ->[1], b SectionTakenOver ->[2]"_q},
    {"listedKeyOfNobodyStaysAway",   ""_q,              "s{b=2;}"_q,       {"a"_q},             ""_q,            "s*: b SectionTakenOver ->[2]"_q},
    {"emptySectionIsTakenOver",      ""_q,              "s{}"_q,           {"a"_q},             ""_q,            "s*: "_q},
    {"takenOverInPlaceOfTheResult",  ""_q,              "s{a=1;}"_q,       {"a"_q},             "s{a=9;b=8;}"_q, "s*: a SectionTakenOver [9]>[1], b Lost [8]>-"_q},
    {"nobodyHasTheSection",          "t{a=1;}"_q,       "t{a=2;}"_q,       {"a"_q},             "s{a=9;}"_q,     ""_q},
    {"resultCountsBeforeTheNew",     "s{a=1;c=3;}"_q,   "s{a=2;}"_q,       {"a"_q},             "s{a=9;b=8;}"_q, "s: a CarriedOver [9]>[2], b Unchanged [8]>[8]"_q},
    {"otherSectionsAreNotTold",      "s{a=1;}t{a=1;}"_q, "s{a=2;}t{a=2;}"_q, {"a"_q},          "u{}"_q,         "s: a CarriedOver [1]>[2]"_q},
};
// clang-format on

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << row.name;
}

class PreserveReportTest : public testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(PreserveReportTest, tellsWhatBecomesOfEachKey)
{
    const Row &row = GetParam();
    const QList<vn::PreservePreset> presets = {{QString(), "s"_q, row.keys}};
    const VanteroConfigMap config = mapOf(row.config);
    const VanteroConfigMap previous = mapOf(row.previous);
    const VanteroConfigMap result = mapOf(row.result);
    const vn::PreserveReport report = vn::preserveReport(config, previous, presets, result);
    EXPECT_EQ(shown(report), row.expected);
    EXPECT_EQ(shown(foretold(report, result)), shown(preserved(config, previous, presets, result)));
}

INSTANTIATE_TEST_SUITE_P(, PreserveReportTest, testing::ValuesIn(rows), nameOfRow);

TEST(PreserveReport, foretellsTheOperations)
{
    Random random(20261122);
    const QStringList sections = {"s"_q, "t"_q, "u"_q};
    const QStringList keys = {""_q, "a"_q, "b"_q, "c"_q};
    std::set<Outcome> seen;
    for (int i = 0; i < 20000; ++i) {
        const VanteroConfigMap config = randomMap(random);
        const VanteroConfigMap previous = randomMap(random);
        const VanteroConfigMap result = random.below(2) ? randomMap(random) : VanteroConfigMap();
        QList<vn::PreservePreset> presets;
        for (unsigned count = random.below(4); count > 0; --count) {
            vn::PreservePreset preset = {QString(), random.oneOf(sections), {}};
            for (unsigned listed = random.below(4); listed > 0; --listed)
                preset.keys += random.oneOf(keys);
            presets += preset;
        }
        const vn::PreserveReport report = vn::preserveReport(config, previous, presets, result);
        const VanteroConfigMap after = preserved(config, previous, presets, result);
        ASSERT_TRUE(foretold(report, result) == after)
            << shown(report).toStdString() << " | " << shown(after).toStdString();

        for (const vn::PreservedSection &section : report) {
            EXPECT_EQ(section.takenOver, !config.containsSection(section.section));
            const VanteroConfigMap &base =
                result.containsSection(section.section) ? result : config;
            for (const vn::PreservedKey &key : section.keys) {
                seen.insert(key.outcome);
                EXPECT_EQ(key.before, base.values(section.section, key.key));
                // What is lost, and nothing else of the previous one, is not in the result.
                EXPECT_EQ(key.outcome == Outcome::Lost, !after.contains(section.section, key.key));
                if (key.outcome == Outcome::Unchanged)
                    EXPECT_EQ(values(key.before), values(key.after));
                else
                    EXPECT_TRUE(key.outcome == Outcome::SectionTakenOver ||
                                key.outcome == Outcome::Lost ||
                                values(key.before) != values(key.after));
                EXPECT_LE(previous.count(section.section, key.key) - key.after.size(),
                          key.lost.size());
            }
        }
    }
    EXPECT_EQ(seen.size(), 5U);
}

TEST(PreserveReport, ofThePresetsIsThatOfTheirOperations)
{
    const auto load = [](const char *name) {
        return VanteroConfigFile::open(
            QStringLiteral(VANTERO_EXAMPLE_DATA "/") + QString::fromLatin1(name), {});
    };
    const VanteroConfigFile config = load("gate-factory.cfg");
    const VanteroConfigFile previous = load("gate.cfg");
    VanteroConfigMap merged;
    config.preserveIpAddresses(previous, merged);
    config.preserveVideoMotion(previous, merged);
    config.preserveTimeTableReferences(previous, merged);
    const vn::PreserveReport report =
        vn::preserveReport(config.map(), previous.map(), vn::preservePresets());
    EXPECT_TRUE(foretold(report, {}) == merged);
    ASSERT_EQ(report.size(), 2);
    EXPECT_EQ(shown({report.first()}),
              "ethernet: DHCP Unchanged [1]>[1] lost [0], DNS Lost ->- lost [10.14.0.3,10.14.0.2],"
              " GATEWAY Unchanged []>[] lost [10.14.0.1],"
              " HOSTNAME CarriedOver [vn10-14-7-21]>[gate-south],"
              " IPADDR CarriedOver [10.14.7.21]>[10.14.7.121],"
              " NETMASK Unchanged [255.0.0.0]>[255.0.0.0] lost [255.255.0.0],"
              " NTP Lost ->- lost [ntp.site.example]"_q);
}
