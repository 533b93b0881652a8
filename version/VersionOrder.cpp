// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VersionOrder.h"

#include "version/VersionText_p.h"

namespace vn {

bool VersionOrder::before(const VanteroSoftwareVersion &a, const VanteroSoftwareVersion &b)
{
    for (int i = 0; i < internal::kVersionComponents; ++i) {
        if (a[i] != b[i])
            return a[i] < b[i];
    }
    for (int i = 0; i < internal::kVersionComponents; ++i) {
        if (a.high(i) != b.high(i))
            return a.high(i) < b.high(i);
    }
    return QString(a) < QString(b);
}

bool VersionOrder::isPattern(const VanteroSoftwareVersion &version)
{
    for (int i = 0; i < internal::kVersionComponents; ++i) {
        if (version[i] != version.high(i))
            return true;
    }
    return false;
}

bool VersionOrder::covers(const VanteroSoftwareVersion &pattern,
                          const VanteroSoftwareVersion &version)
{
    for (int i = 0; i < internal::kVersionComponents; ++i) {
        if (pattern[i] > version[i] || pattern.high(i) < version.high(i))
            return false;
    }
    return true;
}

} // namespace vn
