// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGINPUT_H
#define VN_TOOL_FILES_CONFIGINPUT_H

#include "tool/files/ConfigSources.h"

#include "config/VanteroConfigFile.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace vn::tool {

/** A configuration that a command only reads: a text, or the comment of a camera's JPEG image. */
struct ConfigInput
{
    VanteroConfigFile config;
    std::optional<bool> hasVersionLines; ///< of the header; an image has none
};

/**
 * Loads @p source.
 * @throws ToolError when it is malformed (with the line), or no configuration
 */
ConfigInput readConfig(const ConfigSource &source);

/** The same for the file @p name ("-" is standard input).
 * @throws ToolError also when it cannot be read */
ConfigInput readConfig(const QString &name);

/** @throws ToolError when @p source is an archive, which would pass for a text without sections */
void refuseArchive(const ConfigSource &source);

/**
 * Parses @p text, the content of the file @p name.
 * @throws ToolError (bad input) with the line when it is malformed
 */
VanteroConfigFile parseConfig(const QString &text, const QString &name,
                              bool *hasVersionLines = nullptr);

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGINPUT_H
