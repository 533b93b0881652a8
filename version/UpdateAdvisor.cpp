// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/UpdateAdvisor.h"

#include "version/SafeUpdateRules_p.h"
#include "version/UpdateWays_p.h"
#include "version/VersionLint.h"
#include "version/VersionOrder.h"
#include "version/VersionText_p.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace vn {

using internal::SafeUpdateRule;
using internal::UpdateDemands;
using internal::VersionCondition;

namespace {

using internal::UpdateWays;

/** What keeps an update from being judged. */
struct Obstacles
{
    QStringList texts;
    QStringList candidates;

    bool none() const { return texts.isEmpty(); }
};

/** The model that may have been meant by @p model: as a rule writes it, without blanks. */
QString intendedModel(const QString &model)
{
    constexpr int kBeginning = 3;
    QString meant;
    std::copy_if(model.begin(), model.end(), std::back_inserter(meant),
                 [](QChar unit) { return !unit.isSpace(); });
    return meant.left(kBeginning).toUpper() + meant.mid(kBeginning);
}

void checkModel(const QString &model, Obstacles &obstacles)
{
    const int others = UpdateRules::modelClasses().size() - 1;
    const QString meant = intendedModel(model);
    if (UpdateRules::modelClass(model) != others || UpdateRules::modelClass(meant) == others)
        return;
    const bool hasBlanks =
        std::any_of(model.begin(), model.end(), [](QChar c) { return c.isSpace(); });
    obstacles.texts.append(QString::fromLatin1(hasBlanks ? "model \"%1\": did you mean %2?"
                                                         : "model %1: did you mean %2?")
                               .arg(model, meant));
    obstacles.candidates.append(meant);
}

/** Whether a number of the version is not the one that its text shows. */
bool isMisread(const Finding &finding)
{
    static constexpr std::array<const char *, 4> kCodes = {"number-unreadable", "number-cut",
                                                           "number-too-large", "foreign-digits"};
    return std::any_of(kCodes.begin(), kCodes.end(),
                       [&](const char *code) { return finding.code == QLatin1String(code); });
}

void checkVersion(const VanteroSoftwareVersion &version, Obstacles &obstacles)
{
    const QString text = version;
    const auto say = [&](const char *what) {
        obstacles.texts.append(QString::fromLatin1("\"%1\" %2").arg(text, QLatin1String(what)));
    };
    const QString platform = version.platform();
    if (platform.isNull())
        return say("names no known platform");
    if (VersionOrder::isPattern(version))
        return say(version.high(internal::kPreReleaseComponent) == 99
                       ? "stands for any pre-release, where one version is needed"
                       : "is a pattern, where one version is needed");
    const Findings findings = VersionLint::check(text);
    for (const Finding &finding : findings) {
        if (isMisread(finding)) {
            obstacles.texts.append(QString::fromLatin1("\"%1\": %2").arg(text, finding.message));
            return;
        }
    }
}

/** What every rule says that refuses @p target on @p model. */
QList<const SafeUpdateRule *> refusals(const QString &model, const VanteroSoftwareVersion &current,
                                       const VanteroSoftwareVersion &target)
{
    QList<const SafeUpdateRule *> rules;
    for (const SafeUpdateRule *rule : UpdateDemands(model, current)) {
        if (!rule->target.holds(target, current))
            rules.append(rule);
    }
    return rules;
}

/** The models that stand for @p model: itself, or one of each class where there is none. */
QStringList modelsFor(const QString &model)
{
    if (!model.isEmpty())
        return {model};
    QStringList examples;
    const QList<UpdateModelClass> classes = UpdateRules::modelClasses();
    for (const UpdateModelClass &models : classes)
        examples.append(models.example);
    return examples;
}

/** Every rule that refuses @p target on any of @p models, in the order of the rules. */
QList<const SafeUpdateRule *> refusals(const QStringList &models,
                                       const VanteroSoftwareVersion &current,
                                       const VanteroSoftwareVersion &target)
{
    QList<const SafeUpdateRule *> rules;
    for (const QString &model : models) {
        const auto more = refusals(model, current, target);
        for (const SafeUpdateRule *rule : more) {
            if (!rules.contains(rule))
                rules.append(rule);
        }
    }
    std::sort(rules.begin(), rules.end()); // by their places in the table
    return rules;
}

QList<UpdateReason> reasons(const QList<const SafeUpdateRule *> &rules)
{
    QList<UpdateReason> list;
    for (const SafeUpdateRule *rule : rules)
        list.append({QLatin1String(rule->identifier), rule->sentence()});
    return list;
}

/** Plans for one camera over the versions at hand. */
class Planner
{
public:
    Planner(const QString &model, const VanteroSoftwareVersion &current,
            const QList<VanteroSoftwareVersion> &versions)
        : m_model(model)
        , m_models(modelsFor(model))
        , m_ways(m_models, current, versions)
    {
    }

