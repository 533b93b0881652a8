// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include "VersionSupport.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using vn::VanteroSoftwareVersion;

namespace {

QByteArray repeated(const QByteArray &line, int times)
{
    return line.repeated(times);
}

// ---- Lines
// ---------------------------------------------------------------------------------------

struct Row
{
    const char *name;
    QByteArray package;
    QString version; ///< null where no line names one, or the last one that does is empty
};

class FirmwarePackage : public testing::TestWithParam<Row>
{
protected:
    QTemporaryDir m_folder;
};

TEST_P(FirmwarePackage, namesItsVersion_whateverItIsReadFrom)
{
    const QByteArray &package = GetParam().package;
    const QString &expected = GetParam().version;

    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwp(package)), expected);

    QTextStream stream(package);
    const VanteroSoftwareVersion fromStream = VanteroSoftwareVersion::fromFwp(stream);
    EXPECT_EQ(QString(fromStream), expected);

    QBuffer buffer;
    buffer.setData(package);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    const VanteroSoftwareVersion fromDevice = VanteroSoftwareVersion::fromFwpFile(&buffer);
    EXPECT_EQ(QString(fromDevice), expected);

    const QString path = m_folder.filePath("package"_q);
    writeFile(path, package);
    const VanteroSoftwareVersion fromFile = VanteroSoftwareVersion::fromFwpFile(path);
    EXPECT_EQ(QString(fromFile), expected);

    EXPECT_EQ(fromFile.isNull(), expected.isEmpty());
    EXPECT_EQ(lows(fromFile), lows(VanteroSoftwareVersion(expected)));
    EXPECT_EQ(highs(fromFile), highs(VanteroSoftwareVersion(expected)));
}

