// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/cli/FindingsPrinter.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/ConfigSources.h"

#include <memory>

namespace vn::tool {

namespace {

class ConfigLint : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Tells all faults of configurations at once, and what reading them loses or changes. "
            "Of a JPEG image the lines are those of its comment; an entry of an archive is named "
            "\"ARCHIVE:ENTRY\".");
        arguments.describe(
            "In a folder, a file counts when its name ends with \"cfg\" or its first two lines "
            "tell the versions, and an image when its comment holds sections; of an archive the "
            "entries count whose names end with \"cfg\", and such images.");
        m_findings.declare(arguments);
        arguments.files("PATH", "files, images, archives and folders, \"-\" for standard input",
                        m_sources.names());
        m_sources.declare(arguments);
        arguments.example("vantero-formats config lint backups --recursive --severity warning",
                          "tells what would be lost of any configuration of a folder tree");
    }

    ExitCode run(Output &out) override
    {
        m_sources.forEach(out, [&](const ConfigSource &source) {
            m_findings.add(out, source.name, configText(source).findings());
        });
        return m_findings.finish(out, m_sources.errors(), m_sources.exitCode());
    }

private:
    FindingsPrinter m_findings;
    ConfigSources m_sources{ConfigSources::Images | ConfigSources::Archives |
                            ConfigSources::NamedArchives | ConfigSources::WithoutHeader};
};

} // namespace

std::unique_ptr<Command> makeConfigLint()
{
    return std::make_unique<ConfigLint>();
}

} // namespace vn::tool
