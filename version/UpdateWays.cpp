// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/UpdateWays_p.h"

#include "version/SafeUpdateRules_p.h"
#include "version/VersionOrder.h"

#include <algorithm>
#include <numeric>

namespace vn {

namespace internal {

namespace {

/** What the rules ask of the next version of cameras of all of some models. */
class Demands
{
public:
    Demands(const QStringList &models, const VanteroSoftwareVersion &current)
    {
        m_demands.reserve(static_cast<std::size_t>(models.size()));
        for (const QString &model : models)
            m_demands.emplace_back(model, current);
    }

    bool allow(const VanteroSoftwareVersion &target) const
    {
        return std::none_of(m_demands.begin(), m_demands.end(),
                            [&](const UpdateDemands &demands) { return demands.refusal(target); });
    }

private:
    std::vector<UpdateDemands> m_demands;
};

/** The lowest versions at the limits of the rules for the platform of @p current, ascending. */
std::vector<VanteroSoftwareVersion> limitsFor(const VanteroSoftwareVersion &current)
{
    std::vector<VanteroSoftwareVersion> limits;
    const auto add = [&](const std::array<int, 4> &numbers) {
        QStringList texts;
        for (const int number : numbers)
            texts.append(QString::number(number));
        limits.emplace_back(current.platform() + QLatin1Char('-') + texts.join(QLatin1Char('.')));
    };
    for (const SafeUpdateRule &rule : safeUpdateRules()) {
        for (const VersionCondition &condition : {rule.current, rule.target}) {
            const VanteroSoftwareVersion limit(condition.limit);
            if (condition.kind == VersionCondition::MajorAtLeast)
                add({condition.major, 0, 0, 0});
            else if (!limit.isNull() && limit[0] == current[0])
                add({limit[1], limit[2], limit[3], limit[4]});
        }
    }
    std::sort(limits.begin(), limits.end(), VersionOrder::before);
    limits.erase(std::unique(limits.begin(), limits.end()), limits.end());
    return limits;
}

} // namespace

template <typename Found>
void UpdateWays::search(const VanteroSoftwareVersion &start, std::vector<int> &open,
                        Found &&found) const
{
    std::vector<int> reached{kFromStart};
    for (std::size_t i = 0; i < reached.size() && !open.empty(); ++i) {
        const int from = reached[i];
        const Demands demands(m_models, from == kFromStart ? start : version(from));
        const auto isNext = [&](int to) {
            if (!demands.allow(version(to)))
                return false;
            reached.push_back(to);
            found(to, from);
            return true;
        };
        open.erase(std::remove_if(open.begin(), open.end(), isNext), open.end());
    }
}

UpdateWays::UpdateWays(const QStringList &models, const VanteroSoftwareVersion &start,
                       const QList<VanteroSoftwareVersion> &versions)
    : m_models(models)
    , m_start(start)
    , m_versions(versions)
    , m_open(static_cast<std::size_t>(versions.size()))
    , m_before(m_open.size(), kNotReached)
{
    std::iota(m_open.begin(), m_open.end(), 0);
    // By the numbers alone, which is an order as no pattern is among them: of versions with the
    // same numbers the first one stays first.
    std::stable_sort(m_open.begin(), m_open.end(),
                     [&](int a, int b) { return version(a) > version(b); });
    search(m_start, m_open,
           [&](int to, int from) { m_before[static_cast<std::size_t>(to)] = from; });
}

std::vector<int> UpdateWays::wayTo(int i) const
{
    std::vector<int> way;
    for (; i != kFromStart; i = m_before[static_cast<std::size_t>(i)])
        way.push_back(i);
    std::reverse(way.begin(), way.end());
    return way;
}

VanteroSoftwareVersion UpdateWays::nearest(const VanteroSoftwareVersion &target) const
{
    VanteroSoftwareVersion nearest = m_start;
    const bool isUpward = m_start < target;
    for (int i = 0; i < m_versions.size(); ++i) {
        const VanteroSoftwareVersion &other = version(i);
        if (isReached(i) &&
            (isUpward ? other > nearest && other < target : other < nearest && other > target))
            nearest = other;
    }
    return nearest;
}

std::vector<UpdateWays::Bridge> UpdateWays::makeBridges() const
{
    const auto isNext = [&](const VanteroSoftwareVersion &from,
                            const VanteroSoftwareVersion &limit) {
        return Demands(m_models, from).allow(limit);
    };
    std::vector<Bridge> bridges;
    for (const VanteroSoftwareVersion &limit : limitsFor(m_start)) {
        bool isReachable = isNext(m_start, limit);
        for (int i = 0; i < m_versions.size() && !isReachable; ++i)
            isReachable = isReached(i) && isNext(version(i), limit);
        if (!isReachable)
            continue;
        Bridge bridge{limit, std::vector<bool>(m_before.size())};
        std::vector<int> open = m_open;
        search(limit, open,
               [&](int to, int) { bridge.reaches[static_cast<std::size_t>(to)] = true; });
        bridges.push_back(bridge);
    }
    return bridges;
}

VanteroSoftwareVersion UpdateWays::bridge(int i)
{
    if (!m_bridges)
        m_bridges = makeBridges();
    for (const Bridge &bridge : *m_bridges) {
        if (bridge.reaches[static_cast<std::size_t>(i)])
            return bridge.version;
    }
    return {};
}

} // namespace internal

} // namespace vn
