// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/StringUtils.h"

int main()
{
    return vn::StringUtils::endsWithIgnoreCase("cams.ZIP", ".zip") ? 0 : 1;
}
