// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/cli/Progress.h"
#include "tool/files/CollectSources.h"
#include "tool/files/CollectTarget.h"
#include "tool/files/Input.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/ZipReader.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QSet>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace vn::tool {

namespace {

/** One configuration that was found. */
struct Collected
{
    QString address;  // null where the header has none
    QString firmware; // likewise
    QString path;
    QString entry;   // of the archive; null for a file
    QString written; // the name it was written under; null without an output
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
    return cell;
}

class ConfigCollect : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Lists the camera's address, the firmware and the source of every configuration. A "
            "file counts when its first two lines tell the versions; of an archive (a name that "
            "ends with \".zip\") every entry counts whose name ends with \"cfg\". In folders, "
            "hidden entries and symbolic links are passed over.");
        arguments.describe(
            "What cannot be read is reported, the rest goes on, and the exit status is 2. The "
            "collected configurations can be written byte by byte to new files or to a new "
            "archive, which is not encrypted; they are named by address and date, and nothing is "
            "overwritten.");
        arguments.files("PATH", "files, archives and folders", m_paths);
        arguments.flag("--recursive", "look into folders, at any depth", m_recursive);
        arguments.fileOption("--password-file", "FILE",
                             "take the password of all archives from the first line of this file, "
                             "\"-\" for standard input",
                             m_passwordFile);
        arguments.fileOption("--output-archive", "ZIP", "write the configurations to this archive",
                             m_outputArchive);
        arguments.fileOption("--output-folder", "DIR", "write the configurations to this folder",
                             m_outputFolder);
        arguments.exclude("--output-archive", "--output-folder");
        arguments.json();
        arguments.example("vantero-formats config collect backups --recursive "
                          "--password-file secret --output-archive all.zip",
                          "puts every configuration of a folder tree into one archive");
    }

    ExitCode run(Output &out) override
    {
        m_out = &out;
        if (m_passwordFile)
            m_password = readPassword(*m_passwordFile);
        std::unique_ptr<CollectTarget> target;
        if (m_outputArchive)
            target = makeArchiveTarget(*m_outputArchive);
        else if (m_outputFolder)
            target = makeFolderTarget(*m_outputFolder);

        const std::vector<CollectSource> sources =
            collectSources(m_paths, m_recursive, [this](const ToolError &error) { report(error); });
        m_progress.emplace(int(sources.size()), !out.json());
        for (const CollectSource &source : sources) {
            collect(source, target.get());
            m_progress->advance();
        }
        m_progress.reset();
        if (target)
            target->finish();

        show();
        if (m_hasFailed)
            return ExitCode::BadInput;
        return m_collected.empty() ? ExitCode::No : ExitCode::Done;
    }

