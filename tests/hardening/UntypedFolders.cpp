// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// To be loaded before the C library: folders of a file system that keeps no types in them.

#include <dirent.h>
#include <dlfcn.h>

namespace {

template <typename Entry>
Entry *withoutType(DIR *folder, const char *function)
{
    using Read = Entry *(*)(DIR *);
    const auto read = reinterpret_cast<Read>(::dlsym(RTLD_NEXT, function));
    Entry *const entry = read(folder);
    if (entry)
        entry->d_type = DT_UNKNOWN;
    return entry;
}

} // namespace

extern "C" __attribute__((visibility("default"))) dirent *readdir(DIR *folder)
{
    return withoutType<dirent>(folder, "readdir");
}

extern "C" __attribute__((visibility("default"))) dirent64 *readdir64(DIR *folder)
{
    return withoutType<dirent64>(folder, "readdir64");
}
