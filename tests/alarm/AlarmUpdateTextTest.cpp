// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What texts mean: tokens, values, order, limits; and the messages of every state.

#include "alarm/AlarmUpdateModel.h"

#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScriptTest.h"
#include "alarm/Shown.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vn;

namespace {

class AlarmUpdateText : public ScriptTest
{
protected:
    QScriptValue parsed(QByteArray text) { return m_parser.parse(&text); }

    QString shownPrototype(const QScriptValue &object)
    {
        const QScriptValue usual = m_engine.newObject().prototype();
        return object.prototype().strictlyEquals(usual) ? "usual"_q : shown(object.prototype());
    }

    AlarmUpdateParser m_parser{&m_engine};
};

struct Accepted
{
    const char *name;
    QByteArray text;
    QString value;
};

// clang-format off
const Accepted kAccepted[] = {
    {"onePair", "x=1", "{x: 1}"_q},
    {"lastPairIsTheFirstProperty", "x=1;y=2.5;z=true", "{z: true, y: 2.5, x: 1}"_q},
    {"leftmostOfARepeatedKeyWins", "x=1;x=2", "{x: 1}"_q},
    {"leftmostOfARepeatedKeyWins_inThePlaceOfTheLast", "x=1;y=2;x=3", "{x: 1, y: 2}"_q},
    {"listComesOutInReverse", "x=a,b,c", "{x: [\"c\", \"b\", \"a\"]}"_q},
    {"listOfTwo", "x=front,back", "{x: [\"back\", \"front\"]}"_q},
    {"singleStringIsNoList", "x=a", "{x: \"a\"}"_q},
    {"repeatedKeyWithLists", "x=a,b;x=c,d", "{x: [\"b\", \"a\"]}"_q},

    {"errorReport", "#Camera offline:2.0", "{Camera offline: 2}"_q},
    {"nothingIsReadBehindAnErrorReport", "#Camera offline:2.0;x=1", "{Camera offline: 2}"_q},
    {"errorReportWithAnotherTokenBehind", "#m:1.5#=,\"", "{m: 1.5}"_q},
    {"errorReportWithLineEnd", "#m:-.5\n", "{m: -0.5}"_q},
    {"quotedErrorReport", "#\"a:b\":1.0", "{\"a:b\": 1}"_q},

    {"integer", "x=120", "{x: 120}"_q},
    {"negativeInteger", "x=-5", "{x: -5}"_q},
    {"leadingZeros", "x=0012", "{x: 12}"_q},
    {"minusZero", "x=-0", "{x: 0}"_q},
    {"largestInteger", "x=2147483647", "{x: 2147483647}"_q},
    {"integersAreCutTo32Bits", "x=2147483648", "{x: -2147483648}"_q},
    {"integersWrap", "x=4294967297", "{x: 1}"_q},
    {"tooLargeIntegerIsMinusOne", "x=99999999999999999999", "{x: -1}"_q},
    {"tooSmallIntegerIsZero", "x=-99999999999999999999", "{x: 0}"_q},
    {"number", "x=2.5", "{x: 2.5}"_q},
    {"numberWithoutIntegerPart", "x=.5", "{x: 0.5}"_q},
    {"negativeNumberWithoutIntegerPart", "x=-.5", "{x: -0.5}"_q},
    {"numberWithLeadingZeros", "x=007.25", "{x: 7.25}"_q},
    {"booleans", "x=true;y=false", "{y: false, x: true}"_q},
    {"date", "d=2010-05-01", "{d: 2010-05-01T00:00:00.000}"_q},
    {"leapDay", "d=2012-02-29", "{d: 2012-02-29T00:00:00.000}"_q},
    {"noSuchDay", "d=2010-13-45", "{d: invalid date}"_q},
    {"noLeapDay", "d=2011-02-29", "{d: invalid date}"_q},
    {"noYearZero", "d=0000-01-01", "{d: invalid date}"_q},
    {"timeHasNoDay", "t=12:30:00", "{t: invalid date}"_q},
    {"noSuchTime", "t=99:99:99", "{t: invalid date}"_q},
    {"dateAndTime", "d=2010-05-01;t=12:30:00", "{t: invalid date, d: 2010-05-01T00:00:00.000}"_q},

    {"spacesBelongToWords", "key = value", "{key : \" value\"}"_q},
    {"spaceBehindANumber", "x=5 ", "{x: \"5 \"}"_q},
    {"spaceBehindANegativeNumber_isSkipped", "x=-5 ;y=-1.5\t", "{y: -1.5, x: -5}"_q},
    {"spaceBeforeANumber", "x= 5", "{x: \" 5\"}"_q},
    {"spaceBehindABoolean", "x=true ", "{x: \"true \"}"_q},
    {"letterBehindANumber", "x=1.5a", "{x: \"1.5a\"}"_q},
    {"pointBehindANumber", "x=1.", "{x: \"1.\"}"_q},
    {"tabInAWord", "x=a\tb", "{x: \"a\tb\"}"_q},
    {"allWordCharacters", "x=./09AZ[\\]^_az", "{x: \"./09AZ[\\]^_az\"}"_q},
    {"lineEndsBetweenPairs", "x=1;\n y=2;\r\n\tz=3\n", "{z: 3, y: 2, x: 1}"_q},
    {"spaceBeforeAMarkIsSkipped", "x=\"q\" ;y=1", "{y: 1, x: \"\"q\"\"}"_q},
    {"spaceBehindATimeIsSkipped", "x=12:30:00 ", "{x: invalid date}"_q},
    {"quotedStringKeepsItsQuotes", "x=\"a;b\"", "{x: \"\"a;b\"\"}"_q},
    {"quotedStringWithLineEnd", "x=\"a\nb\"", "{x: \"\"a\nb\"\"}"_q},
    {"emptyQuotedString", "x=\"\"", "{x: \"\"\"\"}"_q},
    {"quotedKey", "\"k\"=1", "{\"k\": 1}"_q},
    {"latin1InQuotes", "x=\"\xe4\"", QString::fromLatin1("{x: \"\"\xe4\"\"}")},
    {"zeroByteInQuotes", "x=\"a\0b\""_b, QString::fromLatin1("{x: \"\"a\0b\"\"}", 12)},
    {"zeroBytesInQuotes", "x=\"\0\0a\0\";y=1"_b, QString::fromLatin1("{y: 1, x: \"\"\0\0a\0\"\"}", 19)},
    {"unclosedQuoteWithZeroBytesEndsTheText", "x=1\"a\0b\0"_b, "{x: 1}"_q},
    {"singleLetterA", "a=1", "{a: 1}"_q},
    {"keyLikeANumberWithSpace", "1 =2", "{1 : 2}"_q},

    {"strayCharacterEndsTheText", "x=1!", "{x: 1}"_q},
    {"nothingIsLookedAtBehindAStrayCharacter", "x=1!;;;", "{x: 1}"_q},
    {"unclosedQuoteEndsTheText", "x=1\"abc", "{x: 1}"_q},
    {"highByteEndsTheText", "x=a\xe4", "{x: \"a\"}"_q},
    {"zeroByteEndsTheText", "x=1\0;y"_b, "{x: 1}"_q},
};
// clang-format on

struct Rejected
{
    const char *name;
    QByteArray text;
    QString message;
    int start;
    int end;
};

// clang-format off
const Rejected kRejected[] = {
    {"empty", "", "syntax error, unexpected $end, expecting TSTRING or '#' or 'a'"_q, 0, 0},
    {"onlySpace", " \n ", "syntax error, unexpected $end, expecting TSTRING or '#' or 'a'"_q, 0, 3},
    {"markAtTheEnd", "x=1;", "syntax error, unexpected $end, expecting TSTRING"_q, 3, 4},
    {"markAndSpaceAtTheEnd", "x=1; ", "syntax error, unexpected $end, expecting TSTRING"_q, 4, 5},
    {"keyAlone", "x", "syntax error, unexpected $end, expecting '='"_q, 0, 1},
    {"valueMissing", "x=", "syntax error, unexpected $end"_q, 1, 2},
    {"valueMissingBehindTheLetterA", "a=", "syntax error, unexpected $end"_q, 1, 2},
    {"valueOfSpaceAlone", "x= ", "syntax error, unexpected $end"_q, 2, 3},
    {"integerInAnErrorReport", "#m:1", "syntax error, unexpected TINTEGER, expecting TFLOAT"_q, 3, 4},
    {"wordBehindTheNumberOfAnErrorReport", "#Camera offline:2.0 later",
        "syntax error, unexpected TSTRING, expecting TFLOAT"_q, 16, 25},
    {"twoValues", "x=1=", "syntax error, unexpected '=', expecting $end"_q, 3, 4},
    {"listOfNumbers", "x=1,2", "syntax error, unexpected ',', expecting $end"_q, 3, 4},
    {"numberInAList", "x=a,2", "syntax error, unexpected TINTEGER, expecting TSTRING"_q, 4, 5},
    {"listOfDates", "x=2010-05-01,a", "syntax error, unexpected ',', expecting $end"_q, 12, 13},
    {"keyLikeANumber", "1=2", "syntax error, unexpected TINTEGER, expecting TSTRING or '#' or 'a'"_q,
        0, 1},
    {"keyLikeABoolean", "true=2",
        "syntax error, unexpected TBOOL, expecting TSTRING or '#' or 'a'"_q, 0, 4},
    {"minusIsNoWordCharacter", "x=a-b", "syntax error, unexpected $undefined, expecting $end"_q, 3, 4},
    {"lonelyMinus", "x=-", "syntax error, unexpected $undefined"_q, 2, 3},
    {"twoIntegers", "x=1234-56", "syntax error, unexpected TINTEGER, expecting $end"_q, 6, 9},
    {"integerAndWord", "x=-5a", "syntax error, unexpected TSTRING, expecting $end"_q, 4, 5},
    {"dateAndDigit", "x=2010-05-011", "syntax error, unexpected TINTEGER, expecting $end"_q, 12, 13},
    {"timeAndWord", "x=12:30:00 z", "syntax error, unexpected TSTRING, expecting $end"_q, 10, 12},
    {"spaceBetweenMarksIsSkipped", "x=1; ;", "syntax error, unexpected ';', expecting TSTRING"_q, 5, 6},
    {"spaceInAListIsSkipped", "x=a, ,b", "syntax error, unexpected ',', expecting TSTRING"_q, 5, 6},
    {"twoPairsWithoutMark", "x=1\ny=2", "syntax error, unexpected TSTRING, expecting $end"_q, 4, 5},
    {"unclosedQuoteAsValue", "x=\"abc", "syntax error, unexpected $end"_q, 2, 3},
    {"unclosedQuoteWithZeroBytesAsValue", "x=\"a\0b"_b, "syntax error, unexpected $end"_q, 2, 3},
    {"unclosedQuoteThatEndsWithAZeroByteAsValue", "x=\"a\0"_b, "syntax error, unexpected $end"_q, 2, 3},
    {"strayCharacterAsValue", "x=!", "syntax error, unexpected $end"_q, 2, 3},
    {"errorReportBehindAPair", "x=1;#m:1.0", "syntax error, unexpected '#', expecting TSTRING"_q, 4, 5},
};
// clang-format on

QByteArray repeated(const QByteArray &piece, int count, const QByteArray &separator)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += (i > 0 ? separator : QByteArray()) + piece;
    return text;
}

} // namespace

