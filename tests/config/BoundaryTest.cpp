// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Each loading and storing operation lets the exceptions leave that it names, unchanged; any other
// ends the process.

#include "config/VanteroConfigFile.h"

#include "base/Exceptions.h"
#include "base/ZipWriter.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Literals.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <stdexcept>

#include <sys/resource.h>
#include <unistd.h>

using namespace vn;

namespace {

const QDateTime anyTime(QDate(2009, 3, 4), QTime(5, 6, 7));

[[noreturn]] void throwParse()
{
    throw ParseException("from the device"_q, 1, 2, 3, 4);
}

[[noreturn]] void throwIo()
{
    throw IOException("from the device"_q);
}

[[noreturn]] void throwFile()
{
    throw FileException(QFile("cam.cfg"_q));
}

[[noreturn]] void throwForeign()
{
    throw std::runtime_error("from the device");
}

[[noreturn]] void throwBase()
{
    throw ExceptionQt("from the device"_q);
}

[[noreturn]] void throwNumber()
{
    throw 42;
}

/** An operation that reads from a device, and what it names. */
struct Reader
{
    const char *name;
    bool namesIo;
    void (*read)(QIODevice *);
};

std::ostream &operator<<(std::ostream &out, const Reader &reader)
{
    return out << reader.name;
}

const Reader readers[] = {
    {"parseOfADevice", true, [](QIODevice *device) { VanteroConfigFile().parse(device, anyTime); }},
    {"parseOfAStream", true,
     [](QIODevice *device) {
         QTextStream stream(device);
         VanteroConfigFile().parse(&stream, anyTime);
     }},
    {"parseHeaderOfADevice", true,
     [](QIODevice *device) { VanteroConfigFile().parseHeader(device); }},
    {"parseHeaderOfAStream", true,
     [](QIODevice *device) {
         QTextStream stream(device);
         VanteroConfigFile().parseHeader(&stream);
     }},
    {"parseSection", true,
     [](QIODevice *device) {
         QTextStream stream(device);
         VanteroConfigFile().parseSection(&stream, true);
     }},
    {"parseJpegCommentOfADevice", true,
     [](QIODevice *device) { VanteroConfigFile().parseJpegComment(device); }},
    {"parseJpegCommentOfAStream", true,
     [](QIODevice *device) {
         QTextStream stream(device);
         VanteroConfigFile().parseJpegComment(&stream);
     }},
    {"parsePropertiesOfAStream", false,
     [](QIODevice *device) {
         QTextStream stream(device);
         VanteroConfigMap::Section section;
         VanteroConfigMap::parseProperties(&stream, section);
     }},
};

class Boundary : public testing::TestWithParam<Reader>
{
};
class BoundaryDeathTest : public testing::TestWithParam<Reader>
{
};

void readFrom(const Reader &reader, void (*thrower)())
{
    HollowDevice device(thrower);
    reader.read(&device);
}

/** Ends in peace when any exception leaves @p operation, which the death tests take for a failure.
 */
template <typename Operation>
void swallow(Operation &&operation)
{
    try {
        operation();
    } catch (...) {
    }
}

} // namespace

TEST_P(Boundary, namedExceptionsLeaveUnchanged)
{
    const Reader &reader = GetParam();
    expectThrows<ParseException>([&] { readFrom(reader, throwParse); },
                                 [](const ParseException &e) {
                                     EXPECT_EQ(e.message(), "from the device"_q);
                                     EXPECT_EQ(e.startLine(), 1);
                                     EXPECT_EQ(e.endColumn(), 4);
                                 });
    if (reader.namesIo) {
        expectThrows<IOException>([&] { readFrom(reader, throwIo); }, "from the device"_q);
        expectThrows<FileException>(
            [&] { readFrom(reader, throwFile); },
            [](const FileException &e) { EXPECT_EQ(e.fileName(), "cam.cfg"_q); });
    }
}

TEST_P(BoundaryDeathTest, anyOtherExceptionEndsTheProcess)
{
    const Reader &reader = GetParam();
    const auto aborted = testing::KilledBySignal(SIGABRT);
    EXPECT_EXIT(swallow([&] { readFrom(reader, throwForeign); }), aborted,
                "terminate called.*runtime_error");
    EXPECT_EXIT(swallow([&] { readFrom(reader, throwBase); }), aborted,
                "terminate called.*ExceptionQt");
    EXPECT_EXIT(swallow([&] { readFrom(reader, throwNumber); }), aborted, "terminate called");
    if (!reader.namesIo) {
        EXPECT_EXIT(swallow([&] { readFrom(reader, throwIo); }), aborted,
                    "terminate called.*IOException");
    }
}

