// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_LITERALS_H
#define VN_TESTS_SUPPORT_LITERALS_H

/** @file "…"_q is a QString, "…"_b a QByteArray that may hold zero bytes. */

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>

inline QString operator""_q(const char *text, std::size_t size)
{
    return QString::fromUtf8(text, static_cast<int>(size));
}

inline QByteArray operator""_b(const char *text, std::size_t size)
{
    return QByteArray(text, static_cast<int>(size));
}

#endif // VN_TESTS_SUPPORT_LITERALS_H
