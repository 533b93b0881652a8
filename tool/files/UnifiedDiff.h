// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_UNIFIEDDIFF_H
#define VN_TOOL_FILES_UNIFIEDDIFF_H

#include "config/VanteroConfigText.h"

#include <QtCore/QByteArray>
#include <QtCore/QVector>

namespace vn::tool {

/**
 * The changes from @p before to @p after as a unified diff with three lines of context, which
 * `patch` applies to the file @p name; empty when there is none. Lines are those of the bytes, with
 * whatever is before "\n" part of them.
 *
 * Nothing is searched for: @p edits are the places in the text of @p before that differ, ascending
 * and apart; what stands at the ends of one that does not differ is left out.
 */
QByteArray unifiedDiff(const QByteArray &before, const QByteArray &after,
                       const QVector<VanteroConfigText::Splice> &edits, const QByteArray &name);

} // namespace vn::tool

#endif // VN_TOOL_FILES_UNIFIEDDIFF_H
