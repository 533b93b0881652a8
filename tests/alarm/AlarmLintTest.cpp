// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmLint.h"

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScriptTest.h"
#include "base/Exceptions.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "support/Random.h"

#include <gtest/gtest.h>

#include <optional>

using namespace vn;

namespace {

/** "error 1:2-1:5 @1+3 code: message", a line each. */
QString shown(const Findings &findings)
{
    QStringList lines;
    for (const Finding &finding : findings) {
        const char *const severities[] = {"error", "warning", "note"};
        const TextRange &range = finding.range;
        lines << "%1 %2:%3-%4:%5 @%6+%7 %8: "_q
                         .arg(QString::fromLatin1(severities[int(finding.severity)]))
                         .arg(range.line)
                         .arg(range.column)
                         .arg(range.endLine)
                         .arg(range.endColumn)
                         .arg(range.offset)
                         .arg(range.length)
                         .arg(finding.code) +
                     finding.message;
    }
    return lines.join("\n"_q);
}

struct Row
{
    const char *name;
    QByteArray text;
    const char *findings;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

std::string nameOf(const testing::TestParamInfo<Row> &info)
{
    return info.param.name;
}

QByteArray repeated(const char *text, int count)
{
    return QByteArray(text).repeated(count);
}

/** Expects what is promised of errors: none where @p refusal is none, else its place and message
 * first. */
void expectErrorsAsRefused(const Findings &findings, const std::optional<ParseException> &refusal)
{
    const Finding *first = nullptr;
    qint64 last = 0;
    for (const Finding &finding : findings) {
        EXPECT_NE(finding.code, "refused"_q);
        EXPECT_GE(finding.range.offset, last);
        last = finding.range.offset;
        if (!first && finding.severity == Finding::Severity::Error)
            first = &finding;
    }
    ASSERT_EQ(first != nullptr, refusal.has_value()) << shown(findings).toStdString();
    if (!first)
        return;
    EXPECT_EQ(first->range.offset, refusal->startColumn());
    EXPECT_EQ(first->range.offset + first->range.length, refusal->endColumn());
    EXPECT_TRUE(first->message.endsWith(" ("_q + refusal->message() + ")"_q))
        << shown(findings).toStdString();
}

/** Bytes that mean something, in a row. */
QByteArray anyText(Random &random, const QList<QByteArray> &pieces)
{
    QByteArray text;
    for (unsigned count = random.below(16); count > 0; --count)
        text += random.oneOf(pieces);
    return text;
}

} // namespace

// ---- Lists -------------------------------------------------------------------------------------

class AlarmListLint : public testing::TestWithParam<Row>
{
};

TEST_P(AlarmListLint, finds)
{
    EXPECT_EQ(shown(alarmListFindings(GetParam().text)), QString::fromUtf8(GetParam().findings));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, AlarmListLint, testing::Values(
    Row{"nothingInAGoodList", "{gate: {armed: true, cams: ['front', 'back'], level: 0.5}, z: null}\n", ""},
    Row{"emptyText", "", "error 1:1-1:1 @0+0 list-expected: the text ends where { or [ was expected (syntax error, unexpected $end, expecting '{' or '[')"},
    Row{"scalarAlone", "5", "error 1:1-1:2 @0+1 list-expected: the number 5 where { or [ was expected (syntax error, unexpected TNUMBER, expecting '{' or '[')"},
    Row{"missingComma", "[1 2\n 'a' 3]",
        "error 1:4-1:5 @3+1 comma-expected: the number 2 where a comma or ] was expected (syntax error, unexpected TNUMBER, expecting ']')\n"
        "error 2:2-2:5 @6+3 comma-expected: the text \"a\" where a comma or ] was expected\n"
        "error 2:6-2:7 @10+1 comma-expected: the number 3 where a comma or ] was expected"},
    Row{"missingValueAndColon", "{a: , b 5, c:}",
        "error 1:5-1:6 @4+1 value-expected: a comma where a value was expected (syntax error, unexpected ',')\n"
        "error 1:9-1:10 @8+1 colon-expected: the number 5 where a colon was expected\n"
        "error 1:14-1:15 @13+1 value-expected: } where a value was expected"},
    Row{"keysThatAreNone", "{1: 2, [3], true: 4}",
        "error 1:2-1:3 @1+1 key-expected: the number 1 where a key or } was expected (syntax error, unexpected TNUMBER, expecting TSTRING or '}')\n"
        "error 1:8-1:9 @7+1 key-expected: [ where a key was expected\n"
        "error 1:13-1:17 @12+4 key-expected: true where a key was expected"},
    Row{"commaAtTheEnd", "[1,]", "error 1:4-1:5 @3+1 value-expected: ] where a value was expected (syntax error, unexpected ']')"},
    Row{"wrongClosingMark", "{a: [1}\n, b: 2 c: 3}",
        "error 1:7-1:8 @6+1 comma-expected: } where a comma or ] was expected (syntax error, unexpected '}', expecting ']')\n"
        "error 2:1-2:2 @8+1 end-expected: a comma where the end was expected"},
    Row{"neverClosed", "[1, {a: 2",
        "error 1:9-1:10 @8+1 not-closed: the text ends where a comma or } was expected: the { at byte 4 is not closed (syntax error, unexpected $end, expecting '}')"},
    Row{"somethingBehindTheEnd", "{} xyz [1 2]", "error 1:4-1:7 @3+3 end-expected: the text \"xyz\" where the end was expected (syntax error, unexpected TSTRING, expecting $end)"},
    Row{"strayCharacters", "[1, #, %]",
        "error 1:5-1:6 @4+1 unexpected-character: \"#\" where a value was expected (syntax error, unexpected $end)\n"
        "error 1:6-1:7 @5+1 value-expected: a comma where a value was expected\n"
        "error 1:8-1:9 @7+1 unexpected-character: \"%\" where a value was expected\n"
        "error 1:9-1:10 @8+1 value-expected: ] where a value was expected"},
    Row{"strayCharacterEndsAListThatIsWhole", "{} # [1 2]", "warning 1:4-1:11 @3+7 rest-not-read: \"#\" ends the text: what follows from here on (7 bytes) is not read"},
    Row{"numbersOfJsonThatAreNone", "[-0]", "error 1:2-1:3 @1+1 number-form: \"-\" where a value or ] was expected: numbers have digits on both sides of their point, no \"+\", and none is \"-0\" (syntax error, unexpected $end)"},
    Row{"leadingZero", "[01]", "error 1:3-1:4 @2+1 number-form: the number 1 where a comma or ] was expected: numbers have no leading zeros, and none is 0 with an exponent (syntax error, unexpected TNUMBER, expecting ']')"},
    Row{"repeatedKeys", "{a: 1, b: 2, 'a': 3}", "warning 1:14-1:17 @13+3 key-repeated: the key \"a\" stands here once more; looking it up gives the first one's value"},
    Row{"sameKeyInAnotherObjectIsNotRepeated", "{a: {a: 1}, b: [{a: 2}, {a: 3}]}", ""},
    Row{"roundedNumbers", "[9007199254740993, 9007199254740992, 1e400, 0.1, 1e-400, 123456789012345678]",
        "warning 1:2-1:18 @1+16 number-not-kept: the number \"9007199254740993\" is rounded: 15 digits are kept, and sizes from 1e-307 to 1e308\n"
        "warning 1:38-1:43 @37+5 number-not-kept: the number \"1e400\" is rounded: 15 digits are kept, and sizes from 1e-307 to 1e308\n"
        "warning 1:50-1:56 @49+6 number-not-kept: the number \"1e-400\" is rounded: 15 digits are kept, and sizes from 1e-307 to 1e308\n"
        "warning 1:58-1:76 @57+18 number-not-kept: the number \"123456789012345678\" is rounded: 15 digits are kept, and sizes from 1e-307 to 1e308"},
    Row{"smallNumbersThatLoseDigits", "[1.23456789012345e-320, 1.23456789012345e-307, 0.0]", "warning 1:2-1:23 @1+21 number-not-kept: the number \"1.23456789012345e-320\" is rounded: 15 digits are kept, and sizes from 1e-307 to 1e308"},
    Row{"escapes", "['a\\nb']", "warning 1:2-1:8 @1+6 escape-not-decoded: escapes stay as they are: the value is \"a\\nb\""},
    Row{"utf8", "[\"Gr\xc3\xb6\xc3\x9f" "e \xf0\x9f\x98\x80\", 2 3]",
        "warning 1:3-1:11 @2+12 utf8-read-as-latin1: the text is UTF-8 and is read as Latin-1, as \"Gr\xc3\x83\xc2\xb6\xc3\x83\\x9fe \xc3\xb0\\x9f\\x98\\x80\"\n"
        "error 1:16-1:17 @19+1 comma-expected: the number 3 where a comma or ] was expected (syntax error, unexpected TNUMBER, expecting ']')"},
    Row{"latin1", "[\"Gr\xf6" "e\", 2 3]", "error 1:12-1:13 @11+1 comma-expected: the number 3 where a comma or ] was expected (syntax error, unexpected TNUMBER, expecting ']')"},
    Row{"lineEndInAText", "{a: 'b\n, c: 1 2}",
        "error 1:5-2:1 @4+3 string-not-closed: this text is not closed before its line ends (syntax error, unexpected $end)\n"
        "error 2:8-2:9 @14+1 comma-expected: the number 2 where a comma or } was expected"},
    Row{"unknownEscape", "['a\\q', 'b\\\"']",
        "error 1:2-1:5 @1+3 unknown-escape: \"\\q\" is no escape of this kind of text (syntax error, unexpected $end)\n"
        "error 1:9-1:12 @8+3 unknown-escape: \"\\\"\" is no escape of this kind of text"},
    Row{"tabInAText", "['a\tb', 1 2]",
        "error 1:2-1:5 @1+3 control-character: the control character \"\\x09\" cannot stand in a text (syntax error, unexpected $end)\n"
        "error 1:11-1:12 @10+1 comma-expected: the number 2 where a comma or ] was expected"},
    Row{"textThatNeverEnds", "['a", "error 1:2-1:4 @1+2 string-not-closed: this text is never closed by ' (syntax error, unexpected $end)"},
    Row{"textThatNeverEndsBehindTheList", "{} 'a",
        "warning 1:4-1:6 @3+2 string-not-closed: this text is never closed, and the parser goes on inside of it with the next list\n"
        "warning 1:4-1:6 @3+2 rest-not-read: \"'\" ends the text: what follows from here on (2 bytes) is not read"},
    Row{"commentThatNeverEnds", "{} /* a", "warning 1:4-1:8 @3+4 comment-not-closed: this comment is never closed, and the parser goes on inside of it with the next list"},
    Row{"commentThatNeverEndsInAList", "[1 /* a",
        "warning 1:4-1:8 @3+4 comment-not-closed: this comment is never closed, and the parser goes on inside of it with the next list\n"
        "error 1:6-1:8 @5+2 not-closed: the text ends where a comma or ] was expected: the [ at byte 0 is not closed (syntax error, unexpected $end, expecting ']')"},
    Row{"commentThatEndsTheProcess", "{} /* a *", "error 1:6-1:9 @5+3 comment-not-closed: this comment is never closed, and ends with \"*\": a parser ends the process here (flex scanner jammed)"}
    ), nameOf);
// clang-format on

TEST(AlarmListLintLimits, areNamed)
{
    const QByteArray full = "[" + repeated("1,", 98) + "1]";
    EXPECT_EQ(shown(alarmListFindings(full)),
              "note 1:180-1:181 @179+1 nearly-too-long-or-deep: much is open here; a little more, "
              "and a parser would refuse the list"_q);
    const QByteArray tooLong = "[" + repeated("1,", 99) + "1]";
    EXPECT_EQ(
        shown(alarmListFindings(tooLong)),
        "error 1:199-1:200 @198+1 too-long-or-deep: too much is open here: level 1, value 100 "
        "of it; an array holds up to 99 values, an object 98, arrays nest up to 197 deep, "
        "and all that is open shares this room (memory exhausted)"_q);
    const QByteArray tooDeep = repeated("[", 198) + repeated("]", 198);
    const Findings findings = alarmListFindings(tooDeep);
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings.first().code, "too-long-or-deep"_q);
    EXPECT_TRUE(findings.first().message.contains("level 198,"_q)) << shown(findings).toStdString();
}

