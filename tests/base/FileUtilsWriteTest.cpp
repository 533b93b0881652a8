// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/FileUtils.h"

#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>

using namespace vn;

namespace {

class CopyText : public FolderTest
{
};

/** What copyText() writes into a file that is not closed afterwards. */
QByteArray written(const QString &text)
{
    QTemporaryDir folder;
    QFile file(folder.filePath("file"_q));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    FileUtils::copyText(text, &file);
    return readFile(file.fileName());
}

} // namespace

TEST_F(CopyText, writesUtf8WithoutAByteOrderMark)
{
    EXPECT_EQ(written("ip=10.0.0.1\r\n"_q), "ip=10.0.0.1\r\n"_b);
    EXPECT_EQ(written(u8"Tür €📷"_q), "T\xC3\xBCr \xE2\x82\xAC\xF0\x9F\x93\xB7"_b);
    EXPECT_EQ(written("a\0b"_q), "a\0b"_b);
    EXPECT_EQ(written(""_q), ""_b);
    EXPECT_EQ(written(QString()), ""_b);
}

TEST_F(CopyText, writesAQuestionMarkForHalfACharacter)
{
    EXPECT_EQ(written("a"_q + QChar(0xD800) + "b"_q), "a?b"_b);
}

TEST_F(CopyText, writesWhatReadTextReads)
{
    const QString texts[] = {u8"Tür\r\n"_q, "\0"_q, u8"Ã¼"_q, u8"\U0010FFFF\u0080"_q,
                             QString(100000, QChar(0x20AC))};
    for (const QString &text : texts) {
        {
            QFile file(path("file"_q));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            FileUtils::copyText(text, &file);
        }
        EXPECT_EQ(FileUtils::readText(path("file"_q)), text);
    }
}

TEST_F(CopyText, writesWhereTheDeviceStands)
{
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    buffer.write("head ");
    FileUtils::copyText("body"_q, &buffer);
    EXPECT_EQ(buffer.data(), "head body"_b);
    EXPECT_TRUE(buffer.isOpen());
}

// Texts are encoded in pieces of 65,536 units; a pair of surrogates stays together.
TEST_F(CopyText, writesWhatIsEncodedAtOnceWhateverStandsBetweenPieces)
{
    const QString pair = u8"\U0001F4F7"_q;
    const QString inserts[] = {u8"\u00FC"_q,        pair,
                               QString(pair.at(0)), QString(pair.at(1)),
                               pair.at(0) + pair,   pair.at(1) + QString(pair.at(0))};
    for (const QString &insert : inserts) {
        for (int size = 65533; size <= 65537; ++size) {
            const QString text = QString(size, QLatin1Char('x')) + insert + "y"_q;
            QBuffer buffer;
            ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
            FileUtils::copyText(text, &buffer);
            EXPECT_EQ(buffer.data().mid(65530).toHex(), text.toUtf8().mid(65530).toHex());
            buffer.open(QIODevice::WriteOnly | QIODevice::Truncate);
            FileUtils::copyText(text + text, &buffer);
            EXPECT_TRUE(buffer.data() == (text + text).toUtf8());
        }
    }
}

TEST_F(CopyText, raisesTheErrorOfAFullDisk)
{
    for (const int size : {1, 100, 16384, 1000000}) {
        QFile file("/dev/full"_q);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        expectThrows<FileException>(
            [&] { FileUtils::copyText(QString(size, QLatin1Char('x')), &file); },
            [](const FileException &e) {
                EXPECT_EQ(e.fileName(), "/dev/full"_q);
                EXPECT_EQ(e.message(), "/dev/full: No space left on device"_q);
            });
    }
}

// A disk that is full after k bytes: in the middle of a write, or of the buffer of one.
TEST_F(CopyText, raisesTheReasonOfADiskThatFillsUp)
{
    const QString text(20000, QLatin1Char('x'));
    for (int size = 0; size <= 20000; size += size < 100 || size > 19900 ? 1 : 97) {
        QFile file(path("file"_q));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const FileSizeLimit limit(static_cast<rlim_t>(size));
        if (size == 20000)
            EXPECT_NO_THROW(FileUtils::copyText(text, &file));
        else
            expectThrows<FileException>([&] { FileUtils::copyText(text, &file); },
                                        path("file"_q) + ": File too large"_q);
    }
}

TEST_F(CopyText, findsNoFaultInAFullDiskForAnEmptyText)
{
    QFile file("/dev/full"_q);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_NO_THROW(FileUtils::copyText(""_q, &file));
}

TEST_F(CopyText, namesAFileThatIsNoQFile)
{
    QSaveFile file(path("file"_q));
    expectThrows<IOException>([&] { FileUtils::copyText("x"_q, &file); },
                              path("file"_q) + ": not open for writing"_q);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    FileUtils::copyText("x"_q, &file);
    ASSERT_TRUE(file.commit());
    EXPECT_EQ(readFile(path("file"_q)), "x"_b);
}

TEST_F(CopyText, raisesAnErrorWhereverTheDeviceFails)
{
    const QByteArray bytes = "name=front\nip=10.0.0.1\n"_b;
    for (int k = 0; k < bytes.size(); ++k) {
        FailingDevice device(QByteArray(), k);
        const QString expected =
            k == 0 ? "the medium is worn out"_q
                   : "only %1 of %2 bytes could be written"_q.arg(k).arg(bytes.size());
        expectThrows<IOException>([&] { FileUtils::copyText(QString::fromLatin1(bytes), &device); },
                                  expected);
        EXPECT_EQ(device.written(), bytes.left(k));
    }
    FailingDevice device(QByteArray(), bytes.size());
    FileUtils::copyText(QString::fromLatin1(bytes), &device);
    EXPECT_EQ(device.written(), bytes);
}

TEST_F(CopyText, refusesADeviceThatIsNotOpenInSilence)
{
    testing::internal::CaptureStderr();
    QBuffer buffer;
    expectThrows<IOException>([&] { FileUtils::copyText("x"_q, &buffer); },
                              "not open for writing"_q);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    expectThrows<IOException>([&] { FileUtils::copyText("x"_q, &buffer); },
                              "not open for writing"_q);
    QFile file(dir().path());
    ASSERT_FALSE(file.open(QIODevice::WriteOnly));
    expectThrows<FileException>([&] { FileUtils::copyText("x"_q, &file); },
                                dir().path() + ": Is a directory"_q);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
