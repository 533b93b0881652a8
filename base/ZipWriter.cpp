// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ZipWriter.h"

#include "base/DeviceIo_p.h"
#include "base/Exceptions.h"
#include "base/LateLibrary_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QIODevice>

#include <deque>
#include <limits>

#include <zip.h>

namespace vn {

namespace {

// An archive without entries is nothing but the end of its directory, which libzip never writes
// alone.
constexpr char kEmptyArchive[] = "PK\5\6\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0";
constexpr int kEmptyArchiveSize = 22;
static_assert(sizeof kEmptyArchive == kEmptyArchiveSize);

// Names and comments are counted by 16 bits.
constexpr int kMaxTextSize = std::numeric_limits<zip_uint16_t>::max();

/** What we call of libzip. */
struct Libzip
{
    internal::LateLibrary library{VANTERO_LIBZIP};
    VN_LATE_FUNCTION(zip_close);
    VN_LATE_FUNCTION(zip_delete);
    VN_LATE_FUNCTION(zip_discard);
    VN_LATE_FUNCTION(zip_error_fini);
    VN_LATE_FUNCTION(zip_error_init);
    VN_LATE_FUNCTION(zip_error_strerror);
    VN_LATE_FUNCTION(zip_file_add);
    VN_LATE_FUNCTION(zip_file_set_comment);
    VN_LATE_FUNCTION(zip_file_set_dostime);
    VN_LATE_FUNCTION(zip_file_set_encryption);
    VN_LATE_FUNCTION(zip_get_error);
    VN_LATE_FUNCTION(zip_open_from_source);
    VN_LATE_FUNCTION(zip_source_buffer);
    VN_LATE_FUNCTION(zip_source_buffer_create);
    VN_LATE_FUNCTION(zip_source_close);
    VN_LATE_FUNCTION(zip_source_error);
    VN_LATE_FUNCTION(zip_source_free);
    VN_LATE_FUNCTION(zip_source_keep);
    VN_LATE_FUNCTION(zip_source_open);
    VN_LATE_FUNCTION(zip_source_read);
};

/** @throws IOException where it cannot be loaded: once an archive has been opened, never again */
const Libzip &libzip()
{
    static const Libzip functions;
    return functions;
}

struct DiscardArchive
{
    void operator()(zip_t *archive) const { libzip().zip_discard(archive); }
};
using ArchiveHandle = std::unique_ptr<zip_t, DiscardArchive>;

struct FreeSource
{
    void operator()(zip_source_t *source) const { libzip().zip_source_free(source); }
};
using SourceHandle = std::unique_ptr<zip_source_t, FreeSource>;

QString errorText(const zip_error_t *error)
{
    // zip_error_strerror() keeps its text in the error.
    zip_error_t copy = *error;
    copy.str = nullptr;
    const QString text = QString::fromUtf8(libzip().zip_error_strerror(&copy));
    libzip().zip_error_fini(&copy);
    return text;
}

/** A date and time as the archive holds them: local time in steps of two seconds (the FAT file
 * system's form), from 1980 to 2107. What lies outside becomes the nearest that fits. */
struct DosTime
{
    zip_uint16_t time;
    zip_uint16_t date;
};

DosTime toDosTime(const QDateTime &dateTime)
{
    const QDateTime local = dateTime.toLocalTime();
    const QDate date = local.date();
    const QTime time = local.time();
    if (!local.isValid() || date.year() < 1980)
        return {0, (1 << 5) | 1};
    if (date.year() > 2107)
        return {(23 << 11) | (59 << 5) | 29, (127 << 9) | (12 << 5) | 31};
    return {static_cast<zip_uint16_t>(time.hour() << 11 | time.minute() << 5 | time.second() / 2),
            static_cast<zip_uint16_t>((date.year() - 1980) << 9 | date.month() << 5 | date.day())};
}

} // namespace

class Q_DECL_HIDDEN ZipWriter::Private
{
public:
    [[noreturn]] void fail(const QString &reason)
    {
        failure = reason;
        throw IOException(path + QLatin1String(": ") + reason);
    }
    [[noreturn]] void failEntry(const QString &entry, const QString &reason)
    {
        fail(entry + QLatin1String(": ") + reason);
    }

    void reset()
    {
        archive.reset();
        output.reset();
        contents.clear();
        entryCount = 0;
        file.reset();
    }

    void write();
    void writeEntries();

