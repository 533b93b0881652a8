// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Which operations hold the lock of a configuration, and that none keeps it when it fails.

#include "config/VanteroConfigFile.h"

#include "base/Exceptions.h"
#include "base/ZipWriter.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <thread>
#include <vector>

using namespace vn;

namespace {

using Operation = std::function<void(VanteroConfigFile &)>;
using Load = void (*)(VanteroConfigFile &, QTextStream *);

const QDateTime anyTime(QDate(2009, 3, 4), QTime(5, 6, 7));

// Long for an operation that runs; only a failing test waits for it.
constexpr std::chrono::seconds kWatchdog(30);

struct Row
{
    const char *name;
    Operation run;
};

/** A device that stops in its first read until it is let on, and then is at its end. */
class Gate : public QIODevice
{
public:
    Gate() { open(ReadOnly | Unbuffered); }

    void waitUntilReached() { m_reached.get_future().wait(); }
    void letOn() { m_letOn.set_value(); }
    bool atEnd() const override { return m_isOver; }

protected:
    qint64 readData(char *, qint64) override
    {
        if (!m_isOver) {
            m_isOver = true;
            m_reached.set_value();
            m_letOn.get_future().wait();
        }
        return 0;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    bool m_isOver = false; // of the reading thread
    std::promise<void> m_reached;
    std::promise<void> m_letOn;
};

/** A load that has begun on another thread and stands still until this object goes. */
class LoadInProgress
{
public:
    LoadInProgress(VanteroConfigFile &config, Load load)
        : m_thread([this, &config, load] {
            QTextStream stream(&m_gate);
            try {
                load(config, &stream);
            } catch (const IOException &) {
                // The gate gives no line: "Read past EOF", as it should be.
            }
        })
    {
        m_gate.waitUntilReached();
    }
    ~LoadInProgress()
    {
        m_gate.letOn();
        m_thread.join();
    }
    LoadInProgress(const LoadInProgress &) = delete; // a thread refers to it
    LoadInProgress &operator=(const LoadInProgress &) = delete;

private:
    Gate m_gate;
    std::thread m_thread;
};

void parse(VanteroConfigFile &config, QTextStream *stream)
{
    config.parse(stream, anyTime);
}

void parseHeader(VanteroConfigFile &config, QTextStream *stream)
{
    config.parseHeader(stream);
}

void parseJpegComment(VanteroConfigFile &config, QTextStream *stream)
{
    config.parseJpegComment(stream);
}

void parseSection(VanteroConfigFile &config, QTextStream *stream)
{
    config.parseSection(stream, true);
}

struct HoldingLoad
{
    const char *name;
    Load run;
};

const HoldingLoad holdingLoads[] = {
    {"parse", parse},
    {"parseHeader", parseHeader},
    {"parseJpegComment", parseJpegComment},
};

bool isDone(const std::future<void> &operation, std::chrono::milliseconds time)
{
    return operation.wait_for(time) == std::future_status::ready;
}

const QString text = "#:1=\n#:2\n\nSECTION a\nk=v\nENDSECTION a\n"_q;

const Row lockingOperations[] = {
    {"value", [](auto &config) { (void)config.value("a"_q, "k"_q); }},
    {"setValue", [](auto &config) { config.setValue("a"_q, "k"_q, "v"_q); }},
    {"addValue", [](auto &config) { config.addValue("a"_q, "k"_q, "v"_q); }},
    {"containsSection", [](auto &config) { (void)config.containsSection("a"_q); }},
    {"allSectionKeys", [](auto &config) { (void)config.allSectionKeys(); }},
    {"toString", [](auto &config) { (void)config.toString(); }},
    {"toStringOfASection", [](auto &config) { (void)config.toString("a"_q); }},
    {"section", [](auto &config) { (void)config.section("a"_q); }},
    {"setSection", [](auto &config) { config.setSection("a"_q, {}); }},
    {"timeStamp", [](auto &config) { (void)config.timeStamp(); }},
    {"getFileVersion", [](auto &config) { (void)config.getFileVersion(); }},
    {"getSoftwareVersion", [](auto &config) { (void)config.getSoftwareVersion(); }},
    {"getFactoryIP", [](auto &config) { (void)config.getFactoryIP(); }},
    {"getLongCameraType", [](auto &config) { (void)config.getLongCameraType(); }},
    {"getShortCameraType", [](auto &config) { (void)config.getShortCameraType(); }},
    {"setFileVersion", [](auto &config) { config.setFileVersion("1"_q); }},
    {"setSoftwareVersion", [](auto &config) { config.setSoftwareVersion("1"_q); }},
    {"setFactoryIP", [](auto &config) { config.setFactoryIP("1"_q); }},
    {"setLongCameraType", [](auto &config) { config.setLongCameraType("1"_q); }},
    {"setShortCameraType", [](auto &config) { config.setShortCameraType("1"_q); }},
    {"makeHeader", [](auto &config) { (void)config.makeHeader(); }},
    {"parseHeaderOfAText", [](auto &config) { config.parseHeader(text); }},
    {"parseHeaderOfAStream",
     [](auto &config) {
         QTextStream stream(text.toLatin1());
         config.parseHeader(&stream);
     }},
    {"parseOfAText", [](auto &config) { config.parse(text, anyTime); }},
    {"parseOfADevice",
     [](auto &config) {
         QBuffer buffer;
         buffer.setData(text.toLatin1());
         buffer.open(QIODevice::ReadOnly);
         config.parse(&buffer, anyTime);
     }},
    {"parseOfAStream",
     [](auto &config) {
         QTextStream stream(text.toLatin1());
         config.parse(&stream, anyTime);
     }},
    {"parseSection",
     [](auto &config) {
         QTextStream stream("SECTION a\nk=v\nENDSECTION a\n"_b);
         config.parseSection(&stream, true);
     }},
    {"parseJpegCommentOfAText", [](auto &config) { config.parseJpegComment(text); }},
    {"parseJpegCommentOfAStream",
     [](auto &config) {
         QTextStream stream(text.toLatin1());
         config.parseJpegComment(&stream);
     }},
    {"copy", [](auto &config) { const VanteroConfigFile copy(config); }},
    {"assignmentFrom",
     [](auto &config) {
         VanteroConfigFile other;
         other = config;
     }},
    {"assignmentTo", [](auto &config) { config = VanteroConfigFile(); }},
};

class LockRelease : public testing::TestWithParam<Row>
{
};

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << row.name;
}

/** What a load may let out of a device. */
[[noreturn]] void throwBroken()
{
    throw IOException("broken"_q);
}

const QString malformed = "#:1=\n#:2\n\nSECTION a\nk=v\nENDSECTION x\n"_q;

const Row failingOperations[] = {
    {"parseOfAText", [](auto &config) { config.parse(malformed, anyTime); }},
    {"parseOfADevice",
     [](auto &config) {
         QBuffer buffer;
         buffer.setData(malformed.toLatin1());
         buffer.open(QIODevice::ReadOnly);
         config.parse(&buffer, anyTime);
     }},
    {"parseOfAStream",
     [](auto &config) {
         QTextStream stream(malformed.toLatin1());
         config.parse(&stream, anyTime);
     }},
    {"parseOfABrokenStream",
     [](auto &config) {
         HollowDevice device(throwBroken);
         QTextStream stream(&device);
         config.parse(&stream, anyTime);
     }},
    {"parseHeaderOfABrokenDevice",
     [](auto &config) {
         HollowDevice device(throwBroken);
         config.parseHeader(&device);
     }},
    {"parseSection",
     [](auto &config) {
         QTextStream stream(malformed.toLatin1());
         config.parseSection(&stream, true);
     }},
    {"parseJpegCommentOfAText", [](auto &config) { config.parseJpegComment(malformed); }},
    {"parseJpegCommentOfAStream",
     [](auto &config) {
         QTextStream stream(malformed.toLatin1());
         config.parseJpegComment(&stream);
     }},
    {"parseJpegCommentOfABrokenDevice",
     [](auto &config) {
         HollowDevice device(throwBroken);
         config.parseJpegComment(&device);
     }},
};

} // namespace

