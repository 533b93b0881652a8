// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_FIRMWARELINES_P_H
#define VN_VERSION_FIRMWARELINES_P_H

/** @file The lines of a firmware package that name its version. */

#include "version/FirmwareHead.h"

#include <optional>
#include <vector>

class QIODevice;

namespace vn {

namespace internal {

/** How many lines of a package are read. */
constexpr int kFirmwareLines = 30;

/** What a line names. */
struct NamedVersion
{
    FirmwareLine::Form form = FirmwareLine::Form::TwoHashes;
    int line = 0;             ///< its number, from 0
    QString text;             ///< that of the version
    int column = 0;           ///< where that begins in the line, from 0
    qint64 lineOffset = 0;    ///< where the line begins, in characters
    QString skipped;          ///< the one character between a mark and the text
    bool hasTwoForms = false; ///< the line has an earlier form, too
    bool isCut = false;       ///< an upload line of which only the end has been read
};

/** What @p line names without the place of the line. */
std::optional<NamedVersion> namedVersion(const QString &line);

/** What the first lines of @p device name, from its position on; it is open for reading. A line
 * that fits no text is left out. */
std::vector<NamedVersion> namedVersions(QIODevice &device);

} // namespace internal

} // namespace vn

#endif // VN_VERSION_FIRMWARELINES_P_H
