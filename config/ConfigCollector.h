// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGCOLLECTOR_H
#define VN_CONFIG_CONFIGCOLLECTOR_H

#include "base/Exceptions.h"
#include "base/Export.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <atomic>
#include <memory>
#include <optional>

namespace vn {

class ZipReader;

namespace internal {
class CollectedArchive;
class SourceWalk;
} // namespace internal

/**
 * Goes through files, folders and archives that hold configurations, one thing at a time: each call
 * of next() reads one file or one entry of an archive and gives it, or says why it could not be
 * read. What cannot be read costs itself alone; the rest goes on.
 * @code
 * ConfigCollector::Options options;
 * options.recursive = true;
 * ConfigCollector collector({"backups"}, options);
 * while (const auto found = collector.next()) {
 *     if (found->status == ConfigCollector::Status::Configuration)
 *         show(found->factoryIp, found->text);
 *     else if (found->exception)
 *         warn(found->path, found->entry, found->reason);
 * }
 * @endcode
 * Which files count, and in which order they come, is as in VanteroConfigFile::parseAll(). A path
 * that ends with ".zip" (case is ignored) is an archive, whatever it leads to; of its entries those
 * count whose names end with "cfg", with or without a header. A folder counts when
 * Options::recursive is set, with all that is in it at any depth, but for hidden entries, symbolic
 * links, and what is neither file nor folder. Every other file is read, and counts when its first
 * two lines tell the versions.
 *
 * Memory: what next() gives, the names of one archive's entries, and the folders that lead to where
 * it is. Folders are listed as they are gone through, so that a file which is put into one
 * meanwhile may be found or not. Who writes into the folders that are collected must expect to find
 * it.
 *
 * Several threads: nextSource() gives the places in their order without reading them, and read()
 * reads one, on any collector. So one thread may call nextSource() while others, each with a
 * collector of its own and the same options, read(); whoever puts what they find
 * back into the order of the sources has what next() would have given. Entries of an archive are
 * read fastest in runs of neighbours, as each collector goes through the archive in one pass.
 *
 * Exceptions: none of its own. What cannot be read is a value; memory that runs out raises
 * std::bad_alloc.
 *
 * Threads: reentrant; one collector is used by one thread. A Source may be handed to another
 * thread.
 * @since 1.0.0
 */
class VN_EXPORT ConfigCollector
{
public:
    /** In which order the entries of a folder come. */
    enum class Order {
        FileSystem, ///< As the file system delivers them, as in parseAll(); no folder is held.
        Name,       ///< By their names, code unit by code unit; the names of a folder are held.
    };

    /** What is looked at, and how. */
    struct Options
    {
        /** Whether folders are looked into, at any depth. */
        bool recursive = false;
        /** In which order the entries of a folder come. Those of an archive keep its order. */
        Order order = Order::FileSystem;
        /** Handed to every archive; empty means none. */
        QByteArray password;
        /** Entries of archives count when their names end with one of these; case is ignored. */
        QStringList entrySuffixes{QString::fromLatin1("cfg")};
        /** ZipReader::setEntrySizeLimit() for every archive; unset leaves the reader's own. */
        std::optional<qint64> entrySizeLimit;
        /** ZipReader::setArchiveSizeLimit(), which counts what is read of one archive without
         * another in between. */
        std::optional<qint64> archiveSizeLimit;
        /** The most bytes that the entries of all archives may hold together, whichever collector
         * reads them; unset means no limit, as memory does not grow with them. An entry that passes
         * it is unreadable. */
        std::optional<qint64> collectionSizeLimit;
        /** ZipReader::setEntryCountLimit() */
        std::optional<int> entryCountLimit;
        /** ZipReader::setRatioLimit() */
        std::optional<int> ratioLimit;
        /** Ends the collection once it is true, which any thread may make it; must outlive the
         * collector. Null: nothing does. What is being read is read to its end. */
        const std::atomic<bool> *stop = nullptr;
    };

    /** What became of a file, an entry or a path. */
    enum class Status {
        Configuration,    ///< A text that parseAll() collects.
        NoConfiguration,  ///< A file that was read, whose first two lines do not tell the versions.
        NotFound,         ///< A path that leads to nothing, or to nothing any more.
        NotAFile,         ///< A path that leads to neither a file nor a folder, a pipe for example.
        FolderSkipped,    ///< A folder, where Options::recursive is not set.
        FolderUnreadable, ///< A folder that cannot be listed, or not to its end (its entries come
                          ///< first), or whose entries cannot be reached.
        FileUnreadable,   ///< A file that cannot be read, or looked at, or whose name cannot be
                          ///< decoded (the system's error is EILSEQ then).
        ArchiveUnreadable, ///< An archive that cannot be opened, or is none.
        EntryUnreadable,   ///< An entry of an archive that cannot be read; others may well be.
    };

