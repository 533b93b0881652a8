// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateActions_p.h"

#include "alarm/NumberText_p.h"
#include "alarm/SyntaxErrorText_p.h"
#include "alarmupdate_yacc.h"

namespace vn {

void AlarmUpdateActions::reset(AlarmUpdateParser *parser)
{
    parser->m_date = {};
    parser->m_time = {};
    parser->m_result = QScriptValue(0U);
    parser->m_location = {0, 0};
    parser->m_errorMessage = internal::initialisationError();
}

void AlarmUpdateActions::storeResult(AlarmUpdateParser *parser)
{
    parser->m_result = parser->m_values.back();
}

void AlarmUpdateActions::storeNoResult(AlarmUpdateParser *parser)
{
    parser->m_result = QScriptValue();
}

void AlarmUpdateActions::storeError(AlarmUpdateParser *parser, const char *message)
{
    parser->m_errorMessage = QString::fromLatin1(message);
}

QScriptValue AlarmUpdateActions::makeInteger(const char *text)
{
    return {internal::toInt32(text)};
}

QScriptValue AlarmUpdateActions::makeNumber(const char *text, int length)
{
    return {internal::toDouble(text, length)};
}

QScriptValue *AlarmUpdateActions::beginToken(AlarmUpdateParser *parser)
{
    return &parser->m_values.emplace_back();
}

void AlarmUpdateActions::makeMembers(AlarmUpdateParser *parser, int count)
{
    auto &values = parser->m_values;
    const auto end = values.end();
    const auto begin = end - 2 * count;
    QScriptValue object = parser->keyValue(end[-2], end[-1]);
    // The same as addProperties(object, keyValue(key, value)) without an object for each pair. That
    // of a pair "__proto__" would have no property of its own to be added.
    for (auto pair = end - 2; pair != begin;) {
        pair -= 2;
        const QString key = pair[0].toString();
        if (key != QLatin1String("__proto__"))
            object.setProperty(key, pair[1]);
    }
    values.erase(begin + 1, end);
    values.back() = object;
}

void AlarmUpdateActions::makeList(AlarmUpdateParser *parser, int count)
{
    if (count == 1)
        return;
    auto &values = parser->m_values;
    const auto end = values.end();
    const auto begin = end - count;
    QScriptValue list = parser->appendValue(end[-1], end[-2]);
    for (int i = 2; i < count; ++i) // without asking the list for its length
        list.setProperty(static_cast<quint32>(i), end[-1 - i]);
    values.erase(begin + 1, end);
    values.back() = list;
}

void AlarmUpdateActions::makeErrorReport(AlarmUpdateParser *parser)
{
    auto &values = parser->m_values;
    const QScriptValue report = parser->keyValue(values.end()[-2], values.end()[-1]);
    values.pop_back();
    values.back() = report;
}

} // namespace vn

int alarmupdate_lex(int *count, vn::AlarmUpdateParser *parser)
{
    *count = 0;
    const int token = alarmupdate_lex(vn::AlarmUpdateActions::beginToken(parser), parser);
    if (token < TSTRING)
        vn::AlarmUpdateActions::dropToken(parser);
    return token;
}

void alarmupdate_error(vn::AlarmUpdateParser *parser, const char *message)
{
    vn::AlarmUpdateActions::storeError(parser, message);
}
