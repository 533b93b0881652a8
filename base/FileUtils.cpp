// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/FileUtils.h"

#include "base/Exceptions.h"

#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QIODevice>
#include <QtCore/QProcess>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vn {

namespace {

// A text's UTF-16 form must fit a QString, whose content is counted in bytes by an int.
constexpr int kMaxTextSize = (1 << 30) - 64;
// What is asked for at once where the size is not known beforehand.
constexpr int kChunkSize = 64 * 1024;

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

[[noreturn]] void throwFileError(const QString &path, int error)
{
    throw FileException(FailedFile(path, qt_error_string(error)));
}

/** Raises the error of @p device, as @p reason where that is given, in its own words otherwise. */
[[noreturn]] void throwDeviceError(const QIODevice *device, const QString &reason = QString())
{
    const QString text = reason.isNull() ? device->errorString() : reason;
    if (const auto *file = qobject_cast<const QFile *>(device))
        throw FileException(FailedFile(file->fileName(), text));
    if (const auto *file = qobject_cast<const QFileDevice *>(device))
        throw IOException(file->fileName() + QLatin1String(": ") + text);
    throw IOException(text);
}

class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~FileDescriptor()
    {
        if (isValid())
            ::close(m_descriptor); // only read from: an error here loses nothing
    }
    FileDescriptor(const FileDescriptor &) = delete; // one owner
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    bool isValid() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

/** Repeats a system call for as long as a signal interrupts it. */
template <typename Call>
auto retried(Call &&call)
{
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR)
            return result;
    }
}

/** The whole content of the file at @p path, by nothing more than open, fstat, read and close. */
QByteArray readFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.contains('\0'))
        throwFileError(path, EINVAL);
    const FileDescriptor file(
        retried([&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC); }));
    if (!file.isValid())
        throwFileError(path, errno);
    struct stat status;
    if (::fstat(file.get(), &status) != 0)
        throwFileError(path, errno);
    if (status.st_size > kMaxTextSize)
        throwFileError(path, EFBIG);

    // One byte more than the file tells shows its end without growing the buffer. Pipes and files
    // of the kernel tell no size.
    const int expected = static_cast<int>(status.st_size);
    QByteArray bytes(expected > 0 ? expected + 1 : kChunkSize, Qt::Uninitialized);
    int size = 0;
    for (;;) {
        const ssize_t count = retried([&] {
            return ::read(file.get(), bytes.data() + size,
                          static_cast<std::size_t>(bytes.size() - size));
        });
        if (count < 0)
            throwFileError(path, errno);
        if (count == 0)
            break;
        size += static_cast<int>(count);
        if (size > kMaxTextSize)
            throwFileError(path, EFBIG);
        if (size == bytes.size())
            bytes.resize(
                std::min(size < kChunkSize ? size + kChunkSize : 2 * size, kMaxTextSize + 1));
    }
    bytes.truncate(size);
    return bytes;
}

/** The number of bytes before the first one that is not ASCII. */
std::size_t asciiPrefix(const char *data, std::size_t size)
{
    std::size_t i = 0;
    for (; i + 4 * sizeof(std::uint64_t) <= size; i += 4 * sizeof(std::uint64_t)) {
        std::uint64_t words[4];
        std::memcpy(words, data + i, sizeof words);
        if ((words[0] | words[1] | words[2] | words[3]) & UINT64_C(0x8080808080808080))
            break;
    }
    while (i < size && !(data[i] & 0x80))
        ++i;
    return i;
}

/** The length of the well-formed UTF-8 sequence (Unicode 15, table 3-7) at the start of the
 * @p size bytes, which begin with one that is not ASCII; 0 when there is none. */
