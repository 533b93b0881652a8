// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGSCAN_H
#define VN_TOOL_FILES_CONFIGSCAN_H

#include "tool/cli/Arguments.h"
#include "tool/cli/Output.h"
#include "tool/cli/ToolError.h"

#include "config/ConfigCollector.h"
#include "config/ConfigSelection.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <any>
#include <functional>
#include <memory>
#include <optional>

namespace vn::tool {

/** The sections of a text that the library does not read to its end. */
struct BrokenSections
{
    int readable; ///< how many sections are whole
    int all;      ///< how many are begun
    int line;     ///< where reading fails, from 1

    /** "5 of 7 sections readable, line 14" */
    QString toString() const;
};

/** A configuration that was found: a text, or an image whose comment holds sections. */
struct ScannedConfig
{
    QString path;
    QString entry; ///< of the archive; null for a file
    bool isImage = false;
    QString address;  ///< null where the header has none
    QString firmware; ///< likewise
    QByteArray bytes; ///< as they were read; only where they are wanted
    std::optional<BrokenSections> broken;

    /** "backups/a.zip:gate.cfg" */
    QString source() const;
};

/** What keeps something from being a configuration, or a whole one. */
struct ScanFault
{
    QString source; ///< "backups/a.zip:gate.cfg"
    QString reason; ///< a word that never changes: "not-found", "wrong-password"
    ToolError error;

    /** Whether it only deserves a word: the exit status does not tell. */
    bool isWarning() const { return error.code() == ExitCode::Done; }

    /** What it says, without the source. */
    QString message;
};

/**
 * The way of all commands for whole sites through files, folders and archives: their options, the
 * threads that read, progress, and the end at a fault or a signal.
 *
 * What is found is handed over in the order of the sources, whoever has read it.
 */
class ConfigScan
{
public:
    ConfigScan();
    ~ConfigScan();

    /** Declares PATH and the options, and says in the help what is looked at. @p passwordOption is
     * that for the password of the archives that are read. */
    void declare(Arguments &arguments, const char *passwordOption);

    /** Limits what all archives hold together, where its option was not given. */
    void setTotalSizeLimit(qint64 bytes);

    /** Takes the password of the archives that are read from the file @p name, where its option was
     * not given. */
    void setPasswordFile(const QString &name);

    /** What a command does with what is found. */
    struct Handler
    {
        /** Looks at one configuration, its values in @p config, on any thread. What it returns goes
         * to take(). */
        std::function<std::any(const ScannedConfig &found, const VanteroConfigMap &config)> look;
        /** What look() needs of a configuration besides its header. */
        ConfigSelection selection;
        /** Gets what was found and what look() made of it, in the order of the sources, on the
         * calling thread. */
        std::function<void(ScannedConfig found, std::any result)> take;
        /** Gets what could not be read, in its place between those. */
        std::function<void(const ScanFault &fault)> report;
        /** Nothing is at hand; what has been taken should be seen. */
        std::function<void()> idle;
        /** Whether the command itself has written the file at this path, which then does not count;
         * may be missing. */
        std::function<bool(const QString &path)> isOwn;
        /** Whether take() needs the bytes. */
        bool wantsBytes = false;
    };

    /**
     * Goes through all sources. Returns false when a fault or a signal ended it before.
     * @throws ToolError when the options cannot be followed: no password in its file, no list
     */
    bool run(Output &out, const Handler &handler);

    /** The paths that were given as arguments. */
    const QStringList &paths() const;

    /** Whether the list of files comes from standard input. */
    bool readsInput() const;

    /** Whether a fault was reported that is not just a warning. */
    bool hasFailed() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

/** The message where standard input is wanted for both. */
QString inputTakenTwice();

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGSCAN_H
