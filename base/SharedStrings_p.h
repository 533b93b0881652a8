// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_SHAREDSTRINGS_P_H
#define VN_BASE_SHAREDSTRINGS_P_H

/** @file Short texts that repeat: keys of configurations, keys and values of alarm texts. */

#include <QtCore/QLatin1String>
#include <QtCore/QString>
#include <QtCore/QStringView>

#include <array>
#include <cstddef>
#include <cstring>

namespace vn::internal {

/** @p sum with all of its bits in the upper ones. */
inline quint64 mixed(quint64 sum)
{
    constexpr quint64 kMultiplier = 0x9e3779b97f4a7c15U; // 2^64 / the golden ratio
    const quint64 product = sum * kMultiplier;
    return product ^ (product >> 32);
}

/** Of the size and of both ends of the @p size bytes at @p text, at most 8 bytes each: to look at
 * all of a text takes longer than to compare it once. Its upper bits are the better ones. */
inline quint64 hashOfEnds(const void *text, std::size_t size)
{
    const auto *const bytes = static_cast<const unsigned char *>(text);
    quint64 front = 0;
    quint64 back = 0;
    if (size >= 8) {
        std::memcpy(&front, bytes, 8);
        std::memcpy(&back, bytes + size - 8, 8);
    } else if (size >= 4) {
        std::memcpy(&front, bytes, 4);
        std::memcpy(&back, bytes + size - 4, 4);
    } else if (size > 0) {
        front = bytes[0];
        back = bytes[size / 2] | quint64(bytes[size - 1]) << 8;
    }
    return mixed(front * 3 + back + size);
}

/**
 * What was made of texts lately. An @p Entry has a `text`, and may have more. A fixed number is
 * remembered; what was forgotten is merely made again.
 */
template <typename Entry, int kSlotBits>
class RememberedTexts
{
public:
    /** The entry of @p text, a view; a new one is what @p renew makes of an old one. */
    template <typename Text, typename Renew>
    Entry &of(Text text, Renew renew)
    {
        const std::size_t size = sizeof *text.data() * static_cast<std::size_t>(text.size());
        const std::size_t slot = hashOfEnds(text.data(), size) >> (64 - kSlotBits);
        Entry &first = m_entries[slot];
        Entry &second = m_entries[slot ^ 1];
        for (Entry *entry : {&first, &second})
            if (entry->text == text && !entry->text.isNull())
                return *entry;
        Entry &entry = first.text.isNull() ? first : second;
        renew(entry);
        return entry;
    }

private:
    std::array<Entry, std::size_t(1) << kSlotBits> m_entries;
};

/** Gives equal texts one shared string. */
template <int kSlotBits>
class SharedStrings
{
public:
    /** The string of @p text; until the next call. */
    const QString &string(QLatin1String text)
    {
        return m_strings.of(text, [text](Entry &entry) { entry.text = text; }).text;
    }
    const QString &string(QStringView text)
    {
        return m_strings.of(text, [text](Entry &entry) { entry.text = text.toString(); }).text;
    }

private:
    struct Entry
    {
        QString text;
    };

    RememberedTexts<Entry, kSlotBits> m_strings;
};

} // namespace vn::internal

#endif // VN_BASE_SHAREDSTRINGS_P_H
