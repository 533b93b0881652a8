// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigCollectorWalk_p.h"

#include "base/Exceptions.h"
#include "base/StringUtils.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <sys/stat.h>

namespace vn {

namespace internal {

namespace {

// Every folder that is gone through is held open, up to so many. Deeper ones are listed whole.
constexpr std::size_t kMostOpenFolders = 16;

/** @p path, so that names of entries can follow it. */
QString asPrefix(const QString &path)
{
    return path.isEmpty() || path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

} // namespace

// ---- Archives ----------------------------------------------------------------------------------

namespace {

std::unique_ptr<ZipReader> openReader(const QString &path, const ConfigCollector::Options &options)
{
    auto reader = std::make_unique<ZipReader>(path, options.password);
    if (options.entrySizeLimit)
        reader->setEntrySizeLimit(*options.entrySizeLimit);
    if (options.archiveSizeLimit)
        reader->setArchiveSizeLimit(*options.archiveSizeLimit);
    if (options.entryCountLimit)
        reader->setEntryCountLimit(*options.entryCountLimit);
    if (options.ratioLimit)
        reader->setRatioLimit(*options.ratioLimit);
    if (!reader->open(QIODevice::ReadOnly))
        (void)reader->fileListBySuffix(QString()); // raises why
    return reader;
}

} // namespace

CollectedArchive::CollectedArchive(const QString &path, const ConfigCollector::Options &options,
                                   std::shared_ptr<std::atomic<qint64>> readSize)
    : m_path(path)
    , m_reader(openReader(path, options))
    , m_readSize(std::move(readSize))
{
    list(*m_reader, options.entrySuffixes);
}

CollectedArchive::CollectedArchive(ZipReader &reader, const ConfigCollector::Options &options,
                                   std::shared_ptr<std::atomic<qint64>> readSize)
    : m_given(&reader)
    , m_readSize(std::move(readSize))
{
    list(reader, options.entrySuffixes);
}

void CollectedArchive::list(ZipReader &reader, const QStringList &suffixes)
{
    if (!reader.isOpen())
        (void)reader.fileListBySuffix(QString()); // raises why
    const int count = reader.entryCount();
    for (int i = 0; i < count; ++i) {
        const QString name = reader.entryName(i);
        const auto endsName = [&](const QString &suffix) {
            return StringUtils::endsWithIgnoreCase(name, suffix);
        };
        const bool isFolder = name.endsWith(QLatin1Char('/'));
        if (!isFolder && std::any_of(suffixes.begin(), suffixes.end(), endsName))
            m_entries.append({i, name, reader.entrySize(i)});
    }
}

std::unique_ptr<ZipReader> CollectedArchive::takeReader(const ConfigCollector::Options &options)
{
    return m_isTaken.exchange(true) ? openReader(m_path, options) : std::move(m_reader);
}

void CollectedArchive::dropReader()
{
    if (!m_isTaken.exchange(true))
        m_reader.reset();
}

// ---- Folders -----------------------------------------------------------------------------------

SourceWalk::SourceWalk(QStringList paths, ConfigCollector::Options options, Size readSize)
    : m_paths(std::move(paths))
    , m_options(std::move(options))
    , m_readSize(std::move(readSize))
{
}

SourceWalk::SourceWalk(ZipReader &archive, ConfigCollector::Options options)
    : m_options(std::move(options))
    , m_readSize(std::make_shared<std::atomic<qint64>>(0))
    , m_given(&archive)
{
}

std::optional<ConfigCollector::Source> SourceWalk::next()
{
    m_name = QString();
    for (;;) {
        if (m_options.stop && *m_options.stop)
            return std::nullopt;
        if (m_archive && m_nextEntry < m_archive->entries().size()) {
            const CollectedArchive::Entry &entry = m_archive->entries().at(m_nextEntry++);
            Source source = m_archiveSource;
            source.entry = entry.name;
            source.size = entry.size;
            source.index = entry.index;
            source.m_archive = m_archive;
            return source;
        }
        if (m_archive)
            std::exchange(m_archive, nullptr)->dropReader();

        Source source;
        source.m_status = Status::Configuration;
        FolderEntry entry{QString(), FolderEntry::Unknown, 0};
        if (m_given) {
            if (auto visited = visitArchive(std::move(source), std::exchange(m_given, nullptr)))
                return visited;
            continue;
        }
        if (!m_levels.empty()) {
            Level &level = m_levels.back();
            if (!level.entries.next(entry)) {
                source.m_status = Status::FolderUnreadable;
                source.m_systemError = level.entries.error();
                source.path = level.name;
                m_levels.pop_back();
                if (source.m_systemError != 0)
                    return source; // not to its end
                continue;
            }
            source.path = level.path + entry.name;
            if (entry.error != 0) {
                source.m_status = entry.kind == FolderEntry::Folder ? Status::FolderUnreadable
                                                                    : Status::FileUnreadable;
                source.m_systemError = entry.error;
                return source;
            }
            source.m_location = level.location.isNull() ? source.path : level.location + entry.name;
            if (!level.isThere)
                entry.kind = FolderEntry::Unknown;
        } else if (m_nextPath < m_paths.size()) {
            source.path = source.m_location = m_paths.at(m_nextPath++);
            source.isNamed = true;
        } else {
            m_isAtEnd = true;
            return std::nullopt;
        }
        if (auto visited = visit(std::move(source), entry.kind)) {
            if (entry.kind == FolderEntry::File)
                m_name = entry.name;
            return visited;
        }
    }
}

bool SourceWalk::readFile(QByteArray &bytes) const
{
    return !m_name.isNull() && m_levels.back().entries.readFile(m_name, bytes);
}

/** Puts into @p source why @p info is no file. */
void SourceWalk::explainMissing(Source &source, const QFileInfo &info)
{
    source.m_status = info.exists() ? Status::NotAFile : Status::NotFound;
    struct stat status;
    const QByteArray name = QFile::encodeName(source.m_location);
    const bool isRefused = !info.exists() && ::stat(name.constData(), &status) != 0 &&
                           errno != ENOENT && errno != ENOTDIR;
    if (!isRefused)
        return;
    source.m_systemError = errno;
    source.m_status = Status::FileUnreadable; // which may be there
}

/** What @p source is; nothing where it is something to go through. */
std::optional<ConfigCollector::Source> SourceWalk::visit(Source &&source, FolderEntry::Kind kind)
{
    // Kept on purpose: the name alone tells an archive, even where it is that of a folder.
    if (StringUtils::endsWithIgnoreCase(source.path, QStringLiteral(".zip")))
        return visitArchive(std::move(source), nullptr);
    if (kind == FolderEntry::Unknown) {
        const QFileInfo info(source.m_location);
        if (info.isDir()) {
            kind = FolderEntry::Folder;
            source.m_location = info.filePath(); // of a search path, where it leads
        } else {
            source.m_location = info.absoluteFilePath();
            if (!info.isFile())
                explainMissing(source, info);
        }
    }
    if (kind == FolderEntry::Folder)
        return visitFolder(std::move(source));
    return std::move(source);
}

std::optional<ConfigCollector::Source> SourceWalk::visitArchive(Source &&source, ZipReader *given)
{
    try {
        m_archive =
            given ? std::make_shared<CollectedArchive>(*given, m_options, m_readSize)
                  : std::make_shared<CollectedArchive>(source.m_location, m_options, m_readSize);
        m_archiveSource = std::move(source);
        m_nextEntry = 0;
        return std::nullopt;
    } catch (const IOException &e) {
        source.m_status = Status::ArchiveUnreadable;
        source.m_exception.reset(e.clone());
        return std::move(source);
    }
}

std::optional<ConfigCollector::Source> SourceWalk::visitFolder(Source &&source)
{
    if (!m_options.recursive) {
        source.m_status = Status::FolderSkipped;
        return std::move(source);
    }
    FolderEntries entries = openFolder(source.m_location);
    if (const int error = entries.error()) {
        const bool isGone = error == ENOENT; // since its parent was listed
        source.m_status = isGone ? Status::NotFound : Status::FolderUnreadable;
        source.m_systemError = isGone ? 0 : error;
        return std::move(source);
    }
    const bool isClosed = entries.isClosedToEntry();
    if (m_options.order == ConfigCollector::Order::Name)
        entries.sort();
    const QString absolute = QDir(source.m_location).absolutePath();
    // An absolute path has no ".."; behind a symbolic link it leads to another folder without them.
    // What the absolute paths of the entries lead to is what counts.
    const bool isThere = !source.m_location.contains(QLatin1String("..")) || entries.isAt(absolute);
    if (m_levels.size() >= kMostOpenFolders)
        entries.hold();
    Level level{std::move(entries), source.path, asPrefix(isThere ? source.path : absolute),
                asPrefix(absolute), isThere};
    if (level.path == level.location)
        level.location = QString();
    m_levels.push_back(std::move(level));
    if (!isClosed)
        return std::nullopt;
    source.m_status = Status::FolderUnreadable;
    source.m_systemError = EACCES;
    return std::move(source); // its entries follow all the same, each with its own fault
}

/** Opens the folder @p path, if need be at the cost of those that are open. */
FolderEntries SourceWalk::openFolder(const QString &path)
{
    FolderEntries entries(path);
    if (entries.error() != EMFILE && entries.error() != ENFILE)
        return entries;
    for (Level &level : m_levels)
        level.entries.hold();
    return FolderEntries(path);
}

} // namespace internal

} // namespace vn
