// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_OUTPUTFILE_H
#define VN_TOOL_FILES_OUTPUTFILE_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vn::tool {

/**
 * Makes @p content the whole content of the file @p path: afterwards, and after every failure or
 * kill, the file is either the old or the new one, never a part.
 *
 * The content goes to a new file in the same folder, to the disk, and takes the name over. An
 * existing file hands on its mode and, where that is allowed, its owner; a symbolic link stays and
 * the file that it leads to is replaced; other hard links of it keep the old content. What is no
 * regular file (a device, a pipe), and what is open already (/dev/stdout), is written to as it is.
 * @throws ToolError (output failed) when the file cannot be written, or is there but not writable
 */
void writeFileAtomically(const QString &path, const QByteArray &content);

/**
 * Makes a new file @p path that holds @p content: at any time it is there whole or not at all, even
 * when the tool is killed.
 * @returns false where something of that name is there already, which stays as it is
 * @throws ToolError (output failed) when the file cannot be written
 */
bool writeNewFileAtomically(const QString &path, const QByteArray &content);

} // namespace vn::tool

#endif // VN_TOOL_FILES_OUTPUTFILE_H
