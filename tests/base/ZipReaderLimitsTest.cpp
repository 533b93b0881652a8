// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Archives that unpack to more than there is memory.

#include "base/ZipReader.h"

#include "base/Zips.h"
#include "support/Expect.h"

using namespace vn;

namespace {

constexpr int kMiB = 1024 * 1024;

class ZipReaderLimits : public FolderTest
{
protected:
    void SetUp() override
    {
        FolderTest::SetUp();
        zip = std::make_unique<ZipReader>(archive());
    }

    QString archive() const { return path("cams.zip"_q); }

    /** Opens the archive after a Python script with the variable `archive` for it has made it. */
    void open(const QByteArray &script)
    {
        runPython("import zipfile\nwith zipfile.ZipFile('cams.zip', 'w', zipfile.ZIP_DEFLATED) as "
                  "archive:\n" +
                      script,
                  {}, dir().path());
        ASSERT_TRUE(zip->open(QIODevice::ReadOnly)) << zip->errorString().toStdString();
    }

    void expectRead(const QString &name, int size)
    {
        ASSERT_TRUE(zip->openFile(name));
        EXPECT_EQ(readInPieces(zip.get(), kMiB).size(), size) << zip->errorString().toStdString();
    }

    std::unique_ptr<ZipReader> zip;
};

} // namespace

TEST_F(ZipReaderLimits, areGenerousForConfigurations)
{
    EXPECT_EQ(zip->entrySizeLimit(), 268435456);
    EXPECT_EQ(zip->archiveSizeLimit(), 1073741824);
    EXPECT_EQ(zip->entryCountLimit(), 1000000);
    EXPECT_EQ(zip->ratioLimit(), 1000);
}

TEST_F(ZipReaderLimits, areAsTheyAreSet)
{
    zip->setEntrySizeLimit(1);
    zip->setArchiveSizeLimit(2);
    zip->setEntryCountLimit(3);
    zip->setRatioLimit(4);
    EXPECT_EQ(zip->entrySizeLimit(), 1);
    EXPECT_EQ(zip->archiveSizeLimit(), 2);
    EXPECT_EQ(zip->entryCountLimit(), 3);
    EXPECT_EQ(zip->ratioLimit(), 4);
    // nothing, rather than less than nothing
    zip->setEntrySizeLimit(-1);
    zip->setArchiveSizeLimit(-1);
    zip->setEntryCountLimit(-1);
    zip->setRatioLimit(0);
    EXPECT_EQ(zip->entrySizeLimit(), 0);
    EXPECT_EQ(zip->archiveSizeLimit(), 0);
    EXPECT_EQ(zip->entryCountLimit(), 0);
    EXPECT_EQ(zip->ratioLimit(), 1);
}

TEST_F(ZipReaderLimits, ofAnEntryLetsItBeAsLarge)
{
    open(R"(
    archive.writestr('fits', 'x' * 1000)
    archive.writestr('more', 'x' * 1001)
    archive.writestr('none', '')
)");
    zip->setEntrySizeLimit(1000);
    expectRead("fits"_q, 1000);
    expectReadError(zip.get(), archive(), "more"_q, "more than the limit of 1000 bytes"_q);
    expectRead("none"_q, 0);
    zip->setEntrySizeLimit(1001);
    expectRead("more"_q, 1001);
}

TEST_F(ZipReaderLimits, ofAllEntriesCountsEachOnce)
{
    open(R"(
    archive.writestr('a', 'x' * 600)
    archive.writestr('b', 'x' * 400)
    archive.writestr('c', 'x')
    archive.writestr('none', '')
)");
    zip->setArchiveSizeLimit(1000);
    for (int i = 0; i < 3; ++i) {
        expectRead("a"_q, 600);
        expectRead("b"_q, 400);
    }
    expectReadError(zip.get(), archive(), "c"_q,
                    "more than the limit of 1000 bytes for all entries"_q);
    expectRead("none"_q, 0);
    expectRead("a"_q, 600);
    zip->setArchiveSizeLimit(1001);
    expectRead("c"_q, 1);
    zip->setArchiveSizeLimit(10);
    expectRead("a"_q, 600); // counted before

    zip->close();
    ASSERT_TRUE(zip->open(QIODevice::ReadOnly));
    expectRead("c"_q, 1);
    expectReadError(zip.get(), archive(), "a"_q,
                    "more than the limit of 10 bytes for all entries"_q);
}

