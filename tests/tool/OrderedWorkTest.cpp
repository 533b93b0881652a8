// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Work of several threads whose results keep their order.

#include "support/Random.h"

#include "tool/files/OrderedWork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr auto kLongEnough = 20s; // for what must happen; nothing waits so long that passes

/** Waits until @p isTrue. */
bool happens(const std::function<bool()> &isTrue)
{
    const auto end = std::chrono::steady_clock::now() + kLongEnough;
    while (!isTrue()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

/** The numbers from 0 on, one a call. */
class Numbers
{
public:
    explicit Numbers(int count)
        : m_count(count)
    {
    }
    std::optional<int> operator()()
    {
        return m_next < m_count ? std::optional<int>(m_next++) : std::nullopt;
    }

private:
    int m_count;
    int m_next = 0;
};

void nothing() {}

/** Works on so many numbers, their results the numbers, and returns what was taken. */
std::vector<int> workOn(int count, int threads, const std::function<int(int)> &work,
                        const std::function<void(int)> &take = nullptr, qint64 size = 0)
{
    std::vector<int> taken;
    vn::tool::OrderedWork<int, int> ordered(threads);
    ordered.run(
        Numbers(count), work,
        [&](int result) {
            if (take)
                take(result);
            taken.push_back(result);
        },
        nothing, [size](int) { return size; });
    return taken;
}

std::vector<int> numbersUpTo(int count)
{
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(i);
    return numbers;
}

TEST(OrderedWork, keepsTheOrderWhateverTakesLonger)
{
    for (const int threads : {1, 2, 3, 8}) {
        for (const int count : {0, 1, 2, 31, 32, 33, 1000, 20000}) {
            std::atomic<int> worked{0};
            const auto work = [&](int number) {
                ++worked;
                if (number % 997 == 5)
                    std::this_thread::sleep_for(1ms);
                return number;
            };
            EXPECT_EQ(workOn(count, threads, work), numbersUpTo(count)) << threads;
            EXPECT_EQ(worked, count);
        }
    }
}

TEST(OrderedWork, keepsTheOrderOfResultsThatAreLarge)
{
    // More than may wait, of which a thread waits with its next thing.
    constexpr qint64 kSize = 3 * 1024 * 1024;
    const auto work = [](int number) {
        if (number % 40 == 0)
            std::this_thread::sleep_for(2ms);
        return number;
    };
    for (const int threads : {1, 2, 5})
        EXPECT_EQ(workOn(400, threads, work, nullptr, kSize), numbersUpTo(400)) << threads;
}

TEST(OrderedWork, sharesFewThings)
{
    std::mutex mutex;
    std::set<std::thread::id> threads;
    const auto work = [&](int number) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            threads.insert(std::this_thread::get_id());
        }
        EXPECT_TRUE(happens([&] {
            const std::lock_guard<std::mutex> lock(mutex);
            return threads.size() == 2;
        }));
        return number;
    };
    EXPECT_EQ(workOn(2, 2, work), numbersUpTo(2));
}

TEST(OrderedWork, hasResultsTakenThatAreReadyThoughLaterOnesTakeLong)
{
    for (const int slow : {1, 20, 700}) {
        std::atomic<int> taken{0};
        const auto work = [&](int number) {
            if (number == slow) { // all before it, of the same run, too
                EXPECT_TRUE(happens([&] { return taken == slow; })) << slow;
            }
            return number;
        };
        const std::vector<int> results = workOn(1000, 2, work, [&](int) { ++taken; });
        EXPECT_EQ(results, numbersUpTo(1000));
    }
}

