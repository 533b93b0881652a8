// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CAMERASPANE_H
#define BROWSER_CAMERASPANE_H

#include "CameraFilter.h"

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

class QLabel;
class QLineEdit;
class QTableView;

namespace browser {

class EmptyState;

/** The table of cameras, with a filter. */
class CamerasPane : public QWidget
{
    Q_OBJECT

public:
    /** @p cameras must outlive this pane. */
    explicit CamerasPane(CameraModel &cameras, QWidget *parent = nullptr);

    QTableView *table() { return m_table; }

    /** The rows of the model that are selected, in the order of the table. */
    QList<int> selectedRows() const;
    std::vector<Document *> selectedDocuments() const;
    /** The row of the camera that is looked at; -1 where there is none. */
    int currentRow() const;
    void select(const Document *document);
    /** Selects the first camera of the table unless one is selected. */
    void selectAny();
    void focusFilter();

Q_SIGNALS:
    void selectionChanged();

private:
    void selectOnly(const QModelIndex &index);
    void update();

    CameraModel &m_cameras;
    CameraFilter m_filter;
    QTimer m_selectSoon;
    EmptyState *m_pages;
    QLineEdit *m_words;
    QLabel *m_counts;
    QTableView *m_table;
};

} // namespace browser

#endif // BROWSER_CAMERASPANE_H
