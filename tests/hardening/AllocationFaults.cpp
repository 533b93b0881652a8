// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "hardening/AllocationFaults.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <new>

#include <dlfcn.h>
#include <execinfo.h>

// The functions behind malloc() and its like: AddressSanitizer's or the C library's.
#ifdef __SANITIZE_ADDRESS__
#define BEHIND(name) __interceptor_##name
#else
#define BEHIND(name) __libc_##name
#endif

extern "C" {
void *BEHIND(malloc)(std::size_t size);
void *BEHIND(calloc)(std::size_t count, std::size_t size);
void *BEHIND(realloc)(void *memory, std::size_t size);
void BEHIND(free)(void *memory);
}

namespace {

struct Faults
{
    bool isCounting;
    bool isReached;
    long remaining;
    long balance;
    std::size_t largest;
};

constexpr int kMostFrames = 40;
void *s_stack[kMostFrames]; // where the allocation failed
int s_depth = 0;

// Without a constructor, so that it can be used before main and costs nothing.
thread_local Faults t_faults __attribute__((tls_model("initial-exec"))) = {};

bool fails(std::size_t size)
{
    if (t_faults.isCounting && size > t_faults.largest)
        t_faults.largest = size;
    if (!t_faults.isCounting || t_faults.remaining == 0 || --t_faults.remaining != 0)
        return false;
    t_faults.isReached = true;
    t_faults.isCounting = false;
    s_depth = ::backtrace(s_stack, kMostFrames);
    t_faults.isCounting = true;
    errno = ENOMEM;
    return true;
}

void *counted(void *memory)
{
    if (t_faults.isCounting && memory)
        ++t_faults.balance;
    return memory;
}

} // namespace

void AllocationFaults::start(long n)
{
    s_depth = ::backtrace(s_stack, kMostFrames); // what it loads at first is there then
    t_faults = {true, false, n, 0, 0};
}

bool AllocationFaults::stop()
{
    t_faults.isCounting = false;
    return t_faults.isReached;
}

long AllocationFaults::balance()
{
    return t_faults.balance;
}

std::size_t AllocationFaults::largest()
{
    return t_faults.largest;
}

bool AllocationFaults::wasIn(const char *library, const char *function)
{
    for (int i = 0; i < s_depth; ++i) {
        Dl_info info = {};
        if (::dladdr(s_stack[i], &info) == 0 || !std::strstr(info.dli_fname, library))
            continue;
        if (!function || (info.dli_sname && std::strstr(info.dli_sname, function)))
            return true;
    }
    return false;
}

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

EXPORTED void *malloc(std::size_t size) noexcept
{
    return fails(size) ? nullptr : counted(BEHIND(malloc)(size));
}

EXPORTED void *calloc(std::size_t count, std::size_t size) noexcept
{
    return fails(count * size) ? nullptr : counted(BEHIND(calloc)(count, size));
}

EXPORTED void *realloc(void *memory, std::size_t size) noexcept
{
    if (fails(size))
        return nullptr;
    void *result = BEHIND(realloc)(memory, size);
    return memory ? result : counted(result);
}

EXPORTED void free(void *memory) noexcept
{
    if (t_faults.isCounting && memory)
        --t_faults.balance;
    BEHIND(free)(memory);
}
}

EXPORTED void *operator new(std::size_t size)
{
    void *memory = malloc(size ? size : 1);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
EXPORTED void *operator new[](std::size_t size)
{
    return operator new(size);
}
EXPORTED void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return malloc(size ? size : 1);
}
EXPORTED void *operator new[](std::size_t size, const std::nothrow_t &) noexcept
{
    return malloc(size ? size : 1);
}
EXPORTED void operator delete(void *memory) noexcept
{
    free(memory);
}
EXPORTED void operator delete[](void *memory) noexcept
{
    free(memory);
}
EXPORTED void operator delete(void *memory, std::size_t) noexcept
{
    free(memory);
}
EXPORTED void operator delete[](void *memory, std::size_t) noexcept
{
    free(memory);
}
EXPORTED void operator delete(void *memory, const std::nothrow_t &) noexcept
{
    free(memory);
}
EXPORTED void operator delete[](void *memory, const std::nothrow_t &) noexcept
{
    free(memory);
}
