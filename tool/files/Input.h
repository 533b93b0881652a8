// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_INPUT_H
#define VN_TOOL_FILES_INPUT_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vn::tool {

/** The most that an input may hold, in bytes. */
constexpr qint64 kMaxInputSize = qint64(512) * 1024 * 1024;

/**
 * The bytes of the file @p name, or of standard input when it is "-".
 * @throws ToolError (bad input) when it cannot be opened or read, or holds more than kMaxInputSize
 */
QByteArray readInput(const QString &name);

/**
 * The password in the first line of the file @p name ("-" is standard input).
 * @throws ToolError (bad input) as readInput(), and when the line is empty
 */
QByteArray readPassword(const QString &name);

} // namespace vn::tool

#endif // VN_TOOL_FILES_INPUT_H
