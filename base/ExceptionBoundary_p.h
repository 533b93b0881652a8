// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_EXCEPTIONBOUNDARY_P_H
#define VN_BASE_EXCEPTIONBOUNDARY_P_H

/** @file The one form in which operations promise which exceptions may leave them. */

#include <exception>
#include <utility>

namespace vn {

namespace internal {

/** Whether the exception in flight is an @p Allowed; only to be called while one is handled. */
template <typename Allowed>
bool isHandling()
{
    try {
        throw;
    } catch (const Allowed &) {
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace internal

/**
 * Runs @p operation and returns its result. Exceptions of the classes @p Allowed (and derived ones)
 * leave unchanged; any other exception ends the process through std::terminate.
 * @code
 * return onlyThrows<ParseException, IOException>([&] { return read(device); });
 * @endcode
 */
template <typename... Allowed, typename Operation>
decltype(auto) onlyThrows(Operation &&operation)
{
    try {
        return std::forward<Operation>(operation)();
    } catch (...) {
        if (!(internal::isHandling<Allowed>() || ...))
            std::terminate();
        throw;
    }
}

} // namespace vn

#endif // VN_BASE_EXCEPTIONBOUNDARY_P_H
