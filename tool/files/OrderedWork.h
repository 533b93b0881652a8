// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_ORDEREDWORK_H
#define VN_TOOL_FILES_ORDEREDWORK_H

#include <QtCore/QThreadPool>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <iterator>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace vn::tool {

/**
 * Work on many things by several threads, its results taken in the order of the things.
 *
 * Threads take things in runs of neighbours, shorter ones where few are left, so that all have
 * some. The calling thread sleeps while it has nothing but little to do: to be woken costs as much
 * as many a thing. Results that are large, or that take long, it gets at once.
 *
 * At most kMostThings are known and not taken, and a thread waits with its next thing while results
 * of more than kMostBytes have not been taken, but for those that the calling thread waits for.
 */
template <typename Thing, typename Result>
class OrderedWork
{
public:
    /** Work for @p threads threads. */
    explicit OrderedWork(int threads)
        : m_threads(threads)
    {
        m_pool.setMaxThreadCount(threads);
    }
    ~OrderedWork() { m_pool.waitForDone(); }

    OrderedWork(const OrderedWork &) = delete; // has threads
    OrderedWork &operator=(const OrderedWork &) = delete;

    /**
     * Takes things by @p next until it gives none, makes a result of each by @p work on any thread
     * and hands them to @p take on the calling thread; calls @p idle there when it has to wait.
     * @p sizeOf tells the bytes that a result keeps in memory. The first exception of any of them
     * ends the work and leaves. To be called once.
     */
    template <typename Next, typename Work, typename Take, typename Idle, typename SizeOf>
    void run(Next &&next, Work &&work, Take &&take, Idle &&idle, SizeOf &&sizeOf)
    {
        const auto workAll = [&] { workOnAll(work, sizeOf); };
        try {
            while (list(next, workAll))
                takeSome(take, idle);
        } catch (...) {
            end();
            throw;
        }
        end();
    }

private:
    static constexpr std::size_t kMostThings = 4096;
    static constexpr std::size_t kLongestRun = 128;
    static constexpr qint64 kMostBytes = 64 * 1024 * 1024;
    static constexpr qint64 kLargeBatch = 8 * 1024 * 1024;
    static constexpr auto kLongWait = std::chrono::milliseconds(20);

    /** Neighbours that one thread works on. */
    struct Run
    {
        std::vector<Thing> things;
        std::vector<Result> results; // that are ready and not taken, in the order of things
        qint64 bytes = 0;            // of them
        bool isDone = false;         // no more will come
        std::exception_ptr exception;
    };

