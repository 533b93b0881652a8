// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_ALARMPANE_H
#define BROWSER_ALARMPANE_H

#include "AlarmList.h"
#include "AlarmModel.h"

#include <QtWidgets/QWidget>

#include <vector>

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QStackedWidget;
class QTreeView;

namespace browser {

class EmptyState;
class MessageBar;

/** Alarm lists: the tree of one, or its text with the place of the error. */
class AlarmPane : public QWidget
{
    Q_OBJECT

public:
    explicit AlarmPane(QWidget *parent = nullptr);

    /** Adds lists and shows the last one. One of the same file is replaced. */
    void add(const std::vector<AlarmList> &lists);
    void clear();

private:
    void showList(int index);
    void showError(const AlarmList &list);

    std::vector<AlarmList> m_lists;
    AlarmModel m_model;
    EmptyState *m_pages;
    QComboBox *m_files;
    MessageBar *m_error;
    QStackedWidget *m_views;
    QTreeView *m_tree;
    QPlainTextEdit *m_text;
};

} // namespace browser

#endif // BROWSER_ALARMPANE_H
