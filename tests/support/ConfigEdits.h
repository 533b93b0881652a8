// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_CONFIGEDITS_H
#define VN_TESTS_SUPPORT_CONFIGEDITS_H

/** @file Edits of a configuration text, and the same edits of a map, which is what the text must
 * read as afterwards. */

#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigText.h"

#include <QtCore/QDateTime>

#include <iterator>

struct ConfigEdit
{
    enum Kind { SetValue, AddValue, RemoveValue, RemoveKey, RemoveSection, AddSection, KindCount };

    Kind kind;
    QString section;
    QString key;
    QString value;
    int index = 0;
    vn::VanteroConfigMap::Section content = {};
};

inline vn::VanteroConfigText::Result apply(const ConfigEdit &edit, vn::VanteroConfigText &text)
{
    switch (edit.kind) {
    case ConfigEdit::SetValue:
        return text.setValue(edit.section, edit.key, edit.value, edit.index);
    case ConfigEdit::AddValue:
        return text.addValue(edit.section, edit.key, edit.value);
    case ConfigEdit::RemoveValue:
        return text.removeValue(edit.section, edit.key, edit.index);
    case ConfigEdit::RemoveKey:
        return text.removeKey(edit.section, edit.key);
    case ConfigEdit::RemoveSection:
        return text.removeSection(edit.section);
    case ConfigEdit::AddSection:
    case ConfigEdit::KindCount:
        break;
    }
    return text.addSection(edit.section, edit.content);
}

/** Whether the map has what the edit is of. */
inline bool apply(const ConfigEdit &edit, vn::VanteroConfigMap &map)
{
    const int count = map.count(edit.section, edit.key);
    switch (edit.kind) {
    case ConfigEdit::SetValue:
        if (count <= edit.index && edit.index > 0)
            return false;
        if (edit.index > 0)
            *std::next(map.find(edit.section, edit.key), edit.index) = edit.value;
        else
            map.setValue(edit.section, edit.key, edit.value);
        return true;
    case ConfigEdit::AddValue:
        map.addValue(edit.section, edit.key, edit.value);
        return true;
    case ConfigEdit::RemoveValue:
        if (count == 0 || count <= edit.index)
            return false;
        map.section(edit.section)
            .erase(std::next(map.find(edit.section, edit.key), std::max(edit.index, 0)));
        return true;
    case ConfigEdit::RemoveKey:
        return count > 0 && map.remove(edit.section, edit.key) > 0;
    case ConfigEdit::RemoveSection:
        return map.removeSection(edit.section) > 0;
    case ConfigEdit::AddSection:
    case ConfigEdit::KindCount:
        break;
    }
    map.replaceSection(edit.section, edit.content);
    return true;
}

/** What the text is read as. @throws vn::ParseException */
inline vn::VanteroConfigMap mapReadFrom(const QString &text)
{
    vn::VanteroConfigFile config;
    config.parse(text, QDateTime());
    return config.map();
}

/** Both maps printed, sections without entries left out; a null value, which prints as an empty
 * one, is told apart but for the header, which has none. */
inline QString exactly(const vn::VanteroConfigMap &map)
{
    QString result;
    const QStringList names = map.allSectionKeys();
    for (const QString &name : names) {
        const vn::VanteroConfigMap::Section &section = map.section(name);
        for (auto it = section.begin(); it != section.end(); ++it) {
            const bool isNull = it.value().isNull() && name != vn::VanteroConfigFile::HEAD_SECTION;
            result += name + QLatin1Char('/') + it.key() +
                      QLatin1String(isNull ? " is null" : "=") + it.value() + QLatin1Char('\n');
        }
    }
    return result;
}

/** The original text with the splices. */
inline QString spliced(const QString &original,
                       const QVector<vn::VanteroConfigText::Splice> &splices)
{
    QString result = original;
    for (auto it = splices.rbegin(); it != splices.rend(); ++it)
        result = result.left(int(it->range.offset)) + it->text +
                 result.mid(int(it->range.offset + it->range.length));
    return result;
}

#endif // VN_TESTS_SUPPORT_CONFIGEDITS_H
