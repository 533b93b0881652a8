// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_ALARMLIST_H
#define BROWSER_ALARMLIST_H

#include "base/Finding.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace browser {

/** An alarm list as it was read: its tree, or where and why it is none. */
struct AlarmList
{
    QString path; // absolute
    QByteArray bytes;
    QVariant tree;
    QString error;         // empty where the list was understood
    vn::Findings findings; // with the error, and what reading loses or changes

    bool isValid() const { return error.isEmpty(); }
    /** "line 3, column 7", from 1, of the error. */
    QString errorPlace;
};

/**
 * Reads an alarm list from the content of a file.
 *
 * Lists with quoted strings must not be parsed on two threads at once: only the
 * loader calls this, and there is one loader at a time.
 */
AlarmList parseAlarmList(const QString &path, const QByteArray &bytes);

} // namespace browser

#endif // BROWSER_ALARMLIST_H
