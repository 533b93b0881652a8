// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ZipReader.h"
#include "tool/Site.h"
#include "tool/Terminal.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include <sys/stat.h>

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

const QByteArray kNoHeader = "SECTION s\nk=v\nENDSECTION s\n"_b;

QByteArray configOf(const QByteArray &address, const QByteArray &mark = {})
{
    return "#:1.3=====\n#:VN-3.0.6.29\n# Camera IP: " + address + "\n\nSECTION s\nk=" + mark +
           "\nENDSECTION s\n";
}

/** The names of new files hold the day of the run, here "DATE". */
QByteArray withoutDates(const QByteArray &text)
{
    return QString::fromUtf8(text)
        .replace(QRegularExpression("-20\\d\\d-\\d\\d-\\d\\d"_q), "-DATE"_q)
        .toUtf8();
}

class ConfigCollect : public Site
{
protected:
    /** Runs `config collect` in the test's folder. */
    ToolResult collect(const std::vector<std::string> &arguments, const QByteArray &input = {},
                       const std::string &outputPath = {}) const
    {
        ToolCall call;
        call.arguments = {"config", "collect"};
        call.arguments.insert(call.arguments.end(), arguments.begin(), arguments.end());
        call.input = input;
        call.folder = m_dir.path().toStdString();
        call.outputPath = outputPath;
        return runTool(call);
    }

    /** The files of the folder @p name by their names without the date. */
    QMap<QByteArray, QByteArray> content(const QString &name) const
    {
        QMap<QByteArray, QByteArray> result;
        const QDir folder(path(name));
        for (const QString &each : folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                                    QDir::NoDotAndDotDot))
            result.insert(withoutDates(each.toUtf8()), readFile(folder.filePath(each)));
        return result;
    }
};

// ---- What is found ---------------------------------------------------------------------------

TEST_F(ConfigCollect, listsAddressFirmwareAndSource)
{
    ToolCall call;
    call.arguments = {"config", "collect", "cameras.zip", "gate-factory.cfg"};
    call.folder = VANTERO_EXAMPLE_DATA;
    expectRun(runTool(call), 0,
              "ADDRESS     FIRMWARE      SOURCE\n"
              "10.14.7.21  VN-3.0.6.29   cameras.zip:gate-2011-03-09.cfg\n"
              "10.14.7.34  R16-2.2.1.10  cameras.zip:entrance-2011-03-09.cfg\n"
              "10.14.7.52  R8-1.9.4.2    cameras.zip:older/dock-2011-03-09.CFG\n"
              "10.14.7.21  VN-3.0.8.7    gate-factory.cfg\n",
              "");
}

TEST_F(ConfigCollect, jsonHoldsTheSameWithNullForWhatIsMissing)
{
    file("a"_q, configOf("10.0.0.1"));
    zip("b.zip"_q, {{"none.cfg"_q, kNoHeader}});
    const ToolResult result = collect({"a", "b.zip", "--json"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "{\n"
                          "  \"configurations\": [\n"
                          "    {\n"
                          "      \"address\": \"10.0.0.1\",\n"
                          "      \"firmware\": \"VN-3.0.6.29\",\n"
                          "      \"source\": \"a\",\n"
                          "      \"entry\": null,\n"
                          "      \"broken\": null,\n"
                          "      \"written\": null\n"
                          "    },\n"
                          "    {\n"
                          "      \"address\": null,\n"
                          "      \"firmware\": null,\n"
                          "      \"source\": \"b.zip\",\n"
                          "      \"entry\": \"none.cfg\",\n"
                          "      \"broken\": null,\n"
                          "      \"written\": null\n"
                          "    }\n"
                          "  ],\n"
                          "  \"errors\": [],\n"
                          "  \"warnings\": [\n"
                          "    {\n"
                          "      \"file\": \"b.zip:none.cfg\",\n"
                          "      \"reason\": \"no-header\",\n"
                          "      \"message\": \"no header: the first section is lost (line 1)\"\n"
                          "    }\n"
                          "  ]\n"
                          "}\n");
}

TEST_F(ConfigCollect, looksIntoFoldersByNameWhenRecursive)
{
    file("dir/b/file"_q, configOf("10.0.0.1"));
    file("dir/a.ZIP/.keep"_q, ""_b);
    QDir(path("dir/a.ZIP"_q)).removeRecursively();
    zip("dir/a.ZIP"_q, {{"x/y.cfg"_q, configOf("10.0.0.2")}});
    file("dir/c.jpg"_q, kNoHeader);
    file("dir/d"_q, configOf("10.0.0.3"));
    file("dir/.hidden"_q, configOf("10.0.0.4"));
    ASSERT_TRUE(QFile::link(path("dir/d"_q), path("dir/link"_q)));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("dir/fifo"_q)).constData(), 0600), 0);
    expectRun(collect({"dir", "--recursive"}), 0,
              "ADDRESS   FIRMWARE     SOURCE\n"
              "10.0.0.2  VN-3.0.6.29  dir/a.ZIP:x/y.cfg\n"
              "10.0.0.1  VN-3.0.6.29  dir/b/file\n"
              "10.0.0.3  VN-3.0.6.29  dir/d\n",
              "");
}

