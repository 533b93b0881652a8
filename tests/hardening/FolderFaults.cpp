// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Stands before the C library's functions that list folders, in a program that holds this file or
// is started with it as LD_PRELOAD, and has the listing of some folders fail:
//
//   VANTERO_FOLDER_FAULT  a folder with an entry of this name gives all others, then EIO
//   VANTERO_UNTYPED       when set: folders tell no types of their entries

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <dlfcn.h>

namespace {

template <typename Entry>
Entry *readFaulty(DIR *folder, const char *function)
{
    static DIR *failing = nullptr;
    using Read = Entry *(*)(DIR *);
    const auto read = reinterpret_cast<Read>(::dlsym(RTLD_NEXT, function));
    const char *const fault = std::getenv("VANTERO_FOLDER_FAULT");
    Entry *entry = read(folder);
    if (entry && fault && std::strcmp(entry->d_name, fault) == 0) {
        failing = folder;
        entry = read(folder);
    }
    if (entry && std::getenv("VANTERO_UNTYPED"))
        entry->d_type = DT_UNKNOWN;
    if (!entry && failing == folder) {
        failing = nullptr;
        errno = EIO;
    }
    return entry;
}

} // namespace

extern "C" __attribute__((visibility("default"))) dirent *readdir(DIR *folder)
{
    return readFaulty<dirent>(folder, "readdir");
}

extern "C" __attribute__((visibility("default"))) dirent64 *readdir64(DIR *folder)
{
    return readFaulty<dirent64>(folder, "readdir64");
}
