// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ZipDecoder_p.h"

#include "base/LateLibrary_p.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <optional>

#include <archive.h>
#include <archive_entry.h>

namespace vn {

namespace internal {

namespace {

constexpr int kWindowSize = 64 * 1024;

// libarchive looks for the end of the directory in as many bytes; our part of the view is no
// smaller, so that it need not read from the file for that.
constexpr int kSearchedSize = 16 * 1024;

constexpr int kFirstPassSize = 64;
constexpr int kPassGrowth = 8;
// Passing over an entry costs about a tenth of a new pass.
constexpr int kMostPassedOver = 8;

// Memory is taken as data comes where an entry says that it is larger than this.
constexpr std::size_t kTrustedSize = 16 * 1024 * 1024;

/** What we call of libarchive. */
struct Libarchive
{
    LateLibrary library{VANTERO_LIBARCHIVE};
    VN_LATE_FUNCTION(archive_errno);
    VN_LATE_FUNCTION(archive_error_string);
    VN_LATE_FUNCTION(archive_read_add_passphrase);
    VN_LATE_FUNCTION(archive_read_data);
    VN_LATE_FUNCTION(archive_read_free);
    VN_LATE_FUNCTION(archive_read_new);
    VN_LATE_FUNCTION(archive_read_next_header);
    VN_LATE_FUNCTION(archive_read_open1);
    VN_LATE_FUNCTION(archive_read_set_callback_data);
    VN_LATE_FUNCTION(archive_read_set_passphrase_callback);
    VN_LATE_FUNCTION(archive_read_set_read_callback);
    VN_LATE_FUNCTION(archive_read_set_seek_callback);
    VN_LATE_FUNCTION(archive_read_set_skip_callback);
    VN_LATE_FUNCTION(archive_read_support_format_zip_seekable);
    VN_LATE_FUNCTION(archive_set_error);
};

/** @throws IOException where it cannot be loaded: once a decoder has been made, never again */
const Libarchive &libarchive()
{
    static const Libarchive functions;
    return functions;
}

struct FreeArchive
{
    void operator()(archive *handle) const { libarchive().archive_read_free(handle); }
};

/** Writes numbers one after the other, in the byte order of the format. */
class Record
{
public:
    explicit Record(char *place)
        : m_place(place)
    {
    }
    Record &put16(int value) { return put(static_cast<std::uint16_t>(value)); }
    Record &put32(std::uint32_t value) { return put(value); }
    Record &put64(std::int64_t value) { return put(value); }

private:
    template <typename Number>
    Record &put(Number value)
    {
        qToLittleEndian(value, m_place);
        m_place += sizeof value;
        return *this;
    }

    char *m_place;
};

// The records of a directory as ZipDirectory.cpp describes them, with all sizes and offsets in
// 64 bits.

void appendEntry(QByteArray *directory, const ZipEntry &entry)
{
    constexpr int kVersion = 45; // the first with sizes of 64 bits
    constexpr int kMadeByUnix = 3 << 8;
    constexpr std::uint32_t kRegularFile = 0100644U << 16; // a link would have no content
    constexpr int kField64Size = 24;
    char record[46 + 4 + kField64Size];
    Record(record)
        .put32(0x02014B50)
        .put16(kMadeByUnix | kVersion)
        .put16(kVersion)
        .put16(entry.flags)
        .put16(entry.method)
        .put32(entry.dosTime)
        .put32(entry.crc)
        .put32(0xFFFFFFFF)
        .put32(0xFFFFFFFF)
        .put16(0) // no name: libarchive takes that of the local header
        .put16(4 + kField64Size)
        .put16(0)
        .put16(0)
        .put16(0)
        .put32(kRegularFile)
        .put32(0xFFFFFFFF)
        .put16(0x0001)
        .put16(kField64Size)
        .put64(entry.size)
        .put64(entry.compressedSize)
        .put64(entry.offset);
    directory->append(record, sizeof record);
}

void appendEnd(QByteArray *directory, std::int64_t offset, std::int64_t size, int count)
{
    constexpr int kVersion = 45;
    char record[56 + 20 + 22];
    Record(record)
        .put32(0x06064B50)
        .put64(44)
        .put16(kVersion)
        .put16(kVersion)
        .put32(0)
        .put32(0)
        .put64(count)
        .put64(count)
        .put64(size)
        .put64(offset)
        .put32(0x07064B50)
        .put32(0)
        .put64(offset + size)
        .put32(1)
        .put32(0x06054B50)
        .put16(0)
        .put16(0)
        .put16(0xFFFF)
        .put16(0xFFFF)
        .put32(0xFFFFFFFF)
        .put32(0xFFFFFFFF)
        .put16(0);
    directory->append(record, sizeof record);
}

} // namespace

/** One handle of libarchive, on the file with a directory of some entries. */
class ZipDecoder::Pass
{
public:
    Pass(const ArchiveFile &file, std::int64_t directoryOffset)
        : m_file(file)
        , m_fileEnd(directoryOffset)
        , m_tail(kSearchedSize, '\0')
        , m_window(new char[kWindowSize])
    {
    }

