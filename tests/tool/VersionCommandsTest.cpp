// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The commands "version …", "firmware" and "app-version".

#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

const std::string kPackage = VANTERO_EXAMPLE_DATA "/gate.fwp";

// ---- version show
// --------------------------------------------------------------------------------

TEST(VersionShow, namesEachComponent)
{
    expectRun(runTool({"version", "show", "VN-V4.1.2.3-pre"}), 0,
              "version      VN-V4.1.2.3-pre\nplatform     VN\nmajor        4\nminor        1\n"
              "third        2\nfourth       3\npre-release  pre\n",
              "");
    expectRun(runTool({"version", "show", "*-2.*-rc"}), 0,
              "version      *-2.*-rc\nplatform     any\nmajor        2\nminor        any\n"
              "third        0\nfourth       0\npre-release  none\n",
              "");
    expectRun(runTool({"version", "show", "R16-2.2.1.10."}), 0,
              "version      R16-2.2.1.10.\nplatform     R16\nmajor        2\nminor        2\n"
              "third        1\nfourth       10\npre-release  any\n",
              "");
}

TEST(VersionShow, unknownPlatformDrawsAWarning)
{
    expectRun(runTool({"version", "show", "vn-3"}), 0,
              "version      vn-3\nplatform     unknown\nmajor        3\nminor        0\n"
              "third        0\nfourth       0\npre-release  none\n",
              "vantero-formats: warning: \"vn-3\" names no known platform\n");
}

TEST(VersionShow, jsonHoldsTheRanges)
{
    expectRun(runTool({"version", "show", "R8-1.*", "--json"}), 0,
              "{\n"
              "  \"version\": \"R8-1.*\",\n"
              "  \"platform\": \"R8\",\n"
              "  \"pattern\": true,\n"
              "  \"components\": {\n"
              "    \"platform\": [2, 2],\n"
              "    \"major\": [1, 1],\n"
              "    \"minor\": [0, 99],\n"
              "    \"third\": [0, 0],\n"
              "    \"fourth\": [0, 0],\n"
              "    \"pre-release\": [0, 0]\n"
              "  },\n"
              "  \"warnings\": []\n"
              "}\n",
              "");
    const QJsonObject value = runTool({"version", "show", "x-1", "--json"}).json();
    EXPECT_TRUE(value.value("platform"_q).isNull());
    EXPECT_EQ(value.value("pattern"_q), QJsonValue(false));
    EXPECT_EQ(value.value("warnings"_q), QJsonArray({"\"x-1\" names no known platform"_q}));
}

TEST(VersionShow, emptyTextIsAVersionLikeAnyOther)
{
    const ToolResult result = runTool({"version", "show", ""});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "vantero-formats: warning: \"\" names no known platform\n");
}

// ---- version compare
// -----------------------------------------------------------------------------

TEST(VersionCompare, printsTheSign_andThePatternThatMakesThemEqual)
{
    const struct
    {
        const char *a;
        const char *b;
        const char *out;
    } rows[] = {
        {"VN-3.0.6.28", "VN-3.0.6.29", "<\n"},
        {"VN-3.0.6.29", "VN-3.0.6.28", ">\n"},
        {"VN-V3.0", "VN_3.0.0", "=\n"},
        {"R16-9", "VN-1", "<\n"},
        {"VN-3.0.8.4", "VN-3.0.8.*", "= (VN-3.0.8.* covers VN-3.0.8.4)\n"},
        {"VN-3.0.8.*", "VN-3.0.8.4", "= (VN-3.0.8.* covers VN-3.0.8.4)\n"},
        {"VN-3.0.8.*", "VN-3.0.8.*", "= (VN-3.0.8.* covers VN-3.0.8.*)\n"},
        {"VN-3.*.*", "VN-3.0.*", "= (VN-3.*.* covers VN-3.0.*)\n"},
        {"VN-3.*.6", "VN-3.4.*", "= (the patterns overlap)\n"},
        {"R16-2.1.5.3", "R16-2.1.*", ">\n"},
        {"VN-3.0.9.0", "VN-3.0.8.*", ">\n"},
        {"VN-3.0.6.29-rc", "VN-3.0.6.29", "= (VN-3.0.6.29-rc covers VN-3.0.6.29)\n"},
    };
    for (const auto &row : rows)
        expectRun(runTool({"version", "compare", row.a, row.b}), 0, row.out, "");
}