INSTANTIATE_TEST_SUITE_P(, Boundary, testing::ValuesIn(readers), nameOfRow);
INSTANTIATE_TEST_SUITE_P(, BoundaryDeathTest, testing::ValuesIn(readers), nameOfRow);

// ---- Operations without a device: the memory runs out
// --------------------------------------------

#if !defined(__SANITIZE_ADDRESS__) &&                                                              \
    !defined(__SANITIZE_THREAD__) // they have a memory of their own

namespace {

constexpr int kMuch = 20 * 1000 * 1000; // characters, more than is left

/** Leaves this process a mebibyte more than it has. */
void limitMemory()
{
    QFile file("/proc/self/statm"_q);
    if (!file.open(QIODevice::ReadOnly))
        std::_Exit(1);
    const auto pages = file.readAll().split(' ').first().toULongLong();
    const auto bytes = pages * static_cast<unsigned long long>(::sysconf(_SC_PAGESIZE));
    rlimit limit;
    limit.rlim_cur = limit.rlim_max = bytes + 1024 * 1024;
    if (::setrlimit(RLIMIT_AS, &limit) != 0)
        std::_Exit(1);
}

template <typename Operation>
void expectDeathWithoutMemory(Operation &&operation)
{
    const auto run = [&] {
        limitMemory();
        swallow(operation);
    };
    EXPECT_EXIT(run(), testing::KilledBySignal(SIGABRT), "terminate called.*bad_alloc");
}

} // namespace

TEST(OutOfMemoryDeathTest, texts)
{
    const QString much(kMuch, QLatin1Char('x'));
    const QString header = "#:"_q + much;
    const QString section = "SECTION a\n"_q + much;
    QByteArray comment = section.toLatin1();
    QString lines;
    while (lines.size() < kMuch)
        lines += "key=value\n"_q;
    VanteroConfigFile config;
    VanteroConfigMap::Section entries;

    expectDeathWithoutMemory([&] { config.parse(header, anyTime); });
    expectDeathWithoutMemory([&] { config.parseHeader(header); });
    expectDeathWithoutMemory([&] { config.parseJpegComment(section); });
    expectDeathWithoutMemory([&] { config.parseJpegComment(&comment); });
    expectDeathWithoutMemory([&] { VanteroConfigMap::parseProperties(lines, entries); });
    expectDeathWithoutMemory([&] { (void)VanteroConfigMap::parseProperties(lines); });
}

TEST(OutOfMemoryDeathTest, filesAndArchives)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath("cam.cfg"_q));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(kMuch));
    const auto archive = std::make_shared<ZipWriter>(dir.filePath("cams.zip"_q));
    archive->open();
    VanteroConfigFile config;
    config.parse("#:1\n#:2\n#"_q + QString(kMuch, QLatin1Char('x')), anyTime);

    expectDeathWithoutMemory([&] { VanteroConfigFile::open(file.fileName(), anyTime); });
    expectDeathWithoutMemory([&] { config.store(archive, "out.cfg"_q); });
}

// As for a text of 716 million characters, whose UTF-8 no QByteArray holds at once.
TEST(OutOfMemoryDeathTest, storingNeedsLittle)
{
    const QTemporaryDir dir;
    const QString text = "#:1\n#:2\n#"_q + QString(kMuch, QChar(0xfc));
    VanteroConfigFile config;
    config.parse(text, anyTime);
    using Store = void (*)(VanteroConfigFile &, const QString &);
    const Store stores[] = {
        [](VanteroConfigFile &stored, const QString &path) { stored.store(path); },
        [](VanteroConfigFile &stored, const QString &path) { stored.storeAtomic(path); }};
    for (const Store store : stores) {
        const QString path = dir.filePath("out.cfg"_q);
        const auto run = [&] {
            limitMemory();
            store(config, path);
            std::_Exit(0);
        };
        EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(file.readAll() == text.toUtf8());
        ASSERT_TRUE(file.remove());
    }
}

#endif
