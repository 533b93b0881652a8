// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_PLATFORMS_P_H
#define VN_VERSION_PLATFORMS_P_H

/** @file The platforms that versions name. */

namespace vn {

namespace internal {

struct Platform
{
    const char *name;
    int code;
};

/** The codes order the platforms: every VN version is greater than every R16 version. */
constexpr Platform kVn{"VN", 20};
constexpr Platform kR16{"R16", 10};
constexpr Platform kR8{"R8", 2};
constexpr Platform kR4{"R4", 1};
constexpr Platform kPlatforms[] = {kVn, kR16, kR8, kR4};

} // namespace internal

} // namespace vn

#endif // VN_VERSION_PLATFORMS_P_H
