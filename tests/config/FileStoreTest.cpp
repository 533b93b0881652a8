// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

using namespace vn;

namespace {

const QString text = "#:1.3==\n#:VN-3\n\nSECTION a\nname=Tür\nENDSECTION a\n"_q;

} // namespace

TEST(StoreFile, writesTheLoadedTextAsUtf8)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    VanteroConfigFile config;
    config.parse(text, QDateTime());
    config.store(path);
    EXPECT_EQ(readFile(path), text.toUtf8());
}

TEST(StoreFile, editsDoNotReachTheTextOnPurpose)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    VanteroConfigFile config;
    config.parse(text, QDateTime());
    config.setValue("a"_q, "name"_q, "Tor"_q);
    config.store(path);
    EXPECT_EQ(readFile(path), text.toUtf8());
    EXPECT_EQ(config.toString("a"_q), "SECTION a\nname=Tor\nENDSECTION a\n"_q);
}

TEST(StoreFile, newObjectWritesAnEmptyFile)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    VanteroConfigFile().store(path);
    EXPECT_EQ(readFile(path), QByteArray());
}

TEST(StoreFile, copiesCarryTheText)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    VanteroConfigFile config;
    config.parse(text, QDateTime());
    VanteroConfigFile copy(config);
    VanteroConfigFile assigned;
    assigned = config;
    config.parse(QString(), QDateTime());
    copy.store(path);
    EXPECT_EQ(readFile(path), text.toUtf8());
    assigned.store(path);
    EXPECT_EQ(readFile(path), text.toUtf8());
}

TEST(StoreFile, replacesALongerFile)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    writeFile(path, QByteArray(5000, 'x'));

    VanteroConfigFile config;
    config.parse(text, QDateTime());
    config.store(path);
    EXPECT_EQ(readFile(path), text.toUtf8());
}

TEST(StoreFile, keepsWindowsLineEnds)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    VanteroConfigFile config;
    config.parse("#:1\r\n#:2\r\n"_q, QDateTime());
    config.store(path);
    EXPECT_EQ(readFile(path), QByteArray("#:1\r\n#:2\r\n"));
}

TEST(StoreFile, unopenablePathIsNamed)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("none/cam.cfg"_q);
    expectThrows<FileException>([&] { VanteroConfigFile().store(path); },
                                [&](const FileException &e) {
                                    EXPECT_EQ(e.fileName(), path);
                                    EXPECT_EQ(e.message(), path + ": No such file or directory"_q);
                                });
}

TEST(StoreAtomic, writesWhatStoreWrites)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    VanteroConfigFile config;
    config.storeAtomic(path);
    EXPECT_EQ(readFile(path), QByteArray());
    config.parse(text, QDateTime());
    config.setValue("a"_q, "name"_q, "Tor"_q);
    config.storeAtomic(path);
    EXPECT_EQ(readFile(path), text.toUtf8());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{"cam.cfg"_q});
}

TEST(StoreAtomic, replacesTheFileAndDoesNotWriteIntoIt)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    VanteroConfigFile config;
    config.store(path);
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    config.parse(text, QDateTime());
    config.storeAtomic(path);
    EXPECT_EQ(old.readAll(), QByteArray()) << "who has it open keeps the old one";
    EXPECT_EQ(readFile(path), text.toUtf8());
}

TEST(StoreAtomic, tellsWhatTheFileCouldNotKeep)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    VanteroConfigFile config;
    EXPECT_EQ(config.storeAtomic(path), AtomicFile::Losses());
    ASSERT_EQ(::link(path.toLocal8Bit().constData(),
                     dir.filePath("other.cfg"_q).toLocal8Bit().constData()),
              0);
    EXPECT_EQ(config.storeAtomic(path), AtomicFile::Losses(AtomicFile::Loss::OtherNames));
}

TEST(StoreAtomic, unopenablePathIsNamed)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("none/cam.cfg"_q);
    expectThrows<FileException>([&] { VanteroConfigFile().storeAtomic(path); },
                                path + ": No such file or directory"_q);
}

TEST(StoreFile, folderInPlaceOfAFileIsRefused)
{
    const QTemporaryDir dir;
    expectThrows<FileException>(
        [&] { VanteroConfigFile().store(dir.path()); },
        [&](const FileException &e) { EXPECT_EQ(e.fileName(), dir.path()); });
}

