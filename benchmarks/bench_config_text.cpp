// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Editing values of a configuration text, against reading that text; and how all that is
 * done with texts and their maps grows. */

#include "ConfigText.h"
#include "Support.h"

#include "config/ConfigDiff.h"
#include "config/ConfigRedaction.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigText.h"

#include <vector>

namespace {

using vn::VanteroConfigFile;
using vn::VanteroConfigText;

constexpr qint64 kSize = 1000000; // characters of a text

/** A text of about the given number of characters. */
int sectionsOf(qint64 characters)
{
    return static_cast<int>(characters / (configText(101).size() - configText(100).size()));
}

/** Reading it twice, as a program must that finds the places by comparing. */
void readTwice(benchmark::State &state)
{
    const QString text = configText(sectionsOf(kSize));
    for (auto _ : state) {
        for (int i = 0; i < 2; ++i) {
            VanteroConfigFile config;
            config.parse(text, QDateTime());
            benchmark::DoNotOptimize(config);
        }
    }
}

/** So many edits all over the text, each of another key, and the text that they give. */
void editOurs(benchmark::State &state)
{
    const int sections = sectionsOf(kSize);
    const int edits = static_cast<int>(state.range(0));
    const QString text = configText(sections);
    struct Place
    {
        QString section;
        QString key;
    };
    std::vector<Place> places;
    for (int i = 0; i < edits; ++i)
        places.push_back({QStringLiteral("section%1").arg(i * 7919 % sections),
                          QStringLiteral("recording_timetable_%1").arg(i % kEntries)});
    const QString value = QStringLiteral("edited");
    QString result;
    for (auto _ : state) {
        VanteroConfigText edited(text);
        for (const Place &place : places)
            require(bool(edited.setValue(place.section, place.key, value)), "edit/ours");
        result = edited.text();
    }
    require(result.count(QStringLiteral("=edited\n")) == edits, "edit/ours");
}

/** One key, with a value in each of so many blocks of its section, taken away. */
void removeKeyOurs(benchmark::State &state)
{
    QString text = QStringLiteral("#:1\n#:2\n\n");
    for (qint64 i = 0; i < state.range(0); ++i)
        text += QStringLiteral("SECTION s\nk=%1\nENDSECTION s\n").arg(i);
    QString result;
    for (auto _ : state) {
        VanteroConfigText edited(text);
        require(bool(edited.removeKey(QStringLiteral("s"), QStringLiteral("k"))), "removeKey/ours");
        result = edited.text();
    }
    require(!result.contains(QStringLiteral("k=")), "removeKey/ours");
}

void findingsOurs(benchmark::State &state)
{
    const VanteroConfigText text(configText(sectionsOf(kSize)));
    for (auto _ : state)
        require(text.findings().isEmpty(), "findings/ours");
}

void outlineOurs(benchmark::State &state)
{
    const VanteroConfigText text(configText(sectionsOf(kSize)));
    for (auto _ : state)
        require(!text.outline().sections.isEmpty(), "outline/ours");
}

// ---- Growth ------------------------------------------------------------------------------------

const QString kHeader = QStringLiteral("#:1\n#:2\n\n");

QString withSections(int count)
{
    QString text = kHeader;
    for (int i = 0; i < count; ++i)
        text += QStringLiteral("SECTION s%1\nk=%1\nENDSECTION s%1\n").arg(i);
    return text;
}

QString inOneSection(int count, QString (*line)(int))
{
    QString text = kHeader + QStringLiteral("SECTION s\n");
    for (int i = 0; i < count; ++i)
        text += line(i);
    return text + QStringLiteral("ENDSECTION s\n");
}

QString withKeys(int count)
{
    return inOneSection(count, [](int i) { return QStringLiteral("key%1=%1\n").arg(i); });
}

QString withRepeatedKeys(int count)
{
    return inOneSection(count, [](int i) { return QStringLiteral("key=%1\n").arg(i); });
}

QString withComments(int count)
{
    return inOneSection(count, [](int i) { return QStringLiteral("# %1\n").arg(i); });
}

QString withBlocks(int count)
{
    QString text = kHeader;
    for (int i = 0; i < count; ++i)
        text += QStringLiteral("SECTION s\nk%1=1\nENDSECTION s\n").arg(i);
    return text;
}

/** All that is read of a text: map, outline, findings, secrets. */
template <QString (*makeText)(int)>
void grow(benchmark::State &state)
{
    const QString text = makeText(int(state.range(0)));
    for (auto _ : state) {
        VanteroConfigFile config;
        config.parse(text, QDateTime());
        const VanteroConfigText places(text);
        benchmark::DoNotOptimize(places.outline());
        benchmark::DoNotOptimize(places.findings());
        benchmark::DoNotOptimize(vn::redactConfig(text));
    }
}

/** An edit of each key, and one more key for each; their text and their places. */
void growEdits(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QString text = withKeys(count);
    const QString section = QStringLiteral("s");
    for (auto _ : state) {
        VanteroConfigText edited(text);
        for (int i = 0; i < count; ++i) {
            const QString key = QStringLiteral("key%1").arg(i);
            require(bool(edited.setValue(section, key, section)), "growth/edits");
            require(bool(edited.addValue(section, key, key)), "growth/edits");
        }
        benchmark::DoNotOptimize(edited.text());
        require(edited.edits().size() == count + 1, "growth/edits");
    }
}

/** Two maps in which each section has another value, and a key that the other lacks. */
void growDifferences(benchmark::State &state)
{
    vn::VanteroConfigMap a;
    vn::VanteroConfigMap b;
    for (int i = 0; i < int(state.range(0)); ++i) {
        const QString section = QStringLiteral("s%1").arg(i);
        a.setValue(section, QStringLiteral("k"), QStringLiteral("a"));
        b.setValue(section, QStringLiteral("k"), QStringLiteral("b"));
        a.setValue(section, QStringLiteral("a"), section);
        b.setValue(section, QStringLiteral("b"), section);
    }
    for (auto _ : state)
        require(vn::configDiff(a, b).size() == state.range(0), "growth/differences");
}

void tenTimes(benchmark::internal::Benchmark *row)
{
    row->Arg(10000)->Arg(100000);
}

} // namespace

BENCHMARK_TEMPLATE(grow, withSections)->Name("growth/sections")->Apply(tenTimes);
BENCHMARK_TEMPLATE(grow, withKeys)->Name("growth/keys")->Apply(tenTimes);
BENCHMARK_TEMPLATE(grow, withRepeatedKeys)->Name("growth/repeatedKeys")->Apply(tenTimes);
BENCHMARK_TEMPLATE(grow, withBlocks)->Name("growth/blocks")->Apply(tenTimes);
BENCHMARK_TEMPLATE(grow, withComments)->Name("growth/comments")->Apply(tenTimes);
BENCHMARK(growEdits)->Name("growth/edits")->Apply(tenTimes);
BENCHMARK(growDifferences)->Name("growth/differences")->Apply(tenTimes);
BENCHMARK(readTwice)->Name("edit/limit")->Arg(1)->Arg(1000); // edits of a text
BENCHMARK(editOurs)->Name("edit/ours")->Arg(1)->Arg(1000);
BENCHMARK(removeKeyOurs)->Name("removeKey/ours")->Arg(10000)->Arg(20000)->Arg(40000); // blocks
BENCHMARK(readTwice)->Name("findings/limit")->Arg(kSize);
BENCHMARK(findingsOurs)->Name("findings/ours")->Arg(kSize);
BENCHMARK(readTwice)->Name("outline/limit")->Arg(kSize);
BENCHMARK(outlineOurs)->Name("outline/ours")->Arg(kSize);
