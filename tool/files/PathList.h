// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_PATHLIST_H
#define VN_TOOL_FILES_PATHLIST_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn::tool {

/** Paths from a file or standard input, as they come: whoever writes them into a pipe one by one
 * need not have written the last one before the first is used. */
class PathList
{
public:
    /** The list in the file @p name, "-" for standard input, whose paths end with @p separator.
     * @throws ToolError (bad input) when it cannot be opened */
    PathList(const QString &name, char separator);
    ~PathList();

    PathList(const PathList &) = delete; // closes its file once
    PathList &operator=(const PathList &) = delete;

    /** The next paths, at least one; none at the end, and when a signal comes meanwhile. Empty ones
     * are left out. @throws ToolError (bad input) when the list cannot be read */
    QStringList next();

private:
    const QString m_name;
    const char m_separator;
    int m_descriptor;
    QByteArray m_rest; // of a path that has not ended yet
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_PATHLIST_H
