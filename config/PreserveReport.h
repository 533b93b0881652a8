// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_PRESERVEREPORT_H
#define VN_CONFIG_PRESERVEREPORT_H

/**
 * @file
 * What the preserve operations of VanteroConfigFile would do, told before they do it.
 */

#include "base/Export.h"
#include "config/PreservePresets.h"
#include "config/VanteroConfigMap.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn {

/**
 * What becomes of a key.
 * @since 1.0.0
 */
struct PreservedKey
{
    /** What becomes of it. */
    enum class Outcome {
        CarriedOver,      ///< Listed: its newest value becomes that of the previous configuration.
        Unchanged,        ///< Its values stay as they stood.
        BecameNull,       ///< Listed, but the previous configuration lacks it: its value is null.
        SectionTakenOver, ///< The new configuration lacks the section; that of the previous counts.
        Lost,             ///< It had values, and has none any more.
    };

    /** The key. */
    QString key;
    /** What becomes of it. */
    Outcome outcome = Outcome::Unchanged;
    /** Its values before, newest first: those of the result where this has the section already,
     * else those of the new configuration. */
    QStringList before;
    /** Its values in the result, newest first. */
    QStringList after;
    /** Values of the previous configuration that are not among those, newest first: all of a key
     * that it alone has and that is not listed, the older ones of a repeated key, and those of a
     * key for which the new configuration counts. */
    QStringList lost;
};

/**
 * What becomes of a section.
 * @since 1.0.0
 */
struct PreservedSection
{
    /** The name of the section. */
    QString section;
    /** Whether the new configuration lacks it, so that it is taken over whole. */
    bool takenOver = false;
    /** Each key that the new or the previous configuration or the result has, or that is listed;
     * ascending. */
    QList<PreservedKey> keys;
};

/** What becomes of the sections that are touched, ascending. @since 1.0.0 */
using PreserveReport = QList<PreservedSection>;

/**
 * What VanteroConfigFile::preserveEntries() would do for each of @p presets, one after another,
 * into @p result, which is not changed here. Only sections that it would write are told of.
 * @code
 * const auto report = vn::preserveReport(config.map(), previous.map(), vn::preservePresets());
 * @endcode
 * Throws nothing. Threads: reentrant; it works on copies of maps and takes no lock.
 * @param config   the new configuration, on which preserveEntries() would be called
 * @param previous the configuration that it replaces
 * @param presets  sections and keys: those of preservePresets(), or others; names do not matter
 * @param result   what the caller's result holds before
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT PreserveReport preserveReport(
    const VanteroConfigMap &config, const VanteroConfigMap &previous,
    const QList<PreservePreset> &presets, const VanteroConfigMap &result = VanteroConfigMap());

} // namespace vn

#endif // VN_CONFIG_PRESERVEREPORT_H
