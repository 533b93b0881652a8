// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/SiteUpdate.h"

#include "tool/cli/Closest.h"
#include "tool/commands/VersionWords.h"
#include "tool/files/CameraModels.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/VersionSources.h"

#include "base/FileUtils.h"
#include "config/VanteroConfigFile.h"

#include <algorithm>

namespace vn::tool {

void SiteUpdate::declare(Arguments &arguments)
{
    arguments.fileList(
        "--configurations", "PATH",
        "judge all cameras with configurations in these files, folders and archives; "
        "several behind it, or again",
        m_sources.names());
    m_sources.declare(arguments, "--password-file", "--configurations");
    arguments.fileOption(
        "--models", "FILE",
        "models of the cameras: lines \"address,model\" below a first line that says "
        "so, or a JSON object of address to model",
        m_modelsFile);
    arguments.fileList("--available", "VERSION|PACKAGE|FOLDER",
                       "versions at hand, for the next hop of those that cannot get the version at "
                       "once; as of version plan",
                       m_available);
    arguments.flag("--csv", "print comma-separated values", m_csv);
    for (const char *option : {"--models", "--available", "--csv"})
        arguments.needs(option, "--configurations");
}

ExitCode SiteUpdate::run(const QString &target, Output &out)
{
    if (m_modelsFile)
        m_models = readCameraModels(*m_modelsFile);
    const QList<OfferedVersion> offered = offeredVersions(m_available);
    for (const OfferedVersion &each : offered)
        m_versions.append(each.version);

    std::vector<Row> rows;
    m_sources.forEach(
        out, [&](const ConfigSource &source) { rows.push_back(judge(source, target, out)); });
    warnOfMistypedAddresses(rows, out);
    const bool isSafe = std::all_of(rows.begin(), rows.end(), [](const Row &row) {
        return row.judgement.verdict == UpdateJudgement::Verdict::Safe;
    });
    if (out.json()) {
        Json cameras = Json::array();
        for (const Row &row : rows)
            cameras.append(toJson(row));
        out.setResult(Json::object(
            {{"target", target}, {"cameras", cameras}, {"errors", m_sources.errors()}}));
    } else {
        print(rows, out);
    }
    return std::max(m_sources.exitCode(), isSafe ? ExitCode::Done : ExitCode::No);
}

void SiteUpdate::warnOfMistypedAddresses(const std::vector<Row> &rows, Output &out) const
{
    QStringList unused = m_models.keys();
    for (const Row &row : rows)
        unused.removeAll(row.address);
    for (const Row &row : rows) {
        if (m_models.contains(row.address))
            continue;
        const QString hint = didYouMean(row.address, unused);
        if (!hint.isEmpty())
            out.warn(*m_modelsFile, QStringLiteral("no model of %1%2").arg(row.address, hint));
    }
}

SiteUpdate::Row SiteUpdate::judge(const ConfigSource &source, const VanteroSoftwareVersion &target,
                                  Output &out) const
{
    VanteroConfigFile config;
    const QString text = FileUtils::decodeText(source.bytes);
    const bool isComplete = config.parseHeader(text);
    if (const auto loss = headerLossOf(text, source.name))
        out.complain(*loss);
    if (!isComplete)
        throw ToolError(ExitCode::BadInput, QStringLiteral("no header of a configuration"))
            .at(source.name);
    Row row;
    row.name = source.name;
    row.address = config.getFactoryIP();
    row.firmware = config.getSoftwareVersion();
    row.model = m_models.value(row.address);
    row.judgement = UpdateAdvisor::judge(row.model, row.firmware, target);
    const UpdatePlan plan = UpdateAdvisor::plan(row.model, row.firmware, target, m_versions);
    if (!plan.hops.isEmpty())
        row.nextHop = plan.hops.first().version;
    row.needed = plan.needed;
    return row;
}

/** Address, firmware, verdict, reason and next hop. */
QStringList SiteUpdate::cells(const Row &row)
{
    QString reason = row.judgement.obstacles.value(0);
    if (!row.judgement.reasons.isEmpty())
        reason = row.judgement.reasons.first().sentence;
    return {row.address, row.firmware, verdictName(row.judgement.verdict), reason,
            row.nextHop.isEmpty() ? row.needed : row.nextHop};
}

void SiteUpdate::print(const std::vector<Row> &rows, Output &out) const
{
    QList<QStringList> lines{{QStringLiteral("ADDRESS"), QStringLiteral("FIRMWARE"),
                              QStringLiteral("VERDICT"), QStringLiteral("REASON"),
                              QStringLiteral("NEXT HOP")}};
    if (m_csv)
        lines = {{QStringLiteral("address"), QStringLiteral("firmware"), QStringLiteral("verdict"),
                  QStringLiteral("reason"), QStringLiteral("nextHop")}};
    for (const Row &row : rows)
        lines.append(cells(row));
    if (m_csv) {
        for (QStringList &line : lines) {
            std::transform(line.begin(), line.end(), line.begin(), csvField);
            out.print(line.join(QLatin1Char(',')) + QLatin1Char('\n'));
        }
        return;
    }
    QList<int> widths;
    for (int column = 0; column < lines.first().size(); ++column) {
        int width = 1;
        for (QStringList &line : lines) {
            QString &cell = line[column];
            cell = cell.isEmpty() ? QStringLiteral("-") : escapedControls(cell);
            width = std::max(width, cell.size());
        }
        widths.append(width);
    }
    for (const QStringList &line : qAsConst(lines)) {
        QString text;
        for (int column = 0; column < line.size(); ++column) {
            const QString &cell = line.at(column);
            const bool isVerdict = column == 2 && &line != &lines.first();
            text += isVerdict ? coloredVerdict(cell, out.colors()) : cell;
            if (column + 1 < line.size())
                text += QString(widths.at(column) + 2 - cell.size(), QLatin1Char(' '));
        }
        out.printLine(text);
    }
}

Json SiteUpdate::toJson(const Row &row)
{
    return Json::object({{"configuration", row.name},
                         {"address", row.address},
                         {"firmware", row.firmware},
                         {"model", row.model},
                         {"verdict", verdictName(row.judgement.verdict)},
                         {"reasons", reasonsToJson(row.judgement.reasons)},
                         {"obstacles", Json::array(row.judgement.obstacles)},
                         {"candidates", Json::array(row.judgement.candidates)},
                         {"nextHop", row.nextHop},
                         {"needed", row.needed}});
}

} // namespace vn::tool
