// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What a damaged archive gives: an error, or the right bytes.

#include "base/ZipReader.h"

#include "base/Zips.h"
#include "support/Expect.h"

using namespace vn;

namespace {

class ZipReaderDamage : public FolderTest
{
protected:
    QString archive() const { return path("cams.zip"_q); }

    /** Opens the archive with @p bytes in the place of its own. */
    std::unique_ptr<ZipReader> opened(const QByteArray &bytes,
                                      const QByteArray &password = QByteArray()) const
    {
        writeFile(archive(), bytes);
        auto zip = std::make_unique<ZipReader>(archive(), password);
        EXPECT_TRUE(zip->open(QIODevice::ReadOnly)) << zip->errorString().toStdString();
        return zip;
    }

    /** Expects that the archive with @p bytes in the place of its own cannot be opened. */
    void expectNotOpened(const QByteArray &bytes, const QString &reason) const
    {
        writeFile(archive(), bytes);
        ZipReader zip(archive());
        EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
        EXPECT_EQ(zip.errorString(), archive() + ": "_q + reason);
    }

    /** Expects that the entry "a" of the archive with these bytes cannot be read, but the entry "b"
     * behind it. */
    void expectDamaged(const QByteArray &bytes, const QString &reason,
                       const QByteArray &password = QByteArray()) const
    {
        const auto zip = opened(bytes, password);
        expectReadError(zip.get(), archive(), "a"_q, reason);
        EXPECT_EQ(readEntry(zip.get(), "b"_q), "behind"_b);
        expectReadError(zip.get(), archive(), "a"_q, reason);
    }

    /** The bytes of an archive of the entries "a", with @p content, and "b". */
    QByteArray archiveOf(const QByteArray &content, bool isStored) const
    {
        makeByPython(archive(), {{"a"_q, content}, {"b"_q, "behind"_b}}, isStored);
        return readFile(archive());
    }

    /** The same by 7z, encrypted with the password "secret". */
    QByteArray encryptedArchiveOf(const QByteArray &content, const QStringList &options) const
    {
        QFile::remove(archive());
        writeFile(path("a"_q), content);
        writeFile(path("b"_q), "behind"_b);
        runProgram("7z"_q,
                   QStringList{"a"_q, "-bd"_q, "-tzip"_q, "-psecret"_q} + options +
                       QStringList{archive(), "a"_q, "b"_q},
                   dir().path());
        return readFile(archive());
    }
};

// Local file header: the checksum is at 14, the sizes at 18 and 22, the name's size at 26, the
// extra fields' at 28; then follow name, extra fields and data.
constexpr int kLocalSize = 30;

int number16(const QByteArray &bytes, int place)
{
    return static_cast<unsigned char>(bytes.at(place)) |
           static_cast<unsigned char>(bytes.at(place + 1)) << 8;
}

/** Where the data of the first entry begin. */
int dataPlace(const QByteArray &bytes)
{
    return kLocalSize + number16(bytes, 26) + number16(bytes, 28);
}

/** Where the directory begins. */
int directoryPlace(const QByteArray &bytes)
{
    return bytes.indexOf("PK\x01\x02");
}

QByteArray flipped(QByteArray bytes, int place, int mask = 0xFF)
{
    bytes[place] = static_cast<char>(bytes.at(place) ^ mask);
    return bytes;
}

/** @p bytes with the number @p value, little-endian in @p size bytes, at @p place. */
QByteArray changed(QByteArray bytes, int place, int size, quint64 value)
{
    for (int i = 0; i < size; ++i)
        bytes[place + i] = static_cast<char>(value >> (8 * i));
    return bytes;
}

} // namespace

TEST_F(ZipReaderDamage, inStoredDataIsFoundByItsChecksum)
{
    const QByteArray bytes = archiveOf(configText(1000, 1), true);
    for (const int place : {0, 500, 999})
        expectDamaged(flipped(bytes, dataPlace(bytes) + place, 1), "ZIP bad CRC: *"_q);
}

