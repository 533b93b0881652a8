// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/ErdinfoValues.h"
#include "tool/files/Input.h"

#include "erdinfo/ErdinfoLayout.h"

#include <memory>

namespace vn::tool {

namespace {

using ErdinfoLayout::kRecordSize;

/** A value as its row is printed. */
struct AsText
{
    template <typename Number>
    QString operator()(Number number) const
    {
        return QString::number(number);
    }
    /** "1234.567 s (1970-01-01 00:20:34.567 UTC)" */
    QString operator()(const ErdinfoTime &time) const
    {
        return QStringLiteral("%1.%2 s (%3)")
            .arg(time.seconds)
            .arg(time.milliseconds, 3, 10, QLatin1Char('0'))
            .arg(time.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz 'UTC'")));
    }
    QString operator()(const std::u32string &text) const { return ErdinfoRecord::toString(text); }
};

struct AsJson
{
    template <typename Number>
    Json operator()(Number number) const
    {
        return number;
    }
    Json operator()(const ErdinfoTime &time) const
    {
        return Json::object({{"seconds", time.seconds},
                             {"milliseconds", time.milliseconds},
                             {"date", time.toDateTime().toString(Qt::ISODateWithMs)}});
    }
    Json operator()(const std::u32string &text) const
    {
        return text.empty() ? Json("") : Json(ErdinfoRecord::toString(text));
    }
};

/** What @p show makes of the value of @p field. */
template <typename Show>
auto shown(const ErdinfoRecord &record, const ErdinfoField &field, const Show &show)
{
    return std::visit(
        [&](auto member) {
            if constexpr (std::is_same_v<decltype(member), std::monostate>)
                return decltype(show(0))(); // not reached: a value has a member
            else
                return show(record.*member);
        },
        field.member);
}

QString messageOf(const Finding &finding)
{
    return QStringLiteral("offset %1: %2").arg(finding.range.offset).arg(finding.message);
}

class ErdinfoShow : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "A record whose magic, sizes or codes are wrong is shown as far as it can be; what is "
            "wrong is told, and the exit status is 1. Of a text the format holds only the first "
            "quarter, and its last character may be cut. Times are shown as dates, too: as seconds "
            "since 1970.");
        arguments.file("FILE", "erdinfo file, \"-\" for standard input", m_file);
        arguments.json();
        arguments.example("vantero-formats erdinfo show event.erdinfo --json",
                          "prints the record as JSON");
    }

    ExitCode run(Output &out) override
    {
        const QByteArray bytes = readInput(m_file);
        Findings findings;
        const ErdinfoRecord record = ErdinfoRecord::fromBytes(bytes, &findings);
        if (bytes.size() < kRecordSize)
            throw ToolError(ExitCode::No, findings.first().message).at(m_file);
        for (const Finding &finding : qAsConst(findings))
            (finding.severity == Finding::Severity::Error ? m_faults : m_warnings) +=
                messageOf(finding);
        if (out.json()) {
            out.setResult(toJson(record, findings, bytes.size() - kRecordSize));
        } else {
            print(record, out);
            for (const QString &warning : qAsConst(m_warnings))
                out.warn(m_file, warning);
            for (const QString &fault : qAsConst(m_faults))
                out.complain(ToolError(ExitCode::No, fault).at(m_file));
        }
        return m_faults.isEmpty() ? ExitCode::Done : ExitCode::No;
    }

private:
    static void print(const ErdinfoRecord &record, Output &out)
    {
        constexpr int kColumn = 9;
        for (const ErdinfoField *const field : erdinfoValues()) {
            const QString name = QLatin1String(field->name);
            const QString value = shown(record, *field, AsText());
            out.printLine(value.isEmpty() ? name : name.leftJustified(kColumn) + value);
        }
    }

    static Json toJson(const Finding &finding)
    {
        const bool isError = finding.severity == Finding::Severity::Error;
        return Json::object({{"severity", isError ? "error" : "warning"},
                             {"code", finding.code},
                             {"offset", finding.range.offset},
                             {"length", finding.range.length},
                             {"field", erdinfoFieldAt(finding.range.offset)->name},
                             {"message", finding.message}});
    }

    Json toJson(const ErdinfoRecord &record, const Findings &findings, int bytesBehind) const
    {
        Json result = Json::object({{"file", m_file}, {"valid", m_faults.isEmpty()}});
        for (const ErdinfoField *const field : erdinfoValues())
            result.insert(QLatin1String(field->name), shown(record, *field, AsJson()));
        result.insert(QStringLiteral("flags"), record.flags);
        result.insert(QStringLiteral("bytesBehindRecord"), bytesBehind);
        Json found = Json::array();
        for (const Finding &finding : findings)
            found.append(toJson(finding));
        result.insert(QStringLiteral("findings"), std::move(found));
        result.insert(QStringLiteral("faults"), Json::array(m_faults));
        result.insert(QStringLiteral("warnings"), Json::array(m_warnings));
        return result;
    }

    QString m_file;
    QStringList m_faults;
    QStringList m_warnings;
};

} // namespace

std::unique_ptr<Command> makeErdinfoShow()
{
    return std::make_unique<ErdinfoShow>();
}

} // namespace vn::tool
