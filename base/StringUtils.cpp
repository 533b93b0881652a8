// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/StringUtils.h"

namespace vn {

bool StringUtils::endsWithIgnoreCase(const QString &text, const QString &suffix) noexcept
{
    // A null text ends with nothing in Qt, not even with an empty suffix.
    return suffix.isEmpty() || text.endsWith(suffix, Qt::CaseInsensitive);
}

} // namespace vn
