// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Where an edited text goes: standard output, a file, the input itself, a diff.

#include "RandomText.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QByteArray kText = "#:1\n#:2\n\nSECTION s\nk=old\nENDSECTION s\n";
const QByteArray kEdited = "#:1\n#:2\n\nSECTION s\nk=new\nENDSECTION s\n";

class EditTarget : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        ASSERT_NO_FATAL_FAILURE(writeFile(path("a.cfg"), kText));
    }

    std::string path(const std::string &name) const
    {
        return m_folder.path().toStdString() + "/" + name;
    }

    /** Runs an edit of a.cfg in the folder. */
    ToolResult edit(std::vector<std::string> options, const std::string &file = "a.cfg") const
    {
        ToolCall call{{"config", "set", file, "s", "k", "new"}};
        call.arguments.insert(call.arguments.end(), options.begin(), options.end());
        call.folder = m_folder.path().toStdString();
        return runTool(call);
    }

    QStringList filesInFolder() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDir::Name);
    }

    struct stat status(const std::string &name) const
    {
        struct stat result = {};
        EXPECT_EQ(::lstat(path(name).c_str(), &result), 0) << name;
        return result;
    }

    QTemporaryDir m_folder;
};

TEST_F(EditTarget, standardOutputLeavesTheInputAlone)
{
    expectRun(edit({}), 0, kEdited, "");
    EXPECT_EQ(readFile(path("a.cfg")), kText);
}

TEST_F(EditTarget, outputWritesAnotherFile)
{
    expectRun(edit({"--output", "b.cfg"}), 0, "", "");
    EXPECT_EQ(readFile(path("a.cfg")), kText);
    EXPECT_EQ(readFile(path("b.cfg")), kEdited);
    EXPECT_EQ(filesInFolder(), QStringList({"a.cfg"_q, "b.cfg"_q}));
}

TEST_F(EditTarget, outputWritesTheFileEvenWhenNothingChanges)
{
    ToolCall call{{"config", "set", "a.cfg", "s", "k", "old", "--output", "b.cfg"}};
    call.folder = m_folder.path().toStdString();
    expectRun(runTool(call), 0, "", "");
    EXPECT_EQ(readFile(path("b.cfg")), kText);
}

TEST_F(EditTarget, outputMayBeTheInput)
{
    expectRun(edit({"--output", "a.cfg"}), 0, "", "");
    EXPECT_EQ(readFile(path("a.cfg")), kEdited);
}

TEST_F(EditTarget, outputMayBeStandardOutput)
{
    expectRun(edit({"--output", "-"}), 0, kEdited, "");
    EXPECT_EQ(filesInFolder(), QStringList({"a.cfg"_q}));
}

TEST_F(EditTarget, newFilesObeyTheMask)
{
    const mode_t before = ::umask(027);
    expectRun(edit({"--output", "b.cfg"}), 0, "", "");
    ::umask(before);
    EXPECT_EQ(status("b.cfg").st_mode & 07777, 0640u);
}

TEST_F(EditTarget, outputToADeviceIsWrittenThere)
{
    expectRun(edit({"--output", "/dev/stdout"}), 0, kEdited, "");
    ToolCall call{{"-c",
                   "echo before; \"$0\" config set a.cfg s k new --output /dev/stdout; echo "
                   "after",
                   VANTERO_TOOL}};
    call.program = "/bin/sh";
    call.folder = m_folder.path().toStdString();
    call.outputPath = path("all.txt");
    ASSERT_EQ(runTool(call).exitCode, 0);
    EXPECT_EQ(readFile(call.outputPath), "before\n" + kEdited + "after\n");
}

TEST_F(EditTarget, aFullDiskIsExitCode3)
{
    expectRun(edit({"--output", "/dev/full"}), 3, "",
              "vantero-formats: /dev/full: No space left on device\n");
}

TEST_F(EditTarget, aMissingFolderIsExitCode3)
{
    expectRun(edit({"--output", "nowhere/b.cfg"}), 3, "",
              "vantero-formats: nowhere/b.cfg: No such file or directory\n");
}

TEST_F(EditTarget, aFolderAsOutputIsExitCode3)
{
    expectRun(edit({"--output", "."}), 3, "", "vantero-formats: .: a folder, not a file\n");
}

TEST_F(EditTarget, inPlaceReplacesTheFileAndLeavesNothingElse)
{
    expectRun(edit({"--in-place"}), 0, "", "");
    EXPECT_EQ(readFile(path("a.cfg")), kEdited);
    EXPECT_EQ(filesInFolder(), QStringList({"a.cfg"_q}));
}