    /** A place where a configuration may be, not looked into yet; or a path that leads to none. */
    class Source
    {
    public:
        /** The path of the file or archive: as it was given, or that of the folder as it was given
         * with what leads on from there. */
        QString path;
        /** The name of the entry; null where it is the file. */
        QString entry;
        /** The place of the entry in the archive's directory, from 0, which tells entries of one
         * name apart; -1 for everything else. */
        int index = -1;
        /** Whether the path is one of those given to the collector, not found in a folder. */
        bool isNamed = false;
        /** The size of an entry in bytes, as the archive's directory says; -1 for everything else.
         */
        qint64 size = -1;

    private:
        friend class ConfigCollector;
        friend class internal::SourceWalk;

        Status m_status = Status::NotFound; // Configuration: not known before it is read
        QString m_location;                 // the absolute path, of a file
        std::shared_ptr<internal::CollectedArchive> m_archive; // of an entry
        int m_systemError = 0;                                 // of a folder
        std::shared_ptr<const IOException> m_exception;        // of an archive
    };

    /** What was found at one place. */
    struct Found
    {
        /** What became of it. */
        Status status = Status::NotFound;
        /** Source::path */
        QString path;
        /** Source::entry */
        QString entry;
        /** Source::index */
        int index = -1;
        /** Source::isNamed */
        bool isNamed = false;

        /** The bytes, where the file or entry could be read. */
        QByteArray bytes;
        /** The same as text, by FileUtils::decodeText(). */
        QString text;
        /** Whether the first two lines of the text tell the versions. A text without any is
         * complete, too, as in VanteroConfigFile::parseHeader(). */
        bool hasVersions = false;
        /** "File Version" of the header; null where it has none. */
        QString fileVersion;
        /** "Software Version" of the header; null where it has none. */
        QString softwareVersion;
        /** "Factory IP" of the header; null where it has none. */
        QString factoryIp;

        /** Why it could not be read, without the names of file and entry; null where it could, and
         * for NotFound, NotAFile and FolderSkipped, which say it all. */
        QString reason;
        /** The same as a value, for ArchiveUnreadable and EntryUnreadable. */
        ArchiveError archiveError = ArchiveError::None;
        /** The same as the system's number, such as EACCES, for FileUnreadable and
         * FolderUnreadable; 0 where the system has none. */
        int systemError = 0;
        /** What parseAll() raises here, of the class that it raises; null where it raises nothing.
         */
        std::shared_ptr<const IOException> exception;
    };

    /** How far a collection is. Files are counted with entries of archives, and with archives that
     * cannot be opened. */
    struct Progress
    {
        /** How many files and entries have been read, or tried. */
        qint64 files = 0;
        /** How many bytes they had. */
        qint64 bytes = 0;
        /** How many files and entries are left; -1 where measure() was not called. */
        qint64 filesLeft = -1;
        /** How many bytes they have; -1 where measure() was not called. */
        qint64 bytesLeft = -1;
    };

    /** A collector for @p paths, in their order. Nothing is looked at yet. */
    ConfigCollector(const QStringList &paths, const Options &options);

    /**
     * A collector for the entries of @p archive, which is open already, is used by nobody else
     * meanwhile and outlives the collector. It keeps the password and the limits that it has; of
     * the options the suffixes and `stop` count. The path of what is found is null.
     */
    ConfigCollector(ZipReader &archive, const Options &options);

    /** A collector for @p paths, in their order, that goes on where @p before is: with its options,
     * and Options::collectionSizeLimit counts what either has read. Nothing is looked at yet.
     * @since 1.0.0 */
    ConfigCollector(const QStringList &paths, const ConfigCollector &before);

    /** A collector of nothing, to read() what another one lists. */
    explicit ConfigCollector(const Options &options);

    ~ConfigCollector();
    ConfigCollector(const ConfigCollector &) = delete;            // goes its way once
    ConfigCollector &operator=(const ConfigCollector &) = delete; // likewise

    /** Reads what comes next; nothing at the end, and where Options::stop ended it. */
    [[nodiscard]] std::optional<Found> next();

    /** The place that comes next, which is not read; nothing at the end, and where Options::stop
     * ended it. Archives are opened for their directory. */
    [[nodiscard]] std::optional<Source> nextSource();

    /** Reads @p source, which may come from another collector with the same options. */
    [[nodiscard]] Found read(const Source &source);

    /**
     * Goes through all paths without reading, so that progress() knows what is left. Takes about as
     * long as to list the folders with sizes, and the directories of archives. Returns false where
     * Options::stop ended it.
     */
    bool measure();

    /** What next() and read() have done, and what next() has left where measure() looked. Files
     * that come and go after measure() make it inexact; it never is negative. */
    [[nodiscard]] Progress progress() const noexcept;

    /** Whether Options::stop has ended it before its end. */
    [[nodiscard]] bool wasStopped() const noexcept;

private:
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};

} // namespace vn

#endif // VN_CONFIG_CONFIGCOLLECTOR_H
