// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_FILEUTILS_H
#define VN_BASE_FILEUTILS_H

#include "base/Export.h"

#include <QtCore/QString>

class QByteArray;
class QDateTime;
class QDir;
class QIODevice;

namespace vn {

/**
 * Whole texts from and into files and devices, and names for new files.
 *
 * Threads: all functions are reentrant; a device is used by the calling thread only.
 * @since 1.0.0
 */
class VN_BASE_EXPORT FileUtils
{
public:
    FileUtils() = delete; // a name for functions only

    /**
     * Returns the text of the file at @p path. Bytes that are valid UTF-8 are decoded as such, a
     * leading byte order mark dropped; anything else is Latin-1. Line ends stay as they are. The
     * path may be any that QFile opens: a resource (":/a.cfg") or in a search path ("cams:a.cfg"),
     * too.
     * @throws FileException when the file cannot be opened or read, or holds 1 GiB or more
     */
    static QString readText(const QString &path);

    /**
     * Returns the remaining content of the open @p device as text, decoded as by readText(path).
     * A sequential device is waited for, as long as it takes; one that has no more to come is at
     * its end.
     * @throws IOException when the device is not open for reading or reports an error; never a
     * silently short text
     */
    static QString readText(QIODevice *device);

    /**
     * Returns the bytes of the file at @p path, which readText() decodes.
     * @throws FileException as readText(path)
     */
    static QByteArray readBytes(const QString &path);

    /**
     * Returns the remaining bytes of the open @p device, waited for as by readText(device).
     * @throws IOException as readText(device)
     */
    static QByteArray readBytes(QIODevice *device);

    /**
     * Returns the remaining bytes of the open @p device, of a sequential one those that it has at
     * hand: nothing is waited for. Like QIODevice::readAll(), but an error is raised.
     * @throws IOException as readText(device)
     */
    static QByteArray readAvailable(QIODevice *device);

    /**
     * Puts the next line of the open @p device into @p line, without its end ("\n" or "\r\n"),
     * and returns true; false at the end of the device. A last line without an end is a line. A
     * sequential device is waited for without a limit, but never beyond a line that is complete.
     * A QFile that was opened with a FILE pointer cannot tell zero bytes in lines of a pipe.
     * @throws IOException as readText(device)
     */
    [[nodiscard]] static bool readLine(QIODevice *device, QByteArray *line);

    /**
     * Decodes @p bytes as readText() does: valid UTF-8 (without its byte order mark) as UTF-8,
     * anything else as Latin-1. Reports nothing: every byte sequence is a text, never a null one.
     */
    [[nodiscard]] static QString decodeText(const QByteArray &bytes);

    /**
     * Writes @p text to the open @p device as UTF-8 without a byte order mark, and flushes it, so
     * that a full disk shows here. It is encoded piece by piece, so any text that a QString holds
     * can be written, with little memory of its own.
     * @throws FileException when the device is a QFile and a write is short or fails
     * @throws IOException the same for any other device
     */
    static void copyText(const QString &text, QIODevice *device);

    /**
     * Copies what remains in @p source to @p target and returns the number of bytes copied.
     * A sequential source is waited for; one that has no more to come is at its end, not in error.
     * @param source    an open device
     * @param target    an open device
     * @param maxBytes  the most that the source may hold, in bytes; quint64(-1) means no limit
     * @param timeoutMs the limit for the whole call, in milliseconds; negative means none
     * @throws IOException on a read or write error, also a short write, when time is out, and when
     * the source holds more than @p maxBytes (the target then holds the first @p maxBytes at the
     * most); FileException where the device that fails is a QFile
     */
    static quint64 copy(QIODevice *source, QIODevice *target, quint64 maxBytes, int timeoutMs);

    /**
     * Returns a bare file name made from @p pattern that is not taken in @p dir. "%d" becomes the
     * date of @p dateTime as yyyy-MM-dd. A taken name gets @p counterFormat, with "%i" replaced by
     * 2, 3, …, before its last "." (at its end where it has none). A dangling symbolic link takes
     * its name, too. A @p counterFormat without "%i" gets the number at its end.
     * @param dir           the folder where the name shall be free; it need not exist
     * @param pattern       the name with "%d" for the date
     * @param dateTime      the date that takes the place of "%d"
     * @param counterFormat what a taken name gets, with "%i" for the number
     * @param alwaysCount   numbers even a free name, from 1
     *
     * Example: the pattern "cam-%d.cfg" and the counter "[%i]" give "cam-2010-05-01.cfg", then
     * "cam-2010-05-01[2].cfg". Nothing is created: another process may take the name meanwhile.
     */
    [[nodiscard]] static QString uniqueFileName(const QDir &dir, const QString &pattern,
                                                const QDateTime &dateTime,
                                                const QString &counterFormat, bool alwaysCount);
};

} // namespace vn

#endif // VN_BASE_FILEUTILS_H
