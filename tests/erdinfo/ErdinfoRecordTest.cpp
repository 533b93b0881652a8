// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Records as values: bytes, what is wrong with them, files.

#include "erdinfo/ErdinfoFields.h"
#include "erdinfo/ErdinfoLayout.h"
#include "erdinfo/VanteroErdinfoFile.h"

#include "base/Exceptions.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>

#include <gtest/gtest.h>

#include <random>

using namespace vn;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

/** A record with a value in every field. */
ErdinfoRecord fullRecord()
{
    ErdinfoRecord record;
    record.flags = 0;
    record.text1 = U"south gate";
    record.text2 = U"K40";
    record.text3 = U"m\u00f6t \U0001f3a5";
    record.id1 = 7;
    record.id2 = -1;
    record.number1 = 25;
    record.time1 = {1700000000, 250};
    record.number2 = 4294967295U;
    record.time2 = {1700000012, 0};
    return record;
}

QByteArray with(int offset, const QByteArray &bytes)
{
    return fullRecord().toBytes().replace(offset, bytes.size(), bytes);
}

// ---- The table of fields -----------------------------------------------------------------------

TEST(ErdinfoFields, haveThePlacesOfTheFormat)
{
    const struct
    {
        const char *name;
        int offset;
        int size;
    } rows[] = {
        {"magic", 0, 4},
        {"format", 4, 4},
        {"header_size", 8, 4},
        {"data_size", 12, 4},
        {"flags", 16, 4},
        {"text1", 20, 128},
        {"reserved1", 148, 128},
        {"text2", 276, 16},
        {"text3", 292, 32},
        {"reserved2", 324, 8},
        {"id1", 332 + 0, 4},
        {"id2", 332 + 4, 4},
        {"reserved3", 332 + 8, 4},
        {"block1_code1", 332 + 12 + 0, 4},
        {"block1_code2", 332 + 12 + 4, 4},
        {"number1", 332 + 12 + 8, 4},
        {"time1", 332 + 12 + 12, 8},
        {"block1_id", 332 + 12 + 20, 4},
        {"block1_code3", 332 + 12 + 24, 2},
        {"block1_reserved", 332 + 12 + 26, 38},
        {"block2_code1", 332 + 76 + 0, 4},
        {"block2_code2", 332 + 76 + 4, 4},
        {"number2", 332 + 76 + 8, 4},
        {"time2", 332 + 76 + 12, 8},
        {"block2_id", 332 + 76 + 20, 4},
        {"block2_code3", 332 + 76 + 24, 2},
        {"block2_reserved", 332 + 76 + 26, 38},
        {"reserved4", 332 + 140, 16},
    };
    ASSERT_EQ(std::size(rows), std::size(kErdinfoFields));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_STREQ(kErdinfoFields[i].name, rows[i].name);
        EXPECT_EQ(kErdinfoFields[i].offset, rows[i].offset) << rows[i].name;
        EXPECT_EQ(kErdinfoFields[i].size, rows[i].size) << rows[i].name;
        EXPECT_EQ(erdinfoFieldAt(rows[i].offset), &kErdinfoFields[i]);
        EXPECT_EQ(erdinfoFieldAt(rows[i].offset + rows[i].size - 1), &kErdinfoFields[i]);
    }
    EXPECT_EQ(erdinfoFieldAt(488), nullptr);
    EXPECT_EQ(erdinfoFieldAt(-1), nullptr);
}

// ---- Bytes -------------------------------------------------------------------------------------

TEST(ErdinfoRecord, newRecordIsThatOfANewHolder)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("new"_q);
    ASSERT_TRUE(VanteroErdinfoFile(path.toStdWString()).save());
    EXPECT_EQ(ErdinfoRecord().toBytes().toHex(' '), readFile(path).toHex(' '));
}

