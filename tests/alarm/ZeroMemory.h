// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_ZEROMEMORY_H
#define VN_TESTS_ALARM_ZEROMEMORY_H

#include <gtest/gtest.h>

#include <cstddef>

#include <sys/mman.h>

/** Zeroed memory of any size that takes none until it is used. */
class ZeroMemory
{
public:
    explicit ZeroMemory(std::size_t size)
        : m_size(size)
        , m_data(::mmap(nullptr, size, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0))
    {
        EXPECT_NE(m_data, MAP_FAILED);
    }
    ~ZeroMemory() { ::munmap(m_data, m_size); }
    ZeroMemory(const ZeroMemory &) = delete; // owns its pages
    ZeroMemory &operator=(const ZeroMemory &) = delete;

    char *data() { return static_cast<char *>(m_data); }

private:
    std::size_t m_size;
    void *m_data;
};

#endif // VN_TESTS_ALARM_ZEROMEMORY_H
