// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "CameraModel.h"

#include "version/VanteroSoftwareVersion.h"

#include <QtGui/QFont>

#include <algorithm>

namespace browser {

namespace {

QString identity(const Configuration &configuration)
{
    return configuration.path() + QChar(0) + QString::number(configuration.entryIndex());
}

/** Numbers of three digits, so that 10.14.7.21 comes before 10.14.7.121. */
QString addressOrder(const QString &address)
{
    QString order;
    const QStringList parts = address.split(QLatin1Char('.'));
    for (const QString &part : parts)
        order += part.rightJustified(3, QLatin1Char('0')) + QLatin1Char('.');
    return order;
}

QString versionOrder(const QString &text)
{
    const vn::VanteroSoftwareVersion version(text);
    QString order;
    for (int i = 0; i < 6; ++i)
        order += QString::number(version[i]).rightJustified(6, QLatin1Char('0'));
    return order;
}

} // namespace

CameraModel::CameraModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

CameraModel::~CameraModel() = default;

int CameraModel::add(const std::vector<Configuration> &configurations)
{
    std::vector<Row> added;
    const int first = rowCount();
    for (const Configuration &configuration : configurations) {
        const QString key = identity(configuration);
        if (m_known.contains(key))
            continue;
        m_known.insert(key);
        const int row = first + int(added.size());
        auto document = std::make_unique<Document>(configuration, m_undo);
        m_rowOf.insert(document.get(), row);
        connect(document.get(), &Document::changed, this, [this, row] { update(row); });
        connect(document.get(), &Document::edited, this,
                [this, edited = document.get()] { Q_EMIT documentEdited(edited); });
        added.push_back({std::move(document), addressOrder(configuration.summary().address),
                         versionOrder(configuration.summary().firmware)});
    }
    if (added.empty())
        return 0;
    const int count = int(added.size());
    beginInsertRows(QModelIndex(), first, first + count - 1);
    std::move(added.begin(), added.end(), std::back_inserter(m_rows));
    endInsertRows();
    return count;
}

void CameraModel::clear()
{
    m_undo.clear(); // its steps are of these documents
    beginResetModel();
    m_rows.clear();
    m_rowOf.clear();
    m_modified.clear();
    m_known.clear();
    endResetModel();
}

Document *CameraModel::document(int row) const
{
    return row >= 0 && row < rowCount() ? m_rows[std::size_t(row)].document.get() : nullptr;
}

int CameraModel::rowOf(const Document *document) const
{
    return m_rowOf.value(document, -1);
}

std::vector<Document *> CameraModel::modifiedDocuments() const
{
    QList<int> rows = m_modified.values();
    std::sort(rows.begin(), rows.end());
    std::vector<Document *> result;
    for (const int row : qAsConst(rows))
        result.push_back(document(row));
    return result;
}

int CameraModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int CameraModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant CameraModel::data(const QModelIndex &index, int role) const
{
    const Document *shown = document(index.row());
    if (!shown)
        return {};
    const Configuration &configuration = shown->configuration();
    const Summary &summary = shown->summary();
    switch (role) {
    case Qt::DisplayRole:
        switch (index.column()) {
        case Address:
            return summary.address.isEmpty() ? tr("unknown") : summary.address;
        case HostName:
            return summary.hostName;
        case Firmware:
            return summary.firmware;
        case Source:
            return shown->isModified() ? tr("%1 (edited)").arg(configuration.sourceName())
                                       : configuration.sourceName();
        }
        break;
    case SortRole:
        if (index.column() == Address)
            return m_rows[std::size_t(index.row())].addressOrder;
        if (index.column() == Firmware)
            return m_rows[std::size_t(index.row())].versionOrder;
        return data(index, Qt::DisplayRole);
    case Qt::ToolTipRole:
        return index.column() == Source ? configuration.sourcePath() : data(index, Qt::DisplayRole);
    case Qt::FontRole:
        if (shown->isModified()) {
            QFont font;
            font.setBold(true);
            return font;
        }
        break;
    }
    return {};
}

QVariant CameraModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Address:
        return tr("Factory address");
    case HostName:
        return tr("Host name");
    case Firmware:
        return tr("Firmware");
    case Source:
        return tr("Source");
    }
    return {};
}

void CameraModel::update(int row)
{
    Row &changed = m_rows[std::size_t(row)];
    changed.addressOrder = addressOrder(changed.document->summary().address);
    changed.versionOrder = versionOrder(changed.document->summary().firmware);
    if (changed.document->isModified())
        m_modified.insert(row);
    else
        m_modified.remove(row);
    Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
    Q_EMIT documentChanged(changed.document.get());
}

} // namespace browser
