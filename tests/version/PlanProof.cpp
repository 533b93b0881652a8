// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "PlanProof.h"

#include "support/Literals.h"

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>

using vn::UpdateAdvisor;
using vn::UpdatePlan;
using vn::VanteroSoftwareVersion;

namespace {

using Numbers = std::array<int, 4>;

struct Limit
{
    QString platform; ///< empty for every one
    Numbers numbers;
    int wildcard; ///< the index that is one, or -1
};

/** The limits of all rules, as they are published. */
const std::vector<Limit> &limits()
{
    static const std::vector<Limit> all = {
        {""_q, {4, 0, 0, 0}, -1},   {"R16"_q, {2, 1, 0, 0}, 2},  {"R16"_q, {2, 2, 1, 10}, -1},
        {"R16"_q, {2, 2, 1, 0}, 3}, {"VN"_q, {3, 0, 3, 0}, 3},   {"VN"_q, {3, 0, 6, 29}, -1},
        {"VN"_q, {3, 0, 8, 0}, 3},  {"VN"_q, {3, 0, 6, 24}, -1}, {"VN"_q, {3, 0, 6, 0}, 3},
        {"VN"_q, {3, 4, 5, 4}, -1},
    };
    return all;
}

} // namespace

PlanProof::PlanProof(const QString &model, const QString &platform)
    : m_model(model)
{
    std::set<std::pair<Numbers, bool>> numbers;
    for (const Limit &limit : limits()) {
        if (!limit.platform.isEmpty() && limit.platform != platform)
            continue;
        numbers.insert({limit.numbers, false});
        numbers.insert({limit.numbers, true});
        for (int i = 0; i < 4; ++i) {
            for (const int value :
                 {limit.numbers[std::size_t(i)] - 1, limit.numbers[std::size_t(i)] + 1, 99, 100}) {
                Numbers changed = limit.numbers;
                changed[std::size_t(i)] = value;
                if (value >= 0 && (value < 99 || limit.wildcard == i))
                    numbers.insert({changed, false});
            }
        }
    }
    for (const auto &[parts, isPre] : numbers) {
        QString text = platform;
        for (const int part : parts)
            text += (text == platform ? "-"_q : "."_q) + QString::number(part);
        m_versions.emplace_back(isPre ? text + "-pre"_q : text);
    }
    if (m_versions.size() > 64)
        throw std::length_error("a set holds 64 versions");
    for (const VanteroSoftwareVersion &from : m_versions) {
        Set safe = 0;
        for (std::size_t to = 0; to < m_versions.size(); ++to)
            safe |= Set(from.isSafe(m_model, m_versions[to])) << to;
        m_safe.push_back(safe);
    }
}

QStringList PlanProof::models()
{
    return {"K40"_q, "H40"_q, "K30"_q, "W40"_q, "X50"_q, "D24"_q};
}

QStringList PlanProof::platforms()
{
    return {"VN"_q, "R16"_q, "R8"_q, "R4"_q};
}

std::vector<int> PlanProof::representatives() const
{
    const auto column = [&](int to) {
        Set from = 0;
        for (int i = 0; i < versionCount(); ++i)
            from |= Set(isSafe(i, to)) << i;
        return from;
    };
    std::vector<int> chosen;
    for (int i = 0; i < versionCount(); ++i) {
        const auto isAlike = [&](int other) {
            return m_safe[std::size_t(other)] == m_safe[std::size_t(i)] &&
                   column(other) == column(i);
        };
        bool isLowest = true;
        bool isHighest = true;
        for (int other = 0; other < versionCount(); ++other) {
            isLowest &= !(other < i && isAlike(other));
            isHighest &= !(other > i && isAlike(other));
        }
        if (isLowest || isHighest)
            chosen.push_back(i);
    }
    return chosen;
}

PlanProof::Figures &PlanProof::Figures::operator+=(const Figures &other)
{
    plans += other.plans;
    longWays += other.longWays;
    noWays += other.noWays;
    bridges += other.bridges;
    longest = std::max(longest, other.longest);
    return *this;
}

bool PlanProof::isHigher(int a, int b) const
{
    return m_versions[std::size_t(a)] > m_versions[std::size_t(b)];
}

void PlanProof::extend(std::vector<int> &way, int from, int target,
                       const std::vector<int> &available, std::size_t length,
                       std::vector<int> &best) const
{
    if (way.size() + 1 == length) {
        if (!isSafe(from, target))
            return;
        way.push_back(target);
        if (best.empty() ||
            std::lexicographical_compare(best.begin(), best.end(), way.begin(), way.end(),
                                         [&](int a, int b) { return isHigher(b, a); }))
            best = way;
        way.pop_back();
        return;
    }
    for (const int next : available) {
        if (!isSafe(from, next) || std::find(way.begin(), way.end(), next) != way.end())
            continue;
        way.push_back(next);
        extend(way, next, target, available, length, best);
        way.pop_back();
    }
}

