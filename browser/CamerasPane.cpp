// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "CamerasPane.h"

#include "EmptyState.h"
#include "TableLook.h"

#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace browser {

CamerasPane::CamerasPane(CameraModel &cameras, QWidget *parent)
    : QWidget(parent)
    , m_cameras(cameras)
    , m_table(new QTableView)
{
    m_sorted.setSourceModel(&cameras);
    m_sorted.setSortRole(CameraModel::SortRole);
    m_table->setObjectName(QStringLiteral("cameras"));
    m_table->setAccessibleName(tr("Cameras"));
    m_table->setModel(&m_sorted);
    setUpTable(m_table);
    setColumnWidths(m_table, {15, 13, 13});
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(CameraModel::Address, Qt::AscendingOrder);

    m_pages = new EmptyState(m_table);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);

    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CamerasPane::selectionChanged);
    connect(&cameras, &QAbstractItemModel::rowsInserted, this, &CamerasPane::update);
    connect(&cameras, &QAbstractItemModel::modelReset, this, &CamerasPane::update);
    update();
}

QList<int> CamerasPane::selectedRows() const
{
    QModelIndexList selected = m_table->selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    QList<int> rows;
    for (const QModelIndex &index : qAsConst(selected))
        rows += m_sorted.mapToSource(index).row();
    return rows;
}

int CamerasPane::currentRow() const
{
    const QList<int> selected = selectedRows();
    const int current = m_sorted.mapToSource(m_table->currentIndex()).row();
    if (selected.isEmpty() || selected.contains(current))
        return selected.isEmpty() ? -1 : current;
    return selected.first();
}

void CamerasPane::select(const Document *document)
{
    for (int row = 0; row < m_cameras.rowCount(); ++row)
        if (m_cameras.document(row) == document)
            selectOnly(m_sorted.mapFromSource(m_cameras.index(row, 0)));
}

void CamerasPane::selectAny()
{
    if (m_sorted.rowCount() > 0 && !m_table->selectionModel()->hasSelection())
        selectOnly(m_sorted.index(0, 0));
}

/** Unlike selectRow() the same whatever keys are held down: those of a shortcut, say. */
void CamerasPane::selectOnly(const QModelIndex &index)
{
    m_table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                          QItemSelectionModel::Rows);
}

void CamerasPane::update()
{
    if (m_cameras.rowCount() > 0)
        m_pages->showContent();
    else
        m_pages->showWords(tr("No cameras yet"),
                           tr("Open a folder, archives or files: press Ctrl+O or Ctrl+Shift+O, or "
                              "drop them here."));
}

} // namespace browser