const Row rows[] = {
    {"twoHashes", "## Version: VN-3.0.6.29\n"_b, "VN-3.0.6.29"_q},
    {"oneHash", "# Version: VN-3.0.6.29\n"_b, "VN-3.0.6.29"_q},
    {"upload", "# VN-3.0.6.29 UPLD\n"_b, "VN-3.0.6.29"_q},

    {"characterAfterTwoHashMarkIsSkipped", "## Version:VN-3.0.6.29\n"_b, "N-3.0.6.29"_q},
    {"characterAfterOneHashMarkIsSkipped", "# Version:VN-3.0.6.29\n"_b, "N-3.0.6.29"_q},
    {"secondBlankIsPartOfTheText", "## Version:  VN-3.0.6.29\n"_b, " VN-3.0.6.29"_q},
    {"blankAtTheEndIsPartOfTheText", "## Version: VN-3 \n"_b, "VN-3 "_q},
    {"markAlone", "## Version:\n"_b, QString()},
    {"oneHashMarkAlone", "# Version:\n"_b, QString()},
    {"markAndBlank", "## Version: \n"_b, ""_q},
    {"notAVersionText", "# Version: none yet\n"_b, "none yet"_q},
    {"caseOfTheMarkCounts", "## version: VN-3\n"_b, QString()},
    {"blankBeforeTheMark", " ## Version: VN-3\n"_b, QString()},
    {"threeHashes", "### Version: VN-3\n"_b, QString()},
    {"noBlankAfterHash", "#Version: VN-3\n"_b, QString()},
    {"markWithoutColon", "## Version VN-3\n"_b, QString()},

    {"caseOfUploadCounts", "# VN-3.0.6.29 upld\n"_b, QString()},
    {"blankAfterUpload", "# VN-3.0.6.29 UPLD \n"_b, QString()},
    {"uploadAndABlankAlone", "UPLD \n"_b, QString()},
    {"uploadInside", "# UPLD VN-3.0.6.29\n"_b, QString()},
    {"uploadWithoutHashes", "xxVN-3.0.6.29xUPLD\n"_b, "VN-3.0.6.29"_q},
    {"uploadOf4Characters", "UPLD\n"_b, "LD"_q},
    {"uploadOf5Characters", "1UPLD\n"_b, "PLD"_q},
    {"uploadOf6Characters", "12UPLD\n"_b, "UPLD"_q},
    {"uploadOf7Characters_isEmpty", "# 1UPLD\n"_b, ""_q},
    {"uploadOf8Characters", "# 12UPLD\n"_b, "1"_q},
    {"emptyUploadReplacesAVersion", "## Version: VN-3\n# 1UPLD\n"_b, ""_q},
    {"emptyMarkReplacesAVersion", "## Version: VN-3\n## Version:\n"_b, QString()},

    {"markAndUpload_uploadIsTestedLast", "# Version: VN-3.0.6.29 UPLD\n"_b,
     "Version: VN-3.0.6.29"_q},
    {"twoHashMarkAndUpload", "## Version: VN-3.0.6.29 UPLD\n"_b, " Version: VN-3.0.6.29"_q},
    {"laterLineWins", "## Version: VN-1\n# VN-2 UPLD\n# Version: VN-3\n"_b, "VN-3"_q},
    {"laterLineWins_upload", "## Version: VN-1\n# Version: VN-2\n# VN-3 UPLD\n"_b, "VN-3"_q},
    {"linesWithoutVersionDoNotReplaceIt", "## Version: VN-1\n\n# more\n"_b, "VN-1"_q},

    {"line30", repeated("#\n"_b, 29) + "## Version: VN-3\n"_b, "VN-3"_q},
    {"line31_isNotRead", repeated("#\n"_b, 30) + "## Version: VN-3\n"_b, QString()},
    {"line31_doesNotReplaceLine1",
     "## Version: VN-1\n"_b + repeated("\n"_b, 29) + "## Version: VN-3\n"_b, "VN-1"_q},
    {"emptyLinesCount", repeated("\n"_b, 30) + "## Version: VN-3\n"_b, QString()},
    {"line30WithoutLineEnd", repeated("\n"_b, 29) + "## Version: VN-3"_b, "VN-3"_q},

    {"emptyPackage", ""_b, QString()},
    {"lineEndOnly", "\n"_b, QString()},
    {"noLineEnd", "## Version: VN-3"_b, "VN-3"_q},
    {"uploadWithoutLineEnd", "# VN-3 UPLD"_b, "VN-3"_q},
    {"carriageReturns", "## Version: VN-3\r\n# VN-4 UPLD\r\n"_b, "VN-4"_q},
    {"carriageReturnAtTheEndOfAll", "# VN-4 UPLD\r"_b, "VN-4"_q},
    {"onlyOneCarriageReturnBelongsToTheLineEnd", "## Version: VN-3\r\r\n"_b, "VN-3\r"_q},
    {"carriageReturnAloneEndsNoLine", "## Version: VN-3\r## Version: VN-4\n"_b,
     "VN-3\r## Version: VN-4"_q},
    {"zeroCharacters", "## Version: VN\0003\n"_b, "VN\0003"_q},
    {"utf8InTheLocaleOfTheTests", "## Version: VN-3\xc3\xa9\n"_b, "VN-3\u00e9"_q},
    {"imageBehindTheLines", "## Version: VN-3\n"_b + repeated("\0\xff\x7f\x80"_b, 1000), "VN-3"_q},

    {"longLineBefore", QByteArray(5000, 'x') + "\n## Version: VN-3\n"_b, "VN-3"_q},
    {"longMarkedLine", "## Version: VN-3"_b + QByteArray(50000, 'x'),
     "VN-3"_q + QString(50000, QLatin1Char('x'))},
    {"longUpload", "# "_b + QByteArray(50000, 'x') + " UPLD"_b, QString(50000, QLatin1Char('x'))},
    {"hugeLineBefore", QByteArray(3000000, 'x') + "\n## Version: VN-3\n"_b, "VN-3"_q},
    {"hugeLineBehind", "## Version: VN-3\n"_b + QByteArray(3000000, 'x'), "VN-3"_q},
    {"hugeMarkedLine", "# Version: "_b + QByteArray(3000000, 'x') + "\n\n"_b,
     QString(3000000, QLatin1Char('x'))},
    {"hugeUpload", "#\n# "_b + QByteArray(3000000, 'x') + " UPLD\n#\n"_b,
     QString(3000000, QLatin1Char('x'))},
    {"hugeUploadWithCarriageReturn", "# "_b + QByteArray(3000000, 'x') + " UPLD\r\n"_b,
     QString(3000000, QLatin1Char('x'))},
    {"secondOfTwoHugeUploads",
     "# "_b + QByteArray(3000000, 'x') + " UPLD\n# "_b + QByteArray(2500000, 'y') + " UPLD\n"_b,
     QString(2500000, QLatin1Char('y'))},
    {"versionAfterAHugeUpload", "# "_b + QByteArray(3000000, 'x') + " UPLD\n# VN-3 UPLD\n"_b,
     "VN-3"_q},
    {"hugeUploadAfterAVersion", "# VN-3 UPLD\n# "_b + QByteArray(3000000, 'x') + " UPLD\n"_b,
     QString(3000000, QLatin1Char('x'))},
    {"marksInsideAHugeLineAreNone", repeated("## Version: VN-3 "_b, 300000).prepend('x'),
     QString()},
};

