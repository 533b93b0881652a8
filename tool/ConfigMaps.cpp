// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ConfigMaps.h"

#include "config/VanteroConfigFile.h"

namespace vn {
namespace tool {

VanteroConfigMap mapOf(const VanteroConfigFile &config)
{
    VanteroConfigMap map;
    const QStringList names = config.allSectionKeys();
    for (const QString &name : names)
        map.replaceSection(name, config.section(name));
    return map;
}

bool isSameMap(const VanteroConfigMap &a, const VanteroConfigMap &b)
{
    const QStringList names = a.allSectionKeys() + b.allSectionKeys();
    for (const QString &name : names)
        if (a.section(name) != b.section(name))
            return false;
    return true;
}

} // namespace tool
} // namespace vn
