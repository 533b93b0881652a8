// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_ORDEREDWORK_H
#define VN_TOOL_FILES_ORDEREDWORK_H

#include <QtCore/QThreadPool>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace vn::tool {

/**
 * Work on many things by several threads, its results taken in the order of the things.
 *
 * Things are handed out in runs of neighbours, whose results are taken together, but sooner where
 * they are large or slow. No more runs wait than keep all threads busy,
 * and a thread waits with the next thing while results of more than kMostBytes have not been taken,
 * but for the run that is to be taken next.
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
     * ends the work and leaves.
     */
    template <typename Next, typename Work, typename Take, typename Idle, typename SizeOf>
    void run(Next &&next, Work &&work, Take &&take, Idle &&idle, SizeOf &&sizeOf)
    {
        try {
            bool isAtEnd = false;
            for (;;) {
                while (!isAtEnd && m_runs.size() < kRunsAThread * std::size_t(m_threads))
                    isAtEnd = !start(next, work, sizeOf);
                if (m_runs.empty())
                    break;
                takeRun(*m_runs.front(), take, idle);
                const std::lock_guard<std::mutex> lock(m_mutex);
                m_runs.pop_front();
                m_room.notify_all(); // another one is to be taken next
            }
        } catch (...) {
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                m_isGivenUp = true;
                m_room.notify_all();
            }
            m_pool.waitForDone();
            throw;
        }
    }

private:
    static constexpr std::size_t kRun = 32;
    static constexpr std::size_t kRunsAThread = 4;
    static constexpr qint64 kMostBytes = 64 * 1024 * 1024;
    static constexpr qint64 kLargeBatch = 1024 * 1024;
    static constexpr auto kLongWait = std::chrono::milliseconds(20);

    struct Run
    {
        std::vector<Thing> things;
        std::vector<Result> results; // that are ready and not taken, in the order of things
        qint64 bytes = 0;            // of them
        bool isDone = false;         // no more will come
        std::exception_ptr exception;
    };

    template <typename Next, typename Work, typename SizeOf>
    bool start(Next &next, Work &work, SizeOf &sizeOf)
    {
        auto run = std::make_shared<Run>();
        bool isAtEnd = false;
        while (run->things.size() < kRun && !isAtEnd) {
            auto thing = next();
            isAtEnd = !thing;
            if (thing)
                run->things.push_back(std::move(*thing));
        }
        if (!run->things.empty()) {
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                m_runs.push_back(run);
            }
            run->results.reserve(run->things.size());
            m_pool.start([this, run, &work, &sizeOf] { workOn(*run, work, sizeOf); });
        }
        return !isAtEnd;
    }

    template <typename Work, typename SizeOf>
    void workOn(Run &run, Work &work, SizeOf &sizeOf)
    {
        for (std::size_t i = 0; i < run.things.size(); ++i) {
            std::optional<Result> result;
            std::exception_ptr exception;
            try {
                result = work(run.things[i]);
            } catch (...) {
                exception = std::current_exception();
            }
            std::unique_lock<std::mutex> lock(m_mutex);
            if (result) {
                const qint64 bytes = sizeOf(*result);
                run.results.push_back(std::move(*result));
                run.bytes += bytes;
                m_waiting += bytes;
            }
            run.exception = exception;
            run.isDone = exception || i + 1 == run.things.size();
            if (m_awaited == &run && (m_isUrgent || run.isDone || run.bytes >= kLargeBatch))
                m_ready.notify_one();
            m_room.wait(lock, [&] {
                return m_isGivenUp || run.isDone || m_waiting <= kMostBytes ||
                       &run == m_runs.front().get();
            });
            if (m_isGivenUp || run.isDone)
                return;
        }
    }

    template <typename Take, typename Idle>
    void takeRun(Run &run, Take &take, Idle &idle)
    {
        std::vector<Result> results;
        for (bool isDone = false; !isDone;) {
            {
                std::unique_lock<std::mutex> lock(m_mutex);
                awaitResults(run, idle, lock);
                results.swap(run.results);
                const bool wasFull = m_waiting > kMostBytes;
                m_waiting -= std::exchange(run.bytes, 0);
                if (wasFull)
                    m_room.notify_all();
                isDone = run.isDone;
            }
            for (Result &result : results)
                take(result);
            results.clear();
        }
        if (run.exception)
            std::rethrow_exception(run.exception);
    }

    /** Waits for the end of the run or many bytes, and for any result at all where it takes long:
     * to be woken for each would cost more than many a result. */
    template <typename Idle>
    void awaitResults(Run &run, Idle &idle, std::unique_lock<std::mutex> &lock)
    {
        const auto isWorthIt = [&] { return run.isDone || run.bytes >= kLargeBatch; };
        if (isWorthIt())
            return;
        lock.unlock();
        idle();
        lock.lock();
        m_awaited = &run;
        if (!m_ready.wait_for(lock, kLongWait, isWorthIt)) {
            m_isUrgent = true;
            m_ready.wait(lock, [&] { return run.isDone || !run.results.empty(); });
            m_isUrgent = false;
        }
        m_awaited = nullptr;
    }

    const int m_threads;
    std::mutex m_mutex;              // guards all that follows, and what is in the runs
    std::condition_variable m_ready; // results of the run that is awaited
    std::condition_variable m_room;  // for more results, or none are wanted
    const Run *m_awaited = nullptr;
    bool m_isUrgent = false;                 // any result of it
    std::deque<std::shared_ptr<Run>> m_runs; // that are not taken, the next one first
    qint64 m_waiting = 0;                    // bytes of results that are not taken
    bool m_isGivenUp = false;
    QThreadPool m_pool; // goes first
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_ORDEREDWORK_H
