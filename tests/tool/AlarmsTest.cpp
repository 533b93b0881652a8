// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The commands on alarm lists and alarm updates.

#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

namespace {

ToolResult list(const QByteArray &text, std::vector<std::string> options = {})
{
    std::vector<std::string> arguments = {"alarms", "list", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return runTool(arguments, text);
}

ToolResult update(const QByteArray &text, std::vector<std::string> options = {})
{
    std::vector<std::string> arguments = {"alarms", "update", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return runTool(arguments, text);
}

} // namespace

// ---- Trees --------------------------------------------------------------------------------------

TEST(AlarmsListCommand, showsATree)
{
    expectRun(list("{cams: [\"front\", 'back'], door: {open: true, n: null}, b: [], e: {},\n"
                   " two words: 1}"),
              2, "",
              "vantero-formats: -:2:6: syntax error, unexpected TSTRING, expecting ':'\n"
              " two words: 1}\n"
              "     ^~~~~\n");
    expectRun(list("{cams: [\"front\", 'back'], door: {open: true, n: null}, b: [], e: {},\n"
                   " 'two words': 1.5e3}"),
              0,
              "b: []\n"
              "cams:\n"
              "  - \"back\"\n"
              "  - \"front\"\n"
              "door:\n"
              "  n: null\n"
              "  open: true\n"
              "e: {}\n"
              "\"two words\": 1500\n",
              "");
}

TEST(AlarmsListCommand, showsListsInLists)
{
    expectRun(list("[[1, [2]], {a: [3]}, []]"), 0,
              "- []\n"
              "-\n"
              "  a:\n"
              "    - 3\n"
              "-\n"
              "  -\n"
              "    - 2\n"
              "  - 1\n",
              "");
    expectRun(list("[]"), 0, "[]\n", "");
    expectRun(list("{}"), 0, "{}\n", "");
}

TEST(AlarmsListCommand, showsRepeatedKeysInTheirOrder)
{
    expectRun(list("{a:1, b:2, a:3}"), 0, "a: 1\na: 3\nb: 2\n", "");
    expectRun(list("{a:1, b:2, a:3}", {"--json"}), 0,
              "{\n"
              "  \"file\": \"-\",\n"
              "  \"alarms\": {\n"
              "    \"a\": [1, 3],\n"
              "    \"b\": 2\n"
              "  },\n"
              "  \"repeatedKeys\": [\"/a\"],\n"
              "  \"files\": [\n"
              "    {\n"
              "      \"file\": \"-\",\n"
              "      \"alarms\": {\n"
              "        \"a\": [1, 3],\n"
              "        \"b\": 2\n"
              "      },\n"
              "      \"repeatedKeys\": [\"/a\"]\n"
              "    }\n"
              "  ],\n"
              "  \"errors\": []\n"
              "}\n",
              "");
}

TEST(AlarmsListCommand, showsStringsAsTheyStand)
{
    expectRun(list("['', 'a\\nb', '\"', '\xe4']"), 0,
              "- \"\u00e4\"\n- \"\\\"\"\n- \"a\\\\nb\"\n- \"\"\n", "");
    const QJsonArray strings =
        list("['', 'a\\nb', '\"', '\xe4']", {"--json"}).json().value("alarms"_q).toArray();
    EXPECT_EQ(strings, QJsonArray({"\u00e4"_q, "\""_q, "a\\nb"_q, ""_q}));
}

TEST(AlarmsListCommand, numbersThatAreNotFiniteAreNullInJson)
{
    expectRun(
        list("[1e400, -1e400, 0.1]"), 0, "- 0.1\n- -inf\n- inf\n",
        "vantero-formats: -: warning: the number \"1e400\" is rounded: 15 digits are kept, and "
        "sizes from 1e-307 to 1e308 (line 1); 1 more: see \"alarms lint\"\n");
    EXPECT_EQ(list("[1e400, 0.1]", {"--json"}).json().value("alarms"_q),
              QJsonArray({0.1, QJsonValue()}));
}

TEST(AlarmsUpdateCommand, showsATree)
{
    expectRun(update("state=1;level=-.5;armed=true;zone=West gate;q=\"a;b\";\n"
                     "since=2010-05-01;at=12:30:00;cams=front,back;my key=x"),
              0,
              "\"my key\": \"x\"\n"
              "cams:\n"
              "  - \"back\"\n"
              "  - \"front\"\n"
              "at: invalid date\n"
              "since: 2010-05-01T00:00:00\n"
              "q: \"\\\"a;b\\\"\"\n"
              "zone: \"West gate\"\n"
              "armed: true\n"
              "level: -0.5\n"
              "state: 1\n",
              "");
}

// ---- Errors -------------------------------------------------------------------------------------

TEST(AlarmsErrors, haveThePlaceInTheText)
{
    expectRun(list("[1,\r\n 2,\r\n\t3 'four' 5]\r\n"), 2, "",
              "vantero-formats: -:3:4: syntax error, unexpected TSTRING, expecting ']'\n"
              " 3 'four' 5] \n"
              "   ^~~~~~\n");
    expectRun(update("x=1;\ny==2;z=3"), 2, "",
              "vantero-formats: -:2:3: syntax error, unexpected '='\n"
              "y==2;z=3\n"
              "  ^\n");
    expectRun(update("x=1,2"), 2, "",
              "vantero-formats: -:1:4: syntax error, unexpected ',', expecting $end\n"
              "x=1,2\n"
              "   ^\n");
}

TEST(AlarmsErrors, atTheEndOfTheTextMarkWhatWasReadLast)
{
    expectRun(list("[1, word"), 2, "",
              "vantero-formats: -:1:5: syntax error, unexpected $end, expecting ']'\n"
              "[1, word\n"
              "    ^~~~\n");
    expectRun(list(""), 2, "",
              "vantero-formats: -:1:1: syntax error, unexpected $end, expecting '{' or '['\n");
}

TEST(AlarmsErrors, markOnlyTheFirstLineOfAToken)
{
    expectRun(update("\"a\nb\" c"), 2, "",
              "vantero-formats: -:2:3: syntax error, unexpected TSTRING, expecting '='\n"
              "b\" c\n"
              "  ^~\n");
    expectRun(update("x=1\"a\nb\""), 2, "",
              "vantero-formats: -:1:4: syntax error, unexpected TSTRING, expecting $end\n"
              "x=1\"a\n"
              "   ^~\n");
}

TEST(AlarmsErrors, showAPartOfALongLine)
{
    const QByteArray ones = QByteArray("1,").repeated(90);
    expectRun(list("[" + ones.left(100) + "x 'y' " + ones), 2, "",
              "vantero-formats: -:1:104: syntax error, unexpected TSTRING, expecting ']'\n"
              "..." +
                  ("[" + ones.left(100) + "x 'y' " + ones).mid(65, 76) +
                  "...\n"
                  "                                         ^~~\n");
}

TEST(AlarmsErrors, nameTheFileThatIsMissing)
{
    const ToolResult result = runTool({"alarms", "list", "/nowhere/list"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.startsWith("vantero-formats: /nowhere/list: "))
        << result.err.constData();
}

TEST(AlarmsErrors, tellADeepTree)
{
    const ToolResult result = list(QByteArray("[").repeated(300));
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.startsWith("vantero-formats: -:1:199: memory exhausted\n"))
        << result.err.constData();
}

// The library would end the process, without a place and without JSON.
TEST(AlarmsErrors, tellAnUnendedCommentThatEndsWithAStar)
{
    expectRun(list("[1, /* c *"), 2, "",
              "vantero-formats: -:1:10: syntax error, unexpected $end\n"
              "[1, /* c *\n"
              "         ^\n");
    EXPECT_EQ(list("[1, /* c *", {"--json"}).json().value("error"_q).toObject().value("exitCode"_q),
              QJsonValue(2));
    expectRun(list("[1] /* c *"), 0, "- 1\n", "");
    expectRun(list("['*"), 2, "",
              "vantero-formats: -:1:2: syntax error, unexpected $end\n"
              "['*\n"
              " ^~\n");
}

// A text that holds zero bytes is a text; standard input is not read in its place.
TEST(AlarmsErrors, tellZeroBytes)
{
    expectRun(list("[1\0 2]"_b), 2, "",
              "vantero-formats: -:1:3: syntax error, unexpected $end, expecting ']'\n"
              "[1  2]\n"
              "  ^\n");
}
