// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Loader.h"

#include "ImageComment.h"

#include "base/Exceptions.h"
#include "config/ConfigCollector.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QMetaObject>

#include <algorithm>
#include <utility>

namespace browser {

namespace {

using vn::ArchiveError;
using vn::ConfigCollector;

constexpr int kBatchesAhead = 2;
constexpr std::size_t kBatchSize = 64;
constexpr int kBatchMs = 100;

bool wantsPassword(ArchiveError error)
{
    return error == ArchiveError::NeedsPassword || error == ArchiveError::WrongPassword ||
           error == ArchiveError::DamagedOrWrongPassword;
}

bool isAlarmList(const QString &path)
{
    return path.endsWith(QLatin1String(".alarms"), Qt::CaseInsensitive);
}

ConfigCollector::Options optionsOf(const QByteArray &password, const std::atomic<bool> &stop)
{
    ConfigCollector::Options options;
    options.recursive = true;
    options.order = ConfigCollector::Order::Name;
    options.password = password;
    options.stop = &stop;
    return options;
}

QStringList absolute(QStringList paths)
{
    for (QString &path : paths)
        path = QFileInfo(path).absoluteFilePath();
    return paths;
}

} // namespace

/** One run of a loader. */
class LoadRun
{
public:
    LoadRun(Loader &loader, const QByteArray &password)
        : m_loader(loader)
        , m_collector(loader.paths(), optionsOf(password, loader.m_isStopped))
    {
        m_sinceBatch.start();
    }

    void load()
    {
        (void)m_collector.measure(); // where it is stopped, so is what follows
        while (const auto found = m_collector.next()) {
            take(*found);
            const ConfigCollector::Progress progress = m_collector.progress();
            m_batch.done = int(progress.files);
            m_batch.total = int(progress.files + progress.filesLeft);
            if (m_batch.configurations.size() >= kBatchSize || m_sinceBatch.hasExpired(kBatchMs))
                send();
        }
        send();
    }

private:
    using Found = ConfigCollector::Found;
    using Status = ConfigCollector::Status;

    void take(const Found &found)
    {
        switch (found.status) {
        case Status::Configuration:
        case Status::NoConfiguration:
            return read(found);
        case Status::NotFound:
            return reportNamed(found, Loader::tr("No such file or directory"));
        case Status::NotAFile:
            return reportNamed(found, Loader::tr("neither a file nor a folder"));
        case Status::FolderSkipped: // none is
            return;
        case Status::FolderUnreadable:
            return report(found, Loader::tr("the folder cannot be read"));
        case Status::FileUnreadable:
        case Status::ArchiveUnreadable:
            return report(found, found.reason);
        case Status::EntryUnreadable:
            if (!wantsPassword(found.archiveError))
                report(found, found.reason);
            else if (std::exchange(m_lockedArchive, found.path) != found.path)
                m_batch.lockedArchives.push_back({found.path, problemOf(found, found.reason)});
        }
    }

    void read(const Found &found)
    {
        if (found.entry.isNull() && isAlarmList(found.path)) {
            AlarmList list = parseAlarmList(found.path, found.bytes);
            if (!list.isValid())
                m_batch.problems.push_back({found.path, list.errorPlace, list.error});
            m_batch.alarmLists.push_back(std::move(list));
        } else if (found.status == Status::Configuration) {
            Configuration configuration(found.path, found.entry, std::max(found.index, 0),
                                        found.bytes, Configuration::Form::Configuration);
            if (!configuration.summary().parseError.isEmpty())
                report(found, configuration.summary().parseError);
            m_batch.configurations.push_back(std::move(configuration));
        } else if (!readImage(found)) {
            reportNamed(found, Loader::tr("no configuration: the first two lines do "
                                          "not tell the versions"));
        }
    }

    /** Whether it is an image with settings in its comment. */
    bool readImage(const Found &found)
    {
        if (!isJpeg(found.bytes))
            return false;
        Configuration image(found.path, found.entry, std::max(found.index, 0),
                            imageComment(found.bytes), Configuration::Form::ImageComment);
        if (mapOf(image.text(), image.form()).allSectionKeys().isEmpty())
            return false;
        m_batch.configurations.push_back(std::move(image));
        return true;
    }

    static Problem problemOf(const Found &found, const QString &reason)
    {
        return {found.path, found.entry, reason};
    }

    void report(const Found &found, const QString &reason)
    {
        m_batch.problems.push_back(problemOf(found, reason));
    }

    /** What the user has not named may well be something else. */
    void reportNamed(const Found &found, const QString &reason)
    {
        if (found.isNamed)
            report(found, reason);
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
    ConfigCollector m_collector;
    QString m_lockedArchive; // the latest one
    LoadBatch m_batch;
    QElapsedTimer m_sinceBatch;
};

Loader::Loader(const QStringList &paths, QByteArray password, QObject *parent)
    : QThread(parent)
    , m_paths(absolute(paths))
    , m_password(std::move(password))
    , m_freePlaces(kBatchesAhead)
{
}

Loader::~Loader()
{
    stop();
    wait();
}

void Loader::stop()
{
    m_isStopped = true;
}

void Loader::run()
{
    LoadRun(*this, m_password).load();
}

void Loader::send(LoadBatch batch)
{
    constexpr int kLookAgainMs = 20;
    while (!m_freePlaces.tryAcquire(1, kLookAgainMs))
        if (m_isStopped)
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
