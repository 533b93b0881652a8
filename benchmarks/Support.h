// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BENCHMARKS_SUPPORT_H
#define VN_BENCHMARKS_SUPPORT_H

/**
 * @file What the benchmarks share.
 *
 * Benchmarks are named WORK/WHO/SIZE: the work, who does it ("ours", "limit" for what the result
 * alone costs, or a peer), and how much. scripts/benchmark makes its tables from these names.
 */

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>

/** Ends the run when a result is not what it must be: a fast wrong answer is no result. */
inline void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::abort();
}

/** Bytes that the heap holds now. */
inline double heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

#endif // VN_BENCHMARKS_SUPPORT_H
