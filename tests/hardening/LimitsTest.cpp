// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The sentences of docs/limits.md, which names these tests.

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"
#include "config/VanteroConfigFile.h"
#include "erdinfo/VanteroErdinfoFile.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>
#include <QtScript/QScriptEngine>
#include <QtScript/QScriptValueIterator>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include <sys/mman.h>

using vn::AlarmListParser;
using vn::AlarmUpdateParser;
using vn::VanteroConfigFile;
using vn::VanteroConfigMap;
using vn::VanteroSoftwareVersion;

namespace {

/** @p count times @p item, joined by @p separator. */
QString times(int count, const char *item, const char *separator = "")
{
    QStringList items;
    for (int i = 0; i < count; ++i)
        items += QString::fromLatin1(item);
    return items.join(QString::fromLatin1(separator));
}

void expectTooDeep(const QString &list)
{
    expectThrows<vn::ParseException>(
        [&] { (void)AlarmListParser().parse(list); },
        [](const vn::ParseException &e) { EXPECT_EQ(e.message(), "memory exhausted"_q); });
}

/** An engine and the application that it asks for. */
class Script
{
public:
    QScriptEngine engine{[] {
        static int argc = 1;
        static char name[] = "hardening";
        static char *argv[] = {name, nullptr};
        if (!QCoreApplication::instance())
            new QCoreApplication(argc, argv); // lives as long as the program
        return nullptr;
    }()};
    AlarmUpdateParser parser{&engine};

    void expectTooDeep(const QString &update)
    {
        expectThrows<vn::ParseException>(
            [&] { (void)parser.parse(update); },
            [](const vn::ParseException &e) { EXPECT_EQ(e.message(), "memory exhausted"_q); });
    }

    QStringList propertiesOf(const QString &expression)
    {
        QStringList names;
        QScriptValueIterator it(engine.evaluate(expression));
        while (it.hasNext()) {
            it.next();
            names += it.name() + "="_q + it.value().toString();
        }
        return names;
    }
};

} // namespace

// ---- Alarm lists and updates -------------------------------------------------------------------

TEST(Limits, anArrayHolds99Values)
{
    EXPECT_EQ(AlarmListParser().parse("["_q + times(99, "1", ",") + "]"_q).toList().size(), 99);
    expectTooDeep("["_q + times(100, "1", ",") + "]"_q);
}

TEST(Limits, anObjectHolds98Members)
{
    const auto object = [](int count) { return "{"_q + times(count, "a:1", ",") + "}"_q; };
    EXPECT_EQ(AlarmListParser().parse(object(98)).toMap().size(), 98);
    expectTooDeep(object(99));
}

TEST(Limits, arraysNest197Deep_objects65)
{
    EXPECT_NO_THROW((void)AlarmListParser().parse(times(197, "[") + times(197, "]")));
    expectTooDeep(times(198, "[") + times(198, "]"));
    // Each object holds a brace, a key and a colon besides what is in it.
    EXPECT_NO_THROW((void)AlarmListParser().parse(times(65, "{a:") + "1"_q + times(65, "}")));
    expectTooDeep(times(66, "{a:") + "1"_q + times(66, "}"));
}

TEST(Limits, whatIsOpenCountsToo)
{
    // 50 open arrays leave room for 74 values in the innermost one.
    const auto list = [](int count) {
        return times(50, "[") + times(count, "1", ",") + times(50, "]");
    };
    EXPECT_NO_THROW((void)AlarmListParser().parse(list(74)));
    expectTooDeep(list(75));
}

TEST(Limits, anUpdateHolds98Pairs_or98StringsInTheOnlyOne)
{
    Script script;
    EXPECT_EQ(script.parser.parse(times(98, "x=1", ";")).property("x"_q).toInt32(), 1);
    script.expectTooDeep(times(99, "x=1", ";"));
    const QScriptValue list = script.parser.parse("x="_q + times(98, "a", ",")).property("x"_q);
    EXPECT_EQ(list.property("length"_q).toInt32(), 98);
    script.expectTooDeep("x="_q + times(99, "a", ","));
}

TEST(Limits, textsOf2GiBAreRefused)
{
    // Address space is enough: the text is not looked at.
    const std::size_t size = std::size_t(std::numeric_limits<int>::max()) + 1;
    void *memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    const auto *data = static_cast<const char *>(memory);
    const auto length = static_cast<unsigned>(size);
    EXPECT_THROW((void)AlarmListParser().parse(data, length), vn::ParseException);
    Script script;
    EXPECT_THROW((void)script.parser.parse(data, length), vn::ParseException);
    ::munmap(memory, size);
}

TEST(Limits, integersOfAnUpdateAreCutTo32Bits)
{
    Script script;
    EXPECT_EQ(script.parser.parse("x=2147483647"_q).property("x"_q).toNumber(), 2147483647.0);
    EXPECT_EQ(script.parser.parse("x=2147483648"_q).property("x"_q).toNumber(), -2147483648.0);
}

TEST(Limits, charactersOutsideOfLatin1BecomeQuestionMarksInAlarmTexts)
{
    EXPECT_EQ(AlarmListParser().parse("['\xe2\x82\xac']"_q).toList(), QVariantList{"?"_q});
    Script script;
    EXPECT_EQ(script.parser.parse("x=\"\xe2\x82\xac\""_q).property("x"_q).toString(), "\"?\""_q);
}

