// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_TOOLERROR_H
#define VN_TOOL_CLI_TOOLERROR_H

#include "tool/cli/ExitCode.h"

#include <QtCore/QString>

#include <exception>
#include <string>

namespace vn {

class ExceptionQt;

namespace tool {

/**
 * Ends a command: what failed, on which file, and the exit status that follows.
 *
 * On standard error it reads "vantero-formats: FILE:LINE:COLUMN: message", without the parts that
 * are not known; with --json it is the value {"error": {…}} on standard output.
 * @code
 * throw ToolError(ExitCode::No, QStringLiteral("no section \"%1\"").arg(name)).at(file);
 * @endcode
 */
class ToolError : public std::exception
{
public:
    /** An error that says @p message (what failed and why; no full stop). */
    ToolError(ExitCode code, const QString &message);
    ~ToolError() override;

    /** The same error on the file @p name, as the user wrote it. */
    ToolError at(const QString &name) const;

    /** The same error with a place in that file; line and column count from 1, 0 means unknown. */
    ToolError at(const QString &name, int line, int column = 0) const;

    /** The same error with lines that are shown below it (on standard error only), such as the
     * offending source line with a caret. */
    ToolError showing(const QString &excerpt) const;

    ExitCode code() const { return m_code; }
    const QString &message() const { return m_message; }
    const QString &file() const { return m_file; }
    int line() const { return m_line; }
    int column() const { return m_column; }
    const QString &excerpt() const { return m_excerpt; }

    /** "FILE:LINE:COLUMN: message". */
    QString toString() const;

    const char *what() const noexcept override;

private:
    ExitCode m_code;
    QString m_message;
    QString m_file;
    int m_line = 0;
    int m_column = 0;
    QString m_excerpt;
    std::string m_what;
};

/**
 * The error that @p exception of the library means for the file @p name: bad input, with its
 * message freed of the file name where it begins with one.
 */
ToolError inputError(const ExceptionQt &exception, const QString &name);

/** The same for a file that is written: the output failed. */
ToolError outputError(const ExceptionQt &exception, const QString &name);

} // namespace tool
} // namespace vn

#endif // VN_TOOL_CLI_TOOLERROR_H
