// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/ToolError.h"

#include "base/Exceptions.h"

namespace vn::tool {

ToolError::ToolError(ExitCode code, const QString &message)
    : m_code(code)
    , m_message(message)
    , m_what(message.toStdString())
{
}

ToolError::~ToolError() = default;

ToolError ToolError::at(const QString &name) const
{
    return at(name, m_line, m_column);
}

ToolError ToolError::at(const QString &name, int line, int column) const
{
    ToolError copy = *this;
    copy.m_file = name;
    copy.m_line = line;
    copy.m_column = column;
    return copy;
}

ToolError ToolError::showing(const QString &excerpt) const
{
    ToolError copy = *this;
    copy.m_excerpt = excerpt;
    return copy;
}

QString ToolError::toString() const
{
    QString text;
    if (!m_file.isEmpty()) {
        text += m_file + QLatin1Char(':');
        if (m_line > 0)
            text += QString::number(m_line) + QLatin1Char(':');
        if (m_line > 0 && m_column > 0)
            text += QString::number(m_column) + QLatin1Char(':');
        text += QLatin1Char(' ');
    }
    return text + m_message;
}

const char *ToolError::what() const noexcept
{
    return m_what.c_str();
}

namespace {

ToolError errorFrom(ExitCode code, const ExceptionQt &exception, const QString &name)
{
    if (const auto *file = dynamic_cast<const FileException *>(&exception))
        return ToolError(code, file->reason()).at(name);
    QString message = exception.message();
    const QString prefix = name + QLatin1String(": ");
    if (message.startsWith(prefix))
        message.remove(0, prefix.size());
    return ToolError(code, message).at(name);
}

} // namespace

ToolError inputError(const ExceptionQt &exception, const QString &name)
{
    return errorFrom(ExitCode::BadInput, exception, name);
}

ToolError outputError(const ExceptionQt &exception, const QString &name)
{
    return errorFrom(ExitCode::OutputFailed, exception, name);
}

} // namespace vn::tool
