// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateObject_p.h"

#include <QtScript/QScriptEngine>

#include <limits>

namespace vn::internal {

namespace {

bool isPrototype(const AlarmTape &tape, const AlarmEntry &key)
{
    const QLatin1String name("__proto__");
    return AlarmTape::isInText(key) ? tape.bytes(key) == name : tape.keptText(key) == name;
}

} // namespace

template <typename Made, typename Make>
Made AlarmUpdateObject::made(MadeOfTexts<Made> &texts, const AlarmTape &tape,
                             const AlarmEntry &entry, const Make &make)
{
    constexpr int kLongest = 32; // what is longer is seldom repeated
    if (!AlarmTape::isInText(entry) || entry.end - entry.start > kLongest)
        return make(tape.text(entry));
    const QLatin1String text = tape.bytes(entry);
    const auto renew = [&](MadeOfText<Made> &known) {
        known.text = text;
        known.made.reset();
        known.made.emplace(make(known.text));
    };
    return *texts.of(text, renew).made;
}

QScriptValue AlarmUpdateObject::object(const AlarmTape &tape)
{
    if (tape.isEmpty())
        return {};
    m_midnights.reset();
    const int root = tape.root();
    QScriptValue object = m_engine->newObject();
    // The last pair comes first, so the leftmost one of a key stays. It is the same as
    // addProperties(object, keyValue(key, value)) for all others; that of a pair "__proto__" would
    // have no property of its own to be added.
    const auto toName = [this](const QString &text) { return m_engine->toStringHandle(text); };
    int child = root - 1;
    for (int left = tape[root].children.count; left > 0; --left) {
        const AlarmEntry &key = tape[tape.before(child)];
        const bool isLast = child == root - 1;
        if (isLast || !isPrototype(tape, key))
            object.setProperty(made(m_names, tape, key, toName), value(tape, child));
        child = tape.before(child) - 1;
    }
    return object;
}

QScriptValue AlarmUpdateObject::value(const AlarmTape &tape, int index)
{
    const AlarmEntry &entry = tape[index];
    switch (entry.kind) {
    case AlarmEntry::Kind::Bool:
        return {m_engine, entry.number != 0};
    case AlarmEntry::Kind::Number:
        return entry.integer ? QScriptValue(m_engine, static_cast<int>(entry.number))
                             : QScriptValue(m_engine, entry.number);
    case AlarmEntry::Kind::Date:
        return m_engine->newDate(m_midnights.milliseconds(static_cast<int>(entry.number)));
    case AlarmEntry::Kind::Time: // without a day it is no moment
        return m_engine->newDate(std::numeric_limits<double>::quiet_NaN());
    case AlarmEntry::Kind::Array:
        return array(tape, index);
    case AlarmEntry::Kind::Null: // of alarm lists, as are objects inside of others
    case AlarmEntry::Kind::Object:
        return {};
    default:
        return made(m_strings, tape, entry,
                    [this](const QString &text) { return QScriptValue(m_engine, text); });
    }
}

QScriptValue AlarmUpdateObject::array(const AlarmTape &tape, int index)
{
    const int count = tape[index].children.count;
    QScriptValue array = m_engine->newArray(static_cast<uint>(count));
    int child = index - 1;
    for (int i = 0; i < count; ++i) { // in reverse, see the grammar
        array.setProperty(static_cast<quint32>(i), value(tape, child));
        child = tape.before(child);
    }
    return array;
}

} // namespace vn::internal
