// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_COLLECTSOURCES_H
#define VN_TOOL_FILES_COLLECTSOURCES_H

#include "tool/cli/ToolError.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <vector>

namespace vn::tool {

/** A file or archive that may hold configurations. */
struct CollectSource
{
    QString path;
    bool isArchive;
    bool isNamed; ///< by the user, not found in a folder
};

/**
 * The files and archives that VanteroConfigFile::parseAll() looks at for @p paths, the entries of
 * folders by name. What it would pass over though the user has named it goes to @p report: a path
 * that leads to nothing, and (as a warning, with the exit code Done) a folder without
 * @p recursive.
 */
std::vector<CollectSource> collectSources(const QStringList &paths, bool recursive,
                                          const std::function<void(const ToolError &)> &report);

} // namespace vn::tool

#endif // VN_TOOL_FILES_COLLECTSOURCES_H