TEST(Limits, keysThatScriptsKnowReachNoOtherObject)
{
    Script script;
    const QStringList before = script.propertiesOf("Object.prototype"_q);
    const QScriptValue value =
        script.parser.parse("__proto__=a,b;constructor=1;toString=x;hasOwnProperty=2;y=3"_q);
    EXPECT_EQ(value.property("constructor"_q).toInt32(), 1);
    EXPECT_EQ(value.property("toString"_q, QScriptValue::ResolveLocal).toString(), "x"_q);
    EXPECT_EQ(value.property("hasOwnProperty"_q).toInt32(), 2);
    EXPECT_EQ(value.property("y"_q).toInt32(), 3);
    // The engine takes this one for the object's prototype: it is no property of the result.
    EXPECT_FALSE(value.property("__proto__"_q, QScriptValue::ResolveLocal).isArray());
    (void)script.parser.parse("#__proto__:1.5"_q);
    EXPECT_EQ(script.propertiesOf("Object.prototype"_q), before);
    EXPECT_EQ(script.engine.evaluate("({}).y === undefined && String({})"_q).toString(),
              "[object Object]"_q);
}

TEST(LimitsDeathTest, aStarAtTheEndOfACommentEndsTheProcess)
{
    EXPECT_EXIT((void)AlarmListParser().parse("/* unterminated *"_q), testing::ExitedWithCode(2),
                "^flex scanner jammed\n$");
}

TEST(Limits, aListGoesOnWhereTheLastOneEnded)
{
    AlarmListParser parser;
    EXPECT_THROW((void)parser.parse("{a: \"open"_q), vn::ParseException);
    EXPECT_THROW((void)parser.parse("[1]"_q), vn::ParseException); // inside the string
    EXPECT_EQ(AlarmListParser().parse("[1]"_q).toList().size(), 1);
}

// ---- Configurations ----------------------------------------------------------------------------

TEST(Limits, aPropertyLineIsCutAfter1024Characters)
{
    const auto section = VanteroConfigMap::parseProperties(times(1500, "a"));
    EXPECT_EQ(section.keys(), QStringList({times(476, "a"), times(1024, "a")}));
}

TEST(Limits, linesOfConfigurationsHaveNoLimit)
{
    VanteroConfigFile config;
    config.parse("#:1\n#:2\n\nSECTION a\nk="_q + times(100000, "v") + "\nENDSECTION a\n"_q,
                 QDateTime());
    EXPECT_EQ(config.value("a"_q, "k"_q).size(), 100000);
}

TEST(Limits, whatIsPrintedNeedNotReadBackTheSame)
{
    VanteroConfigMap map;
    map.addValue("s"_q, "a=b"_q, "c"_q);
    map.addValue("s"_q, "#k"_q, "v"_q);
    map.addValue("s"_q, "x"_q, "1\n2"_q);
    VanteroConfigFile config;
    config.parse("#:1\n#:2\n"_q + map.toString(), QDateTime());
    EXPECT_EQ(config.value("s"_q, "a"_q), "b=c"_q);
    EXPECT_EQ(config.section("s"_q).keys(), QStringList({"2"_q, "a"_q, "x"_q}));
}

TEST(Limits, archiveEntriesAreLatin1)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.zip"_q);
    VanteroConfigFile config;
    config.parse("#:\xc3\xa4\n#:\xe2\x82\xac\n"_q, QDateTime());
    const auto writer = std::make_shared<vn::ZipWriter>(path);
    writer->open();
    config.store(writer, "a.cfg"_q);
    writer->close();
    vn::ZipReader reader(path);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    ASSERT_TRUE(reader.openFile("a.cfg"_q));
    EXPECT_EQ(reader.readAll(), QByteArray("#:\xe4\n#:?\n"));
}

// ---- Versions and records ----------------------------------------------------------------------

TEST(Limits, versionNumbersAreCutTo16Bits)
{
    EXPECT_EQ(VanteroSoftwareVersion("VN-32767")[1], 32767);
    EXPECT_EQ(VanteroSoftwareVersion("VN-32768")[1], -32768);
    EXPECT_EQ(VanteroSoftwareVersion("VN-65536")[1], 0);
    EXPECT_EQ(VanteroSoftwareVersion("VN-2147483647")[1], -1);
    EXPECT_EQ(VanteroSoftwareVersion("VN-2147483648")[1], 0); // no number of 32 bits
}

TEST(Limits, secondsOfARecordAreCutTo32Bits)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("e"_q);
    vn::VanteroErdinfoFile info(path.toStdWString());
    info.setData(0, 0, 0, 0, (1ULL << 32) * 1000000 + 5000000, 0, L"", L"", L"");
    ASSERT_TRUE(info.save());
    EXPECT_EQ(readFile(path).mid(344 + 12, 8).toHex(), QByteArray("0500000000000000"));
}

TEST(Limits, aVersionAfterThe30thLineOfAPackageIsNotFound)
{
    const QByteArray line("# Version: VN-1\n");
    EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwp(QByteArray(29, '\n') + line)), "VN-1"_q);
    EXPECT_TRUE(VanteroSoftwareVersion::fromFwp(QByteArray(30, '\n') + line).isNull());
}
