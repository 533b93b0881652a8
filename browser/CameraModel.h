// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CAMERAMODEL_H
#define BROWSER_CAMERAMODEL_H

#include "Document.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtWidgets/QUndoStack>

#include <memory>
#include <vector>

namespace browser {

/** The cameras that were found, one a row; owns their documents and what was done to them. */
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

    QUndoStack &undoStack() { return m_undo; }

    /** Null for a row that is none. */
    Document *document(int row) const;
    /** -1 for a document that is not here. */
    int rowOf(const Document *document) const;
    /** In the order of rows. */
    std::vector<Document *> modifiedDocuments() const;
    bool isModified() const { return !m_modified.isEmpty(); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /** A document was edited, saved or read anew. */
    void documentChanged(browser::Document *document);
    /** An edit of it was done, undone or done again. */
    void documentEdited(browser::Document *document);

private:
    struct Row
    {
        std::unique_ptr<Document> document;
        QString addressOrder; // kept, as sorting asks often
        QString versionOrder;
    };

    void update(int row);

    QUndoStack m_undo;
    std::vector<Row> m_rows;
    QHash<const Document *, int> m_rowOf;
    QSet<int> m_modified;  // rows
    QSet<QString> m_known; // what is there, so that nothing is listed twice
};

} // namespace browser

#endif // BROWSER_CAMERAMODEL_H
