// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_LATELIBRARY_P_H
#define VN_BASE_LATELIBRARY_P_H

/** @file Shared libraries that are loaded when they are first needed. */

#include "base/Exceptions.h"

#include <dlfcn.h>

namespace vn {

namespace internal {

/**
 * A shared library that we are not linked with. Those that read and write archives bring so many
 * others along that a program would take twice as long to start, which seldom needs any of them.
 *
 * It stays to the end of the process, since archives may be read to the end.
 */
class LateLibrary
{
public:
    /** Loads the library called @p name, or finds it loaded; thread-safe.
     * @throws IOException with the loader's words, which name the library */
    explicit LateLibrary(const char *name)
        : m_handle(dlopen(name, RTLD_LAZY | RTLD_LOCAL))
    {
        if (!m_handle)
            fail();
    }

    /** The function called @p name.
     * @throws IOException with the loader's words when there is none */
    void *function(const char *name) const
    {
        void *const found = dlsym(m_handle, name);
        if (!found)
            fail();
        return found;
    }

private:
    [[noreturn]] static void fail()
    {
        const char *text = dlerror(); // null where there was no memory for it
        throw IOException(QString::fromLocal8Bit(text ? text : "a library cannot be loaded"));
    }

    void *m_handle;
};

} // namespace internal

} // namespace vn

// In a class whose member "library" stands before: a function of that library, typed as in its
// header.
#define VN_LATE_FUNCTION(name)                                                                     \
    decltype(&::name) name = reinterpret_cast<decltype(&::name)>(library.function(#name))

#endif // VN_BASE_LATELIBRARY_P_H
