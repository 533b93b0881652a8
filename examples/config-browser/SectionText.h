// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_SECTIONTEXT_H
#define BROWSER_SECTIONTEXT_H

#include "config/VanteroConfigMap.h"

#include <QtCore/QString>

namespace browser {

/**
 * The block of @p section as it stands in the configuration text @p text, with the values of
 * @p content: comments, the order of the lines and their ends stay. @p content has the same keys,
 * and of each as many values.
 *
 * (VanteroConfigMap::toString() prints a block, too: with sorted keys and without comments. Where a
 * key repeats it puts the newest value first, and reading that back would turn the values round.)
 */
QString sectionText(const QString &text, const QString &section,
                    const vn::VanteroConfigMap::Section &content);

} // namespace browser

#endif // BROWSER_SECTIONTEXT_H
