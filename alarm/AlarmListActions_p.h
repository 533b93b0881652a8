// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMLISTACTIONS_P_H
#define VN_ALARM_ALARMLISTACTIONS_P_H

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmListValue_p.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

/** Gives the next token of the parser's scanner to the grammar. */
int alarmlist_lex(QVariant *value, vn::AlarmListParser *parser);

inline int alarmlist_lex(vn::AlarmListValue *value, vn::AlarmListParser *parser)
{
    return alarmlist_lex(&**value, parser);
}

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
    static void storeResult(AlarmListParser *parser, AlarmListValue &value);
    static void storeError(AlarmListParser *parser, const char *message);

    static void setText(AlarmListParser *parser, QString &string, const char *text, int length);
    static void appendText(AlarmListParser *parser, QString &string, const char *text, int length);
    static void makeWord(AlarmListParser *parser, QVariant &result, const char *text, int length);
    static void makeNumber(QVariant &result, const char *text, int length);

    // The makers leave in result, which begins as the first value of the rule, the value of the
    // rule.
    static void makeEmptyObject(AlarmListValue &result);
    static void makeMember(AlarmListParser *parser, AlarmListValue &result, AlarmListValue &value);
    static void beginMembers(AlarmListParser *parser, AlarmListValue &result);
    static void addMember(AlarmListParser *parser, AlarmListValue &result, AlarmListValue &members);
    static void makeEmptyArray(AlarmListValue &result);
    static void beginElements(AlarmListValue &result);
    static void addElement(AlarmListValue &result, AlarmListValue &elements);
};

} // namespace vn

#endif // VN_ALARM_ALARMLISTACTIONS_P_H
