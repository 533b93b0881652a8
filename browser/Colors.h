// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_COLORS_H
#define BROWSER_COLORS_H

#include <QtGui/QColor>
#include <QtGui/QPalette>

namespace browser {

/** Tints of backgrounds, which go with light, dark and high-contrast palettes. */
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

/** Between the text and what is behind it, nearer to the text. */
inline QColor secondary(const QPalette &palette)
{
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor behind = palette.color(QPalette::Active, QPalette::Window);
    const auto mixed = [](int a, int b) { return (7 * a + 3 * b) / 10; };
    return QColor(mixed(text.red(), behind.red()), mixed(text.green(), behind.green()),
                  mixed(text.blue(), behind.blue()));
}

} // namespace colors

} // namespace browser

#endif // BROWSER_COLORS_H