TEST_F(ZipReaderDamage, inDeflatedDataIsFound)
{
    const QByteArray bytes = archiveOf(configText(1000, 1), false);
    const int begin = dataPlace(bytes);
    const int end = bytes.indexOf("PK\x03\x04", begin);
    for (int place = begin; place < end; ++place) {
        const auto zip = opened(flipped(bytes, place));
        ASSERT_TRUE(zip->openFile("a"_q));
        char byte;
        EXPECT_EQ(zip->read(&byte, 1), -1) << place - begin;
        EXPECT_TRUE(zip->errorString().startsWith(archive() + ": a: "_q));
        EXPECT_EQ(readEntry(zip.get(), "b"_q), "behind"_b);
    }
}

// Nothing of an entry is handed on before its last byte has been checked.
TEST_F(ZipReaderDamage, inTheLastByteOfALargeEntryIsFoundBeforeTheFirstIsHandedOn)
{
    const QByteArray content = noise(3000000, 1);
    const QByteArray bytes = archiveOf(content, true);
    expectDamaged(flipped(bytes, dataPlace(bytes) + content.size() - 1), "ZIP bad CRC: *"_q);
}

TEST_F(ZipReaderDamage, inTheChecksumIsFound)
{
    for (const bool isStored : {false, true}) {
        const QByteArray bytes = archiveOf(configText(1000, 1), isStored);
        const int directory = directoryPlace(bytes);
        expectDamaged(flipped(bytes, 14), "the entry contradicts the directory"_q);
        expectDamaged(flipped(bytes, directory + 16), "the entry contradicts the directory"_q);
        expectDamaged(flipped(flipped(bytes, 14), directory + 16), "ZIP bad CRC: *"_q);
        // where the local header has none, the directory's counts
        expectDamaged(flipped(changed(bytes, 14, 4, 0), directory + 16), "ZIP bad CRC: *"_q);
        EXPECT_EQ(readEntry(opened(changed(bytes, 14, 4, 0)).get(), "a"_q), configText(1000, 1));
    }
}

TEST_F(ZipReaderDamage, inTheChecksumOfAnEmptyEntryIsFound)
{
    const QByteArray bytes = archiveOf(""_b, true);
    const int directory = directoryPlace(bytes);
    expectDamaged(changed(bytes, directory + 16, 4, 1), "the checksum is wrong"_q);
}

TEST_F(ZipReaderDamage, inEncryptedDataIsFoundByTheirAuthenticationCode)
{
    for (const QStringList &options :
         {QStringList{"-mem=AES256"_q}, QStringList{"-mem=AES256"_q, "-mx=0"_q}}) {
        const QByteArray content = noise(100, 3); // stays so large when it is deflated
        const QByteArray bytes = encryptedArchiveOf(content, options);
        constexpr int kSaltSize = 16;
        constexpr int kCheckSize = 2;
        const int begin = dataPlace(bytes);
        for (int place = begin; place < begin + kSaltSize + kCheckSize; ++place) {
            const auto zip = opened(flipped(bytes, place), "secret"_b);
            ASSERT_TRUE(zip->openFile("a"_q));
            EXPECT_TRUE(readInPieces(zip.get()).isNull());
        }
        for (const int place : {0, 50, 99})
            expectDamaged(flipped(bytes, begin + kSaltSize + kCheckSize + place, 0x10),
                          "ZIP bad Authentication code, or the password is wrong"_q, "secret"_b);
        // the code itself, right before the next entry
        const int code = bytes.indexOf("PK\x03\x04", begin) - 1;
        expectDamaged(flipped(bytes, code),
                      "ZIP bad Authentication code, or the password is wrong"_q, "secret"_b);
    }
}

