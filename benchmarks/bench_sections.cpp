// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Editing the sections of a configuration text, against one copy of that text. */

#include "ConfigText.h"
#include "Support.h"

#include "config/VanteroConfigFile.h"

#include <cstring>

namespace {

using vn::VanteroConfigFile;

/** A text of about the given number of characters, and the name of a section in its middle. */
struct Text
{
    explicit Text(const benchmark::State &state)
        : sections(
              static_cast<int>(state.range(0) / (configText(101).size() - configText(100).size())))
        , text(configText(sections))
        , middle(QStringLiteral("section%1").arg(sections / 2))
    {
    }

    int sections;
    QString text;
    QString middle;
};

template <bool dropMore, bool crLf>
void removeOurs(benchmark::State &state)
{
    Text input(state);
    if (crLf)
        input.text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    const QStringList removed{input.middle};
    QString result;
    for (auto _ : state) {
        result =
            VanteroConfigFile::removeSections(input.text, removed, dropMore, dropMore, dropMore);
        benchmark::DoNotOptimize(result);
    }
    require(!result.contains(QLatin1String("SECTION ") + input.middle + QLatin1Char('\n')),
            "removeSections/ours");
}

void replaceOurs(benchmark::State &state)
{
    const Text input(state);
    const QString source = QStringLiteral("SECTION %1\nnew=1\nENDSECTION %1\n").arg(input.middle);
    QString result;
    for (auto _ : state) {
        result = VanteroConfigFile::replaceSection(input.text, source, input.middle);
        benchmark::DoNotOptimize(result);
    }
    require(result.contains(QLatin1String("new=1")), "replaceSection/ours");
}

void copyLimit(benchmark::State &state)
{
    const Text input(state);
    QString result;
    for (auto _ : state) {
        result = QString(input.text.size(), Qt::Uninitialized);
        std::memcpy(result.data(), input.text.constData(),
                    static_cast<std::size_t>(input.text.size()) * sizeof(QChar));
        benchmark::DoNotOptimize(result);
    }
    require(result == input.text, "limit");
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(100'000)->Arg(1'000'000)->Arg(10'000'000);
}

} // namespace

BENCHMARK(removeOurs<false, false>)->Name("removeSections/ours")->Apply(sizes);
BENCHMARK(removeOurs<true, false>)->Name("removeSections/ours, no empty lines")->Apply(sizes);
BENCHMARK(removeOurs<false, true>)->Name("removeSections/ours, CR LF")->Apply(sizes);
BENCHMARK(copyLimit)->Name("removeSections/limit")->Apply(sizes);
BENCHMARK(replaceOurs)->Name("replaceSection/ours")->Apply(sizes);
BENCHMARK(copyLimit)->Name("replaceSection/limit")->Apply(sizes);
