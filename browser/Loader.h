// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_LOADER_H
#define BROWSER_LOADER_H

#include "AlarmList.h"
#include "Configuration.h"
#include "Problem.h"

#include <QtCore/QByteArray>
#include <QtCore/QSemaphore>
#include <QtCore/QStringList>
#include <QtCore/QThread>

#include <atomic>
#include <vector>

namespace browser {

/** An archive that wants a password, or another one. */
struct LockedArchive
{
    QString path;
    Problem problem; // what is said if nobody knows the password
};

/** What was read since the batch before. */
struct LoadBatch
{
    std::vector<Configuration> configurations;
    std::vector<AlarmList> alarmLists;
    std::vector<Problem> problems;
    std::vector<LockedArchive> lockedArchives;
    int done = 0;  // files and entries of archives read
    int total = 0; // of so many
};

/**
 * Reads files, folders and archives in a thread of its own and hands what it finds to the thread
 * that made it, in batches.
 *
 * The library does its work on the thread that calls it; all calls that may take long are made
 * here. Results are moved over, never shared. finished() comes after the last batch.
 */
class Loader : public QThread
{
    Q_OBJECT

public:
    /** Reads @p paths, archives with @p password (empty means none), once start() is called. */
    Loader(const QStringList &paths, QByteArray password, QObject *parent = nullptr);
    ~Loader() override;

    /** Ends it after the file or entry that is being read. */
    void stop();

    const QStringList &paths() const { return m_paths; }
    bool hasPassword() const { return !m_password.isEmpty(); }

Q_SIGNALS:
    /** In the thread that made this object. */
    void loaded(const browser::LoadBatch &batch);

protected:
    void run() override;

private:
    friend class LoadRun;

    /** Passes @p batch on. Waits while the receiver is behind, so that it stays responsive. */
    void send(LoadBatch batch);

    const QStringList m_paths;
    const QByteArray m_password;
    std::atomic<bool> m_isStopped{false};
    QSemaphore m_freePlaces; // for batches that the receiver has not looked at
};

} // namespace browser

#endif // BROWSER_LOADER_H
