// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "UpdateVerdict.h"

#include "ModelNames.h"

#include "version/UpdateAdvisor.h"

#include <QtCore/QCoreApplication>

namespace browser {

namespace {

struct Words
{
    Q_DECLARE_TR_FUNCTIONS(browser::UpdateVerdict)
};

UpdateVerdict unknown(const QString &reason)
{
    return {UpdateVerdict::Answer::Unknown, QString(), reason, QString(), QString()};
}

/** What would have to be installed before an update that is refused. */
QString wayOut(const vn::UpdatePlan &plan)
{
    if (plan.reachable) {
        QStringList versions;
        for (const vn::UpdateHop &hop : plan.hops)
            versions += QString(hop.version);
        return Words::tr("Way out: install in this order: %1.")
            .arg(versions.join(QStringLiteral(", ")));
    }
    if (!plan.bridge.isNull())
        return Words::tr("Way out: install %1 first (%2).").arg(QString(plan.bridge), plan.needed);
    return Words::tr("No other version leads there; the camera takes %1.").arg(plan.needed);
}

} // namespace

QString UpdateVerdict::answerText() const
{
    switch (answer) {
    case Answer::Safe:
        return Words::tr("Safe");
    case Answer::NotSafe:
        return Words::tr("Not safe");
    case Answer::Depends:
        return Words::tr("Depends on the model");
    case Answer::Unknown:
        break;
    }
    return Words::tr("Unknown");
}

UpdateVerdict judgeUpdate(const QString &model, const QString &current, const QString &target,
                          const QList<vn::VanteroSoftwareVersion> &available)
{
    const vn::VanteroSoftwareVersion from(current);
    const vn::VanteroSoftwareVersion to(target);
    if (from.isNull())
        return unknown(Words::tr("The configuration does not tell the firmware"));
    if (to.isNull())
        return unknown(Words::tr("Choose a version"));
    const vn::UpdateJudgement judgement = vn::UpdateAdvisor::judge(model, from, to);
    if (!judgement.obstacles.isEmpty())
        return unknown(judgement.obstacles.first());

    UpdateVerdict verdict{UpdateVerdict::Answer::Depends, QString(), QString(), QString(),
                          QString()};
    verdict.step = from.isUpgrade(to)     ? Words::tr("upgrade")
                   : from.isDowngrade(to) ? Words::tr("downgrade")
                                          : Words::tr("same version");
    if (judgement.reasons.isEmpty()) {
        // A yes is one on a model that somebody has entered.
        if (!model.isEmpty())
            verdict.answer = UpdateVerdict::Answer::Safe;
        const vn::SafeUpdateVerdict decisive = from.checkUpdate(model, to);
        verdict.reason = model.isEmpty()
                             ? Words::tr("No rule forbids it; enter the model to be sure")
                             : decisive.sentence;
        verdict.rule = decisive.rule;
        if (!model.isEmpty() && !isNamedByRules(model))
            verdict.reason =
                Words::tr("%1. No rule names the model %2: those for other models hold")
                    .arg(decisive.sentence, model);
        return verdict;
    }
    verdict.reason = judgement.reasons.first().sentence;
    verdict.rule = judgement.reasons.first().rule;
    if (judgement.verdict == vn::UpdateJudgement::Verdict::Unsafe) {
        verdict.answer = UpdateVerdict::Answer::NotSafe;
        verdict.wayOut = wayOut(vn::UpdateAdvisor::plan(model, from, to, available));
    }
    return verdict;
}

} // namespace browser
