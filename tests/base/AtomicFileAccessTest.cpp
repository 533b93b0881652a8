// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Who may do what with a file that replaces another one, and whose change is kept where two write.

#include "base/AtomicFile.h"
#include "base/Exceptions.h"
#include "base/ZipWriter.h"
#include "support/Expect.h"
#include "support/Files.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>

#include <atomic>
#include <cerrno>
#include <functional>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace vn;

using Loss = AtomicFile::Loss;
using Losses = AtomicFile::Losses;

namespace {

constexpr uid_t kOwner = 1234;
constexpr uid_t kEditor = 2345;
constexpr gid_t kTeam = 4321;     // the group of the file
constexpr gid_t kEditors = 5432;  // the editor's own
constexpr uid_t kStranger = 3456; // somebody in no group

QByteArray local(const QString &path)
{
    return QFile::encodeName(path);
}

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    EXPECT_EQ(::stat(local(path).constData(), &status), 0);
    return status;
}

mode_t modeOf(const QString &path)
{
    return statusOf(path).st_mode & 07777;
}

/** The value of an attribute; null where it is not there. */
QByteArray attribute(const QString &path, const char *name)
{
    char value[1000];
    const ssize_t size = ::getxattr(local(path).constData(), name, value, sizeof value);
    return size < 0 ? QByteArray() : QByteArray(value, static_cast<int>(size));
}

bool setAttribute(const QString &path, const char *name, const QByteArray &value)
{
    return ::setxattr(local(path).constData(), name, value.constData(),
                      static_cast<std::size_t>(value.size()), 0) == 0;
}

/** An entry of an access list, as the kernel has it. */
struct Access
{
    enum Tag : quint16 { Owner = 1, User = 2, FileGroup = 4, Group = 8, Mask = 16, Others = 32 };
    Tag tag;
    quint16 rights;
    quint32 id = 0xFFFFFFFF;
};

QByteArray accessList(const std::vector<Access> &entries)
{
    QByteArray list("\2\0\0\0", 4); // the version
    const auto append = [&](quint32 number, int size) {
        for (int i = 0; i < size; ++i)
            list += static_cast<char>(number >> (8 * i));
    };
    for (const Access &entry : entries) {
        append(entry.tag, 2);
        append(entry.rights, 2);
        append(entry.id, 4);
    }
    return list;
}

constexpr char kAccessList[] = "system.posix_acl_access";

/** Runs @p action as another user in a process of its own; false where that cannot be, or the
 * action says so or raises an exception. */
bool as(uid_t user, gid_t group, const std::vector<gid_t> &groups,
        const std::function<bool()> &action)
{
    const pid_t child = ::fork();
    if (child == 0) {
        bool isDone = false;
        try {
            isDone = ::setgroups(groups.size(), groups.data()) == 0 &&
                     ::setresgid(group, group, group) == 0 && ::setresuid(user, user, user) == 0 &&
                     action();
        } catch (...) {
        }
        ::_exit(isDone && !testing::Test::HasFailure() ? 0 : 1);
    }
    int status = -1;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool mayOpen(const QString &path, int flags)
{
    const int file = ::open(local(path).constData(), flags | O_CLOEXEC);
    if (file >= 0)
        ::close(file);
    return file >= 0;
}

class AtomicFileAccess : public FolderTest
{
protected:
    void SetUp() override
    {
        FolderTest::SetUp();
        if (::geteuid() != 0)
            GTEST_SKIP() << "only root gives files away and becomes another user";
        ASSERT_EQ(::chmod(local(dir().path()).constData(), 0777), 0);
        if (!as(kStranger, kTeam, {}, [this] { return mayOpen(dir().path(), O_RDONLY); }))
            GTEST_SKIP() << "other users cannot reach the temporary folder";
    }

    /** The file that is replaced: that of the owner and the team. */
    QString teamFile(mode_t mode) const
    {
        (void)QFile::remove(path("file"_q));
        const QString file = fileWith("old"_b);
        EXPECT_EQ(::chown(local(file).constData(), kOwner, kTeam), 0);
        EXPECT_EQ(::chmod(local(file).constData(), mode), 0);
        return file;
    }

    bool hasAccessLists() const
    {
        const QString file = fileWith("x"_b, "probe"_q);
        const bool result = setAttribute(file, kAccessList,
                                         accessList({{Access::Owner, 6},
                                                     {Access::User, 6, kStranger},
                                                     {Access::FileGroup, 0},
                                                     {Access::Mask, 6},
                                                     {Access::Others, 0}}));
        EXPECT_TRUE(result || errno == ENOTSUP) << "the list itself is wrong: " << errno;
        EXPECT_TRUE(QFile::remove(file));
        return result;
    }
};

const char kNoAccessLists[] = "the file system of the temporary folder has no access lists";

/** The file as whoever it belongs to and a reader may see it. */
const std::vector<Access> kListThatKeepsTheGroupOut = {{Access::Owner, 6},
                                                       {Access::User, 6, kEditor},
                                                       {Access::FileGroup, 0},
                                                       {Access::Mask, 6},
                                                       {Access::Others, 0}};

} // namespace

