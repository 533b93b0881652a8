// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Configuration.h"

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

using vn::VanteroConfigFile;

namespace browser {

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
    result.map = config.map();
    return result;
}

} // namespace browser
