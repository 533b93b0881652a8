// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/Exceptions.h"

#include <QtCore/QFile>

#include <cerrno>

namespace vn {

namespace {

const QLatin1String kSeparator(": ");

/** An error number that travels as the deleter of a cause that is null: FileException has no room
 * of its own, and must not grow, for programs make such objects themselves. */
struct SystemError
{
    void operator()(std::nullptr_t) const noexcept {}

    int number;
};

} // namespace

ExceptionQt::ExceptionQt(const QString &message, const ExceptionQt *cause)
    : m_message(message)
    , m_what(message.toUtf8())
    , m_cause(cause ? cause->clone() : nullptr)
{
}

ExceptionQt::ExceptionQt(const ExceptionQt &) noexcept = default;
ExceptionQt &ExceptionQt::operator=(const ExceptionQt &) noexcept = default;
ExceptionQt::~ExceptionQt() = default;

const char *ExceptionQt::what() const noexcept
{
    return m_what.constData();
}

ExceptionQt *ExceptionQt::clone() const
{
    return new ExceptionQt(*this);
}

void ExceptionQt::raise() const
{
    throw *this;
}

ParseException::ParseException(const QString &message, int startLine, int startColumn, int endLine,
                               int endColumn, const ExceptionQt *cause)
    : ExceptionQt(message, cause)
    , m_startLine(startLine)
    , m_startColumn(startColumn)
    , m_endLine(endLine)
    , m_endColumn(endColumn)
{
}

ParseException::ParseException(const ParseException &) noexcept = default;
ParseException &ParseException::operator=(const ParseException &) noexcept = default;
ParseException::~ParseException() = default;

ParseException *ParseException::clone() const
{
    return new ParseException(*this);
}

void ParseException::raise() const
{
    throw *this;
}

IOException::IOException(const QString &message, const ExceptionQt *cause)
    : ExceptionQt(message, cause)
{
}

IOException::IOException(const IOException &) noexcept = default;
IOException &IOException::operator=(const IOException &) noexcept = default;
IOException::~IOException() = default;

IOException *IOException::clone() const
{
    return new IOException(*this);
}

void IOException::raise() const
{
    throw *this;
}

FileException::FileException(const QFile &file)
    : FileException(file, errno)
{
}

// QFile keeps the system's words and not its number. The last number is the one where it has the
// same words.
FileException::FileException(const QFile &file, int lastError)
    : IOException(file.fileName() + kSeparator + file.errorString())
    , m_fileName(file.fileName())
{
    if (qt_error_string(lastError) == file.errorString())
        m_cause = {nullptr, SystemError{lastError}};
}

FileException::FileException(const QString &fileName, int systemError)
    : IOException(fileName + kSeparator + qt_error_string(systemError))
    , m_fileName(fileName)
{
    m_cause = {nullptr, SystemError{systemError}};
}

FileException::FileException(const FileException &) noexcept = default;
FileException &FileException::operator=(const FileException &) noexcept = default;
FileException::~FileException() = default;

QString FileException::reason() const
{
    return message().mid(m_fileName.size() + kSeparator.size());
}

int FileException::systemError() const noexcept
{
    const auto *error = std::get_deleter<SystemError>(m_cause);
    return error ? error->number : 0;
}

FileException *FileException::clone() const
{
    return new FileException(*this);
}

void FileException::raise() const
{
    throw *this;
}

ArchiveException::ArchiveException(const QString &path, const QString &entry, ArchiveError error,
                                   const QString &reason)
    : IOException(path + kSeparator + (entry.isNull() ? entry : entry + kSeparator) + reason)
    , m_path(path)
    , m_entry(entry)
    , m_reason(reason)
    , m_error(error)
{
}

ArchiveException::ArchiveException(const ArchiveException &) noexcept = default;
ArchiveException &ArchiveException::operator=(const ArchiveException &) noexcept = default;
ArchiveException::~ArchiveException() = default;

ArchiveException *ArchiveException::clone() const
{
    return new ArchiveException(*this);
}

void ArchiveException::raise() const
{
    throw *this;
}

} // namespace vn
