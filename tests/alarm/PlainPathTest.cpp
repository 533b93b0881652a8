// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Where the plain path of alarm lists gives a result, the grammar gives the same one: the values,
// their places, and what the scanners share.

#include "alarm/PlainPath.h"
#include "alarm/AlarmListReader_p.h"
#include "alarm/AlarmListTree_p.h"
#include "alarm/RandomAlarms.h"
#include "reference/AlarmText.h"

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

} // namespace

TEST(PlainPath, takesListsAsCamerasWriteThem)
{
    for (const char *text :
         {"[]", "{}", " [ ] ", "[1, 'two', \"three\", true, false, null, [ ], { }]\r\n",
          "{cams: ['front', 'back'], armed: true, since: 1.5e3, reason: null}",
          "{'a': 1, \"b\": -0.5, c_-./9: [[[[1]]]], '': {}}", "['it is \"quoted\"', \"it's\"]",
          "['S\xfc"
          "dtor']",
          "{a:1, a:2, b:3, a:4}", "[trueish, nullable, falsely]",
          R"(["a\"\/\\\b\f\n\r\t\u00e4", 'b\'\u1aF0', {"\n": 1}])",
          "/* a list */[/**x*/1/* \xe4\n * // */,/* /* */2]/* its end */ "})
        EXPECT_TRUE(isPlain(text)) << text;
}

TEST(PlainPath, leavesTheRestToTheGrammar)
{
    for (const QByteArray &text :
         {""_b,           " "_b,         "1"_b,          "'x'"_b,         "true"_b,
          "[1"_b,         "[1,]"_b,      "[,1]"_b,       "[1 2]"_b,       "{a}"_b,
          "{a:}"_b,       "{1:2}"_b,     "{true:1}"_b,   "{null:1}"_b,    "{a:1,}"_b,
          "{a 1}"_b,      "[1}"_b,       "{a:1]"_b,      "[] #"_b,        "[] []"_b,
          "[]\0"_b,       "[1\0]"_b,     "['a\0b']"_b,   "['a\tb']"_b,    "['a\\x']"_b,
          "[/* c **/]"_b, "[] /* c "_b,  "[-0]"_b,       "[0e5]"_b,       "[01]"_b,
          "[1.]"_b,       "[.5]"_b,      "[1e]"_b,       "[1e+]"_b,       "[-]"_b,
          "[--1]"_b,      "[1.5.5]"_b,   "[\xe4]"_b,     "['\x7f']"_b,    "['open]"_b,
          "[\""_b,        "['a\\\"']"_b, "[\"a\\'\"]"_b, "['a\\u123']"_b, "['a\\u12g4']"_b,
          "['a\\"_b,      "[] /* *"_b,   "[] /"_b,       "[/1]"_b,        "[/* \0 */]"_b,
          "[]/*"_b,       "[/*/]"_b,     "['\\u']"_b})
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
            const QList<QByteArray> exponents = {"e", "E", "e+", "e-", "E-"};
            number += random.oneOf(exponents);
            digits(random.below(4) ? 2 : 5);
        }
        isPlain("[" + number + "]");
        ASSERT_FALSE(testing::Test::HasFailure());
    }
}

TEST(PlainPath, isThatOfTheGrammarForWhatIsNearlyAList)
{
    RandomLists texts(1);
    int plain = 0;
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i)
        plain += isPlain(texts.nearlyValid(i % 2 == 0)) ? 1 : 0;
    EXPECT_GT(plain, 8000);
    EXPECT_LT(plain, 18000);
}

TEST(PlainPath, isThatOfTheGrammarForAnyPieces)
{
    RandomLists texts(2);
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i)
        isPlain(texts.ofPieces());
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
    RandomLists texts(4);
    for (int i = 0; i < 2000 && !testing::Test::HasFailure(); ++i)
        isPlain(texts.deep());
}

TEST(PlainPath, isThatOfTheGrammarInSequences)
{
    // Two parsers on each side: what one leaves in the string that all share, the other may find.
    RandomLists texts(5);
    Random &random = texts.random();
    for (int i = 0; i < 1500 && !testing::Test::HasFailure(); ++i) {
        ListSequence sequence;
        for (unsigned step = 0, steps = 2 + random.below(7); step < steps; ++step) {
            const QByteArray text = random.below(4) == 0   ? texts.ofPieces()
                                    : random.below(4) == 0 ? "['" + texts.nearlyValid(i % 2 == 0)
                                                           : texts.nearlyValid(i % 2 == 0);
            const QString difference = sequence.compare(random.below(2), text);
            ASSERT_EQ(difference.toStdString(), "") << text.constData();
        }
    }
}
