// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A file of any bytes, collected as an archive and as a configuration: every entry comes once, in
// order, as the reader of archives has it or with the error that it has; the file as the reader of
// configurations has it. In one go, and with places and reading apart.

#include "Support.h"

#include "base/FileUtils.h"
#include "base/ZipReader.h"
#include "config/ConfigCollector.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <optional>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

using vn::ArchiveError;
using vn::ConfigCollector;
using vn::VanteroConfigFile;
using vn::ZipReader;
using Status = vn::ConfigCollector::Status;

namespace {

/** One content under two names. */
class Names
{
public:
    Names()
        : m_descriptor(::memfd_create("input", 0))
    {
        const QString target = QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
        FUZZ_CHECK(m_descriptor >= 0 && QFile::link(target, archive()) &&
                   QFile::link(target, file()));
    }

    void write(const QByteArray &bytes) const
    {
        FUZZ_CHECK(::ftruncate(m_descriptor, 0) == 0);
        FUZZ_CHECK(::pwrite(m_descriptor, bytes.constData(), std::size_t(bytes.size()), 0) ==
                   bytes.size());
    }

    QString archive() const { return m_folder.filePath(QStringLiteral("input.zip")); }
    QString file() const { return m_folder.filePath(QStringLiteral("input")); }

private:
    QTemporaryDir m_folder;
    int m_descriptor;
};

ConfigCollector::Options limits(const QByteArray &password)
{
    ConfigCollector::Options options;
    options.password = password;
    options.entrySizeLimit = 256 * 1024;
    options.archiveSizeLimit = 1024 * 1024;
    options.entryCountLimit = 200;
    options.ratioLimit = 100;
    return options;
}

/** A reader with the same limits, which may not be open. */
class Reader : public ZipReader
{
public:
    Reader(const QString &path, const ConfigCollector::Options &options)
        : ZipReader(path, options.password)
    {
        setEntrySizeLimit(*options.entrySizeLimit);
        setArchiveSizeLimit(*options.archiveSizeLimit);
        setEntryCountLimit(*options.entryCountLimit);
        setRatioLimit(*options.ratioLimit);
        (void)open(ReadOnly);
    }
};

/** The content of the entry @p index; nothing where it has an error. */
std::optional<QByteArray> contentOf(ZipReader &reader, int index)
{
    FUZZ_CHECK(reader.openEntry(index));
    QByteArray content;
    char buffer[4096];
    for (;;) {
        const qint64 count = reader.read(buffer, sizeof buffer);
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            return content;
        content.append(buffer, static_cast<int>(count));
    }
}

void checkEntry(const ConfigCollector::Found &found, ZipReader &reader, const QString &path)
{
    FUZZ_EQUAL(found.path, path);
    FUZZ_EQUAL(found.entry, reader.entryName(found.index));
    if (const auto content = contentOf(reader, found.index)) {
        FUZZ_CHECK(found.status == Status::Configuration && !found.exception);
        FUZZ_CHECK(found.archiveError == ArchiveError::None && found.reason.isNull());
        FUZZ_CHECK(found.bytes == *content);
        FUZZ_EQUAL(found.text, vn::FileUtils::decodeText(*content));
    } else {
        FUZZ_CHECK(found.status == Status::EntryUnreadable && found.exception);
        FUZZ_CHECK(found.archiveError == reader.error());
        FUZZ_CHECK(found.bytes.isNull() && found.text.isNull());
        FUZZ_EQUAL(found.exception->message(), reader.errorString());
        FUZZ_EQUAL(path + QStringLiteral(": ") + found.entry + QStringLiteral(": ") + found.reason,
                   reader.errorString());
    }
}

void checkFile(const ConfigCollector::Found &found, const QByteArray &bytes)
{
    VanteroConfigFile config;
    const QString text = vn::FileUtils::decodeText(bytes);
    const bool isConfiguration = config.parseHeader(text);
    FUZZ_CHECK(found.hasVersions == isConfiguration);
    FUZZ_CHECK(found.status == (isConfiguration ? Status::Configuration : Status::NoConfiguration));
    FUZZ_CHECK(found.bytes == bytes && found.index == -1 && found.entry.isNull());
    FUZZ_EQUAL(found.text, text);
    FUZZ_EQUAL(found.fileVersion, config.getFileVersion());
    FUZZ_EQUAL(found.softwareVersion, config.getSoftwareVersion());
    FUZZ_EQUAL(found.factoryIp, config.getFactoryIP());
}

bool isSame(const ConfigCollector::Found &a, const ConfigCollector::Found &b)
{
    return a.status == b.status && a.path == b.path && a.entry == b.entry && a.index == b.index &&
           a.bytes == b.bytes && a.text == b.text && a.factoryIp == b.factoryIp &&
           a.reason == b.reason && a.archiveError == b.archiveError;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Names names;
    Input input(data, size);
    const ConfigCollector::Options options = limits(input.piece());
    const QByteArray bytes = input.rest();
    names.write(bytes);

    ConfigCollector collector({names.archive(), names.file()}, options);
    FUZZ_CHECK(collector.measure());
    const qint64 total = collector.progress().filesLeft;
    std::vector<ConfigCollector::Found> all;
    qint64 read = 0;
    while (auto found = collector.next()) {
        read += found->bytes.size();
        all.push_back(std::move(*found));
        FUZZ_CHECK(qint64(all.size()) + collector.progress().filesLeft == total);
    }
    FUZZ_CHECK(qint64(all.size()) == total);
    checkFile(all.back(), bytes);

    Reader reader(names.archive(), options);
    if (reader.isOpen()) {
        std::size_t number = 0;
        for (int i = 0; i < reader.entryCount(); ++i) {
            const QString name = reader.entryName(i);
            if (name.endsWith(QLatin1Char('/')) ||
                !name.endsWith(QLatin1String("cfg"), Qt::CaseInsensitive))
                continue;
            FUZZ_CHECK(number < all.size() && all[number].index == i);
            checkEntry(all[number++], reader, names.archive());
        }
        FUZZ_CHECK(number + 1 == all.size());
    } else {
        FUZZ_CHECK(all.size() == 2);
        FUZZ_CHECK(all[0].status == Status::ArchiveUnreadable);
        FUZZ_CHECK(all[0].archiveError == reader.error() && reader.error() != ArchiveError::None);
        FUZZ_EQUAL(all[0].exception->message(), reader.errorString());
    }

    if (read - bytes.size() > *options.archiveSizeLimit / 2)
        return 0; // the limit of an archive counts what one collector reads
    ConfigCollector places({names.archive(), names.file()}, options);
    std::vector<ConfigCollector::Source> sources;
    while (auto source = places.nextSource())
        sources.push_back(std::move(*source));
    FUZZ_CHECK(sources.size() == all.size());
    ConfigCollector one(options);
    ConfigCollector other(options);
    for (std::size_t i = sources.size(); i-- > 0;)
        FUZZ_CHECK(isSame((i % 3 ? one : other).read(sources[i]), all[i]));
    return 0;
}
