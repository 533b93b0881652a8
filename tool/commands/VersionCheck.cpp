// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/SiteUpdate.h"
#include "tool/commands/VersionWords.h"

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
            "Prints \"safe\", or \"unsafe\" and the rule that forbids the update. Without a model "
            "it "
            "prints \"depends\" and a row a class of models where these differ. What may mean "
            "something else is not judged but \"unknown\": a version without a known platform, a "
            "pattern, a model in small letters.");
        arguments.describe(
            "The exit status is 0 only where the update is safe, 1 where it is unsafe or "
            "depends on the model, and 2 where it is not judged.");
        arguments.option("--model", "MODEL", "model name of the camera", m_model);
        arguments.offers("model");
        arguments.flag("--all-reasons", "print every rule that forbids the update", m_allReasons);
        arguments.flag(
            "--literal",
            "judge by the rules alone whatever the texts are, as programs do that ask the "
            "library whether an update is safe; without a model, as one that no rule names",
            m_literal);
        arguments.exclude("--literal", "--all-reasons");
        m_site.declare(arguments);
        arguments.exclude("--configurations", "--model");
        arguments.exclude("--configurations", "--literal");
        arguments.exclude("--configurations", "--all-reasons");
        arguments.text("CURRENT",
                       "version that the camera runs now; not with --configurations, which tell it",
                       m_current);
        arguments.text("TARGET", "version that is to be installed", m_target);
        arguments.json();
        arguments.example("vantero-formats version check --model K40D VN-3.0.3.7 VN-3.0.6.2",
                          "tells that a K40 on VN-3.0.3 needs a later version first");
        arguments.example("vantero-formats version check --configurations backups --recursive "
                          "--models models.csv VN-3.4.5.4",
                          "tells which cameras of a site can get a version, and what the others "
                          "need first");
    }

    ExitCode run(Output &out) override
    {
        if (m_site.isWanted() == m_target.has_value())
            throw ToolError(
                ExitCode::BadInput,
                m_site.isWanted()
                    ? QStringLiteral("version check: with --configurations there is only "
                                     "one version, TARGET")
                    : QStringLiteral("version check: TARGET is missing (see "
                                     "vantero-formats version check --help)"));
        if (m_site.isWanted())
            return m_site.run(m_current, out);
        if (m_literal)
            return checkLiterally(out);
        const QString model = m_model.value_or(QString());
        const UpdateJudgement judgement = UpdateAdvisor::judge(model, m_current, *m_target);
        const ExitCode code = exitCodeOf(judgement.verdict);
        if (out.json()) {
            out.setResult(toJson(model, judgement));
            return code;
        }
        switch (judgement.verdict) {
        case UpdateJudgement::Verdict::Safe:
            out.printLine(coloredVerdict(QStringLiteral("safe"), out.colors()));
            break;
        case UpdateJudgement::Verdict::Unsafe:
            print(QString(), false, judgement.reasons, out);
            break;
        case UpdateJudgement::Verdict::Depends:
            out.printLine(coloredVerdict(QStringLiteral("depends on the model"), out.colors()));
            for (const UpdateClassVerdict &row : judgement.classes)
                print(row.models.name + QLatin1String(": "), row.safe, row.reasons, out);
            break;
        case UpdateJudgement::Verdict::Unknown:
            out.printLine(coloredVerdict(QStringLiteral("unknown"), out.colors()));
            return complainOfObstacles(judgement.obstacles, out);
        }
        return code;
    }

private:
    static ExitCode exitCodeOf(UpdateJudgement::Verdict verdict)
    {
        switch (verdict) {
        case UpdateJudgement::Verdict::Safe:
            return ExitCode::Done;
        case UpdateJudgement::Verdict::Unsafe:
        case UpdateJudgement::Verdict::Depends:
            return ExitCode::No;
        case UpdateJudgement::Verdict::Unknown:
            break;
        }
        return ExitCode::BadInput;
    }

    static QString refusal(const QString &sentence, const Output &out)
    {
        return coloredVerdict(QStringLiteral("unsafe"), out.colors()) + QLatin1String(": ") +
               sentence;
    }

    void print(const QString &prefix, bool safe, const QList<UpdateReason> &reasons,
               Output &out) const
    {
        if (safe)
            out.printLine(prefix + coloredVerdict(QStringLiteral("safe"), out.colors()));
        for (const UpdateReason &reason : m_allReasons ? reasons : reasons.mid(0, 1))
            out.printLine(prefix + refusal(reason.sentence, out));
    }

    Json toJson(const QString &model, const UpdateJudgement &judgement) const
    {
        Json classes = Json::array();
        for (const UpdateClassVerdict &row : judgement.classes)
            classes.append(Json::object({{"name", row.models.name},
                                         {"models", Json::array(row.models.beginnings)},
                                         {"verdict", row.safe ? "safe" : "unsafe"},
                                         {"reasons", reasonsToJson(row.reasons)}}));
        return Json::object({{"model", model},
                             {"current", m_current},
                             {"target", *m_target},
                             {"verdict", verdictName(judgement.verdict)},
                             {"reasons", reasonsToJson(judgement.reasons)},
                             {"classes", classes},
                             {"obstacles", Json::array(judgement.obstacles)},
                             {"candidates", Json::array(judgement.candidates)}});
    }

    ExitCode checkLiterally(Output &out) const
    {
        const VanteroSoftwareVersion current(m_current);
        const VanteroSoftwareVersion target(*m_target);
        const QString model = m_model.value_or(QString());
        const SafeUpdateVerdict verdict = current.checkUpdate(model, target);
        const QStringList warnings = versionWarnings(current) + versionWarnings(target);
        const ExitCode code = verdict.safe ? ExitCode::Done : ExitCode::No;
        if (out.json()) {
            out.setResult(Json::object({{"model", model},
                                        {"current", m_current},
                                        {"target", *m_target},
                                        {"safe", verdict.safe},
                                        {"rule", verdict.rule},
                                        {"sentence", verdict.sentence},
                                        {"warnings", Json::array(warnings)}}));
            return code;
        }
        for (const QString &warning : warnings)
            out.warn(QString(), warning);
        out.printLine(verdict.safe ? coloredVerdict(QStringLiteral("safe"), out.colors())
                                   : refusal(verdict.sentence, out));
        return code;
    }

    std::optional<QString> m_model;
    bool m_allReasons = false;
    bool m_literal = false;
    QString m_current;
    std::optional<QString> m_target; // the only argument comes as m_current
    SiteUpdate m_site;
};

} // namespace

std::unique_ptr<Command> makeVersionCheck()
{
    return std::make_unique<VersionCheck>();
}

} // namespace vn::tool
