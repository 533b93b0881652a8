// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/EditTarget.h"

#include <algorithm>
#include <memory>

namespace vn::tool {

namespace {

/** `config set` and `config add`, which differ in what becomes of the values that are there. */
class ConfigSet : public Command
{
public:
    enum class Kind { Set, Add };

    explicit ConfigSet(Kind kind)
        : m_kind(kind)
    {
    }

    void declare(Arguments &arguments) override
    {
        const bool isSet = m_kind == Kind::Set;
        arguments.describe(
            isSet ? "Of a key that occurs several times the newest value changes, which is the "
                    "last line of it in the file; the other lines stay."
                  : "Values that the key has already stay; the added one becomes the newest.");
        arguments.describe(
            "A new key is added before the end of its section, a new section at the end of the "
            "text. The header's values are the keys \"File Version\", \"Software Version\" and "
            "\"Factory IP\" of the section \"head\". What the format cannot hold, such as a line "
            "break, is refused.");
        const char *option = isSet ? "--set" : "--add";
        arguments.fileThenTexts(
            "FILE", "configuration, \"-\" for standard input", m_target.names(),
            {{"SECTION", "name of the section", &m_single.section, "section"},
             {"KEY", "the key", &m_single.key, "key"},
             {"VALUE", R"(the value; after "--" it may begin with "-")", &m_single.value}},
            option);
        arguments.assignments(option,
                              isSet ? "set this value; all arguments are files then"
                                    : "add this value; all arguments are files then",
                              m_edits);
        if (isSet)
            arguments.option("--index", "N",
                             "change this value of a repeated key, counting from the newest (0)",
                             m_index, 0, std::numeric_limits<int>::max());
        arguments.flag("--existing", "refuse to make a new section or a new key", m_existing);
        arguments.assignments("--if", "edit only files in which a value of the key is this one",
                              m_conditions);
        m_target.declare(arguments);
        if (isSet) {
            arguments.example(
                "vantero-formats config set gate.cfg ethernet HOSTNAME gate-2 --in-place",
                "gives the camera another name, in the file itself");
            arguments.example("vantero-formats config set backups --recursive --set "
                              "ethernet/NTP=10.14.0.5 --if ethernet/NTP=10.14.0.1 --existing "
                              "--dry-run",
                              "shows what another time server would change at all cameras that "
                              "have the old one");
        } else {
            arguments.example(
                "vantero-formats config add gate.cfg ethernet DNS 10.14.0.4 --dry-run",
                "shows what one more name server would change");
        }
    }

    ExitCode run(Output &out) override
    {
        if (m_edits.isEmpty())
            m_edits = {m_single};
        const ExitCode code =
            m_target.run(out, [this](const ConfigTextFile &file) { return edit(file); });
        if (m_hasMet || m_conditions.isEmpty() || Interrupt::stopped())
            return code;
        out.complain(ToolError(ExitCode::No, QStringLiteral("nothing is changed: the condition "
                                                            "holds in no file")));
        return std::max(code, ExitCode::No);
    }

private:
    EditTarget::Edited edit(const ConfigTextFile &file)
    {
        VanteroConfigText text(file.text());
        requireWellFormed(text, file.name());
        const bool isMet = std::all_of(
            m_conditions.begin(), m_conditions.end(), [&text](const EntryArgument &condition) {
                return text.values(condition.section, condition.key).contains(condition.value);
            });
        if (!isMet)
            return {file.text(), text.edits()};
        m_hasMet = true;
        QVector<ToolError> made;
        for (const EntryArgument &each : qAsConst(m_edits)) {
            const QString news = whatIsNew(text, each);
            if (m_existing && !news.isNull())
                throw ToolError(ExitCode::BadInput, QLatin1String("no ") + news).at(file.name());
            const VanteroConfigText::Result result =
                m_kind == Kind::Set
                    ? text.setValue(each.section, each.key, each.value, int(m_index.value_or(0)))
                    : text.addValue(each.section, each.key, each.value);
            requireDone(result, file.name(), QString());
            // A value that is added is meant to be new; one that is set is meant to be there.
            if (m_kind == Kind::Set && !news.isNull())
                made.append(
                    ToolError(ExitCode::Done, escapedControls(QLatin1String("new ") + news)));
        }
        return {text.text(), text.edits(), made};
    }

    /** The section or key that the edit would make, and what may have been meant; null for none. */
    static QString whatIsNew(const VanteroConfigText &text, const EntryArgument &edit)
    {
        if (!text.values(edit.section, edit.key).isEmpty())
            return QString();
        const auto sections = text.outline().sections;
        const bool hasSection = std::any_of(sections.begin(), sections.end(),
                                            [&edit](const VanteroConfigText::Section &section) {
                                                return section.name == edit.section;
                                            });
        if (hasSection || edit.section == VanteroConfigFile::HEAD_SECTION)
            return QStringLiteral("key %1 in section %2%3")
                .arg(edit.key, edit.section, keyHint(text, edit.section, edit.key));
        return QStringLiteral("section %1%2").arg(edit.section, sectionHint(text, edit.section));
    }

    const Kind m_kind;
    EntryArgument m_single;
    QList<EntryArgument> m_edits;
    QList<EntryArgument> m_conditions;
    std::optional<qint64> m_index;
    bool m_existing = false;
    bool m_hasMet = false;
    EditTarget m_target;
};

} // namespace

std::unique_ptr<Command> makeConfigSet()
{
    return std::make_unique<ConfigSet>(ConfigSet::Kind::Set);
}

std::unique_ptr<Command> makeConfigAdd()
{
    return std::make_unique<ConfigSet>(ConfigSet::Kind::Add);
}

} // namespace vn::tool
