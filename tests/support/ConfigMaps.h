// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_CONFIGMAPS_H
#define VN_TESTS_SUPPORT_CONFIGMAPS_H

/** @file Configuration maps as texts, and maps at random. */

#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigMap.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "support/Random.h"

/** As text, so that null values, order and duplicates all show: "a=2;a=1;b=(null);". */
inline QString shown(const vn::VanteroConfigMap::Section &section)
{
    QString text;
    for (auto it = section.cbegin(); it != section.cend(); ++it)
        text += it.key() + "="_q + (it.value().isNull() ? "(null)"_q : it.value()) + ";"_q;
    return text;
}

/** As text: "s{a=1;}t{}". */
inline QString shown(const vn::VanteroConfigMap &map)
{
    QString text;
    for (const QString &name : map.allSectionKeys())
        text += name + "{"_q + shown(map.section(name)) + "}"_q;
    return text;
}

/** The map of a text such as "s{a=1;a=2;b=(null);}t{}"; of one key the last value is the newest. */
inline vn::VanteroConfigMap mapOf(const QString &text)
{
    vn::VanteroConfigMap map;
    for (const QString &block : text.split("}"_q, Qt::SkipEmptyParts)) {
        const QString name = block.section("{"_q, 0, 0);
        (void)map.section(name); // created, even where there are no entries
        for (const QString &entry : block.section("{"_q, 1).split(";"_q, Qt::SkipEmptyParts)) {
            const QString value = entry.section("="_q, 1);
            map.addValue(name, entry.section("="_q, 0, 0), value == "(null)"_q ? QString() : value);
        }
    }
    return map;
}

/** A configuration object that holds @p map. */
inline vn::VanteroConfigFile fileOf(const vn::VanteroConfigMap &map)
{
    vn::VanteroConfigFile config;
    for (const QString &name : map.allSectionKeys())
        config.setSection(name, map.section(name));
    return config;
}

/** Up to three sections with few keys and values, so that maps are often alike: repeated keys, null
 * and empty values, empty sections. */
inline vn::VanteroConfigMap randomMap(Random &random)
{
    const QStringList sections = {"s"_q, "t"_q, "u"_q};
    const QStringList keys = {""_q, "a"_q, "b"_q, "c"_q};
    const QStringList values = {QString(), ""_q, "1"_q, "2"_q};
    vn::VanteroConfigMap map;
    for (unsigned count = random.below(3); count > 0; --count)
        (void)map.section(random.oneOf(sections));
    for (unsigned count = random.below(8); count > 0; --count)
        map.addValue(random.oneOf(sections), random.oneOf(keys), random.oneOf(values));
    return map;
}

#endif // VN_TESTS_SUPPORT_CONFIGMAPS_H
