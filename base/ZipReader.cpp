// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ZipReader.h"

#include "base/StringUtils.h"
#include "base/ZipDecoder_p.h"
#include "base/ZipDirectory_p.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>

namespace vn {

using internal::ArchiveFile;
using internal::EntryContent;
using internal::ZipDecoder;
using internal::ZipDirectory;
using internal::ZipEntry;

namespace {

// Up to this size, in bytes, any ratio is harmless.
constexpr qint64 kRatioFreeSize = 16 * 1024 * 1024;

/** Finds entries by name, those of one name in turn. No names make it slow. */
class NameIndex
{
public:
    explicit NameIndex(const std::vector<ZipEntry> &entries)
        : m_entries(entries)
        , m_turns(entries.size())
    {
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (!entries[i].isFolder())
                m_order.push_back(static_cast<int>(i));
        std::stable_sort(m_order.begin(), m_order.end(),
                         [this](int a, int b) { return nameOf(a) < nameOf(b); });
    }

    /** The entry called @p name that comes next; -1 when there is none. Folders are none. */
    int next(const QString &name)
    {
        const auto first =
            std::lower_bound(m_order.begin(), m_order.end(), name,
                             [this](int index, const QString &n) { return nameOf(index) < n; });
        const auto last =
            std::upper_bound(first, m_order.end(), name,
                             [this](const QString &n, int index) { return n < nameOf(index); });
        if (first == last)
            return -1;
        std::ptrdiff_t &turn = m_turns[static_cast<std::size_t>(first - m_order.begin())];
        const int index = *(first + turn);
        turn = (turn + 1) % (last - first);
        return index;
    }

private:
    const QString &nameOf(int index) const
    {
        return m_entries[static_cast<std::size_t>(index)].name;
    }

    const std::vector<ZipEntry> &m_entries;
    std::vector<int> m_order;            // sorted by name, those of one name in archive order
    std::vector<std::ptrdiff_t> m_turns; // for the first of each name, whose turn it is
};

/** An archive that has been opened. */
struct OpenArchive
{
    OpenArchive(const QString &path, const QByteArray &password, int maxEntries)
        : file(path)
        , directory(file, maxEntries)
        , decoder(file, directory, password)
        , isCounted(directory.entries().size())
    {
    }

    const ZipEntry &entry(int index) const
    {
        return directory.entries()[static_cast<std::size_t>(index)];
    }

    ArchiveFile file;
    ZipDirectory directory;
    ZipDecoder decoder;
    std::optional<NameIndex> names; // made when an entry is first looked for by its name
    qint64 readSize = 0;            // of all entries read so far
    std::vector<bool> isCounted;    // which entries are in it
};

ArchiveException notOpen(const QString &path)
{
    return ArchiveException(path, QString(), ArchiveError::NotOpen,
                            QString::fromLatin1("not open"));
}

} // namespace

class Q_DECL_HIDDEN ZipReader::Private
{
public:
    enum class State {
        NoEntry, // none chosen
        Chosen,  // not decoded yet
        Decoded,
        Failed
    };

    explicit Private(const QString &name)
        : path(name)
        , whyClosed(notOpen(name))
    {
    }

    void decode();
    void count(qint64 size);
    void checkLimits(const ZipEntry &entry) const;

    /** The entry @p number; null where there is none. */
    const ZipEntry *find(int number) const
    {
        const bool isThere = archive && number >= 0 &&
                             static_cast<std::size_t>(number) < archive->directory.entries().size();
        return isThere ? &archive->entry(number) : nullptr;
    }

    const QString path;
    QByteArray password;
    ArchiveException whyClosed;              // why the archive is not open
    std::optional<ArchiveException> failure; // of the latest operation
    qint64 entrySizeLimit = qint64(256) * 1024 * 1024;
    qint64 archiveSizeLimit = qint64(1024) * 1024 * 1024;
    int entryCountLimit = 1000 * 1000;
    int ratioLimit = 1000;

