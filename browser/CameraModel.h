// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CAMERAMODEL_H
#define BROWSER_CAMERAMODEL_H

#include "Document.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QSet>

#include <memory>
#include <vector>

namespace browser {

/** The cameras that were found, one a row; owns their documents. */
class CameraModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Address, HostName, Firmware, Source, ColumnCount };
    /** What rows are ordered by: addresses and versions as numbers. */
    static constexpr int SortRole = Qt::UserRole;

    explicit CameraModel(QObject *parent = nullptr);
    ~CameraModel() override;

    /** Adds what is not there yet, and returns how many that were. */
    int add(const std::vector<Configuration> &configurations);
    void clear();

    /** Null for a row that is none. */
    Document *document(int row) const;
    std::vector<Document *> modifiedDocuments() const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /** A document was edited, saved or read anew. */
    void documentChanged(browser::Document *document);

private:
    void update(Document *document);

    std::vector<std::unique_ptr<Document>> m_documents;
    QSet<QString> m_known; // what is there, so that nothing is listed twice
};

} // namespace browser

#endif // BROWSER_CAMERAMODEL_H
