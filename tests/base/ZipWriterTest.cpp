// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ZipWriter.h"

#include "base/Zips.h"
#include "support/Devices.h"
#include "support/Expect.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

using namespace vn;

namespace {

const QDateTime kNoon(QDate(2010, 5, 1), QTime(12, 30, 44));

void append(ZipWriter *zip, const QString &name, const QByteArray &content,
            const QString &comment = QString(), const QDateTime &time = kNoon)
{
    QBuffer buffer;
    buffer.setData(content);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    zip->appendFile(&buffer, name, comment, time);
}

class ZipWriterTest : public FolderTest
{
protected:
    QString archive() const { return path("cams.zip"_q); }

    /** Writes an archive with these entries. */
    void write(const Entries &entries, const QByteArray &password = QByteArray()) const
    {
        ZipWriter zip(archive(), password);
        zip.open();
        for (const Entry &entry : entries)
            append(&zip, entry.name, entry.content);
        zip.close();
    }

    /** What Python's zipfile makes of an expression with `archive` and its first entry `info`. */
    QString byPython(const QByteArray &expression) const
    {
        runPython("import sys, zipfile\narchive = zipfile.ZipFile('cams.zip')\n"
                  "info = archive.infolist()[0]\n"
                  "open('out', 'w').write(str(" +
                      expression + "))",
                  {}, dir().path());
        const QString result = QString::fromUtf8(readFile(path("out"_q)));
        QFile::remove(path("out"_q));
        return result;
    }

