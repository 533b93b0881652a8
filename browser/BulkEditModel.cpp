// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "BulkEditModel.h"

#include "Colors.h"

#include <QtGui/QBrush>

#include <utility>

namespace browser {

namespace {

QString valuesOf(const QString &text, const QString &section, const QString &key)
{
    QStringList values = vn::VanteroConfigText(text).values(section, key);
    std::reverse(values.begin(), values.end()); // as in the text
    return values.join(QStringLiteral("  |  "));
}

} // namespace

Edit BulkEditModel::Change::edit() const
{
    switch (kind) {
    case Kind::SetValue:
        return edits::setValue(section, key, value);
    case Kind::AddValue:
        return edits::addValue(section, key, value);
    case Kind::RemoveKey:
        break;
    }
    return edits::removeKey(section, key);
}

QString BulkEditModel::Change::name() const
{
    return BulkEditModel::tr("Change of %1 in several cameras").arg(key);
}

BulkEditModel::BulkEditModel(std::vector<Document *> documents, QObject *parent)
    : QAbstractTableModel(parent)
    , m_documents(std::move(documents))
{
    connect(&m_work, &SlicedWork::finished, this, &BulkEditModel::ready);
}

void BulkEditModel::setChange(const Change &change)
{
    m_work.cancel();
    beginResetModel();
    m_change = change;
    m_rows.clear();
    m_changes = 0;
    m_refusals = 0;
    endResetModel();
    if (change.section.isEmpty() || change.key.isEmpty())
        Q_EMIT ready();
    else
        m_work.start([this] { return workOutNext(); });
}

bool BulkEditModel::workOutNext()
{
    const int row = int(m_rows.size());
    if (row == int(m_documents.size()))
        return false;
    const Document &document = *m_documents[std::size_t(row)];
    const QString before = document.text();
    Row result;
    result.before = valuesOf(before, m_change.section, m_change.key);
    EditResult edited{before, document.isEditable(m_change.section) ? QString()
                                                                    : tr("it cannot be edited")};
    if (edited)
        edited = m_change.edit()(before);
    if (!edited) {
        result.note = edited.reason;
        ++m_refusals;
    } else if (edited.text == before) {
        result.note = tr("already so");
    } else {
        result.after = valuesOf(edited.text, m_change.section, m_change.key);
        ++m_changes;
    }
    beginInsertRows(QModelIndex(), row, row);
    m_rows.push_back(std::move(result));
    endInsertRows();
    return true;
}

int BulkEditModel::apply()
{
    int changed = 0;
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        if (m_rows[row].note.isNull() &&
            m_documents[row]->edit(m_change.edit(), m_change.name()).isNull())
            ++changed;
    return changed;
}

int BulkEditModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int BulkEditModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant BulkEditModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        switch (index.column()) {
        case Camera:
            return m_documents[std::size_t(index.row())]->title();
        case Before:
            return row.before;
        case After:
            return row.after;
        case Note:
            return row.note;
        }
        break;
    case Qt::BackgroundRole:
        if (index.column() == After && row.note.isNull())
            return QBrush(colors::good());
        break;
    }
    return {};
}

QVariant BulkEditModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Camera:
        return tr("Camera");
    case Before:
        return tr("Before");
    case After:
        return tr("After");
    case Note:
        return tr("Not changed, as");
    }
    return {};
}

} // namespace browser
