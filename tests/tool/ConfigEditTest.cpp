// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// set, add and unset: what changes, and that nothing else does.

#include "RandomText.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include "base/FileUtils.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace vn;

struct Row
{
    const char *name;
    std::vector<std::string> edit; // what follows "config": without the file
    QByteArray before;
    QByteArray after;
    QByteArray made = {}; // what "set" says on standard error behind the name of the file
};

const QByteArray kHead = "#:1.3===\n#:VN-1\n# Camera IP: 10.0.0.1\n\n";

const Row kRows[] = {
    // ---- set
    {"setReplacesTheValue",
     {"set", "s", "k", "new"},
     kHead + "SECTION s\na=1\nk=old\nz=2\nENDSECTION s\n",
     kHead + "SECTION s\na=1\nk=new\nz=2\nENDSECTION s\n"},
    {"setReplacesTheLastLineOfARepeatedKey",
     {"set", "s", "k", "new"},
     kHead + "SECTION s\nk=1\nk=2\nk=3\nENDSECTION s\n",
     kHead + "SECTION s\nk=1\nk=2\nk=new\nENDSECTION s\n"},
    {"setReplacesInTheLastBlockThatHasTheKey",
     {"set", "s", "k", "new"},
     kHead + "SECTION s\nk=1\nENDSECTION s\nSECTION s\nk=2\nENDSECTION s\nSECTION s\nx=3\n"
             "ENDSECTION s\n",
     kHead + "SECTION s\nk=1\nENDSECTION s\nSECTION s\nk=new\nENDSECTION s\nSECTION s\nx=3\n"
             "ENDSECTION s\n"},
    {"setAddsAMissingKeyBeforeTheEndOfTheLastBlock",
     {"set", "s", "k", "new"},
     kHead + "SECTION s\na=1\nENDSECTION s\n\nSECTION s\nb=1\n# end\nENDSECTION s\n",
     kHead + "SECTION s\na=1\nENDSECTION s\n\nSECTION s\nb=1\n# end\nk=new\nENDSECTION s\n",
     "new key k in section s"},
    {"setFillsAnEmptyBlock",
     {"set", "s", "k", "new"},
     kHead + "SECTION s\nENDSECTION s\n",
     kHead + "SECTION s\nk=new\nENDSECTION s\n",
     "new key k in section s"},
    {"setAppendsAMissingSectionBehindAnEmptyLine",
     {"set", "t", "k", "new"},
     kHead + "SECTION s\nENDSECTION s\n",
     kHead + "SECTION s\nENDSECTION s\n\nSECTION t\nk=new\nENDSECTION t\n",
     "new section t"},
    {"setUsesTheEmptyLineThatIsThere",
     {"set", "t", "k", "new"},
     kHead + "SECTION s\nENDSECTION s\n\n",
     kHead + "SECTION s\nENDSECTION s\n\nSECTION t\nk=new\nENDSECTION t\n",
     "new section t"},
    {"setEndsTheLastLineBeforeItAppends",
     {"set", "t", "k", "new"},
     kHead + "SECTION s\nENDSECTION s",
     kHead + "SECTION s\nENDSECTION s\n\nSECTION t\nk=new\nENDSECTION t\n",
     "new section t"},
    // Loading takes two lines, whatever they hold, and what follows up to an empty line for a
    // header.
    {"setWritesAVersionOfAnEmptyTextAsAnEntry",
     {"set", "head", "File Version", "9"},
     "",
     "\n\n\nSECTION head\nFile Version=9\nENDSECTION head\n",
     "new key File Version in section head"},
    {"setWritesAVersionOfATextWithoutHeaderAsAnEntry",
     {"set", "head", "Software Version", "9"},
     "x\n",
     "x\n\n\nSECTION head\nSoftware Version=9\nENDSECTION head\n",
     "new key Software Version in section head"},
    {"setGivesAKeyWithoutValueOne",
     {"set", "s", "k", "new"},
     kHead + "SECTION s\nk\nENDSECTION s\n",
     kHead + "SECTION s\nk=new\nENDSECTION s\n"},
    {"setToTheEmptyValue",
     {"set", "s", "k", ""},
     kHead + "SECTION s\nk=old\nENDSECTION s\n",
     kHead + "SECTION s\nk=\nENDSECTION s\n"},
    {"setKeepsBlanksAndEqualsSignsOfTheValue",
     {"set", "s", "k", " a = b =c "},
     kHead + "SECTION s\nk=old\nENDSECTION s\n",
     kHead + "SECTION s\nk= a = b =c \nENDSECTION s\n"},
    {"setTakesKeysAsTheyStand",
     {"set", "s", "k ", "new"},
     kHead + "SECTION s\nk=1\nk =2\nENDSECTION s\n",
     kHead + "SECTION s\nk=1\nk =new\nENDSECTION s\n"},
    {"setOfTheEmptyKey",
     {"set", "s", "", "new"},
     kHead + "SECTION s\n=old\nENDSECTION s\n",
     kHead + "SECTION s\n=new\nENDSECTION s\n"},
    {"setTakesSectionNamesAsTheyStand",
     {"set", " s", "k", "new"},
     kHead + "SECTION s\nk=1\nENDSECTION s\nSECTION  s\nk=2\nENDSECTION  s\n",
     kHead + "SECTION s\nk=1\nENDSECTION s\nSECTION  s\nk=new\nENDSECTION  s\n"},
    {"setIsNotMisledByCommentsAndStrayLines",
     {"set", "s", "k", "new"},
     kHead + "k=stray\n#SECTION s\nSECTION s\n#k=comment\nk=old\nENDSECTION s\nk=stray\n",
     kHead + "k=stray\n#SECTION s\nSECTION s\n#k=comment\nk=new\nENDSECTION s\nk=stray\n"},
    {"setIsNotMisledBySectionsInsideTheHeader",
     {"set", "s", "k", "new"},
     "#:1===\n#:2\nSECTION s\nk=header\nENDSECTION s\n\nSECTION s\nk=old\nENDSECTION s\n",
     "#:1===\n#:2\nSECTION s\nk=header\nENDSECTION s\n\nSECTION s\nk=new\nENDSECTION s\n"},
    {"setOfAValueAfterTwoDashes",
     {"set", "--", "s", "k", "-5"},
     kHead + "SECTION s\nk=old\nENDSECTION s\n",
     kHead + "SECTION s\nk=-5\nENDSECTION s\n"},
    {"setOfTheSameValueChangesNothing",
     {"set", "s", "k", "old"},
     kHead + "SECTION s\nk=old\nENDSECTION s",
     kHead + "SECTION s\nk=old\nENDSECTION s"},
    {"setIntoAnEmptyTextMakesRoomForAHeader",
     {"set", "s", "k", "v"},
     "",
     "\n\n\nSECTION s\nk=v\nENDSECTION s\n",
     "new section s"},
    {"setIntoATextOfOneLine",
     {"set", "s", "k", "v"},
     "#:1",
     "#:1\n\n\nSECTION s\nk=v\nENDSECTION s\n",
     "new section s"},
    {"setIntoATextThatIsAllHeader",
     {"set", "s", "k", "v"},
     "#:1\n#:2\n# comment\n",
     "#:1\n#:2\n# comment\n\nSECTION s\nk=v\nENDSECTION s\n",
     "new section s"},
    // ---- set, header values
    {"setOfTheFileVersionKeepsTheRuler",
     {"set", "head", "File Version", "2.0"},
     kHead,
     "#:2.0===\n#:VN-1\n# Camera IP: 10.0.0.1\n\n"},
    {"setOfTheFileVersionWithoutRuler",
     {"set", "head", "File Version", "2.0"},
     "#:1.3\n#:VN-1\n",
     "#:2.0\n#:VN-1\n"},
    {"setOfTheSoftwareVersionMayHoldEqualsSigns",
     {"set", "head", "Software Version", "VN=2"},
     kHead,
     "#:1.3===\n#:VN=2\n# Camera IP: 10.0.0.1\n\n"},
    {"setOfTheAddressKeepsItsBlanks",
     {"set", "head", "Factory IP", " 10.0.0.2 "},
     kHead,
     "#:1.3===\n#:VN-1\n# Camera IP:  10.0.0.2 \n\n"},
    {"setOfTheAddressChangesTheLineThatCounts",
     {"set", "head", "Factory IP", "10.0.0.9"},
     "#:1\n#:2\n# Camera IP: 10.0.0.1\n# Configuration of 10.0.0.2 \n\n",
     "#:1\n#:2\n# Camera IP: 10.0.0.1\n# Configuration of 10.0.0.9 \n\n"},
    {"setOfTheAddressBehindABareConfigurationOf",
     {"set", "head", "Factory IP", "10.0.0.9"},
     "#:1\n#:2\n# Configuration of\n\n",
     "#:1\n#:2\n# Configuration of 10.0.0.9\n\n"},
    {"setOfAHeadValueThatASectionHolds",
     {"set", "head", "File Version", "9"},
     kHead + "SECTION head\nFile Version=8\nENDSECTION head\n",
     kHead + "SECTION head\nFile Version=9\nENDSECTION head\n"},
    {"setOfAHeadValueWithoutPlaceInTheHeader",
     {"set", "head", "Type Long", "D24M"},
     kHead,
     kHead + "SECTION head\nType Long=D24M\nENDSECTION head\n",
     "new key Type Long in section head"},
    // ---- add
    {"addPutsTheNewestValueBehindTheOthers",
     {"add", "s", "k", "3"},
     kHead + "SECTION s\nk=1\nk=2\nz=0\nENDSECTION s\n",
     kHead + "SECTION s\nk=1\nk=2\nz=0\nk=3\nENDSECTION s\n"},
    {"addGoesToTheLastBlock",
     {"add", "s", "k", "3"},
     kHead + "SECTION s\nk=1\nENDSECTION s\nSECTION s\nx=1\nENDSECTION s\n",
     kHead + "SECTION s\nk=1\nENDSECTION s\nSECTION s\nx=1\nk=3\nENDSECTION s\n"},
    {"addRepeatsAValueThatIsThere",
     {"add", "s", "k", "1"},
     kHead + "SECTION s\nk=1\nENDSECTION s\n",
     kHead + "SECTION s\nk=1\nk=1\nENDSECTION s\n"},
    {"addMakesASection", {"add", "t", "k", "1"}, kHead, kHead + "SECTION t\nk=1\nENDSECTION t\n"},
    // ---- unset
    {"unsetRemovesEveryLineOfTheKey",
     {"unset", "s", "k"},
     kHead + "SECTION s\nk=1\na=0\nk\nENDSECTION s\nSECTION t\nk=9\nENDSECTION t\nSECTION s\nk=2\n"
             "ENDSECTION s\n",
     kHead + "SECTION s\na=0\nENDSECTION s\nSECTION t\nk=9\nENDSECTION t\nSECTION s\n"
             "ENDSECTION s\n"},
    {"unsetOfTheAddressRemovesItsLines",
     {"unset", "head", "Factory IP"},
     "#:1\n#:2\n# Camera IP: 10.0.0.1\n# a\n# Configuration of 10.0.0.2\n\n",
     "#:1\n#:2\n# a\n\n"},
};

