// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_MESSAGEBAR_H
#define BROWSER_MESSAGEBAR_H

#include <QtWidgets/QFrame>

class QLabel;
class QToolButton;

namespace browser {

/** A message above what it is about; hidden while there is none. */
class MessageBar : public QFrame
{
    Q_OBJECT

public:
    explicit MessageBar(QWidget *parent = nullptr);

    /** What is so, and stays. */
    void showNote(const QString &text);
    /** What went wrong; the user may close it. */
    void showError(const QString &text);

    /** Empty while nothing is shown. */
    QString text() const;

private:
    void showText(const QString &text, const QColor &tint, bool canBeClosed);

    QLabel *m_label;
    QToolButton *m_close;
};

} // namespace browser

#endif // BROWSER_MESSAGEBAR_H
