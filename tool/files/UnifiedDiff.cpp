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

std::vector<Step> allSteps(const std::vector<QByteArray> &before,
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
    std::vector<Step> steps(std::size_t(begin), Step::Keep);
    const std::vector<Step> middle = shortestWay(a, aEnd, b, bEnd, begin);
    steps.insert(steps.end(), middle.begin(), middle.end());
    steps.insert(steps.end(), a.size() - std::size_t(aEnd), Step::Keep);
    return steps;
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

} // namespace

QByteArray unifiedDiff(const QByteArray &before, const QByteArray &after, const QByteArray &name)
{
    if (before == after)
        return QByteArray();
    const std::vector<QByteArray> a = splitLines(before);
    const std::vector<QByteArray> b = splitLines(after);
    const std::vector<Step> steps = allSteps(a, b);

    QByteArray out = "--- " + headName(name) + "\n+++ " + headName(name) + '\n';
    const int count = int(steps.size());
    int x = 0; // lines of a and b before steps[i]
    int y = 0;
    for (int i = 0; i < count;) {
        int change = i;
        while (change < count && steps[std::size_t(change)] == Step::Keep)
            ++change;
        if (change == count)
            break;
        const int begin = std::max(i, change - kContext);
        x += begin - i;
        y += begin - i;

        // The hunk goes on as long as the contexts of two changes overlap or meet.
        int lastChange = change;
        for (int j = change; j < count && j - lastChange <= 2 * kContext + 1; ++j)
            if (steps[std::size_t(j)] != Step::Keep)
                lastChange = j;
        const int end = std::min(count, lastChange + 1 + kContext);

        QByteArray body;
        const int xBegin = x;
        const int yBegin = y;
        for (int j = begin; j < end; ++j) {
            switch (steps[std::size_t(j)]) {
            case Step::Keep:
                body += hunkLine(' ', a[std::size_t(x)]);
                ++x;
                ++y;
                break;
            case Step::Delete:
                body += hunkLine('-', a[std::size_t(x)]);
                ++x;
                break;
            case Step::Insert:
                body += hunkLine('+', b[std::size_t(y)]);
                ++y;
                break;
            }
        }
        out +=
            "@@ -" + range(xBegin, x - xBegin) + " +" + range(yBegin, y - yBegin) + " @@\n" + body;
        i = end;
    }
    return out;
}

} // namespace vn::tool
