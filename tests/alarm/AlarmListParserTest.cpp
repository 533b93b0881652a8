// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The parser object: forms of input, what stays between two texts, failures.

#include "alarm/AlarmListParser.h"
#include "alarm/Shown.h"
#include "alarm/ZeroMemory.h"
#include "base/Exceptions.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Files.h"

#include <QtCore/QBuffer>
#include <QtCore/QMetaObject>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

using namespace vn;

namespace {

const QString kInitialMessage = "Initialisation Error"_q;

QVariant parsed(AlarmListParser &parser, QByteArray text)
{
    return parser.parse(&text);
}

} // namespace

// ---- Forms of input -----------------------------------------------------------------------------

TEST(AlarmListInput, bufferEndsWithTwoZeroBytes)
{
    AlarmListParser parser;
    char buffer[] = "[1,2]\0"; // and the one that ends the literal
    EXPECT_EQ(shown(parser.parse(buffer, sizeof buffer)), "[2, 1]"_q);
    char smallest[] = "\0";
    expectParseError([&] { parser.parse(smallest, sizeof smallest); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 0);
}

TEST(AlarmListInput, bufferIsAsBeforeWhenTheCallReturns)
{
    AlarmListParser parser;
    for (const QByteArray &text :
         {"{a:[1,'x y',true]} # rest"_b, "[1 2 3]"_b, "[word word]"_b, "['open"_b, "]]]]"_b}) {
        AlarmListParser fresh;
        QByteArray buffer = text + "\0\0"_b;
        const QByteArray before(buffer.constData(), buffer.size());
        try {
            fresh.parse(buffer.data(), static_cast<unsigned>(buffer.size()));
        } catch (const ParseException &) {
        }
        EXPECT_EQ(buffer, before);
    }
}

TEST(AlarmListInput, byteArrayKeepsTheTwoZeroBytes)
{
    AlarmListParser parser;
    QByteArray data = "{}";
    EXPECT_EQ(shown(parser.parse(&data)), "{}"_q);
    EXPECT_EQ(data, "{}\0\0"_b);
    // What was there before is the text, its zero bytes included.
    EXPECT_EQ(shown(parser.parse(&data)), "{}"_q);
    EXPECT_EQ(data, "{}\0\0\0\0"_b);
}

TEST(AlarmListInput, byteArrayKeepsThemAfterAFailure_too)
{
    AlarmListParser parser;
    QByteArray data = "[1 2]";
    EXPECT_THROW(parser.parse(&data), ParseException);
    EXPECT_EQ(data, "[1 2]\0\0"_b);
}

TEST(AlarmListInput, byteArrayLeavesItsCopiesAlone)
{
    AlarmListParser parser;
    QByteArray data = "[a,b]";
    const QByteArray copy = data;
    parser.parse(&data);
    EXPECT_EQ(copy, "[a,b]"_b);
    QByteArray none;
    EXPECT_THROW(parser.parse(&none), ParseException);
    EXPECT_EQ(none, "\0\0"_b);
}

TEST(AlarmListInput, stringIsLatin1)
{
    AlarmListParser parser;
    EXPECT_EQ(shown(parser.parse(QString::fromLatin1("['\xe4']"))),
              QString::fromLatin1("[\"\xe4\"]"));
    EXPECT_EQ(shown(parser.parse("['\u20ac']"_q)), "[\"?\"]"_q);
    expectParseError([&] { parser.parse(QString()); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 0);
}

TEST(AlarmListInput, streamIsReadFromWhereItIs)
{
    AlarmListParser parser;
    QString text = "ignored [1, 2]"_q;
    QTextStream stream(&text);
    QString word;
    stream >> word;
    EXPECT_EQ(shown(parser.parse(&stream)), "[2, 1]"_q);
    EXPECT_TRUE(stream.atEnd());
    const QTextStream *const asConst = &stream;
    EXPECT_THROW(parser.parse(asConst), ParseException);
}

TEST(AlarmListInput, deviceMustItselfEndWithTwoZeroBytes)
{
    AlarmListParser parser;
    QByteArray content = "[1, 2]\0\0"_b;
    QBuffer device(&content);
    device.open(QIODevice::ReadOnly);
    EXPECT_EQ(shown(parser.parse(&device)), "[2, 1]"_q);
    EXPECT_TRUE(device.atEnd());
    EXPECT_EQ(content, "[1, 2]\0\0"_b);
}

TEST(AlarmListInput, deviceIsReadFromWhereItIs)
{
    AlarmListParser parser;
    QByteArray content = "ignored[1]\0\0"_b;
    QBuffer device(&content);
    device.open(QIODevice::ReadOnly);
    device.seek(7);
    expectParseError(
        [&] {
            device.seek(0);
            parser.parse(&device);
        },
        "syntax error, unexpected TSTRING, expecting '{' or '['"_q, 0, 0, 7);
    device.seek(7);
    EXPECT_EQ(shown(parser.parse(&device)), "[1]"_q);
}

TEST(AlarmListInput, deviceMayDeliverInPieces)
{
    AlarmListParser parser;
    SequentialDevice device({"[1,", " 'a", " b']", "\0\0"_b}, SequentialDevice::End::NoMore, 5);
    EXPECT_EQ(shown(parser.parse(&device)), "[\"a b\", 1]"_q);
}

TEST(AlarmListInput, failingDeviceIsAParseExceptionWithItsCause)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "[1 2]"), ParseException);
    FailingDevice device("[1, 2]\0\0"_b, 3);
    expectThrows<ParseException>([&] { parser.parse(&device); },
                                 [](const ParseException &e) {
                                     EXPECT_EQ(e.startLine(), 0);
                                     EXPECT_EQ(e.startColumn(), 0);
                                     EXPECT_EQ(e.endLine(), 0);
                                     EXPECT_EQ(e.endColumn(), 0);
                                     ASSERT_NE(e.cause(), nullptr);
                                     EXPECT_NE(dynamic_cast<const IOException *>(e.cause()),
                                               nullptr);
                                     EXPECT_EQ(e.message(), e.cause()->message());
                                     EXPECT_TRUE(e.message().contains("the medium is worn out"_q))
                                         << qPrintable(e.message());
                                 });
    EXPECT_EQ(parser.errorMessage(), kInitialMessage);
}

