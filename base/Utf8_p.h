// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_UTF8_P_H
#define VN_BASE_UTF8_P_H

/** @file Tells ASCII and UTF-8 from other encodings. */

#include <cstddef>

namespace vn {

namespace internal {

/** The number of bytes before the first one that is not ASCII. */
std::size_t asciiPrefix(const char *data, std::size_t size);

/** Whether the bytes are well-formed UTF-8 (Unicode 15, table 3-7): no overlong forms, no
 * surrogates, nothing past U+10FFFF, no sequence cut off. */
bool isUtf8(const char *data, std::size_t size);

} // namespace internal

} // namespace vn

#endif // VN_BASE_UTF8_P_H
