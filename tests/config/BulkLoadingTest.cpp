// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/FileUtils.h"
#include "base/StringUtils.h"
#include "base/ZipReader.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <iostream>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using vn::ArchiveException;
using vn::FileException;
using vn::FileUtils;
using vn::VanteroConfigFile;
using vn::ZipReader;
using Configurations = QMap<QString, QString>;

namespace {

QByteArray configOf(const char *address, const char *mark = "")
{
    return QByteArray("#:1.3=====\n#:VN-3.0\n# Camera IP: ") + address +
           "\n\nSECTION s\nk=" + mark + "\nENDSECTION s\n";
}

const QByteArray kNoHeader = "SECTION s\nk=v\nENDSECTION s\n"_b;

/** All entries, keys ascending, each key's values in the order of the map. */
QStringList shown(const Configurations &configurations)
{
    QStringList result;
    for (auto it = configurations.cbegin(); it != configurations.cend(); ++it)
        result += it.key() + "|"_q + it.value();
    return result;
}

QString entry(const QString &address, const QByteArray &config)
{
    return address + "|"_q + QString::fromUtf8(config);
}

/** What parseAll() adds, by QDir and whole configuration objects. */
int plainParseAll(const QStringList &paths, QMultiMap<QString, QString> &configurations,
                  bool recursive, const QByteArray &password)
{
    int count = 0;
    for (const QString &path : paths) {
        if (vn::StringUtils::endsWithIgnoreCase(path, ".zip"_q)) {
            ZipReader archive(path, password);
            archive.open(QIODevice::ReadOnly);
            for (const QString &name : archive.fileListBySuffix("cfg"_q)) {
                archive.openFile(name);
                const QString text = FileUtils::readText(&archive);
                VanteroConfigFile scratch;
                scratch.parseHeader(text);
                configurations.insert(scratch.getFactoryIP(), text);
                ++count;
            }
        } else if (QFileInfo(path).isDir()) {
            if (!recursive)
                continue;
            QStringList entries;
            const auto filters = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::NoSymLinks;
            for (const QFileInfo &info : QDir(path).entryInfoList(filters, QDir::Unsorted))
                entries += info.absoluteFilePath();
            count += plainParseAll(entries, configurations, true, password);
        } else if (QFileInfo(path).isFile()) {
            const QString text = FileUtils::readText(QFileInfo(path).absoluteFilePath());
            VanteroConfigFile scratch;
            if (!scratch.parseHeader(text))
                continue;
            configurations.insert(scratch.getFactoryIP(), text);
            ++count;
        }
    }
    return count;
}

class BulkLoading : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    void folder(const QString &name) const { ASSERT_TRUE(QDir(m_dir.path()).mkpath(name)); }

    void file(const QString &name, const QByteArray &content) const
    {
        folder(QFileInfo(name).path());
        writeFile(path(name), content);
    }

    /** Makes the archive @p name by `zip` from files with those contents. */
    void zip(const QString &name, const QList<QPair<QString, QByteArray>> &files,
             const QStringList &options = {}) const
    {
        QTemporaryDir content;
        QStringList names;
        for (const auto &each : files) {
            QDir(content.path()).mkpath(QFileInfo(each.first).path());
            writeFile(content.filePath(each.first), each.second);
            names += each.first;
        }
        folder(QFileInfo(name).path());
        runProgram("zip"_q, QStringList{"-q"_q} + options + QStringList{"made.zip"_q} + names,
                   content.path());
        ASSERT_TRUE(QFile::rename(content.filePath("made.zip"_q), path(name)));
    }

    /** The same by `7z`, encrypted with AES-256. */
    void zipWithAes(const QString &name, const QString &password,
                    const QList<QPair<QString, QByteArray>> &files) const
    {
        QTemporaryDir content;
        QStringList names;
        for (const auto &each : files) {
            writeFile(content.filePath(each.first), each.second);
            names += each.first;
        }
        runProgram("7z"_q,
                   QStringList{"a"_q, "-tzip"_q, "-mem=AES256"_q, "-p"_q + password, "made.zip"_q} +
                       names,
                   content.path());
        folder(QFileInfo(name).path());
        ASSERT_TRUE(QFile::rename(content.filePath("made.zip"_q), path(name)));
    }

    static void expectAll(const QStringList &paths, bool recursive, const QByteArray &password,
                          const QStringList &expected)
    {
        Configurations configurations;
        EXPECT_EQ(VanteroConfigFile::parseAll(paths, configurations, recursive, password),
                  expected.size());
        EXPECT_EQ(shown(configurations), expected);
        EXPECT_EQ(shown(VanteroConfigFile::parseAll(paths, recursive, password)), expected);
        QMultiMap<QString, QString> plain;
        EXPECT_EQ(plainParseAll(paths, plain, recursive, password), expected.size());
        EXPECT_EQ(shown(plain), expected);
    }

