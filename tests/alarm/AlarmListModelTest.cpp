// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Random texts, each parsed by the library and by the model.

#include "alarm/AlarmListModel.h"

#include "alarm/AlarmListParser.h"
#include "alarm/Shown.h"
#include "base/Exceptions.h"
#include "support/Files.h"
#include "support/Random.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

/** A parser and a model that see the same texts, one after another. */
struct Pair
{
    AlarmListParser parser;
    AlarmListModel model;
};

/** Expects that both give the same; skips a text that would end the process. Says whether the text
 * was accepted. */
bool expectSame(Pair &pair, const QByteArray &text)
{
    AlarmListModel trial = pair.model;
    if (trial.parse(text).endsProcess)
        return false;
    const AlarmListOutcome expected = pair.model.parse(text);
    QByteArray buffer = text + "\0\0"_b;
    const QByteArray before(buffer.constData(), buffer.size());
    try {
        const QVariant value =
            pair.parser.parse(buffer.constData(), static_cast<unsigned int>(buffer.size()));
        EXPECT_EQ(expected.message, QString());
        EXPECT_EQ(shown(value), shown(expected.value));
        EXPECT_EQ(pair.parser.errorMessage(), "Initialisation Error"_q);
    } catch (const ParseException &e) {
        EXPECT_EQ(e.message(), expected.message);
        EXPECT_EQ(e.startLine(), 0);
        EXPECT_EQ(e.endLine(), 0);
        EXPECT_EQ(e.startColumn(), expected.start);
        EXPECT_EQ(e.endColumn(), expected.end);
        EXPECT_EQ(e.cause(), nullptr);
        EXPECT_EQ(pair.parser.errorMessage(), expected.message);
    }
    EXPECT_EQ(buffer, before) << "the buffer is not as before";
    return expected.code == 0;
}

const QList<QByteArray> kPieces = {"{",
                                   "}",
                                   "[",
                                   "]",
                                   ",",
                                   ":",
                                   " ",
                                   "\n",
                                   "\t\r",
                                   "a",
                                   "x1",
                                   "_-.",
                                   "true",
                                   "false",
                                   "null",
                                   "trueish",
                                   "0",
                                   "-0",
                                   "01",
                                   "1",
                                   "-1",
                                   "1.5",
                                   "0.5",
                                   "-0.25",
                                   ".5",
                                   "1.",
                                   "1e3",
                                   "1.5E-3",
                                   "0e5",
                                   "12e",
                                   "-",
                                   "+",
                                   "\"",
                                   "'",
                                   "\"a b\"",
                                   "'x'",
                                   "\"\\n\"",
                                   "'\\u00e4'",
                                   "\\",
                                   "/",
                                   "/*",
                                   "*/",
                                   "*",
                                   "/* c */",
                                   "\x01",
                                   "\x7f",
                                   "\xe4",
                                   "#",
                                   "1e400",
                                   "1e-400",
                                   "99999999999999999999",
                                   "4.9e-324",
                                   "\"\\\"\"",
                                   "'\"'",
                                   "\"'\"",
                                   "\\u12",
                                   "\0"_b,
                                   "\'a\0\0b\'"_b,
                                   "\"\0"_b,
                                   "/*\0c\0\0*/"_b,
                                   "/*c\0"_b};

/** A few pieces in a row. */
QByteArray soup(Random &random)
{
    QByteArray text;
    for (unsigned count = random.below(14); count > 0; --count)
        text += random.oneOf(kPieces);
    if (random.below(20) == 0)
        text.insert(static_cast<int>(random.below(static_cast<unsigned>(text.size() + 1))), '\0');
    return random.below(2) ? text : "[" + text + "]";
}

QByteArray validValue(Random &random, int depth);

QByteArray separator(Random &random)
{
    const QList<QByteArray> separators = {"", "", "", " ", "\n", "/* c */", " /***/ "};
    return random.oneOf(separators);
}

