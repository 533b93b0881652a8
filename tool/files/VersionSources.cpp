// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/VersionSources.h"

#include "tool/cli/ToolError.h"
#include "tool/files/Input.h"

#include "base/FileUtils.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace vn::tool {

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

} // namespace vn::tool
