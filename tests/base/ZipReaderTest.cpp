// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ZipReader.h"

#include "base/Zips.h"
#include "support/Expect.h"
#include "support/Random.h"

#include <QtCore/QHash>
#include <QtCore/QTextStream>

#include <algorithm>
#include <clocale>
#include <thread>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace vn;

namespace {

class ZipReaderTest : public FolderTest
{
protected:
    /** The path of an archive with these entries. */
    QString archiveWith(const Entries &entries, bool isStored = false) const
    {
        makeByPython(path("cams.zip"_q), entries, isStored);
        return path("cams.zip"_q);
    }

    QString archive() const { return path("cams.zip"_q); }
};

const Entries kThree = {
    {"front.cfg"_q, "name=front\n"_b}, {"back.cfg"_q, "name=back\n"_b}, {"side.txt"_q, "x"_b}};

/** How to make an archive from the files in the working folder. */
struct Maker
{
    const char *name;
    const char *program;
    QStringList arguments; // before the files
    QByteArray password;
};

const Maker kMakers[] = {
    {"zipDeflated", "zip", {"-q"_q}, ""_b},
    {"zipBest", "zip", {"-q"_q, "-9"_q}, ""_b},
    {"zipStored", "zip", {"-q"_q, "-0"_q}, ""_b},
    {"zipWith64BitSizes", "zip", {"-q"_q, "-fz"_q}, ""_b},
    {"zipWithDataDescriptors", "zip", {"-q"_q, "-fd"_q}, ""_b},
    {"zipEncrypted", "zip", {"-q"_q, "-P"_q, "secret"_q}, "secret"_b},
    {"zipEncryptedStored", "zip", {"-q"_q, "-0"_q, "-P"_q, "secret"_q}, "secret"_b},
    {"zipEncryptedByAPhrase", "zip", {"-q"_q, "-P"_q, u8"Tür & Tor €"_q}, u8"Tür & Tor €"_b},
    {"sevenZipDeflated", "7z", {"a"_q, "-bd"_q, "-tzip"_q}, ""_b},
    {"sevenZipStored", "7z", {"a"_q, "-bd"_q, "-tzip"_q, "-mx=0"_q}, ""_b},
    {"sevenZipBzip2", "7z", {"a"_q, "-bd"_q, "-tzip"_q, "-mm=BZip2"_q}, ""_b},
    {"sevenZipLzma", "7z", {"a"_q, "-bd"_q, "-tzip"_q, "-mm=LZMA"_q}, ""_b},
    {"sevenZipPpmd", "7z", {"a"_q, "-bd"_q, "-tzip"_q, "-mm=PPMd"_q}, ""_b},
    {"sevenZipEncrypted",
     "7z",
     {"a"_q, "-bd"_q, "-tzip"_q, "-mem=ZipCrypto"_q, "-psecret"_q},
     "secret"_b},
    {"sevenZipAes128",
     "7z",
     {"a"_q, "-bd"_q, "-tzip"_q, "-mem=AES128"_q, "-psecret"_q},
     "secret"_b},
    {"sevenZipAes192",
     "7z",
     {"a"_q, "-bd"_q, "-tzip"_q, "-mem=AES192"_q, "-psecret"_q},
     "secret"_b},
    {"sevenZipAes256",
     "7z",
     {"a"_q, "-bd"_q, "-tzip"_q, "-mem=AES256"_q, "-psecret"_q},
     "secret"_b},
    {"sevenZipAes256Stored",
     "7z",
     {"a"_q, "-bd"_q, "-tzip"_q, "-mx=0"_q, "-mem=AES256"_q, "-psecret"_q},
     "secret"_b},
};

class ArchivesOfPrograms : public FolderTest, public testing::WithParamInterface<Maker>
{
protected:
    void SetUp() override
    {
        FolderTest::SetUp();
        ASSERT_TRUE(dir().mkpath("in/sub/deep"_q));
        ASSERT_TRUE(dir().mkpath("in/none"_q));
        for (const Entry &file : m_files)
            writeFile(path("in/"_q + file.name), file.content);
        QStringList arguments = GetParam().arguments;
        arguments << path("cams.zip"_q);
        for (const Entry &file : m_files)
            arguments << file.name;
        arguments << "sub"_q
                  << "sub/deep"_q
                  << "none"_q; // folders: entries without content
        runProgram(QString::fromLatin1(GetParam().program), arguments, path("in"_q));
    }

    const Entries m_files = {
        {"front.cfg"_q, configText(8000, 1)},
        {"BACK.CFG"_q, configText(100, 2)},
        {"empty.cfg"_q, ""_b},
        {"one.cfg"_q, "x"_b},
        {u8"sub/deep/Tür €.cfg"_q, configText(400000, 3)},
        {"sub/noise.Cfg"_q, noise(300000, 4)},
        {"notes.txt"_q, "notes"_b},
    };
};

} // namespace

