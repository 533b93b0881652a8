// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_COLLECTTARGET_H
#define VN_TOOL_FILES_COLLECTTARGET_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>

namespace vn::tool {

/**
 * Where collected configurations are written: a folder or an archive. It appears with the first
 * configuration; nothing that is there already is ever overwritten.
 */
class CollectTarget
{
public:
    virtual ~CollectTarget() = default;

    /**
     * Writes @p bytes under a name made from the camera's @p address and returns the name.
     * @throws ToolError (output failed)
     */
    virtual QString write(const QString &address, const QByteArray &bytes) = 0;

    /** Completes the target. Without it an archive does not appear.
     * @throws ToolError (output failed) */
    virtual void finish() = 0;
};

/** Files in the folder @p path, which is made where it is missing. */
std::unique_ptr<CollectTarget> makeFolderTarget(const QString &path);

/** Entries of a new archive at @p path, not encrypted.
 * @throws ToolError (output failed) when there is something at that path */
std::unique_ptr<CollectTarget> makeArchiveTarget(const QString &path);

/**
 * The beginning of a file name for @p address: its ASCII letters, digits, "-", "_" and single dots,
 * anything else as "_"; "unknown" for an empty one. It names no folder and no hidden file.
 */
QString fileNamePart(const QString &address);

} // namespace vn::tool

#endif // VN_TOOL_FILES_COLLECTTARGET_H