TEST_F(EditTarget, inPlaceKeepsTheMode)
{
    for (const mode_t mode : {0600u, 0640u, 0664u, 0755u, 0606u, 0444u}) {
        ASSERT_NO_FATAL_FAILURE(writeFile(path("a.cfg"), kText));
        ASSERT_EQ(::chmod(path("a.cfg").c_str(), mode), 0);
        const ToolResult result = edit({"--in-place"});
        if (mode == 0444 && ::geteuid() != 0) {
            expectRun(result, 3, "", "vantero-formats: a.cfg: Permission denied\n");
            continue;
        }
        expectRun(result, 0, "", "");
        EXPECT_EQ(status("a.cfg").st_mode & 07777, mode);
        EXPECT_EQ(readFile(path("a.cfg")), kEdited);
        ASSERT_EQ(::chmod(path("a.cfg").c_str(), 0644), 0);
    }
}

TEST_F(EditTarget, inPlaceKeepsTheOwner)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file away";
    ASSERT_EQ(::chown(path("a.cfg").c_str(), 1234, 5678), 0);
    expectRun(edit({"--in-place"}), 0, "", "");
    EXPECT_EQ(status("a.cfg").st_uid, 1234u);
    EXPECT_EQ(status("a.cfg").st_gid, 5678u);
}

TEST_F(EditTarget, inPlaceReplacesTheTargetOfALinkNotTheLink)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("deep"_q));
    ASSERT_NO_FATAL_FAILURE(writeFile(path("deep/b.cfg"), kText));
    ASSERT_EQ(::symlink("deep/c.cfg", path("link.cfg").c_str()), 0);
    ASSERT_EQ(::symlink("b.cfg", path("deep/c.cfg").c_str()), 0);
    expectRun(edit({"--in-place"}, "link.cfg"), 0, "", "");
    EXPECT_TRUE(S_ISLNK(status("link.cfg").st_mode));
    EXPECT_TRUE(S_ISLNK(status("deep/c.cfg").st_mode));
    EXPECT_TRUE(S_ISREG(status("deep/b.cfg").st_mode));
    EXPECT_EQ(readFile(path("deep/b.cfg")), kEdited);
    EXPECT_EQ(filesInFolder(), QStringList({"a.cfg"_q, "deep"_q, "link.cfg"_q}));
}

TEST_F(EditTarget, outputThroughADanglingLinkMakesItsTarget)
{
    ASSERT_EQ(::symlink("b.cfg", path("link.cfg").c_str()), 0);
    expectRun(edit({"--output", "link.cfg"}), 0, "", "");
    EXPECT_TRUE(S_ISLNK(status("link.cfg").st_mode));
    EXPECT_EQ(readFile(path("b.cfg")), kEdited);
}

TEST_F(EditTarget, linksInACircleAreExitCode3)
{
    ASSERT_EQ(::symlink("y.cfg", path("x.cfg").c_str()), 0);
    ASSERT_EQ(::symlink("x.cfg", path("y.cfg").c_str()), 0);
    expectRun(edit({"--output", "x.cfg"}), 3, "",
              "vantero-formats: x.cfg: Too many levels of symbolic links\n");
}

TEST_F(EditTarget, inPlaceLeavesAnUnchangedFileAlone)
{
    const struct stat before = status("a.cfg");
    ToolCall call{{"config", "set", path("a.cfg"), "s", "k", "old", "--in-place"}};
    expectRun(runTool(call), 0, "", "");
    EXPECT_EQ(status("a.cfg").st_ino, before.st_ino);
}

TEST_F(EditTarget, inPlaceNeedsAFile)
{
    expectRun(edit({"--in-place"}, "-"), 2, "",
              "vantero-formats: standard input cannot be edited in place\n");
    expectRun(edit({"--in-place"}, "/dev/null"), 2, "",
              "vantero-formats: /dev/null: not a regular file, so it cannot be edited in place\n");
    expectRun(edit({"--in-place"}, "nowhere.cfg"), 2, "",
              "vantero-formats: nowhere.cfg: No such file or directory\n");
}

TEST_F(EditTarget, inPlaceErrorLeavesTheOldFile)
{
    ToolCall call{{"config", "set", path("a.cfg"), "s", "k", "a\nb", "--in-place"}};
    EXPECT_EQ(runTool(call).exitCode, 2);
    EXPECT_EQ(readFile(path("a.cfg")), kText);
    EXPECT_EQ(filesInFolder(), QStringList({"a.cfg"_q}));
}

