// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "CameraFilter.h"

namespace browser {

CameraFilter::CameraFilter(CameraModel &cameras, QObject *parent)
    : QSortFilterProxyModel(parent)
    , m_cameras(cameras)
{
    setSourceModel(&cameras);
    setSortRole(CameraModel::SortRole);
    connect(&cameras, &QAbstractItemModel::rowsInserted, this, &CameraFilter::search);
    connect(&cameras, &QAbstractItemModel::modelReset, this, [this] {
        m_isFound.clear();
        m_changed.clear();
    });
    connect(&cameras, &CameraModel::documentChanged, this, [this](Document *document) {
        if (m_query.isNull())
            return;
        m_changed.push_back(m_cameras.rowOf(document));
        search();
    });
    connect(&m_work, &SlicedWork::progressed, this, [this] {
        invalidateFilter();
        Q_EMIT counted();
    });
    connect(this, &QAbstractItemModel::rowsInserted, this, &CameraFilter::counted);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &CameraFilter::counted);
    connect(this, &QAbstractItemModel::modelReset, this, &CameraFilter::counted);
}

void CameraFilter::setFilter(const QString &typed)
{
    m_query = ValueQuery(typed);
    m_words = m_query.isNull() ? typed : QString();
    m_isFound.clear();
    m_changed.clear();
    m_work.cancel();
    invalidateFilter();
    search();
    Q_EMIT counted();
}

bool CameraFilter::filterAcceptsRow(int row, const QModelIndex &) const
{
    if (!m_query.isNull())
        return std::size_t(row) < m_isFound.size() && m_isFound[std::size_t(row)];
    if (m_words.isEmpty())
        return true;
    for (int column = 0; column < m_cameras.columnCount(); ++column) {
        const QVariant cell = m_cameras.index(row, column).data();
        if (cell.toString().contains(m_words, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

void CameraFilter::search()
{
    if (!m_query.isNull() && !m_work.isRunning())
        m_work.start([this] { return searchNext(); });
}

bool CameraFilter::searchNext()
{
    const auto isFound = [this](int row) {
        const Document *document = m_cameras.document(row);
        return document && m_query.matches(document->text(), document->configuration().form());
    };
    if (!m_changed.empty()) {
        const int row = m_changed.back();
        m_changed.pop_back();
        if (row >= 0 && std::size_t(row) < m_isFound.size())
            m_isFound[std::size_t(row)] = isFound(row);
        return true;
    }
    const int row = int(m_isFound.size());
    if (row >= m_cameras.rowCount())
        return false;
    m_isFound.push_back(isFound(row));
    return true;
}

} // namespace browser
