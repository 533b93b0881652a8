// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/AtomicFile.h"

#include "base/Exceptions.h"
#include "support/Expect.h"
#include "support/Files.h"

#include <QtCore/QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace vn;

namespace {

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    EXPECT_EQ(::lstat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_mode & 07777;
}

ino_t numberOf(const QString &path)
{
    struct stat status = {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_ino;
}

void setMode(const QString &path, mode_t mode)
{
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

/** New files get what this mask leaves, while it lives. */
class Mask
{
public:
    explicit Mask(mode_t mask)
        : m_before(::umask(mask))
    {
    }
    ~Mask() { ::umask(m_before); }
    Mask(const Mask &) = delete; // restores once
    Mask &operator=(const Mask &) = delete;

private:
    mode_t m_before;
};

/** Acts as a user without rights of its own, while it lives; only root can. */
class AnotherUser
{
public:
    AnotherUser() { EXPECT_EQ(::seteuid(kNobody), 0); }
    ~AnotherUser() { EXPECT_EQ(::seteuid(0), 0); }
    AnotherUser(const AnotherUser &) = delete; // restores once
    AnotherUser &operator=(const AnotherUser &) = delete;

    static constexpr uid_t kNobody = 65534;
};

class AtomicFileTest : public FolderTest
{
};

class AtomicFilesTest : public FolderTest
{
protected:
    QString folder() const { return dir().path(); }
};

} // namespace

TEST_F(AtomicFileTest, makesAFile)
{
    const Mask mask(027);
    AtomicFile::replace(path("new"_q), "content"_b);
    EXPECT_EQ(readFile(path("new"_q)), "content"_b);
    EXPECT_EQ(modeOf(path("new"_q)), 0640U);
    AtomicFile::replace(path("empty"_q), QByteArray());
    EXPECT_EQ(readFile(path("empty"_q)), ""_b);
    EXPECT_EQ(names(), (QStringList{"empty"_q, "new"_q}));
}

TEST_F(AtomicFileTest, replacesAFileAndKeepsItsMode)
{
    for (const mode_t mode : {0600U, 0644U, 0666U, 0751U, 02755U}) {
        const QString file = fileWith("the old content"_b);
        setMode(file, mode);
        const ino_t old = numberOf(file);
        AtomicFile::replace(file, "new"_b);
        EXPECT_EQ(readFile(file), "new"_b);
        EXPECT_EQ(modeOf(file), mode);
        EXPECT_NE(numberOf(file), old) << "written into, not replaced";
    }
    EXPECT_EQ(names(), QStringList{"file"_q});
}

TEST_F(AtomicFileTest, isTheOldOneUntilItIsCommitted)
{
    const QString file = fileWith("old"_b);
    AtomicFile atomic(file);
    atomic.open();
    atomic.write("n"_b);
    atomic.write("ewer", 2);
    EXPECT_EQ(readFile(file), "old"_b);
    atomic.commit();
    EXPECT_EQ(readFile(file), "new"_b);
    EXPECT_EQ(names(), QStringList{"file"_q});
}

TEST_F(AtomicFileTest, leavesNothingWithoutCommitting)
{
    const QString file = fileWith("old"_b);
    {
        AtomicFile atomic(file);
        atomic.open();
        atomic.write("new"_b);
        AtomicFile other(path("none"_q));
        other.open();
    }
    EXPECT_EQ(readFile(file), "old"_b);
    EXPECT_EQ(names(), QStringList{"file"_q});
}

TEST_F(AtomicFileTest, replacesWhatALinkLeadsTo)
{
    ASSERT_TRUE(dir().mkdir("sub"_q));
    writeFile(path("sub/file"_q), "old"_b);
    ASSERT_TRUE(QFile::link("second"_q, path("first"_q)));
    ASSERT_TRUE(QFile::link("sub/file"_q, path("second"_q)));
    AtomicFile::replace(path("first"_q), "new"_b);
    EXPECT_EQ(readFile(path("sub/file"_q)), "new"_b);
    EXPECT_TRUE(QFileInfo(path("first"_q)).isSymLink());
    EXPECT_TRUE(QFileInfo(path("second"_q)).isSymLink());
    EXPECT_EQ(names(), (QStringList{"first"_q, "second"_q, "sub"_q}));
}

TEST_F(AtomicFileTest, followsAsManyLinksAsTheSystem)
{
    (void)fileWith("old"_b, "0"_q);
    constexpr int kMost = 40;
    for (int i = 1; i <= kMost + 1; ++i)
        ASSERT_TRUE(QFile::link(QString::number(i - 1), path(QString::number(i))));
    EXPECT_EQ(readFile(path(QString::number(kMost))), "old"_b);
    AtomicFile::replace(path(QString::number(kMost)), "new"_b);
    EXPECT_EQ(readFile(path("0"_q)), "new"_b);
    const QString tooFar = path(QString::number(kMost + 1));
    EXPECT_FALSE(QFile(tooFar).open(QIODevice::ReadOnly));
    expectThrows<FileException>([&] { AtomicFile::replace(tooFar, "newer"_b); },
                                tooFar + ": Too many levels of symbolic links"_q);
    EXPECT_EQ(readFile(path("0"_q)), "new"_b);
}

TEST_F(AtomicFileTest, makesWhatALinkLeadsTo)
{
    ASSERT_TRUE(QFile::link("new"_q, path("link"_q)));
    AtomicFile::replace(path("link"_q), "x"_b);
    EXPECT_TRUE(QFileInfo(path("link"_q)).isSymLink());
    EXPECT_EQ(readFile(path("new"_q)), "x"_b);
}

TEST_F(AtomicFileTest, leavesOtherNamesOfTheFileItsOldContent)
{
    const QString file = fileWith("old"_b);
    ASSERT_EQ(
        ::link(QFile::encodeName(file).constData(), QFile::encodeName(path("other"_q)).constData()),
        0);
    AtomicFile::replace(file, "new"_b);
    EXPECT_EQ(readFile(path("other"_q)), "old"_b);
}

TEST_F(AtomicFileTest, keepsTheOwner)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root gives files away";
    const QString file = fileWith("old"_b);
    ASSERT_EQ(::chown(QFile::encodeName(file).constData(), 1234, 4321), 0);
    setMode(file, 06755);
    AtomicFile::replace(file, "new"_b);
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 4321U);
    EXPECT_EQ(status.st_mode & 07777U, 06755U);
}

