// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_FILEHANDOVER_P_H
#define VN_BASE_FILEHANDOVER_P_H

/** @file What a file hands on to the one that takes its name: owner, group, mode, access list and
 * extended attributes. */

#include "base/AtomicFile.h"
#include "base/FileDescriptor_p.h"

#include <QtCore/QByteArray>

namespace vn {

namespace internal {

/** Opens the regular file at @p path, no link, to see what it hands on; none where there is no
 * such. */
FileDescriptor openPredecessor(const QByteArray &path);

/**
 * Gives @p file, which is the process' own and nobody else may use (0600), what @p old has. What
 * cannot be kept makes the new file's rights fewer, never more, and is put into @p losses. At no
 * moment somebody may do to the new file what he could not do to the old one. Returns false, with
 * errno, where not even that is possible.
 *
 * The content must have been written: to write takes set-id bits and capabilities away.
 */
bool handOn(const FileDescriptor &old, const FileDescriptor &file, AtomicFile::Losses *losses);

} // namespace internal

} // namespace vn

#endif // VN_BASE_FILEHANDOVER_P_H
