// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGWRITING_H
#define VN_TOOL_FILES_CONFIGWRITING_H

#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigMap.h"

#include <QtCore/QString>

namespace vn::tool {

/** The header block with the versions of @p config, and the line of the camera's @p address below
 * its title unless that is null. */
QString headerText(const VanteroConfigFile &config, const QString &address);

/** The map with the values of each key turned around. Printed, the oldest value then comes first,
 * as it does in a file; reading makes the last line the newest. */
VanteroConfigMap oldestFirst(const VanteroConfigMap &map);

/** Whether the two hold the same values in the same order. A section without entries counts as
 * none, a null value as an empty one. */
bool saysTheSame(const VanteroConfigMap &a, const VanteroConfigMap &b);

/**
 * A text that reads back as @p map, null values told from empty ones: the header (the block of
 * headerText() when it @p hasVersionLines and the map has both versions), then the sections by
 * name. What the header cannot hold stands in a section block "head".
 *
 * Whether a text can say all of the map is for the caller to see: by reading it.
 */
QString textOf(const VanteroConfigMap &map, bool hasVersionLines);

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGWRITING_H
