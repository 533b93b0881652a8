// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "DifferenceModel.h"

#include "Colors.h"

#include "config/ConfigDiff.h"

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtGui/QBrush>

#include <algorithm>

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
    m_first = first;
    m_second = second;
    makeRows();
    endResetModel();
}

void DifferenceModel::setShowsAll(bool showsAll)
{
    beginResetModel();
    m_showsAll = showsAll;
    makeRows();
    endResetModel();
}

void DifferenceModel::makeRows()
{
    m_rows.clear();
    m_differences = 0;
    QHash<QPair<QString, QString>, bool> differing;
    for (const vn::ConfigSectionDifference &section : vn::configDiff(m_first, m_second))
        for (const vn::ConfigKeyDifference &key : section.keys) {
            // A key without "=" looks like one with an empty value.
            if (key.kind == vn::ConfigKeyDifference::Kind::NullAgainstEmpty)
                continue;
            ++m_differences;
            differing.insert({section.section, key.key}, true);
            if (!m_showsAll)
                m_rows.push_back({section.section, key.key, key.first, key.second, true});
        }
    if (!m_showsAll)
        return;
    QMap<QString, QMap<QString, bool>> keys; // ascending, as the differences are
    for (const vn::VanteroConfigMap *map : {&m_first, &m_second}) {
        const QStringList sections = map->allSectionKeys();
        for (const QString &section : sections) {
            const QStringList names = map->section(section).uniqueKeys();
            for (const QString &key : names)
                keys[section][key] = differing.contains({section, key});
        }
    }
    for (auto section = keys.cbegin(); section != keys.cend(); ++section)
        for (auto key = section->cbegin(); key != section->cend(); ++key)
            m_rows.push_back({section.key(), key.key(), m_first.values(section.key(), key.key()),
                              m_second.values(section.key(), key.key()), key.value()});
}

QString DifferenceModel::wholeValue(int row, Column column) const
{
    const Row &shown = m_rows[std::size_t(row)];
    QStringList values = column == First ? shown.first : shown.second;
    std::reverse(values.begin(), values.end());
    return values.join(QLatin1Char('\n'));
}

void DifferenceModel::clear()
{
    beginResetModel();
    m_first = {};
    m_second = {};
    makeRows();
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
            return values.isEmpty() ? tr("(missing)")
                                    : wholeValue(index.row(), Column(index.column()))
                                          .replace(QLatin1Char('\n'), QStringLiteral("  |  "));
        return index.column() == Section ? row.section : row.key;
    case Qt::BackgroundRole:
        if (!isValue || !row.isDifferent)
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
