// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/ScannerRuntime_p.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace vn::internal {

namespace {

constexpr int kExitFailure = 2;

/** The functions that a message may name and that carry the scanner's prefix in its place. */
constexpr const char *kPrefixed[] = {"yy_create_buffer()", "yy_scan_buffer()",
                                     "yyensure_buffer_stack()"};

std::string withPrefix(const char *prefix, const char *message)
{
    for (const char *name : kPrefixed)
        if (const char *place = std::strstr(message, name))
            return std::string(message, place) + prefix + (place + std::strlen("yy"));
    return message;
}

} // namespace

void endProcess(const char *prefix, const char *message)
{
    (void)std::fprintf(stderr, "%s\n", withPrefix(prefix, message).c_str());
    std::exit(kExitFailure);
}

void fatalError(bool throws, const char *prefix, const char *message)
{
    if (throws)
        throw ScannerError{withPrefix(prefix, message)};
    endProcess(prefix, message);
}

int readInput(const char *prefix, std::FILE *file, char *buffer, int size, bool throws)
{
    for (;;) {
        errno = 0;
        const std::size_t count = std::fread(buffer, 1, static_cast<std::size_t>(size), file);
        if (count > 0 || !std::ferror(file))
            return static_cast<int>(count);
        if (errno != EINTR)
            fatalError(throws, prefix, "input in flex scanner failed");
        std::clearerr(file);
    }
}

} // namespace vn::internal
