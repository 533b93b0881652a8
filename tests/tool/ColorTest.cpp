// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Colors: on a terminal, when asked for, and never otherwise.

#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <gtest/gtest.h>

#include <pty.h>

namespace {

using Environment = std::vector<std::pair<std::string, std::string>>;

const std::string kGate = VANTERO_EXAMPLE_DATA "/gate.cfg";

/** What appears on a terminal that is standard output and standard error. */
QByteArray onTerminal(const std::vector<std::string> &arguments, const Environment &environment)
{
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        ::unsetenv("NO_COLOR");
        ::setenv("TERM", "xterm", 1);
        for (const auto &variable : environment)
            ::setenv(variable.first.c_str(), variable.second.c_str(), 1);
        std::vector<char *> words = {const_cast<char *>(VANTERO_TOOL)};
        for (const std::string &argument : arguments)
            words.push_back(const_cast<char *>(argument.c_str()));
        words.push_back(nullptr);
        ::execv(VANTERO_TOOL, words.data());
        ::_exit(127);
    }
    QByteArray text;
    char buffer[4096];
    for (ssize_t count; (count = ::read(terminal, buffer, sizeof buffer)) > 0;)
        text.append(buffer, int(count));
    ::close(terminal);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << status;
    return text.replace("\r\n", "\n");
}

/** The text without its colors. */
QByteArray plain(QByteArray text)
{
    for (int at; (at = text.indexOf("\x1B[")) >= 0;)
        text.remove(at, text.indexOf('m', at) + 1 - at);
    return text;
}

const std::vector<std::string> kUnsafe = {"version", "check",      "--model",
                                          "K40D",    "VN-3.0.3.7", "VN-3.0.6.2"};
const std::vector<std::string> kDiff = {"config",   "set",    kGate,      "ethernet",
                                        "HOSTNAME", "gate-2", "--dry-run"};
const std::vector<std::string> kCompared = {"config", "diff", kGate,
                                            VANTERO_EXAMPLE_DATA "/dock.cfg"};
const std::vector<std::string> kFindings = {"version", "lint", "VN-3.O.6", "x"};
const std::vector<std::string> kFailure = {"config", "show", "missing.cfg"};
const std::vector<std::string> kNote = {"config",   "set", kGate,      "ethrnet",
                                        "HOSTNAME", "x",   "--dry-run"};

TEST(Colors, showWhatCountsOnATerminal)
{
    EXPECT_EQ(onTerminal(kUnsafe, {}),
              "\x1B[31munsafe\x1B[0m: K40 cameras on VN-3.0.3.* must first be updated to "
              "VN-3.0.6.29 or later\n");
    EXPECT_EQ(onTerminal({"version", "check", "--model", "K40D", "VN-3.0.6.29", "VN-3.4.5.4"}, {}),
              "\x1B[32msafe\x1B[0m\n");
    EXPECT_EQ(onTerminal({"version", "check", "VN-3.0.6.29", "x"}, {}),
              "\x1B[1;31mvantero-formats:\x1B[0m \"x\" names no known platform\n"
              "\x1B[1;33munknown\x1B[0m\n");
    EXPECT_EQ(
        onTerminal(kFindings, {}),
        "\x1B[1mVN-3.O.6:1:6:\x1B[0m \x1B[1;33mwarning:\x1B[0m \"O\" is no number and is read "
        "as 0 \x1B[2m[number-unreadable]\x1B[0m\n"
        "\x1B[1mx:1:1:\x1B[0m \x1B[1;33mwarning:\x1B[0m \"x\" is no known platform "
        "\x1B[2m[platform-unknown]\x1B[0m\n");
    // Behind a name with a blank stands a tab, by which patch finds its end.
    const QByteArray gate = QByteArray(kGate.c_str()) + (kGate.find(' ') == kGate.npos ? "" : "\t");
    EXPECT_EQ(onTerminal(kDiff, {}), "\x1B[1m--- " + gate + "\x1B[0m\n\x1B[1m+++ " + gate +
                                         "\x1B[0m\n"
                                         "\x1B[36m@@ -19,7 +19,7 @@\x1B[0m\n"
                                         " IPADDR=10.14.7.121\n"
                                         " NETMASK=255.255.0.0\n"
                                         " GATEWAY=10.14.0.1\n"
                                         "\x1B[31m-HOSTNAME=gate-south\x1B[0m\n"
                                         "\x1B[32m+HOSTNAME=gate-2\x1B[0m\n"
                                         " DNS=10.14.0.2\n"
                                         " DNS=10.14.0.3\n"
                                         " NTP=ntp.site.example\n");
    EXPECT_EQ(onTerminal(kFailure, {}),
              "\x1B[1;31mvantero-formats:\x1B[0m missing.cfg: No such file or directory\n");
}