/** The command line for @p edit of @p file. */
std::vector<std::string> commandLine(const std::vector<std::string> &edit, const std::string &file,
                                     const std::vector<std::string> &options = {})
{
    std::vector<std::string> words = {"config", edit[0]};
    words.insert(words.end(), options.begin(), options.end());
    std::size_t next = 1;
    if (edit[next] == "--") {
        words.push_back("--");
        ++next;
    }
    words.push_back(file);
    words.insert(words.end(), edit.begin() + static_cast<std::ptrdiff_t>(next), edit.end());
    return words;
}

/** What @p row says on standard error. */
QByteArray told(const Row &row)
{
    return row.made.isEmpty() ? QByteArray() : "vantero-formats: -: " + row.made + '\n';
}

TEST(ConfigEdit, changesOnlyTheLinesThatItMust)
{
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.name);
        expectRun(runTool(commandLine(row.edit, "-"), row.before), 0, row.after, told(row));
    }
}

TEST(ConfigEdit, keepsWindowsLineEnds)
{
    const auto windows = [](QByteArray text) { return text.replace("\n", "\r\n"); };
    for (const Row &row : kRows) {
        if (!row.before.contains('\n'))
            continue; // nothing tells what line ends the text has
        SCOPED_TRACE(row.name);
        expectRun(runTool(commandLine(row.edit, "-"), windows(row.before)), 0, windows(row.after),
                  told(row));
    }
}

