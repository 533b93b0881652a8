// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGSELECTION_H
#define VN_CONFIG_CONFIGSELECTION_H

#include "base/Export.h"
#include "config/VanteroConfigMap.h"

#include <QtCore/QHash>
#include <QtCore/QString>

#include <vector>

namespace vn {

/**
 * Some keys of configurations, for who wants a few values of many texts: reading them takes a
 * fraction of the time and memory of VanteroConfigFile::parse(), which keeps every entry.
 * @code
 * ConfigSelection selection;
 * selection.add(QStringLiteral("ethernet"), QStringLiteral("NTP"));
 * for (const QString &text : texts) {
 *     VanteroConfigMap map;
 *     selection.parse(text, map);
 *     show(map.value(QStringLiteral("ethernet"), QStringLiteral("NTP"), 0));
 * }
 * @endcode
 * Threads: reentrant; any number of threads may parse() by one selection that none of them changes.
 * @since 1.0.0
 */
class VN_EXPORT ConfigSelection
{
public:
    /** A selection of no entries: only headers are kept. */
    ConfigSelection() = default;

    /** Selects the entries of @p key in the section @p section. */
    void add(const QString &section, const QString &key);

    /**
     * Reads the configuration @p text into @p map as VanteroConfigFile::parse() would, all of it
     * and with the same faults, but of its entries only those that are selected, and the values of
     * the header. What the map held before goes. Returns whether the first two lines tell the
     * versions.
     * @throws ParseException as VanteroConfigFile::parse(); what was read before is in the map
     */
    bool parse(const QString &text, VanteroConfigMap &map) const;

private:
    QHash<QString, std::vector<QString>> m_keys; // sorted, by the section
};

} // namespace vn

#endif // VN_CONFIG_CONFIGSELECTION_H
