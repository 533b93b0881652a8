// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What the case files of this folder cannot say: JSON as a value, images made for the test.

#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QByteArray exampleImage()
{
    return readFile(QStringLiteral(VANTERO_EXAMPLE_DATA "/gate.jpg"));
}

QByteArray commentSegment(const QByteArray &content)
{
    const int length = content.size() + 2;
    return "\xFF\xFE" + QByteArray(1, static_cast<char>(length >> 8)) +
           QByteArray(1, static_cast<char>(length & 0xFF)) + content;
}

/** The example image with these comments instead of its own. */
QByteArray imageWith(const QList<QByteArray> &comments)
{
    QByteArray image = exampleImage();
    for (int at = image.indexOf("\xFF\xFE"); at >= 0; at = image.indexOf("\xFF\xFE")) {
        const auto *length = reinterpret_cast<const unsigned char *>(image.constData()) + at + 2;
        image.remove(at, 2 + length[0] * 256 + length[1]);
    }
    QByteArray segments;
    for (const QByteArray &comment : comments)
        segments += commentSegment(comment);
    return image.insert(2, segments);
}

TEST(ConfigShow, jsonHoldsEverySectionWithItsValuesInOrder)
{
    const ToolResult result =
        runTool({"config", "show", VANTERO_EXAMPLE_DATA "/gate.cfg", "--json"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    const QJsonObject value = result.json();
    EXPECT_EQ(value.keys(),
              QStringList({"errors"_q, "file"_q, "files"_q, "sections"_q, "versionLines"_q}));
    EXPECT_EQ(value.value("file"_q).toString(), QStringLiteral(VANTERO_EXAMPLE_DATA "/gate.cfg"));
    EXPECT_EQ(value.value("versionLines"_q), QJsonValue(true));
    const QJsonObject sections = value.value("sections"_q).toObject();
    EXPECT_EQ(sections.keys(), QStringList({"audio"_q, "ethernet"_q, "eventdlite"_q, "head"_q,
                                            "image"_q, "messaging"_q, "text"_q, "timetables"_q}));
    EXPECT_EQ(sections.value("ethernet"_q).toObject().value("DNS"_q),
              QJsonArray({"10.14.0.3"_q, "10.14.0.2"_q}));
    EXPECT_EQ(sections.value("text"_q).toObject().value("show_name"_q),
              QJsonArray({QJsonValue::Null}));
    EXPECT_EQ(sections.value("head"_q).toObject().value("Factory IP"_q),
              QJsonArray({"10.14.7.21"_q}));
}

TEST(ConfigShow, longSectionsAreShownWhole)
{
    QByteArray text = "#:1.3\n#:VN-3.0.6.29\n\n";
    for (const QByteArray &name : {QByteArray("a"), QByteArray("b"), QByteArray("c")}) {
        QByteArray section = "SECTION " + name + '\n';
        for (int i = 10000; i < 15000; ++i)
            section += "key" + QByteArray::number(i) + "=value\n";
        section += "ENDSECTION " + name + '\n';
        text += section + '\n';
    }
    const ToolResult result = runTool({"config", "show", "-"}, text);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.count("=value\n"), 15000);
    for (const char *name : {"a", "b", "c"})
        EXPECT_EQ(result.out.count(QByteArray("SECTION ") + name + '\n'), 2) << name;
    EXPECT_TRUE(result.out.endsWith("ENDSECTION c\n") || result.out.endsWith("ENDSECTION c\n\n"));
}

TEST(ConfigShow, jsonOfOneFileIsThatOfSeveral_withItsMembersBesideTheList)
{
    for (const std::vector<std::string> &options : {std::vector<std::string>{},
                                                    {"--section", "text"},
                                                    {"--section", "text", "--key", "name"}}) {
        std::vector<std::string> words = {"config", "show", example("gate.cfg"), "--json"};
        words.insert(words.end(), options.begin(), options.end());
        QJsonObject one = runTool(words).json();
        words.insert(words.begin() + 2, example("dock.cfg"));
        const QJsonObject several = runTool(words).json();
        EXPECT_EQ(several.keys(), QStringList({"errors"_q, "files"_q}));
        EXPECT_EQ(one.take("errors"_q), QJsonArray());
        EXPECT_EQ(one.take("files"_q), QJsonArray{several.value("files"_q).toArray().at(1)});
        EXPECT_EQ(one, several.value("files"_q).toArray().at(1).toObject());
    }
}

TEST(ConfigShow, jsonOfASectionHoldsItsEntries)
{
    const QJsonObject value = runTool({"config", "show", VANTERO_EXAMPLE_DATA "/entrance.cfg",
                                       "--section", "text", "--json"})
                                  .json();
    EXPECT_EQ(value.value("section"_q).toString(), "text"_q);
    EXPECT_EQ(value.value("entries"_q).toObject().value("location"_q),
              QJsonArray({"Größe 4×3 m, 21 °C"_q}));
}

TEST(ConfigShow, aTextWithoutVersionLinesStillShowsItsSections)
{
    const QByteArray text = "no version\nlines\n\nSECTION s\nk=v\nENDSECTION s\n";
    expectRun(runTool({"config", "show", "-"}, text), 0, "SECTION s\nk=v\nENDSECTION s\n",
              "vantero-formats: -: warning: no header: the first lines are lost (line 1)\n");
    EXPECT_EQ(runTool({"config", "show", "-", "--json"}, text).json().value("versionLines"_q),
              QJsonValue(false));
}

TEST(ConfigShow, imageHasNoVersionLinesInJson)
{
    EXPECT_TRUE(runTool({"config", "show", VANTERO_EXAMPLE_DATA "/gate.jpg", "--json"})
                    .json()
                    .value("versionLines"_q)
                    .isNull());
}

TEST(ConfigShow, imageCommentsAreJoinedWhereverTheyAreParted)
{
    const QByteArray comment = "SECTION a\nk=v\nENDSECTION a\n";
    for (int cut = 0; cut <= comment.size(); ++cut)
        expectRun(
            runTool({"config", "show", "-"}, imageWith({comment.left(cut), comment.mid(cut)})), 0,
            comment, "");
}

TEST(ConfigShow, imageCommentOfTheLargestSegmentIsReadWhole)
{
    const QByteArray head = "SECTION a\nk=";
    const QByteArray tail = "\nENDSECTION a\n";
    const QByteArray value(65533 - head.size() - tail.size(), 'x');
    expectRun(runTool({"config", "show", "-"}, imageWith({head + value + tail})), 0,
              head + value + tail, "");
}

TEST(ConfigShow, imageCommentMayBeLatin1)
{
    expectRun(runTool({"config", "show", "-"}, imageWith({"SECTION a\nk=S\xFC"
                                                          "d\nENDSECTION a\n"})),
              0, "SECTION a\nk=Süd\nENDSECTION a\n", "");
}

TEST(ConfigShow, imageWithoutACommentHasNothingToShow)
{
    expectRun(runTool({"config", "show", "-"}, imageWith({})), 1, "",
              "vantero-formats: -: the image has no comment\n");
}

TEST(ConfigShow, imageWithoutSectionsInItsCommentHasNothingToShow)
{
    expectRun(runTool({"config", "show", "-"}, imageWith({"Made by hand"})), 1, "",
              "vantero-formats: -: no configuration: neither header nor sections\n");
}

TEST(ConfigShow, imageWithAMalformedCommentIsBadInput)
{
    expectRun(runTool({"config", "show", "-"}, imageWith({"SECTION a\nENDSECTION b\n"})), 2, "",
              "vantero-formats: -: image comment: ENDSECTION b does not match SECTION\n");
}

TEST(ConfigShow, imageDataAreNotLookedAt)
{
    const QByteArray image = imageWith({"SECTION a\nk=v\nENDSECTION a\n"});
    const int scan = image.indexOf("\xFF\xDA") + 10; // after the segment that opens the data
    expectRun(runTool({"config", "show", "-"}, image.left(scan)), 0,
              "SECTION a\nk=v\nENDSECTION a\n", "");
}

TEST(ConfigShow, damagedImageIsBadInputWhereverItIsCut)
{
    const QByteArray image = exampleImage();
    const int scan = image.indexOf("\xFF\xDA");
    for (int size = 3; size < scan; size += 7) {
        const ToolResult result = runTool({"config", "show", "-"}, image.left(size));
        EXPECT_EQ(result.exitCode, 2) << size;
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.err.startsWith("vantero-formats: -: damaged JPEG image: "))
            << result.err.constData();
    }
}

