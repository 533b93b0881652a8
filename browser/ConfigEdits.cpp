// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ConfigEdits.h"

#include "Configuration.h"

#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QVector>

#include <algorithm>

using vn::TextRange;
using vn::VanteroConfigText;

namespace browser::edits {

namespace {

struct Words
{
    Q_DECLARE_TR_FUNCTIONS(browser::ConfigEdits)
};

EditResult refusal(const QString &reason)
{
    return {QString(), reason};
}

/** The edit that @p operation does to a text of the library. */
template <typename Operation>
Edit made(Operation operation)
{
    return [operation](const QString &text) -> EditResult {
        VanteroConfigText config(text);
        const VanteroConfigText::Result result = operation(config);
        return result ? EditResult{config.text(), QString()} : refusal(result.reason);
    };
}

/** @p text with @p words in each of the places, which ascend. */
QString replaced(QString text, const QVector<TextRange> &places, const QString &words)
{
    for (auto place = places.crbegin(); place != places.crend(); ++place)
        text.replace(int(place->offset), int(place->length), words);
    return text;
}

const VanteroConfigText::Section *sectionOf(const VanteroConfigText::Outline &outline,
                                            const QString &name)
{
    const auto found = std::find_if(outline.sections.begin(), outline.sections.end(),
                                    [&](const auto &section) { return section.name == name; });
    return found == outline.sections.end() ? nullptr : &*found;
}

/** The name in the last line of a block. */
TextRange endNameOf(const VanteroConfigText::Block &block, const QString &text)
{
    TextRange name = block.nameRange;
    const int end = int(block.range.offset + block.range.length);
    name.offset = text.lastIndexOf(text.midRef(int(name.offset), int(name.length)).toString(),
                                   end - int(name.length));
    return name;
}

/** Whether @p text is read as @p expected; what a rename does is tried out
 * before it counts. */
EditResult triedOut(const QString &text, const vn::VanteroConfigMap &expected)
{
    QString error;
    const bool isRight = mapOf(text, Configuration::Form::Configuration, &error) == expected;
    if (isRight && error.isEmpty())
        return {text, QString()};
    return refusal(Words::tr("the name would be read otherwise"));
}

} // namespace

Edit setValue(const QString &section, const QString &key, const QString &value, int index)
{
    return made([=](VanteroConfigText &text) { return text.setValue(section, key, value, index); });
}

Edit addValue(const QString &section, const QString &key, const QString &value)
{
    return made([=](VanteroConfigText &text) { return text.addValue(section, key, value); });
}

Edit removeValue(const QString &section, const QString &key, int index)
{
    return made([=](VanteroConfigText &text) { return text.removeValue(section, key, index); });
}

Edit removeKey(const QString &section, const QString &key)
{
    return made([=](VanteroConfigText &text) { return text.removeKey(section, key); });
}

Edit addSection(const QString &section)
{
    return made([=](VanteroConfigText &text) { return text.addSection(section); });
}

Edit removeSection(const QString &section)
{
    return made([=](VanteroConfigText &text) { return text.removeSection(section); });
}

Edit swapValues(const QString &section, const QString &key, int index, int otherIndex)
{
    return made([=](VanteroConfigText &text) {
        const QStringList values = text.values(section, key);
        const int last = values.size() - 1;
        if (std::min(index, otherIndex) < 0 || std::max(index, otherIndex) > last)
            return VanteroConfigText::Result{VanteroConfigText::Outcome::NotFound,
                                             Words::tr("there is no such value")};
        const VanteroConfigText::Result first =
            text.setValue(section, key, values.at(otherIndex), index);
        return first ? text.setValue(section, key, values.at(index), otherIndex) : first;
    });
}

Edit renameKey(const QString &section, const QString &key, const QString &newKey)
{
    return [=](const QString &text) -> EditResult {
        VanteroConfigText config(text);
        if (newKey == key)
            return {text, QString()};
        if (!config.values(section, newKey).isEmpty())
            return refusal(Words::tr("there is a key %1 already").arg(newKey));
        // The library knows which keys the format can hold.
        if (const auto allowed = VanteroConfigText(text).addValue(section, newKey, QString());
            !allowed)
            return refusal(allowed.reason);
        const VanteroConfigText::Outline outline = config.outline();
        const VanteroConfigText::Section *found = sectionOf(outline, section);
        QVector<TextRange> places;
        if (found)
            for (const VanteroConfigText::Block &block : found->blocks)
                for (const VanteroConfigText::Entry &entry : block.entries)
                    if (entry.key == key)
                        places += entry.keyRange;
        if (places.isEmpty())
            return refusal(Words::tr("there is no such key"));
        vn::VanteroConfigMap expected = mapOf(text, Configuration::Form::Configuration);
        const QStringList values = config.values(section, key);
        expected.remove(section, key);
        for (auto value = values.crbegin(); value != values.crend(); ++value)
            expected.addValue(section, newKey, *value);
        return triedOut(replaced(text, places, newKey), expected);
    };
}

Edit renameSection(const QString &section, const QString &newName)
{
    return [=](const QString &text) -> EditResult {
        if (newName == section)
            return {text, QString()};
        const VanteroConfigText::Outline outline = VanteroConfigText(text).outline();
        if (sectionOf(outline, newName) || newName == vn::VanteroConfigFile::HEAD_SECTION)
            return refusal(Words::tr("there is a section %1 already").arg(newName));
        const VanteroConfigText::Section *found = sectionOf(outline, section);
        if (!found)
            return refusal(Words::tr("there is no such section"));
        if (const auto allowed = VanteroConfigText(text).addSection(newName); !allowed)
            return refusal(allowed.reason);
        QVector<TextRange> places;
        for (const VanteroConfigText::Block &block : found->blocks)
            places << block.nameRange << endNameOf(block, text);
        vn::VanteroConfigMap expected = mapOf(text, Configuration::Form::Configuration);
        if (expected.containsSection(section)) {
            const vn::VanteroConfigMap::Section content = expected.section(section);
            expected.removeSection(section);
            expected.replaceSection(newName, content);
        }
        return triedOut(replaced(text, places, newName), expected);
    };
}

} // namespace browser::edits
