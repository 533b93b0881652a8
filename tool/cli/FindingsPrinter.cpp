// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/FindingsPrinter.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace vn::tool {

namespace {

/** The names of the severities, the worst first, as Finding::Severity counts them. */
constexpr char kSeverities[] = "error|warning|note";

QStringList severities()
{
    return QString::fromLatin1(kSeverities).split(QLatin1Char('|'));
}

QString inWords(const Colors &colors, const QString &file, const QString &severity,
                const Finding &finding)
{
    static constexpr Style kStyles[] = {Style::Error, Style::Warning, Style::Note};
    const QString place =
        QStringLiteral("%1:%2:%3:")
            .arg(file, QString::number(finding.range.line), QString::number(finding.range.column));
    const QLatin1Char blank(' ');
    return colors.text(Style::Place, escapedControls(place)) + blank +
           colors.text(kStyles[int(finding.severity)], severity + QLatin1Char(':')) + blank +
           escapedControls(finding.message) + blank +
           colors.text(Style::Aside, QLatin1Char('[') + finding.code + QLatin1Char(']'));
}

} // namespace

void FindingsPrinter::declare(Arguments &arguments)
{
    arguments.describe(
        "Prints a line a finding: \"FILE:LINE:COLUMN: severity: message [code]\". An \"error\" is "
        "refused by those who read the file, by a \"warning\" something is lost or read otherwise, "
        "a \"note\" is worth a look. The exit status is 1 when there are errors, and 2 when "
        "something cannot be read.");
    arguments.choice("--severity", kSeverities, "print no findings that are less severe", m_least);
    arguments.json();
}

bool FindingsPrinter::isWanted(const Finding &finding) const
{
    return m_least.isNull() || int(finding.severity) <= severities().indexOf(m_least);
}

void FindingsPrinter::add(Output &out, const QString &file, const Findings &findings)
{
    for (const Finding &finding : findings) {
        m_hasErrors = m_hasErrors || finding.severity == Finding::Severity::Error;
        if (!isWanted(finding))
            continue;
        const QString severity = severities().at(int(finding.severity));
        if (out.json())
            m_findings.append(Json::object({{"file", file},
                                            {"line", finding.range.line},
                                            {"column", finding.range.column},
                                            {"endLine", finding.range.endLine},
                                            {"endColumn", finding.range.endColumn},
                                            {"severity", severity},
                                            {"code", finding.code},
                                            {"message", finding.message}}));
        else
            out.printLine(inWords(out.colors(), file, severity, finding));
    }
}

ExitCode FindingsPrinter::finish(Output &out, const Json &errors, ExitCode worst)
{
    if (out.json())
        out.setResult(Json::object({{"findings", std::move(m_findings)}, {"errors", errors}}));
    return std::max(worst, m_hasErrors ? ExitCode::No : ExitCode::Done);
}

std::optional<ToolError> warningOf(const Findings &losses, const QString &name, const char *lint)
{
    if (losses.isEmpty())
        return std::nullopt;
    const Finding &first = losses.first();
    QString text =
        QStringLiteral("%1 (line %2)").arg(first.message, QString::number(first.range.line));
    if (losses.size() > 1)
        text += QStringLiteral("; %1 more: see \"%2\"")
                    .arg(QString::number(losses.size() - 1), QLatin1String(lint));
    return ToolError::warning(text).because(first.code).at(name);
}

} // namespace vn::tool
