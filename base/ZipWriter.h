// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_ZIPWRITER_H
#define VN_BASE_ZIPWRITER_H

#include "base/AtomicFile.h"
#include "base/Export.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>

class QDateTime;
class QIODevice;

namespace vn {

/**
 * Writes a zip archive. Entries are deflated, or stored where that makes them no smaller, and with
 * a password encrypted with AES-256.
 *
 * The archive appears at its path on close(), whole or not at all; an archive that stood there
 * before is replaced then, as AtomicFile does. A writer that goes without close() leaves
 * nothing. Until close() all contents are held in memory.
 * @code
 * ZipWriter zip(QStringLiteral("cams.zip"), "secret");
 * zip.open();
 * zip.appendFile(&file, QStringLiteral("front.cfg"), QString(), QDateTime::currentDateTime());
 * zip.close();
 * @endcode
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_BASE_EXPORT ZipWriter
{
public:
    /** A writer for an archive at @p path; nothing is opened yet. An empty @p password means none.
     */
    explicit ZipWriter(const QString &path, const QByteArray &password = QByteArray());
    ~ZipWriter();

    ZipWriter(const ZipWriter &) = delete; // two writers for one archive
    ZipWriter &operator=(const ZipWriter &) = delete;

    /**
     * Begins the archive.
     * @throws IOException when it cannot be created there, something else than a file stands there,
     * or the writer is open already
     */
    void open();

    /**
     * Begins an archive that must be new: close() raises where something is at the path by then,
     * which stays.
     * @throws IOException as open()
     */
    void openNew();

    /**
     * Adds what remains in the open @p device as the entry @p entryName with @p comment (both UTF-8
     * in the archive). The entry's time is @p dateTime as local time, in steps of two seconds, from
     * 1980 to 2107. After an exception the archive is as it was before the call.
     * @throws IOException when the writer is not open, the device fails, the name is empty, ends
     * with a slash, or is in the archive already, or name or comment do not fit into 65535 bytes
     */
    void appendFile(QIODevice *device, const QString &entryName, const QString &comment,
                    const QDateTime &dateTime);

    /**
     * Writes the archive to its path.
     * @throws IOException when the writer is not open or the archive cannot be written; what stood
     * at the path is then untouched, and the writer is closed
     */
    void close();

    /** Why the last operation that failed did so, without the path: "not a regular file"; null
     * where none has. A device that fails tells its own exception alone. */
    [[nodiscard]] QString failure() const;

    /** What the archive could not keep of the one that it has replaced; nothing before close(). */
    [[nodiscard]] AtomicFile::Losses losses() const noexcept;

private:
    Q_DECL_HIDDEN void begin(bool isNew);
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};

} // namespace vn

#endif // VN_BASE_ZIPWRITER_H
