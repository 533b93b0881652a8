// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/EditTarget.h"

#include <memory>

namespace vn::tool {

namespace {

class ConfigUnset : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe("Every line of the key goes, or those with the value of --value, or the "
                           "one of --index. Where there is none, nothing is written and the exit "
                           "status is 1.");
        arguments.fileThenTexts("FILE", "configuration, \"-\" for standard input", m_target.names(),
                                {{"SECTION", "name of the section", &m_single.section, "section"},
                                 {"KEY", "the key", &m_single.key, "key"}},
                                "--key");
        arguments.entries("--key", "remove this key; all arguments are files then", m_keys);
        arguments.option("--value", "VALUE", "remove only lines with this value", m_value);
        arguments.option("--index", "N",
                         "remove only this value of a repeated key, counting from the newest (0)",
                         m_index, 0, std::numeric_limits<int>::max());
        arguments.exclude("--index", "--value");
        m_target.declare(arguments);
        arguments.example("vantero-formats config unset gate.cfg ethernet NTP --output new.cfg",
                          "writes the configuration without the time server to new.cfg");
        arguments.example("vantero-formats config unset gate.cfg ethernet DNS --value 10.14.0.3 "
                          "--in-place",
                          "removes one of the name servers from the file");
    }

    ExitCode run(Output &out) override
    {
        if (m_keys.isEmpty())
            m_keys = {m_single};
        return m_target.run(out, [this](const ConfigTextFile &file) {
            VanteroConfigText text(file.text());
            requireWellFormed(text, file.name());
            for (const EntryArgument &each : qAsConst(m_keys))
                requireDone(remove(text, each), file.name(), keyHint(text, each.section, each.key));
            return EditTarget::Edited{text.text(), text.edits()};
        });
    }

private:
    VanteroConfigText::Result remove(VanteroConfigText &text, const EntryArgument &entry) const
    {
        if (m_index)
            return text.removeValue(entry.section, entry.key, int(*m_index));
        const QStringList values = text.values(entry.section, entry.key);
        if (!m_value || values.isEmpty())
            return text.removeKey(entry.section, entry.key);
        if (!values.contains(*m_value))
            return {VanteroConfigText::Outcome::NotFound,
                    QStringLiteral("no value \"%1\" of key \"%2\" in section \"%3\"")
                        .arg(*m_value, entry.key, entry.section)};
        VanteroConfigText::Result result;
        for (int i = values.size() - 1; i >= 0 && result; --i) // the places of newer ones stay
            if (values.at(i) == *m_value)
                result = text.removeValue(entry.section, entry.key, i);
        return result;
    }

    EntryArgument m_single;
    QList<EntryArgument> m_keys;
    std::optional<QString> m_value;
    std::optional<qint64> m_index;
    EditTarget m_target;
};

} // namespace

std::unique_ptr<Command> makeConfigUnset()
{
    return std::make_unique<ConfigUnset>();
}

} // namespace vn::tool