TEST_P(ArchivesOfPrograms, areReadRightlyAndOnlyWithTheirPassword)
{
    const QString archive = path("cams.zip"_q);
    Entries read = readAll(archive, GetParam().password);
    // 7z stores in an order of its own.
    const auto byName = [](const Entry &a, const Entry &b) { return a.name < b.name; };
    Entries expected = m_files;
    if (qstrcmp(GetParam().program, "zip") != 0) {
        std::sort(expected.begin(), expected.end(), byName);
        std::sort(read.begin(), read.end(), byName);
    }
    EXPECT_EQ(read, expected);

    if (GetParam().password.isEmpty())
        return;
    // zip does not encrypt an entry without content.
    for (const QByteArray &password : {""_b, "Secret"_b, "secret2"_b, "x"_b}) {
        ZipReader zip(archive, password);
        ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
        const QStringList names = zip.fileListBySuffix(QString());
        EXPECT_EQ(names.size(), m_files.size()) << "the names are not encrypted";
        for (const QString &name : names) {
            ASSERT_TRUE(zip.openFile(name));
            const QByteArray content = readInPieces(&zip);
            if (name == "empty.cfg"_q && !content.isNull()) {
                EXPECT_EQ(content, ""_b);
                continue;
            }
            EXPECT_TRUE(content.isNull()) << name.toStdString();
            EXPECT_TRUE(zip.errorString().startsWith(archive + ": "_q + name + ": "_q))
                << zip.errorString().toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(ZipReader, ArchivesOfPrograms, testing::ValuesIn(kMakers), nameOfRow);

TEST_F(ZipReaderTest, needsNoPasswordButTakesOne)
{
    archiveWith(kThree);
    EXPECT_EQ(readAll(archive(), "unneeded"_b), kThree);
    EXPECT_EQ(readAll(archive(), "with\0zero"_b), kThree);
}

TEST_F(ZipReaderTest, saysWhyAPasswordDoesNotFit)
{
    writeFile(path("front.cfg"_q), configText(1000, 1));
    runProgram("zip"_q, {"-q"_q, "-P"_q, "secret"_q, "plain.zip"_q, "front.cfg"_q}, dir().path());
    runProgram(
        "7z"_q,
        {"a"_q, "-bd"_q, "-tzip"_q, "-mem=AES256"_q, "-psecret"_q, "aes.zip"_q, "front.cfg"_q},
        dir().path());
    for (const QString &name : {"plain.zip"_q, "aes.zip"_q}) {
        ZipReader missing(path(name));
        ASSERT_TRUE(missing.open(QIODevice::ReadOnly));
        expectReadError(&missing, path(name), "front.cfg"_q,
                        "encrypted, and there is no password"_q);
        ZipReader wrong(path(name), "wrong"_b);
        ASSERT_TRUE(wrong.open(QIODevice::ReadOnly));
        expectReadError(&wrong, path(name), "front.cfg"_q, "Incorrect passphrase"_q);
    }
}

// The format's own check is one byte of plain encryption, so one wrong password in 256 passes it.
TEST_F(ZipReaderTest, givesNothingToAnyWrongPassword)
{
    writeFile(path("stored.cfg"_q), noise(100, 1));
    writeFile(path("deflated.cfg"_q), configText(1000, 1));
    runProgram("zip"_q,
               {"-q"_q, "-P"_q, "secret"_q, "cams.zip"_q, "stored.cfg"_q, "deflated.cfg"_q},
               dir().path());
    int passed = 0;
    for (int i = 0; i < 2000; ++i) {
        ZipReader zip(archive(), "wrong" + QByteArray::number(i));
        ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
        for (const QString &name : {"stored.cfg"_q, "deflated.cfg"_q}) {
            ASSERT_TRUE(zip.openFile(name));
            ASSERT_TRUE(readInPieces(&zip).isNull()) << i;
            if (!zip.errorString().endsWith("Incorrect passphrase"_q))
                ++passed;
        }
    }
    EXPECT_GT(passed, 0) << "no password passed the first check: nothing shown";
}

TEST_F(ZipReaderTest, readsPlainEntriesBesideEncryptedOnes)
{
    writeFile(path("a.cfg"_q), "plain"_b);
    writeFile(path("b.cfg"_q), "hidden"_b);
    writeFile(path("c.cfg"_q), "also plain"_b);
    runProgram("zip"_q, {"-q"_q, "cams.zip"_q, "a.cfg"_q}, dir().path());
    runProgram("zip"_q, {"-q"_q, "-P"_q, "secret"_q, "cams.zip"_q, "b.cfg"_q}, dir().path());
    runProgram("zip"_q, {"-q"_q, "cams.zip"_q, "c.cfg"_q}, dir().path());
    const Entries all = {
        {"a.cfg"_q, "plain"_b}, {"b.cfg"_q, "hidden"_b}, {"c.cfg"_q, "also plain"_b}};
    EXPECT_EQ(readAll(archive(), "secret"_b), all);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(readEntry(&zip, "a.cfg"_q), "plain"_b);
    expectReadError(&zip, archive(), "b.cfg"_q, "encrypted, and there is no password"_q);
    EXPECT_EQ(readEntry(&zip, "c.cfg"_q), "also plain"_b);
}

TEST_F(ZipReaderTest, listsTheEntriesWithASuffixInArchiveOrder)
{
    archiveWith({{"z.cfg"_q, ""_b},
                 {"A.CFG"_q, ""_b},
                 {"m.Cfg.txt"_q, ""_b},
                 {"folder.cfg/"_q, ""_b},
                 {"folder.cfg/b.cFg"_q, ""_b},
                 {"cfg"_q, ""_b},
                 {"a.txt"_q, ""_b}});
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    const QStringList configurations = {"z.cfg"_q, "A.CFG"_q, "folder.cfg/b.cFg"_q, "cfg"_q};
    EXPECT_EQ(zip.fileListBySuffix("cfg"_q), configurations);
    EXPECT_EQ(zip.fileListBySuffix("CFG"_q), configurations);
    EXPECT_EQ(zip.fileListBySuffix(".txt"_q), (QStringList{"m.Cfg.txt"_q, "a.txt"_q}));
    EXPECT_EQ(zip.fileListBySuffix("zip"_q), QStringList());
    EXPECT_EQ(zip.fileListBySuffix(QString()).size(), 6);
}

TEST_F(ZipReaderTest, listsInTheOrderOfTheDirectoryWhereTheFileHasAnother)
{
    archiveWith({{"1"_q, "one"_b}, {"2"_q, "two"_b}, {"3"_q, "three"_b}, {"4"_q, ""_b}});
    runPython(R"(
import zipfile
with zipfile.ZipFile('cams.zip', 'a') as archive:
    archive.filelist.reverse()
    archive._didModify = True
)",
              {}, dir().path());
    const Entries expected = {
        {"4"_q, ""_b}, {"3"_q, "three"_b}, {"2"_q, "two"_b}, {"1"_q, "one"_b}};
    EXPECT_EQ(readByPython(archive()), expected);
    EXPECT_EQ(readAll(archive()), expected);
}

TEST_F(ZipReaderTest, readsEntriesInAnyOrder)
{
    Entries entries;
    for (int i = 0; i < 300; ++i)
        entries.append({"%1.cfg"_q.arg(i), configText(i * 7, i)});
    archiveWith(entries);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    for (int i = entries.size() - 1; i >= 0; --i)
        ASSERT_EQ(readEntry(&zip, entries.at(i).name), entries.at(i).content) << "backwards, " << i;
    for (int step = 2; step < 40; ++step)
        for (int i = 0; i < entries.size(); i += step)
            ASSERT_EQ(readEntry(&zip, entries.at(i).name), entries.at(i).content)
                << "every " << step << "th, " << i;
    Random random(7);
    for (int i = 0; i < 1000; ++i) {
        const Entry &entry = random.oneOf(entries);
        ASSERT_EQ(readEntry(&zip, entry.name), entry.content) << i;
    }
    for (const Entry &entry : entries)
        ASSERT_EQ(readEntry(&zip, entry.name), entry.content);
}

TEST_F(ZipReaderTest, changesEntriesWhileOneIsHalfRead)
{
    const Entries entries = {{"a"_q, configText(50000, 1)}, {"b"_q, configText(50000, 2)}};
    archiveWith(entries);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    for (const int part : {0, 1, 100, 16384, 20000, 49999, 50000}) {
        ASSERT_TRUE(zip.openFile("a"_q));
        EXPECT_EQ(zip.read(part), entries[0].content.left(part));
        EXPECT_EQ(readEntry(&zip, "b"_q), entries[1].content);
        // the same entry again begins anew
        ASSERT_TRUE(zip.openFile("b"_q));
        EXPECT_EQ(zip.read(part), entries[1].content.left(part));
        EXPECT_EQ(readEntry(&zip, "b"_q), entries[1].content);
    }
}

TEST_F(ZipReaderTest, goesFromOneEntryOfANameToTheNext)
{
    archiveWith({{"a"_q, "a1"_b},
                 {"b"_q, "b1"_b},
                 {"a"_q, "a2"_b},
                 {"b"_q, "b2"_b},
                 {"a"_q, "a3"_b},
                 {"c"_q, "c1"_b}});
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.fileListBySuffix(QString()),
              (QStringList{"a"_q, "b"_q, "a"_q, "b"_q, "a"_q, "c"_q}));
    for (const QByteArray &expected : {"a1"_b, "a2"_b, "a3"_b, "a1"_b, "a2"_b})
        EXPECT_EQ(readEntry(&zip, "a"_q), expected);
    for (const QByteArray &expected : {"b1"_b, "b2"_b, "b1"_b})
        EXPECT_EQ(readEntry(&zip, "b"_q), expected);
    EXPECT_EQ(readEntry(&zip, "a"_q), "a3"_b) << "each name has a turn of its own";
    EXPECT_EQ(readEntry(&zip, "c"_q), "c1"_b);
    EXPECT_EQ(readEntry(&zip, "c"_q), "c1"_b);

    zip.close();
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(readEntry(&zip, "a"_q), "a1"_b) << "opened anew it starts over";
}

TEST_F(ZipReaderTest, readsEntriesByTheirPlaceInTheDirectory)
{
    archiveWith({{"folder/"_q, ""_b}, {"a"_q, "a1"_b}, {"b"_q, "b1!"_b}, {"a"_q, "a2"_b}});
    ZipReader zip(archive());
    EXPECT_EQ(zip.entryCount(), 0);
    EXPECT_FALSE(zip.openEntry(1));
    EXPECT_EQ(zip.errorString(), archive() + ": 1: the archive is not open"_q);

    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    ASSERT_EQ(zip.entryCount(), 4);
    EXPECT_EQ(zip.entryName(0), "folder/"_q);
    EXPECT_EQ(zip.entryName(3), "a"_q);
    EXPECT_EQ(zip.entrySize(2), 3);
    const auto contentOf = [&](int index) {
        EXPECT_TRUE(zip.openEntry(index)) << zip.errorString().toStdString();
        return readInPieces(&zip);
    };
    EXPECT_EQ(contentOf(3), "a2"_b);
    EXPECT_EQ(readEntry(&zip, "a"_q), "a1"_b) << "the turn of the name stays";
    EXPECT_EQ(contentOf(1), "a1"_b);
    EXPECT_EQ(readEntry(&zip, "a"_q), "a2"_b);
    EXPECT_EQ(contentOf(2), "b1!"_b);

    for (const int index : {-1, 4, 1000000}) {
        SCOPED_TRACE(index);
        EXPECT_TRUE(zip.entryName(index).isNull());
        EXPECT_EQ(zip.entrySize(index), -1);
        EXPECT_FALSE(zip.openEntry(index));
        EXPECT_EQ(zip.errorString(), archive() + ": %1: no such entry"_q.arg(index));
    }
    EXPECT_FALSE(zip.openEntry(0));
    EXPECT_EQ(zip.errorString(), archive() + ": folder/: no such entry"_q);
    char byte;
    EXPECT_EQ(zip.read(&byte, 1), -1) << "not the entry before";
}

TEST_F(ZipReaderTest, readsManyEntriesOfOneName)
{
    Entries entries;
    for (int i = 0; i < 1000; ++i)
        entries.append({"same.cfg"_q, QByteArray::number(i)});
    archiveWith(entries, true);
    EXPECT_EQ(readAll(archive()), entries);
}

TEST_F(ZipReaderTest, deliversAnErrorAfterANameThatIsNotThere)
{
    archiveWith(kThree);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    ASSERT_TRUE(zip.openFile("front.cfg"_q));
    ASSERT_EQ(zip.read(4), "name"_b);
    const QString expected = archive() + ": none.cfg: no such entry"_q;
    EXPECT_FALSE(zip.openFile("none.cfg"_q));
    EXPECT_EQ(zip.errorString(), expected);
    char byte;
    EXPECT_EQ(zip.read(&byte, 1), -1) << "not the entry before";
    EXPECT_TRUE(zip.atEnd());
    EXPECT_EQ(zip.bytesAvailable(), 0);
    expectThrows<ArchiveException>([&] { FileUtils::readText(&zip); }, expected);
    EXPECT_FALSE(zip.openFile("FRONT.CFG"_q)) << "names keep their case";
    EXPECT_FALSE(zip.openFile(QString()));
    EXPECT_EQ(readEntry(&zip, "front.cfg"_q), "name=front\n"_b);
}

TEST_F(ZipReaderTest, takesNoFolderForAnEntry)
{
    archiveWith({{"folder/"_q, ""_b}, {"folder/a"_q, "x"_b}});
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_FALSE(zip.openFile("folder/"_q));
    EXPECT_EQ(zip.errorString(), archive() + ": folder/: no such entry"_q);
}

TEST_F(ZipReaderTest, deliversAnErrorBeforeAnEntryIsChosen)
{
    archiveWith(kThree);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    expectThrows<ArchiveException>([&] { FileUtils::readText(&zip); },
                                   archive() + ": no entry has been chosen"_q);
}

TEST_F(ZipReaderTest, isASequentialDevice)
{
    archiveWith({{"a"_q, "one\ntwo\nthree"_b}, {"empty"_q, ""_b}});
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_TRUE(zip.isSequential());
    EXPECT_TRUE(zip.isReadable());
    EXPECT_FALSE(zip.isWritable());

    ASSERT_TRUE(zip.openFile("a"_q));
    EXPECT_FALSE(zip.atEnd());
    EXPECT_EQ(zip.bytesAvailable(), 13);
    EXPECT_EQ(zip.peek(3), "one"_b);
    EXPECT_EQ(zip.readLine(), "one\n"_b);
    char letter;
    ASSERT_TRUE(zip.getChar(&letter));
    zip.ungetChar(letter);
    EXPECT_TRUE(zip.canReadLine());
    EXPECT_EQ(zip.bytesAvailable(), 9);
    EXPECT_EQ(zip.readLine(), "two\n"_b);
    EXPECT_EQ(zip.readAll(), "three"_b);
    EXPECT_TRUE(zip.atEnd());
    EXPECT_EQ(zip.bytesAvailable(), 0);
    EXPECT_EQ(zip.read(&letter, 1), 0) << "the end is no error";

    ASSERT_TRUE(zip.openFile("empty"_q));
    EXPECT_FALSE(zip.atEnd()) << "not known before it is read";
    EXPECT_EQ(zip.read(&letter, 1), 0);
    EXPECT_TRUE(zip.atEnd());

    ASSERT_TRUE(zip.openFile("a"_q));
    QTextStream stream(&zip);
    EXPECT_EQ(stream.readLine(), "one"_q);
    EXPECT_EQ(stream.readAll(), "two\nthree"_q);
}

TEST_F(ZipReaderTest, readsWithoutABufferOfQt)
{
    archiveWith(kThree);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    ASSERT_TRUE(zip.openFile("front.cfg"_q));
    for (const char expected : "name=front\n"_b) {
        char letter;
        ASSERT_TRUE(zip.getChar(&letter));
        EXPECT_EQ(letter, expected);
    }
    EXPECT_TRUE(zip.atEnd());
    EXPECT_EQ(readEntry(&zip, "back.cfg"_q), "name=back\n"_b);
}

TEST_F(ZipReaderTest, deliversPiecesOfAnySize)
{
    const QByteArray content = configText(100000, 5);
    archiveWith({{"a"_q, content}});
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    for (const int size : {1, 7, 16383, 16384, 16385, 99999, 100000, 100001, 1000000}) {
        ASSERT_TRUE(zip.openFile("a"_q));
        EXPECT_EQ(readInPieces(&zip, size), content) << size;
    }
}

TEST_F(ZipReaderTest, readsAnEmptyArchive)
{
    archiveWith({});
    EXPECT_EQ(readFile(archive()).size(), 22);
    EXPECT_EQ(readAll(archive()), Entries());
}

TEST_F(ZipReaderTest, readsAnArchiveOfFoldersAlone)
{
    archiveWith({{"a/"_q, ""_b}, {"a/b/"_q, ""_b}});
    EXPECT_EQ(readAll(archive()), Entries());
}

TEST_F(ZipReaderTest, readsMoreEntriesThan16BitsCount)
{
    runPython(R"(
import zipfile
with zipfile.ZipFile('cams.zip', 'w') as archive:
    for i in range(70000):
        archive.writestr(str(i), str(i * 3))
)",
              {}, dir().path());
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.fileListBySuffix(QString()).size(), 70000);
    for (const int i : {0, 65534, 65535, 65536, 69999, 1})
        EXPECT_EQ(readEntry(&zip, QString::number(i)), QByteArray::number(i * 3));
}

