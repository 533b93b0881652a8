// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_VERSIONWORDS_H
#define VN_TOOL_COMMANDS_VERSIONWORDS_H

#include "tool/cli/Json.h"
#include "tool/cli/Output.h"

#include "version/FirmwareHead.h"
#include "version/UpdateAdvisor.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QStringList>

namespace vn::tool {

/** The number of components of a version. */
constexpr int kVersionComponents = 6;

/** The word of a verdict ("unsafe", "depends on the model") in its color. */
QString coloredVerdict(const QString &word, const Colors &colors);

/** The name of component @p i: "platform", "major" and so on. */
QString versionComponentName(int i);

/** The head of the firmware package @p name ("-" is standard input).
 * @throws ToolError (bad input) when it cannot be read */
FirmwareHead readFirmware(const QString &name);

/** What there is to warn of a version: where it is read otherwise than it looks. */
QStringList versionWarnings(const VanteroSoftwareVersion &version);

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

/** [{"rule", "sentence"}, …] */
Json reasonsToJson(const QList<UpdateReason> &reasons);

/** "safe", "unsafe", "depends" or "unknown". */
QString verdictName(UpdateJudgement::Verdict verdict);

/** Tells what keeps an update from being judged; the exit status of that. */
ExitCode complainOfObstacles(const QStringList &obstacles, Output &out);

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_VERSIONWORDS_H
