// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Random texts, each parsed by the library and by the model.

#include "alarm/AlarmUpdateModel.h"

#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScriptTest.h"
#include "base/Exceptions.h"
#include "support/Random.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

class AlarmUpdateModelTest : public ScriptTest
{
protected:
    /** Expects that library and model give the same; says whether the text was accepted. */
    bool expectSame(const QByteArray &text)
    {
        const AlarmUpdateOutcome expected = AlarmUpdateModel::parse(text);
        QByteArray buffer = text + "\0\0"_b;
        const QByteArray before(buffer.constData(), buffer.size());
        try {
            const QScriptValue value =
                m_parser.parse(buffer.constData(), static_cast<unsigned int>(buffer.size()));
            EXPECT_EQ(expected.message, QString());
            EXPECT_EQ(shown(value), expected.value);
            EXPECT_EQ(m_parser.errorMessage(), "Initialisation Error"_q);
        } catch (const ParseException &e) {
            EXPECT_EQ(e.message(), expected.message);
            EXPECT_EQ(e.startLine(), 0);
            EXPECT_EQ(e.endLine(), 0);
            EXPECT_EQ(e.startColumn(), expected.start);
            EXPECT_EQ(e.endColumn(), expected.end);
            EXPECT_EQ(e.cause(), nullptr);
            EXPECT_EQ(m_parser.errorMessage(), expected.message);
        }
        EXPECT_EQ(buffer, before) << "the buffer is not as before";
        return expected.code == 0;
    }

    AlarmUpdateParser m_parser{&m_engine};
};

const QList<QByteArray> kValues = {"1",
                                   "-5",
                                   "0012",
                                   "5 ",
                                   " 5",
                                   "4294967297",
                                   "-99999999999999999999",
                                   "2.5",
                                   "-.5",
                                   "1.",
                                   "1.5a",
                                   "true",
                                   "false",
                                   "true ",
                                   "2010-05-01",
                                   "2010-13-45",
                                   "12:30:00",
                                   "99:99:99",
                                   "1234-56",
                                   "2010-05-011",
                                   "text",
                                   "a",
                                   "a,b",
                                   "a,b,c",
                                   "\"a;b\"",
                                   "\"\"",
                                   "\"\n\",x",
                                   "[x]\\^/_",
                                   "2012-02-29",
                                   "2011-02-29",
                                   "9999-12-31",
                                   "99999999999999999999.25"};

const QList<QByteArray> kPieces = {
    ";",       "=",      ",", "#",    ":", "-", "\n",   " ", "\t",   "\r",           "\"",
    "!",       "a",      "x", "\xe4", "0", ".", "\x7f", "`", "\0"_b, "\"a\0\0b\""_b, "\"\0\""_b,
    "\"a\0"_b, "\"\0b"_b};

QByteArray pairs(Random &random)
{
    const QList<QByteArray> keys = {"x", "y", "key ", "a", "\"q\"", "z9"};
    QByteArray text;
    for (unsigned i = 0, count = 1 + random.below(4); i < count; ++i)
        text += (i > 0 ? QByteArray(random.below(4) ? ";" : ";\n") : QByteArray()) +
                random.oneOf(keys) + "=" + random.oneOf(kValues);
    return text;
}

} // namespace

TEST_F(AlarmUpdateModelTest, agreesOnRowsOfRandomTokens)
{
    Random random(11);
    int accepted = 0;
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        QByteArray text = random.below(4) ? QByteArray() : QByteArray(random.below(2) ? "x=" : "#");
        for (unsigned count = random.below(8); count > 0; --count)
            text += random.below(2) ? random.oneOf(kValues) : random.oneOf(kPieces);
        SCOPED_TRACE(text.toHex(' ').constData());
        SCOPED_TRACE(text.constData());
        accepted += expectSame(text) ? 1 : 0;
    }
    EXPECT_GT(accepted, 500);
}

TEST_F(AlarmUpdateModelTest, agreesOnDamagedTexts)
{
    Random random(12);
    int accepted = 0;
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        QByteArray text =
            random.below(10) ? pairs(random) : "#Camera offline:" + random.oneOf(kValues);
        for (unsigned count = random.below(3); count > 0 && !text.isEmpty(); --count) {
            const int place = static_cast<int>(random.below(static_cast<unsigned>(text.size())));
            switch (random.below(3)) {
            case 0:
                text[place] = static_cast<char>(random.below(256));
                break;
            case 1:
                text.remove(place, 1);
                break;
            default:
                text.insert(place, random.oneOf(kPieces));
            }
        }
        SCOPED_TRACE(text.toHex(' ').constData());
        SCOPED_TRACE(text.constData());
        accepted += expectSame(text) ? 1 : 0;
    }
    EXPECT_GT(accepted, 5000);
}

TEST_F(AlarmUpdateModelTest, agreesOnEveryTextOfFourBytes)
{
    const QByteArray bytes = "xa1=;,#:-. \n\"!\xff"_b;
    QByteArray text(4, ' ');
    for (const char a : bytes) {
        for (const char b : bytes) {
            for (const char c : bytes) {
                for (const char d : bytes) {
                    text[0] = a;
                    text[1] = b;
                    text[2] = c;
                    text[3] = d;
                    SCOPED_TRACE(text.toHex(' ').constData());
                    expectSame(text);
                }
            }
        }
    }
}

TEST_F(AlarmUpdateModelTest, agreesOnTextsAroundTheDepthOfTheStack)
{
    Random random(13);
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        QByteArray text;
        const unsigned pairCount = 1 + random.below(100);
        for (unsigned j = 1; j < pairCount; ++j)
            text += "k" + QByteArray::number(random.below(300)) + "=1;";
        text += "last=s";
        const unsigned strings = random.below(2) ? 0 : random.below(110);
        for (unsigned j = 0; j < strings; ++j)
            text += ",s";
        SCOPED_TRACE(text.constData());
        expectSame(text);
    }
}
