// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateDocument.h"

#include "alarm/AlarmDocument.h"
#include "alarm/AlarmUpdateLines.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScriptTest.h"
#include "base/Exceptions.h"
#include "reference/AlarmText.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <thread>
#include <unistd.h>

using namespace vn;

namespace {

QString outline(const AlarmValue &value)
{
    QStringList lines;
    for (const AlarmMember &member : value.members()) {
        QStringList texts;
        for (const AlarmMember &element : member.value.members())
            texts << element.value.text();
        lines << "%1@%2+%3 %4 @%5+%6 %7"_q.arg(member.key)
                     .arg(member.keyRange.offset)
                     .arg(member.keyRange.length)
                     .arg(int(member.value.kind()))
                     .arg(member.value.range().offset)
                     .arg(member.value.range().length)
                     .arg(texts.isEmpty() ? member.value.text() : texts.join("|"_q));
    }
    return lines.join("\n"_q);
}

} // namespace

TEST(AlarmUpdateDocument, hasPairsInTheOrderOfTheText)
{
    const AlarmUpdateDocument update =
        AlarmUpdateDocument::parse("z=1;a=-2.5;z=true;d=2010-05-01;\nt=12:30:00;l=x,y,x;q=\"a;b\"");
    EXPECT_EQ(outline(update.root()), "z@0+1 3 @2+1 1\n"
                                      "a@4+1 3 @6+4 -2.5\n"
                                      "z@11+1 2 @13+4 true\n"
                                      "d@18+1 5 @20+10 2010-05-01\n"
                                      "t@32+1 6 @34+8 12:30:00\n"
                                      "l@43+1 7 @45+5 x|y|x\n"
                                      "q@51+1 4 @53+5 \"a;b\""_q);
    EXPECT_EQ(update.root()["z"_q].number(), 1);
    EXPECT_EQ(update.root()["d"_q].range().line, 1);
    EXPECT_EQ(update.root()["t"_q].range().line, 2);
    EXPECT_FALSE(update.isErrorReport());
}

TEST(AlarmUpdateDocument, knowsErrorReports)
{
    const AlarmUpdateDocument update = AlarmUpdateDocument::parse(" #Camera offline:2.0;x=1");
    EXPECT_TRUE(update.isErrorReport());
    EXPECT_EQ(outline(update.root()), "Camera offline@2+14 3 @17+3 2.0"_q);
}

TEST(AlarmUpdateDocument, refusesWhatTheParserRefuses)
{
    try {
        (void)AlarmUpdateDocument::parse("x=1,2");
        FAIL() << "accepted";
    } catch (const ParseException &e) {
        EXPECT_EQ(e.message(), "syntax error, unexpected ',', expecting $end"_q);
        EXPECT_EQ(e.startColumn(), 3);
        EXPECT_EQ(e.endColumn(), 4);
    }
}

TEST(AlarmUpdateDocument, withoutAValueIsInvalid)
{
    EXPECT_EQ(AlarmUpdateDocument().root().kind(), AlarmValue::Kind::Invalid);
    EXPECT_FALSE(AlarmUpdateDocument().isErrorReport());
}

using AlarmUpdateDocumentScripts = ScriptTest;

TEST_F(AlarmUpdateDocumentScripts, publishEachValueAsTheParserDoes)
{
    QByteArray text = "x=1;a=-2.5;x=2;d=2010-05-01;t=12:30:00;l=x,y,z;q=\"a;b\";b=true";
    const AlarmUpdateDocument update = AlarmUpdateDocument::parse(text);
    const QScriptValue published = AlarmUpdateParser(&m_engine).parse(&text);
    const QScriptValue object = update.root().toScriptValue(&m_engine);
    m_engine.globalObject().setProperty("p"_q, published);
    m_engine.globalObject().setProperty("o"_q, object);
    EXPECT_TRUE(object.isObject());
    for (const char *const name : {"x", "a", "d", "t", "l", "q", "b"}) {
        SCOPED_TRACE(name);
        const QString key = QString::fromLatin1(name);
        const QScriptValue value = update.root()[key].toScriptValue(&m_engine);
        EXPECT_EQ(object.property(key).toString(), published.property(key).toString());
        EXPECT_EQ(value.toString(), published.property(key).toString());
        EXPECT_EQ(value.isDate(), published.property(key).isDate());
        EXPECT_EQ(value.isArray(), published.property(key).isArray());
        EXPECT_EQ(value.isNumber(), published.property(key).isNumber());
    }
    EXPECT_FALSE(AlarmValue().toScriptValue(&m_engine).isValid());
}

