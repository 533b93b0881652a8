// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What all commands that may take long have in common: progress at a terminal, and Ctrl-C, which
// ends the work behind the file at hand.

#include "tool/Site.h"
#include "tool/Terminal.h"

#include <QtCore/QJsonArray>
#include <QtCore/QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include <sys/stat.h>

namespace {

using testing::HasSubstr;
using testing::Not;

struct Row
{
    const char *name;
    std::vector<std::string> arguments; ///< in a folder with "site", four files "a" to "d"
    const char *interrupted = "interrupted; 2 files done"; ///< behind "b", the slow one
    QByteArray content = siteConfig("1");                  ///< of each file
    bool edits = false;

    friend void PrintTo(const Row &row, std::ostream *out) { *out << row.name; }
};

std::string nameOfRow(const testing::TestParamInfo<Row> &info)
{
    return info.param.name;
}

std::vector<std::string> named(std::vector<std::string> words)
{
    for (const char *name : {"site/a", "site/b", "site/c", "site/d"})
        words.emplace_back(name);
    return words;
}

const QByteArray kUpdate = "alarm=1\n"_b;

const Row s_rows[] = {
    {"configShow", {"config", "show", "site", "--recursive"}},
    {"configShowOfNamedFiles", named({"config", "show"})},
    {"configShowAsJson", {"config", "show", "site", "--recursive", "--json"}, ""},
    {"configSet",
     {"config", "set", "site", "--recursive", "--set", "s/k=w", "--in-place"},
     "interrupted; 2 files done",
     siteConfig("1"),
     true},
    {"configSetOfNamedFiles", named({"config", "set", "--set", "s/k=w", "--in-place"}),
     "interrupted; 2 files done", siteConfig("1"), true},
    {"configAdd",
     {"config", "add", "site", "--recursive", "--add", "s/k=w", "--in-place"},
     "interrupted; 2 files done",
     siteConfig("1"),
     true},
    {"configUnset",
     {"config", "unset", "site", "--recursive", "--key", "s/k", "--in-place"},
     "interrupted; 2 files done",
     siteConfig("1"),
     true},
    {"configRemove",
     {"config", "remove", "site", "--recursive", "--section", "s", "--in-place"},
     "interrupted; 2 files done",
     siteConfig("1"),
     true},
    {"configRedact",
     {"config", "redact", "site", "--recursive", "--in-place"},
     "interrupted; 2 files done",
     siteConfig("1", "password=secret\n"),
     true},
    {"configSetDryRun", {"config", "set", "site", "--recursive", "--set", "s/k=w", "--dry-run"}},
    {"configSetThatMeetsNoCondition",
     {"config", "set", "site", "--recursive", "--set", "s/k=w", "--if", "s/k=x", "--dry-run"}},
    {"configLint", {"config", "lint", "site", "--recursive"}},
    {"configDiff",
     {"config", "diff", "site", "a"},
     "interrupted; 2 files done\nvantero-formats: nothing is compared"},
    {"configCollect",
     {"config", "collect", "site", "--recursive", "--jobs", "1"},
     "interrupted; 2 configurations found so far"},
    {"configTable",
     {"config", "table", "site", "--recursive", "--jobs", "1"},
     "interrupted; 2 rows so far"},
    {"versionCheckOfASite",
     {"version", "check", "--configurations", "site", "--recursive", "--", "VN-4.0.0.1"}},
    {"alarmsList", named({"alarms", "list"}), "interrupted; 2 files done", "{\"a\":1}"_b},
    {"alarmsUpdate", named({"alarms", "update"}), "interrupted; 2 files done", kUpdate},
    {"alarmsLint", named({"alarms", "lint"}), "interrupted; 2 files done", "{\"a\":1}"_b},
    {"firmware", named({"firmware"}), "interrupted; 2 files done", "## Version: VN-3.0.6.29\n"_b},
};

class LongWork : public Site, public testing::WithParamInterface<Row>
{
protected:
    void SetUp() override
    {
        for (const char *name : {"a", "b", "c", "d"})
            file("site/"_q + QLatin1String(name), GetParam().content);
        file("a"_q, siteConfig("1"));
        if (!canBeSlow(path("site/b"_q)))
            GTEST_SKIP() << "the file system has no leases";
    }

    TerminalResult runSlowly(bool interrupts) const
    {
        TerminalCall call;
        call.arguments = GetParam().arguments;
        call.slow = path("site/b"_q);
        call.folder = m_dir.path().toStdString();
        call.interrupts = interrupts;
        call.output = path("out"_q).toStdString();
        return runAtTerminal(call);
    }

