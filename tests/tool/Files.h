// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_TOOL_FILES_H
#define VN_TESTS_TOOL_FILES_H

/** @file Whole files for tests of the tool. */

#include "support/QtPrinters.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <string>

inline QByteArray readFile(const std::string &path)
{
    QFile file(QString::fromStdString(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll();
}

inline void writeFile(const std::string &path, const QByteArray &content)
{
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path;
    ASSERT_EQ(file.write(content), content.size());
}

/** An example file; see examples/data/README.md. */
inline std::string example(const std::string &name)
{
    return VANTERO_EXAMPLE_DATA "/" + name;
}

#endif // VN_TESTS_TOOL_FILES_H