TEST_F(ZipReaderTest, readsEntriesPastTheFirst4GiBOfAFile)
{
    // Most of it is a hole that takes no room on the disk.
    runPython(R"(
import zipfile
with open('cams.zip', 'w+b') as file:
    with zipfile.ZipFile(file, 'w') as archive:
        archive.writestr('first', 'near')
        file.seek(5 << 30)
        archive.start_dir = file.tell()
        archive.writestr('second', 'far')
)",
              {}, dir().path());
    EXPECT_GT(QFileInfo(archive()).size(), qint64(5) << 30);
    EXPECT_EQ(readAll(archive()), (Entries{{"first"_q, "near"_b}, {"second"_q, "far"_b}}));
}

TEST_F(ZipReaderTest, readsEntriesWithPaddingBehindTheirExtraFields)
{
    // As programs align data: one to three bytes, too few for another field.
    runPython(R"(
import sys, zipfile
with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED) as archive:
    for i in range(300):
        info = zipfile.ZipInfo('%d.cfg' % i)
        info.extra = (b'', bytes(1), bytes(2), bytes(3), b'\xFE\xCA\0\0' + bytes(3))[i % 5]
        archive.writestr(info, ('text %d ' % i) * 1000, zipfile.ZIP_DEFLATED)
)",
              {archive()}, dir().path());
    const Entries entries = readAll(archive());
    ASSERT_EQ(entries.size(), 300);
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(entries[i].name, "%1.cfg"_q.arg(i));
        EXPECT_EQ(entries[i].content, "text %1 "_q.arg(i).repeated(1000).toLatin1());
    }
}

