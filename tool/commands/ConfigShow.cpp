// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Closest.h"
#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/ConfigSources.h"
#include "tool/files/Input.h"

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
            "several times the newest value, the last one in the file, comes first. The values of "
            "the header are the section \"head\". With --section only that block is printed, with "
            "--key only the values, a line each.");
        arguments.describe(
            "FILE may be a camera's JPEG image, too: then the sections in its comment are shown. "
            "Of several files each begins with a line \"# FILE\", and each value with "
            "\"FILE: \". With --json all are the list \"files\", also a single one, whose members "
            "stand beside it, too.");
        arguments.describe("On a terminal, control characters are shown as \"\\x1B\".");
        arguments.files("FILE", "configuration or JPEG image, \"-\" for standard input",
                        m_sources.names());
        arguments.option("--section", "NAME", "only this section", m_section);
        arguments.offers("section");
        arguments.option("--key", "KEY", "only the values of this key of the section", m_key);
        arguments.offers("key");
        arguments.needs("--key", "--section");
        m_sources.declare(arguments);
        arguments.json();
        arguments.example("vantero-formats config show gate.cfg --section ethernet --key IPADDR",
                          "prints the camera's network address");
        arguments.example("vantero-formats config show backups --recursive --section ethernet "
                          "--key NTP",
                          "prints the time servers of all cameras");
    }

    ExitCode run(Output &out) override
    {
        Json files = Json::array();
        if (m_sources.isOne()) {
            const QString name = m_sources.names().first();
            files.append(show({name, readInput(name)}, QString(), QString(), out));
            if (out.json())
                out.setResult(Json::listed("files", files, true, &m_sources.errors()));
            return ExitCode::Done;
        }
        bool isFirst = true;
        m_sources.forEach(out, [&](const ConfigSource &source) {
            const QString title = (isFirst ? QLatin1String("# ") : QLatin1String("\n# ")) +
                                  source.name + QLatin1Char('\n');
            files.append(show(source, title, source.name + QLatin1String(": "), out));
            isFirst = false;
        });
        if (out.json())
            out.setResult(Json::listed("files", files, false, &m_sources.errors()));
        return m_sources.exitCode();
    }

private:
    static Json entriesToJson(const QMultiMap<QString, QString> &section)
    {
        Json entries = Json::object();
        for (const QString &key : section.uniqueKeys())
            entries.insert(key, Json::array(section.values(key)));
        return entries;
    }

    /** Prints what is wanted of @p source behind @p title, values behind @p mark; returns it as
     * JSON. */
    Json show(const ConfigSource &source, const QString &title, const QString &mark,
              Output &out) const
    {
        const ConfigInput input = readConfig(source, out);
        const auto nothingThere = [&source](const QString &message) {
            return ToolError(ExitCode::No, message).at(source.name);
        };
        if (!m_section)
            return showAll(source, input, title, out);
        if (!input.config.containsSection(*m_section))
            throw nothingThere(
                QStringLiteral("no section \"%1\"%2")
                    .arg(*m_section, didYouMean(*m_section, input.config.allSectionKeys())));
        const QMultiMap<QString, QString> section = input.config.section(*m_section);
        if (!m_key) {
            if (!out.json())
                out.printForeign(title + VanteroConfigMap::toString(*m_section, section));
            return Json::object({{"file", source.name},
                                 {"section", *m_section},
                                 {"entries", entriesToJson(section)}});
        }
        const QStringList values = section.values(*m_key);
        if (values.isEmpty())
            throw nothingThere(
                QStringLiteral("no key \"%1\" in section \"%2\"%3")
                    .arg(*m_key, *m_section, didYouMean(*m_key, section.uniqueKeys())));
        if (!out.json())
            for (const QString &value : values)
                out.printForeign(mark + value + QLatin1Char('\n'));
        return Json::object({{"file", source.name},
                             {"section", *m_section},
                             {"key", *m_key},
                             {"values", Json::array(values)}});
    }

    static Json showAll(const ConfigSource &source, const ConfigInput &input, const QString &title,
                        Output &out)
    {
        QStringList names = input.config.allSectionKeys();
        if (names.isEmpty())
            throw ToolError(ExitCode::No,
                            QStringLiteral("no configuration: neither header nor sections"))
                .at(source.name);
        if (names.removeOne(VanteroConfigFile::HEAD_SECTION))
            names.prepend(VanteroConfigFile::HEAD_SECTION);
        Json sections = Json::object();
        for (const QString &name : qAsConst(names)) {
            if (out.json())
                sections.insert(name, entriesToJson(input.config.section(name)));
            else
                out.printForeign((name == names.first() ? title : QStringLiteral("\n")) +
                                 input.config.toString(name));
        }
        return Json::object(
            {{"file", source.name},
             {"versionLines", input.hasVersionLines ? Json(*input.hasVersionLines) : Json()},
             {"sections", std::move(sections)}});
    }

    ConfigSources m_sources{ConfigSources::Images | ConfigSources::Archives};
    std::optional<QString> m_section;
    std::optional<QString> m_key;
};

} // namespace

std::unique_ptr<Command> makeConfigShow()
{
    return std::make_unique<ConfigShow>();
}

} // namespace vn::tool
