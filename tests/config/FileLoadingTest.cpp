// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/Exceptions.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <algorithm>

#include <fcntl.h>
#include <unistd.h>

using namespace vn;

namespace {

const QDateTime lastYear(QDate(2009, 3, 4), QTime(5, 6, 7));

const QString header = "#:1.3===============================\n#:VN-3.0.6.29\n\n"_q;

/** Whether the time lies between @p before and now. */
bool isFresh(const QDateTime &time, const QDateTime &before)
{
    return time >= before && time <= QDateTime::currentDateTime();
}

QString writeFile(const QTemporaryDir &dir, const QByteArray &bytes)
{
    QFile file(dir.filePath("cam.cfg"_q));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return file.fileName();
}

/** A QFile with content that fails when it is read: its descriptor is open for writing only. */
class UnreadableFile
{
public:
    UnreadableFile()
        : m_descriptor(::open(writeFile(m_dir, "SECTION a\n").toLocal8Bit().constData(), O_WRONLY))
    {
        EXPECT_TRUE(m_file.open(m_descriptor, QIODevice::ReadOnly));
    }
    ~UnreadableFile() { ::close(m_descriptor); }
    UnreadableFile(const UnreadableFile &) = delete;
    UnreadableFile &operator=(const UnreadableFile &) = delete;