TEST(AlarmListInput, closedDeviceIsAParseException)
{
    AlarmListParser parser;
    QBuffer device;
    expectThrows<ParseException>([&] { parser.parse(&device); },
                                 [](const ParseException &e) {
                                     ASSERT_NE(e.cause(), nullptr);
                                     EXPECT_NE(dynamic_cast<const IOException *>(e.cause()),
                                               nullptr);
                                 });
}

TEST(AlarmListInput, textOf2GiBIsRefused)
{
    constexpr unsigned int kFirstRefused = 0x80000000U + 2;
    AlarmListParser parser;
    ZeroMemory memory(0xffffffffU);
    std::memcpy(memory.data(), "[1]", 3);
    for (const unsigned int length : {kFirstRefused, 0xffffffffU}) {
        expectParseError([&] { parser.parse(memory.data(), length); }, "text of 2 GiB or more"_q, 0,
                         0, 0);
        EXPECT_EQ(parser.errorMessage(), kInitialMessage);
    }
    // One byte less is scanned; the zero byte behind the array ends it.
    EXPECT_EQ(shown(parser.parse(memory.data(), kFirstRefused - 1)), "[1]"_q);
}

// ---- What stays between two texts ---------------------------------------------------------------

TEST(AlarmListParserState, isResetForEachText)
{
    AlarmListParser parser;
    EXPECT_TRUE(parser.errorMessage().isEmpty());
    EXPECT_THROW(parsed(parser, "[1 2]"), ParseException);
    EXPECT_EQ(parser.errorMessage(), "syntax error, unexpected TNUMBER, expecting ']'"_q);
    EXPECT_EQ(shown(parsed(parser, "[1]")), "[1]"_q);
    EXPECT_EQ(parser.errorMessage(), kInitialMessage);
    // The second failure counts from 0 again.
    for (int i = 0; i < 2; ++i)
        expectParseError([&] { parsed(parser, "[1 2]"); },
                         "syntax error, unexpected TNUMBER, expecting ']'"_q, 0, 3, 4);
}

TEST(AlarmListParserState, valuesOfEarlierTextsStay)
{
    AlarmListParser parser;
    const QVariant first = parsed(parser, "[['x'],{a:1}]");
    const QVariant second = parsed(parser, "{b:2}");
    EXPECT_THROW(parsed(parser, "{b:"), ParseException);
    EXPECT_EQ(shown(first), "[{\"a\": 1}, [\"x\"]]"_q);
    EXPECT_EQ(shown(second), "{\"b\": 2}"_q);
}

