// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What texts mean: tokens, values, order, limits.

#include "alarm/AlarmListParser.h"
#include "alarm/Shown.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vn;

namespace {

QVariant parsed(QByteArray text)
{
    return AlarmListParser().parse(&text);
}

/** @p count times @p piece with @p separator between them. */
QByteArray repeated(const QByteArray &piece, int count, const QByteArray &separator = QByteArray())
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += (i > 0 ? separator : QByteArray()) + piece;
    return text;
}

struct Accepted
{
    const char *name;
    QByteArray text;
    QString value;
};

// clang-format off
const Accepted kAccepted[] = {
    {"emptyObject", "{}", "{}"_q},
    {"emptyArray", "[]", "[]"_q},
    {"arrayInArray", "[[]]", "[[]]"_q},
    {"objectInArray", "[{}]", "[{}]"_q},
    {"arrayInObject", "{a:[]}", "{\"a\": []}"_q},
    {"arrayComesOutInReverse", "[1, 2, 3]", "[3, 2, 1]"_q},
    {"nestedArraysComeOutInReverse", "[\"a\", [1, 2]]", "[[2, 1], \"a\"]"_q},
    {"arrayOfAll", "[a, 1, true, null, {}, []]", "[[], {}, null, true, 1, \"a\"]"_q},
    {"objectOfAll", "{a: 1, b: 'x', z: null, d: true, e: false}",
        "{\"a\": 1, \"b\": \"x\", \"d\": true, \"e\": false, \"z\": null}"_q},
    {"keysComeOutInOrder", "{b:1,c:2,a:3}", "{\"a\": 3, \"b\": 1, \"c\": 2}"_q},
    {"repeatedKeyKeepsAll_theFirstInTheTextFirst", "{a:1, a:2}", "{\"a\": 1, \"a\": 2}"_q},
    {"repeatedKeysAmongOthers", "{b:1,a:2,b:3,a:4,b:5}",
        "{\"a\": 2, \"a\": 4, \"b\": 1, \"b\": 3, \"b\": 5}"_q},
    {"quotedKeys", "{\"a\":1,'b':2}", "{\"a\": 1, \"b\": 2}"_q},
    {"quotedAndBareKeyAreTheSame", "{\"a\":1,'a':2,a:3}", "{\"a\": 1, \"a\": 2, \"a\": 3}"_q},
    {"emptyKey", "{'':1}", "{\"\": 1}"_q},
    {"keyIsNoKeyword", "{'true':1,\"null\":2}", "{\"null\": 2, \"true\": 1}"_q},

    {"space", " \t\r\n[ \t\r\n1 \t\r\n, \t\r\n2 \t\r\n] \t\r\n", "[2, 1]"_q},
    {"comments", "/**/[/* a *//* b */1/*\n*/]/* c */", "[1]"_q},
    {"commentOfStars", "[/****/]", "[]"_q},
    {"starAndSlashApart", "[/* * / */1]", "[1]"_q},
    {"commentWithStringMarks", "[/* \"' */1]", "[1]"_q},
    {"oddNumberOfStarsInAComment_endsItLater", "[/***/ 1 */ 2]", "[2]"_q},

    {"zero", "[0]", "[0]"_q},
    {"integer", "[120]", "[120]"_q},
    {"negativeInteger", "[-7]", "[-7]"_q},
    {"fraction", "[0.5, 10.25]", "[10.25, 0.5]"_q},
    {"negativeFraction", "[-0.5]", "[-0.5]"_q},
    {"negativeZeroWithFraction", "[-0.0]", "[-0]"_q},
    {"exponent", "[1.5e3, 2E2, 5e-1, 1e+2]", "[100, 0.5, 200, 1500]"_q},
    {"zeroWithFractionAndExponent", "[0.5e1]", "[5]"_q},
    {"negativeExponentOfAFraction", "[-0.25E-2]", "[-0.0025000000000000001]"_q},
    {"tooLargeIsInfinite", "[1e400, -1e400]", "[-inf, inf]"_q},
    {"tooSmallIsZero", "[1e-400, -1e-400]", "[-0, 0]"_q},
    {"denormal", "[4.9e-324, 2.2250738585072011e-308]",
        "[2.2250738585072009e-308, 4.9406564584124654e-324]"_q},
    {"nearestOfManyDigits", "[0.1000000000000000055511151231257827021181583404541015625]",
        "[0.10000000000000001]"_q},
    {"halfWayRoundsToEven", "[9007199254740993, 9007199254740995]",
        "[9007199254740996, 9007199254740992]"_q},
    {"largestNumber", "[1.7976931348623157e308]", "[1.7976931348623157e+308]"_q},
    {"moreThan64Bits", "[18446744073709551616]", "[1.8446744073709552e+19]"_q},

    {"booleans", "[true, false]", "[false, true]"_q},
    {"null", "[null]", "[null]"_q},
    {"keywordIsOnlyTheWholeWord", "[trueish, falsey, nullx, true-, TRUE]",
        "[\"TRUE\", \"true-\", \"nullx\", \"falsey\", \"trueish\"]"_q},
    {"bareWord", "[cam-1/x.y_Z]", "[\"cam-1/x.y_Z\"]"_q},
    {"bareWordBeginsWithUnderscore", "[_1]", "[\"_1\"]"_q},

    {"doubleQuoted", "[\"a b\"]", "[\"a b\"]"_q},
    {"singleQuoted", "['a b']", "[\"a b\"]"_q},
    {"emptyStrings", "[\"\", '']", "[\"\", \"\"]"_q},
    {"escapesStayAsTheyStand", "{\"k\": \"a\\tb\"}", "{\"k\": \"a\\tb\"}"_q},
    {"allEscapes", "[\"\\\"\\/\\\\\\b\\f\\n\\r\\t\"]", "[\"\\\"\\/\\\\\\b\\f\\n\\r\\t\"]"_q},
    {"allEscapesInSingleQuotes", "['\\'\\/\\\\\\b\\f\\n\\r\\t']", "[\"\\'\\/\\\\\\b\\f\\n\\r\\t\"]"_q},
    {"unicodeEscapeIsSixCharacters", "[\"\\u0041\", '\\uabCD']", "[\"\\uabCD\", \"\\u0041\"]"_q},
    {"otherQuoteInside", "[\"it's\", 'a \"b\"']", "[\"a \"b\"\", \"it's\"]"_q},
    {"commentMarksInside", "[\"/* a */\"]", "[\"/* a */\"]"_q},
    {"latin1", "[\"\xe4\xff\x80\"]", QString::fromLatin1("[\"\xe4\xff\x80\"]")},
    {"zeroByteInAString", "[\"a\0b\"]"_b, QString::fromLatin1("[\"a\0b\"]", 7)},
    {"zeroBytesInAString", "['\0\0a\0']"_b, QString::fromLatin1("[\"\0\0a\0\"]", 8)},
    {"zeroByteInAComment", "[/*\0 a\0*\0/*\0*/1]"_b, "[1]"_q},
    {"stringOfManyPieces", "[\"a\\nb\\u0041c\\\\d\"]", "[\"a\\nb\\u0041c\\\\d\"]"_q},

    {"strayCharacterEndsTheText", "{} #", "{}"_q},
    {"nothingIsLookedAtBehindAStrayCharacter", "[1]#}}} \" /*", "[1]"_q},
    {"commentBehind", "{}/* c */", "{}"_q},
    {"unendedCommentBehind", "{}/* c", "{}"_q},
    {"zeroByteEndsTheText", "[1]\0 2"_b, "[1]"_q},
    {"lonelySlashEndsTheText", "[1]/ 2", "[1]"_q},
    {"lonelyMinusEndsTheText", "[1]- 2", "[1]"_q},
};