TEST_F(AtomicFileTest, ofAnotherUserGetsNoRightsItHadNot)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root becomes another user";
    setMode(dir().path(), 0777);
    const QString file = fileWith("old"_b);
    setMode(file, 06767);
    {
        const AnotherUser user;
        AtomicFile::replace(file, "new"_b);
    }
    EXPECT_EQ(readFile(file), "new"_b);
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &status), 0);
    EXPECT_EQ(status.st_uid, uid_t(AnotherUser::kNobody));
    EXPECT_EQ(status.st_mode & (S_ISUID | S_ISGID), 0U);
    EXPECT_EQ(status.st_mode & 0707U, 0707U);
}

TEST_F(AtomicFileTest, refusesAFileThatIsNotWritable)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root becomes another user";
    setMode(dir().path(), 0777);
    const QString file = fileWith("old"_b);
    setMode(file, 0444);
    {
        const AnotherUser user;
        expectThrows<FileException>([&] { AtomicFile::replace(file, "new"_b); },
                                    file + ": Permission denied"_q);
    }
    EXPECT_EQ(readFile(file), "old"_b);
    EXPECT_EQ(names(), QStringList{"file"_q});
}

TEST_F(AtomicFileTest, saysWhyItCannotBe)
{
    ASSERT_TRUE(QFile::link("loop"_q, path("loop"_q)));
    const struct
    {
        QString path;
        int error;
        QString reason;
    } rows[] = {
        {path("none/a"_q), ENOENT, "No such file or directory"_q},
        {fileWith("x"_b) + "/a"_q, ENOTDIR, "Not a directory"_q},
        {dir().path(), EISDIR, "Is a directory"_q},
        {path("loop"_q), ELOOP, "Too many levels of symbolic links"_q},
        {path("a\0b"_q), EINVAL, "Invalid argument"_q},
        {path(QString(300, QLatin1Char('n'))), ENAMETOOLONG, "File name too long"_q},
        {":/base/resource.txt"_q, EROFS, "Read-only file system"_q},
        {""_q, ENOENT, "No such file or directory"_q},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        expectThrows<FileException>([&] { AtomicFile::replace(row.path, "x"_b); },
                                    [&](const FileException &e) {
                                        EXPECT_EQ(e.fileName(), row.path);
                                        EXPECT_EQ(e.systemError(), row.error);
                                        EXPECT_EQ(e.reason(), row.reason);
                                        EXPECT_EQ(e.message(), row.path + ": "_q + row.reason);
                                    });
    }
    EXPECT_EQ(names(), (QStringList{"file"_q, "loop"_q}));
}

