// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_FUZZ_ALARMSUPPORT_H
#define VN_FUZZ_ALARMSUPPORT_H

/** @file How the library parses a text, against the reference. */

#include "Support.h"

#include "base/Exceptions.h"
#include "reference/AlarmReference.h"
#include "reference/AlarmText.h"

#include <type_traits>

/** Runs @p parse and compares how it ends with @p expected. */
template <typename Parse>
void checkOutcome(Parse &&parse, const reference::Outcome &expected)
{
    try {
        const QString value = shown(parse());
        FUZZ_EQUAL(expected.message, QString());
        // A script engine takes this key for the prototype of the object and keeps no property.
        const QLatin1String prototype("__proto__");
        if (std::is_same_v<decltype(parse()), QScriptValue> &&
            (value.contains(prototype) || expected.value.contains(prototype)))
            return;
        FUZZ_EQUAL(value, expected.value);
    } catch (const vn::ParseException &e) {
        FUZZ_CHECK(!expected.isAccepted);
        FUZZ_EQUAL(e.message(), expected.message);
        FUZZ_CHECK(e.startLine() == 0 && e.endLine() == 0);
        FUZZ_CHECK(e.startColumn() == expected.start);
        FUZZ_CHECK(e.endColumn() == expected.end);
    }
}

#endif // VN_FUZZ_ALARMSUPPORT_H
