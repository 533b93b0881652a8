// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/ConfigWriting.h"
#include "tool/files/Input.h"
#include "tool/files/OutputFile.h"

#include "base/FileUtils.h"
#include "config/ConfigDiff.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <memory>
#include <optional>

namespace vn::tool {

namespace {

class ConfigWrite : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Reads what \"config show --json\" prints of a configuration and writes the text of "
            "it: shown again it gives the same sections, keys and values, repeated values in "
            "their order and null values included. Comments are no part of it.");
        arguments.describe(
            "The header comes first, with the values of the section \"head\", then the sections "
            "by name, in UTF-8. What the format cannot hold, such as a \"=\" in a key, is "
            "refused.");
        arguments.file("FILE", "JSON of a configuration, \"-\" for standard input", m_file);
        arguments.fileOption("--output", "FILE", "write the text to this file instead",
                             m_outputName);
        arguments.example("vantero-formats config show gate.cfg --json | jq "
                          "'.sections.audio.level = [\"70\"]' | vantero-formats config write - "
                          "--output new.cfg",
                          "edits a configuration with a tool for JSON");
    }

    ExitCode run(Output &out) override
    {
        const QJsonObject document = readDocument();
        const VanteroConfigMap map = mapOf(document);
        // Whatever is not said of the version lines, they are written where there are versions.
        const QByteArray text =
            textOf(map, document.value(QLatin1String("versionLines")).toBool(true)).toUtf8();
        requireReadsBack(text, map);
        if (m_outputName && *m_outputName != QLatin1String("-"))
            writeFileAtomically(*m_outputName, text, out);
        else
            out.print(text);
        return ExitCode::Done;
    }

private:
    ToolError badInput(const QString &message) const
    {
        return ToolError(ExitCode::BadInput, message).at(m_file);
    }

    QJsonObject readDocument() const
    {
        const QByteArray bytes = readInput(m_file);
        QJsonParseError error = {};
        const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
        if (error.error != QJsonParseError::NoError) {
            const QByteArray before = bytes.left(error.offset);
            const QString line = QString::fromUtf8(before.mid(before.lastIndexOf('\n') + 1));
            throw badInput(QLatin1String("no JSON: ") + error.errorString())
                .at(m_file, before.count('\n') + 1, line.size() + 1);
        }
        return document.object();
    }

    VanteroConfigMap mapOf(const QJsonObject &document) const
    {
        const QJsonValue sections = document.value(QLatin1String("sections"));
        if (!sections.isObject())
            throw badInput(QStringLiteral("no object \"sections\", as \"config show --json\" "
                                          "prints it of one configuration"));
        VanteroConfigMap map;
        const QJsonObject object = sections.toObject();
        for (auto section = object.begin(); section != object.end(); ++section) {
            if (!section->isObject())
                throw badInput(
                    QStringLiteral("the section \"%1\" is no object").arg(section.key()));
            map.replaceSection(section.key(), {});
            const QJsonObject entries = section->toObject();
            for (auto entry = entries.begin(); entry != entries.end(); ++entry)
                addValues(section.key(), entry.key(), entry.value(), map);
        }
        return map;
    }

    void addValues(const QString &section, const QString &key, const QJsonValue &value,
                   VanteroConfigMap &map) const
    {
        const QJsonArray values = value.toArray();
        bool areTexts = value.isArray();
        for (int i = values.size() - 1; i >= 0; --i) { // the newest stands first, and is added last
            areTexts = areTexts && (values.at(i).isString() || values.at(i).isNull());
            map.addValue(section, key, values.at(i).toString());
        }
        if (!areTexts)
            throw badInput(QStringLiteral("the values of \"%1\" in section \"%2\" are no list of "
                                          "texts")
                               .arg(key, section));
    }

    void requireReadsBack(const QByteArray &text, const VanteroConfigMap &map) const
    {
        const auto refusal = [this](const QString &what) {
            return badInput(QStringLiteral("the format cannot hold %1").arg(what));
        };
        VanteroConfigMap read;
        try {
            read = parseConfig(FileUtils::decodeText(text), m_file).map();
        } catch (const ToolError &e) {
            throw refusal(QStringLiteral("that: ") + e.message());
        }
        for (const ConfigSectionDifference &section : configDiff(map, read))
            for (const ConfigKeyDifference &key : section.keys)
                if (!key.first.isEmpty()) // else it came of another one
                    throw refusal(
                        QStringLiteral("\"%1\" of the section \"%2\": it would be read back "
                                       "differently")
                            .arg(key.key, section.section));
    }

    QString m_file;
    std::optional<QString> m_outputName;
};

} // namespace

std::unique_ptr<Command> makeConfigWrite()
{
    return std::make_unique<ConfigWrite>();
}

} // namespace vn::tool
