// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_TABLELOOK_H
#define BROWSER_TABLELOOK_H

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QLabel>

#include <initializer_list>

class QTableView;
class QTreeView;

namespace browser {

/** Gives @p table the look and the habits that all tables share. */
void setUpTable(QTableView *table);

/** Sorts by a click on a heading; its menu brings the order of the model back, which is the first.
 */
void setUpSorting(QTableView *table);
void setUpSorting(QTreeView *tree);

/** Sets the widths of the first columns in characters; the last one takes what is left. */
void setColumnWidths(QTableView *table, std::initializer_list<int> characters);

/** Rows in the order of texts in which numbers count as such: 9 before 10. */
class NaturalOrder : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit NaturalOrder(QObject *parent = nullptr);

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
};

/** Whether @p a stands before @p b where numbers count as such; the case of letters does not. */
bool naturallyBefore(const QString &a, const QString &b);

/** "12 of 44, 2 selected": of the rows of a table, and of those behind its filter. */
class RowCounts : public QLabel
{
    Q_OBJECT

public:
    /** @p table has its model, a filter. */
    explicit RowCounts(QTableView *table, QWidget *parent = nullptr);

private:
    void update();

    QTableView *m_table;
};

} // namespace browser

#endif // BROWSER_TABLELOOK_H
