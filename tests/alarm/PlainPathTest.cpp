// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Where the plain path of alarm lists gives a result, the grammar gives the same one: the values,
// their places, and what the scanners share.

#include "alarm/PlainPath.h"
#include "alarm/AlarmListReader_p.h"
#include "alarm/AlarmListTree_p.h"
#include "alarm/Shown.h"
#include "support/Random.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

using internal::AlarmListReader;

/** Whether the plain path takes @p text; what it gives is that of the grammar. */
bool isPlain(const QByteArray &text)
{
    AlarmListReader plain(nullptr);
    AlarmListReader grammar(nullptr);
    const PlainPathResult result = comparePaths(plain, grammar, text);
    EXPECT_EQ(result.difference.toStdString(), "") << text.constData();
    return result.isPlain;
}

QByteArray oneOf(Random &random, const QList<QByteArray> &list)
{
    return random.oneOf(list);
}

/** Pieces of which texts are made, most of them such as cameras write. */
const QList<QByteArray> kPieces = {"{",
                                   "}",
                                   "[",
                                   "]",
                                   ",",
                                   ":",
                                   "{",
                                   "}",
                                   "[",
                                   "]",
                                   ",",
                                   ":",
                                   " ",
                                   "\n",
                                   "\t",
                                   "a",
                                   "key",
                                   "_x-./9",
                                   "true",
                                   "false",
                                   "null",
                                   "trueish",
                                   "'text'",
                                   "\"t\"",
                                   "''",
                                   "\"\"",
                                   "\"it's\"",
                                   "'\"'",
                                   "0",
                                   "-0",
                                   "12",
                                   "-3.25",
                                   "0.5",
                                   "01",
                                   "1.",
                                   "1e3",
                                   "-1.5E-7",
                                   "0e5",
                                   "1e400",
                                   "5e-324",
                                   "-0.0",
                                   "1e",
                                   "/*c*/",
                                   "/*",
                                   "*/",
                                   "#",
                                   "\x01"_b,
                                   "\0"_b,
                                   "\\",
                                   "'\\n'",
                                   "'\\",
                                   "\"",
                                   "'",
                                   "\xe4"_b,
                                   "'\xe4'"_b,
                                   "-",
                                   "9007199254740993",
                                   "123456789012345678901234567890",
                                   "1e22",
                                   "123456789012345e22",
                                   "0.000000000000000000000001",
                                   "{a:1,b:'x'}",
                                   "{a:1,b:'x'}",
                                   "[1,2]"};

QByteArray value(Random &random, int depth);

QByteArray scalar(Random &random)
{
    static const QList<QByteArray> scalars = {"1",  "-0.5", "1e3",     "true",  "null",  "word",
                                              "''", "'x'",  "\"y z\"", "17.25", "false", "12345"};
    return oneOf(random, scalars);
}

QByteArray container(Random &random, int depth)
{
    const bool isObject = random.below(2);
    QByteArray text = isObject ? "{" : "[";
    for (unsigned i = 0, count = random.below(6); i < count; ++i) {
        if (i > 0)
            text += random.below(2) ? "," : " , ";
        if (isObject)
            text += oneOf(random, {"a", "b", "'c'", "\"key\"", "''", "name"}) +
                    (random.below(3) ? ":" : ": ");
        text += value(random, depth - 1);
    }
    return text + (isObject ? "}" : "]");
}

QByteArray value(Random &random, int depth)
{
    return depth > 0 && random.below(3) == 0 ? container(random, depth) : scalar(random);
}

/** A list that is well formed, or was so before a byte was changed or a piece added. */
QByteArray nearlyAList(Random &random)
{
    QByteArray text = container(random, 4);
    switch (random.below(4)) {
    case 0:
        text[int(random.below(unsigned(text.size())))] = char(random.below(256));
        break;
    case 1:
        text.insert(int(random.below(unsigned(text.size() + 1))), oneOf(random, kPieces));
        break;
    default:
        break;
    }
    return text;
}

QByteArray anyPieces(Random &random)
{
    QByteArray text = random.below(2) ? "[" : "{a:";
    for (unsigned i = 0, count = random.below(9); i < count; ++i)
        text += oneOf(random, kPieces);
    return text + oneOf(random, {"]", "}", "", " ]", "]\n"});
}

} // namespace

TEST(PlainPath, takesListsAsCamerasWriteThem)
{
    for (const char *text :
         {"[]", "{}", " [ ] ", "[1, 'two', \"three\", true, false, null, [ ], { }]\r\n",
          "{cams: ['front', 'back'], armed: true, since: 1.5e3, reason: null}",
          "{'a': 1, \"b\": -0.5, c_-./9: [[[[1]]]], '': {}}", "['it is \"quoted\"', \"it's\"]",
          "['S\xfc"
          "dtor']",
          "{a:1, a:2, b:3, a:4}", "[trueish, nullable, falsely]"})
        EXPECT_TRUE(isPlain(text)) << text;
}

