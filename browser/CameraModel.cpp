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
    return configuration.path + QChar(0) + QString::number(configuration.entryIndex);
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
    std::vector<std::unique_ptr<Document>> added;
    for (const Configuration &configuration : configurations) {
        const QString key = identity(configuration);
        if (m_known.contains(key))
            continue;
        m_known.insert(key);
        auto document = std::make_unique<Document>(configuration);
        connect(document.get(), &Document::changed, this,
                [this, changed = document.get()] { update(changed); });
        added.push_back(std::move(document));
    }
    if (added.empty())
        return 0;
    const int first = rowCount();
    const int count = int(added.size());
    beginInsertRows(QModelIndex(), first, first + count - 1);
    std::move(added.begin(), added.end(), std::back_inserter(m_documents));
    endInsertRows();
    return count;
}

void CameraModel::clear()
{
    beginResetModel();
    m_documents.clear();
    m_known.clear();
    endResetModel();
}

Document *CameraModel::document(int row) const
{
    return row >= 0 && row < rowCount() ? m_documents[std::size_t(row)].get() : nullptr;
}

std::vector<Document *> CameraModel::modifiedDocuments() const
{
    std::vector<Document *> result;
    for (const auto &document : m_documents)
        if (document->isModified())
            result.push_back(document.get());
    return result;
}

int CameraModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_documents.size());
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
    switch (role) {
    case Qt::DisplayRole:
        switch (index.column()) {
        case Address:
            return configuration.address().isEmpty() ? tr("unknown") : configuration.address();
        case HostName:
            return configuration.hostName();
        case Firmware:
            return configuration.firmware();
        case Source:
            return shown->isModified() ? tr("%1 (edited)").arg(configuration.sourceName())
                                       : configuration.sourceName();
        }
        break;
    case SortRole:
        if (index.column() == Address)
            return addressOrder(configuration.address());
        if (index.column() == Firmware)
            return versionOrder(configuration.firmware());
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

void CameraModel::update(Document *document)
{
    const auto found = std::find_if(m_documents.begin(), m_documents.end(),
                                    [&](const auto &each) { return each.get() == document; });
    const int row = int(found - m_documents.begin());
    Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
    Q_EMIT documentChanged(document);
}

} // namespace browser
