// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_COLLECTTARGET_H
#define VN_TOOL_FILES_COLLECTTARGET_H

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <memory>

namespace vn::tool {

/** Names for new files, made as the library makes them, of which none is given twice. */
class NewNames
{
public:
    /** Tells whether a name is taken. */
    using IsTaken = std::function<bool(const QString &name)>;

    /** A name for what came from the camera at @p address, which ends with @p suffix (".cfg"). */
    QString next(const QString &address, const QString &suffix, const IsTaken &isTaken);

    /** Another name instead of @p name, which somebody else has taken. */
    QString instead(const QString &name, const IsTaken &isTaken);

private:
    QString numbered(const QString &first, const IsTaken &isTaken);

    QHash<QString, int> m_given;      // by the name without a number
    QHash<QString, QString> m_firsts; // names without a number, by the name with it
};

/**
 * Where collected configurations are written: a folder or an archive. It appears with the first
 * configuration; nothing that is there already is ever overwritten.
 */
class CollectTarget
{
public:
    virtual ~CollectTarget() = default;

    /**
     * Writes @p bytes under a name that is made from the camera's @p address and ends with
     * @p suffix; it is the last one of names().
     * @throws ToolError (output failed)
     */
    virtual void write(const QString &address, const QString &suffix, const QByteArray &bytes) = 0;

    /** Brings what was written to its place. Without it an archive does not appear, and of a folder
     * the last files.
     * @throws ToolError (output failed) */
    virtual void finish() = 0;

    /** Whether part of what was to be written is of use: files of a folder are, an archive is not.
     */
    virtual bool isUsefulInPart() const = 0;

    /** Whether the file at @p path is one of those that were written. */
    virtual bool hasWritten(const QString &path) const = 0;

    /** What was written, in its order. A name may change until finish(): where somebody else takes
     * it meanwhile. */
    const QStringList &names() const { return m_names; }

protected:
    QStringList m_names;
};

/** Files in the folder @p path, which is made where it is missing. */
std::unique_ptr<CollectTarget> makeFolderTarget(const QString &path);

/** Entries of a new archive at @p path, encrypted by AES-256 unless @p password is empty.
 * @throws ToolError (output failed) when there is something at that path */
std::unique_ptr<CollectTarget> makeArchiveTarget(const QString &path, const QByteArray &password);

/**
 * The beginning of a file name for @p address: its ASCII letters, digits, "-", "_" and single dots,
 * anything else as "_"; "unknown" for an empty one. It names no folder and no hidden file, and no
 * program takes it for an option.
 */
QString fileNamePart(const QString &address);

} // namespace vn::tool

#endif // VN_TOOL_FILES_COLLECTTARGET_H
