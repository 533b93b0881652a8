// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What a file keeps when it is edited in place, what is told of the rest, and two who edit at once.

#include "support/Files.h"
#include "support/ToolRunner.h"

#include <thread>

#include <sys/stat.h>
#include <sys/xattr.h>

namespace {

const QByteArray kText = "#:1\n#:2\n\nSECTION s\nk=old\nENDSECTION s\n";
const QByteArray kEdited = "#:1\n#:2\n\nSECTION s\nk=new\nENDSECTION s\n";

class EditInPlace : public FolderTest
{
protected:
    void SetUp() override
    {
        FolderTest::SetUp();
        ASSERT_NO_FATAL_FAILURE(writeFile(path("a.cfg"_q), kText));
    }

    std::string local(const QString &name) const { return path(name).toStdString(); }

    struct stat status() const
    {
        struct stat result = {};
        EXPECT_EQ(::lstat(local("a.cfg"_q).c_str(), &result), 0);
        return result;
    }

    /** Runs an edit of a.cfg in the folder, as the user of the test or as another one. */
    ToolResult edit(const std::vector<std::string> &prefix = {}) const
    {
        ToolCall call{prefix};
        if (!prefix.empty()) {
            call.program = "/usr/bin/setpriv";
            call.arguments.push_back(VANTERO_TOOL);
        }
        for (const char *word : {"config", "set", "a.cfg", "s", "k", "new", "--in-place"})
            call.arguments.push_back(word);
        call.folder = dir().path().toStdString();
        return runTool(call);
    }

    /** Hands a.cfg to a user and a group, and makes sure that others get to the tool. */
    void giveAway(mode_t mode, const std::vector<std::string> &editor)
    {
        if (::geteuid() != 0)
            GTEST_SKIP() << "only root gives files away and becomes another user";
        ToolCall call{editor};
        call.program = "/usr/bin/setpriv";
        call.arguments.insert(call.arguments.end(), {VANTERO_TOOL, "--version"});
        if (runTool(call).exitCode != 0)
            GTEST_SKIP() << "other users cannot run " VANTERO_TOOL;
        ASSERT_EQ(::chmod(dir().path().toStdString().c_str(), 0777), 0);
        ASSERT_EQ(::chown(local("a.cfg"_q).c_str(), 1234, 4321), 0);
        ASSERT_EQ(::chmod(local("a.cfg"_q).c_str(), mode), 0);
    }
};

} // namespace

TEST_F(EditInPlace, keepsAccessListsAndAttributes)
{
    // user::rw-, user:3456:rw-, group::---, mask::rw-, other::---
    const QByteArray list = QByteArray::fromHex("02000000"
                                                "01000600ffffffff"
                                                "02000600800d0000"
                                                "04000000ffffffff"
                                                "10000600ffffffff"
                                                "20000000ffffffff");
    const std::string file = local("a.cfg"_q);
    const auto set = [&](const char *name, const QByteArray &value) {
        return ::setxattr(file.c_str(), name, value.constData(),
                          static_cast<std::size_t>(value.size()), 0) == 0;
    };
    const auto attribute = [&](const char *name) {
        char value[100];
        const ssize_t size = ::getxattr(file.c_str(), name, value, sizeof value);
        return QByteArray(value, static_cast<int>(size < 0 ? 0 : size));
    };
    if (!set("system.posix_acl_access", list) || !set("user.site", "gate"))
        GTEST_SKIP() << "the file system of the temporary folder has no access lists or attributes";
    expectRun(edit(), 0, "", "");
    EXPECT_EQ(readFile(path("a.cfg"_q)), kEdited);
    EXPECT_EQ(attribute("system.posix_acl_access").toHex(), list.toHex());
    EXPECT_EQ(attribute("user.site"), "gate");
    EXPECT_EQ(status().st_mode & 07777, 0660U);
}

TEST_F(EditInPlace, ofAnotherUserIsTold)
{
    const std::vector<std::string> editor = {"--reuid=2345", "--regid=5432", "--groups=4321"};
    giveAway(02664, editor);
    if (HasFailure() || IsSkipped())
        return;
    expectRun(edit(editor), 0, "",
              "vantero-formats: a.cfg: warning: the file belongs to another owner now\n"
              "vantero-formats: a.cfg: warning: the mode allows less than before\n");
    EXPECT_EQ(readFile(path("a.cfg"_q)), kEdited);
    EXPECT_EQ(status().st_uid, 2345U);
    EXPECT_EQ(status().st_gid, 4321U);
    EXPECT_EQ(status().st_mode & 07777, 0664U);
}

