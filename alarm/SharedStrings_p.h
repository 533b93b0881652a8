// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_SHAREDSTRINGS_P_H
#define VN_ALARM_SHAREDSTRINGS_P_H

#include <QtCore/QLatin1String>
#include <QtCore/QString>

#include <array>
#include <cstddef>
#include <cstdint>

namespace vn::internal {

/**
 * Gives equal short texts one shared string: the records of an alarm list repeat their keys and
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
        QString &remembered = m_strings[hash(text, length) % m_strings.size()];
        const QLatin1String wanted(text, length);
        if (remembered != wanted)
            remembered = wanted;
        return remembered;
    }

private:
    static constexpr int kLongest = 32; // what is longer is seldom repeated

    static std::size_t hash(const char *text, int length)
    {
        auto result = static_cast<std::uint32_t>(length);
        for (int i = 0; i < length; ++i)
            result = (result ^ static_cast<unsigned char>(text[i])) * 0x01000193U; // FNV-1a
        return result ^ (result >> 15);
    }

    std::array<QString, 256> m_strings;
};

} // namespace vn::internal

#endif // VN_ALARM_SHAREDSTRINGS_P_H
