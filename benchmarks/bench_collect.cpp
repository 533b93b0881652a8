// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/**
 * @file Collecting many configurations of 8 kB, out of a tree of folders and out of archives.
 *
 * The peers only read: they look at no header, and but for those of "site" keep nothing and make no
 * text of the bytes. Archives come from zip and 7z. Some peers are programs, so all times are those
 * of the processor, here and in the programs that were run; those of "site, by the clock" are not,
 * which show what several threads gain.
 */

#include "Support.h"

#include "base/FileUtils.h"
#include "base/ZipWriter.h"
#include "config/ConfigCollector.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <KZip>

#include <archive.h>
#include <archive_entry.h>
#include <zip.h>

#include <ctime>
#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int kSize = 8000;
constexpr int kFilesAFolder = 100;
constexpr int kMostArchived = 10000;
const char *const kPassword = "secret";

/** A text that deflates as configurations do, to about a quarter. */
QByteArray configuration(int number)
{
    auto seed = static_cast<unsigned int>(number);
    QByteArray text = "#:1.3===\n#:VN-3.0.6.29\n#:10.0." + QByteArray::number(number / 100) + '.' +
                      QByteArray::number(number % 100) + "\n\nSECTION motion\n";
    while (text.size() < kSize) {
        seed = seed * 1664525U + 1013904223U;
        text += "motion_area" + QByteArray::number(seed >> 24) + '=' +
                QByteArray::number(seed >> 16) + '\n';
    }
    return text.left(kSize);
}

void runProgram(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    require(process.waitForFinished(-1) && process.exitCode() == 0, qUtf8Printable(program));
}

/** A tree of folders with configurations, and archives of all of them; made once. */
struct Collection
{
    Collection(int count, bool isWithArchives)
    {
        for (int i = 0; i < count; ++i) {
            const QString subfolder = QString::number(i / kFilesAFolder);
            if (i % kFilesAFolder == 0)
                require(QDir(tree()).mkpath(subfolder), "folder");
            files << tree() + QLatin1Char('/') + subfolder + QStringLiteral("/%1.cfg").arg(i);
            QFile file(files.last());
            require(file.open(QIODevice::WriteOnly) && file.write(configuration(i)) == kSize,
                    "file");
        }
        if (isWithArchives)
            makeArchives();
    }

    static const Collection &of(int count)
    {
        static std::map<int, std::unique_ptr<Collection>> collections;
        auto &collection = collections[count];
        if (!collection)
            collection = std::make_unique<Collection>(count, count <= kMostArchived);
        return *collection;
    }

    QString tree() const { return folder.filePath(QStringLiteral("tree")); }
    QString archive(const char *kind) const
    {
        return folder.filePath(QLatin1String(kind) + QLatin1String(".zip"));
    }

    void makeArchives() const // of all files
    {
        const QString password = QLatin1String("-p") + QLatin1String(kPassword);
        runProgram(QStringLiteral("zip"),
                   {QStringLiteral("-qr"), archive("plain"), QStringLiteral(".")}, tree());
        runProgram(QStringLiteral("zip"),
                   {QStringLiteral("-qr"), QStringLiteral("-P"), QLatin1String(kPassword),
                    archive("ZipCrypto"), QStringLiteral(".")},
                   tree());
        runProgram(QStringLiteral("7z"),
                   {QStringLiteral("a"), QStringLiteral("-tzip"), QStringLiteral("-mem=AES256"),
                    password, archive("AES"), QStringLiteral(".")},
                   tree());
        vn::ZipWriter writer(archive("AES of libzip"), kPassword);
        writer.open();
        for (const QString &path : qAsConst(files)) {
            QFile file(path);
            require(file.open(QIODevice::ReadOnly), "file");
            writer.appendFile(&file, QFileInfo(path).fileName(), {}, QDateTime::currentDateTime());
        }
        writer.close();
    }

    QTemporaryDir folder;
    QStringList files;
};