    bool isJson() const { return GetParam().interrupted[0] == '\0'; }
};

TEST_P(LongWork, showsProgressAtATerminal)
{
    const TerminalResult result = runSlowly(false);
    EXPECT_TRUE(WIFEXITED(result.status)) << result.status;
    if (isJson()) {
        EXPECT_EQ(result.errors, "");
        return;
    }
    EXPECT_THAT(result.errors.toStdString(), HasSubstr(" 2 of 4 files, 0.0 MB, "));
    EXPECT_THAT(result.errors.toStdString(), HasSubstr(" left\x1b[K\r\x1b[K")); // taken back
}

TEST_P(LongWork, endsBehindTheFileAtHandAndSaysHowManyAreDone)
{
    const TerminalResult result = runSlowly(true);
    EXPECT_TRUE(WIFSIGNALED(result.status)) << result.status;
    EXPECT_EQ(WTERMSIG(result.status), SIGINT);
    if (isJson()) {
        EXPECT_EQ(result.errors, "");
        const QJsonObject shown = QJsonDocument::fromJson(readFile(path("out"_q))).object();
        EXPECT_EQ(shown.value("files"_q).toArray().size(), 2);
        return;
    }
    const std::string errors = result.errors.toStdString();
    EXPECT_THAT(errors, testing::EndsWith(
                            "vantero-formats: " + std::string(GetParam().interrupted) + '\n'));
    EXPECT_THAT(errors, Not(HasSubstr("3 of")));

    // All files are whole, those behind it as they were, and there are no others.
    EXPECT_EQ(
        QDir(path("site"_q)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        (QStringList{"a"_q, "b"_q, "c"_q, "d"_q}));
    for (const char *name : {"c", "d"})
        EXPECT_EQ(readFile(path("site/"_q + QLatin1String(name))), GetParam().content);
    EXPECT_EQ(readFile(path("site/a"_q)), readFile(path("site/b"_q)));
    EXPECT_EQ(readFile(path("site/a"_q)) != GetParam().content, GetParam().edits);
}

INSTANTIATE_TEST_SUITE_P(Commands, LongWork, testing::ValuesIn(s_rows), nameOfRow);

using LongWorkTerminal = Site;

TEST_F(LongWorkTerminal, showsResultsAndProgressOnOneScreenWithoutMixingThem)
{
    for (const char *name : {"a", "b", "c", "d"})
        file("site/"_q + QLatin1String(name), siteConfig("1"));
    if (!canBeSlow(path("site/b"_q)))
        GTEST_SKIP() << "the file system has no leases";
    TerminalCall call;
    call.arguments = {"config", "table", "site", "--recursive", "--jobs", "1", "--csv"};
    call.slow = path("site/b"_q);
    call.folder = m_dir.path().toStdString();
    call.output = "";
    const std::string screen = runAtTerminal(call).errors.toStdString();
    EXPECT_THAT(screen, HasSubstr(" left\x1b[K\r\x1b[K1,VN-3.0.6.29,site/b\r"));
}

TEST_F(LongWorkTerminal, aSecondSignalEndsItAtOnce)
{
    file("site/a"_q, siteConfig("1"));
    const std::string fifo = path("site/b"_q).toStdString(); // nobody writes into it
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    QProcess tool;
    tool.setWorkingDirectory(m_dir.path());
    tool.start(QString::fromLatin1(VANTERO_TOOL),
               {"config"_q, "show"_q, "site/a"_q, "site/b"_q, "site/a"_q});
    ASSERT_TRUE(tool.waitForStarted());
    ASSERT_FALSE(tool.waitForFinished(300));
    ASSERT_EQ(::kill(pid_t(tool.processId()), SIGINT), 0);
    ASSERT_FALSE(tool.waitForFinished(300)); // it waits for the file at hand
    ASSERT_EQ(::kill(pid_t(tool.processId()), SIGINT), 0);
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(tool.exitCode(), SIGINT);
}

TEST_F(LongWorkTerminal, waitingForStandardInputIsEndedAtOnce)
{
    file("a"_q, siteConfig("1"));
    QProcess tool;
    tool.setWorkingDirectory(m_dir.path());
    tool.start(QString::fromLatin1(VANTERO_TOOL), {"config"_q, "lint"_q, "a"_q, "-"_q});
    ASSERT_TRUE(tool.waitForStarted());
    ASSERT_FALSE(tool.waitForFinished(300));
    ASSERT_EQ(::kill(pid_t(tool.processId()), SIGINT), 0);
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(tool.exitCode(), SIGINT);
}

} // namespace