TEST(ErdinfoRecord, valuesStandWhereTheFormatHasThem)
{
    const QByteArray bytes = fullRecord().toBytes();
    ASSERT_EQ(bytes.size(), 488);
    const struct
    {
        int offset;
        const char *bytes;
    } rows[] = {
        {0, "45767444 02000801 4c010000 9c000000 00000000"},
        {20, "73000000 6f000000 75000000 74000000 68000000 20000000 67000000 61000000 74000000 "
             "65000000 00000000"},
        {276, "4b000000 34000000 30000000 00000000"},
        {292, "6d000000 f6000000 74000000 20000000 a5f30100 00000000"},
        {332, "07000000 ffffffff 00000000"},
        {344, "01000000 02000000 19000000 00f15365 fa000000 07000000 0100 0000"},
        {408, "01000000 02000000 ffffffff 0cf15365 00000000 ffffffff 0100 0000"},
    };
    for (const auto &row : rows) {
        const QByteArray expected = hex(row.bytes);
        EXPECT_EQ(bytes.mid(row.offset, expected.size()).toHex(' '), expected.toHex(' '))
            << row.offset;
    }
}

TEST(ErdinfoRecord, bytesAreReadAsTheyWereWritten)
{
    Findings findings;
    EXPECT_TRUE(ErdinfoRecord::fromBytes(fullRecord().toBytes(), &findings) == fullRecord());
    EXPECT_TRUE(findings.isEmpty());
    // What stands behind the record is not looked at.
    EXPECT_TRUE(ErdinfoRecord::fromBytes(fullRecord().toBytes() + "rest", &findings) ==
                fullRecord());
    EXPECT_TRUE(findings.isEmpty());
}

TEST(ErdinfoRecord, eachValueMakesADifference)
{
    const ErdinfoRecord full = fullRecord();
    for (const ErdinfoField &field : kErdinfoFields) {
        if (field.role != ErdinfoField::Role::Value && field.role != ErdinfoField::Role::Flags)
            continue;
        const QByteArray other = full.toBytes().replace(field.offset, 1, "\x55");
        EXPECT_TRUE(ErdinfoRecord::fromBytes(other) != full) << field.name;
        EXPECT_FALSE(ErdinfoRecord::fromBytes(other) == full) << field.name;
    }
}

TEST(ErdinfoRecord, anyBytesComeBack_butForWhatIsReserved)
{
    std::mt19937 random(62);
    for (int run = 0; run < 300; ++run) {
        QByteArray bytes(488, '\0');
        for (char &byte : bytes)
            byte = char(random() % 3 == 0 ? 0 : random());
        const ErdinfoRecord record = ErdinfoRecord::fromBytes(bytes);
        const QByteArray again = record.toBytes();
        EXPECT_TRUE(ErdinfoRecord::fromBytes(again) == record);
        for (const ErdinfoField &field : kErdinfoFields) {
            if (field.role != ErdinfoField::Role::Value && field.role != ErdinfoField::Role::Flags)
                continue;
            ASSERT_EQ(again.mid(field.offset, field.size).toHex(' '),
                      bytes.mid(field.offset, field.size).toHex(' '))
                << field.name;
        }
    }
}

TEST(ErdinfoRecord, textTooLongForItsFieldIsCut)
{
    ErdinfoRecord record;
    record.text2 = U"ABCDEF";
    const QByteArray bytes = record.toBytes();
    EXPECT_EQ(bytes.mid(276, 20).toHex(' '),
              hex("41000000 42000000 43000000 44000000 00000000").toHex(' '));
}

// ---- Texts and times ---------------------------------------------------------------------------

