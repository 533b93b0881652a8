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

namespace {

const QByteArray kByteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

/** Refuses an archive: it would pass for a text without sections. */
void refuseArchive(const QByteArray &bytes, const QString &name)
{
    if (bytes.startsWith("PK\x03\x04") || bytes.startsWith("PK\x05\x06"))
        throw ToolError(
            ExitCode::BadInput,
            QStringLiteral("a zip archive; \"config collect\" reads its configurations"))
            .at(name);
}

} // namespace

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

ConfigInput readConfig(const QString &name)
{
    const QByteArray bytes = readInput(name);
    refuseArchive(bytes, name);
    ConfigInput result;
    if (!isJpeg(bytes)) {
        bool hasVersionLines = false;
        result.config = parseConfig(FileUtils::decodeText(bytes), name, &hasVersionLines);
        result.hasVersionLines = hasVersionLines;
        return result;
    }
    const QByteArray comment = jpegComment(bytes, name);
    if (comment.isNull())
        throw ToolError(ExitCode::No, QStringLiteral("the image has no comment")).at(name);
    try {
        result.config.parseJpegComment(FileUtils::decodeText(comment));
    } catch (const ExceptionQt &e) {
        throw ToolError(ExitCode::BadInput, QLatin1String("image comment: ") + e.message())
            .at(name);
    }
    return result;
}

ConfigTextFile::ConfigTextFile(const QString &name)
    : m_name(name)
    , m_bytes(readInput(name))
    , m_text(FileUtils::decodeText(m_bytes))
{
    refuseArchive(m_bytes, name);
    if (isJpeg(m_bytes))
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("a JPEG image; only configuration texts can be edited"))
            .at(name);
    const QByteArray utf8 = m_text.toUtf8();
    if (utf8 == m_bytes)
        m_encoding = Encoding::Utf8;
    else if (kByteOrderMark + utf8 == m_bytes)
        m_encoding = Encoding::Utf8WithMark;
    else
        m_encoding = Encoding::Latin1;
}

QByteArray ConfigTextFile::encode(const QString &text) const
{
    QByteArray bytes;
    if (m_encoding == Encoding::Latin1) {
        for (const uint codePoint : text.toUcs4()) {
            if (codePoint <= 0xFF)
                continue;
            const QString number = QString::number(codePoint, 16).toUpper();
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("the file is Latin-1, which has no \"%1\" (U+%2)")
                                .arg(QString::fromUcs4(&codePoint, 1),
                                     number.rightJustified(4, QLatin1Char('0'))))
                .at(m_name);
        }
        bytes = text.toLatin1();
    } else {
        bytes =
            (m_encoding == Encoding::Utf8WithMark ? kByteOrderMark : QByteArray()) + text.toUtf8();
    }
    // Latin-1 text is read as UTF-8 once all that is left of it happens to be valid UTF-8.
    if (FileUtils::decodeText(bytes) != text)
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("the result would be read in another encoding than the "
                                       "file's"))
            .at(m_name);
    return bytes;
}

} // namespace vn::tool