    std::optional<OpenArchive> archive;
    State state = State::NoEntry;
    int index = -1; // of the entry, where one is chosen
    EntryContent content;
    std::size_t offset = 0; // what has been read of the content
};

/** Decodes the chosen entry.
 * @throws ArchiveException without the names */
void ZipReader::Private::decode()
{
    const ZipEntry &entry = archive->entry(index);
    checkLimits(entry);
    try {
        archive->decoder.decode(index, &content);
        count(entry.size);
    } catch (const ArchiveException &e) {
        count(archive->decoder.unpackedSize()); // damage must not make it free
        ArchiveError error = e.error();
        if (error == ArchiveError::Damaged &&
            entry.compressedSize > archive->directory.offset() - entry.offset)
            error = ArchiveError::Truncated;
        if (!entry.isEncrypted() || error == ArchiveError::WrongPassword)
            internal::failArchive(error, e.reason());
        // One wrong password in 256 passes the check that the format has for it.
        if (error == ArchiveError::Damaged)
            error = ArchiveError::DamagedOrWrongPassword;
        internal::failArchive(error, e.reason() + QLatin1String(", or the password is wrong"));
    }
}

/** Counts that @p size bytes of the entry have been unpacked, where it has not been counted. */
void ZipReader::Private::count(qint64 size)
{
    const auto place = static_cast<std::size_t>(index);
    if (archive->isCounted[place])
        return;
    archive->isCounted[place] = true;
    archive->readSize += size;
}

/** The sizes in the directory are enough to look at, for decoding ends where an entry has more. */
void ZipReader::Private::checkLimits(const ZipEntry &entry) const
{
    if (entry.size > entrySizeLimit)
        internal::failArchive(
            ArchiveError::OverEntrySizeLimit,
            QStringLiteral("more than the limit of %1 bytes").arg(entrySizeLimit));
    if (!archive->isCounted[static_cast<std::size_t>(index)] &&
        entry.size > archiveSizeLimit - archive->readSize)
        internal::failArchive(ArchiveError::OverArchiveSizeLimit,
                              QStringLiteral("more than the limit of %1 bytes for all entries")
                                  .arg(archiveSizeLimit));
    const qint64 leastCompressed = entry.size / ratioLimit + (entry.size % ratioLimit ? 1 : 0);
    if (entry.size > kRatioFreeSize && entry.compressedSize < leastCompressed)
        internal::failArchive(
            ArchiveError::OverRatioLimit,
            QStringLiteral("compressed more than the limit of %1 times").arg(ratioLimit));
    const bool isTruncated = entry.compressedSize > archive->directory.offset() - entry.offset;
    if (entry.reachesIntoNext && !isTruncated)
        internal::failArchive(ArchiveError::OverlappingEntries,
                              QString::fromLatin1("the entry overlaps another one"));
    if (entry.isEncrypted() && password.isEmpty())
        internal::failArchive(ArchiveError::NeedsPassword,
                              QString::fromLatin1("encrypted, and there is no password"));
}

ZipReader::ZipReader(const QString &path, const QByteArray &password, QObject *parent)
    : QIODevice(parent)
    , d(std::make_unique<Private>(path))
{
    d->password = password;
}

ZipReader::~ZipReader() = default;

bool ZipReader::open(OpenMode mode)
{
    if (isOpen())
        return fail(QString(), ArchiveError::NotOpen, QString::fromLatin1("already open"));
    if (mode != ReadOnly && mode != (ReadOnly | Unbuffered))
        return fail(QString(), ArchiveError::NotOpen,
                    QString::fromLatin1("archives can only be opened for reading"));
    try {
        d->archive.emplace(d->path, d->password, d->entryCountLimit);
    } catch (const ArchiveException &e) {
        d->archive.reset();
        return fail(QString(), e.error(), e.reason());
    }
    d->failure.reset();
    d->state = Private::State::NoEntry;
    return QIODevice::open(mode);
}

/** Keeps the error of an operation on the archive, or where it is not null on its @p entry; false.
 */
bool ZipReader::fail(const QString &entry, ArchiveError error, const QString &reason)
{
    d->failure.emplace(d->path, entry, error, reason);
    setErrorString(d->failure->message());
    if (!isOpen() && entry.isNull())
        d->whyClosed = *d->failure;
    return false;
}

ZipReader::Error ZipReader::error() const noexcept
{
    return d->failure ? d->failure->error() : Error::None;
}

ArchiveException ZipReader::exception() const
{
    return d->failure
               ? *d->failure
               : ArchiveException(d->path, QString(), Error::None, QString::fromLatin1("no error"));
}

void ZipReader::close()
{
    if (isOpen())
        QIODevice::close();
    d->whyClosed = notOpen(d->path);
    d->archive.reset();
    d->content.clear();
    d->offset = 0;
    d->state = Private::State::NoEntry;
}

QStringList ZipReader::fileListBySuffix(const QString &suffix)
{
    if (!d->archive)
        throw d->whyClosed;
    QStringList names;
    for (const ZipEntry &entry : d->archive->directory.entries())
        if (!entry.isFolder() && StringUtils::endsWithIgnoreCase(entry.name, suffix))
            names.append(entry.name);
    return names;
}

int ZipReader::entryCount() const noexcept
{
    return d->archive ? static_cast<int>(d->archive->directory.entries().size()) : 0;
}

QString ZipReader::entryName(int index) const
{
    const ZipEntry *entry = d->find(index);
    return entry ? entry->name : QString();
}

qint64 ZipReader::entrySize(int index) const
{
    const ZipEntry *entry = d->find(index);
    return entry ? entry->size : -1;
}

bool ZipReader::openFile(const QString &name)
{
    if (!d->archive)
        return choose(-1, name);
    if (!d->archive->names)
        d->archive->names.emplace(d->archive->directory.entries());
    return choose(d->archive->names->next(name), name);
}

bool ZipReader::openEntry(int index)
{
    const ZipEntry *entry = d->find(index);
    return choose(entry && !entry->isFolder() ? index : -1,
                  entry ? entry->name : QString::number(index));
}

/** Makes the entry @p index the one that the device delivers; a negative one is none, which was
 * asked for as @p name. */
bool ZipReader::choose(int index, const QString &name)
{
    d->content.clear();
    d->offset = 0;
    if (!d->archive)
        return fail(name, ArchiveError::NotOpen, QString::fromLatin1("the archive is not open"));
    QIODevice::open(openMode()); // drops what is left of the entry before
    d->index = index;
    if (index < 0) {
        d->state = Private::State::Failed;
        return fail(name, ArchiveError::NoSuchEntry, QString::fromLatin1("no such entry"));
    }
    d->failure.reset();
    d->state = Private::State::Chosen;
    return true;
}

bool ZipReader::isSequential() const
{
    return true;
}

bool ZipReader::atEnd() const
{
    return d->state != Private::State::Chosen && bytesAvailable() == 0;
}

qint64 ZipReader::bytesAvailable() const
{
    const qint64 left = d->state == Private::State::Chosen
                            ? d->archive->entry(d->index).size
                            : static_cast<qint64>(d->content.size() - d->offset);
    return QIODevice::bytesAvailable() + left;
}

qint64 ZipReader::readData(char *data, qint64 maxSize)
{
    if (d->state == Private::State::NoEntry)
        (void)fail(QString(), ArchiveError::NoSuchEntry,
                   QString::fromLatin1("no entry has been chosen"));
    if (d->state == Private::State::Chosen) {
        try {
            d->decode();
            d->state = Private::State::Decoded;
        } catch (const ArchiveException &e) {
            d->state = Private::State::Failed;
            (void)fail(d->archive->entry(d->index).name, e.error(), e.reason());
        }
    }
    if (d->state != Private::State::Decoded)
        return -1;
    const std::size_t count =
        std::min(static_cast<std::size_t>(maxSize), d->content.size() - d->offset);
    if (count > 0)
        std::memcpy(data, d->content.data() + d->offset, count);
    d->offset += count;
    if (d->offset == d->content.size()) { // a large one is held once, by the reader's user
        d->content.clear();
        d->offset = 0;
    }
    return static_cast<qint64>(count);
}

qint64 ZipReader::writeData(const char *, qint64)
{
    return -1; // never opened for writing
}

qint64 ZipReader::entrySizeLimit() const noexcept
{
    return d->entrySizeLimit;
}

void ZipReader::setEntrySizeLimit(qint64 bytes) noexcept
{
    d->entrySizeLimit = std::max<qint64>(bytes, 0);
}

qint64 ZipReader::archiveSizeLimit() const noexcept
{
    return d->archiveSizeLimit;
}

void ZipReader::setArchiveSizeLimit(qint64 bytes) noexcept
{
    d->archiveSizeLimit = std::max<qint64>(bytes, 0);
}

int ZipReader::entryCountLimit() const noexcept
{
    return d->entryCountLimit;
}

void ZipReader::setEntryCountLimit(int count) noexcept
{
    d->entryCountLimit = std::max(count, 0);
}

int ZipReader::ratioLimit() const noexcept
{
    return d->ratioLimit;
}

void ZipReader::setRatioLimit(int ratio) noexcept
{
    d->ratioLimit = std::max(ratio, 1);
}

} // namespace vn
