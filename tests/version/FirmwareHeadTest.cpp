// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/FirmwareHead.h"

#include "VersionSupport.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QBuffer>

#include <gtest/gtest.h>

#include <iterator>

using vn::Finding;
using vn::FirmwareHead;
using vn::FirmwareLine;
using vn::VanteroSoftwareVersion;

namespace {

struct Row
{
    const char *name;
    QByteArray package;
    QStringList lines;    ///< "line:column-column form version"
    QStringList findings; ///< "line:column-column code: message"
};

QString place(const vn::TextRange &range)
{
    EXPECT_EQ(range.line, range.endLine);
    EXPECT_EQ(range.endColumn - range.column, range.length);
    return "%1:%2-%3 "_q.arg(range.line).arg(range.column).arg(range.endColumn);
}

class Head : public testing::TestWithParam<Row>
{
};

TEST_P(Head, saysWhichLinesNameTheVersion)
{
    const char *const forms[] = {"##", "#", "UPLD"};
    const FirmwareHead head = FirmwareHead::read(GetParam().package);
    QStringList lines;
    for (const FirmwareLine &line : head.lines()) {
        EXPECT_EQ(line.line, line.range.line);
        lines.append(place(line.range) + QLatin1String(forms[int(line.form)]) + " "_q +
                     line.version);
    }
    EXPECT_EQ(lines, GetParam().lines);
    QStringList findings;
    for (const Finding &finding : head.findings())
        findings.append(place(finding.range) + finding.code + ": "_q + finding.message);
    EXPECT_EQ(findings, GetParam().findings);
    EXPECT_EQ(QString(head.version()),
              QString(VanteroSoftwareVersion::fromFwp(GetParam().package)));
}

const Row rows[] = {
    {"twoHashes", "# image\n## Version: VN-3.0.6.29\n"_b, {"2:13-24 ## VN-3.0.6.29"_q}, {}},
    {"oneHash", "# Version: VN-3.0.6.29\n"_b, {"1:12-23 # VN-3.0.6.29"_q}, {}},
    {"upload", "\r\n\r\n# VN-3.0.6.29 UPLD\r\n"_b, {"3:3-14 UPLD VN-3.0.6.29"_q}, {}},
    {"agreeing", "## Version: VN-3\n# VN-3 UPLD"_b, {"1:13-17 ## VN-3"_q, "2:3-7 UPLD VN-3"_q}, {}},
    {"disagreeing",
     "## Version: VN-3\n#\n# VN-4 UPLD\n"_b,
     {"1:13-17 ## VN-3"_q, "3:3-7 UPLD VN-4"_q},
     {"1:13-17 versions-differ: line 1 names \"VN-3\", but line 3 \"VN-4\", which counts"_q}},
    {"disagreeingByTheTextAlone",
     "## Version: VN-V3\n# VN-3 UPLD\n"_b,
     {"1:13-18 ## VN-V3"_q, "2:3-7 UPLD VN-3"_q},
     {"1:13-18 versions-differ: line 1 names \"VN-V3\", but line 2 \"VN-3\", which counts"_q}},
    {"none", "# image\n"_b, {}, {"1:1-1 no-version: none of the first 30 lines names a version"_q}},
    {"noneInNothing", ""_b, {}, {"1:1-1 no-version: none of the first 30 lines names a version"_q}},
    {"twoForms",
     "# Version: VN-3.0 UPLD\n"_b,
     {"1:3-18 UPLD Version: VN-3.0"_q},
     {"1:3-18 two-forms: the line has a mark and UPLD, and UPLD decides"_q,
      "1:3-10 platform-unknown: \"Version\" is no known platform"_q,
      "1:10-12 separators: \": \" separates like one character"_q,
      "1:12-14 number-unreadable: \"VN\" is no number and is read as 0"_q}},
    {"emptyVersion",
     "# Version: VN-3\n## Version:\n"_b,
     {"1:12-16 # VN-3"_q, "2:12-12 ## "_q},
     {"1:12-16 versions-differ: line 1 names \"VN-3\", but line 2 \"\", which counts"_q,
      "2:12-12 version-empty: the line is one of a version and names none"_q}},
    {"noBlankBehindTheMark",
     "## Version:VN-3\n"_b,
     {"1:13-16 ## N-3"_q},
     {"1:12-13 character-skipped: \"V\" behind the mark is skipped, where a blank is due"_q,
      "1:13-14 platform-unknown: \"N\" is no known platform"_q}},
    {"textOfTheVersion",
     "#\n## Version: VN-3.O\n"_b,
     {"2:13-19 ## VN-3.O"_q},
     {"2:18-19 number-unreadable: \"O\" is no number and is read as 0"_q}},
    {"shortUpload",
     "12UPLD"_b,
     {"1:3-7 UPLD UPLD"_q},
     {"1:3-7 platform-unknown: \"UPLD\" is no known platform"_q}},
    {"uploadAlone",
     "# VN-3 UPLD\nXUPLD"_b,
     {"1:3-7 UPLD VN-3"_q, "2:3-6 UPLD PLD"_q},
     {"1:3-7 versions-differ: line 1 names \"VN-3\", but line 2 \"PLD\", which counts"_q,
      "2:3-6 platform-unknown: \"PLD\" is no known platform"_q}},
};

INSTANTIATE_TEST_SUITE_P(Table, Head, testing::ValuesIn(rows), nameOfRow);

TEST(FirmwareHead, countsOffsetsInCharacters)
{
    const FirmwareHead head =
        FirmwareHead::read("\xc3\xa9\r\n## Version: VN-\xc3\xa9\n# VN-4 UPLD"_b);
    ASSERT_EQ(head.lines().size(), 2);
    EXPECT_EQ(head.lines().at(0).range, (vn::TextRange{2, 13, 2, 17, 15, 4}));
    EXPECT_EQ(head.lines().at(1).range, (vn::TextRange{3, 3, 3, 7, 22, 4}));
}

TEST(FirmwareHead, hasNoLinesOfWhatCannotBeRead)
{
    EXPECT_TRUE(FirmwareHead::read(nullptr).lines().isEmpty());
    QBuffer closed;
    EXPECT_TRUE(FirmwareHead::read(&closed).version().isNull());
    ASSERT_EQ(FirmwareHead::read(&closed).findings().size(), 1);
    EXPECT_EQ(FirmwareHead::read(&closed).findings().first().severity, Finding::Severity::Error);
    EXPECT_TRUE(FirmwareHead().lines().isEmpty());
    EXPECT_TRUE(FirmwareHead().findings().isEmpty());
}

TEST(FirmwareHead, hugeLinesKeepTheirPlaces)
{
    const QByteArray package =
        QByteArray(3000000, 'x') + "\n# "_b + QByteArray(2000000, 'y') + " UPLD\n# VN-3 UPLD\n"_b;
    const FirmwareHead head = FirmwareHead::read(package);
    ASSERT_EQ(head.lines().size(), 2);
    EXPECT_EQ(head.lines().at(0).range, (vn::TextRange{2, 3, 2, 2000003, 3000003, 2000000}));
    EXPECT_EQ(head.lines().at(1).range, (vn::TextRange{3, 3, 3, 7, 5000011, 4}));
    EXPECT_EQ(head.lines().at(1).version, VanteroSoftwareVersion("VN-3"));
}

TEST(FirmwareHead, namesTheVersionOfThePackage)
{
    Random random(71);
    const QByteArray pieces[] = {"## Version:"_b, "# Version:"_b, "UPLD"_b, " "_b,  "VN-3.0"_b,
                                 "R16-2"_b,       "#"_b,          "\n"_b,   "\n"_b, "\r\n"_b};
    int named = 0;
    for (int run = 0; run < 20000; ++run) {
        QByteArray package;
        for (unsigned n = random.below(60); n > 0; --n)
            package += pieces[random.below(unsigned(std::size(pieces)))];
        const FirmwareHead head = FirmwareHead::read(package);
        ASSERT_EQ(QString(head.version()), QString(VanteroSoftwareVersion::fromFwp(package)));
        named += !head.lines().isEmpty();
        bool differ = false;
        for (const FirmwareLine &line : head.lines())
            differ |= QString(line.version) != QString(head.version());
        int differences = 0;
        for (const Finding &finding : head.findings())
            differences += finding.code == "versions-differ"_q;
        ASSERT_EQ(differences > 0, differ);
    }
    EXPECT_GT(named, 10000);
}

} // namespace
