// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/Completion.h"

#include "tool/cli/ToolError.h"
#include "tool/files/ConfigInput.h"

#include "base/Exceptions.h"
#include "config/ConfigCollector.h"
#include "config/VanteroConfigFile.h"
#include "version/UpdateRules.h"

#include <QtCore/QFileInfo>

namespace vn::tool {

namespace {

// Somebody waits.
constexpr int kMostSources = 200;
constexpr qint64 kMostBytes = 16 * 1024 * 1024; // the outline of a text takes fifteen times as many

/** What stands in configurations, each word once and in the order in which it comes. */
struct Content
{
    QStringList addresses;
    QStringList sections;
    QList<QPair<QString, QString>> entries; // section and key
};

void addContent(Content &content, const QString &name, const QByteArray &bytes)
{
    try {
        const VanteroConfigText::Outline outline = configText(ConfigSource{name, bytes}).outline();
        for (const VanteroConfigText::Entry &value : outline.header.values)
            if (value.key == VanteroConfigFile::FACTORY_IP)
                content.addresses += value.value;
        for (const VanteroConfigText::Section &section : outline.sections) {
            content.sections += section.name;
            for (const VanteroConfigText::Block &block : section.blocks)
                for (const VanteroConfigText::Entry &entry : block.entries)
                    content.entries += qMakePair(section.name, entry.key);
        }
    } catch (const ToolError &) {
        // It is no configuration.
    }
}

Content contentOf(const QStringList &words)
{
    QStringList paths;
    for (const QString &word : words)
        if (QFileInfo(word).isFile() || QFileInfo(word).isDir())
            paths += word;
    ConfigCollector::Options options;
    options.recursive = true;
    options.order = ConfigCollector::Order::Name;
    ConfigCollector collector(paths, options);
    Content content;
    qint64 bytes = 0;
    for (int i = 0; i < kMostSources; ++i) {
        const auto source = collector.nextSource();
        if (!source)
            break;
        const qint64 size = source->size >= 0 ? source->size : QFileInfo(source->path).size();
        if (size > kMostBytes - bytes)
            continue;
        bytes += size;
        addContent(content, source->path, collector.read(*source).bytes);
    }
    return content;
}

QStringList withoutRepeated(QStringList words)
{
    words.removeDuplicates();
    return words;
}

QStringList joined(const Content &content, const QString &end)
{
    QStringList words;
    for (const auto &entry : content.entries)
        words += entry.first + QLatin1Char('/') + entry.second + end;
    return withoutRepeated(words);
}

QStringList keys(const Content &content, const QStringList &words)
{
    QStringList all;
    QStringList wanted;
    for (const auto &entry : content.entries) {
        all += entry.second;
        if (words.contains(entry.first))
            wanted += entry.second;
    }
    return withoutRepeated(wanted.isEmpty() ? all : wanted);
}

QStringList models()
{
    QStringList words;
    const QList<UpdateModelClass> classes = UpdateRules::modelClasses();
    for (const UpdateModelClass &each : classes)
        for (const QString &beginning : each.beginnings)
            if (!beginning.contains(QLatin1Char('?')))
                words += beginning;
    return words;
}

QStringList rules()
{
    QStringList words;
    const QList<UpdateRule> all = UpdateRules::all();
    for (const UpdateRule &rule : all)
        words += rule.identifier;
    return words;
}

} // namespace

QStringList completions(const QString &kind, const QStringList &words)
{
    if (kind == QLatin1String("model"))
        return models();
    if (kind == QLatin1String("rule"))
        return rules();
    const Content content = contentOf(words);
    if (kind == QLatin1String("section"))
        return withoutRepeated(content.sections);
    if (kind == QLatin1String("key"))
        return keys(content, words);
    if (kind == QLatin1String("entry"))
        return joined(content, QString());
    const QLatin1String equals("=");
    if (kind == QLatin1String("assignment"))
        return joined(content, equals);
    if (kind != QLatin1String("condition"))
        return {};
    QStringList conditions = {QStringLiteral("firmware=")};
    for (const QString &address : withoutRepeated(content.addresses))
        conditions += QLatin1String("address=") + address;
    return conditions + joined(content, equals);
}

} // namespace vn::tool
