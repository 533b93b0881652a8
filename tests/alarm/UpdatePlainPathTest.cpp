// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Where the plain path of alarm updates gives a result, the grammar gives the same one: the values
// and their places.

#include "alarm/PlainPath.h"
#include "alarm/RandomAlarms.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

using internal::AlarmUpdateReader;

/** Whether the plain path takes @p text; what it gives is that of the grammar. */
bool isPlain(const QByteArray &text)
{
    AlarmUpdateReader plain(nullptr);
    AlarmUpdateReader grammar(nullptr);
    const PlainPathResult result = comparePaths(plain, grammar, text);
    EXPECT_EQ(result.difference.toStdString(), "") << text.constData();
    return result.isPlain;
}

} // namespace

TEST(UpdatePlainPath, takesUpdatesAsCamerasWriteThem)
{
    for (const QByteArray &text :
         {"state=1"_b, "state=1;since=2010-05-01;at=12:30:00;cams=front,back"_b,
          "level=-0.5;armed=true;zone=\"a;b\";name=West gate"_b, "a=1;\n b = x \r\n"_b,
          "x=1;x=2;x=a,b,c"_b, "\"k\"=.5"_b, "n=12;m=12 ;o=-7 ;p=1234-56"_b.left(15),
          "z=\"a\0b\""_b})
        EXPECT_TRUE(isPlain(text)) << text.constData();
}

TEST(UpdatePlainPath, leavesTheRestToTheGrammar)
{
    for (
        const QByteArray &text :
        {""_b,           "a="_b,        "x"_b,       "x=1;"_b,   "x=1,2"_b,         "x=a,"_b,
         "x=a,;y=1"_b,   "x=a,1"_b,     "x=1,a"_b,   "=1"_b,     "1=1"_b,           "true=1"_b,
         "x==1"_b,       "x=1=2"_b,     "x=1!"_b,    "x=\"a"_b,  "x=a-b"_b,         "#m:1.5"_b,
         "x=1;#m:1.5"_b, "x=1234-56"_b, "x=1\0"_b,   "x=\xe4"_b, "x=2010-05-01-"_b, "x=12:30:00:"_b,
         "x=12:30"_b,    "x=-"_b,       "x=-1.5e5"_b})
        EXPECT_FALSE(isPlain(text)) << text.constData();
}

TEST(UpdatePlainPath, isThatOfTheGrammarForWhatIsNearlyAnUpdate)
{
    RandomUpdates updates(1);
    int plain = 0;
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i)
        plain += isPlain(updates.nearlyValid()) ? 1 : 0;
    EXPECT_GT(plain, 2000);
    EXPECT_LT(plain, 18000);
}

TEST(UpdatePlainPath, isThatOfTheGrammarForAnyPieces)
{
    RandomUpdates updates(2);
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i)
        isPlain(updates.ofPieces());
}

TEST(UpdatePlainPath, isThatOfTheGrammarAroundTheLimits)
{
    int plain = 0;
    for (int pairs = 0; pairs <= 99; ++pairs) {
        for (int texts = 1; texts <= 100 - pairs; ++texts) {
            const QByteArray list = "l=" + QByteArray("a,").repeated(texts - 1) + "b";
            const QByteArray others = QByteArray("k=1;").repeated(pairs);
            plain += isPlain(others + list) ? 1 : 0;
            plain += isPlain(list + QByteArray(";k=1").repeated(pairs)) ? 1 : 0;
        }
    }
    EXPECT_GT(plain, 8000);
}
