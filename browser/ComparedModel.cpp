// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ComparedModel.h"

#include "Colors.h"

#include <QtGui/QBrush>

#include <utility>

namespace browser {

ComparedModel::ComparedModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void ComparedModel::setCameras(std::vector<ComparedCamera> cameras)
{
    beginResetModel();
    m_cameras = std::move(cameras);
    endResetModel();
}

int ComparedModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_cameras.size());
}

int ComparedModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant ComparedModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const ComparedCamera &shown = camera(index.row());
    if (role == Qt::BackgroundRole && index.column() == State) {
        switch (shown.state) {
        case ComparedCamera::State::Same:
            break;
        case ComparedCamera::State::Different:
            return QBrush(colors::notice());
        case ComparedCamera::State::OnlyInFirst:
            return QBrush(colors::bad());
        case ComparedCamera::State::OnlyInSecond:
            return QBrush(colors::good());
        }
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case Address:
        return shown.address;
    case State:
        switch (shown.state) {
        case ComparedCamera::State::Same:
            return tr("same");
        case ComparedCamera::State::Different:
            return tr("different");
        case ComparedCamera::State::OnlyInFirst:
            return tr("only in the first");
        case ComparedCamera::State::OnlyInSecond:
            return tr("only in the second");
        }
        break;
    case Differences:
        return shown.state == ComparedCamera::State::Different ? QVariant(shown.differences)
                                                               : QVariant();
    }
    return {};
}

QVariant ComparedModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Address:
        return tr("Factory address");
    case State:
        return tr("State");
    case Differences:
        return tr("Keys");
    }
    return {};
}

} // namespace browser