QByteArray validContainer(Random &random, int depth)
{
    const bool isObject = random.below(2) == 0;
    const QList<QByteArray> keys = {"a", "b", "\"b\"", "'b'", "cam-1/x.y", "\"\"", "\"\xe4\\n\""};
    QByteArray text = isObject ? "{" : "[";
    for (unsigned i = 0, count = random.below(5); i < count; ++i) {
        text += i > 0 ? "," : "";
        text += separator(random);
        if (isObject)
            text += random.oneOf(keys) + separator(random) + ":" + separator(random);
        text += validValue(random, depth - 1) + separator(random);
    }
    return text + (isObject ? "}" : "]");
}

QByteArray validValue(Random &random, int depth)
{
    if (depth > 0 && random.below(3) == 0)
        return validContainer(random, depth);
    const QList<QByteArray> scalars = {
        "0",  "-1.5e3", "12345678901234567890", "0.1", "true", "null", "false",
        "on", "'x'",    "\"y\\u0041\""};
    return random.oneOf(scalars);
}

/** A valid text with a few of its bytes changed, removed or doubled. */
QByteArray damaged(Random &random)
{
    QByteArray text = validContainer(random, 4);
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
    return text;
}

} // namespace

TEST(AlarmListModel, agreesOnRowsOfRandomTokens)
{
    Random random(1);
    int accepted = 0;
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
        Pair pair;
        const QByteArray text = soup(random);
        SCOPED_TRACE(text.toHex(' ').constData());
        SCOPED_TRACE(text.constData());
        accepted += expectSame(pair, text) ? 1 : 0;
    }
    EXPECT_GT(accepted, 500);
}

TEST(AlarmListModel, agreesOnDamagedTexts)
{
    Random random(2);
    int accepted = 0;
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
        Pair pair;
        const QByteArray text = damaged(random);
        SCOPED_TRACE(text.toHex(' ').constData());
        SCOPED_TRACE(text.constData());
        accepted += expectSame(pair, text) ? 1 : 0;
    }
    EXPECT_GT(accepted, 3000);
}

TEST(AlarmListModel, agreesOnOneParserAfterAnother_withWhatTheScannersKeep)
{
    Random random(3);
    for (int i = 0; i < 2000 && !testing::Test::HasFailure(); ++i) {
        Pair pairs[2];
        for (int j = 0; j < 12; ++j) {
            const QByteArray text = random.below(2) ? soup(random) : damaged(random);
            SCOPED_TRACE(text.toHex(' ').constData());
            SCOPED_TRACE(text.constData());
            expectSame(pairs[random.below(2)], text);
        }
    }
}

TEST(AlarmListModel, agreesOnEveryTextOfThreeBytes)
{
    const QByteArray bytes = "{}[],:\"'a10-.e/*\\u \n\x01\xff#"_b;
    QByteArray text(3, ' ');
    for (const char a : bytes) {
        for (const char b : bytes) {
            for (const char c : bytes) {
                text[0] = a;
                text[1] = b;
                text[2] = c;
                SCOPED_TRACE(text.toHex(' ').constData());
                Pair pair;
                expectSame(pair, text);
            }
        }
    }
}

TEST(AlarmListModel, agreesOnTextsAroundTheDepthOfTheStack)
{
    Random random(4);
    for (int i = 0; i < 500 && !testing::Test::HasFailure(); ++i) {
        QByteArray text;
        QByteArray closing;
        const unsigned levels = 60 + random.below(80);
        for (unsigned level = 0; level < levels; ++level) {
            const QList<QByteArray> openings = {"[", "[", "[1,", "{a:", "{a:1,b:"};
            const QByteArray &opening = random.oneOf(openings);
            text += opening;
            closing.prepend(opening.startsWith('[') ? ']' : '}');
        }
        text += "[]" + closing;
        SCOPED_TRACE(text.constData());
        Pair pair;
        expectSame(pair, text);
    }
}

TEST(AlarmListModel, agreesOnACorpusOfJson)
{
    const QString folder = qEnvironmentVariable("VANTERO_CORPORA");
    if (folder.isEmpty())
        GTEST_SKIP() << "VANTERO_CORPORA names no folder";
    const QDir json(folder + "/json"_q);
    const QStringList names = json.entryList({"*.json"_q}, QDir::Files);
    ASSERT_GT(names.size(), 100);
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        Pair pair;
        expectSame(pair, readFile(json.filePath(name)));
    }
}
