// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Alarm lists one after another on two parsers: each goes on inside the string or comment in which
// its last text ended, and both share the string that pieces are collected in. The byte before a
// text chooses the parser.

#include "AlarmListSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    vn::AlarmListParser parsers[2];
    reference::ListScannerState states[2];
    QByteArray pieces;
    (void)parsers[0].parse(QStringLiteral("['']")); // empties the library's string, too

    while (!input.atEnd()) {
        const unsigned which = input.byte() % 2;
        const QByteArray text = input.piece();
        const reference::Outcome expected = reference::parseAlarmList(text, states[which], pieces);
        QByteArray bytes = text;
        if (expected.isFatal) {
            if (isChosen(data, size))
                checkEndsProcess([&] { (void)parsers[which].parse(&bytes); });
            return 0;
        }
        checkOutcome([&] { return parsers[which].parse(&bytes); }, expected);
        FUZZ_CHECK(bytes == text + QByteArray(2, '\0'));
    }
    return 0;
}
