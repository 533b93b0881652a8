// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_ALARMPANE_H
#define BROWSER_ALARMPANE_H

#include "AlarmList.h"
#include "AlarmModel.h"
#include "TableLook.h"

#include <QtWidgets/QWidget>

#include <vector>

class QCheckBox;
class QComboBox;
class QSplitter;
class QTreeView;

namespace browser {

class EmptyState;
class FindingsView;
class MessageBar;

/** Alarm lists: the tree of one, and its text with what is found in it. */
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

    std::vector<AlarmList> m_lists;
    AlarmModel m_model;
    NaturalOrder m_sorted;
    EmptyState *m_pages;
    QComboBox *m_files;
    MessageBar *m_error;
    QCheckBox *m_showsText;
    QTreeView *m_tree;
    FindingsView *m_text;
};

} // namespace browser

#endif // BROWSER_ALARMPANE_H
