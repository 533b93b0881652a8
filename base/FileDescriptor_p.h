// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_FILEDESCRIPTOR_P_H
#define VN_BASE_FILEDESCRIPTOR_P_H

/** @file The owner of a file descriptor, and system calls that go on where a signal came. */

#include <cerrno>
#include <cstddef>
#include <utility>

#include <unistd.h>

namespace vn {

namespace internal {

/** Owns a file descriptor. */
class FileDescriptor
{
public:
    /** Takes the result of open(2); negative means none. */
    explicit FileDescriptor(int descriptor = -1) noexcept
        : m_descriptor(descriptor)
    {
    }
    ~FileDescriptor() { (void)close(); } // of what was written: whoever cares has closed it
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }

    bool isValid() const noexcept { return m_descriptor >= 0; }
    int get() const noexcept { return m_descriptor; }

    /** Closes it, if there is one. False, with errno, where something written did not arrive. */
    bool close() noexcept
    {
        const int descriptor = std::exchange(m_descriptor, -1);
        return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
    }

private:
    int m_descriptor;
};

/** Repeats the system call @p call for as long as a signal interrupts it. */
template <typename Call>
auto retried(Call &&call)
{
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR)
            return result;
    }
}

/** Writes all of the @p size bytes to @p file. False, with errno, on an error. */
inline bool writeAll(const FileDescriptor &file, const char *data, std::size_t size)
{
    while (size > 0) {
        const ssize_t count = retried([&] { return ::write(file.get(), data, size); });
        if (count < 0)
            return false;
        data += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

} // namespace internal

} // namespace vn

#endif // VN_BASE_FILEDESCRIPTOR_P_H
