// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace vn::tool {

namespace {

// A handler of signals takes no arguments, and may touch nothing but such values.
std::atomic<bool> s_stopped{false};
volatile std::sig_atomic_t s_signal = 0;

void onSignal(int number)
{
    s_signal = number;
    s_stopped = true;
}

void handle(void (*handler)(int))
{
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction before = {};
        (void)::sigaction(number, nullptr, &before);
        if (before.sa_handler == SIG_IGN) // as nohup has it
            continue;
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = int(SA_RESETHAND); // and no SA_RESTART: who waits for input is woken
        (void)::sigaction(number, &action, nullptr);
    }
}

} // namespace

Interrupt::Interrupt()
{
    handle(onSignal);
}

Interrupt::~Interrupt()
{
    handle(SIG_DFL);
}

const std::atomic<bool> &Interrupt::stopped()
{
    return s_stopped;
}

void Interrupt::stop()
{
    s_stopped = true;
}

bool Interrupt::isPending()
{
    return s_signal != 0;
}

void Interrupt::obey()
{
    if (!isPending())
        return;
    handle(SIG_DFL);
    (void)std::raise(int(s_signal));
}

} // namespace vn::tool
