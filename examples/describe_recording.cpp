// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// describe_recording PATH: writes the record that describes a recording of ten seconds.

#include "erdinfo/VanteroErdinfoFile.h"

#include <QtCore/QFile>

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "describe_recording PATH\n");
        return 2;
    }
    const QString path = QFile::decodeName(argv[1]);
    //! [write a record]
    constexpr unsigned long long kSecond = 1000000; // in microseconds
    constexpr unsigned long long kStart = 1299701647 * kSecond;

    // Of a text the record holds as many bytes as the text has characters, at four bytes each.
    vn::VanteroErdinfoFile info(path.toStdWString());
    info.setData(4711, -1, 25, 250, kStart, kStart + 10 * kSecond, L"South gate", L"D24M",
                 L"motion");
    if (!info.save()) {
        std::fprintf(stderr, "%s cannot be written\n", argv[1]);
        return 1;
    }
    //! [write a record]
    return 0;
}
