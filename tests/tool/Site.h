// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_TOOL_SITE_H
#define VN_TESTS_TOOL_SITE_H

/** @file A folder of configurations and archives, for the commands that go through sites. */

#include "support/Files.h"
#include "support/Literals.h"
#include "support/ToolRunner.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

/** The text of a camera's configuration with those lines in the section "s". */
inline QByteArray siteConfig(const QByteArray &address, const QByteArray &lines = "k=v\n",
                             const QByteArray &firmware = "VN-3.0.6.29")
{
    return "#:1.3=====\n#:" + firmware + "\n# Camera IP: " + address + "\n\nSECTION s\n" + lines +
           "ENDSECTION s\n";
}

class Site : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    void file(const QString &name, const QByteArray &content) const
    {
        ASSERT_TRUE(QDir(m_dir.path()).mkpath(QFileInfo(name).path()));
        writeFile(path(name), content);
    }

    /** Makes the archive @p name by `zip`. */
    void zip(const QString &name, const QList<QPair<QString, QByteArray>> &files,
             const QStringList &options = {}) const
    {
        QTemporaryDir content;
        QStringList names;
        for (const auto &each : files) {
            QDir(content.path()).mkpath(QFileInfo(each.first).path());
            writeFile(content.filePath(each.first), each.second);
            names += each.first;
        }
        runProgram("zip"_q, QStringList{"-q"_q} + options + QStringList{"made.zip"_q} + names,
                   content.path());
        ASSERT_TRUE(QDir(m_dir.path()).mkpath(QFileInfo(name).path()));
        ASSERT_TRUE(QFile::rename(content.filePath("made.zip"_q), path(name)));
    }

    /** Runs `config COMMAND` in the folder. */
    ToolResult run(const char *command, const std::vector<std::string> &arguments,
                   const QByteArray &input = {}) const
    {
        ToolCall call;
        call.arguments = {"config", command};
        call.arguments.insert(call.arguments.end(), arguments.begin(), arguments.end());
        call.input = input;
        call.folder = m_dir.path().toStdString();
        return runTool(call);
    }

    QTemporaryDir m_dir;
};

#endif // VN_TESTS_TOOL_SITE_H
