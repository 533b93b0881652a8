// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/AtomicFile_p.h"

#include "base/DeviceIo_p.h"
#include "base/Exceptions.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace vn {

namespace internal {

[[noreturn]] void failOn(const QString &path, int error)
{
    throw FileException(path, error);
}

[[noreturn]] void failOn(const QString &path)
{
    failOn(path, errno); // taken before the exception asks for memory, which may change it
}

// By the system's random numbers: those of Qt's own generator are the same in forked processes.
QByteArray temporaryName()
{
    return ".vantero-" + QByteArray::number(QRandomGenerator::system()->generate64(), 36);
}

FileDescriptor openFolder(const QByteArray &path)
{
    return FileDescriptor(
        retried([&] { return ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
}

void synchronise(const FileDescriptor &folder)
{
    if (folder.isValid())
        (void)::fsync(folder.get());
}

bool renameToNew(int folder, const QByteArray &name, int newFolder, const QByteArray &newName)
{
    const char *from = name.constData();
    const char *to = newName.constData();
    if (::renameat2(folder, from, newFolder, to, RENAME_NOREPLACE) == 0)
        return true;
    // Not every file system knows this; where links are, they do.
    if (errno != EINVAL || ::linkat(folder, from, newFolder, to, 0) != 0)
        return false;
    (void)::unlinkat(folder, from, 0); // the new name is there, which is what counts
    return true;
}

QByteArray systemPath(const QString &path)
{
    const QFileInfo file(path);
    const bool isFoundByQt = internal::isQtPath(path) && file.exists();
    const QString found = isFoundByQt ? file.absoluteFilePath() : path;
    if (found.startsWith(QLatin1Char(':')))
        failOn(path, EROFS); // a resource
    const QByteArray name = QFile::encodeName(found);
    if (name.contains('\0'))
        failOn(path, EINVAL);
    return name;
}

} // namespace internal

} // namespace vn
