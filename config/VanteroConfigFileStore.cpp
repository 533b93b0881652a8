// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/AtomicFile.h"
#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/ZipWriter.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

namespace vn {

// Kept on purpose: neither form of store() takes the lock, as published.
void VanteroConfigFile::store(const QString &path)
{
    onlyThrows<IOException>([&] {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            throw FileException(file);
        FileUtils::copyText(m_sourceText, &file); // flushes, and raises every error up to there
        file.close();
        if (file.error() != QFileDevice::NoError) // that of closing
            throw FileException(file);
    });
}

AtomicFile::Losses VanteroConfigFile::storeAtomic(const QString &path) const
{
    return onlyThrows<IOException>([&] {
        QMutexLocker lock(m_lock.get());
        const QString text = m_sourceText;
        lock.unlock(); // a disk may take its time
        return AtomicFile::replaceText(path, text);
    });
}

void VanteroConfigFile::store(vnm::smart<ZipWriter> archive, const QString &entryName)
{
    onlyThrows<IOException>([&] {
        // Kept on purpose: files are UTF-8, archive entries are Latin-1.
        QByteArray bytes = m_sourceText.toLatin1();
        QBuffer buffer(&bytes);
        (void)buffer.open(QIODevice::ReadOnly); // a buffer always opens
        archive->appendFile(&buffer, entryName, QStringLiteral("Vantero Configuration File"),
                            QDateTime::currentDateTime());
    });
}

QString VanteroConfigFile::newFileName(const QDir &dir, const QString &first, const QString &second,
                                       const QDate &date, const QString &suffix)
{
    return FileUtils::uniqueFileName(dir, first + second + QLatin1String("-%d") + suffix,
                                     QDateTime(date, QTime(0, 0)), QStringLiteral("[%i]"), false);
}

QString VanteroConfigFile::newFileName(const QDir &dir, const QString &prefix, const QDate &date)
{
    return newFileName(dir, QString(), prefix, date, QStringLiteral(".cfg"));
}

} // namespace vn