TEST_F(ZipReaderDamage, inSizesIsFound)
{
    for (const bool isStored : {false, true}) {
        SCOPED_TRACE(isStored);
        const QByteArray content = configText(1000, 1);
        const QByteArray bytes = archiveOf(content, isStored);
        const int directory = directoryPlace(bytes);
        const auto check = [&](const QByteArray &damaged) {
            const auto zip = opened(damaged);
            ASSERT_TRUE(zip->openFile("a"_q));
            EXPECT_TRUE(readInPieces(zip.get()).isNull());
            EXPECT_TRUE(zip->errorString().startsWith(archive() + ": a: "_q));
            EXPECT_EQ(readEntry(zip.get(), "b"_q), "behind"_b);
        };
        const auto compressed = static_cast<unsigned>(number16(bytes, 18));
        for (const unsigned size : {1U, 999U, 1001U, 0x7FFFFFFFU, 0xFFFFFFFEU}) {
            SCOPED_TRACE(size);
            check(changed(bytes, directory + 24, 4, size)); // the directory's size
            check(changed(bytes, 22, 4, size));             // the entry's own
            check(changed(changed(bytes, directory + 24, 4, size), 22, 4, size));
        }
        for (const unsigned size : {1U, compressed - 1, compressed + 1, 0x7FFFFFFFU}) {
            SCOPED_TRACE(size);
            check(changed(bytes, directory + 20, 4, size));
            check(changed(bytes, 18, 4, size));
            check(changed(changed(bytes, directory + 20, 4, size), 18, 4, size));
        }
        // Sizes that the local header leaves out are no contradiction.
        EXPECT_EQ(readEntry(opened(changed(bytes, 18, 8, 0)).get(), "a"_q), content);
    }
}

TEST_F(ZipReaderDamage, ofBytesBehindTheCompressedDataIsFound)
{
    // The entry's compressed part is longer than the data in it, which shows only once one reads on
    // after the last byte.
    const QByteArray bytes = archiveOf(configText(1000, 1), false);
    const auto compressed = static_cast<unsigned>(number16(bytes, 18));
    const int directory = directoryPlace(bytes);
    const int next = bytes.indexOf("PK\x03\x04", kLocalSize);
    QByteArray longer = changed(bytes, 18, 4, compressed + 5);
    longer = changed(longer, directory + 20, 4, compressed + 5);
    longer.insert(next, "?????");
    const int end = longer.indexOf("PK\x05\x06");
    longer = changed(longer, end + 16, 4, static_cast<unsigned>(directory + 5));
    const int second = longer.indexOf("PK\x01\x02", directory + 6);
    longer = changed(longer, second + 42, 4, static_cast<unsigned>(next + 5));
    expectDamaged(longer,
                  "ZIP compressed data is wrong size (read %1, expected %2)"_q.arg(compressed)
                      .arg(compressed + 5));
}

TEST_F(ZipReaderDamage, ofAnEntryThatIsNotWhereTheDirectorySaysIsFound)
{
    const QByteArray bytes = archiveOf(configText(1000, 1), false);
    const int directory = directoryPlace(bytes);
    for (const quint64 offset : {quint64(1), quint64(17), quint64(directory), quint64(bytes.size()),
                                 quint64(0x7FFFFFFF), quint64(0xFFFFFFFE)}) {
        SCOPED_TRACE(offset);
        const auto zip = opened(changed(bytes, directory + 42, 4, offset));
        ASSERT_TRUE(zip->openFile("a"_q));
        EXPECT_TRUE(readInPieces(zip.get()).isNull());
        EXPECT_TRUE(zip->errorString().startsWith(archive() + ": a: "_q));
        EXPECT_EQ(readEntry(zip.get(), "b"_q), "behind"_b);
    }
    expectDamaged(flipped(bytes, 0), "Damaged Zip archive"_q);
}

TEST_F(ZipReaderDamage, ofOneEntryLeavesTheOthersReadableInAnyOrder)
{
    Entries entries;
    for (int i = 0; i < 6; ++i)
        entries.append({QString::number(i), configText(100 + i, i)});
    makeByPython(archive(), entries);
    QByteArray bytes = readFile(archive());
    int third = 0;
    for (int i = 0; i < 2; ++i)
        third = bytes.indexOf("PK\x03\x04", third + 1);
    bytes = flipped(bytes, third);
    for (int first = 0; first < 6; ++first) {
        for (int second = 0; second < 6; ++second) {
            SCOPED_TRACE("%1, then %2"_q.arg(first).arg(second).toStdString());
            const auto zip = opened(bytes);
            for (const int i : {first, second}) {
                if (i == 2)
                    expectReadError(zip.get(), archive(), "2"_q, "Damaged Zip archive"_q);
                else
                    EXPECT_EQ(readEntry(zip.get(), entries.at(i).name), entries.at(i).content);
            }
        }
    }
}

