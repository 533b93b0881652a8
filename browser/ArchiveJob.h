// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_ARCHIVEJOB_H
#define BROWSER_ARCHIVEJOB_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QThread>

#include <atomic>
#include <vector>

namespace browser {

class Document;

/** What goes into an archive. */
struct ArchiveEntry
{
    QString name;
    QByteArray bytes;
};

/** The texts of cameras as they are now, each under a name of its own. */
std::vector<ArchiveEntry> archiveEntriesOf(const std::vector<Document *> &documents);

/** Writes an archive in a thread of its own. It is there whole or not at all. */
class ArchiveJob : public QThread
{
    Q_OBJECT

public:
    /** An empty @p password means no encryption. */
    ArchiveJob(QString path, QByteArray password, std::vector<ArchiveEntry> entries,
               QObject *parent = nullptr);
    ~ArchiveJob() override;

    void stop() { m_isStopped = true; }
    bool wasStopped() const { return m_isStopped; }
    /** Why it was not written, once it is finished; null where it was. */
    const QString &error() const { return m_error; }
    /** What it could not keep of an archive that it has replaced, a sentence each. */
    const QStringList &losses() const { return m_losses; }

Q_SIGNALS:
    void progressed(int done);

protected:
    void run() override;

private:
    const QString m_path;
    const QByteArray m_password;
    const std::vector<ArchiveEntry> m_entries;
    std::atomic<bool> m_isStopped{false};
    QString m_error;
    QStringList m_losses;
};

} // namespace browser

#endif // BROWSER_ARCHIVEJOB_H
