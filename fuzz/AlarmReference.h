// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_FUZZ_ALARMREFERENCE_H
#define VN_FUZZ_ALARMREFERENCE_H

/**
 * @file Alarm lists and alarm updates read by hand: scanners of a few loops and parsers by
 * recursive descent, which share nothing with those of the library. Values become texts that
 * compare.
 */

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

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
};

/** The texts that stand for values. */
QString ofNumber(double number);
QString ofText(const QString &text);
QString ofBool(bool value);
QString ofNull();
QString ofList(const QStringList &values);
QString ofMap(const QList<QPair<QString, QString>> &entries);

/** What outlives a parse of an alarm list. */
struct ListScannerState
{
    enum Condition { Initial, DoubleQuoted, SingleQuoted, Comment };

    Condition condition = Initial; // one a parser object
};

/** Reads an alarm list. @p pieces is the string that all parsers share. */
Outcome parseAlarmList(const QByteArray &text, ListScannerState &state, QByteArray &pieces);

/** Reads an alarm update; @p dateText gives the text for a date or a time. */
Outcome parseAlarmUpdate(const QByteArray &text,
                         const std::function<QString(const QByteArray &, bool isTime)> &dateText);

} // namespace reference

#endif // VN_FUZZ_ALARMREFERENCE_H
