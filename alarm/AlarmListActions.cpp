// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmListActions_p.h"

#include "alarm/NumberText_p.h"
#include "alarm/SharedStrings_p.h"
#include "alarm/SyntaxErrorText_p.h"

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
    parser->m_keys.clear();
    parser->m_location = {0, 0};
    parser->m_errorMessage = internal::initialisationError();
}

void AlarmListActions::storeResult(AlarmListParser *parser, AlarmListValue &value)
{
    parser->m_result.swap(*value);
}

void AlarmListActions::storeError(AlarmListParser *parser, const char *message)
{
    parser->m_errorMessage = QString::fromLatin1(message);
}

void AlarmListActions::setText(AlarmListParser *parser, QString &string, const char *text,
                               int length)
{
    string = parser->m_strings->string(text, length);
}

void AlarmListActions::appendText(AlarmListParser *parser, QString &string, const char *text,
                                  int length)
{
    if (string.isEmpty())
        setText(parser, string, text, length);
    else
        string.append(QLatin1String(text, length));
}

void AlarmListActions::makeWord(AlarmListParser *parser, QVariant &result, const char *text,
                                int length)
{
    result = parser->m_strings->string(text, length);
}

void AlarmListActions::makeNumber(QVariant &result, const char *text, int length)
{
    result = internal::toDouble(text, length);
}

void AlarmListActions::makeEmptyObject(AlarmListValue &result)
{
    *result = QVariantMap();
}

void AlarmListActions::makeMember(AlarmListParser *parser, AlarmListValue &result,
                                  AlarmListValue &value)
{
    parser->m_keys.push_back(std::move(contentOf<QString>(*result)));
    result = value;
}

void AlarmListActions::beginMembers(AlarmListParser *parser, AlarmListValue &result)
{
    AlarmListValue members;
    *members = QVariantMap();
    addMember(parser, result, members);
}

void AlarmListActions::addMember(AlarmListParser *parser, AlarmListValue &result,
                                 AlarmListValue &members)
{
    // QMultiMap inserts without replacing. It is a QMap, so the content can visit it.
    QMultiMap<QString, QVariant> multiMap;
    QVariantMap &visited = multiMap;
    auto &map = contentOf<QVariantMap>(*members);
    visited.swap(map);
    multiMap.insert(parser->m_keys.back(), QVariant())->swap(*result);
    visited.swap(map);
    parser->m_keys.pop_back();
    result = members;
}

void AlarmListActions::makeEmptyArray(AlarmListValue &result)
{
    *result = QVariantList();
}

void AlarmListActions::beginElements(AlarmListValue &result)
{
    AlarmListValue elements;
    *elements = QVariantList();
    addElement(result, elements);
}

void AlarmListActions::addElement(AlarmListValue &result, AlarmListValue &elements)
{
    auto &list = contentOf<QVariantList>(*elements);
    list.append(QVariant());
    list.last().swap(*result);
    result = elements;
}

} // namespace vn

void alarmlist_error(vn::AlarmListParser *parser, const char *message)
{
    vn::AlarmListActions::storeError(parser, message);
}
