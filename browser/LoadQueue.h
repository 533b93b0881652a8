// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_LOADQUEUE_H
#define BROWSER_LOADQUEUE_H

#include "Loader.h"

#include <QtCore/QObject>

#include <deque>
#include <memory>

namespace browser {

/** What the user asked to open, one loader after the other; then the archives that want a password.
 */
class LoadQueue : public QObject
{
    Q_OBJECT

public:
    explicit LoadQueue(QObject *parent = nullptr);
    ~LoadQueue() override;

    void open(const QStringList &paths);
    /** Forgets what is not read yet. What was read stays. */
    void cancel();
    bool isBusy() const;

    /** Answers passwordWanted(): tries all archives that are waiting for one. */
    void unlock(const QByteArray &password);
    /** Answers passwordWanted(): goes on without the archive. */
    void skip();

Q_SIGNALS:
    void started();
    void loaded(const browser::LoadBatch &batch);
    /** @p wasWrong says that it was tried with the last password. */
    void passwordWanted(const QString &archive, bool wasWrong);
    void finished(bool wasCancelled);

private:
    struct Request
    {
        QStringList paths;
        QByteArray password;
    };
    struct Locked
    {
        LockedArchive archive;
        bool wasTried;
    };

    void startNext();
    void start(const Request &request);
    void take(const LoadBatch &batch);
    void reportLocked(std::size_t count);

    std::deque<Request> m_requests;
    std::deque<Locked> m_locked;
    std::unique_ptr<Loader> m_loader;
    bool m_isBusy = false;
    bool m_isAsking = false;
    bool m_wasCancelled = false;
};

} // namespace browser

#endif // BROWSER_LOADQUEUE_H
