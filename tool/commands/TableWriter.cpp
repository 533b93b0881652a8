// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/TableWriter.h"

#include <algorithm>

namespace vn::tool {

namespace {

QStringList headings(const QStringList &columns)
{
    return QStringList{QStringLiteral("address"), QStringLiteral("firmware"),
                       QStringLiteral("source")} +
           columns;
}

QStringList cellsOf(const TableRow &row)
{
    QStringList cells = {row.address, row.firmware, row.source};
    for (const QStringList &values : row.values)
        cells += values.join(QLatin1Char(';'));
    return cells;
}

Json toJson(const TableRow &row, const QStringList &columns)
{
    Json values = Json::object();
    for (int i = 0; i < columns.size(); ++i)
        values.insert(columns.at(i), Json::array(row.values[std::size_t(i)]));
    return Json::object({{"address", row.address},
                         {"firmware", row.firmware},
                         {"source", row.source},
                         {"values", std::move(values)}});
}

class CsvWriter : public TableWriter
{
public:
    CsvWriter(const QStringList &columns, Output &out)
        : m_out(out)
    {
        writeLine(headings(columns));
    }

    void write(const TableRow &row) override { writeLine(cellsOf(row)); }
    void flush() override { m_out.flush(); }
    void finish(const Json &, const Json &) override {}

private:
    void writeLine(const QStringList &cells)
    {
        QStringList quoted;
        for (QString cell : cells) {
            const bool needsQuotes = std::any_of(cell.begin(), cell.end(), [](QChar c) {
                return QLatin1String(",\"\r\n").contains(c);
            });
            if (needsQuotes)
                cell = QLatin1Char('"') + cell.replace(QLatin1Char('"'), QLatin1String("\"\"")) +
                       QLatin1Char('"');
            quoted += cell;
        }
        m_out.print(quoted.join(QLatin1Char(',')) + QLatin1String("\r\n"));
    }

    Output &m_out;
};

class JsonLinesWriter : public TableWriter
{
public:
    JsonLinesWriter(const QStringList &columns, Output &out)
        : m_columns(columns)
        , m_out(out)
    {
    }

    void write(const TableRow &row) override { m_out.print(toJson(row, m_columns).toLine()); }
    void flush() override { m_out.flush(); }
    void finish(const Json &, const Json &) override {}

private:
    const QStringList m_columns;
    Output &m_out;
};

/** One value, its rows printed as they come: nothing before the first, so that an error that comes
 * before it is told as any other. */
class JsonWriter : public TableWriter
{
public:
    JsonWriter(const QStringList &columns, Output &out)
        : m_columns(columns)
        , m_out(out)
    {
    }

    void write(const TableRow &row) override
    {
        QByteArray text = toJson(row, m_columns).toText();
        text.chop(1);
        m_out.printJson((m_hasRows ? ",\n    " : kOpening + QByteArray("\n    ")) +
                        text.replace("\n", "\n    "));
        m_hasRows = true;
    }

    void flush() override {}

    void finish(const Json &errors, const Json &warnings) override
    {
        m_out.printJson((m_hasRows ? QByteArray("\n  ") : QByteArray(kOpening)) +
                        "],\n  \"errors\": " + member(errors) +
                        ",\n  \"warnings\": " + member(warnings) + "\n}\n");
    }

private:
    static QByteArray member(const Json &value)
    {
        QByteArray text = value.toText();
        text.chop(1);
        return text.replace("\n", "\n  ");
    }

    static constexpr char kOpening[] = "{\n  \"rows\": [";

    const QStringList m_columns;
    Output &m_out;
    bool m_hasRows = false;
};

/** Columns as wide as the first rows want them; later ones may be wider. */
class TextWriter : public TableWriter
{
public:
    TextWriter(const QStringList &columns, Output &out)
        : m_out(out)
    {
        QStringList titles = headings(columns);
        for (int i = 0; i < 3; ++i)
            titles[i] = titles[i].toUpper();
        m_waiting.push_back(titles);
    }

    void write(const TableRow &row) override
    {
        QStringList cells = cellsOf(row);
        for (QString &cell : cells)
            cell = cell.isEmpty() ? QStringLiteral("-") : cutCell(escapedControls(cell));
        if (m_isSettled)
            return print(cells);
        m_waiting.push_back(cells);
        if (m_waiting.size() > kRowsForWidths)
            settle();
    }

    void flush() override {}

    void finish(const Json &, const Json &) override
    {
        if (!m_isSettled && m_waiting.size() > 1)
            settle();
    }

private:
    static constexpr std::size_t kRowsForWidths = 1000;

    void settle()
    {
        m_widths.assign(std::size_t(m_waiting.front().size()), 0);
        for (const QStringList &cells : m_waiting)
            for (int i = 0; i < cells.size(); ++i)
                m_widths[std::size_t(i)] =
                    std::max(m_widths[std::size_t(i)], std::min(cells.at(i).size(), kWidestColumn));
        m_isSettled = true;
        for (const QStringList &cells : m_waiting)
            print(cells);
        m_waiting.clear();
    }

    void print(const QStringList &cells)
    {
        QString line;
        for (int i = 0; i < cells.size() - 1; ++i)
            line += cells.at(i).leftJustified(m_widths[std::size_t(i)]) + QLatin1String("  ");
        m_out.printLine(line + cells.last());
    }

    Output &m_out;
    std::vector<QStringList> m_waiting;
    std::vector<int> m_widths;
    bool m_isSettled = false;
};

} // namespace

QString cutCell(const QString &cell)
{
    constexpr int kLongestCell = 1000;
    return cell.size() <= kLongestCell ? cell : cell.left(kLongestCell) + QLatin1String("...");
}

std::unique_ptr<TableWriter> makeTableWriter(TableFormat format, const QStringList &columns,
                                             Output &out)
{
    switch (format) {
    case TableFormat::Csv:
        return std::make_unique<CsvWriter>(columns, out);
    case TableFormat::Json:
        return std::make_unique<JsonWriter>(columns, out);
    case TableFormat::JsonLines:
        return std::make_unique<JsonLinesWriter>(columns, out);
    case TableFormat::Text:
        break;
    }
    return std::make_unique<TextWriter>(columns, out);
}

} // namespace vn::tool