TEST_F(AtomicFileTest, canBeOpenedOnce)
{
    AtomicFile file(path("a"_q));
    file.open();
    expectThrows<FileException>([&] { file.open(); }, path("a"_q) + ": Device or resource busy"_q);
    expectThrows<FileException>([&] { file.openNew(); },
                                path("a"_q) + ": Device or resource busy"_q);
    file.write("x"_b);
    file.commit();
    EXPECT_EQ(readFile(path("a"_q)), "x"_b);
    AtomicFile closed(path("b"_q));
    expectThrows<FileException>([&] { closed.write("x"_b); },
                                path("b"_q) + ": Bad file descriptor"_q);
    EXPECT_EQ(names(), QStringList{"a"_q});
}

TEST_F(AtomicFileTest, writesToWhatIsNoFile)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("pipe"_q)).constData(), 0600), 0);
    const int pipe = ::open(QFile::encodeName(path("pipe"_q)).constData(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(pipe, 0);
    AtomicFile::replace(path("pipe"_q), "content"_b);
    char bytes[20] = {};
    EXPECT_EQ(::read(pipe, bytes, sizeof bytes), 7);
    EXPECT_STREQ(bytes, "content");
    ::close(pipe);
    AtomicFile::replace("/dev/null"_q, "content"_b);
    expectThrows<FileException>([] { AtomicFile::replace("/dev/full"_q, "x"_b); },
                                "/dev/full: No space left on device"_q);
    EXPECT_EQ(names(), QStringList{"pipe"_q});
}

TEST_F(AtomicFileTest, writesToWhatIsOpenAlready)
{
    const QString file = fileWith("head "_b);
    const int number = ::open(QFile::encodeName(file).constData(), O_WRONLY | O_APPEND | O_CLOEXEC);
    ASSERT_GE(number, 0);
    const ino_t old = numberOf(file);
    for (const char *folder : {"/proc/self/fd/", "/dev/fd/"})
        AtomicFile::replace(QString::fromLatin1(folder) + QString::number(number), "tail "_b);
    ASSERT_TRUE(QFile::link("/dev/fd/"_q + QString::number(number), path("link"_q)));
    AtomicFile::replace(path("link"_q), "end"_b);
    const int input = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    ASSERT_GE(input, 0);
    ASSERT_EQ(::dup2(number, STDIN_FILENO), STDIN_FILENO);
    AtomicFile::replace("/proc/self/fd/0"_q, " of 0"_b);
    ASSERT_EQ(::dup2(input, STDIN_FILENO), STDIN_FILENO);
    ::close(input);
    ::close(number);
    EXPECT_EQ(readFile(file), "head tail tail end of 0"_b);
    EXPECT_EQ(numberOf(file), old);
}

TEST_F(AtomicFileTest, findsFilesInSearchPathsAsQFileDoes)
{
    const QString file = fileWith("old"_b, "a.cfg"_q);
    QDir::setSearchPaths("atomic"_q, {dir().path()});
    AtomicFile::replace("atomic:a.cfg"_q, "new"_b);
    QDir::setSearchPaths("atomic"_q, {});
    EXPECT_EQ(readFile(file), "new"_b);
    EXPECT_EQ(names(), QStringList{"a.cfg"_q});
}

TEST_F(AtomicFileTest, isTheOldOneWhereTheDiskIsFull)
{
    const QString file = fileWith("old"_b);
    const QByteArray content(5000, 'n');
    for (const int size : {0, 1, 4095, 4096, 4999}) {
        const FileSizeLimit limit(static_cast<rlim_t>(size));
        expectThrows<FileException>([&] { AtomicFile::replace(file, content); },
                                    file + ": File too large"_q);
        expectThrows<FileException>([&] { (void)AtomicFile::create(path("new"_q), content); },
                                    path("new"_q) + ": File too large"_q);
    }
    EXPECT_EQ(readFile(file), "old"_b);
    EXPECT_EQ(names(), QStringList{"file"_q});
}

TEST_F(AtomicFileTest, isMadeOnlyWhereNothingIs)
{
    const Mask mask(022);
    EXPECT_TRUE(AtomicFile::create(path("new"_q), "first"_b));
    EXPECT_EQ(modeOf(path("new"_q)), 0644U);
    EXPECT_FALSE(AtomicFile::create(path("new"_q), "second"_b));
    EXPECT_EQ(readFile(path("new"_q)), "first"_b);
    ASSERT_TRUE(QFile::link("nothing"_q, path("link"_q)));
    EXPECT_FALSE(AtomicFile::create(path("link"_q), "x"_b)) << "a link to nothing is something";
    EXPECT_FALSE(AtomicFile::create(dir().path(), "x"_b));
    expectThrows<FileException>([&] { (void)AtomicFile::create(path("none/a"_q), "x"_b); },
                                path("none/a"_q) + ": No such file or directory"_q);
    EXPECT_EQ(names(), (QStringList{"link"_q, "new"_q}));
}

TEST_F(AtomicFileTest, leavesTheSignalsOfTheCallerAlone)
{
    sigset_t before;
    sigset_t after;
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, nullptr, &before), 0);
    AtomicFile::replace(path("a"_q), "x"_b);
    EXPECT_THROW(AtomicFile::replace(path("none/a"_q), "x"_b), FileException);
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, nullptr, &after), 0);
    for (const int number : {SIGHUP, SIGINT, SIGTERM})
        EXPECT_EQ(::sigismember(&after, number), ::sigismember(&before, number)) << number;
}

