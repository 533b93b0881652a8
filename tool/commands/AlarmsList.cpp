// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/AlarmFiles.h"

#include "alarm/AlarmDocument.h"

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
            "With --json, numbers that are not finite are null. A list in which a key repeats is "
            "in "
            "the order of its text then; the values of such a key are one array, and "
            "\"repeatedKeys\" names these arrays by their JSON pointers.");
        m_files.declare(arguments, "alarm list (Latin-1), \"-\" for standard input");
        arguments.flag("--text-order", "keys and elements in the order of the text", m_inTextOrder);
        arguments.example("vantero-formats alarms list gate.alarms", "shows that list as a tree");
        arguments.example("vantero-formats alarms list gate.alarms --text-order",
                          "shows it as it was written");
    }

    ExitCode run(Output &out) override
    {
        return m_files.show(out, "alarms", [&](const QByteArray &bytes) {
            // A star that ends a comment and the text with it is more than a parser bears. With a
            // blank behind, it is a comment that never ends, like others.
            const AlarmDocument list =
                AlarmDocument::parse(bytes.endsWith('*') ? bytes + ' ' : bytes);
            if (m_inTextOrder)
                return AlarmTree(list.root());
            AlarmTree tree(list.root().toVariant());
            return out.json() && tree.hasRepeatedKeys() ? AlarmTree(list.root()) : tree;
        });
    }

private:
    AlarmFiles m_files{false};
    bool m_inTextOrder = false;
};

} // namespace

std::unique_ptr<Command> makeAlarmsList()
{
    return std::make_unique<AlarmsList>();
}

} // namespace vn::tool
