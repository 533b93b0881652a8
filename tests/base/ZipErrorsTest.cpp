// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Why an archive could not be read, as values.

#include "base/ZipReader.h"

#include "base/Zips.h"
#include "support/Expect.h"

#include <QtCore/QBuffer>

#include <functional>
#include <limits>

using namespace vn;

using Error = ZipReader::Error;

namespace {

const QString kEncrypted = QStringLiteral(VANTERO_EXAMPLE_DATA "/cameras-encrypted.zip");

/** @p bytes with @p value at @p place behind each @p signature. */
QByteArray patched(QByteArray bytes, const QByteArray &signature, int place,
                   const QByteArray &value)
{
    for (int i = bytes.indexOf(signature); i >= 0; i = bytes.indexOf(signature, i + 1))
        bytes.replace(i + place, value.size(), value);
    return bytes;
}

/** The bytes of an archive with the stored entries "a" and "b". */
QByteArray archiveBytes()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("a.zip"_q);
    makeByPython(path, {{"a"_q, "content of a"_b}, {"b"_q, "content of b"_b}}, true);
    return readFile(path);
}

struct OpenRow
{
    const char *name;
    std::function<QByteArray(const QByteArray &)> change; // from the bytes of a good archive
    Error error;
    const char *reason;
};

const OpenRow kOpenRows[] = {
    {"text", [](const QByteArray &) { return "SECTION a\n"_b; }, Error::NotAnArchive,
     "not a zip archive, or cut off: it has no directory"},
    {"empty", [](const QByteArray &) { return ""_b; }, Error::NotAnArchive,
     "not a zip archive, or cut off: it has no directory"},
    {"cut", [](const QByteArray &good) { return good.left(good.size() / 2); }, Error::Truncated,
     "not a zip archive, or cut off: it has no directory"},
    {"cutBehindAnArchiveWithin",
     [](const QByteArray &good) { return good.left(42) + good + "PK\3\4"_b; }, Error::Truncated,
     "cut off: its directory is missing"},
    {"directoryThatIsNone",
     [](const QByteArray &good) {
         QByteArray bytes = good;
         return bytes.replace(good.lastIndexOf("PK\1\2"), 4, "PKxx");
     },
     Error::Damaged, "the directory is damaged"},
    {"directoryOfAnotherCount",
     [](const QByteArray &good) { return patched(good, "PK\5\6", 8, "\7\0\7\0"_b); },
     Error::Damaged, "the directory holds 2 entries and should hold 7"},
};

class ZipErrorsOpen : public FolderTest, public testing::WithParamInterface<OpenRow>
{
};

struct ReadRow
{
    const char *name;
    std::function<QByteArray(const QByteArray &)> change; // from the bytes of a good archive
    Error error;
    const char *reason; // "*" stands for any end
};

const ReadRow kReadRows[] = {
    {"damaged", [](const QByteArray &good) { return QByteArray(good).replace("of a", "of x"); },
     Error::Damaged, "ZIP bad CRC: *"},
    {"elsewhere", [](const QByteArray &good) { return QByteArray(good).replace(0, 4, "xxxx"); },
     Error::Damaged, "*"},
    {"method",
     [](const QByteArray &good) {
         return patched(patched(good, "PK\1\2", 10, "\x61"_b), "PK\3\4", 8, "\x61"_b);
     },
     Error::UnsupportedMethod, "Unsupported ZIP compression method (97: *"},
    {"dataBeyondTheEnd",
     [](const QByteArray &good) {
         const QByteArray sizes("\0\0\1\0\0\0\1\0", 8); // 65,536 bytes
         return patched(patched(good, "PK\1\2", 20, sizes), "PK\3\4", 18, sizes);
     },
     Error::Truncated, "*"},
};

class ZipErrorsRead : public FolderTest, public testing::WithParamInterface<ReadRow>
{
};

class ZipErrors : public FolderTest
{
};

/** Expects that reading the entry fails for this reason, in all ways in which that is told. */
void expectFails(ZipReader *zip, const QString &path, const QString &entry, Error error,
                 const QString &reason)
{
    const auto begin = [&](const QString &text) {
        return reason.endsWith(QLatin1Char('*')) ? text.left(reason.size() - 1) + "*"_q : text;
    };
    ASSERT_TRUE(zip->openFile(entry));
    EXPECT_EQ(zip->error(), Error::None);
    expectThrows<ArchiveException>([&] { (void)FileUtils::readText(zip); },
                                   [&](const ArchiveException &e) {
                                       EXPECT_EQ(e.path(), path);
                                       EXPECT_EQ(e.entry(), entry);
                                       EXPECT_EQ(e.error(), error);
                                       EXPECT_EQ(begin(e.reason()), reason);
                                       EXPECT_EQ(e.message(),
                                                 path + ": "_q + entry + ": "_q + e.reason());
                                       EXPECT_EQ(zip->errorString(), e.message());
                                   });
    EXPECT_EQ(zip->error(), error);
}

} // namespace

