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
 * whatever is before "\n" part of them. Texts that have hardly a line in common may give a longer
 * diff than necessary.
 */
QByteArray unifiedDiff(const QByteArray &before, const QByteArray &after, const QByteArray &name);

/** The same where it is known where the texts differ: @p edits are places in the text of
 * @p before. */
QByteArray unifiedDiff(const QByteArray &before, const QByteArray &after,
                       const QVector<VanteroConfigText::Splice> &edits, const QByteArray &name);

} // namespace vn::tool

#endif // VN_TOOL_FILES_UNIFIEDDIFF_H
