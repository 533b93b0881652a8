// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_FUZZ_ALARMUPDATESUPPORT_H
#define VN_FUZZ_ALARMUPDATESUPPORT_H

/** @file Alarm updates parsed by the library, and checked against the reference. */

#include "AlarmSupport.h"

#include "alarm/AlarmUpdateParser.h"

#include <QtCore/QCoreApplication>
#include <QtScript/QScriptEngine>
#include <QtScript/QScriptValueIterator>

#include <ctime>

// The engine keeps pointers in memory of its own, where LeakSanitizer does not look for them.
extern "C" Q_DECL_EXPORT const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libQt5Script\n";
}

/** A script engine for all inputs, which is swept now and then; dates are those of a zone in which
 * every day has a midnight. */
class Engine
{
public:
    Engine()
        : m_prototype(propertiesOf(prototype()))
    {
        qputenv("TZ", "UTC");
        tzset();
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

#endif // VN_FUZZ_ALARMUPDATESUPPORT_H
