// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_STRINGUTILS_H
#define VN_BASE_STRINGUTILS_H

#include "base/Export.h"

#include <QtCore/QString>

namespace vn {

/** Small text helpers. Threads: all functions are reentrant. @since 1.0.0 */
class VN_BASE_EXPORT StringUtils
{
public:
    StringUtils() = delete; // a name for functions only

    /**
     * Whether @p text ends with @p suffix when case is ignored (Qt's case folding, whatever the
     * locale); every text ends with an empty suffix.
     * Example: endsWithIgnoreCase("cams.ZIP", ".zip") is true.
     */
    [[nodiscard]] static bool endsWithIgnoreCase(const QString &text,
                                                 const QString &suffix) noexcept;
};

} // namespace vn

#endif // VN_BASE_STRINGUTILS_H
