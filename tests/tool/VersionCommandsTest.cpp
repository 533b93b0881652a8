// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The commands "version …", "firmware" and "app-version".

#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QJsonArray>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

const std::string kPackage = VANTERO_EXAMPLE_DATA "/gate.fwp";

// ---- version show
// --------------------------------------------------------------------------------

TEST(VersionShow, jsonHoldsTheRanges)
{
    const QJsonObject value = runTool({"version", "show", "R8-1.*", "--json"}).json();
    QJsonObject version = value;
    version.remove("versions"_q);
    EXPECT_EQ(version,
              (QJsonObject{{"version"_q, "R8-1.*"_q},
                           {"platform"_q, "R8"_q},
                           {"pattern"_q, true},
                           {"components"_q, QJsonObject{{"platform"_q, QJsonArray{2, 2}},
                                                        {"major"_q, QJsonArray{1, 1}},
                                                        {"minor"_q, QJsonArray{0, 99}},
                                                        {"third"_q, QJsonArray{0, 0}},
                                                        {"fourth"_q, QJsonArray{0, 0}},
                                                        {"pre-release"_q, QJsonArray{0, 0}}}},
                           {"warnings"_q, QJsonArray()}}));
    EXPECT_EQ(value.value("versions"_q), QJsonArray{version}); // as of several
}

