// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_TABLELOOK_H
#define BROWSER_TABLELOOK_H

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

namespace browser {

/** Gives @p table the look and the habits that all tables share. */
inline void setUpTable(QTableView *table)
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

/** Sets the widths of the first columns in characters; the last one takes what is left. */
inline void setColumnWidths(QTableView *table, std::initializer_list<int> characters)
{
    int column = 0;
    for (const int count : characters)
        table->setColumnWidth(column++, count * table->fontMetrics().averageCharWidth() + 16);
}

} // namespace browser

#endif // BROWSER_TABLELOOK_H
