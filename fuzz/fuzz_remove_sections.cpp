// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// removeSections() against a reading in two steps: name each line's kind and place, then choose.

#include "Support.h"

#include "config/VanteroConfigFile.h"

namespace {

enum class Kind { Start, End, Comment, Empty, Other };

struct Line
{
    QString text;
    Kind kind;
    bool inside;  // of a section, its first and last line included
    bool removed; // that section is in the list
};

QList<Line> classify(const QString &text, const QStringList &sections)
{
    QList<Line> result;
    bool inside = false;
    bool removed = false;
    const QStringList lines = linesOf(text);
    for (const QString &line : lines) {
        Kind kind = Kind::Other;
        if (line.startsWith(QLatin1String("SECTION"))) {
            kind = Kind::Start;
            inside = true;
            removed = sections.contains(line.mid(8));
        } else if (line.startsWith(QLatin1String("ENDSECTION"))) {
            kind = Kind::End;
        } else if (line.startsWith(QLatin1Char('#'))) {
            kind = Kind::Comment;
        } else if (line.isEmpty()) {
            kind = Kind::Empty;
        }
        result.append({line, kind, inside, removed});
        if (kind == Kind::End)
            inside = removed = false;
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const unsigned flags = input.byte();
    const bool dropOuter = flags & 1;
    const bool dropInner = flags & 2;
    const bool dropEmpty = flags & 4;
    const QStringList sections = input.text().split(QLatin1Char(','));
    const QString text = input.text();

    QString expected;
    const QList<Line> lines = classify(text, sections);
    for (const Line &line : lines) {
        bool kept = !line.removed;
        if (line.kind == Kind::Comment && (line.inside ? dropInner : dropOuter))
            kept = false;
        if (line.kind == Kind::Empty && dropEmpty)
            kept = false;
        if (line.kind == Kind::Other && !line.inside)
            kept = false;
        if (kept)
            expected += line.text + QLatin1Char('\n');
    }
    FUZZ_EQUAL(
        vn::VanteroConfigFile::removeSections(text, sections, dropOuter, dropInner, dropEmpty),
        expected);
    return 0;
}