TEST_F(ZipReaderDamage, of64BitSizesThatAreMissingIsFound)
{
    const QByteArray bytes = archiveOf(configText(1000, 1), false);
    const int directory = directoryPlace(bytes);
    for (const int place : {20, 24, 42}) {
        const auto zip = opened(changed(bytes, directory + place, 4, 0xFFFFFFFF));
        ASSERT_TRUE(zip->openFile("a"_q));
        EXPECT_TRUE(readInPieces(zip.get()).isNull());
        EXPECT_EQ(readEntry(zip.get(), "b"_q), "behind"_b);
    }
}

TEST_F(ZipReaderDamage, ofAnUnknownMethodIsToldByItsName)
{
    writeFile(path("a"_q), configText(100000, 1));
    writeFile(path("b"_q), "behind"_b);
    runProgram("7z"_q, {"a"_q, "-bd"_q, "-tzip"_q, "-mm=Deflate64"_q, archive(), "a"_q},
               dir().path());
    runProgram("zip"_q, {"-q"_q, archive(), "b"_q}, dir().path());
    expectDamaged(readFile(archive()),
                  "Unsupported ZIP compression method (9: deflation-64-bit)"_q);
}

TEST_F(ZipReaderDamage, ofExtraFieldsDoesNotReachBeyondThem)
{
    // A Unicode path field that says it is one byte longer than the fields of the entry are: the
    // byte behind them, the first of the comment, is none of the name.
    runPython(R"(
import zipfile
with zipfile.ZipFile('cams.zip', 'w') as archive:
    info = zipfile.ZipInfo('T?r.cfg')
    info.extra = b'up\x0E\x00\x01\xA3\x81\xC5\xD6T\xC3\xBCr.cfg'
    info.comment = b'X'
    archive.writestr(info, 'content')
)",
              {}, dir().path());
    ZipReader zip(path("cams.zip"_q));
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.fileListBySuffix(QString()), QStringList("T?r.cfg"_q));
}

TEST_F(ZipReaderDamage, ofTheDirectoryIsFoundOnOpening)
{
    const QByteArray bytes = archiveOf(configText(1000, 1), false);
    const int directory = directoryPlace(bytes);
    const int second = bytes.indexOf("PK\x01\x02", directory + 1);
    const int end = bytes.indexOf("PK\x05\x06");
    const QString none = "not a zip archive, or cut off: it has no directory"_q;
    const QString damaged = "the directory is damaged"_q;

    expectNotOpened(flipped(bytes, directory), none);
    expectNotOpened(flipped(bytes, second), damaged);
    expectNotOpened(flipped(bytes, end), none);
    // sizes within the records
    expectNotOpened(changed(bytes, directory + 28, 2, 2), damaged);
    expectNotOpened(changed(bytes, second + 28, 2, 0), damaged);
    expectNotOpened(changed(bytes, second + 30, 2, 0xFFFF), damaged);
    expectNotOpened(changed(bytes, second + 32, 2, 1), damaged);
    // what the end of the directory says
    expectNotOpened(changed(bytes, end + 4, 2, 1), "one part of a split archive"_q);
    expectNotOpened(changed(bytes, end + 6, 2, 1), none);  // a directory on another disk
    expectNotOpened(changed(bytes, end + 8, 2, 1), none);  // entries on another disk
    expectNotOpened(changed(bytes, end + 12, 4, 1), none); // too small for a record
    expectNotOpened(changed(bytes, end + 12, 4, 0xFFFFFFFF), none);
    expectNotOpened(changed(bytes, end + 16, 4, 0xFFFFFFFF), none);
    expectNotOpened(changed(bytes, end + 16, 4, static_cast<unsigned>(directory + 1)), none);
    expectNotOpened(changed(bytes, end + 20, 2, 1), none); // a comment that is not there
    expectNotOpened(changed(changed(bytes, end + 8, 2, 1), end + 10, 2, 1),
                    "the directory holds 2 entries and should hold 1"_q);
    expectNotOpened(changed(changed(bytes, end + 8, 2, 3), end + 10, 2, 3),
                    "the directory holds 2 entries and should hold 3"_q);
    expectNotOpened(changed(bytes, end + 12, 4, static_cast<unsigned>(second - directory)),
                    "the directory holds 1 entries and should hold 2"_q);
}

