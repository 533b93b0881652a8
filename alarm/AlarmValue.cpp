// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmValue.h"

#include "alarm/AlarmDocumentData_p.h"
#include "alarm/AlarmListTree_p.h"
#include "alarm/AlarmUpdateObject_p.h"

#include <QtScript/QScriptValue>

namespace vn {

using internal::AlarmEntry;
using internal::AlarmTape;

AlarmValue::AlarmValue() = default;
AlarmValue::AlarmValue(const AlarmValue &other) = default;
AlarmValue &AlarmValue::operator=(const AlarmValue &other) = default;
AlarmValue::~AlarmValue() = default;

AlarmValue::AlarmValue(std::shared_ptr<const internal::AlarmDocumentData> document, int index)
    : m_document(std::move(document))
    , m_index(index)
{
}

AlarmValue::Kind AlarmValue::kind() const noexcept
{
    if (!m_document)
        return Kind::Invalid;
    switch (m_document->tape[m_index].kind) {
    case AlarmEntry::Kind::Null:
        return Kind::Null;
    case AlarmEntry::Kind::Bool:
        return Kind::Bool;
    case AlarmEntry::Kind::Number:
        return Kind::Number;
    case AlarmEntry::Kind::Word:
    case AlarmEntry::Kind::Quoted:
        return Kind::Text;
    case AlarmEntry::Kind::Date:
        return Kind::Date;
    case AlarmEntry::Kind::Time:
        return Kind::Time;
    case AlarmEntry::Kind::Array:
        return Kind::Array;
    case AlarmEntry::Kind::Object:
        break;
    }
    return Kind::Object;
}

TextRange AlarmValue::range() const
{
    if (!m_document)
        return TextRange();
    const AlarmEntry &entry = m_document->tape[m_index];
    return m_document->places.range({entry.start, entry.end});
}

QString AlarmValue::text() const
{
    if (!m_document)
        return QString();
    const AlarmEntry &entry = m_document->tape[m_index];
    if (entry.isText())
        return m_document->tape.text(entry);
    return QString::fromLatin1(m_document->bytes.constData() + entry.start,
                               entry.end - entry.start);
}

double AlarmValue::number() const noexcept
{
    const Kind what = kind();
    return what == Kind::Number || what == Kind::Bool ? m_document->tape[m_index].number : 0;
}

int AlarmValue::count() const noexcept
{
    return m_document && m_document->tape[m_index].isContainer()
               ? m_document->tape[m_index].children.count
               : 0;
}

QVector<AlarmMember> AlarmValue::members() const
{
    QVector<AlarmMember> members;
    if (count() == 0)
        return members;
    const AlarmTape &tape = m_document->tape;
    const bool isObject = kind() == Kind::Object;
    std::vector<int> children;
    tape.children(m_index, children);
    members.reserve(count());
    for (auto child = children.begin(); child != children.end(); ++child) {
        const AlarmEntry &first = tape[*child];
        AlarmMember member;
        member.keyRange =
            m_document->places.range({first.start, isObject ? first.end : first.start});
        if (isObject) {
            member.key = tape.text(first);
            ++child;
        }
        member.value = AlarmValue(m_document, *child);
        members.append(member);
    }
    return members;
}

AlarmValue AlarmValue::operator[](const QString &key) const
{
    AlarmValue found;
    if (kind() != Kind::Object)
        return found;
    const AlarmTape &tape = m_document->tape;
    int value = m_index - 1; // from behind, so that the first of that key is seen last
    for (int left = count(); left > 0; --left) {
        const int name = tape.before(value);
        if (tape.text(tape[name]) == key)
            found = AlarmValue(m_document, value);
        value = tape.before(name);
    }
    return found;
}

QVariant AlarmValue::toVariant() const
{
    return m_document ? internal::AlarmListTree().value(m_document->tape, m_index) : QVariant();
}

QScriptValue AlarmValue::toScriptValue(QScriptEngine *engine) const
{
    const Kind what = kind();
    if (what == Kind::Invalid || what == Kind::Null)
        return {};
    internal::AlarmUpdateObject object(engine);
    if (what != Kind::Object)
        return object.value(m_document->tape, m_index);
    return m_index == m_document->tape.root() ? object.object(m_document->tape) : QScriptValue();
}

} // namespace vn