TEST(ConfigEdit, keepsTheByteOrderMark)
{
    const QByteArray mark = "\xEF\xBB\xBF";
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.name);
        expectRun(runTool(commandLine(row.edit, "-"), mark + row.before), 0, mark + row.after,
                  told(row));
    }
}

TEST(ConfigEdit, keepsEveryByteOfLatin1Text)
{
    QByteArray all;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\n' && byte != '\r')
            all += static_cast<char>(byte);
    all = "# " + all + '\n';
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.name);
        const int at = row.before.startsWith(kHead) ? kHead.size() : -1;
        if (at < 0 || !row.after.startsWith(kHead))
            continue;
        QByteArray before = row.before;
        QByteArray after = row.after;
        // An empty line behind it, as the edit may look at the line before it.
        expectRun(runTool(commandLine(row.edit, "-"), before.insert(at, all + '\n')), 0,
                  after.insert(at, all + '\n'), told(row));
    }
}

TEST(ConfigEdit, writesNewTextInTheEncodingOfTheFile)
{
    const QByteArray latin1 = kHead + "SECTION s\na=\xE4\nk=1\nENDSECTION s\n";
    expectRun(runTool({"config", "set", "-", "s", "k", "Öl"}, latin1), 0,
              kHead + "SECTION s\na=\xE4\nk=\xD6l\nENDSECTION s\n", "");
    const QByteArray utf8 = kHead + "SECTION s\na=ä\nk=1\nENDSECTION s\n";
    expectRun(runTool({"config", "set", "-", "s", "k", "Öl Ω 📷"}, utf8), 0,
              kHead + "SECTION s\na=ä\nk=Öl Ω 📷\nENDSECTION s\n", "");
}

