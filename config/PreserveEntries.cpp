// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

namespace vn {

namespace {

/** A section and those of its keys whose values belong to the camera, not to the configuration. */
struct Preset
{
    const char *section;
    const char *keys[8]; // in the order of processing; null where there are fewer
};

// clang-format off
constexpr Preset kTimeTableReferences = {
    "eventdlite", {"edacttimetable", "armcond_ac1_timetable", "armcond_ac2_timetable",
                   "actions_timetable", "messaging_timetable", "messaging2_timetable",
                   "recording_timetable", "coverimage_timetable"}};
constexpr Preset kVideoMotion = {
    "eventdlite", {"motiondef", "motioncheck", "motion2_def", "motion2_check"}};
constexpr Preset kIpAddresses = {
    "ethernet", {"IPADDR", "HOSTNAME"}};
// clang-format on

void preserve(const VanteroConfigFile &config, const VanteroConfigFile &previous,
              const Preset &preset, VanteroConfigMap &result)
{
    // Copies on the heap: the keys go into the caller's map and must survive the library.
    QStringList keys;
    for (const char *key : preset.keys)
        if (key)
            keys += QString::fromLatin1(key);
    (void)config.preserveEntries(previous, QString::fromLatin1(preset.section), keys, result);
}

} // namespace

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
