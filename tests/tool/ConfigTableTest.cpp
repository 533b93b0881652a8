// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// "config table": rows, conditions, formats; and what all commands for sites share: faults,
// threads, lists of paths, signals.

#include "support/Expect.h"
#include "tool/Site.h"

#include <QtCore/QJsonArray>
#include <QtCore/QProcess>

#include <gmock/gmock.h>

#include <csignal>

namespace {

using testing::HasSubstr;

/** The words behind "address": of the rows that are printed as CSV. */
QByteArray addresses(const ToolResult &result)
{
    QList<QByteArray> words;
    for (const QByteArray &line : result.out.split('\n').mid(1))
        if (!line.isEmpty())
            words += line.left(line.indexOf(','));
    return words.join(' ');
}

// ---- Conditions --------------------------------------------------------------------------------

struct WhereRow
{
    const char *name;
    std::vector<std::string> conditions;
    const char *addresses;
};

void PrintTo(const WhereRow &row, std::ostream *out)
{
    *out << row.name;
}

class ConfigTableWhere : public Site, public testing::WithParamInterface<WhereRow>
{
};

TEST_P(ConfigTableWhere, keeps)
{
    file("1"_q, siteConfig("1", "ntp=10.0.0.1\nname=Gate\n", "VN-3.0.6.29"));
    file("2"_q, siteConfig("2", "ntp=10.0.0.1\nntp=10.0.0.2\n", "VN-3.0.8.4"));
    file("3"_q, siteConfig("3", "ntp=\nname\n", "R16-2.1.5.3"));
    zip("4.zip"_q,
        {{"4.cfg"_q, "no\nversions\n# Camera IP: 4\n\nSECTION s\nname=a/b=c\nENDSECTION s\n"_b}});
    std::vector<std::string> arguments = {".", "--recursive", "--csv"};
    for (const std::string &condition : GetParam().conditions)
        arguments.insert(arguments.end(), {"--where", condition});
    const ToolResult result = run("table", arguments);
    EXPECT_EQ(addresses(result), QByteArray(GetParam().addresses));
    EXPECT_EQ(result.exitCode, result.out.count('\n') > 1 ? 0 : 1) << result.err.constData();
}

const WhereRow s_whereRows[] = {
    {"nothing", {}, "1 2 3 4"},
    {"keyIsThere", {"s/ntp"}, "1 2 3"},
    {"keyWithoutValueIsThere", {"s/name"}, "1 3 4"},
    {"missingKey", {"s/none"}, ""},
    {"missingSection", {"t/ntp"}, ""},
    {"oneOfTheValuesIsIt", {"s/ntp=10.0.0.1"}, "1 2"},
    {"noneOfTheValuesIsIt", {"s/ntp!=10.0.0.1"}, "3 4"},
    {"noneOfTheValuesIsTheNewest", {"s/ntp!=10.0.0.2"}, "1 3 4"},
    {"missingCountsAsEmpty", {"s/name="}, "2 3"},
    {"missingIsNotSomething", {"s/name!=Gate"}, "2 3 4"},
    {"somethingIsThere", {"s/name!="}, "1 4"},
    {"valueIsTakenAsItStands", {"s/name= Gate"}, ""},
    {"valueMayHoldOperators", {"s/name=a/b=c"}, "4"},
    {"caseCounts", {"s/name=gate"}, ""},
    {"patternOfAll", {"s/name~*"}, "1 2 3 4"},
    {"patternOfOneCharacter", {"s/name~G?te"}, "1"},
    {"patternOfASet", {"s/ntp~10.0.0.[12]"}, "1 2"},
    {"patternOfAnotherSet", {"s/ntp~10.0.0.[^1]"}, "2"},
    {"patternIsOfTheWholeValue", {"s/ntp~10.0"}, ""},
    {"patternGoesOverSlashes", {"s/name~a*c"}, "4"},
    {"patternOfNothing", {"s/name~"}, "2 3"},
    {"addressIsThere", {"address"}, "1 2 3 4"},
    {"addressIsIt", {"address=2"}, "2"},
    {"addressIsNot", {"address!=2"}, "1 3 4"},
    {"addressMatches", {"address~[13]"}, "1 3"},
    {"firmwareIsThere", {"firmware"}, "1 2 3"},
    {"olderFirmware", {"firmware<VN-3.0.8.4"}, "1 3 4"},
    {"olderOrSameFirmware", {"firmware<=VN-3.0.8.4"}, "1 2 3 4"},
    {"newerFirmware", {"firmware>VN-3.0.6.29"}, "2"},
    {"newerOrSameFirmware", {"firmware>=VN-3.0.6.29"}, "1 2"},
    {"sameFirmware", {"firmware=VN-3.0.6.29"}, "1"},
    {"firmwareOfAPattern", {"firmware=VN-3.0.8.*"}, "2"},
    {"otherFirmware", {"firmware!=VN-3.0.8.*"}, "1 3 4"},
    {"numbersCountAndNotDigits", {"firmware<VN-3.0.10.0"}, "1 2 3 4"},
    {"firmwareByItsText", {"firmware~R*"}, "3"},
    {"noFirmware", {"firmware="}, "4"},
    {"allConditions", {"firmware>R16-2.0.0.0", "s/ntp=10.0.0.1", "address!=1"}, "2"},
};

INSTANTIATE_TEST_SUITE_P(ConfigTable, ConfigTableWhere, testing::ValuesIn(s_whereRows), nameOfRow);

using ConfigTable = Site;

TEST_F(ConfigTable, wrongConditionsAreShownWithACaret)
{
    file("a"_q, siteConfig("1"));
    const struct
    {
        const char *option;
        const char *text;
        const char *message;
        int caret;
    } rows[] = {
        {"--where", "", "neither \"address\" nor \"firmware\" nor SECTION/KEY", 0},
        {"--where", "name=3", "neither \"address\" nor \"firmware\" nor SECTION/KEY", 4},
        {"--where", "/key=3", "no SECTION before the \"/\"", 0},
        {"--where", "s/=3", "no KEY behind the \"/\"", 2},
        {"--where", "s/a!3", "no operator; there are = != ~ < <= > >=", 3},
        {"--where", "s/a!~3", "no operator; there are = != ~ < <= > >=", 3},
        {"--where", "s/a<3", "only \"firmware\" has an order", 3},
        {"--where", "address>=3", "only \"firmware\" has an order", 7},
        {"--where", "firmware<3.0.6", "no version: it begins with no known platform", 9},
        {"--where", "firmware!=x", "no version: it begins with no known platform", 10},
        {"--where", "s/a~[a", "no pattern of the shell", 4},
        {"--key", "name", "neither \"address\" nor \"firmware\" nor SECTION/KEY", 4},
        {"--key", "s/", "no KEY behind the \"/\"", 2},
    };
    for (const auto &row : rows)
        expectRun(run("table", {"a", row.option, row.text}), 2, "",
                  QByteArray("vantero-formats: ") + row.option + ": " + row.message + "\n  " +
                      row.text + "\n  " + QByteArray(row.caret, ' ') + "^\n");
    const ToolResult json = run("table", {"a", "--where", "s/=3", "--json"});
    EXPECT_EQ(json.exitCode, 2);
    EXPECT_EQ(json.json().value("error"_q).toObject().value("message"_q).toString(),
              "--where: no KEY behind the \"/\""_q);
}

// ---- Formats -----------------------------------------------------------------------------------

TEST_F(ConfigTable, columnsForPeople)
{
    file("a"_q, siteConfig("10.0.0.1", "k=1\nk=2\n"));
    file("b"_q, siteConfig("10.0.0.200", "k=\x1b[1m\n", "VN-3"));
    expectRun(run("table", {"a", "b", "--key", "s/k", "--key", "s/none", "--key", "s/k"}), 0,
              "ADDRESS     FIRMWARE     SOURCE  s/k      s/none\n"
              "10.0.0.1    VN-3.0.6.29  a       2;1      -\n"
              "10.0.0.200  VN-3         b       \\x1B[1m  -\n",
              "");
    expectRun(run("table", {"a", "--where", "address=x"}), 1, "",
              "vantero-formats: no configurations found\n");
}

TEST_F(ConfigTable, looksForMistypedNamesInLittle)
{
    const auto table = [&](const char *path) {
        return run("table", {path, "--csv", "--key", "s/kez"});
    };
    const QByteArray row = "address,firmware,source,s/kez\r\n10.0.0.1,VN-3.0.6.29,";
    file("small"_q, siteConfig("10.0.0.1", "key=1\n"));
    expectRun(table("small"), 0, row + "small,\r\n",
              "vantero-formats: warning: no configuration has s/kez; did you mean s/key?\n");
    // To look into it would take longer than the table, and gigabytes of memory.
    file("large"_q, siteConfig("10.0.0.1", "key=" + QByteArray(17 * 1024 * 1024, 'x') + '\n'));
    expectRun(table("large"), 0, row + "large,\r\n", "");
}

TEST_F(ConfigTable, csvIsThatOfRfc4180)
{
    file("a"_q, siteConfig("10.0.0.1", "a=1\na=2\nb=x,y\nc=say \"hi\"\nd=plain text\n"));
    zip("none.zip"_q, {{"x,y.cfg"_q, "SECTION s\nENDSECTION s\n"_b}});
    expectRun(run("table", {"a", "none.zip", "--csv", "--key", "s/a", "--key", "s/b", "--key",
                            "s/c", "--key", "s/d"}),
              0,
              "address,firmware,source,s/a,s/b,s/c,s/d\r\n"
              "10.0.0.1,VN-3.0.6.29,a,2;1,\"x,y\",\"say \"\"hi\"\"\",plain text\r\n"
              ",,\"none.zip:x,y.cfg\",,,,\r\n",
              "vantero-formats: none.zip:x,y.cfg: warning: no header: the first section is lost "
              "(line 1)\n");
}

TEST_F(ConfigTable, jsonHoldsRowsAndFaults)
{
    file("a"_q, siteConfig("10.0.0.1", "k=1\nk=2\nn\n"));
    zip("b.zip"_q, {{"none.cfg"_q, "SECTION s\nENDSECTION s\n"_b}});
    expectRun(run("table", {"a", "missing", "b.zip", "--json", "--key", "s/k", "--key", "s/n"}), 2,
              "{\n"
              "  \"rows\": [\n"
              "    {\n"
              "      \"address\": \"10.0.0.1\",\n"
              "      \"firmware\": \"VN-3.0.6.29\",\n"
              "      \"source\": \"a\",\n"
              "      \"values\": {\n"
              "        \"s/k\": [\"2\", \"1\"],\n"
              "        \"s/n\": [null]\n"
              "      }\n"
              "    },\n"
              "    {\n"
              "      \"address\": null,\n"
              "      \"firmware\": null,\n"
              "      \"source\": \"b.zip:none.cfg\",\n"
              "      \"values\": {\n"
              "        \"s/k\": [],\n"
              "        \"s/n\": []\n"
              "      }\n"
              "    }\n"
              "  ],\n"
              "  \"errors\": [\n"
              "    {\n"
              "      \"file\": \"missing\",\n"
              "      \"line\": null,\n"
              "      \"column\": null,\n"
              "      \"message\": \"No such file or directory\",\n"
              "      \"exitCode\": 2,\n"
              "      \"reason\": \"not-found\"\n"
              "    }\n"
              "  ],\n"
              "  \"warnings\": [\n"
              "    {\n"
              "      \"file\": \"b.zip:none.cfg\",\n"
              "      \"reason\": \"no-header\",\n"
              "      \"message\": \"no header: the first section is lost (line 1)\"\n"
              "    }\n"
              "  ]\n"
              "}\n",
              "");
    EXPECT_EQ(run("table", {"a", "--where", "address=x", "--json"}).out,
              "{\n  \"rows\": [],\n  \"errors\": [],\n  \"warnings\": []\n}\n");
}

TEST_F(ConfigTable, jsonLinesAreARowALine)
{
    file("a"_q, siteConfig("10.0.0.1", "k=\xc3\xa4\"\\\n"));
    expectRun(run("table", {"a", "missing", "a", "--jsonl", "--key", "s/k"}), 2,
              "{\"address\":\"10.0.0.1\",\"firmware\":\"VN-3.0.6.29\",\"source\":\"a\",\"values\":{"
              "\"s/k\":[\"\xc3\xa4\\\"\\\\\"]}}\n"
              "{\"address\":\"10.0.0.1\",\"firmware\":\"VN-3.0.6.29\",\"source\":\"a\",\"values\":{"
              "\"s/k\":[\"\xc3\xa4\\\"\\\\\"]}}\n",
              "vantero-formats: missing: No such file or directory\n");
}

TEST_F(ConfigTable, formatsExcludeEachOther)
{
    file("a"_q, siteConfig("1"));
    EXPECT_EQ(run("table", {"a", "--csv", "--jsonl"}).exitCode, 2);
    EXPECT_EQ(run("table", {"a", "--csv", "--json"}).exitCode, 2);
    EXPECT_EQ(run("table", {"a", "--jsonl", "--json"}).exitCode, 2);
}

// ---- Faults ------------------------------------------------------------------------------------

TEST_F(ConfigTable, faultsHaveReasons)
{
    const QList<QPair<QString, QByteArray>> three = {{"1.cfg"_q, siteConfig("1", "mark=1\n")},
                                                     {"2.cfg"_q, siteConfig("2", "mark=2\n")},
                                                     {"3.cfg"_q, siteConfig("3", "mark=3\n")}};
    zip("good.zip"_q, three, {"-0"_q});
    const QByteArray good = readFile(path("good.zip"_q));
    file("damaged.zip"_q, QByteArray(good).replace("mark=2", "mark=x"));
    file("cut.zip"_q, good.left(good.size() / 2));
    file("text.zip"_q, "no archive"_b);
    file("end.zip"_q, good.left(good.size() - 1));
    file("empty.zip"_q, ""_b);
    file("damaged.jpg"_q, "\xff\xd8\xff\xc0\x01"_b);
    zip("one.zip"_q, {three.first()});
    zip("thin.zip"_q, {{"1.cfg"_q, siteConfig("1") + QByteArray(17 << 20, '\n')}});
    zip("secret.zip"_q, three, {"-P"_q, "secret"_q});
    file("wrong"_q, "wrong"_b);
    file("right"_q, "secret"_b);
    file("broken"_q, siteConfig("7") + "SECTION b\nENDSECTION b\nSECTION c\nSECTION d\n"
                                       "ENDSECTION d\nSECTION e\nENDSECTION e\n");
    file("none"_q, "no header\n\n"_b);
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("folder"_q));

