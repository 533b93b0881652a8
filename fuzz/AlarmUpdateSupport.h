// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_FUZZ_ALARMUPDATESUPPORT_H
#define VN_FUZZ_ALARMUPDATESUPPORT_H

/** @file Alarm updates parsed by the library, in the words of AlarmReference.h. */

#include "AlarmReference.h"
#include "Support.h"

#include "alarm/AlarmUpdateParser.h"
#include "base/Exceptions.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QMap>
#include <QtScript/QScriptEngine>
#include <QtScript/QScriptValueIterator>

#include <functional>

// The engine keeps pointers in memory of its own, where LeakSanitizer does not look for them.
extern "C" Q_DECL_EXPORT const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libQt5Script\n";
}

/** A script engine for all inputs, which is swept now and then. */
class Engine
{
public:
    Engine()
        : m_prototype(propertiesOf(prototype()))
    {
    }

    QScriptEngine *get() { return &m_engine; }

    /** To be called after each input: nothing of it may have got into the engine's own objects. */
    void check()
    {
        if (++m_count % 64 != 0)
            return;
        FUZZ_CHECK(propertiesOf(prototype()) == m_prototype);
        m_engine.collectGarbage();
    }

    /** The text of a date or time made by the engine itself. */
    QString dateText(const QByteArray &text, bool isTime)
    {
        QDateTime dateTime;
        if (isTime)
            dateTime.setTime(QTime::fromString(QString::fromLatin1(text), Qt::ISODate));
        else
            dateTime.setDate(QDate::fromString(QString::fromLatin1(text), Qt::ISODate));
        return QLatin1Char('d') + reference::ofNumber(m_engine.newDate(dateTime).toNumber());
    }

private:
    QScriptValue prototype()
    {
        return m_engine.globalObject()
            .property(QStringLiteral("Object"))
            .property(QStringLiteral("prototype"));
    }
    static QStringList propertiesOf(const QScriptValue &object)
    {
        QStringList names;
        QScriptValueIterator it(object);
        while (it.hasNext()) {
            it.next();
            names += it.name() + QLatin1Char('=') + it.value().toString();
        }
        return names;
    }

    int m_argc = 1;
    char m_name[5] = "fuzz";
    char *m_argv[2] = {m_name, nullptr};
    QCoreApplication m_application{m_argc, m_argv};
    QScriptEngine m_engine;
    QStringList m_prototype;
    int m_count = 0;
};

inline QString textOf(const QScriptValue &value)
{
    if (value.isBool())
        return reference::ofBool(value.toBool());
    if (value.isNumber())
        return reference::ofNumber(value.toNumber());
    if (value.isString())
        return reference::ofText(value.toString());
    if (value.isDate())
        return QLatin1Char('d') + reference::ofNumber(value.toNumber());
    if (value.isArray()) {
        QStringList values;
        const quint32 length = value.property(QStringLiteral("length")).toUInt32();
        for (quint32 i = 0; i < length; ++i)
            values += textOf(value.property(i));
        return reference::ofList(values);
    }
    if (!value.isObject())
        return QStringLiteral("a value of another type");
    QMap<QString, QString> properties;
    QScriptValueIterator it(value);
    while (it.hasNext()) {
        it.next();
        properties.insert(it.name(), textOf(it.value()));
    }
    QList<QPair<QString, QString>> entries;
    for (auto property = properties.begin(); property != properties.end(); ++property)
        entries.append({property.key(), property.value()});
    return reference::ofMap(entries);
}

/** Runs @p parse and compares how it ends with @p expected. */
inline void checkOutcome(const std::function<QScriptValue()> &parse,
                         const reference::Outcome &expected)
{
    try {
        const QString value = textOf(parse());
        FUZZ_EQUAL(expected.message, QString());
        // A script engine takes this key for the prototype of the object and keeps no property.
        if (!value.contains(QLatin1String("__proto__")) &&
            !expected.value.contains(QLatin1String("__proto__")))
            FUZZ_EQUAL(value, expected.value);
    } catch (const vn::ParseException &e) {
        FUZZ_CHECK(!expected.isAccepted);
        FUZZ_EQUAL(e.message(), expected.message);
        FUZZ_CHECK(e.startLine() == 0 && e.endLine() == 0);
        FUZZ_CHECK(e.startColumn() == expected.start);
        FUZZ_CHECK(e.endColumn() == expected.end);
    }
}

#endif // VN_FUZZ_ALARMUPDATESUPPORT_H
