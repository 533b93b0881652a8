// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/ConfigWriting.h"
#include "tool/files/OutputFile.h"

#include "config/PreserveReport.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace vn::tool {

namespace {

/** One of the library's presets: which entries of the previous configuration are kept. */
struct WantedPreset
{
    PreservePreset preset;
    bool isWanted = false;
};

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

class ConfigMerge : public Command
{
public:
    ConfigMerge()
    {
        for (const PreservePreset &preset : preservePresets())
            m_presets.push_back({preset});
    }

    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints NEW with entries of PREVIOUS kept: those of the options given, of all of them "
            "when none is. A key that PREVIOUS lacks becomes empty; a section that NEW lacks is "
            "taken over whole.");
        arguments.describe(
            "The text is made anew: the header with the versions of NEW and the camera's address "
            "(that of PREVIOUS where NEW has none), then the sections by name, without comments, "
            "in UTF-8. Reading it back gives the merged configuration.");
        arguments.file("NEW", "the configuration to be used, \"-\" for standard input", m_new);
        arguments.file("PREVIOUS", "the configuration that it replaces", m_previous);
        for (WantedPreset &each : m_presets)
            arguments.flag(("--" + each.preset.name.toUtf8()).constData(),
                           QStringLiteral("keep %1 of the section \"%2\"")
                               .arg(each.preset.keys.join(QLatin1String(", ")), each.preset.section)
                               .toUtf8()
                               .constData(),
                           each.isWanted);
        arguments.fileOption("--output", "FILE", "write the text to this file instead",
                             m_outputName);
        arguments.flag("--explain",
                       "list what became of each kept entry, and which values of PREVIOUS are lost "
                       "beside them; the text is then only written to --output",
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
        const VanteroConfigFile config = readConfig(m_new, out).config;
        const VanteroConfigFile previous = readConfig(m_previous, out).config;
        const QList<PreservePreset> presets = wantedPresets();

        const QString text = merge(presets, config, previous);
        const PreserveReport report = preserveReport(config.map(), previous.map(), presets);
        warnOfLostHeaderValues(config, out);

        const bool toFile = m_outputName && *m_outputName != QLatin1String("-");
        if (toFile)
            writeFileAtomically(*m_outputName, text.toUtf8(), out);
        if (out.json())
            out.setResult(toJson(text, report));
        else if (m_explain)
            print(report, out);
        else if (!toFile)
            out.print(text.toUtf8());
        return ExitCode::Done;
    }

private:
    QList<PreservePreset> wantedPresets() const
    {
        QList<PreservePreset> wanted;
        QList<PreservePreset> all;
        for (const WantedPreset &each : m_presets) {
            all += each.preset;
            if (each.isWanted)
                wanted += each.preset;
        }
        return wanted.isEmpty() ? all : wanted;
    }

    QString merge(const QList<PreservePreset> &presets, const VanteroConfigFile &config,
                  const VanteroConfigFile &previous) const
    {
        VanteroConfigMap merged;
        for (const PreservePreset &preset : presets)
            (void)config.preserveEntries(previous, preset.section, preset.keys, merged);
        for (const QString &name : config.allSectionKeys())
            if (!merged.containsSection(name))
                merged.replaceSection(name, config.section(name));

        const QString &head = VanteroConfigFile::HEAD_SECTION;
        const bool hasAddress = config.section(head).contains(VanteroConfigFile::FACTORY_IP);
        const QString address = (hasAddress ? config : previous).getFactoryIP();
        merged.removeSection(head);
        const QString sections = oldestFirst(merged).toString();

        merged.setValue(head, VanteroConfigFile::FILE_VERSION, config.getFileVersion());
        merged.setValue(head, VanteroConfigFile::SOFTWARE_VERSION, config.getSoftwareVersion());
        if (!address.isNull())
            merged.setValue(head, VanteroConfigFile::FACTORY_IP, address);
        const QString text = headerText(config, address) + sections;
        if (!saysTheSame(parseConfig(text, m_new).map(), merged))
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("the merged configuration cannot be written as a text: "
                                           "it would be read back differently"))
                .at(m_new);
        return text;
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

    /** Whether a preset names the key, so that the previous configuration has a say in it. */
    bool isListed(const QString &section, const QString &key) const
    {
        const QList<PreservePreset> presets = wantedPresets();
        return std::any_of(presets.begin(), presets.end(), [&](const PreservePreset &preset) {
            return preset.section == section && preset.keys.contains(key);
        });
    }

    void print(const PreserveReport &report, Output &out) const
    {
        for (const PreservedSection &section : report) {
            if (section.takenOver)
                out.printForeign(
                    section.section +
                    QLatin1String(": section taken over whole, as the new one lacks it\n"));
            for (const PreservedKey &row : section.keys) {
                const QString head = section.section + QLatin1Char('/') + row.key;
                if (!section.takenOver && isListed(section.section, row.key))
                    out.printForeign(head + QLatin1String(": ") + inWords(row) + QLatin1Char('\n'));
                QStringList lost;
                for (const QString &value : row.lost)
                    lost += quoted(value);
                if (!lost.isEmpty())
                    out.printForeign(head + QLatin1String(": lost: ") +
                                     lost.join(QLatin1String(", ")) + QLatin1Char('\n'));
            }
        }
    }

    /** What became of the newest value of a key that a preset names. */
    static QString inWords(const PreservedKey &row)
    {
        if (row.outcome == PreservedKey::Outcome::Unchanged)
            return QLatin1String("unchanged: ") + quoted(row.after.first());
        const QString instead = row.before.isEmpty()
                                    ? QString()
                                    : QLatin1String(", instead of ") + quoted(row.before.first());
        return row.outcome == PreservedKey::Outcome::CarriedOver
                   ? QLatin1String("carried over: ") + quoted(row.after.first()) + instead
                   : QLatin1String("became null, as the previous one lacks it") + instead;
    }

    Json toJson(const QString &text, const PreserveReport &report) const
    {
        static const char *const names[] = {"carriedOver", "unchanged", "becameNull"};
        Json preserved = Json::array();
        Json lost = Json::array();
        for (const PreservedSection &section : report) {
            if (section.takenOver)
                preserved.append(Json::object({{"section", section.section},
                                               {"key", Json()},
                                               {"outcome", "sectionTakenOver"},
                                               {"value", Json()},
                                               {"instead", Json()}}));
            for (const PreservedKey &row : section.keys) {
                if (!section.takenOver && isListed(section.section, row.key))
                    preserved.append(Json::object({{"section", section.section},
                                                   {"key", row.key},
                                                   {"outcome", names[int(row.outcome)]},
                                                   {"value", row.after.first()},
                                                   {"instead", row.before.value(0)}}));
                if (!row.lost.isEmpty())
                    lost.append(Json::object({{"section", section.section},
                                              {"key", row.key},
                                              {"values", Json::array(row.lost)}}));
            }
        }
        return Json::object({{"new", m_new},
                             {"previous", m_previous},
                             {"text", text},
                             {"preserved", preserved},
                             {"lost", lost}});
    }

    QString m_new;
    QString m_previous;
    std::vector<WantedPreset> m_presets;
    std::optional<QString> m_outputName;
    bool m_explain = false;
};

} // namespace

std::unique_ptr<Command> makeConfigMerge()
{
    return std::make_unique<ConfigMerge>();
}

} // namespace vn::tool