    void add(const ZipEntry &entry)
    {
        appendEntry(&m_tail, entry);
        ++m_count;
    }

    /** Shows @p bytes at @p offset instead of those of the file; in the order of the offsets. */
    void show(std::int64_t offset, const QByteArray &bytes)
    {
        if (!bytes.isNull())
            m_shown.push_back({offset, bytes});
    }

    /** Opens the archive once all entries have been added. */
    void open(const QByteArray &password)
    {
        appendEnd(&m_tail, m_fileEnd + kSearchedSize, m_tail.size() - kSearchedSize, m_count);
        m_handle.reset(libarchive().archive_read_new());
        archive *handle = m_handle.get();
        if (!handle)
            failArchive(ArchiveError::ReadFailed, qt_error_string(ENOMEM));
        check(libarchive().archive_read_support_format_zip_seekable(handle));
        // libarchive takes no zero byte in a password, and no empty one.
        if (!password.isEmpty() && !password.contains('\0')) {
            check(libarchive().archive_read_add_passphrase(handle, password.constData()));
            check(libarchive().archive_read_set_passphrase_callback(handle, this,
                                                                    &Pass::askForAnother));
        }
        check(libarchive().archive_read_set_read_callback(handle, &Pass::read));
        check(libarchive().archive_read_set_seek_callback(handle, &Pass::seek));
        check(libarchive().archive_read_set_skip_callback(handle, &Pass::skip));
        check(libarchive().archive_read_set_callback_data(handle, this));
        check(libarchive().archive_read_open1(handle));
    }

    /** Raises the handle's error where @p result is one; a warning is one, too. */
    void check(la_ssize_t result) const
    {
        if (result >= 0)
            return;
        if (m_readError)
            throw *m_readError;
        const char *text = libarchive().archive_error_string(m_handle.get());
        const int number = libarchive().archive_errno(m_handle.get());
        // Where only this entry is beyond libarchive, and not the archive, it "failed".
        failArchive(m_isPasswordWrong          ? ArchiveError::WrongPassword
                    : result == ARCHIVE_FAILED ? ArchiveError::UnsupportedMethod
                                               : ArchiveError::Damaged,
                    text          ? QString::fromUtf8(text)
                    : number != 0 ? qt_error_string(number)
                                  : QString::fromLatin1("damaged"));
    }

    archive *handle() const { return m_handle.get(); }

    // Places in the order of the entries in the file.
    int next = 0; // of the entry whose header comes next
    int end = 0;

private:
    // The view: the file up to its directory, then m_tail.
    static la_ssize_t read(archive *handle, void *self, const void **data)
    {
        try {
            return static_cast<Pass *>(self)->read(data);
        } catch (const ArchiveException &e) { // must not pass through C
            static_cast<Pass *>(self)->m_readError = e;
            libarchive().archive_set_error(handle, EIO, "%s", "the file cannot be read");
            return ARCHIVE_FATAL;
        } catch (const std::exception &e) {
            libarchive().archive_set_error(handle, EIO, "%s", e.what());
            return ARCHIVE_FATAL;
        }
    }