TEST_F(AlarmUpdateText, isAccepted)
{
    for (const Accepted &row : kAccepted) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(shown(parsed(row.text)), row.value);
    }
}

TEST_F(AlarmUpdateText, isRejected)
{
    for (const Rejected &row : kRejected) {
        SCOPED_TRACE(row.name);
        expectParseError([&] { parsed(row.text); }, row.message, 0, row.start, row.end);
    }
}

TEST_F(AlarmUpdateText, valuesHaveTheTypesOfTheirTokens)
{
    const QScriptValue object = parsed("i=1;f=1.0;b=true;d=2010-05-01;t=12:30:00;s=x;l=x,y");
    EXPECT_TRUE(object.isObject());
    EXPECT_EQ(object.engine(), &m_engine);
    EXPECT_TRUE(object.property("i"_q).isNumber());
    EXPECT_TRUE(object.property("f"_q).isNumber());
    EXPECT_TRUE(object.property("b"_q).isBool());
    EXPECT_TRUE(object.property("d"_q).isDate());
    EXPECT_TRUE(object.property("t"_q).isDate());
    EXPECT_TRUE(object.property("s"_q).isString());
    EXPECT_TRUE(object.property("l"_q).isArray());
    EXPECT_EQ(object.property("l"_q).property("length"_q).toInt32(), 2);
}

