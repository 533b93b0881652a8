// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The parser object: forms of input, what stays between two texts, failures, building of values.

#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScriptTest.h"
#include "alarm/Shown.h"
#include "alarm/TimeZone.h"
#include "alarm/ZeroMemory.h"
#include "base/Exceptions.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Files.h"

#include <QtCore/QBuffer>
#include <QtCore/QMetaObject>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using namespace vn;

namespace {

const QString kInitialMessage = "Initialisation Error"_q;

class AlarmUpdateParserTest : public ScriptTest
{
protected:
    QScriptValue parsed(QByteArray text) { return m_parser.parse(&text); }

    AlarmUpdateParser m_parser{&m_engine};
};

} // namespace

// ---- Forms of input -----------------------------------------------------------------------------

TEST_F(AlarmUpdateParserTest, bufferEndsWithTwoZeroBytes)
{
    char buffer[] = "x=1\0"; // and the one that ends the literal
    EXPECT_EQ(shown(m_parser.parse(buffer, sizeof buffer)), "{x: 1}"_q);
}

TEST_F(AlarmUpdateParserTest, bufferIsAsBeforeWhenTheCallReturns)
{
    for (const QByteArray &text : {"#m:1.0;x=2"_b, "x=1,2,3"_b, "x=1!rest"_b, "x=\"open"_b}) {
        QByteArray buffer = text + "\0\0"_b;
        const QByteArray before(buffer.constData(), buffer.size());
        try {
            m_parser.parse(buffer.data(), static_cast<unsigned>(buffer.size()));
        } catch (const ParseException &) {
        }
        EXPECT_EQ(buffer, before);
    }
}

TEST_F(AlarmUpdateParserTest, byteArrayKeepsTheTwoZeroBytes)
{
    QByteArray data = "x=1";
    EXPECT_EQ(shown(m_parser.parse(&data)), "{x: 1}"_q);
    EXPECT_EQ(data, "x=1\0\0"_b);
    QByteArray wrong = "x";
    EXPECT_THROW(m_parser.parse(&wrong), ParseException);
    EXPECT_EQ(wrong, "x\0\0"_b);
}

TEST_F(AlarmUpdateParserTest, stringIsLatin1)
{
    EXPECT_EQ(shown(m_parser.parse(QString::fromLatin1("x=\"\xe4\""))),
              QString::fromLatin1("{x: \"\"\xe4\"\"}"));
    EXPECT_EQ(shown(m_parser.parse("x=\"\u20ac\""_q)), "{x: \"\"?\"\"}"_q);
    EXPECT_THROW(m_parser.parse(QString()), ParseException);
}

TEST_F(AlarmUpdateParserTest, streamIsReadFromWhereItIs)
{
    QString text = "ignored x=1"_q;
    QTextStream stream(&text);
    QString word;
    stream >> word;
    EXPECT_EQ(shown(m_parser.parse(&stream)), "{ x: 1}"_q);
    EXPECT_TRUE(stream.atEnd());
}

TEST_F(AlarmUpdateParserTest, deviceMustItselfEndWithTwoZeroBytes)
{
    QByteArray content = "x=1;y=a,b\0\0"_b;
    QBuffer device(&content);
    device.open(QIODevice::ReadOnly);
    EXPECT_EQ(shown(m_parser.parse(&device)), "{y: [\"b\", \"a\"], x: 1}"_q);
    SequentialDevice pieces({"x=", "1", "\0\0"_b}, SequentialDevice::End::NoMore, 5);
    EXPECT_EQ(shown(m_parser.parse(&pieces)), "{x: 1}"_q);
}

TEST_F(AlarmUpdateParserTest, failingDeviceIsAParseExceptionWithItsCause)
{
    FailingDevice device("x=1\0\0"_b, 3);
    expectThrows<ParseException>([&] { m_parser.parse(&device); },
                                 [](const ParseException &e) {
                                     EXPECT_EQ(e.startLine(), 0);
                                     EXPECT_EQ(e.startColumn(), 0);
                                     EXPECT_EQ(e.endLine(), 0);
                                     EXPECT_EQ(e.endColumn(), 0);
                                     ASSERT_NE(e.cause(), nullptr);
                                     EXPECT_NE(dynamic_cast<const IOException *>(e.cause()),
                                               nullptr);
                                     EXPECT_TRUE(e.message().contains("the medium is worn out"_q))
                                         << qPrintable(e.message());
                                 });
    EXPECT_EQ(m_parser.errorMessage(), kInitialMessage);
}

TEST_F(AlarmUpdateParserTest, textOf2GiBIsRefused)
{
    constexpr unsigned int kFirstRefused = 0x80000000U + 2;
    ZeroMemory memory(kFirstRefused);
    std::memcpy(memory.data(), "x=1", 3);
    expectParseError([&] { m_parser.parse(memory.data(), kFirstRefused); },
                     "text of 2 GiB or more"_q, 0, 0, 0);
    // One byte less is scanned; the zero byte behind the pair ends it.
    EXPECT_EQ(shown(m_parser.parse(memory.data(), kFirstRefused - 1)), "{x: 1}"_q);
}

// ---- What stays between two texts ---------------------------------------------------------------

TEST_F(AlarmUpdateParserTest, isResetForEachText)
{
    EXPECT_TRUE(m_parser.errorMessage().isEmpty());
    for (int i = 0; i < 2; ++i)
        expectParseError([&] { parsed("x=1,2"); }, "syntax error, unexpected ',', expecting $end"_q,
                         0, 3, 4);
    EXPECT_EQ(m_parser.errorMessage(), "syntax error, unexpected ',', expecting $end"_q);
    EXPECT_EQ(shown(parsed("x=1")), "{x: 1}"_q);
    EXPECT_EQ(m_parser.errorMessage(), kInitialMessage);
}

TEST_F(AlarmUpdateParserTest, anUnclosedQuoteDoesNotReachTheNextText)
{
    EXPECT_THROW(parsed("x=\"abc"), ParseException);
    EXPECT_EQ(shown(parsed("x=1")), "{x: 1}"_q);
}

TEST_F(AlarmUpdateParserTest, valuesOfEarlierTextsStay)
{
    const QScriptValue first = parsed("x=a,b");
    const QScriptValue second = parsed("x=1;y=2");
    EXPECT_THROW(parsed("x="), ParseException);
    m_engine.collectGarbage();
    EXPECT_EQ(shown(first), "{x: [\"b\", \"a\"]}"_q);
    EXPECT_EQ(shown(second), "{y: 2, x: 1}"_q);
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

// ---- The object ---------------------------------------------------------------------------------

TEST_F(AlarmUpdateParserTest, hasAParent)
{
    QObject parent;
    EXPECT_EQ((new AlarmUpdateParser(&m_engine, &parent))->parent(), &parent);
    EXPECT_EQ(m_parser.parent(), nullptr);
}

TEST_F(AlarmUpdateParserTest, hasNoSignalsSlotsOrProperties)
{
    const QMetaObject &meta = AlarmUpdateParser::staticMetaObject;
    EXPECT_STREQ(meta.className(), "vn::AlarmUpdateParser");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(meta.methodCount(), meta.methodOffset());
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
    EXPECT_EQ(meta.enumeratorCount(), 0);
    EXPECT_EQ(meta.constructorCount(), 0);
    EXPECT_EQ(meta.classInfoCount(), 0);
    EXPECT_EQ(m_parser.metaObject(), &meta);
    EXPECT_TRUE(m_parser.inherits("vn::AlarmUpdateParser"));
}
