// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_VERSIONS_H
#define VN_TOOL_COMMANDS_VERSIONS_H

#include "tool/cli/Json.h"
#include "tool/cli/Output.h"

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QStringList>

namespace vn::tool {

/** The number of components of a version. */
constexpr int kVersionComponents = 6;

/** The name of component @p i: "platform", "major" and so on. */
QString versionComponentName(int i);

/** Whether a component of the version is a range of more than one number. */
bool isPattern(const VanteroSoftwareVersion &version);

/** Whether each number of @p version lies in the range that @p pattern has there. */
bool covers(const VanteroSoftwareVersion &pattern, const VanteroSoftwareVersion &version);

/** What there is to warn of a version: at most that its platform is not known. */
QStringList versionWarnings(const VanteroSoftwareVersion &version);

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_VERSIONS_H
