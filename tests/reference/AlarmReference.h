// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_REFERENCE_ALARMREFERENCE_H
#define VN_TESTS_REFERENCE_ALARMREFERENCE_H

/**
 * @file Alarm lists and alarm updates read by hand: scanners of a few loops and parsers by
 * recursive descent, which share nothing with those of the library. Values are texts as shown() of
 * AlarmText.h shows them.
 */

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace reference {

/** How a parse ends: with a value, or with a message about a token. */
struct Outcome
{
    bool isAccepted = false;
    bool isFatal = false; // the process ends, the rest says nothing
    QString value;
    QString message;
    int start = 0; // of the token of the message, a byte offset
    int end = 0;
    int place = 0; // where the reader refused, a number for each place
};

/** What outlives a parse of an alarm list. */
struct ListScannerState
{
    enum Condition { Initial, DoubleQuoted, SingleQuoted, Comment };

    Condition condition = Initial; // one a parser object
};

/** Reads an alarm list. @p pieces is the string that all parsers share. */
Outcome parseAlarmList(const QByteArray &text, ListScannerState &state, QByteArray &pieces);

/** Reads an alarm update. */
Outcome parseAlarmUpdate(const QByteArray &text);

} // namespace reference

#endif // VN_TESTS_REFERENCE_ALARMREFERENCE_H
