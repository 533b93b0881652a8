// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGTEXTFILE_H
#define VN_TOOL_FILES_CONFIGTEXTFILE_H

#include "tool/files/ConfigSources.h"

#include "base/EncodedText.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vn::tool {

/** A configuration text in memory, with all that it takes to write it back byte by byte. */
class ConfigTextFile
{
public:
    /** @throws ToolError when @p source is an image, an archive, UTF-16 or no text */
    explicit ConfigTextFile(const ConfigSource &source);

    /** Reads the file @p name ("-" is standard input).
     * @throws ToolError the same, and when it cannot be read */
    explicit ConfigTextFile(const QString &name);

    const QString &name() const { return m_name; }
    const QByteArray &bytes() const { return m_text.bytes(); }
    const QString &text() const { return m_text.text(); }

    /** The bytes of @p text in the encoding of this file.
     * @throws ToolError (bad input) when that encoding cannot hold the text */
    QByteArray encode(const QString &text) const;

private:
    QString m_name;
    EncodedText m_text;
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGTEXTFILE_H