    const struct
    {
        const char *name;
        std::vector<std::string> arguments;
        const char *addresses;
        const char *faults; // "source reason; …"
        int exitCode;
    } rows[] = {
        {"good", {"good.zip"}, "1 2 3", "", 0},
        {"oneBadEntryCostsItself", {"damaged.zip"}, "1 3", "damaged.zip:2.cfg damaged", 2},
        {"cut", {"cut.zip", "good.zip"}, "1 2 3", "cut.zip truncated", 2},
        {"noArchive", {"text.zip"}, "", "text.zip not-an-archive", 2},
        {"noPassword",
         {"secret.zip"},
         "",
         "secret.zip:1.cfg needs-password; secret.zip:2.cfg needs-password; secret.zip:3.cfg "
         "needs-password",
         2},
        {"rightPassword", {"secret.zip", "--password-file", "right"}, "1 2 3", "", 0},
        {"entryLimit",
         {"good.zip", "--entry-size-limit", "10"},
         "",
         "good.zip:1.cfg over-entry-size-limit; good.zip:2.cfg over-entry-size-limit; "
         "good.zip:3.cfg over-entry-size-limit",
         2},
        {"countLimit",
         {"good.zip", "--entry-count-limit", "2"},
         "",
         "good.zip over-entry-count-limit",
         2},
        {"archiveLimit",
         {"good.zip", "--archive-size-limit", "200", "--jobs", "1"},
         "1 2",
         "good.zip:3.cfg over-archive-size-limit",
         2},
        {"wrongPassword",
         {"secret.zip", "good.zip", "--password-file", "wrong"},
         "1 2 3",
         "secret.zip:1.cfg wrong-password; secret.zip:2.cfg wrong-password; secret.zip:3.cfg "
         "wrong-password",
         2},
        {"ratioLimit",
         {"thin.zip", "good.zip", "--ratio-limit", "2"},
         "1 2 3",
         "thin.zip:1.cfg over-ratio-limit",
         2},
        {"totalLimit",
         {"good.zip", "one.zip", "--total-size-limit", "280", "--jobs", "1"},
         "1 2 3",
         "one.zip:1.cfg over-total-size-limit",
         2},
        {"cutAtItsEnd", {"end.zip", "good.zip"}, "1 2 3", "end.zip truncated", 2},
        {"nothing", {"empty.zip", "good.zip"}, "1 2 3", "empty.zip not-an-archive", 2},
        {"imageDamaged", {"damaged.jpg"}, "", "damaged.jpg image-damaged", 2},
        {"missing", {"nowhere", "good.zip"}, "1 2 3", "nowhere not-found", 2},
        {"noFile", {"/dev/null"}, "", "/dev/null not-a-file", 2},
        {"unreadable", {"/proc/self/mem"}, "", "/proc/self/mem file-unreadable", 2},
        {"folder", {"folder", "good.zip"}, "1 2 3", "folder folder-skipped", 0},
        {"noConfiguration", {"none", "good.zip"}, "1 2 3", "none no-configuration", 0},
        {"brokenSections", {"broken"}, "7", "broken sections-broken", 2},
        {"stopAtTheFirst",
         {"good.zip", "nowhere", "text.zip", "good.zip", "--on-error", "stop"},
         "1 2 3",
         "nowhere not-found",
         2},
        {"skipIsTheDefault",
         {"nowhere", "good.zip", "--on-error", "skip"},
         "1 2 3",
         "nowhere not-found",
         2},
    };
    for (const auto &row : rows) {
        for (const char *jobs : {"1", "3"}) {
            SCOPED_TRACE(std::string(row.name) + ", jobs " + jobs);
            std::vector<std::string> arguments = row.arguments;
            arguments.push_back("--json");
            if (std::find(arguments.begin(), arguments.end(), "--jobs") == arguments.end())
                arguments.insert(arguments.end(), {"--jobs", jobs});
            const ToolResult result = run("table", arguments);
            EXPECT_EQ(result.err, "");
            QStringList found;
            for (const QJsonValue &each : result.json().value("rows"_q).toArray())
                found += each.toObject().value("address"_q).toString();
            EXPECT_EQ(found.join(" "_q), QString::fromLatin1(row.addresses));
            QStringList faults;
            for (const QString &list : {"errors"_q, "warnings"_q})
                for (const QJsonValue &each : result.json().value(list).toArray())
                    faults += each.toObject().value("file"_q).toString() + " "_q +
                              each.toObject().value("reason"_q).toString();
            EXPECT_EQ(faults.join("; "_q), QString::fromLatin1(row.faults));
            EXPECT_EQ(result.exitCode, row.exitCode);
        }
    }
    expectRun(run("table", {"broken", "--csv"}), 2,
              "address,firmware,source\r\n7,VN-3.0.6.29,broken\r\n",
              "vantero-formats: broken: 2 of 5 sections readable, line 11\n");
}