TEST(AtomicFileLosses, areEachDescribed)
{
    using Loss = AtomicFile::Loss;
    const struct
    {
        Loss loss;
        QString text;
    } rows[] = {
        {Loss::Owner, "the file belongs to another owner now"_q},
        {Loss::Group, "the file belongs to another group now"_q},
        {Loss::AccessList, "the access list is lost: only the owner has access"_q},
        {Loss::Attributes, "extended attributes are lost"_q},
        {Loss::Mode, "the mode allows less than before"_q},
        {Loss::OtherNames, "other hard links keep the old content"_q},
    };
    AtomicFile::Losses all;
    QStringList texts;
    for (const auto &row : rows) {
        EXPECT_EQ(AtomicFile::describe(row.loss), QStringList(row.text));
        all |= row.loss;
        texts += row.text;
    }
    EXPECT_EQ(AtomicFile::describe(all), texts);
    EXPECT_EQ(AtomicFile::describe({}), QStringList());
}

TEST_F(AtomicFilesTest, areThereOnceTheyAreCommitted)
{
    const Mask mask(027);
    AtomicFiles files(folder());
    EXPECT_EQ(files.count(), 0);
    EXPECT_EQ(files.commit(), QStringList());
    ASSERT_TRUE(files.add("b"_q, "second"_b));
    ASSERT_TRUE(files.add("a"_q, ""_b));
    EXPECT_EQ(files.count(), 2);
    EXPECT_EQ(dir().entryList(QDir::Files), QStringList());
    EXPECT_EQ(files.commit(), QStringList());
    EXPECT_EQ(files.count(), 0);
    EXPECT_EQ(names(), (QStringList{"a"_q, "b"_q})) << "nothing hidden stays";
    EXPECT_EQ(readFile(path("b"_q)), "second"_b);
    EXPECT_EQ(readFile(path("a"_q)), ""_b);
    EXPECT_EQ(modeOf(path("b"_q)), 0640U);
    ASSERT_TRUE(files.add("c"_q, "third"_b));
    EXPECT_EQ(files.commit(), QStringList());
    EXPECT_EQ(names(), (QStringList{"a"_q, "b"_q, "c"_q}));
}

TEST_F(AtomicFilesTest, leaveNothingWithoutCommitting)
{
    {
        AtomicFiles files(folder());
        ASSERT_TRUE(files.add("a"_q, "x"_b));
        ASSERT_TRUE(files.add("b"_q, "x"_b));
    }
    EXPECT_EQ(names(), QStringList());
}

TEST_F(AtomicFilesTest, takeNoNameTwice)
{
    fileWith("old"_b, "there"_q);
    ASSERT_TRUE(QFile::link("nothing"_q, path("link"_q)));
    AtomicFiles files(folder());
    EXPECT_TRUE(files.contains("there"_q));
    EXPECT_TRUE(files.contains("link"_q));
    EXPECT_FALSE(files.contains("a"_q));
    EXPECT_FALSE(files.add("there"_q, "x"_b));
    EXPECT_FALSE(files.add("link"_q, "x"_b));
    EXPECT_TRUE(files.add("a"_q, "first"_b));
    EXPECT_TRUE(files.contains("a"_q));
    EXPECT_FALSE(files.add("a"_q, "second"_b));
    EXPECT_EQ(files.commit(), QStringList());
    EXPECT_TRUE(files.contains("a"_q));
    EXPECT_EQ(readFile(path("there"_q)), "old"_b);
    EXPECT_EQ(readFile(path("a"_q)), "first"_b);
}

