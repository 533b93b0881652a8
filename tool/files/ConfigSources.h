// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGSOURCES_H
#define VN_TOOL_FILES_CONFIGSOURCES_H

#include "tool/cli/Arguments.h"
#include "tool/cli/Output.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <optional>

namespace vn::tool {

/** What may be a configuration: a file, or an entry of an archive. */
struct ConfigSource
{
    QString name; ///< "backups/gate.cfg", "all.zip:gate.cfg", "-"
    QByteArray bytes;
};

/**
 * The files that a command works on, one after the other, and what folders and archives hold.
 *
 * What fails costs itself alone: it is told, the rest goes on. In a folder, a file counts when its
 * first two lines tell the versions; of an archive every entry counts whose name ends with "cfg".
 */
class ConfigSources
{
public:
    /** What else counts. */
    enum Flag {
        Images = 1,           ///< JPEG images whose comments hold sections.
        Archives = 2,         ///< Archives, with --recursive; else they are passed over in folders.
        NamedArchives = 4,    ///< Archives that the user names, without --recursive.
        WithoutHeader = 8,    ///< Files whose names end with "cfg", whatever they hold.
        AlwaysRecursive = 16, ///< Folders without --recursive, which is no option then.
    };

    explicit ConfigSources(int flags)
        : m_flags(flags)
    {
    }

    /** Declares the options: --recursive, and where archives count --password-file. */
    void declare(Arguments &arguments);

    /** What the user names; the command declares it as its argument. */
    QStringList &names() { return m_names; }

    /** Whether it is just one file, which is read with readInput() and fails with the command. */
    bool isOne() const;

    /** Calls @p use for each source. A ToolError that it throws is told, and the rest goes on. */
    void forEach(Output &out, const std::function<void(const ConfigSource &)> &use);

    /** Done, or the worst of what failed; No when there was nothing. */
    ExitCode exitCode() const { return m_worst; }

    /** What failed, each as errorToJson() has it. */
    const Json &errors() const { return m_errors; }

private:
    bool isWalked(const QString &name) const;
    void walk(const QString &name, Output &out,
              const std::function<void(const ConfigSource &)> &use);
    void guard(Output &out, const std::function<void()> &action);

    int m_flags;
    QStringList m_names;
    bool m_recursive = false;
    std::optional<QString> m_passwordFile;
    std::optional<QByteArray> m_password;
    ExitCode m_worst = ExitCode::Done;
    Json m_errors = Json::array();
    bool m_isEmpty = true;
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGSOURCES_H
