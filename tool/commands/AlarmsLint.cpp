// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/cli/FindingsPrinter.h"
#include "tool/files/FileWork.h"
#include "tool/files/Input.h"

#include "alarm/AlarmLint.h"

#include <QtCore/QCoreApplication>

#include <memory>

namespace vn::tool {

namespace {

class AlarmsLint : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Tells all faults of alarm lists at once, and what reading them loses or "
            "changes. Columns count characters as an editor shows them.");
        m_findings.declare(arguments);
        arguments.files("FILE", "alarm list, \"-\" for standard input", m_files);
        arguments.flag("--updates", "the files are alarm updates", m_areUpdates);
        arguments.example("vantero-formats alarms lint gate.alarms",
                          "tells what is wrong with that list");
    }

    ExitCode run(Output &out) override
    {
        // Script engines want an application around them.
        int argumentCount = 1;
        char name[] = "vantero-formats";
        char *argumentValues[] = {name, nullptr};
        const QCoreApplication application(argumentCount, argumentValues);

        m_work.forEach(out, m_files, [&](const QString &file) {
            const QByteArray bytes = readInput(file);
            m_findings.add(out, file,
                           m_areUpdates ? alarmUpdateFindings(bytes) : alarmListFindings(bytes));
        });
        return m_findings.finish(out, m_work.errors(), m_work.exitCode());
    }

private:
    QStringList m_files;
    bool m_areUpdates = false;
    FindingsPrinter m_findings;
    FileWork m_work;
};

} // namespace

std::unique_ptr<Command> makeAlarmsLint()
{
    return std::make_unique<AlarmsLint>();
}

} // namespace vn::tool
