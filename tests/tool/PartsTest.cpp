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

/** The text with what @p edits say. */
QString edited(const QString &text, const QVector<vn::VanteroConfigText::Splice> &edits)
{
    QString result;
    qint64 done = 0;
    for (const auto &edit : edits) {
        result += text.midRef(int(done), int(edit.range.offset - done)) + edit.text;
        done = edit.range.offset + edit.range.length;
    }
    return result + text.midRef(int(done));
}

/** An edit of the @p length characters from @p offset on. */
vn::VanteroConfigText::Splice editAt(const QString &text, int offset, int length,
                                     const QString &instead)
{
    const auto lineOf = [&](int place) { return text.left(place).count(QLatin1Char('\n')) + 1; };
    const auto columnOf = [&](int place) {
        return place - text.left(place).lastIndexOf(QLatin1Char('\n'));
    };
    const int end = offset + length;
    return {{lineOf(offset), columnOf(offset), lineOf(end), columnOf(end), offset, length},
            instead};
}

QByteArray diffOf(const QString &before, const QVector<vn::VanteroConfigText::Splice> &edits,
                  const QByteArray &name = "x")
{
    return unifiedDiff(before.toUtf8(), edited(before, edits).toUtf8(), edits, name);
}

TEST(ToolDiff, isEmptyForEqualTexts)
{
    EXPECT_EQ(diffOf("a\nb\n"_q, {}), "");
    EXPECT_EQ(diffOf(""_q, {}), "");
    EXPECT_EQ(diffOf("a\nb\n"_q, {editAt("a\nb\n"_q, 0, 4, "a\nb\n"_q)}), "");
}

TEST(ToolDiff, showsThreeLinesAround)
{
    const QString text = "1\n2\n3\n4\n5\n6\n7\n8\n9\n"_q;
    EXPECT_EQ(diffOf(text, {editAt(text, 8, 1, "new"_q)}),
              "--- x\n+++ x\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+new\n 6\n 7\n 8\n");
    // What stays at the ends of an edit is none of the change.
    EXPECT_EQ(diffOf(text, {editAt(text, 0, 18, "1\n2\n3\n4\nnew\n6\n7\n8\n9\n"_q)}),
              "--- x\n+++ x\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+new\n 6\n 7\n 8\n");
}

TEST(ToolDiff, joinsHunksWhoseSurroundingsMeet)
{
    // Six kept lines between two changes are the context of both; seven part them.
    const QString six = "a\n1\n2\n3\n4\n5\n6\nb\n"_q;
    EXPECT_EQ(diffOf(six, {editAt(six, 0, 1, "A"_q), editAt(six, 14, 1, "B"_q)}),
              "--- x\n+++ x\n@@ -1,8 +1,8 @@\n-a\n+A\n 1\n 2\n 3\n 4\n 5\n 6\n-b\n+B\n");
    const QString seven = "a\n1\n2\n3\n4\n5\n6\n7\nb\n"_q;
    EXPECT_EQ(diffOf(seven, {editAt(seven, 0, 1, "A"_q), editAt(seven, 16, 1, "B"_q)}),
              "--- x\n+++ x\n@@ -1,4 +1,4 @@\n-a\n+A\n 1\n 2\n 3\n@@ -6,4 +6,4 @@\n 5\n 6\n 7\n-b\n"
              "+B\n");
}

TEST(ToolDiff, countsEmptyRangesFromTheLineBefore)
{
    EXPECT_EQ(diffOf(""_q, {editAt(""_q, 0, 0, "a\nb\n"_q)}),
              "--- x\n+++ x\n@@ -0,0 +1,2 @@\n+a\n+b\n");
    EXPECT_EQ(diffOf("a\n"_q, {editAt("a\n"_q, 0, 2, ""_q)}), "--- x\n+++ x\n@@ -1 +0,0 @@\n-a\n");
}

TEST(ToolDiff, marksALastLineWithoutEnd)
{
    EXPECT_EQ(diffOf("a"_q, {editAt("a"_q, 1, 0, "\n"_q)}),
              "--- x\n+++ x\n@@ -1 +1 @@\n-a\n\\ No newline at end of file\n+a\n");
    EXPECT_EQ(diffOf("a\nb"_q, {editAt("a\nb"_q, 0, 1, "c"_q)}),
              "--- x\n+++ x\n@@ -1,2 +1,2 @@\n-a\n+c\n b\n\\ No newline at end of file\n");
}

TEST(ToolDiff, quotesNamesThatPatchWouldMisread)
{
    const auto head = [](const QByteArray &name) {
        return diffOf("a\n"_q, {editAt("a\n"_q, 0, 1, "b"_q)}, name).split('\n').first();
    };
    EXPECT_EQ(head("plain.cfg"), "--- plain.cfg");
    EXPECT_EQ(head("two words.cfg"), "--- two words.cfg\t");
    EXPECT_EQ(head("a\"b\\c.cfg"), "--- \"a\\\"b\\\\c.cfg\"");
    EXPECT_EQ(head("a\nb"), "--- \"a\\012b\"");
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

TEST(ToolDiff, ofRandomEditsLeadsFromOneTextToTheOther)
{
    Random random(1986);
    static const QString pieces[] = {"a"_q, "b"_q, "\n"_q, "a\n"_q, "\n\n"_q, "b\na"_q};
    const auto randomText = [&](unsigned most) {
        QString text;
        for (unsigned count = random.below(most); count > 0; --count)
            text += pieces[random.below(std::size(pieces))];
        return text;
    };
    for (int round = 0; round < 20000; ++round) {
        const QString before = randomText(20);
        QVector<vn::VanteroConfigText::Splice> edits;
        for (int at = int(random.below(4)); at <= before.size(); at += 1 + int(random.below(6))) {
            const int length = std::min(int(random.below(4)), before.size() - at);
            edits += editAt(before, at, length, randomText(4));
            at += length;
        }
        const QByteArray diff = diffOf(before, edits);
        ASSERT_EQ(applied(before.toUtf8(), diff), edited(before, edits).toUtf8())
            << "from " << before.toStdString() << "\n"
            << diff.toStdString();
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
