// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A buffer that does not end with two zero bytes makes the scanners read standard input; and the
// ways in which scanners end the process.

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScriptTest.h"
#include "alarm/StandardInput.h"
#include "base/Exceptions.h"
#include "reference/AlarmText.h"
#include "support/Expect.h"

#include <QtCore/QBuffer>

#include <gtest/gtest.h>

using namespace vn;

namespace {

// Nobody looks into these.
const QList<QByteArray> kRefused = {""_b, "\0"_b, "["_b, "[9]"_b, "[9]\0"_b, "[9]\0x"_b, "\0[9]"_b};

QVariant parsed(AlarmListParser &parser, QByteArray text)
{
    return parser.parse(&text);
}

template <typename Parser>
auto parseBuffer(Parser &parser, QByteArray buffer)
{
    return parser.parse(buffer.constData(), static_cast<unsigned int>(buffer.size()));
}

template <typename Parser>
auto parseDevice(Parser &parser, QByteArray content)
{
    QBuffer device(&content);
    device.open(QIODevice::ReadOnly);
    return parser.parse(&device);
}

} // namespace

class RefusedBuffer : public ScriptTest
{
protected:
    AlarmListParser m_lists;
    AlarmUpdateParser m_updates{&m_engine};
};

TEST_F(RefusedBuffer, listIsReadFromStandardInput)
{
    for (const QByteArray &refused : kRefused) {
        SCOPED_TRACE(refused.toHex(' ').constData());
        AlarmListParser fresh;
        const StandardInput input("[1, 'two']\n"_b);
        EXPECT_EQ(shown(parseBuffer(fresh, refused)), "[\"two\", 1]"_q);
    }
}

TEST_F(RefusedBuffer, listIsReadFromStandardInput_onAParserThatWasUsed)
{
    for (const QByteArray &refused : kRefused) {
        SCOPED_TRACE(refused.toHex(' ').constData());
        EXPECT_EQ(shown(parsed(m_lists, "[0]")), "[0]"_q);
        EXPECT_THROW(parsed(m_lists, "[0"), ParseException);
        const StandardInput input("[1, 'two']\n"_b);
        EXPECT_EQ(shown(parseBuffer(m_lists, refused)), "[\"two\", 1]"_q);
    }
    EXPECT_EQ(shown(parsed(m_lists, "[3]")), "[3]"_q);
}

TEST_F(RefusedBuffer, updateIsReadFromStandardInput)
{
    for (const QByteArray &refused : kRefused) {
        SCOPED_TRACE(refused.toHex(' ').constData());
        AlarmUpdateParser fresh(&m_engine);
        const StandardInput input("x=1;y=a,b"_b);
        EXPECT_EQ(shown(parseBuffer(fresh, refused)), "{y: [\"b\", \"a\"], x: 1}"_q);
        EXPECT_EQ(shown(m_updates.parse("z=2"_q)), "{z: 2}"_q);
    }
}

TEST_F(RefusedBuffer, deviceWithoutZeroBytesIsNotLookedAt)
{
    {
        const StandardInput input("[1]"_b);
        EXPECT_EQ(shown(parseDevice(m_lists, "[9]")), "[1]"_q);
    }
    {
        const StandardInput input("x=1"_b);
        EXPECT_EQ(shown(parseDevice(m_updates, "x=9")), "{x: 1}"_q);
    }
    {
        const StandardInput input("[2]"_b);
        EXPECT_EQ(shown(parseDevice(m_lists, "")), "[2]"_q);
    }
}

TEST_F(RefusedBuffer, eachParseBeginsWithABufferOfItsOwn)
{
    for (const char *text : {"[1]", "[2]", "[3]"}) {
        const StandardInput input(text);
        EXPECT_EQ(shown(parseBuffer(m_lists, "x")), QString::fromLatin1(text));
    }
}