/** Seconds of the processor, for this process and the programs that it has run. */
double processorTime()
{
    timespec own{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    rusage programs{};
    getrusage(RUSAGE_CHILDREN, &programs);
    const auto seconds = [](auto whole, auto parts, double unit) {
        return static_cast<double>(whole) + static_cast<double>(parts) / unit;
    };
    return seconds(own.tv_sec, own.tv_nsec, 1e9) +
           seconds(programs.ru_utime.tv_sec, programs.ru_utime.tv_usec, 1e6) +
           seconds(programs.ru_stime.tv_sec, programs.ru_stime.tv_usec, 1e6);
}

/** Seconds of the clock on the wall. */
double wallTime()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/** Times @p read, which is given the collection and returns how many bytes or characters it saw. */
template <typename Read>
auto timed(Read read, double (*time)())
{
    return [read, time](benchmark::State &state) {
        const auto count = static_cast<int>(state.range(0));
        const Collection &collection = Collection::of(count);
        for (auto _ : state) {
            const double start = time();
            const qint64 size = read(collection);
            state.SetIterationTime(time() - start);
            require(size == qint64{kSize} * count, "size");
        }
    };
}

// ---- Ours --------------------------------------------------------------------------------------

qint64 collect(const QString &path, const QByteArray &password)
{
    const auto texts = vn::VanteroConfigFile::parseAll({path}, true, password);
    qint64 size = 0;
    for (const QString &text : texts)
        size += text.size();
    return size;
}

qint64 collectAndKeepTexts(const Collection &collection)
{
    vn::ConfigCollector::Options options;
    options.recursive = true;
    vn::ConfigCollector collector({collection.tree()}, options);
    std::vector<QString> kept;
    qint64 size = 0;
    while (auto found = collector.next()) {
        size += found->text.size();
        kept.push_back(std::move(found->text));
    }
    return size;
}

/** On two threads: one lists and reads, the other reads; batches keep the order. */
qint64 collectOnTwoThreads(const Collection &collection)
{
    using Collector = vn::ConfigCollector;
    constexpr std::size_t kBatchSize = 64;
    struct Batch
    {
        std::vector<Collector::Source> sources;
        std::vector<QString> texts;
    };
    Collector::Options options;
    options.recursive = true;
    Collector places({collection.tree()}, options);
    std::mutex lock;
    std::deque<Batch> batches;
    const auto work = [&] {
        Collector reader(options);
        for (;;) {
            Batch *batch = nullptr;
            {
                const std::lock_guard<std::mutex> guard(lock);
                batch = &batches.emplace_back();
                while (batch->sources.size() < kBatchSize) {
                    auto source = places.nextSource();
                    if (!source)
                        break;
                    batch->sources.push_back(std::move(*source));
                }
            }
            if (batch->sources.empty())
                return;
            for (const Collector::Source &source : batch->sources)
                batch->texts.push_back(reader.read(source).text);
        }
    };
    std::thread other(work);
    work();
    other.join();
    qint64 size = 0;
    for (const Batch &batch : batches)
        for (const QString &text : batch.texts)
            size += text.size();
    return size;
}

// ---- Files -------------------------------------------------------------------------------------

qint64 readAllFiles(const Collection &collection)
{
    qint64 size = 0;
    for (const QString &path : collection.files) {
        QFile file(path);
        require(file.open(QIODevice::ReadOnly), "QFile");
        size += file.readAll().size();
    }
    return size;
}

/** The same, as a collection of the bytes. */
qint64 readAllFilesAndKeepThem(const Collection &collection)
{
    std::vector<QByteArray> kept;
    qint64 size = 0;
    for (const QString &path : collection.files) {
        QFile file(path);
        require(file.open(QIODevice::ReadOnly), "QFile");
        kept.push_back(file.readAll());
        size += kept.back().size();
    }
    return size;
}

/** The texts of all files, found by Qt. */
qint64 iterateAndKeepTexts(const Collection &collection)
{
    std::vector<QString> kept;
    qint64 size = 0;
    QDirIterator iterator(collection.tree(), QDir::Files | QDir::NoSymLinks,
                          QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        QFile file(iterator.next());
        require(file.open(QIODevice::ReadOnly), "QFile");
        kept.push_back(QString::fromLatin1(file.readAll()));
        size += kept.back().size();
    }
    return size;
}

qint64 readTexts(const Collection &collection)
{
    qint64 size = 0;
    for (const QString &path : collection.files)
        size += vn::FileUtils::readText(path).size();
    return size;
}

/** The system's open, read and close, into one buffer. */
qint64 readBySystemCalls(const Collection &collection)
{
    std::vector<char> buffer(kSize + 1);
    qint64 size = 0;
    for (const QString &path : collection.files) {
        const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        size += ::read(file, buffer.data(), buffer.size());
        ::close(file);
    }
    return size;
}

// ---- Archives ----------------------------------------------------------------------------------

qint64 readByLibarchive(const QString &path, const char *password)
{
    std::vector<char> buffer(65536);
    archive *const zip = archive_read_new();
    archive_read_support_format_zip_seekable(zip);
    if (password)
        archive_read_add_passphrase(zip, password);
    require(archive_read_open_filename(zip, QFile::encodeName(path).constData(), 65536) ==
                ARCHIVE_OK,
            "libarchive");
    qint64 size = 0;
    archive_entry *entry = nullptr;
    while (archive_read_next_header(zip, &entry) == ARCHIVE_OK) {
        while (const auto count = archive_read_data(zip, buffer.data(), buffer.size())) {
            require(count > 0, "libarchive");
            size += count;
        }
    }
    archive_read_free(zip);
    return size;
}

qint64 readByLibzip(const QString &path, const char *password)
{
    std::vector<char> buffer(65536);
    zip_t *const zip = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, nullptr);
    require(zip, "libzip");
    if (password)
        zip_set_default_password(zip, password);
    qint64 size = 0;
    const zip_int64_t entries = zip_get_num_entries(zip, 0);
    for (zip_int64_t i = 0; i < entries; ++i) {
        zip_file_t *const file = zip_fopen_index(zip, static_cast<zip_uint64_t>(i), 0);
        require(file, "libzip");
        while (const zip_int64_t count = zip_fread(file, buffer.data(), buffer.size())) {
            require(count > 0, "libzip");
            size += count;
        }
        zip_fclose(file);
    }
    zip_discard(zip);
    return size;
}