namespace {

std::optional<ParseException> refusalOfList(const QByteArray &text)
{
    QByteArray buffer = text;
    try {
        AlarmListParser parser;
        (void)parser.parse(&buffer);
    } catch (const ParseException &e) {
        return e;
    }
    return std::nullopt;
}

} // namespace

TEST(AlarmListLintProperty, errorsAreThoseOfTheParser)
{
    const QList<QByteArray> pieces = {
        "{",       "}",     "[",   "]",     ",",    ":",    " ",        "\n",    "a",
        "'b'",     "\"c\"", "a:1", "[1,2]", "{a:",  "'b':", ",",        "true",  "null",
        "0",       "-0",    "01",  "1.5",   "1.",   "'",    "\"",       "\\",    "\\n",
        "/* c */", "/*",    "* /", "#",     "\x01", "\xe4", "\xc3\xa4", "'\\x'", "'\\u00e4'",
        "1e400",   "\t",    "]",   "}",     "{}",   "[]"};
    Random random(7);
    int refused = 0;
    int accepted = 0;
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
        QByteArray text = anyText(random, pieces);
        if (random.below(3) == 0)
            text = "[" + text + "]";
        SCOPED_TRACE(text.toHex(' ').constData());
        SCOPED_TRACE(text.constData());
        if (text.endsWith('*'))
            continue; // may end the process
        const std::optional<ParseException> refusal = refusalOfList(text);
        expectErrorsAsRefused(alarmListFindings(text), refusal);
        (refusal ? refused : accepted) += 1;
    }
    EXPECT_GT(refused, 5000);
    EXPECT_GT(accepted, 300);
}

