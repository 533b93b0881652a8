// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The program around all tests. It settles what results could depend on, so that a test program run
// by hand and one run by CTest see the same world.

#include <gmock/gmock.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#ifdef __SANITIZE_ADDRESS__
// A constant that is made from one of another source file depends on the order of linking.
extern "C" __attribute__((visibility("default"))) const char *__asan_default_options();
extern "C" const char *__asan_default_options()
{
    return "check_initialization_order=1:strict_init_order=1";
}

// The script engine keeps pointers in memory of its own, where LeakSanitizer does not look for
// them.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions()
{
    // What the loader keeps is known by the caller of malloc, unless a test's own is in between.
    // Qt's windows look for a message bus, whose library keeps what it needs for a connection.
    return "leak:libQt5Script.so\nleak:ld-linux-x86-64.so\nleak:libdbus-1.so\n";
}
#endif

namespace {

/** The tests pass in every locale, which is C.UTF-8 unless @p wanted names another one. The
 * system's error texts, which some tests compare, stay English. */
bool settleLocale(const char *wanted)
{
    ::unsetenv("LC_ALL");
    ::setenv("LC_MESSAGES", "C.UTF-8", 1);
    for (const char *category : {"LC_CTYPE", "LC_NUMERIC", "LC_TIME", "LC_COLLATE", "LC_MONETARY"})
        ::unsetenv(category);
    ::setenv("LANG", wanted ? wanted : "C.UTF-8", 1);
    if (!std::setlocale(LC_ALL, "")) {
        std::fprintf(stderr, "there is no locale %s\n", wanted);
        return false;
    }
    if (!wanted)
        ::setenv("LC_ALL", "C.UTF-8", 1);
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    // A place with daylight saving time, where local time and UTC cannot be mistaken.
    ::setenv("TZ", "Europe/Berlin", 1);
    ::tzset();
    if (!settleLocale(std::getenv("VANTERO_TEST_LOCALE")))
        return 1;

    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