    /** Makes more things known, as far as there is room for them. Returns false when no thing is
     * left. */
    template <typename Next, typename WorkAll>
    bool list(Next &next, const WorkAll &workAll)
    {
        while (!m_isAtEnd && m_known < kMostThings) {
            std::vector<Thing> things;
            while (things.size() < kLongestRun / 4 && !m_isAtEnd) {
                auto thing = next();
                m_isAtEnd = !thing;
                if (thing)
                    things.push_back(std::move(*thing));
            }
            m_known += things.size();
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                std::move(things.begin(), things.end(), std::back_inserter(m_listed));
            }
            m_more.notify_all();
            for (; m_workers < m_threads && std::size_t(m_workers) < m_known; ++m_workers)
                m_pool.start(workAll);
        }
        return m_known > 0;
    }

    /** What a thread does until the end. */
    template <typename Work, typename SizeOf>
    void workOnAll(Work &work, SizeOf &sizeOf)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (;;) {
            m_more.wait(lock, [this] { return m_isOver || !m_listed.empty(); });
            if (m_isOver)
                return;
            const std::size_t fair = m_listed.size() / (2 * std::size_t(m_threads));
            const auto count = std::clamp<std::size_t>(fair, 1, kLongestRun);
            const auto end = m_listed.begin() + std::ptrdiff_t(count);
            m_runs.push_back(std::make_shared<Run>());
            const std::shared_ptr<Run> run = m_runs.back();
            run->things.assign(std::make_move_iterator(m_listed.begin()),
                               std::make_move_iterator(end));
            run->results.reserve(count);
            m_listed.erase(m_listed.begin(), end);
            workOn(*run, work, sizeOf, lock);
        }
    }

    template <typename Work, typename SizeOf>
    void workOn(Run &run, Work &work, SizeOf &sizeOf, std::unique_lock<std::mutex> &lock)
    {
        for (const Thing &thing : run.things) {
            lock.unlock();
            std::optional<Result> result;
            std::exception_ptr exception;
            qint64 bytes = 0;
            try {
                result = work(thing);
                bytes = sizeOf(*result);
            } catch (...) {
                exception = std::current_exception();
            }
            lock.lock();
            if (!exception)
                run.results.push_back(std::move(*result));
            run.bytes += bytes;
            m_waiting += bytes;
            run.exception = exception;
            run.isDone = exception || &thing == &run.things.back();
            tell(run, bytes);
            const auto mayGoOn = [&] {
                return m_isOver || run.isDone || m_waiting <= kMostBytes ||
                       (m_isAwaited && !isWorthIt() && m_runs.front().get() == &run);
            };
            if (!mayGoOn()) {
                ++m_blocked;
                m_ready.notify_one();
                m_room.wait(lock, mayGoOn);
                --m_blocked;
            }
            if (m_isOver || run.isDone)
                return;
        }
    }

    /** Tells who waits that @p run has a result more, of so many bytes. */
    void tell(const Run &run, qint64 bytes)
    {
        const bool isNext = m_runs[m_runsDone].get() == &run; // nothing is missing before it
        if (!isNext)
            return;
        m_readyBytes += bytes;
        ++m_readyThings;
        if (run.isDone) {
            while (m_runsDone < m_runs.size() && m_runs[m_runsDone]->isDone)
                if (++m_runsDone < m_runs.size()) {
                    m_readyThings += m_runs[m_runsDone]->results.size();
                    m_readyBytes += m_runs[m_runsDone]->bytes;
                }
        }
        if (m_isUrgent || isWorthIt())
            m_ready.notify_one();
    }

    /** Whether the results that are next are worth to be taken. */
    bool isWorthIt() const
    {
        const bool isAllDone = m_listed.empty() && m_runsDone == m_runs.size();
        return isAllDone || m_readyThings >= kMostThings / 2 || m_readyBytes >= kLargeBatch ||
               (m_blocked > 0 && m_readyThings > 0);
    }

    /** Takes what is ready, once there is something. */
    template <typename Take, typename Idle>
    void takeSome(Take &take, Idle &idle)
    {
        std::vector<std::vector<Result>> batches;
        qint64 bytes = 0;
        std::exception_ptr exception;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            awaitResults(idle, lock);
            while (!m_runs.empty() && !exception) {
                Run &run = *m_runs.front();
                m_known -= run.results.size();
                bytes += std::exchange(run.bytes, 0);
                batches.push_back(std::exchange(run.results, {}));
                exception = run.exception;
                if (!run.isDone)
                    break;
                m_runs.pop_front();
                --m_runsDone;
            }
            m_readyThings = 0;
            m_readyBytes = 0;
        }
        for (std::vector<Result> &batch : batches) {
            for (Result &result : batch)
                take(result);
            batch.clear();
        }
        if (bytes > 0) {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_waiting -= bytes;
            m_room.notify_all();
        }
        if (exception)
            std::rethrow_exception(exception);
    }

    /** Waits for many results, and for any at all where they take long. */
    template <typename Idle>
    void awaitResults(Idle &idle, std::unique_lock<std::mutex> &lock)
    {
        if (isWorthIt())
            return;
        lock.unlock();
        idle();
        lock.lock();
        m_isAwaited = true;
        m_room.notify_all(); // the next run may pass the limit
        if (!m_ready.wait_for(lock, kLongWait, [this] { return isWorthIt(); })) {
            m_isUrgent = true;
            m_ready.wait(lock, [this] { return m_readyThings > 0; });
            m_isUrgent = false;
        }
        m_isAwaited = false;
    }

    /** Sends the threads home. */
    void end()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_isOver = true;
        }
        m_more.notify_all();
        m_room.notify_all();
        m_pool.waitForDone();
    }

    const int m_threads;

    // Of the calling thread.
    bool m_isAtEnd = false;  // of the things
    std::size_t m_known = 0; // things whose results have not been taken
    int m_workers = 0;

    std::mutex m_mutex;                      // guards all that follows, and what is in the runs
    std::condition_variable m_more;          // things are listed
    std::condition_variable m_ready;         // results are to be taken
    std::condition_variable m_room;          // for more results
    std::deque<Thing> m_listed;              // that nobody works on yet
    std::deque<std::shared_ptr<Run>> m_runs; // that are not taken, the next one first
    std::size_t m_runsDone = 0;              // of them, from the first one on
    std::size_t m_readyThings = 0;           // results in these and in the run behind them
    qint64 m_readyBytes = 0;                 // in these results
    qint64 m_waiting = 0;                    // bytes of results that are not taken
    int m_blocked = 0;                       // threads that wait until there are fewer
    bool m_isAwaited = false;                // the calling thread waits
    bool m_isUrgent = false;                 // any result at all is waited for
    bool m_isOver = false;

    QThreadPool m_pool; // goes first
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_ORDEREDWORK_H