std::size_t utf8SequenceLength(const unsigned char *data, std::size_t size)
{
    const auto isTrail = [&](std::size_t i) { return i < size && (data[i] & 0xC0) == 0x80; };
    const auto isBetween = [&](unsigned char low, unsigned char high) {
        return size > 1 && data[1] >= low && data[1] <= high;
    };
    const unsigned char lead = data[0];
    if (lead >= 0xC2 && lead <= 0xDF)
        return isTrail(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        // no longer form than needed, and no surrogates
        const bool second = isBetween(lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF);
        return second && isTrail(2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        // no longer form than needed, and nothing past U+10FFFF
        const bool second = isBetween(lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF);
        return second && isTrail(2) && isTrail(3) ? 4 : 0;
    }
    return 0;
}

bool isUtf8(const char *data, std::size_t size)
{
    for (std::size_t i = 0;;) {
        i += asciiPrefix(data + i, size - i);
        if (i == size)
            return true;
        const std::size_t length =
            utf8SequenceLength(reinterpret_cast<const unsigned char *>(data) + i, size - i);
        if (length == 0)
            return false;
        i += length;
    }
}

/**
 * Whether a read of -1 from the sequential @p device means that no more will come rather than an
 * error. Qt uses -1 for both, so the device's error decides; a peer that closes its connection at
 * the end of the data counts as an error in Qt's sockets only.
 */
bool isEndOfSequential(const QIODevice *device)
{
    if (const auto *file = qobject_cast<const QFileDevice *>(device))
        return file->error() == QFileDevice::NoError;
    if (const auto *process = qobject_cast<const QProcess *>(device))
        return process->error() == QProcess::UnknownError || process->error() == QProcess::Timedout;
    const QString error = device->errorString();
    if (device->inherits("QAbstractSocket"))
        return error == QCoreApplication::translate("QAbstractSocket",
                                                    "The remote host closed the connection");
    return error == QBuffer().errorString(); // the text that says that there is no error
}

/**
 * Reads what is left in a device, waiting for sequential ones: for ever, or up to a limit that
 * counts from the construction on.
 */
class DeviceReader
{
public:
    /** A negative @p timeoutMs means no limit. */
    DeviceReader(QIODevice *device, int timeoutMs)
        : m_device(device)
        , m_timeoutMs(timeoutMs)
    {
        m_timer.start();
        if (!device->isReadable()) // Qt would print a warning
            throwDeviceError(device, QStringLiteral("not open for reading"));
    }

    /** Reads up to @p maxSize bytes; 0 at the end only.
     * @throws IOException on an error and when the time is over */
    qint64 read(char *data, qint64 maxSize)
    {
        for (bool isWaitOver = false;;) {
            const qint64 count = m_device->read(data, maxSize);
            if (count > 0) {
                if (m_device->isSequential() && isTimeOver(1))
                    throwTimeout();
                return count;
            }
            if (count < 0) {
                if (m_device->isSequential() && isEndOfSequential(m_device))
                    return 0;
                throwDeviceError(m_device);
            }
            if (isWaitOver || !m_device->isSequential())
                return 0;
            // A device that ends while it is waited for may hold a last piece of data.
            isWaitOver = !waitForMore();
        }
    }

private:
    /** Whether there may be more; false at the end. */
    bool waitForMore()
    {
        if (m_timeoutMs < 0)
            return m_device->waitForReadyRead(-1);
        // At least a moment, so that a device at its end differs from one to be waited for.
        const qint64 remaining = std::max<qint64>(m_timeoutMs - m_timer.elapsed(), 1);
        QElapsedTimer wait;
        wait.start();
        if (m_device->waitForReadyRead(static_cast<int>(remaining)))
            return true;
        if (wait.elapsed() >= remaining)
            throwTimeout();
        return false;
    }

    bool isTimeOver(int graceMs) const
    {
        return m_timeoutMs >= 0 && m_timer.elapsed() > qint64(m_timeoutMs) + graceMs;
    }

    [[noreturn]] void throwTimeout() const
    {
        throwDeviceError(m_device, QStringLiteral("no end of data within %1 ms").arg(m_timeoutMs));
    }

    QIODevice *m_device;
    int m_timeoutMs;
    QElapsedTimer m_timer;
};

/** Writes all @p size bytes; a short write is an error as good as a failed one. */
void writeAll(QIODevice *device, const char *data, qint64 size)
{
    const qint64 written = device->write(data, size);
    if (written < 0)
        throwDeviceError(device);
    if (written != size)
        throwDeviceError(
            device, QStringLiteral("only %1 of %2 bytes could be written").arg(written).arg(size));
}

void checkWritable(QIODevice *device)
{
    if (!device->isWritable()) // Qt would print a warning
        throwDeviceError(device, QStringLiteral("not open for writing"));
}

/** Makes the errors of a file show that writing has left in its buffer. */
void flush(QIODevice *device)
{
    auto *file = qobject_cast<QFileDevice *>(device);
    if (file && !file->flush())
        throwDeviceError(file);
}

} // namespace

