// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigEdit.h"
#include "tool/files/EditTarget.h"

#include <memory>

namespace vn::tool {

namespace {

class ConfigUnset : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe("Every line of the key goes. Where there is none, nothing is written "
                           "and the exit status is 1.");
        arguments.file("FILE", "configuration, \"-\" for standard input", m_file);
        arguments.text("SECTION", "name of the section", m_section);
        arguments.text("KEY", "the key", m_key);
        m_target.declare(arguments);
        arguments.example("vantero-formats config unset gate.cfg ethernet NTP --output new.cfg",
                          "writes the configuration without the time server to new.cfg");
    }

    ExitCode run(Output &out) override
    {
        m_target.requireReplaceable(m_file);
        const ConfigTextFile file(m_file);
        m_target.deliver(file, ConfigEdit(file).unset(m_section, m_key), out);
        return ExitCode::Done;
    }

private:
    QString m_file;
    QString m_section;
    QString m_key;
    EditTarget m_target;
};

} // namespace

std::unique_ptr<Command> makeConfigUnset()
{
    return std::make_unique<ConfigUnset>();
}

} // namespace vn::tool
