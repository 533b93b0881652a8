// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_ZIPDIRECTORY_P_H
#define VN_BASE_ZIPDIRECTORY_P_H

/**
 * @file The central directory of a zip archive: which entries there are, in which order, under
 * which names, where and how large.
 *
 * Read here rather than by libarchive, which sorts the entries by their place, loses names that the
 * locale lacks, and would have to visit every entry in the file to list them.
 * Source: the zip application note 6.3.10, chapter 4.
 */

#include "base/Exceptions.h"
#include "base/FileDescriptor_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>
#include <vector>

namespace vn {

namespace internal {

/** Raises an ArchiveException that names nothing yet: ZipReader knows the names. */
[[noreturn]] void failArchive(ArchiveError error, const QString &reason);

/** A regular file that is read at any place. */
class ArchiveFile
{
public:
    /** @throws ArchiveException with the reason when @p path is no regular file or cannot be
     * opened; never waits for a pipe */
    explicit ArchiveFile(const QString &path);

    std::int64_t size() const { return m_size; }

    /** Reads @p size bytes at @p offset; fewer only where the file ends.
     * @throws ArchiveException when reading fails */
    std::int64_t read(std::int64_t offset, char *data, std::int64_t size) const;

private:
    FileDescriptor m_descriptor;
    std::int64_t m_size = 0;
};

/** One entry, as the directory describes it. */
struct ZipEntry
{
    QString name;
    std::int64_t offset = 0;         // of its local header in the file
    std::int64_t compressedSize = 0; // in bytes, with what encryption adds
    std::int64_t size = 0;           // in bytes, decoded
    std::uint32_t crc = 0;           // of the decoded data; may be 0 with AES
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t dosTime = 0;    // date and time as stored
    bool reachesIntoNext = false; // its data end behind the beginning of the next one in the file

    bool isEncrypted() const { return flags & 0x0001; }
    bool isFolder() const { return name.endsWith(QLatin1Char('/')); }
};

/** The central directory. */
class ZipDirectory
{
public:
    /** Reads the directory of @p file.
     * @throws ArchiveException with the reason when there is none, it contradicts itself, or has
     * more than @p maxEntries entries */
    ZipDirectory(const ArchiveFile &file, int maxEntries);

    /** The entries in the directory's order. */
    const std::vector<ZipEntry> &entries() const { return m_entries; }

    /** The offset of the directory, which all entries lie before. */
    std::int64_t offset() const { return m_offset; }

private:
    void findOverlaps();

    std::vector<ZipEntry> m_entries;
    std::int64_t m_offset = 0;
};

/**
 * The name of an entry whose directory record holds @p name: in UTF-8 if @p isUtf8 says so or the
 * bytes are valid UTF-8 (archivers often forget to say it), in the format's old code page 437
 * otherwise.
 */
QString zipEntryName(const QByteArray &name, bool isUtf8);

} // namespace internal

} // namespace vn

#endif // VN_BASE_ZIPDIRECTORY_P_H
