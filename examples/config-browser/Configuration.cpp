// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Configuration.h"

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>

using vn::VanteroConfigFile;
using vn::VanteroConfigMap;

namespace browser {

namespace {

VanteroConfigMap mapOf(const VanteroConfigFile &config)
{
    VanteroConfigMap map;
    const QStringList sections = config.allSectionKeys();
    for (const QString &section : sections)
        map.replaceSection(section, config.section(section));
    return map;
}

} // namespace

QString Configuration::address() const
{
    return map.value(VanteroConfigFile::HEAD_SECTION, VanteroConfigFile::FACTORY_IP, 0);
}

QString Configuration::hostName() const
{
    const QString section = QStringLiteral("ethernet");
    const QString key = QStringLiteral("HOSTNAME");
    return map.contains(section, key) ? map.value(section, key, 0) : QString();
}

QString Configuration::firmware() const
{
    return map.value(VanteroConfigFile::HEAD_SECTION, VanteroConfigFile::SOFTWARE_VERSION, 0);
}

QString Configuration::sourceName() const
{
    const QString file = QFileInfo(path).fileName();
    return isArchiveEntry() ? file + QStringLiteral(" › ") + entry : file;
}

QString Configuration::sourcePath() const
{
    const QString file = QDir::toNativeSeparators(path);
    return isArchiveEntry() ? file + QStringLiteral(" › ") + entry : file;
}

Configuration makeConfiguration(const QString &path, const QString &entry, int entryIndex,
                                const QString &text)
{
    Configuration result;
    result.path = path;
    result.entry = entry;
    result.entryIndex = entryIndex;
    result.text = text;
    VanteroConfigFile config;
    try {
        config.parse(text, QDateTime::currentDateTime());
    } catch (const vn::ExceptionQt &e) {
        result.parseError = e.message(); // the sections before it were read
    }
    result.map = mapOf(config);
    return result;
}

VanteroConfigMap parseMap(const QString &text)
{
    VanteroConfigFile config;
    config.parse(text, QDateTime::currentDateTime());
    return mapOf(config);
}

bool isSameMap(const VanteroConfigMap &a, const VanteroConfigMap &b)
{
    const QStringList sections = a.allSectionKeys();
    return sections == b.allSectionKeys() &&
           std::all_of(sections.begin(), sections.end(), [&](const QString &section) {
               return a.section(section) == b.section(section);
           });
}

} // namespace browser
