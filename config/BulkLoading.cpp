// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/StringUtils.h"
#include "base/ZipReader.h"
#include "config/ConfigTextReader_p.h"
#include "config/FolderEntries_p.h"

#include <QtCore/QFileInfo>

namespace vn {

namespace {

using Configurations = QMap<QString, QString>;

/** What bulk loading asks of a configuration text. The sections are not looked at. */
struct Header
{
    explicit Header(const QString &text)
    {
        MemoryLines lines(text);
        isComplete = readHeader(lines, [this](const QString &key, QStringView value) {
            if (key == VanteroConfigFile::FACTORY_IP)
                factoryIp = value; // of several the last one counts
        });
    }

    bool isComplete;
    QStringView factoryIp; // into the text; null where there is none
};

/** Adds a text before all others of its address, as QMap::insertMulti() did. */
void add(const Header &header, const QString &text, Configurations &configurations)
{
    // Qt has left several values a key to QMultiMap, which wraps the same data. Nothing interrupts
    // the loan: memory that runs out ends the process.
    QMultiMap<QString, QString> multiMap;
    configurations.swap(multiMap);
    multiMap.insert(toText(header.factoryIp), text);
    configurations.swap(multiMap);
}

int addArchive(ZipReader &archive, Configurations &configurations)
{
    const QStringList names = archive.fileListBySuffix(QStringLiteral("cfg"));
    for (const QString &name : names) {
        (void)archive.openFile(name); // reading tells why it failed
        const QString text = FileUtils::readText(&archive);
        // Kept on purpose: in an archive, a text without a header counts, too.
        add(Header(text), text, configurations);
    }
    return names.size();
}

/** One call over files, folders and archives. */
class Collector
{
public:
    Collector(Configurations &configurations, bool recursive, const QByteArray &password)
        : m_configurations(configurations)
        , m_recursive(recursive)
        , m_password(password)
    {
    }

    /** Adds what is found in @p entries, in their order; returns the number of texts added. */
    int collect(const QVector<FolderEntry> &entries)
    {
        int count = 0;
        for (const FolderEntry &entry : entries) {
            // Kept on purpose: the name alone tells an archive, even where it is that of a folder.
            if (StringUtils::endsWithIgnoreCase(entry.path, QStringLiteral(".zip")))
                count += collectArchive(entry.path);
            else if (entry.kind == FolderEntry::Unknown)
                count += collectUnknown(entry.path);
            else if (entry.kind == FolderEntry::Folder)
                count += collectFolder(entry.path);
            else
                count += collectListedFile(entry.path);
        }
        return count;
    }

private:
    int collectUnknown(const QString &path)
    {
        const QFileInfo info(path);
        if (info.isDir())
            return collectFolder(path);
        return info.isFile() ? collectFile(info.absoluteFilePath()) : 0;
    }

    int collectArchive(const QString &path)
    {
        ZipReader archive(path, m_password);
        (void)archive.open(QIODevice::ReadOnly); // the list of its entries tells why it failed
        const int count = addArchive(archive, m_configurations);
        archive.close();
        return count;
    }

    int collectFolder(const QString &path) { return m_recursive ? collect(listFolder(path)) : 0; }

    /** A file that was there when its folder was listed. */
    int collectListedFile(const QString &path)
    {
        try {
            return collectFile(path);
        } catch (const FileException &) {
            return collectUnknown(path); // it may be gone by now, which is no failure
        }
    }

    int collectFile(const QString &path)
    {
        const QString text = FileUtils::readText(path);
        const Header header(text);
        if (!header.isComplete)
            return 0;
        add(header, text, m_configurations);
        return 1;
    }

    Configurations &m_configurations;
    const bool m_recursive;
    const QByteArray &m_password;
};

} // namespace

int VanteroConfigFile::parseAll(ZipReader &archive, QMap<QString, QString> &configurations)
{
    return onlyThrows<ParseException, IOException>(
        [&] { return addArchive(archive, configurations); });
}

int VanteroConfigFile::parseAll(const QStringList &paths, QMap<QString, QString> &configurations,
                                bool recursive, const QByteArray &password)
{
    return onlyThrows<ParseException, IOException>([&] {
        QVector<FolderEntry> entries;
        entries.reserve(paths.size());
        for (const QString &path : paths)
            entries.append({path, FolderEntry::Unknown});
        return Collector(configurations, recursive, password).collect(entries);
    });
}

QMap<QString, QString> VanteroConfigFile::parseAll(const QStringList &paths, bool recursive,
                                                   const QByteArray &password)
{
    QMap<QString, QString> configurations;
    (void)parseAll(paths, configurations, recursive, password);
    return configurations;
}

} // namespace vn
