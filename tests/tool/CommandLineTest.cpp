// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What holds for all commands: help, usage errors, exit codes, encodings of arguments.

#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kGate = VANTERO_EXAMPLE_DATA "/gate.cfg";

std::string toStd(const QByteArray &bytes)
{
    return bytes.toStdString();
}

QJsonObject errorOf(const ToolResult &result)
{
    return result.json().value("error"_q).toObject();
}

/** The commands there are, as the tool lists them. */
std::vector<std::vector<std::string>> allCommands()
{
    std::vector<std::vector<std::string>> commands;
    for (const QByteArray &line : runTool({"--list-commands"}).out.split('\n')) {
        std::vector<std::string> words;
        for (const QByteArray &word : line.split('\t').first().split(' '))
            words.push_back(toStd(word));
        if (!line.isEmpty())
            commands.push_back(words);
    }
    return commands;
}

TEST(CommandLine, versionIsThatOfTheProject)
{
    expectRun(runTool({"--version"}), 0, "vantero-formats 1.0.0\n", "");
    expectRun(runTool({"--version", "--json"}), 0, "{\n  \"version\": \"1.0.0\"\n}\n", "");
    expectRun(runTool({"-V"}), 0, "vantero-formats 1.0.0\n", "");
    expectRun(runTool({"--json", "--version"}), 0, "{\n  \"version\": \"1.0.0\"\n}\n", "");
}

TEST(CommandLine, listOfCommandsAsJsonTellsWhatTheHelpTells)
{
    const QJsonArray commands =
        runTool({"--list-commands", "--json"}).json().value("commands"_q).toArray();
    ASSERT_EQ(std::size_t(commands.size()), allCommands().size());

    const QJsonObject show = commands.first().toObject();
    EXPECT_EQ(show.value("name"_q).toString(), "config show"_q);
    EXPECT_EQ(show.value("summary"_q).toString(),
              "show the header and sections of a configuration"_q);
    EXPECT_EQ(show.value("arguments"_q).toArray(),
              (QJsonArray{QJsonObject{
                  {"name"_q, "FILE"_q},
                  {"meaning"_q, "configuration or JPEG image, \"-\" for standard input"_q},
                  {"takes"_q, "file"_q},
                  {"required"_q, true},
                  {"repeated"_q, true}}}));
    EXPECT_EQ(show.value("options"_q).toArray().first().toObject(),
              (QJsonObject{{"name"_q, "--section"_q},
                           {"meaning"_q, "only this section"_q},
                           {"value"_q, "NAME"_q},
                           {"takes"_q, "section"_q},
                           {"required"_q, false},
                           {"repeated"_q, false}}));

    for (const QJsonValue &value : commands) { // nothing of the help is missing
        const QJsonObject command = value.toObject();
        std::vector<std::string> words;
        for (const QString &word : command.value("name"_q).toString().split(QLatin1Char(' ')))
            words.push_back(word.toStdString());
        words.push_back("--help");
        const std::string help = toStd(runTool(words).out);
        for (const char *list : {"arguments", "options"})
            for (const QJsonValue &item : command.value(QLatin1String(list)).toArray())
                EXPECT_THAT(
                    help,
                    HasSubstr("\n  " + item.toObject().value("name"_q).toString().toStdString()));
        for (const QJsonValue &item : command.value("examples"_q).toArray())
            EXPECT_THAT(help,
                        HasSubstr(item.toObject().value("command"_q).toString().toStdString()));
    }
}