    QTemporaryDir m_dir;
};

/** The same again, where the order within a folder is not known beforehand. */
void expectLikePlain(const QStringList &paths, bool recursive, const QByteArray &password,
                     int expectedCount)
{
    Configurations configurations;
    QMultiMap<QString, QString> plain;
    EXPECT_EQ(VanteroConfigFile::parseAll(paths, configurations, recursive, password),
              expectedCount);
    EXPECT_EQ(plainParseAll(paths, plain, recursive, password), expectedCount);
    EXPECT_EQ(shown(configurations), shown(plain));
    EXPECT_EQ(configurations.size(), expectedCount);
}

} // namespace

// ---- Files -----------------------------------------------------------------------------------

TEST_F(BulkLoading, addsNothingForNoPaths)
{
    Configurations configurations = {{"a"_q, "b"_q}};
    EXPECT_EQ(VanteroConfigFile::parseAll({}, configurations, true, ""_b), 0);
    EXPECT_EQ(shown(configurations), QStringList{"a|b"_q});
    EXPECT_TRUE(VanteroConfigFile::parseAll({}, true, ""_b).isEmpty());
}

TEST_F(BulkLoading, readsFilesOfAnyNameByTheirHeader)
{
    file("one.cfg"_q, configOf("10.0.0.1"));
    file("two"_q, configOf("10.0.0.2"));
    file("three.jpg"_q, kNoHeader);
    expectAll(
        {path("one.cfg"_q), path("two"_q), path("three.jpg"_q)}, false, ""_b,
        {entry("10.0.0.1"_q, configOf("10.0.0.1")), entry("10.0.0.2"_q, configOf("10.0.0.2"))});
}

TEST_F(BulkLoading, keepsTheLatestOfOneAddressFirst)
{
    file("a"_q, configOf("10.0.0.1", "first"));
    file("b"_q, configOf("10.0.0.1", "second"));
    expectAll({path("a"_q), path("b"_q)}, false, ""_b,
              {entry("10.0.0.1"_q, configOf("10.0.0.1", "second")),
               entry("10.0.0.1"_q, configOf("10.0.0.1", "first"))});
    expectAll({path("b"_q), path("a"_q), path("b"_q)}, false, ""_b,
              {entry("10.0.0.1"_q, configOf("10.0.0.1", "second")),
               entry("10.0.0.1"_q, configOf("10.0.0.1", "first")),
               entry("10.0.0.1"_q, configOf("10.0.0.1", "second"))});
}

TEST_F(BulkLoading, keepsWhatTheMapHeldBehindTheNewTexts)
{
    file("a"_q, configOf("10.0.0.1"));
    QMultiMap<QString, QString> before;
    before.insert("10.0.0.1"_q, "older"_q);
    before.insert("10.0.0.1"_q, "old"_q);
    before.insert("z"_q, "other"_q);
    Configurations configurations = before;
    EXPECT_EQ(VanteroConfigFile::parseAll({path("a"_q)}, configurations, false, ""_b), 1);
    EXPECT_EQ(shown(configurations),
              (QStringList{entry("10.0.0.1"_q, configOf("10.0.0.1")), "10.0.0.1|old"_q,
                           "10.0.0.1|older"_q, "z|other"_q}));
    EXPECT_EQ(before.size(), 3); // the copy it shared its data with
}

TEST_F(BulkLoading, doesNotLeakAnAddressIntoTheNextFile)
{
    const QByteArray noAddress = "#:1.3=\n#:VN-3\n\n"_b;
    file("a"_q, configOf("10.0.0.1"));
    file("b"_q, noAddress);
    expectAll({path("a"_q), path("b"_q)}, false, ""_b,
              {entry(""_q, noAddress), entry("10.0.0.1"_q, configOf("10.0.0.1"))});
}

TEST_F(BulkLoading, treatsNullAndEmptyAddressesAsOne)
{
    const QByteArray noAddress = "#:1.3=\n#:VN-3\n\n"_b;
    const QByteArray emptyAddress = "#:1.3=\n#:VN-3\n# Camera IP: \n\n"_b;
    file("a"_q, noAddress);
    file("b"_q, emptyAddress);
    expectAll({path("a"_q), path("b"_q)}, false, ""_b,
              {entry(""_q, emptyAddress), entry(""_q, noAddress)});
}

TEST_F(BulkLoading, takesTheLastAddressOfTheHeader)
{
    const QByteArray config = "#:1.3=\r\n#:VN-3\r\n# Camera IP: 10.0.0.1 \r\n"
                              "# Configuration of 10.0.0.2 \r\n\r\n# Camera IP: 10.0.0.3\r\n"_b;
    file("a"_q, config);
    expectAll({path("a"_q)}, false, ""_b, {entry("10.0.0.2"_q, config)});
}

