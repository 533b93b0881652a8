// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_VERSIONWORDS_H
#define VN_TOOL_COMMANDS_VERSIONWORDS_H

/** @file Versions, and verdicts on updates, in words and in JSON. */

#include "tool/cli/Json.h"
#include "tool/cli/Output.h"

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

/** What there is to warn of a version: where it is read otherwise than it looks. */
QStringList versionWarnings(const VanteroSoftwareVersion &version);

/** [{"rule", "sentence"}, …] */
Json reasonsToJson(const QList<UpdateReason> &reasons);

/** "safe", "unsafe", "depends" or "unknown". */
QString verdictName(UpdateJudgement::Verdict verdict);

/** Tells what keeps an update from being judged; the exit status of that. */
ExitCode complainOfObstacles(const QStringList &obstacles, Output &out);

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_VERSIONWORDS_H
