// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// From the start of a process to its end, beside an empty program of Qt Core.

#include "Support.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Words = std::vector<std::string>;

/** Runs a program in silence; whether it ended well. */
bool runs(const std::vector<char *> &words)
{
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error =
        ::posix_spawn(&child, words.front(), &actions, nullptr, words.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    return error == 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

void start(benchmark::State &state, const Words &arguments)
{
    std::vector<char *> words;
    for (const std::string &argument : arguments)
        words.push_back(const_cast<char *>(argument.c_str()));
    words.push_back(nullptr);
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        require(runs(words), words.front());
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
}

const bool s_registered = [] {
    const std::string tool = VANTERO_TOOL;
    const std::string gate = VANTERO_EXAMPLE_DATA "/gate.cfg";
    const std::pair<const char *, Words> rows[] = {
        {"start a program/empty, of Qt Core", {VANTERO_EMPTY_PROGRAM}},
        {"start a program/ours, --version", {tool, "--version"}},
        {"start a program/ours, version compare", {tool, "version", "compare", "VN-3.0", "VN-3.1"}},
        {"start a program/ours, config show", {tool, "config", "show", gate}},
    };
    for (const auto &[name, words] : rows)
        benchmark::RegisterBenchmark(name, start, words)->Arg(1)->UseManualTime();
    return true;
}();

} // namespace
