// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "reference/ConfigReference.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using vn::VanteroConfigFile;

namespace {

// ---- Tables ----------------------------------------------------------------------------------

struct ReplaceRow
{
    const char *name;
    QString target;
    QString source;
    QString section;
    QString result;
};

std::ostream &operator<<(std::ostream &out, const ReplaceRow &row)
{
    return out << row.name;
}

class ReplaceSection : public testing::TestWithParam<ReplaceRow>
{
};

struct RemoveRow
{
    const char *name;
    QString text;
    QStringList sections;
    bool dropOuterComments;
    bool dropSectionComments;
    bool dropEmptyLines;
    QString result;
};

std::ostream &operator<<(std::ostream &out, const RemoveRow &row)
{
    return out << row.name;
}

class RemoveSections : public testing::TestWithParam<RemoveRow>
{
};

const QString kX = "SECTION x\nk=v\nENDSECTION x\n"_q;
const QString kNewX = "SECTION x\nk=new\nENDSECTION x\n"_q;
const QString kA = "SECTION a\n#c\nk=v\n\nENDSECTION a\n"_q;
const QString kMixed = "#:1.3==\n"
                       "#:VN-3\n"
                       "# header\n"
                       "\n"
                       "stray\n"
                       "SECTION a\n"
                       "#in a\n"
                       "\n"
                       "k=1\n"
                       "ENDSECTION a\n"
                       "# between\n"
                       "\n"
                       "SECTION b\n"
                       "k=2\n"
                       "#in b\n"
                       "ENDSECTION b\n"
                       "stray=too\n"
                       "\n"_q;

} // namespace

// ---- replaceSection --------------------------------------------------------------------------

TEST_P(ReplaceSection, gives)
{
    const ReplaceRow &row = GetParam();
    EXPECT_EQ(VanteroConfigFile::replaceSection(row.target, row.source, row.section), row.result);
    EXPECT_EQ(reference::replaceSection(row.target, row.source, row.section), row.result);
}

