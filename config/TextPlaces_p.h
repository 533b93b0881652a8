// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_TEXTPLACES_P_H
#define VN_CONFIG_TEXTPLACES_P_H

#include "base/Finding.h"

#include <QtCore/QStringView>

#include <algorithm>
#include <vector>

namespace vn::internal {

/** Lines and columns of a text, for views into it. */
class TextPlaces
{
public:
    explicit TextPlaces(QStringView text)
        : m_text(text)
        , m_lineStarts{0}
    {
        for (qsizetype at = 0; (at = text.indexOf(QLatin1Char('\n'), at)) >= 0;)
            m_lineStarts.push_back(++at);
    }

    qsizetype offsetOf(const QChar *place) const { return place - m_text.begin(); }

    /** Where @p part, a view into the text, lies. */
    TextRange rangeOf(QStringView part) const { return range(part.begin(), part.end()); }

    TextRange range(const QChar *begin, const QChar *end) const
    {
        TextRange result;
        result.offset = offsetOf(begin);
        result.length = end - begin;
        place(offsetOf(begin), result.line, result.column);
        place(offsetOf(end), result.endLine, result.endColumn);
        return result;
    }

private:
    void place(qsizetype offset, int &line, int &column) const
    {
        const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
        line = int(next - m_lineStarts.begin());
        column = int(offset - *(next - 1)) + 1;
    }

    QStringView m_text;
    std::vector<qsizetype> m_lineStarts;
};

} // namespace vn::internal

#endif // VN_CONFIG_TEXTPLACES_P_H