/** The best of all ways; empty where there is none. */
std::vector<int> PlanProof::bruteForce(int current, int target,
                                       const std::vector<int> &available) const
{
    std::vector<int> best;
    std::vector<int> way;
    for (std::size_t length = 1; length <= available.size() + 1 && best.empty(); ++length)
        extend(way, current, target, available, length, best);
    return best;
}

/** What can be reached, the start among it. */
PlanProof::Set PlanProof::closure(int from, Set available) const
{
    Set reached = Set(1) << from;
    for (Set before = 0; before != reached;) {
        before = reached;
        for (int i = 0; i < versionCount(); ++i) {
            if (reached >> i & 1)
                reached |= m_safe[std::size_t(i)] & available;
        }
    }
    return reached;
}

QString PlanProof::compareBlocked(const UpdatePlan &plan, int current, int target,
                                  const std::vector<int> &available, Figures &figures) const
{
    ++figures.noWays;
    const VanteroSoftwareVersion &wanted = m_versions[std::size_t(target)];
    if (plan.reachable || !plan.hops.isEmpty())
        return "there is no way"_q;
    Set atHand = 0;
    for (const int version : available)
        atHand |= Set(1) << version;
    const Set reached = closure(current, atHand);

    // The nearest version: none that is reached stands between it and the target.
    const VanteroSoftwareVersion &start = m_versions[std::size_t(current)];
    bool isReached = false;
    for (int i = 0; i < versionCount(); ++i) {
        const VanteroSoftwareVersion &other = m_versions[std::size_t(i)];
        if ((reached >> i & 1) == 0)
            continue;
        isReached |= other == plan.nearest;
        if (start < wanted ? other > plan.nearest && other < wanted
                           : other < plan.nearest && other > wanted)
            return QString(other) + " is nearer than "_q + plan.nearest;
    }
    if (!isReached || (start < wanted) != (plan.nearest < wanted))
        return "the nearest version is not one"_q;
    const vn::SafeUpdateVerdict verdict = plan.nearest.checkUpdate(m_model, wanted);
    if (plan.blockedBy.isEmpty() || plan.blockedBy.first().rule != verdict.rule || verdict.safe)
        return "blocked by "_q + verdict.rule;

    // One more package: a bridge is one, and where there is none, no version around a limit is.
    if (!plan.bridge.isNull()) {
        ++figures.bridges;
        bool isReachable = false;
        bool leadsOn = false;
        for (int i = 0; i < versionCount(); ++i) {
            const VanteroSoftwareVersion &other = m_versions[std::size_t(i)];
            isReachable |= (reached >> i & 1) != 0 && other.isSafe(m_model, plan.bridge);
            leadsOn |= ((atHand | Set(1) << target) >> i & 1) != 0 &&
                       plan.bridge.isSafe(m_model, other) &&
                       (closure(i, atHand | Set(1) << target) >> target & 1) != 0;
        }
        const bool isBridge = isReachable && leadsOn;
        return isBridge ? QString() : QString(plan.bridge) + " is no bridge"_q;
    }
    for (int i = 0; i < versionCount(); ++i) {
        if (closure(current, atHand | Set(1) << i | Set(1) << target) >> target & 1)
            return "a bridge would be "_q + m_versions[std::size_t(i)];
    }
    return {};
}

QString PlanProof::compare(int current, int target, const std::vector<int> &available,
                           Figures &figures)
{
    ++figures.plans;
    const VanteroSoftwareVersion &start = m_versions[std::size_t(current)];
    const VanteroSoftwareVersion &wanted = m_versions[std::size_t(target)];
    QList<VanteroSoftwareVersion> atHand;
    for (const int version : available)
        atHand.append(m_versions[std::size_t(version)]);
    const UpdatePlan plan = UpdateAdvisor::plan(m_model, start, wanted, atHand);
    if (!plan.obstacles.isEmpty() || !plan.leftOut.isEmpty())
        return "nothing was planned"_q;
    if (current == target)
        return plan.reachable && plan.hops.isEmpty() ? QString() : "it is there"_q;

    const std::vector<int> best = bruteForce(current, target, available);
    if (best.empty())
        return compareBlocked(plan, current, target, available, figures);
    figures.longest = std::max(figures.longest, int(best.size()));
    figures.longWays += best.size() > 1;
    if (!plan.reachable || plan.hops.size() != int(best.size()))
        return "the way has %1 updates"_q.arg(best.size());
    VanteroSoftwareVersion from = start;
    for (std::size_t i = 0; i < best.size(); ++i) {
        const vn::UpdateHop &hop = plan.hops.at(int(i));
        if (QString(hop.version) != QString(m_versions[std::size_t(best[i])]))
            return "update %1 is to %2"_q.arg(i + 1).arg(QString(m_versions[std::size_t(best[i])]));
        if (!hop.verdict.safe || hop.verdict.rule != from.checkUpdate(m_model, hop.version).rule)
            return "update %1 has another verdict"_q.arg(i + 1);
        from = hop.version;
    }
    return {};
}