INSTANTIATE_TEST_SUITE_P(Table, FirmwarePackage, testing::ValuesIn(rows), nameOfRow);

TEST(FirmwarePackage, twoBlanksGiveAnUnknownPlatform)
{
    EXPECT_EQ(VanteroSoftwareVersion::fromFwp("## Version:  VN-3.0.6.29"_b)[0], 0);
    EXPECT_EQ(VanteroSoftwareVersion::fromFwp("## Version:VN-3.0.6.29"_b)[0], 0);
    EXPECT_EQ(VanteroSoftwareVersion::fromFwp("## Version: VN-3.0.6.29"_b)[0], 20);
}

// ---- Streams
// -------------------------------------------------------------------------------------

TEST(FirmwarePackage, streamIsReadFromItsPosition_andLeftAfterTheLastLine)
{
    const QByteArray package = "## Version: VN-1\n"_b + repeated("#\n"_b, 30) + "rest\nmore\n"_b;
    QTextStream stream(package);
    EXPECT_EQ(stream.readLine(), "## Version: VN-1"_q);
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwp(stream).isNull());
    EXPECT_EQ(stream.readLine(), "rest"_q);
    EXPECT_EQ(stream.readAll(), "more\n"_q);
}

TEST(FirmwarePackage, streamOverAStringIsRead)
{
    QString text = "#\n# VN-\u00e9 UPLD\n"_q;
    QTextStream stream(&text);
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwp(stream)), "VN-\u00e9"_q);
    EXPECT_TRUE(stream.atEnd());
}

TEST(FirmwarePackage, streamKeepsItsCodec)
{
    const QByteArray package = "## Version: VN-\xe9\n"_b;
    QTextStream stream(package);
    stream.setCodec("ISO-8859-1");
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwp(stream)), "VN-\u00e9"_q);
}

TEST(FirmwarePackage, deviceIsReadFromItsPosition)
{
    QBuffer buffer;
    buffer.setData("## Version: VN-1\n# more\n"_b);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    ASSERT_TRUE(buffer.seek(3));
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(&buffer).isNull());
    ASSERT_TRUE(buffer.seek(0));
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&buffer)), "VN-1"_q);
}

TEST(FirmwarePackage, hugeUploadLineIsReadFromTheDevicesPosition)
{
    QBuffer buffer;
    buffer.setData("## Version: VN-1\n# "_b + QByteArray(3000000, 'x') + " UPLD"_b);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    ASSERT_TRUE(buffer.seek(17));
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&buffer)),
              QString(3000000, QLatin1Char('x')));
}

/** Random packages of pieces that have a meaning, read line by line and in chunks. */
TEST(FirmwarePackage, deviceIsReadAsAStreamReadsLines)
{
    const QByteArray pieces[] = {
        "## Version:"_b, "# Version:"_b, "UPLD"_b,
        " "_b,           "VN-3.0"_b,     "#"_b,
        "\n"_b,          "\r\n"_b,       "\r"_b,
        "\n"_b,          "\0"_b,         "\xff"_b,
        "\xc3"_b,        "\xc3\xa9"_b,   "\xef\xbb\xbf"_b,
        "\xff\xfe"_b,    "\xfe\xff"_b,   "U\0P\0L\0D\0\n\0"_b,
    };
    std::mt19937 random(51);
    for (int run = 0; run < 20000; ++run) {
        QByteArray package;
        for (std::size_t n = random() % 80; n > 0; --n)
            package += pieces[random() % std::size(pieces)];
        if (random() % 20 == 0) // across the chunks
            package.insert(int(random() % 40) % (package.size() + 1), QByteArray(16370, 'x'));

        QBuffer plain;
        plain.setData(package);
        const auto text = random() % 4 ? QIODevice::NotOpen : QIODevice::Text;
        ASSERT_TRUE(plain.open(QIODevice::ReadOnly | text));
        QTextStream lines(&plain);
        QString expected;
        for (int i = 0; i < 30 && !lines.atEnd(); ++i) {
            const QString line = lines.readLine();
            if (line.startsWith("## Version:"_q))
                expected = line.mid(12);
            if (line.startsWith("# Version:"_q))
                expected = line.mid(11);
            if (line.endsWith("UPLD"_q))
                expected = line.mid(2, line.size() - 7);
        }

        QBuffer buffer;
        buffer.setData(package);
        ASSERT_TRUE(buffer.open(QIODevice::ReadOnly | text));
        ASSERT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&buffer)), expected)
            << testing::PrintToString(package);
        if (!text) {
            ASSERT_EQ(QString(VanteroSoftwareVersion::fromFwp(package)), expected);
        }
        // In a later chunk a stream takes a byte order mark for one of the beginning.
        if (!text && package.size() < 16384) {
            // The first piece holds all of a byte order mark, by which a codec is known.
            const int first = qMin(package.size(), int(4 + random() % 100));
            SequentialDevice device({package.left(first), package.mid(first)},
                                    SequentialDevice::End::NoMore);
            ASSERT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&device)), expected)
                << testing::PrintToString(package);
        }
    }
}

