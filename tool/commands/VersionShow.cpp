// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/VersionWords.h"
#include "tool/files/VersionSources.h"

#include "version/VersionOrder.h"

#include <memory>

namespace vn::tool {

namespace {

class VersionShow : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "A version has six components; a part that is missing or no number counts as 0. \"*\" "
            "stands for any number from 0 to 99, but only for its own component.");
        arguments.text(
            "VERSION",
            "version or pattern, such as VN-3.0.8.*; \"-\" for the lines of standard input",
            m_text);
        arguments.json();
        arguments.example("vantero-formats version show 'VN-3.0.8.*'",
                          "shows the components of that pattern");
    }

    ExitCode run(Output &out) override
    {
        const bool isInput = m_text == QLatin1String("-");
        const QStringList texts = versionTexts({m_text});
        Json versions = Json::array();
        for (const QString &text : texts) {
            const VanteroSoftwareVersion version(text);
            const QStringList warnings = versionWarnings(version);
            if (out.json()) {
                versions.append(toJson(version, warnings));
                continue;
            }
            for (const QString &warning : warnings)
                out.warn(QString(), warning);
            if (text != texts.first())
                out.printLine(QString());
            printRow(out, QStringLiteral("version"), text);
            for (int i = 0; i < kVersionComponents; ++i)
                printRow(out, versionComponentName(i), componentText(version, i));
        }
        if (out.json())
            out.setResult(Json::listed("versions", versions, !isInput));
        return ExitCode::Done;
    }

private:
    static QString componentText(const VanteroSoftwareVersion &version, int i)
    {
        constexpr int kPlatform = 0;
        constexpr int kPreRelease = 5;
        if (version[i] != version.high(i))
            return QStringLiteral("any");
        if (i == kPlatform)
            return version.platform().isNull() ? QStringLiteral("unknown") : version.platform();
        if (i == kPreRelease)
            return version[i] == 0 ? QStringLiteral("none") : QStringLiteral("pre");
        return QString::number(version[i]);
    }

    static void printRow(Output &out, const QString &name, const QString &value)
    {
        constexpr int kColumn = 13;
        out.printLine(name.leftJustified(kColumn) + value);
    }

    static Json toJson(const VanteroSoftwareVersion &version, const QStringList &warnings)
    {
        Json components = Json::object();
        for (int i = 0; i < kVersionComponents; ++i)
            components.insert(versionComponentName(i), Json::array({version[i], version.high(i)}));
        return Json::object({{"version", QString(version)},
                             {"platform", version.platform()},
                             {"pattern", VersionOrder::isPattern(version)},
                             {"components", components},
                             {"warnings", Json::array(warnings)}});
    }

    QString m_text;
};

} // namespace

std::unique_ptr<Command> makeVersionShow()
{
    return std::make_unique<VersionShow>();
}

} // namespace vn::tool