TEST(ConfigEdit, refusesWhatLatin1CannotHold)
{
    const QByteArray latin1 = kHead + "SECTION s\na=\xE4\nENDSECTION s\n";
    expectRun(runTool({"config", "set", "-", "s", "k", "10 Ω"}, latin1), 2, "",
              "vantero-formats: -: the file is Latin-1, which has no \"Ω\" (U+03A9)\n");
    expectRun(runTool({"config", "add", "-", "s", "k", "📷"}, latin1), 2, "",
              "vantero-formats: -: the file is Latin-1, which has no \"📷\" (U+1F4F7)\n");
}

TEST(ConfigEdit, refusesAResultThatWouldBeReadInAnotherEncoding)
{
    // What is left of the Latin-1 text is valid UTF-8 by chance.
    const QByteArray text = kHead + "SECTION s\na=\xE4\nb=\xC3\xA4\nENDSECTION s\n";
    expectRun(runTool({"config", "unset", "-", "s", "a"}, text), 2, "",
              "vantero-formats: -: the result would be read in another encoding than the file's\n");
}

TEST(ConfigEdit, refusesWhatTheFormatCannotHold)
{
    const struct
    {
        std::vector<std::string> edit;
        const char *message;
    } rows[] = {
        {{"set", "", "k", "v"}, "a section needs a name"},
        {{"set", "a\nb", "k", "v"}, "the name of a section cannot hold a line break"},
        {{"set", "a\r", "k", "v"}, "the name of a section cannot hold a line break"},
        {{"set", "s", "a\nb", "v"}, "a key cannot hold a line break"},
        {{"set", "s", "a=b", "v"}, "a key cannot hold \"=\""},
        {{"set", "s", "#k", "v"}, "a key cannot begin with \"#\", which begins a comment"},
        {{"set", "s", "SECTIONk", "v"}, "a key cannot begin with \"SECTION\""},
        {{"set", "s", "ENDSECTION", "v"}, "a key cannot begin with \"ENDSECTION\""},
        {{"set", "s", "k", "a\nENDSECTION s"}, "a value cannot hold a line break"},
        {{"set", "s", "k", "v\r"}, "a value cannot hold a line break"},
        {{"add", "s", "k", "v\n"}, "a value cannot hold a line break"},
        {{"add", "s", "#", "v"}, "a key cannot begin with \"#\", which begins a comment"},
        {{"set", "head", "File Version", "1=2"},
         "the file version of the header cannot hold \"=\""},
        {{"set", "head", "Software Version", "a\rb\r"}, "a value cannot hold a line break"},
        {{"unset", "head", "File Version"}, "the version lines of the header cannot be removed"},
        {{"unset", "head", "Software Version"},
         "the version lines of the header cannot be removed"},
    };
    for (const auto &row : rows)
        expectRun(runTool(commandLine(row.edit, "-"), kHead + "SECTION s\nk=v\nENDSECTION s\n"), 2,
                  "", QByteArray("vantero-formats: -: ") + row.message + '\n');
    expectRun(runTool({"config", "set", "-", "head", "Factory IP", " blank"},
                      "#:1\n#:2\n# Configuration of 10.0.0.1\n"),
              2, "",
              "vantero-formats: -: an address in a title of the header cannot begin or end with a "
              "blank\n");
}

