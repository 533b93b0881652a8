// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "EntryModel.h"

#include <QtGui/QFont>

#include <utility>

namespace browser {

EntryModel::EntryModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void EntryModel::setDocument(Document *document)
{
    if (m_document)
        m_document->disconnect(this);
    beginResetModel();
    m_document = document;
    m_rows = document ? rowsOf(document->map()) : std::vector<Row>();
    endResetModel();
    if (m_document)
        connect(m_document, &Document::changed, this, &EntryModel::update);
}

int EntryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_document ? 0 : int(m_rows.size());
}

int EntryModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant EntryModel::data(const QModelIndex &index, int role) const
{
    if (!m_document || !index.isValid())
        return {};
    const Row &row = m_rows[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
        switch (index.column()) {
        case Section:
            return row.section;
        case Key:
            return row.key;
        case Value:
            return m_document->map().value(row.section, row.key, row.index);
        }
        break;
    case Qt::FontRole:
        if (m_document->isModified(row.section, row.key, row.index)) {
            QFont font;
            font.setBold(true);
            return font;
        }
        break;
    }
    return {};
}

bool EntryModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!m_document || role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    const Row row = m_rows[std::size_t(index.row())];
    const QString reason = m_document->setValue(row.section, row.key, row.index, value.toString());
    if (!reason.isNull())
        Q_EMIT refused(reason);
    return reason.isNull();
}

Qt::ItemFlags EntryModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool isEditable = m_document && index.column() == Value &&
                            m_document->isEditable(m_rows[std::size_t(index.row())].section);
    return isEditable ? flags | Qt::ItemIsEditable : flags;
}

QVariant EntryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Section:
        return tr("Section");
    case Key:
        return tr("Key");
    case Value:
        return tr("Value");
    }
    return {};
}

std::vector<EntryModel::Row> EntryModel::rowsOf(const vn::VanteroConfigMap &map)
{
    std::vector<Row> rows;
    const QStringList sections = map.allSectionKeys();
    for (const QString &name : sections) {
        const vn::VanteroConfigMap::Section &section = map.section(name);
        for (auto it = section.begin(); it != section.end(); ++it) {
            const bool isRepeated =
                !rows.empty() && rows.back().section == name && rows.back().key == it.key();
            rows.push_back({name, it.key(), isRepeated ? rows.back().index + 1 : 0});
        }
    }
    return rows;
}

/** An edit leaves the rows as they are; a file that was read anew may have others. */
void EntryModel::update()
{
    std::vector<Row> rows = rowsOf(m_document->map());
    if (rows == m_rows) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

} // namespace browser
