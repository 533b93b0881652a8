// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ZipDirectory_p.h"

#include "base/Utf8_p.h"

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cstring>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace vn {

namespace internal {

namespace {

// End of central directory record: OFFSET SIZE DESCRIPTION
//    0  4  signature
//    4  2  number of this disk
//    6  2  disk where the directory begins
//    8  2  entries on this disk
//   10  2  entries
//   12  4  size of the directory
//   16  4  offset of the directory
//   20  2  size of the comment, which follows
constexpr char kEndSignature[] = "PK\5\6";
constexpr int kEndSize = 22;
constexpr int kMaxCommentSize = 0xFFFF;

// Zip64 end of central directory locator, right before the record above: OFFSET SIZE DESCRIPTION
//    0  4  signature
//    4  4  disk of the zip64 end of central directory record
//    8  8  its offset
//   16  4  number of disks
constexpr char kLocatorSignature[] = "PK\6\7";
constexpr int kLocatorSize = 20;

// Zip64 end of central directory record: OFFSET SIZE DESCRIPTION
//    0  4  signature
//    4  8  size of the rest
//   12  4  versions
//   16  4  number of this disk
//   20  4  disk where the directory begins
//   24  8  entries on this disk
//   32  8  entries
//   40  8  size of the directory
//   48  8  offset of the directory
constexpr char kEnd64Signature[] = "PK\6\6";
constexpr int kEnd64Size = 56;

// Central file header: OFFSET SIZE DESCRIPTION
//    0  4  signature
//    4  4  versions
//    8  2  flags
//   10  2  compression method
//   12  4  time and date
//   16  4  crc-32
//   20  4  compressed size
//   24  4  uncompressed size
//   28  2  size of the name, which follows
//   30  2  size of the extra fields, which follow it
//   32  2  size of the comment, which follows them
//   34  2  disk where the entry begins
//   36  6  attributes
//   42  4  offset of the local header
constexpr char kRecordSignature[] = "PK\1\2";
constexpr int kRecordSize = 46;
constexpr char kSignatureSignature[] = "PK\5\5"; // a digital signature after the last header

constexpr char kLocalSignature[] = "PK\3\4";
constexpr char kSplitSignature[] = "PK\7\10"; // begins the first of several parts
constexpr int kLocalHeaderSize = 30;

constexpr std::uint16_t kUtf8Flag = 0x0800;
constexpr std::uint16_t kZip64Field = 0x0001;       // what does not fit the 32-bit fields
constexpr std::uint16_t kUnicodePathField = 0x7075; // the name in UTF-8

constexpr std::uint32_t kSee64 = 0xFFFFFFFF; // the value is in the zip64 field

// The directory is held in memory while it is read.
constexpr std::int64_t kMaxDirectorySize = 256 * 1024 * 1024;

std::uint16_t get16(const char *data)
{
    return qFromLittleEndian<std::uint16_t>(data);
}

std::uint32_t get32(const char *data)
{
    return qFromLittleEndian<std::uint32_t>(data);
}

std::uint64_t get64(const char *data)
{
    return qFromLittleEndian<std::uint64_t>(data);
}

/** @p signature ends with a zero of its own. */
bool hasSignature(const char *data, const char (&signature)[5])
{
    return std::memcmp(data, signature, 4) == 0;
}

[[noreturn]] void fail(ArchiveError error, const char *reason)
{
    failArchive(error, QString::fromLatin1(reason));
}

[[noreturn]] void failCount(int maxEntries)
{
    failArchive(ArchiveError::OverEntryCountLimit,
                QStringLiteral("more than the limit of %1 entries").arg(maxEntries));
}

/** Where the directory is, as an end record says it. */
struct Location
{
    std::int64_t offset = 0; // in the file
    std::int64_t size = 0;
    std::int64_t base = 0; // what every offset in the archive is short of
    std::uint64_t count = 0;
    bool isCount64 = false; // otherwise only its low 16 bits are known
};

/** Finds the directory of an archive. */
class Locator
{
public:
    explicit Locator(const ArchiveFile &file)
        : m_file(file)
        , m_tailOffset(
              std::max<std::int64_t>(0, file.size() - kMaxCommentSize - kEndSize - kLocatorSize))
        , m_tail(static_cast<int>(file.size() - m_tailOffset), Qt::Uninitialized)
    {
        m_tail.truncate(static_cast<int>(m_file.read(m_tailOffset, m_tail.data(), m_tail.size())));
    }

    Location find()
    {
        // The record may stand inside an archive that is a comment or an entry of another one, so
        // the one whose offsets are those of this file goes first, then the last one. Bytes after
        // the comment are no reason to refuse an archive.
        std::optional<Location> shifted;
        for (int i = m_tail.size() - kEndSize; i >= 0; --i) {
            if (!hasSignature(m_tail.constData() + i, kEndSignature))
                continue;
            const auto location = read(i);
            if (location && location->base == 0)
                return *location;
            if (location && !shifted)
                shifted = location;
        }
        char start[4];
        const bool isArchiveAtStart = m_file.read(0, start, sizeof start) == sizeof start &&
                                      hasSignature(start, kLocalSignature);
        const bool isFirstPart = m_file.read(0, start, sizeof start) == sizeof start &&
                                 hasSignature(start, kSplitSignature);
        if (!shifted && (m_isSplit || isFirstPart))
            fail(ArchiveError::Split, "one part of a split archive");
        if (!shifted)
            fail(isArchiveAtStart ? ArchiveError::Truncated : ArchiveError::NotAnArchive,
                 "not a zip archive, or cut off: it has no directory");
        // Something may stand before an archive, such as a program that unpacks it. But where an
        // archive begins the file, the directory is that of an archive within it.
        if (isArchiveAtStart)
            fail(ArchiveError::Truncated, "cut off: its directory is missing");
        return *shifted;
    }

private:
    /** The directory that the end record at @p place of the tail tells of, if it does. */
    std::optional<Location> read(int place)
    {
        const char *record = m_tail.constData() + place;
        if (place + kEndSize + get16(record + 20) > m_tail.size())
            return std::nullopt; // cut off within the comment
        Location location;
        std::int64_t end = m_tailOffset + place; // what the directory lies before
        std::uint64_t size = get32(record + 12);
        std::uint64_t offset = get32(record + 16);
        location.count = get16(record + 10);
        std::uint64_t countHere = get16(record + 8);
        std::uint32_t disk = get16(record + 4);
        std::uint32_t directoryDisk = get16(record + 6);

        char record64[kEnd64Size];
        if (const auto offset64 = findEnd64(place, record64)) {
            end = *offset64;
            disk = get32(record64 + 16);
            directoryDisk = get32(record64 + 20);
            countHere = get64(record64 + 24);
            location.count = get64(record64 + 32);
            location.isCount64 = true;
            size = get64(record64 + 40);
            offset = get64(record64 + 48);
        }
        const auto limit = static_cast<std::uint64_t>(end);
        // In one of several parts, the disks are counted from 0.
        m_isSplit = m_isSplit || (disk != 0 && disk < 0xFFFF && directoryDisk <= disk);
        if (disk != 0 || directoryDisk != 0 || countHere != location.count || offset > limit ||
            size > limit - offset)
            return std::nullopt;
        location.size = static_cast<std::int64_t>(size);
        location.offset = static_cast<std::int64_t>(offset);
        if (isDirectory(location.offset, location.size))
            return location;
        location.base = end - location.size - location.offset;
        location.offset += location.base;
        if (isDirectory(location.offset, location.size))
            return location;
        return std::nullopt;
    }

    /** Reads the zip64 end record that belongs to the end record at @p place, and returns its
     * offset; nothing when there is none. */
    std::optional<std::int64_t> findEnd64(int place, char (&record)[kEnd64Size]) const
    {
        if (place < kLocatorSize)
            return std::nullopt;
        const char *locator = m_tail.constData() + (place - kLocatorSize);
        if (!hasSignature(locator, kLocatorSignature))
            return std::nullopt;
        const auto locatorOffset = static_cast<std::uint64_t>(m_tailOffset + place - kLocatorSize);
        // Where something stands before the archive, its offset is wrong, but its place is known.
        for (const std::uint64_t offset : {get64(locator + 8), locatorOffset - kEnd64Size}) {
            if (offset > locatorOffset || locatorOffset - offset < kEnd64Size)
                continue;
            const auto begin = static_cast<std::int64_t>(offset);
            if (m_file.read(begin, record, kEnd64Size) == kEnd64Size &&
                hasSignature(record, kEnd64Signature))
                return begin;
        }
        return std::nullopt;
    }

    bool isDirectory(std::int64_t offset, std::int64_t size) const
    {
        if (size == 0)
            return true;
        char signature[4];
        return size >= kRecordSize &&
               m_file.read(offset, signature, sizeof signature) == sizeof signature &&
               hasSignature(signature, kRecordSignature);
    }

    const ArchiveFile &m_file;
    std::int64_t m_tailOffset;
    QByteArray m_tail;
    bool m_isSplit = false; // an end record tells of other parts
};

/** Takes what @p field, the data of a zip64 field, holds for those of the values that refer to it,
 * in this order. */
void resolve64(const QByteArray &field, std::initializer_list<std::uint64_t *> values)
{
    int place = 0;
    for (std::uint64_t *value : values) {
        if (*value != kSee64)
            continue;
        if (place + 8 > field.size())
            return; // then 0xFFFFFFFF is meant, or the entry is damaged, which reading it shows
        *value = get64(field.constData() + place);
        place += 8;
    }
}

/** The data of the extra field @p id among @p extra; null when there is none. Shares memory with
 * @p extra. */
QByteArray extraField(const char *extra, int size, std::uint16_t id)
{
    while (size >= 4) {
        const int length = get16(extra + 2);
        if (length > size - 4)
            break;
        if (get16(extra) == id)
            return QByteArray::fromRawData(extra + 4, length);
        extra += 4 + length;
        size -= 4 + length;
    }
    return QByteArray();
}

/** The checksum of the zip format, for the few bytes of a name. */
std::uint32_t crc32(const QByteArray &bytes)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) ? 0xEDB88320 : 0);
    }
    return ~crc;
}

