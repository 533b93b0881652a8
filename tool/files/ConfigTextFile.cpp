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
    if (isJpeg(source.bytes))
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("a JPEG image; only configuration texts can be edited"))
            .at(m_name);
    requireText(source); // it would get 8-bit text among its own
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
