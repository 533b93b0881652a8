// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/ConfigMaps.h"
#include "tool/files/OutputFile.h"

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace vn::tool {

namespace {

/** One of the library's presets: which entries of the previous configuration are kept. */
struct Preset
{
    const char *option;
    const char *what;
    void (VanteroConfigFile::*preserve)(const VanteroConfigFile &, VanteroConfigMap &) const;
};

const Preset kPresets[] = {
    {"--network", "keep the network address and host name",
     &VanteroConfigFile::preserveIpAddresses},
    {"--motion", "keep the definitions of motion detection",
     &VanteroConfigFile::preserveVideoMotion},
    {"--time-tables", "keep the references to time tables",
     &VanteroConfigFile::preserveTimeTableReferences},
};

/** What became of an entry that a preset names, or of a whole section. */
struct Preserved
{
    enum class Outcome { CarriedOver, BecameNull, SectionTakenOver };

    QString section;
    QString key; // null for a section
    Outcome outcome;
    QString value;   // in the merged configuration
    QString instead; // in the new one; null where it had none
};

/** The sections and keys that a preset works on, as far as @p config has the sections. The library
 * tells: of a previous configuration without anything, each of the keys becomes null. */
VanteroConfigMap keysOf(const Preset &preset, const VanteroConfigFile &config)
{
    VanteroConfigFile bare;
    const QStringList names = config.allSectionKeys();
    for (const QString &name : names)
        bare.setSection(name, {});
    VanteroConfigMap result;
    (bare.*preset.preserve)(VanteroConfigFile(), result);
    return result;
}

/** What the presets did, told from their results. */
std::vector<Preserved> explain(const std::vector<const Preset *> &presets,
                               const VanteroConfigFile &config, const VanteroConfigFile &previous)
{
    std::vector<Preserved> result;
    std::set<QString> takenOver; // two presets may take over the same section
    for (const Preset *preset : presets) {
        const VanteroConfigMap keys = keysOf(*preset, config);
        for (const QString &section : keys.allSectionKeys()) {
            const QMultiMap<QString, QString> before = previous.section(section);
            for (const QString &key : keys.section(section).uniqueKeys())
                result.push_back({section, key,
                                  before.contains(key) ? Preserved::Outcome::CarriedOver
                                                       : Preserved::Outcome::BecameNull,
                                  previous.value(section, key), config.value(section, key)});
        }
        VanteroConfigMap merged;
        (config.*preset->preserve)(previous, merged);
        for (const QString &section : merged.allSectionKeys())
            if (!config.containsSection(section))
                takenOver.insert(section);
    }
    for (const QString &section : takenOver)
        result.push_back(
            {section, QString(), Preserved::Outcome::SectionTakenOver, QString(), QString()});
    return result;
}

class ConfigMerge : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints NEW with entries of PREVIOUS kept: those of the options given, of all three "
            "when none is. A key that PREVIOUS lacks becomes empty; a section that NEW lacks is "
            "taken over whole.");
        arguments.describe(
            "The text is made anew: the header with the versions of NEW and the camera's address "
            "(that of PREVIOUS where NEW has none), then the sections by name, without comments, "
            "in UTF-8. Reading it back gives the merged configuration.");
        arguments.file("NEW", "the configuration to be used, \"-\" for standard input", m_new);
        arguments.file("PREVIOUS", "the configuration that it replaces", m_previous);
        for (std::size_t i = 0; i < std::size(kPresets); ++i)
            arguments.flag(kPresets[i].option, kPresets[i].what, m_wanted[i]);
        arguments.fileOption("--output", "FILE", "write the text to this file instead",
                             m_outputName);
        arguments.flag("--explain",
                       "list what became of each kept entry; the text is then only written to "
                       "--output",
                       m_explain);
        arguments.json();
        arguments.example("vantero-formats config merge gate-factory.cfg gate.cfg --explain",
                          "shows what a camera would keep of its settings");
    }

    ExitCode run(Output &out) override
    {
        if (m_new == QLatin1String("-") && m_previous == m_new)
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("only one of the files can be standard input"));
        const VanteroConfigFile config = readConfig(m_new).config;
        const VanteroConfigFile previous = readConfig(m_previous).config;
        const std::vector<const Preset *> presets = wantedPresets();

        const QString text = merge(presets, config, previous);
        const std::vector<Preserved> preserved = explain(presets, config, previous);
        warnOfLostHeaderValues(config, out);

        const bool toFile = m_outputName && *m_outputName != QLatin1String("-");
        if (toFile)
            writeFileAtomically(*m_outputName, text.toUtf8());
        if (out.json())
            out.setResult(toJson(text, preserved));
        else if (m_explain)
            print(preserved, out);
        else if (!toFile)
            out.print(text.toUtf8());
        return ExitCode::Done;
    }

