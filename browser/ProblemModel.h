// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_PROBLEMMODEL_H
#define BROWSER_PROBLEMMODEL_H

#include "Problem.h"

#include <QtCore/QAbstractTableModel>

#include <vector>

namespace browser {

/** What could not be read, in the order of finding out. */
class ProblemModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { File, Place, Reason, ColumnCount };

    explicit ProblemModel(QObject *parent = nullptr);

    void add(const std::vector<Problem> &problems);
    void clear();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<Problem> m_problems;
};

} // namespace browser

#endif // BROWSER_PROBLEMMODEL_H
