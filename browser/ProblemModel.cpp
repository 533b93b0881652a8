// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ProblemModel.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace browser {

ProblemModel::ProblemModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void ProblemModel::add(const std::vector<Problem> &problems)
{
    if (problems.empty())
        return;
    const int first = rowCount();
    beginInsertRows(QModelIndex(), first, first + int(problems.size()) - 1);
    m_problems.insert(m_problems.end(), problems.begin(), problems.end());
    endInsertRows();
}

void ProblemModel::clear()
{
    beginResetModel();
    m_problems.clear();
    endResetModel();
}

int ProblemModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_problems.size());
}

int ProblemModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant ProblemModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Problem &problem = m_problems[std::size_t(index.row())];
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case File:
        return role == Qt::DisplayRole ? QFileInfo(problem.file).fileName()
                                       : QDir::toNativeSeparators(problem.file);
    case Place:
        return problem.place;
    case Reason:
        return problem.reason;
    }
    return {};
}

QVariant ProblemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case File:
        return tr("File");
    case Place:
        return tr("Place");
    case Reason:
        return tr("Reason");
    }
    return {};
}

} // namespace browser
