// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigCollector.h"

#include "base/Exceptions.h"
#include "base/Zips.h"
#include "config/CollectorSupport.h"
#include "config/VanteroConfigFile.h"
#include "support/Random.h"

#include <QtCore/QDirIterator>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using vn::ConfigCollector;
using vn::FileException;
using Status = vn::ConfigCollector::Status;

namespace {

class ConfigCollectorTest : public CollectorTest
{
protected:
    /** A tree with a thing of every kind: files, folders, archives, and faults among them. */
    void makeMixedTree() const
    {
        for (int i = 0; i < 40; ++i)
            file("tree/%1/%2.cfg"_q.arg(i % 7).arg(i), camera("10.0.0." + QByteArray::number(i)));
        file("tree/3/note.txt"_q, "no header"_b);
        file("tree/3/cut.zip"_q, "PK\3\4"_b);
        Entries entries;
        for (int i = 0; i < 90; ++i)
            entries.append({"%1.cfg"_q.arg(i % 60), camera("10.0.1." + QByteArray::number(i))});
        makeByPython(path("tree/5/many.zip"_q), entries, true);
        QByteArray bytes = readFile(path("tree/5/many.zip"_q));
        bytes[bytes.indexOf("10.0.1.44")] = '2'; // the checksum does not fit any more
        writeFile(path("tree/5/many.zip"_q), bytes);
        file("tree/6/large"_q, ""_b);
        ASSERT_TRUE(QFile::resize(path("tree/6/large"_q), qint64(8) << 30)); // no text is so large
    }
};

} // namespace

// ---- What is found -----------------------------------------------------------------------------

TEST_F(ConfigCollectorTest, givesBytesTextAndHeader)
{
    const QByteArray bytes = "\xEF\xBB\xBF#:1.3===\r\n#:VN-3.0.6.29\r\n# Camera IP: 10.0.0.1 \r\n"
                             "# Configuration of  10.0.0.2 \r\n\r\nk=\xC3\xBC"_b;
    file("a.cfg"_q, bytes);
    ConfigCollector collector({path("a.cfg"_q)}, Options());
    const auto found = collector.next();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->status, Status::Configuration);
    EXPECT_EQ(found->path, path("a.cfg"_q));
    EXPECT_TRUE(found->entry.isNull());
    EXPECT_TRUE(found->isNamed);
    EXPECT_EQ(found->bytes, bytes);
    EXPECT_EQ(found->text, QString::fromUtf8(bytes.mid(3)));
    EXPECT_TRUE(found->hasVersions);
    EXPECT_EQ(found->fileVersion, "1.3"_q);
    EXPECT_EQ(found->softwareVersion, "VN-3.0.6.29"_q);
    EXPECT_EQ(found->factoryIp, "10.0.0.2"_q);
    EXPECT_TRUE(found->reason.isNull());
    EXPECT_FALSE(found->exception);
    EXPECT_FALSE(collector.next());
    EXPECT_FALSE(collector.next()) << "the end stays the end";
}

TEST_F(ConfigCollectorTest, givesNothingOfOneFileToTheNext)
{
    file("a"_q, camera("10.0.0.1"));
    file("b"_q, "#:1.4=\nno version\n\n"_b);
    ConfigCollector collector({path("a"_q), path("b"_q)}, Options());
    ASSERT_TRUE(collector.next());
    const auto found = collector.next();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->status, Status::NoConfiguration);
    EXPECT_EQ(found->bytes, "#:1.4=\nno version\n\n"_b) << "for those who know what else it is";
    EXPECT_FALSE(found->hasVersions);
    EXPECT_EQ(found->fileVersion, "1.4"_q);
    EXPECT_TRUE(found->softwareVersion.isNull());
    EXPECT_TRUE(found->factoryIp.isNull());
}

