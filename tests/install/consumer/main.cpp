// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A program as users write it: no definitions of ours, every installed header, one call each.

#include "base/Exceptions.h"
#include "base/StringUtils.h"

#include <cstdio>

namespace {

int failures = 0;

void check(bool ok, const char *what)
{
    if (ok)
        return;
    std::fprintf(stderr, "failed: %s\n", what);
    ++failures;
}

// Exceptions cross the border of the library with their class.
void catchByClass()
{
    try {
        vn::IOException("no more").raise();
    } catch (const vn::ParseException &) {
        check(false, "an IOException is no ParseException");
    } catch (const vn::ExceptionQt &e) {
        check(e.message() == "no more", "message of the exception");
        return;
    }
    check(false, "catch by the base class");
}

} // namespace

int main()
{
    check(vn::StringUtils::endsWithIgnoreCase("cams.ZIP", ".zip"), "endsWithIgnoreCase");
    catchByClass();
    return failures == 0 ? 0 : 1;
}