TEST_F(EditInPlace, ofAnotherGroupLetsNobodyInWhoWasOut)
{
    const std::vector<std::string> editor = {"--reuid=2345", "--regid=5432", "--clear-groups"};
    giveAway(0606, editor);
    if (HasFailure() || IsSkipped())
        return;
    expectRun(edit(editor), 0, "",
              "vantero-formats: a.cfg: warning: the file belongs to another owner now\n"
              "vantero-formats: a.cfg: warning: the file belongs to another group now\n"
              "vantero-formats: a.cfg: warning: the mode allows less than before\n");
    EXPECT_EQ(status().st_gid, 5432U);
    EXPECT_EQ(status().st_mode & 07777, 0600U);
}

TEST_F(EditInPlace, otherHardLinksKeepTheOldContentAndThatIsTold)
{
    ASSERT_EQ(::link(local("a.cfg"_q).c_str(), local("b.cfg"_q).c_str()), 0);
    expectRun(edit(), 0, "",
              "vantero-formats: a.cfg: warning: other hard links keep the old content\n");
    EXPECT_EQ(readFile(path("a.cfg"_q)), kEdited);
    EXPECT_EQ(readFile(path("b.cfg"_q)), kText);
}

TEST_F(EditInPlace, twoAtOnceLoseNothingInSilence)
{
    constexpr int kRounds = 50;
    for (int round = 0; round < kRounds; ++round) {
        ASSERT_NO_FATAL_FAILURE(writeFile(path("a.cfg"_q), kText));
        ToolResult results[2];
        const auto run = [&](int number) {
            const std::string key = "key" + std::to_string(number);
            ToolCall call{{"config", "set", "a.cfg", "s", key, "v", "--in-place"}};
            call.folder = dir().path().toStdString();
            results[number] = runTool(call);
        };
        std::thread first(run, 0);
        std::thread second(run, 1);
        first.join();
        second.join();
        const QByteArray text = readFile(path("a.cfg"_q));
        int done = 0;
        for (int number : {0, 1}) {
            const ToolResult &result = results[number];
            done += result.exitCode == 0 ? 1 : 0;
            EXPECT_EQ(result.exitCode == 0,
                      text.contains("key" + QByteArray::number(number) + "=v\n"))
                << text.constData();
            if (result.exitCode != 0)
                expectRun(result, 3, "",
                          "vantero-formats: a.cfg: changed by another program since it was read, "
                          "so it stays as it is\n");
        }
        EXPECT_GE(done, 1);
        EXPECT_EQ(names(), QStringList{"a.cfg"_q});
    }
}

TEST_F(EditInPlace, oneOfSeveralThatChangedIsToldAndTheRestGoesOn)
{
    // The first is replaced by another program while the tool waits for it to be unlocked.
    writeFile(path("b.cfg"_q), kText);
    const int locked = ::open(local("a.cfg"_q).c_str(), O_RDWR | O_CLOEXEC);
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    ASSERT_EQ(::fcntl(locked, F_OFD_SETLK, &whole), 0);
    std::thread other([&] {
        // The tool waits with its new file at hand.
        while (names().size() < 3)
            ::usleep(1000);
        writeFile(path("c.cfg"_q), "of another");
        EXPECT_EQ(::rename(local("c.cfg"_q).c_str(), local("a.cfg"_q).c_str()), 0);
        ::close(locked);
    });
    ToolCall call{{"config", "set", "a.cfg", "b.cfg", "--set", "s/k=new", "--in-place"}};
    call.folder = dir().path().toStdString();
    expectRun(runTool(call), 3, "b.cfg: changed\n",
              "vantero-formats: a.cfg: changed by another program since it was read, so it stays "
              "as it is\n");
    other.join();
    EXPECT_EQ(readFile(path("a.cfg"_q)), "of another");
    EXPECT_EQ(readFile(path("b.cfg"_q)), kEdited);
}
