// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ZipReader.h"

#include "base/Exceptions.h"
#include "base/StringUtils.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>

#include <archive.h>
#include <archive_entry.h>

namespace vn {

namespace {

struct FreeArchive
{
    void operator()(archive *handle) const { archive_read_free(handle); }
};

} // namespace

class Q_DECL_HIDDEN ZipReader::Private
{
public:
    bool reopen()
    {
        handle.reset(archive_read_new());
        archive_read_support_format_zip_seekable(handle.get());
        if (!password.isEmpty())
            archive_read_add_passphrase(handle.get(), password.constData());
        position = -1;
        return archive_read_open_filename(handle.get(), QFile::encodeName(path).constData(),
                                          65536) == ARCHIVE_OK;
    }
    archive_entry *next()
    {
        archive_entry *entry = nullptr;
        const int result = archive_read_next_header(handle.get(), &entry);
        ++position;
        return result == ARCHIVE_OK || result == ARCHIVE_WARN ? entry : nullptr;
    }

    QString path;
    QByteArray password;
    std::unique_ptr<archive, FreeArchive> handle;
    QStringList names;
    int position = -1;
    int wanted = -1;
    QByteArray content;
    int offset = 0;
    bool isDecoded = false;
    bool isFailed = false;
};

ZipReader::ZipReader(const QString &path, const QByteArray &password, QObject *parent)
    : QIODevice(parent)
    , d(std::make_unique<Private>())
{
    d->path = path;
    d->password = password;
}

ZipReader::~ZipReader() = default;

bool ZipReader::open(OpenMode mode)
{
    if (mode != ReadOnly || !QFileInfo(d->path).isFile() || !d->reopen()) {
        setErrorString(d->path + QLatin1String(": cannot be opened"));
        return false;
    }
    d->names.clear();
    while (archive_entry *entry = d->next())
        d->names.append(QString::fromUtf8(archive_entry_pathname_utf8(entry)));
    if (archive_errno(d->handle.get())) {
        setErrorString(d->path + QLatin1String(": ") +
                       QString::fromUtf8(archive_error_string(d->handle.get())));
        return false;
    }
    d->reopen();
    return QIODevice::open(mode);
}

void ZipReader::close()
{
    d->handle.reset();
    d->names.clear();
    d->wanted = -1;
    QIODevice::close();
}

QStringList ZipReader::fileListBySuffix(const QString &suffix)
{
    if (!isOpen())
        throw IOException(errorString());
    QStringList result;
    for (const QString &name : qAsConst(d->names))
        if (!name.endsWith(QLatin1Char('/')) && StringUtils::endsWithIgnoreCase(name, suffix))
            result.append(name);
    return result;
}

bool ZipReader::openFile(const QString &name)
{
    int index = d->names.indexOf(name, d->wanted + 1);
    if (index < 0)
        index = d->names.indexOf(name);
    d->wanted = index;
    d->isDecoded = false;
    d->isFailed = index < 0;
    d->offset = 0;
    d->content.clear();
    QIODevice::open(ReadOnly);
    if (index < 0)
        setErrorString(d->path + QLatin1String(": ") + name + QLatin1String(": no such entry"));
    return index >= 0;
}

bool ZipReader::isSequential() const
{
    return true;
}

bool ZipReader::atEnd() const
{
    return d->isFailed || (d->isDecoded && bytesAvailable() == 0);
}

qint64 ZipReader::bytesAvailable() const
{
    return QIODevice::bytesAvailable() + d->content.size() - d->offset;
}

qint64 ZipReader::readData(char *data, qint64 maxSize)
{
    if (!d->isDecoded && !d->isFailed && d->wanted >= 0) {
        if (d->position >= d->wanted)
            d->reopen();
        while (d->position < d->wanted && d->next()) {
        }
        char chunk[65536];
        for (;;) {
            const auto count = archive_read_data(d->handle.get(), chunk, sizeof chunk);
            if (count == 0)
                break;
            if (count < 0) {
                d->isFailed = true;
                d->content.clear();
                setErrorString(d->path + QLatin1String(": ") + d->names.at(d->wanted) +
                               QLatin1String(": ") +
                               QString::fromUtf8(archive_error_string(d->handle.get())));
                break;
            }
            d->content.append(chunk, static_cast<int>(count));
        }
        d->isDecoded = true;
    }
    if (d->isFailed || d->wanted < 0)
        return -1;
    const qint64 count = std::min<qint64>(maxSize, d->content.size() - d->offset);
    std::copy_n(d->content.constData() + d->offset, count, data);
    d->offset += static_cast<int>(count);
    return count;
}

qint64 ZipReader::writeData(const char *, qint64)
{
    return -1;
}

} // namespace vn
