// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "UpdateModel.h"

#include "Colors.h"

#include <QtGui/QBrush>

namespace browser {

UpdateModel::UpdateModel(const CameraModel &cameras, QObject *parent)
    : QAbstractTableModel(parent)
    , m_cameras(cameras)
{
    connect(&cameras, &QAbstractItemModel::rowsAboutToBeInserted, this,
            [this](const QModelIndex &, int first, int last) {
                beginInsertRows(QModelIndex(), first, last);
            });
    connect(&cameras, &QAbstractItemModel::rowsInserted, this, [this] { endInsertRows(); });
    connect(&cameras, &QAbstractItemModel::modelAboutToBeReset, this,
            [this] { beginResetModel(); });
    connect(&cameras, &QAbstractItemModel::modelReset, this, [this] { endResetModel(); });
    connect(&cameras, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) {
                Q_EMIT dataChanged(index(first.row(), 0), index(last.row(), ColumnCount - 1));
            });
}

void UpdateModel::setTarget(const QString &version)
{
    m_target = version.trimmed();
    judgeAnew();
}

void UpdateModel::addAvailable(const QString &version)
{
    m_available += vn::VanteroSoftwareVersion(version);
    judgeAnew();
}

int UpdateModel::readModels(const QByteArray &csv)
{
    const int count = m_modelNames.readCsv(csv);
    judgeAnew();
    return count;
}

void UpdateModel::judgeAnew()
{
    m_verdicts.clear();
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

QString UpdateModel::modelName(int row) const
{
    const Document *document = m_cameras.document(row);
    return document ? m_modelNames.at(document->summary().address) : QString();
}

UpdateVerdict UpdateModel::verdict(int row) const
{
    const Document *document = m_cameras.document(row);
    const QString firmware = document ? document->summary().firmware : QString();
    const QString model = modelName(row);
    const QString key = model + QChar(0) + firmware;
    const auto known = m_verdicts.constFind(key);
    if (known != m_verdicts.constEnd())
        return *known;
    return *m_verdicts.insert(key, judgeUpdate(model, firmware, m_target, m_available));
}

int UpdateModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_cameras.rowCount();
}

int UpdateModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant UpdateModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = index.row();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
        switch (index.column()) {
        case Address:
            return m_cameras.index(row, CameraModel::Address).data();
        case Model:
            if (role == Qt::ToolTipRole)
                return tr("Double-click to enter the model: no configuration tells it");
            return role == Qt::DisplayRole && modelName(row).isEmpty() ? tr("not known")
                                                                       : modelName(row);
        case Firmware:
            return m_cameras.index(row, CameraModel::Firmware).data();
        case Step:
            return verdict(row).step;
        case Answer:
            return verdict(row).answerText();
        case Reason:
            return verdict(row).reason;
        }
        break;
    case Qt::BackgroundRole:
        if (index.column() != Answer)
            break;
        switch (verdict(row).answer) {
        case UpdateVerdict::Answer::Safe:
            return QBrush(colors::good());
        case UpdateVerdict::Answer::NotSafe:
            return QBrush(colors::bad());
        case UpdateVerdict::Answer::Depends:
        case UpdateVerdict::Answer::Unknown:
            return QBrush(colors::notice());
        }
        break;
    }
    return {};
}

bool UpdateModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const Document *document = m_cameras.document(index.row());
    if (!document || index.column() != Model || role != Qt::EditRole)
        return false;
    m_modelNames.set(document->summary().address, value.toString().trimmed());
    judgeAnew(); // the same camera may stand in several rows
    return true;
}

Qt::ItemFlags UpdateModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == Model ? flags | Qt::ItemIsEditable : flags;
}

QVariant UpdateModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Address:
        return tr("Factory address");
    case Model:
        return tr("Model");
    case Firmware:
        return tr("Firmware");
    case Step:
        return tr("Step");
    case Answer:
        return tr("Verdict");
    case Reason:
        return tr("Why");
    }
    return {};
}

} // namespace browser
