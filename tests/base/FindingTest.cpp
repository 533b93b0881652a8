// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/Finding.h"
#include "support/Literals.h"

#include <gtest/gtest.h>

using namespace vn;

TEST(TextRange, beginsAsThePlaceBeforeTheFirstCharacter)
{
    const TextRange range;
    EXPECT_EQ(range.line, 1);
    EXPECT_EQ(range.column, 1);
    EXPECT_EQ(range.endLine, 1);
    EXPECT_EQ(range.endColumn, 1);
    EXPECT_EQ(range.offset, 0);
    EXPECT_EQ(range.length, 0);
    EXPECT_EQ(Finding().severity, Finding::Severity::Error);
    EXPECT_EQ(Finding().range, range);
}

TEST(TextRange, equalsOnlyTheSamePlace)
{
    const TextRange ranges[] = {{2, 3, 4, 5, 6, 7}, {9, 3, 4, 5, 6, 7}, {2, 9, 4, 5, 6, 7},
                                {2, 3, 9, 5, 6, 7}, {2, 3, 4, 9, 6, 7}, {2, 3, 4, 5, 9, 7},
                                {2, 3, 4, 5, 6, 9}};
    for (const TextRange &a : ranges)
        for (const TextRange &b : ranges) {
            const TextRange copy = b;
            EXPECT_EQ(a == copy, &a == &b) << &a - ranges << ' ' << &b - ranges;
            EXPECT_EQ(a != copy, &a != &b) << &a - ranges << ' ' << &b - ranges;
        }
}

TEST(Finding, equalsOnlyWhatSaysTheSameOfTheSamePlace)
{
    const TextRange range = {2, 3, 4, 5, 6, 7};
    const Finding findings[] = {
        {Finding::Severity::Error, "code"_q, "message"_q, range},
        {Finding::Severity::Note, "code"_q, "message"_q, range},
        {Finding::Severity::Error, "other"_q, "message"_q, range},
        {Finding::Severity::Error, "code"_q, "other"_q, range},
        {Finding::Severity::Error, "code"_q, "message"_q, TextRange()},
    };
    for (const Finding &a : findings)
        for (const Finding &b : findings) {
            const Finding copy = b;
            EXPECT_EQ(a == copy, &a == &b) << &a - findings << ' ' << &b - findings;
            EXPECT_EQ(a != copy, &a != &b) << &a - findings << ' ' << &b - findings;
        }
}