TEST(ErdinfoRecord, textIsSetToWhatTheFormatKeeps)
{
    const struct
    {
        std::wstring text;
        std::u32string kept;
    } rows[] = {
        {L"", U""},
        {L"A", U"A"},
        {L"ABCD", U"A"},
        {L"ABCDE", U"AB"},
        {L"ABCDEFGH", U"AB"},
        {L"ABCDEFGHIJKLMNO", U"ABCD"},
        {L"ABCDEFGHIJKLMNOPQRSTUVWXYZ", U"ABCD"},
        {std::wstring(1, wchar_t(0x01020304)), std::u32string(1, char32_t(0x04))},
        {std::wstring(2, wchar_t(0x01020304)), std::u32string(1, char32_t(0x0304))},
        {std::wstring(3, wchar_t(0x01020304)), std::u32string(1, char32_t(0x020304))},
        {std::wstring(4, wchar_t(0x01020304)), std::u32string(1, char32_t(0x01020304))},
        {std::wstring(L"\0B\0D\0", 5), std::u32string(U"\0B", 2)},
        {std::wstring(L"A\0C\0E", 5), std::u32string(U"A", 1)},
    };
    for (const auto &row : rows) {
        ErdinfoRecord record;
        record.text2 = U"before";
        record.setText(&ErdinfoRecord::text2, row.text);
        EXPECT_TRUE(record.text2 == row.kept) << row.text.size();
        EXPECT_TRUE(ErdinfoRecord::fromBytes(record.toBytes()) == record) << row.text.size();
    }
}

TEST(ErdinfoRecord, eachTextHasTheSizeOfItsField)
{
    ErdinfoRecord record;
    record.setText(&ErdinfoRecord::text1, std::wstring(1000, L'x'));
    record.setText(&ErdinfoRecord::text2, std::wstring(1000, L'y'));
    record.setText(&ErdinfoRecord::text3, std::wstring(1000, L'z'));
    EXPECT_TRUE(record.text1 == std::u32string(32, U'x'));
    EXPECT_TRUE(record.text2 == std::u32string(4, U'y'));
    EXPECT_TRUE(record.text3 == std::u32string(8, U'z'));
}

TEST(ErdinfoRecord, textIsShownWithAMarkForWhatIsNoCharacter)
{
    EXPECT_EQ(ErdinfoRecord::toString(U""), ""_q);
    EXPECT_EQ(ErdinfoRecord::toString(U"A\u00e9\U0001f3a5"), "A\u00e9\U0001f3a5"_q);
    EXPECT_EQ(ErdinfoRecord::toString(std::u32string(U"A\0B", 3)), QString::fromLatin1("A\0B", 3));
    EXPECT_EQ(ErdinfoRecord::toString({0x10FFFF, 0x110000, 0xFFFFFFFF, 0xD800, 0xDFFF}),
              "\U0010ffff\ufffd\ufffd\ufffd\ufffd"_q);
}

TEST(ErdinfoTime, isSecondsAndMillisecondsOfMicroseconds)
{
    const struct
    {
        quint64 microseconds;
        ErdinfoTime time;
        const char *date;
    } rows[] = {
        {0, {0, 0}, "1970-01-01T00:00:00.000Z"},
        {999, {0, 0}, "1970-01-01T00:00:00.000Z"},
        {1000, {0, 1}, "1970-01-01T00:00:00.001Z"},
        {1234567890, {1234, 567}, "1970-01-01T00:20:34.567Z"},
        {1700000000250000, {1700000000, 250}, "2023-11-14T22:13:20.250Z"},
        {4294967295ULL * 1000000 + 999999, {4294967295, 999}, "2106-02-07T06:28:15.999Z"},
        {4294967296ULL * 1000000 + 5000000, {5, 0}, "1970-01-01T00:00:05.000Z"},
    };
    for (const auto &row : rows) {
        const ErdinfoTime time = ErdinfoTime::fromMicroseconds(row.microseconds);
        EXPECT_TRUE(time == row.time) << row.microseconds;
        EXPECT_FALSE(time != row.time) << row.microseconds;
        EXPECT_EQ(time.toDateTime().toString(Qt::ISODateWithMs), QString::fromLatin1(row.date));
    }
    EXPECT_TRUE((ErdinfoTime{1, 2} != ErdinfoTime{1, 3}));
    EXPECT_TRUE((ErdinfoTime{1, 2} != ErdinfoTime{2, 2}));
    EXPECT_EQ((ErdinfoTime{1, 1500}).toDateTime().toMSecsSinceEpoch(), 2500);
}

// ---- Findings ----------------------------------------------------------------------------------

