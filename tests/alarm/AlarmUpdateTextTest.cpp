// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What only alarm updates have: script values, dates, names, and how much the stack holds.

#include "alarm/Languages.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vn;

namespace {

class AlarmUpdateText : public LanguageTest<Updates>
{
protected:
    QScriptValue parsed(QByteArray text) { return m_parser->parse(&text); }

    QString shownPrototype(const QScriptValue &object)
    {
        const QScriptValue usual = m_engine.newObject().prototype();
        return object.prototype().strictlyEquals(usual) ? "usual"_q : shown(object.prototype());
    }
};

} // namespace

TEST_F(AlarmUpdateText, valuesHaveTheTypesOfTheirTokens)
{
    const QScriptValue object = parsed("i=1;f=1.0;b=true;d=2010-05-01;t=12:30:00;s=x;l=x,y");
    EXPECT_TRUE(object.isObject());
    EXPECT_EQ(object.engine(), &m_engine);
    EXPECT_TRUE(object.property("i"_q).isNumber());
    EXPECT_TRUE(object.property("f"_q).isNumber());
    EXPECT_TRUE(object.property("b"_q).isBool());
    EXPECT_TRUE(object.property("d"_q).isDate());
    EXPECT_TRUE(object.property("t"_q).isDate());
    EXPECT_TRUE(object.property("s"_q).isString());
    EXPECT_TRUE(object.property("l"_q).isArray());
    EXPECT_EQ(object.property("l"_q).property("length"_q).toInt32(), 2);
}

TEST_F(AlarmUpdateText, scriptsReadTheResult)
{
    m_engine.globalObject().setProperty("update"_q, parsed("state=1;cams=front,back;level=-.5"));
    EXPECT_EQ(m_engine.evaluate("update.cams.join('+') + update.state + update.level"_q).toString(),
              "back+front1-0.5"_q);
}

TEST_F(AlarmUpdateText, dateIsLocalMidnight)
{
    // Summer and winter time of the zone of all tests, and the last hours before it had either.
    EXPECT_EQ(parsed("d=2010-05-01").property("d"_q).toNumber(), 1272664800000.0);
    EXPECT_EQ(parsed("d=2010-01-01").property("d"_q).toNumber(), 1262300400000.0);
    EXPECT_EQ(parsed("d=1970-01-01").property("d"_q).toNumber(), -3600000.0);
    EXPECT_EQ(parsed("d=2010-05-01").property("d"_q).toDateTime(),
              QDateTime(QDate(2010, 5, 1), QTime(0, 0)));
    EXPECT_TRUE(std::isnan(parsed("d=2010-13-45").property("d"_q).toNumber()));
    EXPECT_TRUE(std::isnan(parsed("t=12:30:00").property("t"_q).toNumber()));
}

TEST_F(AlarmUpdateText, propertyNamesMayBeAnything)
{
    // What the steps of the rules give, one after another, for names that objects know already.
    const QList<QByteArray> names = {"__proto__", "length", "toString",       "constructor",
                                     "0",         "1",      "hasOwnProperty", "__defineGetter__",
                                     "prototype", "\"\""};
    const QList<QByteArray> values = {"1", "text", "2010-05-01", "p,q"};
    for (const QByteArray &first : names) {
        for (const QByteArray &second : names) {
            for (const QByteArray &value : values) {
                // A number is a key only with something behind it.
                const QByteArray left = first + (first.size() == 1 ? "/" : "");
                const QByteArray right = second + (second.size() == 1 ? "/" : "");
                SCOPED_TRACE((left + "=" + value + ";" + right + "=r,s").constData());
                QScriptValue members =
                    m_parser->keyValue(QString::fromLatin1(right), parsed("v=r,s").property("v"_q));
                const QScriptValue pair = m_parser->keyValue(QString::fromLatin1(left),
                                                             parsed("v=" + value).property("v"_q));
                const QScriptValue expected = m_parser->addProperties(members, pair);
                const QScriptValue object = parsed(left + "=" + value + ";" + right + "=r,s");
                EXPECT_EQ(shown(object), shown(expected));
                EXPECT_EQ(shownPrototype(object), shownPrototype(expected));
            }
        }
    }
}

// With n * n steps, as many zero bytes would take hours.
TEST_F(AlarmUpdateText, manyZeroBytesTakeNoLongerThanOthers)
{
    const QByteArray zeros(4000000, '\0');
    EXPECT_EQ(parsed("x=\"" + zeros + "\"").property("x"_q).toString().size(), 4000002);
    expectParseError([&] { parsed("x=\"" + zeros); }, "syntax error, unexpected $end"_q, 0, 2, 3);
}

TEST_F(AlarmUpdateText, longTextsKeepEveryByte)
{
    const QByteArray word = repeated("a b", 30000, ".");
    EXPECT_EQ(parsed("x=" + word).property("x"_q).toString(), QString::fromLatin1(word));
    const QByteArray quote = "\"" + repeated(";\n", 30000, "=") + "\"";
    EXPECT_EQ(parsed("x=" + quote).property("x"_q).toString(), QString::fromLatin1(quote));
}

// ---- The stack ----------------------------------------------------------------------------------

TEST_F(AlarmUpdateText, stackHolds98Pairs)
{
    const QScriptValue object = parsed(repeated("x=1", 97, ";") + ";last=1");
    EXPECT_EQ(shown(object), "{last: 1, x: 1}"_q);
    EXPECT_NO_THROW(parsed(repeated("x=1", 98, ";")));
    // The value of the 99th pair fills the stack.
    expectParseError([&] { parsed(repeated("x=1", 99, ";")); }, "memory exhausted"_q, 0, 394, 395);
}

TEST_F(AlarmUpdateText, stackHolds98StringsOfAList)
{
    const QScriptValue list = parsed("x=" + repeated("s", 98, ",")).property("x"_q);
    EXPECT_EQ(list.property("length"_q).toInt32(), 98);
    // The 99th string fills the stack.
    expectParseError([&] { parsed("x=" + repeated("s", 99, ",")); }, "memory exhausted"_q, 0, 198,
                     199);
}
