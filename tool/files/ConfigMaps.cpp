// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigMaps.h"

#include "config/VanteroConfigFile.h"

#include <algorithm>

namespace vn::tool {

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
    return std::all_of(names.begin(), names.end(),
                       [&](const QString &name) { return a.section(name) == b.section(name); });
}

} // namespace vn::tool
