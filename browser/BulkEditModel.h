// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_BULKEDITMODEL_H
#define BROWSER_BULKEDITMODEL_H

#include "Document.h"
#include "SlicedWork.h"

#include <QtCore/QAbstractTableModel>

#include <vector>

namespace browser {

/** What one edit would do to each of some cameras, worked out before anything is done. */
class BulkEditModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Camera, Before, After, Note, ColumnCount };

    enum class Kind { SetValue, AddValue, RemoveKey };

    struct Change
    {
        Kind kind = Kind::SetValue;
        QString section;
        QString key;
        QString value;

        /** Which is called @p name in menus. */
        Edit edit() const;
        QString name() const;
    };

    /** The documents must outlive this model. */
    explicit BulkEditModel(std::vector<Document *> documents, QObject *parent = nullptr);

    /** Works out the changes bit by bit. */
    void setChange(const Change &change);
    bool isReady() const { return !m_work.isRunning(); }
    int changeCount() const { return m_changes; }
    int refusalCount() const { return m_refusals; }

    /** Does what is shown. Returns how many cameras have changed. */
    int apply();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void ready();

private:
    struct Row
    {
        QString before;
        QString after;
        QString note; // why it is not changed; null where it is
    };

    bool workOutNext();

    std::vector<Document *> m_documents;
    Change m_change;
    std::vector<Row> m_rows; // of the first documents, while it works
    int m_changes = 0;
    int m_refusals = 0;
    SlicedWork m_work;
};

} // namespace browser

#endif // BROWSER_BULKEDITMODEL_H
