// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_FINDINGMODEL_H
#define BROWSER_FINDINGMODEL_H

#include "base/Finding.h"

#include <QtCore/QAbstractTableModel>

namespace browser {

/** What is wrong with a text, or worth knowing, one a row. */
class FindingModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Severity, Line, Message, ColumnCount };

    /** What rows are ordered by: errors before warnings. */
    static constexpr int SortRole = Qt::UserRole;

    explicit FindingModel(QObject *parent = nullptr);

    void setFindings(const vn::Findings &findings);
    const vn::Findings &findings() const { return m_findings; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    vn::Findings m_findings;
};

} // namespace browser

#endif // BROWSER_FINDINGMODEL_H
