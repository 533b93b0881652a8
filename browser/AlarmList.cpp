// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "AlarmList.h"

#include "alarm/AlarmLint.h"
#include "alarm/AlarmListParser.h"
#include "base/Exceptions.h"

#include <QtCore/QCoreApplication>

namespace browser {

AlarmList parseAlarmList(const QString &path, const QByteArray &bytes)
{
    AlarmList result;
    result.path = path;
    result.bytes = bytes;
    try {
        // A "*" as the last byte of a comment would end the process; a blank behind
        // it changes nothing else.
        QByteArray buffer = bytes.endsWith('*') ? bytes + ' ' : bytes;
        // A parser for each text: one that stopped inside a string would begin the
        // next one there.
        result.tree = vn::AlarmListParser().parse(&buffer);
    } catch (const vn::ParseException &e) {
        const vn::TextRange place = vn::alarmTextRange(bytes, e.startColumn(), e.endColumn());
        result.error = e.message();
        result.errorPlace = QCoreApplication::translate("browser::AlarmList", "line %1, column %2")
                                .arg(place.line)
                                .arg(place.column);
    }
    result.findings = vn::alarmListFindings(bytes);
    return result;
}

} // namespace browser
