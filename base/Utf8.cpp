// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/Utf8_p.h"

#include <cstdint>
#include <cstring>

namespace vn {

namespace internal {

namespace {

/** The length of the well-formed UTF-8 sequence (Unicode 15, table 3-7) at the start of the
 * @p size bytes, which begin with one that is not ASCII; 0 when there is none. */
std::size_t utf8SequenceLength(const unsigned char *data, std::size_t size)
{
    const auto isTrail = [&](std::size_t i) { return i < size && (data[i] & 0xC0) == 0x80; };
    const auto isBetween = [&](unsigned char low, unsigned char high) {
        return size > 1 && data[1] >= low && data[1] <= high;
    };
    const unsigned char lead = data[0];
    if (lead >= 0xC2 && lead <= 0xDF)
        return isTrail(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        // no longer form than needed, and no surrogates
        const bool second = isBetween(lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF);
        return second && isTrail(2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        // no longer form than needed, and nothing past U+10FFFF
        const bool second = isBetween(lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF);
        return second && isTrail(2) && isTrail(3) ? 4 : 0;
    }
    return 0;
}

} // namespace

std::size_t asciiPrefix(const char *data, std::size_t size)
{
    std::size_t i = 0;
    for (; i + 4 * sizeof(std::uint64_t) <= size; i += 4 * sizeof(std::uint64_t)) {
        std::uint64_t words[4];
        std::memcpy(words, data + i, sizeof words);
        if ((words[0] | words[1] | words[2] | words[3]) & UINT64_C(0x8080808080808080))
            break;
    }
    while (i < size && !(data[i] & 0x80))
        ++i;
    return i;
}

bool isUtf8(const char *data, std::size_t size)
{
    for (std::size_t i = 0;;) {
        i += asciiPrefix(data + i, size - i);
        if (i == size)
            return true;
        const std::size_t length =
            utf8SequenceLength(reinterpret_cast<const unsigned char *>(data) + i, size - i);
        if (length == 0)
            return false;
        i += length;
    }
}

} // namespace internal

} // namespace vn
