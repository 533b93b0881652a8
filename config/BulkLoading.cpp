// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"
#include "config/ConfigCollector.h"

namespace vn {

namespace {

using Configurations = QMap<QString, QString>;

// All texts are kept, twice as large as their bytes: few archives must not unpack to all memory.
constexpr qint64 kMostArchived = qint64(4) * 1024 * 1024 * 1024;

/** Adds all texts that @p collector finds and returns their number. The first fault ends it. */
int addAll(ConfigCollector &collector, Configurations &configurations)
{
    int count = 0;
    while (const auto found = collector.next()) {
        if (found->exception)
            found->exception->raise();
        if (found->status != ConfigCollector::Status::Configuration)
            continue;
        // Before all others of its address, as QMap::insertMulti() did. Qt has left several values
        // a key to QMultiMap, which wraps the same data. Nothing interrupts the loan: memory that
        // runs out ends the process.
        QMultiMap<QString, QString> multiMap;
        configurations.swap(multiMap);
        multiMap.insert(found->factoryIp, found->text);
        configurations.swap(multiMap);
        ++count;
    }
    return count;
}

} // namespace

int VanteroConfigFile::parseAll(ZipReader &archive, QMap<QString, QString> &configurations)
{
    return onlyThrows<ParseException, IOException>([&] {
        ConfigCollector collector(archive, ConfigCollector::Options());
        return addAll(collector, configurations);
    });
}

int VanteroConfigFile::parseAll(const QStringList &paths, QMap<QString, QString> &configurations,
                                bool recursive, const QByteArray &password)
{
    return onlyThrows<ParseException, IOException>([&] {
        ConfigCollector::Options options;
        options.recursive = recursive;
        options.password = password;
        options.collectionSizeLimit = kMostArchived;
        ConfigCollector collector(paths, options);
        return addAll(collector, configurations);
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
