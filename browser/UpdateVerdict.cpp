// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "UpdateVerdict.h"

#include "version/UpdateAdvisor.h"

#include <QtCore/QCoreApplication>

namespace browser {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("browser::UpdateVerdict", text);
}

UpdateVerdict unknown(const QString &reason)
{
    return {UpdateVerdict::Answer::Unknown, QString(), reason, QString(), QString()};
}

/** What would have to be installed before an update that is refused. */
QString wayOut(const vn::UpdatePlan &plan)
{
    if (!plan.bridge.isNull())
        return tr("Way out: install %1 first (%2).").arg(QString(plan.bridge), plan.needed);
    return tr("No other version leads there; the camera takes %1.").arg(plan.needed);
}

} // namespace

QString UpdateVerdict::answerText() const
{
    switch (answer) {
    case Answer::Safe:
        return tr("Safe");
    case Answer::NotSafe:
        return tr("Not safe");
    case Answer::Depends:
        return tr("Depends on the model");
    case Answer::Unknown:
        break;
    }
    return tr("Unknown");
}

UpdateVerdict judgeUpdate(const QString &model, const QString &current, const QString &target)
{
    const vn::VanteroSoftwareVersion from(current);
    const vn::VanteroSoftwareVersion to(target);
    if (from.isNull())
        return unknown(tr("The configuration does not tell the firmware"));
    if (to.isNull())
        return unknown(tr("Choose a version"));
    const vn::UpdateJudgement judgement = vn::UpdateAdvisor::judge(model, from, to);
    if (!judgement.obstacles.isEmpty())
        return unknown(judgement.obstacles.first());

    UpdateVerdict verdict{UpdateVerdict::Answer::Depends, QString(), QString(), QString(),
                          QString()};
    verdict.step = from.isUpgrade(to)     ? tr("upgrade")
                   : from.isDowngrade(to) ? tr("downgrade")
                                          : tr("same version");
    if (judgement.reasons.isEmpty()) {
        // A yes is one on a model that somebody has entered.
        if (!model.isEmpty())
            verdict.answer = UpdateVerdict::Answer::Safe;
        const vn::SafeUpdateVerdict decisive = from.checkUpdate(model, to);
        verdict.reason = model.isEmpty() ? tr("No rule forbids it; enter the model to be sure")
                                         : decisive.sentence;
        verdict.rule = decisive.rule;
        return verdict;
    }
    verdict.reason = judgement.reasons.first().sentence;
    verdict.rule = judgement.reasons.first().rule;
    if (judgement.verdict == vn::UpdateJudgement::Verdict::Unsafe) {
        verdict.answer = UpdateVerdict::Answer::NotSafe;
        verdict.wayOut = wayOut(vn::UpdateAdvisor::plan(model, from, to, {}));
    }
    return verdict;
}

} // namespace browser