    la_ssize_t read(const void **data)
    {
        if (m_position >= m_fileEnd) {
            const std::int64_t begin =
                std::min<std::int64_t>(m_position - m_fileEnd, m_tail.size());
            *data = m_tail.constData() + begin;
            m_position = m_fileEnd + m_tail.size();
            return static_cast<la_ssize_t>(m_tail.size() - begin);
        }
        if (m_position < m_windowBegin || m_position >= m_windowEnd) {
            m_windowBegin = m_windowEnd = m_position; // for the case that reading fails
            m_windowEnd += m_file.read(m_position, m_window.get(),
                                       std::min<std::int64_t>(kWindowSize, m_fileEnd - m_position));
            replaceInWindow();
        }
        *data = m_window.get() + (m_position - m_windowBegin);
        const std::int64_t count = m_windowEnd - m_position;
        m_position = m_windowEnd;
        return static_cast<la_ssize_t>(count);
    }

    void replaceInWindow()
    {
        // No header is longer than so much: its name and extra fields have 16 bits each.
        constexpr std::int64_t kLongest = 1 << 18;
        auto shown = std::lower_bound(
            m_shown.begin(), m_shown.end(), m_windowBegin - kLongest,
            [](const Shown &each, std::int64_t offset) { return each.offset < offset; });
        for (; shown != m_shown.end() && shown->offset < m_windowEnd; ++shown) {
            const std::int64_t first = std::max(shown->offset, m_windowBegin);
            const std::int64_t last = std::min(shown->offset + shown->bytes.size(), m_windowEnd);
            if (first < last)
                std::memcpy(m_window.get() + (first - m_windowBegin),
                            shown->bytes.constData() + (first - shown->offset),
                            static_cast<std::size_t>(last - first));
        }
    }

    /** Called where the password turns out not to be that of an entry. */
    static const char *askForAnother(archive *, void *self)
    {
        static_cast<Pass *>(self)->m_isPasswordWrong = true;
        return nullptr;
    }

    static la_int64_t seek(archive *, void *self, la_int64_t offset, int whence)
    {
        auto *pass = static_cast<Pass *>(self);
        const std::int64_t size = pass->m_fileEnd + pass->m_tail.size();
        const std::int64_t base = whence == SEEK_CUR   ? pass->m_position
                                  : whence == SEEK_END ? size
                                                       : 0;
        pass->m_position = std::clamp<std::int64_t>(base + offset, 0, size);
        return pass->m_position;
    }

    static la_int64_t skip(archive *, void *self, la_int64_t count)
    {
        auto *pass = static_cast<Pass *>(self);
        const std::int64_t left = pass->m_fileEnd + pass->m_tail.size() - pass->m_position;
        const std::int64_t skipped = std::min<std::int64_t>(count, left);
        pass->m_position += skipped;
        return skipped;
    }

    struct Shown
    {
        std::int64_t offset;
        QByteArray bytes;
    };