TEST_F(ZipReaderTest, readsAnArchiveBehindOtherBytes)
{
    archiveWith(kThree);
    const QByteArray bytes = readFile(archive());
    writeFile(archive(), "#!/bin/sh\nexec unzip $0\n" + bytes);
    EXPECT_EQ(readAll(archive()), kThree);
    EXPECT_EQ(readByPython(archive()), kThree);
}

TEST_F(ZipReaderTest, readsA64BitArchiveBehindOtherBytes)
{
    writeFile(path("a"_q), "content"_b);
    runProgram("zip"_q, {"-q"_q, "-fz"_q, "cams.zip"_q, "a"_q}, dir().path());
    const QByteArray bytes = readFile(archive());
    ASSERT_TRUE(bytes.contains("PK\x06\x06")) << "no 64-bit directory";
    writeFile(archive(), QByteArray(1000, '-') + bytes);
    EXPECT_EQ(readAll(archive()), (Entries{{"a"_q, "content"_b}}));
}

TEST_F(ZipReaderTest, readsAnArchiveBeforeOtherBytes)
{
    archiveWith(kThree);
    writeFile(archive(), readFile(archive()) + QByteArray(100, '\0'));
    EXPECT_EQ(readAll(archive()), kThree);
}

TEST_F(ZipReaderTest, readsAnArchiveWithACommentOfAnySize)
{
    for (const int size : {1, 16 * 1024, 0xFFFF}) {
        runPython(R"(
import sys, zipfile
with zipfile.ZipFile('cams.zip', 'w') as archive:
    archive.writestr('a', 'content')
    archive.comment = b'c' * int(sys.argv[1])
)",
                  {QString::number(size)}, dir().path());
        EXPECT_EQ(readAll(archive()), (Entries{{"a"_q, "content"_b}})) << size;
    }
}

