// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/SourceExcerpt.h"

#include <algorithm>

namespace vn {

SourceExcerpt sourceExcerpt(const QString &text, const TextRange &range, int width)
{
    int lineStart = 0;
    for (int line = 1; line < range.line; ++line) {
        const int next = text.indexOf(QLatin1Char('\n'), lineStart);
        if (next < 0)
            break;
        lineStart = next + 1;
    }
    const int nextLine = text.indexOf(QLatin1Char('\n'), lineStart);
    const int lineEnd = nextLine < 0 ? text.size() : nextLine;
    const auto placeOf = [&](int column) {
        return lineStart + std::clamp(column, 1, lineEnd - lineStart + 1) - 1;
    };
    const int start = placeOf(range.column);
    const int end =
        range.endLine > range.line ? lineEnd : std::max(start, placeOf(range.endColumn));

    width = std::max(width, 0);
    int first = lineStart;
    int last = lineEnd;
    if (last - first > width) {
        first = std::clamp(start - width / 2, lineStart, lineEnd - width);
        last = first + width;
    }
    SourceExcerpt excerpt;
    const QString dots = QString::fromLatin1("...");
    excerpt.line = text.mid(first, last - first);
    for (QChar &c : excerpt.line)
        if (!c.isPrint() && !c.isSurrogate())
            c = QLatin1Char(' ');
    if (excerpt.line.isEmpty())
        return excerpt;
    excerpt.mark = QString(start - first, QLatin1Char(' ')) + QLatin1Char('^') +
                   QString(std::max(0, std::min(end, last) - start - 1), QLatin1Char('~'));
    if (first > lineStart) {
        excerpt.line.prepend(dots);
        excerpt.mark.prepend(QString(dots.size(), QLatin1Char(' ')));
    }
    if (last < lineEnd)
        excerpt.line += dots;
    return excerpt;
}

} // namespace vn
