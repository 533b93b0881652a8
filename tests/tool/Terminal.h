// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_TOOL_TERMINAL_H
#define VN_TESTS_TOOL_TERMINAL_H

/** @file The tool at a terminal, while it reads a file that takes its time. */

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

/** What a run at a terminal gave. */
struct TerminalResult
{
    QByteArray errors; ///< what has appeared there
    int status = 0;    ///< as waitpid() has it
};

/** How the tool is run. */
struct TerminalCall
{
    std::vector<std::string> arguments;
    QString slow;                     ///< reading this file takes it some 700 ms
    const char *kind = "xterm";       ///< of terminal
    std::string folder = {};          ///< working folder
    bool interrupts = false;          ///< Ctrl-C is typed while it reads that file
    std::string output = "/dev/null"; ///< where standard output goes; "" is the terminal
};

/** Whether files can be made slow; where not, tests of it are skipped. */
inline bool canBeSlow(const QString &file)
{
    const int descriptor = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
    const bool can = ::fcntl(descriptor, F_SETLEASE, F_WRLCK) == 0;
    ::close(descriptor);
    return can;
}

/** Runs the tool with a terminal of its own as standard error. */
inline TerminalResult runAtTerminal(const TerminalCall &call)
{
    // A lease makes whoever opens the file wait until we let it go.
    const int lease = ::open(QFile::encodeName(call.slow).constData(), O_RDONLY | O_CLOEXEC);
    const auto signalBefore = std::signal(SIGIO, SIG_IGN);
    EXPECT_EQ(::fcntl(lease, F_SETLEASE, F_WRLCK), 0);
    TerminalResult result;
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        if (!call.output.empty())
            ::dup2(::open(call.output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666), STDOUT_FILENO);
        ::signal(SIGINT, SIG_DFL);
        ::setenv("TERM", call.kind, 1);
        ::setenv("NO_COLOR", "1", 1);
        if (!call.folder.empty() && ::chdir(call.folder.c_str()) != 0)
            ::_exit(127);
        std::vector<char *> words = {const_cast<char *>(VANTERO_TOOL)};
        for (const std::string &argument : call.arguments)
            words.push_back(const_cast<char *>(argument.c_str()));
        words.push_back(nullptr);
        ::execv(VANTERO_TOOL, words.data());
        ::_exit(127);
    }
    bool hasEnded = false;
    while (::fcntl(lease, F_GETLEASE) == F_WRLCK && !hasEnded) { // until it is asked to end
        hasEnded = ::waitpid(child, &result.status, WNOHANG) == child;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    constexpr std::chrono::milliseconds kUntilProgressAppears(700);
    constexpr std::chrono::milliseconds kUntilSignalArrives(100);
    if (call.interrupts) {
        EXPECT_EQ(::write(terminal, "\x03", 1), 1);
    }
    std::this_thread::sleep_for(call.interrupts ? kUntilSignalArrives : kUntilProgressAppears);
    EXPECT_EQ(::fcntl(lease, F_SETLEASE, F_UNLCK), 0);
    ::close(lease);
    std::signal(SIGIO, signalBefore);

    char buffer[4096];
    for (ssize_t count; (count = ::read(terminal, buffer, sizeof buffer)) > 0;)
        result.errors.append(buffer, int(count));
    ::close(terminal);
    if (!hasEnded) {
        EXPECT_EQ(::waitpid(child, &result.status, 0), child);
    }
    result.errors.replace("\r\n", "\n").replace("^C", "");
    return result;
}

#endif // VN_TESTS_TOOL_TERMINAL_H
