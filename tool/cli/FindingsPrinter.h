// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_FINDINGSPRINTER_H
#define VN_TOOL_CLI_FINDINGSPRINTER_H

#include "tool/cli/Arguments.h"
#include "tool/cli/Output.h"

#include "base/Finding.h"

namespace vn::tool {

/**
 * What every lint prints, and its options: a line a finding, "FILE:LINE:COLUMN: severity: message
 * [code]", or with --json {"findings": [{"file", "line", "column", "endLine", "endColumn",
 * "severity", "code", "message"}, …], "errors": […]}.
 *
 * What cannot be read is told as any error; the rest goes on. With --json such errors stand in the
 * member "errors".
 * @code
 * for (const QString &file : files) {
 *     try {
 *         m_findings.add(out, file, findingsOf(readInput(file)));
 *     } catch (const ToolError &e) {
 *         m_findings.addError(out, e);
 *     }
 * }
 * return m_findings.finish(out);
 * @endcode
 */
class FindingsPrinter
{
public:
    /** Declares --severity and --json, and says in the help what is printed. */
    void declare(Arguments &arguments);

    /** Prints the findings of @p file (an entry of an archive as "ARCHIVE:ENTRY") that are as
     * severe as the user wants to know. All of them count. */
    void add(Output &out, const QString &file, const Findings &findings);

    /** Tells that something could not be read. */
    void addError(Output &out, const ToolError &error);

    /** Sets the result of --json and gives the exit status: BadInput when something could not be
     * read, No when there are findings of severity "error", else Done. */
    ExitCode finish(Output &out);

    /** The same behind work that has told its errors itself: these are @p errors, as errorToJson()
     * has each, and @p worst is what it would have ended with. */
    ExitCode finish(Output &out, const Json &errors, ExitCode worst);

private:
    bool isWanted(const Finding &finding) const;

    QString m_least;
    Json m_findings = Json::array();
    Json m_errors = Json::array();
    bool m_hasFailed = false;
    bool m_hasErrors = false;
};

} // namespace vn::tool

#endif // VN_TOOL_CLI_FINDINGSPRINTER_H