/** The text of all bytes, a byte order mark included, which QString::fromUtf8() drops; that of a
 * QByteArray would end at a zero byte, too. */
QString fromWholeUtf8(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes.constData(), bytes.size());
    return bytes.startsWith(kByteOrderMark) ? QChar(QChar::ByteOrderMark) + text : text;
}

QString nameOf(const QByteArray &name, std::uint16_t flags, const char *extra, int extraSize)
{
    // version 1, checksum of the name in the header, name in UTF-8
    constexpr int kUnicodePathHeaderSize = 5;
    const QByteArray path = extraField(extra, extraSize, kUnicodePathField);
    if (path.size() > kUnicodePathHeaderSize && path.at(0) == 1 &&
        get32(path.constData() + 1) == crc32(name))
        return zipEntryName(path.mid(kUnicodePathHeaderSize), true);
    return zipEntryName(name, flags & kUtf8Flag);
}

/** The result of open(2), without waiting for the writer of a pipe. */
int openForReading(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.contains('\0')) {
        errno = EINVAL;
        return -1;
    }
    return retried([&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); });
}

std::int64_t toOffset(std::uint64_t value)
{
    // What no file can hold shows when the entry is read.
    return static_cast<std::int64_t>(std::min(value, std::uint64_t(1) << 62));
}

} // namespace

