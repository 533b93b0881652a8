// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/SafeUpdateRules_p.h"

#include "version/VersionText_p.h"

namespace vn {

namespace internal {

namespace {

constexpr VersionCondition anything()
{
    return {VersionCondition::Anything};
}

constexpr VersionCondition samePlatform()
{
    return {VersionCondition::SamePlatform};
}

constexpr VersionCondition majorAtLeast(int major)
{
    return {VersionCondition::MajorAtLeast, "", major};
}

constexpr VersionCondition atMost(const char *limit)
{
    return {VersionCondition::AtMost, limit};
}

constexpr VersionCondition exactly(const char *limit)
{
    return {VersionCondition::Exactly, limit};
}

constexpr VersionCondition atLeast(const char *limit)
{
    return {VersionCondition::AtLeast, limit};
}

using Models = std::array<ModelBeginning, 3>;
constexpr Models kAny{};
constexpr Models kK40{"K40"};
constexpr Models kH40{"H40"};
constexpr Models kK30H30K40{"K30", "H30", "K40"};
constexpr Models kW40{"W40"};
constexpr Models k50{"?50"};

constexpr Platform kAll{"", 0};

constexpr const char *kMustBecome = "must first be updated to";
constexpr const char *kMustStay = "must stay on";
constexpr const char *kMayBecome = "may only be updated to";
constexpr const char *kFreeToBecome = "may otherwise be updated to";

constexpr auto kRefuses = SafeUpdateRule::Refuses;
constexpr auto kDecides = SafeUpdateRule::Decides;

/**
 * The rules in their order; the first one that decides ends the evaluation. They are constants that
 * nobody builds or destroys: updates may be judged while the process starts and while it ends. What
 * a version is compared with is local to each evaluation.
 */
// clang-format off
constexpr std::array<SafeUpdateRule, kSafeUpdateRules> kRules{{
    // identifier            platform models   current version         effect    target
    {"platform",             kAll, kAny,       anything(),             kRefuses, kMustStay,     samePlatform()},
    {"major",                kAll, kAny,       majorAtLeast(4),        kRefuses, kMustStay,     majorAtLeast(4)},
    {"r16-step",             kR16, kAny,       atMost("R16-2.1.*"),    kDecides, kMustBecome,   exactly("R16-2.2.1.10")},
    {"r16-return",           kR16, kAny,       atLeast("R16-2.2.1.*"), kDecides, kMustStay,     atLeast("R16-2.2.1.*")},
    {"k40-step",             kVn,  kK40,       exactly("VN-3.0.3.*"),  kDecides, kMustBecome,   atLeast("VN-3.0.6.29")},
    {"h40-return",           kVn,  kH40,       atLeast("VN-3.0.8.*"),  kDecides, kMustStay,     atLeast("VN-3.0.8.*")},
    {"k30-h30-k40-return",   kVn,  kK30H30K40, atLeast("VN-3.0.6.24"), kDecides, kMustStay,     atLeast("VN-3.0.6.*")},
    // Kept on purpose: only a current version that holds wildcards, such as "VN-3.0.*", is at
    // least VN-3.0.8.* without being at least VN-3.0.6.24.
    {"k30-h30-k40-pattern",  kVn,  kK30H30K40, atLeast("VN-3.0.8.*"),  kDecides, kMustStay,     atLeast("VN-3.0.6.*")},
    {"w40-minimum",          kVn,  kW40,       anything(),             kDecides, kMayBecome,    atLeast("VN-3.4.5.4")},
    {"50-minimum",           kVn,  k50,        anything(),             kDecides, kMayBecome,    majorAtLeast(4)},
    {"none",                 kAll, kAny,       anything(),             kDecides, kFreeToBecome, anything()},
}};
// clang-format on

bool isAny(const Platform &platform)
{
    return *platform.name == '\0';
}

/** Whether @p model begins with @p beginning, in which "?" stands for any character. */
bool beginsWith(QStringView model, const ModelBeginning &beginning)
{
    const auto &wanted = beginning.characters;
    if (static_cast<std::size_t>(model.size()) < wanted.size())
        return false;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i] != '?' && model[static_cast<qsizetype>(i)] != QLatin1Char(wanted[i]))
            return false;
    }
    return true;
}

