// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/FolderEntries_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace vn {

namespace {

struct CloseFolder
{
    void operator()(DIR *folder) const
    {
        (void)::closedir(folder); // only read from: an error here loses nothing
    }
};

/** What @p entry is: Unknown when it is neither a file nor a folder, symbolic links included. */
FolderEntry::Kind kindOf(DIR *folder, const dirent &entry)
{
    mode_t mode = DTTOIF(entry.d_type);
    if (entry.d_type == DT_UNKNOWN) { // not every file system keeps it in the folder
        struct stat status;
        if (::fstatat(::dirfd(folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
            return FolderEntry::Unknown;
        mode = status.st_mode;
    }
    return S_ISREG(mode)   ? FolderEntry::File
           : S_ISDIR(mode) ? FolderEntry::Folder
                           : FolderEntry::Unknown;
}

} // namespace

QVector<FolderEntry> listFolder(const QString &path)
{
    QVector<FolderEntry> entries;
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir(QFile::encodeName(path).constData()));
    if (!folder)
        return entries;

    QString prefix = QDir(path).absolutePath();
    if (!prefix.endsWith(QLatin1Char('/')))
        prefix += QLatin1Char('/');
    // An absolute path has no ".."; behind a symbolic link it leads to another folder without them.
    const bool isSameFolder = !path.contains(QLatin1String(".."));

    while (const dirent *const entry = ::readdir(folder.get())) {
        if (entry->d_name[0] == '.') // hidden, or the folder itself, or the one above
            continue;
        const FolderEntry::Kind kind = kindOf(folder.get(), *entry);
        if (kind == FolderEntry::Unknown)
            continue;
        const QByteArray name = QByteArray::fromRawData(entry->d_name, int(qstrlen(entry->d_name)));
        const QString decoded = QFile::decodeName(name);
        if (QFile::encodeName(decoded) == name)
            entries.append({prefix + decoded, isSameFolder ? kind : FolderEntry::Unknown});
    }
    return entries;
}

} // namespace vn