TEST_F(ConfigCollect, readsHiddenFilesAndLinksThatAreNamed)
{
    file(".hidden"_q, configOf("10.0.0.1"));
    ASSERT_TRUE(QFile::link(path(".hidden"_q), path("link"_q)));
    expectRun(collect({"link", ".hidden"}), 0,
              "ADDRESS   FIRMWARE     SOURCE\n"
              "10.0.0.1  VN-3.0.6.29  link\n"
              "10.0.0.1  VN-3.0.6.29  .hidden\n",
              "");
}

TEST_F(ConfigCollect, warnsOfFoldersUnlessRecursive)
{
    file("dir/file"_q, configOf("10.0.0.1"));
    expectRun(collect({"dir"}), 1, "",
              "vantero-formats: dir: warning: a folder, which only --recursive looks into\n"
              "vantero-formats: no configurations found\n");
    const ToolResult result = collect({"dir", "--json"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.json().value("configurations"_q), QJsonArray());
    EXPECT_EQ(result.json().value("warnings"_q),
              QJsonArray(
                  {QJsonObject({{"file"_q, "dir"_q},
                                {"reason"_q, "folder-skipped"_q},
                                {"message"_q, "a folder, which only --recursive looks into"_q}})}));
}

TEST_F(ConfigCollect, warnsOfNamedFilesThatAreNoConfigurations)
{
    file("dir/none"_q, kNoHeader);
    expectRun(collect({"dir/none"}), 1, "",
              "vantero-formats: dir/none: warning: no configuration: the first two lines do not "
              "tell the versions\n"
              "vantero-formats: no configurations found\n");
    expectRun(collect({"dir", "--recursive"}), 1, "", "vantero-formats: no configurations found\n");
}

TEST_F(ConfigCollect, showsControlCharactersAsQuestionMarksInTheTable)
{
    file("a"_q, "#:1.3=\n#:VN\x1b[31m-3\n# Camera IP: 10\t0\n"_b);
    expectRun(collect({"a"}), 0,
              "ADDRESS  FIRMWARE   SOURCE\n"
              "10?0     VN?[31m-3  a\n",
              "");
    EXPECT_EQ(collect({"a", "--json"})
                  .json()
                  .value("configurations"_q)
                  .toArray()
                  .first()
                  .toObject()
                  .value("address"_q)
                  .toString(),
              "10\t0"_q);
}

TEST_F(ConfigCollect, readsFileNamesOfAnyBytes)
{
    const std::string odd = path("dir"_q).toStdString() + "/odd\xff\n";
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("dir"_q));
    const int descriptor = ::open(odd.c_str(), O_CREAT | O_WRONLY, 0600);
    const QByteArray config = configOf("10.0.0.1");
    ASSERT_EQ(::write(descriptor, config.constData(), std::size_t(config.size())), config.size());
    ::close(descriptor);
    expectRun(collect({"dir/odd\xff\n"}), 0,
              "ADDRESS   FIRMWARE     SOURCE\n10.0.0.1  VN-3.0.6.29  dir/odd\xff?\n", "");
    expectRun(collect({"dir", "--recursive"}), 0,
              "ADDRESS   FIRMWARE     SOURCE\n10.0.0.1  VN-3.0.6.29  dir/odd\xff?\n", "");
    EXPECT_EQ(::unlink(odd.c_str()), 0);
}

TEST_F(ConfigCollect, readsNamesThatBeginWithAColon)
{
    file("./:a.cfg"_q, configOf("10.0.0.1"));
    file("col/:b.cfg"_q, configOf("10.0.0.2"));
    zip("col/:z.zip"_q, {{"c.cfg"_q, configOf("10.0.0.3")}});
    zip("./:z.zip"_q, {{"d.cfg"_q, configOf("10.0.0.4")}});
    expectRun(collect({":a.cfg", "col", ":z.zip", "--recursive"}), 0,
              "ADDRESS   FIRMWARE     SOURCE\n"
              "10.0.0.1  VN-3.0.6.29  ./:a.cfg\n"
              "10.0.0.2  VN-3.0.6.29  col/:b.cfg\n"
              "10.0.0.3  VN-3.0.6.29  col/:z.zip:c.cfg\n"
              "10.0.0.4  VN-3.0.6.29  ./:z.zip:d.cfg\n",
              "");
    expectRun(run("show", {":a.cfg", "--section", "s", "--key", "k"}), 0, "\n", "");
}