TEST_F(BulkLoading, readsAnAddressWithItsBlanks)
{
    const QByteArray config = "#:1.3=\n#:VN-3\n# Camera IP:  10.0.0.1 "_b;
    file("a"_q, config);
    expectAll({path("a"_q)}, false, ""_b, {entry(" 10.0.0.1 "_q, config)});
}

TEST_F(BulkLoading, takesAnEmptyFileForAHeader)
{
    file("a"_q, ""_b);
    expectAll({path("a"_q)}, false, ""_b, {"|"_q});
}

TEST_F(BulkLoading, skipsFilesWhoseHeaderLacksAVersionLine)
{
    file("first"_q, "1.3=\n#:VN-3\n# Camera IP: 10.0.0.1\n"_b);
    file("second"_q, "#:1.3=\nVN-3\n# Camera IP: 10.0.0.1\n"_b);
    file("none"_q, kNoHeader);
    expectAll({path("first"_q), path("second"_q), path("none"_q)}, false, ""_b, {});
}

TEST_F(BulkLoading, doesNotLookAtSections)
{
    const QByteArray malformed = "#:1.3=\n#:VN-3\n\nSECTION a\nSECTION b\nENDSECTION c\n"_b;
    file("a"_q, malformed);
    expectAll({path("a"_q)}, false, ""_b, {entry(""_q, malformed)});
}

TEST_F(BulkLoading, keepsTheWholeTextAsItWasRead)
{
    const QByteArray latin1 = configOf("10.0.0.1", "\xe4\xf6\r\n\xfc");
    file("latin1"_q, latin1);
    file("utf8"_q, "\xef\xbb\xbf"_b + configOf("10.0.0.2", "\xc3\xa4\xf0\x9f\x93\xb7\r"));
    Configurations configurations =
        VanteroConfigFile::parseAll({path("latin1"_q), path("utf8"_q)}, false, ""_b);
    EXPECT_EQ(configurations.value("10.0.0.1"_q), QString::fromLatin1(latin1));
    EXPECT_EQ(configurations.value("10.0.0.2"_q),
              QString::fromUtf8(configOf("10.0.0.2", "\xc3\xa4\xf0\x9f\x93\xb7\r")));
}

TEST_F(BulkLoading, skipsWhatIsNeitherFileNorFolder)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("fifo"_q)).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(path("nowhere"_q), path("dangling"_q)));
    file("good"_q, configOf("10.0.0.1"));
    expectAll({path("missing"_q), ""_q, QString(), path("fifo"_q), path("dangling"_q),
               "/dev/null"_q, path("good"_q), path("good"_q) + "/"_q},
              true, ""_b, {entry("10.0.0.1"_q, configOf("10.0.0.1"))});
}

TEST_F(BulkLoading, readsHiddenFilesAndSymbolicLinksGivenDirectly)
{
    file(".hidden"_q, configOf("10.0.0.1"));
    file("real"_q, configOf("10.0.0.2"));
    file(".folder/file"_q, configOf("10.0.0.3"));
    ASSERT_TRUE(QFile::link(path("real"_q), path("link"_q)));
    ASSERT_TRUE(QFile::link(path(".folder"_q), path("folderlink"_q)));
    expectAll(
        {path(".hidden"_q), path("link"_q), path("folderlink"_q), path(".folder"_q)}, true, ""_b,
        {entry("10.0.0.1"_q, configOf("10.0.0.1")), entry("10.0.0.2"_q, configOf("10.0.0.2")),
         entry("10.0.0.3"_q, configOf("10.0.0.3")), entry("10.0.0.3"_q, configOf("10.0.0.3"))});
}

TEST_F(BulkLoading, readsRelativePaths)
{
    file("sub/file"_q, configOf("10.0.0.1"));
    file("sub/deep/file"_q, configOf("10.0.0.2"));
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_dir.path()));
    const QStringList both = {entry("10.0.0.1"_q, configOf("10.0.0.1")),
                              entry("10.0.0.2"_q, configOf("10.0.0.2"))};
    expectAll({"sub/file"_q}, false, ""_b, both.mid(0, 1));
    expectAll({"."_q}, true, ""_b, both);
    expectAll({"sub/"_q}, true, ""_b, both);
    expectAll({"./sub//deep/.."_q}, true, ""_b, both);
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(BulkLoading, looksUpTheEntriesOfALinkedFoldersParentByTheirAbsolutePaths)
{
    // "link/.." is listed where the link leads; the paths of the entries are those without "..".
    file("real/inner/x"_q, configOf("10.0.0.1"));
    file("real/both"_q, configOf("10.0.0.2"));
    file("real/listedonly"_q, configOf("10.0.0.3"));
    file("both"_q, configOf("10.0.0.4"));
    ASSERT_TRUE(QFile::link(path("real/inner"_q), path("link"_q)));
    expectAll({path("link/.."_q)}, true, ""_b, {entry("10.0.0.4"_q, configOf("10.0.0.4"))});
}

