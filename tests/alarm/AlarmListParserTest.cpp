// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What only parsers of lists have: a scanner that goes on where the last text left it, keys that
// are remembered.

#include "alarm/Languages.h"
#include "base/Exceptions.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

QVariant parsed(AlarmListParser &parser, QByteArray text)
{
    return parser.parse(&text);
}

} // namespace

TEST(AlarmListParserState, aTextThatEndsInAStringLeavesTheNextInIt)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "[\"abc"), ParseException);
    // The rest of the string comes first; no list begins with one.
    expectParseError([&] { parsed(parser, "def\"]"); },
                     "syntax error, unexpected TSTRING, expecting '{' or '['"_q, 0, 0, 4);
    EXPECT_EQ(shown(parsed(parser, "[1]")), "[1]"_q);
}

TEST(AlarmListParserState, aTextThatEndsInAStringByATabLeavesTheNextInIt)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "['abc\t"), ParseException);
    expectParseError([&] { parsed(parser, "\"[1]"); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 4);
    expectParseError([&] { parsed(parser, "'[1]"); },
                     "syntax error, unexpected TSTRING, expecting '{' or '['"_q, 0, 0, 1);
    EXPECT_EQ(shown(parsed(parser, "[1]")), "[1]"_q);
}

TEST(AlarmListParserState, aTextThatEndsInACommentLeavesTheNextInIt)
{
    AlarmListParser parser;
    EXPECT_EQ(shown(parsed(parser, "[1] /* c")), "[1]"_q);
    expectParseError([&] { parsed(parser, "[2]"); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 3);
    EXPECT_EQ(shown(parsed(parser, "c */ [3]")), "[3]"_q);
}

TEST(AlarmListParserState, anErrorInTheTextLeavesTheScannerOutsideOfStrings)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "[1 2 'rest"), ParseException);
    EXPECT_EQ(shown(parsed(parser, "[3]")), "[3]"_q);
}

TEST(AlarmListParserState, spaceBehindTheLastTokenIsNotCountedInTheNextText)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "[:    1]"), ParseException);
    expectParseError([&] { parsed(parser, "x"); },
                     "syntax error, unexpected TSTRING, expecting '{' or '['"_q, 0, 0, 1);
    expectParseError([&] { parsed(parser, ""); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 0);
}

TEST(AlarmListParserState, isEachParsersOwn)
{
    AlarmListParser inString;
    AlarmListParser inComment;
    AlarmListParser outside;
    EXPECT_THROW(parsed(inString, "['abc"), ParseException);
    EXPECT_THROW(parsed(inComment, "[/*"), ParseException);
    EXPECT_EQ(shown(parsed(outside, "['x']")), "[\"x\"]"_q);
    EXPECT_THROW(parsed(inString, "[1]'"), ParseException);
    EXPECT_EQ(shown(parsed(inComment, "*/[1]")), "[1]"_q);
}

TEST(AlarmListParserState, remembersKeysOfObjectsInsideOfOthers)
{
    // The keys of the outer and the inner objects are remembered in one place, in turn.
    const QByteArray object = "{a:[{state:1},{state:2}],b:3}";
    const QString expected = "{\"a\": [{\"state\": 2}, {\"state\": 1}], \"b\": 3}"_q;
    AlarmListParser parser;
    EXPECT_EQ(shown(parsed(parser, "[" + object + "," + object + "," + object + "]")),
              QStringLiteral("[%1, %1, %1]").arg(expected));
}
