// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The program around all tests. It settles what results could depend on, so that a test program run
// by hand and one run by CTest see the same world.

#include <gmock/gmock.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <system_error>

#include <sys/stat.h>

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

/** The folder of this program for temporary files, and its home folder. It goes at the end with all
 * that is in it, that of processes which died in tests included. */
class OwnFolder
{
public:
    OwnFolder()
    {
        const char *const parent = std::getenv("TMPDIR");
        m_path = std::string(parent && *parent ? parent : "/tmp") + "/vantero-tests-XXXXXX";
        if (!::mkdtemp(m_path.data())) {
            std::perror(m_path.c_str());
            std::exit(EXIT_FAILURE);
        }
        ::chmod(m_path.c_str(), 0711); // some tests look at files as another user
        for (const char *name : {"TMPDIR", "TEST_TMPDIR", "HOME"})
            ::setenv(name, m_path.c_str(), 1);
        for (const char *name : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            ::unsetenv(name);
    }
    ~OwnFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
        if (error)
            std::fprintf(stderr, "%s: %s\n", m_path.c_str(), error.message().c_str());
    }
    OwnFolder(const OwnFolder &) = delete; // removes it once
    OwnFolder &operator=(const OwnFolder &) = delete;

private:
    std::string m_path;
};

} // namespace

int main(int argc, char **argv)
{
    // A place with daylight saving time, where local time and UTC cannot be mistaken.
    ::setenv("TZ", "Europe/Berlin", 1);
    ::tzset();
    if (!settleLocale(std::getenv("VANTERO_TEST_LOCALE")))
        return 1;

    testing::InitGoogleMock(&argc, argv);
    const OwnFolder folder;
    return RUN_ALL_TESTS();
}
