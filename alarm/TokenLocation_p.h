// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_TOKENLOCATION_P_H
#define VN_ALARM_TOKENLOCATION_P_H

/** @file How the scanners move the location; PLLocation and PULocation alike. */

#include "base/Exceptions.h"

#include <QtCore/QString>

#include <limits>

namespace vn::internal {

/** The longest text whose offsets fit into a location, in bytes. */
constexpr int kMaxTextSize = std::numeric_limits<qint32>::max();

/** The same with the two zero bytes of the end mark. */
constexpr unsigned int kMaxBufferSize = static_cast<unsigned int>(kMaxTextSize) + 2;

inline QString textTooLong()
{
    return QString::fromLatin1("text of 2 GiB or more"); // on the heap: outlives the library
}

[[noreturn]] inline void endAtTooLongText(int start, int end)
{
    throw ParseException(textTooLong(), 0, start, 0, end);
}

/**
 * The token goes on for @p length bytes.
 * @throws ParseException when standard input holds more than offsets can tell
 */
template <typename Location>
void extendToken(Location &location, int length)
{
    if (Q_UNLIKELY(length > kMaxTextSize - location.end))
        endAtTooLongText(location.start, location.end);
    location.end += length;
}

/** A token of @p length bytes begins where the last one ended. */
template <typename Location>
void startToken(Location &location, int length)
{
    location.start = location.end;
    extendToken(location, length);
}

} // namespace vn::internal

#endif // VN_ALARM_TOKENLOCATION_P_H