TEST_P(ZipErrorsOpen, areToldAsAValue)
{
    const OpenRow &row = GetParam();
    const QString path = fileWith(row.change(archiveBytes()));
    const QString reason = QString::fromLatin1(row.reason);
    ZipReader zip(path);
    EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.error(), row.error);
    EXPECT_EQ(zip.errorString(), path + ": "_q + reason);
    // whatever is tried then
    const std::function<void()> operations[] = {[&] { (void)zip.fileListBySuffix("cfg"_q); },
                                                [&] { (void)FileUtils::readText(&zip); },
                                                [&] { throw zip.exception(); }};
    for (const auto &operation : operations)
        expectThrows<ArchiveException>(operation, [&](const ArchiveException &e) {
            EXPECT_EQ(e.path(), path);
            EXPECT_TRUE(e.entry().isNull());
            EXPECT_EQ(e.error(), row.error);
            EXPECT_EQ(e.reason(), reason);
            EXPECT_EQ(e.message(), path + ": "_q + reason);
        });
}

INSTANTIATE_TEST_SUITE_P(Rows, ZipErrorsOpen, testing::ValuesIn(kOpenRows), nameOfRow);

TEST_P(ZipErrorsRead, areToldAsAValue)
{
    const ReadRow &row = GetParam();
    const QString path = fileWith(row.change(archiveBytes()));
    ZipReader zip(path);
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly)) << zip.errorString().toStdString();
    expectFails(&zip, path, "a"_q, row.error, QString::fromLatin1(row.reason));
}

INSTANTIATE_TEST_SUITE_P(Rows, ZipErrorsRead, testing::ValuesIn(kReadRows), nameOfRow);

TEST_F(ZipErrors, tellWhatCannotBeOpened)
{
    const struct
    {
        QString path;
        QString reason;
    } rows[] = {
        {path("none.zip"_q), "No such file or directory"_q},
        {dir().path(), "not a regular file"_q},
        {"/dev/null"_q, "not a regular file"_q},
        {"a\0b"_q, "Invalid argument"_q},
    };
    for (const auto &row : rows) {
        ZipReader zip(row.path);
        EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
        EXPECT_EQ(zip.error(), Error::CannotBeOpened);
        EXPECT_EQ(zip.errorString(), row.path + ": "_q + row.reason);
    }
}

TEST_F(ZipErrors, tellPasswordsThatAreMissingOrWrong)
{
    ZipReader without(kEncrypted);
    ASSERT_TRUE(without.open(QIODevice::ReadOnly));
    expectFails(&without, kEncrypted, without.entryName(0), Error::NeedsPassword,
                "encrypted, and there is no password"_q);
    ZipReader wrong(kEncrypted, "wrong"_b);
    ASSERT_TRUE(wrong.open(QIODevice::ReadOnly));
    for (int i = 0; i < 2; ++i) // the second goes on in a new pass
        expectFails(&wrong, kEncrypted, wrong.entryName(i), Error::WrongPassword,
                    "Incorrect passphrase"_q);
}

TEST_F(ZipErrors, tellDamageThatMayBeAWrongPassword)
{
    const QByteArray password =
        readFile(QStringLiteral(VANTERO_EXAMPLE_DATA "/password.txt")).trimmed();
    QByteArray bytes = readFile(kEncrypted);
    const int data = bytes.indexOf("PK\3\4") + 200;
    bytes[data] = char(bytes.at(data) ^ 1);
    const QString path = fileWith(bytes);
    ZipReader zip(path, password);
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    const QString first = zip.entryName(0);
    ASSERT_TRUE(zip.openFile(first));
    EXPECT_THROW((void)FileUtils::readText(&zip), ArchiveException);
    EXPECT_EQ(zip.error(), Error::DamagedOrWrongPassword) << zip.errorString().toStdString();
    EXPECT_TRUE(zip.errorString().endsWith(", or the password is wrong"_q));
    // the others are well
    ASSERT_TRUE(zip.openFile(zip.entryName(1)));
    EXPECT_FALSE(FileUtils::readText(&zip).isEmpty());
    EXPECT_EQ(zip.error(), Error::None);
}

TEST_F(ZipErrors, tellDataWhereThereShouldBeNone)
{
    const QString path = this->path("a.zip"_q);
    for (const bool isStored : {false, true}) {
        makeByPython(path, {{"a"_q, "content of a"_b}, {"large"_q, QByteArray(17 << 20, 'x')}},
                     isStored);
        QByteArray bytes = readFile(path);
        const QByteArray none(4, '\0'); // the size of "a", in its header and in the directory
        bytes.replace(22, 4, none).replace(bytes.indexOf("PK\1\2") + 24, 4, none);
        writeFile(path, bytes);
        ZipReader zip(path);
        zip.setRatioLimit(std::numeric_limits<int>::max());
        ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
        const QString reason = isStored
                                   ? "more than the 0 bytes of the directory"_q
                                   : "ZIP uncompressed data is wrong size (read 12, expected 0)*"_q;
        // as the first, and behind one whose memory is given back
        expectFails(&zip, path, "a"_q, Error::Damaged, reason);
        ASSERT_TRUE(zip.openFile("large"_q));
        EXPECT_EQ(FileUtils::readText(&zip).size(), 17 << 20);
        expectFails(&zip, path, "a"_q, Error::Damaged, reason);
    }
}

