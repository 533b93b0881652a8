// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/VersionWords.h"
#include "tool/files/VersionSources.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace vn::tool {

namespace {

class VersionInstallable : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe("Prints of each version how a camera may get it: \"directly\", \"by\" "
                           "others of them that "
                           "have to be installed before, or \"never\" with the rule that blocks "
                           "it. What is no single "
                           "version of a known platform is \"unknown\".");
        arguments.describe(
            "The exit status is 1 where none of them can be installed, and 2 where the "
            "camera's model or version cannot be judged.");
        arguments.option("--model", "MODEL",
                         "model name of the camera; without it every update has to "
                         "be safe on every model",
                         m_model);
        arguments.offers("model");
        arguments.text("CURRENT", "version that the camera runs now", m_current);
        arguments.files("VERSION",
                        "versions, firmware packages, folders of packages, \"-\" for the "
                        "lines of standard input",
                        m_offered);
        arguments.json();
        arguments.example("vantero-formats version installable --model K40D VN-3.0.3.7 packages",
                          "tells which packages of a folder the camera can get, and how");
    }

    ExitCode run(Output &out) override
    {
        const QString model = m_model.value_or(QString());
        const QList<OfferedVersion> offered = offeredVersions(m_offered);
        QList<VanteroSoftwareVersion> versions;
        for (const OfferedVersion &each : offered)
            versions.append(each.version);
        const QList<InstallableVersion> rows =
            UpdateAdvisor::installable(model, m_current, versions);
        // Of the camera alone: what it runs may always be judged beside itself.
        QStringList obstacles = UpdateAdvisor::judge(model, m_current, m_current).obstacles;
        obstacles.removeDuplicates();

        Json list = Json::array();
        bool isAny = false;
        for (int i = 0; i < rows.size(); ++i) {
            const InstallableVersion &row = rows.at(i);
            isAny = isAny || row.plan.reachable;
            if (out.json())
                list.append(toJson(row, offered.at(i).file));
            else if (obstacles.isEmpty())
                print(row, offered.at(i).file, out);
        }
        if (out.json())
            out.setResult(
                Json::object({{"model", model}, {"current", m_current}, {"versions", list}}));
        if (!obstacles.isEmpty())
            return complainOfObstacles(obstacles, out);
        return isAny ? ExitCode::Done : ExitCode::No;
    }

private:
    using Way = InstallableVersion::Way;

    static QStringList hops(const InstallableVersion &row)
    {
        QStringList list;
        for (const UpdateHop &hop : row.plan.hops)
            list.append(hop.version);
        return list;
    }

    static QString wayText(const InstallableVersion &row, const Colors &colors)
    {
        const auto colored = [&colors](const char *word) {
            return coloredVerdict(QLatin1String(word), colors);
        };
        switch (row.way) {
        case Way::Directly:
            return colored("directly");
        case Way::ByPlan:
            return colored("by") + QLatin1Char(' ') +
                   hops(row).mid(0, row.plan.hops.size() - 1).join(QLatin1String(", "));
        case Way::Never:
            return colored("never") + QLatin1String(": ") + row.plan.blockedBy.first().sentence;
        case Way::Unknown:
            break;
        }
        return colored("unknown") + QLatin1String(": ") + row.plan.obstacles.first();
    }

    static void print(const InstallableVersion &row, const QString &file, Output &out)
    {
        QString line = row.version + QLatin1String("  ") + wayText(row, out.colors());
        if (!file.isNull())
            line += QLatin1String("  (") + file + QLatin1Char(')');
        out.printLine(line);
    }

    static Json toJson(const InstallableVersion &row, const QString &file)
    {
        static const char *const names[] = {"directly", "plan", "never", "unknown"};
        return Json::object({{"version", QString(row.version)},
                             {"file", file},
                             {"way", names[int(row.way)]},
                             {"reasons", reasonsToJson(row.reasons)},
                             {"hops", Json::array(hops(row))},
                             {"blockedBy", reasonsToJson(row.plan.blockedBy)},
                             {"obstacles", Json::array(row.plan.obstacles)}});
    }

    std::optional<QString> m_model;
    QString m_current;
    QStringList m_offered;
};

} // namespace

std::unique_ptr<Command> makeVersionInstallable()
{
    return std::make_unique<VersionInstallable>();
}

} // namespace vn::tool
