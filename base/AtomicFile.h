// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_ATOMICFILE_H
#define VN_BASE_ATOMICFILE_H

/** @file
 * Files that are written whole: one that is replaced, and many new ones in one folder. */

#include "base/Export.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace vn {

/**
 * Replaces a file whole. At any moment, after every failure, kill and power cut, it is either the
 * old or the new one, never a part.
 *
 * The content goes to a new file in the same folder, to the disk, and takes the name over. An
 * existing file hands on its mode and, where that is allowed, its owner; a symbolic link stays, and
 * the file that it leads to is replaced; other hard links of it keep the old content; attributes
 * and access lists beyond the mode are those of a new file. What is no regular file (a device, a
 * pipe), and what is open already (/dev/stdout), is written to as it is. After a failure nothing is
 * left behind; a killed process may leave a hidden file ".vantero-…" in the folder.
 * @code
 * AtomicFile::replace(path, bytes); // all at once
 *
 * AtomicFile file(path);            // piece by piece
 * file.open();
 * while (nextPiece(&piece))
 *     file.write(piece);
 * file.commit();
 * @endcode
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_BASE_EXPORT AtomicFile
{
public:
    /** A file for the place @p path; nothing happens yet. */
    explicit AtomicFile(const QString &path);
    /** Drops what has been written since open(), unless commit() has been called. */
    ~AtomicFile();

    AtomicFile(const AtomicFile &) = delete; // two writers for one file
    AtomicFile &operator=(const AtomicFile &) = delete;

    /**
     * Begins the new file; to be called once, before anything else.
     * @throws FileException when it cannot be made there, or what stands there is a folder or not
     * writable
     */
    void open();

    /** Adds the @p size bytes at @p data.
     * @throws FileException when they cannot be written */
    void write(const char *data, qint64 size);

    /** Adds @p content.
     * @throws FileException when it cannot be written */
    void write(const QByteArray &content) { write(content.constData(), content.size()); }

    /** Puts the new file into its place, once it has reached the disk.
     * @throws FileException when that fails; what stood there before stays */
    void commit();

    /**
     * Makes @p content the whole content of the file at @p path, which may be there already.
     * Signals that end programs (SIGHUP, SIGINT, SIGTERM) wait on the calling thread until it is
     * done, so that they leave nothing behind.
     * @throws FileException when it cannot be written; what stood there before stays
     */
    static void replace(const QString &path, const QByteArray &content);

    /**
     * The same with the UTF-8 of @p text, which is encoded piece by piece: it may be longer than a
     * QByteArray can be.
     * @throws FileException as replace()
     */
    static void replaceText(const QString &path, const QString &text);

    /**
     * Makes a new file at @p path that holds @p content: it is there whole or not at all. Returns
     * false where something of that name is there already, even a link to nothing; it stays as it
     * is. Signals wait as for replace().
     * @throws FileException when it cannot be written
     */
    [[nodiscard]] static bool create(const QString &path, const QByteArray &content);

private:
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};

/**
 * Many new files in one folder, each there whole or not at all, and nothing replaced.
 *
 * Files wait in a hidden folder ".vantero-…" within the folder until commit() brings all of them to
 * the disk at once and gives them their places. That takes a fraction of the time of one after the
 * other, for which the disk is waited for each time; but it also waits for what others have written
 * to that file system. After a failure nothing is left behind but files in their places; a killed
 * process may leave the hidden folder.
 * @code
 * AtomicFiles files(folder);
 * for (const Item &item : items)
 *     if (!files.add(item.name, item.bytes))
 *         show(item.name + ": there already");
 * const QStringList taken = files.commit(); // or now and then, with a great many
 * @endcode
 * Names are bare: not empty, ".", ".." or with a slash.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_BASE_EXPORT AtomicFiles
{
public:
    /** New files for @p folder, which must be there when the first one is added. */
    explicit AtomicFiles(const QString &folder);
    /** Drops the files that still wait. */
    ~AtomicFiles();

    AtomicFiles(const AtomicFiles &) = delete; // two owners of what waits
    AtomicFiles &operator=(const AtomicFiles &) = delete;

    /** Whether @p name is taken: something in the folder is called so, or a file that waits. */
    bool contains(const QString &name) const;

    /**
     * Writes a file @p name with @p content, which waits for commit(). Returns false where the name
     * is taken.
     * @throws FileException when the file cannot be written, or the name is not bare
     */
    [[nodiscard]] bool add(const QString &name, const QByteArray &content);

    /** Calls the file @p name, which waits, @p newName. Returns false where that is taken.
     * @throws FileException when no file @p name waits, or the new name is not bare */
    [[nodiscard]] bool rename(const QString &name, const QString &newName);

    /** The number of files that wait. */
    int count() const noexcept;

    /**
     * Gives the files that wait their places in the folder, in the order in which they were added,
     * once all of them have reached the disk. Returns the names that somebody else has taken since
     * they were added; these files go on to wait, for rename() and another commit().
     * @throws FileException when the disk or the folder refuses; files that have their places keep
     * them, the others wait
     */
    [[nodiscard]] QStringList commit();

private:
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};

} // namespace vn

#endif // VN_BASE_ATOMICFILE_H