// ---- Failures --------------------------------------------------------------------------------

TEST_F(ConfigCollect, reportsWhatCannotBeReadAndGoesOn)
{
    file("a"_q, configOf("10.0.0.1"));
    zip("bad.zip"_q, {{"one.cfg"_q, configOf("10.0.0.2")}, {"two.cfg"_q, configOf("10.0.0.3")}},
        {"-0"_q});
    QByteArray bytes = readFile(path("bad.zip"_q));
    bytes[bytes.indexOf("10.0.0.3")] = '2'; // the checksum of the second entry no longer fits
    writeFile(path("bad.zip"_q), bytes);
    file("text.zip"_q, kNoHeader);
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("fifo"_q)).constData(), 0600), 0);
    const std::vector<std::string> arguments = {"a",        "missing",        "bad.zip", "fifo",
                                                "text.zip", "/proc/self/mem", "a"};

    const ToolResult result = collect(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "ADDRESS   FIRMWARE     SOURCE\n"
                          "10.0.0.1  VN-3.0.6.29  a\n"
                          "10.0.0.2  VN-3.0.6.29  bad.zip:one.cfg\n"
                          "10.0.0.1  VN-3.0.6.29  a\n");
    const QList<QByteArray> lines = result.err.split('\n');
    ASSERT_EQ(lines.size(), 6) << result.err.constData();
    EXPECT_EQ(lines[0], "vantero-formats: missing: No such file or directory");
    EXPECT_THAT(lines[1].toStdString(),
                StartsWith("vantero-formats: bad.zip:two.cfg: ZIP bad CRC: "));
    EXPECT_EQ(lines[2], "vantero-formats: fifo: neither a file nor a folder");
    EXPECT_THAT(lines[3].toStdString(), StartsWith("vantero-formats: text.zip: "));
    EXPECT_EQ(lines[4], "vantero-formats: /proc/self/mem: Input/output error");
    EXPECT_EQ(lines[5], "");

    std::vector<std::string> withJson = arguments;
    withJson.push_back("--json");
    const ToolResult json = collect(withJson);
    EXPECT_EQ(json.exitCode, 2);
    EXPECT_EQ(json.err, "");
    EXPECT_EQ(json.json().value("configurations"_q).toArray().size(), 3);
    const QJsonArray errors = json.json().value("errors"_q).toArray();
    ASSERT_EQ(errors.size(), 5);
    EXPECT_EQ(errors[0].toObject().value("file"_q).toString(), "missing"_q);
    EXPECT_EQ(errors[0].toObject().value("message"_q).toString(), "No such file or directory"_q);
    EXPECT_EQ(errors[0].toObject().value("exitCode"_q).toInt(), 2);
    QStringList reasons;
    for (const QJsonValue &error : errors)
        reasons += error.toObject().value("reason"_q).toString();
    EXPECT_EQ(reasons, (QStringList{"not-found"_q, "damaged"_q, "not-a-file"_q, "not-an-archive"_q,
                                    "file-unreadable"_q}));
}

TEST_F(ConfigCollect, takesFolderNamedLikeAnArchiveForABadArchive)
{
    file("dir/a.zip/file"_q, configOf("10.0.0.1"));
    const ToolResult result = collect({"dir", "--recursive"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err.toStdString(), StartsWith("vantero-formats: dir/a.zip: "));
}

TEST_F(ConfigCollect, failsWhenTheTableCannotBeWritten)
{
    file("a"_q, configOf("10.0.0.1"));
    EXPECT_EQ(collect({"a"}, {}, "/dev/full").exitCode, 3);
    EXPECT_EQ(collect({"a", "--json"}, {}, "/dev/full").exitCode, 3);
}

TEST_F(ConfigCollect, wantsAPathAndOneOutputAtMost)
{
    EXPECT_EQ(collect({}).exitCode, 2);
    EXPECT_EQ(collect({"a", "--output-archive", "x", "--output-folder", "y"}).exitCode, 2);
    EXPECT_FALSE(QFileInfo::exists(path("x"_q)));
}

// ---- Passwords -------------------------------------------------------------------------------

TEST_F(ConfigCollect, takesThePasswordFromTheFirstLineOfAFile)
{
    zip("a.zip"_q, {{"one.cfg"_q, configOf("10.0.0.1")}}, {"-P"_q, "se cret"_q});
    const QByteArray table = "ADDRESS   FIRMWARE     SOURCE\n"
                             "10.0.0.1  VN-3.0.6.29  a.zip:one.cfg\n";
    for (const QByteArray &content :
         {"se cret"_b, "se cret\n"_b, "se cret\r\n"_b, "se cret\nnothing of this\n"_b}) {
        file("password"_q, content);
        expectRun(collect({"a.zip", "--source-password-file", "password"}), 0, table, "");
        expectRun(collect({"a.zip", "--source-password-file", "-"}, content), 0, table, "");
    }
}

TEST_F(ConfigCollect, reportsAWrongOrMissingPassword)
{
    zip("a.zip"_q, {{"one.cfg"_q, configOf("10.0.0.1")}}, {"-P"_q, "secret"_q});
    file("password"_q, "wrong\n"_b);
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{"a.zip"},
          std::vector<std::string>{"a.zip", "--source-password-file", "password"}}) {
        const ToolResult result = collect(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err.toStdString(), StartsWith("vantero-formats: a.zip:one.cfg: "));
    }
}