TEST_F(AlarmUpdateText, scriptsReadTheResult)
{
    m_engine.globalObject().setProperty("update"_q, parsed("state=1;cams=front,back;level=-.5"));
    EXPECT_EQ(m_engine.evaluate("update.cams.join('+') + update.state + update.level"_q).toString(),
              "back+front1-0.5"_q);
}

TEST_F(AlarmUpdateText, dateIsLocalMidnight)
{
    // Summer and winter time of the zone of all tests, and the last hours before it had either.
    EXPECT_EQ(parsed("d=2010-05-01").property("d"_q).toNumber(), 1272664800000.0);
    EXPECT_EQ(parsed("d=2010-01-01").property("d"_q).toNumber(), 1262300400000.0);
    EXPECT_EQ(parsed("d=1970-01-01").property("d"_q).toNumber(), -3600000.0);
    EXPECT_EQ(parsed("d=2010-05-01").property("d"_q).toDateTime(),
              QDateTime(QDate(2010, 5, 1), QTime(0, 0)));
    EXPECT_TRUE(std::isnan(parsed("d=2010-13-45").property("d"_q).toNumber()));
    EXPECT_TRUE(std::isnan(parsed("t=12:30:00").property("t"_q).toNumber()));
}

TEST_F(AlarmUpdateText, propertyNamesMayBeAnything)
{
    // What the steps of the rules give, one after another, for names that objects know already.
    const QList<QByteArray> names = {"__proto__", "length", "toString",       "constructor",
                                     "0",         "1",      "hasOwnProperty", "__defineGetter__",
                                     "prototype", "\"\""};
    const QList<QByteArray> values = {"1", "text", "2010-05-01", "p,q"};
    for (const QByteArray &first : names) {
        for (const QByteArray &second : names) {
            for (const QByteArray &value : values) {
                // A number is a key only with something behind it.
                const QByteArray left = first + (first.size() == 1 ? "/" : "");
                const QByteArray right = second + (second.size() == 1 ? "/" : "");
                SCOPED_TRACE((left + "=" + value + ";" + right + "=r,s").constData());
                QScriptValue members =
                    m_parser.keyValue(QString::fromLatin1(right), parsed("v=r,s").property("v"_q));
                const QScriptValue pair = m_parser.keyValue(QString::fromLatin1(left),
                                                            parsed("v=" + value).property("v"_q));
                const QScriptValue expected = m_parser.addProperties(members, pair);
                const QScriptValue object = parsed(left + "=" + value + ";" + right + "=r,s");
                EXPECT_EQ(shown(object), shown(expected));
                EXPECT_EQ(shownPrototype(object), shownPrototype(expected));
            }
        }
    }
}

