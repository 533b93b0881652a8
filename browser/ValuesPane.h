// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_VALUESPANE_H
#define BROWSER_VALUESPANE_H

#include "EntryModel.h"
#include "TableLook.h"

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
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
    /** Says that @p cameras are selected, of which one is shown. */
    void setSelectedCount(int cameras);
    void showError(const QString &text);
    void focusFilter();

    Document *document() const { return m_document; }
    const EntryModel &entries() const { return m_model; }
    QTableView *table() { return m_table; }
    /** The values that are selected, in the order of the text. */
    std::vector<EntryModel::Row> selectedValues() const;
    /** Makes the value the one that is selected, if it is there. */
    void select(const EntryModel::Row &value);

Q_SIGNALS:
    void selectionChanged();
    /** The file has another content; the user wants that. */
    void reloadWanted();

private:
    QLayout *makeFilterRow();
    void update();
    void checkDisk();

    QPointer<Document> m_document;
    EntryModel m_model;
    NaturalOrder m_filtered;
    QFileSystemWatcher m_watcher;
    QTimer m_checkSoon;
    EmptyState *m_pages;
    QLabel *m_title;
    QLabel *m_source;
    QLabel *m_selectedCount;
    MessageBar *m_disk;
    QLineEdit *m_filter;
    QComboBox *m_filterColumn;
    MessageBar *m_error;
    MessageBar *m_note;
    QTableView *m_table;
};

} // namespace browser

#endif // BROWSER_VALUESPANE_H
