// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_HARDENING_ALLOCATIONFAULTS_H
#define VN_TESTS_HARDENING_ALLOCATIONFAULTS_H

/**
 * @file Memory that runs out: the program that links AllocationFaults.cpp stands before malloc(),
 * its like and operator new for all libraries, and may have one allocation of a thread fail.
 */

#include <cstddef>

namespace AllocationFaults {

/** From now on counts this thread's allocations and has the @p n-th (from 1) fail; 0: none. */
void start(long n);

/** Ends that. Returns whether the allocation to fail was reached. */
bool stop();

/** Between start() and stop(): the allocations of this thread that have not been freed by it. */
long balance();

/** The most bytes that one allocation of this thread has asked for since start(). */
std::size_t largest();

/** Whether the allocation that failed was asked for, at any depth, by a function of that (mangled)
 * name in that library; any function where there is no name. */
bool wasIn(const char *library, const char *function);

} // namespace AllocationFaults

#endif // VN_TESTS_HARDENING_ALLOCATIONFAULTS_H
