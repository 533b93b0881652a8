// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/AlarmTree.h"
#include "tool/files/Input.h"

#include "alarm/AlarmUpdateParser.h"
#include "base/Exceptions.h"

#include <QtCore/QCoreApplication>
#include <QtScript/QScriptEngine>

#include <memory>

namespace vn::tool {

namespace {

class AlarmsUpdate : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "The update is shown as scripts get it: the properties from the last pair in the text "
            "to the first, of a repeated key the leftmost value, lists in reverse order. Dates are "
            "local midnights; a time has no day and is an invalid date.");
        arguments.describe("With --json an invalid date is null.");
        arguments.file("FILE", "alarm update (Latin-1), \"-\" for standard input", m_file);
        arguments.json();
        arguments.example("vantero-formats alarms update gate.update", "shows that update");
    }

    ExitCode run(Output &out) override
    {
        // Script engines want an application around them.
        int argumentCount = 1;
        char name[] = "vantero-formats";
        char *argumentValues[] = {name, nullptr};
        const QCoreApplication application(argumentCount, argumentValues);
        QScriptEngine engine;

        const QByteArray bytes = readInput(m_file);
        const AlarmTree tree = [&] {
            try {
                QByteArray buffer = bytes;
                return AlarmTree(AlarmUpdateParser(&engine).parse(&buffer));
            } catch (const ParseException &e) {
                throw alarmError(e, m_file, bytes);
            }
        }();
        if (out.json())
            out.setResult(Json::object({{"file", m_file}, {"update", tree.toJson()}}));
        else
            out.print(tree.toText());
        return ExitCode::Done;
    }

private:
    QString m_file;
};

} // namespace

std::unique_ptr<Command> makeAlarmsUpdate()
{
    return std::make_unique<AlarmsUpdate>();
}

} // namespace vn::tool
