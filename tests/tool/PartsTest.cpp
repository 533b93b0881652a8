// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The tool's own parts, compiled into the test: JSON, diffs, file names.

#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "support/Random.h"

#include "tool/cli/FileNameCodec.h"
#include "tool/cli/Json.h"
#include "tool/files/UnifiedDiff.h"

#include <QtCore/QBuffer>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace vn::tool;

// ---- JSON --------------------------------------------------------------------------------------

TEST(ToolJson, scalarsAreWrittenAsJsonHasThem)
{
    const struct
    {
        Json value;
        const char *text;
    } rows[] = {
        {Json(), "null"},
        {true, "true"},
        {false, "false"},
        {-3, "-3"},
        {4000000000u, "4000000000"},
        {std::numeric_limits<qint64>::min(), "-9223372036854775808"},
        {std::numeric_limits<quint64>::max(), "18446744073709551615"},
        {1.5, "1.5"},
        {0.1, "0.1"},
        {1e300, "1e+300"},
        {std::numeric_limits<double>::infinity(), "null"},
        {std::numeric_limits<double>::quiet_NaN(), "null"},
        {QString(), "null"},
        {""_q, "\"\""},
        {"Öl"_q, "\"Öl\""},
        {"\"\\/\n\r\t"_q, "\"\\\"\\\\/\\n\\r\\t\""},
        {QString(QChar(0)) + QChar(0x1f) + QChar(0x7f), "\"\\u0000\\u001f\\u007f\""},
        {QString(QChar(0x2028)), "\"\xE2\x80\xA8\""},
        {"📷"_q, "\"📷\""},
        {QString(QChar(0xDC80)) + QChar(0xD800), "\"\\udc80\\ud800\""},
        {"own", "\"own\""},
    };
    for (const auto &row : rows)
        EXPECT_EQ(row.value.toText(), QByteArray(row.text) + '\n');
}

TEST(ToolJson, membersKeepTheirOrderAndRepeat)
{
    Json object = Json::object({{"z", 1}, {"a", Json::array()}});
    object.insert("z"_q, Json::object());
    EXPECT_EQ(object.toText(), "{\n  \"z\": 1,\n  \"a\": [],\n  \"z\": {}\n}\n");
}

TEST(ToolJson, arraysAreLinesUnlessTheyHoldOthers)
{
    EXPECT_EQ(Json::array({1, "a"_q, Json()}).toText(), "[1, \"a\", null]\n");
    EXPECT_EQ(Json::array({1, Json::array({2})}).toText(), "[\n  1,\n  [2]\n]\n");
}

// ---- Unified diff ------------------------------------------------------------------------------

TEST(ToolDiff, isEmptyForEqualTexts)
{
    EXPECT_EQ(unifiedDiff("a\nb\n", "a\nb\n", "x"), "");
    EXPECT_EQ(unifiedDiff("", "", "x"), "");
}

TEST(ToolDiff, showsThreeLinesAround)
{
    EXPECT_EQ(unifiedDiff("1\n2\n3\n4\n5\n6\n7\n8\n9\n", "1\n2\n3\n4\nnew\n6\n7\n8\n9\n", "x"),
              "--- x\n+++ x\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+new\n 6\n 7\n 8\n");
}

TEST(ToolDiff, joinsHunksWhoseSurroundingsMeet)
{
    // Six kept lines between two changes are the context of both; seven part them.
    EXPECT_EQ(unifiedDiff("a\n1\n2\n3\n4\n5\n6\nb\n", "A\n1\n2\n3\n4\n5\n6\nB\n", "x"),
              "--- x\n+++ x\n@@ -1,8 +1,8 @@\n-a\n+A\n 1\n 2\n 3\n 4\n 5\n 6\n-b\n+B\n");
    EXPECT_EQ(unifiedDiff("a\n1\n2\n3\n4\n5\n6\n7\nb\n", "A\n1\n2\n3\n4\n5\n6\n7\nB\n", "x"),
              "--- x\n+++ x\n@@ -1,4 +1,4 @@\n-a\n+A\n 1\n 2\n 3\n@@ -6,4 +6,4 @@\n 5\n 6\n 7\n-b\n"
              "+B\n");
}

