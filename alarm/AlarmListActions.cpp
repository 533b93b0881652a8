// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmListActions_p.h"

#include "alarm/NumberText_p.h"
#include "alarm/SyntaxErrorText_p.h"
#include "alarmlist_yacc.h"

#include <QtCore/QMap>

#include <utility>

namespace vn {

namespace {

/** What @p value holds, to be changed where it is. */
template <typename Content>
Content &contentOf(QVariant &value)
{
    Q_ASSERT(value.userType() == qMetaTypeId<Content>());
    return *static_cast<Content *>(value.data());
}

} // namespace

void AlarmListActions::reset(AlarmListParser *parser)
{
    parser->m_location = {0, 0};
    parser->m_space = 0;
    parser->m_errorMessage = internal::initialisationError();
}

void AlarmListActions::storeResult(AlarmListParser *parser)
{
    parser->m_result = std::move(parser->m_values.back());
    parser->m_values.pop_back();
}

void AlarmListActions::storeError(AlarmListParser *parser, const char *message)
{
    parser->m_errorMessage = QString::fromLatin1(message);
}

void AlarmListActions::appendText(AlarmListParser *parser, QString &string, const char *text,
                                  int length)
{
    if (string.isEmpty())
        setText(parser, string, text, length);
    else
        string.append(QLatin1String(text, length));
}

void AlarmListActions::makeNumber(QVariant &result, const char *text, int length)
{
    result = internal::toDouble(text, length);
}

void AlarmListActions::makeObject(AlarmListParser *parser, int count)
{
    // The last member is added first: so the first value of a repeated key comes first.
    QMultiMap<QString, QVariant> members;
    const auto end = parser->m_values.end();
    const auto begin = end - 2 * count;
    for (auto member = end; member != begin; member -= 2)
        members.insert(contentOf<QString>(member[-2]), QVariant())->swap(member[-1]);
    parser->m_values.erase(begin, end);
    parser->m_values.emplace_back(static_cast<const QVariantMap &>(members));
}

void AlarmListActions::makeArray(AlarmListParser *parser, int count)
{
    QVariantList elements; // in reverse order, see the grammar
    elements.reserve(count);
    const auto end = parser->m_values.end();
    const auto begin = end - count;
    for (auto value = end; value != begin; --value) {
        elements.append(QVariant());
        elements.last().swap(value[-1]);
    }
    parser->m_values.erase(begin, end);
    parser->m_values.emplace_back(elements);
}

} // namespace vn

int alarmlist_lex(int *count, vn::AlarmListParser *parser)
{
    *count = 0;
    const int token = alarmlist_lex(vn::AlarmListActions::token(parser), parser);
    if (token >= TSTRING)
        vn::AlarmListActions::keepToken(parser);
    return token;
}

void alarmlist_error(vn::AlarmListParser *parser, const char *message)
{
    vn::AlarmListActions::storeError(parser, message);
}
