// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Progress.h"

#include "tool/cli/Output.h"

#include <QtCore/QByteArray>

#include <unistd.h>

namespace vn::tool {

namespace {

constexpr qint64 kLongWorkMs = 500;
constexpr qint64 kRedrawMs = 100;
constexpr int kBarWidth = 30;

bool isTerminal()
{
    const QByteArray kind = qgetenv("TERM");
    return ::isatty(STDERR_FILENO) == 1 && !kind.isEmpty() && kind != "dumb";
}

/** "3 s", "2 min", "5 h": enough to decide whether to wait. */
QByteArray duration(double seconds)
{
    constexpr double kMinute = 60;
    constexpr double kHour = 60 * kMinute;
    if (seconds < 2 * kMinute)
        return QByteArray::number(qint64(seconds + 0.5)) + " s";
    if (seconds < 2 * kHour)
        return QByteArray::number(qint64(seconds / kMinute + 0.5)) + " min";
    return QByteArray::number(qint64(seconds / kHour + 0.5)) + " h";
}

/** "0.4 MB" */
QByteArray megabytes(double bytes)
{
    return QByteArray::number(bytes / 1e6, 'f', 1) + " MB";
}

} // namespace

Progress::Progress(bool wanted)
    : m_wanted(wanted)
{
    m_sinceStart.start();
}

Progress::~Progress()
{
    hide();
}

bool Progress::isPossible() const
{
    if (m_wanted && !m_isTerminal)
        m_isTerminal = isTerminal();
    return m_wanted && *m_isTerminal;
}

void Progress::expect(qint64 files, qint64 bytes)
{
    m_totalFiles = qMax<qint64>(0, m_totalFiles) + files;
    m_totalBytes = qMax<qint64>(0, m_totalBytes) + bytes;
}

QByteArray Progress::line() const
{
    const double seconds = double(qMax<qint64>(1, m_sinceStart.elapsed())) / 1000;
    QByteArray text;
    if (m_totalFiles >= 0) {
        const int filled =
            int(qMin(m_files, m_totalFiles) * kBarWidth / qMax<qint64>(1, m_totalFiles));
        text = '[' + QByteArray(filled, '#') + QByteArray(kBarWidth - filled, '-') + "] ";
    }
    text += QByteArray::number(m_files);
    if (m_totalFiles >= 0)
        text += " of " + QByteArray::number(m_totalFiles);
    text += " files, " + megabytes(double(m_bytes)) + ", " + megabytes(double(m_bytes) / seconds) +
            "/s";
    if (m_totalBytes > 0 && m_bytes > 0)
        text +=
            ", " +
            duration(double(qMax<qint64>(0, m_totalBytes - m_bytes)) * seconds / double(m_bytes)) +
            " left";
    return text;
}

void Progress::advance(qint64 bytes)
{
    ++m_files;
    m_bytes += bytes;
    if (m_sinceStart.elapsed() < kLongWorkMs || !isPossible())
        return;
    if (m_visible && m_sinceDrawn.elapsed() < kRedrawMs)
        return;
    writeToStandardError('\r' + line() + "\x1b[K"); // clears what stands behind
    m_visible = true;
    m_sinceDrawn.start();
}

void Progress::hide()
{
    if (m_visible)
        writeToStandardError("\r\x1b[K");
    m_visible = false;
}

} // namespace vn::tool
