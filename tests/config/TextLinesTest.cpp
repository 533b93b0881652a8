// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/TextLines_p.h"

#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "support/Random.h"

#include <gtest/gtest.h>

using namespace vn::internal;

namespace {

template <typename Lines>
QStringList allLines(Lines lines, qsizetype maxLength)
{
    QStringList result;
    QStringView line;
    while (!lines.atEnd() && lines.readLine(line, maxLength))
        result += line.toString();
    return result;
}

QStringList memoryLines(const QString &text, qsizetype maxLength = 0)
{
    return allLines(MemoryLines(text), maxLength);
}

QStringList streamLines(QString text, qsizetype maxLength = 0)
{
    QTextStream stream(&text, QIODevice::ReadOnly);
    return allLines(StreamLines(&stream), maxLength);
}

} // namespace

TEST(TextLines, everyKindOfLineEnd)
{
    EXPECT_EQ(memoryLines("a\nb\r\nc\rd\n\n\r\n"_q),
              (QStringList{"a"_q, "b"_q, "c\rd"_q, ""_q, ""_q}));
    EXPECT_EQ(memoryLines("a"_q), QStringList{"a"_q});
    EXPECT_EQ(memoryLines("a\r"_q), QStringList{"a"_q}) << "as QTextStream does at the end";
    EXPECT_EQ(memoryLines("\r"_q), QStringList{""_q});
    EXPECT_EQ(memoryLines("\r\r\n"_q), QStringList{"\r"_q});
    EXPECT_EQ(memoryLines(""_q), QStringList());
    EXPECT_EQ(memoryLines(QString()), QStringList());
}

TEST(TextLines, endIsKnownAfterTheLastLineEnd)
{
    MemoryLines lines(u"a\n");
    QStringView line;
    EXPECT_FALSE(lines.atEnd());
    EXPECT_TRUE(lines.readLine(line));
    EXPECT_TRUE(lines.atEnd());
    EXPECT_FALSE(lines.readLine(line));
}

TEST(TextLines, streamThatGivesNoLineIsReported)
{
    QTextStream stream; // neither device nor string
    StreamLines lines(&stream);
    QStringView line(u"left over");
    EXPECT_FALSE(lines.readLine(line));
    EXPECT_TRUE(line.isNull());
}

TEST(TextLines, memoryAgreesWithStreams)
{
    Random random(20260103);
    for (int round = 0; round < 20000; ++round) {
        QString text;
        for (unsigned i = 0, size = random.below(24); i < size; ++i)
            text += QLatin1Char("ab\r\n"[random.below(4)]);
        const qsizetype maxLength = qsizetype(random.below(5));
        ASSERT_EQ(memoryLines(text, maxLength), streamLines(text, maxLength))
            << "limit " << maxLength << ' ' << text.toLatin1().toPercentEncoding().constData();
    }
}

TEST(TextFrom, positionBeyondTheEndIsNullAtTheEndEmpty)
{
    EXPECT_EQ(textFrom(u"abc", 1).toString(), "bc"_q);
    EXPECT_TRUE(textFrom(u"abc", 3).isEmpty());
    EXPECT_FALSE(textFrom(u"abc", 3).isNull());
    EXPECT_TRUE(textFrom(u"abc", 4).isNull());
    EXPECT_TRUE(toText(textFrom(u"abc", 4)).isNull());
    EXPECT_FALSE(toText(textFrom(u"abc", 3)).isNull());
}
