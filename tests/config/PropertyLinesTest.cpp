// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigMap.h"

#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QTextStream>

#include <gtest/gtest.h>

using vn::VanteroConfigMap;
using Section = VanteroConfigMap::Section;

namespace {

struct Row
{
    const char *name;
    QString text;
    Section section;
};

class PropertyLines : public testing::TestWithParam<Row>
{
};

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << row.name;
}

const QString null;

} // namespace

TEST_P(PropertyLines, areParsed)
{
    const Row &row = GetParam();
    const Section parsed = VanteroConfigMap::parseProperties(row.text);
    EXPECT_EQ(parsed, row.section);
    for (auto it = parsed.begin(), want = row.section.begin(); it != parsed.end(); ++it, ++want)
        EXPECT_EQ(it.value().isNull(), want.value().isNull()) << qPrintable(it.key());

    QString text = row.text;
    QTextStream stream(&text, QIODevice::ReadOnly);
    Section fromStream;
    VanteroConfigMap::parseProperties(&stream, fromStream);
    EXPECT_EQ(fromStream, row.section);
}

INSTANTIATE_TEST_SUITE_P(
    , PropertyLines,
    testing::Values(
        Row{"emptyText", ""_q, {}}, Row{"nullText", null, {}},
        Row{"keyAndValue", "a=1"_q, {{"a"_q, "1"_q}}},
        Row{"keyWithoutEqualsHasANullValue", "key"_q, {{"key"_q, null}}},
        Row{"keyWithEqualsAloneHasAnEmptyValue", "key="_q, {{"key"_q, ""_q}}},
        Row{"equalsFirstGivesAnEmptyKey", "=x"_q, {{""_q, "x"_q}}},
        Row{"secondEqualsBelongsToTheValue", "a==b"_q, {{"a"_q, "=b"_q}}},
        Row{"nothingIsTrimmed", "name = x"_q, {{"name "_q, " x"_q}}},
        Row{"blanksAreAKey", "   "_q, {{"   "_q, null}}},
        Row{"commentIsSkipped", "#c=1\na=2"_q, {{"a"_q, "2"_q}}},
        Row{"commentCountsInColumnOneOnly", " #c=1"_q, {{" #c"_q, "1"_q}}},
        Row{"emptyLinesAreSkipped", "\n\na=1\n\nb=2\n"_q, {{"a"_q, "1"_q}, {"b"_q, "2"_q}}},
        Row{"windowsLineEndsAreDropped", "a=1\r\nb=2\r\n\r\n"_q, {{"a"_q, "1"_q}, {"b"_q, "2"_q}}},
        Row{"carriageReturnInsideALineStays", "a=1\rb=2\n"_q, {{"a"_q, "1\rb=2"_q}}},
        Row{"noEscapesQuotesOrContinuation",
            "a=\"1\"\\\nb=\\n"_q,
            {{"a"_q, "\"1\"\\"_q}, {"b"_q, "\\n"_q}}},
        Row{"sectionLinesAreKeysHere", "SECTION x\n"_q, {{"SECTION x"_q, null}}},
        Row{"charactersBeyondLatin1", "ключ=値\n"_q, {{"ключ"_q, "値"_q}}}),
    nameOfRow);

TEST(PropertyLinesOrder, lastOfRepeatedKeysComesFirst)
{
    VanteroConfigMap map;
    map.replaceSection("s"_q, VanteroConfigMap::parseProperties("a=1\na=2\n"_q));
    EXPECT_EQ(map.value("s"_q, "a"_q, 0), "2"_q);
    EXPECT_EQ(map.value("s"_q, "a"_q, 1), "1"_q);
    EXPECT_EQ(map.toString("s"_q), "SECTION s\na=2\na=1\nENDSECTION s\n"_q);
}

TEST(PropertyLinesOrder, existingEntriesStayBehindNewOnes)
{
    Section section{{"a"_q, "old"_q}, {"z"_q, "kept"_q}};
    VanteroConfigMap::parseProperties("a=new"_q, section);
    EXPECT_EQ(section.values("a"_q), (QStringList{"new"_q, "old"_q}));
    EXPECT_EQ(section.value("z"_q), "kept"_q);
}

TEST(PropertyLinesLength, longLineIsCutAt1024OnPurpose)
{
    const Section section = VanteroConfigMap::parseProperties(QString(1500, QLatin1Char('x')));
    EXPECT_EQ(section.keys(),
              (QStringList{QString(476, QLatin1Char('x')), QString(1024, QLatin1Char('x'))}));
}

TEST(PropertyLinesLength, exactly1024CharactersAreOneLine)
{
    const QString line(1024, QLatin1Char('x'));
    EXPECT_EQ(VanteroConfigMap::parseProperties(line + "\na=1"_q),
              (Section{{line, null}, {"a"_q, "1"_q}}));
}

TEST(PropertyLinesLength, cutInsideAWindowsLineEndLeavesItsCarriageReturn)
{
    const QString line(1023, QLatin1Char('x'));
    EXPECT_EQ(VanteroConfigMap::parseProperties(line + "\r\na=1"_q),
              (Section{{line + "\r"_q, null}, {"a"_q, "1"_q}}));
}

TEST(PropertyLinesLength, restOfACutCommentIsAnEntry)
{
    const QString comment = "#"_q + QString(1023, QLatin1Char('x')) + "a=1"_q;
    EXPECT_EQ(VanteroConfigMap::parseProperties(comment), (Section{{"a"_q, "1"_q}}));
}

/** Texts in memory and in streams go through different line sources, which must agree. */
TEST(PropertyLinesProperty, memoryAndStreamAgree)
{
    Random random(20260102);
    const QString alphabet = "ab=#\r\n \t\xc3\xa4"_q;
    for (int round = 0; round < 3000; ++round) {
        QString text;
        const int size = int(random.below(round % 10 == 0 ? 5000 : 60));
        for (int i = 0; i < size; ++i) {
            // Long runs without line ends reach the limit of a line.
            const bool run = round % 20 == 0 && random.below(400) != 0;
            text +=
                run ? QLatin1Char('x') : alphabet.at(int(random.below(unsigned(alphabet.size()))));
        }
        QTextStream stream(&text, QIODevice::ReadOnly);
        Section fromStream;
        VanteroConfigMap::parseProperties(&stream, fromStream);
        ASSERT_EQ(VanteroConfigMap::parseProperties(text), fromStream) << qPrintable(text);
    }
}

TEST(PropertyLinesOfAStream, endWhereAStreamSaysThatThereIsMoreButGivesNoLine)
{
    FailingDevice device("a=1\nb=2\n"_b, 6); // fails before the third line would begin
    QTextStream stream(&device);
    Section section;
    VanteroConfigMap::parseProperties(&stream, section);
    EXPECT_EQ(section, (Section{{"a"_q, "1"_q}, {"b"_q, ""_q}}));

    FailingDevice empty("a=1\n"_b, 0);
    QTextStream nothing(&empty);
    ASSERT_FALSE(nothing.atEnd());
    VanteroConfigMap::parseProperties(&nothing, section);
    EXPECT_EQ(section.size(), 2);
}
