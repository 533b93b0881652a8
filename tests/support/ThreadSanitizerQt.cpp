// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// ThreadSanitizer knows an order between threads only where it sees code, and Debian builds Qt
// without its instrumentation. Two things in Qt would look like races for that reason alone.

#include <QtCore/QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

/** Qt's own function of that (mangled) name. */
template <typename Function>
Function *inQt(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

// Texts and containers count their owners atomically, and the last owner frees. Where Qt's own code
// gives up ownership the counting is not seen, only the free() that follows; so calls of the C
// library from within Qt are left out of the search. What our code reads and writes is searched.
extern "C" Q_DECL_EXPORT const char *__tsan_default_suppressions();
extern "C" Q_DECL_EXPORT const char *__tsan_default_suppressions()
{
    return "called_from_lib:libQt5Core.so.5\n";
}

// What a QMutex protects would look unprotected. Suppressing that would hide the true races, too.
// So the test programs stand before Qt's lock and unlock, which the library calls by name, and tell
// the sanitizer of them: a lock that the library forgets is still found.

void QMutex::lock() noexcept
{
    static const auto lockInQt = inQt<void(QMutex *)>("_ZN6QMutex4lockEv");
    lockInQt(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout) noexcept
{
    static const auto tryLockInQt = inQt<bool(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = tryLockInQt(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto unlockInQt = inQt<void(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    unlockInQt(this);
}
