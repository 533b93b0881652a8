// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "SecondaryLabel.h"

#include "Colors.h"

#include <QtCore/QEvent>
#include <QtWidgets/QApplication>

namespace browser {

SecondaryLabel::SecondaryLabel(QWidget *parent)
    : QLabel(parent)
{
    tint();
}

void SecondaryLabel::changeEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::ApplicationPaletteChange:
    case QEvent::ParentChange:
        tint();
        break;
    default:
        break;
    }
    QLabel::changeEvent(event);
}

/** Styles set no colour for placeholders that could be relied on; this one is made. */
void SecondaryLabel::tint()
{
    const QPalette base = parentWidget() ? parentWidget()->palette() : QApplication::palette();
    const QColor color = colors::secondary(base);
    if (palette().color(QPalette::WindowText) == color)
        return; // setting one brings an event, too
    QPalette tinted;
    tinted.setColor(QPalette::WindowText, color);
    setPalette(tinted);
}

} // namespace browser
