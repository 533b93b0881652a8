// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/UnifiedDiff.h"

#include <algorithm>
#include <vector>

namespace vn::tool {

namespace {

constexpr int kContext = 3;

/** Lines that go, and the lines of the other text that come in their place. */
struct LineChange
{
    int begin;
    int end;
    int newBegin;
    int newEnd;
};

/** The lines of a text, each with its line end. */
std::vector<QByteArray> splitLines(const QByteArray &text)
{
    std::vector<QByteArray> lines;
    for (int begin = 0; begin < text.size();) {
        const int lineEnd = text.indexOf('\n', begin);
        const int end = lineEnd < 0 ? text.size() : lineEnd + 1;
        lines.push_back(text.mid(begin, end - begin));
        begin = end;
    }
    return lines;
}

/** The change without the lines at its ends that are the same in both. */
LineChange trimmed(LineChange change, const std::vector<QByteArray> &before,
                   const std::vector<QByteArray> &after)
{
    const auto isSame = [&](int x, int y) {
        return before[std::size_t(x)] == after[std::size_t(y)];
    };
    while (change.begin < change.end && change.newBegin < change.newEnd &&
           isSame(change.begin, change.newBegin)) {
        ++change.begin;
        ++change.newBegin;
    }
    while (change.begin < change.end && change.newBegin < change.newEnd &&
           isSame(change.end - 1, change.newEnd - 1)) {
        --change.end;
        --change.newEnd;
    }
    return change;
}

/** Adds the change without what is the same in both. Empty lines with which the new lines begin and
 * end, as around a section that is put in the place of another, are changes of their own. */
void addTrimmed(const LineChange &change, const std::vector<QByteArray> &before,
                const std::vector<QByteArray> &after, std::vector<LineChange> &changes)
{
    const LineChange all = trimmed(change, before, after);
    LineChange inner = all;
    while (inner.newBegin < inner.newEnd && after[std::size_t(inner.newBegin)] == "\n")
        ++inner.newBegin;
    while (inner.newBegin < inner.newEnd && after[std::size_t(inner.newEnd - 1)] == "\n")
        --inner.newEnd;
    for (const LineChange &part :
         {LineChange{all.begin, all.begin, all.newBegin, inner.newBegin},
          trimmed(inner, before, after), LineChange{all.end, all.end, inner.newEnd, all.newEnd}})
        if (part.begin < part.end || part.newBegin < part.newEnd)
            changes.push_back(part);
}

/** "start,count" of a hunk's head, as `diff` writes it. */
QByteArray range(int begin, int count)
{
    if (count == 1)
        return QByteArray::number(begin + 1);
    // An empty range names the line before it.
    return QByteArray::number(count == 0 ? begin : begin + 1) + ',' + QByteArray::number(count);
}

QByteArray hunkLine(char mark, const QByteArray &line)
{
    return line.endsWith('\n') ? mark + line : mark + line + "\n\\ No newline at end of file\n";
}

/** The file name in the diff's head, quoted where it must be. */
QByteArray headName(const QByteArray &name)
{
    QByteArray quoted;
    bool needed = false;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
            needed = true;
        } else if (byte < 0x20 || byte == 0x7f) {
            quoted += '\\' + QByteArray::number(byte, 8).rightJustified(3, '0');
            needed = true;
        } else {
            quoted += c;
        }
    }
    if (needed)
        return '"' + quoted + '"';
    return name.contains(' ') ? name + '\t' : name; // the tabulator ends the name
}

/** The diff of the given changes, which are ascending and do not touch each other. */
QByteArray printed(const std::vector<QByteArray> &before, const std::vector<QByteArray> &after,
                   const std::vector<LineChange> &changes, const QByteArray &name)
{
    if (changes.empty())
        return QByteArray();
    QByteArray out = "--- " + headName(name) + "\n+++ " + headName(name) + '\n';
    const int count = int(before.size());
    for (auto first = changes.begin(); first != changes.end();) {
        // A hunk goes on as long as the contexts of two changes overlap or meet.
        auto last = first;
        while (last + 1 != changes.end() && (last + 1)->begin - last->end <= 2 * kContext)
            ++last;
        const int begin = std::max(0, first->begin - kContext);
        const int end = std::min(count, last->end + kContext);

        QByteArray body;
        int x = begin;
        const auto keepUntil = [&](int line) {
            for (; x < line; ++x)
                body += hunkLine(' ', before[std::size_t(x)]);
        };
        int grown = 0;
        for (auto change = first; change <= last; ++change) {
            keepUntil(change->begin);
            for (; x < change->end; ++x)
                body += hunkLine('-', before[std::size_t(x)]);
            for (int y = change->newBegin; y < change->newEnd; ++y)
                body += hunkLine('+', after[std::size_t(y)]);
            grown += change->newEnd - change->newBegin - (change->end - change->begin);
        }
        keepUntil(end);
        out += "@@ -" + range(begin, end - begin) + " +" +
               range(first->newBegin - (first->begin - begin), end - begin + grown) + " @@\n" +
               body;
        first = last + 1;
    }
    return out;
}

} // namespace

QByteArray unifiedDiff(const QByteArray &before, const QByteArray &after,
                       const QVector<VanteroConfigText::Splice> &edits, const QByteArray &name)
{
    const std::vector<QByteArray> a = splitLines(before);
    const std::vector<QByteArray> b = splitLines(after);
    const int count = int(a.size());
    std::vector<LineChange> changes;
    int grown = 0; // by the edits so far, in lines
    for (const VanteroConfigText::Splice &edit : edits) {
        const TextRange &range = edit.range;
        const bool isWholeLines = range.column == 1 && range.endColumn == 1 &&
                                  (edit.text.isEmpty() || edit.text.endsWith(QLatin1Char('\n')));
        LineChange change = {};
        change.begin = std::min(range.line - 1, count);
        change.end = std::min(isWholeLines ? range.endLine - 1 : range.endLine, count);
        change.newBegin = change.begin + grown;
        grown += edit.text.count(QLatin1Char('\n')) - (range.endLine - range.line);
        change.newEnd = change.end + grown;
        if (!changes.empty() &&
            change.begin <= changes.back().end) { // of the same lines, or the next
            changes.back().end = change.end;
            changes.back().newEnd = change.newEnd;
        } else {
            changes.push_back(change);
        }
    }
    if (!changes.empty() && changes.back().end == count) // the last line need not be ended
        changes.back().newEnd = int(b.size());
    std::vector<LineChange> differences;
    for (const LineChange &change : changes)
        addTrimmed(change, a, b, differences);
    return printed(a, b, differences, name);
}

} // namespace vn::tool
