// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_SITEUPDATE_H
#define VN_TOOL_COMMANDS_SITEUPDATE_H

#include "tool/cli/Arguments.h"
#include "tool/cli/Output.h"
#include "tool/files/ConfigSources.h"

#include "version/UpdateAdvisor.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace vn::tool {

/** Judges the update of all cameras of a site, whose configurations tell address and firmware. */
class SiteUpdate
{
public:
    /** Declares the options. */
    void declare(Arguments &arguments);

    /** Whether configurations were given. */
    bool isWanted() { return !m_sources.names().isEmpty(); }

    /** Prints a row a camera. No where any is not safe, BadInput where something cannot be read. */
    ExitCode run(const QString &target, Output &out);

private:
    struct Row
    {
        QString name; // of the configuration
        QString address;
        QString firmware;
        QString model;
        UpdateJudgement judgement;
        QString nextHop; // the version to install next; null where there is none
        QString needed;  // what a package would have to be, where there is no way
    };

    /** Warns where an address of the models is that of no camera, but nearly that of one without.
     */
    void warnOfMistypedAddresses(const std::vector<Row> &rows, Output &out) const;
    Row judge(const ConfigSource &source, const VanteroSoftwareVersion &target, Output &out) const;
    static QStringList cells(const Row &row);
    static Json toJson(const Row &row);
    void print(const std::vector<Row> &rows, Output &out) const;

    ConfigSources m_sources{ConfigSources::Archives | ConfigSources::NamedArchives};
    QStringList m_available;
    std::optional<QString> m_modelsFile;
    QMap<QString, QString> m_models;
    QList<VanteroSoftwareVersion> m_versions;
    bool m_csv = false;
};

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_SITEUPDATE_H
