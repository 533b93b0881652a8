// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_FOLDERENTRIES_P_H
#define VN_CONFIG_FOLDERENTRIES_P_H

#include <QtCore/QString>
#include <QtCore/QVector>

namespace vn {

/** A path that is to be looked at, with what is known of it beforehand. */
struct FolderEntry
{
    enum Kind { Unknown, File, Folder };

    QString path;
    Kind kind;
};

/**
 * The files and folders in the folder @p path of the file system, by their absolute paths, in the
 * order in which the file system delivers them. Symbolic links, hidden entries and what is neither
 * file nor folder are left out, as are names that cannot be decoded.
 *
 * The entries are those of QDir::entryList(QDir::AllEntries | QDir::NoDotAndDotDot |
 * QDir::NoSymLinks) without sorting. QDir calls stat for each of them; here the folder itself tells
 * what they are, so that the cost of a large collection is that of reading its files.
 *
 * Reports nothing: a folder that cannot be read is an empty one. Threads: reentrant.
 */
QVector<FolderEntry> listFolder(const QString &path);

} // namespace vn

#endif // VN_CONFIG_FOLDERENTRIES_P_H