qint64 readByKZip(const KArchiveDirectory &folder)
{
    qint64 size = 0;
    const QStringList names = folder.entries();
    for (const QString &name : names) {
        const KArchiveEntry *const entry = folder.entry(name);
        if (entry->isDirectory())
            size += readByKZip(*static_cast<const KArchiveDirectory *>(entry));
        else
            size += static_cast<const KArchiveFile *>(entry)->data().size();
    }
    return size;
}

qint64 readByProgram(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    qint64 size = 0;
    while (process.waitForReadyRead(-1))
        size += process.readAll().size();
    if (process.state() != QProcess::NotRunning)
        process.waitForFinished(-1);
    size += process.readAll().size();
    require(process.error() == QProcess::UnknownError && process.exitCode() == 0,
            qUtf8Printable(program));
    return size;
}

// ---- Rows --------------------------------------------------------------------------------------

template <typename Read>
void add(const std::string &name, Read read, const std::vector<int64_t> &counts,
         double (*time)() = processorTime)
{
    benchmark::RegisterBenchmark(name.c_str(), timed(read, time))
        ->ArgsProduct({counts})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

void addArchives(const char *kind, const char *password, const std::vector<int64_t> &counts)
{
    const auto row = [&](const char *who, auto readArchive) {
        add(
            std::string(kind) + " archive/" + who,
            [=](const Collection &collection) { return readArchive(collection.archive(kind)); },
            counts);
    };
    const std::string name(kind);
    const bool isAes = name.rfind("AES", 0) == 0;
    row("ours", [=](const QString &path) { return collect(path, password); });
    row("libarchive", [=](const QString &path) { return readByLibarchive(path, password); });
    if (name != "AES") // libzip misses the check sums that 7z leaves out
        row("libzip", [=](const QString &path) { return readByLibzip(path, password); });
    row("7z", [=](const QString &path) {
        QStringList arguments{QStringLiteral("x"), QStringLiteral("-so")};
        if (password)
            arguments << QLatin1String("-p") + QLatin1String(password);
        return readByProgram(QStringLiteral("7z"), arguments << path);
    });
    if (!isAes) { // nor has unzip AES
        row("unzip", [=](const QString &path) {
            QStringList arguments{QStringLiteral("-pq")};
            if (password)
                arguments << QStringLiteral("-P") << QLatin1String(password);
            return readByProgram(QStringLiteral("unzip"), arguments << path);
        });
    }
    if (!password) {
        row("KZip", [=](const QString &path) {
            KZip zip(path);
            require(zip.open(QIODevice::ReadOnly), "KZip");
            return readByKZip(*zip.directory());
        });
    }
}

const bool s_registered = [] {
    // The heap keeps its pages between repetitions: their first use is the system's time.
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    const std::vector<int64_t> counts{100, 1000, 10000};
    add(
        "folders/ours", [](const Collection &collection) { return collect(collection.tree(), {}); },
        counts);
    add("folders/readAll", readAllFiles, counts);
    add("folders/readAll, all kept", readAllFilesAndKeepThem, counts);
    add("folders/readText", readTexts, counts);
    add("folders/limit", readBySystemCalls, counts);
    // Of 100,000 files parseAll() keeps 1.6 GB.
    const std::vector<int64_t> siteCounts{1000, 10000, 100000};
    add("site/ours", collectAndKeepTexts, siteCounts);
    add(
        "site/ours, parseAll",
        [](const Collection &collection) { return collect(collection.tree(), {}); }, siteCounts);
    add("site/QDirIterator and readAll", iterateAndKeepTexts, siteCounts);
    add("site, by the clock/ours", collectAndKeepTexts, siteCounts, wallTime);
    add("site, by the clock/ours, two threads", collectOnTwoThreads, siteCounts, wallTime);
    addArchives("plain", nullptr, counts);
    addArchives("ZipCrypto", kPassword, counts);
    addArchives("AES", kPassword, {100, 1000}); // a key derived for each entry takes its time
    addArchives("AES of libzip", kPassword, {100, 1000});
    return true;
}();

} // namespace
