// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "erdinfo/VanteroErdinfoFile.h"

#include "erdinfo/ErdinfoLayout.h"

#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using vn::VanteroErdinfoFile;

namespace {

/** "01 02" as bytes. */
QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

QByteArray zeros(int count)
{
    return QByteArray(count, '\0');
}

/** The lowest @p size bytes of a number, the lowest first. */
QByteArray littleEndian(quint64 value, int size)
{
    QByteArray bytes;
    for (; size > 0; --size) {
        bytes += static_cast<char>(value & 0xff);
        value >>= 8;
    }
    return bytes;
}

struct Data
{
    int id1 = 0;
    int id2 = 0;
    unsigned int number1 = 0;
    unsigned int number2 = 0;
    unsigned long long time1 = 0;
    unsigned long long time2 = 0;
    std::wstring text1;
    std::wstring text2;
    std::wstring text3;
};

class ErdinfoFile : public testing::Test
{
protected:
    VanteroErdinfoFile newFile(const Data &data = {}) const
    {
        VanteroErdinfoFile file(m_path.toStdWString());
        file.setData(data.id1, data.id2, data.number1, data.number2, data.time1, data.time2,
                     data.text1, data.text2, data.text3);
        return file;
    }

    QByteArray content() const { return readFile(m_path); }

    /** The bytes that a fresh file gets. */
    QByteArray saved(const Data &data)
    {
        QFile::remove(m_path);
        EXPECT_TRUE(newFile(data).save());
        return content();
    }

