// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Reading many configurations of 8 kB: as files, and out of archives. */

#include "Support.h"

#include "base/FileUtils.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <archive.h>
#include <archive_entry.h>

#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kCount = 10000;
constexpr int kSize = 8000;
constexpr qint64 kTotal = qint64(kCount) * kSize;

/** A text that deflates as configurations do, to about a quarter. */
QByteArray configuration(unsigned seed)
{
    QByteArray text("#:MX-01;\n");
    while (text.size() < kSize) {
        seed = seed * 1664525U + 1013904223U;
        text += "motion_area" + QByteArray::number(seed >> 24) + '=' +
                QByteArray::number(seed >> 16) + '\n';
    }
    return text.left(kSize);
}

/** The files and archives, made once. */
class Collection
{
    QTemporaryDir m_folder;

public:
    static const Collection &instance()
    {
        static const Collection collection;
        return collection;
    }

    QStringList files;
    QString plain;
    QString encrypted;

private:
    Collection()
        : plain(m_folder.filePath(QStringLiteral("plain.zip")))
        , encrypted(m_folder.filePath(QStringLiteral("encrypted.zip")))
    {
        vn::ZipWriter plainZip(plain);
        vn::ZipWriter encryptedZip(encrypted, "secret");
        plainZip.open();
        encryptedZip.open();
        for (int i = 0; i < kCount; ++i) {
            const QString name = QStringLiteral("cam%1.cfg").arg(i);
            const QByteArray bytes = configuration(static_cast<unsigned>(i));
            files << m_folder.filePath(name);
            QFile file(files.last());
            require(file.open(QIODevice::WriteOnly) && file.write(bytes) == kSize, "file");
            append(&plainZip, name, bytes);
            if (i < kCount / 10)
                append(&encryptedZip, name, bytes);
        }
        plainZip.close();
        encryptedZip.close();
    }

    static void append(vn::ZipWriter *zip, const QString &name, QByteArray bytes)
    {
        QBuffer buffer(&bytes);
        require(buffer.open(QIODevice::ReadOnly), "buffer");
        zip->appendFile(&buffer, name, QString(), QDateTime::currentDateTime());
    }
};

/** Runs @p readOne over all files; it returns the size of what it has read. */
template <typename Read>
void readFiles(benchmark::State &state, Read &&readOne)
{
    const QStringList &files = Collection::instance().files;
    for (auto _ : state) {
        qint64 total = 0;
        for (const QString &file : files)
            total += readOne(file);
        require(total == kTotal, "files");
    }
}

void filesOurs(benchmark::State &state)
{
    readFiles(state, [](const QString &path) { return vn::FileUtils::readText(path).size(); });
}

void filesQFile(benchmark::State &state)
{
    readFiles(state, [](const QString &path) {
        QFile file(path);
        require(file.open(QIODevice::ReadOnly), "QFile");
        return file.readAll().size();
    });
}

/** The system's open, read and close, into one buffer and without decoding. */
void filesLimit(benchmark::State &state)
{
    std::vector<char> buffer(kSize + 1);
    readFiles(state, [&](const QString &path) {
        const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        const auto size = ::read(file, buffer.data(), buffer.size());
        ::close(file);
        return size;
    });
}

/** Reads all entries by ZipReader: as bytes, or as texts if @p isText says so. */
template <bool isText>
void zipOurs(benchmark::State &state, const QString &path, const QByteArray &password,
             qint64 expected)
{
    std::vector<char> buffer(65536);
    for (auto _ : state) {
        vn::ZipReader zip(path, password);
        require(zip.open(QIODevice::ReadOnly), "ZipReader");
        qint64 total = 0;
        const QStringList names = zip.fileListBySuffix(QStringLiteral("cfg"));
        for (const QString &name : names) {
            require(zip.openFile(name), "ZipReader");
            if constexpr (isText) {
                total += vn::FileUtils::readText(&zip).size();
            } else {
                while (const qint64 count =
                           zip.read(buffer.data(), static_cast<qint64>(buffer.size()))) {
                    require(count > 0, "ZipReader");
                    total += count;
                }
            }
        }
        require(total == expected, "ZipReader");
    }
}

/** libarchive alone, which keeps nothing back until it has been checked. */
void zipLibarchive(benchmark::State &state, const QString &path, const QByteArray &password,
                   qint64 expected)
{
    std::vector<char> buffer(65536);
    for (auto _ : state) {
        archive *zip = archive_read_new();
        archive_read_support_format_zip_seekable(zip);
        if (!password.isEmpty())
            archive_read_add_passphrase(zip, password.constData());
        require(archive_read_open_filename(zip, QFile::encodeName(path).constData(), 10240) ==
                    ARCHIVE_OK,
                "libarchive");
        qint64 total = 0;
        archive_entry *entry = nullptr;
        while (archive_read_next_header(zip, &entry) == ARCHIVE_OK) {
            while (const auto count = archive_read_data(zip, buffer.data(), buffer.size())) {
                require(count > 0, "libarchive");
                total += count;
            }
        }
        archive_read_free(zip);
        require(total == expected, "libarchive");
    }
}

/** Runs a benchmark of archives on the deflated one. */
template <typename Run>
auto onPlain(Run run)
{
    return [run](benchmark::State &state) {
        run(state, Collection::instance().plain, QByteArray(), kTotal);
    };
}

/** Runs a benchmark of archives on the encrypted one, which is smaller. */
template <typename Run>
auto onEncrypted(Run run)
{
    return [run](benchmark::State &state) {
        run(state, Collection::instance().encrypted, QByteArray("secret"), kTotal / 10);
    };
}

const auto *const s_archives = [] {
    const auto add = [](const char *name, auto run, int count) {
        return benchmark::RegisterBenchmark(name, run)->Arg(count)->Unit(benchmark::kMillisecond);
    };
    add("read archive/ours", onPlain(&zipOurs<false>), kCount);
    add("read archive/ours, as text", onPlain(&zipOurs<true>), kCount);
    add("read archive/libarchive", onPlain(&zipLibarchive), kCount);
    add("read AES archive/ours", onEncrypted(&zipOurs<false>), kCount / 10);
    return add("read AES archive/libarchive", onEncrypted(&zipLibarchive), kCount / 10);
}();

} // namespace

BENCHMARK(filesOurs)->Name("read files/ours")->Arg(kCount)->Unit(benchmark::kMillisecond);
BENCHMARK(filesQFile)->Name("read files/QFile")->Arg(kCount)->Unit(benchmark::kMillisecond);
BENCHMARK(filesLimit)->Name("read files/limit")->Arg(kCount)->Unit(benchmark::kMillisecond);
