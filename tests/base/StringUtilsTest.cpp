// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/StringUtils.h"

#include "support/Expect.h"
#include "support/Literals.h"

using vn::StringUtils;

namespace {

struct Row
{
    const char *name;
    QString text;
    QString suffix;
    bool expected;
};

class EndsWithIgnoreCase : public testing::TestWithParam<Row>
{
};

// clang-format off
const Row kRows[] = {
    // name                        text              suffix      expected
    {"sameCase",                   "cams.zip"_q,     ".zip"_q,   true},
    {"upperCaseText",              "cams.ZIP"_q,     ".zip"_q,   true},
    {"upperCaseSuffix",            "cams.zip"_q,     ".ZIP"_q,   true},
    {"mixedCase",                  "cams.ZiP"_q,     ".zIp"_q,   true},
    {"wholeText",                  ".zip"_q,         ".zip"_q,   true},
    {"suffixWithoutDot",           "front.CFG"_q,    "cfg"_q,    true},
    {"suffixWithinAWord",          "frontcfg"_q,     "cfg"_q,    true},
    {"otherEnd",                   "cams.zip~"_q,    ".zip"_q,   false},
    {"suffixInTheMiddle",          "cams.zip.cfg"_q, ".zip"_q,   false},
    {"suffixLongerThanText",       "zip"_q,          ".zip"_q,   false},
    {"emptySuffix",                "cams.zip"_q,     ""_q,       true},
    {"nullSuffix",                 "cams.zip"_q,     QString(),  true},
    {"emptyTextAndSuffix",         ""_q,             ""_q,       true},
    {"nullTextAndSuffix",          QString(),        QString(),  true},
    {"nullTextEmptySuffix",        QString(),        ""_q,       true},
    {"emptyText",                  ""_q,             ".zip"_q,   false},
    {"nullText",                   QString(),        ".zip"_q,   false},
    {"lettersBeyondAscii",         u8"STRASSENÄÖÜ"_q, u8"äöü"_q, true},
    {"sharpSHasNoUpperCase",       u8"STRASSE"_q,    u8"straße"_q, false},
    {"dottedCapitalI_isNoPlainI",  u8"CAMS.ZİP"_q,   ".zip"_q,   false},
    {"dotlessSmallI_isNoPlainI",   u8"cams.zıp"_q,   ".ZIP"_q,   false},
};
// clang-format on

} // namespace

TEST_P(EndsWithIgnoreCase, rows)
{
    EXPECT_EQ(StringUtils::endsWithIgnoreCase(GetParam().text, GetParam().suffix),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(StringUtils, EndsWithIgnoreCase, testing::ValuesIn(kRows), nameOfRow);
