// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_LOCALMIDNIGHT_P_H
#define VN_ALARM_LOCALMIDNIGHT_P_H

namespace vn::internal {

/**
 * When days begin in local time, as QDate::startOfDay() has it, in milliseconds since 1970 in UTC.
 *
 * Qt looks at the file of the time zone several times for each date. Where the zone has one offset
 * well before and well after the day begins, that one is used instead; else Qt is asked.
 * The zone is read by tzset(), without Qt's lock of the environment: a call of Qt that takes it
 * reads the zone several times.
 */
class LocalMidnights
{
public:
    /** From now on, the time zone may be another one. */
    void reset() { m_zone = Zone::Unknown; }

    /** Of @p day, year * 10000 + month * 100 + day; not a number where there is no such day. */
    double milliseconds(int day);

private:
    enum class Zone {
        Unknown,
        Simple,
        OfQt, // it counts leap seconds
    };

    Zone m_zone = Zone::Unknown;
    int m_lastDay = 0; // updates repeat their dates
    double m_lastMilliseconds = 0;
};

} // namespace vn::internal

#endif // VN_ALARM_LOCALMIDNIGHT_P_H
