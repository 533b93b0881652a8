// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/FileUtils.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace vn;

namespace {

/** A configuration whose @p sections sections all hold @p value. */
QString textOf(const QString &value, int sections)
{
    QString text = "#:"_q + value + "=\n#:"_q + value + "\n\n"_q;
    for (int i = 0; i < sections; ++i)
        text += "SECTION s%1\nk=%2\nENDSECTION s%1\n"_q.arg(i).arg(value);
    return text;
}

/** An operation that holds the lock of the configuration it is given. */
struct LockedOperation
{
    const char *name;
    void (*run)(VanteroConfigFile &config);
};

QString someText()
{
    return textOf("new"_q, 2);
}

// Without timeStamp(): Qt copies a QDateTime in code of its own, which ThreadSanitizer does not
// see.
const LockedOperation kLockedOperations[] = {
    {"value", [](VanteroConfigFile &config) { (void)config.value("s0"_q, "k"_q); }},
    {"setValue", [](VanteroConfigFile &config) { config.setValue("s0"_q, "k"_q, "v"_q); }},
    {"addValue", [](VanteroConfigFile &config) { config.addValue("s0"_q, "k"_q, "v"_q); }},
    {"containsSection", [](VanteroConfigFile &config) { (void)config.containsSection("s0"_q); }},
    {"allSectionKeys", [](VanteroConfigFile &config) { (void)config.allSectionKeys(); }},
    {"toString", [](VanteroConfigFile &config) { (void)config.toString(); }},
    {"toString of a section", [](VanteroConfigFile &config) { (void)config.toString("s0"_q); }},
    {"section", [](VanteroConfigFile &config) { (void)config.section("s0"_q); }},
    {"map", [](VanteroConfigFile &config) { (void)config.map(); }},
    {"setSection", [](VanteroConfigFile &config) { config.setSection("s0"_q, {}); }},
    {"preserveEntries",
     [](VanteroConfigFile &config) {
         VanteroConfigMap result;
         (void)config.preserveEntries(config, "s0"_q, {"k"_q}, result);
     }},
    {"storeAtomic", [](VanteroConfigFile &config) { config.storeAtomic("/dev/null"_q); }},
    {"getFileVersion", [](VanteroConfigFile &config) { (void)config.getFileVersion(); }},
    {"getSoftwareVersion", [](VanteroConfigFile &config) { (void)config.getSoftwareVersion(); }},
    {"getFactoryIP", [](VanteroConfigFile &config) { (void)config.getFactoryIP(); }},
    {"getLongCameraType", [](VanteroConfigFile &config) { (void)config.getLongCameraType(); }},
    {"getShortCameraType", [](VanteroConfigFile &config) { (void)config.getShortCameraType(); }},
    {"setFileVersion", [](VanteroConfigFile &config) { config.setFileVersion("1"_q); }},
    {"setSoftwareVersion", [](VanteroConfigFile &config) { config.setSoftwareVersion("1"_q); }},
    {"setFactoryIP", [](VanteroConfigFile &config) { config.setFactoryIP("1"_q); }},
    {"setLongCameraType", [](VanteroConfigFile &config) { config.setLongCameraType("1"_q); }},
    {"setShortCameraType", [](VanteroConfigFile &config) { config.setShortCameraType("1"_q); }},
    {"makeHeader", [](VanteroConfigFile &config) { (void)config.makeHeader(); }},
    {"parseHeader of a text", [](VanteroConfigFile &config) { config.parseHeader(someText()); }},
    {"parse of a text", [](VanteroConfigFile &config) { config.parse(someText(), QDateTime()); }},
    {"parse of a stream",
     [](VanteroConfigFile &config) {
         QString text = someText();
         QTextStream stream(&text);
         config.parse(&stream, QDateTime());
     }},
    {"parseHeader of a stream",
     [](VanteroConfigFile &config) {
         QString text = someText();
         QTextStream stream(&text);
         config.parseHeader(&stream);
     }},
    {"parseJpegComment of a stream",
     [](VanteroConfigFile &config) {
         QString text = someText();
         QTextStream stream(&text);
         config.parseJpegComment(&stream);
     }},
    {"parseSection",
     [](VanteroConfigFile &config) {
         QString text = "SECTION s0\nk=v\nENDSECTION s0\n"_q;
         QTextStream stream(&text);
         config.parseSection(&stream, false);
     }},
    {"parseJpegComment of a text",
     [](VanteroConfigFile &config) { config.parseJpegComment(someText()); }},
    {"copy", [](VanteroConfigFile &config) { const VanteroConfigFile copy(config); }},
    {"assignment from it",
     [](VanteroConfigFile &config) {
         VanteroConfigFile target;
         target = config;
     }},
    {"assignment to it",
     [](VanteroConfigFile &config) {
         const VanteroConfigFile source;
         config = source;
     }},
};

} // namespace