TEST_F(ConfigTable, readsArchivesOf65535EntriesWithOneBadOneInTheMidst)
{
    constexpr int kEntries = 65535; // the most without the longer form of the directory
    runProgram("python3"_q,
               {"-c"_q, "import zipfile\n"
                        "with zipfile.ZipFile('many.zip', 'w') as z:\n"
                        "    for i in range(65535):\n"
                        "        z.writestr('%05d.cfg' % i, '#:1\\n#:VN-3.0\\n'\n"
                        "                   '# Camera IP: %d\\n\\n' % i)\n"_q},
               m_dir.path());
    QByteArray bytes = readFile(path("many.zip"_q));
    bytes.replace("# Camera IP: 32767\n", "# Camera IP: 3276x\n");
    file("many.zip"_q, bytes);
    const ToolResult result = run("table", {"many.zip", "--csv"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(),
                testing::MatchesRegex("vantero-formats: many.zip:32767.cfg: [^\n]*\n"));
    QList<QByteArray> lines = result.out.split('\n');
    ASSERT_EQ(lines.size(), 1 + kEntries - 1 + 1);
    EXPECT_EQ(lines.at(1), "0,VN-3.0,many.zip:00000.cfg\r");
    EXPECT_EQ(lines.at(32767), "32766,VN-3.0,many.zip:32766.cfg\r");
    EXPECT_EQ(lines.at(32768), "32768,VN-3.0,many.zip:32768.cfg\r");
    EXPECT_EQ(lines.at(kEntries - 1), "65534,VN-3.0,many.zip:65534.cfg\r");
}

TEST_F(ConfigTable, countsWhatAllArchivesHoldOverAllOfALongList)
{
    zip("a.zip"_q, {{"x.cfg"_q, siteConfig("1")}});
    zip("b.zip"_q, {{"x.cfg"_q, siteConfig("2")}});
    QProcess tool;
    tool.setWorkingDirectory(m_dir.path());
    tool.start(QString::fromLatin1(VANTERO_TOOL),
               {"config"_q, "table"_q, "--files-from"_q, "-"_q, "--csv"_q, "--total-size-limit"_q,
                QString::number(siteConfig("1").size() + 1)});
    ASSERT_TRUE(tool.waitForStarted());
    for (const char *line : {"a.zip\n", "b.zip\n", "a.zip\n"}) {
        tool.write(line);
        ASSERT_TRUE(tool.waitForBytesWritten());
        ::usleep(200 * 1000); // until it has been taken for itself
    }
    tool.closeWriteChannel();
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.readAllStandardOutput(),
              "address,firmware,source\r\n1,VN-3.0.6.29,a.zip:x.cfg\r\n");
    const QByteArray limit = "more than the limit of " +
                             QByteArray::number(siteConfig("1").size() + 1) +
                             " bytes for all archives\n";
    EXPECT_EQ(tool.readAllStandardError(),
              "vantero-formats: b.zip:x.cfg: " + limit + "vantero-formats: a.zip:x.cfg: " + limit);
}

