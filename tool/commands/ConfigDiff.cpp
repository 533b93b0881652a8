// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/cli/FileNameCodec.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/ConfigSources.h"

#include "base/StringUtils.h"
#include "config/ConfigDiff.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

namespace vn::tool {

namespace {

/** What counts as a difference: a key without a value equals one with an empty value. */
ConfigDiff differences(const VanteroConfigMap &a, const VanteroConfigMap &b)
{
    ConfigDiff result;
    for (ConfigSectionDifference section : configDiff(a, b)) {
        const auto isNone = [](const ConfigKeyDifference &key) {
            return key.kind == ConfigKeyDifference::Kind::NullAgainstEmpty;
        };
        section.keys.erase(std::remove_if(section.keys.begin(), section.keys.end(), isNone),
                           section.keys.end());
        if (!section.keys.isEmpty())
            result += section;
    }
    return result;
}

/** A configuration of one side. */
struct Configuration
{
    QString source;
    VanteroConfigMap map;
};

/** The configurations of both sides that belong together; usually one each. */
struct Group
{
    std::vector<Configuration> a;
    std::vector<Configuration> b;
};

/** Whether the name stands for many configurations. */
bool isSite(const QString &name)
{
    return StringUtils::endsWithIgnoreCase(name, QStringLiteral(".zip")) ||
           (name != QLatin1String("-") && QFileInfo(name).isDir());
}

class ConfigDiffCommand : public Command
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
        arguments.describe(
            "A folder or an archive stands for all configurations in it, at any depth. Those of A "
            "and B that have the same address in their headers, or with \"--by name\" the same "
            "name below the folder or in the archive, are compared; what only one of them has is "
            "listed. Several of one address are compared in the order of their names.");
        arguments.describe("The exit status is 0 when nothing differs and 1 when something does.");
        arguments.file(
            "A", "configuration, JPEG image, folder or archive, \"-\" for standard input", m_a);
        arguments.file("B", "the one to compare it with", m_b);
        arguments.choice("--by", "address|name", "what tells which configurations belong together",
                         m_by);
        m_sources.declare(arguments);
        arguments.json();
        arguments.example("vantero-formats config diff gate.cfg gate-factory.cfg",
                          "lists what was changed since the camera left the factory");
        arguments.example("vantero-formats config diff monday.zip tuesday.zip",
                          "lists what was changed at any camera of a site");
    }

    ExitCode run(Output &out) override
    {
        if (m_a == QLatin1String("-") && m_b == m_a)
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("only one of the files can be standard input"));
        return isSite(m_a) || isSite(m_b) ? compareSites(out) : compareFiles(out);
    }

