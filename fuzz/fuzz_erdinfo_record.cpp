// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The record of an event recording, read from any bytes: it is written as it was read, and what is
// wrong with it has a place and a field.

#include "Support.h"

#include "erdinfo/ErdinfoFields.h"
#include "erdinfo/ErdinfoLayout.h"

using namespace vn;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    Findings findings;
    const ErdinfoRecord record = ErdinfoRecord::fromBytes(bytes, &findings);

    qint64 end = 0;
    bool isExact = true;
    for (const Finding &finding : qAsConst(findings)) {
        FUZZ_CHECK(finding.range.offset >= end);
        end = finding.range.offset + finding.range.length;
        FUZZ_CHECK(end <= bytes.size());
        FUZZ_CHECK(erdinfoFieldAt(finding.range.offset) != nullptr);
        isExact = isExact && finding.code == QLatin1String("record-flags");
    }
    const QByteArray again = record.toBytes();
    FUZZ_CHECK(ErdinfoRecord::fromBytes(again) == record);
    if (isExact)
        FUZZ_CHECK(again == bytes.left(ErdinfoLayout::kRecordSize));
    for (const auto text : {&ErdinfoRecord::text1, &ErdinfoRecord::text2, &ErdinfoRecord::text3})
        FUZZ_CHECK(ErdinfoRecord::toString(record.*text).size() <= 2 * int((record.*text).size()));
    return 0;
}