TEST_F(ConfigCollectorTest, saysWhatBecameOfEveryPath)
{
    file("good.cfg"_q, camera("10.0.0.1"));
    file("empty"_q, ""_b);
    file("note.txt"_q, "x"_b);
    file("dir/a.cfg"_q, camera("10.0.0.2"));
    file("huge"_q, ""_b);
    ASSERT_TRUE(QFile::resize(path("huge"_q), qint64(8) << 30));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("fifo"_q)).constData(), 0600), 0);
    const QStringList paths = {
        path("good.cfg"_q), path("empty"_q), path("note.txt"_q), path("none"_q),
        path("fifo"_q),     path("dir"_q),   path("huge"_q),     ""_q,
        path("none.zip"_q)};
    EXPECT_EQ(
        collected(paths),
        (QStringList{
            "good.cfg: configuration: 10.0.0.1"_q, "empty: configuration"_q,
            "note.txt: no configuration"_q, "none: not found"_q, "fifo: not a file"_q,
            "dir: folder skipped"_q, "huge: file unreadable: File too large"_q, ": not found"_q,
            "none.zip: archive unreadable (CannotBeOpened): No such file or directory"_q}));
}

TEST_F(ConfigCollectorTest, keepsTheExceptionThatParseAllRaises)
{
    file("huge"_q, ""_b);
    ASSERT_TRUE(QFile::resize(path("huge"_q), qint64(8) << 30));
    ConfigCollector collector({path("huge"_q)}, Options());
    const auto found = collector.next();
    ASSERT_TRUE(found && found->exception);
    const auto *exception = dynamic_cast<const FileException *>(found->exception.get());
    ASSERT_TRUE(exception);
    EXPECT_EQ(exception->fileName(), path("huge"_q));
    EXPECT_EQ(exception->message(), path("huge"_q) + ": File too large"_q);
}

TEST_F(ConfigCollectorTest, keepsNothingOfAFileThatOpensAndThenFails)
{
    // Files of the kernel, which fail to read where no security module answers.
    ConfigCollector collector({"/proc/self/attr"_q}, recursive());
    int failed = 0;
    while (const auto found = collector.next()) {
        if (found->status != Status::FileUnreadable)
            continue;
        ++failed;
        EXPECT_EQ(found->systemError, EINVAL);
        EXPECT_EQ(found->reason, "Invalid argument"_q);
        EXPECT_TRUE(found->bytes.isNull());
        EXPECT_TRUE(found->text.isNull());
    }
    if (failed == 0)
        GTEST_SKIP() << "all files of /proc/self/attr can be read";
}

TEST_F(ConfigCollectorTest, namesFilesOfFoldersAsTheFolderWasNamed)
{
    file("sub/a"_q, camera("10.0.0.1"));
    file("sub/deep/b"_q, camera("10.0.0.2"));
    file("sub/deep/.c"_q, camera("10.0.0.3"));
    makeByPython(path("sub/d.zip"_q), {{"e.cfg"_q, camera("10.0.0.4")}});
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir().path()));
    const struct
    {
        QString path;
        QString prefix;
    } rows[] = {
        {"sub"_q, "sub/"_q},
        {"sub/"_q, "sub/"_q},
        {"./sub"_q, "./sub/"_q},
        {"."_q, "./sub/"_q},
        {"sub/deep/.."_q, "sub/deep/../"_q},
        {path("sub"_q), path("sub/"_q)},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(qPrintable(row.path));
        ConfigCollector collector({row.path}, recursive());
        QStringList sources;
        while (const auto found = collector.next()) {
            EXPECT_FALSE(found->isNamed);
            sources += found->path + found->entry + " "_q + found->factoryIp;
        }
        EXPECT_EQ(sources,
                  (QStringList{row.prefix + "a 10.0.0.1"_q, row.prefix + "d.zipe.cfg 10.0.0.4"_q,
                               row.prefix + "deep/b 10.0.0.2"_q}));
    }
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(ConfigCollectorTest, ordersTheEntriesOfFoldersByNameWhereAsked)
{
    for (const QString &name : {"b"_q, "B"_q, "a/z"_q, "a/y"_q, u8"ä"_q, "10"_q, "9"_q, "ab"_q})
        file("dir/"_q + name, camera("1"));
    QStringList names;
    for (const QString &line : collected({path("dir"_q)}, recursive()))
        names += line.section(QLatin1Char(':'), 0, 0).mid(4);
    EXPECT_EQ(names, (QStringList{"10"_q, "9"_q, "B"_q, "a/y"_q, "a/z"_q, "ab"_q, "b"_q, u8"ä"_q}));
}

