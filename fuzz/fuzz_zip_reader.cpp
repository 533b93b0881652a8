// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// An archive of any bytes: every entry gives its content or an error, the same forwards, backwards,
// by a collector and by parseAll(), and never more than the limits allow.

#include "Support.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/ZipReader.h"
#include "config/ConfigCollector.h"
#include "config/VanteroConfigFile.h"

#include <sys/mman.h>
#include <unistd.h>

using vn::ArchiveError;
using vn::ArchiveException;
using vn::ConfigCollector;
using vn::ZipReader;

namespace {

constexpr qint64 kEntryLimit = 256 * 1024;
constexpr qint64 kArchiveLimit = 1024 * 1024;
constexpr int kCountLimit = 200;

/** The input as a file with a name. */
QString fileOf(const QByteArray &bytes)
{
    static const int descriptor = ::memfd_create("archive", 0);
    FUZZ_CHECK(descriptor >= 0 && ::ftruncate(descriptor, 0) == 0);
    FUZZ_CHECK(::pwrite(descriptor, bytes.constData(), std::size_t(bytes.size()), 0) ==
               bytes.size());
    return QStringLiteral("/proc/self/fd/%1").arg(descriptor);
}

bool open(ZipReader &reader)
{
    reader.setEntrySizeLimit(kEntryLimit);
    reader.setArchiveSizeLimit(kArchiveLimit);
    reader.setEntryCountLimit(kCountLimit);
    reader.setRatioLimit(100);
    return reader.open(QIODevice::ReadOnly);
}

/** Whether an entry of an archive that could be opened may fail for that reason. */
bool isOfAnEntry(ArchiveError error)
{
    return error == ArchiveError::Damaged || error == ArchiveError::Truncated ||
           error == ArchiveError::NeedsPassword || error == ArchiveError::WrongPassword ||
           error == ArchiveError::DamagedOrWrongPassword ||
           error == ArchiveError::UnsupportedMethod || error == ArchiveError::OverEntrySizeLimit ||
           error == ArchiveError::OverArchiveSizeLimit || error == ArchiveError::OverRatioLimit ||
           error == ArchiveError::OverlappingEntries;
}

/** Whether an archive cannot be opened for that reason. */
bool isOfTheArchive(ArchiveError error)
{
    return error == ArchiveError::NotAnArchive || error == ArchiveError::Truncated ||
           error == ArchiveError::Damaged || error == ArchiveError::OverEntryCountLimit ||
           error == ArchiveError::Split;
}

/** What a reader gave of an entry: its content, or why it has none. */
struct Entry
{
    QString name;
    QByteArray content;
    ArchiveError error;
    QString message;
};

/** A collector over the same archive, with the limits that its reader has, gives the same. */
void checkCollected(ZipReader &reader, const QList<Entry> &entries)
{
    ConfigCollector::Options options;
    options.entrySuffixes = QStringList{QString()}; // which all names end with
    ConfigCollector collector(reader, options);
    for (const Entry &entry : entries) {
        if (entry.name.endsWith(QLatin1Char('/')))
            continue;
        const auto found = collector.next();
        FUZZ_CHECK(found && found->path.isNull());
        FUZZ_EQUAL(found->entry, entry.name);
        FUZZ_CHECK(found->archiveError == entry.error);
        FUZZ_CHECK(found->bytes == entry.content);
        const bool isGood = entry.error == ArchiveError::None;
        FUZZ_CHECK(found->status == (isGood ? ConfigCollector::Status::Configuration
                                            : ConfigCollector::Status::EntryUnreadable));
        FUZZ_CHECK(isGood == found->reason.isNull() && isGood == !found->exception);
        if (!isGood)
            FUZZ_EQUAL(found->exception->message(), entry.message);
    }
    FUZZ_CHECK(!collector.next());
}

/** The content of the entry, or a null array where it gives an error. */
QByteArray contentOf(ZipReader &reader, const QString &name)
{
    FUZZ_CHECK(reader.openFile(name));
    QByteArray content;
    char buffer[4096];
    for (;;) {
        const qint64 count = reader.read(buffer, sizeof buffer);
        if (count < 0) {
            FUZZ_CHECK(content.isEmpty()); // nothing is handed on before all has been checked
            FUZZ_CHECK(reader.errorString().contains(name));
            FUZZ_CHECK(isOfAnEntry(reader.error()));
            FUZZ_EQUAL(reader.exception().entry(), name);
            FUZZ_EQUAL(reader.exception().message(), reader.errorString());
            return QByteArray();
        }
        if (count == 0)
            break;
        content.append(buffer, static_cast<int>(count));
        FUZZ_CHECK(content.size() <= kEntryLimit);
    }
    FUZZ_CHECK(reader.atEnd());
    FUZZ_CHECK(reader.error() == ArchiveError::None);
    return content.isNull() ? QByteArray("") : content;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const QByteArray password = input.piece();
    const QString path = fileOf(input.rest());

    ZipReader reader(path, password);
    if (!open(reader)) {
        FUZZ_CHECK(!reader.errorString().isEmpty());
        FUZZ_CHECK(!reader.isOpen());
        FUZZ_CHECK(isOfTheArchive(reader.error()));
        return 0;
    }
    const QStringList names = reader.fileListBySuffix(QString());
    FUZZ_CHECK(names.size() <= kCountLimit);
    QList<QByteArray> contents;
    QList<Entry> entries;
    qint64 total = 0;
    qint64 failed = 0; // each counts with what it has unpacked
    for (const QString &name : names) {
        contents += contentOf(reader, name);
        entries += Entry{name, contents.last(), reader.error(), reader.errorString()};
        total += contents.last().size();
        failed += contents.last().isNull() ? 1 : 0;
    }
    FUZZ_CHECK(total <= kArchiveLimit);
    FUZZ_CHECK(!reader.openFile(QStringLiteral("no such entry/")));
    char byte = 0;
    FUZZ_CHECK(reader.read(&byte, 1) == -1);
    FUZZ_CHECK(reader.error() == ArchiveError::NoSuchEntry);

    // The limit of the archive counts in the order of reading; names that repeat change places.
    QStringList unique = names;
    const bool isPlain =
        unique.removeDuplicates() == 0 && total + failed * kEntryLimit < kArchiveLimit / 2;
    if (isPlain) {
        ZipReader backwards(path, password);
        FUZZ_CHECK(open(backwards));
        for (int i = names.size(); i-- > 0;) {
            const QByteArray content = contentOf(backwards, names.at(i));
            FUZZ_CHECK(content == contents.at(i) && content.isNull() == contents.at(i).isNull());
        }
    }

    ZipReader collected(path, password);
    FUZZ_CHECK(open(collected));
    checkCollected(collected, entries);

    ZipReader all(path, password);
    FUZZ_CHECK(open(all));
    const QStringList configNames = all.fileListBySuffix(QStringLiteral("cfg"));
    QMap<QString, QString> configurations;
    try {
        FUZZ_CHECK(vn::VanteroConfigFile::parseAll(all, configurations) == configNames.size());
        FUZZ_CHECK(configurations.size() == configNames.size());
    } catch (const ArchiveException &e) {
        FUZZ_CHECK(isOfAnEntry(e.error()));
        FUZZ_CHECK(!e.message().isEmpty());
        FUZZ_CHECK(configurations.size() < configNames.size());
    }
    return 0;
}
