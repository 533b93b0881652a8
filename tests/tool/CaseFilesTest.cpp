// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Runs the case files of this folder. A case is a comment, the command line, and what comes of it:
//
//     # One section is printed as a block.
//     run: config show gate.cfg --section text
//     exit: 0
//     stdin:
//     | a line of standard input
//     stdout:
//     | SECTION text
//     stderr:
//     | vantero-formats: gate.cfg: what is wrong
//     file new.cfg:
//     | what a file holds afterwards
//
// Words of the command line may be quoted ('two words'). A part that is missing is empty, a missing
// "exit" is 0. The case runs in a copy of examples/data/. "stdout~:" checks that each of its lines
// occurs, in this order, with others between them.

#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <map>
#include <ostream>

namespace {

struct CaseFile
{
    std::string path;

    friend void PrintTo(const CaseFile &file, std::ostream *out) { *out << file.path; }
};

struct Case
{
    std::vector<std::string> arguments;
    int exitCode = 0;
    std::map<std::string, QByteArray> parts; // "stdin", "stdout", "stderr", "file NAME"
};

std::vector<std::string> splitWords(const QByteArray &line)
{
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    bool quoted = false;
    for (const char c : line) {
        if (c == '\'') {
            quoted = !quoted;
            inWord = true;
        } else if (c == ' ' && !quoted) {
            if (inWord)
                words.push_back(word);
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words.push_back(word);
    return words;
}

Case readCase(const std::string &path)
{
    Case result;
    QByteArray *part = nullptr;
    const QList<QByteArray> lines = readFile(QString::fromStdString(path)).split('\n');
    for (const QByteArray &line : lines) {
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (line == "|" || line.startsWith("| ")) {
            EXPECT_NE(part, nullptr) << line.constData();
            if (part)
                *part += line.mid(2) + '\n';
        } else if (line.startsWith("run: ")) {
            result.arguments = splitWords(line.mid(5));
        } else if (line.startsWith("exit: ")) {
            result.exitCode = line.mid(6).toInt();
        } else {
            EXPECT_TRUE(line.endsWith(':')) << line.constData();
            part = &result.parts[line.left(line.size() - 1).toStdString()];
            *part = QByteArray("");
        }
    }
    EXPECT_FALSE(result.arguments.empty()) << path;
    return result;
}

void copyExampleData(const QString &folder)
{
    const QDir data(QStringLiteral(VANTERO_EXAMPLE_DATA));
    for (const QString &name : data.entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(data.filePath(name), folder + QLatin1Char('/') + name));
}

class ToolCaseFile : public testing::TestWithParam<CaseFile>
{
};

TEST_P(ToolCaseFile, givesWhatItSays)
{
    const QTemporaryDir folder;
    ASSERT_NO_FATAL_FAILURE(copyExampleData(folder.path()));
    Case expected = readCase(GetParam().path);

    ToolCall call;
    call.arguments = expected.arguments;
    call.input = expected.parts["stdin"];
    call.folder = folder.path().toStdString();
    const ToolResult result = runTool(call);

    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitCode, expected.exitCode);
    EXPECT_EQ(result.err, expected.parts["stderr"]);
    if (expected.parts.count("stdout~")) {
        int from = 0;
        for (const QByteArray &line : expected.parts["stdout~"].split('\n')) {
            const int at = result.out.indexOf(line, from);
            EXPECT_GE(at, 0) << "missing: " << line.constData()
                             << "\n in: " << result.out.constData();
            from = at < 0 ? from : at + line.size();
        }
    } else {
        EXPECT_EQ(result.out, expected.parts["stdout"]);
    }
    for (const auto &part : expected.parts) {
        if (part.first.compare(0, 5, "file ") != 0)
            continue;
        const QString name = QString::fromStdString(part.first.substr(5));
        EXPECT_EQ(readFile(folder.filePath(name)), part.second) << part.first;
    }
}

std::vector<CaseFile> caseFiles()
{
    std::vector<CaseFile> files;
    const QDir folder(QStringLiteral(VANTERO_TOOL_CASES));
    for (const QString &name : folder.entryList({QStringLiteral("*.test")}, QDir::Files))
        files.push_back({folder.filePath(name).toStdString()});
    return files;
}

std::string nameOfCase(const testing::TestParamInfo<CaseFile> &info)
{
    const std::string &path = info.param.path;
    std::string name = path.substr(path.rfind('/') + 1);
    name.resize(name.size() - std::string(".test").size());
    for (char &c : name)
        c = c == '-' ? '_' : c;
    return name;
}

INSTANTIATE_TEST_SUITE_P(Cases, ToolCaseFile, testing::ValuesIn(caseFiles()), nameOfCase);

} // namespace