// ---- Folders ---------------------------------------------------------------------------------

TEST_F(BulkLoading, skipsFoldersUnlessRecursive)
{
    file("sub/file"_q, configOf("10.0.0.1"));
    expectAll({path("sub"_q)}, false, ""_b, {});
    expectAll({path("sub"_q)}, true, ""_b, {entry("10.0.0.1"_q, configOf("10.0.0.1"))});
}

TEST_F(BulkLoading, searchesFoldersAtAnyDepth)
{
    file("a/file"_q, configOf("10.0.0.1"));
    file("a/b/file"_q, configOf("10.0.0.2"));
    file("a/b/c/d/e/f/file.cfg"_q, configOf("10.0.0.3"));
    file("a/b/c/d/e/f/no"_q, kNoHeader);
    folder("a/empty"_q);
    expectAll({m_dir.path()}, true, ""_b,
              {entry("10.0.0.1"_q, configOf("10.0.0.1")), entry("10.0.0.2"_q, configOf("10.0.0.2")),
               entry("10.0.0.3"_q, configOf("10.0.0.3"))});
}

TEST_F(BulkLoading, searchesVeryDeepFolders)
{
    // As deep as an absolute path can name.
    QString deepest = m_dir.path();
    while (deepest.size() + 2 + 5 < 4096)
        deepest += "/d"_q;
    ASSERT_TRUE(QDir().mkpath(deepest));
    writeFile(deepest + "/f"_q, configOf("10.0.0.1"));
    expectAll({m_dir.path()}, true, ""_b, {entry("10.0.0.1"_q, configOf("10.0.0.1"))});
}

TEST_F(BulkLoading, skipsHiddenEntriesLinksAndSpecialFilesInFolders)
{
    file("dir/good"_q, configOf("10.0.0.1"));
    file("dir/.hidden"_q, configOf("10.0.0.2"));
    file("dir/.folder/file"_q, configOf("10.0.0.3"));
    file("dir/..twodots"_q, configOf("10.0.0.4"));
    file("elsewhere/file"_q, configOf("10.0.0.5"));
    ASSERT_TRUE(QFile::link(path("elsewhere/file"_q), path("dir/filelink"_q)));
    ASSERT_TRUE(QFile::link(path("elsewhere"_q), path("dir/folderlink"_q)));
    ASSERT_TRUE(QFile::link(path("dir"_q), path("dir/loop"_q)));
    ASSERT_TRUE(QFile::link(path("elsewhere/file"_q), path("dir/archivelink.zip"_q)));
    ASSERT_TRUE(QFile::link(path("nowhere"_q), path("dir/dangling"_q)));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("dir/fifo"_q)).constData(), 0600), 0);
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("dir/fifo.zip"_q)).constData(), 0600), 0);
    expectAll({path("dir"_q)}, true, ""_b, {entry("10.0.0.1"_q, configOf("10.0.0.1"))});
}

TEST_F(BulkLoading, looksIntoFoldersThatOnlyQtKnows)
{
    // As QDir lists them: a resource, and search paths that lead to folders and to a resource.
    file("one/a.cfg"_q, configOf("10.0.0.1"));
    file("two/sub/b.cfg"_q, configOf("10.0.0.2"));
    QDir::setSearchPaths("cams"_q, {path("one"_q), path("two"_q), ":/configurations"_q});
    expectLikePlain({":/configurations"_q}, true, ""_b, 2);
    expectLikePlain({"cams:"_q}, true, ""_b, 1);
    expectLikePlain({"cams:sub"_q, "cams:more"_q, "cams:none"_q}, true, ""_b, 2);
    expectLikePlain({":/configurations/north.cfg"_q, "cams:a.cfg"_q}, true, ""_b, 2);
    expectLikePlain({":/configurations"_q, "cams:"_q}, false, ""_b, 0);
    QDir::setSearchPaths("cams"_q, {});
}

TEST_F(BulkLoading, readsNamesOfAllKinds)
{
    const QStringList names = {
        "with blank"_q, "\u00e4\u6f22\U0001f4f7"_q, "a\nb"_q, "*?[]"_q, "%1"_q, "-"_q, "a\\b"_q,
        "zip"_q};
    int number = 0;
    for (const QString &name : names)
        file("dir/"_q + name, configOf("10.0.0.1", QByteArray::number(++number).constData()));
    expectLikePlain({path("dir"_q)}, true, ""_b, names.size());
}

