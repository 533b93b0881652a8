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

/** The parts of a text between "-" and ".", as numbers where they are some, and nothing else. */
std::array<short, 6> scan(QStringView text)
{
    std::array<short, 6> numbers{};
    std::size_t part = 0;
    int value = 0;
    for (const QChar unit : text) {
        const auto code = unit.unicode();
        if (code >= '0' && code <= '9') {
            value = value * 10 + (code - '0');
        } else if (code == '-' || code == '.') {
            numbers[part++] = static_cast<short>(value);
            value = 0;
            if (part == numbers.size())
                return numbers;
        }
    }
    numbers[part] = static_cast<short>(value);
    return numbers;
}

/** A hand scan of both texts, keeping the texts as a version does. */
void compareLimit(benchmark::State &state)
{
    struct Version
    {
        explicit Version(const QString &source)
            : text(source)
            , numbers(scan(source))
        {
        }
        QString text;
        std::array<short, 6> numbers;
    };
    bool less = false;
    for (auto _ : state) {
        const Version first(kOld);
        const Version second(kNew);
        less = first.numbers < second.numbers;
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
