// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_MAPBUILDER_P_H
#define VN_CONFIG_MAPBUILDER_P_H

#include "base/SharedStrings_p.h"
#include "config/ConfigTextReader_p.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigMap.h"

namespace vn::internal {

/** Reads the header block into the head section of @p map. */
template <typename Lines>
bool readHeaderInto(VanteroConfigMap &map, Lines &lines)
{
    return readHeaderValues(lines, [&map](HeaderField field, QStringView value) {
        map.setValue(VanteroConfigFile::HEAD_SECTION, keyOf(field), toText(value));
    });
}

/** The keys of a configuration: its sections, a few hundred of a few kinds, have most in common. */
using SharedKeys = SharedStrings<11>;

/**
 * A sink of the text reader that fills a map; the section is looked up once a block. For texts in
 * memory only: a stream may call its device, which may come back to the map while it is read.
 */
class MapBuilder : public ConfigSink
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
        m_section->insert(m_keys.string(key), toText(value));
    }

private:
    VanteroConfigMap &m_map;
    VanteroConfigMap::Section *m_section = nullptr;
    SharedKeys m_keys;
};

} // namespace vn::internal

#endif // VN_CONFIG_MAPBUILDER_P_H
