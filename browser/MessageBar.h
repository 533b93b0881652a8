// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_MESSAGEBAR_H
#define BROWSER_MESSAGEBAR_H

#include <QtWidgets/QFrame>

class QLabel;
class QPushButton;
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
    /** What the user may want to do something about; activated() is the button @p action. */
    void showChoice(const QString &text, const QString &action);

    /** Empty while nothing is shown. */
    QString text() const;

Q_SIGNALS:
    void activated();

private:
    void showText(const QString &text, const QColor &tint, bool canBeClosed);

    QLabel *m_label;
    QPushButton *m_action;
    QToolButton *m_close;
};

} // namespace browser

#endif // BROWSER_MESSAGEBAR_H