TEST_F(ZipReaderLimits, ofAllEntriesLeavesOutWhatIsNotRead)
{
    open(R"(
    archive.writestr('film', 'x' * 1000000)
    archive.writestr('a.cfg', 'x' * 100)
)");
    zip->setArchiveSizeLimit(100);
    EXPECT_EQ(zip->fileListBySuffix("cfg"_q), QStringList{"a.cfg"_q});
    expectRead("a.cfg"_q, 100);
}

TEST_F(ZipReaderLimits, ofTheCountHoldsOnOpening)
{
    open(R"(
    for i in range(10):
        archive.writestr(str(i), 'x')
    archive.writestr('folder/', '')
)");
    zip->close();
    zip->setEntryCountLimit(11);
    EXPECT_TRUE(zip->open(QIODevice::ReadOnly));
    zip->close();
    zip->setEntryCountLimit(10);
    EXPECT_FALSE(zip->open(QIODevice::ReadOnly));
    const QString expected = archive() + ": more than the limit of 10 entries"_q;
    EXPECT_EQ(zip->errorString(), expected);
    expectThrows<ArchiveException>([&] { zip->fileListBySuffix("cfg"_q); }, expected);
}

TEST_F(ZipReaderLimits, ofTheCountHoldsFor64BitCountsBeforeTheDirectoryIsRead)
{
    open("    for i in range(70000): archive.writestr(str(i), '')");
    zip->close();
    zip->setEntryCountLimit(69999);
    EXPECT_FALSE(zip->open(QIODevice::ReadOnly));
    EXPECT_EQ(zip->errorString(), archive() + ": more than the limit of 69999 entries"_q);
    zip->setEntryCountLimit(70000);
    EXPECT_TRUE(zip->open(QIODevice::ReadOnly));
}

TEST_F(ZipReaderLimits, holdForTheDirectoryToo)
{
    // 300 MB of directory, most of it a hole in the file.
    runPython(R"(
import struct
with open('cams.zip', 'wb') as file:
    file.write(b'PK\1\2')
    file.seek(300000000)
    file.write(struct.pack('<4s4H2IH', b'PK\5\6', 0, 0, 1, 1, 300000000, 0, 0))
)",
              {}, dir().path());
    EXPECT_FALSE(zip->open(QIODevice::ReadOnly));
    EXPECT_EQ(zip->errorString(), archive() + ": the directory is too large"_q);
}

TEST_F(ZipReaderLimits, ofTheRatioLeaveTheFirst16MiBAlone)
{
    // Zeros deflate to about a thousandth, a little less.
    open(R"(
    archive.writestr('small', bytes(16 << 20))
    archive.writestr('large', bytes((16 << 20) + 1))
)");
    expectRead("small"_q, 16 * kMiB);
    expectReadError(zip.get(), archive(), "large"_q,
                    "compressed more than the limit of 1000 times"_q);
    zip->setRatioLimit(1100);
    expectRead("large"_q, 16 * kMiB + 1);
}

TEST_F(ZipReaderLimits, ofTheRatioAreExact)
{
    open(R"(
    archive.writestr(zipfile.ZipInfo('twice'), b'01234567' * (3 << 20), zipfile.ZIP_STORED)
)");
    zip->setRatioLimit(1); // stored: 24 MiB stand for 24 MiB
    expectRead("twice"_q, 24 * kMiB);
}

TEST_F(ZipReaderLimits, ofTheRatioAreExactToTheByte)
{
    // name: what the directory says of the sizes
    open(R"(
    for size, compressed in ((20000000, 20000), (20000001, 20000), (20000001, 20001)):
        archive.writestr('%d of %d' % (compressed, size), 'x')
        archive.filelist[-1].file_size = size
        archive.filelist[-1].compress_size = compressed
)");
    expectReadError(zip.get(), archive(), "20000 of 20000001"_q,
                    "compressed more than the limit of 1000 times"_q);
    // These pass the limit; that nothing of it is true shows later.
    for (const QString &name : {"20000 of 20000000"_q, "20001 of 20000001"_q})
        expectReadError(zip.get(), archive(), name, "the entry contradicts the directory"_q);
}

