// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_ALARMFILES_H
#define VN_TOOL_COMMANDS_ALARMFILES_H

#include "tool/cli/Command.h"
#include "tool/commands/AlarmTree.h"

#include <functional>

namespace vn::tool {

/** The files of a command that shows alarm texts as trees: one alone, or several with their names.
 */
class AlarmFiles
{
public:
    /** What a command makes of the bytes of a text. @throws ParseException */
    using Read = std::function<AlarmTree(const QByteArray &)>;

    /** Declares FILE…, called @p what in the help, and --json. */
    void declare(Arguments &arguments, const char *what);

    /** Shows all files; what cannot be shown is told, and the others go on. With --json the tree of
     * a file is its member @p name. */
    ExitCode show(Output &out, const char *name, const Read &read) const;

    [[nodiscard]] const QStringList &names() const { return m_names; }

private:
    QStringList m_names;
};

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_ALARMFILES_H
