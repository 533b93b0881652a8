// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_ATOMICFILE_P_H
#define VN_BASE_ATOMICFILE_P_H

/** @file What writing one file whole and many have in common. */

#include "base/FileDescriptor_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <sys/types.h>

namespace vn {

namespace internal {

constexpr mode_t kModeOfNewFiles = 0666; // the system takes the mask off

/** Raises @p error of the file @p path. */
[[noreturn]] void failOn(const QString &path, int error);

/** Raises the error of the latest system call. */
[[noreturn]] void failOn(const QString &path);

/** A hidden name that nobody else has. */
QByteArray temporaryName();

FileDescriptor openFolder(const QByteArray &path);

/** Has the names in a folder survive a power cut. The contents have arrived by then: a folder that
 * cannot be synchronised is no failure of the write. */
void synchronise(const FileDescriptor &folder);

/** Renames in or between folders, but only where nothing is called @p newName; otherwise errno is
 * EEXIST. */
bool renameToNew(int folder, const QByteArray &name, int newFolder, const QByteArray &newName);

/** The path of the file that Qt finds by @p path in its search paths; @p path for any other.
 * @throws FileException for a resource, and a path with a zero byte */
QByteArray systemPath(const QString &path);

} // namespace internal

} // namespace vn

#endif // VN_BASE_ATOMICFILE_P_H
