// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_COLORS_H
#define BROWSER_COLORS_H

#include <QtGui/QColor>

namespace browser {

/** Tints of backgrounds, which go with light and with dark palettes. */
namespace colors {

inline QColor good()
{
    return QColor(46, 160, 67, 60);
}
inline QColor bad()
{
    return QColor(215, 58, 73, 60);
}
inline QColor notice()
{
    return QColor(219, 171, 9, 55);
}

} // namespace colors

} // namespace browser

#endif // BROWSER_COLORS_H
