// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/Versions.h"

#include <memory>
#include <optional>

namespace vn::tool {

namespace {

class VersionCheck : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints \"safe\", or \"unsafe\" and the rule that forbids the update; then the exit "
            "status is 1. A version without a known platform is judged by the rules all the same.");
        arguments.option("--model", "MODEL", "model name of the camera", m_model);
        arguments.require();
        arguments.text("CURRENT", "version that the camera runs now", m_current);
        arguments.text("TARGET", "version that is to be installed", m_target);
        arguments.json();
        arguments.example("vantero-formats version check --model K40D VN-3.0.3.7 VN-3.0.6.2",
                          "tells that a K40 on VN-3.0.3 needs a later version first");
    }

    ExitCode run(Output &out) override
    {
        const VanteroSoftwareVersion current(m_current);
        const VanteroSoftwareVersion target(m_target);
        const SafeUpdateVerdict verdict = current.checkUpdate(*m_model, target);
        const QStringList warnings = versionWarnings(current) + versionWarnings(target);
        const ExitCode code = verdict.safe ? ExitCode::Done : ExitCode::No;
        if (out.json()) {
            out.setResult(Json::object({{"model", *m_model},
                                        {"current", m_current},
                                        {"target", m_target},
                                        {"safe", verdict.safe},
                                        {"rule", verdict.rule},
                                        {"sentence", verdict.sentence},
                                        {"warnings", Json::array(warnings)}}));
            return code;
        }
        for (const QString &warning : warnings)
            out.warn(QString(), warning);
        out.printLine(verdict.safe ? QStringLiteral("safe")
                                   : QLatin1String("unsafe: ") + verdict.sentence);
        return code;
    }

private:
    std::optional<QString> m_model;
    QString m_current;
    QString m_target;
};

} // namespace

std::unique_ptr<Command> makeVersionCheck()
{
    return std::make_unique<VersionCheck>();
}

} // namespace vn::tool
