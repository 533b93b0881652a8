// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ValuesPane.h"

#include "EmptyState.h"
#include "MessageBar.h"
#include "SecondaryLabel.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace browser {

ValuesPane::ValuesPane(QWidget *parent)
    : QWidget(parent)
    , m_title(new QLabel)
    , m_source(new SecondaryLabel)
    , m_selectedCount(new SecondaryLabel)
    , m_disk(new MessageBar)
    , m_error(new MessageBar)
    , m_note(new MessageBar)
    , m_table(new QTableView)
{
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    m_title->setFont(font);
    m_title->setObjectName(QStringLiteral("valuesTitle"));
    m_source->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_selectedCount->setObjectName(QStringLiteral("valuesSelectedCount"));
    m_selectedCount->setWordWrap(true);
    m_selectedCount->hide();
    m_error->setObjectName(QStringLiteral("valuesError"));
    m_note->setObjectName(QStringLiteral("valuesNote"));
    m_disk->setObjectName(QStringLiteral("valuesDisk"));

    m_filtered.setSourceModel(&m_model);
    m_table->setObjectName(QStringLiteral("values"));
    m_table->setAccessibleName(tr("Values"));
    m_table->setModel(&m_filtered);
    setUpTable(m_table);
    setUpSorting(m_table);
    setColumnWidths(m_table, {13, 24});
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked |
                             QAbstractItemView::AnyKeyPressed); // F2 is an action

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addWidget(m_title);
    layout->addWidget(m_source);
    layout->addWidget(m_selectedCount);
    layout->addSpacing(4);
    layout->addLayout(makeFilterRow());
    layout->addWidget(m_error);
    layout->addWidget(m_note);
    layout->addWidget(m_disk);
    layout->addWidget(m_table, 1);

    m_pages = new EmptyState(content);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_pages);

    connect(&m_model, &EntryModel::refused, this, &ValuesPane::showError);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ValuesPane::selectionChanged);
    connect(&m_filtered, &QAbstractItemModel::modelReset, this, &ValuesPane::selectionChanged);
    connect(m_disk, &MessageBar::activated, this, &ValuesPane::reloadWanted);
    // A program that writes a file may do so in pieces.
    constexpr int kQuietMs = 100;
    m_checkSoon.setSingleShot(true);
    m_checkSoon.setInterval(kQuietMs);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] { m_checkSoon.start(); });
    connect(&m_checkSoon, &QTimer::timeout, this, &ValuesPane::checkDisk);
    setDocument(nullptr);
}

QLayout *ValuesPane::makeFilterRow()
{
    m_filter = new QLineEdit;
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setAccessibleName(tr("Filter of the values"));
    m_filter->setPlaceholderText(tr("Filter (Ctrl+F)"));
    m_filter->setClearButtonEnabled(true);
    m_filterColumn = new QComboBox;
    m_filterColumn->setObjectName(QStringLiteral("filterColumn"));
    m_filterColumn->setAccessibleName(tr("What is filtered"));
    m_filterColumn->addItem(tr("Everywhere"), -1);
    m_filterColumn->addItem(tr("In sections"), int(EntryModel::Section));
    m_filterColumn->addItem(tr("In keys"), int(EntryModel::Key));
    m_filterColumn->addItem(tr("In values"), int(EntryModel::Value));
    auto *count = new RowCounts(m_table);
    count->setObjectName(QStringLiteral("valuesCount"));

    connect(m_filter, &QLineEdit::textChanged, &m_filtered,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(m_filterColumn, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this] { m_filtered.setFilterKeyColumn(m_filterColumn->currentData().toInt()); });

    auto row = std::make_unique<QHBoxLayout>();
    row->addWidget(m_filter, 1);
    row->addWidget(m_filterColumn);
    row->addWidget(count);
    return row.release(); // for the layout that it is added to
}

void ValuesPane::setDocument(Document *document)
{
    if (m_document)
        m_document->disconnect(this);
    m_document = document;
    if (m_document)
        connect(m_document, &Document::changed, this, &ValuesPane::update);
    m_model.setDocument(document);
    m_error->hide();
    if (!m_watcher.files().isEmpty())
        m_watcher.removePaths(m_watcher.files());
    checkDisk();
    if (document)
        m_pages->showContent();
    else
        m_pages->showWords(tr("No camera selected"),
                           tr("Select a camera on the left to see and edit its values."));
    update();
}

void ValuesPane::setSelectedCount(int cameras)
{
    m_selectedCount->setText(
        tr("One of the selected cameras: %L1. Ctrl+B changes all of them.").arg(cameras));
    m_selectedCount->setVisible(cameras > 1);
}

void ValuesPane::showError(const QString &text)
{
    m_error->showError(text);
}

void ValuesPane::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void ValuesPane::update()
{
    if (!m_document)
        return;
    const Configuration &configuration = m_document->configuration();
    m_title->setText(m_document->isModified() ? tr("%1 – edited").arg(m_document->title())
                                              : m_document->title());
    m_source->setText(configuration.sourcePath());
    m_note->showNote(m_document->readOnlyReason());
    m_error->hide(); // it was about what was there before
    if (m_disk->isVisible())
        checkDisk();
}

std::vector<EntryModel::Row> ValuesPane::selectedValues() const
{
    std::vector<int> rows;
    const QModelIndexList selected = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &index : selected)
        rows.push_back(m_filtered.mapToSource(index).row());
    std::sort(rows.begin(), rows.end());
    std::vector<EntryModel::Row> values;
    for (const int row : rows)
        values.push_back(m_model.row(row));
    return values;
}

void ValuesPane::select(const EntryModel::Row &value)
{
    const int row = m_model.find(value);
    const QModelIndex index = m_filtered.mapFromSource(m_model.index(row, EntryModel::Value));
    if (!index.isValid())
        return;
    m_table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                          QItemSelectionModel::Rows);
    m_table->scrollTo(index);
}

/** Notices that another program has changed the file that is shown. */
void ValuesPane::checkDisk()
{
    const Document::Disk disk = m_document ? m_document->disk() : Document::Disk::Same;
    if (m_document && !m_document->configuration().isArchiveEntry())
        m_watcher.addPath(m_document->configuration().path()); // another file may have the name
    switch (disk) {
    case Document::Disk::Same:
        m_disk->hide();
        break;
    case Document::Disk::Changed:
        m_disk->showChoice(tr("Another program has changed the file."), tr("Reload"));
        break;
    case Document::Disk::Missing:
        m_disk->showError(tr("The file is no longer there, or cannot be read."));
        break;
    }
}

} // namespace browser