    /** The plan for the version at @p target in the list. */
    UpdatePlan planFor(int target)
    {
        UpdatePlan plan;
        const VanteroSoftwareVersion &wanted = m_ways.version(target);
        plan.reachable = wanted == m_ways.start() || m_ways.isReached(target);
        if (wanted == m_ways.start())
            return plan; // the camera has it
        if (plan.reachable) {
            VanteroSoftwareVersion from = m_ways.start();
            const std::vector<int> way = m_ways.wayTo(target);
            for (const int hop : way) {
                plan.hops.append(
                    {m_ways.version(hop), from.checkUpdate(m_model, m_ways.version(hop))});
                from = m_ways.version(hop);
            }
            return plan;
        }
        plan.nearest = m_ways.nearest(wanted);
        const auto rules = refusals(m_models, plan.nearest, wanted);
        plan.blockedBy = reasons(rules);
        plan.needed = neededText(*rules.first(), plan.nearest);
        plan.bridge = m_ways.bridge(target);
        return plan;
    }

private:
    /** What @p rule asks of the next version of a camera on @p current. */
    static QString neededText(const SafeUpdateRule &rule, const VanteroSoftwareVersion &current)
    {
        if (rule.target.kind == VersionCondition::SamePlatform)
            return QString::fromLatin1("a version of platform %1").arg(current.platform());
        return rule.target.text();
    }

    QString m_model;
    QStringList m_models;
    UpdateWays m_ways;
};

} // namespace

UpdateJudgement UpdateAdvisor::judge(const QString &model, const VanteroSoftwareVersion &current,
                                     const VanteroSoftwareVersion &target)
{
    UpdateJudgement judgement;
    Obstacles obstacles;
    checkModel(model, obstacles);
    checkVersion(current, obstacles);
    checkVersion(target, obstacles);
    if (!obstacles.none()) {
        judgement.obstacles = obstacles.texts;
        judgement.candidates = obstacles.candidates;
        return judgement;
    }

    judgement.reasons = reasons(refusals(modelsFor(model), current, target));
    judgement.verdict = judgement.reasons.isEmpty() ? UpdateJudgement::Verdict::Safe
                                                    : UpdateJudgement::Verdict::Unsafe;
    if (!model.isEmpty() || judgement.reasons.isEmpty())
        return judgement;
    const QList<UpdateModelClass> classes = UpdateRules::modelClasses();
    for (const UpdateModelClass &models : classes) {
        const auto rules = refusals(models.example, current, target);
        judgement.classes.append({models, rules.isEmpty(), reasons(rules)});
    }
    const bool isSafeOnSome = std::any_of(judgement.classes.cbegin(), judgement.classes.cend(),
                                          [](const auto &row) { return row.safe; });
    if (isSafeOnSome)
        judgement.verdict = UpdateJudgement::Verdict::Depends;
    else
        judgement.classes.clear();
    return judgement;
}

UpdatePlan UpdateAdvisor::plan(const QString &model, const VanteroSoftwareVersion &current,
                               const VanteroSoftwareVersion &target,
                               const QList<VanteroSoftwareVersion> &available)
{
    Obstacles obstacles;
    checkModel(model, obstacles);
    checkVersion(current, obstacles);
    checkVersion(target, obstacles);
    UpdatePlan plan;
    QList<VanteroSoftwareVersion> versions;
    QList<VanteroSoftwareVersion> leftOut;
    for (const VanteroSoftwareVersion &version : available) {
        Obstacles own;
        checkVersion(version, own);
        (own.none() ? versions : leftOut).append(version);
    }
    if (obstacles.none()) {
        versions.append(target);
        plan = Planner(model, current, versions).planFor(versions.size() - 1);
    }
    plan.obstacles = obstacles.texts;
    plan.candidates = obstacles.candidates;
    plan.leftOut = leftOut;
    return plan;
}

QList<InstallableVersion> UpdateAdvisor::installable(const QString &model,
                                                     const VanteroSoftwareVersion &current,
                                                     const QList<VanteroSoftwareVersion> &versions)
{
    Obstacles common;
    checkModel(model, common);
    checkVersion(current, common);

    QList<InstallableVersion> rows;
    QList<VanteroSoftwareVersion> judged;
    for (const VanteroSoftwareVersion &version : versions) {
        Obstacles obstacles = common;
        checkVersion(version, obstacles);
        InstallableVersion row;
        row.version = version;
        row.plan.obstacles = obstacles.texts;
        row.plan.candidates = obstacles.candidates;
        if (obstacles.none())
            judged.append(version);
        rows.append(row);
    }
    if (!common.none())
        return rows;

    Planner planner(model, current, judged);
    int index = 0;
    for (InstallableVersion &row : rows) {
        if (!row.plan.obstacles.isEmpty())
            continue;
        row.plan = planner.planFor(index++);
        row.way = !row.plan.reachable        ? InstallableVersion::Way::Never
                  : row.plan.hops.size() > 1 ? InstallableVersion::Way::ByPlan
                                             : InstallableVersion::Way::Directly;
        if (row.way != InstallableVersion::Way::Directly)
            row.reasons = reasons(refusals(modelsFor(model), current, row.version));
    }
    return rows;
}

} // namespace vn