    const ArchiveFile &m_file;
    std::int64_t m_fileEnd;
    QByteArray m_tail;
    std::vector<Shown> m_shown;
    int m_count = 0;
    std::int64_t m_position = 0;
    std::unique_ptr<char[]> m_window;
    std::int64_t m_windowBegin = 0;
    std::int64_t m_windowEnd = 0;
    std::optional<ArchiveException> m_readError;
    bool m_isPasswordWrong = false;
    std::unique_ptr<archive, FreeArchive> m_handle; // goes first: it calls the functions above
};

void EntryContent::clear()
{
    m_size = 0;
    if (m_capacity > kTrustedSize) {
        m_data.reset();
        m_capacity = 0;
    }
}

void EntryContent::reserve(std::size_t capacity)
{
    if (capacity <= m_capacity)
        return;
    std::unique_ptr<char[]> data(new char[capacity]);
    if (m_size > 0)
        std::memcpy(data.get(), m_data.get(), m_size);
    m_data = std::move(data);
    m_capacity = capacity;
}

ZipDecoder::ZipDecoder(const ArchiveFile &file, const ZipDirectory &directory,
                       const QByteArray &password)
    : m_file(file)
    , m_directory(directory)
    , m_password(password)
    , m_order(directory.entries().size())
    , m_positions(directory.entries().size())
    , m_passSize(kFirstPassSize / kPassGrowth)
{
    try {
        (void)libarchive();
    } catch (const IOException &e) {
        failArchive(ArchiveError::CannotBeOpened, e.message());
    }
    const auto &entries = directory.entries();
    std::iota(m_order.begin(), m_order.end(), 0);
    std::stable_sort(m_order.begin(), m_order.end(), [&](int a, int b) {
        return entries[static_cast<std::size_t>(a)].offset <
               entries[static_cast<std::size_t>(b)].offset;
    });
    for (std::size_t i = 0; i < m_order.size(); ++i)
        m_positions[static_cast<std::size_t>(m_order[i])] = static_cast<int>(i);
}

ZipDecoder::~ZipDecoder() = default;

void ZipDecoder::decode(int index, EntryContent *content)
{
    try {
        decodeOnce(index, content);
    } catch (const ArchiveException &) {
        const ZipEntry &entry = m_directory.entries()[static_cast<std::size_t>(index)];
        if (m_looksForPadding || withoutPadding(entry).isNull())
            throw;
        m_looksForPadding = true; // in all entries, as whoever has padded one will have others
        decodeOnce(index, content);
    }
}

/**
 * The local header of @p entry without padding, where it has any: null otherwise. Programs that
 * align data put up to three bytes behind the extra fields, too few for one, which libarchive
 * refuses; here they go to the end of the name, which nobody reads.
 */
QByteArray ZipDecoder::withoutPadding(const ZipEntry &entry) const
{
    // Local file header: OFFSET SIZE DESCRIPTION
    //   26  2  size of the name, which follows
    //   28  2  size of the extra fields, which follow it
    constexpr int kHeaderSize = 30;
    constexpr int kMaxTextSize = 0xFFFF;
    QByteArray header(kHeaderSize, Qt::Uninitialized);
    if (m_file.read(entry.offset, header.data(), kHeaderSize) != kHeaderSize)
        return QByteArray();
    const int nameSize = qFromLittleEndian<std::uint16_t>(header.constData() + 26);
    const int extraSize = qFromLittleEndian<std::uint16_t>(header.constData() + 28);
    QByteArray rest(nameSize + extraSize, Qt::Uninitialized);
    if (m_file.read(entry.offset + kHeaderSize, rest.data(), rest.size()) != rest.size())
        return QByteArray();
    int padding = extraSize;
    while (padding >= 4) {
        const int size =
            4 + qFromLittleEndian<std::uint16_t>(rest.constData() + rest.size() - padding + 2);
        if (size > padding)
            return QByteArray();
        padding -= size;
    }
    if (padding == 0 || nameSize + padding > kMaxTextSize)
        return QByteArray();
    rest.chop(padding);
    rest.insert(nameSize, QByteArray(padding, '_'));
    char sizes[4];
    Record(sizes).put16(nameSize + padding).put16(extraSize - padding);
    return header.replace(26, sizeof sizes, sizes, sizeof sizes) + rest;
}

void ZipDecoder::decodeOnce(int index, EntryContent *content)
{
    const ZipEntry &entry = m_directory.entries()[static_cast<std::size_t>(index)];
    const int position = m_positions[static_cast<std::size_t>(index)];
    const auto size = static_cast<std::size_t>(entry.size);
    content->clear();
    m_unpackedSize = 0;
    try {
        Pass &pass = passAt(position);
        archive_entry *header = nullptr;
        const int found = libarchive().archive_read_next_header(pass.handle(), &header);
        ++pass.next;
        if (found == ARCHIVE_EOF)
            failArchive(ArchiveError::Damaged, QString::fromLatin1("not where the directory says"));
        // In a locale without the letters of its name every entry brings a warning.
        if (found == ARCHIVE_WARN)
            checkLocalHeader(entry);
        else
            pass.check(found);

        // One byte more than there should be: only the read past the end tells of some errors.
        content->reserve(std::min(size, kTrustedSize) + 1);
        for (;;) {
            const std::size_t room = content->m_capacity - content->m_size;
            const la_ssize_t count = libarchive().archive_read_data(
                pass.handle(), content->m_data.get() + content->m_size, room);
            if (count < 0) // which it tells instead of what it has unpacked
                m_unpackedSize += static_cast<std::int64_t>(std::min(room, size - content->m_size));
            pass.check(count);
            if (count == 0)
                break;
            content->m_size += static_cast<std::size_t>(count);
            m_unpackedSize += count;
            if (content->m_size > size)
                failArchive(ArchiveError::Damaged,
                            QStringLiteral("more than the %1 bytes of the directory").arg(size));
            if (content->m_size == content->m_capacity)
                content->reserve(std::min(2 * content->m_capacity, size + 1));
        }
        if (content->m_size != size)
            failArchive(ArchiveError::Damaged,
                        QStringLiteral("%1 bytes where the directory says %2")
                            .arg(content->m_size)
                            .arg(size));
        // libarchive leaves out the check where there is no data.
        if (size == 0 && entry.crc != 0)
            failArchive(ArchiveError::Damaged, QString::fromLatin1("the checksum is wrong"));
    } catch (...) {
        content->clear();
        m_pass.reset(); // libarchive says of few errors how to go on after them
        m_passSize = 0;
        throw;
    }
}

/** The pass whose next entry is the one at @p position. */
ZipDecoder::Pass &ZipDecoder::passAt(int position)
{
    if (m_pass && position >= m_pass->next && position < m_pass->end &&
        position - m_pass->next <= kMostPassedOver) {
        int result = ARCHIVE_OK;
        for (; m_pass->next < position && result >= ARCHIVE_WARN; ++m_pass->next) {
            archive_entry *header = nullptr;
            result = libarchive().archive_read_next_header(m_pass->handle(), &header);
        }
        if (m_pass->next == position && result >= ARCHIVE_WARN && result != ARCHIVE_EOF)
            return *m_pass;
    }

    // In sequence passes grow; elsewhere one entry is all that is known to be wanted.
    const auto &entries = m_directory.entries();
    const int count = static_cast<int>(m_order.size());
    m_passSize = position == m_passEnd ? std::min(m_passSize * kPassGrowth, count) : 1;
    m_passSize = std::max(m_passSize, 1);
    m_pass = std::make_unique<Pass>(m_file, m_directory.offset());
    m_pass->next = position;
    std::int64_t offset = -1;
    int end = position;
    for (; end < count && end - position < m_passSize; ++end) {
        const ZipEntry &entry =
            entries[static_cast<std::size_t>(m_order[static_cast<std::size_t>(end)])];
        if (entry.offset == offset)
            break; // libarchive knows one entry at a place
        offset = entry.offset;
        m_pass->add(entry);
        if (m_looksForPadding)
            m_pass->show(entry.offset, withoutPadding(entry));
    }
    m_pass->end = m_passEnd = end;
    m_pass->open(m_password);
    return *m_pass;
}

/** Raises an error where the entry's local header contradicts the directory, as libarchive does by
 * a warning. */
void ZipDecoder::checkLocalHeader(const ZipEntry &entry) const
{
    // Local file header: OFFSET SIZE DESCRIPTION
    //   14  4  crc-32
    //   18  4  compressed size
    //   22  4  uncompressed size
    // each 0 where it follows the data, 0xFFFFFFFF where it is in a zip64 field
    constexpr int kHeaderSize = 30;
    char header[kHeaderSize];
    const bool isComplete = m_file.read(entry.offset, header, kHeaderSize) == kHeaderSize;
    const auto agrees = [&](int place, std::int64_t expected) {
        const auto value = qFromLittleEndian<std::uint32_t>(header + place);
        return value == 0 || value == expected;
    };
    const auto sizeAgrees = [&](int place, std::int64_t expected) {
        return qFromLittleEndian<std::uint32_t>(header + place) == 0xFFFFFFFF ||
               agrees(place, expected);
    };
    if (!isComplete || !agrees(14, entry.crc) || !sizeAgrees(18, entry.compressedSize) ||
        !sizeAgrees(22, entry.size))
        failArchive(ArchiveError::Damaged,
                    QString::fromLatin1("the entry contradicts the directory"));
}

} // namespace internal

} // namespace vn
