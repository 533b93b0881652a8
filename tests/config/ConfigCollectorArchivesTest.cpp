// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigCollector.h"

#include "base/Exceptions.h"
#include "base/ZipReader.h"
#include "base/Zips.h"
#include "config/CollectorSupport.h"
#include "config/VanteroConfigFile.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

using vn::ConfigCollector;
using vn::IOException;
using vn::VanteroConfigFile;
using vn::ZipReader;
using Status = vn::ConfigCollector::Status;

namespace {

const Entries kThree = {{"a.cfg"_q, camera("10.0.0.1")},
                        {"b.cfg"_q, camera("10.0.0.2")},
                        {"c.cfg"_q, camera("10.0.0.3")}};

/** Makes files of @p entries in @p folder, to be packed by a program. */
QStringList unpacked(const Entries &entries, const QString &folder)
{
    QStringList names;
    for (const Entry &entry : entries) {
        writeFile(QDir(folder).filePath(entry.name), entry.content);
        names += entry.name;
    }
    return names;
}

/** Adds @p entries to the archive @p path by the program zip. */
void zip(const QString &path, const Entries &entries, const QStringList &options = {})
{
    QTemporaryDir folder;
    const QStringList names = unpacked(entries, folder.path());
    runProgram("zip"_q, QStringList{"-q"_q} + options + QStringList{path} + names, folder.path());
}

/** The same by 7z. */
void sevenZip(const QString &path, const Entries &entries, const QStringList &options = {})
{
    QTemporaryDir folder;
    const QStringList names = unpacked(entries, folder.path());
    runProgram("7z"_q, QStringList{"a"_q, "-bd"_q, "-tzip"_q} + options + QStringList{path} + names,
               folder.path());
}

/** Changes the first byte of what @p part is in the archive @p path. */
void damage(const QString &path, const QByteArray &part)
{
    QByteArray bytes = readFile(path);
    const int place = bytes.indexOf(part);
    ASSERT_GE(place, 0);
    bytes[place] = char(bytes.at(place) ^ 1);
    writeFile(path, bytes);
}

struct ArchiveRow
{
    const char *name;
    std::function<void(const QString &path)> make;
    QByteArray password;
    QStringList expected; // of which "a.zip" is the archive; "*" stands for a number
    std::function<void(ConfigCollector::Options &)> set = nullptr;
};

const QString kFirst = "a.zip:a.cfg: configuration: 10.0.0.1"_q;
const QString kSecond = "a.zip:b.cfg: configuration: 10.0.0.2"_q;
const QString kThird = "a.zip:c.cfg: configuration: 10.0.0.3"_q;
const QString kNoPassword =
    ": entry unreadable (NeedsPassword): encrypted, and there is no password"_q;
const QString kWrongPassword = ": entry unreadable (WrongPassword): Incorrect passphrase"_q;
const QString kNoArchive = "a.zip: archive unreadable (NotAnArchive): not a zip archive, or cut "
                           "off: it has no directory"_q;
const QString kCut = "a.zip: archive unreadable (Truncated): not a zip archive, or cut off: it has "
                     "no directory"_q;

const ArchiveRow kRows[] = {
    {"madeByZip", [](const QString &path) { zip(path, kThree); }, ""_b, {kFirst, kSecond, kThird}},
    {"madeBySevenZip",
     [](const QString &path) { sevenZip(path, kThree); },
     ""_b,
     {kFirst, kSecond, kThird}},
    {"madeByPython",
     [](const QString &path) { makeByPython(path, kThree); },
     ""_b,
     {kFirst, kSecond, kThird}},
    {"encryptedByZip",
     [](const QString &path) {
         zip(path, kThree, {"-P"_q, "secret"_q});
     },
     "secret"_b,
     {kFirst, kSecond, kThird}},
    {"encryptedBySevenZip",
     [](const QString &path) {
         sevenZip(path, kThree, {"-mem=AES256"_q, "-psecret"_q});
     },
     "secret"_b,
     {kFirst, kSecond, kThird}},
    {"withoutConfigurations",
     [](const QString &path) {
         makeByPython(path, {{"a.txt"_q, "x"_b}, {"b.cfg/"_q, ""_b}});
     },
     ""_b,
     {}},
    {"textsWithoutHeaderCount",
     [](const QString &path) {
         makeByPython(path, {{"none.cfg"_q, "x"_b}, {"empty.CFG"_q, ""_b}, {"xcfg"_q, "#:1\n"_b}});
     },
     ""_b,
     {"a.zip:none.cfg: configuration"_q, "a.zip:empty.CFG: configuration"_q,
      "a.zip:xcfg: configuration"_q}},
    {"otherEntriesWhereAskedFor",
     [](const QString &path) {
         makeByPython(path, {{"a.cfg"_q, camera("10.0.0.1")}, {"b.JPG"_q, "x"_b}, {"c"_q, "x"_b}});
     },
     ""_b,
     {kFirst, "a.zip:b.JPG: configuration"_q},
     [](ConfigCollector::Options &options) {
         options.entrySuffixes = QStringList{"cfg"_q, ".jpg"_q};
     }},
    {"entriesOfOneName",
     [](const QString &path) {
         makeByPython(path, {{"a.cfg"_q, camera("1")},
                             {"b.cfg"_q, camera("2")},
                             {"a.cfg"_q, camera("3")},
                             {"a.cfg"_q, camera("4")}});
     },
     ""_b,
     {"a.zip:a.cfg: configuration: 1"_q, "a.zip:b.cfg: configuration: 2"_q,
      "a.zip:a.cfg: configuration: 3"_q, "a.zip:a.cfg: configuration: 4"_q}},

    {"firstEntryDamaged",
     [](const QString &path) {
         makeByPython(path, kThree, true);
         damage(path, camera("10.0.0.1"));
     },
     ""_b,
     {"a.zip:a.cfg: entry unreadable (Damaged): ZIP bad CRC: *"_q, kSecond, kThird}},
    {"entryInTheMidstDamaged",
     [](const QString &path) {
         makeByPython(path, kThree, true);
         damage(path, camera("10.0.0.2"));
     },
     ""_b,
     {kFirst, "a.zip:b.cfg: entry unreadable (Damaged): ZIP bad CRC: *"_q, kThird}},
    {"lastEntryDamaged",
     [](const QString &path) {
         makeByPython(path, kThree, true);
         damage(path, camera("10.0.0.3"));
     },
     ""_b,
     {kFirst, kSecond, "a.zip:c.cfg: entry unreadable (Damaged): ZIP bad CRC: *"_q}},
    {"localHeaderDamaged",
     [](const QString &path) {
         makeByPython(path, kThree);
         QByteArray bytes = readFile(path);
         bytes[bytes.indexOf("PK\3\4", 4)] = 'X'; // of the second entry
         writeFile(path, bytes);
     },
     ""_b,
     {kFirst, "a.zip:b.cfg: entry unreadable (Damaged): Damaged Zip archive"_q, kThird}},
    {"methodUnknown",
     [](const QString &path) {
         sevenZip(path, {{"a.cfg"_q, configText(100000, 1)}}, {"-mm=Deflate64"_q});
         zip(path, {{"b.cfg"_q, camera("10.0.0.2")}});
     },
     ""_b,
     {"a.zip:a.cfg: entry unreadable (UnsupportedMethod): Unsupported ZIP compression method (9: deflation-64-bit)"_q,
      kSecond}},
    {"libraryThatSaysNothing",
     [](const QString &path) {
         makeByPython(path, kThree);
         QByteArray bytes = readFile(path);
         const int header = bytes.indexOf("PK\3\4", 1);
         bytes.replace(header + 6, 2, "\x41\x20"); // flags of other encryption than the directory's
         writeFile(path, bytes);
     },
     ""_b,
     {kFirst, "a.zip:b.cfg: entry unreadable (Damaged): damaged"_q, kThird}},
    {"passwordMissing",
     [](const QString &path) {
         zip(path, {kThree.at(0)});
         zip(path, {kThree.at(1)}, {"-P"_q, "secret"_q});
         zip(path, {kThree.at(2)});
     },
     ""_b,
     {kFirst, "a.zip:b.cfg"_q + kNoPassword, kThird}},
    {"passwordWrong",
     [](const QString &path) {
         sevenZip(path, kThree, {"-mem=AES256"_q, "-psecret"_q});
     },
     "guessed"_b,
     {"a.zip:a.cfg"_q + kWrongPassword, "a.zip:b.cfg"_q + kWrongPassword,
      "a.zip:c.cfg"_q + kWrongPassword}},
    {"passwordOfOneEntryOnly",
     [](const QString &path) {
         sevenZip(path, {kThree.at(0)}, {"-mem=AES256"_q, "-pother"_q});
         sevenZip(path, {kThree.at(1)}, {"-mem=AES256"_q, "-psecret"_q});
         sevenZip(path, {kThree.at(2)}, {"-mem=AES256"_q, "-pthird"_q});
     },
     "secret"_b,
     {"a.zip:a.cfg"_q + kWrongPassword, kSecond, "a.zip:c.cfg"_q + kWrongPassword}},

    {"emptyFile", [](const QString &path) { writeFile(path, ""_b); }, ""_b, {kNoArchive}},
    {"noArchive", [](const QString &path) { writeFile(path, camera("1")); }, ""_b, {kNoArchive}},
    {"cutInTheMiddle",
     [](const QString &path) {
         makeByPython(path, kThree);
         const QByteArray bytes = readFile(path);
         writeFile(path, bytes.left(bytes.size() / 2));
     },
     ""_b,
     {kCut}},
    {"cutAtItsEnd",
     [](const QString &path) {
         makeByPython(path, kThree);
         const QByteArray bytes = readFile(path);
         writeFile(path, bytes.left(bytes.size() - 1));
     },
     ""_b,
     {kCut}},
    {"folder",
     [](const QString &path) { QDir().mkpath(path); },
     ""_b,
     {"a.zip: archive unreadable (CannotBeOpened): not a regular file"_q}},

    {"entryTooLarge",
     [](const QString &path) {
         makeByPython(path, {kThree.at(0), {"b.cfg"_q, QByteArray(101, 'x')}, kThree.at(2)});
     },
     ""_b,
     {kFirst,
      "a.zip:b.cfg: entry unreadable (OverEntrySizeLimit): more than the limit of 100 bytes"_q,
      kThird},
     [](ConfigCollector::Options &options) { options.entrySizeLimit = 100; }},
    {"entryPromisesMoreThanAnyText",
     [](const QString &path) {
         makeByPython(path, kThree);
         QByteArray bytes = readFile(path);
         const int record = bytes.indexOf("PK\1\2", bytes.indexOf("PK\1\2") + 1);
         bytes.replace(record + 24, 4, "\xfe\xff\xff\xff"); // the size in the directory
         writeFile(path, bytes);
     },
     ""_b,
     {kFirst,
      "a.zip:b.cfg: entry unreadable (OverEntrySizeLimit): more than the limit of 268435456 bytes"_q,
      kThird}},
    {"archiveTooLarge",
     [](const QString &path) {
         makeByPython(path, {kThree.at(0), {"b.cfg"_q, QByteArray(101, 'x')}, kThree.at(2)});
     },
     ""_b,
     {kFirst,
      "a.zip:b.cfg: entry unreadable (OverArchiveSizeLimit): more than the limit of 150 bytes for all entries"_q,
      kThird},
     [](ConfigCollector::Options &options) { options.archiveSizeLimit = 150; }},
    {"tooManyEntries",
     [](const QString &path) { makeByPython(path, kThree); },
     ""_b,
     {"a.zip: archive unreadable (OverEntryCountLimit): more than the limit of 2 entries"_q},
     [](ConfigCollector::Options &options) { options.entryCountLimit = 2; }},
    {"compressedTooMuch",
     [](const QString &path) {
         makeByPython(path, {{"a.cfg"_q, QByteArray(17 << 20, 'x')}, kThree.at(1)});
     },
     ""_b,
     {"a.zip:a.cfg: entry unreadable (OverRatioLimit): compressed more than the limit of 2 times"_q,
      kSecond},
     [](ConfigCollector::Options &options) { options.ratioLimit = 2; }},
};

#ifndef __SANITIZE_ADDRESS__ // under which a gibibyte takes several
TEST_F(CollectorTest, namesAnEntryThatIsMoreThanIsReadAtOnce)
{
    QTemporaryDir folder;
    QFile content(folder.filePath("a.cfg"_q));
    ASSERT_TRUE(content.open(QIODevice::WriteOnly) && content.resize(1 << 30));
    runProgram("zip"_q, {"-q1"_q, path("a.zip"_q), "a.cfg"_q}, folder.path());
    Options options;
    options.entrySizeLimit = options.archiveSizeLimit = qint64(2) << 30;
    options.ratioLimit = std::numeric_limits<int>::max();

    EXPECT_EQ(collected({path("a.zip"_q)}, options).join("\n"_q),
              "a.zip:a.cfg: entry unreadable (OverEntrySizeLimit): File too large"_q);
}
#endif

class CollectedArchives : public CollectorTest, public testing::WithParamInterface<ArchiveRow>
{
protected:
    /** @p line, with what stands for "*" in @p pattern replaced by it. */
    static QString matched(const QString &line, const QString &pattern)
    {
        return pattern.endsWith(QLatin1Char('*')) ? line.left(pattern.size() - 1) + "*"_q : line;
    }
};

TEST_P(CollectedArchives, giveEveryEntryOrItsFault)
{
    const ArchiveRow &row = GetParam();
    row.make(path("a.zip"_q));
    Options options;
    options.password = row.password;
    if (row.set)
        row.set(options);

    const QStringList lines = collected({path("a.zip"_q)}, options);
    ASSERT_EQ(lines.size(), row.expected.size()) << qPrintable(lines.join("\n"_q));
    for (int i = 0; i < lines.size(); ++i)
        EXPECT_EQ(matched(lines.at(i), row.expected.at(i)), row.expected.at(i));

    // The same where places and reading are apart, from the last entry to the first.
    ConfigCollector places({path("a.zip"_q)}, options);
    std::vector<ConfigCollector::Source> sources;
    while (const auto source = places.nextSource())
        sources.push_back(*source);
    ASSERT_EQ(int(sources.size()), lines.size());
    for (std::size_t i = sources.size(); i-- > 0;) {
        ConfigCollector reader(options);
        if (!options.archiveSizeLimit) { // which counts what was read before
            EXPECT_EQ(shown(reader.read(sources[i])), lines.at(int(i)));
        }
    }

    if (row.set)
        return; // parseAll() has the limits and suffixes of its own
    // parseAll() keeps what comes before the first fault, and raises that.
    QMap<QString, QString> configurations;
    const auto fault = std::find_if(row.expected.begin(), row.expected.end(),
                                    [](const QString &line) { return line.contains("unread"_q); });
    const auto load = [&] {
        return VanteroConfigFile::parseAll({path("a.zip"_q)}, configurations, false, row.password);
    };
    if (fault == row.expected.end()) {
        EXPECT_EQ(load(), lines.size());
    } else {
        EXPECT_THROW(load(), IOException);
    }
    EXPECT_EQ(configurations.size(), fault - row.expected.begin());
}

INSTANTIATE_TEST_SUITE_P(ConfigCollector, CollectedArchives, testing::ValuesIn(kRows), nameOfRow);

class ConfigCollectorArchives : public CollectorTest
{
};

} // namespace