TEST(ConfigEdit, unsetOfWhatIsMissingIsAnAnswer)
{
    const QByteArray text = kHead + "SECTION s\nk=v\nENDSECTION s\n";
    expectRun(runTool({"config", "unset", "-", "t", "k"}, text), 1, "",
              "vantero-formats: -: no section \"t\"\n");
    expectRun(runTool({"config", "unset", "-", "s", "K"}, text), 1, "",
              "vantero-formats: -: no key \"K\" in section \"s\"; did you mean k?\n");
}

TEST(ConfigEdit, malformedTextIsRefusedWithItsLine)
{
    const struct
    {
        QByteArray text;
        const char *message;
    } rows[] = {
        {kHead + "SECTION a\nSECTION b\n", "-:6: Unexpected SECTION b"},
        {kHead + "\nENDSECTION b\n", "-:6: SECTION expected before ENDSECTION b"},
        {kHead + "SECTION a\r\nk=v\r\nENDSECTION b\r\n",
         "-:7: ENDSECTION b does not match SECTION"},
        {kHead + "SECTION a\nk=v", "-:7: ENDSECTION a expected"},
        {kHead + "SECTION\nk=v\nENDSECTION\n", "-:7: SECTION expected before ENDSECTION"},
    };
    for (const auto &row : rows)
        for (const char *command : {"set", "add"})
            expectRun(runTool({"config", command, "-", "s", "k", "v"}, row.text), 2, "",
                      QByteArray("vantero-formats: ") + row.message + '\n');
}

TEST(ConfigCommands, refuseWhatIsNoEightBitTextAndItStays)
{
    const QByteArray littleEndian("\xFF\xFE#\0:\0"
                                  "1\0\n\0",
                                  10);
    const QByteArray bigEndian("\xFE\xFF\0#\0:\0"
                               "1\0\n",
                               10);
    const struct
    {
        QByteArray bytes;
        const char *reason;
    } rows[] = {
        {littleEndian, "UTF-16; configurations are UTF-8 or Latin-1"},
        {bigEndian, "UTF-16; configurations are UTF-8 or Latin-1"},
        {littleEndian.mid(2), "no text: it holds zero bytes"},
        {kHead + QByteArray(1, '\0'), "no text: it holds zero bytes"},
    };
    const QTemporaryDir dir;
    const std::string path = dir.filePath("cam.cfg"_q).toStdString();
    const std::string good = dir.filePath("good.cfg"_q).toStdString();
    writeFile(good, kHead);
    for (const auto &row : rows) {
        writeFile(path, row.bytes);
        for (const std::vector<std::string> &command : std::vector<std::vector<std::string>>{
                 {"config", "set", path, "s", "k", "v", "--in-place"},
                 {"config", "add", path, "s", "k", "v", "--in-place"},
                 {"config", "unset", path, "s", "k", "--in-place"},
                 {"config", "remove", path, "s", "--in-place"},
                 {"config", "splice", path, path, "s", "--in-place"},
                 {"config", "redact", path, "--in-place"},
                 {"config", "splice", good, path, "s", "--in-place"},
                 {"config", "show", path},
                 {"config", "diff", path, good},
                 {"config", "diff", good, path},
                 {"config", "merge", path, good},
                 {"config", "merge", good, path}}) {
            const ToolResult result = runTool(command);
            EXPECT_EQ(result.exitCode, 2);
            EXPECT_EQ(result.out, "");
            EXPECT_EQ(result.err, "vantero-formats: " + QByteArray::fromStdString(path) + ": " +
                                      row.reason + '\n');
            EXPECT_EQ(readFile(path), row.bytes);
        }
    }
    EXPECT_EQ(readFile(good), kHead);
    writeFile(path, littleEndian);
    expectRun(runTool({"config", "lint", path}), 2, "",
              "vantero-formats: " + QByteArray::fromStdString(path) +
                  ": UTF-16; configurations are UTF-8 or Latin-1\n");
}