TEST(Locks, operationsOnTheMapWaitForALoadInProgress)
{
    for (const HoldingLoad &load : holdingLoads) {
        SCOPED_TRACE(load.name);
        VanteroConfigFile config;
        std::vector<std::future<void>> running;
        {
            const LoadInProgress held(config, load.run);
            for (const Row &row : lockingOperations)
                running.push_back(std::async(std::launch::async, row.run, std::ref(config)));
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            for (std::size_t i = 0; i < running.size(); ++i) {
                EXPECT_FALSE(isDone(running[i], std::chrono::milliseconds(0)))
                    << lockingOperations[i].name << " took no lock";
            }
        }
        for (std::size_t i = 0; i < running.size(); ++i)
            EXPECT_TRUE(isDone(running[i], kWatchdog)) << lockingOperations[i].name;
    }
}

TEST(Locks, storingAndNamingTakeNoLock)
{
    const QTemporaryDir dir;
    const auto archive = std::make_shared<ZipWriter>(dir.filePath("cams.zip"_q));
    archive->open();
    VanteroConfigFile config;
    config.parse(text, anyTime);

    std::vector<std::future<void>> running;
    const LoadInProgress held(config, parse);
    running.push_back(
        std::async(std::launch::async, [&] { config.store(dir.filePath("cam.cfg"_q)); }));
    running.push_back(std::async(std::launch::async, [&] { config.store(archive, "cam.cfg"_q); }));
    running.push_back(std::async(std::launch::async, [&] {
        (void)VanteroConfigFile::newFileName(QDir(dir.path()), "cam"_q, QDate(2010, 5, 1));
    }));
    for (std::size_t i = 0; i < running.size(); ++i)
        EXPECT_TRUE(isDone(running[i], kWatchdog)) << i;
}

TEST(Locks, parseSectionTakesTheLockAnEntryAtATime)
{
    VanteroConfigFile config;
    std::future<void> reading;
    const LoadInProgress held(config, parseSection);
    reading = std::async(std::launch::async, [&] { config.setValue("a"_q, "k"_q, "v"_q); });
    EXPECT_TRUE(isDone(reading, kWatchdog));
}

// The lock is recursive: only another thread can tell that it is free.
TEST_P(LockRelease, failureLeavesTheLockFreeForOtherThreads)
{
    // A thread that waits for ever keeps what it waits for.
    const auto config = std::make_shared<VanteroConfigFile>();
    EXPECT_THROW(GetParam().run(*config), ExceptionQt);

    const auto isFree = std::make_shared<std::promise<void>>();
    std::thread([config, isFree] {
        config->setValue("a"_q, "k"_q, "w"_q);
        isFree->set_value();
    }).detach();
    EXPECT_TRUE(isDone(isFree->get_future(), kWatchdog));
}

INSTANTIATE_TEST_SUITE_P(, LockRelease, testing::ValuesIn(failingOperations), nameOfRow);
