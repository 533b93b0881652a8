// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigEdit.h"
#include "tool/files/EditTarget.h"

#include <memory>

namespace vn::tool {

namespace {

/** `config set` and `config add`, which differ in what becomes of the values that are there. */
class ConfigSet : public Command
{
public:
    using Edit = QString (ConfigEdit::*)(const QString &, const QString &, const QString &) const;

    ConfigSet(Edit edit, const char *description, const char *example, const char *meaning)
        : m_edit(edit)
        , m_description(description)
        , m_example(example)
        , m_meaning(meaning)
    {
    }

    void declare(Arguments &arguments) override
    {
        arguments.describe(m_description);
        arguments.describe(
            "A new key is added before the end of its section, a new section at the end of the "
            "text. The header's values are the keys \"File Version\", \"Software Version\" and "
            "\"Factory IP\" of the section \"head\". What the format cannot hold, such as a line "
            "break, is refused.");
        arguments.file("FILE", "configuration, \"-\" for standard input", m_file);
        arguments.text("SECTION", "name of the section", m_section);
        arguments.text("KEY", "the key", m_key);
        arguments.text("VALUE", R"(the value; after "--" it may begin with "-")", m_value);
        m_target.declare(arguments);
        arguments.example(m_example, m_meaning);
    }

    ExitCode run(Output &out) override
    {
        m_target.requireReplaceable(m_file);
        const ConfigTextFile file(m_file);
        m_target.deliver(file, (ConfigEdit(file).*m_edit)(m_section, m_key, m_value), out);
        return ExitCode::Done;
    }

private:
    Edit m_edit;
    const char *m_description;
    const char *m_example;
    const char *m_meaning;
    QString m_file;
    QString m_section;
    QString m_key;
    QString m_value;
    EditTarget m_target;
};

} // namespace

std::unique_ptr<Command> makeConfigSet()
{
    return std::make_unique<ConfigSet>(
        &ConfigEdit::set,
        "Of a key that occurs several times the newest value changes, which is the last line of it "
        "in the file; the other lines stay.",
        "vantero-formats config set gate.cfg ethernet HOSTNAME gate-2 --in-place",
        "gives the camera another name, in the file itself");
}

std::unique_ptr<Command> makeConfigAdd()
{
    return std::make_unique<ConfigSet>(
        &ConfigEdit::add, "Values that the key has already stay; the added one becomes the newest.",
        "vantero-formats config add gate.cfg ethernet DNS 10.14.0.4 --dry-run",
        "shows what one more name server would change");
}

} // namespace vn::tool
