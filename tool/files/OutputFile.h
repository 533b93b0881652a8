// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_OUTPUTFILE_H
#define VN_TOOL_FILES_OUTPUTFILE_H

#include "tool/cli/Output.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vn::tool {

/** AtomicFile::replace() for a command, with a warning for each thing that the new file could not
 * keep of the old one. @throws ToolError (output failed) */
void writeFileAtomically(const QString &path, const QByteArray &content, Output &out);

/** The same for a file that held @p before when it was read: what others have changed meanwhile is
 * not lost. @throws ToolError (output failed), also when they have */
void rewriteFileAtomically(const QString &path, const QByteArray &before, const QByteArray &content,
                           Output &out);

/** AtomicFile::create() for a command. @throws ToolError (output failed) */
[[nodiscard]] bool writeNewFileAtomically(const QString &path, const QByteArray &content);

} // namespace vn::tool

#endif // VN_TOOL_FILES_OUTPUTFILE_H
