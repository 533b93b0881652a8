// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/UpdateRules.h"

#include "version/SafeUpdateRules_p.h"

#include <bitset>
#include <vector>

namespace vn {

using internal::kSafeUpdateRules;
using internal::ModelBeginning;
using internal::SafeUpdateRule;
using internal::safeUpdateRules;

namespace {

using RuleSet = std::bitset<kSafeUpdateRules>;

/** The rules that ask for models, and find what they ask for in @p model. */
RuleSet rulesFor(QStringView model)
{
    RuleSet rules;
    for (std::size_t i = 0; i < kSafeUpdateRules; ++i) {
        const SafeUpdateRule &rule = safeUpdateRules()[i];
        rules[i] = !rule.models.front().isNone() && rule.concerns(model);
    }
    return rules;
}

QStringList texts(const std::array<ModelBeginning, 3> &models)
{
    QStringList list;
    for (const ModelBeginning &beginning : models) {
        if (!beginning.isNone())
            list.append(beginning.text());
    }
    return list;
}

/** The models for which the same rules ask. */
struct Class
{
    RuleSet rules;
    QStringList beginnings;
};

std::vector<Class> classes()
{
    std::vector<Class> all;
    for (const SafeUpdateRule &rule : safeUpdateRules()) {
        const QStringList beginnings = texts(rule.models);
        for (const QString &beginning : beginnings) {
            // A beginning is a model, too: its "?" is any character.
            const RuleSet rules = rulesFor(beginning);
            auto it = all.begin();
            while (it != all.end() && it->rules != rules)
                ++it;
            if (it == all.end())
                it = all.insert(it, {rules, {}});
            if (!it->beginnings.contains(beginning))
                it->beginnings.append(beginning);
        }
    }
    all.push_back({}); // the other models
    return all;
}

} // namespace

QList<UpdateRule> UpdateRules::all()
{
    QList<UpdateRule> rules;
    for (const SafeUpdateRule &rule : safeUpdateRules()) {
        rules.append({QLatin1String(rule.identifier), QLatin1String(rule.platform.name),
                      texts(rule.models), rule.current.text(),
                      rule.effect == SafeUpdateRule::Decides ? UpdateRule::Effect::Decides
                                                             : UpdateRule::Effect::Refuses,
                      QLatin1String(rule.demand), rule.target.text(), rule.sentence()});
    }
    return rules;
}

QList<UpdateModelClass> UpdateRules::modelClasses()
{
    QList<UpdateModelClass> list;
    for (const Class &models : classes()) {
        if (models.beginnings.isEmpty())
            list.append({{}, QString::fromLatin1("other models"), QString::fromLatin1("other")});
        else
            list.append({models.beginnings, models.beginnings.join(QLatin1String(", ")),
                         models.beginnings.first()});
    }
    return list;
}

int UpdateRules::modelClass(const QString &model)
{
    const std::vector<Class> all = classes();
    const RuleSet rules = rulesFor(model);
    int index = 0;
    for (const Class &models : all) {
        if (models.rules == rules)
            return index;
        ++index;
    }
    return static_cast<int>(all.size()) - 1;
}

} // namespace vn
