// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_STANDARDINPUT_H
#define VN_TESTS_ALARM_STANDARDINPUT_H

#include <QtCore/QByteArray>

#include <gtest/gtest.h>

#include <cstdio>
#include <stdio_ext.h>
#include <utility>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

/** Gives this process another standard input for the life of this value. */
class StandardInput
{
public:
    /** One that holds @p content. */
    explicit StandardInput(const QByteArray &content)
        : StandardInput(fileWith(content))
    {
    }

    /** The file at @p path, whatever it is. */
    static StandardInput from(const char *path) { return StandardInput(::open(path, O_RDONLY)); }

    /** One that holds @p content and fails behind it: a connection that is reset. */
    static StandardInput failingBehind(const QByteArray &content)
    {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
        EXPECT_EQ(::write(ends[1], content.constData(), static_cast<std::size_t>(content.size())),
                  content.size());
        EXPECT_EQ(::write(ends[0], "x", 1), 1); // nobody will have read it
        ::close(ends[1]);
        return StandardInput(ends[0]);
    }

    StandardInput(StandardInput &&other) noexcept
        : m_before(std::exchange(other.m_before, -1))
    {
    }
    StandardInput(const StandardInput &) = delete; // there is one standard input
    StandardInput &operator=(const StandardInput &) = delete;

    ~StandardInput()
    {
        if (m_before < 0)
            return;
        ::dup2(m_before, STDIN_FILENO);
        ::close(m_before);
        forget();
    }

private:
    explicit StandardInput(int file)
        : m_before(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3))
    {
        EXPECT_GE(file, 0);
        EXPECT_EQ(::dup2(file, STDIN_FILENO), STDIN_FILENO);
        ::close(file);
        forget();
    }

    static int fileWith(const QByteArray &content)
    {
        char path[] = "/tmp/standard-input-XXXXXX";
        const int file = ::mkostemp(path, O_CLOEXEC);
        ::unlink(path);
        EXPECT_EQ(::write(file, content.constData(), static_cast<std::size_t>(content.size())),
                  content.size());
        ::lseek(file, 0, SEEK_SET);
        return file;
    }

    /** Drops what the stream has read ahead. */
    static void forget()
    {
        ::__fpurge(stdin);
        std::clearerr(stdin);
    }

    int m_before;
};

#endif // VN_TESTS_ALARM_STANDARDINPUT_H
