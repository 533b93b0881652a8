// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What only parsers of updates have: an engine and its values, dates, building of values.

#include "alarm/Languages.h"
#include "alarm/TimeZone.h"
#include "base/Exceptions.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vn;

namespace {

class AlarmUpdateParserTest : public ScriptTest
{
protected:
    QScriptValue parsed(QByteArray text) { return m_parser.parse(&text); }

    AlarmUpdateParser m_parser{&m_engine};
};

} // namespace

// ---- What stays between two texts ---------------------------------------------------------------

TEST_F(AlarmUpdateParserTest, anUnclosedQuoteDoesNotReachTheNextText)
{
    EXPECT_THROW(parsed("x=\"abc"), ParseException);
    EXPECT_EQ(shown(parsed("x=1")), "{x: 1}"_q);
}

TEST_F(AlarmUpdateParserTest, manyKeysComeAndGoWhileTheEngineCollectsItsGarbage)
{
    // More keys than are remembered, so that names are dropped which nobody else holds.
    for (int round = 0; round < 30; ++round) {
        QByteArray text;
        for (int i = 0; i < 90; ++i)
            text +=
                (i ? ";k" : "k") + QByteArray::number(round * 61 + i) + "=" + QByteArray::number(i);
        const QScriptValue update = parsed(text);
        m_engine.collectGarbage();
        for (const int i : {0, 45, 89})
            ASSERT_EQ(update.property("k%1"_q.arg(round * 61 + i)).toInt32(), i);
    }
}

TEST_F(AlarmUpdateParserTest, eachParseGivesAnObjectOfItsOwn)
{
    QScriptValue first = parsed("x=1");
    QScriptValue second = parsed("x=1");
    first.setProperty("x"_q, 5);
    EXPECT_EQ(shown(second), "{x: 1}"_q);
}

namespace {

/** Parses a text that has keys of other lengths, so that more is read than was. */
QScriptValue parseAgain(QScriptContext *, QScriptEngine *, void *parser)
{
    QByteArray text;
    for (int i = 0; i < 90; ++i)
        text += (i ? ";other" : "other") + QByteArray::number(i) + "=u,v";
    return static_cast<AlarmUpdateParser *>(parser)->parse(&text);
}

} // namespace

TEST_F(AlarmUpdateParserTest, settersOfScriptsMayParse)
{
    m_engine.globalObject().setProperty(
        "parse"_q, m_engine.newFunction(parseAgain, static_cast<void *>(&m_parser)));
    m_engine.evaluate(
        "Object.prototype.__defineSetter__('c', function(v) { inner = parse(); });"_q);
    ASSERT_FALSE(m_engine.hasUncaughtException());
    const QScriptValue outer = parsed("a=x,y;b=2;c=3;d=z");
    EXPECT_EQ(outer.property("d"_q).toString(), "z"_q);
    EXPECT_EQ(outer.property("b"_q).toInt32(), 2);
    EXPECT_EQ(outer.property("a"_q).toString(), "y,x"_q);
    const QScriptValue inner = m_engine.globalObject().property("inner"_q);
    EXPECT_EQ(inner.property("other0"_q).toString(), "v,u"_q);
    EXPECT_EQ(inner.property("other89"_q).toString(), "v,u"_q);
    EXPECT_EQ(shown(parsed("x=1")), "{x: 1}"_q);
}

TEST_F(AlarmUpdateParserTest, equalDatesAreEachADateOfTheirOwn)
{
    const QScriptValue update = parsed("a=2010-05-01;b=2010-05-01;c=2010-05-02;d=2010-05-01");
    const QDateTime first(QDate(2010, 5, 1), QTime(0, 0));
    for (const char *key : {"a", "b", "d"})
        EXPECT_EQ(update.property(QString::fromLatin1(key)).toDateTime(), first) << key;
    EXPECT_EQ(update.property("c"_q).toDateTime(), first.addDays(1));
    m_engine.globalObject().setProperty("update"_q, update);
    EXPECT_EQ(m_engine.evaluate("update.a.setFullYear(2000); update.b.getFullYear()"_q).toInt32(),
              2010);
}

TEST_F(AlarmUpdateParserTest, equalDatesThatDoNotExistAreInvalid)
{
    const QScriptValue update = parsed("a=2010-13-45;b=2010-13-45;c=25:00:00;d=25:00:00");
    for (const char *key : {"a", "b", "c", "d"}) {
        const QScriptValue date = update.property(QString::fromLatin1(key));
        EXPECT_TRUE(date.isDate()) << key;
        EXPECT_TRUE(std::isnan(date.toNumber())) << key;
    }
}

TEST_F(AlarmUpdateParserTest, datesFollowTheTimeZoneOfTheirParse)
{
    const auto milliseconds = [&](const char *name) {
        const TimeZone zone(name);
        return parsed("d=2010-01-01").property("d"_q).toNumber();
    };
    const double utc = milliseconds("UTC");
    const double east = milliseconds("EAST-2");
    const double again = milliseconds("UTC");
    EXPECT_EQ(utc, 1262304000000.0);
    EXPECT_EQ(east, utc - 2 * 3600 * 1000.0);
    EXPECT_EQ(again, utc);
}