TEST_F(BulkLoading, skipsNamesThatCannotBeDecoded)
{
    file("dir/good"_q, configOf("10.0.0.1"));
    const QByteArray odd = QFile::encodeName(path("dir/"_q)) + "odd\xff";
    const int descriptor = ::open(odd.constData(), O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(descriptor, 0);
    ::close(descriptor);
    expectAll({path("dir"_q)}, true, ""_b, {entry("10.0.0.1"_q, configOf("10.0.0.1"))});
    EXPECT_EQ(::unlink(odd.constData()), 0); // which QTemporaryDir cannot name either
}

TEST_F(BulkLoading, keepsTheOrderOfTheFileSystem)
{
    // One address for all, so that the map shows the order in which the texts were added.
    Random random(20230504);
    for (int i = 0; i < 300; ++i)
        file("dir/%1/f%2"_q.arg(random.below(7)).arg(random.below(100000)),
             configOf("10.0.0.1", QByteArray::number(i).constData()));
    Configurations configurations;
    QMultiMap<QString, QString> plain;
    const int count = VanteroConfigFile::parseAll({path("dir"_q)}, configurations, true, ""_b);
    EXPECT_EQ(count, plainParseAll({path("dir"_q)}, plain, true, ""_b));
    EXPECT_GT(count, 250);
    EXPECT_EQ(shown(configurations), shown(plain));
}

TEST_F(BulkLoading, acceptsFilesThatVanishWhileItRuns)
{
    constexpr int kFiles = 300;
    folder("dir"_q);
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < kFiles; ++i)
            writeFile(path("dir/%1"_q.arg(i)), configOf("10.0.0.1"));
        std::atomic<bool> started{false};
        std::thread remover([&] {
            started = true;
            for (int i = 0; i < kFiles; ++i)
                QFile::remove(path("dir/%1"_q.arg(i)));
        });
        while (!started) {
        }
        Configurations all;
        EXPECT_NO_THROW(all = VanteroConfigFile::parseAll({path("dir"_q)}, true, ""_b));
        EXPECT_LE(all.size(), kFiles);
        remover.join();
    }
}

TEST_F(BulkLoading, passesOverAFolderThatCannotBeListed)
{
    folder("dir"_q);
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none = {0, before.rlim_max}; // no file or folder can be opened
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    int count = -1;
    Configurations configurations;
    EXPECT_NO_THROW(count =
                        VanteroConfigFile::parseAll({path("dir"_q)}, configurations, true, ""_b));
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(count, 0);
}

TEST_F(BulkLoading, searchesTheRootOfTheFileSystem)
{
    file("a.cfg"_q, configOf("10.0.0.1"));
    file("sub/b.cfg"_q, configOf("10.0.0.2"));
    const auto search = [&] {
        if (::chroot(QFile::encodeName(m_dir.path()).constData()) != 0 || ::chdir("/") != 0)
            return;
        const Configurations found = VanteroConfigFile::parseAll({"/"_q}, true, ""_b);
        std::cerr << found.keys().join(","_q).toStdString() << "\n";
    };
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the administrator may change the root";
    EXPECT_EXIT((search(), ::_exit(0)), testing::ExitedWithCode(0), "^10.0.0.1,10.0.0.2\n$");
}

// ---- Archives --------------------------------------------------------------------------------

TEST_F(BulkLoading, readsTheEntriesOfAnArchiveThatEndWithCfg)
{
    zip("a.zip"_q, {{"one.cfg"_q, configOf("10.0.0.1")},
                    {"two.CFG"_q, configOf("10.0.0.2")},
                    {"sub/threecfg"_q, configOf("10.0.0.3")},
                    {".hidden.cfg"_q, configOf("10.0.0.4")},
                    {"four.cfg.txt"_q, configOf("10.0.0.5")},
                    {"cfg.d/five"_q, configOf("10.0.0.6")}});
    expectAll({path("a.zip"_q)}, false, ""_b,
              {entry("10.0.0.1"_q, configOf("10.0.0.1")), entry("10.0.0.2"_q, configOf("10.0.0.2")),
               entry("10.0.0.3"_q, configOf("10.0.0.3")),
               entry("10.0.0.4"_q, configOf("10.0.0.4"))});
}

TEST_F(BulkLoading, collectsArchivedTextsWithoutHeaderUnlikeFiles)
{
    zip("a.zip"_q,
        {{"one.cfg"_q, configOf("10.0.0.1")}, {"none.cfg"_q, kNoHeader}, {"empty.cfg"_q, ""_b}});
    file("none.cfg"_q, kNoHeader);
    expectAll({path("a.zip"_q), path("none.cfg"_q)}, false, ""_b,
              {"|"_q, entry(""_q, kNoHeader), entry("10.0.0.1"_q, configOf("10.0.0.1"))});
}