TEST_F(ConfigCollectorTest, keepsTheOrderOfTheFileSystemOtherwise)
{
    Random random(20260101);
    for (int i = 0; i < 200; ++i)
        file("dir/%1"_q.arg(random.below(1000000)), camera("1"));
    QStringList expected;
    for (QDirIterator it(path("dir"_q), QDir::Files); it.hasNext();)
        expected += it.next();
    Options options = recursive();
    options.order = ConfigCollector::Order::FileSystem;
    ConfigCollector collector({path("dir"_q)}, options);
    QStringList paths;
    while (const auto found = collector.next())
        paths += found->path;
    EXPECT_EQ(paths, expected);
}

// ---- Folders that only Qt knows ----------------------------------------------------------------

TEST_F(ConfigCollectorTest, looksIntoResources)
{
    Options options;
    options.recursive = true;
    QStringList lines = collected({":/configurations"_q}, options);
    lines.sort();
    EXPECT_EQ(lines, (QStringList{":/configurations/more/south.cfg: configuration: 10.9.0.2"_q,
                                  ":/configurations/north.cfg: configuration: 10.9.0.1"_q,
                                  ":/configurations/note.txt: no configuration"_q}));
    EXPECT_EQ(collected({":/configurations"_q}, recursive()),
              (QStringList{":/configurations/more/south.cfg: configuration: 10.9.0.2"_q,
                           ":/configurations/north.cfg: configuration: 10.9.0.1"_q,
                           ":/configurations/note.txt: no configuration"_q}));
    EXPECT_EQ(collected({":/configurations/north.cfg"_q, ":/none"_q}),
              (QStringList{":/configurations/north.cfg: configuration: 10.9.0.1"_q,
                           ":/none: not found"_q}));
    EXPECT_EQ(vn::VanteroConfigFile::parseAll({":/configurations"_q}, true, ""_b).keys(),
              (QStringList{"10.9.0.1"_q, "10.9.0.2"_q}));
}

TEST_F(ConfigCollectorTest, looksIntoSearchPaths)
{
    file("one/a.cfg"_q, camera("10.0.0.1"));
    file("two/sub/b.cfg"_q, camera("10.0.0.2"));
    QDir::setSearchPaths("cams"_q, {path("one"_q), path("two"_q), ":/configurations"_q});
    EXPECT_EQ(collected({"cams:"_q}, recursive()),
              QStringList{"cams:/a.cfg: configuration: 10.0.0.1"_q});
    EXPECT_EQ(collected({"cams:sub"_q}, recursive()),
              QStringList{"cams:sub/b.cfg: configuration: 10.0.0.2"_q});
    EXPECT_EQ(collected({"cams:more"_q}, recursive()),
              QStringList{"cams:more/south.cfg: configuration: 10.9.0.2"_q});
    EXPECT_EQ(collected({"cams:a.cfg"_q, "cams:none"_q}),
              (QStringList{"cams:a.cfg: configuration: 10.0.0.1"_q, "cams:none: not found"_q}));
    EXPECT_EQ(vn::VanteroConfigFile::parseAll({"cams:"_q, "cams:sub"_q}, true, ""_b).keys(),
              (QStringList{"10.0.0.1"_q, "10.0.0.2"_q}));
    QDir::setSearchPaths("cams"_q, {});
}

// ---- Folders that are hard to go through -------------------------------------------------------

