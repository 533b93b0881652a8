// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// One alarm update: where the plain path gives a result, the grammar gives the same one.

#include "Support.h"

#include "tests/alarm/PlainPath.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    vn::internal::AlarmUpdateReader plain(nullptr);
    vn::internal::AlarmUpdateReader grammar(nullptr);
    FUZZ_EQUAL(comparePaths(plain, grammar, text).difference, QString());
    return 0;
}
