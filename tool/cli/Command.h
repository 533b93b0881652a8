// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_COMMAND_H
#define VN_TOOL_CLI_COMMAND_H

#include "tool/cli/Arguments.h"
#include "tool/cli/Output.h"
#include "tool/cli/ToolError.h"

namespace vn::tool {

/**
 * One command of the tool. An object serves one run.
 *
 * Errors are thrown as ToolError. An exception of the library that leaves run() is told, too, but
 * with its own message alone.
 */
class Command
{
public:
    Command() = default;
    Command(const Command &) = delete; // Arguments point into it
    Command &operator=(const Command &) = delete;
    virtual ~Command() = default;

    /** Tells what arguments there are. */
    virtual void declare(Arguments &arguments) = 0;

    /** Does the work with the arguments that were given. With --json it ends with setResult(). */
    virtual ExitCode run(Output &out) = 0;
};

} // namespace vn::tool

#endif // VN_TOOL_CLI_COMMAND_H