TEST_F(ZipErrors, tellWhichLimitItIs)
{
    const QString path = fileWith(archiveBytes());
    ZipReader zip(path);
    zip.setEntryCountLimit(1);
    EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.error(), Error::OverEntryCountLimit);
    zip.setEntryCountLimit(2);
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.error(), Error::None);

    zip.setEntrySizeLimit(11);
    expectFails(&zip, path, "a"_q, Error::OverEntrySizeLimit, "more than the limit of 11 bytes"_q);
    zip.setEntrySizeLimit(12);
    zip.setArchiveSizeLimit(23);
    ASSERT_TRUE(zip.openFile("a"_q));
    EXPECT_EQ(FileUtils::readText(&zip), "content of a"_q);
    expectFails(&zip, path, "b"_q, Error::OverArchiveSizeLimit,
                "more than the limit of 23 bytes for all entries"_q);

    const QString other = this->path("zeros.zip"_q);
    makeByPython(other, {{"zeros"_q, QByteArray(17 * 1024 * 1024, '\0')}});
    ZipReader zeros(other);
    zeros.setRatioLimit(100);
    ASSERT_TRUE(zeros.open(QIODevice::ReadOnly));
    expectFails(&zeros, other, "zeros"_q, Error::OverRatioLimit,
                "compressed more than the limit of 100 times"_q);
}

TEST_F(ZipErrors, tellWhatIsAskedForAtAWrongTime)
{
    const QString path = fileWith(archiveBytes());
    ZipReader zip(path);
    EXPECT_EQ(zip.error(), Error::None);
    EXPECT_EQ(zip.exception().error(), Error::None);
    expectThrows<ArchiveException>([&] { (void)zip.fileListBySuffix("cfg"_q); },
                                   path + ": not open"_q);
    EXPECT_FALSE(zip.openFile("a"_q));
    EXPECT_EQ(zip.error(), Error::NotOpen);
    EXPECT_EQ(zip.exception().entry(), "a"_q);
    EXPECT_FALSE(zip.open(QIODevice::ReadWrite));
    EXPECT_EQ(zip.error(), Error::NotOpen);

    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.error(), Error::None);
    EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
    EXPECT_EQ(zip.error(), Error::NotOpen);
    char byte = 0;
    EXPECT_EQ(zip.read(&byte, 1), -1);
    EXPECT_EQ(zip.error(), Error::NoSuchEntry);
    EXPECT_EQ(zip.errorString(), path + ": no entry has been chosen"_q);
    EXPECT_FALSE(zip.openFile("c"_q));
    EXPECT_EQ(zip.error(), Error::NoSuchEntry);
    expectThrows<ArchiveException>([&] { (void)FileUtils::readText(&zip); },
                                   path + ": c: no such entry"_q);
    EXPECT_FALSE(zip.openEntry(2));
    EXPECT_EQ(zip.error(), Error::NoSuchEntry);
    zip.close();
    expectThrows<ArchiveException>([&] { (void)zip.fileListBySuffix("cfg"_q); },
                                   path + ": not open"_q);
}

TEST_F(ZipErrors, ofTheTargetAreNotThoseOfTheArchive)
{
    const QString path = fileWith(archiveBytes());
    ZipReader zip(path);
    ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
    EXPECT_FALSE(zip.openFile("none"_q)); // an old error of the archive's
    ASSERT_TRUE(zip.openFile("a"_q));
    QBuffer target;
    ASSERT_TRUE(target.open(QIODevice::WriteOnly));
    expectThrows<IOException>([&] { (void)FileUtils::copy(&zip, &target, 5, -1); },
                              "more than 5 bytes"_q);
}

TEST_F(ZipErrors, tellPartsOfASplitArchive)
{
    writeFile(path("noise"_q), noise(200000, 7));
    runProgram("zip"_q, {"-q"_q, "-0"_q, "-s"_q, "64k"_q, "all.zip"_q, "noise"_q}, dir().path());
    for (const QString &part : {"all.z01"_q, "all.zip"_q}) {
        ZipReader zip(path(part));
        EXPECT_FALSE(zip.open(QIODevice::ReadOnly));
        EXPECT_EQ(zip.error(), Error::Split) << part.toStdString();
        EXPECT_EQ(zip.errorString(), path(part) + ": one part of a split archive"_q);
    }
}