TEST(ToolDiff, countsEmptyRangesFromTheLineBefore)
{
    EXPECT_EQ(unifiedDiff("", "a\nb\n", "x"), "--- x\n+++ x\n@@ -0,0 +1,2 @@\n+a\n+b\n");
    EXPECT_EQ(unifiedDiff("a\n", "", "x"), "--- x\n+++ x\n@@ -1 +0,0 @@\n-a\n");
}

TEST(ToolDiff, marksALastLineWithoutEnd)
{
    EXPECT_EQ(unifiedDiff("a", "a\n", "x"),
              "--- x\n+++ x\n@@ -1 +1 @@\n-a\n\\ No newline at end of file\n+a\n");
    EXPECT_EQ(unifiedDiff("a\nb", "c\nb", "x"),
              "--- x\n+++ x\n@@ -1,2 +1,2 @@\n-a\n+c\n b\n\\ No newline at end of file\n");
}

TEST(ToolDiff, quotesNamesThatPatchWouldMisread)
{
    const auto head = [](const QByteArray &name) {
        return unifiedDiff("a\n", "b\n", name).split('\n').first();
    };
    EXPECT_EQ(head("plain.cfg"), "--- plain.cfg");
    EXPECT_EQ(head("two words.cfg"), "--- two words.cfg\t");
    EXPECT_EQ(head("a\"b\\c.cfg"), "--- \"a\\\"b\\\\c.cfg\"");
    EXPECT_EQ(unifiedDiff("a\n", "b\n", "a\nb").left(14), "--- \"a\\012b\"\n+");
}

/** What `patch` makes of @p before: the hunks are applied by the counts in their heads. */
QByteArray applied(const QByteArray &before, const QByteArray &diff)
{
    QList<QByteArray> lines;
    for (int begin = 0; begin < before.size();) {
        const int end = before.indexOf('\n', begin);
        lines += before.mid(begin, end < 0 ? -1 : end + 1 - begin);
        begin = end < 0 ? before.size() : end + 1;
    }
    QByteArray result;
    int next = 0;
    bool inHunk = false;
    const QList<QByteArray> diffLines = diff.split('\n');
    for (int i = 0; i < diffLines.size(); ++i) {
        const QByteArray &line = diffLines.at(i);
        if (line.startsWith("@@ -")) {
            const QList<QByteArray> range = line.mid(4).split(' ').first().split(',');
            const bool isEmpty = range.size() == 2 && range.at(1) == "0";
            const int begin = range.first().toInt() - (isEmpty ? 0 : 1);
            while (next < begin)
                result += lines.at(next++);
            inHunk = true;
            continue;
        }
        if (!inHunk || line.isEmpty() || line.startsWith('\\'))
            continue;
        const bool hasEnd = i + 1 >= diffLines.size() || !diffLines.at(i + 1).startsWith('\\');
        const QByteArray content = line.mid(1) + (hasEnd ? "\n" : "");
        if (line.at(0) != '+') {
            EXPECT_LT(next, lines.size());
            if (next >= lines.size())
                return result;
            EXPECT_EQ(lines.at(next), content);
            ++next;
        }
        if (line.at(0) != '-')
            result += content;
    }
    while (next < lines.size())
        result += lines.at(next++);
    return result;
}

QByteArray randomLines(Random &random, int count, unsigned kinds)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += QByteArray::number(random.below(kinds)) + '\n';
    if (random.below(3) == 0)
        text.chop(1);
    return text;
}

TEST(ToolDiff, ofRandomTextsLeadsFromOneToTheOther)
{
    Random random(1986);
    for (int round = 0; round < 3000; ++round) {
        const QByteArray a = randomLines(random, int(random.below(25)), 1 + random.below(5));
        const QByteArray b = randomLines(random, int(random.below(25)), 1 + random.below(5));
        const QByteArray diff = unifiedDiff(a, b, "x");
        EXPECT_EQ(applied(a, diff), b) << "from " << a.toStdString() << "\n" << diff.toStdString();
        if (HasFailure())
            return;
    }
}

