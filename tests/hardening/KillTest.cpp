// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The tool is killed, or its disk is full, at any moment of a write: the file is the old or the
// new.

#include "base/AtomicFile.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <ctime>
#include <string>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kUnlimited = -1;

/** Sets a value in the file in a process of its own, which may be limited to files of that size. */
pid_t startEdit(const QString &path, int maxFileSize = kUnlimited)
{
    const std::string file = path.toStdString();
    const pid_t child = ::fork();
    if (child == 0) {
        if (maxFileSize != kUnlimited) {
            const rlimit limit = {rlim_t(maxFileSize), rlim_t(maxFileSize)};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            std::signal(SIGXFSZ, SIG_IGN);
        }
        const int null = ::open("/dev/null", O_RDWR);
        ::dup2(null, STDOUT_FILENO);
        ::dup2(null, STDERR_FILENO);
        ::execl(VANTERO_TOOL, VANTERO_TOOL, "config", "set", "--in-place", file.c_str(), "a", "k",
                "new", nullptr);
        ::_exit(127);
    }
    return child;
}

int waitFor(pid_t child)
{
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
}

const QByteArray kOld =
    "#:1\n#:2\n\nSECTION a\n" + QByteArray("key=value\n").repeated(20000) + "k=old\nENDSECTION a\n";

} // namespace

TEST(ToolWrites, leaveTheOldOrTheNewFileWhenKilled)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.cfg"_q);
    const QByteArray changed = QByteArray(kOld).replace("k=old", "k=new");

    writeFile(path, kOld);
    timespec begin = {};
    timespec end = {};
    ::clock_gettime(CLOCK_MONOTONIC, &begin);
    ASSERT_EQ(waitFor(startEdit(path)), 0);
    ::clock_gettime(CLOCK_MONOTONIC, &end);
    ASSERT_EQ(readFile(path), changed);
    const auto whole = static_cast<unsigned>((end.tv_sec - begin.tv_sec) * 1000000 +
                                             (end.tv_nsec - begin.tv_nsec) / 1000);

    Random random(1);
    for (int i = 0; i < 60; ++i) {
        writeFile(path, kOld);
        const pid_t child = startEdit(path);
        ::usleep(random.below(whole + whole / 4 + 1));
        ::kill(child, SIGKILL);
        waitFor(child);
        const QByteArray content = readFile(path);
        ASSERT_TRUE(content == kOld || content == changed) << content.size() << " bytes";
    }
}

TEST(ToolWrites, leaveTheOldFileWhenTheDiskIsFull)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.cfg"_q);
    writeFile(path, kOld);
    for (const int size : {0, 1, 4096, 100000, int(kOld.size()) - 1}) {
        SCOPED_TRACE(size);
        const int status = waitFor(startEdit(path, size));
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 3);
        EXPECT_EQ(readFile(path), kOld);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
                  QStringList("a.cfg"_q));
    }
}

TEST(AtomicFilesKill, leavesWholeFilesOnly)
{
    // A process of its own makes batches of files until it is killed.
    constexpr int kBatchSize = 40;
    const QByteArray content = QByteArray("key=value\n").repeated(2000);
    Random random(2);
    int most = 0;
    for (int i = 0; i < 40; ++i) {
        const QTemporaryDir folder;
        const QString path = folder.path();
        const pid_t child = ::fork();
        if (child == 0) {
            vn::AtomicFiles files(path);
            for (int number = 0;; ++number) {
                if (!files.add(QString::number(number), content + QByteArray::number(number)))
                    ::_exit(1);
                if (files.count() == kBatchSize && !files.commit().isEmpty())
                    ::_exit(1);
            }
        }
        ::usleep(random.below(60000));
        ::kill(child, SIGKILL);
        EXPECT_EQ(WTERMSIG(waitFor(child)), SIGKILL);

        const QStringList names = QDir(path).entryList(QDir::Files);
        for (const QString &name : names)
            ASSERT_EQ(readFile(folder.filePath(name)), content + name.toLatin1());
        most = std::max(most, names.size());
        const QStringList all =
            QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        ASSERT_LE(all.size(), names.size() + 1) << "one hidden folder at the most";
    }
    EXPECT_GT(most, kBatchSize) << "killed too early: nothing shown";
}
