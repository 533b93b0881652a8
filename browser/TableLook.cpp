// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "TableLook.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

namespace browser {

namespace {

template <typename View>
void setUpSortingOf(View *view, QHeaderView *header)
{
    header->setSortIndicator(-1, Qt::AscendingOrder);
    view->setSortingEnabled(true);
    auto *original = new QAction(QLabel::tr("Original Order"), header);
    QObject::connect(original, &QAction::triggered, view,
                     [view] { view->sortByColumn(-1, Qt::AscendingOrder); });
    header->addAction(original);
    header->setContextMenuPolicy(Qt::ActionsContextMenu);
}

} // namespace

void setUpTable(QTableView *table)
{
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTextElideMode(Qt::ElideMiddle); // the ends of names tell more than their middles
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setTabKeyNavigation(false); // Tab leaves the table, as it does elsewhere
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 8);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setStretchLastSection(true);
}

void setUpSorting(QTableView *table)
{
    setUpSortingOf(table, table->horizontalHeader());
}

void setUpSorting(QTreeView *tree)
{
    setUpSortingOf(tree, tree->header());
}

void setColumnWidths(QTableView *table, std::initializer_list<int> characters)
{
    int column = 0;
    for (const int count : characters)
        table->setColumnWidth(column++, count * table->fontMetrics().averageCharWidth() + 16);
}

NaturalOrder::NaturalOrder(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    setFilterCaseSensitivity(Qt::CaseInsensitive);
    setFilterKeyColumn(-1);
}

bool NaturalOrder::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    return naturallyBefore(left.data(sortRole()).toString(), right.data(sortRole()).toString());
}

bool naturallyBefore(const QString &a, const QString &b)
{
    const auto numberAt = [](const QString &text, int from) {
        int end = from;
        while (end < text.size() && text.at(end).isDigit())
            ++end;
        return text.midRef(from, end - from);
    };
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        if (!a.at(i).isDigit() || !b.at(j).isDigit()) {
            const QChar x = a.at(i++).toCaseFolded();
            const QChar y = b.at(j++).toCaseFolded();
            if (x != y)
                return x < y;
            continue;
        }
        while (i < a.size() && a.at(i) == QLatin1Char('0'))
            ++i;
        while (j < b.size() && b.at(j) == QLatin1Char('0'))
            ++j;
        const QStringRef x = numberAt(a, i);
        const QStringRef y = numberAt(b, j);
        if (x.size() != y.size())
            return x.size() < y.size();
        if (const int order = x.compare(y))
            return order < 0;
        i += x.size();
        j += y.size();
    }
    return a.size() - i < b.size() - j;
}

RowCounts::RowCounts(QTableView *table, QWidget *parent)
    : QLabel(parent)
    , m_table(table)
{
    const QAbstractItemModel *model = table->model();
    connect(model, &QAbstractItemModel::modelReset, this, &RowCounts::update);
    connect(model, &QAbstractItemModel::rowsInserted, this, &RowCounts::update);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &RowCounts::update);
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &RowCounts::update);
    update();
}

void RowCounts::update()
{
    const auto *filter = qobject_cast<const QSortFilterProxyModel *>(m_table->model());
    const int shown = filter->rowCount();
    const int all = filter->sourceModel() ? filter->sourceModel()->rowCount() : 0;
    int selected = 0;
    const QItemSelection ranges = m_table->selectionModel()->selection();
    for (const QItemSelectionRange &range : ranges)
        selected += range.height();
    const QString count = tr("%1 of %2").arg(locale().toString(shown), locale().toString(all));
    setText(selected == 0 ? count : tr("%1, %2 selected").arg(count, locale().toString(selected)));
}

} // namespace browser