TEST_F(ZipReaderTest, isNotMisledByAnArchiveInTheComment)
{
    makeByPython(path("inner.zip"_q), {{"inner"_q, "wrong"_b}});
    runPython(R"(
import zipfile
with zipfile.ZipFile('cams.zip', 'w') as archive:
    archive.writestr('outer', 'right')
    archive.comment = open('inner.zip', 'rb').read()
)",
              {}, dir().path());
    EXPECT_EQ(readAll(archive()), (Entries{{"outer"_q, "right"_b}}));
}

TEST_F(ZipReaderTest, isNotMisledByAnArchiveInAnEntry)
{
    makeByPython(path("inner.zip"_q), {{"inner"_q, "wrong"_b}});
    const QByteArray inner = readFile(path("inner.zip"_q));
    const Entries entries = {{"a"_q, "right"_b}, {"inner.zip"_q, inner}};
    archiveWith(entries, true);
    EXPECT_EQ(readAll(archive()), entries);
    // Cut off behind the inner one, which so ends the file.
    const QByteArray bytes = readFile(archive());
    writeFile(archive(), bytes.left(bytes.indexOf(inner) + inner.size()));
    ZipReader zip(archive());
    EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.errorString(), archive() + ": cut off: its directory is missing"_q);
}

TEST_F(ZipReaderTest, readsADirectoryThatIsSigned)
{
    archiveWith(kThree);
    QByteArray bytes = readFile(archive());
    const int end = bytes.indexOf("PK\x05\x06");
    const QByteArray signature = "PK\x05\x05\x04\x00sign"_b;
    const int directorySize = static_cast<unsigned char>(bytes.at(end + 12)) + signature.size();
    ASSERT_LT(directorySize, 256);
    bytes[end + 12] = static_cast<char>(directorySize);
    bytes.insert(end, signature);
    writeFile(archive(), bytes);
    EXPECT_EQ(readAll(archive()), kThree);
}