private:
    std::vector<const Preset *> wantedPresets() const
    {
        std::vector<const Preset *> wanted;
        std::vector<const Preset *> all;
        for (std::size_t i = 0; i < std::size(kPresets); ++i) {
            all.push_back(&kPresets[i]);
            if (m_wanted[i])
                wanted.push_back(&kPresets[i]);
        }
        return wanted.empty() ? all : wanted;
    }

    QString merge(const std::vector<const Preset *> &presets, const VanteroConfigFile &config,
                  const VanteroConfigFile &previous) const
    {
        VanteroConfigMap merged;
        for (const Preset *preset : presets)
            (config.*preset->preserve)(previous, merged);
        for (const QString &name : config.allSectionKeys())
            if (!merged.containsSection(name))
                merged.replaceSection(name, config.section(name));

        const QString &head = VanteroConfigFile::HEAD_SECTION;
        const bool hasAddress = config.section(head).contains(VanteroConfigFile::FACTORY_IP);
        const QString address = (hasAddress ? config : previous).getFactoryIP();
        merged.removeSection(head);
        QString text = header(config, address) + printed(merged);

        merged.setValue(head, VanteroConfigFile::FILE_VERSION, config.getFileVersion());
        merged.setValue(head, VanteroConfigFile::SOFTWARE_VERSION, config.getSoftwareVersion());
        if (!address.isNull())
            merged.setValue(head, VanteroConfigFile::FACTORY_IP, address);
        if (!isSameMap(mapOf(parseConfig(text, m_new)), merged))
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("the merged configuration cannot be written as a text: "
                                           "it would be read back differently"))
                .at(m_new);
        return text;
    }

    /** The header block with the line of the address below its title. */
    static QString header(const VanteroConfigFile &config, const QString &address)
    {
        QString text = config.makeHeader();
        if (address.isNull())
            return text;
        int titleEnd = 0;
        for (int line = 0; line < 3; ++line)
            titleEnd = text.indexOf(QLatin1Char('\n'), titleEnd) + 1;
        return text.insert(titleEnd, QLatin1String("# Camera IP: ") + address + QLatin1Char('\n'));
    }

    /** The map as a text that is read back as it is: the values of a key oldest first, as the last
     * line read becomes the newest value. */
    static QString printed(const VanteroConfigMap &map)
    {
        VanteroConfigMap reversed;
        for (const QString &name : map.allSectionKeys()) {
            const QMultiMap<QString, QString> &section = map.section(name);
            // Added in this order, newest first, the oldest value comes to stand first.
            for (auto it = section.begin(); it != section.end(); ++it)
                reversed.addValue(name, it.key(), it.value());
        }
        return reversed.toString();
    }

    /** The header block has a place for three values only. */
    void warnOfLostHeaderValues(const VanteroConfigFile &config, Output &out) const
    {
        const QMultiMap<QString, QString> head = config.section(VanteroConfigFile::HEAD_SECTION);
        for (const QString &key : head.uniqueKeys())
            if (key != VanteroConfigFile::FILE_VERSION &&
                key != VanteroConfigFile::SOFTWARE_VERSION && key != VanteroConfigFile::FACTORY_IP)
                out.warn(m_new, QStringLiteral("the header has no place for \"%1\" of the section "
                                               "\"head\"; it is left out")
                                    .arg(key));
    }

    static void print(const std::vector<Preserved> &preserved, Output &out)
    {
        const auto quoted = [](const QString &text) {
            return QLatin1Char('"') + text + QLatin1Char('"');
        };
        for (const Preserved &entry : preserved) {
            QString line = entry.section;
            if (!entry.key.isNull())
                line += QLatin1Char('/') + entry.key;
            const QString instead = entry.instead.isNull()
                                        ? QString()
                                        : QLatin1String(", instead of ") + quoted(entry.instead);
            switch (entry.outcome) {
            case Preserved::Outcome::CarriedOver:
                line += QLatin1String(": carried over: ") + quoted(entry.value) + instead;
                break;
            case Preserved::Outcome::BecameNull:
                line += QLatin1String(": became null, as the previous one lacks it") + instead;
                break;
            case Preserved::Outcome::SectionTakenOver:
                line += QLatin1String(": section taken over whole, as the new one lacks it");
                break;
            }
            out.printLine(line);
        }
    }

    Json toJson(const QString &text, const std::vector<Preserved> &preserved) const
    {
        static const char *const names[] = {"carriedOver", "becameNull", "sectionTakenOver"};
        Json entries = Json::array();
        for (const Preserved &entry : preserved)
            entries.append(Json::object({{"section", entry.section},
                                         {"key", entry.key},
                                         {"outcome", names[int(entry.outcome)]},
                                         {"value", entry.value},
                                         {"instead", entry.instead}}));
        return Json::object(
            {{"new", m_new}, {"previous", m_previous}, {"text", text}, {"preserved", entries}});
    }

    QString m_new;
    QString m_previous;
    bool m_wanted[std::size(kPresets)] = {};
    std::optional<QString> m_outputName;
    bool m_explain = false;
};

} // namespace

std::unique_ptr<Command> makeConfigMerge()
{
    return std::make_unique<ConfigMerge>();
}

} // namespace vn::tool