TEST(CommandLine, helpNamesEveryCommandAndTheExitCodes)
{
    const ToolResult result = runTool({"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(runTool({"-h"}).out, result.out);
    EXPECT_THAT(toStd(result.out), HasSubstr("Exit status:\n  0  done"));
    ASSERT_FALSE(allCommands().empty());
    for (const auto &words : allCommands()) {
        std::string name = words[0];
        if (words.size() > 1)
            name += " " + words[1];
        EXPECT_THAT(toStd(result.out), HasSubstr("\n  " + name + " "));
    }
}

TEST(CommandLine, helpOfAGroupNamesOnlyItsCommands)
{
    const ToolResult result = runTool({"config", "--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(toStd(result.out), HasSubstr("\n  config show "));
    EXPECT_THAT(toStd(result.out), testing::Not(HasSubstr("\n  version ")));
    EXPECT_THAT(toStd(result.out), testing::Not(HasSubstr("\n  alarms ")));
}

TEST(CommandLine, everyCommandHasHelpThatFitsTheScreen)
{
    for (std::vector<std::string> words : allCommands()) {
        words.push_back("--help");
        const ToolResult result = runTool(words);
        SCOPED_TRACE(words[0] + " " + words[1]);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_THAT(toStd(result.out), StartsWith("Usage: vantero-formats " + words[0]));
        EXPECT_THAT(toStd(result.out), HasSubstr("\nOptions:\n"));
        EXPECT_THAT(toStd(result.out), HasSubstr("\nExamples:\n"));
        for (const QByteArray &line : result.out.split('\n')) {
            if (line.startsWith("  vantero-formats ")) // an example is one line
                continue;
            EXPECT_LE(QString::fromUtf8(line).size(), 80) << line.constData();
        }
    }
}

TEST(CommandLine, helpWithJsonIsOneValueToo)
{
    const ToolResult result = runTool({"config", "show", "--help", "--json"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.json().value("help"_q).toString().toUtf8(),
              runTool({"config", "show", "--help"}).out);
}

TEST(CommandLine, wrongUsageIsToldAndEndsWith2)
{
    struct Row
    {
        std::vector<std::string> arguments;
        const char *message;
    };
    const Row rows[] = {
        {{}, "a command is missing (see vantero-formats --help)"},
        {{"frobnicate"}, "unknown command \"frobnicate\" (see vantero-formats --help)"},
        {{""}, "unknown command \"\" (see vantero-formats --help)"},
        {{"--frobnicate"}, "unknown option --frobnicate (see vantero-formats --help)"},
        {{"confg", "show"},
         "unknown command \"confg\"; did you mean config? (see vantero-formats --help)"},
        {{"firm"}, "unknown command \"firm\"; did you mean firmware? (see vantero-formats --help)"},
        {{"--versoin"},
         "unknown option --versoin; did you mean --version? (see vantero-formats --help)"},
        {{"help", "config", "sho"},
         "unknown command \"config sho\"; did you mean config show? (see vantero-formats config "
         "--help)"},
        {{"help", "--versoin"},
         "unknown option --versoin; did you mean --version? (see vantero-formats --help)"},
        {{"help", "config", "show", "gate.cfg"},
         "help: unexpected argument \"gate.cfg\" (see vantero-formats --help)"},
        {{"config"}, "\"config\" needs a command after it (see vantero-formats config --help)"},
        {{"config", "--hepl"},
         "unknown option --hepl; did you mean --help? (see vantero-formats config --help)"},
        {{"config", "frobnicate"},
         "unknown command \"config frobnicate\" (see vantero-formats config --help)"},
        {{"config", "sho"},
         "unknown command \"config sho\"; did you mean config show? (see vantero-formats config "
         "--help)"},
        {{"version", "installble"},
         "unknown command \"version installble\"; did you mean version installable? (see "
         "vantero-formats version --help)"},
        {{"config", "show"},
         "config show: FILE is missing (see vantero-formats config show --help)"},
        {{"config", "diff", "a", "b", "c"},
         "config diff: unexpected argument \"c\" (see vantero-formats config diff --help)"},
        {{"config", "show", "a", "--frobnicate"},
         "config show: unknown option --frobnicate (see vantero-formats config show --help)"},
        {{"config", "show", "a", "--secton=audio"},
         "config show: unknown option --secton; did you mean --section? (see vantero-formats "
         "config show --help)"},
        {{"config", "show", "--recursiv"}, // although FILE is missing, too
         "config show: unknown option --recursiv; did you mean --recursive? (see vantero-formats "
         "config show --help)"},
        {{"config", "show", "-gate.cfg"},
         "config show: unknown option -gate.cfg; an argument that begins with \"-\" stands behind "
         "\"--\" (see vantero-formats config show --help)"},
        {{"config", "show", "--", kGate, "--section", "audio"},
         "config show: there is no file --section, and options stand before \"--\" (see "
         "vantero-formats config show --help)"},
        {{"config", "show", "a", "--key", "k"},
         "config show: --key requires --section (see vantero-formats config show --help)"},
        {{"config", "show", "a", "--section"},
         "config show: --section needs a value after it (see vantero-formats config show --help)"},
        {{"config", "show", "a", "--section", "b", "--section", "c"},
         "config show: --section is given more than once (see vantero-formats config show --help)"},
        {{"config", "set", "a", "b", "c", "d", "--dry-run=0"},
         "config set: --dry-run takes no value (see vantero-formats config set --help)"},
        {{"config", "set", "a", "b", "c", "d", "--dry-run", "--in-place"},
         "config set: --in-place excludes --dry-run (see vantero-formats config set --help)"},
    };
    for (const Row &row : rows) {
        const ToolResult plain = runTool(row.arguments);
        EXPECT_EQ(plain.exitCode, 2);
        EXPECT_EQ(plain.out, "");
        EXPECT_EQ(plain.err, QByteArray("vantero-formats: ") + row.message + '\n');

        std::vector<std::string> words = row.arguments;
        words.insert(words.begin(), "--json");
        const ToolResult json = runTool(words);
        EXPECT_EQ(json.exitCode, 2);
        EXPECT_EQ(json.err, "");
        EXPECT_EQ(errorOf(json).value("message"_q).toString().toUtf8(), QByteArray(row.message));
        EXPECT_EQ(errorOf(json).value("exitCode"_q).toInt(), 2);
        EXPECT_TRUE(errorOf(json).value("file"_q).isNull());
    }
}

TEST(CommandLine, anOptionBehindTheOptionsIsTold)
{
    expectRun(
        runTool({"config", "set", "--", "a", "b", "c", "d", "--dry-run"}), 2, "",
        "vantero-formats: config set: unexpected argument \"--dry-run\"; options stand before "
        "\"--\" (see vantero-formats config set --help)\n");
}

TEST(CommandLine, helpIsACommandToo)
{
    EXPECT_EQ(runTool({"help"}).out, runTool({"--help"}).out);
    EXPECT_EQ(runTool({"help", "help"}).out, runTool({"--help"}).out);
    EXPECT_EQ(runTool({"help", "config"}).out, runTool({"config", "--help"}).out);
    EXPECT_EQ(runTool({"help", "config", "show"}).out, runTool({"config", "show", "--help"}).out);
    EXPECT_EQ(runTool({"help", "firmware"}).out, runTool({"firmware", "--help"}).out);
    EXPECT_EQ(runTool({"help", "firmware", "--json"}).out,
              runTool({"firmware", "--help", "--json"}).out);
    EXPECT_THAT(toStd(runTool({"--help"}).out), HasSubstr("vantero-formats help [COMMAND]\n"));
}

TEST(CommandLine, aMistypedNameIsToldTheOneThatIsThere)
{
    struct Row
    {
        std::vector<std::string> arguments;
        int exitCode;
        const char *message;
    };
    const std::string dock = VANTERO_EXAMPLE_DATA "/dock.cfg";
    const Row rows[] = {
        {{"config", "show", kGate, "--section", "audoi"},
         1,
         "no section \"audoi\"; did you mean audio?"},
        {{"config", "show", kGate, "--section", "ether"},
         1,
         "no section \"ether\"; did you mean ethernet?"},
        {{"config", "show", kGate, "--section", "xyz"}, 1, "no section \"xyz\""},
        {{"config", "show", kGate, "--section", "ethernet", "--key", "ipaddr"},
         1,
         "no key \"ipaddr\" in section \"ethernet\"; did you mean IPADDR?"},
        {{"config", "unset", kGate, "ethernet", "IPADR"},
         1,
         "no key \"IPADR\" in section \"ethernet\"; did you mean IPADDR?"},
        {{"config", "unset", kGate, "Ethernet", "IPADDR"},
         1,
         "no section \"Ethernet\"; did you mean ethernet?"},
        {{"config", "unset", kGate, "ethernet", "IPADDR", "--value", "1.2.3.4"},
         1,
         "no value \"1.2.3.4\" of key \"IPADDR\" in section \"ethernet\""},
        {{"config", "remove", kGate, "etherne"},
         1,
         "no section \"etherne\"; did you mean ethernet?"},
    };
    for (const Row &row : rows)
        expectRun(runTool(row.arguments), row.exitCode, "",
                  QByteArray("vantero-formats: ") + kGate.c_str() + ": " + row.message + '\n');
    expectRun(runTool({"config", "splice", kGate, dock, "etehrnet"}), 1, "",
              QByteArray("vantero-formats: ") + kGate.c_str() +
                  ": no section \"etehrnet\", nor in " + dock.c_str() +
                  "; did you mean ethernet?\n");
    expectRun(runTool({"version", "rules", "k40-stp"}), 1, "",
              "vantero-formats: no rule \"k40-stp\"; did you mean k40-step?\n");
    expectRun(runTool({"config", "table", kGate, "--key", "ethernet/IPADR", "--csv"}), 0,
              QByteArray("address,firmware,source,ethernet/IPADR\r\n10.14.7.21,VN-3.0.6.29,") +
                  kGate.c_str() + ",\r\n",
              "vantero-formats: warning: no configuration has ethernet/IPADR; did you mean "
              "ethernet/IPADDR?\n");
    expectRun(runTool({"config", "table", kGate, "--where", "ethrnet/IPADDR~10.*"}), 1, "",
              "vantero-formats: warning: no configuration has ethrnet/IPADDR; did you mean "
              "ethernet/IPADDR?\nvantero-formats: no configurations found\n");
    expectRun(runTool({"config", "table", kGate, "--where", "address=10.14.7.2l"}), 1, "",
              "vantero-formats: warning: no configuration has address=10.14.7.2l; did you mean "
              "address=10.14.7.21?\nvantero-formats: no configurations found\n");
    expectRun(runTool({"config", "table", kGate, "--where", "ethrnet/IPADDR~10.*", "--json"}), 1,
              "{\n"
              "  \"rows\": [],\n"
              "  \"errors\": [],\n"
              "  \"warnings\": [\n"
              "    {\n"
              "      \"file\": null,\n"
              "      \"reason\": \"no-such-name\",\n"
              "      \"message\": \"no configuration has ethrnet/IPADDR; did you mean "
              "ethernet/IPADDR?\"\n"
              "    }\n"
              "  ]\n"
              "}\n",
              "");
    for (const char *condition : {"ethernet/IPADDR=1", "firmware<VN-2", "address~x"})
        expectRun(runTool({"config", "table", kGate, "--where", condition}), 1, "",
                  "vantero-formats: no configurations found\n");
    expectRun(runTool({"config", "table", kGate, "--where", "adress=3"}), 2, "",
              "vantero-formats: --where: neither \"address\" nor \"firmware\" nor SECTION/KEY; "
              "did you mean address?\n  adress=3\n        ^\n");
}

TEST(CommandLine, jsonMayStandBeforeTheCommand)
{
    EXPECT_EQ(runTool({"--json", "config", "show", kGate}).out,
              runTool({"config", "show", kGate, "--json"}).out);
    EXPECT_EQ(errorOf(runTool({"--json"})).value("message"_q).toString(),
              "a command is missing (see vantero-formats --help)"_q);
}

TEST(CommandLine, aFullDiskIsExitCode3)
{
    for (const std::vector<std::string> &arguments : std::vector<std::vector<std::string>>{
             {"--help"},
             {"--version"},
             {"config", "show", kGate},
             {"config", "show", kGate, "--section", "text", "--key", "name"},
             {"config", "diff", kGate, VANTERO_EXAMPLE_DATA "/dock.cfg"},
             {"config", "set", kGate, "text", "name", "x", "--dry-run"}}) {
        ToolCall call{arguments};
        call.outputPath = "/dev/full";
        expectRun(runTool(call), 3, "",
                  "vantero-formats: standard output: No space left on device\n");
    }
    // With --json standard output is where it would stand.
    for (const std::vector<std::string> &arguments :
         std::vector<std::vector<std::string>>{{"--version", "--json"},
                                               {"config", "show", kGate, "--json"},
                                               {"config", "table", kGate, "--json"},
                                               {"config", "lint", kGate, "--json"}}) {
        ToolCall call{arguments};
        call.outputPath = "/dev/full";
        expectRun(runTool(call), 3, "",
                  "vantero-formats: standard output: No space left on device\n");
    }
    ToolCall call{{"config", "show", "missing.cfg", "--json"}};
    call.outputPath = "/dev/full";
    expectRun(runTool(call), 3, "", "vantero-formats: missing.cfg: No such file or directory\n");
}

TEST(CommandLine, aClosedStandardOutputIsExitCode3)
{
    ToolCall call{{"config", "show", kGate}};
    call.closeOutput = true;
    expectRun(runTool(call), 3, "", "vantero-formats: standard output: Bad file descriptor\n");
}

TEST(CommandLine, aReaderThatLeavesEndsTheToolInSilence)
{
    const QTemporaryDir folder;
    QByteArray large = "#:1\n#:2\n\nSECTION s\n";
    for (int i = 0; i < 100000; ++i)
        large += "key" + QByteArray::number(i) + "=value\n";
    large += "ENDSECTION s\n";
    const std::string path = folder.filePath("large.cfg"_q).toStdString();
    writeFile(path, large);
    ToolCall call{{"-c", "\"$0\" config show \"$1\" | head -n 1; wait", VANTERO_TOOL, path}};
    call.program = "/bin/sh";
    expectRun(runTool(call), 0, "SECTION head\n", "");
}

TEST(CommandLine, textArgumentsAreUtf8InAnyLocale)
{
    for (const char *locale : {"C", "C.UTF-8", "POSIX", "xx_XX"}) {
        ToolCall call{{"config", "show", kGate, "--section", "Süd Ω"}};
        call.environment = {{"LC_ALL", locale}};
        expectRun(runTool(call), 1, "",
                  QByteArray("vantero-formats: ") + kGate.c_str() + ": no section \"Süd Ω\"\n");
    }
}

TEST(CommandLine, textArgumentsThatAreNotUtf8AreLatin1)
{
    expectRun(runTool({"config", "show", kGate, "--section",
                       "S\xFC"
                       "d"}),
              1, "", QByteArray("vantero-formats: ") + kGate.c_str() + ": no section \"Süd\"\n");
    // Overlong forms, surrogates and numbers beyond the last character are no UTF-8.
    for (const char *bytes : {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                              "\xF0\x80\x80\x80", "\xE2\x82", "\x80", "\xFF"}) {
        const ToolResult result = runTool({"config", "show", kGate, "--section", bytes});
        EXPECT_EQ(result.err, QByteArray("vantero-formats: ") + kGate.c_str() + ": no section \"" +
                                  QString::fromLatin1(bytes).toUtf8() + "\"\n");
    }
}

TEST(CommandLine, fileNamesKeepEveryByteInAnyLocale)
{
    const QTemporaryDir folder;
    const std::string base = folder.path().toStdString();
    QFile gate(QString::fromStdString(kGate));
    ASSERT_TRUE(gate.open(QIODevice::ReadOnly));
    const QByteArray content = gate.readAll();
    for (const std::string name :
         {"\xFC.cfg",
          "s\xC3\xBC"
          "d.cfg",
          "\xF0\x9F\x93\xB7.cfg", "\xE2\x82.cfg", "two words.cfg", "line\nbreak.cfg", "[2].cfg"}) {
        const std::string path = base + "/" + name;
        QFile file;
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT, 0644);
        ASSERT_GE(descriptor, 0);
        ASSERT_TRUE(file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle));
        file.write(content);
        file.close();
        for (const char *locale : {"C", "C.UTF-8"}) {
            ToolCall call{{"config", "show", path, "--section", "text", "--key", "name"}};
            call.environment = {{"LC_ALL", locale}};
            expectRun(runTool(call), 0, "South gate\n", "");
            call.arguments.back() = "missing";
            expectRun(runTool(call), 1, "",
                      QByteArray("vantero-formats: ") + path.c_str() +
                          ": no key \"missing\" in section \"text\"\n");
        }
        EXPECT_EQ(::unlink(path.c_str()), 0); // QTemporaryDir does not find each of the names
    }
}

TEST(CommandLine, jsonEscapesBytesOfANameThatAreNoText)
{
    const ToolResult result = runTool({"config", "show", "\xFC.cfg", "--json"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(toStd(result.out), HasSubstr("\"file\": \"\\udcfc.cfg\""));
}

TEST(CommandLine, whatLooksLikeAnOptionIsAnArgumentAfterTwoDashes)
{
    expectRun(runTool({"config", "show", "--", "--no-file"}), 2, "",
              "vantero-formats: --no-file: No such file or directory\n");
    const QTemporaryDir folder;
    ASSERT_TRUE(
        QFile::copy(QString::fromStdString(kGate), folder.filePath(QStringLiteral("--json"))));
    ToolCall call{{"config", "show", "--section", "text", "--key", "name", "--", "--json"}};
    call.folder = folder.path().toStdString();
    expectRun(runTool(call), 0, "South gate\n", "");
}

TEST(CommandLine, namesOfCommandsMayBeArguments)
{
    const QTemporaryDir folder;
    ToolCall call{{"config", "show", "config", "--section", "show"}};
    call.folder = folder.path().toStdString();
    expectRun(runTool(call), 2, "", "vantero-formats: config: No such file or directory\n");
}

TEST(CommandLine, anEmptyValueMayStandBehindTheEqualsSign)
{
    const std::vector<std::string> commands[] = {
        {"config", "show", "-", "--section", "s", "--key"},
        {"config", "unset", "-", "s", "k", "--value"},
        {"config", "redact", "-", "--key"},
        {"config", "redact", "-", "--pattern"},
        {"config", "set", "-", "--set"},
        {"config", "diff", "-", "x", "--by"},
        {"config", "lint", "-", "--severity"},
        {"config", "set", "-", "s", "k", "v", "--index"},
        {"config", "set", "-", "s", "k", "v", "--output"},
        {"config", "show", "-", "--password-file"},
        {"version", "lint", "--from"},
    };
    const QByteArray input = "#:1\n#:2\n\nSECTION s\n=1\nk=\nENDSECTION s\n";
    for (const std::vector<std::string> &command : commands) {
        std::vector<std::string> apart = command;
        apart.emplace_back("");
        std::vector<std::string> together = command;
        together.back() += '=';
        const ToolResult expected = runTool(apart, input);
        const ToolResult result = runTool(together, input);
        EXPECT_EQ(result.exitCode, expected.exitCode) << together.back();
        EXPECT_EQ(result.out, expected.out) << together.back();
        EXPECT_EQ(result.err, expected.err) << together.back();
        EXPECT_FALSE(result.err.contains("needs a value")) << together.back();
    }
    const ToolResult shown = runTool({"config", "show", "--section=s", "--key=", "-"}, input);
    EXPECT_EQ(shown.out, "1\n");
    EXPECT_EQ(shown.exitCode, 0);
    const ToolResult listed = runTool({"config", "show", "-", "--section=[s]"}, input);
    EXPECT_EQ(listed.err, "vantero-formats: -: no section \"[s]\"\n");
}

TEST(CommandLine, theNameOfAFileIsNotEmpty)
{
    const ToolResult result = runTool({"config", "show", ""});
    EXPECT_EQ(result.err, "vantero-formats: the name of a file is empty\n");
    EXPECT_EQ(result.exitCode, 2);
    const struct
    {
        std::vector<std::string> arguments;
        QByteArray command;
        QByteArray option;
    } rows[] = {
        {{"config", "set", "-", "s", "k", "v"}, "config set", "--output"},
        {{"config", "splice", "-", example("gate.cfg"), "audio"}, "config splice", "--output"},
        {{"config", "merge", "-", example("gate.cfg")}, "config merge", "--output"},
        {{"config", "write", "-"}, "config write", "--output"},
        {{"config", "show", "-"}, "config show", "--password-file"},
        {{"config", "table", "-"}, "config table", "--files-from"},
        {{"config", "collect", "-"}, "config collect", "--output-folder"},
    };
    for (const auto &row : rows)
        for (const bool isTogether : {true, false}) {
            std::vector<std::string> arguments = row.arguments;
            arguments.push_back(row.option.toStdString() + (isTogether ? "=" : ""));
            if (!isTogether)
                arguments.emplace_back();
            expectRun(runTool(arguments, "#:1\n#:2\n\n"), 2, "",
                      "vantero-formats: " + row.command + ": " + row.option +
                          " takes a name, not \"\" (see vantero-formats " + row.command +
                          " --help)\n");
        }
}

// The system's messages tell of a path, and so do those of the library.
TEST(CommandLine, errorsNameAFileOnce)
{
    const QTemporaryDir dir;
    const std::string missing = dir.filePath("missing"_q).toStdString();
    const std::string folder = dir.path().toStdString();
    const std::string archive = dir.filePath("cut.zip"_q).toStdString();
    writeFile(archive, "PK\x03\x04");
    for (const std::string &name : {missing, folder, archive, folder + "//cut.zip"}) {
        for (const std::vector<std::string> &command : std::vector<std::vector<std::string>>{
                 {"config", "show", name},
                 {"config", "lint", name},
                 {"config", "set", name, "s", "k", "v"},
                 {"config", "set", name, "s", "k", "v", "--in-place"},
                 {"config", "set", "-", "s", "k", "v", "--output", name + "/x/y"},
                 {"config", "merge", name, name},
                 {"config", "write", name},
                 {"config", "collect", name},
                 {"config", "collect", name, "--recursive", "--output-archive", name + "/x/y"},
                 {"alarms", "list", name},
                 {"alarms", "lint", name},
                 {"erdinfo", "show", name},
                 {"firmware", name}}) {
            const ToolResult result = runTool(command, "#:1\n#:2\n\n");
            for (const QByteArray &line : result.err.split('\n'))
                EXPECT_LE(line.count(name.c_str()), 1) << line.toStdString();
        }
    }
}

TEST(CommandLine, bracketsAndBracesInArgumentsMeanThemselves)
{
    for (const std::string name : {"[a,b]", "{}", "[]", "%%", "a,b"})
        expectRun(runTool({"config", "show", kGate, "--section", name}), 1, "",
                  QByteArray("vantero-formats: ") + kGate.c_str() + ": no section \"" +
                      name.c_str() + "\"\n");
}

TEST(CommandLine, aMissingPasswordIsToldWithItsOption)
{
    struct Row
    {
        std::vector<std::string> arguments;
        const char *option;
    };
    const std::string archive = VANTERO_EXAMPLE_DATA "/cameras-encrypted.zip";
    const Row rows[] = {
        {{"config", "show", archive, "--recursive"}, "--password-file"},
        {{"config", "lint", archive}, "--password-file"},
        {{"config", "table", archive}, "--password-file"},
        {{"config", "collect", archive}, "--source-password-file"},
    };
    for (const Row &row : rows)
        for (const QByteArray &line : runTool(row.arguments).err.trimmed().split('\n'))
            EXPECT_THAT(toStd(line),
                        testing::EndsWith(std::string(": encrypted, and there is no password; ") +
                                          row.option + " names the file that has it"));
}

TEST(CommandLine, aFolderInPlaceOfAFileIsToldSo)
{
    const std::string folder = VANTERO_EXAMPLE_DATA;
    const QByteArray told = "vantero-formats: " VANTERO_EXAMPLE_DATA ": a folder, not a file\n";
    expectRun(runTool({"config", "table", "--files-from", folder}), 2, "", told);
    expectRun(runTool({"config", "table", kGate, "--password-file", folder}), 2, "", told);
    expectRun(runTool({"config", "set", folder, "s", "k", "v", "--in-place"}), 2, "", told);
    expectRun(runTool({"config", "set", kGate, "s", "k", "v", "--output", folder}), 3, "", told);
    expectRun(runTool({"erdinfo", "write", folder}), 3, "", told);
    expectRun(runTool({"config", "show", folder}), 2, "", told);
}

TEST(CommandLine, anInputThatFailsWhileItIsReadIsTold)
{
    // Opens, and fails at the first byte, even for root.
    expectRun(runTool({"config", "show", "/proc/self/mem"}), 2, "",
              "vantero-formats: /proc/self/mem: Input/output error\n");
}

TEST(CommandLine, anEndlessInputIsRefused)
{
    const ToolResult result = runTool({"config", "show", "/dev/zero"});
    expectRun(result, 2, "", "vantero-formats: /dev/zero: larger than 512 MiB\n");
}

#ifndef __SANITIZE_ADDRESS__ // which reserves far more address space than any limit
TEST(CommandLine, memoryThatRunsOutIsTold)
{
    QByteArray large = "#:1\n#:2\n\nSECTION s\n";
    for (int i = 0; i < 50000; ++i)
        large += "key" + QByteArray::number(i) + "=value\n";
    large += "ENDSECTION s\n";
    int failures = 0;
    for (int megabytes = 30; megabytes < 130; megabytes += 10) {
        for (const bool json : {false, true}) {
            ToolCall call{{"-c",
                           "ulimit -v " + std::to_string(megabytes * 1024) +
                               "; exec \"$0\" config show - --section s --key key7 " +
                               (json ? "--json" : ""),
                           VANTERO_TOOL},
                          large};
            call.program = "/bin/sh";
            const ToolResult result = runTool(call);
            EXPECT_EQ(result.signal, 0);
            if (result.exitCode == 0 || result.exitCode == 127) // enough, or too little to start
                continue;
            ++failures;
            EXPECT_EQ(result.exitCode, 2);
            const QString message = json ? errorOf(result).value("message"_q).toString()
                                         : QString::fromUtf8(result.err);
            EXPECT_THAT(message.toStdString(), HasSubstr("out of memory"));
        }
    }
    EXPECT_GT(failures, 0);
}
#endif

} // namespace