TEST_F(ConfigTable, allCommandsThatReadArchivesHaveTheLimits)
{
    zip("site/a.zip"_q, {{"x.cfg"_q, siteConfig("1") + QByteArray(17 << 20, '\n')}});
    zip("site/b.zip"_q, {{"y.cfg"_q, siteConfig("2")}});
    const std::vector<std::string> commands[] = {
        {"config", "show", "site", "--recursive"},
        {"config", "lint", "site", "--recursive", "--severity", "error"},
        {"config", "diff", "site", "site/b.zip"},
        {"config", "collect", "site", "--recursive", "--jobs", "1"},
        {"config", "table", "site", "--recursive", "--jobs", "1"},
        {"version", "check", "VN-9", "--configurations", "site", "--recursive"},
    };
    const struct
    {
        const char *option;
        const char *value;
        const char *message;
    } limits[] = {
        {"--entry-size-limit", "1000", "a.zip:x.cfg: more than the limit of 1000 bytes\n"},
        {"--archive-size-limit", "1000",
         "a.zip:x.cfg: more than the limit of 1000 bytes for all entries\n"},
        {"--total-size-limit", "1000",
         "a.zip:x.cfg: more than the limit of 1000 bytes for all archives\n"},
        {"--entry-count-limit", "0", "a.zip: more than the limit of 0 entries\n"},
        {"--ratio-limit", "2", "a.zip:x.cfg: compressed more than the limit of 2 times\n"},
    };
    for (const auto &command : commands) {
        for (const auto &limit : limits) {
            SCOPED_TRACE(command[0] + ' ' + command[1] + ' ' + limit.option);
            ToolCall call;
            call.arguments = command;
            call.arguments.insert(call.arguments.end(), {limit.option, limit.value});
            call.folder = m_dir.path().toStdString();
            const ToolResult result = runTool(call);
            EXPECT_EQ(result.exitCode, 2);
            EXPECT_THAT(result.err.toStdString(),
                        HasSubstr(std::string("vantero-formats: site/") + limit.message));
        }
    }
    expectRun(runTool({"version", "check", "VN-3", "VN-4", "--ratio-limit", "2"}), 2, "",
              "vantero-formats: version check: --ratio-limit requires --configurations (see "
              "vantero-formats version check --help)\n");
}

