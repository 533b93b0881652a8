// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGMAPS_H
#define VN_TOOL_FILES_CONFIGMAPS_H

#include "config/VanteroConfigMap.h"

namespace vn {

class VanteroConfigFile;

namespace tool {

/** What @p config holds, header values included. */
VanteroConfigMap mapOf(const VanteroConfigFile &config);

/** Whether the two hold the same sections with the same values in the same order. A section without
 * entries counts as none, a null value as an empty one: the texts of both are alike. */
bool isSameMap(const VanteroConfigMap &a, const VanteroConfigMap &b);

} // namespace tool
} // namespace vn

#endif // VN_TOOL_FILES_CONFIGMAPS_H