TEST_F(BulkLoading, keepsTheOrderOfTheArchive)
{
    zip("a.zip"_q, {{"z.cfg"_q, configOf("10.0.0.1", "first")},
                    {"a.cfg"_q, configOf("10.0.0.1", "second")},
                    {"m.cfg"_q, configOf("10.0.0.1", "third")}});
    expectAll({path("a.zip"_q)}, false, ""_b,
              {entry("10.0.0.1"_q, configOf("10.0.0.1", "third")),
               entry("10.0.0.1"_q, configOf("10.0.0.1", "second")),
               entry("10.0.0.1"_q, configOf("10.0.0.1", "first"))});
}

TEST_F(BulkLoading, readsAnArchiveThatIsOpenAlready)
{
    zip("a.zip"_q, {{"one.cfg"_q, configOf("10.0.0.1")}, {"none.cfg"_q, kNoHeader}});
    ZipReader archive(path("a.zip"_q));
    ASSERT_TRUE(archive.open(QIODevice::ReadOnly));
    Configurations configurations = {{"a"_q, "b"_q}};
    EXPECT_EQ(VanteroConfigFile::parseAll(archive, configurations), 2);
    EXPECT_EQ(VanteroConfigFile::parseAll(archive, configurations), 2);
    const QString none = entry(""_q, kNoHeader);
    const QString one = entry("10.0.0.1"_q, configOf("10.0.0.1"));
    EXPECT_EQ(shown(configurations), (QStringList{none, none, one, one, "a|b"_q}));
    EXPECT_TRUE(archive.isOpen());
}

TEST_F(BulkLoading, knowsArchivesByTheirNameInAnyCase)
{
    zip("upper.ZIP"_q, {{"one.cfg"_q, configOf("10.0.0.1")}});
    zip("dir/Mixed.zIp"_q, {{"one.cfg"_q, configOf("10.0.0.2")}});
    zip("noarchivezip"_q, {{"one.cfg"_q, configOf("10.0.0.3")}});
    ASSERT_TRUE(QFile::link(path("upper.ZIP"_q), path("link.zip"_q)));
    expectAll({path("upper.ZIP"_q), path("dir"_q), path("noarchivezip"_q), path("link.zip"_q)},
              true, ""_b,
              {entry("10.0.0.1"_q, configOf("10.0.0.1")), entry("10.0.0.1"_q, configOf("10.0.0.1")),
               entry("10.0.0.2"_q, configOf("10.0.0.2"))});
}

TEST_F(BulkLoading, addsNothingFromAnArchiveWithoutConfigurations)
{
    zip("a.zip"_q, {{"readme.txt"_q, "x"_b}});
    expectAll({path("a.zip"_q)}, false, ""_b, {});
}

TEST_F(BulkLoading, doesNotReadArchivesInArchives)
{
    zip("inner.zip"_q, {{"one.cfg"_q, configOf("10.0.0.1")}});
    zip("outer.zip"_q, {{"inner.zip"_q, readFile(path("inner.zip"_q))}});
    expectAll({path("outer.zip"_q)}, true, ""_b, {});
}

TEST_F(BulkLoading, handsThePasswordToEveryArchive)
{
    zip("top.zip"_q, {{"one.cfg"_q, configOf("10.0.0.1")}}, {"-P"_q, "secret"_q});
    zip("dir/sub/deep.zip"_q, {{"two.cfg"_q, configOf("10.0.0.2")}}, {"-P"_q, "secret"_q});
    zipWithAes("dir/aes.zip"_q, "secret"_q, {{"three.cfg"_q, configOf("10.0.0.3")}});
    zip("dir/open.zip"_q, {{"four.cfg"_q, configOf("10.0.0.4")}});
    expectAll({path("top.zip"_q), path("dir"_q)}, true, "secret"_b,
              {entry("10.0.0.1"_q, configOf("10.0.0.1")), entry("10.0.0.2"_q, configOf("10.0.0.2")),
               entry("10.0.0.3"_q, configOf("10.0.0.3")),
               entry("10.0.0.4"_q, configOf("10.0.0.4"))});
}

// ---- Failures --------------------------------------------------------------------------------