private:
    /** Tells a failure, or a warning, and lets the command go on. */
    void report(const ToolError &error)
    {
        if (m_progress)
            m_progress->hide();
        if (error.code() == ExitCode::Done) {
            m_out->warn(error.file(), error.message());
            m_warnings.append(Json::object({{"file", error.file()}, {"message", error.message()}}));
        } else {
            m_out->complain(error);
            m_errors.append(errorToJson(error));
            m_hasFailed = true;
        }
    }

    void collect(const CollectSource &source, CollectTarget *target)
    {
        QMap<QString, QString> found;
        std::optional<ToolError> failure;
        try {
            (void)VanteroConfigFile::parseAll({source.path}, found, false, m_password);
        } catch (const ExceptionQt &e) {
            failure = inputError(e, source.path);
        }
        // What was read before the failure counts.
        if (source.isArchive)
            addEntries(source.path, found, target);
        else if (!found.isEmpty())
            addFile(source.path, found.first(), target);
        else if (source.isNamed && !failure)
            report(ToolError(ExitCode::Done, QStringLiteral("no configuration: the first two lines "
                                                            "do not tell the versions"))
                       .at(source.path));
        if (failure)
            report(*failure);
    }

    void addFile(const QString &path, const QString &text, CollectTarget *target)
    {
        QByteArray bytes;
        if (target) {
            // A decoded text does not tell all of its bytes any more.
            try {
                bytes = readInput(path);
            } catch (const ToolError &e) {
                return report(e);
            }
            if (FileUtils::decodeText(bytes) != text)
                return reportChange(path);
        }
        add(text, bytes, path, QString(), target);
    }

    /** Adds the entries of the archive whose texts are in @p found: as many as there are, from the
     * first on. The map does not tell which text is whose, so they are read once more. */
    void addEntries(const QString &path, const QMap<QString, QString> &found, CollectTarget *target)
    {
        if (found.isEmpty())
            return;
        const QSet<QString> texts(found.begin(), found.end());
        ZipReader archive(path, m_password);
        if (!archive.open(QIODevice::ReadOnly))
            return reportChange(path);
        const QStringList names = archive.fileListBySuffix(QStringLiteral("cfg"));
        for (const QString &name : names.mid(0, found.size())) {
            (void)archive.openFile(name); // a failure shows in what is read
            const QByteArray bytes = archive.readAll();
            const QString text = FileUtils::decodeText(bytes);
            if (!texts.contains(text))
                return reportChange(path);
            add(text, bytes, path, name, target);
        }
    }

    void reportChange(const QString &path)
    {
        report(ToolError(ExitCode::BadInput, QStringLiteral("changed while it was read")).at(path));
    }

    void add(const QString &text, const QByteArray &bytes, const QString &path,
             const QString &entry, CollectTarget *target)
    {
        VanteroConfigFile config;
        (void)config.parseHeader(text); // of an archive, texts without versions count, too
        const QString address = config.getFactoryIP();
        const QString written = target ? target->write(address, bytes) : QString();
        m_collected.push_back({address, config.getSoftwareVersion(), path, entry, written});
    }

    void show()
    {
        if (m_out->json())
            m_out->setResult(toJson());
        else if (!m_collected.empty())
            printTable();
        else if (!m_hasFailed)
            m_out->complain(ToolError(ExitCode::No, QStringLiteral("no configurations found")));
    }

    Json toJson() const
    {
        Json configurations = Json::array();
        for (const Collected &each : m_collected)
            configurations.append(Json::object({{"address", each.address},
                                                {"firmware", each.firmware},
                                                {"source", each.path},
                                                {"entry", each.entry},
                                                {"written", each.written}}));
        return Json::object(
            {{"configurations", configurations}, {"errors", m_errors}, {"warnings", m_warnings}});
    }

    void printTable()
    {
        const bool isWritten = !m_collected.front().written.isNull();
        std::vector<QStringList> rows = {{QStringLiteral("ADDRESS"), QStringLiteral("FIRMWARE"),
                                          QStringLiteral("SOURCE"), QStringLiteral("WRITTEN AS")}};
        for (const Collected &each : m_collected) {
            const QString source =
                each.entry.isNull() ? each.path : each.path + QLatin1Char(':') + each.entry;
            rows.push_back({toCell(each.address), toCell(each.firmware), toCell(source),
                            toCell(each.written)});
        }
        const int last = isWritten ? 3 : 2;
        std::vector<int> widths(3, 0);
        for (const QStringList &row : rows)
            for (int i = 0; i < last; ++i)
                widths[std::size_t(i)] = std::max(widths[std::size_t(i)], row.at(i).size());
        for (const QStringList &row : rows) {
            QString line;
            for (int i = 0; i < last; ++i)
                line += row.at(i).leftJustified(widths[std::size_t(i)] + 2);
            m_out->printLine(line + row.at(last));
        }
    }

    QStringList m_paths;
    bool m_recursive = false;
    std::optional<QString> m_passwordFile;
    std::optional<QString> m_outputArchive;
    std::optional<QString> m_outputFolder;

    QByteArray m_password;
    Output *m_out = nullptr;
    std::optional<Progress> m_progress;
    std::vector<Collected> m_collected;
    Json m_errors = Json::array();
    Json m_warnings = Json::array();
    bool m_hasFailed = false;
};

} // namespace

std::unique_ptr<Command> makeConfigCollect()
{
    return std::make_unique<ConfigCollect>();
}

} // namespace vn::tool