TEST_F(ConfigCollectorArchives, doNotHideWhatComesBehindThem)
{
    file("dir/b.zip"_q, "no archive"_b);
    makeByPython(path("dir/a.zip"_q), {{"x.cfg"_q, camera("10.0.0.1")}});
    file("dir/c.zip/inner"_q, camera("10.0.0.3"));
    file("dir/d.cfg"_q, camera("10.0.0.4"));
    EXPECT_EQ(
        collected({path("none.zip"_q), path("dir"_q)}, recursive()),
        (QStringList{
            "none.zip: archive unreadable (CannotBeOpened): No such file or directory"_q,
            "dir/a.zip:x.cfg: configuration: 10.0.0.1"_q,
            "dir/b.zip: archive unreadable (NotAnArchive): not a zip archive, or cut off: it has "
            "no directory"_q,
            "dir/c.zip: archive unreadable (CannotBeOpened): not a regular file"_q,
            "dir/d.cfg: configuration: 10.0.0.4"_q}));
}

TEST_F(ConfigCollectorArchives, of65535EntriesGiveEach)
{
    Entries entries;
    for (int i = 0; i < 65535; ++i)
        entries.append({"%1.cfg"_q.arg(i % 60000), camera(QByteArray::number(i))});
    makeByPython(path("a.zip"_q), entries, true);
    damage(path("a.zip"_q), camera("40000"));
    ConfigCollector collector({path("a.zip"_q)}, Options());
    ASSERT_TRUE(collector.measure());
    EXPECT_EQ(collector.progress().filesLeft, 65535);
    for (int i = 0; i < 65535; ++i) {
        const auto found = collector.next();
        ASSERT_TRUE(found) << i;
        ASSERT_EQ(found->entry, entries.at(i).name);
        ASSERT_EQ(found->status, i == 40000 ? Status::EntryUnreadable : Status::Configuration) << i;
        ASSERT_EQ(found->bytes, i == 40000 ? QByteArray() : entries.at(i).content) << i;
    }
    EXPECT_FALSE(collector.next());
    EXPECT_EQ(collector.progress().filesLeft, 0);
}