TEST(AlarmListParserState, aTextThatEndsInAStringLeavesTheNextInIt)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "[\"abc"), ParseException);
    // The rest of the string comes first; no list begins with one.
    expectParseError([&] { parsed(parser, "def\"]"); },
                     "syntax error, unexpected TSTRING, expecting '{' or '['"_q, 0, 0, 4);
    EXPECT_EQ(shown(parsed(parser, "[1]")), "[1]"_q);
}

TEST(AlarmListParserState, aTextThatEndsInAStringByATabLeavesTheNextInIt)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "['abc\t"), ParseException);
    expectParseError([&] { parsed(parser, "\"[1]"); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 4);
    expectParseError([&] { parsed(parser, "'[1]"); },
                     "syntax error, unexpected TSTRING, expecting '{' or '['"_q, 0, 0, 1);
    EXPECT_EQ(shown(parsed(parser, "[1]")), "[1]"_q);
}

TEST(AlarmListParserState, aTextThatEndsInACommentLeavesTheNextInIt)
{
    AlarmListParser parser;
    EXPECT_EQ(shown(parsed(parser, "[1] /* c")), "[1]"_q);
    expectParseError([&] { parsed(parser, "[2]"); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 3);
    EXPECT_EQ(shown(parsed(parser, "c */ [3]")), "[3]"_q);
}

TEST(AlarmListParserState, anErrorInTheTextLeavesTheScannerOutsideOfStrings)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "[1 2 'rest"), ParseException);
    EXPECT_EQ(shown(parsed(parser, "[3]")), "[3]"_q);
}

TEST(AlarmListParserState, spaceBehindTheLastTokenIsNotCountedInTheNextText)
{
    AlarmListParser parser;
    EXPECT_THROW(parsed(parser, "[:    1]"), ParseException);
    expectParseError([&] { parsed(parser, "x"); },
                     "syntax error, unexpected TSTRING, expecting '{' or '['"_q, 0, 0, 1);
    expectParseError([&] { parsed(parser, ""); },
                     "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0, 0);
}

TEST(AlarmListParserState, isEachParsersOwn)
{
    AlarmListParser inString;
    AlarmListParser inComment;
    AlarmListParser outside;
    EXPECT_THROW(parsed(inString, "['abc"), ParseException);
    EXPECT_THROW(parsed(inComment, "[/*"), ParseException);
    EXPECT_EQ(shown(parsed(outside, "['x']")), "[\"x\"]"_q);
    EXPECT_THROW(parsed(inString, "[1]'"), ParseException);
    EXPECT_EQ(shown(parsed(inComment, "*/[1]")), "[1]"_q);
}

TEST(AlarmListParserState, memoryOfATextIsNotUsedAfterwards)
{
    AlarmListParser parser;
    QVariant value;
    {
        QByteArray text = "{'key': ['a text', word]}";
        value = parser.parse(&text);
        text.fill('x');
    }
    EXPECT_EQ(shown(value), "{\"key\": [\"word\", \"a text\"]}"_q);
}

TEST(AlarmListParserState, remembersKeysOfObjectsInsideOfOthers)
{
    // The keys of the outer and the inner objects are remembered in one place, in turn.
    const QByteArray object = "{a:[{state:1},{state:2}],b:3}";
    const QString expected = "{\"a\": [{\"state\": 2}, {\"state\": 1}], \"b\": 3}"_q;
    AlarmListParser parser;
    EXPECT_EQ(shown(parsed(parser, "[" + object + "," + object + "," + object + "]")),
              QStringLiteral("[%1, %1, %1]").arg(expected));
}

// ---- The object ---------------------------------------------------------------------------------

TEST(AlarmListParserObject, hasAParent)
{
    QObject parent;
    AlarmListParser *const parser = new AlarmListParser(&parent);
    EXPECT_EQ(parser->parent(), &parent);
    EXPECT_EQ(AlarmListParser().parent(), nullptr);
}

TEST(AlarmListParserObject, hasNoSignalsSlotsOrProperties)
{
    const QMetaObject &meta = AlarmListParser::staticMetaObject;
    EXPECT_STREQ(meta.className(), "vn::AlarmListParser");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(meta.methodCount(), meta.methodOffset());
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
    EXPECT_EQ(meta.enumeratorCount(), 0);
    EXPECT_EQ(meta.constructorCount(), 0);
    EXPECT_EQ(meta.classInfoCount(), 0);
    AlarmListParser parser;
    EXPECT_EQ(parser.metaObject(), &meta);
    EXPECT_TRUE(parser.inherits("vn::AlarmListParser"));
    EXPECT_EQ(qobject_cast<AlarmListParser *>(static_cast<QObject *>(&parser)), &parser);
}
