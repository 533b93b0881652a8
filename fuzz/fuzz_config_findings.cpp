// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A configuration text with its outline and findings: the places are those of the text, the first
// error is the fault by which loading refuses it, and what nothing is told of is loaded as it
// looks.

#include "Support.h"

#include "tests/support/ConfigFindings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    FUZZ_EQUAL(brokenPromise(text), QString());
    FUZZ_EQUAL(brokenPromiseOfComment(text), QString());
    return 0;
}
