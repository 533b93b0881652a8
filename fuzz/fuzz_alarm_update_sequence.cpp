// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Alarm updates one after another on two parsers of one engine: none depends on those before. The
// byte before a text chooses the parser.

#include "AlarmUpdateSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static auto *engine = new Engine; // its application must not go after Qt's own statics
    Input input(data, size);
    vn::AlarmUpdateParser first(engine->get());
    vn::AlarmUpdateParser second(engine->get());
    while (!input.atEnd()) {
        const unsigned which = input.byte() % 2;
        QByteArray text = input.piece();
        const reference::Outcome expected = reference::parseAlarmUpdate(text);
        checkOutcome([&] { return (which ? second : first).parse(&text); }, expected);
    }
    engine->check();
    return 0;
}
