// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What only alarm lists have: types and orders of values, and how much the stack holds.

#include "alarm/Languages.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vn;

namespace {

QVariant parsed(QByteArray text)
{
    return AlarmListParser().parse(&text);
}

} // namespace

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
