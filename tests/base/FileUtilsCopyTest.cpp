// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/FileUtils.h"

#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>

#include <limits>

#include <sys/stat.h>
#include <unistd.h>

using namespace vn;
using End = SequentialDevice::End;

namespace {

constexpr quint64 kNoLimit = std::numeric_limits<quint64>::max();
constexpr int kForEver = -1;
// A machine that is busy may be late; one that waits for what never comes would be later.
constexpr int kLate = 20000;

/** A buffer that is open for reading. */
std::unique_ptr<QBuffer> source(const QByteArray &bytes)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    EXPECT_TRUE(buffer->open(QIODevice::ReadOnly));
    return buffer;
}

class Copy : public FolderTest
{
protected:
    void SetUp() override
    {
        FolderTest::SetUp();
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
    }

    /** Expects that copying @p device stops because of the time, in time. */
    void expectTimeout(QIODevice *device, int timeoutMs)
    {
        QElapsedTimer timer;
        timer.start();
        expectThrows<IOException>([&] { FileUtils::copy(device, &target, kNoLimit, timeoutMs); },
                                  "the data did not end within %1 ms"_q.arg(timeoutMs));
        EXPECT_GE(timer.elapsed(), timeoutMs);
        EXPECT_LT(timer.elapsed(), kLate);
    }

    QBuffer target;
};

} // namespace

TEST_F(Copy, copiesWhatRemainsAndCountsIt)
{
    const auto from = source("head body"_b);
    ASSERT_EQ(from->read(5), "head "_b);
    EXPECT_EQ(FileUtils::copy(from.get(), &target, kNoLimit, 1000), 4U);
    EXPECT_EQ(target.data(), "body"_b);
    EXPECT_EQ(FileUtils::copy(from.get(), &target, kNoLimit, 1000), 0U);
    EXPECT_EQ(target.data(), "body"_b);
}

TEST_F(Copy, copiesBytesAsTheyAre)
{
    QByteArray bytes;
    for (int i = 0; i < 300000; ++i)
        bytes.append(static_cast<char>(i * 7 + i / 251));
    EXPECT_EQ(FileUtils::copy(source(bytes).get(), &target, kNoLimit, 1000), 300000U);
    EXPECT_TRUE(target.data() == bytes);
}

TEST_F(Copy, takesAsMuchAsIsAllowed)
{
    const QByteArray bytes(100000, 'x');
    EXPECT_EQ(FileUtils::copy(source(bytes).get(), &target, 100000, 1000), 100000U);
    EXPECT_TRUE(target.data() == bytes);
    EXPECT_EQ(FileUtils::copy(source(""_b).get(), &target, 0, 1000), 0U);
}

TEST_F(Copy, refusesASourceThatHoldsOneByteMore)
{
    const QByteArray bytes(100000, 'x');
    expectThrows<IOException>([&] { FileUtils::copy(source(bytes).get(), &target, 99999, 1000); },
                              "more than 99999 bytes"_q);
    EXPECT_LE(target.data().size(), 99999);
    target.buffer().clear();
    target.seek(0);
    expectThrows<IOException>([&] { FileUtils::copy(source("x"_b).get(), &target, 0, 1000); },
                              "more than 0 bytes"_q);
    EXPECT_EQ(target.data(), ""_b);
}

TEST_F(Copy, refusesMoreFromASequentialSourceToo)
{
    SequentialDevice from({"abc"_b, "def"_b, "g"_b}, End::NoMore);
    expectThrows<IOException>([&] { FileUtils::copy(&from, &target, 6, 1000); },
                              "more than 6 bytes"_q);
    EXPECT_EQ(target.data(), "abcdef"_b);
    SequentialDevice exact({"abc"_b, "def"_b}, End::NoMore);
    EXPECT_EQ(FileUtils::copy(&exact, &target, 6, 1000), 6U);
}