// With n * n steps, as many zero bytes would take hours.
TEST_F(AlarmUpdateText, manyZeroBytesTakeNoLongerThanOthers)
{
    const QByteArray zeros(4000000, '\0');
    EXPECT_EQ(parsed("x=\"" + zeros + "\"").property("x"_q).toString().size(), 4000002);
    expectParseError([&] { parsed("x=\"" + zeros); }, "syntax error, unexpected $end"_q, 0, 2, 3);
}

TEST_F(AlarmUpdateText, longTextsKeepEveryByte)
{
    const QByteArray word = repeated("a b", 30000, ".");
    EXPECT_EQ(parsed("x=" + word).property("x"_q).toString(), QString::fromLatin1(word));
    const QByteArray quote = "\"" + repeated(";\n", 30000, "=") + "\"";
    EXPECT_EQ(parsed("x=" + quote).property("x"_q).toString(), QString::fromLatin1(quote));
}

// ---- The stack ----------------------------------------------------------------------------------

TEST_F(AlarmUpdateText, stackHolds98Pairs)
{
    const QScriptValue object = parsed(repeated("x=1", 97, ";") + ";last=1");
    EXPECT_EQ(shown(object), "{last: 1, x: 1}"_q);
    EXPECT_NO_THROW(parsed(repeated("x=1", 98, ";")));
    // The value of the 99th pair fills the stack.
    expectParseError([&] { parsed(repeated("x=1", 99, ";")); }, "memory exhausted"_q, 0, 394, 395);
}

