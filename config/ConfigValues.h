// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGVALUES_H
#define VN_CONFIG_CONFIGVALUES_H

/**
 * @file
 * Values of configurations as booleans, integers and lists, or what is wrong with them.
 *
 * A configuration holds texts only; these functions read them strictly. Blanks are part of a value
 * and so never right; letters count with their case.
 * @code
 * const auto dhcp = vn::readBool(map, "ethernet", "DHCP");
 * if (!dhcp.value)
 *     qWarning("%s", qPrintable(dhcp.problem)); // ethernet/DHCP: there is no such key
 * @endcode
 * Errors: none is thrown; what is wrong stands in the result. Threads: reentrant.
 */

#include "base/Export.h"

#include <QtCore/QChar>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <limits>
#include <optional>

namespace vn {

class VanteroConfigMap;

/**
 * A value as read, or what was wrong with it: one of the two is there.
 * @since 1.0.0
 */
template <typename T>
struct ConfigReading
{
    /** The value; nothing when it could not be read. */
    std::optional<T> value;
    /** What was wrong, in an operator's words, without full stop; null when there is a value. */
    QString problem;
};

/**
 * Reads an on or off: "1" and "on" are true, "0" and "off" are false.
 * What may be wrong: `"maybe" is neither on (1, on) nor off (0, off)`, `there is no value`.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT ConfigReading<bool> readBool(const QString &value);

/**
 * Reads a decimal integer from @p least to @p greatest, such as "-12": digits 0 to 9, and a "-" in
 * front where it is negative.
 * What may be wrong: `"12a" is not an integer`, `"70000" is not between 0 and 65535`, `there is no
 * value`.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT ConfigReading<qint64>
readInteger(const QString &value, qint64 least = std::numeric_limits<qint64>::min(),
            qint64 greatest = std::numeric_limits<qint64>::max());

/**
 * Reads the elements of a value such as "0,32,40", parted by @p separator; an empty value is a list
 * without elements. None of the elements may be empty, and a null value (a key without "=") is no
 * list.
 * What may be wrong: `element 2 of "0,,40" is empty`, `there is no value`.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT ConfigReading<QStringList> readList(const QString &value,
                                                            QChar separator = QLatin1Char(','));

/**
 * Reads the newest value of @p key in @p section of @p map. What is wrong begins with the name:
 * `ethernet/DHCP: "maybe" is neither on (1, on) nor off (0, off)`, `ethernet/DHCP: there is no such
 * key`, `ethernet: there is no such section`.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT ConfigReading<bool> readBool(const VanteroConfigMap &map,
                                                     const QString &section, const QString &key);

/** The same for an integer. @since 1.0.0 */
[[nodiscard]] VN_EXPORT ConfigReading<qint64>
readInteger(const VanteroConfigMap &map, const QString &section, const QString &key,
            qint64 least = std::numeric_limits<qint64>::min(),
            qint64 greatest = std::numeric_limits<qint64>::max());

/** The same for a list. @since 1.0.0 */
[[nodiscard]] VN_EXPORT ConfigReading<QStringList> readList(const VanteroConfigMap &map,
                                                            const QString &section,
                                                            const QString &key,
                                                            QChar separator = QLatin1Char(','));

} // namespace vn

#endif // VN_CONFIG_CONFIGVALUES_H
