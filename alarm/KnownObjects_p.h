// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_KNOWNOBJECTS_P_H
#define VN_ALARM_KNOWNOBJECTS_P_H

/** @file Objects with the same keys in the same order: alarm lists are rows of them. */

#include "alarm/AlarmTape_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QVariant>
#include <QtCore/QVector>

#include <array>
#include <vector>

namespace vn::internal {

/** Where the members of an object stand on the tape. */
class ObjectMembers
{
public:
    ObjectMembers(const AlarmTape &tape, int index)
        : m_count(tape[index].children.count)
    {
        int child = index - 1;
        for (int member = m_count; member-- > 0;) {
            const int key = tape.before(child);
            m_members[static_cast<std::size_t>(member)] = {key, child};
            child = key - 1;
        }
    }

    int count() const { return m_count; }
    int key(int member) const { return m_members[static_cast<std::size_t>(member)].key; }
    int value(int member) const { return m_members[static_cast<std::size_t>(member)].value; }

private:
    static constexpr int kMostMembers = 98; // the stack of the grammar holds no more

    struct Member
    {
        int key;
        int value;
    };

    int m_count;
    std::array<Member, kMostMembers> m_members;
};

/** Keys in the order of one text. */
struct KnownObject
{
    QByteArray names;          // one behind the other
    std::vector<quint16> ends; // of each key in `names`
    QVariantMap keys;          // without values
    QVector<quint8> order;     // of each entry of `keys`: the member that it is of
};

/** Remembers the keys of objects that came at least twice: to copy them all at once is quicker than
 * to insert each. */
class KnownObjects
{
public:
    /** The object with the keys of @p members, from its second time on; else null. Until the next
     * call. */
    const KnownObject *find(const AlarmTape &tape, const ObjectMembers &members);

private:
    static constexpr int kSlotBits = 6;
    static constexpr int kMostBytes = 4096; // of all names together: longer ones seldom repeat

    struct Slot
    {
        quint32 seen = 0; // the hash of the keys that came last
        KnownObject object;
    };

    static KnownObject remembered(const AlarmTape &tape, const ObjectMembers &members);

    std::array<Slot, 1U << kSlotBits> m_slots;
};

} // namespace vn::internal

#endif // VN_ALARM_KNOWNOBJECTS_P_H
