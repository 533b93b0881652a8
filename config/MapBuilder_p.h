// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_MAPBUILDER_P_H
#define VN_CONFIG_MAPBUILDER_P_H

#include "config/ConfigTextReader_p.h"
#include "config/VanteroConfigMap.h"

#include <array>
#include <cstring>

namespace vn {

/**
 * Gives equal keys one shared string, so that the sections of a configuration, which have most of
 * their keys in common, keep each of them once. A fixed number of keys is remembered; a key that
 * was forgotten merely gets a string of its own again.
 */
class SharedKeys
{
public:
    const QString &key(QStringView text)
    {
        QString &remembered = m_keys[slotOf(text)];
        if (remembered != text || remembered.isNull())
            remembered = text.toString();
        return remembered;
    }

private:
    static constexpr int kSlotBits = 11; // the keys of a few hundred sections of a few kinds

    /** Keys differ at their ends; to look at all of a key takes longer than to compare it once. */
    static std::size_t slotOf(QStringView key)
    {
        quint64 front = 0;
        quint64 back = 0;
        const std::size_t size = sizeof(char16_t) * std::size_t(key.size());
        if (size >= sizeof front) {
            const auto *const bytes = reinterpret_cast<const char *>(key.utf16());
            std::memcpy(&front, bytes, sizeof front);
            std::memcpy(&back, bytes + size - sizeof back, sizeof back);
        } else if (size > 0) {
            std::memcpy(&front, key.utf16(), size);
        }
        const quint64 mixed = front * 0x9e3779b97f4a7c15U + back * 0xc2b2ae3d27d4eb4fU + size;
        return std::size_t(mixed >> (64 - kSlotBits));
    }

    std::array<QString, 1U << kSlotBits> m_keys;
};

/**
 * A sink of the text reader that fills a map; the section is looked up once a block. For texts in
 * memory only: a stream may call its device, which may come back to the map while it is read.
 */
class MapBuilder : public internal::ConfigSink
{
public:
    explicit MapBuilder(VanteroConfigMap &map)
        : m_map(map)
    {
    }

    void beginSection(QStringView, QStringView) { m_section = nullptr; }

    void addEntry(const QString &section, QStringView key, QStringView value)
    {
        if (!m_section)
            m_section = &m_map.section(section); // a block without entries makes no section
        m_section->insert(m_keys.key(key), toText(value));
    }

private:
    VanteroConfigMap &m_map;
    VanteroConfigMap::Section *m_section = nullptr;
    SharedKeys m_keys;
};

} // namespace vn

#endif // VN_CONFIG_MAPBUILDER_P_H
