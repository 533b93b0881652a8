// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigText.h"

#include "base/FileUtils.h"
#include "support/ConfigFindings.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "support/Random.h"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace vn;

namespace {

/** Findings as a text: "LINE:COLUMN+LENGTH severity code: message", a line each. */
QString shown(const Findings &findings)
{
    static const char *const names[] = {"error", "warning", "note"};
    QString result;
    for (const Finding &finding : findings)
        result += QString::number(finding.range.line) + ":"_q +
                  QString::number(finding.range.column) + "+"_q +
                  QString::number(finding.range.length) + " "_q +
                  QString::fromLatin1(names[int(finding.severity)]) + " "_q + finding.code +
                  ": "_q + finding.message + "\n"_q;
    return result;
}

const QString kHead = "#:1.3===\n#:VN-3.0\n\n"_q; // so that the body begins in line 4

struct Row
{
    const char *name;
    QString text;
    QString findings;
};

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << row.name;
}

class ConfigTextFindings : public testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(ConfigTextFindings, are)
{
    const Row &row = GetParam();
    EXPECT_EQ(shown(VanteroConfigText(row.text).findings()), row.findings);
    EXPECT_EQ(brokenPromise(row.text), QString());
}

INSTANTIATE_TEST_SUITE_P(
    Clean, ConfigTextFindings,
    testing::Values(Row{"anEmptyText", ""_q, ""_q},
                    Row{"aHeaderAlone", "#:1.3=====\n#:VN-3.0\n# Camera IP: 10.0.0.1\n"_q, ""_q},
                    Row{"aFirstLineAlone", "#:1.3"_q, ""_q},
                    Row{"sections", kHead + "# note\nSECTION a\nk=v\n\n#l\nENDSECTION a\n"_q, ""_q},
                    Row{"aTitleWithAnAddress", "#:1\n#:2\n# Configuration of 10.0.0.1\n"_q, ""_q}),
    nameOfRow);

INSTANTIATE_TEST_SUITE_P(
    Errors, ConfigTextFindings,
    testing::Values(
        Row{"sectionInsideSection", kHead + "SECTION a\nk=1\nSECTION b\nk=2\nENDSECTION b\n"_q,
            "6:1+9 error section-inside-section: Unexpected SECTION b\n"_q},
        Row{"nestedSectionsTellOnce",
            kHead + "SECTION a\nk=1\nSECTION b\nk=2\nENDSECTION b\nENDSECTION a\n"_q,
            "6:1+9 error section-inside-section: Unexpected SECTION b\n"_q},
        Row{"endWithoutSection", kHead + "ENDSECTION a\n"_q,
            "4:1+12 error end-without-section: SECTION expected before ENDSECTION a\n"_q},
        Row{"endOfAnotherSection", kHead + "SECTION a\nk=1\nENDSECTION b\n"_q,
            "6:1+12 error end-of-another-section: ENDSECTION b does not match SECTION\n"_q},
        Row{"endWithABlankBehindTheName", kHead + "SECTION a\nk=1\nENDSECTION a \n"_q,
            "6:1+13 error end-of-another-section: ENDSECTION a  does not match SECTION\n"_q},
        Row{"endWithoutAName", kHead + "SECTION a\nk=1\nENDSECTION\n"_q,
            "6:1+10 error end-of-another-section: ENDSECTION does not match SECTION\n"_q},
        Row{"sectionNotClosed", kHead + "SECTION a\nk=1\n"_q,
            "4:1+9 error section-not-closed: ENDSECTION a expected\n"_q},
        Row{"severalInOnePass",
            kHead +
                "SECTION a\nk=1\nENDSECTION b\nENDSECTION a\nSECTION c\nk=1\nSECTION d\nk=2\n"_q,
            "6:1+12 error end-of-another-section: ENDSECTION b does not match SECTION\n"
            "7:1+12 error end-without-section: SECTION expected before ENDSECTION a\n"
            "10:1+9 error section-inside-section: Unexpected SECTION d\n"
            "10:1+9 error section-not-closed: ENDSECTION d expected\n"_q},
        Row{"endOfASectionWithoutName", kHead + "SECTION\nk=1\nENDSECTION\n"_q,
            "4:1+7 warning section-without-name: a section without a name, so nothing in it is "
            "read\n"
            "5:1+3 warning entry-outside-section: outside of sections, so it is not read\n"
            "6:1+10 error end-without-section: SECTION expected before ENDSECTION\n"_q}),
    nameOfRow);

