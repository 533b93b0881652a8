// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// replaceSection() against its description written out with std::u16string.

#include "Support.h"

#include "config/VanteroConfigFile.h"

#include <string>

namespace {

constexpr auto kNone = std::u16string::npos;

struct Range
{
    std::size_t start; // kNone where the text lacks the section
    std::size_t end;
};

Range find(const std::u16string &text, const std::u16string &name)
{
    const std::u16string endMarker = u"ENDSECTION " + name;
    const std::size_t end = text.find(endMarker);
    return {text.find(u"SECTION " + name), end == kNone ? text.size() : end + endMarker.size()};
}

std::u16string replace(const std::u16string &target, const std::u16string &source,
                       const std::u16string &name)
{
    const Range old = find(target, name);
    const Range wanted = find(source, name);
    if (wanted.start == kNone)
        return old.start == kNone ? target : target.substr(0, old.start) + target.substr(old.end);
    // An end before the start means everything from the start on.
    const std::u16string section =
        source.substr(wanted.start, wanted.end < wanted.start ? kNone : wanted.end - wanted.start);
    if (old.start == kNone)
        return target + u"\n\n" + section + u"\n";
    return target.substr(0, old.start) + u"\n\n" + section + u"\n\n" + target.substr(old.end);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const QString section = input.text();
    const QString target = input.text();
    const QString source = input.text();

    const QString result = vn::VanteroConfigFile::replaceSection(target, source, section);
    FUZZ_EQUAL(result,
               QString::fromStdU16String(replace(target.toStdU16String(), source.toStdU16String(),
                                                 section.toStdU16String())));
    return 0;
}