TEST(ToolDiff, ofTextsWithoutCommonLinesGivesUpTheSearchButIsRight)
{
    QByteArray a;
    QByteArray b;
    for (int i = 0; i < 3000; ++i) {
        a += "a" + QByteArray::number(i) + '\n';
        b += "b" + QByteArray::number(i) + '\n';
    }
    EXPECT_EQ(applied(a, unifiedDiff(a, b, "x")), b);
}

TEST(ToolDiff, isAsShortAsCanBe)
{
    Random random(7);
    for (int round = 0; round < 300; ++round) {
        const QByteArray a = randomLines(random, int(random.below(12)), 3) + '\n';
        const QByteArray b = randomLines(random, int(random.below(12)), 3) + '\n';
        const QList<QByteArray> x = a.split('\n');
        const QList<QByteArray> y = b.split('\n');
        // The longest common subsequence by the table of all prefixes.
        std::vector<std::vector<int>> table(std::size_t(x.size()) + 1,
                                            std::vector<int>(std::size_t(y.size()) + 1, 0));
        for (std::size_t i = 1; i < table.size(); ++i)
            for (std::size_t j = 1; j < table[i].size(); ++j)
                table[i][j] = x.at(int(i) - 1) == y.at(int(j) - 1)
                                  ? table[i - 1][j - 1] + 1
                                  : std::max(table[i - 1][j], table[i][j - 1]);
        int changes = 0;
        const QByteArray diff = unifiedDiff(a, b, "x");
        for (const QByteArray &line : diff.split('\n'))
            if ((line.startsWith('-') || line.startsWith('+')) && line.size() < 4)
                ++changes;
        EXPECT_EQ(changes, x.size() + y.size() - 2 * table.back().back()) << diff.toStdString();
        if (HasFailure())
            return;
    }
}

// ---- File names --------------------------------------------------------------------------------

class ToolFileNames : public testing::Test
{
protected:
    static void SetUpTestSuite() { installFileNameCodec(); }
};

TEST_F(ToolFileNames, keepEveryByteSequence)
{
    Random random(4711);
    static const QByteArray pieces[] = {
        "a",        "/",        "ü",    "€",           "📷",
        "\xC3",     "\xE2\x82", "\x80", "\xFF",        "\xED\xA0\x80",
        "\xC0\x80", "\xF0\x9F", "\xF4", "\xEF\xBF\xBF"};
    for (int round = 0; round < 5000; ++round) {
        QByteArray name;
        for (unsigned count = random.below(6); count > 0; --count)
            name += pieces[random.below(14)];
        EXPECT_EQ(toOutputBytes(fileNameFromArgument(name)), name);
    }
}

TEST_F(ToolFileNames, thatAreUtf8AreText)
{
    EXPECT_EQ(fileNameFromArgument("süd-€-📷"), "süd-€-📷"_q);
    EXPECT_EQ(fileNameFromArgument("\xFC"), QString(QChar(0xDCFC)));
}

TEST_F(ToolFileNames, codecReadsStreamsInPieces)
{
    // The stream takes its bytes in blocks, which part characters anywhere.
    QByteArray text;
    for (int i = 0; i < 20000; ++i)
        text += "ü€📷" + QByteArray(i % 3, 'a');
    QBuffer buffer(&text);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    QTextStream stream(&buffer);
    EXPECT_EQ(stream.readAll(), QString::fromUtf8(text));
}

TEST_F(ToolFileNames, otherArgumentsAreUtf8OrLatin1)
{
    EXPECT_EQ(textFromArgument("süd"), "süd"_q);
    EXPECT_EQ(textFromArgument("s\xFC"
                               "d"),
              "süd"_q);
    EXPECT_EQ(textFromArgument(""), ""_q);
    EXPECT_FALSE(textFromArgument("").isNull());
}

} // namespace
