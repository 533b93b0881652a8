// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_SHORTHASH_P_H
#define VN_ALARM_SHORTHASH_P_H

/** @file Hashes of keys and values, which are short and often differ in their ends. */

#include <cstdint>
#include <cstring>

namespace vn::internal {

/** @p sum with all of its bits in the upper ones. */
inline std::uint64_t mixed(std::uint64_t sum)
{
    constexpr std::uint64_t kMultiplier = 0x9e3779b97f4a7c15U; // 2^64 / the golden ratio
    const std::uint64_t product = sum * kMultiplier;
    return product ^ (product >> 32);
}

/** Of the length and of both ends of the @p length bytes at @p text, at most 8 bytes each; of no
 * byte at all it is undefined. */
inline std::uint64_t hashOfEnds(const char *text, int length)
{
    std::uint64_t front = 0;
    std::uint64_t back = 0;
    if (length >= 8) {
        std::memcpy(&front, text, 8);
        std::memcpy(&back, text + length - 8, 8);
    } else if (length >= 4) {
        std::memcpy(&front, text, 4);
        std::memcpy(&back, text + length - 4, 4);
    } else {
        front = static_cast<unsigned char>(text[0]);
        std::memcpy(&back, text + length / 2, 1);
        std::memcpy(reinterpret_cast<char *>(&back) + 1, text + length - 1, 1);
    }
    return mixed(front * 3 + back + static_cast<std::uint64_t>(length));
}

} // namespace vn::internal

#endif // VN_ALARM_SHORTHASH_P_H
