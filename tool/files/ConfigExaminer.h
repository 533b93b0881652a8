// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGEXAMINER_H
#define VN_TOOL_FILES_CONFIGEXAMINER_H

#include "tool/files/ConfigSources.h"

#include "config/ConfigSelection.h"

#include <any>
#include <functional>
#include <optional>

namespace vn::tool {

/** Says in the help what counts for commands for whole sites, and how they end. */
void describeSites(Arguments &arguments);

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
    QString entry;  ///< of the archive; null for a file
    QString source; ///< "backups/a.zip:gate.cfg"
    bool isImage = false;
    QString address;  ///< null where the header has none
    QString firmware; ///< likewise
    QByteArray bytes; ///< as they were read
    std::optional<BrokenSections> broken;
};

/** The look of commands for whole sites at what ConfigSources finds; on any thread. */
class ConfigExaminer
{
public:
    /** Makes what the command takes of one configuration, with its values in @p config. */
    using Look = std::function<std::any(ScannedConfig &&found, const VanteroConfigMap &config)>;

    /** An examiner of what is found by @p sources, which outlive it. @p look needs what
     * @p selection keeps besides the header. */
    ConfigExaminer(const ConfigSources &sources, ConfigSelection selection, Look look);

    ConfigSources::Outcome operator()(const ConfigCollector::Found &found) const;

private:
    void readText(const ConfigCollector::Found &found, ScannedConfig &&config,
                  ConfigSources::Outcome &outcome) const;
    void readImage(const ConfigCollector::Found &found, ScannedConfig &&config,
                   ConfigSources::Outcome &outcome) const;
    void finish(ScannedConfig &&config, const VanteroConfigMap &values,
                ConfigSources::Outcome &outcome) const;

    const ConfigSources &m_sources;
    const ConfigSelection m_selection;
    const Look m_look;
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGEXAMINER_H
