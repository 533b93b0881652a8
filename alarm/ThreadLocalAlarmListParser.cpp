// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/ThreadLocalAlarmListParser.h"

#include "alarm/AlarmListParser.h"

#include <QtCore/QThreadStorage>

#include <thread>

namespace vn {

namespace {

/** The parsers of all threads. */
class Store
{
    Q_DISABLE_COPY(Store)

public:
    Store() = default;

    /** The library is unloaded, so the parser of the loading thread must go now, not when the
     * thread ends. The other threads have ended, see ThreadGuard. */
    ~Store()
    {
        if (m_isUsedByLoadingThread && isLoadingThread())
            remove();
    }

    AlarmListParser *get()
    {
        if (isLoadingThread())
            m_isUsedByLoadingThread = true;
        if (!m_parsers.hasLocalData())
            m_parsers.setLocalData(new AlarmListParser);
        return m_parsers.localData();
    }

    void remove()
    {
        if (m_parsers.hasLocalData())
            m_parsers.setLocalData(nullptr);
    }

    bool isLoadingThread() const { return std::this_thread::get_id() == m_loadingThread; }

private:
    QThreadStorage<AlarmListParser *> m_parsers;
    const std::thread::id m_loadingThread = std::this_thread::get_id();
    bool m_isUsedByLoadingThread = false; // only that thread uses it
};

Store s_store;

/**
 * Keeps the library in memory until the thread has ended, as the C++ runtime does while the
 * destructor of a thread-local object is to come. Otherwise the thread would end after the library
 * is unloaded, with a parser that nobody can delete. The thread that loaded the library goes
 * without, so that it can unload it again.
 */
class ThreadGuard
{
    Q_DISABLE_COPY(ThreadGuard)

public:
    ThreadGuard() = default;
    ~ThreadGuard() { s_store.remove(); }
    void hold() {}
};

thread_local ThreadGuard t_guard;

} // namespace

AlarmListParser *ThreadLocalAlarmListParser::instance()
{
    if (!s_store.isLoadingThread())
        t_guard.hold();
    return s_store.get();
}

void ThreadLocalAlarmListParser::deleteInstance()
{
    s_store.remove();
}

} // namespace vn
