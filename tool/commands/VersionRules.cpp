// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Closest.h"
#include "tool/cli/Command.h"

#include "version/UpdateRules.h"

#include <memory>

namespace vn::tool {

namespace {

class VersionRules : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints \"IDENTIFIER: SENTENCE\" for each rule, in the order in which the "
            "rules are asked. The first one that decides an update ends it; \"?\" "
            "stands for any character of a model.");
        arguments.texts("RULE", "only the rules of these identifiers", m_identifiers);
        arguments.offers("rule");
        arguments.optional();
        arguments.json();
        arguments.example("vantero-formats version rules", "prints the rules of safe updates");
        arguments.example("vantero-formats version rules k40-step", "prints one of them");
    }

    ExitCode run(Output &out) override
    {
        Json rules = Json::array();
        const QList<UpdateRule> all = UpdateRules::all();
        requireKnown(all);
        for (const UpdateRule &rule : all) {
            if (!m_identifiers.isEmpty() && !m_identifiers.contains(rule.identifier))
                continue;
            if (!out.json()) {
                out.printLine(rule.identifier + QLatin1String(": ") + rule.sentence);
                continue;
            }
            const bool decides = rule.effect == UpdateRule::Effect::Decides;
            rules.append(Json::object({{"identifier", rule.identifier},
                                       {"platform", rule.platform},
                                       {"models", Json::array(rule.models)},
                                       {"current", rule.current},
                                       {"effect", decides ? "decides" : "refuses"},
                                       {"demand", rule.demand},
                                       {"target", rule.target},
                                       {"sentence", rule.sentence}}));
        }
        if (!out.json())
            return ExitCode::Done;
        Json classes = Json::array();
        const QList<UpdateModelClass> models = UpdateRules::modelClasses();
        for (const UpdateModelClass &each : models)
            classes.append(
                Json::object({{"name", each.name}, {"models", Json::array(each.beginnings)}}));
        out.setResult(Json::object({{"rules", rules}, {"classes", classes}}));
        return ExitCode::Done;
    }

private:
    void requireKnown(const QList<UpdateRule> &rules) const
    {
        QStringList known;
        for (const UpdateRule &rule : rules)
            known += rule.identifier;
        for (const QString &identifier : m_identifiers)
            if (!known.contains(identifier))
                throw ToolError(ExitCode::No, QStringLiteral("no rule \"%1\"%2")
                                                  .arg(identifier, didYouMean(identifier, known)));
    }

    QStringList m_identifiers;
};

} // namespace

std::unique_ptr<Command> makeVersionRules()
{
    return std::make_unique<VersionRules>();
}

} // namespace vn::tool
