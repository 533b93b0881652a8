// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The rules of safe updates against one long chain of conditions over plain numbers.

#include "Support.h"

#include "version/UpdateAdvisor.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QRegExp>

using vn::VanteroSoftwareVersion;

namespace {

struct Numbers
{
    int low[6];
    int high[6];
};

Numbers numbersOf(const VanteroSoftwareVersion &version)
{
    Numbers result;
    for (int i = 0; i < 6; ++i) {
        result.low[i] = version[i];
        result.high[i] = version.high(i);
    }
    return result;
}

/** A version without wildcards, or with one at the place @p wildcard. */
Numbers limit(int platform, int a, int b, int c, int d, int wildcard = -1)
{
    Numbers result = {{platform, a, b, c, d, 0}, {platform, a, b, c, d, 0}};
    if (wildcard >= 0) {
        result.low[wildcard] = 0;
        result.high[wildcard] = 99;
    }
    return result;
}

/** -1, 0 or 1 as @p a is below, overlaps or is above @p b. */
int order(const Numbers &a, const Numbers &b)
{
    for (int i = 0; i < 6; ++i) {
        if (a.high[i] < b.low[i])
            return -1;
        if (a.low[i] > b.high[i])
            return 1;
    }
    return 0;
}

bool isSafe(const QString &model, const Numbers &current, const Numbers &target)
{
    const bool k40 = model.startsWith(QLatin1String("K40"));
    const bool h40 = model.startsWith(QLatin1String("H40"));
    const bool k30 = model.startsWith(QLatin1String("K30"));
    const bool h30 = model.startsWith(QLatin1String("H30"));
    const bool w40 = model.startsWith(QLatin1String("W40"));

    if (target.low[0] != 0 && target.low[0] != current.low[0])
        return false;
    if (current.low[1] > 3 && target.low[1] < 4)
        return false;
    if (current.low[0] == 10) {
        if (order(current, limit(10, 2, 1, 0, 0, 3)) <= 0)
            return order(target, limit(10, 2, 2, 1, 10)) == 0;
        if (order(current, limit(10, 2, 2, 1, 0, 4)) >= 0)
            return order(target, limit(10, 2, 2, 1, 0, 4)) >= 0;
        return true;
    }
    if (current.low[0] != 20)
        return true;
    if (k40 && order(current, limit(20, 3, 0, 3, 0, 4)) == 0)
        return order(target, limit(20, 3, 0, 6, 29)) >= 0;
    if (h40 && order(current, limit(20, 3, 0, 8, 0, 4)) >= 0)
        return order(target, limit(20, 3, 0, 8, 0, 4)) >= 0;
    if (k30 || h30 || k40) {
        if (order(current, limit(20, 3, 0, 6, 24)) >= 0)
            return order(target, limit(20, 3, 0, 6, 0, 4)) >= 0;
        if (order(current, limit(20, 3, 0, 8, 0, 4)) >= 0)
            return order(target, limit(20, 3, 0, 6, 0, 4)) >= 0;
    }
    if (w40)
        return order(target, limit(20, 3, 4, 5, 4)) >= 0;
    if (QRegExp(QStringLiteral("?50"), Qt::CaseInsensitive, QRegExp::Wildcard).indexIn(model) == 0)
        return target.low[1] > 3;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const QString model = input.text();
    const VanteroSoftwareVersion current(input.text());
    const VanteroSoftwareVersion target(input.text());
    const Numbers a = numbersOf(current);
    const Numbers b = numbersOf(target);

    const int expected = order(a, b);
    FUZZ_CHECK((current == target) == (expected == 0));
    FUZZ_CHECK((current != target) == (expected != 0));
    FUZZ_CHECK((current < target) == (expected < 0));
    FUZZ_CHECK((current <= target) == (expected <= 0));
    FUZZ_CHECK((current > target) == (expected > 0));
    FUZZ_CHECK((current >= target) == (expected >= 0));

    const bool safe = isSafe(model, a, b);
    FUZZ_CHECK(current.isSafe(model, target) == safe);
    const vn::SafeUpdateVerdict verdict = current.checkUpdate(model, target);
    FUZZ_CHECK(verdict.safe == safe);
    FUZZ_CHECK(!verdict.rule.isEmpty() && !verdict.sentence.isEmpty());
    FUZZ_CHECK(safe || verdict.rule != QLatin1String("none"));

    // The advice never says yes where this does not, and a plan to a safe target is that target.
    using Verdict = vn::UpdateJudgement::Verdict;
    const vn::UpdateJudgement judgement = vn::UpdateAdvisor::judge(model, current, target);
    FUZZ_CHECK(judgement.verdict != Verdict::Safe || safe);
    FUZZ_CHECK(model.isEmpty() || judgement.verdict != Verdict::Unsafe || !safe);
    FUZZ_CHECK((judgement.verdict == Verdict::Unknown) == !judgement.obstacles.isEmpty());
    const vn::UpdatePlan plan = vn::UpdateAdvisor::plan(model, current, target, {target, current});
    FUZZ_CHECK(plan.obstacles == judgement.obstacles);
    FUZZ_CHECK(judgement.verdict != Verdict::Safe || (plan.reachable && plan.hops.size() <= 1));
    FUZZ_CHECK(plan.reachable || judgement.verdict != Verdict::Safe);
    return 0;
}