/** Whether @p models names a beginning of @p model, or none at all. */
bool beginsWithOneOf(QStringView model, const Models &models)
{
    for (const ModelBeginning &beginning : models) {
        if (beginning.isNone())
            break;
        if (beginsWith(model, beginning))
            return true;
    }
    return models.front().isNone();
}

/** "K30, H30 and K40 cameras", or "Cameras" for any model. */
QString camerasText(const Models &models)
{
    if (models.front().isNone())
        return QStringLiteral("Cameras");
    QString text = models.front().text();
    for (std::size_t i = 1; i < models.size() && !models[i].isNone(); ++i) {
        const bool last = i + 1 == models.size() || models[i + 1].isNone();
        text += QLatin1String(last ? " and " : ", ") + models[i].text();
    }
    return text + QLatin1String(" cameras");
}

} // namespace

bool VersionCondition::holds(const VanteroSoftwareVersion &version,
                             const VanteroSoftwareVersion &current) const
{
    switch (kind) {
    case Anything:
        return true;
    case SamePlatform:
        return version[kPlatformComponent] == 0 ||
               version[kPlatformComponent] == current[kPlatformComponent];
    case MajorAtLeast:
        return version[kMajorComponent] >= major;
    case AtMost:
        return version <= limit;
    case Exactly:
        return version == limit;
    case AtLeast:
        return version >= limit;
    }
    return false;
}

QString VersionCondition::text() const
{
    switch (kind) {
    case Anything:
        return QString::fromLatin1("any version");
    case SamePlatform:
        return QString::fromLatin1("their platform");
    case MajorAtLeast:
        return QStringLiteral("major version %1 or later").arg(major);
    case AtMost:
        return QLatin1String(limit) + QLatin1String(" or earlier");
    case Exactly:
        return QLatin1String(limit);
    case AtLeast:
        return QLatin1String(limit) + QLatin1String(" or later");
    }
    return {};
}

bool SafeUpdateRule::concerns(QStringView model, const VanteroSoftwareVersion &version) const
{
    return (isAny(platform) || platform.code == version[kPlatformComponent]) && concerns(model) &&
           current.holds(version, version);
}

bool SafeUpdateRule::concerns(QStringView model) const
{
    return beginsWithOneOf(model, models);
}

QString SafeUpdateRule::sentence() const
{
    QString text = camerasText(models);
    if (current.kind != VersionCondition::Anything)
        text += QLatin1String(" on ") + current.text();
    else if (!isAny(platform))
        text += QLatin1String(" on ") + QLatin1String(platform.name);
    return text + QLatin1Char(' ') + QLatin1String(demand) + QLatin1Char(' ') + target.text();
}

const std::array<SafeUpdateRule, kSafeUpdateRules> &safeUpdateRules()
{
    return kRules;
}

UpdateDemands::UpdateDemands(QStringView model, const VanteroSoftwareVersion &current)
    : m_current(current)
{
    for (const SafeUpdateRule &rule : kRules) {
        if (!rule.concerns(model, current))
            continue;
        m_rules[m_count++] = &rule;
        if (rule.effect == SafeUpdateRule::Decides)
            break;
    }
}

const SafeUpdateRule *UpdateDemands::refusal(const VanteroSoftwareVersion &target) const
{
    for (const SafeUpdateRule *rule : *this) {
        if (!rule->target.holds(target, m_current))
            return rule;
    }
    return nullptr;
}

} // namespace internal

bool VanteroSoftwareVersion::isSafe(const QString &model,
                                    const VanteroSoftwareVersion &target) const
{
    return !internal::UpdateDemands(model, *this).refusal(target);
}

SafeUpdateVerdict VanteroSoftwareVersion::checkUpdate(const QString &model,
                                                      const VanteroSoftwareVersion &target) const
{
    const internal::UpdateDemands demands(model, *this);
    const internal::SafeUpdateRule *refusal = demands.refusal(target);
    const internal::SafeUpdateRule &decisive = refusal ? *refusal : demands.last();
    return {!refusal, QLatin1String(decisive.identifier), decisive.sentence()};
}

} // namespace vn