TEST(VersionCompare, unknownPlatformsDrawAWarningEach)
{
    expectRun(runTool({"version", "compare", "3.0", "vn-3.0"}), 0, "<\n",
              "vantero-formats: warning: \"3.0\" names no known platform\n"
              "vantero-formats: warning: \"vn-3.0\" names no known platform\n");
}

TEST(VersionCompare, jsonHoldsTheSignAndThePattern)
{
    const QJsonObject value =
        runTool({"version", "compare", "VN-3.0.8.4", "VN-3.0.8.*", "--json"}).json();
    EXPECT_EQ(value.value("a"_q), QJsonValue("VN-3.0.8.4"_q));
    EXPECT_EQ(value.value("b"_q), QJsonValue("VN-3.0.8.*"_q));
    EXPECT_EQ(value.value("order"_q), QJsonValue("="_q));
    EXPECT_EQ(value.value("pattern"_q), QJsonValue("VN-3.0.8.* covers VN-3.0.8.4"_q));
    EXPECT_TRUE(runTool({"version", "compare", "VN-3", "VN-4", "--json"})
                    .json()
                    .value("pattern"_q)
                    .isNull());
}

TEST(VersionCompare, needsTwoVersions)
{
    const ToolResult result = runTool({"version", "compare", "VN-3"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err.toStdString(), HasSubstr("version compare: "));
}

// ---- version check
// -------------------------------------------------------------------------------

TEST(VersionCheck, aSafeUpdateIsExitStatus0)
{
    expectRun(runTool({"version", "check", "--model", "K40xyz", "VN-3.0.3.7", "VN-3.0.6.29"}), 0,
              "safe\n", "");
}

TEST(VersionCheck, anUnsafeUpdateIsExitStatus1WithItsRule)
{
    expectRun(runTool({"version", "check", "--model", "K40xyz", "VN-3.0.3.7", "VN-3.0.6.28"}), 1,
              "unsafe: K40 cameras on VN-3.0.3.* must first be updated to VN-3.0.6.29 or later\n",
              "");
    expectRun(runTool({"version", "check", "--model", "x50", "VN-3.1", "VN-3.2"}), 1,
              "unsafe: ?50 cameras on VN may only be updated to major version 4 or later\n", "");
    expectRun(runTool({"version", "check", "--model", "", "VN-3.1", "R16-2.2"}), 1,
              "unsafe: Cameras must stay on their platform\n", "");
}

TEST(VersionCheck, unknownPlatformsAreJudgedAllTheSame)
{
    expectRun(runTool({"version", "check", "--model", "W40", "VN-3.1", "x-3.4.5.4"}), 1,
              "unsafe: W40 cameras on VN may only be updated to VN-3.4.5.4 or later\n",
              "vantero-formats: warning: \"x-3.4.5.4\" names no known platform\n");
    expectRun(runTool({"version", "check", "--model", "W40", "3.1", "x-3"}), 0, "safe\n",
              "vantero-formats: warning: \"3.1\" names no known platform\n"
              "vantero-formats: warning: \"x-3\" names no known platform\n");
}

TEST(VersionCheck, jsonHoldsVerdictAndRule)
{
    expectRun(runTool({"version", "check", "--model", "W40", "VN-3.1", "VN-3.2", "--json"}), 1,
              "{\n"
              "  \"model\": \"W40\",\n"
              "  \"current\": \"VN-3.1\",\n"
              "  \"target\": \"VN-3.2\",\n"
              "  \"safe\": false,\n"
              "  \"rule\": \"w40-minimum\",\n"
              "  \"sentence\": \"W40 cameras on VN may only be updated to VN-3.4.5.4 or later\",\n"
              "  \"warnings\": []\n"
              "}\n",
              "");
    const ToolResult safe = runTool({"version", "check", "--model", "Q", "3.1", "3.2", "--json"});
    EXPECT_EQ(safe.exitCode, 0);
    EXPECT_EQ(safe.err, "");
    EXPECT_EQ(safe.json().value("safe"_q), QJsonValue(true));
    EXPECT_EQ(safe.json().value("rule"_q), QJsonValue("none"_q));
    EXPECT_EQ(safe.json().value("warnings"_q).toArray().size(), 2);
}

TEST(VersionCheck, needsTheModel)
{
    const ToolResult result = runTool({"version", "check", "VN-3.1", "VN-3.2"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err.toStdString(), HasSubstr("--model"));
}

// ---- firmware
// ------------------------------------------------------------------------------------

class FirmwareCommand : public testing::Test
{
protected:
    std::string write(const char *name, const QByteArray &content)
    {
        QFile file(m_folder.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return QFile::encodeName(file.fileName()).toStdString();
    }

    QTemporaryDir m_folder;
};

QByteArray operator+(const std::string &left, const char *right)
{
    return QByteArray::fromStdString(left) + right;
}

TEST_F(FirmwareCommand, namesTheVersionOfEachFile)
{
    const std::string upload = write("upload.fwp", "# R16-2.2.1.10 UPLD\n");
    expectRun(runTool({"firmware", kPackage, upload}), 0,
              kPackage + ": VN-3.0.6.29\n" + (upload + ": R16-2.2.1.10\n"), "");
}

TEST_F(FirmwareCommand, readsStandardInput)
{
    expectRun(runTool({"firmware", "-"}, "# Version: VN-4.0\n"), 0, "-: VN-4.0\n", "");
}

TEST_F(FirmwareCommand, aFileWithoutAVersionIsExitStatus1_andTheOthersAreShown)
{
    const std::string none = write("none.fwp", "# no version here\n");
    expectRun(runTool({"firmware", none, kPackage}), 1, kPackage + ": VN-3.0.6.29\n",
              "vantero-formats: " + (none + ": names no version\n"));
}

TEST_F(FirmwareCommand, aFileThatCannotBeReadIsExitStatus2_andTheOthersAreShown)
{
    const std::string none = write("none.fwp", "");
    const std::string missing = m_folder.path().toStdString() + "/missing";
    const std::string folder = m_folder.path().toStdString();
    expectRun(
        runTool({"firmware", missing, folder, none, kPackage}), 2, kPackage + ": VN-3.0.6.29\n",
        "vantero-formats: " + (missing + ": No such file or directory\nvantero-formats: ") +
            QByteArray::fromStdString(folder) +
            ": file to open is a directory\nvantero-formats: " + (none + ": names no version\n"));
}

TEST_F(FirmwareCommand, anUnknownPlatformDrawsAWarning)
{
    const std::string file = write("odd.fwp", "## Version:VN-3.0.6.29\n");
    expectRun(runTool({"firmware", file}), 0, file + ": N-3.0.6.29\n",
              "vantero-formats: " + (file + ": warning: \"N-3.0.6.29\" names no known platform\n"));
}

TEST_F(FirmwareCommand, jsonHoldsEveryFileWithItsError)
{
    const std::string none = write("none.fwp", "");
    const ToolResult result = runTool({"firmware", kPackage, none, "missing", "--json"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "");
    const QJsonArray packages = result.json().value("packages"_q).toArray();
    ASSERT_EQ(packages.size(), 3);
    EXPECT_EQ(packages.at(0).toObject().value("version"_q), QJsonValue("VN-3.0.6.29"_q));
    EXPECT_TRUE(packages.at(0).toObject().value("error"_q).isNull());
    EXPECT_TRUE(packages.at(1).toObject().value("version"_q).isNull());
    EXPECT_EQ(packages.at(1).toObject().value("error"_q).toObject().value("message"_q),
              QJsonValue("names no version"_q));
    EXPECT_EQ(packages.at(2).toObject().value("error"_q).toObject().value("exitCode"_q),
              QJsonValue(2));
}

// ---- app-version
// ---------------------------------------------------------------------------------

TEST(AppVersion, isReadable)
{
    expectRun(runTool({"app-version", "4.1.1.5", "--revision", "1200:1234", "--debug"}), 0,
              "4.1 beta 5, revision 1234, debug\n", "");
    expectRun(runTool({"app-version", "4.1.7"}), 0, "4.1.0.7\n", "");
    expectRun(runTool({"app-version", "4.1.0", "--revision", "?"}), 0, "4.1\n", "");
    expectRun(runTool({"app-version", "--revision", "7", ""}), 0, ", revision 7\n", "");
    expectRun(runTool({"app-version", "--json", "4.1.2.1"}), 0,
              "{\n  \"version\": \"4.1.2.1\",\n  \"text\": \"4.1 rc 1\"\n}\n", "");
}

} // namespace
