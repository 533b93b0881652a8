// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMLISTTREE_P_H
#define VN_ALARM_ALARMLISTTREE_P_H

#include "alarm/KnownObjects_p.h"
#include "base/SharedStrings_p.h"

#include <QtCore/QVariant>

namespace vn::internal {

class AlarmTape;

/** Makes the published trees of alarm lists. What repeats in and between them is remembered. */
class AlarmListTree
{
public:
    /** The value at @p index of @p tape: of all arrays the last element first, of the values of a
     * repeated key the first one first. */
    QVariant value(const AlarmTape &tape, int index);

private:
    void fill(QVariant &value, const AlarmTape &tape, int index);
    QVariantList array(const AlarmTape &tape, int index);
    QVariantMap object(const AlarmTape &tape, int index);
    const QString &text(const AlarmTape &tape, int index);

    static constexpr int kLongestShared = 32; // longer texts seldom repeat

    SharedStrings<8> m_strings;
    QString m_own; // of a text that is not shared
    KnownObjects m_objects;
};

} // namespace vn::internal

#endif // VN_ALARM_ALARMLISTTREE_P_H