    void expectMode(int expected) const
    {
        struct stat status = {};
        ASSERT_EQ(::stat(QFile::encodeName(archive()).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, static_cast<mode_t>(expected));
    }
};

const Entries kEntries = {{"front.cfg"_q, configText(8000, 1)},
                          {u8"sub/Tür €📷.cfg"_q, configText(300000, 2)},
                          {"empty.cfg"_q, ""_b},
                          {"one.cfg"_q, "x"_b},
                          {"noise.cfg"_q, noise(100000, 3)}};

} // namespace

TEST_F(ZipWriterTest, writesWhatOtherProgramsRead)
{
    write(kEntries);
    EXPECT_EQ(readByPython(archive()), kEntries);
    runProgram("unzip"_q, {"-q"_q, "-t"_q, archive()}, dir().path());
    runProgram("7z"_q, {"t"_q, "-bd"_q, archive()}, dir().path());
}

TEST_F(ZipWriterTest, writesWhatZipReaderReads)
{
    write(kEntries);
    EXPECT_EQ(readAll(archive()), kEntries);
    write(kEntries, u8"Tür & Tor"_b);
    EXPECT_EQ(readAll(archive(), u8"Tür & Tor"_b), kEntries);
}

TEST_F(ZipWriterTest, encryptsByAes256)
{
    write(kEntries, "secret"_b);
    QProcess process;
    process.start("7z"_q, {"l"_q, "-slt"_q, archive()}, QIODevice::ReadOnly);
    ASSERT_TRUE(process.waitForFinished());
    const QByteArray list = process.readAll();
    EXPECT_EQ(list.count("\nPath = "), kEntries.size() + 1) << list.constData();
    EXPECT_EQ(list.count("\nMethod = AES-256 "), kEntries.size()) << list.constData();
    EXPECT_EQ(list.count("\nEncrypted = +"), kEntries.size()) << list.constData();

    runProgram("7z"_q, {"x"_q, "-bd"_q, "-psecret"_q, "-oout"_q, archive()}, dir().path());
    for (const Entry &entry : kEntries)
        EXPECT_EQ(readFile(path("out/"_q + entry.name)), entry.content);
    EXPECT_FALSE(readFile(archive()).contains(kEntries.first().content.left(20)));
}

TEST_F(ZipWriterTest, deflatesWhatGetsSmallerByIt)
{
    write({{"text"_q, QByteArray(100000, 'x')}});
    EXPECT_LT(QFileInfo(archive()).size(), 1000);
    EXPECT_EQ(byPython("info.compress_type"), "8"_q);
}

TEST_F(ZipWriterTest, storesWhatDoesNotGetSmaller)
{
    write({{"text"_q, "k=v"_b}});
    EXPECT_EQ(byPython("info.compress_type"), "0"_q);
    EXPECT_EQ(readAll(archive()), (Entries{{"text"_q, "k=v"_b}}));
}

TEST_F(ZipWriterTest, marksNamesAsUtf8WhereTheyNeedIt)
{
    write({{"plain"_q, "x"_b}, {u8"Tür"_q, "x"_b}});
    EXPECT_EQ(byPython("[i.flag_bits & 0x800 for i in archive.infolist()]"), "[0, 2048]"_q);
    EXPECT_EQ(byPython("archive.infolist()[1].orig_filename"), u8"Tür"_q);
}

TEST_F(ZipWriterTest, writesCommentsInUtf8)
{
    ZipWriter zip(archive());
    zip.open();
    append(&zip, "a"_q, "x"_b, u8"Konfiguration für Tür €"_q);
    append(&zip, "b"_q, "x"_b, QString());
    append(&zip, "c"_q, "x"_b, "Vantero Configuration File"_q);
    zip.close();
    EXPECT_EQ(byPython("[i.comment.decode() for i in archive.infolist()]"),
              u8"['Konfiguration für Tür €', '', 'Vantero Configuration File']"_q);
}

TEST_F(ZipWriterTest, writesTheTimeAsLocalTime)
{
    const struct
    {
        QDateTime time;
        QString written;
    } rows[] = {
        {kNoon, "(2010, 5, 1, 12, 30, 44)"_q},
        {QDateTime(QDate(2010, 5, 1), QTime(12, 30, 45)), "(2010, 5, 1, 12, 30, 44)"_q},
        {QDateTime(QDate(2010, 5, 1), QTime(12, 30, 44), Qt::UTC), "(2010, 5, 1, 14, 30, 44)"_q},
        {QDateTime(QDate(2010, 1, 1), QTime(0, 30, 0), Qt::UTC), "(2010, 1, 1, 1, 30, 0)"_q},
        {QDateTime(QDate(2010, 5, 1), QTime(12, 0), Qt::OffsetFromUTC, -3600),
         "(2010, 5, 1, 15, 0, 0)"_q},
        {QDateTime(QDate(1980, 1, 1), QTime(0, 0, 2)), "(1980, 1, 1, 0, 0, 2)"_q},
        {QDateTime(QDate(1979, 12, 31), QTime(23, 59, 59)), "(1980, 1, 1, 0, 0, 0)"_q},
        {QDateTime(QDate(2107, 12, 31), QTime(23, 59, 58)), "(2107, 12, 31, 23, 59, 58)"_q},
        {QDateTime(QDate(2108, 1, 1), QTime(0, 0)), "(2107, 12, 31, 23, 59, 58)"_q},
        {QDateTime(), "(1980, 1, 1, 0, 0, 0)"_q},
    };
    for (const auto &row : rows) {
        ZipWriter zip(archive());
        zip.open();
        append(&zip, "a"_q, "x"_b, QString(), row.time);
        zip.close();
        EXPECT_EQ(byPython("info.date_time"), row.written);
    }
}

TEST_F(ZipWriterTest, writesWhatRemainsInADevice)
{
    ZipWriter zip(archive());
    zip.open();
    QBuffer buffer;
    buffer.setData("head body"_b);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    ASSERT_EQ(buffer.read(5), "head "_b);
    zip.appendFile(&buffer, "a"_q, QString(), kNoon);
    SequentialDevice pieces({"one "_b, "two "_b, "three"_b}, SequentialDevice::End::NoMore, 2);
    zip.appendFile(&pieces, "b"_q, QString(), kNoon);
    zip.close();
    EXPECT_EQ(readAll(archive()), (Entries{{"a"_q, "body"_b}, {"b"_q, "one two three"_b}}));
}

TEST_F(ZipWriterTest, writesAnArchiveWithoutEntriesToo)
{
    for (const QByteArray &password : {""_b, "secret"_b}) {
        write({}, password);
        EXPECT_EQ(readFile(archive()).toHex(), "504b0506"_b + QByteArray(36, '0'));
        EXPECT_EQ(readAll(archive(), password), Entries());
        EXPECT_EQ(readByPython(archive()), Entries());
        QFile::remove(archive());
    }
}

TEST_F(ZipWriterTest, writesManyEntries)
{
    Entries entries;
    for (int i = 0; i < 70000; ++i)
        entries.append({QString::number(i), QByteArray::number(i % 10)});
    write(entries);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.fileListBySuffix(QString()).size(), 70000);
    EXPECT_EQ(readEntry(&zip, "69999"_q), "9"_b);
}

TEST_F(ZipWriterTest, replacesAnArchiveOnClosingOnly)
{
    write({{"old"_q, "old"_b}});
    const QByteArray old = readFile(archive());
    ZipWriter zip(archive());
    zip.open();
    append(&zip, "new"_q, "new"_b);
    EXPECT_EQ(readFile(archive()), old);
    zip.close();
    EXPECT_EQ(readAll(archive()), (Entries{{"new"_q, "new"_b}}));
    EXPECT_EQ(names(), QStringList{"cams.zip"_q});
}

TEST_F(ZipWriterTest, leavesNothingWithoutClosing)
{
    {
        ZipWriter zip(archive());
        zip.open();
        append(&zip, "a"_q, "x"_b);
    }
    EXPECT_EQ(names(), QStringList());
    {
        const ZipWriter neverOpened(archive());
    }
    EXPECT_EQ(names(), QStringList());
}

