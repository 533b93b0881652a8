// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "support/Expect.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

using vn::VanteroConfigFile;
using vn::VanteroConfigMap;

namespace {

const QString null;

struct Row
{
    const char *name;
    QString text;
    bool result;
    QString fileVersion;
    QString softwareVersion;
    QString factoryIp;
};

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << row.name;
}

class Header : public testing::TestWithParam<Row>
{
protected:
    static void expectRow(bool result, const VanteroConfigFile &config)
    {
        const Row &row = GetParam();
        EXPECT_EQ(result, row.result);
        expectValue(config.getFileVersion(), row.fileVersion);
        expectValue(config.getSoftwareVersion(), row.softwareVersion);
        expectValue(config.getFactoryIP(), row.factoryIp);
    }

    static void expectValue(const QString &value, const QString &expected)
    {
        EXPECT_EQ(value, expected);
        EXPECT_EQ(value.isNull(), expected.isNull());
    }
};

} // namespace

TEST_P(Header, isReadFromText)
{
    VanteroConfigFile config;
    const bool result = config.parseHeader(GetParam().text);
    expectRow(result, config);
}

TEST_P(Header, isReadFromStream)
{
    QString text = GetParam().text;
    QTextStream stream(&text, QIODevice::ReadOnly);
    VanteroConfigFile config;
    const bool result = config.parseHeader(&stream);
    expectRow(result, config);
}

TEST_P(Header, isReadFromDevice)
{
    QByteArray bytes = GetParam().text.toUtf8();
    QBuffer buffer(&bytes);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    VanteroConfigFile config;
    const bool result = config.parseHeader(&buffer);
    expectRow(result, config);
}

INSTANTIATE_TEST_SUITE_P(
    , Header,
    testing::Values(
        Row{"emptyTextIsTrue", ""_q, true, null, null, null},
        Row{"oneLineWithoutMarkIsFalse", "Hello"_q, false, null, null, null},
        Row{"oneLineWithMarkIsTrue", "#:1.3="_q, true, "1.3"_q, null, null},
        Row{"versionEndsAtTheFirstEquals",
            "#:1.3===============================\n#:VN-3.0.6.29\n"_q, true, "1.3"_q,
            "VN-3.0.6.29"_q, null},
        Row{"versionWithoutEqualsGoesToTheEnd", "#:1.3 beta\n#:VN-3\n"_q, true, "1.3 beta"_q,
            "VN-3"_q, null},
        Row{"bareMarksGiveEmptyVersions", "#:\n#:\n"_q, true, ""_q, ""_q, null},
        Row{"equalsAtOnceGivesAnEmptyVersion", "#:=1\n#:=2\n"_q, true, ""_q, "=2"_q, null},
        Row{"secondLineWithoutMarkIsFalse", "#:1.3=\nVN-3\n"_q, false, "1.3"_q, null, null},
        Row{"firstLineWithoutMarkIsFalseThoughTheSecondHasOne", "# x\n#:VN-3\n"_q, false, null,
            "VN-3"_q, null},
        Row{"emptyFirstLineIsConsumed", "\n#:VN-3\n# Camera IP: 10.0.0.1\n"_q, false, null,
            "VN-3"_q, "10.0.0.1"_q},
        Row{"emptySecondLineDoesNotEndTheHeader", "#:1.3=\n\n# Camera IP: 10.0.0.1\n\n"_q, false,
            "1.3"_q, null, "10.0.0.1"_q},
        Row{"addressAfterTheFirstEmptyLineIsNotRead", "#:1=\n#:2\n\n# Camera IP: 10.0.0.1\n"_q,
            true, "1"_q, "2"_q, null},
        Row{"lineOfBlanksDoesNotEndTheHeader", "#:1=\n#:2\n \n# Camera IP: 10.0.0.1\n"_q, true,
            "1"_q, "2"_q, "10.0.0.1"_q},
        Row{"cameraAddressIsNotTrimmed", "#:1=\n#:2\n# Camera IP: 10.0.0.1 \n"_q, true, "1"_q,
            "2"_q, "10.0.0.1 "_q},
        Row{"cameraAddressMayBeEmpty", "#:1=\n#:2\n# Camera IP: \n"_q, true, "1"_q, "2"_q, ""_q},
        Row{"cameraAddressNeedsTheWholeMark", "#:1=\n#:2\n# Camera IP:10.0.0.1\n"_q, true, "1"_q,
            "2"_q, null},
        Row{"titleAddressIsTrimmed", "#:1=\n#:2\n# Configuration of 10.0.0.2  \n"_q, true, "1"_q,
            "2"_q, "10.0.0.2"_q},
        Row{"titleAtTheVeryStartIsIgnored", "#:1=\n#:2\nConfiguration of 10.0.0.2\n"_q, true, "1"_q,
            "2"_q, null},
        Row{"titleTwiceCountsTheFirstOnly",
            "#:1=\n#:2\nConfiguration of x Configuration of 10.0.0.2\n"_q, true, "1"_q, "2"_q,
            null},
        Row{"titleSkipsOneCharacterWhateverItIs", "#:1=\n#:2\n# Configuration of:10.0.0.2\n"_q,
            true, "1"_q, "2"_q, "10.0.0.2"_q},
        Row{"titleAtTheEndOfItsLineGivesANullAddress", "#:1=\n#:2\n# Configuration of\n"_q, true,
            "1"_q, "2"_q, null},
        Row{"titleWithOneMoreCharacterGivesAnEmptyAddress", "#:1=\n#:2\n# Configuration of \n"_q,
            true, "1"_q, "2"_q, ""_q},
        Row{"laterAddressReplacesTheEarlier",
            "#:1=\n#:2\n# Camera IP: 10.0.0.1\n# Configuration of 10.0.0.2\n"_q, true, "1"_q, "2"_q,
            "10.0.0.2"_q},
        Row{"addressLineWithTitleIsAnAddressLine",
            "#:1=\n#:2\n# Camera IP: Configuration of 10.0.0.2\n"_q, true, "1"_q, "2"_q,
            "Configuration of 10.0.0.2"_q},
        Row{"marksAreCaseSensitive", "#:1=\n#:2\n# camera ip: a\n# configuration of b\n"_q, true,
            "1"_q, "2"_q, null},
        Row{"firstTwoLinesHoldNoAddress", "# Camera IP: a\n# Configuration of b\n"_q, false, null,
            null, null},
        Row{"windowsLineEnds", "#:1.3=\r\n#:VN-3\r\n# Camera IP: 10.0.0.1\r\n\r\n"_q, true, "1.3"_q,
            "VN-3"_q, "10.0.0.1"_q}),
    nameOfRow);

