// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/VersionWords.h"

#include "tool/files/Input.h"

#include "base/FileUtils.h"
#include "version/VersionLint.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace vn::tool {

QString versionComponentName(int i)
{
    static const char *const names[kVersionComponents] = {"platform", "major",  "minor",
                                                          "third",    "fourth", "pre-release"};
    return QLatin1String(names[i]);
}

FirmwareHead readFirmware(const QString &name)
{
    if (name == QLatin1String("-"))
        return FirmwareHead::read(readInput(name));
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        throw ToolError(ExitCode::BadInput, readFailure(file)).at(name);
    FirmwareHead head = FirmwareHead::read(&file);
    if (file.error() != QFile::NoError)
        throw ToolError(ExitCode::BadInput, readFailure(file)).at(name);
    return head;
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

QStringList versionLines(const QString &name)
{
    const QString text = FileUtils::decodeText(readInput(name));
    QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (QString &line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    }
    lines.removeAll(QString());
    return lines;
}

QStringList versionTexts(const QStringList &texts)
{
    const QString input = QStringLiteral("-");
    if (texts.count(input) > 1)
        throw ToolError(ExitCode::BadInput, QStringLiteral("standard input can be read only once"));
    QStringList all;
    for (const QString &text : texts) {
        if (text == input)
            all += versionLines(text);
        else
            all += text;
    }
    return all;
}

QList<OfferedVersion> offeredVersions(const QStringList &arguments)
{
    QList<OfferedVersion> offered;
    for (const QString &argument : arguments) {
        const QFileInfo info(argument);
        if (argument == QLatin1String("-")) {
            const QStringList lines = versionLines(argument);
            for (const QString &line : lines)
                offered.append({line, QString()});
        } else if (info.isDir()) {
            const QStringList names = QDir(argument).entryList(QDir::Files, QDir::Name);
            for (const QString &name : names) {
                const QString path = QDir(argument).filePath(name);
                const VanteroSoftwareVersion version = readFirmware(path).version();
                if (!version.isNull())
                    offered.append({version, path});
            }
        } else if (info.exists()) {
            const VanteroSoftwareVersion version = readFirmware(argument).version();
            if (version.isNull())
                throw ToolError(ExitCode::BadInput, QStringLiteral("names no version"))
                    .at(argument);
            offered.append({version, argument});
        } else {
            offered.append({argument, QString()});
        }
    }
    return offered;
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