TEST_F(ConfigCollectorTest, goesThroughFoldersOfAnyDepthWithFewOpenFiles)
{
    QString name = "deep"_q;
    QStringList expected;
    for (int i = 0; i < 60; ++i) {
        file(name + "/z"_q, camera(QByteArray::number(i)));
        expected.prepend(QString::number(i));
        name += "/d"_q;
    }
    const auto addresses = [&] {
        ConfigCollector collector({path("deep"_q)}, recursive());
        QStringList found;
        while (const auto each = collector.next())
            found += each->factoryIp;
        return found;
    };
    EXPECT_EQ(addresses(), expected);

    // Where no more files can be open than one beside one.
    const int lowest = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(lowest);
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few = {rlim_t(lowest) + 2, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    const QStringList found = addresses();
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(found, expected);
}

#ifndef __SANITIZE_ADDRESS__ // the sanitizers open pipes to look at objects
TEST_F(ConfigCollectorTest, saysThatAFolderCannotBeListed)
{
    file("dir/a"_q, camera("10.0.0.1"));
    file("b"_q, camera("10.0.0.2"));
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none = {0, before.rlim_max}; // nothing can be opened
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const QStringList lines = collected({path("dir"_q), path("b"_q)}, recursive());
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(lines, (QStringList{"dir: folder unreadable: Too many open files"_q,
                                  "b: file unreadable: Too many open files"_q}));
}
#endif

TEST_F(ConfigCollectorTest, passesOverWhatGoesWhileItRuns)
{
    file("dir/a"_q, camera("10.0.0.1"));
    file("dir/b"_q, camera("10.0.0.2"));
    file("dir/c/inner"_q, camera("10.0.0.3"));
    ConfigCollector collector({path("dir"_q)}, recursive()); // which holds the names once it begins
    ASSERT_TRUE(collector.next());
    ASSERT_TRUE(QFile::remove(path("dir/b"_q)));
    ASSERT_TRUE(QDir(path("dir/c"_q)).removeRecursively());
    EXPECT_EQ(collected(collector), (QStringList{"dir/b: not found"_q, "dir/c: not found"_q}));
}

TEST_F(ConfigCollectorTest, saysThatAFolderIsClosedToThoseWithoutTheRight)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the administrator can become somebody without the right";
    file("closed/a"_q, camera("10.0.0.1"));
    file("listed/a"_q, camera("10.0.0.2"));
    file("open/a"_q, camera("10.0.0.3"));
    ASSERT_EQ(::chmod(QFile::encodeName(path("closed"_q)).constData(), 0000), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(path("listed"_q)).constData(), 0444), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(dir().path()).constData(), 0755), 0);
    const auto tell = [&] {
        if (::setgid(65534) != 0 || ::setuid(65534) != 0)
            return;
        const QStringList lines = collected({dir().path()}, recursive());
        for (const QString &line : lines)
            std::fputs(qPrintable(inFolder(line) + "\n"_q), stderr);
        const auto all = vn::VanteroConfigFile::parseAll({dir().path()}, true, ""_b);
        std::fputs(qPrintable("parseAll: "_q + QStringList(all.keys()).join(" "_q) + "\n"_q),
                   stderr);
    };
    EXPECT_EXIT((tell(), ::_exit(0)), testing::ExitedWithCode(0),
                "^closed: folder unreadable: Permission denied\n"
                "listed: folder unreadable: Permission denied\n"
                "listed/a: not found\n"
                "open/a: configuration: 10.0.0.3\n"
                "parseAll: 10.0.0.3\n$");
    ASSERT_EQ(::chmod(QFile::encodeName(path("closed"_q)).constData(), 0700), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(path("listed"_q)).constData(), 0700), 0);
}

TEST_F(ConfigCollectorTest, takesNoMoreMemoryForMoreFiles)
{
    for (int i = 0; i < 3000; ++i)
        file("dir/%1.cfg"_q.arg(i), camera("10.0.0.1", QByteArray(4000, 'x')));
    Options options = recursive();
    options.order = ConfigCollector::Order::FileSystem;
    ConfigCollector collector({path("dir"_q)}, options);
    std::size_t early = 0;
    int number = 0;
    while (const auto found = collector.next()) {
        ++number;
        const std::size_t taken = ::mallinfo2().uordblks; // 0 where a sanitizer allocates
        if (number == 100)
            early = taken;
        if (number > 100) {
            ASSERT_LE(taken, early + 4096) << number;
        }
    }
    EXPECT_EQ(number, 3000);
}

// ---- Stopping, and how far it is ---------------------------------------------------------------

