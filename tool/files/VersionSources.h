// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_VERSIONSOURCES_H
#define VN_TOOL_FILES_VERSIONSOURCES_H

/** @file Where commands take versions from: texts, lines of standard input, packages, folders. */

#include "version/FirmwareHead.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QStringList>

namespace vn::tool {

/** The head of the firmware package @p name ("-" is standard input).
 * @throws ToolError (bad input) when it cannot be read */
FirmwareHead readFirmware(const QString &name);

/** The texts, in the place of each "-" the lines of standard input that are not empty.
 * @throws ToolError (bad input) when "-" is there twice, or cannot be read */
QStringList versionTexts(const QStringList &texts);

/** The lines of the file @p name ("-" is standard input) that are not empty. */
QStringList versionLines(const QString &name);

/** A version at hand, and where it is from. */
struct OfferedVersion
{
    VanteroSoftwareVersion version;
    QString file; ///< the package; null where the version itself was given
};

/**
 * The versions of @p arguments: each is a folder (the packages in it, by name; other files are
 * passed over), a firmware package, "-" (a version a line of standard input) or a version.
 * @throws ToolError when one cannot be read, or a package that was named names no version
 */
QList<OfferedVersion> offeredVersions(const QStringList &arguments);

} // namespace vn::tool

#endif // VN_TOOL_FILES_VERSIONSOURCES_H