TEST_F(AtomicFileAccess, keepsTheAccessList)
{
    if (!hasAccessLists())
        GTEST_SKIP() << kNoAccessLists;
    const QByteArray list = accessList(kListThatKeepsTheGroupOut);
    for (const bool isOwner : {false, true}) {
        const QString file = teamFile(0600);
        ASSERT_TRUE(setAttribute(file, kAccessList, list));
        ASSERT_EQ(modeOf(file), 0660U) << "of the mask";
        if (isOwner) {
            EXPECT_TRUE(as(kOwner, kTeam, {}, [&] {
                return AtomicFile::replaceWithReport(file, "new"_b) == Losses();
            }));
        } else {
            EXPECT_EQ(AtomicFile::replaceWithReport(file, "new"_b), Losses());
        }
        EXPECT_EQ(readFile(file), "new"_b);
        EXPECT_EQ(attribute(file, kAccessList), list);
        EXPECT_EQ(modeOf(file), 0660U);
        EXPECT_EQ(statusOf(file).st_uid, kOwner);
        EXPECT_EQ(statusOf(file).st_gid, kTeam);
        EXPECT_FALSE(as(kStranger, kTeam, {}, [&] { return mayOpen(file, O_RDONLY); }));
        EXPECT_TRUE(as(kEditor, kEditors, {}, [&] { return mayOpen(file, O_RDWR); }));
    }
}

TEST_F(AtomicFileAccess, takesNoListOfTheFolder)
{
    if (!hasAccessLists())
        GTEST_SKIP() << kNoAccessLists;
    ASSERT_TRUE(setAttribute(dir().path(), "system.posix_acl_default",
                             accessList({{Access::Owner, 7},
                                         {Access::User, 7, kStranger},
                                         {Access::FileGroup, 7},
                                         {Access::Mask, 7},
                                         {Access::Others, 7}})));
    const QString file = teamFile(0600);
    ASSERT_EQ(::removexattr(local(file).constData(), kAccessList), 0);
    ASSERT_EQ(::chmod(local(file).constData(), 0660), 0);
    EXPECT_EQ(AtomicFile::replaceWithReport(file, "new"_b), Losses());
    EXPECT_EQ(attribute(file, kAccessList), QByteArray());
    EXPECT_EQ(modeOf(file), 0660U);
    EXPECT_FALSE(as(kStranger, kStranger, {}, [&] { return mayOpen(file, O_RDONLY); }));
}

