// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/FileUtils.h"

#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTextCodec>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

using namespace vn;
using End = SequentialDevice::End;

namespace {

class ReadText : public FolderTest
{
protected:
    /** Makes a pipe in the folder into which a thread writes @p pieces, a moment apart. */
    QString pipeWith(const QList<QByteArray> &pieces)
    {
        const QString pipe = path("pipe"_q);
        EXPECT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        m_writer = std::thread([pieces, pipe] {
            const int descriptor = ::open(QFile::encodeName(pipe).constData(), O_WRONLY);
            for (const QByteArray &piece : pieces) {
                QThread::msleep(20);
                EXPECT_EQ(
                    ::write(descriptor, piece.constData(), static_cast<std::size_t>(piece.size())),
                    piece.size());
            }
            ::close(descriptor);
        });
        return pipe;
    }

    void TearDown() override
    {
        if (m_writer.joinable())
            m_writer.join();
    }

private:
    std::thread m_writer;
};

int openDescriptors()
{
    return static_cast<int>(QDir("/proc/self/fd"_q).count());
}

/** Lets a timer interrupt the process's system calls again and again. */
class Interruptions
{
public:
    Interruptions()
    {
        struct sigaction action = {};
        action.sa_handler = [](int) { ++s_count; };
        ::sigaction(SIGALRM, &action, &m_action); // without SA_RESTART
        const itimerval interval = {{0, 2000}, {0, 2000}};
        ::setitimer(ITIMER_REAL, &interval, nullptr);
    }
    ~Interruptions()
    {
        const itimerval none = {};
        ::setitimer(ITIMER_REAL, &none, nullptr);
        ::sigaction(SIGALRM, &m_action, nullptr);
    }
    static int count() { return s_count; }

private:
    static inline std::atomic<int> s_count{0};
    struct sigaction m_action = {};
};

struct Decoding
{
    const char *name;
    QByteArray bytes;
    QString text;
};

// clang-format off
const Decoding kDecodings[] = {
    // name                          bytes                            text
    {"nothing",                      ""_b,                            ""_q},
    {"ascii",                        "ip=10.0.0.1\n"_b,               "ip=10.0.0.1\n"_q},
    {"dosLineEnds_stay",             "a\r\nb\rc\n"_b,                 "a\r\nb\rc\n"_q},
    {"zeroBytes_stay",               "a\0b\0"_b,                      "a\0b\0"_q},
    {"utf8",                         "T\xC3\xBCr"_b,                  u8"Tür"_q},
    {"utf8OfEveryLength",            "\xC2\xA2\xE2\x82\xAC\xF0\x9F\x93\xB7"_b, u8"¢€📷"_q},
    {"byteOrderMark_goes",           "\xEF\xBB\xBFname"_b,            "name"_q},
    {"byteOrderMarkAlone",           "\xEF\xBB\xBF"_b,                ""_q},
    {"secondByteOrderMark_stays",    "\xEF\xBB\xBF\xEF\xBB\xBF"_b,    QString(QChar(0xFEFF))},
    {"byteOrderMarkWithin_stays",    "a\xEF\xBB\xBF"_b,               u8"a\uFEFF"_q},
    {"latin1",                       "T\xFCr"_b,                      u8"Tür"_q},
    {"latin1AtTheEnd",               "Gr\xFC\xDF"_b,                  u8"Grüß"_q},
    {"latin1ControlCodes",           "\x80\x9F"_b,                    u8"\u0080\u009F"_q},
    {"utf8AndLatin1_isAllLatin1",    "\xC3\xBC\xFC"_b,                u8"Ã¼ü"_q},
    {"byteOrderMarkInLatin1_stays",  "\xEF\xBB\xBF\xFC"_b,            u8"ï»¿ü"_q},
    {"utf16_isLatin1",               "\xFF\xFE" "a\0"_b,              u8"ÿþa\0"_q},
};
// clang-format on

class DecodeText : public testing::TestWithParam<Decoding>
{
};

} // namespace

