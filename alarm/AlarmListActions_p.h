// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMLISTACTIONS_P_H
#define VN_ALARM_ALARMLISTACTIONS_P_H

#include "alarm/AlarmListParser.h"
#include "alarm/SharedStrings_p.h"
#include "alarm/TokenLocation_p.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <utility>

/** The next token of the parser's scanner. */
int alarmlist_lex(QVariant *value, vn::AlarmListParser *parser);

/** Gives the next token to the grammar, and its value to the values that wait. */
int alarmlist_lex(int *count, vn::AlarmListParser *parser);

/** Stores @p message as the parser's error message. */
void alarmlist_error(vn::AlarmListParser *parser, const char *message);

/** Puts back the byte that the scanner has replaced by the zero byte behind its last token. */
void alarmlist_restore_text(void *scanner);

namespace vn {

/** What the grammar and the scanner of alarm lists do: making values and storing the result. */
class AlarmListActions
{
public:
    AlarmListActions() = delete; // a name for functions only

    static void *scanner(AlarmListParser *parser) { return parser->m_scanner.get(); }
    static PLLocation *location(AlarmListParser *parser) { return &parser->m_location; }

    /** A new parse begins. */
    static void reset(AlarmListParser *parser);
    /** Nothing waits any longer. */
    static void dropValues(AlarmListParser *parser) { parser->m_values.clear(); }
    /** The last value that waits is the result. */
    static void storeResult(AlarmListParser *parser);
    static void storeError(AlarmListParser *parser, const char *message);

    /** The value of a token waits until the rule that takes it. */
    static QVariant *token(AlarmListParser *parser) { return &parser->m_token; }
    static void keepToken(AlarmListParser *parser)
    {
        parser->m_values.push_back(std::move(parser->m_token));
    }

    /** Behind the token there are @p length characters of white space. */
    static void keepSpace(AlarmListParser *parser, int length) { parser->m_space = length; }
    static void passSpace(AlarmListParser *parser, PLLocation &location)
    {
        if (const int length = std::exchange(parser->m_space, 0))
            internal::startToken(location, length);
    }

    static void setText(AlarmListParser *parser, QString &string, const char *text, int length)
    {
        string = parser->m_strings->string(text, length);
    }
    static void appendText(AlarmListParser *parser, QString &string, const char *text, int length);
    static void makeWord(AlarmListParser *parser, QVariant &result, const char *text, int length)
    {
        result = parser->m_strings->string(text, length);
    }
    static void makeNumber(QVariant &result, const char *text, int length);

    /** Makes an object of the last @p count keys and values that wait, and lets it wait. */
    static void makeObject(AlarmListParser *parser, int count);
    /** Makes an array of the last @p count values that wait, and lets it wait. */
    static void makeArray(AlarmListParser *parser, int count);
};

} // namespace vn

#endif // VN_ALARM_ALARMLISTACTIONS_P_H
