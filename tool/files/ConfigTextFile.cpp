// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigTextFile.h"

#include "tool/cli/ToolError.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/Input.h"
#include "tool/files/JpegComment.h"

namespace vn::tool {

ConfigTextFile::ConfigTextFile(const ConfigSource &source)
    : m_name(source.name)
    , m_text(source.bytes)
{
    refuseArchive(source);
    if (isJpeg(source.bytes))
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("a JPEG image; only configuration texts can be edited"))
            .at(m_name);
    // As Latin-1, which all bytes are, it would get 8-bit text among its own.
    const bool isUtf16 = source.bytes.startsWith("\xFF\xFE") || source.bytes.startsWith("\xFE\xFF");
    if (isUtf16 || source.bytes.contains('\0'))
        throw ToolError(ExitCode::BadInput,
                        isUtf16 ? QStringLiteral("UTF-16; only UTF-8 and Latin-1 can be edited")
                                : QStringLiteral("no text: it holds zero bytes"))
            .at(m_name);
}

ConfigTextFile::ConfigTextFile(const QString &name)
    : ConfigTextFile(ConfigSource{name, readInput(name)})
{
}

QByteArray ConfigTextFile::encode(const QString &text) const
{
    const EncodedText::Result result = m_text.encode(text);
    if (!result)
        throw ToolError(ExitCode::BadInput, result.message).at(m_name);
    return result.bytes;
}

} // namespace vn::tool
