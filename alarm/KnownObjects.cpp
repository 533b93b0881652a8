// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/KnownObjects_p.h"

#include "base/SharedStrings_p.h"

#include <cstring>

namespace vn::internal {

namespace {

/** Whether @p object has the keys of @p members in their order. */
bool isOf(const KnownObject &object, const AlarmTape &tape, const ObjectMembers &members)
{
    if (object.ends.size() != static_cast<std::size_t>(members.count()))
        return false;
    const char *name = object.names.constData();
    for (int member = 0; member < members.count(); ++member) {
        const QLatin1String key = tape.bytes(tape[members.key(member)]);
        const char *const end =
            object.names.constData() + object.ends[static_cast<std::size_t>(member)];
        if (end - name != key.size() ||
            std::memcmp(name, key.data(), static_cast<std::size_t>(key.size())) != 0)
            return false;
        name = end;
    }
    return true;
}

} // namespace

const KnownObject *KnownObjects::find(const AlarmTape &tape, const ObjectMembers &members)
{
    quint64 hash = static_cast<quint64>(members.count());
    int bytes = 0;
    for (int member = 0; member < members.count(); ++member) {
        const AlarmEntry &entry = tape[members.key(member)];
        if (!AlarmTape::isInText(entry))
            return nullptr;
        const QLatin1String key = tape.bytes(entry);
        if (key.isEmpty())
            return nullptr;
        hash = mixed(hash + hashOfEnds(key.data(), static_cast<std::size_t>(key.size())));
        bytes += key.size();
        if (bytes > kMostBytes)
            return nullptr;
    }
    if (members.count() == 0)
        return nullptr;
    Slot &slot = m_slots[hash >> (64 - kSlotBits)];
    if (isOf(slot.object, tape, members))
        return &slot.object;
    const quint32 mark = static_cast<quint32>(hash) | 1; // never that of none
    if (slot.seen != mark) {
        slot.seen = mark;
        return nullptr;
    }
    slot.object = remembered(tape, members);
    return &slot.object;
}

KnownObject KnownObjects::remembered(const AlarmTape &tape, const ObjectMembers &members)
{
    KnownObject object;
    for (int member = 0; member < members.count(); ++member) {
        const QLatin1String key = tape.bytes(tape[members.key(member)]);
        object.names.append(key.data(), key.size());
        object.ends.push_back(static_cast<quint16>(object.names.size()));
    }
    QMultiMap<QString, quint8> order; // as the tree has it: the last member is added first
    for (int member = members.count(); member-- > 0;)
        order.insert(tape.text(tape[members.key(member)]), static_cast<quint8>(member));
    QMultiMap<QString, QVariant> keys;
    for (auto it = order.cend(); it != order.cbegin();) {
        --it;
        object.order.insert(object.order.begin(), it.value());
        keys.insert(keys.cbegin(), it.key(), QVariant());
    }
    object.keys = keys;
    return object;
}

} // namespace vn::internal
