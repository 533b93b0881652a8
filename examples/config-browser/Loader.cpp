// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Loader.h"

#include "SourceList.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/ZipReader.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QMetaObject>

#include <utility>

namespace browser {

namespace {

constexpr int kBatchesAhead = 2;
constexpr std::size_t kBatchSize = 64;
constexpr int kBatchMs = 100;

/** Whether an entry of an archive could not be read for want of the right password. The library
 * tells it in words only. */
bool wantsPassword(const QString &reason)
{
    return reason == QLatin1String("encrypted, and there is no password") ||
           reason == QLatin1String("Incorrect passphrase") ||
           reason.endsWith(QLatin1String(", or the password is wrong"));
}

} // namespace

/** One run of a loader. */
class LoadRun
{
public:
    LoadRun(Loader &loader, const QByteArray &password)
        : m_loader(loader)
        , m_password(password)
    {
        m_sinceBatch.start();
    }

    void load(const QStringList &paths)
    {
        const std::vector<Source> sources = listSources(
            paths, [this](const Problem &problem) { m_batch.problems.push_back(problem); },
            [this] { return isCancelled(); });
        m_batch.total = int(sources.size());
        for (const Source &source : sources) {
            if (isCancelled())
                break;
            read(source);
            advance();
        }
        send();
    }

private:
    bool isCancelled() const { return m_loader.isInterruptionRequested(); }

    void read(const Source &source)
    {
        switch (source.kind) {
        case Source::Kind::Configuration:
            return readConfiguration(source);
        case Source::Kind::Archive:
            return readArchive(source.path);
        case Source::Kind::AlarmList:
            return readAlarmList(source.path);
        }
    }

    void readConfiguration(const Source &source)
    {
        // One file a call, so that an error ends the reading of that file alone.
        QMap<QString, QString> found;
        try {
            (void)vn::VanteroConfigFile::parseAll({source.path}, found, false, QByteArray());
        } catch (const vn::ExceptionQt &e) {
            return report(source.path, QString(), withoutName(e.message(), source.path));
        }
        if (!found.isEmpty())
            add(makeConfiguration(source.path, QString(), 0, found.first()));
        else if (source.isNamed)
            report(source.path, QString(),
                   Loader::tr("no configuration: the first two lines do not tell the versions"));
    }

    /** Reads entry by entry: parseAll() would not tell their names, and could not be cancelled. */
    void readArchive(const QString &path)
    {
        vn::ZipReader archive(path, m_password);
        QStringList names;
        try {
            (void)archive.open(QIODevice::ReadOnly); // the list of its entries tells why it failed
            names = archive.fileListBySuffix(QStringLiteral("cfg"));
        } catch (const vn::ExceptionQt &e) {
            return report(path, QString(), withoutName(e.message(), path));
        }
        m_batch.total += names.size();
        bool isLocked = false;
        for (int i = 0; i < names.size() && !isCancelled(); ++i) {
            const QString &name = names.at(i);
            try {
                (void)archive.openFile(name); // reading tells why it failed
                add(makeConfiguration(path, name, i, vn::FileUtils::readText(&archive)));
            } catch (const vn::ExceptionQt &e) {
                const QString reason = withoutName(withoutName(e.message(), path), name);
                if (!wantsPassword(reason))
                    report(path, name, reason);
                else if (!std::exchange(isLocked, true))
                    m_batch.lockedArchives.push_back({path, {path, name, reason}});
            }
            advance();
        }
    }

    void readAlarmList(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return report(path, QString(), file.errorString());
        const QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError)
            return report(path, QString(), file.errorString());
        AlarmList list = parseAlarmList(path, bytes);
        if (!list.isValid())
            report(path, list.errorPlace(), list.error);
        m_batch.alarmLists.push_back(std::move(list));
    }

    void add(Configuration configuration)
    {
        if (!configuration.parseError.isEmpty())
            report(configuration.path, configuration.entry, configuration.parseError);
        m_batch.configurations.push_back(std::move(configuration));
    }

    void report(const QString &file, const QString &place, const QString &reason)
    {
        m_batch.problems.push_back({file, place, reason});
    }

    void advance()
    {
        ++m_batch.done;
        if (m_batch.configurations.size() >= kBatchSize || m_sinceBatch.hasExpired(kBatchMs))
            send();
    }

    void send()
    {
        LoadBatch next;
        next.done = m_batch.done;
        next.total = m_batch.total;
        m_loader.send(std::exchange(m_batch, std::move(next)));
        m_sinceBatch.start();
    }

    Loader &m_loader;
    const QByteArray &m_password;
    LoadBatch m_batch;
    QElapsedTimer m_sinceBatch;
};

Loader::Loader(QStringList paths, QByteArray password, QObject *parent)
    : QThread(parent)
    , m_paths(std::move(paths))
    , m_password(std::move(password))
    , m_freePlaces(kBatchesAhead)
{
}

Loader::~Loader()
{
    requestInterruption();
    wait();
}

void Loader::run()
{
    LoadRun(*this, m_password).load(m_paths);
}

void Loader::send(LoadBatch batch)
{
    constexpr int kLookAgainMs = 20;
    while (!m_freePlaces.tryAcquire(1, kLookAgainMs))
        if (isInterruptionRequested())
            return;
    QMetaObject::invokeMethod(
        this,
        [this, batch = std::move(batch)] {
            Q_EMIT loaded(batch);
            m_freePlaces.release();
        },
        Qt::QueuedConnection);
}

} // namespace browser