/** Runs the tool with a limit on the size of the files that it writes. */
ToolResult runWithFileLimit(const ToolCall &call, unsigned long bytes)
{
    struct rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    struct rlimit limit = before;
    limit.rlim_cur = bytes;
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN); // inherited: writes fail with EFBIG
    setrlimit(RLIMIT_FSIZE, &limit);
    const ToolResult result = runTool(call);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signalBefore);
    return result;
}

TEST_F(EditTarget, aWriteThatFailsAtAnyByteLeavesTheOldFile)
{
    ToolCall call{{"config", "set", path("a.cfg"), "s", "k", "new", "--in-place"}};
    for (unsigned long limit = 0; limit < static_cast<unsigned long>(kEdited.size()); ++limit) {
        expectRun(runWithFileLimit(call, limit), 3, "",
                  "vantero-formats: " + QByteArray::fromStdString(path("a.cfg")) +
                      ": File too large\n");
        EXPECT_EQ(readFile(path("a.cfg")), kText);
        EXPECT_EQ(filesInFolder(), QStringList({"a.cfg"_q}));
    }
    expectRun(runWithFileLimit(call, static_cast<unsigned long>(kEdited.size())), 0, "", "");
    EXPECT_EQ(readFile(path("a.cfg")), kEdited);
}

TEST_F(EditTarget, aKillAtAnyTimeLeavesTheOldOrTheNewFile)
{
    QByteArray large = kText;
    for (int i = 0; i < 20000; ++i)
        large += "# comment " + QByteArray::number(i) + '\n';
    const QByteArray edited = QByteArray(large).replace("k=old", "k=new");
    int killed = 0;
    for (int delay = 0; delay < 40; ++delay) {
        ASSERT_NO_FATAL_FAILURE(writeFile(path("a.cfg"), large));
        const pid_t child = ::fork();
        if (child == 0) {
            ::execl(VANTERO_TOOL, VANTERO_TOOL, "config", "set", path("a.cfg").c_str(), "s", "k",
                    "new", "--in-place", static_cast<char *>(nullptr));
            ::_exit(127);
        }
        ::usleep(static_cast<useconds_t>(1000 * delay));
        ::kill(child, SIGKILL);
        int state = 0;
        ::waitpid(child, &state, 0);
        killed += WIFSIGNALED(state) ? 1 : 0;
        const QByteArray now = readFile(path("a.cfg"));
        EXPECT_TRUE(now == large || now == edited) << "size " << now.size();
    }
    EXPECT_GT(killed, 0);
}

TEST_F(EditTarget, dryRunWritesNothing)
{
    expectRun(edit({"--dry-run"}), 0,
              "--- a.cfg\n+++ a.cfg\n@@ -2,5 +2,5 @@\n #:2\n \n SECTION s\n-k=old\n+k=new\n"
              " ENDSECTION s\n",
              "");
    EXPECT_EQ(readFile(path("a.cfg")), kText);
    EXPECT_EQ(filesInFolder(), QStringList({"a.cfg"_q}));
}

TEST_F(EditTarget, dryRunOfNoChangeIsEmpty)
{
    ToolCall call{{"config", "set", path("a.cfg"), "s", "k", "old", "--dry-run"}};
    expectRun(runTool(call), 0, "", "");
}

TEST_F(EditTarget, targetsExcludeEachOther)
{
    EXPECT_EQ(edit({"--dry-run", "--in-place"}).exitCode, 2);
    EXPECT_EQ(edit({"--output", "b.cfg", "--in-place"}).exitCode, 2);
    EXPECT_EQ(edit({"--output", "b.cfg", "--dry-run"}).exitCode, 2);
    EXPECT_EQ(readFile(path("a.cfg")), kText);
    EXPECT_EQ(filesInFolder(), QStringList({"a.cfg"_q}));
}

/** Applies @p diff to the file @p name in @p folder with `patch`. */
void applyPatch(const std::string &folder, const QByteArray &diff)
{
    ToolCall call{{"--quiet", "--fuzz=0", "--posix", "-p0"}, diff};
    call.program = "/usr/bin/patch";
    call.folder = folder;
    expectRun(runTool(call), 0, "", "");
}

