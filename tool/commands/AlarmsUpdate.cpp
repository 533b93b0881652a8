// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/ToolError.h"
#include "tool/commands/AlarmFiles.h"
#include "tool/files/Input.h"

#include "alarm/AlarmUpdateLines.h"
#include "alarm/AlarmUpdateParser.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtScript/QScriptEngine>

#include <memory>
#include <unistd.h>

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
        arguments.describe(
            "With --lines each line is an update of its own, shown before the next one is read, "
            "behind a line \"# FILE:LINE\". A line that is none is told, and the others go on. "
            "With "
            "--json such lines are an object each: {\"line\", \"properties\"} or {\"line\", "
            "\"error\"}, of several files {\"file\", \"line\", ...}.");
        m_files.declare(arguments, "alarm update (Latin-1), \"-\" for standard input");
        arguments.flag("--lines", "read an update a line", m_areLines);
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

        if (m_areLines)
            return showLines(out, engine);
        return m_files.show(out, "update", [&](const QByteArray &bytes) {
            QByteArray buffer = bytes;
            return AlarmTree(AlarmUpdateParser(&engine).parse(&buffer));
        });
    }

private:
    ExitCode showLines(Output &out, QScriptEngine &engine)
    {
        ExitCode worst = ExitCode::Done;
        for (const QString &name : m_files.names()) {
            try {
                if (!showLines(name, out, engine))
                    worst = std::max(worst, ExitCode::BadInput);
            } catch (const ToolError &e) {
                if (out.json())
                    out.printJson(
                        Json::object({{"file", name}, {"error", errorToJson(e)}}).toLine());
                else
                    out.complain(e);
                worst = std::max(worst, e.code());
            }
        }
        if (out.json())
            out.printJson(QByteArray()); // also of no line at all
        return worst;
    }

    /** Whether all lines are updates. */
    bool showLines(const QString &name, Output &out, QScriptEngine &engine)
    {
        QFile file(name);
        if (!(name == QLatin1String("-") ? file.open(STDIN_FILENO, QIODevice::ReadOnly)
                                         : file.open(QIODevice::ReadOnly)))
            throw ToolError(ExitCode::BadInput, readFailure(file)).at(name);
        bool areUpdates = true;
        AlarmUpdateLines lines(&file);
        try {
            while (lines.next()) {
                areUpdates = areUpdates && !lines.error();
                if (out.json())
                    out.printJson(asJson(name, lines, engine).toLine());
                else if (lines.error())
                    out.complain(
                        alarmError(*lines.error(), name, lines.line(), lines.lineNumber()));
                else
                    showLine(name, lines, engine, out);
                out.flush(); // somebody may wait for it
            }
        } catch (const IOException &e) {
            throw ToolError(ExitCode::BadInput, e.message()).at(name);
        }
        return areUpdates;
    }

    void showLine(const QString &name, const AlarmUpdateLines &lines, QScriptEngine &engine,
                  Output &out) const
    {
        m_files.warnOfLosses(lines.line(), name, lines.lineNumber(), out);
        out.print(QStringLiteral("# %1:%2\n").arg(name).arg(lines.lineNumber()) +
                  AlarmTree(lines.update().root().toScriptValue(&engine)).toText());
    }

    Json asJson(const QString &name, const AlarmUpdateLines &lines, QScriptEngine &engine) const
    {
        Json json = Json::object();
        if (m_files.names().size() > 1)
            json.insert(QStringLiteral("file"), name);
        json.insert(QStringLiteral("line"), lines.lineNumber());
        QStringList repeated; // updates keep one value a key
        if (lines.error())
            json.insert(
                QStringLiteral("error"),
                errorToJson(alarmError(*lines.error(), name, lines.line(), lines.lineNumber())));
        else
            json.insert(QStringLiteral("properties"),
                        AlarmTree(lines.update().root().toScriptValue(&engine)).toJson(repeated));
        return json;
    }

    AlarmFiles m_files{true};
    bool m_areLines = false;
};

} // namespace

std::unique_ptr<Command> makeAlarmsUpdate()
{
    return std::make_unique<AlarmsUpdate>();
}

} // namespace vn::tool