TEST_F(ZipWriterTest, writesOneArchiveAfterTheOther)
{
    ZipWriter zip(archive());
    for (const QByteArray &content : {"first"_b, "second"_b}) {
        zip.open();
        append(&zip, "a"_q, content);
        zip.close();
        EXPECT_EQ(readAll(archive()), (Entries{{"a"_q, content}}));
    }
    zip.open();
    zip.close();
    EXPECT_EQ(readAll(archive()), Entries()) << "the third one has no entries";
}

TEST_F(ZipWriterTest, givesANewArchiveThePermissionsOfAnyNewFile)
{
    const mode_t before = ::umask(027);
    write(kEntries);
    ::umask(before);
    expectMode(0640);
}

TEST_F(ZipWriterTest, keepsThePermissionsOfTheArchiveThatItReplaces)
{
    write(kEntries);
    ASSERT_EQ(::chmod(QFile::encodeName(archive()).constData(), 0604), 0);
    write({});
    expectMode(0604);
}

TEST_F(ZipWriterTest, replacesTheFileBehindLinks)
{
    writeFile(path("target.zip"_q), "old"_b);
    ASSERT_TRUE(QFile::link("target.zip"_q, path("link.zip"_q)));
    ASSERT_TRUE(QFile::link("link.zip"_q, archive()));
    write({{"a"_q, "x"_b}});
    EXPECT_TRUE(QFileInfo(archive()).isSymLink());
    EXPECT_TRUE(QFileInfo(path("link.zip"_q)).isSymLink());
    EXPECT_FALSE(QFileInfo(path("target.zip"_q)).isSymLink());
    EXPECT_EQ(readAll(path("target.zip"_q)), (Entries{{"a"_q, "x"_b}}));
    EXPECT_EQ(names(), (QStringList{"cams.zip"_q, "link.zip"_q, "target.zip"_q}));
}

TEST_F(ZipWriterTest, makesTheFileThatADanglingLinkLeadsTo)
{
    ASSERT_TRUE(QFile::link(path("target.zip"_q), archive()));
    write({{"a"_q, "x"_b}});
    EXPECT_TRUE(QFileInfo(archive()).isSymLink());
    EXPECT_EQ(readAll(path("target.zip"_q)), (Entries{{"a"_q, "x"_b}}));
}

TEST_F(ZipWriterTest, refusesPlacesWhereNoArchiveCanBe)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("pipe"_q)).constData(), 0600), 0);
    const struct
    {
        QString path;
        QString reason;
    } rows[] = {
        {path("none/cams.zip"_q), "No such file or directory"_q},
        {fileWith("x"_b) + "/cams.zip"_q, "Not a directory"_q},
        {dir().path(), "not a regular file"_q},
        {path("pipe"_q), "not a regular file"_q},
        {"/dev/full"_q, "not a regular file"_q},
    };
    for (const auto &row : rows) {
        ZipWriter zip(row.path);
        expectThrows<IOException>([&] { zip.open(); }, row.path + ": "_q + row.reason);
        expectThrows<IOException>([&] { append(&zip, "a"_q, "x"_b); }, row.path + ": not open"_q);
        expectThrows<IOException>([&] { zip.close(); }, row.path + ": not open"_q);
    }
    EXPECT_EQ(names(), (QStringList{"file"_q, "pipe"_q}));
}

TEST_F(ZipWriterTest, refusesAllButOpeningWhileItIsClosed)
{
    ZipWriter zip(archive());
    const QString notOpen = archive() + ": not open"_q;
    expectThrows<IOException>([&] { append(&zip, "a"_q, "x"_b); }, notOpen);
    expectThrows<IOException>([&] { zip.close(); }, notOpen);
    zip.open();
    expectThrows<IOException>([&] { zip.open(); }, archive() + ": already open"_q);
    append(&zip, "a"_q, "x"_b);
    zip.close();
    expectThrows<IOException>([&] { append(&zip, "b"_q, "x"_b); }, notOpen);
    expectThrows<IOException>([&] { zip.close(); }, notOpen);
    EXPECT_EQ(readAll(archive()), (Entries{{"a"_q, "x"_b}}));
}

