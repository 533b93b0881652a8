// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The commands "erdinfo write" and "erdinfo show".

#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using testing::HasSubstr;

const std::string kExample = VANTERO_EXAMPLE_DATA "/gate-motion.erdinfo";

class ErdinfoCommand : public testing::Test
{
protected:
    void write(const QByteArray &bytes) const { writeFile(m_name, bytes); }
    QByteArray content() const { return readFile(m_name); }

    ToolResult writeRecord(std::vector<std::string> options) const
    {
        options.insert(options.begin(), {"erdinfo", "write", m_path});
        return runTool(options);
    }

    ToolResult show() const { return runTool({"erdinfo", "show", m_path}); }
    QJsonObject showJson() const { return runTool({"erdinfo", "show", m_path, "--json"}).json(); }

    /** A record in which @p bytes stand at @p offset. */
    QByteArray recordWith(int offset, const QByteArray &bytes) const
    {
        EXPECT_EQ(writeRecord({"--id1", "7", "--id2", "-1"}).exitCode, 0);
        return content().replace(offset, bytes.size(), bytes);
    }

    /** Expects that what stands at @p offset makes the record a broken one, and why. */
    void expectFault(int offset, const QByteArray &bytes, const QByteArray &message) const
    {
        write(recordWith(offset, bytes));
        const ToolResult result = show();
        EXPECT_EQ(result.exitCode, 1) << message.constData();
        EXPECT_EQ(result.err,
                  "vantero-formats: " + QByteArray::fromStdString(m_path) + ": " + message + '\n');
        EXPECT_TRUE(result.out.startsWith("id1 ")) << result.out.constData();
        const QJsonObject value = showJson();
        EXPECT_EQ(value.value("valid"_q), QJsonValue(false));
        EXPECT_EQ(value.value("faults"_q), QJsonArray({QString::fromUtf8(message)}));
    }

    QTemporaryDir m_folder;
    const QString m_name = m_folder.filePath("event.erdinfo"_q);
    const std::string m_path = m_name.toStdString();
};

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// ---- show
// ----------------------------------------------------------------------------------------

TEST_F(ErdinfoCommand, readsStandardInput)
{
    ASSERT_EQ(writeRecord({"--id1", "-5"}).exitCode, 0);
    const ToolResult result = runTool({"erdinfo", "show", "-"}, content());
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.startsWith("id1      -5\n"));
}

TEST_F(ErdinfoCommand, aShortFileIsNoRecord)
{
    ASSERT_EQ(writeRecord({}).exitCode, 0);
    for (const int size : {0, 1, 4, 331, 332, 487}) {
        expectRun(runTool({"erdinfo", "show", "-"}, content().left(size)), 1, "",
                  "vantero-formats: -: too short: " + QByteArray::number(size) +
                      " bytes, a record has 488\n");
    }
    const QJsonObject error = runTool({"erdinfo", "show", "-", "--json"}, "x").json();
    EXPECT_EQ(error.value("error"_q).toObject().value("exitCode"_q), QJsonValue(1));
}

TEST_F(ErdinfoCommand, aMissingFileIsBadInput)
{
    expectRun(show(), 2, "",
              "vantero-formats: " + QByteArray::fromStdString(m_path) +
                  ": No such file or directory\n");
}

TEST_F(ErdinfoCommand, eachWrongFieldIsTold)
{
    expectFault(0, "EvtX", "offset 0: the magic is 45 76 74 58, not 45 76 74 44 (\"EvtD\")");
    expectFault(4, hex("03000801"), "offset 4: the format code is 0x1080003, not 0x1080002");
    expectFault(8, hex("4d010000"), "offset 8: the size of the header record is 333, not 332");
    expectFault(12, hex("00000080"),
                "offset 12: the size of the data record is 2147483648, not 156");
    expectFault(344, hex("02"), "offset 344: the block's first code is 2, not 1");
    expectFault(348, hex("01"), "offset 348: the block's second code is 1, not 2");
    expectFault(360, hex("e8030000"), "offset 360: 1000 milliseconds are more than a second has");
    expectFault(364, hex("08"), "offset 364: the number that the block repeats is 8, not 7");
    expectFault(368, hex("0000"), "offset 368: the block's third code is 0, not 1");
    expectFault(408, hex("00"), "offset 408: the block's first code is 0, not 1");
    expectFault(412, hex("00"), "offset 412: the block's second code is 0, not 2");
    expectFault(424, hex("ffffffff"),
                "offset 424: 4294967295 milliseconds are more than a second has");
    expectFault(428, hex("00000000"), "offset 428: the number that the block repeats is 0, not -1");
    expectFault(432, hex("0001"), "offset 432: the block's third code is 256, not 1");
}

