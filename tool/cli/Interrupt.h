// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_INTERRUPT_H
#define VN_TOOL_CLI_INTERRUPT_H

#include <atomic>

namespace vn::tool {

/**
 * Makes the signals that users end programs with (SIGHUP, SIGINT, SIGTERM) a wish: the work comes
 * to a good end, then the process ends by the signal as if it had not waited. A second signal ends
 * it at once.
 */
class Interrupt
{
public:
    /** Takes the signals; once in a process. */
    Interrupt();
    /** Gives them back. */
    ~Interrupt();

    Interrupt(const Interrupt &) = delete; // there is one handler a signal
    Interrupt &operator=(const Interrupt &) = delete;

    /** True once a signal has come, or stop() was called. */
    static const std::atomic<bool> &stopped();

    /** Asks the work to end, without a signal. */
    static void stop();

    /** Whether a signal has come. */
    static bool isPending();

    /** Ends the process by the signal that has come; returns where none has. */
    static void obey();
};

} // namespace vn::tool

#endif // VN_TOOL_CLI_INTERRUPT_H
