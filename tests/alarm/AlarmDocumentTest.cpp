// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmDocument.h"

#include "alarm/AlarmListParser.h"
#include "base/Exceptions.h"
#include "reference/AlarmText.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

/** Every value with its place: "2:3-2:8 @10+5 key(1:2) = text". */
QString outline(const AlarmValue &value, const QString &key = QString())
{
    const TextRange range = value.range();
    QString text = "%1:%2-%3:%4 @%5+%6 %7%8\n"_q.arg(range.line)
                       .arg(range.column)
                       .arg(range.endLine)
                       .arg(range.endColumn)
                       .arg(range.offset)
                       .arg(range.length)
                       .arg(key)
                       .arg(value.count() > 0 ? QString::number(value.count()) : value.text());
    for (const AlarmMember &member : value.members())
        text += outline(member.value, member.key.isNull() ? QString()
                                                          : "%1(%2:%3) "_q.arg(member.key)
                                                                .arg(member.keyRange.line)
                                                                .arg(member.keyRange.column));
    return text;
}

} // namespace

TEST(AlarmDocument, hasValuesInTheOrderOfTheText)
{
    const AlarmDocument list =
        AlarmDocument::parse("{b: [1, 'x', [ ]],\n a: {}, 'b': true, c: null}");
    EXPECT_EQ(outline(list.root()), "1:1-2:28 @0+46 4\n"
                                    "1:5-1:18 @4+13 b(1:2) 3\n"
                                    "1:6-1:7 @5+1 1\n"
                                    "1:9-1:12 @8+3 x\n"
                                    "1:14-1:17 @13+3 [ ]\n"
                                    "2:5-2:7 @23+2 a(2:2) {}\n"
                                    "2:14-2:18 @32+4 b(2:9) true\n"
                                    "2:23-2:27 @41+4 c(2:20) null\n"_q);
    EXPECT_EQ(list.root().kind(), AlarmValue::Kind::Object);
}

TEST(AlarmDocument, hasKindsAndNumbers)
{
    const AlarmValue root =
        AlarmDocument::parse("[1.5e3, true, false, null, word, 'q', [], {}]").root();
    const QVector<AlarmMember> members = root.members();
    ASSERT_EQ(members.size(), 8);
    const AlarmValue::Kind kinds[] = {AlarmValue::Kind::Number, AlarmValue::Kind::Bool,
                                      AlarmValue::Kind::Bool,   AlarmValue::Kind::Null,
                                      AlarmValue::Kind::Text,   AlarmValue::Kind::Text,
                                      AlarmValue::Kind::Array,  AlarmValue::Kind::Object};
    const double numbers[] = {1500, 1, 0, 0, 0, 0, 0, 0};
    for (int i = 0; i < members.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(members.at(i).value.kind(), kinds[i]);
        EXPECT_EQ(members.at(i).value.number(), numbers[i]);
        EXPECT_TRUE(members.at(i).key.isNull());
        EXPECT_EQ(members.at(i).keyRange.length, 0);
    }
}

TEST(AlarmDocument, findsTheFirstOfARepeatedKey)
{
    const AlarmValue root = AlarmDocument::parse("{a: 1, b: 2, a: 3}").root();
    EXPECT_EQ(root["a"_q].number(), 1);
    EXPECT_EQ(root["b"_q].number(), 2);
    EXPECT_EQ(root["c"_q].kind(), AlarmValue::Kind::Invalid);
    EXPECT_EQ(root.count(), 3);
}

TEST(AlarmDocument, columnsAreThoseOfAnEditor)
{
    const AlarmValue root = AlarmDocument::parse("[\"Gr\xc3\xb6\xc3\x9f"
                                                 "e \xf0\x9f\x98\x80\", 2]")
                                .root();
    const TextRange range = root.members().at(1).value.range();
    EXPECT_EQ(range.column, 14);
    EXPECT_EQ(range.offset, 17);
}

TEST(AlarmDocument, valuesOutliveTheirDocument)
{
    AlarmValue value;
    {
        QByteArray text = "[[1, 2], 3]";
        value = AlarmDocument::parse(text).root().members().first().value;
        text.fill('x');
    }
    EXPECT_EQ(value.text(), "[1, 2]"_q);
    EXPECT_EQ(value.members().last().value.number(), 2);
}