TEST_F(ZipWriterTest, refusesAPasswordThatItWouldCut)
{
    ZipWriter zip(archive(), "with\0zero"_b);
    expectThrows<IOException>([&] { zip.open(); },
                              archive() + ": a password cannot hold a zero byte"_q);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(ZipWriterTest, goesOnAfterAnEntryThatItRefuses)
{
    const QString longest(65535, QLatin1Char('n'));
    const QString tooLong(65536, QLatin1Char('n'));
    const QString tooLongInUtf8(32768, QChar(0xFC));
    ZipWriter zip(archive(), "secret"_b);
    zip.open();
    append(&zip, "a"_q, "first"_b);
    for (const QString &name : {QString(), ""_q, "folder/"_q, "a\0b"_q, tooLong, tooLongInUtf8})
        expectThrows<IOException>([&] { append(&zip, name, "x"_b); },
                                  archive() + ": "_q + name + ": no name for an entry"_q);
    expectThrows<IOException>([&] { append(&zip, "a"_q, "x"_b); },
                              archive() + ": a: File already exists"_q);
    expectThrows<IOException>([&] { append(&zip, "b"_q, "x"_b, tooLong); },
                              archive() + ": b: the comment is too long"_q);
    FailingDevice failing("content"_b, 3);
    expectThrows<IOException>([&] { zip.appendFile(&failing, "b"_q, QString(), kNoon); },
                              "the medium is worn out"_q);
    QBuffer closed;
    expectThrows<IOException>([&] { zip.appendFile(&closed, "b"_q, QString(), kNoon); },
                              "not open for reading"_q);
    append(&zip, "b"_q, "second"_b, longest);
    append(&zip, longest, "third"_b);
    zip.close();
    EXPECT_EQ(readAll(archive(), "secret"_b),
              (Entries{{"a"_q, "first"_b}, {"b"_q, "second"_b}, {longest, "third"_b}}));
}

TEST_F(ZipWriterTest, keepsNamesAsTheyAre)
{
    const Entries entries = {{"../up"_q, "1"_b}, {"/root"_q, "2"_b}, {"back\\slash"_q, "3"_b},
                             {" "_q, "4"_b},     {"A"_q, "5"_b},     {"a"_q, "6"_b}};
    write(entries);
    EXPECT_EQ(readAll(archive()), entries);
}

TEST_F(ZipWriterTest, leavesTheOldArchiveWhereItsFolderIsGone)
{
    ASSERT_TRUE(dir().mkdir("sub"_q));
    ZipWriter zip(path("sub/cams.zip"_q));
    zip.open();
    append(&zip, "a"_q, "x"_b);
    ASSERT_TRUE(QDir(path("sub"_q)).removeRecursively());
    EXPECT_THROW(zip.close(), IOException);
    EXPECT_EQ(names(), QStringList());
    expectThrows<IOException>([&] { zip.close(); }, path("sub/cams.zip"_q) + ": not open"_q);
}

// A disk that is full after k bytes, at every k that an archive has.
TEST_F(ZipWriterTest, writesAllOrNothingOnADiskThatFillsUp)
{
    const Entries entries = {{"front.cfg"_q, configText(500, 1)}, {"noise"_q, noise(20000, 1)}};
    write(entries);
    const int whole = static_cast<int>(QFileInfo(archive()).size());
    write({{"old"_q, "old"_b}});
    const QByteArray old = readFile(archive());

    int failures = 0;
    for (int size = 0; size <= whole; size += size < 1000 || size > whole - 100 ? 1 : 97) {
        ZipWriter zip(archive());
        zip.open();
        for (const Entry &entry : entries)
            append(&zip, entry.name, entry.content);
        bool isRaised = false;
        QString message;
        {
            const FileSizeLimit limit(static_cast<rlim_t>(size));
            try {
                zip.close();
            } catch (const IOException &e) {
                isRaised = true;
                message = e.message();
            }
        }
        ASSERT_EQ(names(), QStringList{"cams.zip"_q}) << size;
        if (isRaised) {
            ++failures;
            ASSERT_EQ(message, archive() + ": File too large"_q) << size;
            ASSERT_EQ(readFile(archive()), old) << size;
        } else {
            ASSERT_EQ(size, whole);
        }
    }
    EXPECT_GT(failures, 1000);
    EXPECT_EQ(readAll(archive()), entries);
}

TEST_F(ZipWriterTest, printsNothing)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    write(kEntries, "secret"_b);
    ZipWriter zip(path("none/cams.zip"_q));
    EXPECT_THROW(zip.open(), IOException);
    QBuffer closed;
    ZipWriter other(archive());
    other.open();
    EXPECT_THROW(other.appendFile(&closed, "a"_q, QString(), kNoon), IOException);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ZipWriterTest, leavesWhatHasTakenTheNameOfANewArchive)
{
    const QString path = this->path("new.zip"_q);
    ZipWriter zip(path);
    zip.openNew();
    writeFile(path, "precious"_b); // by somebody else
    expectThrows<IOException>([&] { zip.close(); }, path + ": File exists"_q);
    EXPECT_EQ(readFile(path), "precious"_b);
    EXPECT_EQ(names(), QStringList{"new.zip"_q});
    ZipWriter other(this->path("other.zip"_q));
    other.openNew();
    other.close();
    EXPECT_EQ(names(), (QStringList{"new.zip"_q, "other.zip"_q}));
}
