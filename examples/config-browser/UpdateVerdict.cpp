// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "UpdateVerdict.h"

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QCoreApplication>

namespace browser {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("browser::UpdateVerdict", text);
}

UpdateVerdict unknown(const QString &reason)
{
    return {UpdateVerdict::Answer::Unknown, QString(), reason, QString()};
}

} // namespace

QString UpdateVerdict::answerText() const
{
    switch (answer) {
    case Answer::Safe:
        return tr("Safe");
    case Answer::NotSafe:
        return tr("Not safe");
    case Answer::Unknown:
        break;
    }
    return tr("Unknown");
}

UpdateVerdict judgeUpdate(const QString &model, const QString &current, const QString &target)
{
    const vn::VanteroSoftwareVersion from(current);
    const vn::VanteroSoftwareVersion to(target);
    // The rules answer for every text; those of no known platform are none to rely on.
    if (from.isNull())
        return unknown(tr("The configuration does not tell the firmware"));
    if (from.platform().isNull())
        return unknown(tr("The camera's firmware is of no known platform"));
    if (to.isNull())
        return unknown(tr("Choose a version"));
    if (to.platform().isNull())
        return unknown(tr("The chosen version is of no known platform"));

    const vn::SafeUpdateVerdict verdict = from.checkUpdate(model, to);
    const QString step = from.isUpgrade(to)     ? tr("upgrade")
                         : from.isDowngrade(to) ? tr("downgrade")
                                                : tr("same version");
    return {verdict.safe ? UpdateVerdict::Answer::Safe : UpdateVerdict::Answer::NotSafe, step,
            verdict.sentence, verdict.rule};
}

} // namespace browser
