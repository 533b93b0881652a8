// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/Versions.h"

namespace vn::tool {

QString versionComponentName(int i)
{
    static const char *const names[kVersionComponents] = {"platform", "major",  "minor",
                                                          "third",    "fourth", "pre-release"};
    return QLatin1String(names[i]);
}

bool isPattern(const VanteroSoftwareVersion &version)
{
    for (int i = 0; i < kVersionComponents; ++i)
        if (version[i] != version.high(i))
            return true;
    return false;
}

bool covers(const VanteroSoftwareVersion &pattern, const VanteroSoftwareVersion &version)
{
    for (int i = 0; i < kVersionComponents; ++i)
        if (pattern[i] > version[i] || pattern.high(i) < version.high(i))
            return false;
    return true;
}

QStringList versionWarnings(const VanteroSoftwareVersion &version)
{
    if (!version.platform().isNull())
        return {};
    return {QStringLiteral("\"%1\" names no known platform").arg(QString(version))};
}

} // namespace vn::tool
