// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_EMPTYSTATE_H
#define BROWSER_EMPTYSTATE_H

#include <QtWidgets/QStackedWidget>

class QLabel;

namespace browser {

/** Shows a widget, or in its place a few words about what to do while it has nothing to show. */
class EmptyState : public QStackedWidget
{
    Q_OBJECT

public:
    /** Takes @p content over. */
    explicit EmptyState(QWidget *content, QWidget *parent = nullptr);

    void showContent();
    void showWords(const QString &title, const QString &text);

    bool isEmpty() const { return currentIndex() != 0; }

private:
    QLabel *m_title;
    QLabel *m_text;
};

} // namespace browser

#endif // BROWSER_EMPTYSTATE_H
