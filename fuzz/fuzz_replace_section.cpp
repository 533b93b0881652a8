// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// replaceSection() against the reference.

#include "Support.h"

#include "config/VanteroConfigFile.h"
#include "reference/ConfigReference.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const QString section = input.text();
    const QString target = input.text();
    const QString source = input.text();
    FUZZ_EQUAL(vn::VanteroConfigFile::replaceSection(target, source, section),
               reference::replaceSection(target, source, section));
    return 0;
}
