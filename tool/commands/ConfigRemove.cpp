// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/EditTarget.h"

#include "config/VanteroConfigFile.h"

#include <memory>

namespace vn::tool {

namespace {

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
            {{"SECTION", "names of the sections; none where an option says what goes", nullptr}},
            "--section", &m_sections);
        arguments.repeatedOption("--section", "SECTION",
                                 "remove this section; all arguments are files then", m_sections);
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
            return EditTarget::Edited{
                VanteroConfigFile::removeSections(file.text(), m_sections, m_outerComments,
                                                  m_sectionComments, m_emptyLines),
                {}};
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