    void write(const QByteArray &bytes) const { writeFile(m_path, bytes); }
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("17.erdinfo"_q);
};

// ---- Whole records
// -------------------------------------------------------------------------------

const QByteArray s_emptyRecord =
    hex("45767444 02000801 4c010000 9c000000 00000000")          // header
    + zeros(128) + zeros(128) + zeros(16) + zeros(32) + zeros(8) // texts
    + zeros(12)                                                  // numbers
    + hex("01000000 02000000 00000000 00000000 00000000 00000000 0100 0000") + zeros(36) +
    hex("01000000 02000000 00000000 00000000 00000000 00000000 0100 0000") + zeros(36) + zeros(16);

TEST_F(ErdinfoFile, newHolderWritesEmptyTextsAndZeros)
{
    ASSERT_EQ(s_emptyRecord.size(), 488);
    ASSERT_TRUE(VanteroErdinfoFile(m_path.toStdWString()).save());
    EXPECT_EQ(content().toHex(' '), s_emptyRecord.toHex(' '));
}

TEST_F(ErdinfoFile, everyValueHasItsPlace)
{
    Data data;
    data.id1 = 0x11223344;
    data.id2 = -2;
    data.number1 = 0xfedcba98;
    data.number2 = 7;
    data.time1 = 1234567890;
    data.time2 = 0x1122334455ULL * 1000000 + 999999;
    data.text1 = L"ABCDEFGH";
    data.text2 = L"wxyz";
    data.text3 = L"\U0001f3a5\u00e9345678";

    const QByteArray expected =
        hex("45767444 02000801 4c010000 9c000000 00000000") + hex("41000000 42000000") +
        zeros(120)                             // text 1: 8 bytes
        + zeros(128)                           // reserved
        + hex("77000000") + zeros(12)          // text 2: 4 bytes
        + hex("a5f30100 e9000000") + zeros(24) // text 3: 8 bytes
        + zeros(8)                             // reserved
        + hex("44332211 feffffff 00000000")    // numbers
        + hex("01000000 02000000 98badcfe d2040000 37020000 44332211 0100 0000") + zeros(36) +
        hex("01000000 02000000 07000000 55443322 e7030000 feffffff 0100 0000") + zeros(36) +
        zeros(16);
    ASSERT_EQ(expected.size(), 488);
    EXPECT_EQ(saved(data).toHex(' '), expected.toHex(' '));
}

TEST_F(ErdinfoFile, extremesFillTheirFields)
{
    Data data;
    data.id1 = std::numeric_limits<int>::min();
    data.id2 = std::numeric_limits<int>::max();
    data.number1 = std::numeric_limits<unsigned int>::max();
    data.number2 = std::numeric_limits<unsigned int>::max();
    data.time1 = std::numeric_limits<unsigned long long>::max();
    data.time2 = std::numeric_limits<unsigned long long>::max();
    data.text1 = std::wstring(1000, wchar_t(0x7fffffff));
    data.text2 = std::wstring(1000, wchar_t(-1));
    data.text3 = std::wstring(1000, wchar_t(0x10ffff));

    // 2^64 - 1 microseconds are 18446744073709 s (0x10c6f7a0b5ed) and 551 ms.
    const QByteArray expected =
        hex("45767444 02000801 4c010000 9c000000 00000000") + hex("ffffff7f").repeated(32) +
        zeros(128) + QByteArray(16, '\xff') + hex("ffff1000").repeated(8) + zeros(8) +
        hex("00000080 ffffff7f 00000000") +
        hex("01000000 02000000 ffffffff edb5a0f7 27020000 00000080 0100 0000") + zeros(36) +
        hex("01000000 02000000 ffffffff edb5a0f7 27020000 ffffff7f 0100 0000") + zeros(36) +
        zeros(16);
    ASSERT_EQ(expected.size(), 488);
    EXPECT_EQ(saved(data).toHex(' '), expected.toHex(' '));
}

// ---- Times
// ---------------------------------------------------------------------------------------

TEST_F(ErdinfoFile, timesAreSecondsAndMilliseconds)
{
    const struct
    {
        unsigned long long time;
        quint32 seconds;
        quint32 milliseconds;
    } rows[] = {
        {0, 0, 0},
        {999, 0, 0},
        {1000, 0, 1},
        {999999, 0, 999},
        {1000000, 1, 0},
        {1234567890, 1234, 567},
        {4294967295ULL * 1000000 + 999999, 4294967295, 999},
        {4294967296ULL * 1000000, 0, 0},
        {4294967296ULL * 1000000 + 5000000, 5, 0},
        {9223372036854775808ULL, 0x7bd05af6, 775},
    };
    for (const auto &row : rows) {
        Data data;
        data.time1 = row.time;
        data.time2 = row.time + 2000000;
        const QByteArray bytes = saved(data);
        const QByteArray expected =
            littleEndian(row.seconds, 4) + littleEndian(row.milliseconds, 4);
        EXPECT_EQ(bytes.mid(332 + 12 + 12, 8).toHex(' '), expected.toHex(' ')) << row.time;
        const QByteArray later =
            littleEndian(row.seconds + quint64(2), 4) + littleEndian(row.milliseconds, 4);
        EXPECT_EQ(bytes.mid(332 + 76 + 12, 8).toHex(' '), later.toHex(' ')) << row.time;
    }
}

// ---- Texts
// ---------------------------------------------------------------------------------------

TEST_F(ErdinfoFile, aTextOf8CharactersKeepsItsFirst8Bytes)
{
    Data data;
    data.text1 = L"ABCDEFGH";
    const QByteArray bytes = saved(data);
    EXPECT_EQ(bytes.mid(20, 128).toHex(' '), (hex("4100000042000000") + zeros(120)).toHex(' '));
}

TEST_F(ErdinfoFile, aTextLongerThanItsFieldLeavesNoZeroAtItsEnd)
{
    Data data;
    data.text2 = std::wstring(40, wchar_t(0x01020304));
    const QByteArray bytes = saved(data);
    EXPECT_EQ(bytes.mid(276, 16).toHex(' '), hex("04030201").repeated(4).toHex(' '));
    EXPECT_EQ(bytes.mid(292, 32), zeros(32));
}

TEST_F(ErdinfoFile, theCountOfCharactersIsTheCountOfBytes)
{
    const struct
    {
        std::wstring Data::*text;
        int offset;
        int width;
    } fields[] = {{&Data::text1, 20, 128}, {&Data::text2, 276, 16}, {&Data::text3, 292, 32}};
    for (const auto &field : fields) {
        for (int length = 0; length <= field.width + 3; ++length) {
            Data data;
            QByteArray storage;
            for (int i = 0; i < length; ++i) {
                const auto unit = 0x11223301U + static_cast<quint32>(i) * 0x01010101U;
                data.*field.text += static_cast<wchar_t>(unit);
                storage += littleEndian(unit, 4);
            }
            const int count = qMin(length, field.width);
            QByteArray expected = s_emptyRecord;
            expected.replace(field.offset, count, storage.left(count));
            ASSERT_EQ(saved(data).toHex(' '), expected.toHex(' '))
                << "field at " << field.offset << ", " << length << " characters";
        }
    }
}

TEST_F(ErdinfoFile, zeroCharactersAreCharacters)
{
    Data data;
    data.text3 = std::wstring(L"\0B\0D\0", 5);
    EXPECT_EQ(saved(data).mid(292, 32).toHex(' '), (hex("00000000 42") + zeros(27)).toHex(' '));
}

// ---- Random records
// ------------------------------------------------------------------------------

TEST_F(ErdinfoFile, randomValuesAreWhereTheTablesSay)
{
    std::mt19937_64 random(61);
    const auto text = [&] {
        std::wstring units;
        for (std::size_t n = random() % 160; n > 0; --n)
            units += static_cast<wchar_t>(random() & 0x7fffffff);
        return units;
    };
    const auto field = [](const std::wstring &units, int width) {
        QByteArray storage;
        for (const wchar_t unit : units)
            storage += littleEndian(static_cast<quint32>(unit), 4);
        const int count = qMin(int(units.size()), width);
        return storage.left(count) + zeros(width - count);
    };
    const auto block = [](quint32 number, quint64 time, int id) {
        return littleEndian(1, 4) + littleEndian(2, 4) + littleEndian(number, 4) +
               littleEndian(time / 1000000, 4) + littleEndian(time / 1000 % 1000, 4) +
               littleEndian(static_cast<quint32>(id), 4) + littleEndian(1, 2) + zeros(2 + 36);
    };
    for (int run = 0; run < 300; ++run) {
        Data data;
        data.id1 = static_cast<int>(random());
        data.id2 = static_cast<int>(random());
        data.number1 = static_cast<unsigned int>(random());
        data.number2 = static_cast<unsigned int>(random());
        data.time1 = random() >> (random() % 64);
        data.time2 = random() >> (random() % 64);
        data.text1 = text();
        data.text2 = text();
        data.text3 = text();
        const QByteArray expected = "EvtD"_b + littleEndian(0x01080002, 4) + littleEndian(332, 4) +
                                    littleEndian(156, 4) + zeros(4) + field(data.text1, 128) +
                                    zeros(128) + field(data.text2, 16) + field(data.text3, 32) +
                                    zeros(8) + littleEndian(static_cast<quint32>(data.id1), 4) +
                                    littleEndian(static_cast<quint32>(data.id2), 4) + zeros(4) +
                                    block(data.number1, data.time1, data.id1) +
                                    block(data.number2, data.time2, data.id2) + zeros(16);
        ASSERT_EQ(expected.size(), 488);
        ASSERT_EQ(saved(data).toHex(' '), expected.toHex(' '));
    }
}

// ---- The published layout
// ------------------------------------------------------------------------

TEST(ErdinfoLayout, isThatOfTheFormat)
{
    using namespace vn::ErdinfoLayout;
    const struct
    {
        const char *name;
        qint64 value;
        qint64 expected;
    } rows[] = {
        {"record size", kRecordSize, 488},
        {"header size", kHeaderSize, 332},
        {"data size", kDataSize, 156},
        {"magic", kMagicOffset, 0},
        {"format", kFormatOffset, 4},
        {"header size field", kHeaderSizeOffset, 8},
        {"data size field", kDataSizeOffset, 12},
        {"flags", kFlagsOffset, 16},
        {"text 1", kText1Offset, 20},
        {"text 1 size", kText1Size, 128},
        {"text 2", kText2Offset, 276},
        {"text 2 size", kText2Size, 16},
        {"text 3", kText3Offset, 292},
        {"text 3 size", kText3Size, 32},
        {"data", kDataOffset, 332},
        {"id 1", kId1Offset, 332},
        {"id 2", kId2Offset, 336},
        {"block 1", kBlock1Offset, 344},
        {"block 2", kBlock2Offset, 408},
        {"block size", kBlockSize, 64},
        {"block number", kBlockNumberOffset, 8},
        {"block seconds", kBlockSecondsOffset, 12},
        {"block milliseconds", kBlockMillisecondsOffset, 16},
        {"block id", kBlockIdOffset, 20},
        {"format code", kFormat, 0x01080002},
        {"first block code", kBlockFirstCode, 1},
        {"second block code", kBlockSecondCode, 2},
        {"third block code", kBlockThirdCode, 1},
    };
    for (const auto &row : rows)
        EXPECT_EQ(row.value, row.expected) << row.name;
    EXPECT_EQ(QByteArray(kMagic, kMagicSize), "EvtD"_b);
}

// ---- Values
// --------------------------------------------------------------------------------------

TEST_F(ErdinfoFile, setDataReplacesAllValues)
{
    Data first;
    first.id1 = first.id2 = 1;
    first.number1 = first.number2 = 2;
    first.time1 = first.time2 = 3000000;
    first.text1 = first.text2 = first.text3 = L"ABCD";
    VanteroErdinfoFile file = newFile(first);
    file.setData(0, 0, 0, 0, 0, 0, std::wstring(), std::wstring(), std::wstring());
    ASSERT_TRUE(file.save());
    EXPECT_EQ(content().toHex(' '), s_emptyRecord.toHex(' '));
}

TEST_F(ErdinfoFile, saveWritesWhatWasSetLast_everyTime)
{
    VanteroErdinfoFile file = newFile();
    for (int id = 1; id <= 3; ++id) {
        file.setData(id, 0, 0, 0, 0, 0, L"", L"", L"");
        ASSERT_TRUE(file.save());
        EXPECT_EQ(content().mid(332, 4), littleEndian(quint64(id), 4));
        EXPECT_EQ(content().size(), 488);
    }
}

TEST_F(ErdinfoFile, copiesAreIndependent)
{
    VanteroErdinfoFile file = newFile();
    const VanteroErdinfoFile copy(file);
    VanteroErdinfoFile assigned(L"/nowhere/at/all");
    assigned = copy;
    file.setData(5, 5, 5, 5, 5, 5, L"ABCD", L"ABCD", L"ABCD");
    for (const VanteroErdinfoFile &other : {copy, assigned}) {
        QFile::remove(m_path);
        ASSERT_TRUE(other.save());
        EXPECT_EQ(content().toHex(' '), s_emptyRecord.toHex(' '));
    }
}

// ---- Files
// ---------------------------------------------------------------------------------------

TEST_F(ErdinfoFile, longerFileKeepsItsLengthAndRest)
{
    QByteArray before;
    for (int i = 0; i < 1000; ++i)
        before += static_cast<char>(i * 7 + 1);
    write(before);
    ASSERT_TRUE(newFile().save());
    EXPECT_EQ(content().toHex(' '), (s_emptyRecord + before.mid(488)).toHex(' '));
}

TEST_F(ErdinfoFile, shorterFileGrows)
{
    write(QByteArray(100, 'x'));
    ASSERT_TRUE(newFile().save());
    EXPECT_EQ(content().toHex(' '), s_emptyRecord.toHex(' '));
}

TEST_F(ErdinfoFile, pathMayHoldAnyCharacter)
{
    m_path = m_folder.filePath("Aufnahme \u00e9\u4e09\U0001f3a5 .erdinfo"_q);
    ASSERT_TRUE(newFile().save());
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files),
              QStringList(QFileInfo(m_path).fileName()));
    EXPECT_EQ(content().size(), 488);
}

