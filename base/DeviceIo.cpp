// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/DeviceIo_p.h"

#include "base/Exceptions.h"
#include "base/FileDescriptor_p.h"
#include "base/ZipReader.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QIODevice>
#include <QtCore/QProcess>

#include <algorithm>
#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace vn {

namespace internal {

namespace {

// The most that is asked for on a device's word, which may be that of a hostile archive.
constexpr qint64 kMostOnTrust = 16 * 1024 * 1024;

/** A file that carries an error of ours to a FileException. */
class FailedFile : public QFile
{
public:
    FailedFile(const QString &name, const QString &reason)
        : QFile(name)
    {
        setErrorString(reason);
    }
};

/** Qt's text for a device without an error, in the user's language. */
QString noErrorText()
{
    return QBuffer().errorString();
}

/** Why @p device is not open: its own error where it has one, or @p otherwise. */
QString closedReason(const QIODevice *device, QLatin1String otherwise)
{
    const QString error = device->errorString();
    return error == noErrorText() ? QString(otherwise) : error;
}

/**
 * Whether @p error is what the sockets of Qt's network module, which is no part of this library,
 * say when the peer closes the connection, which is how their data end.
 */
bool isClosedByPeer(const QIODevice *device, const QString &error)
{
    if (device->inherits("QAbstractSocket"))
        return error == QCoreApplication::translate("QAbstractSocket",
                                                    "The remote host closed the connection");
    return device->inherits("QLocalSocket") &&
           error.endsWith(QCoreApplication::translate("QLocalSocket", "%1: Remote closed")
                              .remove(QLatin1String("%1")));
}

/**
 * Whether a read of -1 from @p device means that no more will come rather than an error. Qt uses -1
 * for both, so the device's own error decides.
 */
bool isEnd(const QIODevice *device)
{
    if (const auto *file = qobject_cast<const QFileDevice *>(device))
        return file->isSequential() && file->error() == QFileDevice::NoError;
    if (const auto *process = qobject_cast<const QProcess *>(device))
        return process->error() == QProcess::UnknownError || process->error() == QProcess::Timedout;
    const QString error = device->errorString();
    if (!device->isSequential()) // all that it said it had has been read
        return error == noErrorText() && device->size() > 0 && device->pos() >= device->size();
    return error == noErrorText() || isClosedByPeer(device, error);
}

} // namespace

void throwDeviceError(const QIODevice *device, const QString &reason)
{
    const QString text = reason.isNull() ? device->errorString() : reason;
    if (const auto *file = qobject_cast<const QFile *>(device))
        throw FileException(FailedFile(file->fileName(), text));
    if (const auto *file = qobject_cast<const QFileDevice *>(device))
        throw IOException(file->fileName() + QLatin1String(": ") + text);
    const auto *archive = dynamic_cast<const ZipReader *>(device);
    if (archive && archive->error() != ArchiveError::None && archive->errorString() == text)
        throw archive->exception();
    throw IOException(text);
}

DeviceReader::DeviceReader(QIODevice *device, int timeoutMs, AtPause atPause)
    : m_device(device)
    , m_timeoutMs(timeoutMs)
    , m_atPause(atPause)
    , m_errorBefore(device->isSequential() ? QString() : device->errorString())
{
    m_timer.start();
    if (!device->isReadable()) // Qt would print a warning
        throwDeviceError(device, closedReason(device, QLatin1String("not open for reading")));
}

qint64 DeviceReader::read(char *data, qint64 maxSize)
{
    return readSome([&] { return readAvailable(data, maxSize); });
}

qint64 DeviceReader::readLine(char *data, qint64 maxSize)
{
    // Unlike read(), readLine() calls the end of a device of random access an error.
    return readSome([&]() -> qint64 {
        return !m_device->isSequential() && m_device->atEnd() ? 0
                                                              : m_device->readLine(data, maxSize);
    });
}

template <typename Read>
qint64 DeviceReader::readSome(Read read)
{
    for (bool isWaitOver = false;;) {
        const qint64 count = read();
        if (count > 0) {
            if (m_device->isSequential() && isTimeOver())
                throwTimeout();
            return count;
        }
        if (count < 0) {
            if (isEnd(m_device))
                return 0;
            throwDeviceError(m_device);
        }
        if (!m_device->isSequential()) {
            // An error right after some data is told with the data or never. An old error that a
            // read has cleared is none.
            const QString error = m_device->errorString();
            if (error != m_errorBefore && error != noErrorText())
                throwDeviceError(m_device);
            return 0;
        }
        if (isWaitOver || m_atPause == AtPause::End)
            return 0;
        // A device that ends while it is waited for may hold a last piece of data.
        isWaitOver = !waitForMore();
    }
}

/** QIODevice::read(), but keeping to the time limit on a pipe or terminal: there QFile waits until
 * it has as many bytes as were asked for. */
qint64 DeviceReader::readAvailable(char *data, qint64 maxSize)
{
    const auto *file = qobject_cast<QFileDevice *>(m_device);
    const int descriptor = file && m_timeoutMs >= 0 && file->isSequential() ? file->handle() : -1;
    if (descriptor < 0 || file->bytesAvailable() > 0)
        return m_device->read(data, maxSize);

    pollfd wanted{descriptor, POLLIN, 0};
    const int ready = retried([&] {
        const qint64 remaining = std::max<qint64>(m_timeoutMs - m_timer.elapsed(), 0);
        return ::poll(&wanted, 1, static_cast<int>(remaining));
    });
    if (ready == 0)
        throwTimeout();
    const ssize_t count = ready < 0 ? -1 : retried([&] {
        return ::read(descriptor, data, static_cast<std::size_t>(maxSize));
    });
    if (count < 0)
        throwDeviceError(m_device, qt_error_string(errno));
    return count;
}

/** Whether there may be more; false at the end. */
bool DeviceReader::waitForMore()
{
    if (m_timeoutMs < 0)
        return m_device->waitForReadyRead(-1);
    // At least a moment, so that a device at its end differs from one to be waited for.
    const qint64 remaining = std::max<qint64>(m_timeoutMs - m_timer.elapsed(), 1);
    QElapsedTimer wait;
    wait.start();
    if (m_device->waitForReadyRead(static_cast<int>(remaining))) {
        if (isTimeOver())
            throwTimeout(); // a device may promise more for ever
        return true;
    }
    if (wait.elapsed() >= remaining)
        throwTimeout();
    return false;
}

bool DeviceReader::isTimeOver() const
{
    return m_timeoutMs >= 0 && m_timer.elapsed() > m_timeoutMs;
}

void DeviceReader::throwTimeout() const
{
    throwDeviceError(m_device,
                     QStringLiteral("the data did not end within %1 ms").arg(m_timeoutMs));
}

QByteArray readAll(QIODevice *device, AtPause atPause)
{
    DeviceReader reader(device, -1, atPause);
    const qint64 expected = device->bytesAvailable();
    // What a sequential device promises it may not be able to give; its own error tells why.
    if (expected > kMaxContentSize && !device->isSequential())
        throwDeviceError(device, qt_error_string(EFBIG));
    // One byte more than expected shows the end without growing the buffer.
    const qint64 buffered = expected > 0 ? std::min(expected, kMostOnTrust) + 1 : kChunkSize;
    QByteArray bytes(static_cast<int>(buffered), Qt::Uninitialized);
    int size = 0;
    while (const qint64 count = reader.read(bytes.data() + size, bytes.size() - size)) {
        size += static_cast<int>(count);
        if (size > kMaxContentSize)
            throwDeviceError(device, qt_error_string(EFBIG));
        if (size == bytes.size())
            bytes.resize(std::min(std::max(size + kChunkSize, 2 * size), kMaxContentSize + 1));
    }
    bytes.truncate(size);
    return bytes;
}

bool isQtPath(const QString &path)
{
    const auto isMark = [](QChar c) { return c == QLatin1Char(':') || c == QLatin1Char('/'); };
    const auto mark = std::find_if(path.begin(), path.end(), isMark);
    return mark != path.end() && *mark == QLatin1Char(':');
}

void checkWritable(const QIODevice *device)
{
    if (!device->isWritable()) // Qt would print a warning
        throwDeviceError(device, closedReason(device, QLatin1String("not open for writing")));
}

void writeAll(QIODevice *device, const char *data, qint64 size)
{
    qint64 written = device->write(data, size);
    // On a disk that fills up a write is short first; the next one tells why.
    while (written > 0 && written < size && qobject_cast<QFileDevice *>(device)) {
        const qint64 more = device->write(data + written, size - written);
        written = more > 0 ? written + more : -1;
    }
    if (written < 0)
        throwDeviceError(device);
    if (written != size)
        throwDeviceError(
            device, QStringLiteral("only %1 of %2 bytes could be written").arg(written).arg(size));
}

void flush(QIODevice *device)
{
    auto *file = qobject_cast<QFileDevice *>(device);
    if (file && !file->flush())
        throwDeviceError(file);
}

} // namespace internal

} // namespace vn
