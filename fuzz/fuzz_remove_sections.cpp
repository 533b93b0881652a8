// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// removeSections() against the reference.

#include "Support.h"

#include "config/VanteroConfigFile.h"
#include "reference/ConfigReference.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const unsigned flags = input.byte();
    const bool dropOuter = flags & 1;
    const bool dropInner = flags & 2;
    const bool dropEmpty = flags & 4;
    const QStringList sections = input.text().split(QLatin1Char(','));
    const QString text = input.text();
    FUZZ_EQUAL(
        vn::VanteroConfigFile::removeSections(text, sections, dropOuter, dropInner, dropEmpty),
        reference::removeSections(text, sections, dropOuter, dropInner, dropEmpty));
    return 0;
}