TEST_F(ZipReaderTest, readsTheTargetOfALinkAsItsContent)
{
    ASSERT_TRUE(dir().mkdir("in"_q));
    ASSERT_EQ(::symlink("../elsewhere.cfg", QFile::encodeName(path("in/link.cfg"_q)).constData()),
              0);
    runProgram("zip"_q, {"-q"_q, "--symlinks"_q, archive(), "link.cfg"_q}, path("in"_q));
    EXPECT_EQ(readAll(archive()), (Entries{{"link.cfg"_q, "../elsewhere.cfg"_b}}));
    EXPECT_EQ(readByPython(archive()), (Entries{{"link.cfg"_q, "../elsewhere.cfg"_b}}));
}

TEST_F(ZipReaderTest, readsWhatAPipeHasWritten)
{
    // Sizes and checksums follow the data.
    runProgram("/bin/sh"_q, {"-c"_q, "printf 'from a pipe' | zip -q - - | cat > cams.zip"_q},
               dir().path());
    EXPECT_EQ(readAll(archive()), (Entries{{"-"_q, "from a pipe"_b}}));
}

TEST_F(ZipReaderTest, readsNamesInTheirEncodings)
{
    // name as stored, whether its flag says UTF-8, extra field, name
    struct Row
    {
        QByteArray stored;
        bool isUtf8;
        QByteArray extra;
        QString name;
    };
    const Row rows[] = {
        {"plain.cfg"_b, false, ""_b, "plain.cfg"_q},
        {"T\xC3\xBCr.cfg"_b, true, ""_b, u8"Tür.cfg"_q},
        {"\xE2\x82\xAC.cfg"_b, true, ""_b, u8"€.cfg"_q},
        {"T\xC3\xBCr.cfg"_b, false, ""_b, u8"Tür.cfg"_q},             // valid UTF-8 all the same
        {"T\x81r.cfg"_b, false, ""_b, u8"Tür.cfg"_q},                 // code page 437
        {"\x80\xE1\xFF\xB0.cfg"_b, false, ""_b, u8"Çß\u00A0░.cfg"_q}, // code page 437
        {"T\xFCr.cfg"_b, true, ""_b, u8"T\uFFFDr.cfg"_q},             // not what the flag says
        // the Unicode path field: 0x7075, 13 bytes, version 1, crc of the stored name
        {"T?r.cfg"_b, false, "up\x0D\x00\x01\xA3\x81\xC5\xD6T\xC3\xBCr.cfg"_b, u8"Tür.cfg"_q},
        // the same with another crc: the name has been changed by a program that knows no such
        // field
        {"T?r.cfg"_b, false, "up\x0D\x00\x01\xA4\x81\xC5\xD6T\xC3\xBCr.cfg"_b, "T?r.cfg"_q},
        // another version of the field, which may hold anything, and one without a name
        {"T?r.cfg"_b, false, "up\x0D\x00\x02\xA3\x81\xC5\xD6T\xC3\xBCr.cfg"_b, "T?r.cfg"_q},
        {"T?r.cfg"_b, false, "up\x05\x00\x01\xA3\x81\xC5\xD6"_b, "T?r.cfg"_q},
        // a zero byte does not end a name, nor does a byte order mark begin it
        {"a.cfg\0.exe"_b, false, ""_b, u8"a.cfg\0.exe"_q},
        {"a.cfg\0"_b, true, ""_b, u8"a.cfg\0"_q},
        {"\x81.cfg\0.exe"_b, false, ""_b, u8"ü.cfg\0.exe"_q},
        {"\xEF\xBB\xBF"
         "a.cfg"_b,
         true, ""_b, QChar(QChar::ByteOrderMark) + "a.cfg"_q},
    };
    for (const char *locale : {"C.UTF-8", "C"}) {
        SCOPED_TRACE(locale);
        ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
        for (const Row &row : rows) {
            SCOPED_TRACE(row.stored.constData());
            runPython(R"(
import sys, zipfile
class Info(zipfile.ZipInfo):
    def _encodeFilenameFlags(self):
        return bytes.fromhex(sys.argv[1]), self.flag_bits | (0x800 if sys.argv[2] == '1' else 0)
with zipfile.ZipFile('cams.zip', 'w') as archive:
    info = Info('x')
    info.extra = bytes.fromhex(sys.argv[3])
    archive.writestr(info, 'content')
    archive.writestr('after', 'more')
)",
                      {QString::fromLatin1(row.stored.toHex()), row.isUtf8 ? "1"_q : "0"_q,
                       QString::fromLatin1(row.extra.toHex())},
                      dir().path());
            EXPECT_EQ(readAll(archive()),
                      (Entries{{row.name, "content"_b}, {"after"_q, "more"_b}}));
        }
    }
    ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
}

