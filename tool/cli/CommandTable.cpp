// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/CommandTable.h"

namespace vn::tool {

#define VN_COMMAND(group, name, summary, factory) std::unique_ptr<Command> factory();
#include "tool/commands/Commands.def"
#undef VN_COMMAND

const std::vector<CommandEntry> &commandTable()
{
    static const std::vector<CommandEntry> table = {
#define VN_COMMAND(group, name, summary, factory) {group, name, summary, factory},
#include "tool/commands/Commands.def"
#undef VN_COMMAND
    };
    return table;
}

QString CommandEntry::fullName() const
{
    const QString word = QString::fromUtf8(name);
    return *group ? QString::fromUtf8(group) + QLatin1Char(' ') + word : word;
}

} // namespace vn::tool
