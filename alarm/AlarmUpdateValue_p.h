// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATEVALUE_P_H
#define VN_ALARM_ALARMUPDATEVALUE_P_H

#include <QtScript/QScriptValue>

#include <new>

namespace vn {

/**
 * A QScriptValue on the stack of the alarm update parser.
 *
 * Most of the 200 entries are never used: they hold nothing and cost nothing. An assignment, by
 * which Bison's parsers push, pop and reduce, hands the value over and leaves nothing behind. In an
 * action, $1 therefore is already in $$.
 */
class AlarmUpdateValue
{
public:
    AlarmUpdateValue() {} // NOLINT(modernize-use-equals-default): the union has no default
    AlarmUpdateValue(const AlarmUpdateValue &) = delete; // values are handed over, see above
    ~AlarmUpdateValue() { clear(); }

    // Bison assigns from what it will not use again, and never to itself.
    // NOLINTNEXTLINE(misc-unconventional-assign-operator,cert-oop54-cpp)
    AlarmUpdateValue &operator=(AlarmUpdateValue &other)
    {
        if (other.m_isSet)
            **this = *other;
        else
            clear();
        other.clear(); // NOLINT(cert-oop58-cpp)
        return *this;
    }

    /** The value; an invalid one where there was none. */
    QScriptValue &operator*()
    {
        if (!m_isSet) {
            new (&m_value) QScriptValue;
            m_isSet = true;
        }
        return m_value;
    }

private:
    void clear()
    {
        if (m_isSet)
            m_value.~QScriptValue();
        m_isSet = false;
    }

    union { // its member lives while m_isSet
        QScriptValue m_value;
    };
    bool m_isSet = false;
};

} // namespace vn

#endif // VN_ALARM_ALARMUPDATEVALUE_P_H
