// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_DIFFERENCEMODEL_H
#define BROWSER_DIFFERENCEMODEL_H

#include "config/VanteroConfigMap.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QStringList>

#include <vector>

namespace browser {

/** The keys whose values differ between two configurations, one a row. */
class DifferenceModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Section, Key, First, Second, ColumnCount };

    explicit DifferenceModel(QObject *parent = nullptr);

    /** Compares two configurations, which have these titles. */
    void compare(const QString &firstTitle, const vn::VanteroConfigMap &first,
                 const QString &secondTitle, const vn::VanteroConfigMap &second);
    void clear();

    /** Shows all keys, or those only that differ. */
    void setShowsAll(bool showsAll);
    int differenceCount() const { return m_differences; }
    bool isDifferent(int row) const { return m_rows[std::size_t(row)].isDifferent; }
    /** All values of a cell, a line each, as in the text; empty where the key is missing. */
    QString wholeValue(int row, Column column) const;
    QString title(Column column) const { return column == First ? m_firstTitle : m_secondTitle; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        QString section;
        QString key;
        QStringList first; // newest first; empty where the key is missing
        QStringList second;
        bool isDifferent;
    };

    void makeRows();

    vn::VanteroConfigMap m_first;
    vn::VanteroConfigMap m_second;
    bool m_showsAll = false;
    int m_differences = 0;
    QString m_firstTitle;
    QString m_secondTitle;
    std::vector<Row> m_rows;
};

} // namespace browser

#endif // BROWSER_DIFFERENCEMODEL_H