TEST(Colors, changeNothingElse)
{
    for (const auto &arguments : {kUnsafe, kDiff, kCompared, kFindings, kFailure, kNote}) {
        std::vector<std::string> always = arguments;
        always.emplace_back("--color=always");
        const ToolResult without = runTool(arguments);
        EXPECT_FALSE((without.out + without.err).contains('\x1B'));
        ToolCall call{always};
        call.environment = {{"NO_COLOR", "1"}, {"TERM", "dumb"}}; // what is asked for comes first
        const ToolResult with = runTool(call);
        EXPECT_TRUE((with.out + with.err).contains('\x1B'));
        EXPECT_EQ(plain(with.out), without.out);
        EXPECT_EQ(plain(with.err), without.err);
        EXPECT_EQ(with.exitCode, without.exitCode);

        // The terminal takes both as they come.
        const QByteArray shown = onTerminal(arguments, {});
        EXPECT_TRUE(shown.contains('\x1B'));
        EXPECT_EQ(plain(shown).size(), (without.out + without.err).size());
        EXPECT_EQ(onTerminal(arguments, {{"NO_COLOR", "1"}}), plain(shown));
        EXPECT_EQ(onTerminal(arguments, {{"TERM", "dumb"}}), plain(shown));
        EXPECT_EQ(onTerminal(arguments, {{"NO_COLOR", ""}}), shown); // as if it were not set
        std::vector<std::string> never = arguments;
        never.insert(never.begin(), "--color=never");
        EXPECT_EQ(onTerminal(never, {}), plain(shown));
    }
}

TEST(Colors, areNeverPartOfJson)
{
    std::vector<std::string> arguments = kUnsafe;
    arguments.insert(arguments.begin(), {"--json", "--color=always"});
    EXPECT_FALSE(runTool(arguments).out.contains('\x1B'));
}

TEST(Colors, belongToPaddedCellsAlone)
{
    EXPECT_EQ(
        runTool({"version", "check", "--configurations", kGate, "--color=always", "VN-3.0.6.29"})
            .out,
        "ADDRESS     FIRMWARE     VERDICT  REASON                                                  "
        "      NEXT HOP\n"
        "10.14.7.21  VN-3.0.6.29  \x1B[1;33mdepends\x1B[0m  W40 cameras on VN may only be updated "
        "to "
        "VN-3.4.5.4 or later  -\n");
}

TEST(Colors, areAskedForByTheirWords)
{
    expectRun(runTool({"config", "show", kGate, "--color=bright"}), 2, "",
              "vantero-formats: --color takes auto, always or never, not \"bright\" (see "
              "vantero-formats --help)\n");
    EXPECT_EQ(
        runTool({"--color", "version", "check", "--model", "K40D", "VN-3.0.6.29", "VN-3.4.5.4"})
            .out,
        "\x1B[32msafe\x1B[0m\n");
    expectRun(runTool({"config", "show", "--", kGate, "--color=always"}), 2,
              runTool({"config", "show", kGate, "nothing"}).out,
              "vantero-formats: --color=always: No such file or directory\n");
}

} // namespace