TEST(AlarmListLintProperty, errorsAreThoseOfTheParser_aroundItsLimits)
{
    Random random(8);
    for (int i = 0; i < 400 && !testing::Test::HasFailure(); ++i) {
        QByteArray text;
        QByteArray closing;
        for (unsigned level = 0, levels = 1 + random.below(140); level < levels; ++level) {
            const QList<QByteArray> openings = {"[", "[1,", "{a:", "{a:1,b:"};
            const QByteArray &opening = random.oneOf(openings);
            text += opening;
            closing.prepend(opening.startsWith('[') ? ']' : '}');
        }
        text += "[" + repeated("0,", int(random.below(60))) + "0]" + closing;
        SCOPED_TRACE(text.constData());
        const std::optional<ParseException> refusal = refusalOfList(text);
        const Findings findings = alarmListFindings(text);
        expectErrorsAsRefused(findings, refusal);
        if (refusal) {
            EXPECT_EQ(findings.first().code, "too-long-or-deep"_q);
        }
    }
}

// ---- Updates -----------------------------------------------------------------------------------

class AlarmUpdateLint : public ScriptTest, public testing::WithParamInterface<Row>
{
};

TEST_P(AlarmUpdateLint, finds)
{
    EXPECT_EQ(shown(alarmUpdateFindings(GetParam().text)), QString::fromUtf8(GetParam().findings));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, AlarmUpdateLint, testing::Values(
    Row{"nothingInAGoodUpdate", "state=1;since=2010-05-01;at=12:30:00;cams=front,back;\nlevel=0.5", ""},
    Row{"nothingInAnErrorReport", "#Camera offline:2.0\n", ""},
    Row{"emptyText", "", "error 1:1-1:1 @0+0 key-expected: the text ends where a key or # was expected (syntax error, unexpected $end, expecting TSTRING or '#' or 'a')"},
    Row{"everyPairsFault", "x;y=;=3;z=1,2;w=4 5=6",
        "error 1:2-1:3 @1+1 equals-expected: \";\" where = was expected (syntax error, unexpected ';', expecting '=')\n"
        "error 1:5-1:6 @4+1 value-expected: \";\" where a value was expected\n"
        "error 1:6-1:7 @5+1 key-expected: \"=\" where a key was expected\n"
        "error 1:12-1:13 @11+1 semicolon-expected: \",\" where a semicolon or the end was expected\n"
        "error 1:20-1:21 @19+1 semicolon-expected: \"=\" where a semicolon, a comma or the end was expected"},
    Row{"listOfOtherThanTexts", "x=a,1;y=2", "error 1:5-1:6 @4+1 text-expected: \"1\" where a text (lists hold nothing else) was expected (syntax error, unexpected TINTEGER, expecting TSTRING)"},
    Row{"semicolonAtTheEnd", "x=1;", "error 1:4-1:5 @3+1 key-expected: the text ends where a key was expected (syntax error, unexpected $end, expecting TSTRING)"},
    Row{"characterThatBeginsNothing", "x=1;y=(;z=", 
        "error 1:7-1:8 @6+1 unexpected-character: \"(\" where a value was expected: this character can stand in quotes only (syntax error, unexpected $end)\n"
        "error 1:11-1:11 @10+0 value-expected: the text ends where a value was expected"},
    Row{"quoteThatNeverEnds", "x=\"a;y=1", "error 1:3-1:4 @2+1 quote-not-closed: \"\"\" where a value was expected: this quote is never closed (syntax error, unexpected $end)"},
    Row{"characterEndsAnUpdateThatIsWhole", "x=1!;y=2", "warning 1:4-1:9 @3+5 rest-not-read: \"!\" ends the text: what follows from here on (5 bytes) is not read"},
    Row{"repeatedKey", "x=1;y=2;x=3", "warning 1:9-1:10 @8+1 key-repeated: the key \"x\" stands here once more; the value of the first one is kept"},
    Row{"integerBeyond32Bits", "x=99999999999;y=2147483647", "warning 1:3-1:14 @2+11 integer-cut: the number \"99999999999\" is cut to 32 bits: it becomes 1215752191"},
    Row{"daysAndTimesThatAreNone", "a=2010-13-45;b=2010-02-29;c=25:00:00",
        "warning 1:3-1:13 @2+10 invalid-date: there is no day 2010-13-45\n"
        "warning 1:16-1:26 @15+10 invalid-date: there is no day 2010-02-29\n"
        "warning 1:29-1:37 @28+8 invalid-time: there is no time 25:00:00"},
    Row{"keysThatScriptsKnow", "__proto__=1;toString=2",
        "warning 1:1-1:10 @0+9 key-known-to-scripts: the key \"__proto__\" becomes no property: scripts take it for the object's prototype\n"
        "note 1:13-1:21 @12+8 key-known-to-scripts: the key \"toString\" hides what every object of a script has under this name"},
    Row{"blanks", "key = value;n=5 ;t=true ",
        "note 1:1-1:5 @0+4 blanks-kept: blanks at the ends belong to the key \"key \"\n"
        "warning 1:15-1:17 @14+2 blanks-make-a-text: \"5 \" is read as a text, because of its blanks\n"
        "warning 1:20-1:25 @19+5 blanks-make-a-text: \"true \" is read as a text, because of its blanks"},
    Row{"quotes", "x=\"a;b\"", "note 1:3-1:8 @2+5 quotes-kept: the quotes belong to the text \"\"a;b\"\""},
    Row{"whatFollowsAnErrorReport", "#m:2.0;x=1", "warning 1:7-1:11 @6+4 rest-not-read: an error report ends here: what follows (4 bytes) is not read"},
    Row{"errorReportWithAnInteger", "#m:1", "error 1:4-1:5 @3+1 error-report: \"1\" where a number with a point was expected (syntax error, unexpected TINTEGER, expecting TFLOAT)"},
    Row{"roundedNumber", "x=0.12345678901234567890", "warning 1:3-1:25 @2+22 number-not-kept: the number \"0.12345678901234567890\" is rounded: 15 digits are kept, and sizes from 1e-307 to 1e308"}
    ), nameOf);
