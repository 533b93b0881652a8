// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_CONFIG_COLLECTORSUPPORT_H
#define VN_TESTS_CONFIG_COLLECTORSUPPORT_H

/** @file What the tests of the collector share: configurations, and what was found as lines. */

#include "config/ConfigCollector.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

/** A configuration of the camera @p address. */
inline QByteArray camera(const QByteArray &address, const QByteArray &mark = QByteArray())
{
    return "#:1.3=====\n#:VN-3.0\n# Camera IP: " + address + "\n\nSECTION s\nk=" + mark +
           "\nENDSECTION s\n";
}

inline QString nameOf(vn::ConfigCollector::Status status)
{
    using Status = vn::ConfigCollector::Status;
    switch (status) {
    case Status::Configuration:
        return QStringLiteral("configuration");
    case Status::NoConfiguration:
        return QStringLiteral("no configuration");
    case Status::NotFound:
        return QStringLiteral("not found");
    case Status::NotAFile:
        return QStringLiteral("not a file");
    case Status::FolderSkipped:
        return QStringLiteral("folder skipped");
    case Status::FolderUnreadable:
        return QStringLiteral("folder unreadable");
    case Status::FileUnreadable:
        return QStringLiteral("file unreadable");
    case Status::ArchiveUnreadable:
        return QStringLiteral("archive unreadable");
    case Status::EntryUnreadable:
        return QStringLiteral("entry unreadable");
    }
    return QString();
}

inline QString nameOf(vn::ArchiveError error)
{
    const char *const names[] = {"None",
                                 "NotOpen",
                                 "CannotBeOpened",
                                 "ReadFailed",
                                 "NotAnArchive",
                                 "Truncated",
                                 "Damaged",
                                 "NeedsPassword",
                                 "WrongPassword",
                                 "DamagedOrWrongPassword",
                                 "UnsupportedMethod",
                                 "NoSuchEntry",
                                 "OverEntryCountLimit",
                                 "OverDirectorySizeLimit",
                                 "OverEntrySizeLimit",
                                 "OverArchiveSizeLimit",
                                 "OverRatioLimit",
                                 "OverlappingEntries",
                                 "Split",
                                 "OverCollectionSizeLimit"};
    return QString::fromLatin1(names[int(error)]);
}

/** A test with a folder of its own, whose files and archives are collected. */
class CollectorTest : public FolderTest
{
protected:
    using Options = vn::ConfigCollector::Options;
    using Found = vn::ConfigCollector::Found;

    void file(const QString &name, const QByteArray &content) const
    {
        ASSERT_TRUE(dir().mkpath(QFileInfo(name).path()));
        writeFile(path(name), content);
    }

    /** @p path as a name in the folder of the test. */
    QString inFolder(const QString &path) const
    {
        return path.startsWith(dir().path() + "/"_q) ? path.mid(dir().path().size() + 1) : path;
    }

    /** "source: what became of it (error of an archive): address or reason". */
    QString shown(const Found &found) const
    {
        QString line = inFolder(found.path);
        if (!found.entry.isNull())
            line += ":"_q + found.entry;
        line += ": "_q + nameOf(found.status);
        if (found.archiveError != vn::ArchiveError::None)
            line += " ("_q + nameOf(found.archiveError) + ")"_q;
        const QString more = found.reason.isNull() ? found.factoryIp : found.reason;
        return more.isNull() ? line : line + ": "_q + more;
    }

    /** All that @p collector has left. */
    QStringList collected(vn::ConfigCollector &collector) const
    {
        QStringList lines;
        while (const auto found = collector.next())
            lines += shown(*found);
        return lines;
    }

    QStringList collected(const QStringList &paths, const Options &options = Options()) const
    {
        vn::ConfigCollector collector(paths, options);
        return collected(collector);
    }

    /** Options to look into folders, whose entries come by name. */
    static Options recursive()
    {
        Options options;
        options.recursive = true;
        options.order = vn::ConfigCollector::Order::Name;
        return options;
    }
};

#endif // VN_TESTS_CONFIG_COLLECTORSUPPORT_H