    QFile *get() { return &m_file; }

private:
    QTemporaryDir m_dir;
    int m_descriptor;
    QFile m_file;
};

/** A device that fails after a piece of text which could stand alone. */
class BreakingDevice : public QIODevice
{
public:
    BreakingDevice() { open(ReadOnly | Unbuffered); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (!m_isAtStart) {
            setErrorString("the line is broken"_q);
            return -1;
        }
        m_isAtStart = false;
        const QByteArray start = "#:1=\n#:2\n\nSECTION a\nk=v\nENDSECTION a\n"_b;
        EXPECT_LE(start.size(), maxSize);
        std::copy(start.begin(), start.end(), data);
        return start.size();
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    bool m_isAtStart = true;
};

/** What store() writes: the text that was loaded. */
QByteArray storedText(VanteroConfigFile &config)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("stored.cfg"_q);
    config.store(path);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

} // namespace

TEST(LoadText, setsMapAndText)
{
    VanteroConfigFile config;
    EXPECT_TRUE(config.parse(header + "SECTION a\nk=v\nENDSECTION a\n"_q, lastYear));
    EXPECT_EQ(config.getFileVersion(), "1.3"_q);
    EXPECT_EQ(config.getSoftwareVersion(), "VN-3.0.6.29"_q);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
}

TEST(LoadText, timeStampBecomesTheCurrentTimeOnPurpose)
{
    const QDateTime before = QDateTime::currentDateTime();
    VanteroConfigFile config;
    config.parse(header, lastYear);
    EXPECT_TRUE(isFresh(config.timeStamp(), before));

    QByteArray bytes = header.toLatin1();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    config.parse(&buffer, lastYear);
    EXPECT_TRUE(isFresh(config.timeStamp(), before));

    const QTemporaryDir dir;
    EXPECT_TRUE(
        isFresh(VanteroConfigFile::open(writeFile(dir, bytes), lastYear).timeStamp(), before));
}

TEST(LoadText, dropsWhatWasThereBefore)
{
    VanteroConfigFile config;
    config.addValue("old"_q, "k"_q, "v"_q);
    config.parse(header + "SECTION a\nk=v\nENDSECTION a\n"_q, lastYear);
    EXPECT_EQ(config.allSectionKeys(), (QStringList{"a"_q, "head"_q}));
}

TEST(LoadText, acceptsItsOwnPrintedText)
{
    VanteroConfigFile config;
    config.parse(header + "SECTION a\nk=v\nENDSECTION a\n"_q, lastYear);
    config.parse(header + config.toString("a"_q), lastYear);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
}

TEST(LoadText, secondLineWithoutMarkIsFalseButTheSectionsLoad)
{
    VanteroConfigFile config;
    EXPECT_FALSE(config.parse("#:1.3==\nVN\n\nSECTION a\nk=v\nENDSECTION a\n"_q, lastYear));
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
}

TEST(LoadText, emptySecondLineSwallowsBlocksUpToTheNextEmptyLine)
{
    VanteroConfigFile config;
    config.parse("#:1.3==\n\nSECTION a\nk=v\nENDSECTION a\n\nSECTION b\nk=w\nENDSECTION b\n"_q,
                 lastYear);
    EXPECT_FALSE(config.containsSection("a"_q));
    EXPECT_EQ(config.value("b"_q, "k"_q), "w"_q);
}

TEST(LoadText, textWithoutHeaderAndEmptyLineLoadsNothing)
{
    VanteroConfigFile config;
    EXPECT_FALSE(
        config.parse("SECTION a\nk=v\nENDSECTION a\nSECTION b\nENDSECTION b\n"_q, lastYear));
    EXPECT_EQ(config.allSectionKeys(), QStringList());
}

TEST(LoadText, printedMapAloneLosesItsFirstSectionOnPurpose)
{
    VanteroConfigMap map;
    map.addValue("a"_q, "k"_q, "1"_q);
    map.addValue("b"_q, "k"_q, "2"_q);
    VanteroConfigFile config;
    EXPECT_FALSE(config.parse(map.toString(), lastYear));
    EXPECT_EQ(config.allSectionKeys(), QStringList{"b"_q});
}

TEST(LoadText, failureKeepsTextAndEntriesReadSoFar)
{
    VanteroConfigFile config;
    expectParseError([&] { config.parse(header + "SECTION a\nk=v\n"_q, lastYear); },
                     "ENDSECTION a expected"_q, -1, -1, -1);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
    EXPECT_EQ(storedText(config), (header + "SECTION a\nk=v\n"_q).toUtf8());
}

TEST(LoadText, zeroCharactersAreCharactersLikeOthers)
{
    const QString zero(1, QChar(0));
    const QString text = header + "SECTION a\nk"_q + zero + "=v"_q + zero + "\nENDSECTION a\n"_q;
    VanteroConfigFile config;
    config.parse(text, lastYear);
    EXPECT_EQ(config.value("a"_q, "k"_q + zero), "v"_q + zero);
    EXPECT_EQ(storedText(config), text.toUtf8());

    VanteroConfigFile fromDevice;
    QBuffer buffer;
    buffer.setData(text.toUtf8());
    buffer.open(QIODevice::ReadOnly);
    fromDevice.parse(&buffer, lastYear);
    EXPECT_EQ(fromDevice.value("a"_q, "k"_q + zero), "v"_q + zero);
}

TEST(LoadText, emptyAndNullTextsAreCompleteAndEmpty)
{
    for (const QString &text : {""_q, QString()}) {
        VanteroConfigFile config;
        config.addValue("old"_q, "k"_q, "v"_q);
        EXPECT_TRUE(config.parse(text, lastYear));
        EXPECT_EQ(config.allSectionKeys(), QStringList());
    }
}

TEST(LoadStream, addsToTheMapAndStoresTheGivenTime)
{
    VanteroConfigFile config;
    config.addValue("old"_q, "k"_q, "v"_q);
    QString text = header + "SECTION a\nk=v\nENDSECTION a\n"_q;
    QTextStream stream(&text, QIODevice::ReadOnly);
    EXPECT_TRUE(config.parse(&stream, lastYear));
    EXPECT_EQ(config.timeStamp(), lastYear);
    EXPECT_EQ(config.allSectionKeys(), (QStringList{"a"_q, "head"_q, "old"_q}));
}

TEST(LoadStream, leavesTheLoadedTextAlone)
{
    VanteroConfigFile config;
    config.parse(header, lastYear);
    QString text = "#:2=\n#:VN-4\n\nSECTION a\nk=v\nENDSECTION a\n"_q;
    QTextStream stream(&text, QIODevice::ReadOnly);
    config.parse(&stream, lastYear);
    EXPECT_EQ(config.getFileVersion(), "2"_q);
    EXPECT_EQ(storedText(config), header.toUtf8());
}

TEST(LoadStream, failureKeepsTheTimeAndEntriesReadSoFar)
{
    VanteroConfigFile config;
    QString text = header + "SECTION a\nk=v\nENDSECTION x\n"_q;
    QTextStream stream(&text, QIODevice::ReadOnly);
    expectParseError([&] { config.parse(&stream, lastYear); },
                     "ENDSECTION x does not match SECTION"_q, -1, -1, -1);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
    EXPECT_EQ(config.timeStamp(), lastYear);
}

TEST(LoadDevice, readsAllOfIt)
{
    QByteArray bytes = (header + "SECTION a\nk=v\nENDSECTION a\n"_q).toLatin1();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    VanteroConfigFile config;
    EXPECT_TRUE(config.parse(&buffer, lastYear));
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
    EXPECT_TRUE(buffer.atEnd());
    EXPECT_EQ(storedText(config), bytes);
}

TEST(LoadDevice, byteOrderMarksTellTheEncoding)
{
    const QString text = header + "SECTION a\nk=Tür\nENDSECTION a\n"_q;
    const QByteArray utf8 = "\xef\xbb\xbf"_b + text.toUtf8();
    QByteArray utf16 = "\xff\xfe"_b;
    for (const QChar character : text) {
        utf16 += static_cast<char>(character.cell());
        utf16 += static_cast<char>(character.row());
    }
    for (const QByteArray &bytes : {utf8, utf16}) {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        VanteroConfigFile config;
        EXPECT_TRUE(config.parse(&buffer, lastYear));
        EXPECT_EQ(config.value("a"_q, "k"_q), "Tür"_q);
        EXPECT_EQ(storedText(config), text.toUtf8());
    }
}

TEST(LoadDevice, startsAtThePositionOfTheDevice)
{
    QBuffer buffer;
    buffer.setData("SECTION x\n"_b + header.toLatin1() + "SECTION a\nk=v\nENDSECTION a\n"_b);
    buffer.open(QIODevice::ReadOnly);
    buffer.readLine();
    VanteroConfigFile config;
    EXPECT_TRUE(config.parse(&buffer, lastYear));
    EXPECT_EQ(config.allSectionKeys(), (QStringList{"a"_q, "head"_q}));
}

TEST(LoadDevice, readErrorOfAFileIsRaisedInsteadOfLoadingAShortText)
{
    UnreadableFile file;
    VanteroConfigFile config;
    config.addValue("old"_q, "k"_q, "v"_q);
    expectThrows<FileException>([&] { config.parse(file.get(), lastYear); },
                                ": Bad file descriptor"_q); // an open descriptor has no name
    EXPECT_EQ(config.value("old"_q, "k"_q), "v"_q) << "nothing was loaded";

    QFile special("/proc/self/mem"_q); // opens, but its first page cannot be read
    ASSERT_TRUE(special.open(QIODevice::ReadOnly));
    expectThrows<FileException>([&] { config.parse(&special, lastYear); },
                                "/proc/self/mem: Input/output error"_q);
}

TEST(LoadDevice, readsAnOpenFileFromWhereItIs)
{
    const QTemporaryDir dir;
    QFile file(writeFile(dir, "before\n" + header.toLatin1() + "SECTION a\nk=v\nENDSECTION a\n"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly) && file.seek(7));
    VanteroConfigFile config;
    config.parse(&file, lastYear);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
    EXPECT_EQ(storedText(config), header.toLatin1() + "SECTION a\nk=v\nENDSECTION a\n");
}

TEST(LoadDevice, errorOfAnyDeviceIsRaisedInsteadOfLoadingAShortText)
{
    BreakingDevice device;
    VanteroConfigFile config;
    config.addValue("old"_q, "k"_q, "v"_q);
    expectThrows<IOException>([&] { config.parse(&device, lastYear); }, "the line is broken"_q);
    EXPECT_EQ(config.allSectionKeys(), QStringList{"old"_q}) << "nothing was loaded";
}

TEST(LoadDevice, archiveEntryThatCannotBeDecryptedIsNoEmptyText)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cams.zip"_q);
    QBuffer buffer;
    buffer.setData(header.toLatin1());
    buffer.open(QIODevice::ReadOnly);
    ZipWriter writer(path, "secret"_b);
    writer.open();
    writer.appendFile(&buffer, "cam.cfg"_q, QString(), lastYear);
    writer.close();