TEST_F(ConfigCollectorTest, stopsWhereTheCallerWants)
{
    for (int i = 0; i < 10; ++i)
        file("dir/%1"_q.arg(i), camera("1"));
    std::atomic<bool> stop{false};
    Options options = recursive();
    options.stop = &stop;
    ConfigCollector collector({path("dir"_q)}, options);
    for (int i = 0; i < 4; ++i)
        ASSERT_TRUE(collector.next());
    EXPECT_FALSE(collector.wasStopped());
    stop = true;
    EXPECT_FALSE(collector.next());
    EXPECT_FALSE(collector.nextSource());
    EXPECT_TRUE(collector.wasStopped());
    EXPECT_EQ(collector.progress().files, 4);
    stop = false;
    EXPECT_EQ(collected(collector).size(), 6) << "it may go on";
    stop = true;
    EXPECT_FALSE(collector.wasStopped()) << "it came to its end before";
}

TEST_F(ConfigCollectorTest, stopsFromAnotherThreadAndWithinAnArchive)
{
    Entries entries;
    for (int i = 0; i < 20000; ++i)
        entries.append({"%1.cfg"_q.arg(i), camera("1")});
    makeByPython(path("a.zip"_q), entries, true);
    std::atomic<bool> stop{false};
    std::atomic<bool> hasBegun{false};
    Options options;
    options.stop = &stop;
    std::thread stopper([&] {
        while (!hasBegun)
            std::this_thread::yield();
        stop = true;
    });
    ConfigCollector collector({path("a.zip"_q)}, options);
    while (const auto found = collector.next())
        hasBegun = true;
    stopper.join();
    EXPECT_TRUE(collector.wasStopped());
    EXPECT_GT(collector.progress().files, 0);
    EXPECT_LT(collector.progress().files, 20000);
}

TEST_F(ConfigCollectorTest, tellsHowFarItIs)
{
    file("dir/a"_q, camera("10.0.0.1"));
    file("dir/b"_q, "x"_b);
    file("dir/c.zip"_q, "no archive"_b);
    makeByPython(path("dir/d.zip"_q), {{"e.cfg"_q, "12345"_b}, {"f"_q, "x"_b}, {"g.cfg"_q, ""_b}});
    file("dir/h"_q, ""_b);
    ASSERT_TRUE(QFile::resize(path("dir/h"_q), qint64(8) << 30));
    const qint64 size = camera("10.0.0.1").size();
    const QStringList paths = {path("none"_q), path("dir"_q)};
    const struct
    {
        const char *what;
        qint64 files;
        qint64 bytes;
        qint64 filesLeft;
        qint64 bytesLeft;
    } rows[] = {
        {"the path that leads to nothing", 0, 0, 6, size + 6 + (qint64(8) << 30)},
        {"a", 1, size, 5, 6 + (qint64(8) << 30)},
        {"b", 2, size + 1, 4, 5 + (qint64(8) << 30)},
        {"c.zip", 3, size + 1, 3, 5 + (qint64(8) << 30)},
        {"e.cfg", 4, size + 6, 2, qint64(8) << 30},
        {"g.cfg", 5, size + 6, 1, qint64(8) << 30},
        {"h, of which nothing was read", 6, size + 6, 0, qint64(8) << 30},
        {"the end", 6, size + 6, 0, 0},
    };
    ConfigCollector collector(paths, recursive());
    ConfigCollector unmeasured(paths, recursive());
    ASSERT_TRUE(collector.measure());
    EXPECT_EQ(collector.progress().files, 0);
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const bool isEnd = qstrcmp(row.what, "the end") == 0;
        EXPECT_EQ(bool(collector.next()), !isEnd);
        EXPECT_EQ(bool(unmeasured.next()), !isEnd);
        const auto progress = collector.progress();
        EXPECT_EQ(progress.files, row.files);
        EXPECT_EQ(progress.bytes, row.bytes);
        EXPECT_EQ(progress.filesLeft, row.filesLeft);
        EXPECT_EQ(progress.bytesLeft, row.bytesLeft);
        EXPECT_EQ(unmeasured.progress().files, row.files);
        EXPECT_EQ(unmeasured.progress().filesLeft, -1);
        EXPECT_EQ(unmeasured.progress().bytesLeft, -1);
    }
    EXPECT_TRUE(collector.measure()) << "which it knows already";
    EXPECT_EQ(collector.progress().filesLeft, 0);
}

