// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_TOOLERROR_H
#define VN_TOOL_CLI_TOOLERROR_H

#include "tool/cli/ExitCode.h"

#include <QtCore/QString>

#include <exception>
#include <string>

namespace vn::tool {

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

    /** What deserves a word and ends nothing: it reads "FILE: warning: message". */
    static ToolError warning(const QString &message);

    /** The same error with a word for its cause that never changes, for programs: "not-found". */
    ToolError because(const QString &reason) const;

    /** The same error on the file @p name, as the user wrote it. */
    ToolError at(const QString &name) const;

    /** The same error with a place in that file; line and column count from 1, 0 means unknown. */
    ToolError at(const QString &name, int line, int column = 0) const;

    /** The same error with lines that are shown below it (on standard error only), such as the
     * offending source line with a caret. */
    ToolError showing(const QString &excerpt) const;

    ExitCode code() const { return m_code; }
    bool isWarning() const { return m_isWarning; }
    const QString &message() const { return m_message; }
    const QString &reason() const { return m_reason; }
    const QString &file() const { return m_file; }
    int line() const { return m_line; }
    int column() const { return m_column; }
    const QString &excerpt() const { return m_excerpt; }

    /** "FILE:LINE:COLUMN: " as far as it is known. */
    QString place() const;

    /** The place, then the message. */
    QString toString() const { return place() + m_message; }

    const char *what() const noexcept override;

private:
    ExitCode m_code;
    bool m_isWarning = false;
    QString m_message;
    QString m_reason;
    QString m_file;
    int m_line = 0;
    int m_column = 0;
    QString m_excerpt;
    std::string m_what;
};

/** What is said of a folder where a file was meant, whether to read or to write. */
constexpr char kFolderNotFile[] = "a folder, not a file";

} // namespace vn::tool

#endif // VN_TOOL_CLI_TOOLERROR_H
