// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/UnifiedDiff.h"

#include <QtCore/QHash>

#include <algorithm>
#include <vector>

namespace vn::tool {

namespace {

constexpr int kContext = 3;

// The search for the shortest way keeps a row of numbers for each change: 16 MB at this limit.
constexpr int kMostChanges = 2000;

enum class Step { Keep, Delete, Insert };

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

/** Lines as numbers, equal ones alike. */
std::vector<int> numbered(const std::vector<QByteArray> &lines, QHash<QByteArray, int> &numbers)
{
    std::vector<int> result;
    result.reserve(lines.size());
    for (const QByteArray &line : lines) {
        auto it = numbers.constFind(line);
        if (it == numbers.constEnd())
            it = numbers.insert(line, numbers.size());
        result.push_back(*it);
    }
    return result;
}

/**
 * The shortest way from a[begin, aEnd) to b[begin, bEnd), after E. Myers, "An O(ND) Difference
 * Algorithm and Its Variations" (1986): on the diagonal k = x - y, after d changes, reach[k] is the
 * furthest x. The rows of each d are kept to find the way back.
 */
std::vector<Step> shortestWay(const std::vector<int> &a, int aEnd, const std::vector<int> &b,
                              int bEnd, int begin)
{
    const int n = aEnd - begin;
    const int m = bEnd - begin;
    const int most = std::min(n + m, kMostChanges);
    std::vector<std::vector<int>> rows;
    std::vector<int> reach(std::size_t(2 * most + 3), 0);
    const auto at = [most](int k) { return std::size_t(k + most + 1); };

    int changes = 0;
    for (bool found = false; !found; ++changes) {
        if (changes > most) { // give up: everything goes, everything comes
            std::vector<Step> steps(std::size_t(n), Step::Delete);
            steps.insert(steps.end(), std::size_t(m), Step::Insert);
            return steps;
        }
        rows.emplace_back(reach.begin() + std::ptrdiff_t(at(-changes - 1)),
                          reach.begin() + std::ptrdiff_t(at(changes + 1)) + 1);
        for (int k = -changes; k <= changes && !found; k += 2) {
            const bool down =
                k == -changes || (k != changes && reach[at(k - 1)] < reach[at(k + 1)]);
            int x = down ? reach[at(k + 1)] : reach[at(k - 1)] + 1;
            while (x < n && x - k < m && a[std::size_t(begin + x)] == b[std::size_t(begin + x - k)])
                ++x;
            reach[at(k)] = x;
            found = k == n - m && x >= n;
        }
    }

    std::vector<Step> steps;
    int x = n;
    int y = m;
    for (int d = changes - 1; d >= 0; --d) {
        const std::vector<int> &row = rows[std::size_t(d)]; // the reach before change d
        const auto in = [d](int k) { return std::size_t(k + d + 1); };
        const int k = x - y;
        const bool down = k == -d || (k != d && row[in(k - 1)] < row[in(k + 1)]);
        const int before = down ? k + 1 : k - 1;
        const int fromX = row[in(before)];
        const int changedX = down ? fromX : fromX + 1;
        steps.insert(steps.end(), std::size_t(x - changedX), Step::Keep);
        if (d > 0)
            steps.push_back(down ? Step::Insert : Step::Delete);
        x = fromX;
        y = fromX - before;
    }
    std::reverse(steps.begin(), steps.end());
    return steps;
}

/** The changes that lead from @p before to @p after, as few lines of them as can be. */
std::vector<LineChange> searchChanges(const std::vector<QByteArray> &before,
                                      const std::vector<QByteArray> &after)
{
    QHash<QByteArray, int> numbers;
    const std::vector<int> a = numbered(before, numbers);
    const std::vector<int> b = numbered(after, numbers);
    int begin = 0;
    int aEnd = int(a.size());
    int bEnd = int(b.size());
    while (begin < aEnd && begin < bEnd && a[std::size_t(begin)] == b[std::size_t(begin)])
        ++begin;
    while (aEnd > begin && bEnd > begin && a[std::size_t(aEnd - 1)] == b[std::size_t(bEnd - 1)]) {
        --aEnd;
        --bEnd;
    }
    std::vector<LineChange> changes;
    int x = begin;
    int y = begin;
    bool isOpen = false;
    for (const Step step : shortestWay(a, aEnd, b, bEnd, begin)) {
        if (step != Step::Keep && !isOpen)
            changes.push_back({x, x, y, y});
        isOpen = step != Step::Keep;
        x += step != Step::Insert ? 1 : 0;
        y += step != Step::Delete ? 1 : 0;
        if (isOpen) {
            changes.back().end = x;
            changes.back().newEnd = y;
        }
    }
    return changes;
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

QByteArray unifiedDiff(const QByteArray &before, const QByteArray &after, const QByteArray &name)
{
    const std::vector<QByteArray> a = splitLines(before);
    const std::vector<QByteArray> b = splitLines(after);
    return printed(a, b, searchChanges(a, b), name);
}

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
    for (LineChange &change : changes)
        change = trimmed(change, a, b);
    changes.erase(std::remove_if(changes.begin(), changes.end(),
                                 [](const LineChange &change) {
                                     return change.begin == change.end &&
                                            change.newBegin == change.newEnd;
                                 }),
                  changes.end());
    return printed(a, b, changes, name);
}

} // namespace vn::tool
