// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "EntryModel.h"

#include "config/VanteroConfigFile.h"

#include <QtCore/QHash>
#include <QtCore/QPair>
#include <QtGui/QFont>

#include <algorithm>
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
    m_rows = makeRows();
    endResetModel();
    if (m_document)
        connect(m_document, &Document::changed, this, &EntryModel::update);
}

int EntryModel::find(const Row &row) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&](const Row &each) { return each.isSameValue(row); });
    return found == m_rows.end() ? -1 : int(found - m_rows.begin());
}

QStringList EntryModel::sections() const
{
    QStringList names;
    for (const Row &row : m_rows)
        if (row.section != vn::VanteroConfigFile::HEAD_SECTION && !names.contains(row.section))
            names += row.section;
    return names;
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
    const Row &shown = row(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
        switch (index.column()) {
        case Section:
            return shown.section;
        case Key:
            return shown.key.isNull() && role == Qt::DisplayRole ? tr("(no values)") : shown.key;
        case Value:
            return shown.value;
        }
        break;
    case Qt::FontRole:
        if (shown.isModified) {
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
    const Row edited = row(index.row()); // the edit replaces the rows
    const QString text = value.toString();
    if (text == edited.value)
        return true;
    const QString reason =
        m_document->edit(edits::setValue(edited.section, edited.key, text, edited.index),
                         tr("Change of %1").arg(edited.key));
    if (!reason.isNull())
        Q_EMIT refused(reason);
    return reason.isNull();
}

Qt::ItemFlags EntryModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!m_document || !index.isValid() || index.column() != Value)
        return flags;
    const Row &shown = row(index.row());
    const bool isEditable = !shown.key.isNull() && m_document->isEditable(shown.section);
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

std::vector<EntryModel::Row> EntryModel::makeRows() const
{
    using vn::VanteroConfigText;
    std::vector<Row> rows;
    if (!m_document)
        return rows;
    const VanteroConfigText::Form form = m_document->configuration().form();
    const VanteroConfigText text(m_document->text(), form);
    const VanteroConfigText saved =
        m_document->isModified() ? VanteroConfigText(m_document->configuration().text(), form)
                                 : text;
    const VanteroConfigText::Outline outline = text.outline();
    const auto add = [&](const QString &section, const VanteroConfigText::Entry &entry) {
        rows.push_back({section, entry.key, entry.value, 0, entry.range.line, false});
    };
    for (const VanteroConfigText::Entry &value : outline.header.values)
        add(vn::VanteroConfigFile::HEAD_SECTION, value);
    for (const VanteroConfigText::Section &section : outline.sections) {
        const std::size_t before = rows.size();
        for (const VanteroConfigText::Block &block : section.blocks)
            for (const VanteroConfigText::Entry &entry : block.entries)
                add(section.name, entry);
        if (rows.size() == before)
            rows.push_back(
                {section.name, QString(), QString(), 0, section.blocks.first().range.line, false});
    }
    // The last line of a key has its newest value.
    QHash<QPair<QString, QString>, int> counts;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        row->index = counts[{row->section, row->key}]++;
        if (m_document->isModified()) {
            const QStringList values = saved.values(row->section, row->key);
            row->isModified = !row->key.isNull() &&
                              (row->index >= values.size() || values.at(row->index) != row->value);
        }
    }
    return rows;
}

/** Most edits leave the rows as they are; others, and a file that was read anew, do not. */
void EntryModel::update()
{
    std::vector<Row> rows = makeRows();
    const bool isSame = std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(),
                                   [](const Row &a, const Row &b) { return a.isSameValue(b); });
    if (!isSame)
        beginResetModel();
    m_rows = std::move(rows);
    if (!isSame)
        endResetModel();
    else if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

} // namespace browser
