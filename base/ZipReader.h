// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_ZIPREADER_H
#define VN_BASE_ZIPREADER_H

#include "base/Exceptions.h"
#include "base/Export.h"

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace vn {

/**
 * Reads a zip archive; after openFile() the device delivers the bytes of that entry, sequentially.
 *
 * Entries may be stored or compressed (deflate, bzip2, LZMA, and what else libarchive knows: xz,
 * Zstandard and PPMd in Debian 12), plain or encrypted (traditional encryption and AES). Where
 * memory runs out inside libarchive, it may end the process.
 * @code
 * ZipReader zip(QStringLiteral("cams.zip"), "secret");
 * if (zip.open(QIODevice::ReadOnly))
 *     for (const QString &name : zip.fileListBySuffix(QStringLiteral("cfg")))
 *         if (zip.openFile(name))
 *             show(FileUtils::readText(&zip));
 * @endcode
 * Reading the entries in listed order is one pass over the archive; any other order works, at the
 * cost of a new pass. The data of an entry is handed on only after all of it has been decoded and
 * checked, so a wrong password, a damaged and a truncated entry are errors of the first read: it
 * gives -1, error() says which, and errorString() names the archive, the entry and the reason.
 * FileUtils::readText() raises it as an ArchiveException.
 *
 * An archive from elsewhere may be made to unpack to more than any memory. Limits, which are
 * properties of the reader, make that an error, too. Of entries that share bytes of the file only
 * the last one in the file can be read.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_BASE_EXPORT ZipReader : public QIODevice
{
public:
    /** Why an operation failed. */
    using Error = ArchiveError;

    /** A reader for the archive at @p path; nothing is opened yet. An empty @p password means none.
     */
    explicit ZipReader(const QString &path, const QByteArray &password = QByteArray(),
                       QObject *parent = nullptr);
    ~ZipReader() override;

    /** Opens the archive, which must be a regular file. Returns false and sets errorString() when
     * it cannot be opened, is no zip archive, or when @p mode is not ReadOnly. */
    bool open(OpenMode mode) override;
    /** Closes the archive; open() may open it again. */
    void close() override;

    /**
     * The names of the entries that end with @p suffix (case is ignored), in archive order, folders
     * left out. A name that occurs twice is listed twice.
     * @throws ArchiveException when the archive is not open: why open() failed
     */
    QStringList fileListBySuffix(const QString &suffix);

    /**
     * Makes the entry @p name the one that the device delivers, from its first byte on. Of several
     * entries of one name repeated calls go from one to the next, and start over after the last.
     * Returns false and sets errorString() when there is none; reading then gives that error, never
     * the entry before.
     */
    bool openFile(const QString &name);

    /**
     * The number of entries in archive order, folders included; 0 while the archive is not open.
     */
    [[nodiscard]] int entryCount() const noexcept;
    /** The name of the entry @p index, from 0; that of a folder ends with "/". Null where there is
     * none. */
    [[nodiscard]] QString entryName(int index) const;
    /** The size of the entry @p index in bytes, decoded, as the archive's directory says; -1 where
     * there is none. */
    [[nodiscard]] qint64 entrySize(int index) const;
    /** openFile() for the entry @p index, which tells entries of one name apart and leaves their
     * turn as it is. */
    bool openEntry(int index);

    /**
     * Why the latest open(), openFile(), openEntry() or read failed; None where it did not.
     * errorString() says the same in words.
     */
    [[nodiscard]] Error error() const noexcept;

    /** The same with the names and the words, to be thrown or kept. */
    [[nodiscard]] ArchiveException exception() const;

    /** The most bytes that one entry may hold; 256 MiB unless set. A larger one is a read error. */
    [[nodiscard]] qint64 entrySizeLimit() const noexcept;
    /** Sets that limit, for the entries that are read from now on. */
    void setEntrySizeLimit(qint64 bytes) noexcept;

    /** The most bytes that the entries read since open() may hold together, each counted once, and
     * with what was unpacked before an error; 1 GiB unless set. The entry that passes it is a read
     * error. */
    [[nodiscard]] qint64 archiveSizeLimit() const noexcept;
    /** Sets that limit, for the entries that are read from now on. */
    void setArchiveSizeLimit(qint64 bytes) noexcept;

    /** The most entries, folders included, that an archive may have; 1,000,000 unless set. open()
     * refuses an archive with more. */
    [[nodiscard]] int entryCountLimit() const noexcept;
    /** Sets that limit, for the next open(). */
    void setEntryCountLimit(int count) noexcept;

    /** The most bytes that one compressed byte may stand for, in an entry of more than 16 MiB; 1000
     * unless set. An entry that is compressed more is a read error. */
    [[nodiscard]] int ratioLimit() const noexcept;
    /** Sets that limit, for the entries that are read from now on. */
    void setRatioLimit(int ratio) noexcept;

    /** True: an entry is read from its beginning to its end. */
    bool isSequential() const override;
    /** Whether all of the entry has been read. False before the first read of an entry, which may
     * give an error; true after an error. */
    bool atEnd() const override;
    /** The bytes of the entry that are left to read, before the first read as the archive's
     * directory says. */
    qint64 bytesAvailable() const override;

protected:
    /** Gives the next bytes of the entry; -1 with an error. */
    qint64 readData(char *data, qint64 maxSize) override;
    /** Gives -1: the device is for reading. */
    qint64 writeData(const char *data, qint64 maxSize) override;

private:
    class Q_DECL_HIDDEN Private;
    Q_DECL_HIDDEN bool choose(int index, const QString &name);
    Q_DECL_HIDDEN bool fail(const QString &entry, ArchiveError error, const QString &reason);
    std::unique_ptr<Private> d;
};

} // namespace vn

#endif // VN_BASE_ZIPREADER_H