TEST(PlainPath, leavesTheRestToTheGrammar)
{
    for (const QByteArray &text :
         {""_b,          " "_b,         "1"_b,          "'x'"_b,     "true"_b,     "[1"_b,
          "[1,]"_b,      "[,1]"_b,      "[1 2]"_b,      "{a}"_b,     "{a:}"_b,     "{1:2}"_b,
          "{true:1}"_b,  "{null:1}"_b,  "{a:1,}"_b,     "{a 1}"_b,   "[1}"_b,      "{a:1]"_b,
          "[] #"_b,      "[] []"_b,     "[]\0"_b,       "[1\0]"_b,   "['a\0b']"_b, "['a\tb']"_b,
          "['a\\nb']"_b, "[/* c */]"_b, "[] /* c */"_b, "[-0]"_b,    "[0e5]"_b,    "[01]"_b,
          "[1.]"_b,      "[.5]"_b,      "[1e]"_b,       "[1e+]"_b,   "[-]"_b,      "[--1]"_b,
          "[1.5.5]"_b,   "[\xe4]"_b,    "['\x7f']"_b,   "['open]"_b, "[\""_b})
        EXPECT_FALSE(isPlain(text)) << text.constData();
}

TEST(PlainPath, readsNumbersAsTheGrammarDoes)
{
    Random random(3);
    for (int i = 0; i < 20000; ++i) {
        QByteArray number = random.below(3) ? "" : "-";
        const auto digits = [&](unsigned most) {
            for (unsigned count = 1 + random.below(most); count > 0; --count)
                number += char('0' + random.below(10));
        };
        if (random.below(4) == 0) {
            number += "0";
        } else {
            number += char('1' + random.below(9));
            if (random.below(2))
                digits(random.below(4) ? 7 : 25);
        }
        if (random.below(2)) {
            number += ".";
            digits(random.below(4) ? 6 : 25);
        }
        if (random.below(3) == 0) {
            number += oneOf(random, {"e", "E", "e+", "e-", "E-"});
            digits(random.below(4) ? 2 : 5);
        }
        isPlain("[" + number + "]");
        ASSERT_FALSE(testing::Test::HasFailure());
    }
}

TEST(PlainPath, isThatOfTheGrammarForWhatIsNearlyAList)
{
    Random random(1);
    int plain = 0;
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i)
        plain += isPlain(nearlyAList(random)) ? 1 : 0;
    EXPECT_GT(plain, 8000);
    EXPECT_LT(plain, 18000);
}

TEST(PlainPath, isThatOfTheGrammarForAnyPieces)
{
    Random random(2);
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i)
        isPlain(anyPieces(random));
}

TEST(PlainPath, isThatOfTheGrammarAroundTheLimits)
{
    for (int count = 90; count <= 101; ++count) {
        QByteArray list;
        QByteArray object;
        QByteArray empty;
        for (int i = 0; i < count; ++i) {
            list += ",1";
            object += ",a:1";
            empty += ",[]";
        }
        for (const QByteArray &text : {"[" + list.mid(1) + "]", "{" + object.mid(1) + "}",
                                       "[" + empty.mid(1) + "]", "{a:[" + empty.mid(1) + "]}"})
            isPlain(text);
    }
    for (int depth = 60; depth <= 200; ++depth) {
        isPlain(QByteArray(depth, '[') + QByteArray(depth, ']'));
        isPlain(QByteArray("{a:").repeated(depth) + "1" + QByteArray(depth, '}'));
        isPlain(QByteArray("[1,").repeated(depth) + "1" + QByteArray(depth, ']'));
        isPlain(QByteArray("{a:1,b:").repeated(depth) + "{}" + QByteArray(depth, '}'));
    }
    Random random(4);
    for (int i = 0; i < 2000 && !testing::Test::HasFailure(); ++i) {
        QByteArray text;
        QByteArray closing;
        for (unsigned level = 0, levels = 1 + random.below(110); level < levels; ++level) {
            const QByteArray opening = oneOf(random, {"[", "[1,", "{a:", "{a:1,b:", "[[1],"});
            text += opening;
            closing.prepend(opening.startsWith('[') ? ']' : '}');
        }
        isPlain(text + "[" + QByteArray("0,").repeated(int(random.below(60))) + "0]" + closing);
    }
}

TEST(PlainPath, isThatOfTheGrammarInSequences)
{
    // Two parsers on each side: what one leaves in the string that all share, the other may find.
    Random random(5);
    for (int i = 0; i < 1500 && !testing::Test::HasFailure(); ++i) {
        ListSequence sequence;
        for (unsigned step = 0, steps = 2 + random.below(7); step < steps; ++step) {
            const QByteArray text = random.below(4) == 0   ? anyPieces(random)
                                    : random.below(4) == 0 ? "['" + nearlyAList(random)
                                                           : nearlyAList(random);
            const QString difference = sequence.compare(random.below(2), text);
            ASSERT_EQ(difference.toStdString(), "") << text.constData();
        }
    }
}