TEST_F(ErdinfoFile, colonsMayBePartOfANameOrOfASearchPath)
{
    m_path = m_folder.filePath("10:30 gate.erdinfo"_q);
    ASSERT_TRUE(newFile().save());
    EXPECT_EQ(content().toHex(' '), s_emptyRecord.toHex(' '));

    QDir::setSearchPaths("records"_q, {m_folder.path()});
    m_path = m_folder.filePath("17.erdinfo"_q);
    write("short");
    m_path = "records:17.erdinfo"_q;
    EXPECT_TRUE(newFile().save());
    QDir::setSearchPaths("records"_q, {});
    m_path = m_folder.filePath("17.erdinfo"_q);
    EXPECT_EQ(content().toHex(' '), s_emptyRecord.toHex(' '));

    m_path = ":/17.erdinfo"_q; // a resource of Qt
    EXPECT_FALSE(newFile().save());
}

TEST_F(ErdinfoFile, emptyPathIsRefused_andCreatesNothing)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_folder.path()));
    EXPECT_FALSE(VanteroErdinfoFile(std::wstring()).save());
    EXPECT_TRUE(QDir::setCurrent(before));
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty());
}

TEST_F(ErdinfoFile, missingFolderIsRefused_andNotCreated)
{
    m_path = m_folder.filePath("none/17.erdinfo"_q);
    EXPECT_FALSE(newFile().save());
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty());
}

