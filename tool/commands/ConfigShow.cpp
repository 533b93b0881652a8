// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"

#include <memory>
#include <optional>

namespace vn::tool {

namespace {

class ConfigShow : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Sections are printed as blocks with their keys ascending; of a key that occurs "
            "several "
            "times the newest value, the last one in the file, comes first. The values of the "
            "header are the section \"head\". With --section only that block is printed, with "
            "--key only the values, a line each.");
        arguments.describe(
            "FILE may be a camera's JPEG image, too: then the sections in its comment are shown.");
        arguments.file("FILE", "configuration or JPEG image, \"-\" for standard input", m_file);
        arguments.option("--section", "NAME", "only this section", m_section);
        arguments.option("--key", "KEY", "only the values of this key of the section", m_key);
        arguments.needs("--key", "--section");
        arguments.json();
        arguments.example("vantero-formats config show gate.cfg --section ethernet --key IPADDR",
                          "prints the camera's network address");
    }

    ExitCode run(Output &out) override
    {
        m_input = readConfig(m_file);
        if (m_key)
            showKey(out);
        else if (m_section)
            showSection(out);
        else
            showAll(out);
        return ExitCode::Done;
    }

private:
    ToolError nothingThere(const QString &message) const
    {
        return ToolError(ExitCode::No, message).at(m_file);
    }

    QMultiMap<QString, QString> section() const
    {
        if (!m_input.config.containsSection(*m_section))
            throw nothingThere(QStringLiteral("no section \"%1\"").arg(*m_section));
        return m_input.config.section(*m_section);
    }

    static Json entriesToJson(const QMultiMap<QString, QString> &section)
    {
        Json entries = Json::object();
        for (const QString &key : section.uniqueKeys())
            entries.insert(key, Json::array(section.values(key)));
        return entries;
    }

    void showKey(Output &out) const
    {
        const QStringList values = section().values(*m_key);
        if (values.isEmpty())
            throw nothingThere(
                QStringLiteral("no key \"%1\" in section \"%2\"").arg(*m_key, *m_section));
        if (out.json()) {
            out.setResult(Json::object({{"file", m_file},
                                        {"section", *m_section},
                                        {"key", *m_key},
                                        {"values", Json::array(values)}}));
            return;
        }
        for (const QString &value : values)
            out.printLine(value);
    }

    void showSection(Output &out) const
    {
        const QMultiMap<QString, QString> content = section();
        if (out.json())
            out.setResult(Json::object(
                {{"file", m_file}, {"section", *m_section}, {"entries", entriesToJson(content)}}));
        else
            out.print(VanteroConfigMap::toString(*m_section, content));
    }

    void showAll(Output &out) const
    {
        QStringList names = m_input.config.allSectionKeys();
        if (names.isEmpty())
            throw nothingThere(QStringLiteral("no configuration: neither header nor sections"));
        if (names.removeOne(VanteroConfigFile::HEAD_SECTION))
            names.prepend(VanteroConfigFile::HEAD_SECTION);
        if (!out.json()) {
            for (const QString &name : qAsConst(names))
                out.print((name == names.first() ? QString() : QStringLiteral("\n")) +
                          m_input.config.toString(name));
            return;
        }
        Json sections = Json::object();
        for (const QString &name : qAsConst(names))
            sections.insert(name, entriesToJson(m_input.config.section(name)));
        out.setResult(Json::object(
            {{"file", m_file},
             {"versionLines", m_input.hasVersionLines ? Json(*m_input.hasVersionLines) : Json()},
             {"sections", sections}}));
    }

    QString m_file;
    std::optional<QString> m_section;
    std::optional<QString> m_key;
    ConfigInput m_input;
};

} // namespace

std::unique_ptr<Command> makeConfigShow()
{
    return std::make_unique<ConfigShow>();
}

} // namespace vn::tool