INSTANTIATE_TEST_SUITE_P(
    , ReplaceSection,
    testing::Values(
        ReplaceRow{"theTargetWhenNeitherHasTheSection", "A\r\n\n# SECTION y\nB"_q, "other\n"_q,
                   "x"_q, "A\r\n\n# SECTION y\nB"_q},
        ReplaceRow{"theTargetWithoutASectionThatTheSourceLacks", "A\n"_q + kX + "B\n"_q, ""_q,
                   "x"_q, "A\n\nB\n"_q},
        ReplaceRow{"anAppendedSectionWhenOnlyTheSourceHasIt", "A\n"_q,
                   "SECTION x\nk=v\nENDSECTION x\n"_q, "x"_q,
                   "A\n\n\nSECTION x\nk=v\nENDSECTION x\n"_q},
        ReplaceRow{"anAppendedSectionToAnEmptyTarget", ""_q, kX, "x"_q,
                   "\n\nSECTION x\nk=v\nENDSECTION x\n"_q},
        ReplaceRow{"fourMoreLineBreaksInPlace", "A\n"_q + kX + "B\n"_q, kNewX, "x"_q,
                   "A\n\n\nSECTION x\nk=new\nENDSECTION x\n\n\nB\n"_q},
        ReplaceRow{"theRestOfTheSourceWithoutItsEndLine", "A\n"_q,
                   "head\nSECTION x\nk=v\nSECTION y\nlast"_q, "x"_q,
                   "A\n\n\nSECTION x\nk=v\nSECTION y\nlast\n"_q},
        ReplaceRow{"nothingAfterASectionOfTheTargetWithoutItsEndLine",
                   "A\nSECTION x\nk=v\nSECTION y\nlast"_q, kNewX, "x"_q,
                   "A\n\n\nSECTION x\nk=new\nENDSECTION x\n\n"_q},
        ReplaceRow{"aDeletedRestWithoutAnEndLine", "A\nSECTION x\nk=v\nlast"_q, ""_q, "x"_q,
                   "A\n"_q},
        ReplaceRow{"theFirstSectionWhoseNameBeginsAlike",
                   "SECTION camera\na=1\nENDSECTION camera\nSECTION cam\nb=1\nENDSECTION cam\n"_q,
                   "SECTION cam\nnew\nENDSECTION cam\n"_q, "cam"_q,
                   "\n\nSECTION cam\nnew\nENDSECTION cam\n\nera\n"
                   "SECTION cam\nb=1\nENDSECTION cam\n"_q},
        ReplaceRow{"theLongerSectionOfTheSourceToo", "A\n"_q,
                   "SECTION camera\na=1\nENDSECTION camera\n"_q, "cam"_q,
                   "A\n\n\nSECTION camera\na=1\nENDSECTION cam\n"_q},
        ReplaceRow{"aMatchInAComment", "# the SECTION x of old\nk=v\n"_q + kX, kNewX, "x"_q,
                   "# the \n\nSECTION x\nk=new\nENDSECTION x\n\n\n"_q},
        ReplaceRow{"aMatchInTheMiddleOfALine", "aSECTION xb\nENDSECTION xc\n"_q, ""_q, "x"_q,
                   "ac\n"_q},
        // The start marker is found within the end marker, three characters behind its beginning.
        ReplaceRow{"theWordEndWhereTheEndLineComesFirst", "A\nENDSECTION x\nB\n"_q, ""_q, "x"_q,
                   "A\nEND\nB\n"_q},
        ReplaceRow{"anEndLineFirstInTheSource", "A\n"_q, "ENDSECTION x\nSECTION x\nk=v\n"_q, "x"_q,
                   "A\n\n\nSECTION x\n"_q},
        ReplaceRow{"aSearchForTheEndFromTheStartOfTheText",
                   "ENDSECTION x\nSECTION x\nk=v\nENDSECTION x\nB\n"_q, kNewX, "x"_q,
                   "END\n\nSECTION x\nk=new\nENDSECTION x\n\n"
                   "\nSECTION x\nk=v\nENDSECTION x\nB\n"_q},
        ReplaceRow{"aCaseSensitiveSearch", "section x\nSECTION X\n"_q, kX, "x"_q,
                   "section x\nSECTION X\n\n\nSECTION x\nk=v\nENDSECTION x\n"_q},
        ReplaceRow{"carriageReturnsAsTheyAre", "A\r\nSECTION x\r\nk=v\r\nENDSECTION x\r\nB\r\n"_q,
                   "SECTION x\r\nENDSECTION x\r\n"_q, "x"_q,
                   "A\r\n\n\nSECTION x\r\nENDSECTION x\n\n\r\nB\r\n"_q},
        ReplaceRow{"anyFirstSectionForAnEmptyName", "A\n"_q + kX + "B\n"_q, ""_q, ""_q,
                   "A\nx\nB\n"_q},
        ReplaceRow{"aSectionNamedWithABlank", "SECTION  a\nk\nENDSECTION  a\nB\n"_q, ""_q, " a"_q,
                   "\nB\n"_q},
        ReplaceRow{"textsOutsideOfLatin1",
                   "\u00c4\nSECTION \u5c71\nk=\u00f6\nENDSECTION \u5c71\n"_q,
                   "SECTION \u5c71\nk=\U0001f4f7\nENDSECTION \u5c71\n"_q, "\u5c71"_q,
                   "\u00c4\n\n\nSECTION \u5c71\nk=\U0001f4f7\nENDSECTION \u5c71\n\n\n"_q}),
    nameOfRow);

TEST(ReplaceSections, growsBlankLinesWithEachReplacement)
{
    QString text = "A\n"_q + kX + "B\n"_q;
    text = VanteroConfigFile::replaceSection(text, kX, "x"_q);
    EXPECT_EQ(text, "A\n\n\nSECTION x\nk=v\nENDSECTION x\n\n\nB\n"_q);
    text = VanteroConfigFile::replaceSection(text, kX, "x"_q);
    EXPECT_EQ(text, "A\n\n\n\n\nSECTION x\nk=v\nENDSECTION x\n\n\n\n\nB\n"_q);
}