INSTANTIATE_TEST_SUITE_P(
    Header, ConfigTextFindings,
    testing::Values(
        Row{"aSectionInItsPlace",
            "SECTION a\nk=1\nENDSECTION a\n\nSECTION b\nk=1\nENDSECTION b\n"_q,
            "1:1+26 warning no-header: no header: the first section is lost\n"_q},
        Row{"aPrintedMap", "\nSECTION a\nk=1\nENDSECTION a\n\n"_q,
            "1:1+27 warning no-header: no header: the first section is lost\n"_q},
        Row{"entriesInItsPlace", "a=1\n"_q,
            "1:1+3 warning no-header: no header: the first lines are lost\n"_q},
        Row{"commentsInItsPlace", "# a\n#b\n\nSECTION a\nk=1\nENDSECTION a\n"_q,
            "1:1+3 warning no-header: no header\n"_q},
        Row{"noFileVersion", "#\n#:2\n"_q,
            "1:1+1 warning incomplete-header: no file version in the first line\n"_q},
        Row{"noSoftwareVersion", "#:1\n#\n"_q,
            "2:1+1 warning incomplete-header: no software version in the second line\n"_q},
        Row{"anEmptySecondLine", "#:1\n\nSECTION a\nk=1\nENDSECTION a\n\n"_q,
            "2:1+0 warning empty-second-line: no software version in the second line; as it is "
            "empty, the header goes on to the next empty line\n"
            "3:1+26 warning lost-in-header: the header goes on to the next empty line, and section "
            "\"a\" is lost\n"_q},
        Row{"noEmptyLineBehindIt", "#:1\n#:2\nSECTION a\nk=1\nENDSECTION a\n"_q,
            "3:1+26 warning lost-in-header: the header goes on to the next empty line, and section "
            "\"a\" is lost\n"_q},
        Row{"aLineThatIsNoComment", "#:1\n#:2\nk=1\n# note\n"_q,
            "3:1+3 warning lost-in-header: a line of the header that is no comment is lost\n"_q},
        Row{"aTitleAtTheStart", "#:1\n#:2\nConfiguration of 10.0.0.1\n"_q,
            "3:1+25 warning title-at-start: a title at the very start of a line has no address\n"_q},
        Row{"anAddressWithoutABlank", "#:1\n#:2\n# camera ip:10.0.0.1\n"_q,
            "3:1+20 warning address-not-read: an address must stand behind \"# Camera IP: \" at "
            "the "
            "start of a line\n"_q},
        Row{"aTitleInAnotherCase", "#:1\n#:2\n# configuration of 10.0.0.1\n"_q,
            "3:1+27 warning address-not-read: an address must stand behind \"# Camera IP: \" at "
            "the "
            "start of a line\n"_q},
        Row{"twoTitlesInALine", "#:1\n#:2\n# configuration of 1 Configuration of 2\n"_q,
            "3:1+39 warning address-not-read: an address must stand behind \"# Camera IP: \" at "
            "the "
            "start of a line\n"_q},
        Row{"anAddressInTheBody", kHead + "# Camera IP: 10.0.0.1\n"_q,
            "4:1+21 warning address-not-read: this address is not in the header, so it is not "
            "read\n"_q},
        Row{"twoAddresses", "#:1\n#:2\n# Camera IP: 10.0.0.1\n# Configuration of 10.0.0.2\n"_q,
            "3:1+21 warning address-repeated: the address in line 4 counts, not this one\n"_q},
        Row{"textBehindTheFileVersion", "#:1==x=\n#:2\n"_q,
            "1:4+4 warning text-behind-version: the file version ends at the first \"=\"; what "
            "follows is lost\n"_q},
        Row{"blanksAroundVersions", "#: 1\n#:2 \n"_q,
            "1:3+2 warning blanks-around-value: blanks at the ends belong to the value\n"
            "2:3+2 warning blanks-around-value: blanks at the ends belong to the value\n"_q},
        Row{"blanksAroundAnAddress", "#:1\n#:2\n# Camera IP: 10.0.0.1 \n"_q,
            "3:14+9 warning blanks-around-value: blanks at the ends belong to the value\n"_q},
        Row{"blanksBehindATitle", "#:1\n#:2\n# Configuration of 10.0.0.1 \n"_q,
            "3:19+10 warning blanks-around-address: blanks at the ends of the address are lost\n"_q},
        Row{"noBlankInATitle", "#:1\n#:2\n# Configuration of:10.0.0.1\n"_q,
            "3:19+1 warning no-blank-in-title: the character behind \"Configuration of\" is "
            "lost\n"_q}),
    nameOfRow);