TEST_P(DecodeText, fromBytesFileAndDevice)
{
    const Decoding &row = GetParam();
    EXPECT_EQ(FileUtils::decodeText(row.bytes), row.text);
    EXPECT_FALSE(FileUtils::decodeText(row.bytes).isNull());

    QTemporaryDir folder;
    writeFile(folder.filePath("file"_q), row.bytes);
    EXPECT_EQ(FileUtils::readText(folder.filePath("file"_q)), row.text);

    QBuffer buffer;
    buffer.setData(row.bytes);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    EXPECT_EQ(FileUtils::readText(&buffer), row.text);
}

INSTANTIATE_TEST_SUITE_P(FileUtils, DecodeText, testing::ValuesIn(kDecodings), nameOfRow);

TEST(DecodeTextTest, ofNullBytesIsEmpty)
{
    EXPECT_EQ(FileUtils::decodeText(QByteArray()), ""_q);
    EXPECT_FALSE(FileUtils::decodeText(QByteArray()).isNull());
}

// Unicode 15, table 3-7, at its edges, each behind as many ASCII bytes as the search for the first
// other one may pass over at a time.
TEST(DecodeTextTest, tellsWellFormedUtf8FromOtherBytes)
{
    struct Row
    {
        QByteArray bytes;
        QString text; // null: not well-formed
    };
    const Row rows[] = {
        {"\xC2\x80"_b, u8"\u0080"_q},
        {"\xDF\xBF"_b, u8"\u07FF"_q},
        {"\xE0\xA0\x80"_b, u8"\u0800"_q},
        {"\xED\x9F\xBF"_b, u8"\uD7FF"_q},
        {"\xEE\x80\x80"_b, u8"\uE000"_q},
        {"\xEF\xBF\xBD"_b, u8"\uFFFD"_q},
        {"\xEF\xBF\xBF"_b, u8"\uFFFF"_q},
        {"\xF0\x90\x80\x80"_b, u8"\U00010000"_q},
        {"\xF3\xBF\xBF\xBF"_b, u8"\U000FFFFF"_q},
        {"\xF4\x8F\xBF\xBF"_b, u8"\U0010FFFF"_q},
        {"\xC0\x80"_b, QString()},         // longer than needed
        {"\xC1\xBF"_b, QString()},         // longer than needed
        {"\xE0\x80\x80"_b, QString()},     // longer than needed
        {"\xE0\x9F\xBF"_b, QString()},     // longer than needed
        {"\xF0\x80\x80\x80"_b, QString()}, // longer than needed
        {"\xF0\x8F\xBF\xBF"_b, QString()}, // longer than needed
        {"\xED\xA0\x80"_b, QString()},     // a surrogate
        {"\xED\xBF\xBF"_b, QString()},     // a surrogate
        {"\xF4\x90\x80\x80"_b, QString()}, // past U+10FFFF
        {"\xF5\x80\x80\x80"_b, QString()}, // past U+10FFFF
        {"\xF8\x88\x80\x80\x80"_b, QString()},
        {"\xFE"_b, QString()},
        {"\xFF"_b, QString()},
        {"\x80"_b, QString()}, // continues nothing
        {"\xBF"_b, QString()}, // continues nothing
        {"\xC2"_b, QString()}, // cut off
        {"\xE2\x82"_b, QString()},
        {"\xE2"_b, QString()},
        {"\xF0\x9F\x93"_b, QString()},
        {"\xF0\x9F"_b, QString()},
        {"\xF0"_b, QString()},
        {"\xC2\x41"_b, QString()}, // ASCII where it should go on
        {"\xE2\x41\xAC"_b, QString()},
        {"\xE2\x82\x41"_b, QString()},
        {"\xF0\x41\x93\xB7"_b, QString()},
        {"\xF0\x9F\x41\xB7"_b, QString()},
        {"\xF0\x9F\x93\x41"_b, QString()},
        {"\xC2\xC2\x80"_b, QString()}, // begins anew where it should go on
        {"\xF0\x9F\x93\xF0"_b, QString()},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.bytes.toHex(' ').toStdString());
        for (int before = 0; before <= 70; ++before) {
            for (const int after : {0, 1, 40}) {
                const QByteArray head(before, 'x');
                const QByteArray tail(after, 'y');
                // Letters after bytes that are cut off would only make them wrong in another way.
                const QByteArray bytes = head + row.bytes + tail;
                const QString expected = row.text.isNull() ? QString::fromLatin1(bytes)
                                                           : QString::fromLatin1(head) + row.text +
                                                                 QString::fromLatin1(tail);
                ASSERT_EQ(FileUtils::decodeText(bytes), expected) << before << ' ' << after;
            }
        }
    }
}