TEST_F(ConfigCollectorTest, measuresUntilItIsStopped)
{
    file("a"_q, camera("1"));
    std::atomic<bool> stop{true};
    Options options;
    options.stop = &stop;
    ConfigCollector collector({path("a"_q)}, options);
    EXPECT_FALSE(collector.measure());
    EXPECT_EQ(collector.progress().filesLeft, -1);
    stop = false;
    EXPECT_TRUE(collector.measure());
    EXPECT_EQ(collector.progress().filesLeft, 1);
}

// ---- Places and reading apart ------------------------------------------------------------------

TEST_F(ConfigCollectorTest, givesPlacesWithoutReadingThem)
{
    file("a"_q, camera("10.0.0.1"));
    makeByPython(path("b.zip"_q), {{"c.cfg"_q, "12345"_b}});
    ConfigCollector places({path("a"_q), path("b.zip"_q), path("none"_q)}, Options());
    const auto first = places.nextSource();
    const auto second = places.nextSource();
    const auto third = places.nextSource();
    ASSERT_TRUE(first && second && third);
    EXPECT_FALSE(places.nextSource());
    EXPECT_EQ(places.progress().files, 0);
    EXPECT_EQ(first->path, path("a"_q));
    EXPECT_TRUE(first->isNamed);
    EXPECT_EQ(first->size, -1);
    EXPECT_EQ(second->path, path("b.zip"_q));
    EXPECT_EQ(second->entry, "c.cfg"_q);
    EXPECT_EQ(second->size, 5);

    ConfigCollector reader{Options()};
    EXPECT_EQ(shown(reader.read(*third)), "none: not found"_q);
    EXPECT_EQ(shown(reader.read(*second)), "b.zip:c.cfg: configuration"_q);
    EXPECT_EQ(shown(reader.read(*first)), "a: configuration: 10.0.0.1"_q);
    EXPECT_EQ(shown(reader.read(*first)), "a: configuration: 10.0.0.1"_q) << "as often as asked";
    EXPECT_EQ(shown(places.read(*second)), "b.zip:c.cfg: configuration"_q);
    EXPECT_EQ(shown(places.read(ConfigCollector::Source())), ": not found"_q);
    EXPECT_EQ(reader.progress().files, 3);
    EXPECT_FALSE(reader.next());
}

TEST_F(ConfigCollectorTest, readsOnThreadsWhatOneThreadWouldHaveRead)
{
    makeMixedTree();
    const QStringList expected = collected({path("tree"_q)}, recursive());
    EXPECT_EQ(expected.size(), 40 + 2 + 90 + 1);
    EXPECT_EQ(expected.filter("unreadable"_q).size(), 3);

    ConfigCollector places({path("tree"_q)}, recursive());
    std::mutex lock;
    std::map<int, QString> lines;
    int next = 0;
    const auto work = [&](int batchSize) {
        ConfigCollector reader(recursive());
        for (;;) {
            std::vector<ConfigCollector::Source> batch;
            int number = 0;
            {
                const std::lock_guard<std::mutex> guard(lock);
                number = next;
                while (int(batch.size()) < batchSize) {
                    const auto source = places.nextSource();
                    if (!source)
                        break;
                    batch.push_back(*source);
                }
                next += int(batch.size());
            }
            if (batch.empty())
                return;
            for (const ConfigCollector::Source &source : batch) {
                const QString line = shown(reader.read(source));
                const std::lock_guard<std::mutex> guard(lock);
                lines[number++] = line;
            }
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(work, 1 + i % 3);
    for (std::thread &thread : threads)
        thread.join();
    QStringList all;
    for (const auto &line : lines)
        all += line.second;
    EXPECT_EQ(all, expected);
}

TEST_F(ConfigCollectorTest, runsOnEightThreads)
{
    makeMixedTree();
    const QStringList expected = collected({path("tree"_q)}, recursive());
    std::vector<QStringList> results(8);
    std::vector<std::thread> threads;
    for (QStringList &result : results)
        threads.emplace_back([&] {
            for (int round = 0; round < 3; ++round)
                result = collected({path("tree"_q)}, recursive());
        });
    for (std::thread &thread : threads)
        thread.join();
    for (const QStringList &result : results)
        EXPECT_EQ(result, expected);
}