TEST_F(ErdinfoCommand, everyFaultIsTold)
{
    write(QByteArray(488, '\0'));
    const ToolResult result = show();
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err.count('\n'), 10);
    EXPECT_EQ(showJson().value("faults"_q).toArray().size(), 10);
    const QJsonArray findings = showJson().value("findings"_q).toArray();
    EXPECT_EQ(findings.size(), 10);
    EXPECT_EQ(findings.at(1).toObject(),
              QJsonObject({{"severity"_q, "error"_q},
                           {"code"_q, "record-constant"_q},
                           {"offset"_q, 4},
                           {"length"_q, 4},
                           {"field"_q, "format"_q},
                           {"message"_q, "the format code is 0x0, not 0x1080002"_q}}));
}

TEST_F(ErdinfoCommand, whatIsReservedDrawsAWarning)
{
    for (const int offset : {148, 275, 324, 331, 340, 343, 370, 372, 407, 434, 471, 472, 487}) {
        write(recordWith(offset, "\1"));
        const ToolResult result = show();
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, "vantero-formats: " + QByteArray::fromStdString(m_path) +
                                  ": warning: offset " + QByteArray::number(offset) +
                                  ": a reserved byte is not 0\n");
    }
    write(recordWith(16, hex("0201")));
    EXPECT_EQ(show().err, "vantero-formats: " + QByteArray::fromStdString(m_path) +
                              ": warning: offset 16: the flags are 0x102, not 0\n");
    EXPECT_EQ(showJson().value("flags"_q), QJsonValue(0x102));
}

TEST_F(ErdinfoCommand, textsAreShownAsFarAsTheyGo)
{
    const struct
    {
        const char *bytes;
        QString text;
    } rows[] = {
        {"", ""_q},
        {"41000000 e9000000", "Aé"_q},
        {"a5f30100", "\U0001f3a5"_q},
        {"41000000 00000000 42000000", "A\0B"_q},
        {"ffffffff 41000000 00d80000", "\ufffdA\ufffd"_q},
    };
    for (const auto &row : rows) {
        write(recordWith(276, hex(row.bytes)));
        EXPECT_EQ(showJson().value("text2"_q).toString(), row.text) << row.bytes;
    }
}

// ---- layout
// --------------------------------------------------------------------------------------

