// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_TOOLRUNNER_H
#define VN_TESTS_SUPPORT_TOOLRUNNER_H

/** @file Runs the built tool as a user does. The test's CMakeLists.txt defines VANTERO_TOOL, the
 * path of the program. */

#include "support/QtPrinters.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

/** An example file; see examples/data/README.md. */
inline std::string example(const std::string &name)
{
    return VANTERO_EXAMPLE_DATA "/" + name;
}

#ifdef VANTERO_JSON_OUTPUTS
/** Keeps what a run with --json, or --jsonl, printed, for the test that validates all of them: the
 * arguments, parted by zero bytes, an empty one and a line end, then the output. */
inline void keepJson(const std::vector<std::string> &arguments, const QByteArray &out)
{
    bool isJson = false;
    QByteArray content;
    for (const std::string &argument : arguments) {
        if (argument == "--")
            break;
        isJson = isJson || argument == "--json" || argument == "--jsonl";
    }
    for (const std::string &argument : arguments)
        content += QByteArray(argument.data(), int(argument.size())) + '\0';
    if (!isJson)
        return;
    static int number = 0;
    const testing::TestInfo *const test = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test->test_suite_name()) + '.' + test->name();
    std::replace(name.begin(), name.end(), '/', '.');
    QFile file(
        QString::fromStdString(VANTERO_JSON_OUTPUTS "/" + name + '.' + std::to_string(number++)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << file.fileName().toStdString();
    file.write(content + QByteArray("\0\n", 2) + out);
}
#endif

/** How the tool is run. */
struct ToolCall
{
    std::vector<std::string> arguments;
    QByteArray input = {};       // on standard input
    std::string folder = {};     // working folder
    std::string outputPath = {}; // standard output goes there instead of into the result
    bool closeOutput = false;    // runs without a standard output
    std::vector<std::pair<std::string, std::string>> environment = {};
    std::string program = VANTERO_TOOL;
};

/** What a run gave. */
struct ToolResult
{
    int exitCode = -1; // -1 when a signal ended it
    int signal = 0;
    QByteArray out;
    QByteArray err;

    /** Standard output as one JSON object; a test failure when it is none. */
    QJsonObject json() const
    {
        QJsonParseError error = {};
        const QJsonDocument document = QJsonDocument::fromJson(out, &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
        EXPECT_TRUE(document.isObject()) << out.toStdString();
        return document.object();
    }
};

inline ToolResult runTool(const ToolCall &call)
{
    int in[2] = {-1, -1};
    int out[2] = {-1, -1};
    int err[2] = {-1, -1};
    ToolResult result;
    if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0 ||
        ::pipe2(err, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "pipe: " << errno;
        return result;
    }

    std::vector<char *> words = {const_cast<char *>(call.program.c_str())};
    for (const std::string &argument : call.arguments)
        words.push_back(const_cast<char *>(argument.c_str()));
    words.push_back(nullptr);

    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        ::dup2(err[1], STDERR_FILENO);
        if (!call.outputPath.empty()) {
            const int file = ::open(call.outputPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
            if (file < 0 || ::dup2(file, STDOUT_FILENO) < 0)
                ::_exit(127);
        }
        if (call.closeOutput)
            ::close(STDOUT_FILENO);
        if (!call.folder.empty() && ::chdir(call.folder.c_str()) != 0)
            ::_exit(127);
        // What a sanitizer finds must not pass for an answer of the tool.
        for (const char *name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"}) {
            const char *before = std::getenv(name);
            ::setenv(name, (std::string(before ? before : "") + ":exitcode=99").c_str(), 1);
        }
        const std::string leakOptions = std::getenv("LSAN_OPTIONS");
        ::setenv(
            "LSAN_OPTIONS",
            (leakOptions + ":print_suppressions=0:suppressions=" VANTERO_TEST_SUPPORT "/leaks.supp")
                .c_str(),
            1);
        for (const auto &variable : call.environment)
            ::setenv(variable.first.c_str(), variable.second.c_str(), 1);
        ::signal(SIGPIPE, SIG_DFL);
        ::execv(call.program.c_str(), words.data());
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    ::close(err[1]);
    const auto pipeSignalBefore = std::signal(SIGPIPE, SIG_IGN); // the tool may leave input unread

    constexpr int kWatchdogMs = 120 * 1000;
    qint64 written = 0;
    struct pollfd files[] = {{in[1], POLLOUT, 0}, {out[0], POLLIN, 0}, {err[0], POLLIN, 0}};
    ::fcntl(in[1], F_SETFL, O_NONBLOCK);
    QByteArray *targets[] = {nullptr, &result.out, &result.err};
    while (files[1].fd >= 0 || files[2].fd >= 0 || files[0].fd >= 0) {
        if (::poll(files, 3, kWatchdogMs) <= 0) {
            ADD_FAILURE() << "the tool hangs";
            ::kill(child, SIGKILL);
            break;
        }
        if (files[0].revents) {
            const ssize_t count = ::write(in[1], call.input.constData() + written,
                                          static_cast<std::size_t>(call.input.size() - written));
            written += count > 0 ? count : 0;
            const bool again = count < 0 && (errno == EAGAIN || errno == EINTR);
            if ((count < 0 && !again) || written == call.input.size()) {
                ::close(in[1]);
                files[0].fd = -1;
            }
        }
        for (int i = 1; i < 3; ++i) {
            if (!files[i].revents)
                continue;
            char buffer[1 << 16];
            const ssize_t count = ::read(files[i].fd, buffer, sizeof buffer);
            if (count > 0)
                targets[i]->append(buffer, static_cast<int>(count));
            else if (count == 0 || errno != EINTR)
                files[i].fd = -1;
        }
    }
    if (files[0].fd >= 0)
        ::close(in[1]);
    ::close(out[0]);
    ::close(err[0]);
    std::signal(SIGPIPE, pipeSignalBefore);

    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status))
        result.exitCode = WEXITSTATUS(status);
    else
        result.signal = WTERMSIG(status);
#ifdef VANTERO_JSON_OUTPUTS
    if (call.program == VANTERO_TOOL && call.outputPath.empty() && !call.closeOutput)
        keepJson(call.arguments, result.out);
#endif
    return result;
}

inline ToolResult runTool(std::vector<std::string> arguments, const QByteArray &input = {})
{
    ToolCall call;
    call.arguments = std::move(arguments);
    call.input = input;
    return runTool(call);
}

/** Expects the whole outcome of a run. */
inline void expectRun(const ToolResult &result, int exitCode, const QByteArray &out,
                      const QByteArray &err)
{
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, err);
}

#endif // VN_TESTS_SUPPORT_TOOLRUNNER_H
