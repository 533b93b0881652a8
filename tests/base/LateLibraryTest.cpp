// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/LateLibrary_p.h"

#include "support/Expect.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <cmath>

using vn::IOException;
using vn::internal::LateLibrary;

namespace {

struct Mathematics
{
    LateLibrary library{"libm.so.6"};
    VN_LATE_FUNCTION(cbrt);
};

TEST(LateLibrary, givesFunctionsOfTheLibrary)
{
    const Mathematics mathematics;
    EXPECT_DOUBLE_EQ(mathematics.cbrt(27.0), 3.0);
}

TEST(LateLibrary, saysWhichLibraryIsNotThere)
{
    expectThrows<IOException>(
        [] { const LateLibrary library("libnone.so.7"); },
        "libnone.so.7: cannot open shared object file: No such file or directory"_q);
}

TEST(LateLibrary, saysWhichFunctionIsNotThere)
{
    expectThrows<IOException>(
        [] { (void)LateLibrary("libm.so.6").function("none"); },
        [](const IOException &e) {
            EXPECT_TRUE(e.message().endsWith("libm.so.6: undefined symbol: none"_q))
                << e.message().toStdString();
        });
}

} // namespace