struct FindingRow
{
    const char *name;
    QByteArray bytes;
    Finding::Severity severity;
    const char *code;
    const char *message;
    int offset;
    int length;
    const char *field; // null where there is none
};

void PrintTo(const FindingRow &row, std::ostream *out)
{
    *out << row.name;
}

class ErdinfoFindings : public testing::TestWithParam<FindingRow>
{
};

TEST_P(ErdinfoFindings, are)
{
    const FindingRow &row = GetParam();
    Findings findings;
    (void)ErdinfoRecord::fromBytes(row.bytes, &findings);
    ASSERT_EQ(findings.size(), 1);
    const Finding expected{
        row.severity,
        QString::fromLatin1(row.code),
        QString::fromUtf8(row.message),
        {1, row.offset + 1, 1, row.offset + row.length + 1, row.offset, row.length}};
    EXPECT_TRUE(findings.first() == expected)
        << findings.first().message.toStdString() << " at " << findings.first().range.offset
        << ", length " << findings.first().range.length;
    const ErdinfoField *const field = erdinfoFieldAt(row.offset);
    EXPECT_STREQ(field ? field->name : nullptr, row.field);
}

constexpr auto s_error = Finding::Severity::Error;
constexpr auto s_warning = Finding::Severity::Warning;

// clang-format off
const FindingRow s_findingRows[] = {
    {"nothingAtAll", QByteArray(), s_error, "record-too-short", "too short: 0 bytes, a record has 488", 0, 0, "magic"},
    {"oneByteTooFew", fullRecord().toBytes().left(487), s_error, "record-too-short", "too short: 487 bytes, a record has 488", 487, 0, "reserved4"},
    {"otherMagic", with(0, "EvtX"), s_error, "record-constant", "the magic is 45 76 74 58, not 45 76 74 44 (\"EvtD\")", 0, 4, "magic"},
    {"otherFormat", with(4, hex("03000801")), s_error, "record-constant", "the format code is 0x1080003, not 0x1080002", 4, 4, "format"},
    {"otherHeaderSize", with(8, hex("4d010000")), s_error, "record-constant", "the size of the header record is 333, not 332", 8, 4, "header_size"},
    {"otherDataSize", with(12, hex("00000080")), s_error, "record-constant", "the size of the data record is 2147483648, not 156", 12, 4, "data_size"},
    {"flags", with(16, hex("0201")), s_warning, "record-flags", "the flags are 0x102, not 0", 16, 4, "flags"},
    {"otherBlockCode", with(344, hex("02")), s_error, "record-constant", "the block's first code is 2, not 1", 344, 4, "block1_code1"},
    {"otherShortCode", with(432, hex("0001")), s_error, "record-constant", "the block's third code is 256, not 1", 432, 2, "block2_code3"},
    {"aSecondOfMilliseconds", with(360, hex("e8030000")), s_error, "record-milliseconds", "1000 milliseconds are more than a second has", 360, 4, "time1"},
    {"largestMilliseconds", with(424, hex("ffffffff")), s_error, "record-milliseconds", "4294967295 milliseconds are more than a second has", 424, 4, "time2"},
    {"otherCopy", with(364, hex("08")), s_error, "record-copy", "the number that the block repeats is 8, not 7", 364, 4, "block1_id"},
    {"negativeCopy", with(428, hex("feffffff")), s_error, "record-copy", "the number that the block repeats is -2, not -1", 428, 4, "block2_id"},
    {"reservedByte", with(148, "\1"), s_warning, "record-reserved", "a reserved byte is not 0", 148, 1, "reserved1"},
    {"reservedBytes", with(400, hex("01000001")), s_warning, "record-reserved", "a reserved byte is not 0", 400, 4, "block1_reserved"},
    {"lastByte", with(487, "\xff"), s_warning, "record-reserved", "a reserved byte is not 0", 487, 1, "reserved4"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(ErdinfoRecord, ErdinfoFindings, testing::ValuesIn(s_findingRows),
                         nameOfRow);

TEST(ErdinfoRecord, findingsStandInTheOrderOfTheirOffsets_behindThoseThatAreThere)
{
    Findings findings = {Finding()};
    (void)ErdinfoRecord::fromBytes(QByteArray(488, '\1'), &findings);
    EXPECT_TRUE(findings.takeFirst() == Finding());
    ASSERT_EQ(findings.size(), 19);
    for (int i = 1; i < findings.size(); ++i)
        EXPECT_LT(findings.at(i - 1).range.offset, findings.at(i).range.offset);
}

TEST(ErdinfoRecord, valuesAreReadWhateverIsWrong)
{
    const ErdinfoRecord record = ErdinfoRecord::fromBytes(with(0, "none"));
    EXPECT_TRUE(record == fullRecord());
    EXPECT_TRUE(ErdinfoRecord::fromBytes(fullRecord().toBytes().left(400)) == ErdinfoRecord());
}

// ---- Files -------------------------------------------------------------------------------------

class ErdinfoRecordFile : public testing::Test
{
protected:
    void write(const QByteArray &bytes) const { writeFile(m_path, bytes); }
    QByteArray content() const { return readFile(m_path); }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("17.erdinfo"_q);
};

TEST_F(ErdinfoRecordFile, isLoadedAsItWasSaved)
{
    fullRecord().save(m_path);
    EXPECT_EQ(content().toHex(' '), fullRecord().toBytes().toHex(' '));
    EXPECT_TRUE(ErdinfoRecord::load(m_path) == fullRecord());
}

TEST_F(ErdinfoRecordFile, bytesBehindTheRecordStay)
{
    write(QByteArray(1000, 'x'));
    fullRecord().save(m_path);
    EXPECT_EQ(content(), fullRecord().toBytes() + QByteArray(512, 'x'));
    EXPECT_TRUE(ErdinfoRecord::load(m_path) == fullRecord());
}

TEST_F(ErdinfoRecordFile, changedRecordKeepsItsTexts)
{
    VanteroErdinfoFile file(m_path.toStdWString());
    file.setData(1, 2, 3, 4, 5000, 6000, L"a text of the first field", L"ABCDEFGHIJ", L"motion");
    ASSERT_TRUE(file.save());
    const QByteArray before = content();
    for (int run = 0; run < 3; ++run) {
        ErdinfoRecord record = ErdinfoRecord::load(m_path);
        record.number1 = 99;
        record.save(m_path);
    }
    EXPECT_EQ(content().toHex(' '), QByteArray(before).replace(352, 1, "\x63").toHex(' '));
}

TEST_F(ErdinfoRecordFile, whatCannotBeOpenedIsToldByName)
{
    const QString missing = m_folder.filePath("none/17.erdinfo"_q);
    const QString message = missing + ": No such file or directory"_q;
    expectThrows<FileException>([&] { (void)ErdinfoRecord::load(missing); }, message);
    expectThrows<FileException>([&] { fullRecord().save(missing); }, message);
    expectThrows<FileException>([&] { fullRecord().save(m_folder.path()); },
                                m_folder.path() + ": Is a directory"_q);
}

TEST_F(ErdinfoRecordFile, failedWriteIsTold)
{
    expectThrows<FileException>([] { fullRecord().save("/dev/full"_q); },
                                "/dev/full: No space left on device"_q);
}

TEST_F(ErdinfoRecordFile, brokenRecordIsNotLoaded)
{
    write(with(364, hex("08")));
    expectParseError([&] { (void)ErdinfoRecord::load(m_path); },
                     m_path + ": the number that the block repeats is 8, not 7"_q, 0, 364, 368);
    write("short");
    EXPECT_THROW((void)ErdinfoRecord::load(m_path), ParseException);
}

TEST_F(ErdinfoRecordFile, warningsDoNotKeepItFromBeingLoaded)
{
    write(with(148, "\1"));
    EXPECT_TRUE(ErdinfoRecord::load(m_path) == fullRecord());
}

} // namespace
