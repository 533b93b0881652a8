// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Alarm lists one after another on two readers, with the plain path and without it. The byte before
// a text chooses the reader.

#include "Support.h"

#include "tests/alarm/PlainPath.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    ListSequence sequence;
    while (!input.atEnd()) {
        const unsigned which = input.byte() % 2;
        FUZZ_EQUAL(sequence.compare(which, input.piece()), QString());
    }
    return 0;
}
