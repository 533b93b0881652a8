// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

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
        arguments.json();
        arguments.example("vantero-formats version rules", "prints the rules of safe updates");
    }

    ExitCode run(Output &out) override
    {
        Json rules = Json::array();
        const QList<UpdateRule> all = UpdateRules::all();
        for (const UpdateRule &rule : all) {
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
};

} // namespace

std::unique_ptr<Command> makeVersionRules()
{
    return std::make_unique<VersionRules>();
}

} // namespace vn::tool
