// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_VALUESPANE_H
#define BROWSER_VALUESPANE_H

#include "EntryModel.h"

#include <QtCore/QPointer>
#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace browser {

class EmptyState;
class MessageBar;

/** The sections and values of one camera, with a filter. */
class ValuesPane : public QWidget
{
    Q_OBJECT

public:
    explicit ValuesPane(QWidget *parent = nullptr);

    /** Shows @p document; null shows what to do. */
    void setDocument(Document *document);
    void showError(const QString &text);
    void focusFilter();

private:
    QLayout *makeFilterRow();
    void update();
    void updateCount();

    QPointer<Document> m_document;
    EntryModel m_model;
    QSortFilterProxyModel m_filtered;
    EmptyState *m_pages;
    QLabel *m_title;
    QLabel *m_source;
    QLineEdit *m_filter;
    QComboBox *m_filterColumn;
    QLabel *m_count;
    MessageBar *m_error;
    MessageBar *m_note;
    QTableView *m_table;
};

} // namespace browser

#endif // BROWSER_VALUESPANE_H
