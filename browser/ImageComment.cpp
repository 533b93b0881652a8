// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ImageComment.h"

namespace browser {

namespace {

constexpr int kStart = 0xD8;
constexpr int kComment = 0xFE;
constexpr int kScan = 0xDA; // the data of the image follow
constexpr int kEnd = 0xD9;

} // namespace

bool isJpeg(const QByteArray &bytes)
{
    return bytes.startsWith("\xFF\xD8\xFF");
}

QByteArray imageComment(const QByteArray &bytes)
{
    const auto byteAt = [&](int i) { return int(static_cast<unsigned char>(bytes.at(i))); };
    QByteArray comment;
    int at = 0;
    while (at + 1 < bytes.size() && byteAt(at) == 0xFF) {
        const int marker = byteAt(at + 1);
        if (marker == 0xFF) { // filled up
            ++at;
            continue;
        }
        if (marker == kStart) {
            at += 2;
            continue;
        }
        if (marker == kScan || marker == kEnd || at + 3 >= bytes.size())
            break;
        const int size = byteAt(at + 2) * 256 + byteAt(at + 3); // with itself
        if (size < 2 || at + 2 + size > bytes.size())
            break;
        if (marker == kComment)
            comment += bytes.mid(at + 4, size - 2);
        at += 2 + size;
    }
    return comment;
}

} // namespace browser
