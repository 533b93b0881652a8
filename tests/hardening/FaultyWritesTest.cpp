// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Every call by which a command of the tool changes files goes wrong once: it fails, it writes too
// little, or the process is killed there. What the command writes is the old or the new.

#include "base/ZipReader.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

namespace {

constexpr int kNoFault = 77; // exit status where fewer calls were made

const QByteArray kConfig =
    "#:1.3=\n#:VN-3\n# Camera IP: 10.0.0.1\n\nSECTION a\nk=old\nENDSECTION a\n"
    "\nSECTION b\nk=1\nENDSECTION b\n";
const QByteArray kOther =
    "#:1.3=\n#:VN-3\n# Camera IP: 10.0.0.2\n\nSECTION a\nk=other\nENDSECTION a\n";
const QByteArray kRecord = QByteArray(500, 'r'); // longer than what is written

struct Row
{
    const char *name;
    std::vector<std::string> arguments;
    const char *target; // what is written
};

// The working folder holds a.cfg, b.cfg, old.cfg and record.
const Row kRows[] = {
    {"setInPlace", {"config", "set", "--in-place", "a.cfg", "a", "k", "new"}, "a.cfg"},
    {"addInPlace", {"config", "add", "--in-place", "a.cfg", "a", "k", "new"}, "a.cfg"},
    {"unsetInPlace", {"config", "unset", "--in-place", "a.cfg", "a", "k"}, "a.cfg"},
    {"removeInPlace", {"config", "remove", "--in-place", "a.cfg", "b"}, "a.cfg"},
    {"spliceInPlace", {"config", "splice", "--in-place", "a.cfg", "b.cfg", "a"}, "a.cfg"},
    {"setToAnExistingFile",
     {"config", "set", "--output", "old.cfg", "a.cfg", "a", "k", "n"},
     "old.cfg"},
    {"setToANewFile", {"config", "set", "--output", "new.cfg", "a.cfg", "a", "k", "n"}, "new.cfg"},
    {"mergeToAnExistingFile",
     {"config", "merge", "--output", "old.cfg", "a.cfg", "b.cfg"},
     "old.cfg"},
    {"mergeToANewFile", {"config", "merge", "--output", "new.cfg", "a.cfg", "b.cfg"}, "new.cfg"},
    {"recordOverAnExistingFile", {"erdinfo", "write", "record", "--id1", "7"}, "record"},
    {"recordToANewFile", {"erdinfo", "write", "new", "--id1", "7"}, "new"},
    {"collectToAnArchive",
     {"config", "collect", "a.cfg", "b.cfg", "--output-archive", "all.zip"},
     "all.zip"},
    {"collectToAFolder", {"config", "collect", "a.cfg", "b.cfg", "--output-folder", "all"}, "all"},
};

/** A fresh working folder. */
class Folder
{
public:
    Folder()
    {
        writeFile(path("a.cfg"), kConfig);
        writeFile(path("b.cfg"), kOther);
        writeFile(path("old.cfg"), "old\n");
        writeFile(path("record"), kRecord);
    }

    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }

    /** Runs the command; its call number @p call goes wrong. */
    ToolResult run(const Row &row, const std::string &fault, int call) const
    {
        ToolCall tool;
        tool.arguments = row.arguments;
        tool.folder = m_folder.path().toStdString();
        // By its name alone: the list of LD_PRELOAD is split at blanks, that of folders is not.
        tool.environment = {{"LD_PRELOAD", VANTERO_FILE_FAULTS},
                            {"LD_LIBRARY_PATH", VANTERO_FAULTS_FOLDER},
                            {"VANTERO_FAULT", fault},
                            {"VANTERO_FAULT_CALL", std::to_string(call)},
                            {"TMPDIR", m_temporary.path().toStdString()}};
        return runTool(tool);
    }

    /** What the target holds: its bytes, or the entries of the archive, or the files of the folder;
     * null where it is not there. Names and times, which depend on the clock, are left out. */
    QByteArray content(const Row &row) const
    {
        const QString target = path(row.target);
        if (!QFile::exists(target))
            return QByteArray();
        QByteArray result("");
        if (target.endsWith("/all"_q)) {
            const QDir folder(target);
            for (const QString &name : folder.entryList(QDir::Files, QDir::Name))
                result += readFile(folder.filePath(name));
        } else if (target.endsWith("/all.zip"_q)) {
            vn::ZipReader zip(target);
            EXPECT_TRUE(zip.open(QIODevice::ReadOnly)) << zip.errorString().toStdString();
            const QStringList names = zip.fileListBySuffix("cfg"_q);
            for (const QString &name : names) {
                EXPECT_TRUE(zip.openFile(name));
                result += zip.readAll();
            }
        } else {
            result = readFile(target);
        }
        return result;
    }

    /** What is there that the user did not ask for. */
    QStringList temporaryFiles() const
    {
        const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QStringList names = QDir(m_folder.path()).entryList(all);
        names += QDir(path("all")).entryList(all);
        names += QDir(m_temporary.path()).entryList(all);
        return names.filter("vantero"_q) + names.filter("zip."_q);
    }

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_temporary;
};

/** Whether @p content is one that may be seen; a folder fills file by file. */
bool isOldOrNew(const QByteArray &content, const QByteArray &old, const QByteArray &now,
                const Row &row)
{
    const bool isHalfTheFolder = row.target == std::string("all") &&
                                 (content == "" || content == kConfig || content == kOther);
    return content == now || isHalfTheFolder ||
           (content == old && content.isNull() == old.isNull());
}

class FaultyWrites : public testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(FaultyWrites, leaveTheOldOrTheNew)
{
    const Row &row = GetParam();
    QByteArray old;
    QByteArray now;
    {
        const Folder folder;
        old = folder.content(row);
        ASSERT_EQ(folder.run(row, "", 0).exitCode, 0);
        now = folder.content(row);
        ASSERT_NE(now, old);
        ASSERT_FALSE(now.isEmpty());
    }
    const std::string full = std::to_string(ENOSPC);
    const std::string unknown = std::to_string(EINVAL); // to file systems without that call
    for (const std::string &fault :
         {std::string("kill"), std::string("half"), std::string("short"), full, unknown}) {
        int call = 1;
        for (;; ++call) {
            SCOPED_TRACE(fault + " in call " + std::to_string(call));
            const Folder folder;
            const ToolResult result = folder.run(row, fault, call);
            const QByteArray content = folder.content(row);
            ASSERT_TRUE(isOldOrNew(content, old, now, row)) << content.constData();
            if (result.exitCode == kNoFault) {
                ASSERT_EQ(content, now);
                break;
            }
            const bool isKilled = result.signal == SIGKILL;
            if (fault == "kill") {
                ASSERT_TRUE(isKilled);
            } else if (fault == "half") {
                ASSERT_TRUE(isKilled || result.exitCode == 0);
            } else if (fault == "short") {
                ASSERT_EQ(result.exitCode, 0) << "a short write is continued";
            } else {
                ASSERT_TRUE(result.exitCode == 0 || result.exitCode == 3) << result.exitCode;
            }
            if (result.exitCode == 0) {
                ASSERT_EQ(content, now);
            }
            if (!isKilled) {
                ASSERT_EQ(folder.temporaryFiles(), QStringList());
            }
        }
        EXPECT_GT(call, 4) << "too few calls: nothing shown";
    }
}

INSTANTIATE_TEST_SUITE_P(Tool, FaultyWrites, testing::ValuesIn(kRows),
                         [](const testing::TestParamInfo<Row> &row) { return row.param.name; });
