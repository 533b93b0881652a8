// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Disks that are full after any number of bytes.

#include "base/Exceptions.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"
#include "base/smart.h"
#include "config/VanteroConfigFile.h"
#include "erdinfo/VanteroErdinfoFile.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <memory>

using vn::VanteroConfigFile;
using vn::ZipWriter;

namespace {

const QString kText = "#:1.3=\n#:VN-3.0.6.29\n\nSECTION a\nk=\xc3\xa4\nENDSECTION a\n"_q;

VanteroConfigFile configuration()
{
    VanteroConfigFile config;
    config.parse(kText, QDateTime());
    return config;
}

} // namespace

TEST(DiskFaults, storeFailsAtEveryByteThatDoesNotFit)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.cfg"_q);
    VanteroConfigFile config = configuration();
    const int size = kText.toUtf8().size();
    for (int k = 0; k <= size; ++k) {
        SCOPED_TRACE(k);
        const FileSizeLimit limit(static_cast<rlim_t>(k));
        if (k < size) {
            expectThrows<vn::FileException>(
                [&] { config.store(path); },
                [&](const vn::FileException &e) { EXPECT_TRUE(e.message().contains(path)); });
        } else {
            config.store(path);
            EXPECT_EQ(readFile(path), kText.toUtf8());
        }
    }
}

TEST(DiskFaults, storeToAFullDeviceFails)
{
    VanteroConfigFile config = configuration();
    expectThrows<vn::FileException>(
        [&] { config.store("/dev/full"_q); },
        [](const vn::FileException &e) { EXPECT_TRUE(e.message().contains("/dev/full"_q)); });
}

TEST(DiskFaults, anArchiveIsTheOldOneUntilAllOfTheNewOneFits)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.zip"_q);
    const auto write = [&path](const QByteArray &password) {
        const auto writer = std::make_shared<ZipWriter>(path, password);
        writer->open();
        configuration().store(writer, "a.cfg"_q);
        writer->close();
    };
    for (const QByteArray &password : {QByteArray(), QByteArray("secret")}) {
        SCOPED_TRACE(password.constData());
        write(password);
        const int size = readFile(path).size();
        ASSERT_TRUE(QFile::remove(path));
        writeFile(path, "old");

        for (int k = 0; k < size; ++k) {
            SCOPED_TRACE(k);
            const FileSizeLimit limit(static_cast<rlim_t>(k));
            expectThrows<vn::IOException>(
                [&] { write(password); },
                [&](const vn::IOException &e) { EXPECT_TRUE(e.message().startsWith(path)); });
            EXPECT_EQ(readFile(path), QByteArray("old"));
            EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
                      QStringList("a.zip"_q));
        }
        const FileSizeLimit limit(static_cast<rlim_t>(size));
        write(password);
        vn::ZipReader reader(path, password);
        ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
        ASSERT_TRUE(reader.openFile("a.cfg"_q));
        EXPECT_EQ(reader.readAll(), kText.toLatin1());
    }
}

TEST(DiskFaults, erdinfoSaysNothingOfAFullDisk_keptOnPurpose)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("e"_q);
    const vn::VanteroErdinfoFile info(path.toStdWString());
    for (const int k : {0, 1, 331, 332, 333, 487}) {
        SCOPED_TRACE(k);
        QFile::remove(path);
        const FileSizeLimit limit(static_cast<rlim_t>(k));
        EXPECT_TRUE(info.save());
        EXPECT_LE(readFile(path).size(), k);
    }
    EXPECT_TRUE(vn::VanteroErdinfoFile(L"/dev/full").save());
}
