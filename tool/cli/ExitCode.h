// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_EXITCODE_H
#define VN_TOOL_CLI_EXITCODE_H

namespace vn::tool {

/** What the tool's exit status says, the same for every command. */
enum class ExitCode {
    Done = 0,         ///< done, or the answer is yes
    No = 1,           ///< the answer is no: not found, differs, unsafe, nothing there
    BadInput = 2,     ///< wrong usage, or an input that cannot be read or is malformed
    OutputFailed = 3, ///< a result could not be written
};

} // namespace vn::tool

#endif // VN_TOOL_CLI_EXITCODE_H
