// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_FOLDERENTRIES_P_H
#define VN_CONFIG_FOLDERENTRIES_P_H

#include <QtCore/QByteArray>
#include <QtCore/QDirIterator>
#include <QtCore/QString>

#include <deque>
#include <memory>

#include <dirent.h>

namespace vn {

namespace internal {

/** A file or folder in a folder. */
struct FolderEntry
{
    enum Kind { Unknown, File, Folder };

    QString name;
    Kind kind;
    int error = 0; // why it cannot be told what it is, or be reached: the system's error number
};

/**
 * The files and folders in a folder, one at a time, in the order in which the file system delivers
 * them. Symbolic links, hidden entries and what is neither file nor folder are left out.
 *
 * The entries are those of QDir::entryList(QDir::AllEntries | QDir::NoDotAndDotDot |
 * QDir::NoSymLinks) without sorting, and with an error those that QDir passes over: names that
 * cannot be decoded, and what cannot be looked at. QDir calls stat for each of them; here the
 * folder itself tells what they are, so that the cost of a large collection is that of reading its
 * files. Only where the system does not know the folder, as one of Qt's resources, QDir goes
 * through it.
 *
 * Threads: reentrant.
 */
class FolderEntries
{
public:
    /** Opens the folder @p path. */
    explicit FolderEntries(const QString &path);

    /** Why the folder cannot be listed, as the system's error number; 0 where it can. Once next()
     * has given all there is, also why that is not all. */
    int error() const { return m_error; }

    /** Whether the entries cannot be reached, though they can be listed: no right to enter. */
    bool isClosedToEntry() const;

    /** Whether the absolute path @p path leads to this folder, too. */
    bool isAt(const QString &path) const;

    /** Gives the next entry; false at the end. */
    bool next(FolderEntry &entry);

    /** Reads the rest into memory, and closes the folder. */
    void hold();
    /** Reads the rest into memory, in the order of the names; keeps the folder for readFile(). */
    void sort();

    /** Reads the file @p name of this folder; false where that is not possible here, which reading
     * it by its path tells more of. */
    bool readFile(const QString &name, QByteArray &bytes) const;

private:
    struct CloseFolder
    {
        void operator()(DIR *folder) const
        {
            (void)::closedir(folder); // only read from: an error here loses nothing
        }
    };

    bool readNext(FolderEntry &entry);

    std::unique_ptr<DIR, CloseFolder> m_folder;
    std::unique_ptr<QDirIterator> m_qtFolder;
    std::deque<FolderEntry> m_held;
    bool m_isHeld = false;
    int m_error = 0;
};

} // namespace internal

} // namespace vn

#endif // VN_CONFIG_FOLDERENTRIES_P_H
