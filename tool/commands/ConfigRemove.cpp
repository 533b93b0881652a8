// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/EditTarget.h"

#include "config/VanteroConfigFile.h"

#include <memory>

namespace vn::tool {

namespace {

/** Where @p kept differs from @p text, of which it has some of the lines, each ended by "\n". */
QVector<VanteroConfigText::Splice> removals(const QString &text, const QString &kept)
{
    QVector<VanteroConfigText::Splice> result;
    const QString lineEnd(QLatin1Char('\n'));
    int next = 0; // in what is kept
    int number = 1;
    for (int begin = 0; begin < text.size(); ++number) {
        const int lineFeed = text.indexOf(lineEnd, begin);
        const int end = lineFeed < 0 ? text.size() : lineFeed;
        const bool hasReturn = end > begin && text.at(end - 1) == QLatin1Char('\r');
        const int size = end - begin - (hasReturn ? 1 : 0);
        const bool isKept = kept.midRef(next, size + 1) == text.midRef(begin, size) + lineEnd;
        if (!isKept) {
            result += {{number, 1, number + 1, 1, begin, end + 1 - begin}, QString()};
        } else {
            next += size + 1;
            const TextRange rest = {number,          size + 1,     number,
                                    end - begin + 1, begin + size, end - begin - size};
            if (hasReturn || lineFeed < 0)
                result += {rest, lineFeed < 0 ? lineEnd : QString()};
        }
        begin = end + 1;
    }
    return result;
}

class ConfigRemove : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "The sections go with all their blocks. Lines outside of sections that are neither "
            "comments nor empty go, too, and all line ends become \"\\n\". Where there is none of "
            "the sections and no option asks for more, nothing is written and the exit status is "
            "1.");
        arguments.fileThenTexts(
            "FILE", "configuration, \"-\" for standard input", m_target.names(),
            {{"SECTION", "names of the sections; none where an option says what goes", nullptr,
              "section"}},
            "--section", &m_sections);
        arguments.repeatedOption("--section", "SECTION",
                                 "remove this section; all arguments are files then", m_sections);
        arguments.offers("section");
        arguments.flag("--outer-comments",
                       "remove comments outside of sections, the header block included",
                       m_outerComments);
        arguments.flag("--section-comments", "remove comments inside of sections",
                       m_sectionComments);
        arguments.flag("--empty-lines", "remove empty lines", m_emptyLines);
        m_target.declare(arguments);
        arguments.example(
            "vantero-formats config remove gate.cfg messaging text --output short.cfg",
            "writes the configuration without the two sections to short.cfg");
    }

    ExitCode run(Output &out) override
    {
        const bool asksForMore = m_outerComments || m_sectionComments || m_emptyLines;
        if (m_sections.isEmpty() && !asksForMore)
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("config remove: SECTION is missing (see vantero-formats "
                                           "config remove --help)"));
        return m_target.run(out, [&](const ConfigTextFile &file) {
            const QStringList missing = missingSections(file.text());
            const auto message = [&file](const QString &section) {
                return QStringLiteral("no section \"%1\"%2")
                    .arg(section, sectionHint(VanteroConfigText(file.text()), section));
            };
            if (missing.size() == m_sections.size() && !asksForMore)
                throw ToolError(ExitCode::No, message(missing.first())).at(file.name());
            for (const QString &section : missing)
                out.warn(file.name(), message(section));
            for (const Finding &finding : VanteroConfigText(file.text()).findings())
                if (finding.code == QLatin1String("entry-outside-section"))
                    out.complain(
                        ToolError::warning(QStringLiteral("outside of sections, so it goes, too"))
                            .at(file.name(), finding.range.line));
            const QString kept = VanteroConfigFile::removeSections(
                file.text(), m_sections, m_outerComments, m_sectionComments, m_emptyLines);
            return EditTarget::Edited{kept, removals(file.text(), kept)};
        });
    }

private:
    /** The sections whose removal changes nothing. */
    QStringList missingSections(const QString &text) const
    {
        const auto without = [&text](const QStringList &sections) {
            return VanteroConfigFile::removeSections(text, sections, false, false, false);
        };
        const QString all = without({});
        QStringList result;
        for (const QString &section : m_sections)
            if (without({section}) == all)
                result += section;
        return result;
    }

    QStringList m_sections;
    bool m_outerComments = false;
    bool m_sectionComments = false;
    bool m_emptyLines = false;
    EditTarget m_target;
};

} // namespace

std::unique_ptr<Command> makeConfigRemove()
{
    return std::make_unique<ConfigRemove>();
}

} // namespace vn::tool
