// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_VERSIONTEXT_P_H
#define VN_VERSION_VERSIONTEXT_P_H

/** @file How the text of a version falls into parts. */

#include <QtCore/QChar>

#include <array>
#include <cstddef>

namespace vn {

namespace internal {

constexpr int kVersionComponents = 6;
constexpr int kPlatformComponent = 0;
constexpr int kMajorComponent = 1;
constexpr int kPreReleaseComponent = 5;

/** For each ASCII character whether it separates parts. */
constexpr auto kAsciiSeparators = [] {
    std::array<bool, 0x80> separates{};
    for (std::size_t code = 0; code < separates.size(); ++code) {
        const std::size_t letter = code | 0x20;
        separates[code] = !((code >= '0' && code <= '9') || (letter >= 'a' && letter <= 'z'));
    }
    separates['*'] = false; // a wildcard is a part
    return separates;
}();

/** Whether a code unit separates parts: one that VanteroSoftwareVersion::splitVersion matches, "*"
 * excepted. */
inline bool isSeparator(QChar unit)
{
    const std::size_t code = unit.unicode();
    if (code < kAsciiSeparators.size())
        return kAsciiSeparators[code];
    return !unit.isLetterOrNumber() && !unit.isMark();
}

} // namespace internal

} // namespace vn

#endif // VN_VERSION_VERSIONTEXT_P_H
