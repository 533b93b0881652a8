// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/VersionWords.h"

#include "version/VersionLint.h"

namespace vn::tool {

QString versionComponentName(int i)
{
    static const char *const names[kVersionComponents] = {"platform", "major",  "minor",
                                                          "third",    "fourth", "pre-release"};
    return QLatin1String(names[i]);
}

QStringList versionWarnings(const VanteroSoftwareVersion &version)
{
    QStringList warnings;
    for (const Finding &finding : VersionLint::check(version)) {
        if (finding.severity != Finding::Severity::Warning)
            continue;
        warnings += QStringLiteral("\"%1\" names no known platform").arg(QString(version));
        if (finding.code != QLatin1String("platform-unknown"))
            warnings.last() = QStringLiteral("\"%1\": %2").arg(version, finding.message);
    }
    return warnings;
}

Json reasonsToJson(const QList<UpdateReason> &reasons)
{
    Json list = Json::array();
    for (const UpdateReason &reason : reasons)
        list.append(Json::object({{"rule", reason.rule}, {"sentence", reason.sentence}}));
    return list;
}

QString verdictName(UpdateJudgement::Verdict verdict)
{
    switch (verdict) {
    case UpdateJudgement::Verdict::Safe:
        return QStringLiteral("safe");
    case UpdateJudgement::Verdict::Unsafe:
        return QStringLiteral("unsafe");
    case UpdateJudgement::Verdict::Depends:
        return QStringLiteral("depends");
    case UpdateJudgement::Verdict::Unknown:
        break;
    }
    return QStringLiteral("unknown");
}

QString coloredVerdict(const QString &word, const Colors &colors)
{
    const QString first = word.section(QLatin1Char(' '), 0, 0);
    const bool isGood = first == QLatin1String("safe") || first == QLatin1String("directly");
    const bool isBad = first == QLatin1String("unsafe") || first == QLatin1String("never") ||
                       first == QLatin1String("no");
    return colors.text(isGood ? Style::Good : isBad ? Style::Bad : Style::Warning, word);
}

ExitCode complainOfObstacles(const QStringList &obstacles, Output &out)
{
    for (const QString &obstacle : obstacles)
        out.complain(ToolError(ExitCode::BadInput, obstacle));
    return ExitCode::BadInput;
}

} // namespace vn::tool
