// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_SAFEUPDATERULES_P_H
#define VN_VERSION_SAFEUPDATERULES_P_H

/** @file The rules that decide whether a camera may go from one version to another. */

#include "version/Platforms_p.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QString>
#include <QtCore/QStringView>

#include <array>
#include <cstddef>

namespace vn::internal {

/** What a rule asks of a version: nothing, or how it stands to the limit. */
struct VersionCondition
{
    enum Kind {
        Anything,     ///< always holds
        SamePlatform, ///< the platform is that of the current version, or not known (0)
        MajorAtLeast, ///< the major number is at least that of the limit
        AtMost,       ///< the version is less than the limit or covered by it
        Exactly,      ///< the version is covered by the limit
        AtLeast,      ///< the version is greater than the limit or covered by it
    };

    Kind kind;
    const char *limit = ""; ///< a version or pattern; empty where the kind asks for none
    int major = 0;          ///< the limit of MajorAtLeast

    bool holds(const VanteroSoftwareVersion &version, const VanteroSoftwareVersion &current) const;

    /** The versions for which it holds, such as "VN-3.0.6.29 or later". */
    QString text() const;
};

/** The three characters that models begin with; "?" is any character. */
struct ModelBeginning
{
    constexpr ModelBeginning() = default; // none
    constexpr ModelBeginning(const char (&text)[4])
        : characters{text[0], text[1], text[2]}
    {
    }

    constexpr bool isNone() const { return characters.front() == '\0'; }
    QLatin1String text() const
    {
        return QLatin1String(characters.data(), static_cast<int>(characters.size()));
    }

    std::array<char, 3> characters{};
};

/** One rule: which cameras and current versions it concerns, and which targets it allows them. */
struct SafeUpdateRule
{
    enum Effect {
        Decides, ///< where it concerns a camera, it allows or refuses the target
        Refuses, ///< it only refuses; a target that it allows goes on to the next rules
    };

    const char *identifier;

    Platform platform;                    ///< that of current versions; any if it has no name
    std::array<ModelBeginning, 3> models; ///< any model if the first one is none
    VersionCondition current;

    Effect effect;
    const char *demand; ///< what connects cameras and targets in the sentence
    VersionCondition target;

    /** Whether it is about cameras of this model. */
    bool concerns(QStringView model) const;

    /** Whether it is about cameras of this model and version. */
    bool concerns(QStringView model, const VanteroSoftwareVersion &current) const;

    /** The rule in plain English, built from its own limits. */
    QString sentence() const;
};

/** How many rules there are; the last one concerns every camera and allows every version. */
constexpr std::size_t kSafeUpdateRules = 11;

/** The rules in their order. */
const std::array<SafeUpdateRule, kSafeUpdateRules> &safeUpdateRules();

/** What the rules ask of the next version of one camera: those that concern it, up to the first
 * that decides. */
class UpdateDemands
{
public:
    /** Does not own @p current, which must outlive this. */
    UpdateDemands(QStringView model, const VanteroSoftwareVersion &current);

    const SafeUpdateRule *const *begin() const { return m_rules.data(); }
    const SafeUpdateRule *const *end() const { return m_rules.data() + m_count; }

    /** The first rule that refuses @p target; null where none does. */
    const SafeUpdateRule *refusal(const VanteroSoftwareVersion &target) const;

    /** The rule that decides where none refuses before it. */
    const SafeUpdateRule &last() const { return *m_rules[m_count - 1]; }

private:
    const VanteroSoftwareVersion &m_current;
    std::array<const SafeUpdateRule *, kSafeUpdateRules> m_rules;
    std::size_t m_count = 0;
};

} // namespace vn::internal

#endif // VN_VERSION_SAFEUPDATERULES_P_H
