// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_EXPECT_H
#define VN_TESTS_SUPPORT_EXPECT_H

/** @file Checks of exceptions (exact class, whole text, positions), and names of table rows. */

#include "base/Exceptions.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <typeinfo>

/**
 * Expects that @p operation throws exactly an @p Exception. @p expected is its whole message, or a
 * function that checks it further.
 */
template <typename Exception, typename Operation, typename Expected>
void expectThrows(Operation &&operation, Expected &&expected)
{
    try {
        operation();
    } catch (const Exception &e) {
        EXPECT_TRUE(typeid(e) == typeid(Exception)) << "thrown: " << typeid(e).name();
        if constexpr (std::is_convertible_v<Expected, QString>)
            EXPECT_EQ(e.message(), QString(expected));
        else
            expected(e);
        return;
    } catch (const std::exception &e) {
        ADD_FAILURE() << "another exception: " << typeid(e).name() << ": " << e.what();
        return;
    }
    ADD_FAILURE() << "no exception";
}

/** Expects a ParseException with that message, line 0 or -1, and those start and end columns. */
template <typename Operation>
void expectParseError(Operation &&operation, const QString &message, int line, int startColumn,
                      int endColumn)
{
    expectThrows<vn::ParseException>(operation, [&](const vn::ParseException &e) {
        EXPECT_EQ(e.message(), message);
        EXPECT_EQ(e.startLine(), line);
        EXPECT_EQ(e.startColumn(), startColumn);
        EXPECT_EQ(e.endLine(), line);
        EXPECT_EQ(e.endColumn(), endColumn);
    });
}

/** Names the tests of a table after the member `name` of its rows. */
inline const auto nameOfRow = [](const auto &row) { return std::string(row.param.name); };

#endif // VN_TESTS_SUPPORT_EXPECT_H
