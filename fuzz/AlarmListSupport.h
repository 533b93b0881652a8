// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_FUZZ_ALARMLISTSUPPORT_H
#define VN_FUZZ_ALARMLISTSUPPORT_H

/** @file Alarm lists parsed by the library, and checked against the reference. */

#include "AlarmSupport.h"

#include "alarm/AlarmListParser.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

/** Runs @p parse in a process of its own, which must end with exit status 2 and the message. */
inline void checkEndsProcess(const std::function<void()> &parse)
{
    int ends[2];
    FUZZ_CHECK(::pipe(ends) == 0);
    const pid_t child = ::fork();
    FUZZ_CHECK(child >= 0);
    if (child == 0) {
        ::dup2(ends[1], STDERR_FILENO);
        // The fuzzer takes an exit for a failure; this is asked before it.
        ::on_exit([](int status, void *) { ::_exit(status); }, nullptr);
        ::alarm(5);
        parse();
        ::_exit(99);
    }
    ::close(ends[1]);
    QByteArray message;
    char buffer[256];
    ssize_t count = 0;
    do { // the fuzzer's timer interrupts
        count = ::read(ends[0], buffer, sizeof buffer);
        message.append(buffer, int(std::max<ssize_t>(count, 0)));
    } while (count > 0 || (count < 0 && errno == EINTR));
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        FUZZ_CHECK(errno == EINTR);
    // A thread of the fuzzer may have held a lock when the process was made.
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return;
    FUZZ_CHECK(WIFEXITED(status) && WEXITSTATUS(status) == 2);
    FUZZ_CHECK(message == "flex scanner jammed\n");
}

/** Processes are slow to make: one in eight inputs that call for one gets it. */
inline bool isChosen(const std::uint8_t *data, std::size_t size)
{
    return qHashBits(data, size) % 8 == 0;
}

#endif // VN_FUZZ_ALARMLISTSUPPORT_H
