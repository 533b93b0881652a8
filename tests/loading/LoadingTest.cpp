// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "loading/Plugin.h"

#include "support/QtPrinters.h"

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QVariant>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <malloc.h>
#include <pthread.h>

#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#ifdef __SANITIZE_THREAD__
// The sanitizer brings its own heap; GCC installs no header for this function.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

// What leaks grows in every run of rounds; caches of the heap grow in the first ones alone.
constexpr int kRounds = 100;
constexpr int kMostRuns = 8;

std::size_t heapInUse()
{
#if defined(__SANITIZE_ADDRESS__)
    // AddressSanitizer itself leaves an entry in the C library's list of exit functions for each
    // constant that is built. What nobody refers to any more it finds at the end of the program.
    return 0;
#elif defined(__SANITIZE_THREAD__)
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

/** The files of the library that are mapped into this process; empty when none is. */
QStringList mappedLibraries()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
    QStringList found;
    const QStringList lines = QString::fromLatin1(maps.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QString file = line.section(QLatin1Char('/'), -1);
        if (line.contains(QLatin1Char('/')) &&
            (file.startsWith(QLatin1String("libFileFormatsVantero")) ||
             file.startsWith(QLatin1String("libVanteroBase")) ||
             file.contains(QLatin1String("loading_plugin"))))
            found << file;
    }
    found.removeDuplicates();
    return found;
}

/** Opens a shared object for the life of this value. */
class Opened
{
public:
    explicit Opened(const char *path)
        : m_handle(dlopen(path, RTLD_NOW | RTLD_LOCAL))
    {
        EXPECT_NE(m_handle, nullptr) << dlerror();
    }
    ~Opened() { EXPECT_EQ(dlclose(m_handle), 0) << dlerror(); }
    Opened(const Opened &) = delete; // one handle, one owner
    Opened &operator=(const Opened &) = delete;

    UseFunction useFunction() const
    {
        return reinterpret_cast<UseFunction>(dlsym(m_handle, "use"));
    }

private:
    void *m_handle;
};

/** Whether the library is in memory; does not bring it there. */
bool isLoaded()
{
    void *const handle = dlopen(VANTERO_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle;
}

void openAndClose()
{
    {
        const Opened library(VANTERO_LIBRARY);
        ASSERT_TRUE(isLoaded());
    }
    ASSERT_FALSE(isLoaded());
}

void openUseAndClose()
{
    Kept kept;
    {
        const Opened plugin(VANTERO_PLUGIN);
        plugin.useFunction()(kept);
    }
    ASSERT_FALSE(isLoaded());
    ASSERT_FALSE(kept.texts.isEmpty());
}

void openUseOnAnotherThreadAndClose()
{
    const Opened plugin(VANTERO_PLUGIN);
    std::thread([&plugin] {
        Kept kept;
        plugin.useFunction()(kept);
    }).join();
}

/** A text that shares no memory with @p text. */
QString ownCopy(const QString &text)
{
    return QString::fromUtf16(text.utf16(), text.size());
}

/** The same for a tree of values. */
QVariant ownCopy(const QVariant &tree)
{
    QByteArray bytes;
    QDataStream writer(&bytes, QIODevice::WriteOnly);
    writer << tree;
    QVariant copy;
    QDataStream reader(bytes);
    reader >> copy;
    return copy;
}

/** Runs @p round again and again: nothing stays, nothing grows, nothing is printed. */
template <typename Round>
void expectNothingStays(Round &&round)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    QStringList growth;
    bool steady = false;
    for (int run = 0; run < kMostRuns && !steady; ++run) {
        const std::size_t before = heapInUse();
        // A thread that ends gives back what its cache of the heap holds.
        std::thread([&round] {
            for (int i = 0; i < kRounds; ++i)
                round();
        }).join();
        const std::size_t after = heapInUse();
        steady = run > 0 && after <= before;
        growth << QString::number(static_cast<qint64>(after) - static_cast<qint64>(before));
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(steady) << "each " << kRounds << " rounds the heap grew by these bytes: "
                        << growth.join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(mappedLibraries(), QStringList());
}

} // namespace

TEST(Loading, theProgramItselfHasNotTheLibrary)
{
    EXPECT_EQ(mappedLibraries(), QStringList());
    const Opened library(VANTERO_LIBRARY);
    EXPECT_TRUE(mappedLibraries()
                    .join(QLatin1Char(' '))
                    .contains(QLatin1String("libFileFormatsVantero.so.1")));
}

TEST(Loading, openedAndClosed_leavesNothingBehind)
{
    expectNothingStays(openAndClose);
}

TEST(Loading, openedUsedAndClosed_leavesNothingBehind)
{
    expectNothingStays(openUseAndClose);
}

TEST(Loading, usedOnAThreadThatEnds_leavesNothingBehind)
{
    expectNothingStays(openUseOnAnotherThreadAndClose);
}

