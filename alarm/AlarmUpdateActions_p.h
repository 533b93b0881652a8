// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATEACTIONS_P_H
#define VN_ALARM_ALARMUPDATEACTIONS_P_H

#include "alarm/AlarmUpdateParser.h"
#include "alarm/AlarmUpdateValue_p.h"

#include <QtCore/QString>
#include <QtScript/QScriptValue>

/** Gives the next token of the parser's scanner to the grammar. */
int alarmupdate_lex(QScriptValue *value, vn::AlarmUpdateParser *parser);

inline int alarmupdate_lex(vn::AlarmUpdateValue *value, vn::AlarmUpdateParser *parser)
{
    return alarmupdate_lex(&**value, parser);
}

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
    static void storeResult(AlarmUpdateParser *parser, AlarmUpdateValue &value);
    static void storeNoResult(AlarmUpdateParser *parser);
    static void storeError(AlarmUpdateParser *parser, const char *message);

    static QScriptValue makeInteger(const char *text);
    static QScriptValue makeNumber(const char *text, int length);
    static QScriptValue makeString(const char *text, int length);

    // The makers leave in result, which begins as the first value of the rule, the value of the
    // rule.
    static void makePair(AlarmUpdateParser *parser, AlarmUpdateValue &result,
                         AlarmUpdateValue &value);
    static void beginMembers(AlarmUpdateParser *parser, AlarmUpdateValue &result);
    static void addPair(AlarmUpdateParser *parser, AlarmUpdateValue &result,
                        AlarmUpdateValue &members);
    static void addString(AlarmUpdateParser *parser, AlarmUpdateValue &result,
                          AlarmUpdateValue &list);
    static void makeErrorReport(AlarmUpdateParser *parser, AlarmUpdateValue &result,
                                AlarmUpdateValue &message, AlarmUpdateValue &number);
};

} // namespace vn

#endif // VN_ALARM_ALARMUPDATEACTIONS_P_H
