// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/cli/FindingsPrinter.h"
#include "tool/files/Input.h"

#include "base/FileUtils.h"
#include "version/VersionLint.h"

#include <memory>

namespace vn::tool {

namespace {

class VersionLintCommand : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Says where a version is read otherwise than it looks. FILE is the version, "
            "or \"-\" for those of standard input, one a line.");
        m_findings.declare(arguments);
        arguments.texts("VERSION", "versions or patterns, \"-\" for the lines of standard input",
                        m_texts);
        arguments.example("vantero-formats version lint VN-3.O.6 VN-3.0.6.29-rc",
                          "tells the letter from the number, and that \"rc\" is any pre-release");
    }

    ExitCode run(Output &out) override
    {
        for (const QString &text : qAsConst(m_texts)) {
            if (text == QLatin1String("-"))
                m_findings.add(out, text, findingsOfLines(readInput(text)));
            else
                m_findings.add(out, text, VersionLint::check(text));
        }
        return m_findings.finish(out);
    }

private:
    /** The findings of the versions in @p input, with the lines where they stand. */
    static Findings findingsOfLines(const QByteArray &input)
    {
        Findings findings;
        const QStringList lines = FileUtils::decodeText(input).split(QLatin1Char('\n'));
        qint64 offset = 0;
        for (int i = 0; i < lines.size(); ++i) {
            QString line = lines.at(i);
            if (line.endsWith(QLatin1Char('\r')))
                line.chop(1);
            Findings more = line.isEmpty() ? Findings() : VersionLint::check(line);
            for (Finding &finding : more) {
                finding.range.line += i;
                finding.range.endLine += i;
                finding.range.offset += offset;
            }
            findings += more;
            offset += lines.at(i).size() + 1;
        }
        return findings;
    }

    FindingsPrinter m_findings;
    QStringList m_texts;
};

} // namespace

std::unique_ptr<Command> makeVersionLint()
{
    return std::make_unique<VersionLintCommand>();
}

} // namespace vn::tool
