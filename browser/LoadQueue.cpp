// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "LoadQueue.h"

#include <utility>

namespace browser {

LoadQueue::LoadQueue(QObject *parent)
    : QObject(parent)
{
}

LoadQueue::~LoadQueue() = default;

void LoadQueue::open(const QStringList &paths)
{
    m_requests.push_back({paths, QByteArray()});
    if (!m_isBusy) {
        m_isBusy = true;
        m_wasCancelled = false;
        Q_EMIT started();
        startNext();
    }
}

void LoadQueue::cancel()
{
    if (!m_isBusy)
        return;
    m_wasCancelled = true;
    m_requests.clear();
    m_loader->stop();
}

bool LoadQueue::isBusy() const
{
    return m_isBusy;
}

void LoadQueue::unlock(const QByteArray &password)
{
    if (!std::exchange(m_isAsking, false))
        return;
    QStringList paths;
    for (const Locked &locked : m_locked)
        paths += locked.archive.path;
    m_locked.clear();
    start({paths, password});
}

void LoadQueue::skip()
{
    if (!std::exchange(m_isAsking, false))
        return;
    reportLocked(1);
    startNext();
}

void LoadQueue::startNext()
{
    if (m_wasCancelled)
        reportLocked(m_locked.size());
    if (!m_requests.empty()) {
        const Request next = std::move(m_requests.front());
        m_requests.pop_front();
        start(next);
    } else if (!m_locked.empty()) {
        m_isAsking = true;
        Q_EMIT passwordWanted(m_locked.front().archive.path, m_locked.front().wasTried);
    } else {
        m_isBusy = false;
        Q_EMIT finished(m_wasCancelled);
    }
}

void LoadQueue::start(const Request &request)
{
    m_loader = std::make_unique<Loader>(request.paths, request.password);
    connect(m_loader.get(), &Loader::loaded, this, &LoadQueue::take);
    connect(m_loader.get(), &QThread::finished, this, &LoadQueue::startNext);
    m_loader->start();
}

void LoadQueue::take(const LoadBatch &batch)
{
    for (const LockedArchive &archive : batch.lockedArchives)
        m_locked.push_back({archive, m_loader->hasPassword()});
    Q_EMIT loaded(batch);
}

/** Gives up the first @p count archives that want a password. */
void LoadQueue::reportLocked(std::size_t count)
{
    LoadBatch batch;
    for (; count > 0; --count) {
        batch.problems.push_back(m_locked.front().archive.problem);
        m_locked.pop_front();
    }
    if (!batch.problems.empty())
        Q_EMIT loaded(batch);
}

} // namespace browser