TEST(ReplaceSections, sharesTheTargetThatItDoesNotChange)
{
    const QString target = "A\nB\n"_q;
    EXPECT_EQ(VanteroConfigFile::replaceSection(target, target, "x"_q).constData(),
              target.constData());
}

TEST(ReplaceSections, acceptsNullStrings)
{
    EXPECT_EQ(VanteroConfigFile::replaceSection(QString(), QString(), QString()), ""_q);
    EXPECT_EQ(VanteroConfigFile::replaceSection(QString(), kX, "x"_q), "\n\n"_q + kX);
    EXPECT_EQ(VanteroConfigFile::replaceSection(kX, QString(), "x"_q), "\n"_q);
}

TEST(ReplaceSections, agreesWithTheReference)
{
    Random random(20230501);
    const QStringList pieces = {"SECTION "_q, "ENDSECTION "_q, "END"_q,   "SECTION"_q,
                                "S"_q,        "x"_q,           "xy"_q,    "\n"_q,
                                "\r\n"_q,     " "_q,           "\u0a53"_q};
    const auto text = [&] {
        QString result;
        for (unsigned count = random.below(14); count > 0; --count)
            result += random.oneOf(pieces);
        return result;
    };
    for (int i = 0; i < 20000; ++i) {
        const QString target = text();
        const QString source = text();
        const QString section = i % 3 == 0 ? "x"_q : text().left(4);
        ASSERT_EQ(VanteroConfigFile::replaceSection(target, source, section),
                  reference::replaceSection(target, source, section))
            << qPrintable(target) << "\n--\n"
            << qPrintable(source) << "\n--\n"
            << qPrintable(section);
    }
}

// ---- removeSections --------------------------------------------------------------------------

TEST_P(RemoveSections, leaves)
{
    const RemoveRow &row = GetParam();
    EXPECT_EQ(VanteroConfigFile::removeSections(row.text, row.sections, row.dropOuterComments,
                                                row.dropSectionComments, row.dropEmptyLines),
              row.result);
    EXPECT_EQ(reference::removeSections(row.text, row.sections, row.dropOuterComments,
                                        row.dropSectionComments, row.dropEmptyLines),
              row.result);
}