// ---- Threads, lists, shards
// ----------------------------------------------------------------------

TEST_F(ConfigTable, orderIsThatOfTheSources_withAnyNumberOfThreads)
{
    QByteArray expected = "address,firmware,source,s/k\r\n";
    QList<QPair<QString, QByteArray>> entries;
    for (int i = 0; i < 300; ++i) {
        const QString name = "d/%1"_q.arg(i, 3, 10, QLatin1Char('0'));
        const QByteArray lines = "k=" + QByteArray::number(i) + "\n";
        // Some take longer than others.
        file(name, siteConfig(QByteArray::number(i), lines) + QByteArray(i % 7 * 20000, '\n'));
        expected += QByteArray::number(i) + ",VN-3.0.6.29," + name.toUtf8() + ',' +
                    QByteArray::number(i) + "\r\n";
    }
    for (int i = 300; i < 350; ++i) {
        const QByteArray lines = "k=" + QByteArray::number(i) + "\n";
        entries.append({"%1.cfg"_q.arg(i), siteConfig(QByteArray::number(i), lines)});
        expected += QByteArray::number(i) + ",VN-3.0.6.29,d/z.zip:" + QByteArray::number(i) +
                    ".cfg," + QByteArray::number(i) + "\r\n";
    }
    zip("d/z.zip"_q, entries);
    for (const char *jobs : {"1", "2", "3", "16"})
        expectRun(run("table", {"d", "--recursive", "--csv", "--key", "s/k", "--jobs", jobs}), 0,
                  expected, "");
    EXPECT_EQ(run("table", {"d", "--jobs", "0"}).exitCode, 2);
}