TEST(AlarmDocument, publishesEachValueAsTheParserDoes)
{
    QByteArray text = "{a: [1, 2, {x: 'y', x: 'z'}], b: null, a: true}";
    const AlarmDocument document = AlarmDocument::parse(text);
    const QVariant published = AlarmListParser().parse(&text);
    EXPECT_EQ(shown(document.root().toVariant()), shown(published));
    EXPECT_EQ(shown(document.root()["a"_q].toVariant()), shown(published.toMap().value("a"_q)));
}

TEST(AlarmDocument, withoutAValueIsInvalid)
{
    const AlarmDocument document;
    EXPECT_EQ(document.root().kind(), AlarmValue::Kind::Invalid);
    EXPECT_EQ(document.root().range(), TextRange());
    EXPECT_TRUE(document.root().text().isNull());
    EXPECT_TRUE(document.root().members().isEmpty());
    EXPECT_FALSE(document.root().toVariant().isValid());
    EXPECT_EQ(document.root()["a"_q].kind(), AlarmValue::Kind::Invalid);
}

TEST(AlarmDocument, refusesWhatTheParserRefuses)
{
    try {
        (void)AlarmDocument::parse("[1 2]");
        FAIL() << "accepted";
    } catch (const ParseException &e) {
        EXPECT_EQ(e.message(), "syntax error, unexpected TNUMBER, expecting ']'"_q);
        EXPECT_EQ(e.startColumn(), 3);
        EXPECT_EQ(e.endColumn(), 4);
    }
}

// ---- Where a scanner cannot go on, and where it stands
// -------------------------------------------

TEST(AlarmDocument, throwsWhereTheProcessWouldEnd)
{
    try {
        (void)AlarmDocument::parse("{} /* *");
        FAIL() << "accepted";
    } catch (const ParseException &e) {
        EXPECT_EQ(e.message(), "flex scanner jammed"_q);
    }
}

TEST(AlarmListParserFatalErrors, areExceptionsWhereTheCallerWantsThem)
{
    AlarmListParser parser;
    EXPECT_EQ(parser.fatalErrors(), FatalErrors::EndProcess);
    parser.setFatalErrors(FatalErrors::Throw);
    EXPECT_EQ(parser.fatalErrors(), FatalErrors::Throw);
    for (int i = 0; i < 3; ++i) {
        QByteArray text = "[1] /* *";
        const QByteArray before = text + "\0\0"_b;
        try {
            (void)parser.parse(&text);
            FAIL() << "accepted";
        } catch (const ParseException &e) {
            EXPECT_EQ(e.message(), "flex scanner jammed"_q);
            EXPECT_EQ(e.startColumn(), 6);
            EXPECT_EQ(e.endColumn(), 7);
        }
        EXPECT_EQ(text, before);
        EXPECT_EQ(parser.errorMessage(), "flex scanner jammed"_q);
        EXPECT_FALSE(parser.isClean());
        parser.reset();
        EXPECT_TRUE(parser.isClean());
        EXPECT_EQ(parser.parse("[2]"_q).toList(), QVariantList{2.0});
    }
}

TEST(AlarmListParserClean, isFalseInsideOfAStringOrComment)
{
    struct
    {
        const char *text;
        bool isClean;
    } const rows[] = {
        {"{}", true},      {"{} 'a", false}, {"[", true},        {"{} \"a", false},
        {"{} /* ", false}, {"['\n", false},  {"{} /* */", true}, {"{} #", true},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        AlarmListParser parser;
        EXPECT_TRUE(parser.isClean());
        QByteArray text = row.text;
        try {
            (void)parser.parse(&text);
        } catch (const ParseException &) {
        }
        EXPECT_EQ(parser.isClean(), row.isClean);
        parser.reset();
        EXPECT_TRUE(parser.isClean());
        EXPECT_EQ(parser.parse("['x']"_q).toList(), QVariantList{"x"_q});
    }
}
