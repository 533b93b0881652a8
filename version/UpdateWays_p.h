// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_UPDATEWAYS_P_H
#define VN_VERSION_UPDATEWAYS_P_H

/** @file The ways of safe updates over versions at hand. */

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QList>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace vn {

namespace internal {

/**
 * From one version, the best way to each that can be reached: the shortest one, among those the one
 * whose versions are highest, the first one first.
 *
 * The versions are found layer by layer, one more update each. A layer is in the order of its ways,
 * best first, and each version of it looks at those not yet found from the highest one down; so the
 * first way to find a version is its best, and each pair of versions is looked at once.
 */
class UpdateWays
{
public:
    /** An update is safe where it is so on all of @p models. All versions are concrete. */
    UpdateWays(const QStringList &models, const VanteroSoftwareVersion &start,
               const QList<VanteroSoftwareVersion> &versions);

    const VanteroSoftwareVersion &start() const { return m_start; }
    const VanteroSoftwareVersion &version(int i) const { return m_versions.at(i); }

    bool isReached(int i) const { return m_before[static_cast<std::size_t>(i)] != kNotReached; }

    /** The versions on the way to a version that is reached, itself last. */
    std::vector<int> wayTo(int i) const;

    /** Of the start and what is reached, the version nearest to @p target from the start's side. */
    VanteroSoftwareVersion nearest(const VanteroSoftwareVersion &target) const;

    /** The lowest version at a limit of a rule that would make version @p i reached; null where
     * there is none. */
    VanteroSoftwareVersion bridge(int i);

private:
    static constexpr int kNotReached = -2;
    static constexpr int kFromStart = -1;

    /** A version that is not at hand, and what could be reached if it were. */
    struct Bridge
    {
        VanteroSoftwareVersion version;
        std::vector<bool> reaches;
    };

    /** Finds what can be reached from @p start of the versions in @p open, highest first, and takes
     * it out; calls @p found with each and the one before it, kFromStart for the start. */
    template <typename Found>
    void search(const VanteroSoftwareVersion &start, std::vector<int> &open, Found &&found) const;

    std::vector<Bridge> makeBridges() const;

    QStringList m_models;
    VanteroSoftwareVersion m_start;
    QList<VanteroSoftwareVersion> m_versions;
    std::vector<int> m_open;   // not reached, highest first
    std::vector<int> m_before; // the version before each on its way
    std::optional<std::vector<Bridge>> m_bridges;
};

} // namespace internal

} // namespace vn

#endif // VN_VERSION_UPDATEWAYS_P_H
