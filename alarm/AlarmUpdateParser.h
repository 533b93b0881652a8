// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATEPARSER_H
#define VN_ALARM_ALARMUPDATEPARSER_H

#include "alarm/FatalErrors.h"
#include "base/Export.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtScript/QScriptValue>

#include <memory>

class QByteArray;
class QIODevice;
class QScriptEngine;
class QTextStream;

namespace vn {

/** Where the token stands at which an alarm update parser is: byte offsets from 0 into the text.
 * @since 1.0.0 */
struct PULocation
{
    qint32 start; /**< the first byte of the token */
    qint32 end;   /**< the byte behind its last one */
};

/**
 * Turns alarm updates, the compact texts that a camera reports, into objects of a script engine.
 *
 * A text is a row of `key=value` pairs with ";" between them, or an error report `#message:1.0`.
 *
 * | In the text                      | In the object                                        |
 * |----------------------------------|------------------------------------------------------|
 * | `state=1`, `level=-0.5`          | a number                                             |
 * | `armed=true`                     | a boolean                                            |
 * | `since=2010-05-01`               | a date, the beginning of the day in local time       |
 * | `at=12:30:00`                    | an invalid date, because it has no day               |
 * | `zone=West gate`, `zone="a;b"`   | a string, quotes included                            |
 * | `cams=front,back`                | an array of the strings, *the last one first*        |
 * | `#Camera offline:2.0`            | the only property, named "Camera offline", value 2.0 |
 *
 * The text is Latin-1.
 * @code
 * QScriptEngine engine;
 * AlarmUpdateParser parser(&engine);
 * QByteArray text("state=1;cams=front,back");
 * parser.parse(&text).property("state").toInt32(); // 1
 * @endcode
 *
 * Kept on purpose, because readers of alarm updates depend on it:
 * - Spaces and tabs belong to words: "a =5 " has the key "a " and the string "5 ".
 * - Arrays come out in reverse order. Of several values of a key the first in the text counts.
 * - A ";" at the end is a syntax error, and so is an empty text.
 * - An error report ends with its number; what follows is not looked at.
 * - A character that begins no token ends the text there: "x=1!" is "x=1".
 *
 * The stack holds 200 entries: 98 pairs, or 98 strings in the value of the only pair; more is a
 * ParseException "memory exhausted".
 *
 * Errors: every parse() throws ParseException and nothing else. Line numbers are 0; the columns are
 * the byte offsets from 0 of the beginning and the end of the token at which the parser stopped; at
 * the end of the text, of the last thing read. Running out of memory in the scanner ends the
 * process with a message on standard error and exit status 2.
 *
 * Threads: reentrant; a parser and its engine are used by one thread at a time.
 * Setters of scripts that run while an object is made may parse another text with the same parser.
 * Dates are read by the time zone that the environment names: as with the C library's local times,
 * no other thread may change the environment meanwhile, not by qputenv() either.
 * @since 1.0.0
 */
class VN_EXPORT AlarmUpdateParser : public QObject
{
    Q_OBJECT

public:
    /** Makes a parser whose values belong to @p engine. The engine is not owned; it must outlive
     * the parser and every value that it has returned. */
    explicit AlarmUpdateParser(QScriptEngine *engine, QObject *parent = nullptr);
    ~AlarmUpdateParser() override;

    // ---- Parsing -------------------------------------------------------------------------------

    /**
     * Parses the first @p length - 2 bytes at @p data; the two bytes behind them must be zero. The
     * bytes are scanned in place: they must be writable, nobody else may use them meanwhile, and
     * they are as before when the call returns.
     *
     * Kept on purpose: a buffer that does not end with two zero bytes is not looked at. The text is
     * then read from the standard input of the process, each further one from where the last one
     * stopped. What an object has read ahead there waits for it and is lost to all others.
     * @throws ParseException when the text is no alarm update, or 2 GiB long or longer
     */
    QScriptValue parse(const char *data, unsigned int length);

    /**
     * Appends two zero bytes to @p data, where they stay, and parses what was there before.
     * @throws ParseException when the text is no alarm update
     */
    QScriptValue parse(QByteArray *data);

    /**
     * Parses @p text as Latin-1; characters outside of it count as "?".
     * @throws ParseException when the text is no alarm update
     */
    QScriptValue parse(const QString &text);

    /**
     * Parses what remains in @p stream.
     * @throws ParseException when the text is no alarm update
     */
    QScriptValue parse(const QTextStream *stream);

    /**
     * Parses what remains in the open @p device, for which it waits 30 seconds at most.
     *
     * Kept on purpose: the content must itself end with two zero bytes, which are not part of the
     * text. If it does not, the text is read from the standard input of the process instead.
     * @throws ParseException when the text is no alarm update; at 0 to 0, with an IOException as
     * cause, when the device fails
     */
    QScriptValue parse(QIODevice *device);

    /**
     * The message of the syntax error that ended the last parse(); "Initialisation Error" when
     * there was none; empty before the first parse().
     */
    [[nodiscard]] QString errorMessage() const;

    /** What happens where the scanner cannot go on; FatalErrors::EndProcess unless set.
     * @since 1.0.0 */
    [[nodiscard]] FatalErrors fatalErrors() const noexcept;
    /** Sets that for the texts to come. @since 1.0.0 */
    void setFatalErrors(FatalErrors policy) noexcept;

    // ---- Building values -----------------------------------------------------------------------

    /** A new object whose only property is named @p key (as a string) and holds @p value. */
    QScriptValue keyValue(const QScriptValue &key, const QScriptValue &value);

    /**
     * Sets every property of @p source on @p target, where it replaces one of that name, and
     * returns
     * @p target. Kept on purpose: the pairs of a text are added from the right to the left, so the
     * leftmost one of a name stays.
     */
    QScriptValue addProperties(QScriptValue &target, const QScriptValue &source);

    /**
     * Appends @p value to the array @p list and returns it. If @p list is no array, the result is a
     * new array of @p list and @p value. Kept on purpose: the strings of a text are added from the
     * right to the left, so arrays come out in reverse order.
     */
    QScriptValue appendValue(QScriptValue &list, const QScriptValue &value);

    /** The beginning of the ISO date @p text ("2010-05-01") in local time as a date of the engine
     * of
     * @p scanner's parser: midnight, or the first moment of a day that a change of the clocks robs
     * of its midnight. An invalid date when the calendar or the time zone has no such day. */
    static QScriptValue dateValue(void *scanner, const char *text);

    /** What the engine of @p scanner's parser makes of the ISO time @p text ("12:30:00") without a
     * day: an invalid date. */
    static QScriptValue timeValue(void *scanner, const char *text);

private:
    Q_DISABLE_COPY(AlarmUpdateParser)

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace vn

#endif // VN_ALARM_ALARMUPDATEPARSER_H