struct Rejected
{
    const char *name;
    QByteArray text;
    QString message;
    int start;
    int end;
};

const Rejected kRejected[] = {
    {"empty", "", "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0},
    {"onlySpace", "  ", "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 2},
    {"scalarNumber", "5", "syntax error, unexpected TNUMBER, expecting '{' or '['"_q, 0, 1},
    {"scalarString", "\"x\"", "syntax error, unexpected TSTRING, expecting '{' or '['"_q, 0, 3},
    {"scalarBoolean", "true", "syntax error, unexpected TBOOL, expecting '{' or '['"_q, 0, 4},
    {"wordBehind", "{} xyz", "syntax error, unexpected TSTRING, expecting $end"_q, 3, 6},
    {"numberAsKey", "{1:2}", "syntax error, unexpected TNUMBER, expecting TSTRING or '}'"_q, 1, 2},
    {"twoValues", "[1 2]", "syntax error, unexpected TNUMBER, expecting ']'"_q, 3, 4},
    {"keyAlone", "{a}", "syntax error, unexpected '}', expecting ':'"_q, 2, 3},
    {"commaAtTheEnd", "[1,]", "syntax error, unexpected ']'"_q, 3, 4},
    {"minusZero", "[-0]", "syntax error, unexpected $end"_q, 1, 2},
    {"fractionAlone", "[.5]", "syntax error, unexpected $end"_q, 1, 2},
    {"numberWithPoint", "[1.]", "syntax error, unexpected $end, expecting ']'"_q, 2, 3},
    {"exponentWithoutDigits", "[1e]", "syntax error, unexpected TSTRING, expecting ']'"_q, 2, 3},
    {"exponentWithSignOnly", "[1e+]", "syntax error, unexpected TSTRING, expecting ']'"_q, 2, 3},
    {"zeroAndExponent", "[0e5]", "syntax error, unexpected TSTRING, expecting ']'"_q, 2, 4},
    {"leadingZero", "[01]", "syntax error, unexpected TNUMBER, expecting ']'"_q, 2, 3},
    {"plusSign", "[+1]", "syntax error, unexpected $end"_q, 1, 2},
    {"minusAndLeadingZero", "[-01]", "syntax error, unexpected $end"_q, 1, 2},
    {"tabInAString", "[\"a\tb\"]", "syntax error, unexpected $end"_q, 1, 4},
    {"lineFeedInAString", "[\"a\nb\"]", "syntax error, unexpected $end"_q, 1, 4},
    {"carriageReturnInAString", "['a\rb']", "syntax error, unexpected $end"_q, 1, 4},
    {"deleteInAString", "[\"\x7f\"]", "syntax error, unexpected $end"_q, 1, 3},
    {"unknownEscape", "[\"\\x\"]", "syntax error, unexpected $end"_q, 1, 3},
    {"otherQuoteEscaped", "[\"\\'\"]", "syntax error, unexpected $end"_q, 1, 3},
    {"otherQuoteEscapedInSingleQuotes", "['\\\"']", "syntax error, unexpected $end"_q, 1, 3},
    {"shortUnicodeEscape", "[\"ab\\u12\"]", "syntax error, unexpected $end"_q, 1, 5},
    {"unendedString", "[\"abc", "syntax error, unexpected $end"_q, 1, 5},
    {"stringSpansItsQuotes", "{'a b' 'c d'}", "syntax error, unexpected TSTRING, expecting ':'"_q,
        7, 12},
    {"unendedComment", "[1,/* abc", "syntax error, unexpected $end"_q, 5, 9},
    {"commentMovesTheLocation", "[1,/* abc */", "syntax error, unexpected $end"_q, 10, 12},
    {"unendedCommentWithStar", "[1,/* a*b", "syntax error, unexpected $end"_q, 7, 9},
    {"zeroBytesInACommentAreOfItsRun", "[1,/*ab\0cd\0"_b, "syntax error, unexpected $end"_q, 5, 11},
    {"highByteOutsideOfStrings", "[\xe4]", "syntax error, unexpected $end"_q, 1, 2},
    {"zeroByte", "[\0]"_b, "syntax error, unexpected $end"_q, 1, 2},
    {"slash", "[/]", "syntax error, unexpected $end"_q, 1, 2},
    {"secondValueBehind", "[1][2]", "syntax error, unexpected '[', expecting $end"_q, 3, 4},
    {"closedTwice", "{}}", "syntax error, unexpected '}', expecting $end"_q, 2, 3},
    {"closedByTheWrongMark", "[1}", "syntax error, unexpected '}', expecting ']'"_q, 2, 3},
    {"twoKeys", "{a:1 b:2}", "syntax error, unexpected TSTRING, expecting '}'"_q, 5, 6},
    {"spaceBehindAMarkAtTheEnd", "[1, \n", "syntax error, unexpected $end"_q, 3, 5},
    {"spaceBehindAMark", "[1, \n]", "syntax error, unexpected ']'"_q, 5, 6},
    {"markBeforeSpace", "[ : 1]", "syntax error, unexpected ':'"_q, 2, 3},
    {"spaceBehindTheList", "[1] \n x", "syntax error, unexpected TSTRING, expecting $end"_q, 6, 7},
    {"twoCommas", "[1,,2]", "syntax error, unexpected ','"_q, 3, 4},
};
// clang-format on

} // namespace

class AlarmListAccepted : public testing::TestWithParam<Accepted>
{
};

TEST_P(AlarmListAccepted, is)
{
    EXPECT_EQ(shown(parsed(GetParam().text)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(AlarmListText, AlarmListAccepted, testing::ValuesIn(kAccepted), nameOfRow);

class AlarmListRejected : public testing::TestWithParam<Rejected>
{
};

TEST_P(AlarmListRejected, is)
{
    const Rejected &row = GetParam();
    expectParseError([&] { parsed(row.text); }, row.message, 0, row.start, row.end);
}

INSTANTIATE_TEST_SUITE_P(AlarmListText, AlarmListRejected, testing::ValuesIn(kRejected), nameOfRow);

TEST(AlarmListText, valuesHaveTheTypesOfTheirTokens)
{
    const QVariantMap map = parsed("{s:x,n:1,b:true,z:null,l:[],m:{}}").toMap();
    EXPECT_EQ(map["s"_q].userType(), QMetaType::QString);
    EXPECT_EQ(map["n"_q].userType(), QMetaType::Double);
    EXPECT_EQ(map["b"_q].userType(), QMetaType::Bool);
    EXPECT_FALSE(map["z"_q].isValid());
    EXPECT_EQ(map["l"_q].userType(), QMetaType::QVariantList);
    EXPECT_EQ(map["m"_q].userType(), QMetaType::QVariantMap);
    EXPECT_EQ(parsed("[]").userType(), QMetaType::QVariantList);
    EXPECT_EQ(parsed("{}").userType(), QMetaType::QVariantMap);
}

TEST(AlarmListText, singleLookupOfARepeatedKeyGivesTheFirstInTheText)
{
    const QVariantMap map = parsed("{a:1, b:0, a:2, a:3}").toMap();
    EXPECT_EQ(map.value("a"_q).toDouble(), 1.0);
    const QMultiMap<QString, QVariant> all(map);
    EXPECT_EQ(all.values("a"_q), (QList<QVariant>{1.0, 2.0, 3.0}));
}

TEST(AlarmListText, emptyStringsAreNull)
{
    const QVariantList strings = parsed("[\"\", '', \"\\n\"]").toList();
    EXPECT_FALSE(strings.at(0).toString().isNull());
    EXPECT_TRUE(strings.at(1).toString().isNull());
    EXPECT_TRUE(strings.at(2).toString().isNull());
    EXPECT_EQ(strings.at(1).userType(), QMetaType::QString);
    EXPECT_TRUE(parsed("{'':1}").toMap().contains(""_q));
}

TEST(AlarmListText, negativeZeroKeepsItsSign)
{
    EXPECT_TRUE(std::signbit(parsed("[-0.0]").toList().first().toDouble()));
    EXPECT_TRUE(std::signbit(parsed("[-1e-400]").toList().first().toDouble()));
    EXPECT_FALSE(std::signbit(parsed("[0]").toList().first().toDouble()));
}

// With n * n steps, as many zero bytes would take hours.
TEST(AlarmListText, manyZeroBytesTakeNoLongerThanOthers)
{
    const QByteArray zeros(4000000, '\0');
    EXPECT_EQ(parsed("['" + zeros + "']").toList().first().toString().size(), 4000000);
    EXPECT_EQ(shown(parsed("[/*" + zeros + "*/]")), "[]"_q);
    expectParseError([&] { parsed("[1 \"" + zeros); },
                     "syntax error, unexpected $end, expecting ']'"_q, 0, 3, 4000004);
}

TEST(AlarmListText, longTextsKeepEveryByte)
{
    const QByteArray run = repeated("abc \xe4", 20000);
    EXPECT_EQ(parsed("[\"" + run + "\"]").toList().first().toString(), QString::fromLatin1(run));
    EXPECT_EQ(parsed("[/*" + run + "*/'x']").toList().first().toString(), "x"_q);
    const QByteArray word = repeated("ab-", 20000);
    EXPECT_EQ(parsed("{" + word + ":1}").toMap().firstKey(), QString::fromLatin1(word));
    const QByteArray digits = repeated("1", 400);
    EXPECT_TRUE(std::isinf(parsed("[" + digits + "]").toList().first().toDouble()));
    EXPECT_EQ(parsed("[0." + digits + "]").toList().first().toDouble(), 1.0 / 9);
}

// ---- The stack ----------------------------------------------------------------------------------

TEST(AlarmListStack, holds99ElementsOfAFlatArray)
{
    EXPECT_EQ(parsed("[" + repeated("1", 99, ",") + "]").toList().size(), 99);
    // With the comma before the hundredth value the stack is full.
    expectParseError([] { parsed("[" + repeated("1", 100, ",") + "]"); }, "memory exhausted"_q, 0,
                     198, 199);
}

TEST(AlarmListStack, holds98MembersOfAFlatObject)
{
    // The colon of the 99th member fills the stack.
    EXPECT_EQ(parsed("{" + repeated("a:1", 98, ",") + "}").toMap().size(), 98);
    expectParseError([] { parsed("{" + repeated("a:1", 99, ",") + "}"); }, "memory exhausted"_q, 0,
                     394, 395);
}

TEST(AlarmListStack, holds197NestedArrays)
{
    EXPECT_NO_THROW(parsed(repeated("[", 197) + repeated("]", 197)));
    expectParseError([] { parsed(repeated("[", 198) + repeated("]", 198)); }, "memory exhausted"_q,
                     0, 198, 199);
    expectParseError([] { parsed(repeated("[", 100000)); }, "memory exhausted"_q, 0, 198, 199);
}

TEST(AlarmListStack, holds66NestedObjects)
{
    // An object waits with three symbols: its brace, the key and the colon.
    EXPECT_NO_THROW(parsed(repeated("{a:", 65) + "{}" + repeated("}", 65)));
    expectParseError([] { parsed(repeated("{a:", 66) + "{}" + repeated("}", 66)); },
                     "memory exhausted"_q, 0, 198, 199);
}

TEST(AlarmListStack, isEmptyAgainForTheNextText)
{
    AlarmListParser parser;
    QByteArray tooDeep = repeated("{a:", 70);
    EXPECT_THROW(parser.parse(&tooDeep), ParseException);
    QByteArray deep = repeated("{a:", 65) + "{}" + repeated("}", 65);
    EXPECT_NO_THROW(parser.parse(&deep));
}