TEST_F(AlarmUpdateText, stackHolds98StringsOfAList)
{
    const QScriptValue list = parsed("x=" + repeated("s", 98, ",")).property("x"_q);
    EXPECT_EQ(list.property("length"_q).toInt32(), 98);
    // The 99th string fills the stack.
    expectParseError([&] { parsed("x=" + repeated("s", 99, ",")); }, "memory exhausted"_q, 0, 198,
                     199);
}

// ---- Messages -----------------------------------------------------------------------------------

namespace {

struct Token
{
    const char *name;
    const char *text; // the end has none
};

// 'a' is missing: the scanner takes it for a string.
const Token kTokens[] = {
    {"$end", ""},          {"$undefined", "-"}, {"TSTRING", "\"w\""},
    {"TINTEGER", "-12"},   {"TFLOAT", "-1.5"},  {"TDATE", "2010-05-01"},
    {"TTIME", "12:30:00"}, {"TBOOL", "true"},   {"';'", ";"},
    {"'='", "="},          {"','", ","},        {"'#'", "#"},
    {"':'", ":"},
};

struct State
{
    const char *name;
    const char *text; // leads to the state; the end of the text finds its last token
    int lastTokenStart;
    const char *expected;       // names of tokens in the order of messages
    bool namesExpected;         // there are four at most
    const char *alsoTaken = ""; // by a reduction that leads on
};

// clang-format off
const State kStates[] = {
    {"begin", "", 0, "TSTRING '#' 'a'", true},
    {"key", "\"k\"", 0, "'='", true},
    {"equals", "\"k\"=", 3, "TSTRING TINTEGER TFLOAT TDATE TTIME TBOOL", false},
    {"integer", "\"k\"=1", 4, "$end", true, "';'"},
    {"float", "\"k\"=.5", 4, "$end", true, "';'"},
    {"date", "\"k\"=2010-05-01", 4, "$end", true, "';'"},
    {"time", "\"k\"=12:30:00", 4, "$end", true, "';'"},
    {"boolean", "\"k\"=true", 4, "$end", true, "';'"},
    {"string", "\"k\"=\"s\"", 4, "$end", true, "';' ','"},
    {"listComma", "\"k\"=\"s\",", 7, "TSTRING", true},
    {"list", "\"k\"=\"s\",\"t\"", 8, "$end", true, "';' ','"},
    {"pairMark", "\"k\"=1;", 5, "TSTRING", true},
    {"secondPair", "\"k\"=1;\"l\"=2", 10, "$end", true, "';'"},
    {"hash", "#", 0, "TSTRING", true},
    {"errorMessage", "#\"m\"", 1, "':'", true},
    {"errorColon", "#\"m\":", 4, "TFLOAT", true},
};
// clang-format on

} // namespace

TEST_F(AlarmUpdateText, messageOfEveryTokenInEveryState)
{
    std::set<int> reached;
    int count = 0;
    for (const State &state : kStates) {
        const QStringList expected = QString::fromLatin1(state.expected).split(" "_q);
        const QStringList taken = expected + QString::fromLatin1(state.alsoTaken).split(" "_q);
        for (const Token &token : kTokens) {
            if (taken.contains(QString::fromLatin1(token.name)))
                continue;
            SCOPED_TRACE(std::string(state.name) + ", then " + token.name);
            // A line end keeps tokens apart; it is a skipped run and moves the location.
            const QByteArray prefix = state.text;
            const QByteArray text = prefix + (*token.text ? "\n" : "") + token.text;
            const int start = *token.text ? prefix.size() + 1 : state.lastTokenStart;
            QString message = "syntax error, unexpected "_q + QString::fromLatin1(token.name);
            if (state.namesExpected)
                message += ", expecting "_q + expected.join(" or "_q);
            expectParseError([&] { parsed(text); }, message, 0, start, text.size());
            EXPECT_EQ(m_parser.errorMessage(), message);
            reached.insert(AlarmUpdateModel::parse(text).errorState);
            ++count;
        }
    }
    // The one that is missing would be reached by the character token 'a'.
    EXPECT_EQ(reached.size() + 1, AlarmUpdateModel::tables().errorStates().size());
    EXPECT_EQ(count, 176);
}