/** What Qt's own decoder makes of the bytes, and Latin-1 where it objects to them. */
static QString decodedByQt(const QByteArray &bytes)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text =
        QTextCodec::codecForMib(106)->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0
               ? text
               : QString::fromLatin1(bytes.constData(), bytes.size());
}

TEST(DecodeTextTest, agreesWithQtOnAllPairsOfBytes)
{
    for (int i = 0; i < 0x10000; ++i) {
        const char pair[] = {static_cast<char>(i >> 8), static_cast<char>(i & 0xFF)};
        const QByteArray bytes(pair, 2);
        ASSERT_EQ(FileUtils::decodeText(bytes), decodedByQt(bytes)) << i;
    }
}

TEST(DecodeTextTest, agreesWithQtAtTheBordersOfLongSequences)
{
    const QByteArray borders = "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xEF\xFF"_b;
    const auto expectSame = [](const QByteArray &bytes) {
        ASSERT_EQ(FileUtils::decodeText(bytes), decodedByQt(bytes)) << bytes.toHex().constData();
    };
    for (int lead = 0xC0; lead <= 0xFF; ++lead) {
        for (int second = 0; second <= 0xFF; ++second) {
            for (const char third : borders) {
                const char bytes[] = {static_cast<char>(lead), static_cast<char>(second), third};
                if (lead != 0xEF || second != 0xBB || third != '\xBF') // the byte order mark
                    expectSame(QByteArray(bytes, 3));
            }
        }
        for (const char second : borders)
            for (const char third : borders)
                for (const char fourth : borders) {
                    const char bytes[] = {static_cast<char>(lead), second, third, fourth};
                    expectSame(QByteArray(bytes, 4));
                }
    }
}

TEST(DecodeTextTest, takesAReplacementCharacterForOne)
{
    EXPECT_EQ(FileUtils::decodeText("\xEF\xBF\xBD"_b), u8"\uFFFD"_q);
    EXPECT_EQ(FileUtils::decodeText("\xEF\xBB\xBF\xEF\xBF\xBD\xC3\xBC"_b), u8"\uFFFD\u00FC"_q);
    EXPECT_EQ(FileUtils::decodeText("\xEF\xBF\xBD\xFC"_b), u8"\u00EF\u00BF\u00BD\u00FC"_q);
    EXPECT_EQ(FileUtils::decodeText("\xFC\xEF\xBF\xBD"_b), u8"\u00FC\u00EF\u00BF\u00BD"_q);
}

TEST(DecodeTextTest, agreesWithQtOnRandomBytes)
{
    Random random(20261121);
    const QByteArray interesting =
        "a\x7F\x80\x8F\x90\x9F\xA0\xBF\xC1\xC2\xDF\xE0\xED\xEF\xF0\xF4\xF5"_b;
    for (int i = 0; i < 200000; ++i) {
        QByteArray bytes(static_cast<int>(random.below(9)), 'x');
        for (char &byte : bytes)
            byte = interesting.at(static_cast<int>(random.below(17)));
        if (bytes.startsWith("\xEF\xBB\xBF"))
            continue; // the byte order mark is another test's
        ASSERT_EQ(FileUtils::decodeText(bytes), decodedByQt(bytes)) << bytes.toHex().constData();
    }
}

TEST_F(ReadText, readsFilesOfEverySizeAroundTheBuffers)
{
    for (const int size : {1, 4095, 4096, 4097, 65535, 65536, 65537, 131072, 3000000}) {
        QByteArray bytes(size, 'x');
        bytes[size - 1] = '\xFC';
        EXPECT_EQ(FileUtils::readText(fileWith(bytes)), QString::fromLatin1(bytes)) << size;
    }
}

TEST_F(ReadText, readsAFileWithANameBeyondAscii)
{
    EXPECT_EQ(FileUtils::readText(fileWith("text"_b, u8"Tür €.cfg"_q)), "text"_q);
}

