// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_FINDINGSPRINTER_H
#define VN_TOOL_CLI_FINDINGSPRINTER_H

#include "tool/cli/Arguments.h"
#include "tool/cli/Output.h"

#include "base/Finding.h"

#include <optional>

namespace vn::tool {

/**
 * What every lint prints, and its options: a line a finding, "FILE:LINE:COLUMN: severity: message
 * [code]", or with --json {"findings": [{"file", "line", "column", "endLine", "endColumn",
 * "severity", "code", "message"}, …], "errors": […]}.
 *
 * @code
 * m_work.forEach(out, files, [&](const QString &file) {
 *     m_findings.add(out, file, findingsOf(readInput(file)));
 * });
 * return m_findings.finish(out, m_work.errors(), m_work.exitCode());
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

    /** Sets the result of --json and gives the exit status: @p worst, or No when there are findings
     * of severity "error". @p errors, which have been told, are what could not be read, as
     * errorToJson() has each. */
    ExitCode finish(Output &out, const Json &errors = Json::array(),
                    ExitCode worst = ExitCode::Done);

private:
    bool isWanted(const Finding &finding) const;

    QString m_least;
    Json m_findings = Json::array();
    bool m_hasErrors = false;
};

/** A warning of what reading the file @p name loses: the first of @p losses, and how many more the
 * command @p lint tells; nothing where there are none. */
std::optional<ToolError> warningOf(const Findings &losses, const QString &name, const char *lint);

} // namespace vn::tool

#endif // VN_TOOL_CLI_FINDINGSPRINTER_H