TEST_F(AtomicFileAccess, keepsExtendedAttributes)
{
    const QString file = teamFile(0644);
    const QByteArray binary = "a\0\xFF b"_b + QByteArray(300, 'x');
    const bool isKept = setAttribute(file, "user.site", binary);
    ASSERT_TRUE(isKept || errno == ENOTSUP) << errno;
    if (!isKept)
        GTEST_SKIP() << "the file system of the temporary folder has no extended attributes";
    ASSERT_TRUE(setAttribute(file, "user.empty", ""_b));
    ASSERT_TRUE(setAttribute(file, "trusted.vantero", "t"_b));
    EXPECT_EQ(AtomicFile::replaceWithReport(file, "new"_b), Losses());
    EXPECT_EQ(attribute(file, "user.site"), binary);
    EXPECT_EQ(attribute(file, "user.empty"), ""_b);
    EXPECT_FALSE(attribute(file, "user.empty").isNull());
    EXPECT_EQ(attribute(file, "trusted.vantero"), "t"_b);
}

TEST_F(AtomicFileAccess, keepsWhatWritingTakesAway)
{
    const QString file = teamFile(06755);
    EXPECT_TRUE(as(kOwner, kTeam, {},
                   [&] { return AtomicFile::replaceWithReport(file, "new"_b) == Losses(); }));
    EXPECT_EQ(modeOf(file), 06755U);
}

TEST_F(AtomicFileAccess, keepsCapabilitiesOrTellsThatTheyAreLost)
{
    const QString file = teamFile(0755);
    // The right to open low ports; version 2, effective.
    const QByteArray capability = QByteArray::fromHex("0100000200040000000000000000000000000000");
    const bool isGiven = setAttribute(file, "security.capability", capability);
    ASSERT_TRUE(isGiven || errno == EPERM || errno == ENOTSUP) << errno; // as in some containers
    if (!isGiven)
        GTEST_SKIP() << "capabilities cannot be given to files here";
    EXPECT_EQ(AtomicFile::replaceWithReport(file, "newer"_b), Losses());
    EXPECT_EQ(attribute(file, "security.capability"), capability);
    EXPECT_TRUE(as(kOwner, kTeam, {}, [&] {
        return AtomicFile::replaceWithReport(file, "newest"_b) == Losses(Loss::Attributes);
    }));
    EXPECT_EQ(attribute(file, "security.capability"), QByteArray());
    EXPECT_EQ(AtomicFile::describe(Loss::Attributes),
              QStringList("extended attributes are lost"_q));
}

namespace {

struct OtherUserRow
{
    const char *name;
    bool isOfTheTeam;
    mode_t before;
    mode_t after;
    Losses losses;
};

const OtherUserRow kOtherUserRows[] = {
    {"ofTheTeam", true, 0660, 0660, Loss::Owner},
    {"ofTheTeamWhichMayLessThanOthers", true, 0626, 0626, Loss::Owner},
    {"ofTheTeamSpecialBitsGo", true, 06775, 0775, Loss::Owner | Loss::Mode},
    {"ofAnotherGroup", false, 0666, 0666, Loss::Owner | Loss::Group},
    {"ofAnotherGroupTheTeamMayNotReadWhatItCouldNot", false, 0626, 0622,
     Loss::Owner | Loss::Group | Loss::Mode},
    {"ofAnotherGroupOthersMayNotDoWhatTheTeamCould", false, 0672, 0622,
     Loss::Owner | Loss::Group | Loss::Mode},
    {"ofAnotherGroupNoneButTheOwner", false, 0602, 0600, Loss::Owner | Loss::Group | Loss::Mode},
    {"ofAnotherGroupSpecialBitsGo", false, 06777, 0777, Loss::Owner | Loss::Group | Loss::Mode},
};

} // namespace

TEST_F(AtomicFileAccess, ofAnotherUserIsToldAndNeverWider)
{
    for (const OtherUserRow &row : kOtherUserRows) {
        SCOPED_TRACE(row.name);
        const QString file = teamFile(row.before);
        EXPECT_TRUE(
            as(kEditor, kEditors, row.isOfTheTeam ? std::vector{kTeam} : std::vector<gid_t>(), [&] {
                const Losses losses = AtomicFile::replaceWithReport(file, "new"_b);
                EXPECT_EQ(losses, row.losses);
                return true;
            }));
        EXPECT_EQ(readFile(file), "new"_b);
        EXPECT_EQ(statusOf(file).st_uid, kEditor);
        EXPECT_EQ(statusOf(file).st_gid, row.isOfTheTeam ? kTeam : kEditors);
        EXPECT_EQ(modeOf(file), row.after) << std::oct << modeOf(file);
    }
}

