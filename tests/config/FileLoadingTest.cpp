// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/Exceptions.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextCodec>
#include <QtCore/QTextStream>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <algorithm>
#include <memory>

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
    const QString path = dir.filePath("cam.cfg"_q);
    writeFile(path, bytes);
    return path;
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

/** What store() writes: the text that was loaded. */
QByteArray storedText(VanteroConfigFile &config)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("stored.cfg"_q);
    config.store(path);
    return readFile(path);
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
    // What comes before the failure could stand alone.
    SequentialDevice device({"#:1=\n#:2\n\nSECTION a\nk=v\nENDSECTION a\n"_b},
                            SequentialDevice::End::Error);
    VanteroConfigFile config;
    config.addValue("old"_q, "k"_q, "v"_q);
    expectThrows<IOException>([&] { config.parse(&device, lastYear); }, "the line is dead"_q);
    EXPECT_EQ(config.allSectionKeys(), QStringList{"old"_q}) << "nothing was loaded";
}

TEST(LoadDevice, closedByItsPeerIsAtItsEnd)
{
    const QByteArray bytes = header.toLatin1() + "SECTION a\nk=v\nENDSECTION a\n";
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), server.serverPort());
    ASSERT_TRUE(socket.waitForConnected());
    ASSERT_TRUE(server.waitForNewConnection(10000));
    QTcpSocket *const peer = server.nextPendingConnection(); // the server's child
    peer->write(bytes);
    peer->disconnectFromHost();
    if (peer->state() != QAbstractSocket::UnconnectedState) {
        ASSERT_TRUE(peer->waitForDisconnected());
    }
    ASSERT_TRUE(socket.waitForDisconnected());
    ASSERT_EQ(socket.error(), QAbstractSocket::RemoteHostClosedError);
    VanteroConfigFile config;
    EXPECT_TRUE(config.parse(&socket, lastYear));
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
    EXPECT_EQ(storedText(config), bytes);
}

TEST(LoadDevice, localSocketClosedByItsPeerIsAtItsEnd)
{
    const QByteArray bytes = header.toLatin1() + "SECTION a\nk=v\nENDSECTION a\n";
    const QTemporaryDir folder;
    QLocalServer server;
    ASSERT_TRUE(server.listen(folder.filePath("socket"_q)));
    QLocalSocket socket;
    socket.connectToServer(folder.filePath("socket"_q));
    ASSERT_TRUE(socket.waitForConnected());
    ASSERT_TRUE(server.waitForNewConnection(10000));
    QLocalSocket *const peer = server.nextPendingConnection(); // the server's child
    peer->write(bytes);
    peer->disconnectFromServer();
    if (peer->state() != QLocalSocket::UnconnectedState) {
        ASSERT_TRUE(peer->waitForDisconnected());
    }
    // not yet noticed: the end comes while it is read
    ASSERT_TRUE(socket.waitForReadyRead(10000));
    VanteroConfigFile config;
    EXPECT_TRUE(config.parse(&socket, lastYear));
    EXPECT_EQ(storedText(config), bytes);
}

TEST(LoadDevice, finishedProcessIsReadToItsEnd)
{
    QProcess process;
    process.start("/bin/sh"_q,
                  {"-c"_q, "printf '#:1=\\n#:2\\n\\nSECTION a\\nk=v\\nENDSECTION a\\n'"_q});
    ASSERT_TRUE(process.waitForFinished());
    VanteroConfigFile config;
    EXPECT_TRUE(config.parse(&process, lastYear));
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
}

TEST(LoadDevice, errorThatASuccessfulReadClearsIsNone)
{
    RecoveredDevice device(header.toLatin1());
    VanteroConfigFile config;
    EXPECT_TRUE(config.parse(&device, lastYear));
    EXPECT_EQ(storedText(config), header.toLatin1());
    EXPECT_EQ(device.errorString(), QBuffer().errorString());
}

TEST(LoadDevice, isNotWaitedFor)
{
    SequentialDevice device({"#:1=\n"_b, "#:2\n"_b}, SequentialDevice::End::Silent);
    VanteroConfigFile config;
    EXPECT_TRUE(config.parse(&device, lastYear));
    EXPECT_EQ(storedText(config), "#:1=\n#:2\n"_b);
    EXPECT_EQ(device.waitCount(), 0);
}

TEST(LoadDevice, errorToldOnceIsRaisedWhereverItComes)
{
    const QByteArray bytes = header.toLatin1();
    for (int k = 0; k < bytes.size(); ++k) {
        FailingDevice device(bytes, k, FailingDevice::Failure::Once);
        VanteroConfigFile config;
        expectThrows<IOException>([&] { config.parse(&device, lastYear); },
                                  "the medium is worn out"_q);
        EXPECT_EQ(config.allSectionKeys(), QStringList());
    }
}

