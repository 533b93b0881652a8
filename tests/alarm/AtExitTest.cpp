// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Parsers that are used while the process ends: by functions of atexit() and destructors of statics
// that are older than the first parser.

#include "alarm/AlarmDocument.h"
#include "alarm/AlarmLint.h"
#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ThreadLocalAlarmListParser.h"
#include "base/Exceptions.h"
#include "reference/AlarmText.h"

#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace vn;

namespace {

/** The message with which @p parser refuses @p text. */
template <typename Parser>
QString refusal(Parser &parser, const char *text)
{
    try {
        parser.parse(QString::fromLatin1(text));
    } catch (const ParseException &e) {
        return e.message();
    }
    return QStringLiteral("none");
}

/** The columns of a value and of a finding behind "ä" and an emoji in UTF-8. */
QString columnsBeyondAscii()
{
    const QByteArray text = "['\xc3\xa4\xf0\x9f\x98\x80', 1e400]";
    const TextRange value = AlarmDocument::parse(text).root().members().at(1).value.range();
    const Findings findings = alarmListFindings(text);
    return QStringLiteral("%1 %2").arg(value.column).arg(findings.last().range.column);
}

/** Uses both parsers, and writes what came of it to standard error. */
void useParsers()
{
    AlarmUpdateParser updates(nullptr); // no text comes to its end, so no engine is needed
    AlarmListParser lists;
    AlarmListParser &kept = *ThreadLocalAlarmListParser::instance();
    const QStringList said = {refusal(updates, "x"), refusal(lists, "['a' 1]"),
                              shown(kept.parse(QStringLiteral("['a', b, \"\\n\"]"))),
                              columnsBeyondAscii(), QString()};
    (void)std::fputs(qPrintable(said.join(QLatin1Char('\n'))), stderr);
}

const std::string kSaid = "syntax error, unexpected $end, expecting '='\n"
                          "syntax error, unexpected TNUMBER, expecting ']'\n"
                          "[\"\\n\", \"b\", \"a\"]\n"
                          "9 9\n";

/** A static of the program; older than whatever the first parser makes. */
class Last
{
public:
    ~Last()
    {
        if (isAsked)
            useParsers();
    }
    bool isAsked = false;
};

Last s_last;

/** Runs the test of its name alone in a process of its own, in which no parser has been made. */
class AtExitDeathTest : public testing::Test
{
protected:
    AtExitDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
    ~AtExitDeathTest() override { testing::FLAGS_gtest_death_test_style = m_before; }

private:
    const std::string m_before = testing::FLAGS_gtest_death_test_style;
};

} // namespace

TEST_F(AtExitDeathTest, functionsOfAtExitParse)
{
    EXPECT_EXIT(
        {
            if (std::atexit(useParsers) == 0) {
                useParsers();
                std::exit(0);
            }
        },
        testing::ExitedWithCode(0), testing::Eq(kSaid + kSaid));
}

TEST_F(AtExitDeathTest, destructorsOfStaticsParse)
{
    EXPECT_EXIT(
        {
            s_last.isAsked = true;
            useParsers();
            std::exit(0);
        },
        testing::ExitedWithCode(0), testing::Eq(kSaid + kSaid));
}

TEST_F(AtExitDeathTest, parsersAreMadeForTheFirstTime)
{
    EXPECT_EXIT(
        {
            s_last.isAsked = true;
            std::exit(0);
        },
        testing::ExitedWithCode(0), testing::Eq(kSaid));
}
