// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_FILES_H
#define VN_TESTS_SUPPORT_FILES_H

/** @file Files that tests write and read, and programs that make files. */

#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include <sys/resource.h>

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

inline void writeFile(const std::string &path, const QByteArray &content)
{
    writeFile(QString::fromStdString(path), content);
}
inline QByteArray readFile(const std::string &path)
{
    return readFile(QString::fromStdString(path));
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

/** Lets files grow to so many bytes only while it lives, as a disk does that fills up. */
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t size)
    {
        struct sigaction ignore = {};
        ignore.sa_handler = SIG_IGN;
        ::sigaction(SIGXFSZ, &ignore, &m_action);
        ::getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit lowered = {size, m_limit.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &lowered), 0);
    }
    ~FileSizeLimit()
    {
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &m_limit), 0);
        ::sigaction(SIGXFSZ, &m_action, nullptr);
    }
    FileSizeLimit(const FileSizeLimit &) = delete; // restores once
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    struct sigaction m_action = {};
    rlimit m_limit = {};
};

/** A test with a folder of its own that goes with it. */
class FolderTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_folder.isValid()); }

    /** The path of @p name in the folder. */
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /** The path of a new file in the folder with this content. */
    QString fileWith(const QByteArray &content, const QString &name = QStringLiteral("file")) const
    {
        writeFile(path(name), content);
        return path(name);
    }

    QDir dir() const { return QDir(m_folder.path()); }

    /** The names of all that is in the folder, sorted; hidden files and links to nothing included.
     */
    QStringList names() const
    {
        return dir().entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    QTemporaryDir m_folder;
};

#endif // VN_TESTS_SUPPORT_FILES_H
