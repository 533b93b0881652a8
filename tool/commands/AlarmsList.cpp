// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/AlarmTree.h"
#include "tool/files/Input.h"

#include "alarm/AlarmListParser.h"
#include "base/Exceptions.h"

#include <memory>

namespace vn::tool {

namespace {

class AlarmsList : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "The list is shown as a tree: keys ascending, of a repeated key the first in the text "
            "first, the elements of arrays in reverse order, all as programs get them. Escapes in "
            "strings are not decoded, so their backslashes are shown doubled.");
        arguments.describe(
            "With --json a repeated key is a repeated name, the first of which is the one that "
            "lookups give; numbers that are not finite are null.");
        arguments.file("FILE", "alarm list (Latin-1), \"-\" for standard input", m_file);
        arguments.json();
        arguments.example("vantero-formats alarms list gate.alarms", "shows that list as a tree");
    }

    ExitCode run(Output &out) override
    {
        const QByteArray bytes = readInput(m_file);
        const AlarmTree tree = [&] {
            try {
                // The library ends the process where a comment ends with "*" and the text with it.
                // With a blank behind, that is an error like others; elsewhere it changes nothing.
                QByteArray buffer = bytes.endsWith('*') ? bytes + ' ' : bytes;
                return AlarmTree(AlarmListParser().parse(&buffer));
            } catch (const ParseException &e) {
                throw alarmError(e, m_file, bytes);
            }
        }();
        if (out.json())
            out.setResult(Json::object({{"file", m_file}, {"alarms", tree.toJson()}}));
        else
            out.print(tree.toText());
        return ExitCode::Done;
    }

private:
    QString m_file;
};

} // namespace

std::unique_ptr<Command> makeAlarmsList()
{
    return std::make_unique<AlarmsList>();
}

} // namespace vn::tool
