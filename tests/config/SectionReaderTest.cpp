// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/Exceptions.h"
#include "reference/ConfigReference.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QBuffer>
#include <QtCore/QTextStream>

using namespace vn;

namespace {

QString parseSection(VanteroConfigFile &config, QString text, bool ignoreStrayLines)
{
    QTextStream stream(&text, QIODevice::ReadOnly);
    return config.parseSection(&stream, ignoreStrayLines);
}

struct ErrorRow
{
    const char *name;
    QString text;
    QString message;
};

std::ostream &operator<<(std::ostream &out, const ErrorRow &row)
{
    return out << row.name;
}

class SectionError : public testing::TestWithParam<ErrorRow>
{
};

} // namespace

TEST_P(SectionError, isRaisedByEveryReader)
{
    const ErrorRow &row = GetParam();
    const QString header = "#:1=\n#:2\n\n"_q;
    VanteroConfigFile config;
    expectParseError([&] { parseSection(config, row.text, true); }, row.message, -1, -1, -1);
    expectParseError([&] { config.parseJpegComment(row.text); }, row.message, -1, -1, -1);
    expectParseError([&] { config.parse(header + row.text, QDateTime()); }, row.message, -1, -1,
                     -1);

    QString text = header + row.text;
    QTextStream stream(&text, QIODevice::ReadOnly);
    expectParseError([&] { config.parse(&stream, QDateTime()); }, row.message, -1, -1, -1);

    QByteArray comment = row.text.toUtf8();
    expectParseError([&] { config.parseJpegComment(&comment); }, row.message, -1, -1, -1);
    QBuffer buffer(&comment);
    buffer.open(QIODevice::ReadOnly);
    expectParseError([&] { config.parseJpegComment(&buffer); }, row.message, -1, -1, -1);
}

INSTANTIATE_TEST_SUITE_P(
    , SectionError,
    testing::Values(
        ErrorRow{"sectionInsideSection", "SECTION a\nSECTION b\n"_q, "Unexpected SECTION b"_q},
        ErrorRow{"sectionWordAloneInsideSection", "SECTION a\nSECTIONS=1\n"_q,
                 "Unexpected SECTIONS=1"_q},
        ErrorRow{"endWithoutSection", "ENDSECTION x\n"_q, "SECTION expected before ENDSECTION x"_q},
        ErrorRow{"endOfAnotherSection", "SECTION y\nENDSECTION x\n"_q,
                 "ENDSECTION x does not match SECTION"_q},
        ErrorRow{"endWithTrailingBlank", "SECTION x\nENDSECTION x \n"_q,
                 "ENDSECTION x  does not match SECTION"_q},
        ErrorRow{"bareEnd", "SECTION x\nENDSECTION\n"_q, "ENDSECTION does not match SECTION"_q},
        ErrorRow{"endOfTextInsideSection", "SECTION x\nk=v\n"_q, "ENDSECTION x expected"_q},
        ErrorRow{"unnamedSectionCountsAsNone", "SECTION\nk=v\nENDSECTION\n"_q,
                 "SECTION expected before ENDSECTION"_q},
        ErrorRow{"sectionNamedByNothingCountsAsNone", "SECTION \nk=v\nENDSECTION \n"_q,
                 "SECTION expected before ENDSECTION "_q}),
    nameOfRow);

TEST(ParseSection, returnsTheNameOfTheBlock)
{
    VanteroConfigFile config;
    QString text = "#c\n\nSECTION a\nk=v\n#k=w\n\nENDSECTION a\nSECTION b\nENDSECTION b\n"_q;
    QTextStream stream(&text, QIODevice::ReadOnly);
    EXPECT_EQ(config.parseSection(&stream, false), "a"_q);
    EXPECT_EQ(config.section("a"_q), (VanteroConfigMap::Section{{"k"_q, "v"_q}}));
    EXPECT_EQ(config.parseSection(&stream, false), "b"_q);
    EXPECT_FALSE(config.containsSection("b"_q)) << "an empty block makes no section";
    EXPECT_TRUE(config.parseSection(&stream, false).isNull());
}

TEST(ParseSection, strictModeRefusesStrayEntries)
{
    VanteroConfigFile config;
    expectParseError([&] { parseSection(config, "k=v\nSECTION a\nENDSECTION a\n"_q, false); },
                     "Unexpected input: k=v"_q, -1, -1, -1);
}