INSTANTIATE_TEST_SUITE_P(
    Sections, ConfigTextFindings,
    testing::Values(
        Row{"anEntryOutside", kHead + "k=1\n"_q,
            "4:1+3 warning entry-outside-section: outside of sections, so it is not read\n"_q},
        Row{"aBlankBeforeASection", kHead + " SECTION a\n"_q,
            "4:1+10 warning blank-before-section: with a blank before it, the line opens no "
            "section\n"_q},
        Row{"aBlankBeforeAnEnd", kHead + "SECTION a\n\tENDSECTION a\nENDSECTION a\n"_q,
            "4:9+1 warning mistaken-name: where section \"a\" is replaced as a text, line 5 would "
            "be "
            "taken for it\n"
            "5:1+13 warning blank-before-section: with a blank before it, the line is an "
            "entry\n"_q},
        Row{"aSectionWithoutName", kHead + "SECTION \nSECTION\nSECTIONS\n"_q,
            "4:1+8 warning section-without-name: a section without a name, so nothing in it is "
            "read\n"
            "5:1+7 warning section-without-name: a section without a name, so nothing in it is "
            "read\n"
            "6:1+8 warning section-without-name: a section without a name, so nothing in it is "
            "read\n"_q},
        Row{"noBlankBeforeTheName", kHead + "SECTION_a\nk=1\nENDSECTION=a\n"_q,
            "4:8+1 warning no-blank-before-name: not a blank, but \"_\" is between the word and "
            "the "
            "name \"a\"\n"
            "6:11+1 warning no-blank-before-name: not a blank, but \"=\" is between the word and "
            "the name \"a\"\n"_q},
        Row{"twoBlanksBeforeTheName", kHead + "SECTION  a\nk=1\nENDSECTION  a\n"_q,
            "4:9+2 warning blanks-around-name: blanks at the ends belong to the name\n"_q},
        Row{"aSectionHead", kHead + "SECTION head\nk=1\nENDSECTION head\n"_q,
            "4:1+12 warning section-head: the entries of a section \"head\" are taken for values "
            "of "
            "the header\n"_q},
        Row{"anEmptySection", kHead + "SECTION a\n# note\nENDSECTION a\n"_q,
            "4:1+9 warning empty-section: a section without entries is not kept\n"_q},
        Row{"twoBlocks", kHead + "SECTION a\nk=1\nENDSECTION a\nSECTION a\nl=1\nENDSECTION a\n"_q,
            "7:1+9 note section-in-several-blocks: section \"a\" stands in line 4, too; they are "
            "read as one\n"_q},
        Row{"aLongerNameBefore",
            kHead + "SECTION camera\nk=1\nENDSECTION camera\nSECTION cam\nk=1\nENDSECTION cam\n"_q,
            "7:9+3 warning mistaken-name: where section \"cam\" is replaced as a text, line 4 "
            "would "
            "be taken for it\n"_q},
        Row{"aLongerNameBehind",
            kHead + "SECTION cam\nk=1\nENDSECTION cam\nSECTION camera\nk=1\nENDSECTION camera\n"_q,
            ""_q},
        Row{"aCommentWithTheWords", kHead + "# see SECTION ab\nSECTION a\nk=1\nENDSECTION a\n"_q,
            "5:9+1 warning mistaken-name: where section \"a\" is replaced as a text, line 4 would "
            "be "
            "taken for it\n"_q},
        Row{"theWordsOfItsEndInside",
            kHead + "SECTION a\n# before ENDSECTION a\nk=1\nENDSECTION a\n"_q,
            "4:9+1 warning mistaken-name: where section \"a\" is replaced as a text, line 5 would "
            "be "
            "taken for it\n"_q}),
    nameOfRow);