TEST_F(AlarmUpdateDocumentScripts, valuesOfListsAreOfTheirKinds)
{
    const QScriptValue nested =
        AlarmDocument::parse("[3, [1, 2], 'x', true]").root().toScriptValue(&m_engine);
    EXPECT_EQ(shown(nested), "[true, \"x\", [2, 1], 3]"_q);
    EXPECT_TRUE(nested.property(3).isNumber());
    const AlarmDocument object = AlarmDocument::parse("{a: null, b: {c: 1}, d: 4}");
    EXPECT_EQ(shown(object.root().toScriptValue(&m_engine)), "{d: 4}"_q);
    EXPECT_FALSE(object.root()["a"_q].toScriptValue(&m_engine).isValid());
}

// ---- Lines -------------------------------------------------------------------------------------

TEST(AlarmUpdateLines, aBadLineCostsThatLine)
{
    QByteArray text = "x=1\r\n\nx=\ny=2\n\n#m:1.5";
    QBuffer buffer(&text);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    AlarmUpdateLines lines(&buffer);
    EXPECT_EQ(lines.lineNumber(), 0);

    ASSERT_TRUE(lines.next());
    EXPECT_EQ(lines.lineNumber(), 1);
    EXPECT_EQ(lines.line(), "x=1");
    EXPECT_EQ(lines.update().root()["x"_q].number(), 1);
    EXPECT_FALSE(lines.error());

    ASSERT_TRUE(lines.next());
    EXPECT_EQ(lines.lineNumber(), 3);
    ASSERT_TRUE(lines.error());
    EXPECT_EQ(lines.error()->message(), "syntax error, unexpected $end"_q);
    EXPECT_EQ(lines.update().root().kind(), AlarmValue::Kind::Invalid);

    ASSERT_TRUE(lines.next());
    EXPECT_EQ(lines.lineNumber(), 4);
    EXPECT_FALSE(lines.error());
    EXPECT_EQ(lines.update().root()["y"_q].number(), 2);

    ASSERT_TRUE(lines.next());
    EXPECT_EQ(lines.lineNumber(), 6);
    EXPECT_TRUE(lines.update().isErrorReport());

    EXPECT_FALSE(lines.next());
    EXPECT_FALSE(lines.next());
}

TEST(AlarmUpdateLines, giveALineBeforeTheNextIsWritten)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    QFile file;
    ASSERT_TRUE(file.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    AlarmUpdateLines lines(&file);
    for (int i = 0; i < 3; ++i) {
        const QByteArray line = "n=" + QByteArray::number(i) + "\n";
        ASSERT_EQ(::write(ends[1], line.constData(), static_cast<std::size_t>(line.size())),
                  line.size());
        ASSERT_TRUE(lines.next());
        EXPECT_EQ(lines.update().root()["n"_q].number(), i);
    }
    ::close(ends[1]);
    EXPECT_FALSE(lines.next());
}

TEST(AlarmUpdateLines, lineLongerThanAnyBuffer)
{
    QByteArray text = "k=\"" + QByteArray(100000, 'x') + "\"\nn=2";
    QBuffer buffer(&text);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    AlarmUpdateLines lines(&buffer);
    ASSERT_TRUE(lines.next());
    EXPECT_EQ(lines.update().root()["k"_q].text().size(), 100002);
    ASSERT_TRUE(lines.next());
    EXPECT_EQ(lines.update().root()["n"_q].number(), 2);
    EXPECT_FALSE(lines.next());
}

TEST(AlarmUpdateLines, aDeviceThatCannotBeReadIsAnError)
{
    QBuffer closed;
    EXPECT_THROW(AlarmUpdateLines(&closed).next(), IOException);
    QFile folder("/"_q);
    ASSERT_FALSE(folder.open(QIODevice::ReadOnly));
    EXPECT_THROW(AlarmUpdateLines(&folder).next(), FileException);
}

// ---- Fatal errors ------------------------------------------------------------------------------

using AlarmUpdateParserFatalErrors = ScriptTest;

TEST_F(AlarmUpdateParserFatalErrors, endTheProcessUnlessTheCallerWantsExceptions)
{
    AlarmUpdateParser parser(&m_engine);
    EXPECT_EQ(parser.fatalErrors(), FatalErrors::EndProcess);
    parser.setFatalErrors(FatalErrors::Throw);
    EXPECT_EQ(parser.fatalErrors(), FatalErrors::Throw);
    EXPECT_EQ(parser.parse("x=1"_q).property("x"_q).toInt32(), 1);
}