// clang-format on

TEST(AlarmUpdateLintLimits, areNamed)
{
    int argc = 1;
    char name[] = "test";
    char *argv[] = {name, nullptr};
    QCoreApplication application(argc, argv);
    EXPECT_EQ(
        shown(alarmUpdateFindings("a=1" + repeated(";a=1", 98)).mid(98)),
        "error 1:395-1:396 @394+1 too-long-or-deep: this is too much: an update holds up to 98 "
        "pairs, or 98 texts in its only pair (memory exhausted)"_q);
}

using AlarmUpdateLintProperty = ScriptTest;

TEST_F(AlarmUpdateLintProperty, errorsAreThoseOfTheParser)
{
    const QList<QByteArray> pieces = {"a",          "key",
                                      "=",          "=",
                                      ";",          ";",
                                      ",",          "1",
                                      "2.5",        "-3",
                                      "-",          "true",
                                      "2010-05-01", "12:30:00",
                                      "\"q\"",      "\"",
                                      "#",          ":",
                                      " ",          "\n",
                                      "!",          "x=1",
                                      "y=a,b",      "#m:1.5",
                                      "\xe4",       "\"\xc3\xa4\"",
                                      "5 ",         "."};
    Random random(9);
    int refused = 0;
    int accepted = 0;
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
        const QByteArray text = anyText(random, pieces);
        SCOPED_TRACE(text.toHex(' ').constData());
        SCOPED_TRACE(text.constData());
        std::optional<ParseException> refusal;
        QByteArray buffer = text;
        try {
            AlarmUpdateParser parser(&m_engine);
            (void)parser.parse(&buffer);
        } catch (const ParseException &e) {
            refusal = e;
        }
        expectErrorsAsRefused(alarmUpdateFindings(text), refusal);
        (refusal ? refused : accepted) += 1;
    }
    EXPECT_GT(refused, 5000);
    EXPECT_GT(accepted, 100);
}