void failArchive(ArchiveError error, const QString &reason)
{
    throw ArchiveException(QString(), QString(), error, reason);
}

ArchiveFile::ArchiveFile(const QString &path)
    : m_descriptor(openForReading(path))
{
    struct stat status;
    if (!m_descriptor.isValid() || ::fstat(m_descriptor.get(), &status) != 0)
        failArchive(ArchiveError::CannotBeOpened, qt_error_string(errno));
    if (!S_ISREG(status.st_mode))
        fail(ArchiveError::CannotBeOpened, "not a regular file");
    m_size = status.st_size;
}

std::int64_t ArchiveFile::read(std::int64_t offset, char *data, std::int64_t size) const
{
    std::int64_t done = 0;
    while (done < size) {
        const ssize_t count = retried([&] {
            return ::pread(m_descriptor.get(), data + done, static_cast<std::size_t>(size - done),
                           offset + done);
        });
        if (count < 0)
            failArchive(ArchiveError::ReadFailed, qt_error_string(errno));
        if (count == 0)
            break;
        done += count;
    }
    return done;
}

ZipDirectory::ZipDirectory(const ArchiveFile &file, int maxEntries)
{
    const Location location = Locator(file).find();
    const std::int64_t mostPossible = location.size / kRecordSize;
    if (location.size > kMaxDirectorySize)
        fail(ArchiveError::OverDirectorySizeLimit, "the directory is too large");
    if (location.isCount64 && location.count > static_cast<std::uint64_t>(maxEntries))
        failCount(maxEntries);

    QByteArray directory(static_cast<int>(location.size), Qt::Uninitialized);
    if (file.read(location.offset, directory.data(), location.size) != location.size)
        fail(ArchiveError::Truncated, "the directory is cut off");
    m_offset = location.offset;
    m_entries.reserve(static_cast<std::size_t>(
        std::min<std::uint64_t>(location.count, static_cast<std::uint64_t>(mostPossible))));

    for (const char *p = directory.constData(), *const end = p + directory.size(); p != end;) {
        const auto left = end - p;
        if (left >= 4 && hasSignature(p, kSignatureSignature))
            break;
        if (left < kRecordSize || !hasSignature(p, kRecordSignature))
            fail(ArchiveError::Damaged, "the directory is damaged");
        const int nameSize = get16(p + 28);
        const int extraSize = get16(p + 30);
        const int recordSize = kRecordSize + nameSize + extraSize + get16(p + 32);
        if (left < recordSize)
            fail(ArchiveError::Damaged, "the directory is damaged");
        if (m_entries.size() == static_cast<std::size_t>(maxEntries))
            failCount(maxEntries);

        const char *extra = p + kRecordSize + nameSize;
        std::uint64_t size = get32(p + 24);
        std::uint64_t compressedSize = get32(p + 20);
        std::uint64_t offset = get32(p + 42);
        resolve64(extraField(extra, extraSize, kZip64Field), {&size, &compressedSize, &offset});

        ZipEntry entry;
        entry.flags = get16(p + 8);
        entry.method = get16(p + 10);
        entry.dosTime = get32(p + 12);
        entry.crc = get32(p + 16);
        entry.size = toOffset(size);
        entry.compressedSize = toOffset(compressedSize);
        entry.offset = toOffset(offset) + location.base;
        entry.name = nameOf(QByteArray::fromRawData(p + kRecordSize, nameSize), entry.flags, extra,
                            extraSize);
        m_entries.push_back(std::move(entry));
        p += recordSize;
    }

    const std::uint64_t count = m_entries.size();
    if (location.isCount64 ? count != location.count : (count & 0xFFFF) != location.count)
        failArchive(ArchiveError::Damaged,
                    QStringLiteral("the directory holds %1 entries and should hold %2")
                        .arg(count)
                        .arg(location.count));
    findOverlaps();
}

