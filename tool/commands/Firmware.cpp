// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/VersionWords.h"
#include "tool/files/FileWork.h"
#include "tool/files/VersionSources.h"

#include <memory>

namespace vn::tool {

namespace {

class Firmware : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints \"FILE: VERSION\" for each package. The version is read from "
            "the first 30 lines; the image behind them is left alone. Of several lines "
            "that name one the last counts; where they disagree, that is told.");
        arguments.files("FILE", "firmware package, \"-\" for standard input", m_files);
        arguments.flag("-v", "print the line and its form, too", m_verbose);
        arguments.json();
        arguments.example("vantero-formats firmware camera.fwp",
                          "prints the version that the package holds");
    }

    ExitCode run(Output &out) override
    {
        Json packages = Json::array();
        m_work.forEach(out, m_files, [&](const QString &name) {
            try {
                packages.append(show(name, out));
            } catch (const ToolError &e) {
                packages.append(Json::object({{"file", name},
                                              {"version", Json()},
                                              {"warnings", Json::array()},
                                              {"error", errorToJson(e)}}));
                throw;
            }
        });
        if (out.json())
            out.setResult(Json::object({{"packages", packages}}));
        return m_work.exitCode();
    }

private:
    /** The form of a line as people write it. */
    static QString formText(FirmwareLine::Form form)
    {
        switch (form) {
        case FirmwareLine::Form::TwoHashes:
            return QStringLiteral("## Version:");
        case FirmwareLine::Form::OneHash:
            return QStringLiteral("# Version:");
        case FirmwareLine::Form::Upload:
            break;
        }
        return QStringLiteral("UPLD");
    }

    static QStringList warningsOf(const FirmwareHead &head)
    {
        QStringList warnings = versionWarnings(head.version());
        for (const Finding &finding : head.findings()) {
            if (finding.code == QLatin1String("versions-differ") ||
                finding.code == QLatin1String("two-forms"))
                warnings.append(finding.message);
        }
        return warnings;
    }

    Json show(const QString &name, Output &out) const
    {
        const FirmwareHead head = readFirmware(name);
        const VanteroSoftwareVersion version = head.version();
        if (version.isNull())
            throw ToolError(ExitCode::No, QStringLiteral("names no version")).at(name);
        const FirmwareLine &last = head.lines().last();
        const QStringList warnings = warningsOf(head);
        if (!out.json()) {
            for (const QString &warning : warnings)
                out.warn(name, warning);
            QString line = name + QLatin1String(": ") + version;
            if (m_verbose)
                line += QStringLiteral(" (line %1, %2)").arg(last.line).arg(formText(last.form));
            out.printLine(line);
        }
        Json lines = Json::array();
        for (const FirmwareLine &line : head.lines())
            lines.append(Json::object({{"line", line.line},
                                       {"form", formText(line.form)},
                                       {"version", QString(line.version)}}));
        return Json::object({{"file", name},
                             {"version", QString(version)},
                             {"line", last.line},
                             {"form", formText(last.form)},
                             {"lines", lines},
                             {"warnings", Json::array(warnings)},
                             {"error", Json()}});
    }

    bool m_verbose = false;
    QStringList m_files;
    FileWork m_work;
};

} // namespace

std::unique_ptr<Command> makeFirmware()
{
    return std::make_unique<Firmware>();
}

} // namespace vn::tool