TEST(ParseSection, tolerantModeSkipsStrayEntries)
{
    VanteroConfigFile config;
    EXPECT_EQ(parseSection(config, "k=v\nSECTION a\nk=w\nENDSECTION a\n"_q, true), "a"_q);
    EXPECT_EQ(config.allSectionKeys(), QStringList{"a"_q});
}

TEST(ParseSection, sectionLineNeedsNoBlank)
{
    VanteroConfigFile config;
    EXPECT_EQ(parseSection(config, "SECTION:a\nk=v\nENDSECTION-a\n"_q, false), "a"_q);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
}

TEST(ParseSection, wordsAreCaseSensitive)
{
    VanteroConfigFile config;
    EXPECT_EQ(parseSection(config, "SECTION a\nsection b\nendsection a\nENDSECTION a\n"_q, false),
              "a"_q);
    EXPECT_EQ(config.section("a"_q).keys(), (QStringList{"endsection a"_q, "section b"_q}));
}

TEST(ParseSection, blankBeforeTheWordMakesAnEntry)
{
    VanteroConfigFile config;
    EXPECT_EQ(parseSection(config, "SECTION a\n ENDSECTION a\n #c\nENDSECTION a\n"_q, false),
              "a"_q);
    EXPECT_EQ(config.section("a"_q).keys(), (QStringList{" #c"_q, " ENDSECTION a"_q}));
}

TEST(ParseSection, entriesBeforeAFailureStay)
{
    VanteroConfigFile config;
    expectThrows<ParseException>(
        [&] { parseSection(config, "SECTION a\nk=v\nSECTION b\n"_q, true); },
        "Unexpected SECTION b"_q);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
}

TEST(ParseSection, repeatedKeysKeepEveryValueLastFirst)
{
    VanteroConfigFile config;
    parseSection(config, "SECTION a\nk=1\nk=2\nk\nENDSECTION a\n"_q, true);
    EXPECT_EQ(config.section("a"_q).values("k"_q), (QStringList{QString(), "2"_q, "1"_q}));
    EXPECT_TRUE(config.value("a"_q, "k"_q).isNull());
}

TEST(ParseSection, missingEqualsIsANullValueMissingTextAnEmptyOne)
{
    const QString block = "SECTION a\nnull\nempty=\n=\nENDSECTION a\n"_q;
    VanteroConfigFile byEntry;
    parseSection(byEntry, block, false);
    VanteroConfigFile byText;
    byText.parseJpegComment(block);
    VanteroConfigFile byStream;
    QTextStream stream(block.toLatin1());
    byStream.parseJpegComment(&stream);
    for (const VanteroConfigFile *config : {&byEntry, &byText, &byStream}) {
        const VanteroConfigMap::Section section = config->section("a"_q);
        EXPECT_EQ(section.keys(), (QStringList{""_q, "empty"_q, "null"_q}));
        EXPECT_FALSE(section.firstKey().isNull());
        EXPECT_FALSE(section.value(""_q).isNull());
        EXPECT_FALSE(section.value("empty"_q).isNull());
        EXPECT_TRUE(section.value("null"_q, "?"_q).isNull());
    }
}

TEST(ParseSection, linesHaveNoLengthLimit)
{
    VanteroConfigFile config;
    const QString value(5000, QLatin1Char('v'));
    parseSection(config, "SECTION a\nk="_q + value + "\nENDSECTION a"_q, true);
    EXPECT_EQ(config.value("a"_q, "k"_q), value);
}

TEST(ParseSection, streamWithoutALineIsReadPastTheEnd)
{
    HollowDevice device;
    QTextStream stream(&device);
    VanteroConfigFile config;
    expectThrows<IOException>([&] { config.parseSection(&stream, true); }, "Read past EOF"_q);

    QTextStream second(&device);
    expectThrows<IOException>([&] { config.parseJpegComment(&second); }, "Read past EOF"_q);
}

