// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGDIFF_H
#define VN_CONFIG_CONFIGDIFF_H

/**
 * @file
 * How two configurations differ, as values.
 *
 * Compared are maps, so the order of lines, comments and how a section is parted do not matter. The
 * values of a repeated key, their number and their order do; so does a null value (a key without
 * "=") against an empty one, which has a kind of its own for those who do not care.
 */

#include "base/Export.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn {

class VanteroConfigMap;

/**
 * A key that has not the same values in both configurations.
 * @since 1.0.0
 */
struct ConfigKeyDifference
{
    /** How the values differ. */
    enum class Kind {
        OnlyInFirst,      ///< The second configuration lacks the key.
        OnlyInSecond,     ///< The first configuration lacks the key.
        Changed,          ///< Other values, or more or fewer.
        Reordered,        ///< The same values in another order.
        NullAgainstEmpty, ///< The same, but for null values where the other has empty ones.
    };

    /** The key. */
    QString key;
    /** How the values differ. */
    Kind kind = Kind::Changed;
    /** Its values in the first configuration, newest first; empty where it is missing. */
    QStringList first;
    /** Its values in the second configuration, likewise. */
    QStringList second;
};

/**
 * A section that differs: in its keys, or by being there in one of the configurations only.
 * @since 1.0.0
 */
struct ConfigSectionDifference
{
    /** The name of the section. */
    QString section;
    /** Whether the first configuration has the section. */
    bool inFirst = false;
    /** Whether the second configuration has the section. */
    bool inSecond = false;
    /** The keys that differ, ascending; none for a section without entries. */
    QList<ConfigKeyDifference> keys;
};

/** The sections that differ, ascending. @since 1.0.0 */
using ConfigDiff = QList<ConfigSectionDifference>;

/**
 * What differs between two configurations. It is empty exactly when the maps are equal. Takes one
 * pass over both. Throws nothing. Threads: reentrant.
 * @code
 * for (const auto &section : vn::configDiff(before.map(), after.map()))
 *     for (const auto &key : section.keys)
 *         qInfo() << section.section << key.key << key.first << key.second;
 * @endcode
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT ConfigDiff configDiff(const VanteroConfigMap &first,
                                              const VanteroConfigMap &second);

} // namespace vn

#endif // VN_CONFIG_CONFIGDIFF_H