    VanteroConfigFile config;
    ZipReader reader(path, "secret"_b);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    ASSERT_TRUE(reader.openFile("cam.cfg"_q));
    EXPECT_TRUE(config.parse(&reader, lastYear));
    EXPECT_EQ(config.getFileVersion(), "1.3"_q);

    ZipReader wrong(path, "wrong"_b);
    ASSERT_TRUE(wrong.open(QIODevice::ReadOnly));
    ASSERT_TRUE(wrong.openFile("cam.cfg"_q));
    expectThrows<IOException>(
        [&] { config.parse(&wrong, lastYear); },
        [&](const IOException &e) { EXPECT_EQ(e.message(), wrong.errorString()); });
    EXPECT_EQ(config.getFileVersion(), "1.3"_q) << "nothing was loaded";
}

TEST(LoadJpegComment, readErrorOfAFileShowsAsReadPastTheEnd)
{
    UnreadableFile file;
    VanteroConfigFile config;
    expectThrows<IOException>([&] { config.parseJpegComment(file.get()); }, "Read past EOF"_q);
}

TEST(LoadFile, readsUtf8AndLatin1)
{
    const QTemporaryDir dir;
    const QByteArray start = header.toLatin1() + "SECTION a\nk=";
    const QByteArray end = "\nENDSECTION a\n";
    EXPECT_EQ(VanteroConfigFile::open(writeFile(dir, start + "T\xc3\xbcr" + end), lastYear)
                  .value("a"_q, "k"_q),
              "Tür"_q);
    EXPECT_EQ(VanteroConfigFile::open(writeFile(dir, start + "T\xfcr" + end), lastYear)
                  .value("a"_q, "k"_q),
              "Tür"_q);
}

