// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_ATOMICFILE_H
#define VN_BASE_ATOMICFILE_H

/** @file
 * Files that are written whole: one that is replaced, and many new ones in one folder. */

#include "base/Export.h"

#include <QtCore/QByteArray>
#include <QtCore/QFlags>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace vn {

/**
 * Replaces a file whole. At any moment, after every failure, kill and power cut, it is either the
 * old or the new one, never a part.
 *
 * The content goes to a new file in the same folder, to the disk, and takes the name over. An
 * existing file hands on its owner, group, mode with all bits, access list (POSIX ACL) and extended
 * attributes, as far as the process may: what it cannot keep is told by losses(), and makes the
 * rights of others fewer, never more, at any moment. So whoever edits another user's file becomes
 * its owner, unless he is root. A symbolic link stays, and the file that it leads to is replaced;
 * other hard links of it keep the old content. What is no regular file (a device, a
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
 *
 * // What has been read, changed and goes back: another one's change is not lost
 * if (!AtomicFile::replaceUnchanged(path, bytesAsRead, bytes))
 *     show(path + ": changed since it was read");
 * @endcode
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_BASE_EXPORT AtomicFile
{
public:
    /** What the new file could not keep of the one that it replaces. */
    enum class Loss {
        Owner = 1,       ///< it belongs to the user of the process
        Group = 2,       ///< it belongs to a group of the process; see Mode
        AccessList = 4,  ///< its access list: only the owner has access
        Attributes = 8,  ///< at least one of its extended attributes
        Mode = 16,       ///< bits of its mode, as it would have allowed more than the old file did
        OtherNames = 32, ///< its other hard links, which keep the old content
    };
    Q_DECLARE_FLAGS(Losses, Loss)

    /** What has become of replaceUnchanged(). */
    struct Outcome
    {
        /** False where the file has changed: it stays as it is. */
        bool isReplaced = false;
        /** What the new file could not keep. */
        Losses losses;

        /** Whether the file has been replaced. */
        explicit operator bool() const noexcept { return isReplaced; }
    };

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

    /**
     * Begins a file that must be new: commit() then raises where something, even a link to nothing,
     * is at the path by then. Otherwise as open().
     * @throws FileException when it cannot be made there
     */
    void openNew();

    /** Adds the @p size bytes at @p data.
     * @throws FileException when they cannot be written */
    void write(const char *data, qint64 size);

    /** Adds @p content.
     * @throws FileException when it cannot be written */
    void write(const QByteArray &content) { write(content.constData(), content.size()); }

    /** Puts the new file into its place, once it has reached the disk.
     * @throws FileException when that fails; what stood there before stays */
    void commit();

    /** What the new file could not keep; nothing before commit(), and for a file that is new. */
    [[nodiscard]] Losses losses() const noexcept;

    /** A sentence for each of @p losses, for people: "the file belongs to another owner now". */
    [[nodiscard]] static QStringList describe(Losses losses);

    /**
     * Makes @p content the whole content of the file at @p path, which may be there already.
     * Signals that end programs (SIGHUP, SIGINT, SIGTERM) wait on the calling thread until it is
     * done, so that they leave nothing behind.
     * @throws FileException when it cannot be written; what stood there before stays
     */
    static void replace(const QString &path, const QByteArray &content);

    /** Does the same as replace() and returns what the new file could not keep. */
    [[nodiscard]] static Losses replaceWithReport(const QString &path, const QByteArray &content);

    /**
     * Makes @p content the whole content of the file at @p path if that still holds @p before, as
     * it did when it was read. Of several who change a file so, on one machine or where the file
     * system has locks for all of them, one after the other is let in: none loses what another has
     * done. Those who write otherwise are noticed up to the moment before. Signals wait as for
     * replace().
     * @throws FileException when it cannot be read or written, is no regular file (EINVAL), or
     * another program locks it for five seconds (EAGAIN); what stood there before stays
     */
    [[nodiscard]] static Outcome replaceUnchanged(const QString &path, const QByteArray &before,
                                                  const QByteArray &content);

    /**
     * The same with the UTF-8 of @p text, which is encoded piece by piece: it may be longer than a
     * QByteArray can be. Returns what the new file could not keep.
     * @throws FileException as replace()
     */
    static Losses replaceText(const QString &path, const QString &text);

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

Q_DECLARE_OPERATORS_FOR_FLAGS(AtomicFile::Losses)

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
    [[nodiscard]] bool contains(const QString &name) const;

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
    [[nodiscard]] int count() const noexcept;

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
