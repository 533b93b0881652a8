// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_SOURCEEXCERPT_H
#define VN_BASE_SOURCEEXCERPT_H

#include "base/Export.h"
#include "base/Finding.h"

namespace vn {

/**
 * The line of a text that a finding or an exception is about, and a mark below the place:
 * @code
 * {gate: 1 2}
 *          ^
 * @endcode
 * @since 1.0.0
 */
struct SourceExcerpt
{
    /** The line, "..." at its ends where it was cut; characters that cannot be shown are blanks.
     * Empty where there is nothing to show. */
    QString line;
    /** Blanks, "^" below the first character of the range and "~" below the others of its line. */
    QString mark;
};

/**
 * The excerpt of @p text around @p range: at most @p width UTF-16 code units of the range's first
 * line, with the beginning of the range in them. Of @p range only line, column, end line and end
 * column count; a place behind the end of the text is taken for its end. Reports nothing.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
[[nodiscard]] VN_BASE_EXPORT SourceExcerpt sourceExcerpt(const QString &text,
                                                         const TextRange &range, int width = 76);

} // namespace vn

#endif // VN_BASE_SOURCEEXCERPT_H