TEST(OrderedWork, looksNotFarAheadOfWhatTakesLong)
{
    std::atomic<int> asked{0};
    std::atomic<int> worked{0};
    vn::tool::OrderedWork<int, int> ordered(2);
    int taken = 0;
    ordered.run(
        [&, numbers = Numbers(50000)]() mutable {
            ++asked;
            return numbers();
        },
        [&](int number) {
            ++worked;
            if (number == 0) { // nothing can be taken before
                EXPECT_TRUE(happens([&] { return worked >= 2000; }));
                std::this_thread::sleep_for(50ms);
                EXPECT_LE(asked, 4500);
            }
            return number;
        },
        [&](int) { ++taken; }, nothing, [](int) { return 0; });
    EXPECT_EQ(taken, 50000);
}

TEST(OrderedWork, holdsNoMoreBytesThanItMay)
{
    constexpr qint64 kSize = 1024 * 1024;
    std::atomic<int> worked{0};
    std::atomic<int> taken{0};
    int most = 0;
    const auto work = [&](int number) {
        ++worked;
        return number;
    };
    const auto take = [&](int) {
        std::this_thread::sleep_for(100us);
        most = std::max(most, worked - taken);
        ++taken;
    };
    EXPECT_EQ(workOn(3000, 3, work, take, kSize), numbersUpTo(3000));
    EXPECT_LE(most, 64 + 8 + 2 * 3); // that may wait, those waited for, and what threads work on
}

/** The message of what @p run throws. */
std::string thrownBy(const std::function<void()> &run)
{
    try {
        run();
    } catch (const std::runtime_error &e) {
        return e.what();
    }
    return "nothing";
}

TEST(OrderedWork, endsWithTheFirstExceptionOfTheWork)
{
    for (const int threads : {1, 2, 4}) {
        for (const int bad : {0, 1, 500, 4999}) {
            std::vector<int> taken;
            const auto work = [&](int number) {
                if (number >= bad && number % 2 == bad % 2)
                    throw std::runtime_error("work " + std::to_string(number));
                return number;
            };
            EXPECT_EQ(thrownBy([&] {
                          workOn(5000, threads, work, [&](int number) { taken.push_back(number); });
                      }),
                      "work " + std::to_string(bad));
            EXPECT_EQ(taken, numbersUpTo(bad));
        }
    }
}

TEST(OrderedWork, endsWithAnExceptionOfWhoGivesOrTakes)
{
    const auto same = [](int number) { return number; };
    for (const int bad : {0, 40, 4999}) {
        EXPECT_EQ(thrownBy([&] {
                      workOn(5000, 2, same, [&](int number) {
                          if (number == bad)
                              throw std::runtime_error("take");
                      });
                  }),
                  "take");
        EXPECT_EQ(thrownBy([&] {
                      vn::tool::OrderedWork<int, int> ordered(2);
                      ordered.run(
                          [&, numbers = Numbers(5000)]() mutable {
                              const auto number = numbers();
                              if (number == bad)
                                  throw std::runtime_error("give");
                              return number;
                          },
                          same, [](int) {}, nothing, [](int) { return 0; });
                  }),
                  "give");
    }
}

TEST(OrderedWork, callsIdleWhenItWaits)
{
    std::atomic<bool> wasIdle{false};
    vn::tool::OrderedWork<int, int> ordered(2);
    ordered.run(
        Numbers(10),
        [&](int number) {
            EXPECT_TRUE(happens([&] { return bool(wasIdle); }));
            return number;
        },
        [](int) {}, [&] { wasIdle = true; }, [](int) { return 0; });
}

TEST(OrderedWork, ofRandomThingsGivesEachOnce)
{
    Random random(20260917);
    for (int round = 0; round < 30; ++round) {
        const int count = int(random.below(3000));
        const int threads = 1 + int(random.below(6));
        const int slow = 1 + int(random.below(200));
        const qint64 size = random.below(2) == 0 ? 0 : 1 + random.below(2 * 1024 * 1024);
        const auto work = [&](int number) {
            if (number % slow == 0)
                std::this_thread::yield();
            return number;
        };
        EXPECT_EQ(workOn(count, threads, work, nullptr, size), numbersUpTo(count)) << round;
    }
}

} // namespace