// ---- Cost
// ----------------------------------------------------------------------------------------

/** A file that counts what is read from it. */
class CountingFile : public QFile
{
public:
    using QFile::QFile;
    qint64 count() const { return m_count; }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const qint64 read = QFile::readData(data, size);
        m_count += qMax<qint64>(read, 0);
        return read;
    }

private:
    qint64 m_count = 0;
};

class LargePackage : public testing::Test
{
protected:
    /** Writes @p lines and grows the file to @p size without using the disk. */
    void write(const QByteArray &lines, qint64 size)
    {
        writeFile(m_name, lines);
        ASSERT_TRUE(QFile::resize(m_name, qMax<qint64>(lines.size(), size)));
    }

    qint64 bytesRead()
    {
        CountingFile file(m_name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&file)), "VN-3.0.6.29"_q);
        return file.count();
    }

    QTemporaryDir m_folder;
    const QString m_name = m_folder.filePath("package.fwp"_q);
    const qint64 m_gigabyte = 1024 * 1024 * 1024;
};

TEST_F(LargePackage, isNotReadBeyondItsLines)
{
    const QByteArray lines = "## Version: VN-3.0.6.29\n"_b + repeated("# comment\n"_b, 29);
    write(lines, 0);
    EXPECT_EQ(bytesRead(), lines.size());
    write(lines, m_gigabyte);
    EXPECT_LE(bytesRead(), 2 * 16384);
}

TEST_F(LargePackage, imageThatLooksLikeOneEndlessLineIsNotKept)
{
    // More characters than a string can hold.
    write("## Version: VN-3.0.6.29\n"_b, m_gigabyte + m_gigabyte / 8);
    EXPECT_EQ(bytesRead(), m_gigabyte + m_gigabyte / 8);
}

/** Gives out a package bit by bit as a pipe does, and complains when asked for what it lacks. */
class Pipe : public QIODevice
{
public:
    explicit Pipe(const QByteArray &package)
        : m_package(package)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    bool atEnd() const override { return false; } // more could come

protected:
    qint64 readData(char *data, qint64 size) override
    {
        if (m_at == m_package.size()) {
            ADD_FAILURE() << "this read would wait for more";
            return -1;
        }
        const int n = int(qMin<qint64>(qMin<qint64>(size, 100), m_package.size() - m_at));
        std::copy_n(m_package.constData() + m_at, n, data);
        m_at += n;
        return n;
    }

    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_package;
    int m_at = 0;
};

TEST(FirmwarePackage, pipeIsNotAskedForMoreThanTheLines)
{
    Pipe pipe(repeated("# comment\n"_b, 29) + "## Version: VN-3.0.6.29\n"_b);
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&pipe)), "VN-3.0.6.29"_q);
}

TEST(FirmwarePackage, deviceThatCannotGoBackKeepsWhatIsBehindTheLines)
{
    const QByteArray lines = "## Version: VN-1\n"_b + repeated("#\r\n"_b, 29);
    SequentialDevice device({lines.left(5), lines.mid(5) + "rest"_b, "\nmore"_b},
                            SequentialDevice::End::NoMore);
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&device)), "VN-1"_q);
    EXPECT_EQ(device.readAll(), "rest\nmore"_b);
}

