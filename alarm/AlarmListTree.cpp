// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmListTree_p.h"

#include "alarm/AlarmTape_p.h"

namespace vn::internal {

QVariant AlarmListTree::value(const AlarmTape &tape, int index)
{
    QVariant value;
    fill(value, tape, index);
    return value;
}

void AlarmListTree::fill(QVariant &value, const AlarmTape &tape, int index)
{
    const AlarmEntry &entry = tape[index];
    switch (entry.kind) {
    case AlarmEntry::Kind::Bool:
        value = entry.number != 0;
        break;
    case AlarmEntry::Kind::Number:
        value = entry.number;
        break;
    case AlarmEntry::Kind::Word:
    case AlarmEntry::Kind::Quoted:
        value = text(tape, index);
        break;
    case AlarmEntry::Kind::Array:
        value = array(tape, index);
        break;
    case AlarmEntry::Kind::Object:
        value = object(tape, index);
        break;
    default: // null stays invalid; alarm lists have nothing else
        break;
    }
}

QVariantList AlarmListTree::array(const AlarmTape &tape, int index)
{
    QVariantList elements;
    elements.reserve(tape.childCount(index));
    int child = index - 1;
    for (int left = tape.childCount(index); left > 0; --left) {
        elements.append(QVariant());
        fill(elements.last(), tape, child);
        child = tape.before(child);
    }
    return elements;
}

QVariantMap AlarmListTree::object(const AlarmTape &tape, int index)
{
    const ObjectMembers members(tape, index);
    if (const KnownObject *known = m_objects.find(tape, members)) {
        QVariantMap object = known->keys;
        const QVector<quint8> order = known->order; // objects inside may take the known one's place
        auto value = object.begin();                // a copy of its own from here on
        for (const quint8 member : order) {
            fill(*value, tape, members.value(member));
            ++value;
        }
        return object;
    }
    // The last member is added first: so the first value of a repeated key comes first.
    QMultiMap<QString, QVariant> object;
    for (int member = members.count(); member-- > 0;)
        fill(*object.insert(text(tape, members.key(member)), QVariant()), tape,
             members.value(member));
    return object;
}

const QString &AlarmListTree::text(const AlarmTape &tape, int index)
{
    const AlarmEntry &entry = tape[index];
    if (!AlarmTape::isInText(entry))
        return tape.keptText(entry);
    const QLatin1String bytes = tape.bytes(entry);
    if (bytes.isEmpty() || bytes.size() > kLongestShared)
        return m_own = tape.text(entry);
    return m_strings.string(bytes);
}

} // namespace vn::internal
