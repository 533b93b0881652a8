// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "CommandTable.h"

namespace vn::tool {

// To add a command: write a class derived from Command in a file of its own (ConfigShow.cpp is a
// model), which ends with its factory; declare the factory here, add a row, and name the file in
// CMakeLists.txt. Help, dispatch, completions and the manual's check follow from the row.

std::unique_ptr<Command> makeAlarmsList();
std::unique_ptr<Command> makeAlarmsUpdate();
std::unique_ptr<Command> makeAppVersion();
std::unique_ptr<Command> makeConfigAdd();
std::unique_ptr<Command> makeConfigCollect();
std::unique_ptr<Command> makeConfigDiff();
std::unique_ptr<Command> makeConfigMerge();
std::unique_ptr<Command> makeConfigRemove();
std::unique_ptr<Command> makeConfigSet();
std::unique_ptr<Command> makeConfigShow();
std::unique_ptr<Command> makeConfigSplice();
std::unique_ptr<Command> makeConfigUnset();
std::unique_ptr<Command> makeErdinfoShow();
std::unique_ptr<Command> makeErdinfoWrite();
std::unique_ptr<Command> makeFirmware();
std::unique_ptr<Command> makeVersionCheck();
std::unique_ptr<Command> makeVersionCompare();
std::unique_ptr<Command> makeVersionShow();

const std::vector<CommandEntry> &commandTable()
{
    // clang-format off
    static const std::vector<CommandEntry> table = {
        {"config", "show", "show the header and sections of a configuration", makeConfigShow},
        {"config", "set", "set the newest value of a key", makeConfigSet},
        {"config", "add", "add a value to those of a key", makeConfigAdd},
        {"config", "unset", "remove a key with all its values", makeConfigUnset},
        {"config", "remove", "remove sections, comments and empty lines", makeConfigRemove},
        {"config", "splice", "take a section over from another configuration", makeConfigSplice},
        {"config", "merge", "keep entries of the configuration that is replaced", makeConfigMerge},
        {"config", "diff", "compare two configurations by section and key", makeConfigDiff},
        {"config", "collect", "gather the configurations of folders and archives", makeConfigCollect},
        {"version", "show", "show the components of a version", makeVersionShow},
        {"version", "compare", "compare two versions or patterns", makeVersionCompare},
        {"version", "check", "tell whether an update is safe", makeVersionCheck},
        {"", "firmware", "show the versions of firmware packages", makeFirmware},
        {"", "app-version", "show the version of an application as people read it", makeAppVersion},
        {"alarms", "list", "show an alarm list as a tree", makeAlarmsList},
        {"alarms", "update", "show an alarm update as scripts get it", makeAlarmsUpdate},
        {"erdinfo", "write", "write the record of an event recording", makeErdinfoWrite},
        {"erdinfo", "show", "show and check the record of an event recording", makeErdinfoShow},
    };
    // clang-format on
    return table;
}

QString CommandEntry::fullName() const
{
    const QString word = QString::fromUtf8(name);
    return *group ? QString::fromUtf8(group) + QLatin1Char(' ') + word : word;
}

} // namespace vn::tool