TEST_F(ZipReaderTest, refusesWhatIsNoArchive)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("pipe.zip"_q)).constData(), 0600), 0);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray socketPath = QFile::encodeName(path("socket.zip"_q));
    ASSERT_LT(static_cast<std::size_t>(socketPath.size()), sizeof address.sun_path);
    std::memcpy(address.sun_path, socketPath.constData(),
                static_cast<std::size_t>(socketPath.size()));
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    ASSERT_TRUE(dir().mkdir("folder.zip"_q));
    fileWith(""_b, "empty.zip"_q);
    fileWith("PK"_b, "two.zip"_q);
    fileWith("this is no archive, but a text that is long enough to hold one"_b, "text.zip"_q);
    fileWith(noise(200000, 1), "noise.zip"_q);

    const QString noDirectory = "not a zip archive, or cut off: it has no directory"_q;
    const struct
    {
        QString name;
        QString reason;
    } rows[] = {
        {"missing.zip"_q, "No such file or directory"_q},
        {"pipe.zip"_q, "not a regular file"_q},
        {"socket.zip"_q, "No such device or address"_q},
        {"folder.zip"_q, "not a regular file"_q},
        {"empty.zip"_q, noDirectory},
        {"two.zip"_q, noDirectory},
        {"text.zip"_q, noDirectory},
        {"noise.zip"_q, noDirectory},
    };
    testing::internal::CaptureStderr();
    for (const auto &row : rows) {
        ::alarm(30); // waiting for the other end of a pipe would last for ever
        const QString expected = path(row.name) + ": "_q + row.reason;
        ZipReader zip(path(row.name));
        EXPECT_FALSE(zip.open(QIODevice::ReadOnly)) << row.name.toStdString();
        EXPECT_FALSE(zip.isOpen());
        EXPECT_EQ(zip.errorString(), expected);
        EXPECT_TRUE(zip.atEnd());
        expectThrows<ArchiveException>([&] { zip.fileListBySuffix("cfg"_q); }, expected);
        EXPECT_FALSE(zip.openFile("a.cfg"_q));
        EXPECT_THROW(FileUtils::readText(&zip), IOException);
        expectThrows<ArchiveException>([&] { zip.fileListBySuffix("cfg"_q); }, expected);
        zip.close();
    }
    ::alarm(0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    ::close(socket);
}

TEST_F(ZipReaderTest, takesNoZeroCharacterForTheEndOfAPath)
{
    archiveWith(kThree);
    const QString longer = archive() + QChar(0) + ".zip"_q;
    ZipReader zip(longer);
    EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.errorString(), longer + ": Invalid argument"_q);
}