TEST_F(ReadText, readsThroughALink)
{
    ASSERT_TRUE(QFile::link(fileWith("text"_b), path("link"_q)));
    EXPECT_EQ(FileUtils::readText(path("link"_q)), "text"_q);
}

TEST_F(ReadText, readsFilesOfTheKernelThatTellNoSize)
{
    const QString text = FileUtils::readText("/proc/self/maps"_q);
    EXPECT_TRUE(text.contains("base_tests"_q));
    EXPECT_TRUE(text.endsWith(QLatin1Char('\n')));
    EXPECT_EQ(FileUtils::readText("/dev/null"_q), ""_q);
}

TEST_F(ReadText, readsAPipeToItsEnd)
{
    const QByteArray large(300000, 'z');
    EXPECT_EQ(FileUtils::readText(pipeWith({"first\n"_b, "second\n"_b, large})),
              "first\nsecond\n"_q + QString::fromLatin1(large));
}

TEST_F(ReadText, goesOnAfterSignals)
{
    const QString pipe = pipeWith({"a"_b, "b"_b, "c"_b});
    const Interruptions interruptions;
    EXPECT_EQ(FileUtils::readText(pipe), "abc"_q);
    EXPECT_GT(Interruptions::count(), 0);
}

TEST_F(ReadText, hasTheBytesForThoseWhoDecodeThemselves)
{
    const QByteArray bytes = "\xEF\xBB\xBF\xC3\xBC\0\r\n"_b;
    EXPECT_EQ(FileUtils::readBytes(fileWith(bytes)), bytes);
    EXPECT_EQ(FileUtils::readBytes(fileWith(""_b)), ""_b);
    QFile file(fileWith(bytes));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_TRUE(file.seek(3));
    EXPECT_EQ(FileUtils::readBytes(&file), bytes.mid(3));
    EXPECT_EQ(FileUtils::readBytes(":/base/resource.txt"_q),
              "A text f\xC3\xBCr the resource test.\n"_b);
    expectThrows<FileException>([&] { FileUtils::readBytes(path("none"_q)); },
                                path("none"_q) + ": No such file or directory"_q);
}

TEST_F(ReadText, readsQtsResources)
{
    EXPECT_EQ(FileUtils::readText(":/base/resource.txt"_q), u8"A text für the resource test.\n"_q);
    expectThrows<FileException>([] { FileUtils::readText(":/none"_q); },
                                ":/none: No such file or directory"_q);
}

TEST_F(ReadText, readsFilesInQtsSearchPaths)
{
    fileWith("found"_b, "a.cfg"_q);
    QDir::setSearchPaths("readtext"_q, {path("none"_q), dir().path(), ":/base"_q});
    EXPECT_EQ(FileUtils::readText("readtext:a.cfg"_q), "found"_q);
    EXPECT_EQ(FileUtils::readText("readtext:resource.txt"_q),
              u8"A text für the resource test.\n"_q);
    expectThrows<FileException>([] { (void)FileUtils::readText("readtext:b.cfg"_q); },
                                "readtext:b.cfg: No such file or directory"_q);
    QDir::setSearchPaths("readtext"_q, {});
    expectThrows<FileException>([] { (void)FileUtils::readText("readtext:a.cfg"_q); },
                                "readtext:a.cfg: No such file or directory"_q);
    // A colon elsewhere, or before no search path, is a letter like any other.
    EXPECT_EQ(FileUtils::readText(fileWith("one"_b, "readtext:a.cfg"_q)), "one"_q);
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir().path()));
    EXPECT_EQ(FileUtils::readText("readtext:a.cfg"_q), "one"_q);
    EXPECT_TRUE(QDir::setCurrent(before));
}

TEST_F(ReadText, namesTheFileAndTheReasonWhereItCannotBeOpened)
{
    const QString missing = path("missing.cfg"_q);
    expectThrows<FileException>([&] { FileUtils::readText(missing); },
                                [&](const FileException &e) {
                                    EXPECT_EQ(e.fileName(), missing);
                                    EXPECT_EQ(e.message(),
                                              missing + ": No such file or directory"_q);
                                });
    expectThrows<FileException>([] { FileUtils::readText(QString()); },
                                ": No such file or directory"_q);
    const QString below = fileWith("x"_b) + "/below"_q;
    expectThrows<FileException>([&] { FileUtils::readText(below); }, below + ": Not a directory"_q);
    const QString endless = path(QString(300, QLatin1Char('n')));
    expectThrows<FileException>([&] { FileUtils::readText(endless); },
                                endless + ": File name too long"_q);
}

