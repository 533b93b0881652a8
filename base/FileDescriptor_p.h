// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_FILEDESCRIPTOR_P_H
#define VN_BASE_FILEDESCRIPTOR_P_H

/** @file System calls on files that are only read. */

#include <cerrno>

#include <unistd.h>

namespace vn {

namespace internal {

/** Owns a file descriptor that is read from. */
class FileDescriptor
{
public:
    /** Takes the result of open(2); negative means none. */
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~FileDescriptor()
    {
        if (isValid())
            ::close(m_descriptor); // only read from: an error here loses nothing
    }
    FileDescriptor(const FileDescriptor &) = delete; // one owner
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    bool isValid() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }

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

} // namespace internal

} // namespace vn

#endif // VN_BASE_FILEDESCRIPTOR_P_H
