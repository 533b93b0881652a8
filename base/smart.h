// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_SMART_H
#define VN_BASE_SMART_H

/** @file
 * The shared pointer in which archive writers are handed over. */

#include <memory>

namespace vnm {

/**
 * A pointer that shares the ownership of a @p T; the last copy to go deletes it.
 *
 * Threads: the count is thread-safe, the object behind it is as safe as its class says.
 * @since 1.0.0
 */
template <typename T>
using smart = std::shared_ptr<T>;

} // namespace vnm

#endif // VN_BASE_SMART_H