TEST_F(AtomicFileAccess, ofAnotherUserKeepsAListOnlyWithItsGroup)
{
    if (!hasAccessLists())
        GTEST_SKIP() << kNoAccessLists;
    const QByteArray list = accessList(kListThatKeepsTheGroupOut);
    for (const bool isOfTheTeam : {false, true}) {
        const QString file = teamFile(0600);
        ASSERT_TRUE(setAttribute(file, kAccessList, list));
        EXPECT_TRUE(
            as(kEditor, kEditors, isOfTheTeam ? std::vector{kTeam} : std::vector<gid_t>(), [&] {
                const Losses losses = AtomicFile::replaceWithReport(file, "new"_b);
                EXPECT_EQ(losses, isOfTheTeam
                                      ? Losses(Loss::Owner)
                                      : Loss::Owner | Loss::Group | Loss::AccessList | Loss::Mode);
                return true;
            }));
        EXPECT_EQ(attribute(file, kAccessList), isOfTheTeam ? list : QByteArray());
        EXPECT_EQ(modeOf(file), isOfTheTeam ? 0660U : 0600U);
    }
}

TEST_F(AtomicFileAccess, mayBeForWritingOnly)
{
    const QString file = teamFile(0222);
    EXPECT_TRUE(as(kEditor, kEditors, {kTeam}, [&] {
        return AtomicFile::replaceWithReport(file, "new"_b) == Losses(Loss::Owner);
    }));
    EXPECT_EQ(readFile(file), "new"_b);
    EXPECT_EQ(modeOf(file), 0222U);
}

TEST_F(AtomicFileAccess, isNeverOpenToOthersWhileItIsMade)
{
    const bool withList = hasAccessLists();
    const QString file = teamFile(withList ? 0600 : 0660);
    if (withList) {
        ASSERT_TRUE(setAttribute(file, kAccessList, accessList(kListThatKeepsTheGroupOut)));
    }
    int stop[2];
    ASSERT_EQ(::pipe2(stop, O_CLOEXEC), 0);
    // A member of the team where the list keeps it out, anybody else where there are no lists.
    const pid_t watcher = ::fork();
    if (watcher == 0) {
        ::close(stop[1]);
        ::fcntl(stop[0], F_SETFL, O_NONBLOCK);
        const gid_t group = withList ? kTeam : kStranger;
        if (::setgroups(0, nullptr) != 0 || ::setresgid(group, group, group) != 0 ||
            ::setresuid(kStranger, kStranger, kStranger) != 0)
            ::_exit(2);
        const QDir folder = dir();
        char end;
        while (::read(stop[0], &end, 1) != 0)
            for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden))
                if (mayOpen(folder.filePath(name), O_RDONLY) ||
                    mayOpen(folder.filePath(name), O_WRONLY))
                    ::_exit(1);
        ::_exit(0);
    }
    ::close(stop[0]);
    for (int i = 0; i < 300; ++i)
        AtomicFile::replace(file, "x"_b);
    ::close(stop[1]);
    int status = -1;
    ASSERT_EQ(::waitpid(watcher, &status, 0), watcher);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

TEST_F(AtomicFileAccess, followsRightsThatAreTakenAwayWhileItIsWritten)
{
    const QString file = teamFile(0666);
    AtomicFile atomic(file);
    atomic.open();
    atomic.write("new"_b);
    ASSERT_EQ(::chmod(local(file).constData(), 0600), 0);
    atomic.commit();
    EXPECT_EQ(modeOf(file), 0600U);

    AtomicFile appeared(path("late"_q));
    appeared.open();
    (void)fileWith("x"_b, "late"_q);
    ASSERT_EQ(::chmod(local(path("late"_q)).constData(), 0600), 0);
    appeared.commit();
    EXPECT_EQ(modeOf(path("late"_q)), 0600U);

    AtomicFile gone(file);
    gone.open();
    gone.write("newer"_b);
    ASSERT_TRUE(QFile::remove(file));
    gone.commit();
    EXPECT_EQ(readFile(file), "newer"_b);
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(statusOf(file).st_uid, kOwner);
}

