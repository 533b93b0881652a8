// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_REFERENCE_ALARMTEXT_H
#define VN_TESTS_REFERENCE_ALARMTEXT_H

/** @file Results as texts that tell every difference: types, order, duplicates; and the numbers
 * that they should have. */

#include "support/Literals.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QVariant>
#include <QtScript/QScriptValue>
#include <QtScript/QScriptValueIterator>

#include <charconv>
#include <cstdlib>

#include <locale.h>

/** What strtod() of the C library makes of @p text in the C locale. */
inline double numberInC(const QByteArray &text)
{
    static const locale_t cLocale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return ::strtod_l(text.constData(), nullptr, cLocale);
}

/** A number with all its digits: two texts are equal when the numbers are. */
inline QString shown(double number)
{
    char text[40];
    const auto end =
        std::to_chars(text, text + sizeof text, number, std::chars_format::general, 17);
    return QString::fromLatin1(text, static_cast<int>(end.ptr - text));
}

/** A string of an update, in which no quotes are but those that may be around it. */
inline QString quoted(const QString &text)
{
    return "\""_q + text + "\""_q;
}

/** A string of a list; quotes in it are doubled. */
inline QString quotedInList(QString text)
{
    return quoted(text.replace("\""_q, "\"\""_q));
}

/** A tree of an alarm list: `{"key": 1, "key": "text"}`, duplicates in the map's own order. */
inline QString shown(const QVariant &value)
{
    QStringList parts;
    switch (static_cast<int>(value.type())) {
    case QVariant::Invalid:
        return "null"_q;
    case QVariant::Bool:
        return value.toBool() ? "true"_q : "false"_q;
    case QVariant::Double:
        return shown(value.toDouble());
    case QVariant::String:
        return quotedInList(value.toString());
    case QVariant::List: {
        const QVariantList list = value.toList();
        for (const QVariant &element : list)
            parts << shown(element);
        return "["_q + parts.join(", "_q) + "]"_q;
    }
    case QVariant::Map: {
        const QVariantMap map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it)
            parts << quotedInList(it.key()) + ": "_q + shown(it.value());
        return "{"_q + parts.join(", "_q) + "}"_q;
    }
    default:
        return "another type: "_q + QString::fromLatin1(value.typeName());
    }
}

/** A script value: `{x: 1, y: ["b", "a"]}`, properties in the object's own order. */
inline QString shown(const QScriptValue &value)
{
    QStringList parts;
    if (!value.isValid())
        return "invalid"_q;
    if (value.isDate())
        return value.toDateTime().isValid() ? value.toDateTime().toString(Qt::ISODateWithMs)
                                            : "invalid date"_q;
    if (value.isArray()) {
        const quint32 length = value.property("length"_q).toUInt32();
        for (quint32 i = 0; i < length; ++i)
            parts << shown(value.property(i));
        return "["_q + parts.join(", "_q) + "]"_q;
    }
    if (value.isObject()) {
        QScriptValueIterator property(value);
        while (property.hasNext()) {
            property.next();
            parts << property.name() + ": "_q + shown(property.value());
        }
        return "{"_q + parts.join(", "_q) + "}"_q;
    }
    if (value.isString())
        return quoted(value.toString());
    if (value.isNumber())
        return shown(static_cast<double>(value.toNumber()));
    if (value.isBool())
        return value.toBool() ? "true"_q : "false"_q;
    return "another type: "_q + value.toString();
}

#endif // VN_TESTS_REFERENCE_ALARMTEXT_H
