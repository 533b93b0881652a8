// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/ThreadLocalAlarmListParser.h"

#include "alarm/AlarmListParser.h"

#include <QtCore/QThreadStorage>

#include <atomic>

#include <pthread.h>

namespace vn {

namespace {

/** Not its id: a thread that begins later may get the same one. */
thread_local bool t_isLoadingThread = false;

/** The parsers of all threads. */
class Store
{
    Q_DISABLE_COPY(Store)

public:
    Store()
    {
        t_isLoadingThread = true;
        m_hasEnd = pthread_key_create(&m_end, [](void *store) {
                       static_cast<Store *>(store)->removeOfLoadingThread();
                   }) == 0;
    }

    /** The library is unloaded. All other threads that have used it have ended, see ThreadGuard;
     * the one that loaded it need not be this one. */
    ~Store()
    {
        if (m_hasEnd.exchange(false)) // functions of atexit() may still come, and keys of others
            pthread_key_delete(m_end);
        removeOfLoadingThread();
    }

    AlarmListParser *get()
    {
        if (t_isLoadingThread)
            return ofLoadingThread();
        if (!m_parsers.hasLocalData())
            m_parsers.setLocalData(new AlarmListParser);
        return m_parsers.localData();
    }

    void remove()
    {
        if (t_isLoadingThread)
            removeOfLoadingThread();
        else if (m_parsers.hasLocalData())
            m_parsers.setLocalData(nullptr);
    }

private:
    AlarmListParser *ofLoadingThread()
    {
        if (AlarmListParser *const parser = m_ofLoadingThread)
            return parser;
        // Qt's storage would keep what no other thread can remove when the library is unloaded.
        if (m_hasEnd)
            (void)pthread_setspecific(m_end, this);
        return m_ofLoadingThread = new AlarmListParser;
    }

    void removeOfLoadingThread() { delete m_ofLoadingThread.exchange(nullptr); }

    QThreadStorage<AlarmListParser *>
        m_parsers; // of all threads but the one that loads the library
    std::atomic<AlarmListParser *> m_ofLoadingThread{nullptr};
    pthread_key_t m_end = 0;           // tells the end of the loading thread
    std::atomic<bool> m_hasEnd{false}; // a plain one would not be written by the destructor
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
    if (!t_isLoadingThread)
        t_guard.hold();
    return s_store.get();
}

void ThreadLocalAlarmListParser::deleteInstance()
{
    s_store.remove();
}

} // namespace vn