TEST_F(AtomicFileAccess, saysThatOtherNamesKeepTheOldContent)
{
    const QString file = teamFile(0644);
    ASSERT_EQ(::link(local(file).constData(), local(path("other"_q)).constData()), 0);
    const Losses losses = AtomicFile::replaceWithReport(file, "new"_b);
    EXPECT_EQ(losses, Losses(Loss::OtherNames));
    EXPECT_EQ(AtomicFile::describe(losses), QStringList("other hard links keep the old content"_q));
    EXPECT_EQ(readFile(path("other"_q)), "old"_b);
    EXPECT_EQ(AtomicFile::replaceWithReport(file, "newer"_b), Losses());
    EXPECT_EQ(AtomicFile::describe({}), QStringList());
    EXPECT_EQ(AtomicFile::replaceWithReport(path("new"_q), "x"_b), Losses());
    EXPECT_EQ(AtomicFile::replaceWithReport("/dev/null"_q, "x"_b), Losses());
}

TEST_F(AtomicFileAccess, ofArchivesIsKeptAsWell)
{
    const QString file = teamFile(0604);
    const auto write = [&] {
        ZipWriter zip(file);
        zip.open();
        QBuffer content;
        EXPECT_TRUE(content.open(QIODevice::ReadOnly));
        zip.appendFile(&content, "a"_q, QString(), QDateTime());
        EXPECT_EQ(zip.losses(), Losses());
        zip.close();
        return zip.losses();
    };
    EXPECT_EQ(write(), Losses());
    EXPECT_EQ(modeOf(file), 0604U);
    EXPECT_EQ(statusOf(file).st_gid, kTeam);
    ASSERT_EQ(::chmod(local(file).constData(), 0606), 0);
    EXPECT_TRUE(as(kEditor, kEditors, {}, [&] {
        const Losses losses = write();
        EXPECT_EQ(losses, Loss::Owner | Loss::Group | Loss::Mode);
        return true;
    }));
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(statusOf(file).st_gid, kEditors);
}

// ---- Two who change one file -------------------------------------------------------------------

class AtomicFileUnchanged : public FolderTest
{
};

TEST_F(AtomicFileUnchanged, isReplacedOnlyAsItWasRead)
{
    const QString file = fileWith("as read"_b);
    const AtomicFile::Outcome done = AtomicFile::replaceUnchanged(file, "as read"_b, "new"_b);
    EXPECT_TRUE(done.isReplaced && done);
    EXPECT_EQ(done.losses, Losses());
    EXPECT_EQ(readFile(file), "new"_b);
    for (const QByteArray &other : {"as read"_b, "neW"_b, "ne"_b, "new "_b, ""_b}) {
        const AtomicFile::Outcome refused = AtomicFile::replaceUnchanged(file, other, "newer"_b);
        EXPECT_FALSE(refused) << other.constData();
        EXPECT_EQ(readFile(file), "new"_b);
    }
    const QByteArray large(200001, 'l');
    EXPECT_TRUE(AtomicFile::replaceUnchanged(file, "new"_b, large));
    QByteArray nearly = large;
    nearly[200000] = 'L';
    EXPECT_FALSE(AtomicFile::replaceUnchanged(file, nearly, "newer"_b));
    EXPECT_TRUE(AtomicFile::replaceUnchanged(file, large, ""_b));
    EXPECT_TRUE(AtomicFile::replaceUnchanged(file, ""_b, "x"_b));
    EXPECT_EQ(names(), QStringList{"file"_q});
}

TEST_F(AtomicFileUnchanged, followsLinks)
{
    const QString file = fileWith("old"_b);
    ASSERT_TRUE(QFile::link("file"_q, path("link"_q)));
    EXPECT_TRUE(AtomicFile::replaceUnchanged(path("link"_q), "old"_b, "new"_b));
    EXPECT_EQ(readFile(file), "new"_b);
    EXPECT_EQ(names(), (QStringList{"file"_q, "link"_q}));
}

