// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_VERSIONORDER_H
#define VN_VERSION_VERSIONORDER_H

/**
 * @file
 * Versions in lists. The operators of VanteroSoftwareVersion compare ranges, so equality is not
 * transitive where patterns are, and neither sorting nor a map may be built on them; these may.
 */

#include "base/Export.h"

#include "version/VanteroSoftwareVersion.h"

namespace vn {

/**
 * Sorting and covering.
 * @code
 * std::sort(versions.begin(), versions.end(), vn::VersionOrder::before);
 * @endcode
 * Threads: all functions are reentrant. They report nothing.
 * @since 1.0.0
 */
class VN_EXPORT VersionOrder
{
public:
    VersionOrder() = delete; // a name for functions only

    /**
     * Whether @p a stands before @p b in a sorted list: a total order of all versions, the null one
     * included. Where neither is a pattern and they differ in a number, it is `a < b`. A pattern
     * stands where the lowest version that it covers would, right behind it: `VN-3.0.8.*` between
     * `VN-3.0.8` and `VN-3.0.8.1`, and before a wider one that begins there, such as
     * `VN-3.0.8.*.*`. Of versions with the same numbers the texts decide, by code units.
     */
    [[nodiscard]] static bool before(const VanteroSoftwareVersion &a,
                                     const VanteroSoftwareVersion &b);

    /** Whether @p version is a pattern: one of its components is a range of more than one number.
     * So is every version with a pre-release other than `pre`. */
    [[nodiscard]] static bool isPattern(const VanteroSoftwareVersion &version);

    /**
     * Whether every version that @p version stands for is one that @p pattern stands for: each
     * range lies in that of the pattern. A version covers itself; `VN-3.0.8.*` covers `VN-3.0.8.4`,
     * not `VN-3.0.8.100`, and no pattern that is wider, though it equals that.
     */
    [[nodiscard]] static bool covers(const VanteroSoftwareVersion &pattern,
                                     const VanteroSoftwareVersion &version);
};

} // namespace vn

#endif // VN_VERSION_VERSIONORDER_H
