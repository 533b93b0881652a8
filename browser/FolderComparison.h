// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_FOLDERCOMPARISON_H
#define BROWSER_FOLDERCOMPARISON_H

#include "Configuration.h"

#include <QtCore/QThread>

#include <atomic>
#include <optional>
#include <vector>

namespace browser {

/** A camera that is in one of two folders, or in both. */
struct ComparedCamera
{
    enum class State { Same, Different, OnlyInFirst, OnlyInSecond };

    QString address;
    State state = State::Same;
    int differences = 0; // keys
    std::optional<Configuration> first;
    std::optional<Configuration> second;
};

/**
 * Reads two folders (or archives) in a thread of its own, and compares the
 * cameras of one address. Of several configurations of one address in a folder
 * the last one by name counts; what has no address is counted only.
 */
class FolderComparison : public QThread
{
    Q_OBJECT

public:
    FolderComparison(QString first, QString second, QObject *parent = nullptr);
    ~FolderComparison() override;

    void stop() { m_isStopped = true; }
    bool wasStopped() const { return m_isStopped; }

    // Once it is finished:
    std::vector<ComparedCamera> takeCameras() { return std::move(m_cameras); }
    /** Configurations that are not compared: without an address, or of one that
     * came later. */
    int leftOut() const { return m_leftOut; }
    /** Files and entries that could not be read. */
    int unreadable() const { return m_unreadable; }

protected:
    void run() override;

private:
    QMap<QString, Configuration> read(const QString &folder);

    const QString m_first;
    const QString m_second;
    std::atomic<bool> m_isStopped{false};
    std::vector<ComparedCamera> m_cameras;
    int m_leftOut = 0;
    int m_unreadable = 0;
};

} // namespace browser

#endif // BROWSER_FOLDERCOMPARISON_H
