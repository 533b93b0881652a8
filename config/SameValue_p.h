// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_SAMEVALUE_P_H
#define VN_CONFIG_SAMEVALUE_P_H

#include <QtCore/QString>

namespace vn::internal {

/** Whether two values are the same. A value without "=" (null) is not the same as an empty one,
 * though Qt takes the two texts for equal. */
inline bool isSameValue(const QString &a, const QString &b) noexcept
{
    return a == b && a.isNull() == b.isNull();
}

} // namespace vn::internal

#endif // VN_CONFIG_SAMEVALUE_P_H
