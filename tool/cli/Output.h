// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_OUTPUT_H
#define VN_TOOL_CLI_OUTPUT_H

#include "tool/cli/Colors.h"
#include "tool/cli/Json.h"
#include "tool/cli/Progress.h"
#include "tool/cli/ToolError.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace vn::tool {

/**
 * Where a command's results and complaints go: results to standard output, complaints to standard
 * error. With --json standard output is exactly one JSON value and standard error stays empty, but
 * for an error that standard output does not take.
 *
 * Nothing is lost in silence: what standard output does not take is an error (exit status 3).
 * Whatever is written takes the line back that shows progress.
 */
class Output
{
public:
    explicit Output(bool json, ColorMode colors = ColorMode::Never);

    Output(const Output &) = delete; // there is one standard output
    Output &operator=(const Output &) = delete;

    /** Whether the result is wanted as JSON. */
    bool json() const { return m_json; }

    /** The colors of standard output. */
    const Colors &colors() const { return m_colors; }

    /** The line that shows how far long work is; never with --json. */
    Progress &progress() { return m_progress; }

    /** Prints a result; not with --json. @throws ToolError when it cannot be written */
    void print(const QString &text);

    /** Prints a result that is bytes, such as a text in the encoding of its file. */
    void print(const QByteArray &bytes);

    /** Prints a text and ends the line. */
    void printLine(const QString &text);

    /** Prints lines with words of a file in them: on a terminal as escapedControls() has them. */
    void printForeign(const QString &text);

    /** Prints lines of a diff, in their colors. */
    void printDiff(const QByteArray &lines) { print(m_colors.diff(lines)); }

    /** The same with words of a file in them, as printForeign() has them. */
    void printForeignDiff(const QString &lines);

    /** Sets the one value that --json prints. A later error takes its place. */
    void setResult(Json result);

    /** Prints a piece of the one value that --json prints, where it is too large to be kept for
     * setResult(). An error behind it goes to standard error. */
    void printJson(const QByteArray &piece);

    /** Hands what has been printed to standard output now, for those who wait for it.
     * @throws ToolError when it cannot be written */
    void flush();

    /** Tells an error and lets the command go on; with --json the command itself puts it into its
     * result (errorToJson()). */
    void complain(const ToolError &error);

    /** Tells a warning on the file @p name (may be empty); as complain() with --json. */
    void warn(const QString &name, const QString &message);

    /** Writes everything to standard output and closes it. @throws ToolError when it fails */
    void finish();

    /** Tells the error that ended the command and returns the exit status. */
    ExitCode fail(const ToolError &error);

private:
    QString forTerminal(const QString &text) const;
    void append(const QByteArray &bytes);
    void close();

    bool m_json;
    bool m_hasPieces = false;
    bool m_toTerminal;
    Colors m_colors;
    Colors m_errorColors;
    std::optional<Json> m_result;
    QByteArray m_buffer;
    Progress m_progress;
};

/** @p text as one line that a terminal shows and does not obey: control characters but tabulators
 * as "\x1B". */
QString escapedControls(const QString &text);

/** What the tool says of the error that ended a command: on standard error, or with --json, without
 * colors, on standard output. */
QByteArray failureText(const ToolError &error, bool json, const Colors &colors = {});

/** The value of the member "error": file, line, column, message, exit code, null where unknown; a
 * reason where there is one. */
Json errorToJson(const ToolError &error);

/** Writes to standard error; there is nowhere to report a failure. */
void writeToStandardError(const QByteArray &bytes);

} // namespace vn::tool

#endif // VN_TOOL_CLI_OUTPUT_H
