// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_VERSION_PLANPROOF_H
#define VN_TESTS_VERSION_PLANPROOF_H

/**
 * @file
 * Plans of updates beside brute force, which tries every order of every choice of the versions at
 * hand and asks isSafe() alone.
 */

#include "version/UpdateAdvisor.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstdint>
#include <vector>

/**
 * Representative versions of one platform and one model: each limit of each rule, one below and one
 * above it in each component, and a pre-release of it.
 */
class PlanProof
{
public:
    PlanProof(const QString &model, const QString &platform);

    /** The models of all classes, one each. */
    static QStringList models();
    /** The platforms that are known. */
    static QStringList platforms();

    int versionCount() const { return static_cast<int>(m_versions.size()); }

    /**
     * Of each kind of versions that isSafe() treats alike, as current version and as target, beside
     * every other, the lowest and the highest one. More of a kind only make plans in which one of
     * its kind takes the place of another.
     */
    std::vector<int> representatives() const;

    /** The numbers of plans that were compared, and of those with a way of more than one update. */
    struct Figures
    {
        std::uint64_t plans = 0;
        std::uint64_t longWays = 0;
        std::uint64_t noWays = 0;
        std::uint64_t bridges = 0;
        int longest = 0;

        Figures &operator+=(const Figures &other);
    };

    /** Compares the plan from one version to another by way of some. Returns what differs; empty
     * where nothing does. */
    QString compare(int current, int target, const std::vector<int> &available, Figures &figures);

private:
    using Set = std::uint64_t;

    bool isSafe(int from, int to) const { return (m_safe[std::size_t(from)] >> to & 1) != 0; }
    bool isHigher(int a, int b) const;
    std::vector<int> bruteForce(int current, int target, const std::vector<int> &available) const;
    void extend(std::vector<int> &way, int from, int target, const std::vector<int> &available,
                std::size_t length, std::vector<int> &best) const;
    Set closure(int from, Set available) const;
    QString compareBlocked(const vn::UpdatePlan &plan, int current, int target,
                           const std::vector<int> &available, Figures &figures) const;

    QString m_model;
    std::vector<vn::VanteroSoftwareVersion> m_versions;
    std::vector<Set> m_safe; // for each version those that it may be updated to
};

#endif // VN_TESTS_VERSION_PLANPROOF_H
