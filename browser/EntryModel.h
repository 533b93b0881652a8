// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_ENTRYMODEL_H
#define BROWSER_ENTRYMODEL_H

#include "Document.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QPointer>

#include <vector>

namespace browser {

/** The values of one document, one a row, in the order of the text; editable where the document is.
 */
class EntryModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Section, Key, Value, ColumnCount };

    /** One value, or a section that has none. */
    struct Row
    {
        QString section;
        QString key; // null for a section without values
        QString value;
        int index = 0; // among the values of the key, from the newest
        int line = 0;  // of the text, from 1
        bool isModified = false;

        bool isSameValue(const Row &other) const
        {
            return section == other.section && key == other.key && index == other.index;
        }
    };

    explicit EntryModel(QObject *parent = nullptr);

    /** Shows @p document; null shows nothing. */
    void setDocument(Document *document);

    const Row &row(int number) const { return m_rows[std::size_t(number)]; }
    /** The number of the row with that value; -1 where it is not there. */
    int find(const Row &row) const;
    QStringList sections() const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /** An edit was not possible. */
    void refused(const QString &reason);

private:
    std::vector<Row> makeRows() const;
    void update();

    QPointer<Document> m_document;
    std::vector<Row> m_rows;
};

} // namespace browser

#endif // BROWSER_ENTRYMODEL_H
