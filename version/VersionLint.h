// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_VERSIONLINT_H
#define VN_VERSION_VERSIONLINT_H

/**
 * @file
 * Texts of versions that are read otherwise than they look.
 */

#include "base/Export.h"
#include "base/Finding.h"

namespace vn {

/**
 * Finds what VanteroSoftwareVersion, which accepts every text, does not say of it.
 * @code
 * vn::VersionLint::check("VN-3.O.6");
 * // warning, number-unreadable: "O" is no number and is read as 0, columns 6 to 7
 * @endcode
 * Threads: all functions are reentrant.
 * @since 1.0.0
 */
class VN_EXPORT VersionLint
{
public:
    VersionLint() = delete; // a name for functions only

    /**
     * The findings of @p text in the order of their places; offsets count code units. None is an
     * error, since no text is refused. A text without a warning says what its components are: a
     * known platform, up to four numbers of up to 32767 (or "*"), "pre" or nothing. Reports
     * nothing: a text without findings gives an empty list. `docs/findings.md` has the codes.
     */
    [[nodiscard]] static Findings check(const QString &text);
};

} // namespace vn

#endif // VN_VERSION_VERSIONLINT_H