TEST_F(ReadText, takesNoZeroCharacterForTheEndOfAName)
{
    const QString name = fileWith("x"_b) + QChar(0) + "more"_q;
    expectThrows<FileException>([&] { FileUtils::readText(name); }, name + ": Invalid argument"_q);
}

TEST_F(ReadText, raisesTheErrorOfAFolder)
{
    expectThrows<FileException>([&] { FileUtils::readText(dir().path()); },
                                dir().path() + ": Is a directory"_q);
}

TEST_F(ReadText, raisesAReadErrorOfAFile)
{
    // opens well; nothing is mapped at its start
    expectThrows<FileException>([] { FileUtils::readText("/proc/self/mem"_q); },
                                "/proc/self/mem: Input/output error"_q);
}

TEST_F(ReadText, refusesAFileThatNoTextCanHold)
{
    QFile file(path("sparse"_q));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(qint64(1) << 30));
    expectThrows<FileException>([&] { FileUtils::readText(file.fileName()); },
                                file.fileName() + ": File too large"_q);
    file.close();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    expectThrows<FileException>([&] { FileUtils::readText(&file); },
                                file.fileName() + ": File too large"_q);
}

TEST_F(ReadText, tellsOfATerminalThatHangsUpAsOfAnyError)
{
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(master, 0);
    ASSERT_EQ(::grantpt(master), 0);
    ASSERT_EQ(::unlockpt(master), 0);
    const int terminal = ::open(::ptsname(master), O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(::write(terminal, "text", 4), 4);
    ::close(terminal); // from now on the other end gives what there was, then EIO

    QFile file;
    ASSERT_TRUE(file.open(master, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    ASSERT_TRUE(file.isSequential());
    EXPECT_THROW((void)FileUtils::readText(&file), FileException);
}

TEST_F(ReadText, refusesAFileWithoutEndOnceNoTextCanHoldIt)
{
    expectThrows<FileException>([] { FileUtils::readText("/dev/zero"_q); },
                                "/dev/zero: File too large"_q);
    QFile file("/dev/zero"_q);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    expectThrows<FileException>([&] { FileUtils::readText(&file); }, "/dev/zero: File too large"_q);
}

TEST_F(ReadText, leavesNoFileOpen)
{
    const QString file = fileWith("text"_b);
    const int before = openDescriptors();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(FileUtils::readText(file), "text"_q);
        EXPECT_THROW(FileUtils::readText(path("missing"_q)), FileException);
        EXPECT_THROW(FileUtils::readText(dir().path()), FileException);
        EXPECT_THROW(FileUtils::readText("/proc/self/mem"_q), FileException);
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ReadTextOfDevice, readsWhatRemains)
{
    QBuffer buffer;
    buffer.setData("head\nbody\n"_b);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    ASSERT_EQ(buffer.readLine(), "head\n"_b);
    EXPECT_EQ(FileUtils::readText(&buffer), "body\n"_q);
    EXPECT_EQ(FileUtils::readText(&buffer), ""_q);
    EXPECT_TRUE(buffer.isOpen());
}

TEST(ReadTextOfDevice, givesBackWhatWasPutBack)
{
    SequentialDevice device({"abc"_b}, End::NoMore);
    char first;
    ASSERT_TRUE(device.getChar(&first));
    device.ungetChar(first);
    EXPECT_EQ(FileUtils::readText(&device), "abc"_q);
}

TEST(ReadTextOfDevice, raisesTheDevicesErrorWhereverItComes)
{
    const QByteArray bytes = "name=front\nip=10.0.0.1\n"_b;
    for (int k = 0; k < bytes.size(); ++k) {
        FailingDevice device(bytes, k);
        expectThrows<IOException>([&] { FileUtils::readText(&device); },
                                  "the medium is worn out"_q);
    }
    FailingDevice device(bytes, bytes.size() + 1);
    EXPECT_EQ(FileUtils::readText(&device), QString::fromLatin1(bytes));
}

/** Tells of an error together with the bytes that it could still read, and then of an end. */
class LastWordsDevice : public QIODevice
{
public:
    LastWordsDevice() { open(ReadOnly | Unbuffered); }
    qint64 size() const override { return 10; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (pos() > 0)
            return 0;
        setErrorString("the medium is worn out"_q);
        const qint64 count = std::min<qint64>(maxSize, 4);
        std::memcpy(data, "text", static_cast<std::size_t>(count));
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }
};

TEST(ReadTextOfDevice, raisesAnErrorThatComesWithTheLastBytes)
{
    LastWordsDevice device;
    expectThrows<IOException>([&] { FileUtils::readText(&device); }, "the medium is worn out"_q);
}

TEST(ReadTextOfDevice, raisesAnErrorThatTheDeviceTellsOnce)
{
    const QByteArray bytes = "name=front\nip=10.0.0.1\n"_b;
    for (const QIODevice::OpenMode mode :
         {QIODevice::OpenMode(QIODevice::ReadOnly), QIODevice::ReadOnly | QIODevice::Unbuffered}) {
        for (int k = 0; k < bytes.size(); ++k) {
            FailingDevice device(bytes, k, FailingDevice::Failure::Once, mode);
            expectThrows<IOException>([&] { FileUtils::readText(&device); },
                                      "the medium is worn out"_q);
        }
    }
}

TEST(ReadTextOfDevice, takesMinusOneForTheEndWhereAllHasBeenRead)
{
    class Device : public QIODevice
    {
    public:
        qint64 size() const override { return 5; }
        qint64 limit = 5;

    protected:
        qint64 readData(char *data, qint64 maxSize) override
        {
            if (pos() >= limit)
                return -1;
            const qint64 count = std::min(maxSize, limit - pos());
            std::memset(data, 'x', static_cast<std::size_t>(count));
            return count;
        }
        qint64 writeData(const char *, qint64) override { return -1; }
    };
    Device device;
    ASSERT_TRUE(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    EXPECT_EQ(FileUtils::readText(&device), "xxxxx"_q);
    device.limit = 4;
    ASSERT_TRUE(device.seek(0));
    expectThrows<IOException>([&] { FileUtils::readText(&device); }, "Unknown error"_q);
}

TEST(ReadTextOfDevice, raisesAReadErrorOfAFile)
{
    QFile file("/proc/self/mem"_q);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    expectThrows<FileException>([&] { FileUtils::readText(&file); },
                                [](const FileException &e) {
                                    EXPECT_EQ(e.fileName(), "/proc/self/mem"_q);
                                    EXPECT_EQ(e.message(), "/proc/self/mem: Input/output error"_q);
                                });
}

TEST(ReadTextOfDevice, readsASequentialDeviceToEachKindOfEnd)
{
    for (const End end : {End::NoMore, End::Closed}) {
        SequentialDevice device({"first "_b, "second "_b, QByteArray(100000, 'x'), " last"_b}, end);
        EXPECT_EQ(FileUtils::readText(&device),
                  "first second "_q + QString(100000, QLatin1Char('x')) + " last"_q);
    }
    SequentialDevice empty({}, End::Closed);
    EXPECT_EQ(FileUtils::readText(&empty), ""_q);
}

TEST(ReadTextOfDevice, takesAnErrorThatAReadClearsForNone)
{
    RecoveredDevice device("text"_b);
    EXPECT_EQ(FileUtils::readText(&device), "text"_q);
}

TEST(ReadAvailable, takesWhatIsAtHandAndRaisesErrors)
{
    SequentialDevice atHand({"first "_b, "second"_b}, End::Silent);
    EXPECT_EQ(FileUtils::readAvailable(&atHand), "first second"_b);
    EXPECT_EQ(atHand.waitCount(), 0);
    EXPECT_EQ(FileUtils::readAvailable(&atHand), ""_b);
    SequentialDevice later({"first"_b}, End::NoMore, 5);
    EXPECT_EQ(FileUtils::readAvailable(&later), ""_b);
    SequentialDevice closed({"first"_b}, End::Closed);
    EXPECT_EQ(FileUtils::readAvailable(&closed), "first"_b);
    SequentialDevice failing({"first"_b}, End::Error);
    expectThrows<IOException>([&] { (void)FileUtils::readAvailable(&failing); },
                              "the line is dead"_q);
    FailingDevice once("0123456789"_b, 4, FailingDevice::Failure::Once);
    expectThrows<IOException>([&] { (void)FileUtils::readAvailable(&once); },
                              "the medium is worn out"_q);
}

TEST(ReadTextOfDevice, waitsForASequentialDevice)
{
    SequentialDevice device({"first "_b, "second "_b, "last"_b}, End::NoMore, 5);
    EXPECT_EQ(FileUtils::readText(&device), "first second last"_q);
    EXPECT_GE(device.waitCount(), 3);
}

TEST(ReadTextOfDevice, raisesTheErrorOfASequentialDevice)
{
    SequentialDevice device({"first"_b}, End::Error);
    expectThrows<IOException>([&] { FileUtils::readText(&device); }, "the line is dead"_q);
}

TEST(ReadTextOfDevice, readsAProcessToItsEnd)
{
    QProcess process;
    process.start("/bin/sh"_q,
                  {"-c"_q, "echo one; sleep 0.1; echo two; sleep 0.1; echo three; exit 3"_q});
    EXPECT_EQ(FileUtils::readText(&process), "one\ntwo\nthree\n"_q);
    process.waitForFinished();
    EXPECT_EQ(process.exitCode(), 3);
}

TEST(ReadTextOfDevice, raisesTheErrorOfAProcessThatCrashes)
{
    QProcess process;
    process.start("/bin/sh"_q, {"-c"_q, "echo part; kill -9 $$"_q});
    expectThrows<IOException>([&] { FileUtils::readText(&process); }, "Process crashed"_q);
}

TEST(ReadTextOfDevice, readsASocketUntilThePeerCloses)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const quint16 port = server.serverPort();
    std::thread client([port] {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
        ASSERT_TRUE(socket.waitForConnected());
        for (const char *piece : {"one ", "two ", "three"}) {
            QThread::msleep(20);
            socket.write(piece);
            socket.flush();
        }
        socket.disconnectFromHost();
        if (socket.state() != QAbstractSocket::UnconnectedState)
            socket.waitForDisconnected();
    });
    ASSERT_TRUE(server.waitForNewConnection(10000));
    const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
    EXPECT_EQ(FileUtils::readText(socket.get()), "one two three"_q);
    client.join();
}

TEST(ReadTextOfDevice, readsALocalSocketUntilThePeerCloses)
{
    QTemporaryDir folder;
    QLocalServer server;
    ASSERT_TRUE(server.listen(folder.filePath("socket"_q)));
    std::thread client([&] {
        QLocalSocket socket;
        socket.connectToServer(folder.filePath("socket"_q));
        ASSERT_TRUE(socket.waitForConnected());
        for (const char *piece : {"one ", "two ", "three"}) {
            QThread::msleep(20);
            socket.write(piece);
            socket.flush();
        }
        socket.disconnectFromServer();
        if (socket.state() != QLocalSocket::UnconnectedState)
            socket.waitForDisconnected();
    });
    ASSERT_TRUE(server.waitForNewConnection(10000));
    const std::unique_ptr<QLocalSocket> socket(server.nextPendingConnection());
    EXPECT_EQ(FileUtils::readText(socket.get()), "one two three"_q);
    EXPECT_EQ(FileUtils::readText(socket.get()), ""_q);
    client.join();
}

TEST(ReadTextOfDevice, refusesADeviceThatIsNotOpenInSilence)
{
    testing::internal::CaptureStderr();
    QBuffer closed;
    expectThrows<IOException>([&] { FileUtils::readText(&closed); }, "not open for reading"_q);
    ASSERT_TRUE(closed.open(QIODevice::WriteOnly));
    expectThrows<IOException>([&] { FileUtils::readText(&closed); }, "not open for reading"_q);
    QFile file("/none"_q);
    expectThrows<FileException>([&] { FileUtils::readText(&file); },
                                "/none: not open for reading"_q);
    ASSERT_FALSE(file.open(QIODevice::ReadOnly));
    expectThrows<FileException>([&] { FileUtils::readText(&file); },
                                "/none: No such file or directory"_q);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
