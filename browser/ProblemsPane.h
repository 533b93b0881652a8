// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_PROBLEMSPANE_H
#define BROWSER_PROBLEMSPANE_H

#include "ProblemModel.h"
#include "TableLook.h"

#include <QtWidgets/QWidget>

class QLabel;

namespace browser {

/** What could not be read; hidden while there is nothing. */
class ProblemsPane : public QWidget
{
    Q_OBJECT

public:
    explicit ProblemsPane(QWidget *parent = nullptr);

    void add(const std::vector<Problem> &problems);
    void clear();
    int count() const { return m_model.rowCount(); }

private:
    ProblemModel m_model;
    NaturalOrder m_sorted;
    QLabel *m_title;
};

} // namespace browser

#endif // BROWSER_PROBLEMSPANE_H
