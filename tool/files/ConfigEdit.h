// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGEDIT_H
#define VN_TOOL_FILES_CONFIGEDIT_H

#include "tool/cli/ToolError.h"
#include "tool/files/ConfigLines.h"
#include "tool/files/ConfigTextFile.h"

#include "config/VanteroConfigMap.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace vn::tool {

/**
 * Edits single entries of a configuration text and leaves every other character as it is.
 *
 * Each operation gives the text in which the same edit of the map is read back: it proposes texts
 * and takes the first one that the library reads so. What no text can say is an error.
 */
class ConfigEdit
{
public:
    /** @throws ToolError when the text of @p file is malformed */
    explicit ConfigEdit(const ConfigTextFile &file);

    /** The text after VanteroConfigMap::setValue(): the newest value, the last line of the key,
     * is replaced; a new key stands before the end of the section's last block, a new section at
     * the end of the text. @throws ToolError (bad input) when the format cannot hold that */
    QString set(const QString &section, const QString &key, const QString &value) const;

    /** The text after VanteroConfigMap::addValue(). @throws ToolError as set() does */
    QString add(const QString &section, const QString &key, const QString &value) const;

    /** The text without any line of that key. @throws ToolError (no) when there is none */
    QString unset(const QString &section, const QString &key) const;

private:
    /** The characters of a value in the text, and what must stand before a new one. */
    struct Range
    {
        int begin;
        int end;
        QString before;
    };

    ToolError refusal(const QString &message) const;
    void requireWritable(const QString &section, const QString &key, const QString &value) const;
    bool isHeaderValue(const QString &section, const QString &key) const;
    std::optional<Range> headerValue(const QString &key) const;
    std::vector<int> addressLines() const;
    QStringList withNewLine(const QString &section, const QString &key, const QString &value) const;
    QString firstThatReads(const QStringList &proposals, const VanteroConfigMap &wanted) const;

    const ConfigTextFile &m_file;
    VanteroConfigMap m_map;
    ConfigLines m_lines;
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGEDIT_H