TEST_F(EditTarget, patchAppliesTheDryRun)
{
    const struct
    {
        std::vector<std::string> arguments; // with FILE where the file's name belongs
        std::string source;
    } rows[] = {
        {{"config", "set", "FILE", "ethernet", "HOSTNAME", "gate-ö"}, "gate.cfg"},
        {{"config", "set", "FILE", "new", "k", "v"}, "gate.cfg"},
        {{"config", "unset", "FILE", "ethernet", "DNS"}, "gate.cfg"},
        {{"config", "set", "FILE", "text", "name", "Tür"}, "entrance.cfg"},
        {{"config", "set", "FILE", "text", "name", "Dock 2"}, "dock.cfg"},
        {{"config", "remove", "FILE", "eventdlite", "text", "--outer-comments"}, "gate.cfg"},
        {{"config", "remove", "FILE", "audio", "timetables", "--empty-lines"}, "gate.cfg"},
        {{"config", "remove", "FILE", "eventdlite"}, "dock.cfg"}, // every line end changes
        {{"config", "splice", "FILE", example("gate.cfg"), "eventdlite"}, "gate-factory.cfg"},
        {{"config", "splice", "FILE", example("gate.cfg"), "image"}, "entrance.cfg"},
    };
    for (const auto &row : rows) {
        for (const std::string name : {"plain.cfg", "two words.cfg"}) {
            SCOPED_TRACE(row.arguments[1] + " of " + row.source);
            ASSERT_NO_FATAL_FAILURE(writeFile(path(name), readFile(example(row.source))));
            ToolCall call{row.arguments};
            call.arguments[2] = name;
            call.folder = m_folder.path().toStdString();
            const QByteArray edited = runTool(call).out;
            ASSERT_FALSE(edited.isEmpty());
            call.arguments.push_back("--dry-run");
            applyPatch(call.folder, runTool(call).out);
            EXPECT_EQ(readFile(path(name)), edited);
        }
    }
}

/** A text of few different lines, so that there are many ways to align it with another one. */
QByteArray randomSections(Random &random)
{
    QByteArray text = "#:1\n#:2\n\n";
    for (unsigned block = 1 + random.below(8); block > 0; --block) {
        const QByteArray name(1, static_cast<char>('a' + random.below(4)));
        text += "SECTION " + name + '\n';
        for (unsigned line = random.below(9); line > 0; --line)
            text += random.below(3) ? "k=1\n" : random.below(2) ? "# c\n" : "\n";
        text += "ENDSECTION " + name + (random.below(2) ? "\n" : "\n\n");
    }
    if (random.below(3) == 0)
        text.chop(1);
    return text;
}

TEST_F(EditTarget, patchAppliesDiffsOfRandomTexts)
{
    Random random(77);
    const std::vector<std::string> commands[] = {
        {"config", "remove", "a.cfg", "a", "b", "c", "--section-comments"},
        {"config", "splice", "a.cfg", "b.cfg", "a"}};
    for (int round = 0; round < 120; ++round) {
        const QByteArray text = randomSections(random);
        ASSERT_NO_FATAL_FAILURE(writeFile(path("a.cfg"), text));
        ASSERT_NO_FATAL_FAILURE(writeFile(path("b.cfg"), randomSections(random)));
        ToolCall call{commands[round % 2]};
        call.folder = m_folder.path().toStdString();
        const ToolResult edited = runTool(call);
        if (edited.exitCode == 1) // neither has the section
            continue;
        call.arguments.push_back("--dry-run");
        const QByteArray diff = runTool(call).out;
        if (edited.out != text)
            applyPatch(call.folder, diff);
        EXPECT_EQ(readFile(path("a.cfg")), edited.out) << diff.toStdString();
        if (HasFailure())
            return;
    }
}

TEST_F(EditTarget, patchAppliesDiffsOfManyEditsAtOnce)
{
    static const char *const entries[] = {"s/k", "t/k", "t/l", "new/k", " s/n", "s/ä", "head/k"};
    Random random(20110322);
    int changed = 0;
    for (int round = 0; round < 100; ++round) {
        const QByteArray text = randomText(random, random.below(2) ? "\n" : "\r\n");
        SCOPED_TRACE(text.toStdString());
        ASSERT_NO_FATAL_FAILURE(writeFile(path("a.cfg"), text));
        ToolCall call{{"config", random.below(3) ? "set" : "add", "a.cfg"}};
        call.folder = m_folder.path().toStdString();
        const std::string option = "--" + call.arguments[1];
        for (unsigned edit = 1 + random.below(6); edit > 0; --edit) {
            call.arguments.push_back(option);
            call.arguments.push_back(entries[random.below(7)] + std::string("=") +
                                     std::to_string(random.below(3)));
        }
        const ToolResult edited = runTool(call);
        ASSERT_EQ(edited.exitCode, 0) << edited.err.toStdString();
        call.arguments.push_back("--dry-run");
        const QByteArray diff = runTool(call).out;
        if (edited.out != text) {
            applyPatch(call.folder, diff);
            ++changed;
        }
        EXPECT_EQ(readFile(path("a.cfg")), edited.out) << diff.toStdString();
        if (HasFailure())
            return;
    }
    EXPECT_GT(changed, 90);
}

} // namespace