// A table that took Qt's hash would compare each of these names with all others.
TEST_F(ZipReaderTest, findsNamesThatAllHaveOneHashInQt)
{
    // Two texts of equal size and hash; any sequence of them has one hash, too.
    Random random(11);
    QHash<uint, QString> seen;
    QString one;
    QString other;
    while (one.isEmpty()) {
        QString name;
        for (int i = 0; i < 8; ++i)
            name += QLatin1Char(static_cast<char>('a' + random.below(26)));
        other = seen.value(qHash(name));
        if (!other.isEmpty() && other != name)
            one = name;
        seen.insert(qHash(name), name);
    }
    QByteArray list;
    constexpr int kBits = 15;
    for (int i = 0; i < 1 << kBits; ++i) {
        QString name;
        for (int bit = 0; bit < kBits; ++bit)
            name += (i >> bit & 1) ? one : other;
        list += name.toLatin1() + '\n';
    }
    const QStringList names =
        QString::fromLatin1(list).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(qHash(names.first()), qHash(names.last()));
    writeFile(path("names"_q), list);
    runPython(R"(
import zipfile
with zipfile.ZipFile('cams.zip', 'w') as archive:
    for name in open('names').read().split():
        archive.writestr(name, name[-8:])
)",
              {}, dir().path());
    ::alarm(60);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.fileListBySuffix(QString()), names);
    for (const QString &name : {names.first(), names.at(12345), names.last()})
        EXPECT_EQ(readEntry(&zip, name), name.right(8).toLatin1());
    ::alarm(0);
}

TEST_F(ZipReaderTest, raisesAnErrorWhereItIsNotOpen)
{
    archiveWith(kThree);
    ZipReader zip(archive());
    const QString expected = archive() + ": not open"_q;
    expectThrows<ArchiveException>([&] { zip.fileListBySuffix("cfg"_q); }, expected);
    EXPECT_FALSE(zip.openFile("front.cfg"_q));
    EXPECT_EQ(zip.errorString(), archive() + ": front.cfg: the archive is not open"_q);
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.fileListBySuffix("cfg"_q).size(), 2);
    zip.close();
    EXPECT_FALSE(zip.isOpen());
    expectThrows<ArchiveException>([&] { zip.fileListBySuffix("cfg"_q); }, expected);
    zip.close();
}

TEST_F(ZipReaderTest, opensForReadingAlone)
{
    archiveWith(kThree);
    for (const QIODevice::OpenMode mode :
         {QIODevice::OpenMode(QIODevice::WriteOnly), QIODevice::OpenMode(QIODevice::ReadWrite),
          QIODevice::OpenMode(QIODevice::NotOpen), QIODevice::ReadOnly | QIODevice::Text,
          QIODevice::WriteOnly | QIODevice::Append}) {
        ZipReader zip(archive());
        EXPECT_FALSE(zip.open(mode));
        EXPECT_EQ(zip.errorString(), archive() + ": archives can only be opened for reading"_q);
        EXPECT_FALSE(zip.isOpen());
    }
}

TEST_F(ZipReaderTest, staysAsItIsWhereItIsOpenedTwice)
{
    archiveWith(kThree);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    ASSERT_TRUE(zip.openFile("front.cfg"_q));
    EXPECT_EQ(zip.read(4), "name"_b);
    EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.errorString(), archive() + ": already open"_q);
    EXPECT_EQ(zip.readAll(), "=front\n"_b);
    EXPECT_EQ(zip.fileListBySuffix("cfg"_q).size(), 2);
}

TEST_F(ZipReaderTest, opensOnceTheArchiveIsThere)
{
    ZipReader zip(archive());
    EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
    archiveWith(kThree);
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(readEntry(&zip, "back.cfg"_q), "name=back\n"_b);
    zip.close();
    archiveWith({{"other"_q, "new"_b}});
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.fileListBySuffix(QString()), QStringList{"other"_q});
    EXPECT_EQ(readEntry(&zip, "other"_q), "new"_b);
}

TEST_F(ZipReaderTest, keepsReadingTheFileThatItHasOpened)
{
    archiveWith(kThree);
    ZipReader zip(archive());
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    ASSERT_TRUE(QFile::remove(archive()));
    EXPECT_EQ(readEntry(&zip, "front.cfg"_q), "name=front\n"_b);
}

TEST_F(ZipReaderTest, leavesNoFileOpen)
{
    archiveWith(kThree);
    const QString broken = fileWith("no archive"_b, "broken.zip"_q);
    const auto descriptors = [] { return QDir("/proc/self/fd"_q).count(); };
    const auto before = descriptors();
    for (int i = 0; i < 5; ++i) {
        ZipReader closed(archive());
        ASSERT_TRUE(closed.open(QIODevice::ReadOnly));
        readEntry(&closed, "front.cfg"_q);
        closed.close();
        EXPECT_EQ(descriptors(), before);
        ZipReader gone(archive());
        ASSERT_TRUE(gone.open(QIODevice::ReadOnly));
        ZipReader failed(broken);
        EXPECT_FALSE(failed.open(QIODevice::ReadOnly));
    }
    EXPECT_EQ(descriptors(), before);
}

TEST_F(ZipReaderTest, worksOnSeveralThreadsAtOnce)
{
    Entries entries;
    for (int i = 0; i < 100; ++i)
        entries.append({u8"%1 Tür.cfg"_q.arg(i), configText(5000, i)});
    archiveWith(entries);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] { EXPECT_EQ(readAll(archive()), entries); });
    for (std::thread &thread : threads)
        thread.join();
}

TEST_F(ZipReaderTest, isOwnedByItsParent)
{
    archiveWith(kThree);
    QObject parent;
    auto *zip = new ZipReader(archive(), QByteArray(), &parent);
    EXPECT_EQ(zip->parent(), &parent);
    ASSERT_TRUE(zip->open(QIODevice::ReadOnly));
}