TEST_F(BulkLoading, namesTheDamagedArchiveAmongGoodOnesAndKeepsEarlierTexts)
{
    zip("good1.zip"_q, {{"a.cfg"_q, configOf("10.0.0.1")}});
    zip("bad.zip"_q, {{"a.cfg"_q, configOf("10.0.0.2")}, {"b.cfg"_q, configOf("10.0.0.3")}},
        {"-0"_q});
    zip("good2.zip"_q, {{"a.cfg"_q, configOf("10.0.0.4")}});
    QByteArray bytes = readFile(path("bad.zip"_q));
    bytes[bytes.indexOf("10.0.0.3")] = '2'; // the checksum of the second entry no longer fits
    writeFile(path("bad.zip"_q), bytes);

    Configurations configurations;
    expectThrows<ArchiveException>(
        [&] {
            VanteroConfigFile::parseAll(
                {path("good1.zip"_q), path("bad.zip"_q), path("good2.zip"_q)}, configurations,
                false, ""_b);
        },
        [&](const ArchiveException &e) {
            EXPECT_TRUE(e.message().contains(path("bad.zip"_q))) << e.what();
            EXPECT_TRUE(e.message().contains("b.cfg"_q)) << e.what();
        });
    EXPECT_EQ(shown(configurations), (QStringList{entry("10.0.0.1"_q, configOf("10.0.0.1")),
                                                  entry("10.0.0.2"_q, configOf("10.0.0.2"))}));
}

TEST_F(BulkLoading, raisesForWhatIsNoArchiveButNamedSo)
{
    file("text.zip"_q, configOf("10.0.0.1"));
    file("empty.zip"_q, ""_b);
    folder("folder.zip"_q);
    file("folder.zip/file"_q, configOf("10.0.0.1"));
    file("dir/inner.ZIP/file"_q, configOf("10.0.0.1"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("fifo.zip"_q)).constData(), 0600), 0);
    for (const QString &name : {"text.zip"_q, "empty.zip"_q, "folder.zip"_q, "missing.zip"_q,
                                "fifo.zip"_q, ".zip"_q, "dir"_q}) {
        SCOPED_TRACE(qPrintable(name));
        const QString culprit = name == "dir"_q ? path("dir/inner.ZIP"_q) : path(name);
        Configurations configurations = {{"a"_q, "b"_q}};
        expectThrows<ArchiveException>(
            [&] { VanteroConfigFile::parseAll({path(name)}, configurations, true, ""_b); },
            [&](const ArchiveException &e) {
                EXPECT_TRUE(e.message().contains(culprit)) << e.what();
            });
        EXPECT_EQ(shown(configurations), QStringList{"a|b"_q});
    }
}

TEST_F(BulkLoading, raisesForACutArchive)
{
    zip("a.zip"_q, {{"a.cfg"_q, configOf("10.0.0.1")}, {"b.cfg"_q, configOf("10.0.0.2")}});
    const QByteArray whole = readFile(path("a.zip"_q));
    for (const int size : {0, 1, 30, whole.size() / 2, whole.size() - 30, whole.size() - 1}) {
        SCOPED_TRACE(size);
        writeFile(path("cut.zip"_q), whole.left(size));
        EXPECT_THROW(VanteroConfigFile::parseAll({path("cut.zip"_q)}, false, ""_b),
                     ArchiveException);
    }
}

TEST_F(BulkLoading, raisesForAWrongOrMissingPassword)
{
    zip("plain.zip"_q, {{"a.cfg"_q, configOf("10.0.0.1")}}, {"-P"_q, "secret"_q});
    zipWithAes("aes.zip"_q, "secret"_q, {{"a.cfg"_q, configOf("10.0.0.1")}});
    for (const QString &name : {"plain.zip"_q, "aes.zip"_q})
        for (const QByteArray &password : {"wrong"_b, ""_b}) {
            SCOPED_TRACE(qPrintable(name) + std::string(password.constData()));
            expectThrows<ArchiveException>(
                [&] { VanteroConfigFile::parseAll({path(name)}, false, password); },
                [&](const ArchiveException &e) {
                    EXPECT_TRUE(e.message().contains(path(name))) << e.what();
                });
        }
}

TEST_F(BulkLoading, raisesForAnArchiveThatIsNotOpen)
{
    zip("a.zip"_q, {{"a.cfg"_q, configOf("10.0.0.1")}});
    ZipReader archive(path("a.zip"_q));
    Configurations configurations = {{"a"_q, "b"_q}};
    EXPECT_THROW(VanteroConfigFile::parseAll(archive, configurations), ArchiveException);
    EXPECT_EQ(shown(configurations), QStringList{"a|b"_q});
}

TEST_F(BulkLoading, raisesForAFileThatCannotBeReadAndKeepsEarlierTexts)
{
    // A regular file that opens and then fails to read, even for root.
    const QString unreadable = "/proc/self/mem"_q;
    file("a"_q, configOf("10.0.0.1"));
    file("b"_q, configOf("10.0.0.2"));
    Configurations configurations;
    expectThrows<FileException>(
        [&] {
            VanteroConfigFile::parseAll({path("a"_q), unreadable, path("b"_q)}, configurations,
                                        false, ""_b);
        },
        [&](const FileException &e) { EXPECT_EQ(e.fileName(), unreadable); });
    EXPECT_EQ(shown(configurations), QStringList{entry("10.0.0.1"_q, configOf("10.0.0.1"))});
}

