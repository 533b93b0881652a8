// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_MAPBUILDER_P_H
#define VN_CONFIG_MAPBUILDER_P_H

#include "config/ConfigTextReader_p.h"
#include "config/VanteroConfigMap.h"

#include <QtCore/QHashFunctions>

#include <array>

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
        QString &remembered = m_keys[qHash(text) % m_keys.size()];
        if (remembered != text || remembered.isNull())
            remembered = text.toString();
        return remembered;
    }

private:
    std::array<QString, 512> m_keys;
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