TEST_F(ConfigCollect, refusesAPasswordFileWithoutPassword)
{
    file("a"_q, configOf("10.0.0.1"));
    for (const QByteArray &content : {""_b, "\n"_b, "\r\nsecret\n"_b}) {
        file("password"_q, content);
        expectRun(collect({"a", "--source-password-file", "password"}), 2, "",
                  "vantero-formats: password: no password in the first line\n");
    }
    EXPECT_EQ(collect({"a", "--source-password-file", "missing"}).exitCode, 2);
}

// ---- Written copies --------------------------------------------------------------------------

TEST_F(ConfigCollect, writesBytesUnchangedToAFolder)
{
    const QByteArray latin1 = configOf("10.0.0.1", "\xe4\r\n\xff");
    const QByteArray withMark = "\xef\xbb\xbf" + configOf("10.0.0.2", "\xc3\xa4");
    const QByteArray unended = "#:1.3=\r\n#:VN-3\r\n# Camera IP: 10.0.0.3\r\n\r\nSECTION"_b;
    file("latin1"_q, latin1);
    zip("a.zip"_q, {{"mark.cfg"_q, withMark}, {"unended.cfg"_q, unended}, {"empty.cfg"_q, ""_b}});
    const ToolResult result = collect({"latin1", "a.zip", "--output-folder", "new/deep"});
    EXPECT_EQ(result.err, "vantero-formats: a.zip:unended.cfg: warning: a section without a name, "
                          "so nothing in it is read (line 5)\n");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(withoutDates(result.out),
              "ADDRESS   FIRMWARE     SOURCE             WRITTEN AS\n"
              "10.0.0.1  VN-3.0.6.29  latin1             10.0.0.1-DATE.cfg\n"
              "10.0.0.2  VN-3.0.6.29  a.zip:mark.cfg     10.0.0.2-DATE.cfg\n"
              "10.0.0.3  VN-3         a.zip:unended.cfg  10.0.0.3-DATE.cfg\n"
              "-         -            a.zip:empty.cfg    unknown-DATE.cfg\n");
    EXPECT_EQ(content("new/deep"_q), (QMap<QByteArray, QByteArray>{{"10.0.0.1-DATE.cfg", latin1},
                                                                   {"10.0.0.2-DATE.cfg", withMark},
                                                                   {"10.0.0.3-DATE.cfg", unended},
                                                                   {"unknown-DATE.cfg", ""_b}}));
}

TEST_F(ConfigCollect, writesBytesUnchangedToAnArchive)
{
    const QByteArray latin1 = configOf("10.0.0.1", "\xe4\r\n\xff");
    const QByteArray other = configOf("10.0.0.1", "\xc3\xa4");
    file("latin1"_q, latin1);
    zip("in.zip"_q, {{"../outside.cfg"_q, other}}, {"-j"_q});
    zip("secret.zip"_q, {{"x.cfg"_q, configOf("10.0.0.2")}}, {"-P"_q, "secret"_q});
    const ToolResult result = collect({"latin1", "in.zip", "secret.zip", "--source-password-file",
                                       "-", "--output-archive", "out.zip", "--json"},
                                      "secret");
    EXPECT_EQ(result.exitCode, 0);
    QStringList written;
    for (const QJsonValue &each : result.json().value("configurations"_q).toArray())
        written += each.toObject().value("written"_q).toString();
    EXPECT_EQ(withoutDates(written.join(" "_q).toUtf8()),
              "10.0.0.1-DATE.cfg 10.0.0.1-DATE[2].cfg 10.0.0.2-DATE.cfg");

    vn::ZipReader archive(path("out.zip"_q)); // without a password
    ASSERT_TRUE(archive.open(QIODevice::ReadOnly));
    EXPECT_EQ(archive.fileListBySuffix(""_q), written);
    const QList<QByteArray> contents = {latin1, other, configOf("10.0.0.2")};
    for (int i = 0; i < written.size(); ++i) {
        ASSERT_TRUE(archive.openFile(written[i]));
        EXPECT_EQ(archive.readAll(), contents[i]);
    }
    runProgram("unzip"_q, {"-tqq"_q, "out.zip"_q}, m_dir.path());
}

