// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/FileUtils.h"

#include "base/DeviceIo_p.h"
#include "base/Exceptions.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QIODevice>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vn {

namespace {

using internal::kMaxContentSize;
using internal::throwFileError;

// What is asked for at once where the size is not known beforehand.
constexpr int kChunkSize = 64 * 1024;

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
    if (status.st_size > kMaxContentSize)
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
        if (size > kMaxContentSize)
            throwFileError(path, EFBIG);
        if (size == bytes.size())
            bytes.resize(
                std::min(size < kChunkSize ? size + kChunkSize : 2 * size, kMaxContentSize + 1));
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
    return decodeText(internal::readAll(device));
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
    internal::checkWritable(device);
    const QByteArray bytes = text.toUtf8();
    internal::writeAll(device, bytes.constData(), bytes.size());
    internal::flush(device);
}

quint64 FileUtils::copy(QIODevice *source, QIODevice *target, quint64 maxBytes, int timeoutMs)
{
    internal::DeviceReader reader(source, timeoutMs);
    internal::checkWritable(target);
    QByteArray chunk(kChunkSize, Qt::Uninitialized);
    quint64 copied = 0;
    while (const qint64 count = reader.read(chunk.data(), chunk.size())) {
        const quint64 left = maxBytes - copied;
        const bool isTooMuch = static_cast<quint64>(count) > left;
        const qint64 fitting = isTooMuch ? static_cast<qint64>(left) : count;
        internal::writeAll(target, chunk.constData(), fitting);
        copied += static_cast<quint64>(fitting);
        if (isTooMuch)
            internal::throwDeviceError(source, QStringLiteral("more than %1 bytes").arg(maxBytes));
    }
    internal::flush(target);
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
