// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/TableWriter.h"
#include "tool/files/CollectTarget.h"
#include "tool/files/ConfigExaminer.h"
#include "tool/files/Input.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace vn::tool {

namespace {

// The contents of an archive are held in memory until it is written.
constexpr qint64 kMostInAnArchive = qint64(4) * 1024 * 1024 * 1024;

/** One configuration that was found. */
struct Collected
{
    ScannedConfig config; // without its bytes
    QString written;      // the name it was written under; null without an output
};

/** @p text as a cell of a table: on one line, without what a terminal would obey. */
QString toCell(const QString &text)
{
    if (text.isEmpty())
        return QStringLiteral("-");
    QString cell = text;
    for (QChar &c : cell)
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char('?');
    return cutCell(cell);
}

class ConfigCollect : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Lists the camera's address, the firmware and the source of every configuration.");
        describeSites(arguments);
        arguments.files("PATH", "files, archives and folders", m_sources.names());
        arguments.optional();
        m_sources.declare(arguments, "--source-password-file");
        arguments.describe(
            "The collected configurations can be written byte by byte to new files or to a new "
            "archive, encrypted by AES-256 where there is a password for it; they are named by "
            "address and date, and nothing is overwritten. After SIGINT, and after a failure with "
            "\"--on-error stop\", a folder holds what was collected until then, each file whole; "
            "an archive is not made.");
        arguments.fileOption("--output-archive", "ZIP", "write the configurations to this archive",
                             m_outputArchive);
        arguments.fileOption("--password-file", "FILE",
                             "encrypt the archive that is written by the password in the first "
                             "line of this file, \"-\" for standard input; without "
                             "--output-archive it is that of the archives that are read",
                             m_passwordFile);
        arguments.fileOption("--output-folder", "DIR", "write the configurations to this folder",
                             m_outputFolder);
        arguments.exclude("--output-archive", "--output-folder");
        arguments.json();
        arguments.example("vantero-formats config collect backups --recursive "
                          "--source-password-file secret --output-archive all.zip",
                          "puts every configuration of a folder tree into one archive");
    }

    ExitCode run(Output &out) override
    {
        if (m_passwordFile && !m_outputArchive)
            m_sources.setPasswordFile(*m_passwordFile);
        if (m_outputArchive && m_passwordFile == QLatin1String("-") && m_sources.readsInput())
            throw ToolError(ExitCode::BadInput, inputTakenTwice());
        if (m_outputArchive)
            m_target = makeArchiveTarget(
                *m_outputArchive, m_passwordFile ? readPassword(*m_passwordFile) : QByteArray());
        else if (m_outputFolder)
            m_target = makeFolderTarget(*m_outputFolder);

        if (m_outputArchive)
            m_sources.setTotalSizeLimit(kMostInAnArchive);
        ConfigSources::Steps steps;
        steps.keepsBytes = m_target != nullptr;
        steps.look = ConfigExaminer(m_sources, ConfigSelection(),
                                    [this](ScannedConfig &&found, const VanteroConfigMap &) {
                                        if (!m_target)
                                            found.bytes.clear();
                                        return std::any(std::move(found));
                                    });
        steps.take = [this](std::any &&found) {
            take(std::any_cast<ScannedConfig &&>(std::move(found)));
        };
        if (m_target)
            steps.isOwn = [this](const QString &path) { return m_target->hasWritten(path); };
        finish(m_sources.walk(out, steps));
        show(out);
        if (Interrupt::isPending())
            tellInterruption(out);
        if (m_sources.exitCode() != ExitCode::Done)
            return m_sources.exitCode();
        return m_collected.empty() ? ExitCode::No : ExitCode::Done;
    }