TEST_F(BulkLoading, raisesForAnUnreadableFileInAFolder)
{
    // Larger than any text can be, which nobody may read; it takes no room on the disk.
    file("dir/large"_q, ""_b);
    ASSERT_TRUE(QFile::resize(path("dir/large"_q), qint64(8) << 30));
    expectThrows<FileException>(
        [&] { VanteroConfigFile::parseAll({path("dir"_q)}, true, ""_b); },
        [&](const FileException &e) { EXPECT_EQ(e.fileName(), path("dir/large"_q)); });
}

TEST_F(BulkLoading, namesTheAbsolutePathOfAnUnreadableFile)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent("/proc/self"_q));
    expectThrows<FileException>([] { VanteroConfigFile::parseAll({"mem"_q}, false, ""_b); },
                                [](const FileException &e) {
                                    EXPECT_TRUE(e.fileName().startsWith("/proc/"_q)) << e.what();
                                });
    ASSERT_TRUE(QDir::setCurrent(before));
}

namespace {

/** An archive whose entries can be read only with an exception that does not belong here. */
class FailingReader : public ZipReader
{
public:
    using ZipReader::ZipReader;

protected:
    qint64 readData(char *, qint64) override { throw std::logic_error("not for callers"); }
};

} // namespace

using BulkLoadingDeath = BulkLoading;

TEST_F(BulkLoadingDeath, anyOtherExceptionEndsTheProcess)
{
    zip("a.zip"_q, {{"a.cfg"_q, configOf("10.0.0.1")}});
    FailingReader archive(path("a.zip"_q));
    ASSERT_TRUE(archive.open(QIODevice::ReadOnly));
    Configurations configurations;
    EXPECT_DEATH(VanteroConfigFile::parseAll(archive, configurations), "not for callers");
}

// ---- Threads ---------------------------------------------------------------------------------

TEST_F(BulkLoading, runsOnSeveralThreadsWithDifferentMaps)
{
    for (int i = 0; i < 50; ++i)
        file("dir/%1"_q.arg(i), configOf("10.0.0.1", QByteArray::number(i).constData()));
    zip("dir/a.zip"_q, {{"a.cfg"_q, configOf("10.0.0.2")}}, {"-P"_q, "secret"_q});
    const QStringList expected =
        shown(VanteroConfigFile::parseAll({m_dir.path()}, true, "secret"_b));
    EXPECT_EQ(expected.size(), 51);
    const auto load = [&] {
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(shown(VanteroConfigFile::parseAll({m_dir.path()}, true, "secret"_b)),
                      expected);
    };
    std::thread first(load);
    std::thread second(load);
    first.join();
    second.join();
}

// ---- Property --------------------------------------------------------------------------------

TEST_F(BulkLoading, agreesWithThePlainFormulationOnRandomTrees)
{
    Random random(20230505);
    const QStringList pieces = {"#:1.3==\n"_q,
                                "#:VN-3\n"_q,
                                "\n"_q,
                                "# Camera IP: 1\n"_q,
                                "# Camera IP: 2\r\n"_q,
                                "# Configuration of  3 \n"_q,
                                "x"_q,
                                "\u00e4"_q};
    int number = 0;
    int found = 0;
    for (int round = 0; round < 20; ++round) {
        QStringList paths;
        QStringList folders = {"r%1"_q.arg(round)};
        folder(folders.first());
        for (int i = 0; i < 30; ++i) {
            const QString parent = random.oneOf(folders);
            const QString name =
                "%1/%2%3"_q.arg(parent, random.below(6) ? ""_q : "."_q).arg(++number);
            QString text;
            if (random.below(2))
                text = "#:1.3==\n#:VN-3\n"_q;
            for (unsigned count = random.below(6); count > 0; --count)
                text += random.oneOf(pieces);
            switch (random.below(8)) {
            case 0:
                folder(name);
                folders += name;
                break;
            case 1:
                ASSERT_TRUE(QFile::link(path(parent), path(name)));
                break;
            case 2:
                zip(name + ".Zip"_q, {{"a.cfg"_q, text.toUtf8()}, {"b"_q, text.toUtf8()}});
                break;
            default:
                file(name, random.below(2) ? text.toUtf8() : text.toLatin1());
            }
            if (random.below(5) == 0)
                paths += path(name);
        }
        paths += path("r%1"_q.arg(round));
        for (const bool recursive : {false, true}) {
            Configurations configurations;
            QMultiMap<QString, QString> plain;
            const int count = VanteroConfigFile::parseAll(paths, configurations, recursive, ""_b);
            ASSERT_EQ(count, plainParseAll(paths, plain, recursive, ""_b));
            ASSERT_EQ(shown(configurations), shown(plain));
            ASSERT_EQ(configurations.size(), count);
            found += count;
        }
    }
    EXPECT_GT(found, 200);
}