TEST_F(ConfigTable, shardsPutTogetherEqualOneRun)
{
    QByteArray list;
    for (int i = 0; i < 40; ++i) {
        const QString name = "%1.cfg"_q.arg(i);
        file(name, siteConfig(QByteArray::number(i), "k=" + QByteArray::number(i % 3) + "\n"));
        list += name.toUtf8() + '\n';
    }
    const QList<QByteArray> lines = list.split('\n').mid(0, 40);
    for (const std::string format : {"--jsonl", "--csv"}) {
        const std::vector<std::string> arguments = {"--files-from", "-",      "--key", "s/k",
                                                    "--where",      "s/k!=1", format};
        const QByteArray whole = run("table", arguments, list).out;
        EXPECT_EQ(whole.count('\n'), 27 + (format == "--csv" ? 1 : 0));
        for (const int shards : {2, 3, 7}) {
            QByteArray together;
            for (int i = 0; i < shards; ++i) {
                QByteArray shard;
                for (int j = 40 * i / shards; j < 40 * (i + 1) / shards; ++j)
                    shard += lines.at(j) + '\n';
                QByteArray part = run("table", arguments, shard).out;
                if (format == "--csv" && i > 0)
                    part.remove(0, part.indexOf('\n') + 1); // its header
                together += part;
            }
            EXPECT_EQ(together, whole) << format << ", " << shards << " shards";
        }
    }
}

