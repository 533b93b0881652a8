// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGINPUT_H
#define VN_TOOL_FILES_CONFIGINPUT_H

#include "config/VanteroConfigFile.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace vn::tool {

/** A configuration that a command only reads: a text, or the comment of a camera's JPEG image. */
struct ConfigInput
{
    VanteroConfigFile config;
    std::optional<bool> hasVersionLines; ///< of the header; an image has none
};

/**
 * Loads the file @p name ("-" is standard input).
 * @throws ToolError when it cannot be read, is malformed (with the line), or is no such file
 */
ConfigInput readConfig(const QString &name);

/** A configuration text in memory, with all that it takes to write it back byte by byte. */
class ConfigTextFile
{
public:
    /**
     * Reads the file @p name ("-" is standard input).
     * @throws ToolError when it cannot be read, or is an image or archive
     */
    explicit ConfigTextFile(const QString &name);

    const QString &name() const { return m_name; }
    const QByteArray &bytes() const { return m_bytes; }
    const QString &text() const { return m_text; }

    /**
     * The bytes of @p text in the encoding of this file: UTF-8, with a byte order mark where the
     * file has one, or Latin-1.
     * @throws ToolError (bad input) when that encoding cannot hold the text
     */
    QByteArray encode(const QString &text) const;

private:
    enum class Encoding { Utf8, Utf8WithMark, Latin1 };

    QString m_name;
    QByteArray m_bytes;
    QString m_text;
    Encoding m_encoding;
};

/**
 * Parses @p text, the content of the file @p name.
 * @throws ToolError (bad input) with the line when it is malformed
 */
VanteroConfigFile parseConfig(const QString &text, const QString &name,
                              bool *hasVersionLines = nullptr);

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGINPUT_H