TEST_F(Copy, raisesTheReadErrorWhereverItComes)
{
    const QByteArray bytes = "name=front\n"_b;
    for (int k = 0; k < bytes.size(); ++k) {
        FailingDevice from(bytes, k);
        expectThrows<IOException>([&] { FileUtils::copy(&from, &target, kNoLimit, 1000); },
                                  "the medium is worn out"_q);
    }
}

TEST_F(Copy, raisesTheWriteErrorWhereverItComes)
{
    const QByteArray bytes = "name=front\n"_b;
    for (int k = 0; k < bytes.size(); ++k) {
        FailingDevice to(QByteArray(), k);
        expectThrows<IOException>(
            [&] { FileUtils::copy(source(bytes).get(), &to, kNoLimit, 1000); },
            k == 0 ? "the medium is worn out"_q : "only %1 of 11 bytes could be written"_q.arg(k));
        EXPECT_EQ(to.written(), bytes.left(k));
    }
    FailingDevice to(QByteArray(), bytes.size());
    EXPECT_EQ(FileUtils::copy(source(bytes).get(), &to, kNoLimit, 1000), 11U);
}

TEST_F(Copy, raisesTheErrorOfAFullDisk)
{
    for (const int size : {1, 100000}) {
        QFile full("/dev/full"_q);
        ASSERT_TRUE(full.open(QIODevice::WriteOnly));
        expectThrows<FileException>(
            [&] { FileUtils::copy(source(QByteArray(size, 'x')).get(), &full, kNoLimit, 1000); },
            "/dev/full: No space left on device"_q);
    }
}

TEST_F(Copy, showsItsResultInTheFileAtOnce)
{
    QFile to(path("file"_q));
    ASSERT_TRUE(to.open(QIODevice::WriteOnly));
    FileUtils::copy(source("body"_b).get(), &to, kNoLimit, 1000);
    EXPECT_EQ(readFile(to.fileName()), "body"_b);
}

TEST_F(Copy, raisesTheReadErrorOfAFile)
{
    QFile from("/proc/self/mem"_q);
    ASSERT_TRUE(from.open(QIODevice::ReadOnly));
    expectThrows<FileException>([&] { FileUtils::copy(&from, &target, kNoLimit, 1000); },
                                "/proc/self/mem: Input/output error"_q);
}

TEST_F(Copy, refusesDevicesThatAreNotOpen)
{
    testing::internal::CaptureStderr();
    QBuffer closed;
    expectThrows<IOException>([&] { FileUtils::copy(&closed, &target, kNoLimit, 1000); },
                              "not open for reading"_q);
    expectThrows<IOException>(
        [&] { FileUtils::copy(source("x"_b).get(), &closed, kNoLimit, 1000); },
        "not open for writing"_q);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Copy, copiesASequentialSourceToEachKindOfEnd)
{
    for (const End end : {End::NoMore, End::Closed}) {
        for (const int timeout : {kForEver, 0, 10000}) {
            SequentialDevice from({"ab"_b, "cd"_b}, end);
            EXPECT_EQ(FileUtils::copy(&from, &target, kNoLimit, timeout), 4U);
        }
    }
    EXPECT_EQ(target.data(), "abcdabcdabcdabcdabcdabcd"_b);
}

TEST_F(Copy, raisesTheErrorOfASequentialSource)
{
    SequentialDevice from({"ab"_b}, End::Error);
    expectThrows<IOException>([&] { FileUtils::copy(&from, &target, kNoLimit, 1000); },
                              "the line is dead"_q);
}

TEST_F(Copy, waitsForASequentialSource)
{
    for (const int timeout : {kForEver, kLate}) {
        SequentialDevice from({"ab"_b, "cd"_b, "ef"_b}, End::NoMore, 10);
        EXPECT_EQ(FileUtils::copy(&from, &target, kNoLimit, timeout), 6U);
        EXPECT_GE(from.waitCount(), 3);
    }
}

TEST_F(Copy, stopsWaitingWhenTheTimeIsOver)
{
    for (const int timeout : {0, 50}) {
        SequentialDevice from({"ab"_b}, End::Silent);
        expectTimeout(&from, timeout);
    }
    EXPECT_EQ(target.data(), "abab"_b);
}