// An operation without the lock is never ordered with those of the other thread, so
// ThreadSanitizer finds it even where the two threads happen to run one after the other.
TEST(Threads, eachOperationHoldsTheLock)
{
    constexpr int kTimes = 20;
    for (const LockedOperation &operation : kLockedOperations) {
        SCOPED_TRACE(operation.name);
        VanteroConfigFile config;
        std::thread other([&config] {
            for (int i = 0; i < kTimes; ++i) {
                config.parse(textOf("old"_q, 2), QDateTime());
                config.addValue("s0"_q, "k"_q, "other"_q);
            }
        });
        for (int i = 0; i < kTimes; ++i)
            operation.run(config);
        other.join();
    }
}

TEST(Threads, editOneObjectAtOnce)
{
    constexpr int kEdits = 500;
    VanteroConfigFile config;
    const auto edit = [&config](const QString &own) {
        for (int i = 0; i < kEdits; ++i) {
            const QString number = QString::number(i);
            config.addValue("shared"_q, "k"_q, number);
            config.setValue(own, "k"_q, number);
            config.setFactoryIP(own);
            (void)config.value("shared"_q, "k"_q);
            (void)config.section("shared"_q);
            (void)config.containsSection(own);
            (void)config.allSectionKeys();
            (void)config.makeHeader();
            (void)config.timeStamp();
            if (i % 50 == 0) {
                (void)config.toString();
                (void)config.toString(own);
            }
        }
    };
    std::thread first(edit, "first"_q);
    std::thread second(edit, "second"_q);
    first.join();
    second.join();
    EXPECT_EQ(config.section("shared"_q).count("k"_q), 2 * kEdits);
    EXPECT_EQ(config.value("first"_q, "k"_q), QString::number(kEdits - 1));
    EXPECT_EQ(config.value("second"_q, "k"_q), QString::number(kEdits - 1));
}

TEST(Threads, copySeesTheWholeOldOrTheWholeNewContent)
{
    constexpr int kSections = 40;
    const QString texts[] = {textOf("old"_q, kSections), textOf("new"_q, kSections)};
    VanteroConfigFile source;
    source.parse(texts[0], QDateTime());

    std::atomic<bool> done{false};
    std::thread parser([&] {
        for (int i = 0; i < 300; ++i)
            source.parse(texts[i % 2], QDateTime());
        done = true;
    });
    VanteroConfigFile assigned;
    do {
        const VanteroConfigFile copy(source);
        assigned = source;
        for (const VanteroConfigFile *config :
             {&copy, const_cast<const VanteroConfigFile *>(&assigned)}) {
            const QString value = config->getFileVersion();
            ASSERT_TRUE(value == "old"_q || value == "new"_q) << qPrintable(value);
            ASSERT_EQ(config->allSectionKeys().size(), kSections + 1);
            for (int i = 0; i < kSections; ++i)
                ASSERT_EQ(config->value("s%1"_q.arg(i), "k"_q), value);
        }
    } while (!done);
    parser.join();
}

TEST(Threads, storeAtomicWritesTheWholeOldOrTheWholeNewText)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("cam.cfg"_q);
    const QString texts[] = {textOf("old"_q, 40), textOf("new"_q, 30)};
    VanteroConfigFile config;
    config.parse(texts[0], QDateTime());
    std::atomic<bool> done{false};
    std::thread parser([&] {
        for (int i = 1; !done; ++i)
            config.parse(texts[i % 2], QDateTime());
    });
    for (int i = 0; i < 100; ++i) {
        config.storeAtomic(path);
        const QString stored = FileUtils::readText(path);
        EXPECT_TRUE(stored == texts[0] || stored == texts[1]) << qPrintable(stored);
    }
    done = true;
    parser.join();
}

// store() reads the text alone, which neither lookups nor edits touch.
TEST(Threads, storeMayRunBesideEditsAndOtherStores)
{
    const QTemporaryDir dir;
    const QString text = textOf("old"_q, 40);
    VanteroConfigFile config;
    config.parse(text, QDateTime());
    const auto store = [&](const QString &name) {
        const QString path = dir.filePath(name);
        for (int i = 0; i < 100; ++i) {
            config.store(path);
            config.setValue("s0"_q, "k"_q, name);
            (void)config.map();
        }
    };
    std::thread first(store, "first"_q);
    std::thread second(store, "second"_q);
    first.join();
    second.join();
    EXPECT_EQ(FileUtils::readText(dir.filePath("first"_q)), text);
    EXPECT_EQ(FileUtils::readText(dir.filePath("second"_q)), text);
}