TEST_F(AtomicFileUnchanged, needsAFile)
{
    EXPECT_FALSE(AtomicFile::replaceUnchanged(path("none"_q), ""_b, "x"_b));
    EXPECT_EQ(names(), QStringList());
    expectThrows<FileException>(
        [] { (void)AtomicFile::replaceUnchanged("/dev/null"_q, ""_b, "x"_b); },
        "/dev/null: Invalid argument"_q);
    expectThrows<FileException>(
        [&] { (void)AtomicFile::replaceUnchanged(path("none/a"_q), ""_b, "x"_b); },
        path("none/a"_q) + ": No such file or directory"_q);
}

namespace {

/** Locks a file as another program does. */
int lockedByAnother(const QString &path)
{
    const int file = ::open(local(path).constData(), O_RDWR | O_CLOEXEC);
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    EXPECT_EQ(::fcntl(file, F_OFD_SETLK, &whole), 0);
    return file;
}

} // namespace

TEST_F(AtomicFileUnchanged, waitsForALock)
{
    const QString file = fileWith("old"_b);
    const int locked = lockedByAnother(file);
    std::atomic<bool> isOpen{false};
    std::thread other([&] {
        ::usleep(300 * 1000);
        isOpen = true;
        ::close(locked);
    });
    EXPECT_TRUE(AtomicFile::replaceUnchanged(file, "old"_b, "new"_b));
    EXPECT_TRUE(isOpen);
    other.join();
}

TEST_F(AtomicFileUnchanged, looksAtTheFileThatHasTheNameOnceItIsLocked)
{
    const QString file = fileWith("old"_b);
    const int locked = lockedByAnother(file);
    std::thread other([&] {
        ::usleep(300 * 1000);
        (void)fileWith("of another"_b, "file2"_q);
        EXPECT_EQ(::rename(local(path("file2"_q)).constData(), local(file).constData()), 0);
        ::close(locked);
    });
    EXPECT_FALSE(AtomicFile::replaceUnchanged(file, "old"_b, "new"_b));
    other.join();
    EXPECT_EQ(readFile(file), "of another"_b);
}

TEST_F(AtomicFileUnchanged, doesNotWaitForEver)
{
    const QString file = fileWith("old"_b);
    const int locked = lockedByAnother(file);
    expectThrows<FileException>([&] { (void)AtomicFile::replaceUnchanged(file, "old"_b, "new"_b); },
                                file + ": Resource temporarily unavailable"_q);
    ::close(locked);
    EXPECT_EQ(readFile(file), "old"_b);
    EXPECT_EQ(names(), QStringList{"file"_q});
}

TEST_F(AtomicFileUnchanged, losesNothingOfManyWriters)
{
    const QString file = fileWith(""_b);
    constexpr int kWriters = 6;
    constexpr int kChanges = 20;
    std::vector<pid_t> writers;
    for (int i = 0; i < kWriters; ++i) {
        const pid_t writer = ::fork();
        if (writer == 0) {
            for (int change = 0; change < kChanges;) {
                const QByteArray before = readFile(file);
                const QByteArray after = before + static_cast<char>('a' + i);
                if (AtomicFile::replaceUnchanged(file, before, after))
                    ++change;
            }
            ::_exit(testing::Test::HasFailure() ? 1 : 0);
        }
        writers.push_back(writer);
    }
    for (const pid_t writer : writers) {
        int status = -1;
        ASSERT_EQ(::waitpid(writer, &status, 0), writer);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    }
    const QByteArray content = readFile(file);
    EXPECT_EQ(content.size(), kWriters * kChanges);
    for (int i = 0; i < kWriters; ++i)
        EXPECT_EQ(content.count(static_cast<char>('a' + i)), kChanges) << i;
    EXPECT_EQ(names(), QStringList{"file"_q});
}
