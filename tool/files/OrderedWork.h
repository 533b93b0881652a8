// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_ORDEREDWORK_H
#define VN_TOOL_FILES_ORDEREDWORK_H

#include <QtCore/QThreadPool>

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace vn::tool {

/**
 * Work on many things by several threads, its results taken in the order of the things.
 *
 * Things are handed out in runs of neighbours. No more of them wait than keeps all threads busy,
 * and a thread waits with the next one while results of more than kMostBytes have not been taken,
 * but for the one that is to be taken next.
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
                takeRun(*m_runs.front(), take, idle, sizeOf);
                const std::lock_guard<std::mutex> lock(m_mutex);
                m_runs.pop_front();
                m_changed.notify_all(); // another one is to be taken next
            }
        } catch (...) {
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                m_isGivenUp = true;
                m_changed.notify_all();
            }
            m_pool.waitForDone();
            throw;
        }
    }

private:
    static constexpr std::size_t kRun = 16;
    static constexpr std::size_t kRunsAThread = 4;
    static constexpr qint64 kMostBytes = 64 * 1024 * 1024;

    struct Run
    {
        std::vector<Thing> things;
        std::vector<std::optional<Result>> results; // as many as things
        std::size_t taken = 0;
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
        run->results.resize(run->things.size());
        if (!run->things.empty()) {
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                m_runs.push_back(run);
            }
            m_pool.start([this, run, &work, &sizeOf] { workOn(*run, work, sizeOf); });
        }
        return !isAtEnd;
    }

    template <typename Work, typename SizeOf>
    void workOn(Run &run, Work &work, SizeOf &sizeOf)
    {
        for (std::size_t i = 0; i < run.things.size(); ++i) {
            {
                std::unique_lock<std::mutex> lock(m_mutex);
                m_changed.wait(lock, [&] {
                    return m_isGivenUp || m_waiting <= kMostBytes ||
                           (&run == m_runs.front().get() && i == run.taken);
                });
                if (m_isGivenUp)
                    return;
            }
            std::optional<Result> result;
            std::exception_ptr exception;
            try {
                result = work(run.things[i]);
            } catch (...) {
                exception = std::current_exception();
            }
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (result)
                m_waiting += sizeOf(*result);
            run.results[i] = std::move(result);
            run.exception = exception;
            m_changed.notify_all();
            if (exception)
                return;
        }
    }

    template <typename Take, typename Idle, typename SizeOf>
    void takeRun(Run &run, Take &take, Idle &idle, SizeOf &sizeOf)
    {
        for (std::size_t i = 0; i < run.things.size(); ++i) {
            std::optional<Result> result;
            {
                std::unique_lock<std::mutex> lock(m_mutex);
                const auto isReady = [&] { return run.results[i] || run.exception; };
                if (!isReady()) {
                    lock.unlock();
                    idle();
                    lock.lock();
                }
                m_changed.wait(lock, isReady);
                if (!run.results[i])
                    std::rethrow_exception(run.exception);
                result = std::move(run.results[i]);
                run.results[i].reset();
                m_waiting -= sizeOf(*result);
                run.taken = i + 1;
                m_changed.notify_all();
            }
            take(*result);
        }
    }

    const int m_threads;
    std::mutex m_mutex; // guards all that follows, and what is in the runs
    std::condition_variable m_changed;
    std::deque<std::shared_ptr<Run>> m_runs; // that are not taken, the next one first
    qint64 m_waiting = 0;                    // bytes of results that are not taken
    bool m_isGivenUp = false;
    QThreadPool m_pool; // goes first
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_ORDEREDWORK_H
