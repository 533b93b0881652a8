// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/VersionWords.h"
#include "tool/files/VersionSources.h"

#include <memory>
#include <optional>

namespace vn::tool {

namespace {

class VersionPlan : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints the shortest way of safe updates to a version by way of the versions at hand, "
            "a "
            "version a line with the package that holds it, the target last. Of ways of the same "
            "length it is the one whose first version is highest, then the second. Nothing is "
            "printed where the camera has the target already.");
        arguments.describe(
            "Where there is no way, the rule that blocks it is told, how near one gets, "
            "and what a package would have to be; then the exit status is 1. It is 2 "
            "where something cannot be judged, such as a pattern.");
        arguments.option("--model", "MODEL",
                         "model name of the camera; without it every update has to "
                         "be safe on every model",
                         m_model);
        arguments.offers("model");
        arguments.fileList(
            "--available", "VERSION|PACKAGE|FOLDER",
            "versions at hand: versions, firmware packages, folders of packages, \"-\" "
            "for the lines of standard input; several behind it, or again",
            m_available);
        arguments.text("CURRENT", "version that the camera runs now", m_current);
        arguments.text("TARGET", "version that is to be installed", m_target);
        arguments.json();
        arguments.example(
            "vantero-formats version plan --model K40D VN-3.0.3.7 VN-3.0.6.2 --available "
            "VN-3.0.6.29 VN-3.4.5.4",
            "prints the two updates that lead to VN-3.0.6.2");
    }

    ExitCode run(Output &out) override
    {
        const QList<OfferedVersion> offered = offeredVersions(m_available);
        QList<VanteroSoftwareVersion> available;
        for (const OfferedVersion &each : offered)
            available.append(each.version);
        const UpdatePlan plan =
            UpdateAdvisor::plan(m_model.value_or(QString()), m_current, m_target, available);
        const ExitCode code = !plan.obstacles.isEmpty() ? ExitCode::BadInput
                              : plan.reachable          ? ExitCode::Done
                                                        : ExitCode::No;
        if (out.json()) {
            out.setResult(toJson(plan, offered));
            return code;
        }
        for (const VanteroSoftwareVersion &version : plan.leftOut)
            out.warn(QString(), QStringLiteral("\"%1\" is left out: it is no single version")
                                    .arg(QString(version)));
        if (!plan.obstacles.isEmpty())
            return complainOfObstacles(plan.obstacles, out);
        if (!plan.reachable)
            printBlocked(plan, out);
        for (const UpdateHop &hop : plan.hops) {
            const QString file = fileOf(hop.version, offered);
            out.printLine(file.isNull() ? QString(hop.version)
                                        : hop.version + QLatin1String("  ") + file);
        }
        return code;
    }

private:
    static QString fileOf(const QString &version, const QList<OfferedVersion> &offered)
    {
        for (const OfferedVersion &each : offered) {
            if (QString(each.version) == version)
                return each.file;
        }
        return {};
    }

    static void printBlocked(const UpdatePlan &plan, Output &out)
    {
        for (const UpdateReason &reason : plan.blockedBy)
            out.printLine(coloredVerdict(QStringLiteral("no way"), out.colors()) +
                          QLatin1String(": ") + reason.sentence);
        out.printLine(QLatin1String("nearest: ") + plan.nearest);
        out.printLine(QLatin1String("needed: ") + plan.needed);
        if (!plan.bridge.isNull())
            out.printLine(QLatin1String("a package of ") + plan.bridge +
                          QLatin1String(" would open the way"));
    }

    Json toJson(const UpdatePlan &plan, const QList<OfferedVersion> &offered) const
    {
        Json hops = Json::array();
        Json packages = Json::array();
        for (const UpdateHop &hop : plan.hops) {
            hops.append(QString(hop.version));
            packages.append(fileOf(hop.version, offered));
        }
        QStringList leftOut;
        for (const VanteroSoftwareVersion &version : plan.leftOut)
            leftOut.append(version);
        Json json = Json::object({{"model", m_model.value_or(QString())},
                                  {"current", m_current},
                                  {"target", m_target},
                                  {"reachable", plan.reachable},
                                  {"hops", hops},
                                  {"packages", packages},
                                  {"leftOut", Json::array(leftOut)},
                                  {"obstacles", Json::array(plan.obstacles)},
                                  {"candidates", Json::array(plan.candidates)}});
        if (!plan.reachable && plan.obstacles.isEmpty()) {
            json.insert(QStringLiteral("nearest"), QString(plan.nearest));
            json.insert(QStringLiteral("blockedBy"), reasonsToJson(plan.blockedBy));
            json.insert(QStringLiteral("needed"), plan.needed);
            json.insert(QStringLiteral("bridge"),
                        plan.bridge.isNull() ? Json() : Json(QString(plan.bridge)));
        }
        return json;
    }

    std::optional<QString> m_model;
    QStringList m_available;
    QString m_current;
    QString m_target;
};

} // namespace

std::unique_ptr<Command> makeVersionPlan()
{
    return std::make_unique<VersionPlan>();
}

} // namespace vn::tool
