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

} // namespace

Progress::Progress(int total, bool wanted)
    : m_total(total)
    , m_possible(wanted && isTerminal())
{
    m_sinceStart.start();
}

Progress::~Progress()
{
    hide();
}

void Progress::advance()
{
    ++m_done;
    if (!m_possible || m_sinceStart.elapsed() < kLongWorkMs)
        return;
    if (m_visible && m_sinceDrawn.elapsed() < kRedrawMs)
        return;
    const int filled = int(qint64(kBarWidth) * m_done / qMax(1, m_total));
    writeToStandardError("\r[" + QByteArray(filled, '#') + QByteArray(kBarWidth - filled, '-') +
                         "] " + QByteArray::number(m_done) + " of " + QByteArray::number(m_total) +
                         "\x1b[K"); // clears what stands behind
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