TEST_F(ZipReaderLimits, holdForEntriesThatSayTheyAreSmall)
{
    open(R"(
    archive.writestr('a', bytes(100 << 20))
    archive.filelist[0].file_size = 10
)");
    // Decoding ends at the first byte too many, long before 100 MiB.
    ASSERT_TRUE(zip->openFile("a"_q));
    char byte;
    EXPECT_EQ(zip->read(&byte, 1), -1);
    EXPECT_EQ(zip->errorString(), archive() + ": a: the entry contradicts the directory"_q);
}

TEST_F(ZipReaderLimits, endDecodingOneByteAfterTheDirectorysSize)
{
    // The local header of a pipe's entry has no sizes that could contradict.
    runProgram("/bin/sh"_q, {"-c"_q, "head -c 1000000 /dev/zero | zip -q - - | cat > cams.zip"_q},
               dir().path());
    QByteArray bytes = readFile(archive());
    const int directory = bytes.indexOf("PK\x01\x02");
    bytes.replace(directory + 24, 4, "\x0A\x00\x00\x00", 4);
    writeFile(archive(), bytes);
    ASSERT_TRUE(zip->open(QIODevice::ReadOnly));
    expectReadError(zip.get(), archive(), "-"_q, "more than the 10 bytes of the directory"_q);
}

TEST_F(ZipReaderLimits, keepMemorySmallForEntriesThatSayTheyAreLarge)
{
    open(R"(
    for i in range(2000):
        archive.writestr(str(i), 'x')
        archive.filelist[i].file_size = 200 << 20
        archive.filelist[i].compress_size = 10 << 20
)");
    const QStringList names = zip->fileListBySuffix(QString());
    ASSERT_EQ(names.size(), 2000);
    for (const QString &name : names) {
        ASSERT_TRUE(zip->openFile(name));
        EXPECT_EQ(zip->bytesAvailable(), 200 * kMiB);
        ASSERT_TRUE(readInPieces(zip.get()).isNull());
    }
}

TEST_F(ZipReaderLimits, refuseEntriesThatShareTheirData)
{
    // A hundred records for one entry: small in the file, large when unpacked.
    open(R"(
    import copy
    archive.writestr('0', 'x' * 100000)
    for i in range(1, 100):
        twin = copy.copy(archive.filelist[0])
        twin.filename = str(i)
        archive.filelist.append(twin)
    archive.writestr('other', 'y' * 10)
)");
    EXPECT_EQ(zip->fileListBySuffix(QString()).size(), 101);
    expectReadError(zip.get(), archive(), "0"_q, "the entry overlaps another one"_q);
    EXPECT_EQ(zip->error(), ArchiveError::OverlappingEntries);
    expectReadError(zip.get(), archive(), "98"_q, "the entry overlaps another one"_q);
    expectRead("99"_q, 100000);
    expectRead("other"_q, 10);
}

TEST_F(ZipReaderLimits, countWhatDamagedEntriesHaveUnpacked)
{
    open(R"(
    for i in range(5):
        archive.writestr(str(i), 'x' * 100000)
        archive.filelist[i].CRC ^= 1
        archive.fp.seek(archive.filelist[i].header_offset + 14)
        archive.fp.write(archive.filelist[i].CRC.to_bytes(4, 'little'))
        archive.fp.seek(archive.start_dir)
)");
    zip->setArchiveSizeLimit(300000);
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(zip->openFile(QString::number(i)));
        EXPECT_TRUE(readInPieces(zip.get()).isNull());
        EXPECT_EQ(zip->error(), ArchiveError::Damaged) << zip->errorString().toStdString();
    }
    expectReadError(zip.get(), archive(), "3"_q,
                    "more than the limit of 300000 bytes for all entries"_q);
}