TEST_F(Copy, countsTheTimeOfTheWholeCall)
{
    // No single piece is late.
    QList<QByteArray> pieces;
    for (int i = 0; i < 1000; ++i)
        pieces << "x"_b;
    SequentialDevice from(pieces, End::NoMore, 20);
    expectTimeout(&from, 100);
    EXPECT_GE(target.data().size(), 1);
    EXPECT_LE(target.data().size(), 5);
}

TEST_F(Copy, stopsASourceThatPromisesMoreForEver)
{
    SequentialDevice from({"ab"_b}, End::PromisesMore);
    expectTimeout(&from, 50);
}

TEST_F(Copy, stopsASourceThatAlwaysHasMore)
{
    class Device : public QIODevice
    {
    public:
        bool isSequential() const override { return true; }

    protected:
        qint64 readData(char *data, qint64) override
        {
            QThread::msleep(1);
            *data = 'x';
            return 1;
        }
        qint64 writeData(const char *, qint64) override { return -1; }
    };
    Device from;
    ASSERT_TRUE(from.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    expectTimeout(&from, 50);
}

TEST_F(Copy, raisesTheReadErrorOfAPipe)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[0]);
    QFile from; // on the end that is for writing
    ASSERT_TRUE(from.open(ends[1], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    expectThrows<FileException>([&] { FileUtils::copy(&from, &target, kNoLimit, 10000); },
                                ": Bad file descriptor"_q);
}

TEST_F(Copy, stopsASourceThatNeverEnds)
{
    QProcess process;
    process.start("/bin/sh"_q, {"-c"_q, "yes"_q});
    QBuffer none;
    class Drain : public QIODevice
    {
    protected:
        qint64 readData(char *, qint64) override { return -1; }
        qint64 writeData(const char *, qint64 size) override { return size; }
    } drain;
    ASSERT_TRUE(drain.open(QIODevice::WriteOnly));
    expectThrows<IOException>([&] { FileUtils::copy(&process, &drain, kNoLimit, 100); },
                              "the data did not end within 100 ms"_q);
    process.kill();
    process.waitForFinished();
}

TEST_F(Copy, copiesAProcessToItsEnd)
{
    QProcess process;
    process.start("/bin/sh"_q, {"-c"_q, "echo one; sleep 0.1; echo two; exit 1"_q});
    EXPECT_EQ(FileUtils::copy(&process, &target, kNoLimit, kLate), 8U);
    EXPECT_EQ(target.data(), "one\ntwo\n"_b);
    process.waitForFinished();
}

TEST_F(Copy, stopsWaitingForAProcess)
{
    QProcess process;
    process.start("/bin/sh"_q, {"-c"_q, "echo one; exec sleep 100"_q});
    expectTimeout(&process, 300);
    process.kill();
    process.waitForFinished();
}

TEST_F(Copy, keepsToTheTimeOnAPipe)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    QFile from;
    ASSERT_TRUE(from.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    ASSERT_EQ(::write(ends[1], "abc", 3), 3);
    expectThrows<FileException>([&] { FileUtils::copy(&from, &target, kNoLimit, 50); },
                                ": the data did not end within 50 ms"_q);
    EXPECT_EQ(target.data(), "abc"_b) << "what came in time";

    ASSERT_EQ(::write(ends[1], "def", 3), 3);
    ::close(ends[1]);
    EXPECT_EQ(FileUtils::copy(&from, &target, kNoLimit, 10000), 3U);
    EXPECT_EQ(target.data(), "abcdef"_b);
}

TEST_F(Copy, copiesWhatAFileHoldsInItsBufferBeforeThePipe)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "abcdef", 6), 6);
    ::close(ends[1]);
    QFile from;
    ASSERT_TRUE(from.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    char first;
    ASSERT_TRUE(from.getChar(&first)); // reads the rest into the buffer
    EXPECT_EQ(FileUtils::copy(&from, &target, kNoLimit, 10000), 5U);
    EXPECT_EQ(target.data(), "bcdef"_b);
}
