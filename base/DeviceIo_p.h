// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_DEVICEIO_P_H
#define VN_BASE_DEVICEIO_P_H

/** @file Whole contents out of and into devices, every error an exception. */

#include <QtCore/QByteArray>
#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

class QIODevice;

namespace vn {

namespace internal {

/** What is read and copied at once where the size is not known beforehand. */
constexpr int kChunkSize = 64 * 1024;

/** The most bytes that are read at once: the UTF-16 form of a text must fit a QString, whose
 * content is counted in bytes by an int. */
constexpr int kMaxContentSize = (1 << 30) - 64;

/**
 * Raises an error of @p device: a FileException for a QFile, an IOException for any other. The
 * reason is @p reason, the device's own words where that is null.
 */
[[noreturn]] void throwDeviceError(const QIODevice *device, const QString &reason = QString());

/** What is done where a sequential device has no more at hand. */
enum class AtPause {
    Wait, // for more, or until the device says that this was all
    End,
};

/**
 * Reads what is left in a device, by default waiting for sequential ones: for ever, or up to a
 * limit that counts from the construction on.
 */
class DeviceReader
{
public:
    /** Does not own @p device, which must outlive this; a negative @p timeoutMs means no limit.
     * @throws IOException when the device is not open for reading */
    DeviceReader(QIODevice *device, int timeoutMs, AtPause atPause = AtPause::Wait);

    /** Reads up to @p maxSize bytes, more than 0, and returns their number; 0 at the end only.
     * @throws IOException on an error and when the time is over */
    qint64 read(char *data, qint64 maxSize);
    /** The same, but not beyond the next line end, which counts as one of the bytes; @p maxSize is
     * more than 1. */
    qint64 readLine(char *data, qint64 maxSize);

private:
    template <typename Read>
    qint64 readSome(Read read);
    qint64 readAvailable(char *data, qint64 maxSize);
    bool waitForMore();
    bool isTimeOver() const;
    [[noreturn]] void throwTimeout() const;

    QIODevice *m_device;
    int m_timeoutMs;
    AtPause m_atPause;
    QString m_errorBefore; // of a device of random access
    QElapsedTimer m_timer;
};

/** The remaining content of @p device, by default waited for without a limit.
 * @throws IOException on an error, also when there is more than kMaxContentSize */
QByteArray readAll(QIODevice *device, AtPause atPause = AtPause::Wait);

/** Whether @p path may be one that only Qt knows: that of a resource (":/a") or in one of Qt's
 * search paths ("cams:a"). Otherwise it means the same to the system. */
bool isQtPath(const QString &path);

/** @throws IOException when @p device is not open for writing */
void checkWritable(const QIODevice *device);

/** Writes all of the @p size bytes.
 * @throws IOException when the write fails or is short */
void writeAll(QIODevice *device, const char *data, qint64 size);

/** Makes the errors show that a file has left in its buffer.
 * @throws IOException when there is one */
void flush(QIODevice *device);

} // namespace internal

} // namespace vn

#endif // VN_BASE_DEVICEIO_P_H