INSTANTIATE_TEST_SUITE_P(
    Entries, ConfigTextFindings,
    testing::Values(
        Row{"withoutEquals", kHead + "SECTION a\nkey\nENDSECTION a\n"_q,
            "5:1+3 note key-without-equals: no \"=\" behind the key \"key\"\n"_q},
        Row{"withoutAKey", kHead + "SECTION a\n=1\nENDSECTION a\n"_q,
            "5:1+2 warning no-key: no key before the \"=\"\n"_q},
        Row{"blanks", kHead + "SECTION a\nk = v\nENDSECTION a\n"_q,
            "5:1+2 warning blanks-around-key: blanks at the ends belong to the key\n"
            "5:4+2 warning blanks-around-value: blanks at the ends belong to the value\n"_q},
        Row{"anIndentedComment", kHead + "SECTION a\n #c=1\nENDSECTION a\n"_q,
            "5:1+3 warning blanks-around-key: blanks at the ends belong to the key\n"_q},
        Row{"aRepeatedKey",
            kHead + "SECTION a\nk=1\nENDSECTION a\nSECTION b\nk=1\nk=1\nENDSECTION b\n"_q,
            "9:1+3 note key-repeated: key \"k\" stands in line 8, too; the last value counts as "
            "the "
            "first one\n"_q}),
    nameOfRow);

INSTANTIATE_TEST_SUITE_P(
    Characters, ConfigTextFindings,
    testing::Values(
        Row{"lineEndsOfBothKinds", "#:1\r\n#:2\n\nSECTION a\r\nk=1\nENDSECTION a\r\n"_q,
            "2:4+1 note mixed-line-ends: this line does not end as the first one does\n"_q},
        Row{"controls", kHead + "SECTION a\nk=a\x1b[1m\x07z\nENDSECTION a\n"_q,
            "5:4+5 warning hidden-character: a character that does not show: U+001B\n"_q},
        Row{"aCarriageReturnInALine", kHead + "SECTION a\nk=a\rb\nENDSECTION a\n"_q,
            "5:4+1 warning hidden-character: a character that does not show: U+000D\n"_q},
        Row{"aCarriageReturnAtTheEnd", kHead + "SECTION a\nk=a\nENDSECTION a\r"_q,
            "6:13+1 warning hidden-character: a character that does not show: U+000D\n"_q},
        Row{"aByteOrderMark", QChar(0xfeff) + "#:1\n#:2\n"_q,
            "1:1+1 warning hidden-character: a character that does not show: U+FEFF\n"
            "1:1+1 note not-latin1: an archive entry would have \"?\" for \"\xef\xbb\xbf\"\n"
            "1:1+4 warning incomplete-header: no file version in the first line\n"_q},
        Row{"halfAPair", kHead + "# "_q + QChar(0xd83d) + "\n"_q,
            "4:3+1 warning hidden-character: a character that does not show: U+D83D\n"
            "4:3+1 note not-latin1: an archive entry would have \"?\" for \""_q +
                QChar(0xd83d) + "\"\n"_q},
        Row{"othersThanLatin1",
            kHead + "SECTION a\nk=\xc3\xbc \xc5\x99 \xf0\x9f\x98\x80.\nENDSECTION a\n"_q,
            "5:5+4 note not-latin1: an archive entry would have \"?\" for \"\xc5\x99 "
            "\xf0\x9f\x98\x80\"\n"_q},
        Row{"noTabulator", kHead + "# a\tb\n"_q, ""_q}),
    nameOfRow);

TEST(ConfigTextFinding, ofAnImageCommentNeedNoHeader)
{
    const auto findings = [](const QString &text) {
        return shown(VanteroConfigText(text, VanteroConfigText::Form::ImageComment).findings());
    };
    EXPECT_EQ(findings("SECTION a\nk=1\nENDSECTION a\n# Camera IP: 1\nSECTION head\nk=1\n"
                       "ENDSECTION head\n"_q),
              QString());
    EXPECT_EQ(findings("k=1"_q),
              "1:1+3 warning entry-outside-section: outside of sections, so it is not read\n"_q);
    EXPECT_EQ(findings("SECTION camera\nk=1\nENDSECTION camera\nSECTION cam\nk=1\n"
                       "ENDSECTION cam\n"_q),
              "4:9+3 warning mistaken-name: where section \"cam\" is replaced as a text, line 1 "
              "would be taken for it\n"_q);
}

