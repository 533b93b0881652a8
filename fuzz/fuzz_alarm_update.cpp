// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// One alarm update on a new parser, against the reference: value or message and place.

#include "AlarmUpdateSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static auto *engine = new Engine; // its application must not go after Qt's own statics
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const reference::Outcome expected = reference::parseAlarmUpdate(text);

    checkOutcome([&] { return vn::AlarmUpdateParser(engine->get()).parse(fromLatin1(text)); },
                 expected);
    QByteArray bytes = text;
    checkOutcome([&] { return vn::AlarmUpdateParser(engine->get()).parse(&bytes); }, expected);
    FUZZ_CHECK(bytes == text + QByteArray(2, '\0'));
    engine->check();
    return 0;
}
