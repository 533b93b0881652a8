// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A configuration as JSON and back.

#include "RandomText.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <gtest/gtest.h>

namespace {

TEST(ConfigWrite, whatIsShownAsJsonIsWrittenBackToTheSame)
{
    Random random(20110317);
    int round = 0;
    for (; round < 200; ++round) {
        const QByteArray text = randomText(random, random.below(2) ? "\n" : "\r\n");
        SCOPED_TRACE(text.toStdString());
        const ToolResult shown = runTool({"config", "show", "-", "--json"}, text);
        ASSERT_EQ(shown.exitCode, 0) << shown.err.toStdString();
        const ToolResult written = runTool({"config", "write", "-"}, shown.out);
        ASSERT_EQ(written.exitCode, 0) << written.err.toStdString();
        EXPECT_EQ(runTool({"config", "show", "-", "--json"}, written.out).out, shown.out)
            << written.out.toStdString();
        if (HasFailure())
            return;
    }
    EXPECT_EQ(round, 200);
}

TEST(ConfigWrite, theExamplesGoToJsonAndBack)
{
    for (const char *name :
         {"dock.cfg", "entrance.cfg", "gate-factory.cfg", "gate.cfg", "gate.jpg"}) {
        QJsonObject shown = runTool({"config", "show", example(name), "--json"}).json();
        const ToolResult written = runTool({"config", "write", "-"}, QJsonDocument(shown).toJson());
        EXPECT_EQ(written.exitCode, 0) << written.err.toStdString();
        const QJsonObject again = runTool({"config", "show", "-", "--json"}, written.out).json();
        EXPECT_EQ(again.value("sections"_q), shown.value("sections"_q)) << name;
    }
}

TEST(ConfigWrite, whatIsNoConfigurationAsJsonIsRefused)
{
    const struct
    {
        const char *json;
        const char *message;
    } rows[] = {
        {"", "-:1:1: no JSON: illegal value"},
        {"{\n \"sections\": {]", "-:2:16: no JSON: unterminated object"},
        {"[]",
         "-: no object \"sections\", as \"config show --json\" prints it of one configuration"},
        {"{\"sections\": []}",
         "-: no object \"sections\", as \"config show --json\" prints it of one configuration"},
        {R"({"sections": {"s": "k=v"}})", "-: the section \"s\" is no object"},
        {R"({"sections": {"s": {"k": "v"}}})",
         "-: the values of \"k\" in section \"s\" are no list of texts"},
        {R"({"sections": {"s": {"k": ["v", 1]}}})",
         "-: the values of \"k\" in section \"s\" are no list of texts"},
        {R"({"sections": {"s": {"a=b": ["v"]}}})",
         "-: the format cannot hold \"a=b\" of the section \"s\": it would be read back "
         "differently"},
        {R"({"sections": {"s": {"k": ["v\nENDSECTION s"]}}})",
         "-: the format cannot hold that: SECTION expected before ENDSECTION s"},
        {R"({"sections": {"s": {"": [null]}}})",
         "-: the format cannot hold \"\" of the section \"s\": it would be read back differently"},
        {R"({"sections": {"s": {"k": ["\ud800"]}}})",
         "-: the format cannot hold \"k\" of the section \"s\": it would be read back differently"},
    };
    for (const auto &row : rows)
        expectRun(runTool({"config", "write", "-"}, row.json), 2, "",
                  QByteArray("vantero-formats: ") + row.message + '\n');
}

} // namespace
