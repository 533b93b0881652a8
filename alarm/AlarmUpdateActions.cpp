// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateActions_p.h"

#include "alarm/NumberText_p.h"
#include "alarm/SyntaxErrorText_p.h"

namespace vn {

void AlarmUpdateActions::reset(AlarmUpdateParser *parser)
{
    parser->m_keys.clear();
    parser->m_result = QScriptValue(0U);
    parser->m_location = {0, 0};
    parser->m_errorMessage = internal::initialisationError();
}

void AlarmUpdateActions::storeResult(AlarmUpdateParser *parser, AlarmUpdateValue &value)
{
    parser->m_result = *value;
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

QScriptValue AlarmUpdateActions::makeString(const char *text, int length)
{
    return {QString::fromLatin1(text, length)};
}

void AlarmUpdateActions::makePair(AlarmUpdateParser *parser, AlarmUpdateValue &result,
                                  AlarmUpdateValue &value)
{
    parser->m_keys.push_back((*result).toString());
    result = value;
}

void AlarmUpdateActions::beginMembers(AlarmUpdateParser *parser, AlarmUpdateValue &result)
{
    *result = parser->keyValue(parser->m_keys.back(), *result);
    parser->m_keys.pop_back();
}

void AlarmUpdateActions::addPair(AlarmUpdateParser *parser, AlarmUpdateValue &result,
                                 AlarmUpdateValue &members)
{
    // The same as addProperties(members, keyValue(key, value)) without an object for each pair.
    // That of a pair "__proto__" would have no property of its own to be added.
    if (parser->m_keys.back() != QLatin1String("__proto__"))
        (*members).setProperty(parser->m_keys.back(), *result);
    parser->m_keys.pop_back();
    result = members;
}

void AlarmUpdateActions::addString(AlarmUpdateParser *parser, AlarmUpdateValue &result,
                                   AlarmUpdateValue &list)
{
    *result = parser->appendValue(*list, *result);
}

void AlarmUpdateActions::makeErrorReport(AlarmUpdateParser *parser, AlarmUpdateValue &result,
                                         AlarmUpdateValue &message, AlarmUpdateValue &number)
{
    *result = parser->keyValue(*message, *number);
}

} // namespace vn

void alarmupdate_error(vn::AlarmUpdateParser *parser, const char *message)
{
    vn::AlarmUpdateActions::storeError(parser, message);
}
