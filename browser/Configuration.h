// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CONFIGURATION_H
#define BROWSER_CONFIGURATION_H

#include "config/VanteroConfigMap.h"

#include <QtCore/QString>

namespace browser {

/** One configuration as it was read: where it stands, its text and what the text says. */
struct Configuration
{
    QString path;       // absolute; of the file or of the archive
    QString entry;      // of the archive; null for a file
    int entryIndex = 0; // of the archive, where a name may occur twice
    QString text;
    vn::VanteroConfigMap map;
    QString parseError; // empty where all of the text was understood

    bool isArchiveEntry() const { return !entry.isNull(); }
    QString address() const;
    QString hostName() const;
    QString firmware() const;

    /** The name of the file, with the archive's before it where it is an entry. */
    QString sourceName() const;
    /** The same with the whole path. */
    QString sourcePath() const;
};

/** Reads @p text. What is understood of a malformed one is kept, beside the error. */
Configuration makeConfiguration(const QString &path, const QString &entry, int entryIndex,
                                const QString &text);

} // namespace browser

#endif // BROWSER_CONFIGURATION_H
