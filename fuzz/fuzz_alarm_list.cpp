// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// One alarm list on a new parser, against the reference: value or message and place.

#include "AlarmListSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    reference::ListScannerState state;
    QByteArray pieces;
    const reference::Outcome expected = reference::parseAlarmList(text, state, pieces);
    if (expected.isFatal) {
        if (isChosen(data, size))
            checkEndsProcess([&] { (void)vn::AlarmListParser().parse(fromLatin1(text)); });
        return 0;
    }
    checkOutcome([&] { return vn::AlarmListParser().parse(fromLatin1(text)); }, expected);

    // The caller's array is scanned in place, and comes back as it was but for two zero bytes.
    QByteArray bytes = text;
    checkOutcome([&] { return vn::AlarmListParser().parse(&bytes); }, expected);
    FUZZ_CHECK(bytes == text + QByteArray(2, '\0'));
    return 0;
}
