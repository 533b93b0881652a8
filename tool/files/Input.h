// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_INPUT_H
#define VN_TOOL_FILES_INPUT_H

#include "base/Exceptions.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QFileDevice;

namespace vn::tool {

/** The most that an input may hold, in bytes. */
constexpr qint64 kMaxInputSize = qint64(512) * 1024 * 1024;

/**
 * The bytes of the file @p name, or of standard input when it is "-".
 * @throws ToolError (bad input) when it cannot be opened or read, or holds more than kMaxInputSize
 */
QByteArray readInput(const QString &name);

/** Why @p file could not be opened or read; of a folder, which is none, in the words of this tool.
 */
QString readFailure(const QFileDevice &file);

/** What is behind the @p reason why something of an archive could not be read where a password is
 * missing or wrong: "; --password-file names the file that has it". */
QString withPasswordHint(const QString &reason, ArchiveError error, const char *option);

/**
 * The password in the first line of the file @p name ("-" is standard input).
 * @throws ToolError (bad input) as readInput(), and when the line is empty
 */
QByteArray readPassword(const QString &name);

} // namespace vn::tool

#endif // VN_TOOL_FILES_INPUT_H