TEST_F(ErdinfoCommand, layoutHasALineAField)
{
    const ToolResult result = runTool({"erdinfo", "layout"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.count('\n'), 28);
    EXPECT_TRUE(result.out.startsWith("  0    4  magic     magic            magic: 0x44747645\n"))
        << result.out.constData();
    EXPECT_THAT(result.out.toStdString(),
                HasSubstr("\n356    8  time      time1            first time\n"));
    const QJsonArray fields =
        runTool({"erdinfo", "layout", "--json"}).json().value("fields"_q).toArray();
    ASSERT_EQ(fields.size(), 28);
    EXPECT_EQ(fields.at(17).toObject(), QJsonObject({{"offset"_q, 364},
                                                     {"size"_q, 4},
                                                     {"type"_q, "i32"_q},
                                                     {"name"_q, "block1_id"_q},
                                                     {"role"_q, "copy"_q},
                                                     {"what"_q, "number that the block repeats"_q},
                                                     {"copyOf"_q, "id1"_q},
                                                     {"constant"_q, QJsonValue::Null}}));
}

// ---- write
// ---------------------------------------------------------------------------------------

TEST_F(ErdinfoCommand, writesWhatItIsGiven)
{
    expectRun(writeRecord({"--id1", "-2147483648", "--id2", "2147483647", "--number1", "4294967295",
                           "--number2", "0x10", "--time1", "1234567890", "--time2",
                           "4294967296005000", "--text1", "A", "--text2", "B", "--text3", ""}),
              0, "", "");
    EXPECT_EQ(content().size(), 488);
    expectRun(show(), 0,
              "id1      -2147483648\nid2      2147483647\nnumber1  4294967295\nnumber2  16\n"
              "time1    1234.567 s (1970-01-01 00:20:34.567 UTC)\n"
              "time2    0.005 s (1970-01-01 00:00:00.005 UTC)\ntext1    A\ntext2    B\ntext3\n",
              "");
}

TEST_F(ErdinfoCommand, writesTheBytesOfTheLibrary)
{
    ASSERT_EQ(writeRecord({}).exitCode, 0);
    const QByteArray block =
        hex("01000000 02000000") + QByteArray(16, '\0') + hex("01000000") + QByteArray(36, '\0');
    EXPECT_EQ(content().toHex(' '), (hex("45767444 02000801 4c010000 9c000000") +
                                     QByteArray(328, '\0') + block + block + QByteArray(16, '\0'))
                                        .toHex(' '));
}

TEST_F(ErdinfoCommand, tellsWhatTheFormatLeavesOutOfAText)
{
    expectRun(writeRecord({"--text1", "entrance", "--text3", "K"}), 0, "",
              "vantero-formats: " + QByteArray::fromStdString(m_path) +
                  ": warning: the format keeps only \"en\" of text1\n");
    const QJsonObject value = writeRecord({"--text2", "\u00e9t\u00e9", "--json"}).json();
    EXPECT_EQ(value.value("warnings"_q), QJsonArray({"the format keeps only \"é\" of text2"_q}));
}

TEST_F(ErdinfoCommand, keepsTheBytesBehindTheRecord_andTheMode)
{
    QByteArray before;
    for (int i = 0; i < 1000; ++i)
        before += static_cast<char>(i * 3 + 1);
    write(before);
    ASSERT_EQ(::chmod(m_path.c_str(), 0640), 0);
    const ToolResult result = writeRecord({"--id1", "1", "--json"});
    EXPECT_EQ(result.json().value("bytesKept"_q), QJsonValue(512));
    EXPECT_EQ(content().size(), 1000);
    EXPECT_EQ(content().mid(488), before.mid(488));
    EXPECT_EQ(content().mid(332, 4), hex("01000000"));
    EXPECT_EQ(showJson().value("bytesBehindRecord"_q), QJsonValue(512));
    struct stat status = {};
    ASSERT_EQ(::stat(m_path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
    EXPECT_EQ(
        QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList("event.erdinfo"_q));
}

TEST_F(ErdinfoCommand, replacesTheFileAsAWhole)
{
    write("short");
    const std::string other = m_path + ".link";
    ASSERT_EQ(::link(m_path.c_str(), other.c_str()), 0);
    ASSERT_EQ(writeRecord({}).exitCode, 0);
    EXPECT_EQ(content().size(), 488);
    EXPECT_EQ(readFile(other), "short"); // the old file was not written to
}

TEST_F(ErdinfoCommand, failuresAreTold_andChangeNothing)
{
    EXPECT_EQ(writeRecord({"--id1", "2147483648"}).exitCode, 2);
    EXPECT_EQ(writeRecord({"--id1", "-2147483649"}).exitCode, 2);
    EXPECT_EQ(writeRecord({"--number1", "-1"}).exitCode, 2);
    EXPECT_EQ(writeRecord({"--number1", "4294967296"}).exitCode, 2);
    EXPECT_EQ(writeRecord({"--time1", "-1"}).exitCode, 2);
    EXPECT_EQ(writeRecord({"--time1", "soon"}).exitCode, 2);
    EXPECT_FALSE(QFileInfo::exists(m_name));

    const ToolResult missing = runTool({"erdinfo", "write", m_path + "/none/x"});
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_EQ(missing.err, "vantero-formats: " + QByteArray::fromStdString(m_path) +
                               "/none/x: No such file or directory\n");
    EXPECT_EQ(runTool({"erdinfo", "write", m_folder.path().toStdString()}).exitCode, 3);
    expectRun(runTool({"erdinfo", "write", "/dev/full"}), 3, "",
              "vantero-formats: /dev/full: No space left on device\n");
    expectRun(runTool({"erdinfo", "write", "-"}), 2, "",
              "vantero-formats: a record is written to a file, not to standard output\n");
}

} // namespace
