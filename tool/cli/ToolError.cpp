// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/ToolError.h"

namespace vn::tool {

ToolError::ToolError(ExitCode code, const QString &message)
    : m_code(code)
    , m_message(message)
    , m_what(message.toStdString())
{
}

ToolError::~ToolError() = default;

ToolError ToolError::warning(const QString &message)
{
    ToolError result(ExitCode::Done, message);
    result.m_isWarning = true;
    return result;
}

ToolError ToolError::because(const QString &reason) const
{
    ToolError copy = *this;
    copy.m_reason = reason;
    return copy;
}

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

QString ToolError::place() const
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
    return text;
}

const char *ToolError::what() const noexcept
{
    return m_what.c_str();
}

} // namespace vn::tool
