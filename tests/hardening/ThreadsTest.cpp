// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What may be done on several threads at once, done so; ThreadSanitizer watches in its build.

#include "alarm/AlarmListParser.h"
#include "alarm/ThreadLocalAlarmListParser.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/StringUtils.h"
#include "base/ZipReader.h"
#include "config/VanteroConfigFile.h"
#include "erdinfo/VanteroErdinfoFile.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QDateTime>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

using vn::VanteroConfigFile;
using vn::VanteroConfigMap;
using vn::VanteroSoftwareVersion;

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 50;

/** Runs @p work(thread, round) on several threads at once, none of which starts before all are
 * there. */
void onThreads(const std::function<void(int thread, int round)> &work)
{
    std::atomic<int> waiting{kThreads};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&work, &waiting, i] {
            --waiting;
            while (waiting > 0)
                std::this_thread::yield();
            for (int round = 0; round < kRounds; ++round)
                work(i, round);
        });
    for (std::thread &thread : threads)
        thread.join();
}

const QString kText = "#:1.3=\n#:VN-3\n# Camera IP: 10.0.0.7\n\nSECTION a\nk=v\nENDSECTION a\n"_q;

} // namespace

TEST(Threads, distinctObjects)
{
    onThreads([](int thread, int round) {
        VanteroConfigMap map;
        const QString value = QString::number(thread * kRounds + round);
        map.addValue("s"_q, "k"_q, value);
        EXPECT_EQ(map.toString("s"_q), "SECTION s\nk="_q + value + "\nENDSECTION s\n"_q);
        EXPECT_TRUE(map.value("s"_q, "none"_q, 0).isNull());
        EXPECT_TRUE(map.values("none"_q, "none"_q).isEmpty());

        VanteroConfigFile config;
        EXPECT_TRUE(config.parse(kText, QDateTime()));
        EXPECT_EQ(config.getFactoryIP(), "10.0.0.7"_q);
        EXPECT_TRUE(config.makeHeader().startsWith("#:1.3="_q));
    });
}

TEST(Threads, copiesThatShareTheirData)
{
    VanteroConfigMap map;
    map.addValue("s"_q, "k"_q, "old"_q);
    VanteroConfigFile config;
    config.parse(kText, QDateTime());
    const VanteroSoftwareVersion version("VN-3.0.6.29");
    std::vector<VanteroConfigMap> maps(kThreads, map);
    std::vector<VanteroConfigFile> configs(kThreads, config);
    std::vector<VanteroSoftwareVersion> versions(kThreads, version);
    onThreads([&](int thread, int round) {
        const auto i = static_cast<std::size_t>(thread);
        const QString value = QString::number(round);
        maps[i].setValue("s"_q, "k"_q, value);
        EXPECT_EQ(maps[i].value("s"_q, "k"_q, 0), value);
        configs[i].setValue("a"_q, "k"_q, value);
        EXPECT_EQ(configs[i].value("a"_q, "k"_q), value);
        versions[i] = VanteroSoftwareVersion(QString(versions[i]));
        EXPECT_TRUE(versions[i] == version);
    });
    EXPECT_EQ(map.value("s"_q, "k"_q, 0), "old"_q);
    EXPECT_EQ(config.value("a"_q, "k"_q), "v"_q);
}

TEST(Threads, oneConfiguration_isOldOrNewWhenCopied)
{
    VanteroConfigFile shared;
    shared.parse(kText, QDateTime());
    const QString other = "#:2=\n#:VN-4\n\nSECTION b\nk=w\nENDSECTION b\n"_q;
    onThreads([&](int thread, int round) {
        if (thread == 0) {
            shared.parse(round % 2 ? kText : other, QDateTime());
            return;
        }
        const VanteroConfigFile copy(shared);
        const QStringList sections = copy.allSectionKeys();
        EXPECT_TRUE(sections == QStringList({"a"_q, "head"_q}) ||
                    sections == QStringList({"b"_q, "head"_q}));
        VanteroConfigMap result;
        copy.preserveIpAddresses(shared, result);
        shared.setValue("head"_q, "Type Long"_q, QString::number(round));
        (void)shared.toString();
    });
}

