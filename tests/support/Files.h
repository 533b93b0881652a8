// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_FILES_H
#define VN_TESTS_SUPPORT_FILES_H

/** @file Files that tests write and read, and programs that make files. */

#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

/** Makes @p content the whole content of the file at @p path. */
inline void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_EQ(file.write(content), content.size()) << qPrintable(path);
    file.close();
    ASSERT_EQ(file.error(), QFileDevice::NoError) << qPrintable(path);
}

/** The content of the file at @p path. */
inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

/** Runs @p program in @p folder and expects that it succeeds. */
inline void runProgram(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments, QIODevice::ReadOnly);
    ASSERT_TRUE(process.waitForFinished(60000))
        << qPrintable(program) << ": " << qPrintable(process.errorString());
    ASSERT_EQ(process.exitCode(), 0)
        << qPrintable(program) << ": " << process.readAll().constData();
}

#endif // VN_TESTS_SUPPORT_FILES_H
