// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/FileUtils.h"

#include "base/DeviceIo_p.h"
#include "base/Exceptions.h"
#include "base/FileContent_p.h"
#include "base/Utf8_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QIODevice>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace vn {

namespace {

using internal::FileDescriptor;
using internal::kChunkSize;
using internal::retried;

/** The whole content of the file at @p path, by nothing more than open, fstat, read and close. */
QByteArray readFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.contains('\0'))
        throw FileException(path, EINVAL);
    const FileDescriptor file(
        retried([&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC); }));
    QByteArray bytes;
    // A number of errno's is taken before the exception asks for memory, which may change it.
    const int error = file.isValid() ? internal::readContent(file, bytes) : errno;
    if (error != 0)
        throw FileException(path, error);
    return bytes;
}

} // namespace

QByteArray FileUtils::readBytes(const QString &path)
{
    if (!internal::isQtPath(path))
        return readFile(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileException(file);
    return internal::readAll(&file);
}

QByteArray FileUtils::readBytes(QIODevice *device)
{
    return internal::readAll(device);
}

QByteArray FileUtils::readAvailable(QIODevice *device)
{
    return internal::readAll(device, internal::AtPause::End);
}

QString FileUtils::readText(const QString &path)
{
    return decodeText(readBytes(path));
}

QString FileUtils::readText(QIODevice *device)
{
    return decodeText(readBytes(device));
}

bool FileUtils::readLine(QIODevice *device, QByteArray *line)
{
    internal::DeviceReader reader(device, -1);
    char piece[4096];
    line->clear();
    while (const qint64 count = reader.readLine(piece, sizeof piece)) {
        line->append(piece, static_cast<int>(count));
        if (line->endsWith('\n')) {
            line->chop(line->endsWith("\r\n") ? 2 : 1);
            return true;
        }
    }
    return !line->isEmpty();
}

QString FileUtils::decodeText(const QByteArray &bytes)
{
    if (const auto text = internal::fromWellFormedUtf8(bytes))
        return text->isNull() ? QString(QLatin1String("")) : *text;
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

void FileUtils::copyText(const QString &text, QIODevice *device)
{
    internal::checkWritable(device);
    internal::encodeUtf8(text, [device](const QByteArray &piece) {
        internal::writeAll(device, piece.constData(), piece.size());
    });
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
