// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_VERSION_VERSIONSUPPORT_H
#define VN_TESTS_VERSION_VERSIONSUPPORT_H

/** @file What the tests of versions share: printing, and the numbers of a version as a whole. */

#include "version/VanteroSoftwareVersion.h"

#include "support/QtPrinters.h"

#include <array>
#include <ostream>

namespace vn {

inline void PrintTo(const VanteroSoftwareVersion &version, std::ostream *out)
{
    ::PrintTo(QString(version), out);
}

} // namespace vn

/** The low or high ends of the six components. */
using Numbers = std::array<int, 6>;

inline Numbers lows(const vn::VanteroSoftwareVersion &version)
{
    return {version[0], version[1], version[2], version[3], version[4], version[5]};
}

inline Numbers highs(const vn::VanteroSoftwareVersion &version)
{
    return {version.high(0), version.high(1), version.high(2),
            version.high(3), version.high(4), version.high(5)};
}

#endif // VN_TESTS_VERSION_VERSIONSUPPORT_H
