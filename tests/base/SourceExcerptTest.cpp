// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/SourceExcerpt.h"

#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <climits>

using namespace vn;

namespace {

struct Row
{
    const char *name;
    QString text;
    int line, column, endLine, endColumn;
    int width;
    QString shown;
    QString mark;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

} // namespace

class SourceExcerptTable : public testing::TestWithParam<Row>
{
};

TEST_P(SourceExcerptTable, showsTheLineAndTheMark)
{
    const Row &row = GetParam();
    TextRange range;
    range.line = row.line;
    range.column = row.column;
    range.endLine = row.endLine;
    range.endColumn = row.endColumn;
    const SourceExcerpt excerpt = sourceExcerpt(row.text, range, row.width);
    EXPECT_EQ(excerpt.line, row.shown);
    EXPECT_EQ(excerpt.mark, row.mark);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(SourceExcerpt, SourceExcerptTable, testing::Values(
    Row{"oneCharacter", "{gate: 1 2}"_q, 1, 10, 1, 11, 76, "{gate: 1 2}"_q, "         ^"_q},
    Row{"aWord", "a\nbcd ef\r\ng"_q, 2, 1, 2, 4, 76, "bcd ef "_q, "^~~"_q},
    Row{"rangeOverSeveralLines", "ab\ncd"_q, 1, 2, 2, 2, 76, "ab"_q, " ^"_q},
    Row{"emptyRangeAtTheEnd", "ab"_q, 1, 3, 1, 3, 76, "ab"_q, "  ^"_q},
    Row{"behindTheEnd", "ab"_q, 7, 9, 8, 1, 76, "ab"_q, "  ^"_q},
    Row{"farBehindTheEnd", "a\nbc"_q, 2, INT_MAX, 2, INT_MAX, 76, "bc"_q, "  ^"_q},
    Row{"emptyLine", "\n"_q, 1, 1, 1, 1, 76, ""_q, ""_q},
    Row{"controlCharacters", "a\tb\x01" "c"_q, 1, 3, 1, 4, 76, "a b c"_q, "  ^"_q},
    Row{"longLineInTheMidst", "0123456789abcdefghij"_q, 1, 11, 1, 13, 6, "...789abc..."_q, "      ^~"_q},
    Row{"longLineAtItsBeginning", "0123456789"_q, 1, 1, 1, 2, 6, "012345..."_q, "^"_q},
    Row{"longLineAtItsEnd", "0123456789"_q, 1, 10, 1, 11, 6, "...456789"_q, "        ^"_q},
    Row{"longRangeIsCut", "0123456789"_q, 1, 2, 1, 11, 6, "012345..."_q, " ^~~~~"_q}
    ), [](const auto &row) { return std::string(row.param.name); });
// clang-format on