TEST(ConfigShow, archiveIsRefusedWithAHint)
{
    expectRun(runTool({"config", "show", VANTERO_EXAMPLE_DATA "/cameras.zip"}), 2, "",
              "vantero-formats: " VANTERO_EXAMPLE_DATA
              "/cameras.zip: a zip archive; \"config collect\" reads its configurations\n");
}

TEST(ConfigLint, linesOfAnImageAreThoseOfItsComment)
{
    expectRun(runTool({"config", "lint", "-"}, imageWith({"\nSECTION a\nk=1\n", "ENDSECTION b\n"})),
              1, "-:4:1: error: ENDSECTION b does not match SECTION [end-of-another-section]\n",
              "");
    expectRun(runTool({"config", "lint", "-"}, imageWith({})), 1, "",
              "vantero-formats: -: the image has no comment\n");
    const ToolResult cut = runTool({"config", "lint", "-"}, exampleImage().left(20));
    EXPECT_EQ(cut.exitCode, 2);
    EXPECT_TRUE(cut.err.startsWith("vantero-formats: -: damaged JPEG image: "));
}

TEST(ConfigLint, oneLineAFinding)
{
    // What the file is called and what it holds must not make two of it.
    const QTemporaryDir folder;
    const std::string path = folder.filePath("a\nb.cfg"_q).toStdString();
    ASSERT_NO_FATAL_FAILURE(writeFile(path, "#:1\n#:2\n\nENDSECTION a\x1b\n"));
    const ToolResult result = runTool({"config", "lint", path});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out.count("[end-without-section]\n"), 1);
    EXPECT_EQ(result.out.count('\n'), result.out.count("]\n"));
    EXPECT_TRUE(
        result.out.contains("a\\x0Ab.cfg:4:1: error: SECTION expected before ENDSECTION a\\x1B"))
        << result.out.constData();
}

