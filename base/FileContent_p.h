// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_FILECONTENT_P_H
#define VN_BASE_FILECONTENT_P_H

/** @file Whole files by the system's calls alone; in a header, as both libraries read files. */

#include "base/DeviceIo_p.h"
#include "base/FileDescriptor_p.h"

#include <QtCore/QByteArray>

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include <sys/stat.h>

namespace vn {

namespace internal {

/** Reads what @p file holds, from where it stands, into @p bytes. Returns 0, or the number of the
 * system's error; EFBIG stands for more than kMaxContentSize bytes. */
inline int readContent(const FileDescriptor &file, QByteArray &bytes)
{
    struct stat status;
    if (::fstat(file.get(), &status) != 0)
        return errno;
    if (status.st_size > kMaxContentSize)
        return EFBIG;

    // One byte more than the file tells shows its end without growing the buffer, and without
    // another read where the file is a regular one. Pipes and files of the kernel tell no size.
    const int expected = static_cast<int>(status.st_size);
    bytes = QByteArray(expected > 0 ? expected + 1 : kChunkSize, Qt::Uninitialized);
    int size = 0;
    for (;;) {
        const int wanted = bytes.size() - size;
        const ssize_t count = retried([&] {
            return ::read(file.get(), bytes.data() + size, static_cast<std::size_t>(wanted));
        });
        if (count < 0)
            return errno;
        size += static_cast<int>(count);
        if (count == 0 || (expected > 0 && size == expected && S_ISREG(status.st_mode)))
            break;
        if (size > kMaxContentSize)
            return EFBIG;
        if (size == bytes.size())
            bytes.resize(
                std::min(size < kChunkSize ? size + kChunkSize : 2 * size, kMaxContentSize + 1));
    }
    bytes.truncate(size);
    return 0;
}

} // namespace internal

} // namespace vn

#endif // VN_BASE_FILECONTENT_P_H
