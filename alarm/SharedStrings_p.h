// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_SHAREDSTRINGS_P_H
#define VN_ALARM_SHAREDSTRINGS_P_H

#include <QtCore/QLatin1String>
#include <QtCore/QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vn::internal {

/**
 * Gives equal short texts one shared string: alarm lists and alarm updates repeat their keys and
 * many of their values. A fixed number of texts is remembered; one that was forgotten merely gets a
 * string of its own again.
 */
class SharedStrings
{
public:
    /** The @p length bytes at @p text, read as Latin-1. */
    QString string(const char *text, int length)
    {
        if (length == 0)
            return {}; // null, as a string that was cleared
        if (length > kLongest)
            return QString::fromLatin1(text, length);
        QString &remembered = m_strings[hash(text, length)];
        const QLatin1String wanted(text, length);
        if (remembered != wanted)
            remembered = wanted;
        return remembered;
    }

private:
    static constexpr int kLongest = 32; // what is longer is seldom repeated

    /** Of the length and of both ends of the text, at most 8 bytes each. */
    static std::size_t hash(const char *text, int length)
    {
        std::uint64_t front = 0;
        std::uint64_t back = 0;
        if (length >= 8) {
            std::memcpy(&front, text, 8);
            std::memcpy(&back, text + length - 8, 8);
        } else if (length >= 4) {
            std::memcpy(&front, text, 4);
            std::memcpy(&back, text + length - 4, 4);
        } else {
            front = static_cast<unsigned char>(text[0]);
            std::memcpy(&back, text + length / 2, 1);
            std::memcpy(reinterpret_cast<char *>(&back) + 1, text + length - 1, 1);
        }
        constexpr std::uint64_t kMultiplier = 0x9e3779b97f4a7c15U; // 2^64 / the golden ratio
        const std::uint64_t sum = front * 3 + back + static_cast<std::uint64_t>(length);
        return static_cast<std::size_t>((sum * kMultiplier) >> 56);
    }

    std::array<QString, 256> m_strings; // as many as hash() has values
};

} // namespace vn::internal

#endif // VN_ALARM_SHAREDSTRINGS_P_H