    QString path;
    QString failure; // the last one
    QByteArray password;
    // libzip reads the contents when it closes the archive; they must outlive it.
    std::deque<QByteArray> contents;
    int entryCount = 0;
    SourceHandle output;
    ArchiveHandle archive;
    std::unique_ptr<AtomicFile> file;
    AtomicFile::Losses losses;
};

ZipWriter::ZipWriter(const QString &path, const QByteArray &password)
    : d(std::make_unique<Private>())
{
    d->path = path;
    d->password = password;
}

ZipWriter::~ZipWriter() = default;

void ZipWriter::open()
{
    begin(false);
}

void ZipWriter::openNew()
{
    begin(true);
}

void ZipWriter::begin(bool isNew)
{
    if (d->archive)
        d->fail(QStringLiteral("already open"));
    if (d->password.contains('\0'))
        d->fail(QStringLiteral("a password cannot hold a zero byte"));
    try {
        (void)libzip();
    } catch (const IOException &e) {
        d->fail(e.message());
    }
    // A device or a pipe would be replaced by a file.
    const QFileInfo existing(d->path);
    if (existing.exists() && !existing.isFile())
        d->fail(QStringLiteral("not a regular file"));

    auto file = std::make_unique<AtomicFile>(d->path);
    try {
        isNew ? file->openNew() : file->open();
    } catch (const FileException &e) {
        d->fail(e.reason());
    }

    zip_error_t error;
    libzip().zip_error_init(&error);
    SourceHandle output(libzip().zip_source_buffer_create(nullptr, 0, 0, &error));
    ArchiveHandle archive;
    if (output) {
        archive.reset(libzip().zip_open_from_source(output.get(), ZIP_TRUNCATE, &error));
        if (archive) // which has taken the reference that was ours
            libzip().zip_source_keep(output.get());
    }
    const QString reason = archive ? QString() : errorText(&error);
    libzip().zip_error_fini(&error);
    if (!archive)
        d->fail(reason);
    d->output = std::move(output);
    d->archive = std::move(archive);
    d->file = std::move(file);
    d->losses = {};
}

void ZipWriter::appendFile(QIODevice *device, const QString &entryName, const QString &comment,
                           const QDateTime &dateTime)
{
    if (!d->archive)
        d->fail(QStringLiteral("not open"));
    const QByteArray name = entryName.toUtf8();
    const QByteArray remark = comment.toUtf8();
    if (name.isEmpty() || name.size() > kMaxTextSize || name.contains('\0') || name.endsWith('/'))
        d->failEntry(entryName, QStringLiteral("no name for an entry"));
    if (remark.size() > kMaxTextSize)
        d->failEntry(entryName, QStringLiteral("the comment is too long"));

    zip_t *archive = d->archive.get();
    d->contents.push_back(internal::readAll(device));
    const QByteArray &content = d->contents.back();
    SourceHandle source(libzip().zip_source_buffer(archive, content.constData(),
                                                   static_cast<zip_uint64_t>(content.size()), 0));
    const zip_int64_t index =
        source ? libzip().zip_file_add(archive, name.constData(), source.get(), ZIP_FL_ENC_UTF_8)
               : -1;
    if (index < 0) {
        source.reset();
        d->contents.pop_back();
        d->failEntry(entryName, errorText(libzip().zip_get_error(archive)));
    }
    source.release(); // the archive has it now

    const auto entry = static_cast<zip_uint64_t>(index);
    const DosTime time = toDosTime(dateTime);
    const bool isDone =
        libzip().zip_file_set_comment(archive, entry, remark.constData(),
                                      static_cast<zip_uint16_t>(remark.size()),
                                      ZIP_FL_ENC_UTF_8) == 0 &&
        libzip().zip_file_set_dostime(archive, entry, time.time, time.date, 0) == 0 &&
        (d->password.isEmpty() || libzip().zip_file_set_encryption(archive, entry, ZIP_EM_AES_256,
                                                                   d->password.constData()) == 0);
    if (!isDone) {
        const QString reason = errorText(libzip().zip_get_error(archive));
        (void)libzip().zip_delete(archive, entry); // the reason above is the one that counts
        d->failEntry(entryName, reason);
    }
    ++d->entryCount;
}

void ZipWriter::close()
{
    if (!d->archive)
        d->fail(QStringLiteral("not open"));
    try {
        d->write();
    } catch (const FileException &e) {
        d->reset();
        d->fail(e.reason());
    } catch (...) {
        d->reset();
        throw;
    }
    d->reset();
}

QString ZipWriter::failure() const
{
    return d->failure;
}

AtomicFile::Losses ZipWriter::losses() const noexcept
{
    return d->losses;
}

/** Writes the archive to its path. */
void ZipWriter::Private::write()
{
    if (entryCount == 0)
        file->write(kEmptyArchive, kEmptyArchiveSize);
    else
        writeEntries();
    file->commit();
    losses = file->losses();
}

/** Has libzip make the archive in memory, and copies it into the file. */
void ZipWriter::Private::writeEntries()
{
    if (libzip().zip_close(archive.get()) != 0)
        fail(errorText(libzip().zip_get_error(archive.get())));
    (void)archive.release(); // freed by closing

    zip_source_t *source = output.get();
    if (libzip().zip_source_open(source) != 0)
        fail(errorText(libzip().zip_source_error(source)));
    char piece[internal::kChunkSize];
    for (;;) {
        const zip_int64_t count = libzip().zip_source_read(source, piece, sizeof piece);
        if (count < 0)
            fail(errorText(libzip().zip_source_error(source)));
        if (count == 0)
            break;
        file->write(piece, count);
    }
    (void)libzip().zip_source_close(source); // only read from
}

} // namespace vn
