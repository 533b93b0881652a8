// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigInput.h"

#include "tool/cli/ToolError.h"
#include "tool/files/ConfigLines.h"
#include "tool/files/Input.h"
#include "tool/files/JpegComment.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"

#include <QtCore/QDateTime>

namespace vn::tool {

VanteroConfigFile parseConfig(const QString &text, const QString &name, bool *hasVersionLines)
{
    VanteroConfigFile config;
    try {
        const bool result = config.parse(text, QDateTime::currentDateTime());
        if (hasVersionLines)
            *hasVersionLines = result;
    } catch (const ExceptionQt &e) {
        throw inputError(e, name).at(name, ConfigLines(text).malformedLine());
    }
    return config;
}

void refuseArchive(const ConfigSource &source)
{
    if (source.bytes.startsWith("PK\x03\x04") || source.bytes.startsWith("PK\x05\x06"))
        throw ToolError(
            ExitCode::BadInput,
            QStringLiteral("a zip archive; \"config collect\" reads its configurations"))
            .at(source.name);
}

ConfigInput readConfig(const ConfigSource &source)
{
    refuseArchive(source);
    ConfigInput result;
    if (!isJpeg(source.bytes)) {
        bool hasVersionLines = false;
        result.config =
            parseConfig(FileUtils::decodeText(source.bytes), source.name, &hasVersionLines);
        result.hasVersionLines = hasVersionLines;
        return result;
    }
    const QByteArray comment = jpegComment(source.bytes, source.name);
    if (comment.isNull())
        throw ToolError(ExitCode::No, QStringLiteral("the image has no comment")).at(source.name);
    try {
        result.config.parseJpegComment(FileUtils::decodeText(comment));
    } catch (const ExceptionQt &e) {
        throw ToolError(ExitCode::BadInput, QLatin1String("image comment: ") + e.message())
            .at(source.name);
    }
    return result;
}

ConfigInput readConfig(const QString &name)
{
    return readConfig(ConfigSource{name, readInput(name)});
}

} // namespace vn::tool
