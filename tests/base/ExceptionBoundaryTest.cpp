// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/ExceptionBoundary_p.h"

#include "base/Exceptions.h"
#include "support/Expect.h"
#include "support/Literals.h"

#include <QtCore/QFile>

#include <csignal>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>

using namespace vn;

TEST(ExceptionBoundary, letsTheAllowedExceptionPass)
{
    expectThrows<IOException>([] { onlyThrows<IOException>([] { throw IOException("disk"_q); }); },
                              "disk"_q);
}

TEST(ExceptionBoundary, letsEachOfSeveralPass)
{
    const auto run = [](int which) {
        onlyThrows<ParseException, IOException>([&] {
            if (which == 0)
                throw ParseException("text"_q, -1, -1, -1, -1);
            throw IOException("disk"_q);
        });
    };
    expectThrows<ParseException>([&] { run(0); }, "text"_q);
    expectThrows<IOException>([&] { run(1); }, "disk"_q);
}

TEST(ExceptionBoundary, letsADerivedExceptionPassAsWhatItIs)
{
    expectThrows<FileException>(
        [] { onlyThrows<IOException>([] { throw FileException(QFile("a.cfg"_q)); }); },
        "a.cfg: Unknown error"_q);
}

TEST(ExceptionBoundary, handsOnTheVeryObjectThatWasThrown)
{
    const IOException *thrown = nullptr;
    try {
        onlyThrows<IOException>([&] {
            try {
                throw IOException("disk"_q);
            } catch (const IOException &e) {
                thrown = &e;
                throw;
            }
        });
        FAIL();
    } catch (const IOException &e) {
        EXPECT_EQ(&e, thrown);
    }
}

TEST(ExceptionBoundary, returnsWhatTheOperationReturns)
{
    int value = 1;
    const auto byValue = [] { return 1; };
    const auto byReference = [&]() -> int & { return value; };
    const auto nothing = [] {};
    static_assert(std::is_same_v<decltype(onlyThrows<IOException>(byValue)), int>);
    static_assert(std::is_same_v<decltype(onlyThrows<IOException>(byReference)), int &>);
    static_assert(std::is_void_v<decltype(onlyThrows<IOException>(nothing))>);

    EXPECT_EQ(onlyThrows<IOException>([] { return 7; }), 7);
    onlyThrows<IOException>(byReference) = 8;
    EXPECT_EQ(value, 8);
    onlyThrows<IOException>([&] { value = 9; });
    EXPECT_EQ(value, 9);
}

TEST(ExceptionBoundary, returnsValuesThatCannotBeCopied)
{
    const std::unique_ptr<int> result =
        onlyThrows<IOException>([] { return std::make_unique<int>(3); });
    EXPECT_EQ(*result, 3);
}

TEST(ExceptionBoundary, runsAnOperationThatCanOnlyBeMoved)
{
    auto owned = std::make_unique<int>(4);
    EXPECT_EQ(onlyThrows<IOException>([owned = std::move(owned)] { return *owned; }), 4);
}

TEST(ExceptionBoundary, unwindsTheOperation)
{
    const auto watched = std::make_shared<int>(0);
    EXPECT_THROW(onlyThrows<IOException>([copy = watched] { throw IOException("x"_q); }),
                 IOException);
    EXPECT_EQ(watched.use_count(), 1);
}

TEST(ExceptionBoundaryDeathTest, endsTheProcessForAnotherExceptionOfTheLibrary)
{
    EXPECT_EXIT(onlyThrows<ParseException>([] { throw IOException("disk"_q); }),
                testing::KilledBySignal(SIGABRT), "");
}

TEST(ExceptionBoundaryDeathTest, endsTheProcessForABaseOfTheAllowedOne)
{
    EXPECT_EXIT(onlyThrows<FileException>([] { throw IOException("disk"_q); }),
                testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT((onlyThrows<ParseException, IOException>([] { throw ExceptionQt("any"_q); })),
                testing::KilledBySignal(SIGABRT), "");
}

TEST(ExceptionBoundaryDeathTest, endsTheProcessForAnythingElse)
{
    EXPECT_EXIT((onlyThrows<ParseException, IOException>([] { throw std::bad_alloc(); })),
                testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT((onlyThrows<ParseException, IOException>([] { throw std::runtime_error("x"); })),
                testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT((onlyThrows<ParseException, IOException>([] { throw 1; })),
                testing::KilledBySignal(SIGABRT), "");
}

TEST(ExceptionBoundaryDeathTest, endsTheProcessByTerminate)
{
    EXPECT_EXIT(
        {
            std::set_terminate([] { ::_exit(42); });
            onlyThrows<ParseException>([] { throw IOException("disk"_q); });
        },
        testing::ExitedWithCode(42), "");
}