TEST(StoreFile, fullDiskIsReported)
{
    VanteroConfigFile config;
    config.parse(text, QDateTime());
    expectThrows<FileException>([&] { config.store("/dev/full"_q); },
                                "/dev/full: No space left on device"_q);
}

TEST(StoreArchive, entryIsLatin1WithItsComment)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cams.zip"_q);
    auto writer = std::make_shared<ZipWriter>(path);
    writer->open();
    VanteroConfigFile config;
    config.parse(text, QDateTime());
    config.store(writer, "front.cfg"_q);
    config.parse("#:1\n#:2\n\nSECTION a\nprice=5 €\nENDSECTION a\n"_q, QDateTime());
    config.store(writer, "lossy.cfg"_q);
    writer->close();

    ZipReader reader(path);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    EXPECT_EQ(reader.fileListBySuffix("cfg"_q), (QStringList{"front.cfg"_q, "lossy.cfg"_q}));
    ASSERT_TRUE(reader.openFile("front.cfg"_q));
    EXPECT_EQ(reader.readAll(), text.toLatin1());
    ASSERT_TRUE(reader.openFile("lossy.cfg"_q));
    EXPECT_TRUE(reader.readAll().contains("price=5 ?\n"));

    QProcess unzip;
    unzip.start("unzip"_q, {"-v"_q, "-z"_q, path});
    QProcess zipinfo;
    zipinfo.start("zipinfo"_q, {"-v"_q, path, "front.cfg"_q});
    ASSERT_TRUE(unzip.waitForFinished());
    ASSERT_TRUE(zipinfo.waitForFinished());
    EXPECT_TRUE(zipinfo.readAllStandardOutput().contains("Vantero Configuration File"));
}

TEST(StoreArchive, newObjectAddsAnEmptyEntry)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cams.zip"_q);
    auto writer = std::make_shared<ZipWriter>(path);
    writer->open();
    VanteroConfigFile().store(writer, "empty.cfg"_q);
    writer->close();

    ZipReader reader(path);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    ASSERT_TRUE(reader.openFile("empty.cfg"_q));
    EXPECT_EQ(FileUtils::readText(&reader), QString());
}

TEST(StoreArchive, refusalOfTheWriterPropagates)
{
    const QTemporaryDir dir;
    const auto unopened = std::make_shared<ZipWriter>(dir.filePath("cams.zip"_q));
    EXPECT_THROW(VanteroConfigFile().store(unopened, "a.cfg"_q), IOException);
}

TEST(NewFileName, shortFormIsPrefixDateAndCfg)
{
    const QTemporaryDir temporary;
    const QDir dir(temporary.path());
    const QDate date(2010, 5, 1);
    EXPECT_EQ(VanteroConfigFile::newFileName(dir, "cam"_q, date), "cam-2010-05-01.cfg"_q);

    const auto take = [&](const QString &name) { writeFile(dir.filePath(name), ""); };
    take("cam-2010-05-01.cfg"_q);
    EXPECT_EQ(VanteroConfigFile::newFileName(dir, "cam"_q, date), "cam-2010-05-01[2].cfg"_q);
    take("cam-2010-05-01[2].cfg"_q);
    EXPECT_EQ(VanteroConfigFile::newFileName(dir, "cam"_q, date), "cam-2010-05-01[3].cfg"_q);
}

TEST(NewFileName, longFormJoinsItsParts)
{
    const QTemporaryDir temporary;
    EXPECT_EQ(VanteroConfigFile::newFileName(QDir(temporary.path()), "site_"_q, "cam"_q,
                                             QDate(2010, 12, 31), ".txt"_q),
              "site_cam-2010-12-31.txt"_q);
}

TEST(NewFileName, dayWhoseMidnightIsSkippedByTheClockKeepsItsDate)
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "America/Sao_Paulo"); // summer time began at 0:00 there on 2018-11-04
    tzset();
    const QTemporaryDir temporary;
    EXPECT_EQ(VanteroConfigFile::newFileName(QDir(temporary.path()), "cam"_q, QDate(2018, 11, 4)),
              "cam-2018-11-04.cfg"_q);
    qputenv("TZ", zone);
    tzset();
}
