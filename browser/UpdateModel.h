// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_UPDATEMODEL_H
#define BROWSER_UPDATEMODEL_H

#include "CameraModel.h"
#include "ModelNames.h"
#include "UpdateVerdict.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>

namespace browser {

/** Whether each camera may be updated to one version. The rows are those of the
 * cameras. */
class UpdateModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Address, Model, Firmware, Step, Answer, Reason, ColumnCount };

    /** @p cameras must outlive this model. */
    explicit UpdateModel(const CameraModel &cameras, QObject *parent = nullptr);

    const QString &target() const { return m_target; }
    void setTarget(const QString &version);

    /** A version that is at hand, for ways out. */
    void addAvailable(const QString &version);
    const QList<vn::VanteroSoftwareVersion> &available() const { return m_available; }

    /** ModelNames::readCsv() */
    int readModels(const QByteArray &csv);

    /** The model name of the camera in that row. No configuration tells it: the
     * user does. */
    QString modelName(int row) const;
    UpdateVerdict verdict(int row) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void judgeAnew();

    const CameraModel &m_cameras;
    QString m_target;
    ModelNames m_modelNames;
    QList<vn::VanteroSoftwareVersion> m_available;
    mutable QHash<QString, UpdateVerdict> m_verdicts; // by model and firmware, for one target
};

} // namespace browser

#endif // BROWSER_UPDATEMODEL_H
