// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CAMERAFILTER_H
#define BROWSER_CAMERAFILTER_H

#include "CameraModel.h"
#include "SlicedWork.h"
#include "ValueQuery.h"

#include <QtCore/QSortFilterProxyModel>

#include <vector>

namespace browser {

/** The cameras that a filter lets through, in order. Values are looked into bit by bit. */
class CameraFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /** @p cameras must outlive this. */
    explicit CameraFilter(CameraModel &cameras, QObject *parent = nullptr);

    /** A part of a text in any column, or a ValueQuery. */
    void setFilter(const QString &typed);
    bool isSearching() const { return m_work.isRunning(); }

Q_SIGNALS:
    /** Rows came or went, or the search is over. */
    void counted();

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    void search();
    bool searchNext();

    CameraModel &m_cameras;
    SlicedWork m_work;
    QString m_words;
    ValueQuery m_query;
    std::vector<char> m_isFound; // of the query, by rows that were searched
    std::vector<int> m_changed;  // rows to be searched again
};

} // namespace browser

#endif // BROWSER_CAMERAFILTER_H