TEST_F(ConfigCollect, makesHarmlessNamesOfAnyAddress)
{
    struct Row
    {
        QByteArray address;
        QByteArray name;
    };
    const Row rows[] = {
        {"10.0.0.1", "10.0.0.1-DATE.cfg"},
        {"../../etc/passwd", "______etc_passwd-DATE.cfg"},
        {"..", "__-DATE.cfg"},
        {"...", "__.-DATE.cfg"},
        {".", "_-DATE.cfg"},
        {".hidden", "_hidden-DATE.cfg"},
        {"/", "_-DATE.cfg"},
        {"a/b\\c", "a_b_c-DATE.cfg"},
        {"fe80::1%eth0", "fe80__1_eth0-DATE.cfg"},
        {"%d", "_d-DATE.cfg"},
        {" 10.0.0.2 ", "10.0.0.2-DATE.cfg"},
        {"  ", "unknown-DATE.cfg"},
        {"", "unknown-DATE.cfg"},
        {"S\xc3\xbc"
         "d",
         "S_d-DATE.cfg"},
        {"a\tb\x01", "a_b_-DATE.cfg"},
        {"-rf", "_rf-DATE.cfg"},
        {"--", "_--DATE.cfg"},
        {QByteArray(5000, 'x'), QByteArray(100, 'x') + "-DATE.cfg"},
    };
    int number = 0;
    for (const Row &row : rows) {
        SCOPED_TRACE(row.address.left(40).constData());
        const QString folder = "out%1"_q.arg(++number);
        file("a"_q, configOf(row.address));
        EXPECT_EQ(collect({"a", "--output-folder", folder.toStdString()}).exitCode, 0);
        EXPECT_EQ(content(folder),
                  (QMap<QByteArray, QByteArray>{{row.name, configOf(row.address)}}));
        const QString archiveName = folder + ".zip"_q;
        EXPECT_EQ(collect({"a", "--output-archive", archiveName.toStdString()}).exitCode, 0);
        vn::ZipReader archive(path(archiveName));
        ASSERT_TRUE(archive.open(QIODevice::ReadOnly));
        const QStringList names = archive.fileListBySuffix(""_q);
        ASSERT_EQ(names.size(), 1);
        EXPECT_EQ(withoutDates(names.first().toUtf8()), row.name);
    }
    // Nothing has left the folders.
    EXPECT_EQ(
        QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
        1 + 2 * number);
}

TEST_F(ConfigCollect, overwritesNoFile)
{
    file("a"_q, configOf("10.0.0.1", "new"));
    EXPECT_EQ(collect({"a", "a", "--output-folder", "out"}).exitCode, 0);
    EXPECT_EQ(collect({"a", "--output-folder", "out"}).exitCode, 0);
    EXPECT_EQ(
        content("out"_q).keys(),
        (QList<QByteArray>{"10.0.0.1-DATE.cfg", "10.0.0.1-DATE[2].cfg", "10.0.0.1-DATE[3].cfg"}));
}

TEST_F(ConfigCollect, overwritesNoArchive)
{
    file("a"_q, configOf("10.0.0.1"));
    file("out.zip"_q, "precious"_b);
    ASSERT_TRUE(QFile::link(path("nowhere"_q), path("link.zip"_q)));
    for (const std::string name : {"out.zip", "link.zip"})
        expectRun(collect({"a", "--output-archive", name}), 3, "",
                  QByteArray::fromStdString("vantero-formats: " + name + ": there already\n"));
    EXPECT_EQ(readFile(path("out.zip"_q)), "precious");
    EXPECT_FALSE(QFileInfo::exists(path("nowhere"_q)));
}

TEST_F(ConfigCollect, makesNoOutputWhenThereIsNothingToWrite)
{
    file("none"_q, kNoHeader);
    EXPECT_EQ(collect({"none", "--output-archive", "out.zip"}).exitCode, 1);
    EXPECT_EQ(collect({"none", "--output-folder", "out"}).exitCode, 1);
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"none"_q});
}

TEST_F(ConfigCollect, doesNotCollectWhatItWrites)
{
    file("dir/a"_q, configOf("10.0.0.1"));
    file("dir/z"_q, configOf("10.0.0.2"));
    EXPECT_EQ(collect({"dir", "--recursive", "--output-folder", "dir/out"}).exitCode, 0);
    EXPECT_EQ(content("dir/out"_q).size(), 2);
    EXPECT_EQ(collect({"dir", "--recursive", "--output-archive", "dir/out.zip"}).exitCode, 0);
    vn::ZipReader archive(path("dir/out.zip"_q));
    ASSERT_TRUE(archive.open(QIODevice::ReadOnly));
    EXPECT_EQ(archive.fileListBySuffix("cfg"_q).size(), 4);
}

