// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Edits of a configuration text (the first piece of the input), against the same edits of the map
// that it is loaded as. Each edit is a byte for its kind, one for the index, and three pieces.

#include "Support.h"

#include "base/Exceptions.h"
#include "tests/support/ConfigEdits.h"

using vn::VanteroConfigMap;
using vn::VanteroConfigText;

namespace {

ConfigEdit nextEdit(Input &input)
{
    ConfigEdit edit;
    edit.kind = ConfigEdit::Kind(input.byte() % ConfigEdit::KindCount);
    edit.index = int(input.byte() % 5) - 1;
    edit.section = input.text();
    edit.key = input.text();
    const QByteArray value = input.piece();
    if (value != "(null)")
        edit.value = fromUtf8(value);
    if (edit.kind == ConfigEdit::AddSection) {
        edit.content.insert(edit.key, edit.value);
        edit.content.insert(edit.key, edit.section);
        edit.content.insert(edit.section, edit.value);
    }
    return edit;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const QString before = input.text();
    VanteroConfigText text(before);
    FUZZ_EQUAL(text.text(), before);
    VanteroConfigMap map;
    try {
        map = mapReadFrom(before);
    } catch (const vn::ParseException &) {
        FUZZ_CHECK(!apply(nextEdit(input), text));
        FUZZ_CHECK(text.edits().isEmpty());
        return 0;
    }
    while (!input.atEnd()) {
        const ConfigEdit edit = nextEdit(input);
        const VanteroConfigMap untouched = map;
        const QString textBefore = text.text();
        const bool isThere = apply(edit, map);
        const VanteroConfigText::Result result = apply(edit, text);
        FUZZ_CHECK(bool(result) == result.reason.isNull());
        if (!result) {
            FUZZ_CHECK(result.outcome == VanteroConfigText::Outcome::Refused || !isThere);
            FUZZ_EQUAL(text.text(), textBefore);
            map = untouched;
        }
        const QString after = text.text();
        FUZZ_EQUAL(exactly(mapReadFrom(after)), exactly(map));
        FUZZ_EQUAL(spliced(before, text.edits()), after);
        FUZZ_CHECK(text.values(edit.section, edit.key) == map.values(edit.section, edit.key));
    }
    return 0;
}
