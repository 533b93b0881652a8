// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/Exceptions.h"

#include <QtCore/QFile>

namespace vn {

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
    : IOException(file.fileName() + QLatin1String(": ") + file.errorString())
    , m_fileName(file.fileName())
{
}

FileException::FileException(const FileException &) noexcept = default;
FileException &FileException::operator=(const FileException &) noexcept = default;
FileException::~FileException() = default;

FileException *FileException::clone() const
{
    return new FileException(*this);
}

void FileException::raise() const
{
    throw *this;
}

} // namespace vn