TEST_F(AtomicFilesTest, keepWhatSomebodyElseHasTakenTheNameOf)
{
    AtomicFiles files(folder());
    for (const char *name : {"a", "b", "c"})
        ASSERT_TRUE(files.add(QString::fromLatin1(name), name));
    fileWith("theirs"_b, "b"_q);
    EXPECT_EQ(files.commit(), QStringList{"b"_q});
    EXPECT_EQ(files.count(), 1);
    EXPECT_EQ(readFile(path("b"_q)), "theirs"_b);
    EXPECT_EQ(readFile(path("c"_q)), "c"_b);

    EXPECT_FALSE(files.rename("b"_q, "a"_q));
    EXPECT_TRUE(files.rename("b"_q, "b2"_q));
    EXPECT_EQ(files.commit(), QStringList());
    EXPECT_EQ(readFile(path("b2"_q)), "b"_b);
    EXPECT_EQ(names(), (QStringList{"a"_q, "b"_q, "b2"_q, "c"_q}));
    expectThrows<FileException>([&] { (void)files.rename("b"_q, "d"_q); },
                                path("b"_q) + ": No such file or directory"_q);
}

TEST_F(AtomicFilesTest, refuseANameThatIsTakenByOneThatWaits)
{
    AtomicFiles files(folder());
    ASSERT_TRUE(files.add("a"_q, "1"_b));
    ASSERT_TRUE(files.add("b"_q, "2"_b));
    EXPECT_FALSE(files.rename("a"_q, "b"_q));
    EXPECT_EQ(files.commit(), QStringList());
    EXPECT_EQ(readFile(path("b"_q)), "2"_b);
}

TEST_F(AtomicFilesTest, refuseNamesThatAreNotBare)
{
    AtomicFiles files(folder());
    for (const QString &name : {""_q, "."_q, ".."_q, "a/b"_q, "/a"_q, "a\0b"_q}) {
        SCOPED_TRACE(name.toStdString());
        expectThrows<FileException>([&] { (void)files.add(name, "x"_b); },
                                    folder() + "/"_q + name + ": Invalid argument"_q);
        EXPECT_THROW((void)files.contains(name), FileException);
    }
    EXPECT_EQ(names(), QStringList());
}

TEST_F(AtomicFilesTest, sayWhyTheyCannotBe)
{
    AtomicFiles files(path("none"_q));
    EXPECT_FALSE(files.contains("a"_q));
    expectThrows<FileException>([&] { (void)files.add("a"_q, "x"_b); },
                                path("none"_q) + ": No such file or directory"_q);
    ASSERT_TRUE(dir().mkdir("none"_q));
    EXPECT_TRUE(files.add("a"_q, "x"_b)) << "the folder is there by now";
    const QString tooLong(300, QLatin1Char('n'));
    expectThrows<FileException>([&] { (void)files.add(tooLong, "x"_b); },
                                path("none"_q) + "/"_q + tooLong + ": File name too long"_q);
    EXPECT_EQ(files.commit(), QStringList());
    EXPECT_EQ(readFile(path("none/a"_q)), "x"_b);
}

TEST_F(AtomicFilesTest, goOnAfterOneThatDoesNotFit)
{
    AtomicFiles files(folder());
    ASSERT_TRUE(files.add("a"_q, "x"_b));
    {
        const FileSizeLimit limit(100);
        expectThrows<FileException>([&] { (void)files.add("b"_q, QByteArray(200, 'x')); },
                                    path("b"_q) + ": File too large"_q);
    }
    EXPECT_FALSE(files.contains("b"_q));
    EXPECT_TRUE(files.add("b"_q, "y"_b));
    EXPECT_EQ(files.commit(), QStringList());
    EXPECT_EQ(readFile(path("b"_q)), "y"_b);
    EXPECT_EQ(names(), (QStringList{"a"_q, "b"_q}));
}

TEST_F(AtomicFilesTest, waitWhereTheFolderIsGone)
{
    ASSERT_TRUE(dir().mkdir("sub"_q));
    AtomicFiles files(path("sub"_q));
    ASSERT_TRUE(files.add("a"_q, "x"_b));
    ASSERT_TRUE(QDir(path("sub"_q)).removeRecursively());
    EXPECT_THROW((void)files.commit(), FileException);
    EXPECT_EQ(files.count(), 1);
    EXPECT_EQ(names(), QStringList());
}
