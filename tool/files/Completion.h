// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_COMPLETION_H
#define VN_TOOL_FILES_COMPLETION_H

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn::tool {

/**
 * The words that a shell may offer where one of @p kind belongs, as Arguments::offers() names it:
 * "section", "key", "entry" (SECTION/KEY), "assignment" (SECTION/KEY=), "condition" (of config
 * table), "model" or "rule". Those of configurations are what stands in the files, folders and
 * archives among @p words, the words of the command line; keys are those of the sections among
 * them, where there are any.
 *
 * Nothing is told of what cannot be read: the shell asks while somebody types.
 */
QStringList completions(const QString &kind, const QStringList &words);

} // namespace vn::tool

#endif // VN_TOOL_FILES_COMPLETION_H