TEST(ConfigTextFinding, isToldOfTheEditedText)
{
    VanteroConfigText text(kHead + "SECTION a\nk=1\nENDSECTION a\n"_q);
    EXPECT_TRUE(text.addValue("a"_q, "k"_q, " 2"_q));
    EXPECT_EQ(shown(text.findings()),
              "6:1+4 note key-repeated: key \"k\" stands in line 5, too; the last value counts as "
              "the first one\n"
              "6:3+2 warning blanks-around-value: blanks at the ends belong to the value\n"_q);
}

TEST(ConfigTextFinding, ofTheExamplesAreNotes)
{
    for (const char *name : {"gate.cfg", "dock.cfg", "entrance.cfg", "gate-factory.cfg"}) {
        const QString text =
            FileUtils::readText(QStringLiteral(VANTERO_EXAMPLE_DATA "/") + QString::fromUtf8(name));
        for (const Finding &finding : VanteroConfigText(text).findings())
            EXPECT_EQ(int(finding.severity), int(Finding::Severity::Note))
                << name << ' ' << shown({finding}).toStdString();
        EXPECT_EQ(brokenPromise(text), QString());
    }
}

// ---- Random texts ------------------------------------------------------------------------------

TEST(ConfigTextFinding, tellsAllThatIsLostOrChanged)
{
    static const char *const lines[] = {"#:1.3===",
                                        "#:VN",
                                        "#:",
                                        "#: 1=x",
                                        "",
                                        "",
                                        "# note",
                                        "k=1",
                                        "k=1",
                                        "l=2",
                                        " k=1",
                                        "k =1",
                                        "k= 1",
                                        "key",
                                        "=v",
                                        "  ",
                                        " # note",
                                        "SECTION a",
                                        "SECTION ab",
                                        "SECTION a",
                                        "ENDSECTION a",
                                        "ENDSECTION a",
                                        "ENDSECTION b",
                                        "ENDSECTION ab",
                                        "SECTION",
                                        "SECTION  a",
                                        "SECTION_a",
                                        "ENDSECTION_a",
                                        " SECTION a",
                                        " ENDSECTION a",
                                        "SECTION head",
                                        "ENDSECTION head",
                                        "Factory IP=2",
                                        "# Camera IP: 10.0.0.1",
                                        "# Camera IP: 1 ",
                                        "# camera ip:1",
                                        "# Configuration of 10.0.0.2",
                                        "# Configuration of:1",
                                        "# Configuration of 1 ",
                                        "Configuration of 1",
                                        "x Configuration of 1",
                                        "# Configuration of",
                                        "# SECTION a",
                                        "v=ENDSECTION a",
                                        "\x01"};
    Random random(20260403);
    int clean = 0;
    int refused = 0;
    for (int round = 0; round < 60000; ++round) {
        QString text;
        if (random.below(3) > 0)
            text = kHead;
        const bool isWhole = random.below(2) == 0;
        for (unsigned count = random.below(12); count > 0; --count) {
            QString line = QString::fromUtf8(lines[random.below(std::size(lines))]);
            if (isWhole && line.startsWith("SECTION "_q))
                line += "\n"_q + QString::fromUtf8(lines[random.below(std::size(lines))]) +
                        "\nEND"_q + line;
            text += line + (random.below(30) == 0 ? "\r\n"_q : "\n"_q);
        }
        if (random.below(8) == 0)
            text.chop(1);
        const QString broken = brokenPromise(text);
        ASSERT_EQ(broken, QString()) << "text:\n" << text.toStdString();
        ASSERT_EQ(brokenPromiseOfComment(text), QString()) << "text:\n" << text.toStdString();
        const Findings findings = VanteroConfigText(text).findings();
        clean += findings.isEmpty();
        refused += std::any_of(findings.begin(), findings.end(), [](const Finding &finding) {
            return finding.severity == Finding::Severity::Error;
        });
    }
    EXPECT_GT(clean, 500);
    EXPECT_GT(refused, 5000);
    EXPECT_LT(refused, 45000);
}
