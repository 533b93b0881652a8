// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_FINDINGSVIEW_H
#define BROWSER_FINDINGSVIEW_H

#include "FindingModel.h"
#include "TableLook.h"

#include <QtWidgets/QSplitter>

class QLabel;
class QTableView;

namespace browser {

class SourceView;

/** A text, what was found in it, and the place of the finding that is chosen.
 */
class FindingsView : public QSplitter
{
    Q_OBJECT

public:
    /** The parts are called @p name, and that with "Findings" and the like behind
     * it. */
    explicit FindingsView(const QString &name, QWidget *parent = nullptr);

    void setSource(const QString &text, const vn::Findings &findings);
    SourceView *source() { return m_source; }
    QTableView *table() { return m_table; }

private:
    void showFinding(const QModelIndex &index);

    QString m_text;
    FindingModel m_model;
    NaturalOrder m_sorted;
    SourceView *m_source;
    QWidget *m_below;
    QTableView *m_table;
    QLabel *m_title;
    QLabel *m_message;
    QLabel *m_excerpt;
};

} // namespace browser

#endif // BROWSER_FINDINGSVIEW_H
