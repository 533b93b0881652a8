// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_EXCEPTIONS_H
#define VN_BASE_EXCEPTIONS_H

/**
 * @file
 * The exceptions that the library raises.
 *
 * They are thrown by value and caught by const reference:
 * @code
 * try {
 *     config.parse(text, QDateTime::currentDateTime());
 * } catch (const vn::ParseException &e) {
 *     qWarning("%s", e.what());
 * }
 * @endcode
 * Threads: reentrant. Copies share their immutable content, so an exception may be handed to
 * another thread (clone()) and raised there (raise()).
 */

#include "base/Export.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <exception>
#include <memory>

class QFile;

namespace vn {

class FileException;

/** The base of all exceptions of the library: a message and, where there is one, the cause.
 * @since 1.0.0 */
class VN_BASE_EXPORT ExceptionQt : public std::exception
{
public:
    /**
     * Makes an exception that says @p message (what failed, on which name and why; no full stop).
     * A @p cause is copied with its class, so it may be a local object; null means none.
     */
    explicit ExceptionQt(const QString &message, const ExceptionQt *cause = nullptr);
    /** A copy, which shares message and cause. */
    ExceptionQt(const ExceptionQt &other) noexcept;
    /** Takes message and cause over. */
    ExceptionQt &operator=(const ExceptionQt &other) noexcept;
    ~ExceptionQt() override;

    /** The message, as given to the constructor. */
    [[nodiscard]] const QString &message() const noexcept { return m_message; }

    /** The exception that led to this one, of the class it was thrown with; null when there is
     * none. It lives as long as this exception or a copy of it. */
    [[nodiscard]] const ExceptionQt *cause() const noexcept { return m_cause.get(); }

    /** The message in UTF-8, valid as long as this exception. */
    const char *what() const noexcept override;

    /** A copy of the same class; the caller owns it. */
    [[nodiscard]] virtual ExceptionQt *clone() const;

    /** Throws a copy of the same class. */
    [[noreturn]] virtual void raise() const;

private:
    friend class FileException; // its code is kept beside the cause, which it never has

    QString m_message;
    QByteArray m_what;
    std::shared_ptr<const ExceptionQt> m_cause;
};

/**
 * A text that breaks its format, with the place.
 *
 * The meaning of the positions belongs to the format: the configuration reader gives -1 for all
 * four; the alarm parsers give line 0 and, as columns, the byte offsets from 0 where the offending
 * token begins and ends.
 * @since 1.0.0
 */
class VN_BASE_EXPORT ParseException : public ExceptionQt
{
public:
    /** Makes an exception with that place; @p message and @p cause as for ExceptionQt. */
    ParseException(const QString &message, int startLine, int startColumn, int endLine,
                   int endColumn, const ExceptionQt *cause = nullptr);
    /** A copy, which shares message and cause. */
    ParseException(const ParseException &other) noexcept;
    /** Takes message, cause and place over. */
    ParseException &operator=(const ParseException &other) noexcept;
    ~ParseException() override;

    /** The line where the offending text begins, as the format counts lines. */
    [[nodiscard]] int startLine() const noexcept { return m_startLine; }
    /** The column where the offending text begins, as the format counts columns. */
    [[nodiscard]] int startColumn() const noexcept { return m_startColumn; }
    /** The line where the offending text ends. */
    [[nodiscard]] int endLine() const noexcept { return m_endLine; }
    /** The column where the offending text ends. */
    [[nodiscard]] int endColumn() const noexcept { return m_endColumn; }

    [[nodiscard]] ParseException *clone() const override;
    [[noreturn]] void raise() const override;

private:
    int m_startLine;
    int m_startColumn;
    int m_endLine;
    int m_endColumn;
};

/** A device, file or archive that could not be read or written. @since 1.0.0 */
class VN_BASE_EXPORT IOException : public ExceptionQt
{
public:
    /** Makes an exception; @p message and @p cause as for ExceptionQt. */
    explicit IOException(const QString &message, const ExceptionQt *cause = nullptr);
    /** A copy, which shares message and cause. */
    IOException(const IOException &other) noexcept;
    /** Takes message and cause over. */
    IOException &operator=(const IOException &other) noexcept;
    ~IOException() override;

