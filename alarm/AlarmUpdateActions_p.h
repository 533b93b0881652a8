// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATEACTIONS_P_H
#define VN_ALARM_ALARMUPDATEACTIONS_P_H

#include "alarm/AlarmUpdateParser.h"
#include "alarm/SharedStrings_p.h"

#include <QtCore/QString>
#include <QtScript/QScriptValue>

/** The next token of the parser's scanner. */
int alarmupdate_lex(QScriptValue *value, vn::AlarmUpdateParser *parser);

/** Gives the next token to the grammar, and its value to the values that wait. */
int alarmupdate_lex(int *count, vn::AlarmUpdateParser *parser);

/** Stores @p message as the parser's error message. */
void alarmupdate_error(vn::AlarmUpdateParser *parser, const char *message);

/** Puts back the byte that the scanner has replaced by the zero byte behind its last token. */
void alarmupdate_restore_text(void *scanner);

namespace vn {

/** What the grammar and the scanner of alarm updates do: making values and storing the result. */
class AlarmUpdateActions
{
public:
    AlarmUpdateActions() = delete; // a name for functions only

    static void *scanner(AlarmUpdateParser *parser) { return parser->m_scanner.get(); }
    static PULocation *location(AlarmUpdateParser *parser) { return &parser->m_location; }

    /** A new parse begins. */
    static void reset(AlarmUpdateParser *parser);
    /** Nothing waits any longer. */
    static void dropValues(AlarmUpdateParser *parser) { parser->m_values.clear(); }
    /** The last value that waits is the result. */
    static void storeResult(AlarmUpdateParser *parser);
    static void storeNoResult(AlarmUpdateParser *parser);
    static void storeError(AlarmUpdateParser *parser, const char *message);

    static QScriptValue makeInteger(const char *text);
    static QScriptValue makeNumber(const char *text, int length);
    static QScriptValue makeString(AlarmUpdateParser *parser, const char *text, int length)
    {
        return {parser->m_strings->string(text, length)};
    }

    // The value of a token waits until the rule that takes it.
    static QScriptValue *beginToken(AlarmUpdateParser *parser);
    static void dropToken(AlarmUpdateParser *parser) { parser->m_values.pop_back(); }

    /** Makes an object of the last @p count keys and values that wait, and lets it wait. */
    static void makeMembers(AlarmUpdateParser *parser, int count);
    /** Makes an array of the last @p count strings that wait, unless it is one, and lets it wait.
     */
    static void makeList(AlarmUpdateParser *parser, int count);
    static void makeErrorReport(AlarmUpdateParser *parser);
};

} // namespace vn

#endif // VN_ALARM_ALARMUPDATEACTIONS_P_H
