// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "CamerasPane.h"

#include "EmptyState.h"
#include "TableLook.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace browser {

CamerasPane::CamerasPane(CameraModel &cameras, QWidget *parent)
    : QWidget(parent)
    , m_cameras(cameras)
    , m_filter(cameras)
    , m_words(new QLineEdit)
    , m_table(new QTableView)
{
    m_words->setObjectName(QStringLiteral("cameraFilter"));
    m_words->setAccessibleName(tr("Filter of the cameras"));
    m_words->setPlaceholderText(tr("Filter, or a value: NTP=10.14"));
    m_words->setToolTip(tr("A part of any column, or a value: NTP=10.14 finds cameras whose NTP "
                           "holds that, NTP!=10.14 the others, ethernet/NTP= those that have it"));
    m_words->setClearButtonEnabled(true);
    m_table->setObjectName(QStringLiteral("cameras"));
    m_table->setAccessibleName(tr("Cameras"));
    m_table->setModel(&m_filter);
    setUpTable(m_table);
    setColumnWidths(m_table, {17, 12, 12});
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUpSorting(m_table);
    m_table->sortByColumn(CameraModel::Address, Qt::AscendingOrder);
    m_counts = new RowCounts(m_table);
    m_counts->setObjectName(QStringLiteral("camerasCount"));

    m_pages = new EmptyState(m_table);
    auto *top = new QHBoxLayout;
    top->setContentsMargins(6, 6, 6, 0);
    top->addWidget(m_words, 1);
    top->addWidget(m_counts);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(m_pages, 1);

    connect(m_words, &QLineEdit::textChanged, &m_filter, &CameraFilter::setFilter);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CamerasPane::selectionChanged);
    connect(&m_filter, &CameraFilter::counted, this, &CamerasPane::update);
    // What a filter lets through is to be seen at once, also by those who have no mouse.
    m_selectSoon.setSingleShot(true);
    connect(&m_filter, &CameraFilter::counted, &m_selectSoon, [this] { m_selectSoon.start(0); });
    connect(&m_selectSoon, &QTimer::timeout, this, &CamerasPane::selectAny);
    update();
}

QList<int> CamerasPane::selectedRows() const
{
    QModelIndexList selected = m_table->selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    QList<int> rows;
    for (const QModelIndex &index : qAsConst(selected))
        rows += m_filter.mapToSource(index).row();
    return rows;
}

std::vector<Document *> CamerasPane::selectedDocuments() const
{
    std::vector<Document *> documents;
    const QList<int> rows = selectedRows();
    for (const int row : rows)
        documents.push_back(m_cameras.document(row));
    return documents;
}

int CamerasPane::currentRow() const
{
    const QItemSelectionModel *selection = m_table->selectionModel();
    if (!selection->hasSelection())
        return -1;
    const QModelIndex current = m_table->currentIndex();
    if (selection->isRowSelected(current.row(), QModelIndex()))
        return m_filter.mapToSource(current).row();
    return selectedRows().first();
}

void CamerasPane::select(const Document *document)
{
    const int row = m_cameras.rowOf(document);
    if (row < 0)
        return;
    QModelIndex index = m_filter.mapFromSource(m_cameras.index(row, 0));
    if (!index.isValid()) { // the filter hides it
        m_words->clear();
        index = m_filter.mapFromSource(m_cameras.index(row, 0));
    }
    selectOnly(index);
    m_table->scrollTo(index);
}

void CamerasPane::selectAny()
{
    if (m_filter.rowCount() > 0 && !m_table->selectionModel()->hasSelection())
        selectOnly(m_filter.index(0, 0));
}

void CamerasPane::focusFilter()
{
    m_words->setFocus(Qt::ShortcutFocusReason);
    m_words->selectAll();
}

/** Unlike selectRow() the same whatever keys are held down: those of a shortcut, say. */
void CamerasPane::selectOnly(const QModelIndex &index)
{
    m_table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                          QItemSelectionModel::Rows);
}

void CamerasPane::update()
{
    if (m_filter.rowCount() > 0)
        m_pages->showContent();
    else if (m_cameras.rowCount() == 0)
        m_pages->showWords(tr("No cameras yet"),
                           tr("Open a folder, archives or files: press Ctrl+O or Ctrl+Shift+O, or "
                              "drop them here."));
    else if (m_filter.isSearching())
        m_pages->showWords(tr("Searching…"), QString());
    else
        m_pages->showWords(tr("No camera is like that"), tr("Change the filter, or clear it."));
}

} // namespace browser