/** Few bytes that many entries share would unpack to much: of entries that overlap only the last
 * one may be read. */
void ZipDirectory::findOverlaps()
{
    std::vector<ZipEntry *> order;
    order.reserve(m_entries.size());
    for (ZipEntry &entry : m_entries)
        order.push_back(&entry);
    std::stable_sort(order.begin(), order.end(),
                     [](const ZipEntry *a, const ZipEntry *b) { return a->offset < b->offset; });
    for (std::size_t i = 1; i < order.size(); ++i) {
        ZipEntry &entry = *order[i - 1];
        // The name in the local header may be missing.
        const std::int64_t room = order[i]->offset - entry.offset - kLocalHeaderSize;
        entry.reachesIntoNext = entry.compressedSize > room;
    }
}

QString zipEntryName(const QByteArray &name, bool isUtf8)
{
    // The upper half of IBM's code page 437; the lower half is ASCII.
    // clang-format off
    static constexpr char16_t codePage437[128] = {
        0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7,
        0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE, 0x00EC, 0x00C4, 0x00C5,
        0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
        0x00FF, 0x00D6, 0x00DC, 0x00A2, 0x00A3, 0x00A5, 0x20A7, 0x0192,
        0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA, 0x00BA,
        0x00BF, 0x2310, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
        0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x2561, 0x2562, 0x2556,
        0x2555, 0x2563, 0x2551, 0x2557, 0x255D, 0x255C, 0x255B, 0x2510,
        0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x255E, 0x255F,
        0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x2567,
        0x2568, 0x2564, 0x2565, 0x2559, 0x2558, 0x2552, 0x2553, 0x256B,
        0x256A, 0x2518, 0x250C, 0x2588, 0x2584, 0x258C, 0x2590, 0x2580,
        0x03B1, 0x00DF, 0x0393, 0x03C0, 0x03A3, 0x03C3, 0x00B5, 0x03C4,
        0x03A6, 0x0398, 0x03A9, 0x03B4, 0x221E, 0x03C6, 0x03B5, 0x2229,
        0x2261, 0x00B1, 0x2265, 0x2264, 0x2320, 0x2321, 0x00F7, 0x2248,
        0x00B0, 0x2219, 0x00B7, 0x221A, 0x207F, 0x00B2, 0x25A0, 0x00A0,
    };
    // clang-format on
    if (isUtf8 || fromWellFormedUtf8(name))
        return fromWholeUtf8(name);
    QString result(name.size(), Qt::Uninitialized);
    std::transform(name.begin(), name.end(), result.begin(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return QChar(code < 0x80 ? char16_t(code) : codePage437[code - 0x80]);
    });
    return result;
}

} // namespace internal

} // namespace vn