TEST_F(ZipReaderDamage, ofA64BitDirectoryIsFoundOnOpening)
{
    writeFile(path("a"_q), "content"_b);
    runProgram("zip"_q, {"-q"_q, "-fz"_q, archive(), "a"_q}, dir().path());
    const QByteArray bytes = readFile(archive());
    const int end64 = bytes.indexOf("PK\x06\x06");
    const int locator = bytes.indexOf("PK\x06\x07");
    ASSERT_GT(end64, 0);
    ASSERT_GT(locator, 0);
    const QString none = "not a zip archive, or cut off: it has no directory"_q;
    expectNotOpened(changed(bytes, end64 + 16, 4, 1), "one part of a split archive"_q);
    expectNotOpened(changed(bytes, end64 + 20, 4, 1), none);
    expectNotOpened(changed(bytes, end64 + 24, 8, 2), none);
    expectNotOpened(changed(bytes, end64 + 40, 8, ~quint64(0)), none);
    expectNotOpened(changed(bytes, end64 + 48, 8, ~quint64(0)), none);
    expectNotOpened(changed(changed(bytes, end64 + 24, 8, 999), end64 + 32, 8, 999),
                    "the directory holds 1 entries and should hold 999"_q);
    // Where the locator leads nowhere, the record before it is taken.
    for (const quint64 offset : {quint64(0), quint64(locator), ~quint64(0), ~quint64(0) - 56})
        EXPECT_EQ(readEntry(opened(changed(bytes, locator + 8, 8, offset)).get(), "a"_q),
                  "content"_b);
    expectNotOpened(flipped(bytes, end64), none);
    // Without the locator the record's 0xFFFFFFFF are what they say.
    expectNotOpened(flipped(flipped(bytes, locator), end64), none);
}

// One file, all its prefixes: each lacks the end of the directory.
TEST_F(ZipReaderDamage, byA64BitRecordWithoutRoomIsPassedOver)
{
    // Signature and 16 zero bytes, then the locator: the record would reach into it.
    const QByteArray bytes = archiveOf("content"_b, false);
    const int end = bytes.lastIndexOf("PK\x05\x06");
    QByteArray locator = "PK\x06\x07"_b + QByteArray(16, '\0');
    locator = changed(changed(locator, 8, 8, quint64(end)), 16, 4, 1);
    const QByteArray cramped = "PK\x06\x06"_b + QByteArray(16, '\0') + locator;
    const auto zip = opened(QByteArray(bytes).insert(end, cramped));
    EXPECT_EQ(readEntry(zip.get(), "a"_q), "content"_b);
    EXPECT_EQ(readEntry(zip.get(), "b"_q), "behind"_b);
}

TEST_F(ZipReaderDamage, ofAnArchiveThatIsCutOffIsFoundOnOpening)
{
    for (const bool isStored : {false, true}) {
        const QByteArray bytes = archiveOf(configText(500, 1), isStored);
        for (int size = 0; size < bytes.size(); ++size) {
            writeFile(archive(), bytes.left(size));
            ZipReader zip(archive());
            ASSERT_FALSE(zip.open(QIODevice::ReadOnly)) << size;
            ASSERT_TRUE(zip.errorString().startsWith(archive() + ": "_q));
            ASSERT_THROW(zip.fileListBySuffix(QString()), IOException);
        }
    }
}