TEST_F(ConfigCollect, doesNotCollectWhatItWrites_howeverMuchThereIs)
{
    // Files get their places while the walk still goes on, which comes to them last.
    constexpr int kFiles = 4200;
    for (int i = 0; i < kFiles; ++i)
        file("dir/a/%1"_q.arg(i), configOf("10.0.0.1"));
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("dir/z"_q));
    for (const std::string jobs : {"1", "2"}) {
        EXPECT_EQ(collect({"dir", "--recursive", "--output-folder", "dir/../dir/z", "--jobs", jobs})
                      .exitCode,
                  0);
        EXPECT_EQ(content("dir/z"_q).size(), kFiles);
        ASSERT_TRUE(QDir(path("dir/z"_q)).removeRecursively());
        ASSERT_TRUE(QDir(m_dir.path()).mkpath("dir/z"_q));
    }
}

TEST_F(ConfigCollect, cutsWhatIsTooLongForATable)
{
    file("a"_q, configOf(QByteArray(1000000, 'x')));
    file("b"_q, configOf("10.0.0.1"));
    for (const char *const command : {"collect", "table"}) {
        const ToolResult result = run(command, {"a", "b"});
        const QList<QByteArray> lines = result.out.split('\n');
        ASSERT_EQ(lines.size(), 4);
        EXPECT_EQ(lines[1], QByteArray(1000, 'x') + "...  VN-3.0.6.29  a");
        EXPECT_EQ(lines[2], "10.0.0.1" + QByteArray(58, ' ') + "VN-3.0.6.29  b");
    }
    EXPECT_GT(run("table", {"a", "--csv"}).out.size(), 1000000);
}

TEST_F(ConfigCollect, limitsWhatAllArchivesHold)
{
    zip("a.zip"_q, {{"x.cfg"_q, configOf("10.0.0.1")}});
    const ToolResult result = collect({"a.zip", "--total-size-limit", "10"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "vantero-formats: a.zip:x.cfg: more than the limit of 10 bytes for all "
                          "archives\n");
}

TEST_F(ConfigCollect, writesTheGoodOnesBesideTheBad)
{
    zip("bad.zip"_q, {{"one.cfg"_q, configOf("10.0.0.2")}, {"two.cfg"_q, configOf("10.0.0.3")}},
        {"-0"_q});
    QByteArray bytes = readFile(path("bad.zip"_q));
    bytes[bytes.indexOf("10.0.0.3")] = '2';
    writeFile(path("bad.zip"_q), bytes);
    file("z"_q, configOf("10.0.0.4"));
    EXPECT_EQ(collect({"bad.zip", "z", "--output-folder", "out"}).exitCode, 2);
    EXPECT_EQ(content("out"_q),
              (QMap<QByteArray, QByteArray>{{"10.0.0.2-DATE.cfg", configOf("10.0.0.2")},
                                            {"10.0.0.4-DATE.cfg", configOf("10.0.0.4")}}));
    EXPECT_EQ(collect({"bad.zip", "z", "--output-archive", "out.zip"}).exitCode, 2);
    runProgram("unzip"_q, {"-tqq"_q, "out.zip"_q}, m_dir.path());
}

TEST_F(ConfigCollect, failsWhereTheOutputCannotBeMade)
{
    file("a"_q, configOf("10.0.0.1"));
    file("occupied"_q, "x"_b);
    const struct
    {
        const char *option;
        const char *path;
    } rows[] = {{"--output-folder", "occupied"},         {"--output-folder", "occupied/below"},
                {"--output-folder", "/proc/none"},       {"--output-folder", "/proc/self"},
                {"--output-archive", "missing/out.zip"}, {"--output-archive", "/proc/out.zip"},
                {"--output-archive", "/dev/full"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.path);
        const ToolResult result = collect({"a", row.option, row.path});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err.toStdString(),
                    StartsWith(std::string("vantero-formats: ") + row.path));
    }
}

TEST_F(ConfigCollect, pairsTheEntriesOfOneNameWithTheirTexts)
{
    runProgram("python3"_q,
               {"-c"_q, "import warnings, zipfile\n"
                        "warnings.simplefilter('ignore')\n"
                        "with zipfile.ZipFile('a.zip', 'w') as z:\n"
                        "    for i in range(3):\n"
                        "        z.writestr('x.cfg', '#:1=\\n#:%d\\n# Camera IP: %d\\n' % (i, i))\n"
                        "    z.writestr('x.cfg', '#:1=\\n#:0\\n# Camera IP: 0\\n')\n"_q},
               m_dir.path());
    expectRun(collect({"a.zip"}), 0,
              "ADDRESS  FIRMWARE  SOURCE\n"
              "0        0         a.zip:x.cfg\n"
              "1        1         a.zip:x.cfg\n"
              "2        2         a.zip:x.cfg\n"
              "0        0         a.zip:x.cfg\n",
              "");
}

