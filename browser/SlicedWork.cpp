// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "SlicedWork.h"

#include <QtCore/QElapsedTimer>

#include <utility>

namespace browser {

namespace {

constexpr int kSliceMs = 25;

} // namespace

SlicedWork::SlicedWork(QObject *parent)
    : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &SlicedWork::work);
}

void SlicedWork::start(std::function<bool()> step)
{
    m_step = std::move(step);
    m_timer.start(0);
}

void SlicedWork::cancel()
{
    m_timer.stop();
}

void SlicedWork::work()
{
    QElapsedTimer slice;
    slice.start();
    while (!slice.hasExpired(kSliceMs)) {
        if (m_step())
            continue;
        m_timer.stop();
        Q_EMIT progressed();
        Q_EMIT finished();
        return;
    }
    Q_EMIT progressed();
}

} // namespace browser
