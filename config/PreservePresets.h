// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_PRESERVEPRESETS_H
#define VN_CONFIG_PRESERVEPRESETS_H

#include "base/Export.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn {

/**
 * Entries that a camera keeps when its configuration is replaced: a section, and those of its keys
 * whose values belong to the camera.
 * @since 1.0.0
 */
struct PreservePreset
{
    /** What it is called: "network". */
    QString name;
    /** The section of the keys: "ethernet". */
    QString section;
    /** The keys, in the order in which they are carried over: "IPADDR", "HOSTNAME". */
    QStringList keys;
};

/**
 * What the preserve operations of VanteroConfigFile carry over, a preset each: "network"
 * (preserveIpAddresses()), "motion" (preserveVideoMotion()) and "time-tables"
 * (preserveTimeTableReferences()). Each of these is one preserveEntries() with section and keys of
 * its preset. The texts outlive the library.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT QList<PreservePreset> preservePresets();

} // namespace vn

#endif // VN_CONFIG_PRESERVEPRESETS_H