TEST_F(ConfigCollect, writesWhatItHasLookedAt_thoughTheFileChanges)
{
    const QByteArray contents[] = {configOf("10.0.0.1", "first"), configOf("10.0.0.2", "second")};
    file("first"_q, contents[0]);
    file("second"_q, contents[1]);
    const std::string link = path("link"_q).toStdString();
    ASSERT_EQ(::symlink("first", link.c_str()), 0);
    std::atomic<bool> done{false};
    std::thread changer([&] {
        const std::string next = link + ".next";
        for (int i = 0; !done; ++i) {
            (void)::symlink(i % 2 ? "first" : "second", next.c_str());
            (void)::rename(next.c_str(), link.c_str());
        }
    });
    for (int i = 0; i < 30; ++i) {
        const QString folder = "out%1"_q.arg(i);
        const ToolResult result = collect({"link", "--output-folder", folder.toStdString()});
        EXPECT_EQ(result.exitCode, 0);
        const bool isFirst = result.out.contains("10.0.0.1-");
        EXPECT_EQ(content(folder).first(), contents[isFirst ? 0 : 1]);
        EXPECT_TRUE(content(folder).firstKey().startsWith(isFirst ? "10.0.0.1-" : "10.0.0.2-"));
    }
    done = true;
    changer.join();
}

// ---- Encrypted copies, images, broken texts ---------------------------------------------------