TEST(VersionShow, jsonTellsAnUnknownPlatform)
{
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

TEST(VersionShow, standardInputHasAVersionALine)
{
    expectRun(runTool({"version", "show", "-"}, "VN-3\r\n\nR8-1\n"), 0,
              "version      VN-3\nplatform     VN\nmajor        3\nminor        0\n"
              "third        0\nfourth       0\npre-release  none\n\n"
              "version      R8-1\nplatform     R8\nmajor        1\nminor        0\n"
              "third        0\nfourth       0\npre-release  none\n",
              "");
    const QJsonArray versions = runTool({"version", "show", "-", "--json"}, "VN-3\nx\n")
                                    .json()
                                    .value("versions"_q)
                                    .toArray();
    ASSERT_EQ(versions.size(), 2);
    EXPECT_EQ(versions.at(1).toObject().value("warnings"_q),
              QJsonArray({"\"x\" names no known platform"_q}));
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
        const char *err = "";
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
        {"VN-3.0.6.29-rc", "VN-3.0.6.29", "= (VN-3.0.6.29-rc covers VN-3.0.6.29)\n",
         "vantero-formats: warning: \"VN-3.0.6.29-rc\": \"rc\" stands for any pre-release and "
         "none; "
         "only pre is one\n"},
    };
    for (const auto &row : rows)
        expectRun(runTool({"version", "compare", row.a, row.b}), 0, row.out, row.err);
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

TEST(VersionCompare, tellsTheComponentThatDecides)
{
    const struct
    {
        const char *a;
        const char *b;
        const char *out;
    } rows[] = {
        {"VN-3.0.6.28", "VN-3.0.6.29", "<\nfourth decides: 28 is below 29\n"},
        {"R16-9", "VN-1", "<\nplatform decides: 10 is below 20\n"},
        {"VN-3.0.9.0", "VN-3.0.8.*", ">\nthird decides: 9 is above 8\n"},
        {"VN-3.0.8.100", "VN-3.0.8.*", ">\nfourth decides: 100 is above 0 to 99\n"},
        {"VN-3.*.6", "VN-3.4.*", "= (the patterns overlap)\nall components overlap\n"},
    };
    for (const auto &row : rows)
        expectRun(runTool({"version", "compare", "-v", row.a, row.b}), 0, row.out, "");
    const QJsonObject decided =
        runTool({"version", "compare", "VN-3.0.8.100", "VN-3.0.8.*", "--json"})
            .json()
            .value("decided"_q)
            .toObject();
    EXPECT_EQ(decided.value("component"_q), QJsonValue("fourth"_q));
    EXPECT_EQ(decided.value("a"_q), QJsonArray({100, 100}));
    EXPECT_EQ(decided.value("b"_q), QJsonArray({0, 99}));
    EXPECT_TRUE(runTool({"version", "compare", "VN-3", "VN-3", "--json"})
                    .json()
                    .value("decided"_q)
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

TEST(VersionCheck, whatMayMeanSomethingElseIsNotJudged)
{
    expectRun(runTool({"version", "check", "--model", "h40", "VN-3.0.8.7", "VN-3.0.6.2"}), 2,
              "unknown\n", "vantero-formats: model h40: did you mean H40?\n");
    expectRun(runTool({"version", "check", "garbage", "trash"}), 2, "unknown\n",
              "vantero-formats: \"garbage\" names no known platform\n"
              "vantero-formats: \"trash\" names no known platform\n");
    expectRun(runTool({"version", "check", "--model", "W40", "VN-3.*", "VN-4.0"}), 2, "unknown\n",
              "vantero-formats: \"VN-3.*\" is a pattern, where one version is needed\n");
}

TEST(VersionCheck, withoutAModelItMayDependOnIt)
{
    expectRun(runTool({"version", "check", "VN-3.0.8.7", "VN-3.0.6.2"}), 1,
              "depends on the model\n"
              "K40: safe\n"
              "H40: unsafe: H40 cameras on VN-3.0.8.* or later must stay on VN-3.0.8.* or later\n"
              "K30, H30: safe\n"
              "W40: unsafe: W40 cameras on VN may only be updated to VN-3.4.5.4 or later\n"
              "?50: unsafe: ?50 cameras on VN may only be updated to major version 4 or later\n"
              "other models: safe\n",
              "");
    expectRun(runTool({"version", "check", "--model", "", "VN-3.1", "VN-4.0"}), 0, "safe\n", "");
    expectRun(runTool({"version", "check", "VN-4.0", "VN-3.9"}), 1,
              "unsafe: Cameras on major version 4 or later must stay on major version 4 or later\n",
              "");
}

TEST(VersionCheck, literallyItIsTheLibrarysOwnAnswer)
{
    expectRun(runTool({"version", "check", "--literal", "--model", "W40", "VN-3.1", "x-3.4.5.4"}),
              1, "unsafe: W40 cameras on VN may only be updated to VN-3.4.5.4 or later\n",
              "vantero-formats: warning: \"x-3.4.5.4\" names no known platform\n");
    expectRun(runTool({"version", "check", "--literal", "3.1", "x-3"}), 0, "safe\n",
              "vantero-formats: warning: \"3.1\" names no known platform\n"
              "vantero-formats: warning: \"x-3\" names no known platform\n");
    expectRun(
        runTool({"version", "check", "--literal", "--model", "h40", "VN-3.0.8.7", "VN-3.0.6.2"}), 0,
        "safe\n", "");
    expectRun(
        runTool({"version", "check", "--literal", "--model", "W40", "VN-3.1", "VN-3.2", "--json"}),
        1,
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
}

TEST(VersionCheck, jsonHoldsVerdictReasonsAndClasses)
{
    expectRun(
        runTool({"version", "check", "--model", "W40", "VN-3.1", "VN-3.2", "--json"}), 1,
        "{\n"
        "  \"model\": \"W40\",\n"
        "  \"current\": \"VN-3.1\",\n"
        "  \"target\": \"VN-3.2\",\n"
        "  \"verdict\": \"unsafe\",\n"
        "  \"reasons\": [\n"
        "    {\n"
        "      \"rule\": \"w40-minimum\",\n"
        "      \"sentence\": \"W40 cameras on VN may only be updated to VN-3.4.5.4 or later\"\n"
        "    }\n"
        "  ],\n"
        "  \"classes\": [],\n"
        "  \"obstacles\": [],\n"
        "  \"candidates\": []\n"
        "}\n",
        "");
    const ToolResult safe =
        runTool({"version", "check", "--model", "Q", "VN-3", "VN-3.1", "--json"});
    EXPECT_EQ(safe.exitCode, 0);
    EXPECT_EQ(safe.json().value("verdict"_q), QJsonValue("safe"_q));
    EXPECT_EQ(safe.json().value("reasons"_q), QJsonArray());

    const ToolResult unknown =
        runTool({"version", "check", "--model", "k30", "VN-3", "VN-4", "--json"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.err, "");
    EXPECT_EQ(unknown.json().value("verdict"_q), QJsonValue("unknown"_q));
    EXPECT_EQ(unknown.json().value("candidates"_q), QJsonArray({"K30"_q}));

    const ToolResult depends = runTool({"version", "check", "VN-3.0.8.7", "VN-3.0.6.2", "--json"});
    EXPECT_EQ(depends.exitCode, 1);
    EXPECT_EQ(depends.json().value("verdict"_q), QJsonValue("depends"_q));
    const QJsonArray classes = depends.json().value("classes"_q).toArray();
    ASSERT_EQ(classes.size(), 6);
    EXPECT_EQ(classes.at(1).toObject().value("name"_q), QJsonValue("H40"_q));
    EXPECT_EQ(classes.at(1).toObject().value("verdict"_q), QJsonValue("unsafe"_q));
    EXPECT_EQ(classes.at(5).toObject().value("models"_q), QJsonArray());
    EXPECT_EQ(classes.at(5).toObject().value("verdict"_q), QJsonValue("safe"_q));
}

// ---- version check of a site
// ---------------------------------------------------------------------

class SiteCheck : public FolderTest
{
protected:
    std::string write(const char *name, const QByteArray &content)
    {
        return QFile::encodeName(fileWith(content, QString::fromUtf8(name))).toStdString();
    }

    /** A configuration that tells address and firmware. */
    void writeCamera(const char *name, const QByteArray &address, const QByteArray &firmware)
    {
        write(name, "#:1.3===\n#:" + firmware + "\n# Camera IP: " + address +
                        "\n\nSECTION a\nENDSECTION a\n");
    }

    std::string folder() const { return QFile::encodeName(dir().path()).toStdString(); }
};

TEST_F(SiteCheck, hasARowACamera)
{
    writeCamera("a.cfg", "10.0.0.1", "VN-3.0.3.7");
    writeCamera("b.cfg", "10.0.0.2", "VN-3.0.8.7");
    writeCamera("c.cfg", "10.0.0.3", "VN-3.0.8.7");
    writeCamera("d.cfg", "10.0.0.4", "VN-3.0.6.1");
    const std::string models = write(
        "models.csv", "address,model\r\n10.0.0.1,K40D\r\n10.0.0.2,\"h40\"\r\n\r\n10.0.0.4,D24");
    const ToolResult result = runTool({"version", "check", "--configurations", folder(),
                                       "--recursive", "--models", models, "--csv", "VN-3.0.6.2"});
    expectRun(result, 1,
              "address,firmware,verdict,reason,nextHop\n"
              "10.0.0.1,VN-3.0.3.7,unsafe,K40 cameras on VN-3.0.3.* must first be updated to "
              "VN-3.0.6.29 or later,VN-3.0.6.29 or later\n"
              "10.0.0.2,VN-3.0.8.7,unknown,model h40: did you mean H40?,\n"
              "10.0.0.3,VN-3.0.8.7,depends,H40 cameras on VN-3.0.8.* or later must stay on "
              "VN-3.0.8.* or later,VN-3.0.8.* or later\n"
              "10.0.0.4,VN-3.0.6.1,safe,,VN-3.0.6.2\n",
              "");
}

TEST_F(SiteCheck, tellsAnAddressOfTheModelsThatLooksMistyped)
{
    writeCamera("a.cfg", "10.0.0.21", "VN-3.0.6.1");
    writeCamera("b.cfg", "10.0.0.22", "VN-3.0.6.1");
    const std::string models = write("models.csv", "address,model\n10.0.0.22,D24\n10.0.0.2l,D24\n"
                                                   "192.168.100.100,D24\n");
    expectRun(runTool({"version", "check", "--configurations", folder(), "--recursive", "--models",
                       models, "--csv", "VN-3.0.6.2"}),
              1,
              "address,firmware,verdict,reason,nextHop\n"
              "10.0.0.21,VN-3.0.6.1,depends,W40 cameras on VN may only be updated to VN-3.4.5.4 or "
              "later,VN-3.4.5.4 or later\n"
              "10.0.0.22,VN-3.0.6.1,safe,,VN-3.0.6.2\n",
              QByteArray("vantero-formats: ") + models.c_str() +
                  ": warning: no model of 10.0.0.21; did you mean 10.0.0.2l?\n");
}

TEST_F(SiteCheck, isATableForPeople_andNamesTheNextHop)
{
    writeCamera("a.cfg", "10.0.0.1", "VN-3.0.3.7");
    writeCamera("b.cfg", "10.0.0.2", "VN-3.0.6.1");
    const std::string models =
        write("models.json", "{\"10.0.0.1\": \"K40\", \"10.0.0.2\": \"D24\"}");
    expectRun(
        runTool({"version", "check", "--configurations", folder() + "/a.cfg", folder() + "/b.cfg",
                 "--models", models, "--available", kPackage, "VN-3.0.6.2"}),
        1,
        "ADDRESS   FIRMWARE    VERDICT  REASON                                                "
        "                   NEXT HOP\n"
        "10.0.0.1  VN-3.0.3.7  unsafe   K40 cameras on VN-3.0.3.* must first be updated to "
        "VN-3.0.6.29 or later  VN-3.0.6.29\n"
        "10.0.0.2  VN-3.0.6.1  safe     -                                                     "
        "                   VN-3.0.6.2\n",
        "");
    expectRun(runTool({"version", "check", "--configurations", folder() + "/b.cfg", "--models",
                       models, "VN-3.0.6.2"}),
              0,
              "ADDRESS   FIRMWARE    VERDICT  REASON  NEXT HOP\n"
              "10.0.0.2  VN-3.0.6.1  safe     -       VN-3.0.6.2\n",
              "");
}

TEST_F(SiteCheck, readsArchives_andJsonHoldsAll)
{
    const std::string zip = VANTERO_EXAMPLE_DATA "/cameras.zip";
    const ToolResult result =
        runTool({"version", "check", "--configurations", zip, "--json", "--csv", "VN-3.4.5.4"});
    EXPECT_EQ(result.exitCode, 1);
    const QJsonArray cameras = result.json().value("cameras"_q).toArray();
    ASSERT_EQ(cameras.size(), 3);
    const QJsonObject gate = cameras.at(0).toObject();
    EXPECT_EQ(gate.value("address"_q), QJsonValue("10.14.7.21"_q));
    EXPECT_EQ(gate.value("firmware"_q), QJsonValue("VN-3.0.6.29"_q));
    EXPECT_TRUE(gate.value("model"_q).isNull());
    EXPECT_EQ(gate.value("verdict"_q), QJsonValue("depends"_q));
    EXPECT_EQ(cameras.at(1).toObject().value("verdict"_q), QJsonValue("unsafe"_q));
    EXPECT_EQ(
        cameras.at(1).toObject().value("reasons"_q).toArray().at(0).toObject().value("rule"_q),
        QJsonValue("platform"_q));
    EXPECT_EQ(result.json().value("errors"_q), QJsonArray());
}

TEST_F(SiteCheck, whatCannotBeReadIsExitStatus2)
{
    writeCamera("a.cfg", "10.0.0.1", "VN-3.0.3.7");
    const std::string config = folder() + "/a.cfg";
    const QByteArray missing = QByteArray::fromStdString(folder() + "/missing");
    const ToolResult result =
        runTool({"version", "check", "--configurations", config, missing.toStdString(), "--models",
                 write("m.csv", "address,model\n10.0.0.1,D24\n"), "VN-3.1"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "vantero-formats: " + missing + ": No such file or directory\n");
    EXPECT_THAT(result.out.toStdString(), HasSubstr("safe"));

    const struct
    {
        const char *models;
        const char *message;
    } rows[] = {
        {"", ":1: the first line is not \"address,model\""},
        {"address,model\nx\n", ":2: not an address and a model"},
        {"address,model\n\"x,K40\n", ":2: not an address and a model"},
        {"address,model\n\"x\"y,K40\n", ":2: not an address and a model"},
        {"address,model\nx,K40\n\nx,K41\n", ":4: x has a model already"},
        {"{\"x\": 1}", ": the model of x is no text"},
        {"{\n\"x\": \n", ":3: unterminated object"},
    };
    for (const auto &row : rows) {
        const std::string models = write("bad", row.models);
        expectRun(
            runTool({"version", "check", "--configurations", config, "--models", models, "VN-4"}),
            2, "", "vantero-formats: " + QByteArray::fromStdString(models + row.message + "\n"));
    }
}

TEST_F(SiteCheck, takesOneVersion)
{
    for (const std::vector<std::string> &call :
         {std::vector<std::string>{"version", "check", "VN-3"},
          {"version", "check", "--configurations", "x", "--recursive", "VN-3", "VN-4"},
          {"version", "check", "--recursive", "VN-3", "VN-4"},
          {"version", "check", "--configurations", "x", "--model", "K40", "VN-3"}}) {
        const ToolResult result = runTool({call});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err.toStdString(), HasSubstr("version check: "));
    }
}

// ---- version plan
// --------------------------------------------------------------------------------

TEST(VersionPlan, printsTheVersionsToInstall)
{
    expectRun(runTool({"version", "plan", "--model", "K40", "VN-3.0.3.7", "VN-3.0.6.2",
                       "--available", "VN-3.0.6.29", kPackage, "--available", "VN-3.0.8"}),
              0, "VN-3.0.8\nVN-3.0.6.2\n", "");
    expectRun(runTool({"version", "plan", "--model", "K40", "--available", kPackage, "VN-3.0.3.7",
                       "VN-3.0.6.2"}),
              0, "VN-3.0.6.29  " + QByteArray::fromStdString(kPackage) + "\nVN-3.0.6.2\n", "");
    expectRun(runTool({"version", "plan", "VN-3.1", "VN-4.0"}), 0, "VN-4.0\n", "");
    expectRun(runTool({"version", "plan", "VN-3.1", "VN-V3.1.0"}), 0, "", "");
}

TEST(VersionPlan, readsWhatIsAtHandFromFoldersAndStandardInput)
{
    const ToolResult folder =
        runTool({"version", "plan", "--model", "K40", "VN-3.0.3.7", "VN-3.0.6.2", "--available",
                 VANTERO_EXAMPLE_DATA, "--json"});
    EXPECT_EQ(folder.exitCode, 0);
    EXPECT_EQ(folder.json().value("reachable"_q), QJsonValue(true));
    EXPECT_EQ(folder.json().value("hops"_q), QJsonArray({"VN-3.0.6.29"_q, "VN-3.0.6.2"_q}));
    EXPECT_EQ(folder.json().value("packages"_q).toArray().at(0),
              QJsonValue(QString::fromStdString(kPackage)));
    EXPECT_TRUE(folder.json().value("packages"_q).toArray().at(1).isNull());
    EXPECT_FALSE(folder.json().contains("nearest"_q));

    expectRun(runTool({"version", "plan", "--model", "K40", "VN-3.0.3.7", "VN-3.0.6.2",
                       "--available", "-"},
                      "VN-3.9\nVN-3.0.*\n"),
              0, "VN-3.9\nVN-3.0.6.2\n",
              "vantero-formats: warning: \"VN-3.0.*\" is left out: it is no single version\n");
}

TEST(VersionPlan, saysWhereThereIsNoWay)
{
    const std::vector<std::string> call = {"version",    "plan",       "--model",     "K40",
                                           "VN-3.0.3.7", "VN-3.0.6.2", "--available", "VN-3.0.3.9"};
    expectRun(runTool({call}), 1,
              "no way: K40 cameras on VN-3.0.3.* must first be updated to VN-3.0.6.29 or later\n"
              "nearest: VN-3.0.3.7\n"
              "needed: VN-3.0.6.29 or later\n"
              "a package of VN-3.0.6.29 would open the way\n",
              "");
    std::vector<std::string> asJson = call;
    asJson.push_back("--json");
    const QJsonObject value = runTool({asJson}).json();
    EXPECT_EQ(value.value("reachable"_q), QJsonValue(false));
    EXPECT_EQ(value.value("hops"_q), QJsonArray());
    EXPECT_EQ(value.value("nearest"_q), QJsonValue("VN-3.0.3.7"_q));
    EXPECT_EQ(value.value("blockedBy"_q).toArray().at(0).toObject().value("rule"_q),
              QJsonValue("k40-step"_q));
    EXPECT_EQ(value.value("needed"_q), QJsonValue("VN-3.0.6.29 or later"_q));
    EXPECT_EQ(value.value("bridge"_q), QJsonValue("VN-3.0.6.29"_q));
}

TEST(VersionPlan, plansNothingThatItCannotJudge)
{
    expectRun(runTool({"version", "plan", "--model", "k40", "VN-3.0.3.7", "VN-3.0.6.2"}), 2, "",
              "vantero-formats: model k40: did you mean K40?\n");
    const ToolResult result = runTool({"version", "plan", "VN-3.0.3.7", "VN-3.0.*", "--json"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.json().value("reachable"_q), QJsonValue(false));
    EXPECT_FALSE(result.json().contains("blockedBy"_q));
    EXPECT_EQ(result.json().value("obstacles"_q).toArray().size(), 1);

    const std::string config = VANTERO_EXAMPLE_DATA "/gate.cfg";
    expectRun(runTool({"version", "plan", "VN-3", "VN-4", "--available", config}), 2, "",
              "vantero-formats: " + QByteArray::fromStdString(config) + ": names no version\n");
}

// ---- version installable
// -------------------------------------------------------------------------

TEST(VersionInstallable, saysOfEachVersionHow)
{
    const std::string folder = VANTERO_EXAMPLE_DATA;
    expectRun(runTool({"version", "installable", "--model", "K40", "VN-3.0.3.7", folder,
                       "VN-3.0.6.2", "R16-2", "x"}),
              0,
              "VN-3.0.6.29  directly  (" + QByteArray::fromStdString(kPackage) +
                  ")\n"
                  "VN-3.0.6.2  by VN-3.0.6.29\n"
                  "R16-2  never: Cameras must stay on their platform\n"
                  "x  unknown: \"x\" names no known platform\n",
              "");
    expectRun(runTool({"version", "installable", "VN-3.0", "R16-2"}), 1,
              "R16-2  never: Cameras must stay on their platform\n", "");
    expectRun(runTool({"version", "installable", "--model", "w40", "VN-3.0", "VN-4.0"}), 2, "",
              "vantero-formats: model w40: did you mean W40?\n");
    const QJsonArray versions = runTool({"version", "installable", "--model", "K40", "VN-3.0.3.7",
                                         "VN-3.0.6.29", "VN-3.0.6.2", "--json"})
                                    .json()
                                    .value("versions"_q)
                                    .toArray();
    ASSERT_EQ(versions.size(), 2);
    EXPECT_EQ(versions.at(0).toObject().value("way"_q), QJsonValue("directly"_q));
    EXPECT_EQ(versions.at(1).toObject().value("way"_q), QJsonValue("plan"_q));
    EXPECT_EQ(versions.at(1).toObject().value("hops"_q),
              QJsonArray({"VN-3.0.6.29"_q, "VN-3.0.6.2"_q}));
}

// ---- version rules, sort, lint
// -------------------------------------------------------------------

TEST(VersionRules, areALineEach)
{
    const ToolResult result = runTool({"version", "rules"});
    EXPECT_EQ(result.exitCode, 0);
    const QList<QByteArray> lines = result.out.split('\n');
    ASSERT_EQ(lines.size(), 12);
    EXPECT_EQ(lines.at(4),
              "k40-step: K40 cameras on VN-3.0.3.* must first be updated to VN-3.0.6.29 or "
              "later");
    EXPECT_EQ(lines.at(10), "none: Cameras may otherwise be updated to any version");

    const QJsonObject value = runTool({"version", "rules", "--json"}).json();
    const QJsonArray rules = value.value("rules"_q).toArray();
    ASSERT_EQ(rules.size(), 11);
    const QJsonObject rule = rules.at(4).toObject();
    EXPECT_EQ(rule.value("identifier"_q), QJsonValue("k40-step"_q));
    EXPECT_EQ(rule.value("platform"_q), QJsonValue("VN"_q));
    EXPECT_EQ(rule.value("models"_q), QJsonArray({"K40"_q}));
    EXPECT_EQ(rule.value("current"_q), QJsonValue("VN-3.0.3.*"_q));
    EXPECT_EQ(rule.value("effect"_q), QJsonValue("decides"_q));
    EXPECT_EQ(rule.value("demand"_q), QJsonValue("must first be updated to"_q));
    EXPECT_EQ(rule.value("target"_q), QJsonValue("VN-3.0.6.29 or later"_q));
    EXPECT_EQ(value.value("classes"_q).toArray().size(), 6);
}

TEST(VersionSort, putsPatternsBehindTheirLowest)
{
    expectRun(runTool({"version", "sort"}, "VN-3.0.8.1\r\nVN-3.0.8.*\n\nR16-9\nVN-3.0.8\n"), 0,
              "R16-9\nVN-3.0.8\nVN-3.0.8.*\nVN-3.0.8.1\n", "");
    EXPECT_EQ(
        runTool({"version", "sort", "-", "--json"}, "VN-4\nVN-3\n").json().value("versions"_q),
        QJsonArray({"VN-3"_q, "VN-4"_q}));
    const ToolResult missing = runTool({"version", "sort", "missing"});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(missing.err, "vantero-formats: missing: No such file or directory\n");
}

TEST(VersionLint, namesThePlaceInEachText)
{
    expectRun(runTool({"version", "lint", "VN-3.O.6", "VN-3.0"}), 0,
              "VN-3.O.6:1:6: warning: \"O\" is no number and is read as 0 [number-unreadable]\n",
              "");
    expectRun(runTool({"version", "lint", "-"}, "VN-3\n\nVN-x\r\nVN-3.*\n"), 0,
              "-:3:4: warning: \"x\" is no number and is read as 0 [number-unreadable]\n"
              "-:4:6: note: \"*\" covers the numbers from 0 to 99 [wildcard-limit]\n"
              "-:4:6: note: \"*\" covers one number; the missing ones behind it are 0 "
              "[wildcard-alone]\n",
              "");
    const QJsonArray findings =
        runTool({"version", "lint", "x", "--json"}).json().value("findings"_q).toArray();
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings.at(0).toObject().value("code"_q), QJsonValue("platform-unknown"_q));
    EXPECT_EQ(findings.at(0).toObject().value("endColumn"_q), QJsonValue(2));
}

// ---- firmware
// ------------------------------------------------------------------------------------

class FirmwareCommand : public FolderTest
{
protected:
    std::string write(const char *name, const QByteArray &content)
    {
        return QFile::encodeName(fileWith(content, QString::fromUtf8(name))).toStdString();
    }
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
    const std::string missing = dir().path().toStdString() + "/missing";
    const std::string folder = dir().path().toStdString();
    expectRun(runTool({"firmware", missing, folder, none, kPackage}), 2,
              kPackage + ": VN-3.0.6.29\n",
              "vantero-formats: " + (missing + ": No such file or directory\nvantero-formats: ") +
                  QByteArray::fromStdString(folder) +
                  ": a folder, not a file\nvantero-formats: " + (none + ": names no version\n"));
}

TEST_F(FirmwareCommand, anUnknownPlatformDrawsAWarning)
{
    const std::string file = write("odd.fwp", "## Version:VN-3.0.6.29\n");
    expectRun(runTool({"firmware", file}), 0, file + ": N-3.0.6.29\n",
              "vantero-formats: " + (file + ": warning: \"N-3.0.6.29\" names no known platform\n"));
}

TEST_F(FirmwareCommand, tellsTheLineAndItsForm_andWhereLinesDisagree)
{
    const std::string file = write("two.fwp", "## Version: VN-3.0\n\n# VN-3.1 UPLD\n");
    expectRun(
        runTool({"firmware", "-v", file, kPackage}), 0,
        file + ": VN-3.1 (line 3, UPLD)\n" + (kPackage + ": VN-3.0.6.29 (line 2, ## Version:)\n"),
        "vantero-formats: " + (file + ": warning: line 1 names \"VN-3.0\", but line 3 \"VN-3.1\", "
                                      "which counts\n"));
    const QJsonObject package =
        runTool({"firmware", file, "--json"}).json().value("packages"_q).toArray().at(0).toObject();
    EXPECT_EQ(package.value("line"_q), QJsonValue(3));
    EXPECT_EQ(package.value("form"_q), QJsonValue("UPLD"_q));
    EXPECT_EQ(package.value("lines"_q).toArray().size(), 2);
    EXPECT_EQ(package.value("warnings"_q).toArray().size(), 1);
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
