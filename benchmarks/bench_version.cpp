// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Reading and comparing versions, and judging updates. */

#include "Support.h"

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QStringView>
#include <QtCore/QVersionNumber>

#include <array>

namespace {

using vn::VanteroSoftwareVersion;

// The same numbers for everybody; a peer without platforms is spared their names.
const QString kOld = QStringLiteral("VN-3.0.6.28");
const QString kNew = QStringLiteral("VN-3.0.6.29");
const QString kOldNumber = QStringLiteral("3.0.6.28");
const QString kNewNumber = QStringLiteral("3.0.6.29");

void compareOurs(benchmark::State &state)
{
    bool less = false;
    for (auto _ : state) {
        less = VanteroSoftwareVersion(kOld) < VanteroSoftwareVersion(kNew);
        benchmark::DoNotOptimize(less);
    }
    require(less, "compare/ours");
}

void compareQVersionNumber(benchmark::State &state)
{
    bool less = false;
    for (auto _ : state) {
        less = QVersionNumber::fromString(kOldNumber) < QVersionNumber::fromString(kNewNumber);
        benchmark::DoNotOptimize(less);
    }
    require(less, "compare/QVersionNumber");
}

struct ScannedVersion
{
    QString text;
    std::array<short, 6> low;
    std::array<short, 6> high;
};

/** Text and ranges of a version that has no surprises: a known platform, "-" and ".", numbers. */
[[gnu::noinline]] ScannedVersion scan(const QString &text)
{
    ScannedVersion version{text, {}, {}};
    const QStringView view(text);
    const qsizetype dash = view.indexOf(QLatin1Char('-'));
    const QStringView platform = view.left(dash);
    version.low[0] = platform == QLatin1String("VN")    ? 20
                     : platform == QLatin1String("R16") ? 10
                     : platform == QLatin1String("R8")  ? 2
                     : platform == QLatin1String("R4")  ? 1
                                                        : 0;
    std::size_t part = 1;
    int value = 0;
    for (const QChar unit : view.mid(dash + 1)) {
        const auto code = unit.unicode();
        if (code >= '0' && code <= '9') {
            value = value * 10 + (code - '0');
        } else if (part < version.low.size()) {
            version.low[part++] = static_cast<short>(value);
            value = 0;
        }
    }
    if (part < version.low.size())
        version.low[part] = static_cast<short>(value);
    version.high = version.low;
    return version;
}

/** A hand scan of both texts with the same result. */
void compareLimit(benchmark::State &state)
{
    bool less = false;
    for (auto _ : state) {
        const ScannedVersion first = scan(kOld);
        const ScannedVersion second = scan(kNew);
        less = first.high < second.low;
        benchmark::DoNotOptimize(less);
    }
    require(less, "compare/limit");
}

// ---- The longest way through the rules, against three parses -----------------------------------

void isSafeOurs(benchmark::State &state)
{
    const VanteroSoftwareVersion current(QStringLiteral("VN-3.0.5.1"));
    const VanteroSoftwareVersion target(kNew);
    const QString model = QStringLiteral("K40-Outdoor");
    bool safe = false;
    for (auto _ : state) {
        safe = current.isSafe(model, target);
        benchmark::DoNotOptimize(safe);
    }
    require(safe, "isSafe/ours");
}

void isSafeThreeParses(benchmark::State &state)
{
    for (auto _ : state) {
        for (int i = 0; i < 3; ++i) {
            VanteroSoftwareVersion version(kNew);
            benchmark::DoNotOptimize(version);
        }
    }
    require(VanteroSoftwareVersion(kNew)[4] == 29, "isSafe/three parses");
}

} // namespace

BENCHMARK(compareOurs)->Name("compare/ours")->Arg(2);
BENCHMARK(compareQVersionNumber)->Name("compare/QVersionNumber")->Arg(2);
BENCHMARK(compareLimit)->Name("compare/limit")->Arg(2);
BENCHMARK(isSafeOurs)->Name("isSafe/ours")->Arg(1);
BENCHMARK(isSafeThreeParses)->Name("isSafe/three parses")->Arg(1);
