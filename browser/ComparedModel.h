// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_COMPAREDMODEL_H
#define BROWSER_COMPAREDMODEL_H

#include "FolderComparison.h"

#include <QtCore/QAbstractTableModel>

namespace browser {

/** The cameras of two folders, one a row. */
class ComparedModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Address, State, Differences, ColumnCount };

    explicit ComparedModel(QObject *parent = nullptr);

    void setCameras(std::vector<ComparedCamera> cameras);
    const ComparedCamera &camera(int row) const { return m_cameras[std::size_t(row)]; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ComparedCamera> m_cameras;
};

} // namespace browser

#endif // BROWSER_COMPAREDMODEL_H
