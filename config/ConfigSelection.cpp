// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigSelection.h"

#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"
#include "config/MapBuilder_p.h"

#include <algorithm>

namespace vn {

namespace {

using Keys = std::vector<QString>;

/** A sink of the text reader that fills a map with some of the entries. */
class SelectingBuilder : public internal::ConfigSink
{
public:
    SelectingBuilder(VanteroConfigMap &map, const QHash<QString, Keys> &keys)
        : m_map(map)
        , m_keys(keys)
    {
    }

    void beginSection(QStringView, QStringView) { m_isLookedUp = false; }

    void addEntry(const QString &section, QStringView key, QStringView value)
    {
        if (!m_isLookedUp) {
            const auto found = m_keys.constFind(section);
            m_keysHere = found == m_keys.constEnd() ? nullptr : &*found;
            m_isLookedUp = true;
        }
        if (!m_keysHere)
            return;
        const auto place = std::lower_bound(m_keysHere->begin(), m_keysHere->end(), key);
        if (place != m_keysHere->end() && *place == key)
            m_map.addValue(section, *place, internal::toText(value));
    }

private:
    VanteroConfigMap &m_map;
    const QHash<QString, Keys> &m_keys;
    const Keys *m_keysHere = nullptr; // of the section that is read; null where it has none
    bool m_isLookedUp = false;
};

} // namespace

void ConfigSelection::add(const QString &section, const QString &key)
{
    Keys &keys = m_keys[section];
    const auto place = std::lower_bound(keys.begin(), keys.end(), key);
    if (place == keys.end() || *place != key)
        keys.insert(place, key);
}

bool ConfigSelection::parse(const QString &text, VanteroConfigMap &map) const
{
    return onlyThrows<ParseException>([&] {
        map = VanteroConfigMap();
        internal::MemoryLines lines(text);
        const bool complete = internal::readHeaderInto(map, lines);
        SelectingBuilder builder(map, m_keys);
        internal::readSections(lines, builder);
        return complete;
    });
}

} // namespace vn
