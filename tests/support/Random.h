// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_RANDOM_H
#define VN_TESTS_SUPPORT_RANDOM_H

/** @file Random numbers for property tests: the same on every machine for the same seed. */

#include <cstdint>
#include <random>

class Random
{
public:
    explicit Random(std::uint32_t seed)
        : m_engine(seed)
    {
    }

    /** A number from 0 to @p limit - 1; the slight bias does not matter to tests. */
    unsigned below(unsigned limit) { return static_cast<unsigned>(m_engine()) % limit; }

    /** One of the elements of @p container. */
    template <typename Container>
    auto &oneOf(Container &container)
    {
        return container[static_cast<int>(below(static_cast<unsigned>(container.size())))];
    }

private:
    std::mt19937 m_engine;
};

#endif // VN_TESTS_SUPPORT_RANDOM_H
