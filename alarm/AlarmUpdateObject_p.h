// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATEOBJECT_P_H
#define VN_ALARM_ALARMUPDATEOBJECT_P_H

#include "alarm/AlarmTape_p.h"
#include "alarm/LocalMidnight_p.h"
#include "base/SharedStrings_p.h"

#include <QtScript/QScriptString>
#include <QtScript/QScriptValue>

#include <optional>

class QScriptEngine;

namespace vn::internal {

/** Makes the script objects of alarm updates. */
class AlarmUpdateObject
{
public:
    explicit AlarmUpdateObject(QScriptEngine *engine)
        : m_engine(engine)
    {
    }

    /** The object of the pairs on @p tape; an invalid value for an empty one. */
    QScriptValue object(const AlarmTape &tape);
    /** One of its values. */
    QScriptValue value(const AlarmTape &tape, int index);

private:
    QScriptValue array(const AlarmTape &tape, int index);

    /** What the engine has made of a text: keys of updates repeat, and so do many values. */
    template <typename Made>
    struct MadeOfText
    {
        QString text;
        // Emptied before it is filled: assigning to a name that nobody else holds, after the engine
        // has collected its garbage, crashes inside the engine.
        std::optional<Made> made;
    };
    template <typename Made>
    using MadeOfTexts = RememberedTexts<MadeOfText<Made>, 9>;

    /** What @p make has made of the text of @p entry, or makes of it now. */
    template <typename Made, typename Make>
    static Made made(MadeOfTexts<Made> &texts, const AlarmTape &tape, const AlarmEntry &entry,
                     const Make &make);

    QScriptEngine *m_engine;
    MadeOfTexts<QScriptString> m_names;
    MadeOfTexts<QScriptValue> m_strings;
    LocalMidnights m_midnights;
};

} // namespace vn::internal

#endif // VN_ALARM_ALARMUPDATEOBJECT_P_H
