// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_TIMEZONE_H
#define VN_TESTS_ALARM_TIMEZONE_H

#include <QtCore/QByteArray>

#include <ctime>

/** Gives this process another time zone for the life of this value; none for null. */
class TimeZone
{
public:
    explicit TimeZone(const char *name) { set(name); }
    ~TimeZone() { set(m_before.isNull() ? nullptr : m_before.constData()); }
    TimeZone(const TimeZone &) = delete; // there is one time zone
    TimeZone &operator=(const TimeZone &) = delete;

private:
    static void set(const char *name)
    {
        name ? qputenv("TZ", name) : qunsetenv("TZ");
        tzset();
    }

    const QByteArray m_before = qgetenv("TZ");
};

#endif // VN_TESTS_ALARM_TIMEZONE_H