TEST_F(AlarmUpdateParserTest, dayWithoutALocalMidnightBeginsWithItsFirstMoment)
{
    const struct
    {
        const char *zone;
        const char *update;
        double milliseconds; // since 1970-01-01T00:00:00Z
    } rows[] = {
        {"America/Sao_Paulo", "d=2010-10-17", 1287284400000.0}, // 03:00 UTC, 01:00 there
        {"Asia/Beirut", "d=2010-03-28", 1269727200000.0},       // 22:00 UTC, 01:00 there
        {"America/Havana", "d=2010-03-14", 1268542800000.0},    // 05:00 UTC, 01:00 there
        {"America/Sao_Paulo", "d=2010-02-21", 1266721200000.0}, // 23:00 came twice before it
        {"Asia/Beirut", "d=2010-03-29", 1269810000000.0},
    };
    for (const auto &row : rows) {
        const TimeZone zone(row.zone);
        EXPECT_EQ(parsed(row.update).property("d"_q).toNumber(), row.milliseconds)
            << row.zone << " " << row.update;
    }
}

TEST_F(AlarmUpdateParserTest, dayThatTheZoneOrTheCalendarHasNotIsInvalid)
{
    const TimeZone zone("Pacific/Apia");
    for (const char *update : {"d=2011-12-30", "d=2011-02-29", "d=0000-01-01", "d=2011-13-01"})
        EXPECT_TRUE(std::isnan(parsed(update).property("d"_q).toNumber())) << update;
    EXPECT_EQ(parsed("d=2011-12-29").property("d"_q).toNumber(), 1325152800000.0); // UTC-10
    EXPECT_EQ(parsed("d=2011-12-31").property("d"_q).toNumber(), 1325239200000.0); // UTC+14
}

TEST_F(AlarmUpdateParserTest, twoParsersShareAnEngine)
{
    AlarmUpdateParser other(&m_engine);
    const QScriptValue mine = parsed("x=1");
    QByteArray text = "y=2";
    const QScriptValue others = other.parse(&text);
    EXPECT_EQ(mine.engine(), others.engine());
    EXPECT_EQ(shown(mine), "{x: 1}"_q);
    EXPECT_EQ(shown(others), "{y: 2}"_q);
}

// ---- Building values ----------------------------------------------------------------------------

TEST_F(AlarmUpdateParserTest, keyValueMakesAnObjectWithOneProperty)
{
    EXPECT_EQ(shown(m_parser.keyValue("k"_q, 1.5)), "{k: 1.5}"_q);
    EXPECT_EQ(shown(m_parser.keyValue(7, "v"_q)), "{7: \"v\"}"_q);
    EXPECT_EQ(shown(m_parser.keyValue(true, false)), "{true: false}"_q);
    EXPECT_EQ(m_parser.keyValue("k"_q, 1).engine(), &m_engine);
    EXPECT_EQ(m_parser.keyValue("k"_q, 1).propertyFlags("k"_q), QScriptValue::PropertyFlags());
}

TEST_F(AlarmUpdateParserTest, addPropertiesReplacesWhatIsThere)
{
    QScriptValue target = m_engine.evaluate("({x: 1, y: 2})"_q);
    const QScriptValue source = m_engine.evaluate("({y: 3, z: 4})"_q);
    const QScriptValue result = m_parser.addProperties(target, source);
    EXPECT_TRUE(result.strictlyEquals(target));
    EXPECT_EQ(shown(target), "{x: 1, y: 3, z: 4}"_q);
    EXPECT_EQ(shown(source), "{y: 3, z: 4}"_q);
}

TEST_F(AlarmUpdateParserTest, addPropertiesKeepsFlags)
{
    QScriptValue target = m_engine.newObject();
    target.setProperty("x"_q, 1, QScriptValue::SkipInEnumeration);
    m_parser.addProperties(target, m_engine.evaluate("({x: 2})"_q));
    EXPECT_EQ(target.property("x"_q).toInt32(), 2);
    EXPECT_EQ(target.propertyFlags("x"_q), QScriptValue::SkipInEnumeration);
}

TEST_F(AlarmUpdateParserTest, appendValueMakesAnArrayOfTwo)
{
    QScriptValue first("c"_q);
    const QScriptValue array = m_parser.appendValue(first, "b"_q);
    EXPECT_EQ(shown(array), "[\"c\", \"b\"]"_q);
    EXPECT_EQ(shown(first), "\"c\""_q);
}

TEST_F(AlarmUpdateParserTest, appendValueGrowsAnArray)
{
    QScriptValue array = m_engine.evaluate("['c', 'b']"_q);
    const QScriptValue result = m_parser.appendValue(array, "a"_q);
    EXPECT_TRUE(result.strictlyEquals(array));
    EXPECT_EQ(shown(array), "[\"c\", \"b\", \"a\"]"_q);
    QScriptValue empty = m_engine.newArray();
    EXPECT_EQ(shown(m_parser.appendValue(empty, 1)), "[1]"_q);
}