TEST(LoadDevice, decodesAsAStreamDoes)
{
    const QString text = "#:1=\n#:2\n\nSECTION a\nk=T\u00FCr\u20AC\nENDSECTION a\n"_q;
    for (const char *codec : {"UTF-16", "UTF-16BE", "UTF-32", "UTF-8"}) {
        SCOPED_TRACE(codec);
        const std::unique_ptr<QTextEncoder> encoder(
            QTextCodec::codecForName(codec)->makeEncoder(QTextCodec::DefaultConversion));
        QByteArray bytes = encoder->fromUnicode(QString(QChar(0xFEFF)) + text);
        if (bytes.startsWith("\xFF\xFE\xFF\xFE") || bytes.startsWith("\xFE\xFF\xFE\xFF"))
            bytes.remove(0, 2); // some encoders write a mark of their own
        for (const QIODevice::OpenMode mode :
             {QIODevice::OpenMode(QIODevice::ReadOnly), QIODevice::ReadOnly | QIODevice::Text}) {
            QByteArray first = bytes;
            QByteArray second = bytes;
            QBuffer byStream(&first);
            QBuffer byParse(&second);
            ASSERT_TRUE(byStream.open(mode) && byParse.open(mode));
            VanteroConfigFile config;
            config.parse(&byParse, lastYear);
            EXPECT_EQ(storedText(config), QTextStream(&byStream).readAll().toUtf8());
            EXPECT_EQ(byParse.isTextModeEnabled(), byStream.isTextModeEnabled());
        }
    }
}

TEST(LoadDevice, leavesLineEndsToTheModeOfTheDevice)
{
    QByteArray bytes = "#:1=\r\n#:2\r\r\n\rx\r"_b;
    QBuffer buffer(&bytes);
    VanteroConfigFile config;
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    config.parse(&buffer, lastYear);
    EXPECT_EQ(storedText(config), bytes);
    buffer.close();
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly | QIODevice::Text));
    config.parse(&buffer, lastYear);
    EXPECT_EQ(storedText(config), "#:1=\n#:2\nx"_b);
    EXPECT_TRUE(buffer.isTextModeEnabled());
    ASSERT_TRUE(buffer.seek(0));
    EXPECT_EQ(QTextStream(&buffer).readAll(), "#:1=\n#:2\nx"_q) << "as a stream does";
}

TEST(LoadDevice, thatIsNotOpenIsRefusedInSilence)
{
    testing::internal::CaptureStderr();
    VanteroConfigFile config;
    config.addValue("old"_q, "k"_q, "v"_q);
    QBuffer closed;
    expectThrows<IOException>([&] { config.parse(&closed, lastYear); }, "not open for reading"_q);
    QFile file("/dev/null"_q);
    expectThrows<FileException>([&] { config.parse(&file, lastYear); },
                                "/dev/null: not open for reading"_q);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    expectThrows<FileException>([&] { config.parse(&file, lastYear); },
                                "/dev/null: not open for reading"_q);
    EXPECT_EQ(config.value("old"_q, "k"_q), "v"_q) << "nothing was loaded";

    EXPECT_TRUE(config.parseHeader(&closed)) << "as an empty text";
    config.parseJpegComment(&closed);
    EXPECT_EQ(config.value("old"_q, "k"_q), "v"_q);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
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
    expectThrows<ArchiveException>([&] { config.parse(&wrong, lastYear); },
                                   [&](const ArchiveException &e) {
                                       EXPECT_EQ(e.message(), wrong.errorString());
                                       EXPECT_EQ(e.error(), ArchiveError::WrongPassword);
                                   });
    EXPECT_EQ(config.getFileVersion(), "1.3"_q) << "nothing was loaded";
}

TEST(LoadJpegComment, readErrorOfAFileShowsAsReadPastTheEnd)
{
    UnreadableFile file;
    VanteroConfigFile config;
    expectThrows<IOException>([&] { config.parseJpegComment(file.get()); }, "Read past EOF"_q);
}

TEST(LoadFile, readsWhatOnlyQtKnows)
{
    const QTemporaryDir dir;
    writeFile(dir, header.toLatin1() + "SECTION a\nk=v\nENDSECTION a\n");
    QDir::setSearchPaths("loadfile"_q, {dir.path()});
    EXPECT_EQ(VanteroConfigFile::open("loadfile:cam.cfg"_q, lastYear).value("a"_q, "k"_q), "v"_q);
    expectThrows<FileException>(
        [] { (void)VanteroConfigFile::open("loadfile:none.cfg"_q, lastYear); },
        "loadfile:none.cfg: No such file or directory"_q);
    QDir::setSearchPaths("loadfile"_q, {});
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
