// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_SLICEDWORK_H
#define BROWSER_SLICEDWORK_H

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>

namespace browser {

/** Work on documents, which live in the thread of the window, in pieces that leave it responsive.
 */
class SlicedWork : public QObject
{
    Q_OBJECT

public:
    explicit SlicedWork(QObject *parent = nullptr);

    /** Calls @p step until it returns false, a few at a time. Work before it is given up. */
    void start(std::function<bool()> step);
    void cancel();
    bool isRunning() const { return m_timer.isActive(); }

Q_SIGNALS:
    /** Some steps are done. */
    void progressed();
    /** All are. */
    void finished();

private:
    void work();

    std::function<bool()> m_step;
    QTimer m_timer;
};

} // namespace browser

#endif // BROWSER_SLICEDWORK_H
