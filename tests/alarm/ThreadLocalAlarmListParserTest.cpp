// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/ThreadLocalAlarmListParser.h"

#include "alarm/AlarmListParser.h"
#include "reference/AlarmText.h"

#include <QtCore/QPointer>
#include <QtCore/QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <set>
#include <thread>
#include <vector>

using namespace vn;

namespace {

/** Counts the parsers that are deleted. */
class Deletions
{
public:
    void watch(AlarmListParser *parser)
    {
        QObject::connect(parser, &QObject::destroyed, [this] { ++m_count; });
    }
    int count() const { return m_count; }

private:
    std::atomic<int> m_count{0};
};

} // namespace

TEST(ThreadLocalAlarmListParser, isTheSameOnOneThread)
{
    AlarmListParser *const parser = ThreadLocalAlarmListParser::instance();
    ASSERT_NE(parser, nullptr);
    EXPECT_EQ(ThreadLocalAlarmListParser::instance(), parser);
    EXPECT_EQ(parser->parent(), nullptr);
    EXPECT_EQ(parser->thread(), QThread::currentThread());
    EXPECT_EQ(shown(parser->parse("[1, two]"_q)), "[\"two\", 1]"_q);
    ThreadLocalAlarmListParser::deleteInstance();
}

TEST(ThreadLocalAlarmListParser, isDeletedAndMadeAnew)
{
    Deletions deletions;
    deletions.watch(ThreadLocalAlarmListParser::instance());
    EXPECT_THROW(ThreadLocalAlarmListParser::instance()->parse("/*"_q), std::exception);
    ThreadLocalAlarmListParser::deleteInstance();
    EXPECT_EQ(deletions.count(), 1);
    // The old one would still be in its comment.
    EXPECT_EQ(shown(ThreadLocalAlarmListParser::instance()->parse("[1]"_q)), "[1]"_q);
    EXPECT_EQ(ThreadLocalAlarmListParser::instance()->errorMessage(), "Initialisation Error"_q);
    ThreadLocalAlarmListParser::deleteInstance();
    ThreadLocalAlarmListParser::deleteInstance(); // there is none: nothing happens
    EXPECT_EQ(deletions.count(), 1);
}

TEST(ThreadLocalAlarmListParser, isAnotherOnEachThread)
{
    constexpr std::size_t kThreads = 6;
    std::promise<void> done;
    const std::shared_future<void> isDone = done.get_future().share();
    std::vector<std::promise<AlarmListParser *>> made(kThreads);
    std::vector<std::thread> threads;
    for (auto &parser : made) {
        threads.emplace_back([&parser, isDone] {
            parser.set_value(ThreadLocalAlarmListParser::instance());
            isDone.wait();
        });
    }
    std::set<AlarmListParser *> parsers{ThreadLocalAlarmListParser::instance()};
    for (auto &parser : made)
        parsers.insert(parser.get_future().get()); // all of them live until the end
    EXPECT_EQ(parsers.size(), kThreads + 1);
    done.set_value();
    for (std::thread &thread : threads)
        thread.join();
    ThreadLocalAlarmListParser::deleteInstance();
}

TEST(ThreadLocalAlarmListParser, textsWithoutQuotedStringsAreParsedOnAllThreads)
{
    // Quoted strings would meet in the one place in which all scanners collect them.
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&wrong, i] {
            const QString text = "{id:%1,words:[a,b,c%1],deep:[[%1]],none:null /* c */}"_q.arg(i);
            const QString expected =
                "{\"deep\": [[%1]], \"id\": %1, \"none\": null, \"words\": [\"c%1\", \"b\", \"a\"]}"_q
                    .arg(i);
            for (int round = 0; round < 2000; ++round)
                if (shown(ThreadLocalAlarmListParser::instance()->parse(text)) != expected)
                    ++wrong;
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST(ThreadLocalAlarmListParser, goesWithItsThread)
{
    Deletions deletions;
    for (int i = 0; i < 3; ++i)
        std::thread([&] { deletions.watch(ThreadLocalAlarmListParser::instance()); }).join();
    EXPECT_EQ(deletions.count(), 3);
}

TEST(ThreadLocalAlarmListParser, isGoneWhenAQThreadHasFinished)
{
    Deletions deletions;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { deletions.watch(ThreadLocalAlarmListParser::instance()); }));
    thread->start();
    ASSERT_TRUE(thread->wait(60000));
    EXPECT_EQ(deletions.count(), 1);
}

TEST(ThreadLocalAlarmListParser, deletesOnlyTheOneOfTheCallingThread)
{
    AlarmListParser *const mine = ThreadLocalAlarmListParser::instance();
    Deletions deletions;
    deletions.watch(mine);
    std::thread([] {
        ThreadLocalAlarmListParser::deleteInstance();
        ThreadLocalAlarmListParser::instance();
        ThreadLocalAlarmListParser::deleteInstance();
    }).join();
    EXPECT_EQ(deletions.count(), 0);
    EXPECT_EQ(ThreadLocalAlarmListParser::instance(), mine);
    ThreadLocalAlarmListParser::deleteInstance();
}
