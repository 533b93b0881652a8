// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/cli/Interrupt.h"
#include "tool/commands/TableWriter.h"
#include "tool/files/CollectTarget.h"
#include "tool/files/ConfigScan.h"
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
        m_scan.declare(arguments, "--source-password-file");
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
        m_out = &out;
        if (m_passwordFile && !m_outputArchive)
            m_scan.setPasswordFile(*m_passwordFile);
        if (m_outputArchive && m_passwordFile == QLatin1String("-") && m_scan.readsInput())
            throw ToolError(ExitCode::BadInput, inputTakenTwice());
        if (m_outputArchive)
            m_target = makeArchiveTarget(
                *m_outputArchive, m_passwordFile ? readPassword(*m_passwordFile) : QByteArray());
        else if (m_outputFolder)
            m_target = makeFolderTarget(*m_outputFolder);

        const Interrupt interrupt;
        ConfigScan::Handler handler;
        handler.look = [](const ScannedConfig &, const VanteroConfigMap &) { return std::any(); };
        handler.take = [this](ScannedConfig found, const std::any &) { take(std::move(found)); };
        handler.report = [this](const ScanFault &fault) { report(fault); };
        handler.idle = [] {};
        handler.wantsBytes = m_target != nullptr;
        if (m_target)
            handler.isOwn = [this](const QString &path) { return m_target->hasWritten(path); };
        if (m_outputArchive)
            m_scan.setTotalSizeLimit(kMostInAnArchive);
        const bool isComplete = m_scan.run(out, handler);
        finish(isComplete);
        show();
        if (Interrupt::isPending()) {
            tellInterruption();
            out.flush();
            Interrupt::obey();
        }
        if (m_scan.hasFailed())
            return ExitCode::BadInput;
        return m_collected.empty() ? ExitCode::No : ExitCode::Done;
    }

private:
    void take(ScannedConfig found)
    {
        if (m_target) {
            m_target->write(found.address, QLatin1String(found.isImage ? ".jpg" : ".cfg"),
                            found.bytes);
            found.bytes.clear();
        }
        m_collected.push_back({std::move(found), QString()});
    }

    void report(const ScanFault &fault)
    {
        if (fault.isWarning()) {
            m_out->warn(fault.error.file(), fault.error.message());
            m_warnings.append(Json::object({{"file", fault.error.file()},
                                            {"reason", fault.reason},
                                            {"message", fault.error.message()}}));
            return;
        }
        m_out->complain(fault.error);
        Json error = errorToJson(fault.error);
        error.insert(QStringLiteral("reason"), fault.reason);
        m_errors.append(std::move(error));
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

    void tellInterruption() const
    {
        const qint64 count = qint64(m_collected.size());
        const QString text =
            m_isDropped ? QStringLiteral("interrupted; no archive written")
            : m_target  ? QStringLiteral("interrupted; %1 files written, each whole").arg(count)
                        : QStringLiteral("interrupted; %1 configurations found so far").arg(count);
        m_out->complain(ToolError(ExitCode::BadInput, text));
    }

    void show()
    {
        if (m_out->json())
            m_out->setResult(toJson());
        else if (!m_collected.empty())
            printTable();
        else if (!m_scan.hasFailed() && !Interrupt::isPending())
            m_out->complain(ToolError(ExitCode::No, QStringLiteral("no configurations found")));
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
        return Json::object(
            {{"configurations", configurations}, {"errors", m_errors}, {"warnings", m_warnings}});
    }

    void printTable()
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
                               toCell(each.config.source())};
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
            m_out->printLine(line + row.at(last));
        }
    }

    ConfigScan m_scan;
    std::optional<QString> m_outputArchive;
    std::optional<QString> m_passwordFile;
    std::optional<QString> m_outputFolder;

    Output *m_out = nullptr;
    std::unique_ptr<CollectTarget> m_target;
    bool m_isDropped = false; // the target, of which a part is of no use
    std::vector<Collected> m_collected;
    Json m_errors = Json::array();
    Json m_warnings = Json::array();
};

} // namespace

std::unique_ptr<Command> makeConfigCollect()
{
    return std::make_unique<ConfigCollect>();
}

} // namespace vn::tool