TEST_F(RefusedBuffer, eachGoesOnInStandardInputWhereTheLastStopped)
{
    {
        const StandardInput input("{} # [7] # [8,9]"_b);
        for (const char *list : {"{}", "[7]", "[9, 8]"})
            EXPECT_EQ(shown(parseBuffer(m_lists, "x")), QString::fromLatin1(list));
        EXPECT_THROW(parseBuffer(m_lists, "x"), ParseException);
    }
    {
        const StandardInput input("x=1!#gone:2.5;y=3"_b);
        EXPECT_EQ(shown(parseBuffer(m_updates, "x")), "{x: 1}"_q);
        EXPECT_EQ(shown(parseBuffer(m_updates, "x")), "{gone: 2.5}"_q);
        expectParseError([&] { parseBuffer(m_updates, "x"); },
                         "syntax error, unexpected ';', expecting TSTRING or '#' or 'a'"_q, 0, 0,
                         1);
        EXPECT_EQ(shown(parseBuffer(m_updates, "x")), "{y: 3}"_q);
    }
}

TEST_F(RefusedBuffer, eachGoesOnWhereTheLastStopped_alsoBehindAnError)
{
    const StandardInput input("[1 }  [2] {  3} {a}"_b);
    expectParseError([&] { parseBuffer(m_lists, "x"); },
                     "syntax error, unexpected '}', expecting ']'"_q, 0, 3, 4);
    // The space behind the offending token counts.
    expectParseError([&] { parseBuffer(m_lists, "x"); },
                     "syntax error, unexpected '{', expecting $end"_q, 0, 6, 7);
    expectParseError([&] { parseBuffer(m_lists, "x"); },
                     "syntax error, unexpected TNUMBER, expecting '{' or '['"_q, 0, 2, 3);
}

TEST_F(RefusedBuffer, eachGoesOnWhereTheLastStopped_withOtherTextsBetween)
{
    const StandardInput input("[1] #[2}  ['3' # [4]"_b);
    EXPECT_EQ(shown(parseBuffer(m_lists, "x")), "[1]"_q);
    EXPECT_EQ(shown(parsed(m_lists, "[0] # [9]")), "[0]"_q);
    EXPECT_THROW(parseBuffer(m_lists, "x"), ParseException);
    expectParseError([&] { parsed(m_lists, " 0"); },
                     "syntax error, unexpected TNUMBER, expecting '{' or '['"_q, 0, 1, 2);
    expectParseError([&] { parseBuffer(m_lists, "x"); },
                     "syntax error, unexpected $end, expecting ']'"_q, 0, 7, 8);
    EXPECT_EQ(shown(parseBuffer(m_lists, "x")), "[4]"_q);
}

