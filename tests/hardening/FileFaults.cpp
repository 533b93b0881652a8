// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Stands before the C library's functions that change files, for a program that is started with it
// as LD_PRELOAD, and has one call of them go wrong:
//
//   VANTERO_FAULT_CALL  which one, counting from 1
//   VANTERO_FAULT       kill    the process is killed before the call
//                       half    the process is killed after half of the bytes of a write
//                       short   a write writes half of the bytes
//                       number  the call fails with this errno, unless it only removes a file
// A process in which no call went wrong, for it made fewer ones, ends with the exit status 77.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

constexpr int kNoFault = 77;

enum class Kind { Changes, Removes };

class Faults
{
public:
    Faults()
        : m_call(number("VANTERO_FAULT_CALL"))
        , m_fault(std::getenv("VANTERO_FAULT"))
    {
    }
    ~Faults()
    {
        if (m_count < m_call)
            ::_exit(kNoFault);
    }

    /** Has the call fail when it is its turn; the result is the errno, or 0. */
    int failure(Kind kind)
    {
        if (++m_count != m_call || !m_fault)
            return 0;
        if (std::strcmp(m_fault, "kill") == 0)
            ::kill(::getpid(), SIGKILL);
        return kind == Kind::Removes ? 0 : std::atoi(m_fault);
    }

    /** How many of @p size bytes the call writes, where it has not failed. */
    std::size_t sizeOf(std::size_t size) const
    {
        return m_count == m_call && m_fault && (isHalf() || std::strcmp(m_fault, "short") == 0)
                   ? size / 2
                   : size;
    }

    void afterWriting() const
    {
        if (m_count == m_call && m_fault && isHalf())
            ::kill(::getpid(), SIGKILL);
    }

private:
    bool isHalf() const { return std::strcmp(m_fault, "half") == 0; }

    static int number(const char *name)
    {
        const char *text = std::getenv(name);
        return text ? std::atoi(text) : 0;
    }

    int m_count = 0;
    int m_call;
    const char *m_fault;
};

Faults s_faults;

template <typename Function>
Function *real(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

} // namespace

#define VN_FAULTY(kind, name, parameters, arguments)                                               \
    extern "C" __attribute__((visibility("default"))) int name parameters                          \
    {                                                                                              \
        static auto *const function = real<int parameters>(#name);                                 \
        const int error = s_faults.failure(kind);                                                  \
        if (error == 0)                                                                            \
            return function arguments;                                                             \
        errno = error;                                                                             \
        return -1;                                                                                 \
    }

VN_FAULTY(Kind::Changes, mkostemp, (char *pattern, int flags), (pattern, flags))
VN_FAULTY(Kind::Changes, mkostemp64, (char *pattern, int flags), (pattern, flags))
VN_FAULTY(Kind::Changes, fsync, (int file), (file))
VN_FAULTY(Kind::Changes, fdatasync, (int file), (file))
VN_FAULTY(Kind::Changes, fchmod, (int file, mode_t mode), (file, mode))
VN_FAULTY(Kind::Changes, fchown, (int file, uid_t user, gid_t group), (file, user, group))
VN_FAULTY(Kind::Changes, ftruncate, (int file, off_t size), (file, size))
VN_FAULTY(Kind::Changes, ftruncate64, (int file, off_t size), (file, size))
VN_FAULTY(Kind::Changes, link, (const char *from, const char *to), (from, to))
VN_FAULTY(Kind::Changes, rename, (const char *from, const char *to), (from, to))
VN_FAULTY(Kind::Changes, renameat2,
          (int fromFolder, const char *from, int toFolder, const char *to, unsigned flags),
          (fromFolder, from, toFolder, to, flags))
VN_FAULTY(Kind::Changes, linkat,
          (int fromFolder, const char *from, int toFolder, const char *to, int flags),
          (fromFolder, from, toFolder, to, flags))
VN_FAULTY(Kind::Changes, mkdirat, (int folder, const char *path, mode_t mode), (folder, path, mode))
VN_FAULTY(Kind::Changes, syncfs, (int file), (file))
VN_FAULTY(Kind::Removes, unlink, (const char *path), (path))
VN_FAULTY(Kind::Removes, unlinkat, (int folder, const char *path, int flags), (folder, path, flags))

extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void *data,
                                                                std::size_t size)
{
    static auto *const function = real<ssize_t(int, const void *, std::size_t)>("write");
    const int error = s_faults.failure(Kind::Changes);
    if (error != 0) {
        errno = error;
        return -1;
    }
    const ssize_t written = function(file, data, s_faults.sizeOf(size));
    s_faults.afterWriting();
    return written;
}