TEST_F(ErdinfoFile, folderIsRefused)
{
    m_path = m_folder.path();
    EXPECT_FALSE(newFile().save());
}

TEST_F(ErdinfoFile, runningProgramIsRefused)
{
    m_path = "/proc/self/exe"_q; // not even root may open it for writing
    EXPECT_FALSE(newFile().save());
}

/** Runs @p check as a user without rights and exits with its result. */
template <typename Check>
[[noreturn]] void exitWithoutRights(Check &&check)
{
    if (::geteuid() == 0 && ::setuid(65534) != 0)
        std::_Exit(99);
    std::_Exit(check() ? 0 : 1);
}

TEST_F(ErdinfoFile, fileThatMayOnlyBeReadIsRefused_andStaysAsItIs)
{
    write("as it was"_b);
    ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(m_path).constData(), 0444), 0);
    EXPECT_EXIT(exitWithoutRights([&] { return !newFile().save(); }), testing::ExitedWithCode(0),
                "");
    EXPECT_EQ(content(), "as it was"_b);
}

TEST_F(ErdinfoFile, fileThatMayOnlyBeWrittenIsRefused)
{
    write("as it was"_b);
    ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(m_path).constData(), 0222), 0);
    EXPECT_EXIT(exitWithoutRights([&] { return !newFile().save(); }), testing::ExitedWithCode(0),
                "");
    ASSERT_EQ(::chmod(QFile::encodeName(m_path).constData(), 0644), 0);
    EXPECT_EQ(content(), "as it was"_b);
}