INSTANTIATE_TEST_SUITE_P(
    , RemoveSections,
    testing::Values(
        RemoveRow{"nothingOfAnEmptyText", ""_q, {"a"_q}, false, false, false, ""_q},
        RemoveRow{"allButStrayLinesWithoutListAndFlags",
                  kMixed,
                  {},
                  false,
                  false,
                  false,
                  "#:1.3==\n#:VN-3\n# header\n\nSECTION a\n#in a\n\nk=1\nENDSECTION a\n"
                  "# between\n\nSECTION b\nk=2\n#in b\nENDSECTION b\n\n"_q},
        RemoveRow{"noOuterCommentsWithTheFirstFlag",
                  kMixed,
                  {},
                  true,
                  false,
                  false,
                  "\nSECTION a\n#in a\n\nk=1\nENDSECTION a\n"
                  "\nSECTION b\nk=2\n#in b\nENDSECTION b\n\n"_q},
        RemoveRow{"noCommentsInSectionsWithTheSecondFlag",
                  kMixed,
                  {},
                  false,
                  true,
                  false,
                  "#:1.3==\n#:VN-3\n# header\n\nSECTION a\n\nk=1\nENDSECTION a\n"
                  "# between\n\nSECTION b\nk=2\nENDSECTION b\n\n"_q},
        RemoveRow{"noEmptyLinesAnywhereWithTheThirdFlag",
                  kMixed,
                  {},
                  false,
                  false,
                  true,
                  "#:1.3==\n#:VN-3\n# header\nSECTION a\n#in a\nk=1\nENDSECTION a\n"
                  "# between\nSECTION b\nk=2\n#in b\nENDSECTION b\n"_q},
        RemoveRow{"bareSectionsWithAllFlags",
                  kMixed,
                  {},
                  true,
                  true,
                  true,
                  "SECTION a\nk=1\nENDSECTION a\nSECTION b\nk=2\nENDSECTION b\n"_q},
        RemoveRow{"nothingOfAListedSection",
                  kMixed,
                  {"a"_q},
                  false,
                  false,
                  false,
                  "#:1.3==\n#:VN-3\n# header\n\n"
                  "# between\n\nSECTION b\nk=2\n#in b\nENDSECTION b\n\n"_q},
        RemoveRow{"whatIsOutsideOfManyListedSections",
                  kMixed,
                  {"b"_q, "nosuch"_q, "a"_q, "a"_q},
                  false,
                  false,
                  false,
                  "#:1.3==\n#:VN-3\n# header\n\n# between\n\n\n"_q},
        RemoveRow{"nothingWhereAllIsListed", kA, {"a"_q}, false, false, false, ""_q},
        RemoveRow{"theSectionWithoutItsComments",
                  kA,
                  {"b"_q},
                  false,
                  true,
                  false,
                  "SECTION a\nk=v\n\nENDSECTION a\n"_q},
        RemoveRow{"aSectionWhoseNameBeginsWithABlank",
                  "SECTION  a\nk\nENDSECTION  a\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  "SECTION  a\nk\nENDSECTION  a\n"_q},
        RemoveRow{"nothingOfAListedNameWithABlank",
                  "SECTION  a\nk\nENDSECTION  a\n"_q,
                  {" a"_q},
                  false,
                  false,
                  false,
                  ""_q},
        RemoveRow{"aSectionInAnotherCaseAndALongerName",
                  "SECTION A\nENDSECTION A\nSECTION ab\nENDSECTION ab\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  "SECTION A\nENDSECTION A\nSECTION ab\nENDSECTION ab\n"_q},
        RemoveRow{"nothingOfANameAfterAnyCharacter",
                  "SECTION:a\nk\nENDSECTION a\nSECTIONxa\nk\nENDSECTION a\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  ""_q},
        RemoveRow{"nothingOfABareOpeningLineForAnEmptyName",
                  "SECTION\nk\nENDSECTION\nSECTION \nk\nENDSECTION\n"_q,
                  {QString()},
                  false,
                  false,
                  false,
                  ""_q},
        RemoveRow{"aBareOpeningLineForOtherNames",
                  "SECTION\nk\nENDSECTION\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  "SECTION\nk\nENDSECTION\n"_q},
        RemoveRow{"lineFeedsForAllLineEnds",
                  "#c\r\nSECTION a\r\nk=v\r\n\r\nENDSECTION a\r\n\r\n"_q,
                  {"b"_q},
                  false,
                  false,
                  false,
                  "#c\nSECTION a\nk=v\n\nENDSECTION a\n\n"_q},
        RemoveRow{"noEmptyLinesBetweenCarriageReturnsEither",
                  "SECTION a\r\nk=v\r\n\r\nENDSECTION a\r\n\r\n"_q,
                  {},
                  false,
                  false,
                  true,
                  "SECTION a\nk=v\nENDSECTION a\n"_q},
        RemoveRow{"nothingOfAListedSectionBetweenCarriageReturns",
                  "SECTION a\r\nk=v\r\nENDSECTION a\r\n#\r\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  "#\n"_q},
        RemoveRow{"carriageReturnsWithinLines",
                  "SECTION a\nk=v\rw\r\r\nENDSECTION a\n"_q,
                  {},
                  false,
                  false,
                  false,
                  "SECTION a\nk=v\rw\r\nENDSECTION a\n"_q},
        RemoveRow{"aLineFeedBehindALastLineWithoutOne",
                  "SECTION a\nk=v"_q,
                  {},
                  false,
                  false,
                  false,
                  "SECTION a\nk=v\n"_q},
        RemoveRow{"aLineFeedBehindALastEndLine",
                  "SECTION a\nENDSECTION a"_q,
                  {},
                  false,
                  false,
                  false,
                  "SECTION a\nENDSECTION a\n"_q},
        // At the end of the text a carriage return counts to the line end, as in QTextStream.
        RemoveRow{"noCarriageReturnAtTheEndOfTheText",
                  "SECTION a\nk=v\r"_q,
                  {},
                  false,
                  false,
                  false,
                  "SECTION a\nk=v\n"_q},
        RemoveRow{"oneOfTwoCarriageReturnsAtTheEndOfTheText",
                  "SECTION a\nk=v\r\r"_q,
                  {},
                  false,
                  true,
                  false,
                  "SECTION a\nk=v\r\n"_q},
        RemoveRow{"anEmptyLineForALastCarriageReturn",
                  "SECTION a\n\r"_q,
                  {},
                  false,
                  false,
                  false,
                  "SECTION a\n\n"_q},
        RemoveRow{"lineOfBlanksInSectionsOnly",
                  " \nSECTION a\n \nENDSECTION a\n \n"_q,
                  {},
                  false,
                  false,
                  true,
                  "SECTION a\n \nENDSECTION a\n"_q},
        RemoveRow{"noIndentedCommentOutside",
                  " #c\n\t\nSECTION a\n #c\nENDSECTION a\n"_q,
                  {},
                  false,
                  true,
                  false,
                  "SECTION a\n #c\nENDSECTION a\n"_q},
        RemoveRow{"theSectionThatOpensWithinARemovedOne",
                  "SECTION a\nk=1\nSECTION b\nk=2\nENDSECTION a\nstray\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  "SECTION b\nk=2\nENDSECTION a\n"_q},
        RemoveRow{"nothingAfterARemovedSectionOpensWithinAnother",
                  "SECTION a\nk=1\nSECTION b\nk=2\nENDSECTION a\nstray\n#c\n"_q,
                  {"b"_q},
                  false,
                  false,
                  false,
                  "SECTION a\nk=1\n#c\n"_q},
        RemoveRow{"aSectionClosedUnderAnyName",
                  "SECTION a\nk=1\nENDSECTION other\nstray\nENDSECTION a\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  "ENDSECTION a\n"_q},
        RemoveRow{"anEndLineOutsideOfSections",
                  "ENDSECTION a\nENDSECTIONS\nENDSECTION"_q,
                  {"a"_q},
                  true,
                  true,
                  true,
                  "ENDSECTION a\nENDSECTIONS\nENDSECTION\n"_q},
        RemoveRow{"nothingAfterARemovedSectionWithoutEnd",
                  "SECTION a\nk=1\n\n#c\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  ""_q},
        RemoveRow{"markersWithinLinesAsOtherLines",
                  "SECTION a\n SECTION b\nxSECTION b\nEND SECTION\nXENDSECTION\n"
                  "#SECTION b\nENDSECTION a\nxSECTION b\n#ENDSECTION\n"_q,
                  {"b"_q},
                  false,
                  false,
                  false,
                  "SECTION a\n SECTION b\nxSECTION b\nEND SECTION\nXENDSECTION\n"
                  "#SECTION b\nENDSECTION a\n#ENDSECTION\n"_q},
        RemoveRow{"wordsInAnotherCaseAsOtherLines",
                  "section a\nSECTION a\nEndsection a\nENDSECTION a\n"_q,
                  {"b"_q},
                  false,
                  false,
                  false,
                  "SECTION a\nEndsection a\nENDSECTION a\n"_q},
        RemoveRow{"charactersThatShareAByteWithALineFeed",
                  "SECTION a\nk=\u0a0a\u010a\u0a53\u2028\u0085\f\v\nENDSECTION a\n"_q,
                  {},
                  false,
                  true,
                  true,
                  "SECTION a\nk=\u0a0a\u010a\u0a53\u2028\u0085\f\v\nENDSECTION a\n"_q},
        RemoveRow{"zeroCharactersInLines",
                  "SECTION a\0b\nk\0=v\nENDSECTION a\n"_q,
                  {"a"_q},
                  false,
                  false,
                  false,
                  "SECTION a\0b\nk\0=v\nENDSECTION a\n"_q}),
    nameOfRow);

TEST(RemoveSectionsFromTexts, agreesWithTheReference)
{
    Random random(20230502);
    const QStringList pieces = {"SECTION "_q, "SECTION"_q, "ENDSECTION "_q,  "END"_q, "S"_q,
                                "a"_q,        "b"_q,       "k=v"_q,          "#"_q,   " "_q,
                                "\n"_q,       "\n"_q,      "\n"_q,           "\n"_q,  "\r\n"_q,
                                "\r"_q,       "\u010a"_q,  "\nSECTION a\n"_q};
    const QStringList names = {"a"_q, "b"_q, " a"_q, ""_q, QString(), "ak=v"_q};
    for (int i = 0; i < 30000; ++i) {
        QString text;
        for (unsigned count = random.below(24); count > 0; --count)
            text += random.oneOf(pieces);
        QStringList sections;
        for (unsigned count = random.below(3); count > 0; --count)
            sections += random.oneOf(names);
        for (unsigned flags = 0; flags < 8; ++flags) {
            const bool outer = flags & 1;
            const bool inner = flags & 2;
            const bool empty = flags & 4;
            ASSERT_EQ(VanteroConfigFile::removeSections(text, sections, outer, inner, empty),
                      reference::removeSections(text, sections, outer, inner, empty))
                << qPrintable(text) << "\nflags " << flags;
        }
    }
}

TEST(RemoveSectionsFromTexts, leavesTheArgumentsAsTheyAre)
{
    const QString text = kMixed;
    const QStringList sections = {"a"_q};
    (void)VanteroConfigFile::removeSections(text, sections, true, true, true);
    EXPECT_EQ(text, kMixed);
    EXPECT_EQ(sections, QStringList{"a"_q});
}

// ---- setSection ------------------------------------------------------------------------------

TEST(SetSection, createsASection)
{
    VanteroConfigFile config;
    config.setSection("s"_q, {{"k"_q, "v"_q}});
    EXPECT_EQ(config.toString(), "\nSECTION s\nk=v\nENDSECTION s\n\n"_q);
}

TEST(SetSection, replacesAllEntriesOfTheSectionAndNoOther)
{
    VanteroConfigFile config;
    config.addValue("s"_q, "old"_q, "1"_q);
    config.addValue("s"_q, "k"_q, "1"_q);
    config.addValue("s"_q, "k"_q, "2"_q);
    config.addValue("t"_q, "k"_q, "3"_q);
    config.setSection("s"_q, {{"k"_q, "new"_q}});
    EXPECT_EQ(config.toString("s"_q), "SECTION s\nk=new\nENDSECTION s\n"_q);
    EXPECT_EQ(config.toString("t"_q), "SECTION t\nk=3\nENDSECTION t\n"_q);
}

TEST(SetSection, acceptsAnEmptySection)
{
    VanteroConfigFile config;
    config.addValue("s"_q, "k"_q, "1"_q);
    config.setSection("s"_q, {});
    EXPECT_TRUE(config.containsSection("s"_q));
    EXPECT_TRUE(config.section("s"_q).isEmpty());
}

TEST(SetSection, replacesTheHeaderData)
{
    VanteroConfigFile config;
    config.setFileVersion("1.3"_q);
    config.setSection(VanteroConfigFile::HEAD_SECTION,
                      {{VanteroConfigFile::SOFTWARE_VERSION, "VN-3"_q}});
    EXPECT_EQ(config.getSoftwareVersion(), "VN-3"_q);
    EXPECT_TRUE(config.getFileVersion().isNull());
}

TEST(SetSection, leavesTheTextAlone)
{
    VanteroConfigFile config;
    config.parse(kX, QDateTime());
    config.setSection("x"_q, {});
    QTemporaryDir dir;
    const QString path = dir.filePath("x.cfg"_q);
    config.store(path);
    EXPECT_EQ(QString::fromUtf8(readFile(path)), kX);
}

TEST(SetSection, isSeenWholeByOtherThreads)
{
    QMultiMap<QString, QString> contents[2];
    for (int i = 0; i < 50; ++i)
        for (int version : {0, 1})
            contents[version].insert("k%1"_q.arg(i), QString::number(version));
    VanteroConfigFile config;
    config.setSection("s"_q, contents[0]);

    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int i = 0; i < 5000; ++i)
            config.setSection("s"_q, contents[i % 2]);
        done = true;
    });
    do {
        const QMultiMap<QString, QString> content = config.section("s"_q);
        EXPECT_TRUE(content == contents[0] || content == contents[1]);
    } while (!done);
    writer.join();
}