private:
    ExitCode compareFiles(Output &out) const
    {
        if (!m_by.isNull())
            throw ToolError(ExitCode::BadInput, QStringLiteral("--by is for folders and archives"));
        const ConfigDiff found =
            differences(readConfig(m_a, out).config.map(), readConfig(m_b, out).config.map());
        if (!out.json())
            print(m_a, m_b, found, out);
        else
            out.setResult(Json::object(
                {{"a", m_a}, {"b", m_b}, {"equal", found.isEmpty()}, {"sections", toJson(found)}}));
        return found.isEmpty() ? ExitCode::Done : ExitCode::No;
    }

    ExitCode compareSites(Output &out)
    {
        std::map<QString, Group> groups;
        m_sources.names() = QStringList{m_a};
        collect(out, groups, &Group::a);
        m_sources.names() = QStringList{m_b};
        collect(out, groups, &Group::b);

        bool isEqual = true;
        Json cameras = Json::array();
        for (const auto &each : groups) {
            const Group &group = each.second;
            // What has no address belongs to nothing.
            const std::size_t pairs =
                each.first.isEmpty() ? 0 : std::min(group.a.size(), group.b.size());
            for (std::size_t i = 0; i < pairs; ++i) {
                const ConfigDiff found = differences(group.a[i].map, group.b[i].map);
                isEqual = isEqual && found.isEmpty();
                report(each.first, group.a[i].source, group.b[i].source, found, cameras, out);
            }
            for (std::size_t i = pairs; i < group.a.size(); ++i)
                report(each.first, group.a[i].source, QString(), {}, cameras, out);
            for (std::size_t i = pairs; i < group.b.size(); ++i)
                report(each.first, QString(), group.b[i].source, {}, cameras, out);
            isEqual = isEqual && group.a.size() == pairs && group.b.size() == pairs;
        }
        if (out.json())
            out.setResult(Json::object({{"a", m_a},
                                        {"b", m_b},
                                        {"equal", isEqual},
                                        {"cameras", std::move(cameras)},
                                        {"errors", m_sources.errors()}}));
        return std::max(m_sources.exitCode(), isEqual ? ExitCode::Done : ExitCode::No);
    }

    /** Reads one side into the groups. */
    void collect(Output &out, std::map<QString, Group> &groups,
                 std::vector<Configuration> Group::*side)
    {
        const QString root = m_sources.names().first();
        m_sources.forEach(out, [&](const ConfigSource &source) {
            const VanteroConfigFile config = readConfig(source, out).config;
            const QString key =
                m_by == QLatin1String("name") ? nameBelow(root, source) : config.getFactoryIP();
            (groups[key].*side).push_back({source.name, config.map()});
        });
        if (Interrupt::stopped()) // what is missing is no difference
            throw ToolError(ExitCode::BadInput, QStringLiteral("nothing is compared"));
    }

    /** The name by which a source is known in both: that of a file, the rest of a path, an entry.
     */
    static QString nameBelow(const QString &root, const ConfigSource &source)
    {
        if (source.name == root)
            return QFileInfo(root).fileName();
        return source.name.mid(root.size() + (root.endsWith(QLatin1Char('/')) ? 0 : 1));
    }

    void report(const QString &key, const QString &a, const QString &b, const ConfigDiff &found,
                Json &cameras, Output &out) const
    {
        if (out.json()) {
            const bool isPair = !a.isNull() && !b.isNull();
            cameras.append(Json::object({{m_by == QLatin1String("name") ? "name" : "address", key},
                                         {"a", a},
                                         {"b", b},
                                         {"equal", isPair && found.isEmpty()},
                                         {"sections", toJson(found)}}));
        } else if (!a.isNull() && !b.isNull()) {
            print(a, b, found, out);
        } else {
            const QString address =
                m_by == QLatin1String("name")
                    ? QString()
                    : QLatin1String(key.isEmpty() ? " (no address" : " (") + key + QLatin1Char(')');
            out.printForeign(QStringLiteral("Only in %1: %2%3\n")
                                 .arg(a.isNull() ? m_b : m_a, a.isNull() ? b : a, address));
        }
    }

    static void print(const QString &a, const QString &b, const ConfigDiff &found, Output &out)
    {
        if (found.isEmpty())
            return;
        out.printDiff(toOutputBytes(QStringLiteral("--- %1\n+++ %2\n").arg(a, b)));
        for (const ConfigSectionDifference &section : found) {
            const char mark = section.inFirst == section.inSecond ? ' '
                              : section.inFirst                   ? '-'
                                                                  : '+';
            QString text =
                QLatin1Char(mark) + QLatin1String("SECTION ") + section.section + QLatin1Char('\n');
            for (const ConfigKeyDifference &key : section.keys) {
                for (const QString &value : key.first)
                    text +=
                        QLatin1Char('-') + key.key + QLatin1Char('=') + value + QLatin1Char('\n');
                for (const QString &value : key.second)
                    text +=
                        QLatin1Char('+') + key.key + QLatin1Char('=') + value + QLatin1Char('\n');
            }
            out.printForeignDiff(text);
        }
    }

    static Json toJson(const ConfigDiff &found)
    {
        Json sections = Json::array();
        for (const ConfigSectionDifference &section : found) {
            Json keys = Json::array();
            for (const ConfigKeyDifference &key : section.keys)
                keys.append(Json::object({{"key", key.key},
                                          {"a", Json::array(key.first)},
                                          {"b", Json::array(key.second)}}));
            sections.append(Json::object({{"section", section.section},
                                          {"inA", section.inFirst},
                                          {"inB", section.inSecond},
                                          {"keys", keys}}));
        }
        return sections;
    }

    QString m_a;
    QString m_b;
    QString m_by;
    ConfigSources m_sources{ConfigSources::Images | ConfigSources::Archives |
                            ConfigSources::NamedArchives | ConfigSources::AlwaysRecursive};
};

} // namespace

std::unique_ptr<Command> makeConfigDiff()
{
    return std::make_unique<ConfigDiffCommand>();
}

} // namespace vn::tool