TEST_F(ConfigCollectorArchives, thatAreOpenAlreadyAreReadAsTheyAre)
{
    makeByPython(path("a.zip"_q), kThree, true);
    damage(path("a.zip"_q), camera("10.0.0.2"));
    ZipReader reader(path("a.zip"_q));
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    ConfigCollector collector(reader, Options());
    ASSERT_TRUE(collector.measure());
    EXPECT_EQ(collector.progress().filesLeft, 3);
    const QStringList lines = collected(collector);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines.at(0), ":a.cfg: configuration: 10.0.0.1"_q);
    EXPECT_TRUE(lines.at(1).startsWith(":b.cfg: entry unreadable (Damaged): "_q));
    EXPECT_EQ(lines.at(2), ":c.cfg: configuration: 10.0.0.3"_q);
    EXPECT_TRUE(reader.isOpen());

    ZipReader closed(path("a.zip"_q));
    ConfigCollector none(closed, Options());
    EXPECT_EQ(collected(none), QStringList{": archive unreadable (NotOpen): not open"_q});
}

TEST_F(ConfigCollectorArchives, thatChangeBetweenTwoReadersAreNotMixedUp)
{
    makeByPython(path("a.zip"_q), kThree);
    ConfigCollector places({path("a.zip"_q)}, Options());
    const auto first = places.nextSource();
    const auto second = places.nextSource();
    ASSERT_TRUE(first && second);
    makeByPython(path("b.zip"_q), {kThree.at(1), kThree.at(0)});
    ASSERT_TRUE(QFile::remove(path("a.zip"_q)));
    ASSERT_TRUE(QFile::rename(path("b.zip"_q), path("a.zip"_q)));
    ConfigCollector early{Options()};
    EXPECT_EQ(shown(early.read(*first)), kFirst) << "by the reader that listed it";
    ConfigCollector late{Options()};
    EXPECT_EQ(shown(late.read(*second)),
              "a.zip:b.cfg: entry unreadable (NoSuchEntry): the archive has changed meanwhile"_q);
    ASSERT_TRUE(QFile::remove(path("a.zip"_q)));
    ConfigCollector latest{Options()};
    EXPECT_EQ(shown(latest.read(*second)),
              "a.zip:b.cfg: entry unreadable (CannotBeOpened): No such file or directory"_q);
}