TEST_F(ConfigTable, takesPathsFromAList)
{
    file("a"_q, siteConfig("1"));
    file("b c"_q, siteConfig("2"));
    file("d\ne"_q, siteConfig("3"));
    file("lines"_q, "a\n\nb c\na"_b);
    file("zeros"_q, QByteArray("b c\0d\ne\0", 8));
    const struct
    {
        std::vector<std::string> arguments;
        QByteArray input;
        const char *addresses;
    } rows[] = {
        {{"--files-from", "lines"}, "", "1 2 1"},
        {{"b c", "--files-from", "lines"}, "", "2 1 2 1"},
        {{"--files-from", "zeros", "--null"}, "", "2 3"},
        {{"--files-from", "-"}, "b c\na\n", "2 1"},
        {{"--files-from", "-", "--null"}, QByteArray("a\0d\ne", 5), "1 3"},
    };
    for (const auto &row : rows) {
        std::vector<std::string> arguments = row.arguments;
        arguments.push_back("--json");
        const ToolResult result = run("table", arguments, row.input);
        EXPECT_EQ(result.exitCode, 0);
        QStringList found;
        for (const QJsonValue &each : result.json().value("rows"_q).toArray())
            found += each.toObject().value("address"_q).toString();
        EXPECT_EQ(found.join(" "_q), QString::fromLatin1(row.addresses));
    }
    expectRun(run("table", {"--files-from", "-"}), 1, "",
              "vantero-formats: no configurations found\n");
    expectRun(run("table", {"--files-from", "missing"}), 2, "",
              "vantero-formats: missing: No such file or directory\n");
    expectRun(run("table", {}), 2, "", "vantero-formats: no PATH and no --files-from\n");
    expectRun(run("table", {"--files-from", "-", "--password-file", "-"}), 2, "",
              "vantero-formats: standard input cannot be the list and the password\n");
    EXPECT_EQ(run("table", {"a", "--null"}).exitCode, 2);
}

TEST_F(ConfigTable, rowsOfTheFirstPathAreOutBeforeTheLastOneIsKnown)
{
    file("a"_q, siteConfig("1"));
    file("b"_q, siteConfig("2"));
    for (const char *jobs : {"1", "2"}) {
        QProcess tool;
        tool.setWorkingDirectory(m_dir.path());
        tool.start(QString::fromLatin1(VANTERO_TOOL),
                   {"config"_q, "table"_q, "--files-from"_q, "-"_q, "--jsonl"_q, "--jobs"_q,
                    QString::fromLatin1(jobs)});
        ASSERT_TRUE(tool.waitForStarted());
        tool.write("a\n");
        ASSERT_TRUE(tool.waitForBytesWritten());
        QByteArray out;
        while (!out.endsWith('\n') && tool.waitForReadyRead())
            out += tool.readAllStandardOutput();
        EXPECT_THAT(out.toStdString(), HasSubstr("\"address\":\"1\""));
        tool.write("b\n");
        tool.closeWriteChannel();
        ASSERT_TRUE(tool.waitForFinished());
        EXPECT_THAT(tool.readAllStandardOutput().toStdString(), HasSubstr("\"address\":\"2\""));
        EXPECT_EQ(tool.exitCode(), 0);
    }
}

