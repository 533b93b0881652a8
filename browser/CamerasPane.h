// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CAMERASPANE_H
#define BROWSER_CAMERASPANE_H

#include "CameraModel.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QWidget>

class QTableView;

namespace browser {

class EmptyState;

/** The table of cameras. */
class CamerasPane : public QWidget
{
    Q_OBJECT

public:
    /** @p cameras must outlive this pane. */
    explicit CamerasPane(CameraModel &cameras, QWidget *parent = nullptr);

    /** The rows of the model that are selected, in the order of the table. */
    QList<int> selectedRows() const;
    /** The row of the camera that is looked at; -1 where there is none. */
    int currentRow() const;
    void select(const Document *document);
    /** Selects the first camera of the table unless one is selected. */
    void selectAny();

Q_SIGNALS:
    void selectionChanged();

private:
    void selectOnly(const QModelIndex &index);
    void update();

    CameraModel &m_cameras;
    QSortFilterProxyModel m_sorted;
    EmptyState *m_pages;
    QTableView *m_table;
};

} // namespace browser

#endif // BROWSER_CAMERASPANE_H
