// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_OUTPUTFILE_H
#define VN_TOOL_FILES_OUTPUTFILE_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vn::tool {

/** AtomicFile::replace() for a command. @throws ToolError (output failed) */
void writeFileAtomically(const QString &path, const QByteArray &content);

/** AtomicFile::create() for a command. @throws ToolError (output failed) */
[[nodiscard]] bool writeNewFileAtomically(const QString &path, const QByteArray &content);

} // namespace vn::tool

#endif // VN_TOOL_FILES_OUTPUTFILE_H
