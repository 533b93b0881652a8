// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "DifferenceModel.h"

#include "Colors.h"

#include "config/ConfigDiff.h"

#include <QtGui/QBrush>

namespace browser {

DifferenceModel::DifferenceModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void DifferenceModel::compare(const QString &firstTitle, const vn::VanteroConfigMap &first,
                              const QString &secondTitle, const vn::VanteroConfigMap &second)
{
    beginResetModel();
    m_firstTitle = firstTitle;
    m_secondTitle = secondTitle;
    m_rows.clear();
    for (const vn::ConfigSectionDifference &section : vn::configDiff(first, second))
        for (const vn::ConfigKeyDifference &key : section.keys)
            // A key without "=" looks like one with an empty value.
            if (key.kind != vn::ConfigKeyDifference::Kind::NullAgainstEmpty)
                m_rows.push_back({section.section, key.key, key.first, key.second});
    endResetModel();
}

void DifferenceModel::clear()
{
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

int DifferenceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int DifferenceModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant DifferenceModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows[std::size_t(index.row())];
    const bool isValue = index.column() == First || index.column() == Second;
    const QStringList &values = index.column() == First ? row.first : row.second;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        if (isValue)
            return values.isEmpty()
                       ? tr("(missing)")
                       : values.join(QLatin1String(role == Qt::DisplayRole ? "  |  " : "\n"));
        return index.column() == Section ? row.section : row.key;
    case Qt::BackgroundRole:
        if (!isValue)
            break;
        if (row.first.isEmpty() || row.second.isEmpty())
            return QBrush(values.isEmpty() ? colors::bad() : colors::good());
        return QBrush(colors::notice());
    }
    return {};
}

QVariant DifferenceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Section:
        return tr("Section");
    case Key:
        return tr("Key");
    case First:
        return m_firstTitle;
    case Second:
        return m_secondTitle;
    }
    return {};
}

} // namespace browser
