// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What reading drops, cuts or takes otherwise than it looks is told on standard error, by every
// command that reads.

#include "support/Expect.h"
#include "support/Random.h"
#include "tool/RandomText.h"
#include "tool/Site.h"
#include "tool/files/ConfigInput.h"

#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Row
{
    const char *name;
    std::vector<std::string> arguments; ///< of the file "a"
    QByteArray content;
    QByteArray warning; ///< what stands on standard error

    friend void PrintTo(const Row &row, std::ostream *out) { *out << row.name; }
};

const QByteArray kHeader = "#:1\n#:VN-3.0.6.29\n# Camera IP: 1\n"_b;
const QByteArray kSection = "SECTION s\nk=1\nENDSECTION s\n"_b;
const QByteArray kOutside = kHeader + "\nlost=1\n" + kSection;
const QByteArray kTwoAddresses = kHeader + "# Camera IP: 2\n\n" + kSection;
const QByteArray kNoBlank = kHeader + "\nSECTION_s\nk=1\nENDSECTION_s\n";
const QByteArray kLostSection = kHeader + kSection + "\n" + kSection;

const QByteArray kOutsideIs = "a: warning: outside of sections, so it is not read (line 5)"_b;
const QByteArray kTwoAddressesAre =
    "a: warning: the address in line 4 counts, not this one (line 3)"_b;
const QByteArray kLostSectionIs =
    "a: warning: the header goes on to the next empty line, and section \"s\" is lost (line 4)"_b;

const Row s_rows[] = {
    {"configShow", {"config", "show", "a"}, kOutside, kOutsideIs},
    {"configShowOfAKey",
     {"config", "show", "a", "--section", "s", "--key", "k"},
     kLostSection,
     kLostSectionIs},
    {"configShowOfAFolder", {"config", "show", ".", "--recursive"}, kOutside, "./" + kOutsideIs},
    {"configDiff", {"config", "diff", "a", "whole"}, kTwoAddresses, kTwoAddressesAre},
    {"configDiffOfFolders", {"config", "diff", ".", "whole"}, kOutside, "./" + kOutsideIs},
    {"configMerge", {"config", "merge", "whole", "a"}, kOutside, kOutsideIs},
    {"configTable", {"config", "table", "a"}, kOutside, kOutsideIs},
    {"configTableOfAHeader", {"config", "table", "a", "--csv"}, kLostSection, kLostSectionIs},
    {"configTableOfAName",
     {"config", "table", "a", "--jsonl"},
     kNoBlank,
     "a: warning: not a blank, but \"_\" is between the word and the name \"s\" (line 5); 1 more: "
     "see "
     "\"config lint\""_b},
    {"configCollect", {"config", "collect", "a"}, kTwoAddresses, kTwoAddressesAre},
    {"configCollectOfALine", {"config", "collect", "a"}, kOutside, kOutsideIs},
    {"configRemove",
     {"config", "remove", "a", "s"},
     kOutside,
     "a:5: warning: outside of sections, so it goes, too"_b},
    {"configSetOfATextWithoutHeader",
     {"config", "set", "a", "t", "k", "2"},
     kSection + "\nSECTION t\nk=1\nENDSECTION t\n",
     "a: warning: no header: the first section is lost (line 1)"_b},
    {"versionCheckOfASite",
     {"version", "check", "--configurations", "a", "--", "VN-4"},
     kTwoAddresses,
     kTwoAddressesAre},
    {"versionShow",
     {"version", "show", "VN-3.99999"},
     {},
     "warning: \"VN-3.99999\": \"99999\" has more than 16 bits and is read as -31073"_b},
    {"versionCompare",
     {"version", "compare", "VN-3.O", "VN-3.0"},
     {},
     "warning: \"VN-3.O\": \"O\" is no number and is read as 0"_b},
    {"versionCheckByItsWords",
     {"version", "check", "--literal", "VN-3.O", "VN-3.0"},
     {},
     "warning: \"VN-3.O\": \"O\" is no number and is read as 0"_b},
    {"versionSort",
     {"version", "sort", "a"},
     "VN-3.O\n"_b,
     "a: warning: \"VN-3.O\": \"O\" is no number and is read as 0"_b},
    {"firmware",
     {"firmware", "a"},
     "## Version: VN-3.O\n"_b,
     "a: warning: \"VN-3.O\": \"O\" is no number and is read as 0"_b},
    {"alarmsList",
     {"alarms", "list", "a"},
     "[9007199254740993]"_b,
     "a: warning: the number \"9007199254740993\" is rounded: 15 digits are kept, and sizes from "
     "1e-307 to 1e308 (line 1)"_b},
    {"alarmsUpdate",
     {"alarms", "update", "a"},
     "x=99999999999"_b,
     "a: warning: the number \"99999999999\" is cut to 32 bits: it becomes 1215752191 (line 1)"_b},
    {"alarmsUpdateByLines",
     {"alarms", "update", "a", "--lines"},
     "x=1\ny=2;x=99999999999\n"_b,
     "a: warning: the number \"99999999999\" is cut to 32 bits: it becomes 1215752191 (line 2)"_b},
};

