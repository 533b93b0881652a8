// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigCollector.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "config/ConfigCollectorWalk_p.h"
#include "config/ConfigTextReader_p.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <utility>

namespace vn {

using internal::CollectedArchive;
using internal::SourceWalk;

namespace {

/** Puts what the header of @p found.text says into @p found. */
void readHeaderOf(ConfigCollector::Found &found)
{
    internal::MemoryLines lines(found.text);
    using internal::HeaderField;
    found.hasVersions =
        internal::readHeaderValues(lines, [&](HeaderField field, QStringView value) {
            // Of several addresses the last one counts.
            QString &target = field == HeaderField::FactoryIp     ? found.factoryIp
                              : field == HeaderField::FileVersion ? found.fileVersion
                                                                  : found.softwareVersion;
            target = internal::toText(value);
        });
}

/** Puts why @p exception was raised into @p found. */
void explain(const IOException &exception, ConfigCollector::Found &found)
{
    found.exception.reset(exception.clone());
    if (const auto *archive = dynamic_cast<const ArchiveException *>(&exception)) {
        found.reason = archive->reason();
        found.archiveError = archive->error();
    } else if (const auto *file = dynamic_cast<const FileException *>(&exception)) {
        found.reason = file->reason();
        found.systemError = file->systemError();
    } else {
        found.reason = exception.message();
    }
}

} // namespace

class Q_DECL_HIDDEN ConfigCollector::Private
{
public:
    Private(SourceWalk givenWalk, SourceWalk walkToMeasure, Options givenOptions)
        : options(std::move(givenOptions))
        , walk(std::move(givenWalk))
        , measuring(std::move(walkToMeasure))
    {
    }

    Found read(const Source &source, bool isNext);
    void readFile(const Source &source, bool isNext, Found &found) const;
    void readEntry(const Source &source, Found &found);

    const Options options;
    SourceWalk walk;
    SourceWalk measuring;

    std::shared_ptr<CollectedArchive> archive; // that is being read
    std::unique_ptr<ZipReader> reader;         // of it, where it is ours

