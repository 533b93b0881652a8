// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Output.h"

#include "tool/cli/FileNameCodec.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace vn::tool {

namespace {

constexpr int kBufferSize = 1 << 16;
constexpr char kProgram[] = "vantero-formats:";

/** Writes all bytes; false, with errno set, when that fails. */
bool writeAll(int descriptor, const QByteArray &bytes)
{
    const char *data = bytes.constData();
    std::size_t left = std::size_t(bytes.size());
    while (left > 0) {
        const ssize_t written = ::write(descriptor, data, left);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += written;
        left -= std::size_t(written);
    }
    return true;
}

ToolError standardOutputError()
{
    return ToolError(ExitCode::OutputFailed, QStringLiteral("standard output: ") +
                                                 QString::fromLocal8Bit(std::strerror(errno)));
}

} // namespace

Output::Output(bool json, ColorMode colors)
    : m_json(json)
    , m_toTerminal(::isatty(STDOUT_FILENO) == 1)
    , m_colors(colors, STDOUT_FILENO)
    , m_errorColors(colors, STDERR_FILENO)
    , m_progress(!json)
{
}

void Output::print(const QString &text)
{
    print(toOutputBytes(text));
}

void Output::print(const QByteArray &bytes)
{
    Q_ASSERT(!m_json);
    append(bytes);
}

void Output::printJson(const QByteArray &piece)
{
    Q_ASSERT(m_json);
    m_hasPieces = true;
    append(piece);
}

void Output::append(const QByteArray &bytes)
{
    m_buffer += bytes;
    if (m_buffer.size() >= kBufferSize)
        flush();
}

void Output::printLine(const QString &text)
{
    print(text + QLatin1Char('\n'));
}

QString Output::forTerminal(const QString &text) const
{
    if (!m_toTerminal)
        return text;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines)
        line = escapedControls(line);
    return lines.join(QLatin1Char('\n'));
}

void Output::printForeign(const QString &text)
{
    print(forTerminal(text));
}

void Output::printForeignDiff(const QString &lines)
{
    printDiff(toOutputBytes(forTerminal(lines)));
}

void Output::setResult(Json result)
{
    m_result = std::move(result);
}

void Output::complain(const ToolError &error)
{
    if (m_json)
        return;
    m_progress.hide();
    writeToStandardError(failureText(error, false, m_errorColors));
}

void Output::warn(const QString &name, const QString &message)
{
    complain(ToolError::warning(message).at(name));
}

void Output::finish()
{
    if (m_json && !m_hasPieces) {
        Q_ASSERT(m_result);
        m_buffer = m_result->toText();
        m_result.reset();
    }
    close();
}

void Output::close()
{
    flush();
    // Some file systems report a full disk or quota only here.
    if (::close(STDOUT_FILENO) != 0 && errno != EINTR)
        throw standardOutputError();
}

ExitCode Output::fail(const ToolError &error)
{
    if (!m_json) {
        try {
            flush(); // what was found before the error
        } catch (const ToolError &) {
            // The first error is the one to tell.
        }
        complain(error);
        return error.code();
    }
    if (m_hasPieces) // what is printed cannot be taken back
        writeToStandardError(failureText(error, false, m_errorColors));
    else
        m_buffer = failureText(error, true);
    m_result.reset();
    try {
        close();
    } catch (const ToolError &) {
        if (!m_hasPieces)
            writeToStandardError(failureText(error, false, m_errorColors));
        return ExitCode::OutputFailed;
    }
    return error.code();
}

void Output::flush()
{
    const QByteArray bytes = m_buffer;
    m_buffer.clear(); // also on failure: nothing is written twice
    if (!bytes.isEmpty())
        m_progress.hide();
    if (!writeAll(STDOUT_FILENO, bytes))
        throw standardOutputError();
}

QString escapedControls(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (c.category() != QChar::Other_Control || c == QLatin1Char('\t'))
            result += c;
        else
            result +=
                QLatin1String("\\x") +
                QString::number(c.unicode(), 16).toUpper().rightJustified(2, QLatin1Char('0'));
    }
    return result;
}

QByteArray failureText(const ToolError &error, bool json, const Colors &colors)
{
    if (json)
        return Json::object({{"error", errorToJson(error)}}).toText();
    const bool isFailure = error.code() != ExitCode::Done;
    QString text = colors.text(isFailure ? Style::Error : Style::Place, QLatin1String(kProgram)) +
                   QLatin1Char(' ') + error.place();
    if (error.isWarning())
        text += colors.text(Style::Warning, QStringLiteral("warning:")) + QLatin1Char(' ');
    text += error.message() + QLatin1Char('\n');
    if (!error.excerpt().isEmpty()) {
        text += error.excerpt();
        if (!text.endsWith(QLatin1Char('\n')))
            text += QLatin1Char('\n');
    }
    return toOutputBytes(text);
}

Json errorToJson(const ToolError &error)
{
    Json json = Json::object({
        {"file", error.file().isEmpty() ? Json() : Json(error.file())},
        {"line", error.line() > 0 ? Json(error.line()) : Json()},
        {"column", error.column() > 0 ? Json(error.column()) : Json()},
        {"message", error.message()},
        {"exitCode", int(error.code())},
    });
    if (!error.reason().isNull())
        json.insert(QStringLiteral("reason"), error.reason());
    return json;
}

void writeToStandardError(const QByteArray &bytes)
{
    (void)writeAll(STDERR_FILENO, bytes);
}

} // namespace vn::tool
