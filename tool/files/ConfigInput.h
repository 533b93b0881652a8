// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGINPUT_H
#define VN_TOOL_FILES_CONFIGINPUT_H

#include "tool/files/ConfigSources.h"

#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigText.h"

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
 * Loads @p source; warns, a line a file, where something of it is passed over, cut or taken
 * otherwise than it looks.
 * @throws ToolError when it is malformed (with the line), or no configuration
 */
ConfigInput readConfig(const ConfigSource &source, Output &out);

/** The same for the file @p name ("-" is standard input).
 * @throws ToolError also when it cannot be read */
ConfigInput readConfig(const QString &name, Output &out);

/** A warning of what is passed over, cut or taken otherwise than it looks in @p text, of the file
 * @p name: the first such place, and how many more there are. */
std::optional<ToolError> lossOf(const VanteroConfigText &text, const QString &name);

/** The same of the header alone, for those who read no more. */
std::optional<ToolError> headerLossOf(const QString &text, const QString &name);

/** As lossOf() of a configuration without faults, for those who read thousands: has a quick look
 * first. */
std::optional<ToolError> quickLossOf(const QString &text, const QString &name);

/** Warns of a text, of the file @p name, that begins with a section: it is read as a header, and no
 * edit finds it. What else reading loses stays in an edited text. */
void warnOfLostSection(const QString &text, const QString &name, Output &out);

/** The text of @p source, which of an image is its comment; the form says which. Zero bytes are
 * characters of it.
 * @throws ToolError when it is an archive or UTF-16, or an image without a comment */
VanteroConfigText configText(const ConfigSource &source);

/** @throws ToolError when @p source is an archive or UTF-16, or holds zero bytes */
void requireText(const ConfigSource &source);

/**
 * Parses @p text, the content of the file @p name.
 * @throws ToolError (bad input) with the line when it is malformed
 */
VanteroConfigFile parseConfig(const QString &text, const QString &name,
                              bool *hasVersionLines = nullptr);

/** @throws ToolError (bad input) with the line when @p text, of the file @p name, is malformed */
void requireWellFormed(const VanteroConfigText &text, const QString &name);

/** "; did you mean WORD?" where @p text has no such section but a similar one; see didYouMean(). */
QString sectionHint(const VanteroConfigText &text, const QString &section);

/** The same of a key, or of its section where that is not there. */
QString keyHint(const VanteroConfigText &text, const QString &section, const QString &key);

/** @throws ToolError with the reason when an edit of the file @p name was not done: No, with
 * @p hint behind the reason, when there is nothing to edit, bad input when the format cannot hold
 * it */
void requireDone(const VanteroConfigText::Result &result, const QString &name, const QString &hint);

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGINPUT_H