private:
    void take(ScannedConfig &&found)
    {
        if (m_target) {
            m_target->write(found.address, QLatin1String(found.isImage ? ".jpg" : ".cfg"),
                            found.bytes);
            found.bytes.clear();
        }
        m_collected.push_back({std::move(found), QString()});
    }

    /** Completes what was written, as far as it is of use; then its names are known. */
    void finish(bool isComplete)
    {
        if (!m_target)
            return;
        if (!isComplete && !m_target->isUsefulInPart()) {
            m_isDropped = true;
            m_target.reset();
            return;
        }
        m_target->finish();
        for (std::size_t i = 0; i < m_collected.size(); ++i)
            m_collected[i].written = m_target->names().at(int(i));
    }

    void tellInterruption(Output &out) const
    {
        const qint64 count = qint64(m_collected.size());
        const QString text =
            m_isDropped ? QStringLiteral("interrupted; no archive written")
            : m_target  ? QStringLiteral("interrupted; %1 files written, each whole").arg(count)
                        : QStringLiteral("interrupted; %1 configurations found so far").arg(count);
        out.complain(ToolError(ExitCode::BadInput, text));
    }

    void show(Output &out)
    {
        if (out.json())
            out.setResult(toJson());
        else if (!m_collected.empty())
            printTable(out);
        else if (m_sources.exitCode() == ExitCode::Done && !Interrupt::isPending())
            out.complain(ToolError(ExitCode::No, QStringLiteral("no configurations found")));
    }

    static Json brokenToJson(const std::optional<BrokenSections> &broken)
    {
        if (!broken)
            return {};
        return Json::object({{"readable", broken->readable},
                             {"sections", broken->all},
                             {"line", broken->line > 0 ? Json(broken->line) : Json()}});
    }

    Json toJson() const
    {
        Json configurations = Json::array();
        for (const Collected &each : m_collected)
            configurations.append(Json::object({{"address", each.config.address},
                                                {"firmware", each.config.firmware},
                                                {"source", each.config.path},
                                                {"entry", each.config.entry},
                                                {"broken", brokenToJson(each.config.broken)},
                                                {"written", each.written}}));
        return Json::object({{"configurations", configurations},
                             {"errors", m_sources.errors()},
                             {"warnings", m_sources.warnings()}});
    }

    void printTable(Output &out) const
    {
        const bool isWritten = !m_collected.front().written.isNull();
        const bool isAnyBroken =
            std::any_of(m_collected.begin(), m_collected.end(),
                        [](const Collected &each) { return bool(each.config.broken); });
        std::vector<QStringList> rows = {
            {QStringLiteral("ADDRESS"), QStringLiteral("FIRMWARE"), QStringLiteral("SOURCE")}};
        if (isWritten)
            rows[0] += QStringLiteral("WRITTEN AS");
        if (isAnyBroken)
            rows[0] += QStringLiteral("STATE");
        for (const Collected &each : m_collected) {
            QStringList row = {toCell(each.config.address), toCell(each.config.firmware),
                               toCell(each.config.source)};
            if (isWritten)
                row += toCell(each.written);
            if (isAnyBroken)
                row += toCell(each.config.broken ? each.config.broken->toString() : QString());
            rows.push_back(row);
        }
        const int last = rows[0].size() - 1;
        std::vector<int> widths(std::size_t(last), 0);
        for (const QStringList &row : rows)
            for (int i = 0; i < last; ++i)
                widths[std::size_t(i)] =
                    std::max(widths[std::size_t(i)], std::min(row.at(i).size(), kWidestColumn));
        for (const QStringList &row : rows) {
            QString line;
            for (int i = 0; i < last; ++i)
                line += row.at(i).leftJustified(widths[std::size_t(i)]) + QLatin1String("  ");
            out.printLine(line + row.at(last));
        }
    }

    ConfigSources m_sources{ConfigSources::Site | ConfigSources::Images | ConfigSources::Archives};
    std::optional<QString> m_outputArchive;
    std::optional<QString> m_passwordFile;
    std::optional<QString> m_outputFolder;

    std::unique_ptr<CollectTarget> m_target;
    bool m_isDropped = false; // the target, of which a part is of no use
    std::vector<Collected> m_collected;
};

} // namespace

std::unique_ptr<Command> makeConfigCollect()
{
    return std::make_unique<ConfigCollect>();
}

} // namespace vn::tool
