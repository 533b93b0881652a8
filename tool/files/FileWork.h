// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_FILEWORK_H
#define VN_TOOL_FILES_FILEWORK_H

#include "tool/cli/Interrupt.h"
#include "tool/cli/Output.h"

#include <QtCore/QStringList>

#include <functional>
#include <optional>

namespace vn::tool {

/**
 * Work on many files, one after the other. What fails costs itself alone: it is told, the rest goes
 * on. A terminal shows how far it is. A signal ends the work behind the file at hand, and then,
 * once the command has told what there is, the process.
 */
class FileWork
{
public:
    /** Calls @p use for each of the files @p names. A ToolError that it throws is told. */
    void forEach(Output &out, const QStringList &names,
                 const std::function<void(const QString &name)> &use);

    /** Done, or the worst of what failed; No when there was nothing. */
    ExitCode exitCode() const { return m_worst; }

    /** What failed, each as errorToJson() has it. */
    const Json &errors() const { return m_errors; }

protected:
    /** Takes signals from now on; where one of @p names is standard input they end the process at
     * once, as nobody could wake who waits for it. */
    void begin(const QStringList &names);
    /** Does @p action for one file, which counts as done. A ToolError that it throws is told. */
    void attempt(Output &out, const std::function<void()> &action);
    void fail(Output &out, const ToolError &error);
    /** Tells how many files are done, where a signal has come. */
    void tellInterruption(Output &out) const;
    /** Tells @p message where there was nothing to do: the answer is no, then. */
    void tellEmptiness(Output &out, const QString &message);

private:
    std::optional<Interrupt> m_interrupt;
    qint64 m_done = 0;
    ExitCode m_worst = ExitCode::Done;
    Json m_errors = Json::array();
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_FILEWORK_H