    [[nodiscard]] IOException *clone() const override;
    [[noreturn]] void raise() const override;
};

/** A file that could not be opened, read or written; the message is "NAME: REASON". @since 1.0.0 */
class VN_BASE_EXPORT FileException : public IOException
{
public:
    /** Takes name and error text from @p file as they are now; the file may go afterwards. */
    explicit FileException(const QFile &file);
    /** Says why the system refused the file @p fileName: @p systemError is an errno, such as
     * ENOENT. */
    FileException(const QString &fileName, int systemError);
    /** A copy, which shares message, cause and name. */
    FileException(const FileException &other) noexcept;
    /** Takes message, cause and name over. */
    FileException &operator=(const FileException &other) noexcept;
    ~FileException() override;

    /** The name of the file, as QFile::fileName() gave it. */
    [[nodiscard]] const QString &fileName() const noexcept { return m_fileName; }

    /** Why, without the name: "No such file or directory". The system's words, or Qt's. */
    [[nodiscard]] QString reason() const;

    /** The system's error number, such as ENOENT; 0 when it was not the system that refused, or its
     * number is not known. */
    [[nodiscard]] int systemError() const noexcept;

    [[nodiscard]] FileException *clone() const override;
    [[noreturn]] void raise() const override;

private:
    FileException(const QFile &file, int lastError);

    QString m_fileName;
};

/** Why an archive, or one of its entries, could not be read. @since 1.0.0 */
enum class ArchiveError {
    None,                    ///< Nothing failed.
    NotOpen,                 ///< The archive is not open, or another time, or not for reading.
    CannotBeOpened,          ///< The system refuses the file, or it is no regular one.
    ReadFailed,              ///< The system could not read the file.
    NotAnArchive,            ///< The file is something else.
    Truncated,               ///< The end of the archive is missing.
    Damaged,                 ///< The archive contradicts itself, or data do not fit their checksum.
    NeedsPassword,           ///< The entry is encrypted, and there is no password.
    WrongPassword,           ///< The entry is encrypted with another password.
    DamagedOrWrongPassword,  ///< One of the two: the format does not tell them apart for certain.
    UnsupportedMethod,       ///< The entry is compressed or encrypted in a way that is not known.
    NoSuchEntry,             ///< The archive has no such entry, or none has been chosen.
    OverEntryCountLimit,     ///< Over ZipReader::entryCountLimit().
    OverDirectorySizeLimit,  ///< The directory of the archive holds more than 256 MiB.
    OverEntrySizeLimit,      ///< Over ZipReader::entrySizeLimit().
    OverArchiveSizeLimit,    ///< Over ZipReader::archiveSizeLimit().
    OverRatioLimit,          ///< Over ZipReader::ratioLimit().
    OverlappingEntries,      ///< The data of the entry reach into those of another one.
    Split,                   ///< The file is one part of an archive in several.
    OverCollectionSizeLimit, ///< Over ConfigCollector::Options::collectionSizeLimit.
};

/** An archive that could not be read; the message is "PATH: REASON" or "PATH: ENTRY: REASON".
 * @since 1.0.0 */
class VN_BASE_EXPORT ArchiveException : public IOException
{
public:
    /** Says that the archive at @p path, or where it is not null its @p entry, could not be read
     * for the cause @p error, in words the @p reason. */
    ArchiveException(const QString &path, const QString &entry, ArchiveError error,
                     const QString &reason);
    /** A copy, which shares everything. */
    ArchiveException(const ArchiveException &other) noexcept;
    /** Takes everything over. */
    ArchiveException &operator=(const ArchiveException &other) noexcept;
    ~ArchiveException() override;

    /** The path of the archive, as its reader was given it. */
    [[nodiscard]] const QString &path() const noexcept { return m_path; }

    /** The name of the entry; null where the archive itself could not be read. */
    [[nodiscard]] const QString &entry() const noexcept { return m_entry; }

    /** Why. */
    [[nodiscard]] ArchiveError error() const noexcept { return m_error; }

    /** Why in words, without the names. */
    [[nodiscard]] const QString &reason() const noexcept { return m_reason; }

    [[nodiscard]] ArchiveException *clone() const override;
    [[noreturn]] void raise() const override;

private:
    QString m_path;
    QString m_entry;
    QString m_reason;
    ArchiveError m_error;
};

} // namespace vn

#endif // VN_BASE_EXCEPTIONS_H
