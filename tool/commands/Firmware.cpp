// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/Versions.h"
#include "tool/files/Input.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <memory>

namespace vn::tool {

namespace {

class Firmware : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe("Prints \"FILE: VERSION\" for each package. The version is read from "
                           "the first 30 lines; the image behind them is left alone.");
        arguments.files("FILE", "firmware package, \"-\" for standard input", m_files);
        arguments.json();
        arguments.example("vantero-formats firmware camera.fwp",
                          "prints the version that the package holds");
    }

    ExitCode run(Output &out) override
    {
        ExitCode worst = ExitCode::Done;
        Json packages = Json::array();
        for (const QString &name : qAsConst(m_files)) {
            try {
                packages.append(show(name, out));
            } catch (const ToolError &e) {
                out.complain(e);
                packages.append(Json::object({{"file", name},
                                              {"version", Json()},
                                              {"warnings", Json::array()},
                                              {"error", errorToJson(e)}}));
                worst = std::max(worst, e.code());
            }
        }
        if (out.json())
            out.setResult(Json::object({{"packages", packages}}));
        return worst;
    }

private:
    static VanteroSoftwareVersion read(const QString &name)
    {
        // Only of a regular file, Qt knows where it ends before it has been read.
        if (name == QLatin1String("-") || !QFileInfo(name).isFile())
            return VanteroSoftwareVersion::fromFwp(readInput(name));
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            throw ToolError(ExitCode::BadInput, file.errorString()).at(name);
        VanteroSoftwareVersion version = VanteroSoftwareVersion::fromFwpFile(&file);
        if (file.error() != QFile::NoError)
            throw ToolError(ExitCode::BadInput, file.errorString()).at(name);
        return version;
    }

    static Json show(const QString &name, Output &out)
    {
        const VanteroSoftwareVersion version = read(name);
        if (version.isNull())
            throw ToolError(ExitCode::No, QStringLiteral("names no version")).at(name);
        const QStringList warnings = versionWarnings(version);
        if (!out.json()) {
            for (const QString &warning : warnings)
                out.warn(name, warning);
            out.printLine(name + QLatin1String(": ") + version);
        }
        return Json::object({{"file", name},
                             {"version", QString(version)},
                             {"warnings", Json::array(warnings)},
                             {"error", Json()}});
    }

    QStringList m_files;
};

} // namespace

std::unique_ptr<Command> makeFirmware()
{
    return std::make_unique<Firmware>();
}

} // namespace vn::tool
