// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"

#include "version/VanteroSoftwareVersion.h"

#include <memory>
#include <optional>

namespace vn::tool {

namespace {

class AppVersion : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "VERSION is major.minor.stage.build, where stage is 0 for alpha, 1 for beta, 2 for a "
            "release candidate and 3 for a release, or major.minor.build, a release. Any other "
            "text is kept as it is.");
        arguments.text("VERSION", "build version of an application", m_version);
        arguments.option("--revision", "TEXT",
                         "source revision; what stands before its first colon is left out",
                         m_revision);
        arguments.flag("--debug", "a debug build", m_debug);
        arguments.json();
        arguments.example("vantero-formats app-version 4.1.1.5 --revision 1200:1234",
                          "prints \"4.1 beta 5, revision 1234\"");
    }

    ExitCode run(Output &out) override
    {
        const QString text = VanteroSoftwareVersion::applicationVersion(
            m_version, m_revision.value_or(QString()), m_debug ? 1 : 0);
        if (out.json())
            out.setResult(Json::object({{"version", m_version}, {"text", text}}));
        else
            out.printLine(text);
        return ExitCode::Done;
    }

private:
    QString m_version;
    std::optional<QString> m_revision;
    bool m_debug = false;
};

} // namespace

std::unique_ptr<Command> makeAppVersion()
{
    return std::make_unique<AppVersion>();
}

} // namespace vn::tool