    Progress done;
    qint64 measuredFiles = 0; // so far
    qint64 measuredBytes = 0;
    qint64 totalFiles = -1;
    qint64 totalBytes = -1;
};

ConfigCollector::Found ConfigCollector::Private::read(const Source &source, bool isNext)
{
    Found found;
    found.status = source.m_status;
    found.path = source.path;
    found.entry = source.entry;
    found.index = source.index;
    found.isNamed = source.isNamed;
    if (source.m_exception) {
        explain(*source.m_exception, found);
    } else if (source.m_systemError != 0) {
        found.reason = qt_error_string(source.m_systemError);
        found.systemError = source.m_systemError;
    } else if (source.m_status == Status::Configuration) {
        try {
            if (source.m_archive)
                readEntry(source, found);
            else
                readFile(source, isNext, found);
        } catch (const IOException &e) {
            found.status = source.m_archive ? Status::EntryUnreadable : Status::FileUnreadable;
            explain(e, found);
        }
    }
    if (source.m_status == Status::Configuration || source.m_status == Status::ArchiveUnreadable) {
        ++done.files;
        done.bytes += found.exception ? std::max<qint64>(source.size, 0) : found.bytes.size();
    }
    return found;
}

void ConfigCollector::Private::readFile(const Source &source, bool isNext, Found &found) const
{
    try {
        if (!isNext || !walk.readFile(found.bytes))
            found.bytes = FileUtils::readBytes(source.m_location);
    } catch (const FileException &) {
        // What was a file when its folder was listed may be gone by now, which is no failure.
        const QFileInfo info(source.m_location);
        if (source.isNamed || info.isFile())
            throw;
        found.status = info.exists() ? Status::NotAFile : Status::NotFound;
        return;
    }
    found.text = FileUtils::decodeText(found.bytes);
    readHeaderOf(found);
    if (!found.hasVersions)
        found.status = Status::NoConfiguration;
}

void ConfigCollector::Private::readEntry(const Source &source, Found &found)
{
    ZipReader *device = source.m_archive->given();
    if (device) {
        (void)device->openFile(source.entry); // reading tells why it failed
    } else {
        if (archive != source.m_archive) {
            reader.reset(); // before the next one opens its file
            archive.reset();
            reader = source.m_archive->takeReader(options);
            archive = source.m_archive;
        }
        device = reader.get();
        if (device->entryName(source.index) != source.entry)
            throw ArchiveException(source.path, source.entry, ArchiveError::NoSuchEntry,
                                   QString::fromLatin1("the archive has changed meanwhile"));
        (void)device->openEntry(source.index); // likewise
    }
    std::atomic<qint64> &readSize = source.m_archive->readSize();
    if (options.collectionSizeLimit && source.size > *options.collectionSizeLimit - readSize)
        throw ArchiveException(source.path, source.entry, ArchiveError::OverCollectionSizeLimit,
                               QStringLiteral("more than the limit of %1 bytes for all archives")
                                   .arg(*options.collectionSizeLimit));
    try {
        found.bytes = FileUtils::readBytes(device);
    } catch (const ArchiveException &) {
        throw;
    } catch (const IOException &e) { // more than is read at once, which the limits may let through
        throw ArchiveException(source.path, source.entry, ArchiveError::OverEntrySizeLimit,
                               e.message());
    }
    readSize += found.bytes.size();
    found.text = FileUtils::decodeText(found.bytes);
    // Kept on purpose: in an archive, a text without a header counts, too.
    readHeaderOf(found);
}

ConfigCollector::ConfigCollector(const QStringList &paths, const Options &options)
    : d(std::make_unique<Private>(SourceWalk(paths, options), SourceWalk(paths, options), options))
{
}

ConfigCollector::ConfigCollector(const QStringList &paths, const ConfigCollector &before)
    : d(std::make_unique<Private>(SourceWalk(paths, before.d->options, before.d->walk.readSize()),
                                  SourceWalk(paths, before.d->options), before.d->options))
{
}

ConfigCollector::ConfigCollector(ZipReader &archive, const Options &options)
    : d(std::make_unique<Private>(SourceWalk(archive, options), SourceWalk(archive, options),
                                  options))
{
}

ConfigCollector::ConfigCollector(const Options &options)
    : ConfigCollector(QStringList(), options)
{
}

ConfigCollector::~ConfigCollector() = default;

std::optional<ConfigCollector::Source> ConfigCollector::nextSource()
{
    return d->walk.next();
}

std::optional<ConfigCollector::Found> ConfigCollector::next()
{
    const auto source = d->walk.next();
    if (!source)
        return std::nullopt;
    return d->read(*source, true);
}

ConfigCollector::Found ConfigCollector::read(const Source &source)
{
    return d->read(source, false);
}

bool ConfigCollector::measure()
{
    if (d->totalFiles >= 0)
        return true;
    qint64 &files = d->measuredFiles; // goes on where it was stopped
    qint64 &bytes = d->measuredBytes;
    while (const auto source = d->measuring.next()) {
        if (source->m_status != Status::Configuration &&
            source->m_status != Status::ArchiveUnreadable)
            continue;
        ++files;
        if (source->m_archive)
            bytes += source->size;
        else if (source->m_status == Status::Configuration)
            bytes += QFileInfo(source->m_location).size();
    }
    if (!d->measuring.isAtEnd())
        return false;
    d->totalFiles = files;
    d->totalBytes = bytes;
    return true;
}

ConfigCollector::Progress ConfigCollector::progress() const noexcept
{
    Progress progress = d->done;
    const auto left = [this](qint64 total, qint64 done) {
        return total < 0 ? -1 : d->walk.isAtEnd() ? 0 : std::max<qint64>(total - done, 0);
    };
    progress.filesLeft = left(d->totalFiles, progress.files);
    progress.bytesLeft = left(d->totalBytes, progress.bytes);
    return progress;
}

bool ConfigCollector::wasStopped() const noexcept
{
    return !d->walk.isAtEnd() && d->options.stop != nullptr && *d->options.stop;
}

} // namespace vn
