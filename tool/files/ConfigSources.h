// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGSOURCES_H
#define VN_TOOL_FILES_CONFIGSOURCES_H

#include "tool/cli/Arguments.h"
#include "tool/files/FileWork.h"

#include "config/ConfigCollector.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <any>
#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace vn::tool {

/** What may be a configuration: a file, or an entry of an archive. */
struct ConfigSource
{
    QString name; ///< "backups/gate.cfg", "all.zip:gate.cfg", "-"
    QByteArray bytes;
};

/** "all.zip:gate.cfg" */
QString nameOf(const ConfigCollector::Found &found);

/**
 * The way of all commands through files, folders and archives: the options for it, what counts, the
 * threads that read, and how it ends at a signal or a fault.
 */
class ConfigSources : public FileWork
{
public:
    /** What else counts than, in folders, files whose first two lines tell the versions. */
    enum Flag {
        Images = 1,           ///< JPEG images whose comments hold sections.
        Archives = 2,         ///< Archives, with --recursive; else they are passed over in folders.
        NamedArchives = 4,    ///< Archives that the user names, without --recursive.
        WithoutHeader = 8,    ///< Files whose names end with "cfg", whatever they hold.
        AlwaysRecursive = 16, ///< Folders without --recursive, which is no option then.
        /** Whole sites: lists of paths and several threads. Files that are named count as those in
         * folders do; "-" is one of them. */
        Site = 32,
    };

    explicit ConfigSources(int flags)
        : m_flags(flags)
    {
    }

    /** Declares the options: --recursive, for sites those of lists and threads, and where archives
     * count @p passwordOption and the limits for them. All need the option @p needed, if any. */
    void declare(Arguments &arguments, const char *passwordOption = "--password-file",
                 const char *needed = nullptr);

    /** What the user names; the command declares it as its argument. */
    QStringList &names() { return m_names; }
    const QStringList &names() const { return m_names; }

    /** Whether it is just one file, which is read with readInput() and fails with the command. */
    bool isOne() const;

    /** Calls @p use for each source. A ToolError that it throws is told, and the rest goes on. */
    void forEach(Output &out, const std::function<void(const ConfigSource &)> &use);

    /** What one source came to. */
    struct Outcome
    {
        std::any result;                ///< for Steps::take; empty where nothing counts
        std::optional<ToolError> fault; ///< an error, or a warning
        qint64 size = 0;                ///< of the source, in bytes
    };

    /** What is done with what is found. */
    struct Steps
    {
        /** Makes something of it, on any thread. */
        std::function<Outcome(const ConfigCollector::Found &found)> look;
        /** Gets what look() made, in the order of the sources, on the calling thread. */
        std::function<void(std::any &&result)> take;
        /** Nothing is at hand; what has been taken should be seen. */
        std::function<void()> idle = [] {};
        /** Whether the command itself has written the file at this path, which then does not count;
         * may be missing. */
        std::function<bool(const QString &path)> isOwn = {};
        /** Whether a result has the bytes of the source. */
        bool keepsBytes = false;
    };

    /**
     * Goes through all sources. Faults are told. Returns false when one of them, or a signal, ended
     * it before; an exception of take() does, too.
     * @throws ToolError when the options cannot be followed: no password in its file, no list
     */
    bool walk(Output &out, const Steps &steps);

    /** What keeps @p found from being read, or at least from being a configuration where the user
     * names it; nothing where it is just passed over. */
    std::optional<ToolError> faultOf(const ConfigCollector::Found &found) const;

    /** What deserved a word, each {"file", "reason", "message"}. */
    const Json &warnings() const { return m_warnings; }

    /** Limits what all archives hold together, where its option was not given. */
    void setTotalSizeLimit(qint64 bytes);

    /** Takes the password of the archives that are read from the file @p name, where its option was
     * not given. */
    void setPasswordFile(const QString &name);

    /** Whether the list of files comes from standard input. */
    bool readsInput() const { return m_filesFrom == QLatin1String("-"); }

private:
    bool isWalked(const QString &name) const;
    bool holdsArchives() const { return (m_flags & (Archives | NamedArchives | Site)) != 0; }
    void declareArchives(Arguments &arguments, const char *needed);
    ConfigCollector::Options options() const;
    void expect(Output &out) const;
    void collect(const QStringList &paths, Output &out, const Steps &steps);
    void readNamed(const QString &name, Output &out, const Steps &steps);
    void scan(const QStringList &list, Output &out, const Steps &steps);
    void deliver(Outcome &outcome, Output &out, const Steps &steps);
    std::optional<ConfigSource> sourceOf(const ConfigCollector::Found &found) const;

    static constexpr std::size_t kLimits = 5;

    const int m_flags;
    QStringList m_names;
    std::optional<QString> m_filesFrom;
    bool m_nullSeparated = false;
    bool m_recursive = false;
    std::optional<qint64> m_jobs;
    QString m_onError;
    const char *m_passwordOption = nullptr;
    std::optional<QString> m_passwordFile;
    std::array<std::optional<qint64>, kLimits> m_limits; // in the order of their options

    QByteArray m_password;
    std::unique_ptr<const ConfigCollector> m_first; // of nothing; all others go on behind it
    Json m_warnings = Json::array();
};

/** The message where standard input is wanted for both. */
QString inputTakenTwice();

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGSOURCES_H
