// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_SCANNERRUNTIME_P_H
#define VN_ALARM_SCANNERRUNTIME_P_H

/** @file What the generated scanners do to the process: reading its standard input, ending it. */

#include <cstdio>
#include <string>

namespace vn::internal {

/**
 * Ends the process with exit status 2 after writing @p message and a newline to standard error.
 * Scanners do so when no rule matches or memory runs out; they have no way to go on. Functions
 * that a message calls "yy_…" are named with the @p prefix that they have here.
 */
[[noreturn]] void endProcess(const char *prefix, const char *message);

/** What a scanner throws that must not end the process; the message is that of endProcess(). */
struct ScannerError
{
    std::string message;
};

/** Ends the process, or throws ScannerError where @p throws is set. */
[[noreturn]] void fatalError(bool throws, const char *prefix, const char *message);

/** Reads up to @p size bytes from @p file; 0 at its end. A fatal error when reading fails. */
int readInput(const char *prefix, std::FILE *file, char *buffer, int size, bool throws);

} // namespace vn::internal

#endif // VN_ALARM_SCANNERRUNTIME_P_H