TEST(Loading, valuesOutliveTheLibrary)
{
    Kept kept;
    kept.everyText = true;
    Kept expected;
    {
        const Opened plugin(VANTERO_PLUGIN);
        plugin.useFunction()(kept);
        // Copies in memory of this program, to compare with.
        for (const QString &text : qAsConst(kept.texts))
            expected.texts << ownCopy(text);
        for (const auto &section : qAsConst(kept.sections)) {
            QMultiMap<QString, QString> copy;
            for (auto it = section.begin(); it != section.end(); ++it)
                copy.insert(ownCopy(it.key()), ownCopy(it.value()));
            expected.sections << copy;
        }
        for (const QVariant &variant : qAsConst(kept.variants))
            expected.variants << ownCopy(variant);
    }
    ASSERT_EQ(mappedLibraries(), QStringList());
    EXPECT_GE(kept.texts.size(), 100);
    EXPECT_EQ(kept.texts, expected.texts);
    EXPECT_EQ(kept.sections, expected.sections);
    EXPECT_EQ(kept.variants, expected.variants);
    for (const QRegExp &pattern : qAsConst(kept.patterns)) {
        // Qt compares a new pattern with those it has in its cache.
        const QRegExp same(ownCopy(pattern.pattern()), pattern.caseSensitivity(),
                           pattern.patternSyntax());
        EXPECT_EQ(same.indexIn(QStringLiteral("a-_b")), pattern.indexIn(QStringLiteral("a-_b")));
    }
}

TEST(Loading, closedWhileAnotherThreadHasAParser_leavesWhenThatThreadHasEnded)
{
    testing::internal::CaptureStderr();
    std::promise<void> used;
    std::promise<void> closed;
    std::thread user;
    {
        const Opened plugin(VANTERO_PLUGIN);
        user = std::thread([&, use = plugin.useFunction()] {
            Kept kept;
            use(kept);
            used.set_value();
            closed.get_future().wait();
        });
        used.get_future().wait();
    }
    EXPECT_NE(mappedLibraries(), QStringList());
    closed.set_value();
    user.join();
    openAndClose(); // whatever is not needed any more leaves with the next close
    EXPECT_EQ(mappedLibraries(), QStringList());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Loading, closedUnderAThreadThatHasTheIdOfTheOneThatOpenedIt_leavesWhenItHasEnded)
{
    testing::internal::CaptureStderr();
    std::unique_ptr<Opened> plugin;
    std::thread opener([&] { plugin = std::make_unique<Opened>(VANTERO_PLUGIN); });
    const std::thread::id id = opener.get_id();
    opener.join();
    std::promise<void> used;
    std::promise<void> closed;
    std::thread user([&, use = plugin->useFunction()] {
        Kept kept;
        use(kept);
        used.set_value();
        closed.get_future().wait();
    });
    const bool hasTheId = user.get_id() == id;
    used.get_future().wait();
    plugin.reset();
    EXPECT_NE(mappedLibraries(), QStringList());
    closed.set_value();
    user.join();
    openAndClose();
    EXPECT_EQ(mappedLibraries(), QStringList());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    if (!hasTheId)
        GTEST_SKIP() << "the system gave the second thread an id of its own";
}

TEST(Loading, closedOnAnotherThreadThanTheOneThatOpenedIt_leavesNothingBehind)
{
    expectNothingStays([] {
        std::promise<void> used;
        std::promise<void> closed;
        std::unique_ptr<Opened> plugin;
        std::thread opener([&] {
            plugin = std::make_unique<Opened>(VANTERO_PLUGIN);
            Kept kept;
            plugin->useFunction()(kept);
            used.set_value();
            closed.get_future().wait();
        });
        used.get_future().wait();
        plugin.reset();
        ASSERT_FALSE(isLoaded());
        closed.set_value();
        opener.join();
    });
}

TEST(Loading, openedOnAThreadThatEnds_leavesNothingBehind)
{
    expectNothingStays([] {
        std::unique_ptr<Opened> plugin;
        std::thread([&] {
            plugin = std::make_unique<Opened>(VANTERO_PLUGIN);
            Kept kept;
            plugin->useFunction()(kept);
        }).join();
        plugin.reset();
        ASSERT_FALSE(isLoaded());
    });
}

// ---- The end of the process ---------------------------------------------------------------------

namespace {

UseListFunction s_useList = nullptr;

/** Parses after the destructors of the library, and says what came of it. */
void parseAtTheEnd()
{
    pthread_key_t key = 0; // perhaps one that was the library's
    (void)pthread_key_create(&key, nullptr);
    QStringList said;
    for (const char *text : {"['a']", "['b\\n']", "['c', 1]#"}) {
        QString first;
        s_useList(text, first);
        said << (first.isEmpty() ? QStringLiteral("none") : first);
    }
    // A heap that was damaged tells it now.
    std::vector<std::unique_ptr<char[]>> blocks;
    for (std::size_t size = 8; size < 16384; size += 8)
        blocks.push_back(std::make_unique<char[]>(size));
    blocks.clear();
    said << (pthread_getspecific(key) ? QStringLiteral("not mine") : QStringLiteral("mine"));
    (void)std::fputs(qPrintable(said.join(QLatin1Char(' '))), stderr);
}

} // namespace

TEST(LoadingDeathTest, functionsOfAtExitThatAreOlderThanTheLibraryParse)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            if (std::atexit(parseAtTheEnd) == 0) {
                void *const plugin = dlopen(VANTERO_PLUGIN, RTLD_NOW | RTLD_LOCAL);
                s_useList = reinterpret_cast<UseListFunction>(dlsym(plugin, "useList"));
                QString first;
                s_useList(("['" + std::string(5000, 'x') + "']").c_str(), first);
                std::exit(0);
            }
        },
        testing::ExitedWithCode(0), testing::Eq("a b\\n 1 mine"));
}
