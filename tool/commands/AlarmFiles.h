// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_ALARMFILES_H
#define VN_TOOL_COMMANDS_ALARMFILES_H

#include "tool/cli/Command.h"
#include "tool/commands/AlarmTree.h"
#include "tool/files/FileWork.h"

#include <functional>

namespace vn::tool {

/** The files of a command that shows alarm texts as trees: one alone, or several with their names.
 */
class AlarmFiles
{
public:
    /** What a command makes of the bytes of a text. @throws ParseException */
    using Read = std::function<AlarmTree(const QByteArray &)>;

    explicit AlarmFiles(bool areUpdates)
        : m_areUpdates(areUpdates)
    {
    }

    /** Declares FILE…, called @p what in the help, and --json. */
    void declare(Arguments &arguments, const char *what);

    /** Shows all files; what cannot be shown is told, and the others go on. With --json the tree of
     * a file is its member @p name. */
    ExitCode show(Output &out, const char *name, const Read &read);

    [[nodiscard]] const QStringList &names() const { return m_names; }

    /** Warns of what reading the text @p bytes loses, which begins in the line @p line of the file
     * @p name. */
    void warnOfLosses(const QByteArray &bytes, const QString &name, qint64 line, Output &out) const;

private:
    AlarmTree treeOf(const QString &name, const Read &read, Output &out) const;

    const bool m_areUpdates;
    QStringList m_names;
    FileWork m_work;
};

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_ALARMFILES_H