TEST(ConfigShow, imagesInAFolderCountWhenTheirCommentsHoldSections)
{
    const QTemporaryDir folder;
    const auto write = [&](const char *name, const QByteArray &content) {
        writeFile(folder.filePath(QString::fromLatin1(name)).toStdString(), content);
    };
    write("a.jpg", imageWith({"made by hand"}));
    write("b.jpg", imageWith({"SECTION a\nk=1\nENDSECTION a\n"}));
    write("c.jpg", imageWith({}));
    write("d.txt", "SECTION a\nk=2\nENDSECTION a\n");
    ToolCall call{{"config", "show", ".", "--recursive", "--section", "a", "--key", "k"}};
    call.folder = folder.path().toStdString();
    expectRun(runTool(call), 0, "./b.jpg: 1\n", "");
}

TEST(ConfigShow, aFolderWithoutConfigurationsHasNothingToShow)
{
    const QTemporaryDir folder;
    expectRun(runTool({"config", "show", folder.path().toStdString(), "--recursive"}), 1, "",
              "vantero-formats: no configurations found\n");
}

TEST(ConfigShow, standardInputIsReadOnce)
{
    expectRun(runTool({"config", "show", "-", "-"}), 2, "",
              "vantero-formats: only one of the files can be standard input\n");
}

/** What the tool prints on a terminal. */
QByteArray shownOnATerminal(const std::string &path)
{
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        ::execl(VANTERO_TOOL, VANTERO_TOOL, "config", "show", path.c_str(), nullptr);
        ::_exit(127);
    }
    EXPECT_GT(child, 0);
    QByteArray out;
    char piece[4096];
    for (ssize_t size = 0; (size = ::read(terminal, piece, sizeof piece)) > 0;)
        out.append(piece, int(size));
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    ::close(terminal);
    return out;
}

TEST(ConfigShow, controlCharactersAreEscapedOnATerminalOnly)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath("a.cfg"_q).toStdString();
    const QByteArray section = "SECTION s\nk=a\tb\x1b[31m\xC2\x9B\x7f ö\nENDSECTION s\n";
    ASSERT_NO_FATAL_FAILURE(writeFile(path, "#:1\n#:2\n\n" + section));
    EXPECT_TRUE(runTool({"config", "show", path}).out.endsWith(section));
    const QByteArray shown = shownOnATerminal(path);
    EXPECT_TRUE(shown.contains("\r\nk=a\tb\\x1B[31m\\x9B\\x7F ö\r\n")) << shown.constData();
}

} // namespace
