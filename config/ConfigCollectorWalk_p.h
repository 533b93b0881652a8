// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGCOLLECTORWALK_P_H
#define VN_CONFIG_CONFIGCOLLECTORWALK_P_H

/** @file The one way through paths, folders and archives. */

#include "base/ZipReader.h"
#include "config/ConfigCollector.h"
#include "config/FolderEntries_p.h"

#include <QtCore/QVector>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

class QFileInfo;

namespace vn {

namespace internal {

/** An archive that has been opened for its directory. */
class CollectedArchive
{
public:
    struct Entry
    {
        int index; // in the archive's directory
        QString name;
        qint64 size;
    };

    /** Opens the archive at @p path.
     * @throws IOException when that is not possible */
    CollectedArchive(const QString &path, const ConfigCollector::Options &options,
                     std::shared_ptr<std::atomic<qint64>> readSize);
    /** Does not own @p reader.
     * @throws IOException when it is not open */
    CollectedArchive(ZipReader &reader, const ConfigCollector::Options &options,
                     std::shared_ptr<std::atomic<qint64>> readSize);

    /** What the options let count, in the archive's order. */
    const QVector<Entry> &entries() const { return m_entries; }

    /** The reader of somebody else; null where there is none. */
    ZipReader *given() const { return m_given; }
    /** A reader of one's own, which the first one who asks need not open.
     * @throws IOException when it cannot be opened any more */
    std::unique_ptr<ZipReader> takeReader(const ConfigCollector::Options &options);
    /** The bytes that have been read of all archives of the collection, on any thread. */
    std::atomic<qint64> &readSize() const { return *m_readSize; }
    /** Closes the reader that nobody has asked for, so that many archives that are listed ahead
     * hold no files open. */
    void dropReader();

private:
    void list(ZipReader &reader, const QStringList &suffixes);

    QString m_path;
    QVector<Entry> m_entries;
    ZipReader *m_given = nullptr;
    std::unique_ptr<ZipReader> m_reader;
    std::shared_ptr<std::atomic<qint64>> m_readSize;
    std::atomic<bool> m_isTaken{false};
};

/** Gives the sources of a collection in their order. */
class SourceWalk
{
public:
    using Size = std::shared_ptr<std::atomic<qint64>>;

    /** A walk through @p paths; what is read of archives is added to @p readSize. */
    SourceWalk(QStringList paths, ConfigCollector::Options options,
               Size readSize = std::make_shared<std::atomic<qint64>>(0));
    SourceWalk(ZipReader &archive, ConfigCollector::Options options);

    /** The next source; nothing at the end. */
    std::optional<ConfigCollector::Source> next();

    /** Reads the file that next() gave last by the way it was found; false where there is none, or
     * reading it that way fails. */
    bool readFile(QByteArray &bytes) const;

    /** The bytes that have been read of archives. */
    const Size &readSize() const { return m_readSize; }

    /** Whether all sources have been given. */
    bool isAtEnd() const { return m_isAtEnd; }

private:
    /** A folder that is gone through. */
    struct Level
    {
        FolderEntries entries;
        QString name;        // as it was found
        QString path;        // as the user would name it, ready for the names of entries
        QString location;    // the absolute path, likewise; null where it is the same
        bool isThere = true; // the absolute path leads to this folder, not to another one
    };
    using Source = ConfigCollector::Source;
    using Status = ConfigCollector::Status;

    static void explainMissing(Source &source, const QFileInfo &info);
    std::optional<Source> visit(Source &&source, FolderEntry::Kind kind);
    std::optional<Source> visitArchive(Source &&source, ZipReader *given);
    std::optional<Source> visitFolder(Source &&source);
    FolderEntries openFolder(const QString &path);

    const QStringList m_paths;
    const ConfigCollector::Options m_options;
    const Size m_readSize;
    ZipReader *m_given = nullptr; // that is still to be gone through
    int m_nextPath = 0;
    std::vector<Level> m_levels;
    std::shared_ptr<CollectedArchive> m_archive; // that is gone through
    Source m_archiveSource;
    int m_nextEntry = 0;
    QString m_name; // of the file that was given last, in the last level; null elsewhere
    bool m_isAtEnd = false;
};

} // namespace internal

} // namespace vn

#endif // VN_CONFIG_CONFIGCOLLECTORWALK_P_H
