// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMLISTPARSER_H
#define VN_ALARM_ALARMLISTPARSER_H

#include "alarm/FatalErrors.h"
#include "base/Export.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>

class QByteArray;
class QIODevice;
class QTextStream;

namespace vn {

/** Where the token stands at which an alarm list parser is: byte offsets from 0 into the text.
 * @since 1.0.0 */
struct PLLocation
{
    qint32 start; /**< the first byte of the token */
    qint32 end;   /**< the byte behind its last one */
};

/**
 * Turns alarm lists, the JSON-like texts that a camera reports, into trees of QVariant.
 *
 * | In the text                                  | In the tree                                  |
 * |----------------------------------------------|----------------------------------------------|
 * | `{key: value, "key": value}`                 | QVariantMap; a repeated key keeps all values |
 * | `[value, value]`                             | QVariantList, *the last value first*         |
 * | `"text"`, ``'text'``, bare words like `on`   | QString, escapes left as they stand          |
 * | `1`, `-0.5`, `1e3`                           | double                                       |
 * | `true`, `false`                              | bool                                         |
 * | `null`                                       | an invalid QVariant                          |
 *
 * Block comments may stand between the tokens. The text is Latin-1.
 * @code
 * AlarmListParser parser;
 * QByteArray text("{cams: ['front', 'back'], armed: true}");
 * parser.parse(&text); // {"armed": true, "cams": ["back", "front"]}
 * @endcode
 *
 * Kept on purpose, because readers of alarm lists depend on it:
 * - Lists come out in reverse order. Of the values of a repeated key, the first in the text is the
 *   one that QVariantMap::value() gives.
 * - Escapes in strings are recognised but not decoded: "a\nb" are four characters.
 * - Numbers are narrower than in JSON: "-0" and "0e5" are none.
 * - A character that begins no token ends the text there; what follows is not looked at.
 * - A text that ends inside a string or a comment leaves the object inside of it: the next text
 *   begins there.
 *
 * The stack holds 200 entries: 99 values in a list, 98 members in an object, or lists 197 deep;
 * more is a ParseException "memory exhausted".
 *
 * Errors: every parse() throws ParseException and nothing else. Line numbers are 0; the columns are
 * the byte offsets from 0 of the beginning and the end of the token at which the parser stopped; at
 * the end of the text, of the last thing read. A "*" as the last byte of a text, inside a comment,
 * ends the process: "flex scanner jammed" on standard error, exit status 2. So does running out of
 * memory in the scanner. setFatalErrors() makes exceptions of these.
 *
 * Threads: reentrant, with one exception: the scanners of all objects collect quoted strings in one
 * place, so texts that hold quoted strings must not be parsed on two threads at the same time.
 * @since 1.0.0
 */
class VN_EXPORT AlarmListParser : public QObject
{
    Q_OBJECT

public:
    /** Makes a parser with a scanner of its own, to be used for any number of texts. */
    explicit AlarmListParser(QObject *parent = nullptr);
    ~AlarmListParser() override;

    /**
     * Parses the first @p length - 2 bytes at @p data; the two bytes behind them must be zero. The
     * bytes are scanned in place: they must be writable, nobody else may use them meanwhile, and
     * they are as before when the call returns.
     *
     * Kept on purpose: a buffer that does not end with two zero bytes is not looked at. The text is
     * then read from the standard input of the process, each further one from where the last one
     * stopped. What an object has read ahead there waits for it and is lost to all others.
     * @throws ParseException when the text is no alarm list, or 2 GiB long or longer
     */
    QVariant parse(const char *data, unsigned int length);

    /**
     * Appends two zero bytes to @p data, where they stay, and parses what was there before.
     * @throws ParseException when the text is no alarm list
     */
    QVariant parse(QByteArray *data);

    /**
     * Parses @p text as Latin-1; characters outside of it count as "?".
     * @throws ParseException when the text is no alarm list
     */
    QVariant parse(const QString &text);

    /**
     * Parses what remains in @p stream.
     * @throws ParseException when the text is no alarm list
     */
    QVariant parse(const QTextStream *stream);

    /**
     * Parses what remains in the open @p device, for which it waits 30 seconds at most.
     *
     * Kept on purpose: the content must itself end with two zero bytes, which are not part of the
     * text. If it does not, the text is read from the standard input of the process instead.
     * @throws ParseException when the text is no alarm list; at 0 to 0, with an IOException as
     * cause, when the device fails
     */
    QVariant parse(QIODevice *device);

    /**
     * The message of the syntax error that ended the last parse(); "Initialisation Error" when
     * there was none; empty before the first parse().
     */
    [[nodiscard]] QString errorMessage() const;

    /** Whether the scanner stands neither in a string nor in a comment: the next text begins
     * afresh. True before the first parse(). @since 1.0.0 */
    [[nodiscard]] bool isClean() const noexcept;

    /** Takes the scanner out of the string or comment that it stands in, so that the next text
     * begins afresh. @since 1.0.0 */
    void reset() noexcept;

    /** What happens where the scanner cannot go on; FatalErrors::EndProcess unless set. With
     * FatalErrors::Throw the object can be used on; see isClean(). @since 1.0.0 */
    [[nodiscard]] FatalErrors fatalErrors() const noexcept;
    /** Sets that for the texts to come. @since 1.0.0 */
    void setFatalErrors(FatalErrors policy) noexcept;

private:
    Q_DISABLE_COPY(AlarmListParser)

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace vn

#endif // VN_ALARM_ALARMLISTPARSER_H