TEST(ConfigEdit, keepsAByteOrderMarkInAnArgument)
{
    const ToolResult result =
        runTool({"config", "set", "-", "s", "k", "\xEF\xBB\xBFv"}, kHead + "SECTION s\nk=1\n"
                                                                           "ENDSECTION s\n");
    EXPECT_EQ(result.out, kHead + "SECTION s\nk=\xEF\xBB\xBFv\nENDSECTION s\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.exitCode, 0);
}

// The condition is not what kept it from being edited.
TEST(ConfigEdit, aFileThatFailsIsToldWithoutAWordOfConditions)
{
    const ToolResult result =
        runTool({"config", "set", "none.cfg", "--recursive", "--set", "a/b=c", "--dry-run"});
    EXPECT_EQ(result.err, "vantero-formats: none.cfg: No such file or directory\n");
    EXPECT_EQ(result.exitCode, 2);
}

TEST(ConfigEdit, imagesAndArchivesAreNoTexts)
{
    for (const char *command : {"set", "add"})
        expectRun(runTool({"config", command, example("gate.jpg"), "s", "k", "v"}), 2, "",
                  "vantero-formats: " VANTERO_EXAMPLE_DATA
                  "/gate.jpg: a JPEG image; only configuration texts can be edited\n");
    expectRun(runTool({"config", "unset", example("cameras.zip"), "s", "k"}), 2, "",
              "vantero-formats: " VANTERO_EXAMPLE_DATA
              "/cameras.zip: a zip archive; \"config collect\" reads its configurations\n");
}

// ---- Random texts ------------------------------------------------------------------------------

VanteroConfigMap mapOf(const QByteArray &bytes)
{
    VanteroConfigFile config;
    config.parse(FileUtils::decodeText(bytes), QDateTime());
    VanteroConfigMap map;
    for (const QString &name : config.allSectionKeys())
        map.replaceSection(name, config.section(name));
    return map;
}

void expectSameMap(const VanteroConfigMap &a, const VanteroConfigMap &b)
{
    for (const QString &name : a.allSectionKeys() + b.allSectionKeys())
        EXPECT_EQ(VanteroConfigMap::toString(name, a.section(name)),
                  VanteroConfigMap::toString(name, b.section(name)));
}

/** Expects that @p after has the lines of @p before but for one that may be another, or for some
 * that went; any number may have come at one place. */
void expectLinesKept(const QByteArray &before, const QByteArray &after, bool someWent)
{
    const QList<QByteArray> a = before.split('\n');
    const QList<QByteArray> b = after.split('\n');
    if (someWent) {
        int next = 0;
        for (const QByteArray &line : b) {
            next = a.indexOf(line, next) + 1;
            ASSERT_GT(next, 0) << "not of the text: " << line.toStdString();
        }
        return;
    }
    const int shorter = std::min(a.size(), b.size());
    int same = 0;
    while (same < shorter && a.at(same) == b.at(same))
        ++same;
    int sameAtEnd = 0;
    while (sameAtEnd < shorter - same &&
           a.at(a.size() - 1 - sameAtEnd) == b.at(b.size() - 1 - sameAtEnd))
        ++sameAtEnd;
    EXPECT_LE(a.size() - same - sameAtEnd, 1) << after.toStdString();
    EXPECT_LE(b.size() - same - sameAtEnd, 6) << after.toStdString();
}

TEST(ConfigEdit, randomEditsReadBackAsTheEditOfTheMap)
{
    Random random(20110309);
    static const char *const sections[] = {"s", "t", "new", " s"};
    static const char *const keys[] = {"k", "l", "", "k ", "ä", "n"};
    static const char *const values[] = {"", "v", "a=b", " ö ", "#"};
    int edits = 0;
    for (int round = 0; round < 400; ++round) {
        const QByteArray text = randomText(random, random.below(2) ? "\n" : "\r\n");
        const QString section = QString::fromUtf8(sections[random.below(4)]);
        const QString key = QString::fromUtf8(keys[random.below(6)]);
        const QString value = QString::fromUtf8(values[random.below(5)]);
        SCOPED_TRACE(text.toStdString());
        SCOPED_TRACE((section + "/"_q + key + "="_q + value).toStdString());

        VanteroConfigMap wanted = mapOf(text);
        ToolResult result;
        const unsigned command = random.below(3);
        const bool isUnset = command == 2;
        switch (command) {
        case 0:
            wanted.setValue(section, key, value);
            result = runTool({"config", "set", "-", "--", section.toStdString(), key.toStdString(),
                              value.toStdString()},
                             text);
            break;
        case 1:
            wanted.addValue(section, key, value);
            result = runTool({"config", "add", "-", "--", section.toStdString(), key.toStdString(),
                              value.toStdString()},
                             text);
            break;
        default:
            if (wanted.remove(section, key) == 0)
                continue;
            result =
                runTool({"config", "unset", "-", section.toStdString(), key.toStdString()}, text);
        }
        ++edits;
        EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
        expectSameMap(mapOf(result.out), wanted);

        expectLinesKept(text, result.out, isUnset);
        if (HasFailure())
            return;
    }
    EXPECT_GT(edits, 250);
}

} // namespace
