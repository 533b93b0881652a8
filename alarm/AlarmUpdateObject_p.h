// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATEOBJECT_P_H
#define VN_ALARM_ALARMUPDATEOBJECT_P_H

#include "alarm/LocalMidnight_p.h"
#include "alarm/SharedStrings_p.h"

#include <QtScript/QScriptString>
#include <QtScript/QScriptValue>

#include <array>
#include <optional>

class QScriptEngine;

namespace vn::internal {

class AlarmTape;
struct AlarmEntry;

/** The names of properties as the engine has them: keys of updates repeat. */
class PropertyNames
{
public:
    explicit PropertyNames(QScriptEngine *engine)
        : m_engine(engine)
    {
    }

    /** The name for the key @p entry. */
    QScriptString name(const AlarmTape &tape, const AlarmEntry &entry);

private:
    struct Slot
    {
        QString text;
        // Emptied before it is filled: assigning to a name that nobody else holds, after the engine
        // has collected its garbage, crashes inside the engine.
        std::optional<QScriptString> name;
    };

    QScriptEngine *m_engine;
    std::array<Slot, 256> m_slots;
};

/** Makes the script objects of alarm updates. */
class AlarmUpdateObject
{
public:
    explicit AlarmUpdateObject(QScriptEngine *engine)
        : m_engine(engine)
        , m_names(engine)
    {
    }

    /** The object of the pairs on @p tape; an invalid value for an empty one. */
    QScriptValue object(const AlarmTape &tape);
    /** One of its values. */
    QScriptValue value(const AlarmTape &tape, int index);

private:
    QScriptValue array(const AlarmTape &tape, int index);
    QScriptValue string(const AlarmTape &tape, int index);

    QScriptEngine *m_engine;
    PropertyNames m_names;
    SharedStrings m_strings;
    LocalMidnights m_midnights;
};

} // namespace vn::internal

#endif // VN_ALARM_ALARMUPDATEOBJECT_P_H
