// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "CommandTable.h"

namespace vn {
namespace tool {

// To add a command: write a class derived from Command in a file of its own (ConfigShow.cpp is a
// model), which ends with its factory; declare the factory here, add a row, and name the file in
// CMakeLists.txt. Help, dispatch, completions and the manual's check follow from the row.

std::unique_ptr<Command> makeConfigShow();

const std::vector<CommandEntry> &commandTable()
{
    // clang-format off
    static const std::vector<CommandEntry> table = {
        // group    name    summary                                      factory
        {"config", "show", "show the header and sections of a configuration", makeConfigShow},
    };
    // clang-format on
    return table;
}

QString CommandEntry::fullName() const
{
    const QString word = QString::fromUtf8(name);
    return *group ? QString::fromUtf8(group) + QLatin1Char(' ') + word : word;
}

} // namespace tool
} // namespace vn