TEST(LoadFile, missingHeaderIsNoError)
{
    const QTemporaryDir dir;
    const auto config =
        VanteroConfigFile::open(writeFile(dir, "x\ny\n\nSECTION a\nk=v\nENDSECTION a\n"), lastYear);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
}

TEST(LoadFile, missingFileIsNamed)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("none.cfg"_q);
    expectThrows<FileException>([&] { VanteroConfigFile::open(path, lastYear); },
                                [&](const FileException &e) {
                                    EXPECT_EQ(e.fileName(), path);
                                    EXPECT_EQ(e.message(), path + ": No such file or directory"_q);
                                });
}

TEST(LoadFile, malformedSectionIsRaised)
{
    const QTemporaryDir dir;
    const QString path = writeFile(dir, header.toLatin1() + "SECTION a\n");
    expectParseError([&] { VanteroConfigFile::open(path, lastYear); }, "ENDSECTION a expected"_q,
                     -1, -1, -1);
}

TEST(LoadJpegComment, addsToTheMapAndKeepsTimeAndText)
{
    const QTemporaryDir dir;
    const QString text = header + "SECTION a\nk=v\nENDSECTION a\n"_q;
    VanteroConfigFile config;
    config.parse(text, lastYear);
    const QDateTime time = config.timeStamp();

    config.parseJpegComment("junk\nSECTION b\nk=w\nENDSECTION b\n"_q);
    EXPECT_EQ(config.allSectionKeys(), (QStringList{"a"_q, "b"_q, "head"_q}));
    EXPECT_EQ(config.timeStamp(), time);

    const QString path = dir.filePath("out.cfg"_q);
    config.store(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), text.toUtf8());
}

TEST(LoadJpegComment, everyKindOfInput)
{
    const QString text = "SECTION a\nk=v\nENDSECTION a\n"_q;
    QByteArray bytes = text.toLatin1();
    VanteroConfigFile config;
    config.parseJpegComment(&bytes);
    EXPECT_EQ(bytes, text.toLatin1()) << "the caller's bytes stay as they are";

    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    config.parseJpegComment(&buffer);

    QString copy = text;
    QTextStream stream(&copy, QIODevice::ReadOnly);
    config.parseJpegComment(&stream);

    config.parseJpegComment(text);
    EXPECT_EQ(config.section("a"_q).values("k"_q), (QStringList{"v"_q, "v"_q, "v"_q, "v"_q}));
}

// ---- Devices that fail where a stream does not tell ---------------------------------------------

TEST(LoadFailingDevice, headerEndsWhereTheDeviceFails)
{
    const QByteArray text = "#:1.3==\n#:VN-3\n# Camera IP: 10.0.0.1\n\n"_b;
    struct
    {
        int failAt;
        bool complete;
        QString softwareVersion;
        QString factoryIp;
    } const rows[] = {
        {0, false, QString(), QString()},
        {8, false, QString(), QString()},
        {12, true, "VN"_q, QString()},
        {15, true, "VN-3"_q, QString()},
        {text.size(), true, "VN-3"_q, "10.0.0.1"_q},
    };
    for (const auto &row : rows) {
        FailingDevice device(text, row.failAt);
        VanteroConfigFile config;
        EXPECT_EQ(config.parseHeader(&device), row.complete) << row.failAt;
        EXPECT_EQ(config.getSoftwareVersion(), row.softwareVersion) << row.failAt;
        EXPECT_EQ(config.getFactoryIP(), row.factoryIp) << row.failAt;
    }
}

TEST(LoadFailingDevice, commentOfAnImageIsCutOrRefused)
{
    const QByteArray first = "SECTION a\nx=1\nENDSECTION a\n"_b;
    const QByteArray second = "SECTION b\ny=2\nENDSECTION b\n"_b;
    for (const int failAt : {first.size(), first.size() + 14}) {
        FailingDevice device(first + second, failAt);
        VanteroConfigFile config;
        expectThrows<IOException>([&] { config.parseJpegComment(&device); }, "Read past EOF"_q);
        EXPECT_EQ(config.value("a"_q, "x"_q), "1"_q); // what was read before stays
    }

    SequentialDevice between({first}, SequentialDevice::End::Error);
    VanteroConfigFile config;
    config.parseJpegComment(&between);
    EXPECT_EQ(config.allSectionKeys(), QStringList{"a"_q});
    SequentialDevice within({first, second.left(14)}, SequentialDevice::End::Error);
    expectThrows<ParseException>([&] { config.parseJpegComment(&within); },
                                 "ENDSECTION b expected"_q);
}
