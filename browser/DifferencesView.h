// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_DIFFERENCESVIEW_H
#define BROWSER_DIFFERENCESVIEW_H

#include "DifferenceModel.h"
#include "TableLook.h"

#include <QtWidgets/QWidget>

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QTableView;

namespace browser {

/** What differs between two configurations: a table, and the whole values of one row. */
class DifferencesView : public QWidget
{
    Q_OBJECT

public:
    /** The parts are called @p name, and that with "Summary" and the like behind it. */
    explicit DifferencesView(const QString &name, QWidget *parent = nullptr);

    DifferenceModel &model() { return m_model; }
    QTableView *table() { return m_table; }

    /** Selects the next row that differs, or with -1 the one before. */
    void step(int direction);

private:
    QLayout *makeTop(const QString &name);
    void update();
    void showWhole();

    DifferenceModel m_model;
    NaturalOrder m_sorted;
    QLabel *m_summary;
    QCheckBox *m_showsAll;
    QTableView *m_table;
    QPlainTextEdit *m_first;
    QPlainTextEdit *m_second;
};

} // namespace browser

#endif // BROWSER_DIFFERENCESVIEW_H
