// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_COMMANDTABLE_H
#define VN_TOOL_CLI_COMMANDTABLE_H

#include "tool/cli/Command.h"

#include <memory>
#include <vector>

namespace vn::tool {

/** A row of the command table. */
struct CommandEntry
{
    const char *group;   ///< "config", or "" for a command of one word
    const char *name;    ///< "show"
    const char *summary; ///< one line, small first letter, no full stop
    std::unique_ptr<Command> (*create)();

    /** "config show" */
    QString fullName() const;
};

/** Every command there is, in the order of the help. Dispatch, help and the list of commands are
 * made from it. */
const std::vector<CommandEntry> &commandTable();

} // namespace vn::tool

#endif // VN_TOOL_CLI_COMMANDTABLE_H