QString FileUtils::readText(const QString &path)
{
    if (path.startsWith(QLatin1Char(':'))) { // Qt's resources are no files of the system
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw FileException(file);
        return readText(&file);
    }
    return decodeText(readFile(path));
}

QString FileUtils::readText(QIODevice *device)
{
    DeviceReader reader(device, -1);
    const qint64 expected = std::max(device->bytesAvailable(), device->size() - device->pos());
    if (!device->isSequential() && expected > kMaxTextSize)
        throwDeviceError(device, qt_error_string(EFBIG));
    QByteArray bytes(
        static_cast<int>(std::min<qint64>(std::max<qint64>(expected + 1, 512), kMaxTextSize + 1)),
        Qt::Uninitialized);
    int size = 0;
    while (const qint64 count = reader.read(bytes.data() + size, bytes.size() - size)) {
        size += static_cast<int>(count);
        if (size > kMaxTextSize)
            throwDeviceError(device, qt_error_string(EFBIG));
        if (size == bytes.size())
            bytes.resize(std::min(std::max(size + kChunkSize, 2 * size), kMaxTextSize + 1));
    }
    bytes.truncate(size);
    return decodeText(bytes);
}

QString FileUtils::decodeText(const QByteArray &bytes)
{
    const char *data = bytes.constData();
    const auto size = static_cast<std::size_t>(bytes.size());
    const std::size_t ascii = asciiPrefix(data, size);
    if (ascii < size && isUtf8(data + ascii, size - ascii))
        return QString::fromUtf8(data, bytes.size()); // drops the byte order mark
    return QString::fromLatin1(data, bytes.size());
}

void FileUtils::copyText(const QString &text, QIODevice *device)
{
    checkWritable(device);
    const QByteArray bytes = text.toUtf8();
    writeAll(device, bytes.constData(), bytes.size());
    flush(device);
}

quint64 FileUtils::copy(QIODevice *source, QIODevice *target, quint64 maxBytes, int timeoutMs)
{
    DeviceReader reader(source, timeoutMs);
    checkWritable(target);
    QByteArray chunk(kChunkSize, Qt::Uninitialized);
    quint64 copied = 0;
    while (const qint64 count = reader.read(chunk.data(), chunk.size())) {
        const quint64 left = maxBytes - copied;
        const bool isTooMuch = static_cast<quint64>(count) > left;
        const qint64 fitting = isTooMuch ? static_cast<qint64>(left) : count;
        writeAll(target, chunk.constData(), fitting);
        copied += static_cast<quint64>(fitting);
        if (isTooMuch)
            throwDeviceError(source, QStringLiteral("more than %1 bytes").arg(maxBytes));
    }
    flush(target);
    return copied;
}

QString FileUtils::uniqueFileName(const QDir &dir, const QString &pattern,
                                  const QDateTime &dateTime, const QString &counterFormat,
                                  bool alwaysCount)
{
    QString name = pattern;
    name.replace(QLatin1String("%d"), dateTime.date().toString(Qt::ISODate));
    const auto isTaken = [&](const QString &candidate) {
        const QFileInfo file(dir, candidate);
        return file.exists() || file.isSymLink(); // a link to nothing does not exist for Qt
    };
    if (!alwaysCount && !isTaken(name))
        return name;

    // A format without a number would try one name for ever.
    const QLatin1String numberMark("%i");
    const QString format =
        counterFormat.contains(numberMark) ? counterFormat : counterFormat + numberMark;
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    const int place = dot < 0 ? name.size() : dot;
    for (int number = alwaysCount ? 1 : 2;; ++number) {
        QString counter = format;
        counter.replace(numberMark, QString::number(number));
        const QString candidate = QString(name).insert(place, counter);
        if (!isTaken(candidate))
            return candidate;
    }
}

} // namespace vn
