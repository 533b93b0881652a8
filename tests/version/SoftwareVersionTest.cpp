// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include "VersionSupport.h"
#include "support/Expect.h"
#include "support/Literals.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryFile>
#include <QtCore/QVector>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <type_traits>

using vn::VanteroSoftwareVersion;

namespace {

// ---- Components
// ----------------------------------------------------------------------------------

struct ComponentRow
{
    const char *name;
    QString text;
    Numbers low;
    Numbers high;
};

class Components : public testing::TestWithParam<ComponentRow>
{
};

TEST_P(Components, areReadFromTheText)
{
    const ComponentRow &row = GetParam();
    const VanteroSoftwareVersion version(row.text);
    EXPECT_EQ(lows(version), row.low);
    EXPECT_EQ(highs(version), row.high);
    EXPECT_EQ(QString(version), row.text);
}

/** A row whose components are all concrete. */
ComponentRow concrete(const char *name, const QString &text, const Numbers &numbers)
{
    return {name, text, numbers, numbers};
}

const ComponentRow componentRows[] = {
    concrete("vnWithFourNumbers", "VN-3.0.6.29"_q, {20, 3, 0, 6, 29, 0}),
    {"wildcardAsFourthNumber", "VN-3.0.8.*"_q, {20, 3, 0, 8, 0, 0}, {20, 3, 0, 8, 99, 0}},
    concrete("r16WithFourNumbers", "R16-2.2.1.10"_q, {10, 2, 2, 1, 10, 0}),
    concrete("vBeforeMajor_andPreRelease", "VN-V4.1.2.3-pre"_q, {20, 4, 1, 2, 3, 1}),
    {"anotherSixthPart_isAnyPreRelease",
     "VN-4.1.2.3-beta"_q,
     {20, 4, 1, 2, 3, 0},
     {20, 4, 1, 2, 3, 99}},
    concrete("emptyText", ""_q, {}),

    concrete("r4", "R4-1.0"_q, {1, 1, 0, 0, 0, 0}),
    concrete("r8", "R8-1.5"_q, {2, 1, 5, 0, 0, 0}),
    concrete("r16Alone", "R16"_q, {10, 0, 0, 0, 0, 0}),
    concrete("vnAlone", "VN"_q, {20, 0, 0, 0, 0, 0}),
    {"wildcardPlatform", "*-3.0.6.31"_q, {0, 3, 0, 6, 31, 0}, {99, 3, 0, 6, 31, 0}},
    concrete("lowerCasePlatform_isUnknown", "vn-3.0"_q, {0, 3, 0, 0, 0, 0}),
    concrete("platformWithMore_isUnknown", "VN1-3.0"_q, {0, 3, 0, 0, 0, 0}),
    concrete("platformWithLess_isUnknown", "R1-3.0"_q, {0, 3, 0, 0, 0, 0}),
    concrete("numberAsPlatform_isUnknown", "20.3.0"_q, {0, 3, 0, 0, 0, 0}),
    concrete("blankBeforePlatform_makesItEmpty", " VN-3.0"_q, {0, 0, 3, 0, 0, 0}),
    {"blankBeforePlatform_makesTheFourthNumberTheSixthPart",
     " VN-3.0.6.29"_q,
     {0, 0, 3, 0, 6, 0},
     {0, 0, 3, 0, 6, 99}},
    concrete("garbage", "garbage"_q, {}),
    concrete("separatorsOnly", "-._"_q, {}),

    concrete("vBeforeMajor", "VN-V4"_q, {20, 4, 0, 0, 0, 0}),
    concrete("underscoreSeparates", "VN_V4"_q, {20, 4, 0, 0, 0, 0}),
    concrete("blankSeparates", "VN V4"_q, {20, 4, 0, 0, 0, 0}),
    concrete("runOfSeparatorsIsOne", "VN -_./V4"_q, {20, 4, 0, 0, 0, 0}),
    concrete("lowerCaseV_isKept", "VN-v4"_q, {20, 0, 0, 0, 0, 0}),
    concrete("onlyOneVIsDropped", "VN-VV4"_q, {20, 0, 0, 0, 0, 0}),
    concrete("vAlone", "VN-V"_q, {20, 0, 0, 0, 0, 0}),
    {"wildcardMajor", "VN-*"_q, {20, 0, 0, 0, 0, 0}, {20, 99, 0, 0, 0, 0}},
    {"wildcardMajorAfterV", "VN-V*.2"_q, {20, 0, 2, 0, 0, 0}, {20, 99, 2, 0, 0, 0}},
    concrete("vBeforeMinor_isNoNumber", "VN-4.V1"_q, {20, 4, 0, 0, 0, 0}),
    {"wildcardMinor", "VN-3.*.6.24"_q, {20, 3, 0, 6, 24, 0}, {20, 3, 99, 6, 24, 0}},
    {"wildcardThird", "R16-2.1.*"_q, {10, 2, 1, 0, 0, 0}, {10, 2, 1, 99, 0, 0}},
    {"wildcardsEverywhere", "*.*.*.*.*"_q, {}, {99, 99, 99, 99, 99, 0}},
    {"wildcardAsSixthPart", "VN-1.2.3.4.*"_q, {20, 1, 2, 3, 4, 0}, {20, 1, 2, 3, 4, 99}},
    concrete("wildcardIsNoSeparator", "VN-3.8*.1"_q, {20, 3, 0, 1, 0, 0}),
    concrete("twoStarsAreNoWildcard", "**-**.1"_q, {0, 0, 1, 0, 0, 0}),
    concrete("starBeforePlatform", "*VN-3"_q, {0, 3, 0, 0, 0, 0}),

    concrete("wordAsNumber", "VN-three.0.six"_q, {20, 0, 0, 0, 0, 0}),
    concrete("digitsThenLetters", "VN-3a.1"_q, {20, 0, 1, 0, 0, 0}),
    concrete("hexadecimalIsNoNumber", "VN-0x10.1"_q, {20, 0, 1, 0, 0, 0}),
    concrete("exponentIsNoNumber", "VN-1e2.1"_q, {20, 0, 1, 0, 0, 0}),
    concrete("leadingZeros", "VN-003.000000000000000000000007"_q, {20, 3, 7, 0, 0, 0}),
    concrete("largest16Bit", "VN-32767"_q, {20, 32767, 0, 0, 0, 0}),
    concrete("wrapsAt16Bit", "VN-32768.65535.65536.65537"_q, {20, -32768, -1, 0, 1, 0}),
    concrete("largest32Bit_wraps", "VN-2147483647.1"_q, {20, -1, 1, 0, 0, 0}),
    concrete("beyond32Bit_isNoNumber", "VN-2147483648.1"_q, {20, 0, 1, 0, 0, 0}),
    concrete("beyond64Bit_isNoNumber", "VN-99999999999999999999999.1"_q, {20, 0, 1, 0, 0, 0}),
    concrete("minusIsASeparator", "VN--3.+4"_q, {20, 3, 4, 0, 0, 0}),
    concrete("arabicDigitsAreNoNumber", "VN-\u0663.1"_q, {20, 0, 1, 0, 0, 0}),
    concrete("superscriptIsNoNumber_butAPart", "VN-3\u00b2.1"_q, {20, 0, 1, 0, 0, 0}),
    concrete("markIsPartOfAWord", "VN-3\u0301.1"_q, {20, 0, 1, 0, 0, 0}),
    concrete("noBreakSpaceSeparates", "VN\u00a03"_q, {20, 3, 0, 0, 0, 0}),
    concrete("otherConnectorsSeparate", "VN\u203f3\uff3f4"_q, {20, 3, 4, 0, 0, 0}),
    concrete("surrogatesSeparate", "VN\U0001d7d83"_q, {20, 3, 0, 0, 0, 0}),
    concrete("zeroCharacterSeparates", "VN\0003"_q, {20, 3, 0, 0, 0, 0}),
    concrete("lineEndSeparates", "VN\n3\n"_q, {20, 3, 0, 0, 0, 0}),

    concrete("preRelease", "VN-3.0.6.29-pre"_q, {20, 3, 0, 6, 29, 1}),
    {"upperCasePre_isAny", "VN-3.0.6.29-PRE"_q, {20, 3, 0, 6, 29, 0}, {20, 3, 0, 6, 29, 99}},
    {"preWithMore_isAny", "VN-3.0.6.29-pre1"_q, {20, 3, 0, 6, 29, 0}, {20, 3, 0, 6, 29, 99}},
    {"numberAsSixthPart_isAny", "VN-3.0.6.29.1"_q, {20, 3, 0, 6, 29, 0}, {20, 3, 0, 6, 29, 99}},
    {"trailingSeparator_isAnEmptySixthPart",
     "VN-3.0.6.29."_q,
     {20, 3, 0, 6, 29, 0},
     {20, 3, 0, 6, 29, 99}},
    concrete("trailingSeparatorEarlier_isAZero", "VN-3."_q, {20, 3, 0, 0, 0, 0}),
    concrete("preEarlier_isAWord", "VN-3.0.6-pre"_q, {20, 3, 0, 6, 0, 0}),
    concrete("partsAfterTheSixthAreIgnored", "VN-1.2.3.4-pre.7.*"_q, {20, 1, 2, 3, 4, 1}),
};

INSTANTIATE_TEST_SUITE_P(SoftwareVersion, Components, testing::ValuesIn(componentRows), nameOfRow);

TEST(SoftwareVersion, indexOutsideTheSixComponentsGivesZero)
{
    const VanteroSoftwareVersion version("VN-1.2.3.4-pre");
    EXPECT_EQ(version[5], 1);
    for (const int index :
         {6, 7, 100, -1, -6, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(version[index], 0) << index;
        EXPECT_EQ(version.high(index), 0) << index;
    }
}

TEST(SoftwareVersion, namesItsPlatform)
{
    for (const char *name : {"R4", "R8", "R16", "VN", "*"})
        EXPECT_EQ(VanteroSoftwareVersion(name).platform(), QLatin1String(name));
    for (const char *text : {"", "vn-3.0", "3.0", "VN1-3.0", "R-1", "-VN"})
        EXPECT_TRUE(VanteroSoftwareVersion(text).platform().isNull()) << text;
    VanteroSoftwareVersion version("VN-3.0");
    version.parse("R16-2.1"_q);
    EXPECT_EQ(version.platform(), "R16"_q);
}

// ---- The pattern that separates parts
// ------------------------------------------------------------

TEST(SplitVersion, isThePublishedPattern)
{
    EXPECT_EQ(VanteroSoftwareVersion::splitVersion.pattern(), "(\\W|_)+"_q);
    EXPECT_EQ(VanteroSoftwareVersion::splitVersion.caseSensitivity(), Qt::CaseSensitive);
    EXPECT_EQ(VanteroSoftwareVersion::splitVersion.patternSyntax(), QRegExp::RegExp);
    EXPECT_TRUE(VanteroSoftwareVersion::splitVersion.isValid());
    static_assert(std::is_same_v<decltype(VanteroSoftwareVersion::splitVersion), const QRegExp>);
}

/** The parts of a text as the pattern splits it, "*" standing for a letter. */
QStringList partsOf(QString text)
{
    const QChar letter(0x16a0); // does not occur in the texts of these tests
    text.replace(QLatin1Char('*'), letter);
    QStringList parts = text.split(VanteroSoftwareVersion::splitVersion);
    for (QString &part : parts)
        part.replace(letter, QLatin1Char('*'));
    return parts;
}

/** The numbers of a text by the rules of each component, from its parts. */
void expectNumbersOfParts(const QString &text)
{
    const QStringList parts = partsOf(text);
    Numbers low{};
    Numbers high{};
    for (int i = 0; i < 6 && i < parts.size(); ++i) {
        QString part = parts.at(i);
        if (i == 1 && part.startsWith(QLatin1Char('V')))
            part.remove(0, 1);
        int &l = low[std::size_t(i)];
        int &h = high[std::size_t(i)];
        if (i == 5 ? part != "pre"_q : part == "*"_q) {
            h = 99;
        } else if (i == 5) {
            l = h = 1;
        } else if (i == 0) {
            l = h = QMap<QString, int>{{"R4"_q, 1}, {"R8"_q, 2}, {"R16"_q, 10}, {"VN"_q, 20}}.value(
                part, 0);
        } else {
            l = h = static_cast<short>(part.toInt());
        }
    }
    const VanteroSoftwareVersion version(text);
    ASSERT_EQ(lows(version), low) << testing::PrintToString(text);
    ASSERT_EQ(highs(version), high) << testing::PrintToString(text);
}

TEST(SplitVersion, agreesWithTheReaderOnEveryCodeUnit)
{
    for (uint unit = 0; unit <= 0xffff; ++unit) {
        if (unit == 0x16a0)
            continue;
        expectNumbersOfParts("VN-3"_q + QChar(unit) + "4"_q + QChar(unit));
        expectNumbersOfParts("VN"_q + QChar(unit) + "4"_q);
        if (HasFatalFailure())
            FAIL() << "code unit " << unit;
    }
}

TEST(SplitVersion, agreesWithTheReaderOnRandomTexts)
{
    std::mt19937 random(31);
    const auto below = [&](std::size_t n) { return std::size_t(random() % n); };
    const QStringList pieces = {
        "VN"_q,
        "R4"_q,
        "R8"_q,
        "R16"_q,
        "V"_q,
        "v"_q,
        "pre"_q,
        "rc"_q,
        "0"_q,
        "1"_q,
        "32768"_q,
        "4294967296"_q,
        "007"_q,
        "*"_q,
        "-"_q,
        "."_q,
        "_"_q,
        " "_q,
        "+"_q,
        "."_q,
        "."_q,
        "\u00e9"_q,
        "e\u0301"_q,
        "\u0663"_q,
        "\u2167"_q,
        "\u00bd"_q,
        "\u20dd"_q,
        "\u0903"_q,
        "\u203f"_q,
        "\u30fb"_q,
        "\u02b0"_q,
        "\u4e09"_q,
        "\u3000"_q,
        "\u2028"_q,
        "\U0001d7d8"_q,
        "\U00010400"_q,
        "\ufeff"_q,
        "\u200d"_q,
        "\u01c5"_q,
        QString(QChar(0)),
        QString(QChar(0xd800)),
    };
    for (int run = 0; run < 20000; ++run) {
        QString text;
        for (std::size_t n = below(16); n > 0; --n) {
            if (below(8) == 0)
                text += QChar(uint(0x16a1 + below(0xffff - 0x16a1)));
            else
                text += pieces.at(int(below(std::size_t(pieces.size()))));
        }
        expectNumbersOfParts(text);
        if (HasFatalFailure())
            return;
    }
}

TEST(SoftwareVersion, readsNumbersAsQtDoes)
{
    std::mt19937 random(32);
    for (int run = 0; run < 20000; ++run) {
        QString part;
        for (std::size_t n = random() % 24; n > 0; --n)
            part += QChar(uint('0' + (random() % 3 ? random() % 10 : 0)));
        if (random() % 8 == 0)
            part.insert(int(random() % uint(part.size() + 1)), QChar(uint('a' + random() % 26)));
        const VanteroSoftwareVersion version("VN-1."_q + part);
        ASSERT_EQ(version[2], static_cast<short>(part.toInt())) << testing::PrintToString(part);
        ASSERT_EQ(version.high(2), version[2]) << testing::PrintToString(part);
    }
}

// ---- Text
// ----------------------------------------------------------------------------------------

TEST(SoftwareVersion, isNullWithoutText)
{
    EXPECT_TRUE(VanteroSoftwareVersion().isNull());
    EXPECT_TRUE(VanteroSoftwareVersion("").isNull());
    EXPECT_TRUE(VanteroSoftwareVersion(QString()).isNull());
    EXPECT_TRUE(VanteroSoftwareVersion(static_cast<const char *>(nullptr)).isNull());
    EXPECT_FALSE(VanteroSoftwareVersion("garbage").isNull());
    EXPECT_FALSE(VanteroSoftwareVersion(" ").isNull());
}

TEST(SoftwareVersion, defaultIsEmptyAndAllZero)
{
    const VanteroSoftwareVersion version;
    EXPECT_EQ(QString(version), ""_q);
    EXPECT_EQ(lows(version), Numbers{});
    EXPECT_EQ(highs(version), Numbers{});
}

TEST(SoftwareVersion, keepsItsTextUnchanged)
{
    for (const QString &text : {"VN-V4.1 "_q, " vn_003 "_q, "\u00e9\0x"_q})
        EXPECT_EQ(QString(VanteroSoftwareVersion(text)), text);
}

TEST(SoftwareVersion, readsBytesAsLatin1)
{
    EXPECT_EQ(QString(VanteroSoftwareVersion("VN-3.\xe9")), "VN-3.\u00e9"_q);
}

TEST(SoftwareVersion, parseChangesTheNumbersAndNotTheText)
{
    VanteroSoftwareVersion version("VN-3.0.6.*");
    version.parse("R16-2.1"_q);
    EXPECT_EQ(QString(version), "VN-3.0.6.*"_q);
    EXPECT_EQ(lows(version), (Numbers{10, 2, 1, 0, 0, 0}));
    EXPECT_EQ(highs(version), (Numbers{10, 2, 1, 0, 0, 0}));

    version.parse(QString());
    EXPECT_FALSE(version.isNull());
    EXPECT_EQ(lows(version), Numbers{});

    VanteroSoftwareVersion null;
    null.parse("VN-3"_q);
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(lows(null), (Numbers{20, 3, 0, 0, 0, 0}));
}

TEST(SoftwareVersion, copiesTextAndNumbers)
{
    VanteroSoftwareVersion original("VN-3.0.6.*");
    original.parse("R8-1.*"_q);
    const VanteroSoftwareVersion copy(original);
    VanteroSoftwareVersion assigned("VN-9");
    assigned = original;
    original.parse("R4"_q);
    for (const VanteroSoftwareVersion &version : {copy, assigned}) {
        EXPECT_EQ(QString(version), "VN-3.0.6.*"_q);
        EXPECT_EQ(lows(version), (Numbers{2, 1, 0, 0, 0, 0}));
        EXPECT_EQ(highs(version), (Numbers{2, 1, 99, 0, 0, 0}));
    }
}

TEST(SoftwareVersion, sharesTheDataOfItsText)
{
    const QString text = "VN-3.0.6.29"_q;
    const VanteroSoftwareVersion version(text);
    const VanteroSoftwareVersion copy(version);
    EXPECT_EQ(QString(copy).constData(), text.constData());
}

TEST(SoftwareVersion, isAMovableType)
{
    EXPECT_FALSE(QTypeInfo<VanteroSoftwareVersion>::isStatic);
    EXPECT_TRUE(QTypeInfo<VanteroSoftwareVersion>::isComplex);
    QVector<VanteroSoftwareVersion> versions;
    for (int i = 0; i < 100; ++i)
        versions.append(QStringLiteral("VN-%1").arg(i));
    EXPECT_EQ(versions.at(99)[1], 99);
    EXPECT_EQ(QString(versions.at(0)), "VN-0"_q);
}

TEST(SoftwareVersion, fromFileGivesANullVersion_evenForAnExistingFile)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("VN-3.0.6.29\n");
    file.close();
    EXPECT_TRUE(VanteroSoftwareVersion::fromFile(file.fileName()).isNull());
    EXPECT_TRUE(VanteroSoftwareVersion::fromFile(QString()).isNull());
    EXPECT_EQ(lows(VanteroSoftwareVersion::fromFile(file.fileName())), Numbers{});
}

// ---- Comparison
// ----------------------------------------------------------------------------------

struct OrderRow
{
    const char *name;
    const char *left;
    const char *right;
    int order; ///< -1: left is less, 0: equal, 1: greater
};

void expectOrder(const VanteroSoftwareVersion &left, const VanteroSoftwareVersion &right, int order)
{
    SCOPED_TRACE(testing::PrintToString(left) + " against " + testing::PrintToString(right));
    EXPECT_EQ(left == right, order == 0);
    EXPECT_EQ(left != right, order != 0);
    EXPECT_EQ(left < right, order < 0);
    EXPECT_EQ(left <= right, order <= 0);
    EXPECT_EQ(left > right, order > 0);
    EXPECT_EQ(left >= right, order >= 0);
    EXPECT_EQ(left.isUpgrade(right), order < 0);
    EXPECT_EQ(left.isDowngrade(right), order > 0);
}

class Order : public testing::TestWithParam<OrderRow>
{
};

TEST_P(Order, drivesAllOperators)
{
    const OrderRow &row = GetParam();
    expectOrder(row.left, row.right, row.order);
    expectOrder(row.right, row.left, -row.order);
    expectOrder(row.left, row.left, 0);
}

const OrderRow orderRows[] = {
    {"nullAndNull", "", "", 0},
    {"nullAndGarbage", "", "garbage", 0},
    {"garbageAndWords", "garbage", "other words", 0},
    {"textTakesNoPart", "VN-V3.0", "VN_003.0.0", 0},

    {"platformsAscend_r4r8", "R4-9.9", "R8-1.0", -1},
    {"platformsAscend_r8r16", "R8-9.9", "R16-1.0", -1},
    {"platformsAscend_r16vn", "R16-9.9", "VN-1.0", -1},
    {"unknownPlatformIsLess", "vn-3.0", "R4-1.0", -1},
    {"wildcardPlatformEqualsAny", "*-3.0", "VN-3.0", 0},
    {"major", "VN-3.9", "VN-4.0", -1},
    {"minor", "VN-3.0.9", "VN-3.1.0", -1},
    {"third", "VN-3.0.6.99", "VN-3.0.7.0", -1},
    {"fourth", "VN-3.0.6.28", "VN-3.0.6.29", -1},
    {"numbersAreNoTexts", "VN-3.0.6.9", "VN-3.0.6.29", -1},
    {"wrappedNumberIsNegative", "VN-32768", "VN-0", -1},
    {"preReleaseIsGreater", "VN-3.0.6.29-pre", "VN-3.0.6.29", 1},
    {"anyPreReleaseEqualsNone", "VN-3.0.6.29-rc", "VN-3.0.6.29", 0},
    {"anyPreReleaseEqualsPre", "VN-3.0.6.29-rc", "VN-3.0.6.29-pre", 0},
    {"trailingSeparatorEqualsPre", "VN-3.0.6.29.", "VN-3.0.6.29-pre", 0},
    {"missingPartIsZero", "VN-3", "VN-3.0.0.0", 0},

    {"patternEqualsWhatItCovers", "VN-3.0.8.4", "VN-3.0.8.*", 0},
    {"patternEqualsFirst", "VN-3.0.6.*", "VN-3.0.6.1", 0},
    {"patternEqualsSecond", "VN-3.0.6.*", "VN-3.0.6.2", 0},
    {"thoseTwoAreUnequal", "VN-3.0.6.1", "VN-3.0.6.2", -1},
    {"patternEqualsItsEnd", "VN-3.0.6.*", "VN-3.0.6.99", 0},
    {"patternEndsAt99", "VN-3.0.6.*", "VN-3.0.6.100", -1},
    {"patternAboveVersion", "VN-3.0.8.*", "VN-3.0.6.29", 1},
    {"patternsOverlap", "VN-3.*.6", "VN-3.4.*", 0},
    {"missingPartOfPatternIsZero", "R16-2.1.5.3", "R16-2.1.*", 1},
    {"missingPartOfBoth", "R16-2.1.5", "R16-2.1.*", 0},
    {"laterComponentsDecide", "VN-3.0.*", "VN-3.0.6.24", -1},
    {"wildcardAgainstLaterPattern", "VN-3.0.*", "VN-3.0.8.*", 0},
    {"patternAboveByPreRelease", "VN-3.0.6.1-pre", "VN-3.0.6.*", 1},
};

INSTANTIATE_TEST_SUITE_P(SoftwareVersion, Order, testing::ValuesIn(orderRows), nameOfRow);

/** The ranges of one component, as texts of the components 1 to 4. */
struct Interval
{
    QString text;
    int low;
    int high;
};

TEST(SoftwareVersion, firstComponentThatDoesNotOverlapDecides)
{
    const Interval intervals[] = {
        {"1"_q, 1, 1}, {"2"_q, 2, 2}, {"*"_q, 0, 99}, {"100"_q, 100, 100}};
    std::mt19937 random(33);
    for (int run = 0; run < 20000; ++run) {
        QString left = "VN"_q;
        QString right = "VN"_q;
        int order = 0;
        for (int component = 1; component <= 4; ++component) {
            const Interval &l = intervals[random() % 4];
            const Interval &r = intervals[random() % 4];
            left += "."_q + l.text;
            right += "."_q + r.text;
            if (order == 0 && l.high < r.low)
                order = -1;
            else if (order == 0 && l.low > r.high)
                order = 1;
        }
        expectOrder(left, right, order);
        expectOrder(right, left, -order);
        if (HasFailure())
            return;
    }
}

} // namespace
