// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_STARTPAGE_H
#define BROWSER_STARTPAGE_H

#include <QtWidgets/QFrame>

class QAction;
class QLabel;
class QVBoxLayout;

namespace browser {

/** What the first window says: open something, again or by a drop. */
class StartPage : public QFrame
{
    Q_OBJECT

public:
    /** The buttons do what the actions do, which must outlive this page. */
    StartPage(QAction *openFiles, QAction *openFolder, QWidget *parent = nullptr);

    void setRecent(const QStringList &paths);

Q_SIGNALS:
    void chosen(const QString &path);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *makeButton(QAction *action);

    QLabel *m_recentTitle;
    QVBoxLayout *m_recent;
};

} // namespace browser

#endif // BROWSER_STARTPAGE_H