TEST(ParseSections, blocksOfOneNameMerge)
{
    VanteroConfigFile config;
    config.parseJpegComment("SECTION a\nk=1\nENDSECTION a\nSECTION b\nx=y\nENDSECTION b\n"
                            "SECTION a\nk=2\nl=3\nENDSECTION a\n"_q);
    EXPECT_EQ(config.section("a"_q),
              (VanteroConfigMap::Section{{"k"_q, "1"_q}, {"k"_q, "2"_q}, {"l"_q, "3"_q}}));
}

TEST(ParseSections, keyLineBeforeTheFirstSectionIsSkipped)
{
    const QString body = "k=v\nSECTION a\nk=w\nENDSECTION a\nk=x\n"_q;
    VanteroConfigFile fromText;
    fromText.parse("#:1=\n#:2\n\n"_q + body, QDateTime());
    EXPECT_EQ(fromText.section("a"_q), (VanteroConfigMap::Section{{"k"_q, "w"_q}}));

    VanteroConfigFile fromComment;
    fromComment.parseJpegComment(body);
    EXPECT_EQ(fromComment.section("a"_q), (VanteroConfigMap::Section{{"k"_q, "w"_q}}));
}

TEST(ParseSections, equalKeysOfSectionsShareTheirData)
{
    VanteroConfigFile config;
    config.parseJpegComment("SECTION a\nkey=1\nENDSECTION a\nSECTION b\nkey=2\nENDSECTION b\n"_q);
    const auto a = config.section("a"_q);
    const auto b = config.section("b"_q);
    EXPECT_EQ(a.firstKey().constData(), b.firstKey().constData());
}

/** Texts in memory and streams take the same reader over different line sources. */
TEST(ParseSectionsProperty, memoryStreamAndReferenceAgree)
{
    Random random(20260104);
    const QStringList pieces{"SECTION a"_q,
                             "SECTION b"_q,
                             "ENDSECTION a"_q,
                             "ENDSECTION b"_q,
                             "SECTION"_q,
                             "ENDSECTION"_q,
                             "k=1"_q,
                             "k=2"_q,
                             "key"_q,
                             "=x"_q,
                             "#c"_q,
                             " "_q,
                             "#:1.3==="_q,
                             "#:VN-3"_q,
                             "# Camera IP: 1"_q,
                             "# Configuration of 2"_q};
    const QStringList ends{"\n"_q, "\n"_q, "\n"_q, "\r\n"_q, "\n\n"_q, "\r"_q, ""_q};
    const auto outcome = [](auto &&parse) {
        VanteroConfigFile config;
        QString result;
        try {
            result = parse(config) ? "true"_q : "false"_q;
        } catch (const ParseException &e) {
            result = e.message();
        }
        return result + "\n"_q + config.toString();
    };
    int failures = 0;
    for (int round = 0; round < 20000; ++round) {
        QString text = round % 2 ? "#:1=\n#:2\n\nSECTION a\n"_q : QString();
        for (unsigned i = 0, size = random.below(16); i < size; ++i) {
            text += pieces.at(int(random.below(unsigned(pieces.size()))));
            text += ends.at(int(random.below(unsigned(ends.size()))));
        }
        const QString fromText =
            outcome([&](auto &config) { return config.parse(text, QDateTime()); });
        const QString fromStream = outcome([&](auto &config) {
            QTextStream stream(&text, QIODevice::ReadOnly);
            return config.parse(&stream, QDateTime());
        });
        const QString fromDevice = outcome([&](auto &config) {
            QByteArray bytes = text.toUtf8();
            QBuffer buffer(&bytes);
            buffer.open(QIODevice::ReadOnly);
            return config.parse(&buffer, QDateTime());
        });
        ASSERT_EQ(fromText, fromStream) << qPrintable(text);
        ASSERT_EQ(fromText, fromDevice) << qPrintable(text);
        const reference::Configuration expected = reference::loaded(text);
        VanteroConfigFile plain;
        for (auto it = expected.sections.begin(); it != expected.sections.end(); ++it)
            plain.setSection(it.key(), *it);
        const QString result = expected.isComplete ? "true"_q : "false"_q;
        ASSERT_EQ(fromText,
                  (expected.error.isEmpty() ? result : expected.error) + "\n"_q + plain.toString())
            << qPrintable(text);
        failures += fromText.contains("SECTION expected"_q);
    }
    EXPECT_GT(failures, 100) << "the texts should reach errors, too";
}