class Losses : public Site, public testing::WithParamInterface<Row>
{
};

TEST_P(Losses, areTold)
{
    const Row &row = GetParam();
    file("a"_q, row.content);
    if (row.arguments.at(1) == "diff" || row.arguments.at(1) == "merge")
        file("whole"_q, kHeader + "\n" + kSection);
    ToolCall call;
    call.arguments = row.arguments;
    call.folder = m_dir.path().toStdString();
    const ToolResult result = runTool(call);
    EXPECT_EQ(result.err, "vantero-formats: " + row.warning + '\n');
    EXPECT_NE(result.exitCode, 2);
}

INSTANTIATE_TEST_SUITE_P(Commands, Losses, testing::ValuesIn(s_rows), nameOfRow);

using LossesOfSites = Site;

TEST_F(LossesOfSites, standAmongTheWarningsOfJson)
{
    file("a"_q, kOutside);
    for (const char *command : {"table", "collect"}) {
        const ToolResult result = run(command, {"a", "--json"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.json().value("warnings"_q),
                  (QJsonArray{QJsonObject{
                      {"file"_q, "a"_q},
                      {"reason"_q, "entry-outside-section"_q},
                      {"message"_q, "outside of sections, so it is not read (line 5)"_q}}}));
    }
}

TEST_F(LossesOfSites, quickLookMissesNothing)
{
    Random random(20260722);
    static const char *const lines[] = {"SECTION s",
                                        "SECTION_s",
                                        "SECTION",
                                        "SECTION ",
                                        "ENDSECTION s",
                                        "ENDSECTION",
                                        " SECTION s",
                                        "# Camera IP: 3",
                                        "Configuration of 10.0.0.1",
                                        "# camera ip:4",
                                        "\r",
                                        "#:1.0=x"};
    int losses = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray text = randomText(random, random.below(4) == 0 ? "\r\n" : "\n");
        for (unsigned n = random.below(3); n > 0; --n) { // a line in any place
            const int at = int(random.below(unsigned(text.count('\n') + 1)));
            QList<QByteArray> parts = text.split('\n');
            parts.insert(at, lines[random.below(12)]);
            text = parts.join('\n');
        }
        const QString decoded = QString::fromUtf8(text);
        const auto full = vn::tool::lossOf(vn::VanteroConfigText(decoded), "a"_q);
        const auto quick = vn::tool::quickLossOf(decoded, "a"_q);
        ASSERT_EQ(bool(quick), bool(full)) << text.constData();
        if (full) {
            ASSERT_EQ(quick->message(), full->message());
        }
        losses += full ? 1 : 0;
    }
    EXPECT_GT(losses, 5000);
    EXPECT_LT(losses, 19000);
}

} // namespace
