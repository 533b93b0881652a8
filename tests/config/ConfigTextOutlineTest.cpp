// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigText.h"

#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

const QString kText = "#:1.3===\n"
                      "#:VN-3.0\n"
                      "# VANTERO Camera Configuration\n"
                      "# Camera IP: 10.0.0.1\n"
                      "# Configuration of 10.0.0.2 \n"
                      "\n"
                      "# outside\n"
                      "SECTION a\r\n"
                      "# inside\n"
                      "key=value\n"
                      "bare\n"
                      "ENDSECTION a\n"
                      "SECTION b\n"
                      "ENDSECTION b\n"
                      "SECTION a\n"
                      "key=\n"
                      "ENDSECTION a"_q;

/** The characters of a range, and whether lines and columns say the same. */
QString at(const TextRange &range)
{
    const auto place = [](int line, int column) {
        int offset = 0;
        for (; line > 1; --line)
            offset = kText.indexOf(QLatin1Char('\n'), offset) + 1;
        return offset + column - 1;
    };
    EXPECT_EQ(place(range.line, range.column), range.offset);
    EXPECT_EQ(place(range.endLine, range.endColumn), range.offset + range.length);
    return kText.mid(int(range.offset), int(range.length));
}

} // namespace

TEST(ConfigTextOutline, hasTheHeader)
{
    const VanteroConfigText::Header header = VanteroConfigText(kText).outline().header;
    EXPECT_TRUE(header.isComplete);
    EXPECT_EQ(at(header.range), kText.left(kText.indexOf("\n\n"_q) + 1));
    const struct
    {
        const char *key;
        const char *value;
        const char *line;
        const char *mark;
    } values[] = {
        {"File Version", "1.3", "#:1.3===", "#:"},
        {"Software Version", "VN-3.0", "#:VN-3.0", "#:"},
        {"Factory IP", "10.0.0.1", "# Camera IP: 10.0.0.1", "# Camera IP: "},
        {"Factory IP", "10.0.0.2", "# Configuration of 10.0.0.2 ", "# Configuration of "},
    };
    ASSERT_EQ(header.values.size(), 4);
    for (int i = 0; i < 4; ++i) {
        const VanteroConfigText::Entry &entry = header.values.at(i);
        EXPECT_EQ(entry.key, QString::fromUtf8(values[i].key));
        EXPECT_EQ(entry.value, QString::fromUtf8(values[i].value));
        EXPECT_EQ(at(entry.range), QString::fromUtf8(values[i].line));
        EXPECT_EQ(at(entry.keyRange), QString::fromUtf8(values[i].mark));
        EXPECT_EQ(at(entry.valueRange), entry.value);
    }
    ASSERT_EQ(header.comments.size(), 1);
    EXPECT_EQ(header.comments.first().text, "# VANTERO Camera Configuration"_q);
    EXPECT_EQ(at(header.comments.first().range), header.comments.first().text);
}

TEST(ConfigTextOutline, hasSectionsWithTheirBlocks)
{
    const VanteroConfigText::Outline outline = VanteroConfigText(kText).outline();
    ASSERT_EQ(outline.comments.size(), 1);
    EXPECT_EQ(at(outline.comments.first().range), "# outside"_q);

    ASSERT_EQ(outline.sections.size(), 2);
    const VanteroConfigText::Section &a = outline.sections.first();
    EXPECT_EQ(a.name, "a"_q);
    ASSERT_EQ(a.blocks.size(), 2);
    const VanteroConfigText::Block &block = a.blocks.first();
    EXPECT_EQ(at(block.range), "SECTION a\r\n# inside\nkey=value\nbare\nENDSECTION a"_q);
    EXPECT_EQ(at(block.nameRange), "a"_q);
    ASSERT_EQ(block.comments.size(), 1);
    EXPECT_EQ(block.comments.first().text, "# inside"_q);
    EXPECT_EQ(at(block.comments.first().range), "# inside"_q);
    ASSERT_EQ(block.entries.size(), 2);
    EXPECT_EQ(at(block.entries.first().range), "key=value"_q);
    EXPECT_EQ(at(block.entries.first().keyRange), "key"_q);
    EXPECT_EQ(at(block.entries.first().valueRange), "value"_q);
    EXPECT_EQ(block.entries.last().key, "bare"_q);
    EXPECT_TRUE(block.entries.last().value.isNull());
    EXPECT_EQ(at(block.entries.last().range), "bare"_q);
    EXPECT_EQ(block.entries.last().valueRange.length, 0);
    EXPECT_EQ(block.entries.last().valueRange.offset,
              block.entries.last().range.offset + block.entries.last().range.length);
    EXPECT_EQ(at(a.blocks.last().range), "SECTION a\nkey=\nENDSECTION a"_q);
    EXPECT_FALSE(a.blocks.last().entries.first().value.isNull());

    EXPECT_EQ(outline.sections.last().name, "b"_q);
    EXPECT_TRUE(outline.sections.last().blocks.first().entries.isEmpty());
}

TEST(ConfigTextOutline, countsAnEmptyFirstLine)
{
    const auto outline = VanteroConfigText("\n#:2\n\nSECTION a\nENDSECTION a\n"_q).outline();
    ASSERT_EQ(outline.sections.size(), 1);
    EXPECT_EQ(outline.sections.first().blocks.first().range, (TextRange{4, 1, 5, 13, 6, 22}));
}

TEST(ConfigTextOutline, ofAMalformedTextEndsAtTheFault)
{
    const VanteroConfigText::Outline outline =
        VanteroConfigText("#:1\n#:2\n\nSECTION a\nk=1\nSECTION b\nk=2\nENDSECTION b\n"_q).outline();
    ASSERT_EQ(outline.sections.size(), 1);
    EXPECT_EQ(outline.sections.first().blocks.first().entries.size(), 1);
    EXPECT_EQ(outline.sections.first().blocks.first().range, (TextRange{4, 1, 5, 4, 9, 13}));
}

TEST(ConfigTextOutline, isOfTheEditedText)
{
    VanteroConfigText text("#:1\n#:2\n\nSECTION a\nk=1\nENDSECTION a\n"_q);
    EXPECT_TRUE(text.setValue("a"_q, "k"_q, "long"_q));
    EXPECT_TRUE(text.addValue("a"_q, "l"_q, "2"_q));
    const auto outline = text.outline();
    const auto &entries = outline.sections.first().blocks.first().entries;
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries.first().value, "long"_q);
    EXPECT_EQ(entries.last().range, (TextRange{6, 1, 6, 4, 26, 3}));
}

TEST(ConfigTextOutline, ofAnImageCommentHasNoHeader)
{
    const auto outline =
        VanteroConfigText("SECTION a\nk=1\nENDSECTION a"_q, VanteroConfigText::Form::ImageComment)
            .outline();
    EXPECT_TRUE(outline.header.isComplete);
    EXPECT_TRUE(outline.header.values.isEmpty());
    EXPECT_EQ(outline.header.range, TextRange());
    EXPECT_EQ(outline.sections.size(), 1);
}

TEST(ConfigTextOutline, ofNothingIsEmpty)
{
    const auto outline = VanteroConfigText().outline();
    EXPECT_TRUE(outline.header.isComplete);
    EXPECT_TRUE(outline.sections.isEmpty());
    EXPECT_FALSE(VanteroConfigText("x"_q).outline().header.isComplete);
}
