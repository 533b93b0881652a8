// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Closest.h"
#include "tool/cli/Command.h"
#include "tool/commands/TableWriter.h"
#include "tool/files/Completion.h"
#include "tool/files/ConfigExaminer.h"
#include "tool/files/ConfigFilter.h"

#include <QtCore/QSet>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace vn::tool {

namespace {

class ConfigTable : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints a row a configuration: address, firmware, source, and the keys that are asked "
            "for; of a repeated key all values, the newest first, parted by \";\".");
        arguments.describe(
            "With --where only those that meet all conditions. A condition is SECTION/KEY, "
            "\"address\" or \"firmware\" (it is there), or one of these before an operator and a "
            "value: = (one of its values is it), != (none is), ~ (one matches a pattern of the "
            "shell); for \"firmware\" also <, <=, >, >=, by the order of versions, and = takes "
            "patterns such as VN-3.0.*. What is missing counts as empty.");
        describeSites(arguments);
        arguments.files("PATH", "files, archives and folders", m_sources.names());
        arguments.optional();
        m_sources.declare(arguments);
        arguments.repeatedOption("--key", "SECTION/KEY", "a column with the values of this key",
                                 m_keys);
        arguments.offers("entry");
        arguments.repeatedOption("--where", "EXPR", "only configurations that meet this condition",
                                 m_conditions);
        arguments.offers("condition");
        arguments.flag("--csv", "print comma-separated values, as RFC 4180 has them", m_csv);
        arguments.flag("--jsonl",
                       "print a JSON object a line (JSON Lines), each as soon as it is known",
                       m_jsonLines);
        arguments.json();
        arguments.exclude("--csv", "--json");
        arguments.exclude("--csv", "--jsonl");
        arguments.exclude("--jsonl", "--json");
        arguments.example("vantero-formats config table backups --recursive "
                          "--key ethernet/IPADDR --where 'firmware<VN-3.0.6.29' --csv",
                          "lists the cameras that want an update");
    }

    ExitCode run(Output &out) override
    {
        QStringList columns;
        m_keys.removeDuplicates(); // a column is named once
        for (const QString &key : qAsConst(m_keys)) {
            m_fields.emplace_back("--key", key);
            columns += m_fields.back().toString();
        }
        for (const QString &condition : qAsConst(m_conditions))
            m_filters.emplace_back(condition);
        m_writer = makeTableWriter(out.json()    ? TableFormat::Json
                                   : m_csv       ? TableFormat::Csv
                                   : m_jsonLines ? TableFormat::JsonLines
                                                 : TableFormat::Text,
                                   columns, out);

        ConfigSelection selection;
        for (const ConfigField &field : m_fields)
            field.addTo(selection);
        for (const ConfigFilter &filter : m_filters)
            filter.addTo(selection);
        ConfigSources::Steps steps;
        steps.look =
            ConfigExaminer(m_sources, selection,
                           [this](const ScannedConfig &found, const VanteroConfigMap &config) {
                               return std::any(rowOf(found, config));
                           });
        steps.take = [this](const std::any &result) {
            if (const auto &row = std::any_cast<const std::optional<TableRow> &>(result)) {
                m_writer->write(*row);
                ++m_rows;
                for (int i = 0; i < m_keys.size(); ++i)
                    if (!row->values[std::size_t(i)].isEmpty())
                        m_seen.insert(m_keys.at(i));
            }
        };
        steps.idle = [this] { m_writer->flush(); };
        (void)m_sources.walk(out, steps);
        const bool isWhole = m_sources.exitCode() == ExitCode::Done && !Interrupt::isPending();
        const QStringList mistyped = isWhole ? mistypedNames() : QStringList();
        Json warnings = m_sources.warnings();
        for (const QString &warning : mistyped)
            warnings.append(
                Json::object({{"file", Json()}, {"reason", "no-such-name"}, {"message", warning}}));
        m_writer->finish(m_sources.errors(), warnings);
        if (Interrupt::isPending())
            out.complain(ToolError(ExitCode::BadInput,
                                   QStringLiteral("interrupted; %1 rows so far").arg(m_rows)));
        if (!isWhole)
            return m_sources.exitCode();
        for (const QString &warning : mistyped)
            out.warn(QString(), warning);
        if (m_rows == 0)
            out.complain(ToolError(ExitCode::No, QStringLiteral("no configurations found")));
        return m_rows == 0 ? ExitCode::No : ExitCode::Done;
    }

private:
    /** What stands before the operator of a condition. */
    static QString fieldOf(const QString &condition)
    {
        const auto end = std::find_if(condition.begin(), condition.end(),
                                      [](QChar c) { return QLatin1String("=!~<>").contains(c); });
        return condition.left(int(end - condition.begin()));
    }

    /** A warning for each column without any value, and each condition that none has met, where
     * something alike stands in the first configurations. */
    QStringList mistypedNames() const
    {
        QStringList warnings;
        QStringList wanted;
        for (const QString &key : m_keys)
            if (!m_seen.contains(key))
                wanted += key;
        for (const QString &condition : m_conditions)
            if (m_rows == 0)
                wanted += condition.startsWith(QLatin1String("address=")) ? condition
                                                                          : fieldOf(condition);
        if (wanted.isEmpty())
            return warnings;
        const QStringList known = completions(QStringLiteral("entry"), m_sources.names()) +
                                  completions(QStringLiteral("condition"), m_sources.names());
        for (const QString &name : qAsConst(wanted)) {
            const bool isWord =
                !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('='));
            if (isWord || known.contains(name)) // "address" and "firmware" are there
                continue;
            const QString hint = didYouMean(name, known);
            if (!hint.isEmpty())
                warnings += QStringLiteral("no configuration has %1%2").arg(name, hint);
        }
        return warnings;
    }

    /** The row of @p config, where it meets the conditions; on any thread. */
    std::optional<TableRow> rowOf(const ScannedConfig &found, const VanteroConfigMap &config) const
    {
        // A pattern keeps what it matched last: each call has its own.
        const std::vector<ConfigFilter> filters = m_filters;
        for (const ConfigFilter &filter : filters)
            if (!filter.matches(config))
                return std::nullopt;
        TableRow row{found.address, found.firmware, found.source, {}};
        for (const ConfigField &field : m_fields)
            row.values.push_back(field.valuesIn(config));
        return row;
    }

    ConfigSources m_sources{ConfigSources::Site | ConfigSources::Images | ConfigSources::Archives};
    QStringList m_keys;
    QStringList m_conditions;
    bool m_csv = false;
    bool m_jsonLines = false;

    std::vector<ConfigField> m_fields;
    std::vector<ConfigFilter> m_filters;
    std::unique_ptr<TableWriter> m_writer;
    qint64 m_rows = 0;
    QSet<QString> m_seen; // keys that a row had a value of
};

} // namespace

std::unique_ptr<Command> makeConfigTable()
{
    return std::make_unique<ConfigTable>();
}

} // namespace vn::tool