TEST(Threads, staticOperations)
{
    const QByteArray package("## Version: VN-3.0.6.29\n");
    onThreads([&](int thread, int) {
        const QString section = QString::number(thread);
        const QString block = VanteroConfigMap::toString(section, {{"k"_q, "v"_q}});
        const QString text = VanteroConfigFile::replaceSection(kText, block, section);
        EXPECT_EQ(text, kText + "\n\n"_q + block);
        EXPECT_EQ(VanteroConfigFile::removeSections(text, {section, "a"_q}, true, true, true),
                  ""_q);
        EXPECT_EQ(VanteroConfigMap::parseProperties("k=v"_q).value("k"_q), "v"_q);

        const VanteroSoftwareVersion current("VN-3.0.3.7");
        EXPECT_FALSE(current.isSafe("K40"_q, VanteroSoftwareVersion("VN-3.0.6.28")));
        EXPECT_EQ(current.checkUpdate("K40"_q, VanteroSoftwareVersion("VN-3.0.6.29")).rule,
                  "k40-step"_q);
        EXPECT_EQ(QString(VanteroSoftwareVersion::fromFwp(package)), "VN-3.0.6.29"_q);
        EXPECT_EQ(VanteroSoftwareVersion::applicationVersion("4.1.1.2"_q, "1:2"_q, 1),
                  "4.1 beta 2, revision 2, debug"_q);
        EXPECT_TRUE(vn::StringUtils::endsWithIgnoreCase("a.ZIP"_q, ".zip"_q));
        EXPECT_EQ(vn::FileUtils::decodeText("\xe4"), "\xc3\xa4"_q);
    });
}

TEST(Threads, loadingAndStoring_eachItsOwnFile)
{
    const QTemporaryDir folder;
    onThreads([&](int thread, int) {
        const QString path = folder.filePath(QStringLiteral("%1.cfg").arg(thread));
        VanteroConfigFile config;
        config.parse(kText, QDateTime());
        config.store(path);
        EXPECT_EQ(VanteroConfigFile::open(path, QDateTime()).getFactoryIP(), "10.0.0.7"_q);
        EXPECT_EQ(VanteroConfigFile::parseAll({path}, false, QByteArray()).size(), 1);

        vn::VanteroErdinfoFile info((path + "e"_q).toStdWString());
        info.setData(thread, 0, 0, 0, 0, 0, L"a", L"b", L"c");
        EXPECT_TRUE(info.save());
    });
}

TEST(Threads, archives_eachItsOwnReader)
{
    const QString path = QStringLiteral(VANTERO_EXAMPLE_DATA "/cameras.zip");
    const int expected = VanteroConfigFile::parseAll({path}, false, QByteArray()).size();
    ASSERT_GT(expected, 0);
    onThreads([&](int, int round) {
        if (round % 10 != 0)
            return;
        EXPECT_EQ(VanteroConfigFile::parseAll({path}, false, QByteArray()).size(), expected);
    });
}

TEST(Threads, alarmListsWithoutQuotedStrings)
{
    onThreads([](int thread, int) {
        const QString text = QStringLiteral("{a: %1, b: [word, true, null, 1.5]}").arg(thread);
        vn::AlarmListParser own;
        EXPECT_EQ(own.parse(text).toMap().value("a"_q).toInt(), thread);
        vn::AlarmListParser *kept = vn::ThreadLocalAlarmListParser::instance();
        EXPECT_EQ(kept->parse(text).toMap().value("b"_q).toList().size(), 4);
        EXPECT_EQ(kept, vn::ThreadLocalAlarmListParser::instance());
        expectThrows<vn::ParseException>([&] { (void)kept->parse("{a}"_q); },
                                         "syntax error, unexpected '}', expecting ':'"_q);
    });
}