TEST_F(ZipReaderDamage, byMissingBytesInTheMiddleIsFound)
{
    // What a copy with a lost block gives: the directory is there and does not fit.
    const QByteArray content = configText(20000, 1);
    const QByteArray bytes = archiveOf(content, true);
    QByteArray damaged = bytes;
    damaged.remove(dataPlace(bytes) + 1000, 4096);
    writeFile(archive(), damaged);
    ZipReader zip(archive());
    EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
}

TEST_F(ZipReaderDamage, byAFileThatShrinksWhileItIsReadIsFound)
{
    const QByteArray content = noise(1000000, 1);
    const QByteArray bytes = archiveOf(content, true);
    const auto zip = opened(bytes);
    QFile file(archive());
    ASSERT_TRUE(file.resize(500000));
    expectReadError(zip.get(), archive(), "a"_q, "Truncated ZIP file data"_q);
    expectReadError(zip.get(), archive(), "b"_q, "Truncated ZIP file header"_q);
    ASSERT_TRUE(file.resize(0));
    expectReadError(zip.get(), archive(), "b"_q, "Truncated ZIP file header"_q);
}

// Every byte of an archive with all kinds of entries, changed in several ways: whatever can be read
// is what was stored.
TEST_F(ZipReaderDamage, inAnyByteGivesAnErrorOrTheRightBytes)
{
    const Entries entries = {{"stored.cfg"_q, "name=front\n"_b},
                             {"deflated.cfg"_q, configText(120, 1)},
                             {"plain.cfg"_q, "name=side\n"_b},
                             {"aes.cfg"_q, "name=back\n"_b},
                             {"empty.cfg"_q, ""_b}};
    for (const Entry &entry : entries)
        writeFile(path(entry.name), entry.content);
    const QString folder = dir().path();
    runProgram("zip"_q, {"-q"_q, "-0"_q, "-X"_q, "cams.zip"_q, "stored.cfg"_q}, folder);
    runProgram("zip"_q, {"-q"_q, "-9"_q, "cams.zip"_q, "deflated.cfg"_q}, folder);
    runProgram("zip"_q, {"-q"_q, "-P"_q, "secret"_q, "-X"_q, "cams.zip"_q, "plain.cfg"_q}, folder);
    runProgram(
        "7z"_q,
        {"a"_q, "-bd"_q, "-tzip"_q, "-psecret"_q, "-mem=AES256"_q, "cams.zip"_q, "aes.cfg"_q},
        folder);
    runProgram("zip"_q, {"-q"_q, "-X"_q, "cams.zip"_q, "empty.cfg"_q}, folder);
    const Entries whole = readAll(archive(), "secret"_b);
    ASSERT_EQ(whole.size(), entries.size());
    const QByteArray bytes = readFile(archive());
    int errors = 0;
    for (int place = 0; place < bytes.size(); ++place) {
        for (const int mask : {0x01, 0x80, 0xFF}) {
            writeFile(archive(), flipped(bytes, place, mask));
            ZipReader zip(archive(), "secret"_b);
            if (!zip.open(QIODevice::ReadOnly)) {
                ++errors;
                continue;
            }
            const QStringList names = zip.fileListBySuffix(QString());
            for (const QString &name : names) {
                ASSERT_TRUE(zip.openFile(name));
                const QByteArray content = readInPieces(&zip);
                if (content.isNull()) {
                    ++errors;
                    ASSERT_TRUE(zip.errorString().startsWith(archive() + ": "_q + name + ": "_q));
                    continue;
                }
                // A name may have changed, but then it is not that of another entry.
                const auto same = [&](const Entry &entry) {
                    return entry.content == content &&
                           (entry.name == name || !names.contains(entry.name));
                };
                ASSERT_TRUE(std::any_of(whole.begin(), whole.end(), same))
                    << "byte " << place << " xor " << mask << ", entry " << name.toStdString()
                    << ": " << content.toHex(' ').constData();
            }
        }
    }
    EXPECT_GT(errors, bytes.size()) << "of three changes of a byte one is found at least";
}
