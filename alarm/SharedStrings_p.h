// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_SHAREDSTRINGS_P_H
#define VN_ALARM_SHAREDSTRINGS_P_H

#include "alarm/ShortHash_p.h"

#include <QtCore/QLatin1String>
#include <QtCore/QString>

#include <array>
#include <cstddef>
#include <cstdint>

namespace vn::internal {

/**
 * Gives equal short texts one shared string, from their second time on: alarm lists and alarm
 * updates repeat their keys and many of their values. A fixed number of texts is remembered; one
 * that was forgotten merely gets a string of its own again.
 */
class SharedStrings
{
public:
    /** The @p length bytes at @p text, read as Latin-1; until the next call. */
    const QString &string(const char *text, int length)
    {
        if (length == 0)
            return m_last = QString(); // null, as a string that was cleared
        if (length > kLongest)
            return m_last = QString::fromLatin1(text, length);
        const std::uint64_t hash = hashOfEnds(text, length);
        Slot &first = m_slots[hash % kSlots];
        Slot &second = m_slots[(hash ^ 1) % kSlots];
        const QLatin1String wanted(text, length);
        if (first.string == wanted)
            return first.string;
        if (second.string == wanted)
            return second.string;
        m_last = QString(wanted);
        if (first.seen == hash || second.seen == hash) {
            (first.string.isNull() ? first : second).string = m_last;
        } else {
            second.seen = first.seen;
            first.seen = hash;
        }
        return m_last;
    }

private:
    static constexpr int kLongest = 32; // what is longer is seldom repeated
    static constexpr std::size_t kSlots = 256;

    struct Slot
    {
        std::uint64_t seen = 0; // the hash of a text that came once
        QString string;
    };

    std::array<Slot, kSlots> m_slots;
    QString m_last;
};

} // namespace vn::internal

#endif // VN_ALARM_SHAREDSTRINGS_P_H
