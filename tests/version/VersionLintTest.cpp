// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VersionLint.h"

#include "VersionSupport.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>

using vn::Finding;
using vn::Findings;
using vn::VanteroSoftwareVersion;
using vn::VersionLint;

namespace {

struct Row
{
    const char *name;
    QString text;
    QStringList findings; ///< "columns from-to severity code: message"
};

QStringList shown(const Findings &findings)
{
    QStringList list;
    for (const Finding &finding : findings) {
        const char *const severity = finding.severity == Finding::Severity::Warning ? "warning"
                                     : finding.severity == Finding::Severity::Note  ? "note"
                                                                                    : "error";
        list.append("%1-%2 %3 %4: %5"_q.arg(finding.range.column)
                        .arg(finding.range.endColumn)
                        .arg(QLatin1String(severity), finding.code, finding.message));
    }
    return list;
}

class Lint : public testing::TestWithParam<Row>
{
};

TEST_P(Lint, findsWhatIsReadOtherwise)
{
    EXPECT_EQ(shown(VersionLint::check(GetParam().text)), GetParam().findings);
}

const Row rows[] = {
    {"version", "VN-3.0.6.29"_q, {}},
    {"preRelease", "VN-3.0.6.29-pre"_q, {}},
    {"majorWithItsSign", "VN-V4.1.2.3"_q, {}},
    {"fewNumbers", "R16-2"_q, {}},
    {"platformAlone", "R8"_q, {}},
    {"anyPlatform", "*-3.0"_q, {}},
    {"leadingZeros", "VN-03.00000000000007"_q, {}},
    {"largestNumber", "VN-3.32767"_q, {}},

    {"empty", ""_q, {"1-1 warning platform-unknown: there is no platform"_q}},
    {"otherPlatform",
     "R12-3.0"_q,
     {"1-4 warning platform-unknown: \"R12\" is no known platform"_q}},
    {"platformInLowerCase",
     "vn-3.0"_q,
     {"1-3 warning platform-unknown: \"vn\" is no known platform, but VN is"_q}},
    {"noSeparatorBehindThePlatform",
     "VN3.0"_q,
     {"1-4 warning platform-unknown: \"VN3\" is no known platform"_q}},

    {"letterInANumber",
     "VN-3.O.6"_q,
     {"6-7 warning number-unreadable: \"O\" is no number and is read as 0"_q}},
    {"signOfTheMajorElsewhere",
     "VN-3.V4"_q,
     {"6-8 warning number-unreadable: \"V4\" is no number and is read as 0"_q}},
    {"signWithoutMajor",
     "VN-V.4"_q,
     {"4-5 warning number-unreadable: \"V\" is no number and is read as 0"_q}},
    {"signTwice",
     "VN-VV4"_q,
     {"4-7 warning number-unreadable: \"VV4\" is no number and is read as 0"_q}},
    {"smallSign",
     "VN-v4"_q,
     {"4-6 warning number-unreadable: \"v4\" is no number and is read as 0"_q}},
    {"starInANumber",
     "VN-3.1*"_q,
     {"6-8 warning number-unreadable: \"1*\" is no number and is read as 0"_q}},
    {"moreThan16Bits",
     "VN-3.32768.65536"_q,
     {"6-11 warning number-cut: \"32768\" has more than 16 bits and is read as -32768"_q,
      "12-17 warning number-cut: \"65536\" has more than 16 bits and is read as 0"_q}},
    {"largestOf32Bits",
     "VN-2147483647"_q,
     {"4-14 warning number-cut: \"2147483647\" has more than 16 bits and is read as -1"_q}},
    {"moreThan32Bits",
     "VN-3.2147483648"_q,
     {"6-16 warning number-too-large: \"2147483648\" has more than 32 bits and is read as 0"_q}},
    {"digitsOfAnotherScript",
     "VN-\u0663.0"_q,
     {"4-5 warning number-unreadable: \"\u0663\" is no number and is read as 0"_q,
      "4-5 warning foreign-digits: \"\u0663\" has digits other than 0 to 9, which are none here"_q}},
    {"wideDigitsOfThePlatform",
     "R\uff11\uff16-2"_q,
     {"1-4 warning platform-unknown: \"R\uff11\uff16\" is no known platform"_q,
      "1-4 warning foreign-digits: \"R\uff11\uff16\" has digits other than 0 to 9, which are none "
      "here"_q}},

    {"unknownPreRelease",
     "VN-3.0.6.29-rc"_q,
     {"13-15 warning pre-release-unknown: \"rc\" stands for any pre-release and none; only pre is "
      "one"_q}},
    {"preReleaseInCapitals",
     "VN-3.0.6.29-PRE"_q,
     {"13-16 warning pre-release-unknown: \"PRE\" stands for any pre-release and none; only pre is "
      "one"_q}},
    {"anyPreRelease", "VN-3.0.6.29-*"_q, {}},
    {"separatorAtTheEnd",
     "VN-3.0.6.29."_q,
     {"13-13 warning pre-release-open: the separator at the end stands for any pre-release and "
      "none"_q}},
    {"separatorAtTheEndBeforeIt",
     "VN-3.0."_q,
     {"8-8 note separator-at-end: what is missing behind the separator is 0"_q}},
    {"sevenParts",
     "VN-3.0.6.29-pre-2.1"_q,
     {"17-20 warning parts-ignored: \"2.1\" is ignored, as a version has six parts"_q}},

    {"wildcard",
     "VN-3.0.8.*"_q,
     {"10-11 note wildcard-limit: \"*\" covers the numbers from 0 to 99"_q}},
    {"wildcardOfTheMajor",
     "VN-V*.0.0.0"_q,
     {"4-6 note wildcard-limit: \"V*\" covers the numbers from 0 to 99"_q}},
    {"wildcardThatPeopleTakeForMore",
     "VN-3.*"_q,
     {"6-7 note wildcard-limit: \"*\" covers the numbers from 0 to 99"_q,
      "6-7 note wildcard-alone: \"*\" covers one number; the missing ones behind it are 0"_q}},

    {"blankBefore",
     " VN-3.0"_q,
     {"1-2 warning blank-at-end: the blank before the version makes all parts move on by one"_q,
      "1-1 warning platform-unknown: there is no platform"_q,
      "2-4 warning number-unreadable: \"VN\" is no number and is read as 0"_q}},
    {"blanksAlone",
     "  "_q,
     {"1-3 warning blank-at-end: the blank before the version makes all parts move on by one"_q,
      "1-1 warning platform-unknown: there is no platform"_q,
      "3-3 note separator-at-end: what is missing behind the separator is 0"_q}},
    {"blankBehind",
     "VN-3.0.6.29 "_q,
     {"12-13 warning blank-at-end: the blank behind the version is the beginning of one more part"_q,
      "13-13 warning pre-release-open: the separator at the end stands for any pre-release and "
      "none"_q}},
    {"minus", "VN-3.-5"_q, {"5-7 note separators: \".-\" separates like one character"_q}},
};

INSTANTIATE_TEST_SUITE_P(Table, Lint, testing::ValuesIn(rows), nameOfRow);

TEST(VersionLint, countsLinesAndCodeUnits)
{
    const Findings findings = VersionLint::check("VN\n\U0001f3a5\nx-3"_q);
    ASSERT_EQ(findings.size(), 2);
    EXPECT_EQ(findings.at(0).code, "separators"_q);
    EXPECT_EQ(findings.at(0).range, (vn::TextRange{1, 3, 3, 1, 2, 4}));
    EXPECT_EQ(findings.at(1).code, "number-unreadable"_q);
    EXPECT_EQ(findings.at(1).range, (vn::TextRange{3, 1, 3, 2, 6, 1}));
}

/** Another reading of the text, as the format is described: whether its components say what it
 * says. */
bool saysWhatItSays(const QString &text)
{
    static const QRegularExpression blanks("^\\s|\\s\\z"_q,
                                           QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression plain(
        "^(VN|R16|R8|R4|\\*)(?:[^\\p{L}\\p{N}\\p{M}*]+(?:V?)(\\d+|\\*))?"
        "(?:[^\\p{L}\\p{N}\\p{M}*]+(\\d+|\\*))?(?:[^\\p{L}\\p{N}\\p{M}*]+(\\d+|\\*))?"
        "(?:[^\\p{L}\\p{N}\\p{M}*]+(\\d+|\\*))?(?:[^\\p{L}\\p{N}\\p{M}*]+(pre|\\*))?"
        "([^\\p{L}\\p{N}\\p{M}*]+)?\\z"_q);
    const QRegularExpressionMatch match = plain.match(text);
    if (!match.hasMatch() || blanks.match(text).hasMatch())
        return false;
    int numbers = 0;
    for (int i = 2; i <= 5; ++i) {
        const QString number = match.captured(i);
        if (number.isEmpty())
            continue;
        ++numbers;
        if (number != "*"_q && (number.size() > 12 || number.toLongLong() > 32767))
            return false;
    }
    // The pre-release is the sixth part, and nothing but it: a separator there would open one.
    const bool hasPreRelease = !match.captured(6).isEmpty();
    const bool endsWithSeparator = !match.captured(7).isEmpty();
    if (hasPreRelease)
        return numbers == 4 && (match.captured(6) == "*"_q || match.captured(6) == "pre"_q) &&
               !endsWithSeparator;
    return !(endsWithSeparator && numbers == 4);
}

TEST(VersionLint, warnsOfATextExactlyWhereItsComponentsDoNotSayWhatItSays)
{
    Random random(61);
    const QStringList pieces{"VN"_q,  "R16"_q, "R8"_q,     "vn"_q,     "V"_q,     "-"_q,
                             "."_q,   "."_q,   "."_q,      "_"_q,      " "_q,     "*"_q,
                             "0"_q,   "3"_q,   "29"_q,     "32767"_q,  "32768"_q, "99999999999"_q,
                             "pre"_q, "rc"_q,  "\u0663"_q, "\u00e9"_q, "\n"_q,    "\U0001f3a5"_q};
    const QString usual[] = {"VN-"_q, "3."_q, "0."_q, "6."_q, "29"_q, "-pre"_q};
    int plain = 0;
    for (int run = 0; run < 60000; ++run) {
        QString text;
        if (random.below(2) == 0) { // something usual, with some change
            for (const QString &piece : usual)
                text += random.below(8) == 0 ? random.oneOf(pieces) : piece;
        } else {
            for (unsigned n = random.below(14); n > 0; --n)
                text += random.oneOf(pieces);
        }
        const Findings findings = VersionLint::check(text);
        const bool warns =
            std::any_of(findings.cbegin(), findings.cend(), [](const Finding &finding) {
                return finding.severity == Finding::Severity::Warning;
            });
        const bool expected = !saysWhatItSays(text);
        plain += !expected;
        ASSERT_EQ(warns, expected)
            << testing::PrintToString(text) << testing::PrintToString(shown(findings));
        for (const Finding &finding : findings) {
            ASSERT_NE(finding.severity, Finding::Severity::Error);
            ASSERT_GE(finding.range.offset, 0);
            ASSERT_LE(finding.range.offset + finding.range.length, text.size());
        }
    }
    EXPECT_GT(plain, 5000);
}

} // namespace
