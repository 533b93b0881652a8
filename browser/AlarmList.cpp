// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "AlarmList.h"

#include "alarm/AlarmListParser.h"
#include "base/Exceptions.h"

#include <QtCore/QCoreApplication>

#include <algorithm>

namespace browser {

QString AlarmList::errorPlace() const
{
    const int start = std::clamp(errorStart, 0, bytes.size());
    const QByteArray before = bytes.left(start);
    return QCoreApplication::translate("browser::AlarmList", "line %1, column %2")
        .arg(before.count('\n') + 1)
        .arg(start - (before.lastIndexOf('\n') + 1) + 1);
}

AlarmList parseAlarmList(const QString &path, const QByteArray &bytes)
{
    AlarmList result;
    result.path = path;
    result.bytes = bytes;
    try {
        // A "*" as the last byte of a comment would end the process; a blank behind it changes
        // nothing else.
        QByteArray buffer = bytes.endsWith('*') ? bytes + ' ' : bytes;
        // A parser for each text: one that stopped inside a string would begin the next one there.
        result.tree = vn::AlarmListParser().parse(&buffer);
    } catch (const vn::ParseException &e) {
        result.error = e.message();
        result.errorStart = e.startColumn();
        result.errorEnd = e.endColumn();
    }
    return result;
}

} // namespace browser
