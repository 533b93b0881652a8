// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMLISTVALUE_P_H
#define VN_ALARM_ALARMLISTVALUE_P_H

#include <QtCore/QVariant>

namespace vn {

/**
 * A QVariant on the stack of the alarm list parser.
 *
 * Bison's parsers assign values to push, pop and reduce, and leave the old ones where they were. A
 * second reference to a list would make the next change of it a copy of it. Here an assignment
 * hands the value over, so that each has one holder and grows in place. In an action, $1 therefore
 * is already in $$.
 */
class AlarmListValue
{
public:
    AlarmListValue() {} // NOLINT(modernize-use-equals-default): the union has no default
    AlarmListValue(const AlarmListValue &) = delete; // values are handed over, see above

    /** Costs next to nothing for an invalid value, as most entries of a stack are. */
    ~AlarmListValue()
    {
        if (m_variant.isValid())
            m_variant.~QVariant();
    }

    // Bison assigns from what it will not use again, and never to itself.
    // NOLINTNEXTLINE(misc-unconventional-assign-operator,cert-oop54-cpp)
    AlarmListValue &operator=(AlarmListValue &other)
    {
        m_variant.swap(other.m_variant);
        return *this;
    }

    QVariant &operator*() { return m_variant; }

private:
    union { // its member is destroyed above, not here
        QVariant m_variant = QVariant();
    };
};

} // namespace vn

#endif // VN_ALARM_ALARMLISTVALUE_P_H