TEST(HeaderReading, leavesTheStreamAfterTheEmptyLine)
{
    QString text = "#:1=\n#:2\n# x\n\nSECTION a\n"_q;
    QTextStream stream(&text, QIODevice::ReadOnly);
    VanteroConfigFile config;
    EXPECT_TRUE(config.parseHeader(&stream));
    EXPECT_EQ(stream.readLine(), "SECTION a"_q);
}

TEST(HeaderReading, acceptsAValueOfTheMapItself)
{
    VanteroConfigFile config;
    config.setFileVersion("#:7=\n#:8"_q);
    EXPECT_TRUE(config.parseHeader(config.getFileVersion()));
    EXPECT_EQ(config.getFileVersion(), "7"_q);
}

TEST(HeaderReading, makesNoHeadSectionWhereNothingWasFound)
{
    VanteroConfigFile config;
    EXPECT_FALSE(config.parseHeader("a\nb\n"_q));
    EXPECT_FALSE(config.containsSection("head"_q));
}

TEST(HeaderConstants, haveTheirPublishedTexts)
{
    EXPECT_EQ(VanteroConfigFile::HEAD_SECTION, "head"_q);
    EXPECT_EQ(VanteroConfigFile::FILE_VERSION, "File Version"_q);
    EXPECT_EQ(VanteroConfigFile::SOFTWARE_VERSION, "Software Version"_q);
    EXPECT_EQ(VanteroConfigFile::FACTORY_IP, "Factory IP"_q);
    EXPECT_EQ(VanteroConfigFile::TYPE_LONG, "Type Long"_q);
    EXPECT_EQ(VanteroConfigFile::TYPE_SHORT, "Type Short"_q);
}

TEST(MakeHeader, holdsTheTwoVersions)
{
    VanteroConfigFile config;
    config.setFileVersion("1.3"_q);
    config.setSoftwareVersion("VN-3.0.6.29"_q);
    config.setFactoryIP("10.0.0.1"_q);
    EXPECT_EQ(config.makeHeader(), "#:1.3===============================\n"
                                   "#:VN-3.0.6.29\n"
                                   "# VANTERO Camera Configuration\n"
                                   "#\n"
                                   "# Created by FieldDesk\n"
                                   "#============================================\n"_q);
}

TEST(MakeHeader, missingVersionsAreEmpty)
{
    EXPECT_EQ(VanteroConfigFile().makeHeader(),
              "#:===============================\n"
              "#:\n"
              "# VANTERO Camera Configuration\n"
              "#\n"
              "# Created by FieldDesk\n"
              "#============================================\n"_q);
}

TEST(MakeHeader, versionWithAPlaceholderIsSubstitutedInTurn)
{
    VanteroConfigFile config;
    config.setFileVersion("%2"_q);
    config.setSoftwareVersion("x"_q);
    EXPECT_TRUE(config.makeHeader().startsWith("#:x====="_q));
}

TEST(MakeHeader, headerAndPrintedMapReadBack)
{
    VanteroConfigFile config;
    config.setFileVersion("1.3"_q);
    config.setSoftwareVersion("VN-3.0.6.29"_q);
    VanteroConfigMap map;
    map.addValue("ethernet"_q, "IPADDR"_q, "10.0.0.1"_q);
    map.addValue("a"_q, "k"_q, "v"_q);

    VanteroConfigFile back;
    EXPECT_TRUE(back.parse(config.makeHeader() + map.toString(), QDateTime()));
    EXPECT_EQ(back.getFileVersion(), "1.3"_q);
    EXPECT_EQ(back.getSoftwareVersion(), "VN-3.0.6.29"_q);
    EXPECT_EQ(back.section("ethernet"_q), map.section("ethernet"_q));
    EXPECT_EQ(back.allSectionKeys(), (QStringList{"a"_q, "ethernet"_q, "head"_q}));
}
