// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/ConfigInput.h"

#include <memory>
#include <set>
#include <vector>

namespace vn::tool {

namespace {

/** A key with other values, or other order of values, in the two configurations. */
struct KeyDifference
{
    QString key;
    QStringList a; // newest first; empty where the key is missing
    QStringList b;
};

struct SectionDifference
{
    QString section;
    bool inA;
    bool inB;
    std::vector<KeyDifference> keys;
};

template <typename Names>
std::set<QString> united(const Names &a, const Names &b)
{
    std::set<QString> result(a.begin(), a.end());
    result.insert(b.begin(), b.end());
    return result;
}

std::vector<SectionDifference> differences(const VanteroConfigFile &a, const VanteroConfigFile &b)
{
    std::vector<SectionDifference> result;
    for (const QString &name : united(a.allSectionKeys(), b.allSectionKeys())) {
        const QMultiMap<QString, QString> inA = a.section(name);
        const QMultiMap<QString, QString> inB = b.section(name);
        SectionDifference difference{name, a.containsSection(name), b.containsSection(name), {}};
        for (const QString &key : united(inA.uniqueKeys(), inB.uniqueKeys()))
            if (inA.values(key) != inB.values(key))
                difference.keys.push_back({key, inA.values(key), inB.values(key)});
        if (!difference.keys.empty())
            result.push_back(std::move(difference));
    }
    return result;
}

class ConfigDiff : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Each section with differences is listed with its keys: lines with \"-\" stand in A "
            "only, lines with \"+\" in B only. A key is compared with all its values and their "
            "order (the newest first). Comments, the order of lines and how a section is parted "
            "do not matter; a key without a value equals one with an empty value. The header is "
            "the section \"head\".");
        arguments.describe("The exit status is 0 when nothing differs and 1 when something does.");
        arguments.file("A", "configuration or JPEG image, \"-\" for standard input", m_a);
        arguments.file("B", "the one to compare it with", m_b);
        arguments.json();
        arguments.example("vantero-formats config diff gate.cfg gate-factory.cfg",
                          "lists what was changed since the camera left the factory");
    }

    ExitCode run(Output &out) override
    {
        if (m_a == QLatin1String("-") && m_b == m_a)
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("only one of the files can be standard input"));
        const std::vector<SectionDifference> found =
            differences(readConfig(m_a).config, readConfig(m_b).config);
        if (out.json())
            out.setResult(toJson(found));
        else
            print(found, out);
        return found.empty() ? ExitCode::Done : ExitCode::No;
    }

private:
    void print(const std::vector<SectionDifference> &found, Output &out) const
    {
        if (found.empty())
            return;
        out.printLine(QLatin1String("--- ") + m_a);
        out.printLine(QLatin1String("+++ ") + m_b);
        for (const SectionDifference &section : found) {
            const char mark = section.inA == section.inB ? ' ' : section.inA ? '-' : '+';
            out.printLine(QLatin1Char(mark) + QLatin1String("SECTION ") + section.section);
            for (const KeyDifference &key : section.keys) {
                for (const QString &value : key.a)
                    out.printLine(QLatin1Char('-') + key.key + QLatin1Char('=') + value);
                for (const QString &value : key.b)
                    out.printLine(QLatin1Char('+') + key.key + QLatin1Char('=') + value);
            }
        }
    }

    Json toJson(const std::vector<SectionDifference> &found) const
    {
        Json sections = Json::array();
        for (const SectionDifference &section : found) {
            Json keys = Json::array();
            for (const KeyDifference &key : section.keys)
                keys.append(Json::object(
                    {{"key", key.key}, {"a", Json::array(key.a)}, {"b", Json::array(key.b)}}));
            sections.append(Json::object({{"section", section.section},
                                          {"inA", section.inA},
                                          {"inB", section.inB},
                                          {"keys", keys}}));
        }
        return Json::object(
            {{"a", m_a}, {"b", m_b}, {"equal", found.empty()}, {"sections", sections}});
    }

    QString m_a;
    QString m_b;
};

} // namespace

std::unique_ptr<Command> makeConfigDiff()
{
    return std::make_unique<ConfigDiff>();
}

} // namespace vn::tool