TEST_F(ErdinfoFile, folderThatMayNotBeWrittenIsRefused)
{
    ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0555), 0);
    EXPECT_EXIT(exitWithoutRights([&] { return !newFile().save(); }), testing::ExitedWithCode(0),
                "");
    EXPECT_FALSE(QFile::exists(m_path));
}

TEST_F(ErdinfoFile, failedWriteIsNotReported)
{
    m_path = "/dev/full"_q;
    EXPECT_TRUE(newFile().save());
}

TEST_F(ErdinfoFile, shortWriteIsNotReported)
{
    const auto saveWithLittleRoom = [&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100, 100};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
            std::_Exit(99);
        std::_Exit(newFile().save() ? 0 : 1);
    };
    EXPECT_EXIT(saveWithLittleRoom(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(content().toHex(' '), s_emptyRecord.left(100).toHex(' '));
}

/** The number of write calls of this process so far; -1 where the system does not count them. */
[[maybe_unused]] qint64 writeCalls()
{
    std::ifstream counters("/proc/self/io");
    std::string name;
    qint64 value = 0;
    while (counters >> name >> value) {
        if (name == "syscw:")
            return value;
    }
    return -1;
}

#ifndef __SANITIZE_ADDRESS__ // the sanitizer's own calls would be counted, too
TEST_F(ErdinfoFile, recordIsWrittenAtOnce)
{
    if (writeCalls() < 0)
        GTEST_SKIP() << "this system does not count calls";
    const VanteroErdinfoFile file = newFile();
    const qint64 before = writeCalls();
    const bool ok = file.save();
    const qint64 after = writeCalls();
    EXPECT_TRUE(ok);
    EXPECT_EQ(after - before, 1);
}
#endif

TEST_F(ErdinfoFile, fileIsClosedAfterwards)
{
    const int before = ::dup(0);
    ::close(before);
    ASSERT_TRUE(newFile().save());
    const int after = ::dup(0);
    ::close(after);
    EXPECT_EQ(after, before);
}

} // namespace
