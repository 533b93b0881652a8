// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The merged text against the library's own merge of the maps.

#include "support/Files.h"
#include "support/Literals.h"
#include "support/Random.h"
#include "support/ToolRunner.h"

#include "base/FileUtils.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace vn;

VanteroConfigFile parsed(const QByteArray &bytes)
{
    VanteroConfigFile config;
    config.parse(FileUtils::decodeText(bytes), QDateTime());
    return config;
}

/** A configuration whose sections and keys are often those that the presets name. */
QByteArray randomConfig(Random &random)
{
    static const char *const sections[] = {"ethernet", "eventdlite", "text", "image"};
    static const char *const keys[] = {"IPADDR",
                                       "HOSTNAME",
                                       "DNS",
                                       "motiondef",
                                       "motioncheck",
                                       "motion2_def",
                                       "actions_timetable",
                                       "edacttimetable",
                                       "recording_timetable",
                                       "zoom"};
    QByteArray text = "#:1." + QByteArray::number(random.below(9)) + "====\n#:VN-3." +
                      QByteArray::number(random.below(9)) + '\n';
    if (random.below(3))
        text += "# Camera IP: 10.0.0." + QByteArray::number(random.below(9)) + '\n';
    text += '\n';
    for (unsigned block = random.below(7); block > 0; --block) {
        const QByteArray name = sections[random.below(4)];
        text += "SECTION " + name + '\n';
        for (unsigned line = random.below(7); line > 0; --line) {
            text += keys[random.below(10)];
            if (random.below(6))
                text += '=' + QByteArray::number(random.below(100));
            text += '\n';
        }
        text += "ENDSECTION " + name + '\n';
    }
    return text;
}

TEST(ConfigMerge, textReadsBackAsTheMergedMap)
{
    const QTemporaryDir folder;
    const std::string newPath = folder.filePath("new.cfg"_q).toStdString();
    const std::string previousPath = folder.filePath("previous.cfg"_q).toStdString();
    Random random(24);
    for (int round = 0; round < 150; ++round) {
        const QByteArray newText = randomConfig(random);
        const QByteArray previousText = randomConfig(random);
        SCOPED_TRACE("new:\n" + newText.toStdString() + "\nprevious:\n" +
                     previousText.toStdString());
        ASSERT_NO_FATAL_FAILURE(writeFile(newPath, newText));
        ASSERT_NO_FATAL_FAILURE(writeFile(previousPath, previousText));
        std::vector<std::string> arguments = {"config", "merge", newPath, previousPath};
        bool network = random.below(2);
        bool motion = random.below(2);
        bool timeTables = random.below(2);
        if (network)
            arguments.push_back("--network");
        if (motion)
            arguments.push_back("--motion");
        if (timeTables)
            arguments.push_back("--time-tables");
        if (!network && !motion && !timeTables)
            network = motion = timeTables = true;
        const ToolResult result = runTool(arguments);
        ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
        EXPECT_EQ(result.err, "");

        const VanteroConfigFile config = parsed(newText);
        const VanteroConfigFile previous = parsed(previousText);
        VanteroConfigMap wanted;
        if (timeTables)
            config.preserveTimeTableReferences(previous, wanted);
        if (motion)
            config.preserveVideoMotion(previous, wanted);
        if (network)
            config.preserveIpAddresses(previous, wanted);
        for (const QString &name : config.allSectionKeys())
            if (name != "head"_q && !wanted.containsSection(name))
                wanted.replaceSection(name, config.section(name));

        const VanteroConfigFile merged = parsed(result.out);
        for (const QString &name : wanted.allSectionKeys() + merged.allSectionKeys()) {
            if (name == "head"_q)
                continue;
            EXPECT_EQ(merged.toString(name), wanted.toString(name));
        }
        EXPECT_EQ(merged.getFileVersion(), config.getFileVersion());
        EXPECT_EQ(merged.getSoftwareVersion(), config.getSoftwareVersion());
        EXPECT_EQ(merged.getFactoryIP(),
                  config.getFactoryIP().isNull() ? previous.getFactoryIP() : config.getFactoryIP());
        if (HasFailure())
            return;
    }
}

TEST(ConfigMerge, jsonHoldsTheTextAndWhatWasKept)
{
    const std::vector<std::string> arguments = {"config", "merge", example("gate-factory.cfg"),
                                                example("entrance.cfg"), "--motion"};
    std::vector<std::string> withJson = arguments;
    withJson.push_back("--json");
    const ToolResult result = runTool(withJson);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.json().value("text"_q).toString().toUtf8(), runTool(arguments).out);
    const QJsonArray preserved = result.json().value("preserved"_q).toArray();
    ASSERT_EQ(preserved.size(), 4);
    EXPECT_EQ(preserved.at(0).toObject(), QJsonObject({{"section"_q, "eventdlite"_q},
                                                       {"key"_q, "motion2_check"_q},
                                                       {"outcome"_q, "becameNull"_q},
                                                       {"value"_q, QJsonValue::Null},
                                                       {"instead"_q, "0"_q}}));
    EXPECT_EQ(preserved.at(3).toObject().value("outcome"_q).toString(), "carriedOver"_q);
}

TEST(ConfigMerge, mergedTextIsUtf8)
{
    const QByteArray merged =
        runTool({"config", "merge", example("entrance.cfg"), example("gate.cfg")}).out;
    EXPECT_TRUE(merged.contains("name=Eingang Süd - Tür 3\n")) << merged.toStdString();
}

TEST(ConfigMerge, onlyOneInputIsStandardInput)
{
    expectRun(runTool({"config", "merge", "-", "-"}), 2, "",
              "vantero-formats: only one of the files can be standard input\n");
    expectRun(runTool({"config", "splice", "-", "-", "s"}), 2, "",
              "vantero-formats: only one of the files can be standard input\n");
}

} // namespace
