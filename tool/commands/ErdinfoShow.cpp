// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/ErdinfoRecord.h"
#include "tool/files/Input.h"

#include "erdinfo/ErdinfoLayout.h"

#include <memory>

namespace vn::tool {

namespace {

using ErdinfoLayout::kRecordSize;

class ErdinfoShow : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "A record whose magic, sizes or codes are wrong is shown as far as it can be; what is "
            "wrong is told, and the exit status is 1. Of a text the format holds only the first "
            "quarter, and its last character may be cut.");
        arguments.file("FILE", "erdinfo file, \"-\" for standard input", m_file);
        arguments.json();
        arguments.example("vantero-formats erdinfo show event.erdinfo --json",
                          "prints the record as JSON");
    }

    ExitCode run(Output &out) override
    {
        const QByteArray bytes = readInput(m_file);
        if (bytes.size() < kRecordSize)
            throw ToolError(ExitCode::No, QStringLiteral("too short: %1 bytes, a record has %2")
                                              .arg(bytes.size())
                                              .arg(kRecordSize))
                .at(m_file);
        const ErdinfoRecord record = ErdinfoRecord::read(bytes);
        if (out.json()) {
            out.setResult(toJson(record, bytes.size() - kRecordSize));
        } else {
            print(record, out);
            for (const QString &warning : record.warnings)
                out.warn(m_file, warning);
            for (const QString &fault : record.faults)
                out.complain(ToolError(ExitCode::No, fault).at(m_file));
        }
        return record.faults.isEmpty() ? ExitCode::Done : ExitCode::No;
    }

private:
    static void printRow(Output &out, const char *name, const QString &value)
    {
        constexpr int kColumn = 9;
        const QString line = QLatin1String(name);
        out.printLine(value.isEmpty() ? line : line.leftJustified(kColumn) + value);
    }

    /** "1234.567 s" */
    static QString timeText(const ErdinfoRecord::Block &block)
    {
        return QStringLiteral("%1.%2 s")
            .arg(block.seconds)
            .arg(block.milliseconds, 3, 10, QLatin1Char('0'));
    }

    static void print(const ErdinfoRecord &record, Output &out)
    {
        printRow(out, "id1", QString::number(record.id1));
        printRow(out, "id2", QString::number(record.id2));
        printRow(out, "number1", QString::number(record.blocks[0].number));
        printRow(out, "number2", QString::number(record.blocks[1].number));
        printRow(out, "time1", timeText(record.blocks[0]));
        printRow(out, "time2", timeText(record.blocks[1]));
        printRow(out, "text1", record.texts[0]);
        printRow(out, "text2", record.texts[1]);
        printRow(out, "text3", record.texts[2]);
    }

    static Json timeToJson(const ErdinfoRecord::Block &block)
    {
        return Json::object({{"seconds", block.seconds}, {"milliseconds", block.milliseconds}});
    }

    static Json textToJson(const QString &text) { return text.isNull() ? Json("") : Json(text); }

    Json toJson(const ErdinfoRecord &record, int bytesBehind) const
    {
        return Json::object({{"file", m_file},
                             {"valid", record.faults.isEmpty()},
                             {"id1", record.id1},
                             {"id2", record.id2},
                             {"number1", record.blocks[0].number},
                             {"number2", record.blocks[1].number},
                             {"time1", timeToJson(record.blocks[0])},
                             {"time2", timeToJson(record.blocks[1])},
                             {"text1", textToJson(record.texts[0])},
                             {"text2", textToJson(record.texts[1])},
                             {"text3", textToJson(record.texts[2])},
                             {"flags", record.flags},
                             {"bytesBehindRecord", bytesBehind},
                             {"faults", Json::array(record.faults)},
                             {"warnings", Json::array(record.warnings)}});
    }

    QString m_file;
};

} // namespace

std::unique_ptr<Command> makeErdinfoShow()
{
    return std::make_unique<ErdinfoShow>();
}

} // namespace vn::tool