TEST_F(ConfigCollect, encryptsTheArchiveThatItWrites)
{
    file("a"_q, configOf("10.0.0.1"));
    zip("in.zip"_q, {{"x.cfg"_q, configOf("10.0.0.2")}}, {"-P"_q, "source"_q});
    file("source"_q, "source\n"_b);
    file("target"_q, "target\n"_b);
    ASSERT_EQ(collect({"a", "in.zip", "--source-password-file", "source", "--output-archive",
                       "out.zip", "--password-file", "target"})
                  .exitCode,
              0);
    const struct
    {
        QByteArray password;
        vn::ArchiveError error;
    } rows[] = {{"target", vn::ArchiveError::None},
                {"", vn::ArchiveError::NeedsPassword},
                {"source", vn::ArchiveError::WrongPassword}};
    for (const auto &row : rows) {
        vn::ZipReader archive(path("out.zip"_q), row.password);
        ASSERT_TRUE(archive.open(QIODevice::ReadOnly));
        const QStringList names = archive.fileListBySuffix("cfg"_q);
        ASSERT_EQ(names.size(), 2);
        ASSERT_TRUE(archive.openFile(names.at(1)));
        const QByteArray content = archive.readAll();
        EXPECT_EQ(archive.error(), row.error) << row.password.constData();
        EXPECT_EQ(content, row.error == vn::ArchiveError::None ? configOf("10.0.0.2") : ""_b);
    }
    // It does not pass for the password of what is read.
    const ToolResult result =
        collect({"in.zip", "--output-archive", "other.zip", "--password-file", "source"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_FALSE(QFileInfo::exists(path("other.zip"_q)));
}

TEST_F(ConfigCollect, countsImagesWhoseCommentsHaveSections)
{
    const QByteArray image = readFile(QString::fromLatin1(VANTERO_EXAMPLE_DATA "/gate.jpg"));
    const QByteArray photo = QByteArray(image).replace("SECTION", "section"); // another comment
    file("d/a.jpg"_q, image);
    file("d/b.jpg"_q, photo);
    zip("d/c.zip"_q, {{"x.JPG"_q, image}, {"y.jpeg"_q, photo}, {"z.jpg"_q, configOf("1")}});
    const ToolResult result = collect({"d", "--recursive", "--output-folder", "out"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(withoutDates(result.out), "ADDRESS  FIRMWARE  SOURCE         WRITTEN AS\n"
                                        "-        -         d/a.jpg        unknown-DATE.jpg\n"
                                        "-        -         d/c.zip:x.JPG  unknown-DATE[2].jpg\n");
    EXPECT_EQ(content("out"_q), (QMap<QByteArray, QByteArray>{{"unknown-DATE.jpg", image},
                                                              {"unknown-DATE[2].jpg", image}}));
}

TEST_F(ConfigCollect, showsTextsThatAreNotReadableToTheirEnd)
{
    file("a"_q, configOf("10.0.0.1"));
    file("b"_q, configOf("10.0.0.2") + "SECTION x\nENDSECTION y\nSECTION z\nENDSECTION z\n");
    file("c"_q, configOf("10.0.0.3") + "SECTION x\n");
    expectRun(collect({"a", "b", "c"}), 2,
              "ADDRESS   FIRMWARE     SOURCE  STATE\n"
              "10.0.0.1  VN-3.0.6.29  a       -\n"
              "10.0.0.2  VN-3.0.6.29  b       1 of 3 sections readable, line 9\n"
              "10.0.0.3  VN-3.0.6.29  c       1 of 2 sections readable, line 8\n",
              "vantero-formats: b: 1 of 3 sections readable, line 9\n"
              "vantero-formats: c: 1 of 2 sections readable, line 8\n");
    const QJsonArray configurations =
        collect({"a", "b", "--json"}).json().value("configurations"_q).toArray();
    EXPECT_EQ(configurations.at(1).toObject().value("broken"_q).toObject(),
              QJsonObject({{"readable"_q, 1}, {"sections"_q, 3}, {"line"_q, 9}}));
    // They are written all the same, byte by byte.
    EXPECT_EQ(collect({"b", "--output-folder", "out"}).exitCode, 2);
    EXPECT_EQ(content("out"_q).size(), 1);
}

TEST_F(ConfigCollect, stopsAtTheFirstFailureWhereThatIsWanted)
{
    file("a"_q, configOf("10.0.0.1"));
    file("b"_q, configOf("10.0.0.2"));
    const ToolResult result =
        collect({"a", "missing", "b", "--on-error", "stop", "--output-folder", "out"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "vantero-formats: missing: No such file or directory\n");
    EXPECT_EQ(content("out"_q),
              (QMap<QByteArray, QByteArray>{{"10.0.0.1-DATE.cfg", configOf("10.0.0.1")}}));
    EXPECT_EQ(
        collect({"a", "missing", "--on-error", "stop", "--output-archive", "out.zip"}).exitCode, 2);
    EXPECT_FALSE(QFileInfo::exists(path("out.zip"_q)));
    EXPECT_EQ(collect({"a", "--on-error", "never"}).exitCode, 2);
}

TEST_F(ConfigCollect, numbersThousandsOfOneName)
{
    QByteArray list;
    file("a"_q, configOf("10.0.0.1"));
    for (int i = 0; i < 5000; ++i)
        list += "a\n";
    const ToolResult result = collect({"--files-from", "-", "--output-folder", "out"}, list);
    EXPECT_EQ(result.exitCode, 0);
    const QMap<QByteArray, QByteArray> files = content("out"_q);
    EXPECT_EQ(files.size(), 5000);
    EXPECT_TRUE(files.contains("10.0.0.1-DATE.cfg"));
    EXPECT_TRUE(files.contains("10.0.0.1-DATE[2].cfg"));
    EXPECT_TRUE(files.contains("10.0.0.1-DATE[5000].cfg"));
}

// ---- Progress --------------------------------------------------------------------------------

TEST_F(ConfigCollect, showsProgressOfLongWorkOnATerminal)
{
    for (int i = 0; i < 10; ++i)
        file("dir/%1"_q.arg(i), configOf("10.0.0.1"));
    if (!canBeSlow(path("dir/4"_q)))
        GTEST_SKIP() << "the file system has no leases";
    const QByteArray text =
        runAtTerminal(
            {{"config", "collect", path("dir"_q).toStdString(), "--recursive"}, path("dir/4"_q)})
            .errors;
    EXPECT_THAT(text.toStdString(),
                HasSubstr("\r[###############---------------] 5 of 10 files, 0.0 MB, 0.0 MB/s, "));
    EXPECT_THAT(text.toStdString(), HasSubstr(" left\x1b[K"));
    EXPECT_TRUE(text.endsWith("\r\x1b[K")) << text.constData();
    EXPECT_EQ(text.count('\n'), 0);
}

TEST_F(ConfigCollect, clearsTheProgressBeforeItComplains)
{
    file("dir/0"_q, configOf("10.0.0.1"));
    file("dir/1.zip"_q, kNoHeader);
    if (!canBeSlow(path("dir/0"_q)))
        GTEST_SKIP() << "the file system has no leases";
    const QByteArray text =
        runAtTerminal(
            {{"config", "collect", path("dir"_q).toStdString(), "--recursive"}, path("dir/0"_q)})
            .errors;
    EXPECT_THAT(text.toStdString(),
                ContainsRegex("1 of 2 files, [^\r]*left\x1b\\[K\r\x1b\\[Kvantero-formats: "));
}

TEST_F(ConfigCollect, showsNoProgressWhereItCouldNotBeTakenBack)
{
    file("dir/0"_q, configOf("10.0.0.1"));
    file("dir/1"_q, configOf("10.0.0.2"));
    if (!canBeSlow(path("dir/0"_q)))
        GTEST_SKIP() << "the file system has no leases";
    TerminalCall call;
    call.arguments = {"config", "collect", path("dir"_q).toStdString(), "--recursive"};
    call.slow = path("dir/0"_q);
    call.kind = "dumb";
    EXPECT_EQ(runAtTerminal(call).errors, "");
    call.kind = "xterm";
    call.arguments.emplace_back("--json");
    EXPECT_EQ(runAtTerminal(call).errors, "");
}

} // namespace