TEST_F(RefusedBuffer, whatOneParserHasReadAheadIsNotForAnother)
{
    const StandardInput input("[1] # [2]"_b);
    EXPECT_EQ(shown(parseBuffer(m_lists, "x")), "[1]"_q);
    AlarmListParser other;
    expectParseError([&] { parseBuffer(other, "x"); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 0);
    EXPECT_EQ(shown(parseBuffer(m_lists, "x")), "[2]"_q);
}

TEST_F(RefusedBuffer, offsetsCountFromWhereStandardInputIs)
{
    const StandardInput input("[1 2]"_b);
    expectParseError([&] { parseBuffer(m_lists, "x"); },
                     "syntax error, unexpected TNUMBER, expecting ']'"_q, 0, 3, 4);
}

TEST_F(RefusedBuffer, emptyStandardInputIsAnEmptyText)
{
    const StandardInput input(""_b);
    expectParseError([&] { parseBuffer(m_lists, "x"); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 0);
    expectParseError([&] { parseBuffer(m_updates, "x"); },
                     "syntax error, unexpected $end, expecting TSTRING or '#' or 'a'"_q, 0, 0, 0);
}

TEST_F(RefusedBuffer, stateOfTheScannerReachesStandardInputAndBack)
{
    EXPECT_THROW(parsed(m_lists, "[/*"), ParseException);
    {
        const StandardInput input("*/[1]/*"_b);
        EXPECT_EQ(shown(parseBuffer(m_lists, "x")), "[1]"_q);
    }
    EXPECT_EQ(shown(parsed(m_lists, "*/[2]")), "[2]"_q);
}

TEST_F(RefusedBuffer, longStandardInputIsReadInParts)
{
    // Longer than any buffer, with tokens that cross the borders of its parts.
    QByteArray text = "[";
    for (int i = 0; i < 40; ++i)
        text += (i > 0 ? ",'" : "'") + QByteArray(997, static_cast<char>('a' + i % 26)) + "'";
    text += ",'" + QByteArray(200000, 'z') + "']" + QByteArray(100000, ' ');
    const StandardInput input(text);
    const QVariantList list = parseBuffer(m_lists, "x").toList();
    ASSERT_EQ(list.size(), 41);
    EXPECT_EQ(list.first().toString(), QString(200000, QLatin1Char('z')));
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(list.at(40 - i).toString(),
                  QString(997, QLatin1Char(static_cast<char>('a' + i % 26))));
}

TEST_F(RefusedBuffer, oneLongTokenOfStandardInput)
{
    const QByteArray run(20000000, 'x');
    {
        const StandardInput input("['" + run + "\\n" + run + "']");
        EXPECT_EQ(parseBuffer(m_lists, "x").toList().first().toString().size(), 40000002);
    }
    {
        const StandardInput input("x=\"" + run + "\0\""_b);
        EXPECT_EQ(parseBuffer(m_updates, "x").property("x"_q).toString().size(), 20000003);
    }
    {
        const StandardInput input("x=1\"" + run + "\0"_b);
        EXPECT_EQ(shown(parseBuffer(m_updates, "x")), "{x: 1}"_q);
    }
}

TEST_F(RefusedBuffer, zeroBytesOfStandardInputAreBytesOfTheText)
{
    const StandardInput input("['a\0b']"_b);
    EXPECT_EQ(parseBuffer(m_lists, "x").toList().first().toString(),
              QString::fromLatin1("a\0b", 3));
}

TEST_F(RefusedBuffer, standardInputThatFailsInsideAStringOfAnUpdateLeavesTheNextTextOutsideOfIt)
{
    m_updates.setFatalErrors(FatalErrors::Throw);
    {
        const StandardInput input = StandardInput::failingBehind("x=\"a\0b"_b);
        expectParseError([&] { parseBuffer(m_updates, "x"); }, "input in flex scanner failed"_q, 0,
                         1, 2);
    }
    EXPECT_EQ(shown(m_updates.parse("y=2"_q)), "{y: 2}"_q);
}

// ---- Ends of the process ------------------------------------------------------------------------

class ScannerDeathTest : public testing::Test
{
protected:
    AlarmListParser m_lists;
    AlarmUpdateParser m_updates{nullptr}; // no text comes to its end, so no engine is needed
};

TEST_F(ScannerDeathTest, starAtTheEndOfAComment)
{
    EXPECT_EXIT(parsed(m_lists, "/* unterminated *"), testing::ExitedWithCode(2),
                testing::Eq("flex scanner jammed\n"));
    EXPECT_EXIT(parsed(m_lists, "[1]/****"), testing::ExitedWithCode(2),
                testing::Eq("flex scanner jammed\n"));
    EXPECT_EXIT(m_lists.parse("[1]/**"_q), testing::ExitedWithCode(2),
                testing::Eq("flex scanner jammed\n"));
}

TEST_F(ScannerDeathTest, starAtTheEndOfATextThatBeginsInAComment)
{
    EXPECT_THROW(parsed(m_lists, "/*"), ParseException);
    EXPECT_EXIT(parsed(m_lists, "*"), testing::ExitedWithCode(2),
                testing::Eq("flex scanner jammed\n"));
}

TEST_F(ScannerDeathTest, starsElsewhereAreHarmless)
{
    EXPECT_EQ(shown(parsed(m_lists, "[1]*")), "[1]"_q);
    EXPECT_EQ(shown(parsed(m_lists, "['*']")), "[\"*\"]"_q);
    EXPECT_THROW(parsed(m_lists, "['*"), ParseException);
}

TEST_F(ScannerDeathTest, standardInputThatCannotBeRead)
{
    const StandardInput folder = StandardInput::from("/");
    EXPECT_EXIT(parseBuffer(m_lists, "x"), testing::ExitedWithCode(2),
                testing::Eq("input in flex scanner failed\n"));
    EXPECT_EXIT(parseBuffer(m_updates, "x"), testing::ExitedWithCode(2),
                testing::Eq("input in flex scanner failed\n"));
}
