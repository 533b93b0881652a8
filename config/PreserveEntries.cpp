// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/PreservePresets.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

namespace vn {

namespace {

constexpr int kMaxKeys = 8;

/** A preset as constant data. */
struct PresetTexts
{
    const char *name;
    const char *section;
    const char *keys[kMaxKeys]; // in the order of processing; null where there are fewer
};

// clang-format off
constexpr PresetTexts kIpAddresses = {
    "network", "ethernet", {"IPADDR", "HOSTNAME"}};
constexpr PresetTexts kVideoMotion = {
    "motion", "eventdlite", {"motiondef", "motioncheck", "motion2_def", "motion2_check"}};
constexpr PresetTexts kTimeTableReferences = {
    "time-tables", "eventdlite", {"edacttimetable", "armcond_ac1_timetable",
                                  "armcond_ac2_timetable", "actions_timetable",
                                  "messaging_timetable", "messaging2_timetable",
                                  "recording_timetable", "coverimage_timetable"}};
// clang-format on

/** Copies on the heap: the keys go into the caller's map and must survive the library. */
PreservePreset presetOf(const PresetTexts &texts)
{
    PreservePreset preset = {
        QString::fromLatin1(texts.name), QString::fromLatin1(texts.section), {}};
    for (const char *key : texts.keys)
        if (key)
            preset.keys += QString::fromLatin1(key);
    return preset;
}

void preserve(const VanteroConfigFile &config, const VanteroConfigFile &previous,
              const PresetTexts &texts, VanteroConfigMap &result)
{
    const PreservePreset preset = presetOf(texts);
    (void)config.preserveEntries(previous, preset.section, preset.keys, result);
}

} // namespace

QList<PreservePreset> preservePresets()
{
    return {presetOf(kIpAddresses), presetOf(kVideoMotion), presetOf(kTimeTableReferences)};
}

bool VanteroConfigFile::preserveEntries(const VanteroConfigFile &previous, const QString &section,
                                        const QStringList &keys, VanteroConfigMap &result) const
{
    const QMutexLocker lock(m_lock.get());
    if (!m_map.containsSection(section)) {
        // Kept on purpose: a section that only the previous one has is taken over whole.
        if (previous.containsSection(section))
            result.replaceSection(section, previous.section(section));
        return false;
    }
    if (!result.containsSection(section))
        result.replaceSection(section, m_map.section(section));
    // Kept on purpose: a key that the previous configuration lacks gets a null value.
    for (const QString &key : keys)
        result.setValue(section, key, previous.value(section, key));
    return true;
}

void VanteroConfigFile::preserveTimeTableReferences(const VanteroConfigFile &previous,
                                                    VanteroConfigMap &result) const
{
    preserve(*this, previous, kTimeTableReferences, result);
}

void VanteroConfigFile::preserveVideoMotion(const VanteroConfigFile &previous,
                                            VanteroConfigMap &result) const
{
    preserve(*this, previous, kVideoMotion, result);
}

void VanteroConfigFile::preserveIpAddresses(const VanteroConfigFile &previous,
                                            VanteroConfigMap &result) const
{
    preserve(*this, previous, kIpAddresses, result);
}

} // namespace vn
