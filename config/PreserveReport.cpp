// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/PreserveReport.h"

#include "config/SameValue_p.h"

#include <algorithm>
#include <set>

namespace vn {

namespace {

using Section = VanteroConfigMap::Section;
using Outcome = PreservedKey::Outcome;

/** The values of @p from that are not among @p kept; one that is there twice must be kept twice. */
QStringList missing(const QStringList &from, QStringList kept)
{
    QStringList result;
    for (const QString &value : from) {
        const auto at = std::find_if(kept.begin(), kept.end(), [&](const QString &candidate) {
            return internal::isSameValue(candidate, value);
        });
        if (at == kept.end())
            result += value;
        else
            kept.erase(at);
    }
    return result;
}

/** What becomes of a listed key of a section that the new configuration has. */
void carryOver(PreservedKey &row, const QStringList &previous)
{
    const QString value = previous.isEmpty() ? QString() : previous.first();
    row.after = row.before;
    if (!row.before.isEmpty() && internal::isSameValue(row.before.first(), value))
        return;
    row.outcome = previous.isEmpty() ? Outcome::BecameNull : Outcome::CarriedOver;
    if (row.after.isEmpty())
        row.after += value;
    else
        row.after.first() = value;
}

PreservedKey reported(const QString &key, const Section &before, const Section &previous,
                      bool takenOver, bool isListed)
{
    const QStringList previousValues = previous.values(key);
    PreservedKey row = {key, Outcome::Unchanged, before.values(key), {}, {}};
    if (takenOver) {
        row.outcome = Outcome::SectionTakenOver;
        row.after = previousValues;
    } else if (isListed) {
        carryOver(row, previousValues);
    } else {
        row.after = row.before;
    }
    if (row.after.isEmpty())
        row.outcome = Outcome::Lost;
    row.lost = missing(previousValues, row.after);
    return row;
}

} // namespace

PreserveReport preserveReport(const VanteroConfigMap &config, const VanteroConfigMap &previous,
                              const QList<PreservePreset> &presets, const VanteroConfigMap &result)
{
    // One after another, presets of one section do what one with all of their keys would.
    QMap<QString, std::set<QString>> listed;
    for (const PreservePreset &preset : presets)
        listed[preset.section].insert(preset.keys.begin(), preset.keys.end());

    PreserveReport report;
    for (auto it = listed.constBegin(); it != listed.constEnd(); ++it) {
        const QString &name = it.key();
        const bool takenOver = !config.containsSection(name);
        if (takenOver && !previous.containsSection(name))
            continue;
        const Section &before = (result.containsSection(name) ? result : config).section(name);
        const Section &old = previous.section(name);
        std::set<QString> keys;
        if (!takenOver)
            keys = it.value();
        for (const Section *section : {&before, &old})
            std::copy(section->keyBegin(), section->keyEnd(), std::inserter(keys, keys.end()));
        PreservedSection row = {name, takenOver, {}};
        for (const QString &key : keys)
            row.keys += reported(key, before, old, takenOver, it.value().count(key) != 0);
        report += row;
    }
    return report;
}

} // namespace vn
