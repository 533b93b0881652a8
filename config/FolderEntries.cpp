// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/FolderEntries_p.h"

#include "base/FileContent_p.h"
#include "base/FileDescriptor_p.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vn {

namespace internal {

namespace {

/** What @p entry is: Unknown when it is neither a file nor a folder, symbolic links included.
 * @p error becomes why that cannot be told. */
FolderEntry::Kind kindOf(DIR *folder, const dirent &entry, int &error)
{
    auto mode = static_cast<mode_t>(DTTOIF(entry.d_type));
    if (entry.d_type == DT_UNKNOWN) { // not every file system keeps it in the folder
        struct stat status;
        if (::fstatat(::dirfd(folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            error = errno == ENOENT ? 0 : errno; // gone meanwhile
            return FolderEntry::Unknown;
        }
        mode = status.st_mode;
    }
    return S_ISREG(mode)   ? FolderEntry::File
           : S_ISDIR(mode) ? FolderEntry::Folder
                           : FolderEntry::Unknown;
}

} // namespace

FolderEntries::FolderEntries(const QString &path)
{
    if (path.startsWith(QLatin1Char(':'))) {
        m_qtFolder = std::make_unique<QDirIterator>(path, QDir::AllEntries | QDir::NoDotAndDotDot |
                                                              QDir::NoSymLinks);
        return;
    }
    m_folder.reset(::opendir(QFile::encodeName(path).constData()));
    if (!m_folder)
        m_error = errno;
}

bool FolderEntries::isClosedToEntry() const
{
    return m_folder && ::faccessat(::dirfd(m_folder.get()), ".", X_OK, AT_EACCESS) != 0;
}

bool FolderEntries::isAt(const QString &path) const
{
    struct stat here;
    struct stat there;
    return m_folder && ::fstat(::dirfd(m_folder.get()), &here) == 0 &&
           ::stat(QFile::encodeName(path).constData(), &there) == 0 &&
           here.st_dev == there.st_dev && here.st_ino == there.st_ino;
}

bool FolderEntries::next(FolderEntry &entry)
{
    if (!m_isHeld)
        return readNext(entry);
    if (m_held.empty())
        return false;
    entry = std::move(m_held.front());
    m_held.pop_front();
    return true;
}

bool FolderEntries::readNext(FolderEntry &entry)
{
    while (m_qtFolder && m_qtFolder->hasNext()) {
        m_qtFolder->next();
        const QFileInfo info = m_qtFolder->fileInfo();
        entry = {info.fileName(), info.isDir() ? FolderEntry::Folder : FolderEntry::File, 0};
        return true;
    }
    while (m_folder) {
        errno = 0; // readdir() tells a failure by nothing else
        const dirent *const found = ::readdir(m_folder.get());
        if (!found) {
            m_error = errno == ENOENT ? 0 : errno; // the folder is gone meanwhile, and so are they
            break;
        }
        if (found->d_name[0] == '.') // hidden, or the folder itself, or the one above
            continue;
        entry.error = 0;
        entry.kind = kindOf(m_folder.get(), *found, entry.error);
        if (entry.kind == FolderEntry::Unknown && entry.error == 0)
            continue;
        const QByteArray name = QByteArray::fromRawData(found->d_name, int(qstrlen(found->d_name)));
        entry.name = QFile::decodeName(name);
        if (QFile::encodeName(entry.name) != name)
            entry.error = EILSEQ;
        return true;
    }
    return false;
}

void FolderEntries::hold()
{
    for (FolderEntry entry; !m_isHeld && readNext(entry);)
        m_held.push_back(entry);
    m_isHeld = true;
    m_folder.reset();
    m_qtFolder.reset();
}

void FolderEntries::sort()
{
    for (FolderEntry entry; readNext(entry);)
        m_held.push_back(entry);
    m_isHeld = true;
    std::sort(m_held.begin(), m_held.end(),
              [](const FolderEntry &a, const FolderEntry &b) { return a.name < b.name; });
}

bool FolderEntries::readFile(const QString &name, QByteArray &bytes) const
{
    if (!m_folder)
        return false;
    const FileDescriptor file(retried([&] {
        return ::openat(::dirfd(m_folder.get()), QFile::encodeName(name).constData(),
                        O_RDONLY | O_CLOEXEC);
    }));
    if (file.isValid() && readContent(file, bytes) == 0)
        return true;
    bytes.clear();
    return false;
}

} // namespace internal

} // namespace vn