// ---- Signals -----------------------------------------------------------------------------------

/** A tool that has read the paths "a" and "b" and waits for more. */
void startWaiting(QProcess &tool, const QString &folder, const QStringList &arguments)
{
    tool.setWorkingDirectory(folder);
    tool.start(QString::fromLatin1(VANTERO_TOOL),
               QStringList{"config"_q} + arguments + QStringList{"--files-from"_q, "-"_q});
    ASSERT_TRUE(tool.waitForStarted());
    tool.write("a\nb\n");
    ASSERT_TRUE(tool.waitForBytesWritten());
}

void expectInterrupted(QProcess &tool, int signal, const char *message)
{
    ASSERT_EQ(::kill(pid_t(tool.processId()), signal), 0);
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(tool.exitCode(), signal); // as QProcess tells it
    EXPECT_EQ(tool.readAllStandardError(), QByteArray("vantero-formats: ") + message + '\n');
}

TEST_F(ConfigTable, aSignalLeavesWholeRows)
{
    file("a"_q, siteConfig("1"));
    file("b"_q, siteConfig("2"));
    QProcess tool;
    startWaiting(tool, m_dir.path(), {"table"_q, "--json"_q});
    ASSERT_FALSE(tool.waitForFinished(200));
    ASSERT_EQ(::kill(pid_t(tool.processId()), SIGTERM), 0);
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitStatus(), QProcess::CrashExit);
    QJsonParseError error = {};
    const QJsonDocument document = QJsonDocument::fromJson(tool.readAllStandardOutput(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError);
    EXPECT_EQ(document.object().value("errors"_q), QJsonArray());
    EXPECT_EQ(tool.readAllStandardError(), "");
}

TEST_F(ConfigTable, collectedFilesAreWholeAfterASignal)
{
    file("a"_q, siteConfig("1"));
    file("b"_q, siteConfig("2"));
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const QString out = "out%1"_q.arg(signal);
        const auto before = std::signal(signal, SIG_DFL); // the tool inherits what is ignored
        QProcess tool;
        startWaiting(tool, m_dir.path(), {"collect"_q, "--output-folder"_q, out});
        // The files wait in a hidden folder until all are there.
        const auto isWaiting = [&] {
            const QDir folder(path(out));
            const QStringList hidden =
                folder.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
            return !hidden.isEmpty() &&
                   QDir(folder.filePath(hidden.first())).entryList(QDir::Files).size() == 2;
        };
        for (int i = 0; i < 1000 && !isWaiting(); ++i)
            ::usleep(10000);
        ASSERT_TRUE(isWaiting());
        expectInterrupted(tool, signal, "interrupted; 2 files written, each whole");
        const QDir folder(path(out));
        QList<QByteArray> contents;
        for (const QString &name :
             folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
            contents += readFile(folder.filePath(name));
        EXPECT_EQ(contents, (QList<QByteArray>{siteConfig("1"), siteConfig("2")}));
        std::signal(signal, before);
    }
}

TEST_F(ConfigTable, noArchiveIsLeftByASignal)
{
    file("a"_q, siteConfig("1"));
    file("b"_q, siteConfig("2"));
    QProcess tool;
    startWaiting(tool, m_dir.path(), {"collect"_q, "--output-archive"_q, "out.zip"_q});
    ASSERT_FALSE(tool.waitForFinished(300));
    expectInterrupted(tool, SIGINT, "interrupted; no archive written");
    EXPECT_FALSE(QFileInfo::exists(path("out.zip"_q)));
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              (QStringList{"a"_q, "b"_q}));
}

TEST_F(ConfigTable, anIgnoredSignalStaysIgnored)
{
    file("a"_q, siteConfig("1"));
    file("b"_q, siteConfig("2"));
    const auto before = std::signal(SIGHUP, SIG_IGN); // as nohup does
    QProcess tool;
    startWaiting(tool, m_dir.path(), {"table"_q, "--csv"_q});
    ASSERT_FALSE(tool.waitForFinished(200));
    ASSERT_EQ(::kill(pid_t(tool.processId()), SIGHUP), 0);
    tool.closeWriteChannel();
    ASSERT_TRUE(tool.waitForFinished());
    std::signal(SIGHUP, before);
    EXPECT_EQ(tool.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(tool.readAllStandardOutput().count('\n'), 3);
}

} // namespace
