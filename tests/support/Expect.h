// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_EXPECT_H
#define VN_TESTS_SUPPORT_EXPECT_H

/** @file Checks of exceptions: exact class, whole text, positions. */

#include "base/Exceptions.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <typeinfo>

/** Runs @p operation and returns a check that it throws exactly an @p Exception, which goes to @p
 * then. */
template <typename Exception, typename Operation, typename Then>
void expectThrows(Operation &&operation, Then &&then)
{
    try {
        operation();
    } catch (const Exception &e) {
        EXPECT_TRUE(typeid(e) == typeid(Exception)) << "thrown: " << typeid(e).name();
        then(e);
        return;
    } catch (const std::exception &e) {
        ADD_FAILURE() << "another exception: " << typeid(e).name() << ": " << e.what();
        return;
    }
    ADD_FAILURE() << "no exception";
}

/** Expects exactly an @p Exception whose whole message is @p message. */
template <typename Exception, typename Operation>
void expectThrows(Operation &&operation, const QString &message)
{
    expectThrows<Exception>(operation,
                            [&](const Exception &e) { EXPECT_EQ(e.message(), message); });
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

#endif // VN_TESTS_SUPPORT_EXPECT_H
