// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/EditTarget.h"

#include "config/VanteroConfigFile.h"

#include <memory>

namespace vn::tool {

namespace {

/** The text as one place that changes; what stays at both ends of it is found by itself. */
TextRange rangeOfAll(const QString &text)
{
    TextRange range;
    range.endLine += text.count(QLatin1Char('\n'));
    range.endColumn = text.size() - text.lastIndexOf(QLatin1Char('\n'));
    range.length = text.size();
    return range;
}

class ConfigSplice : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "The section of TARGET becomes that of SOURCE: replaced where it stands, added at the "
            "end, or deleted where SOURCE lacks it. Where neither has it, nothing is written and "
            "the exit status is 1.");
        arguments.describe(
            "The section is found as the text \"SECTION name\", so the section \"camera\" is found "
            "for \"cam\", and so is a comment with these words. Each replacement puts two line "
            "breaks before and after the section.");
        arguments.file("TARGET", "configuration to change, \"-\" for standard input", m_targetFile);
        arguments.file("SOURCE", "configuration with the wanted section", m_sourceFile);
        arguments.text("SECTION", "name of the section", m_section);
        arguments.offers("section");
        m_target.declare(arguments);
        arguments.example("vantero-formats config splice entrance.cfg gate.cfg image --in-place",
                          "gives the entrance camera the image settings of the gate");
    }

    ExitCode run(Output &out) override
    {
        if (m_targetFile == QLatin1String("-") && m_sourceFile == m_targetFile)
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("only one of the files can be standard input"));
        const ConfigTextFile source(m_sourceFile);
        m_target.names() = QStringList{m_targetFile};
        return m_target.run(out, [&](const ConfigTextFile &target) {
            const QString edited =
                VanteroConfigFile::replaceSection(target.text(), source.text(), m_section);
            if (edited == target.text()) // a replacement always grows
                throw ToolError(ExitCode::No,
                                QStringLiteral("no section \"%1\", nor in %2%3")
                                    .arg(m_section, m_sourceFile,
                                         sectionHint(VanteroConfigText(source.text()), m_section)))
                    .at(target.name());
            return EditTarget::Edited{edited, {{rangeOfAll(target.text()), edited}}};
        });
    }

private:
    QString m_targetFile;
    QString m_sourceFile;
    QString m_section;
    EditTarget m_target;
};

} // namespace

std::unique_ptr<Command> makeConfigSplice()
{
    return std::make_unique<ConfigSplice>();
}

} // namespace vn::tool