TEST_F(ConfigCollectorArchives, thatAreListedAheadHoldNoFilesOpen)
{
    for (int i = 0; i < 20; ++i)
        zip(path("%1.zip"_q.arg(i)), {kThree.at(0)});
    const auto openFiles = [] {
        return QDir("/proc/self/fd"_q).entryList(QDir::AllEntries | QDir::System).size();
    };
    const int before = openFiles();
    ConfigCollector places({dir().path()}, recursive());
    std::vector<ConfigCollector::Source> sources;
    while (const auto source = places.nextSource())
        sources.push_back(*source);
    EXPECT_EQ(sources.size(), 20U);
    EXPECT_EQ(openFiles(), before);
    ConfigCollector reader{Options()};
    for (const ConfigCollector::Source &source : sources)
        EXPECT_EQ(reader.read(source).factoryIp, "10.0.0.1"_q);
    EXPECT_LE(openFiles(), before + 1);
}

TEST_F(ConfigCollectorArchives, haveALimitTogether)
{
    for (const QString &name : {"a.zip"_q, "b.zip"_q, "c.zip"_q})
        makeByPython(path(name), {{"x.cfg"_q, camera("10.0.0.1")}});
    const qint64 size = camera("10.0.0.1").size();
    Options options = recursive();
    options.collectionSizeLimit = 2 * size;
    const QString fault = "more than the limit of %1 bytes for all archives"_q.arg(2 * size);
    const QStringList expected = {
        "a.zip:x.cfg: configuration: 10.0.0.1"_q, "b.zip:x.cfg: configuration: 10.0.0.1"_q,
        "c.zip:x.cfg: entry unreadable (OverCollectionSizeLimit): "_q + fault};
    EXPECT_EQ(collected({dir().path()}, options), expected);
    // The same where other collectors read.
    ConfigCollector places({dir().path()}, options);
    QStringList lines;
    while (const auto source = places.nextSource()) {
        ConfigCollector reader(options);
        lines += shown(reader.read(*source));
    }
    EXPECT_EQ(lines, expected);
    // And where further paths come later.
    const ConfigCollector first(options);
    lines.clear();
    for (const QString &name : {"a.zip"_q, "b.zip"_q, "c.zip"_q}) {
        ConfigCollector next({path(name)}, first);
        while (const auto found = next.next())
            lines += shown(*found);
    }
    EXPECT_EQ(lines, expected);
}
