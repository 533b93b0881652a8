// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Colors.h"

#include <QtCore/QList>

#include <unistd.h>

namespace vn::tool {

namespace {

constexpr char kBold[] = "\x1B[1m";
constexpr char kRed[] = "\x1B[31m";
constexpr char kGreen[] = "\x1B[32m";
constexpr char kCyan[] = "\x1B[36m";
constexpr char kEnd[] = "\x1B[0m";

/** The colors in the order of the styles. */
constexpr const char *kStyles[] = {
    "\x1B[1;31m", "\x1B[1;33m", "\x1B[1;36m", kGreen, kRed, kBold, "\x1B[2m",
};

const char *colorOf(const QByteArray &line)
{
    if (line.startsWith("--- ") || line.startsWith("+++ "))
        return kBold;
    if (line.startsWith("@@"))
        return kCyan;
    return line.startsWith('-') ? kRed : line.startsWith('+') ? kGreen : nullptr;
}

} // namespace

Colors::Colors(ColorMode mode, int descriptor)
{
    const QByteArray terminal = qgetenv("TERM");
    m_areOn = mode == ColorMode::Always ||
              (mode == ColorMode::Auto && qEnvironmentVariableIsEmpty("NO_COLOR") &&
               !terminal.isEmpty() && terminal != "dumb" && ::isatty(descriptor) == 1);
}

QString Colors::text(Style style, const QString &text) const
{
    return m_areOn && !text.isEmpty()
               ? QLatin1String(kStyles[int(style)]) + text + QLatin1String(kEnd)
               : text;
}

QByteArray Colors::diff(const QByteArray &lines) const
{
    if (!m_areOn)
        return lines;
    QByteArray result;
    for (int at = 0; at < lines.size();) {
        const int end = lines.indexOf('\n', at);
        QByteArray line = lines.mid(at, end < 0 ? -1 : end - at);
        const int length = line.size();
        if (const char *const color = colorOf(line))
            line = color + line + kEnd;
        result += line;
        at += length;
        if (end >= 0) {
            result += '\n';
            ++at;
        }
    }
    return result;
}

} // namespace vn::tool