/** A named pipe that another thread writes into. */
class NamedPipe
{
public:
    NamedPipe(const QString &path, const QByteArray &bytes)
        : m_path(path)
    {
        EXPECT_EQ(::mkfifo(QFile::encodeName(path), 0600), 0);
        m_writer = std::thread([this, bytes] {
            QFile file(m_path);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            EXPECT_EQ(file.write(bytes), bytes.size());
        });
    }
    ~NamedPipe() { m_writer.join(); }
    NamedPipe(const NamedPipe &) = delete; // one writer
    NamedPipe &operator=(const NamedPipe &) = delete;

private:
    QString m_path;
    std::thread m_writer;
};

TEST(FirmwarePackage, namedPipeIsWaitedFor)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("pipe"_q);
    const NamedPipe pipe(path, "#\0\n## Version: VN-3.0.6.29\n"_b);
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(path)), "VN-3.0.6.29"_q);
}

TEST(FirmwarePackage, namedPipeKeepsWhatIsBehindTheLines)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("pipe"_q);
    const NamedPipe pipe(path, "## Version: VN-1\n"_b + repeated("\n"_b, 29) + "rest"_b);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&file)), "VN-1"_q);
    EXPECT_EQ(file.readAll(), "rest"_b);
}

TEST(FirmwarePackage, handleOfAPipeIsReadToItsEnd)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const QByteArray package = "\0\0UPLD\n# VN-3 UPLD\n"_b;
    ASSERT_EQ(::write(ends[1], package.constData(), std::size_t(package.size())), package.size());
    ::close(ends[1]);
    std::FILE *stream = ::fdopen(ends[0], "r");
    ASSERT_TRUE(stream);
    QFile file;
    ASSERT_TRUE(file.open(stream, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&file)), "VN-3"_q);
}

TEST(FirmwarePackage, modeOfTheDeviceStaysAsItWas)
{
    QBuffer buffer;
    buffer.setData("## Version: VN-3\r\n"_b);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly | QIODevice::Text));
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&buffer)), "VN-3"_q);
    EXPECT_TRUE(buffer.isTextModeEnabled());
}

TEST(FirmwarePackage, deviceThatFailsWithinALineReadsAsAStreamOnIt)
{
    for (const QByteArray &package :
         {"## Version: VN-1\r"_b, "## Version: VN-1\r\n## Version: VN-2"_b}) {
        for (int failAt = 0; failAt <= package.size(); ++failAt) {
            SCOPED_TRACE(failAt);
            FailingDevice device(package + "never read"_b, failAt);
            FailingDevice twin(package + "never read"_b, failAt);
            QTextStream stream(&twin);
            EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwpFile(&device)),
                      QString(VanteroSoftwareVersion::fromFwp(stream)));
        }
    }
}

// ---- What cannot be read
// -------------------------------------------------------------------------

int s_messages = 0;

/** Counts the messages that Qt prints while it exists. */
class Messages
{
public:
    Messages()
    {
        s_messages = 0;
        m_before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &) { ++s_messages; });
    }
    ~Messages() { qInstallMessageHandler(m_before); }
    Messages(const Messages &) = delete;
    Messages &operator=(const Messages &) = delete;

    int count() const { return s_messages; }

private:
    QtMessageHandler m_before;
};

TEST(FirmwarePackage, whatCannotBeReadGivesANullVersion_silently)
{
    const QTemporaryDir folder;
    const Messages messages;
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(folder.filePath("none"_q)).isNull());
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(folder.filePath("none/none"_q)).isNull());
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(folder.path()).isNull());
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(QString()).isNull());
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(""_q).isNull());
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile("/proc/self/mem"_q).isNull());

    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(static_cast<QIODevice *>(nullptr)).isNull());
    QBuffer closed;
    closed.setData("## Version: VN-3\n"_b);
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(&closed).isNull());
    EXPECT_FALSE(closed.isOpen());
    ASSERT_TRUE(closed.open(QIODevice::WriteOnly));
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwpFile(&closed).isNull());

    QTextStream none;
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwp(none).isNull());
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwp(QByteArray()).isNull());
    EXPECT_EQ(messages.count(), 0);
}

TEST(FirmwarePackage, fileIsClosedAfterwards)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("package"_q);
    writeFile(path, "## Version: VN-3\n");
    const int before = ::open("/dev/null", O_RDONLY);
    ::close(before);
    EXPECT_FALSE(VanteroSoftwareVersion::fromFwpFile(path).isNull());
    const int after = ::open("/dev/null", O_RDONLY);
    ::close(after);
    EXPECT_EQ(after, before);
}

} // namespace
