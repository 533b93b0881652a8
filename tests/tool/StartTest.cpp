// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What the tool needs to start: not the libraries for archives, which it loads with the first one.

#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/** A folder where the loader finds no archive library, but files of their names. */
class WithoutArchiveLibraries : public testing::Test
{
protected:
    WithoutArchiveLibraries()
    {
        for (const QString &name : {"libarchive.so.13"_q, "libzip.so.4"_q})
            writeFile(path(name), "no library");
    }

    QString path(const QString &name) const { return m_folder.filePath(name); }

    ToolResult run(std::vector<std::string> arguments) const
    {
        ToolCall call;
        call.arguments = std::move(arguments);
        call.folder = m_folder.path().toStdString();
        call.environment = {{"LD_LIBRARY_PATH", call.folder}};
        return runTool(call);
    }

    QTemporaryDir m_folder;
};

TEST_F(WithoutArchiveLibraries, filesAreReadAndWritten)
{
    expectRun(run({"config", "show", example("gate.cfg"), "--section", "ethernet", "--key", "NTP"}),
              0, "ntp.site.example\n", "");
    EXPECT_EQ(run({"config", "collect", example("gate.cfg"), "--output-folder", "."}).exitCode, 0);
}

TEST_F(WithoutArchiveLibraries, anArchiveToReadIsToldWhatIsMissing)
{
    expectRun(run({"config", "table", example("cameras.zip")}), 2, "",
              "vantero-formats: " + QByteArray::fromStdString(example("cameras.zip")) + ": " +
                  path("libarchive.so.13"_q).toUtf8() + ": file too short\n");
}

TEST_F(WithoutArchiveLibraries, anArchiveToWriteIsToldWhatIsMissing)
{
    expectRun(run({"config", "collect", example("gate.cfg"), "--output-archive", "new.zip"}), 3, "",
              "vantero-formats: new.zip: " + path("libzip.so.4"_q).toUtf8() + ": file too short\n");
}

} // namespace
