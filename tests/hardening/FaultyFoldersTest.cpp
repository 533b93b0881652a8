// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Folders that cannot be listed to their end, or not at all: whoever goes through them learns of
// it.

#include "config/CollectorSupport.h"
#include "config/VanteroConfigFile.h"
#include "support/ToolRunner.h"

#include <QtCore/QTextCodec>

#include <sys/stat.h>

namespace {

class FaultyFolders : public CollectorTest
{
protected:
    void SetUp() override
    {
        CollectorTest::SetUp();
        file("site/a/1.cfg"_q, camera("10.0.0.1"));
        file("site/a/2.cfg"_q, camera("10.0.0.2"));
        file("site/a/deep/3.cfg"_q, camera("10.0.0.3"));
        file("site/a/faulty"_q, ""_b); // where the listing fails
        file("site/b/4.cfg"_q, camera("10.0.0.4"));
    }

    /** Runs the tool in the folder, where the listing of site/a fails. */
    ToolResult run(const std::vector<std::string> &arguments) const
    {
        ToolCall call;
        call.arguments = arguments;
        call.folder = dir().path().toStdString();
        // By its name alone: the list of LD_PRELOAD is split at blanks, that of folders is not.
        call.environment = {{"LD_PRELOAD", VANTERO_FOLDER_FAULTS},
                            {"LD_LIBRARY_PATH", VANTERO_FAULTS_FOLDER},
                            {"VANTERO_FOLDER_FAULT", "faulty"}};
        return runTool(call);
    }

    /** Runs the tool in the folder as somebody without rights. */
    ToolResult runAsNobody(const std::vector<std::string> &arguments) const
    {
        ToolCall call;
        call.program = "/usr/bin/setpriv";
        call.arguments = {"--reuid=65534", "--regid=65534", "--clear-groups", VANTERO_TOOL};
        call.arguments.insert(call.arguments.end(), arguments.begin(), arguments.end());
        call.folder = dir().path().toStdString();
        return runTool(call);
    }
};

class Environment
{
public:
    Environment(const char *name, const char *value)
        : m_name(name)
    {
        ::setenv(name, value, 1);
    }
    ~Environment() { ::unsetenv(m_name); }
    Environment(const Environment &) = delete; // restores once
    Environment &operator=(const Environment &) = delete;

private:
    const char *m_name;
};

} // namespace

TEST_F(FaultyFolders, areToldByTheCollectorAfterWhatTheyGave)
{
    const Environment faulty("VANTERO_FOLDER_FAULT", "faulty");
    EXPECT_EQ(collected({path("site"_q)}, recursive()),
              (QStringList{"site/a/1.cfg: configuration: 10.0.0.1"_q,
                           "site/a/2.cfg: configuration: 10.0.0.2"_q,
                           "site/a/deep/3.cfg: configuration: 10.0.0.3"_q,
                           "site/a: folder unreadable: Input/output error"_q,
                           "site/b/4.cfg: configuration: 10.0.0.4"_q}));
    Options unordered = recursive();
    unordered.order = vn::ConfigCollector::Order::FileSystem;
    const QStringList lines = collected({path("site/a"_q)}, unordered);
    EXPECT_EQ(lines.size(), 4);
    EXPECT_EQ(lines.last(), "site/a: folder unreadable: Input/output error"_q);
}

TEST_F(FaultyFolders, areToldThoughTheyAreHeldInMemory)
{
    // Folders that lie deep are listed whole and closed.
    const Environment faulty("VANTERO_FOLDER_FAULT", "faulty");
    QString deep = "site/b"_q;
    for (int i = 0; i < 20; ++i)
        deep += "/d"_q;
    file(deep + "/faulty"_q, ""_b);
    Options options = recursive();
    options.order = vn::ConfigCollector::Order::FileSystem;
    EXPECT_TRUE(collected({path("site/b"_q)}, options)
                    .contains(deep + ": folder unreadable: Input/output error"_q));
}

TEST_F(FaultyFolders, areNoErrorOfParseAll_keptOnPurpose)
{
    const Environment faulty("VANTERO_FOLDER_FAULT", "faulty");
    const auto all = vn::VanteroConfigFile::parseAll({path("site"_q)}, true, ""_b);
    EXPECT_EQ(all.keys(), (QStringList{"10.0.0.1"_q, "10.0.0.2"_q, "10.0.0.3"_q, "10.0.0.4"_q}));
}

TEST_F(FaultyFolders, areToldByTheTool)
{
    const QByteArray fault = "vantero-formats: site/a: the folder cannot be read: "
                             "Input/output error\n";
    expectRun(run({"config", "table", "site", "--recursive", "--csv"}), 2,
              "address,firmware,source\r\n"
              "10.0.0.1,VN-3.0,site/a/1.cfg\r\n"
              "10.0.0.2,VN-3.0,site/a/2.cfg\r\n"
              "10.0.0.3,VN-3.0,site/a/deep/3.cfg\r\n"
              "10.0.0.4,VN-3.0,site/b/4.cfg\r\n",
              fault);
    const ToolResult json = run({"config", "collect", "site", "--recursive", "--json"});
    EXPECT_EQ(json.exitCode, 2);
    EXPECT_TRUE(json.out.contains("\"reason\": \"folder-unreadable\"")) << json.out.constData();
    const ToolResult lint = run({"config", "lint", "--recursive", "site"});
    EXPECT_EQ(lint.exitCode, 2);
    EXPECT_TRUE(lint.err.contains("site/a: ")) << lint.err.constData();
    EXPECT_TRUE(lint.err.contains("Input/output error")) << lint.err.constData();
}

TEST_F(FaultyFolders, thatAreClosedAreToldByTheTool)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the administrator can become somebody without the right";
    ASSERT_EQ(::chmod(QFile::encodeName(dir().path()).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(path("site/a"_q)).constData(), 0000), 0);
    const QByteArray fault = "vantero-formats: site/a: the folder cannot be read: "
                             "Permission denied\n";
    for (const char *const command : {"table", "collect"}) {
        const ToolResult result = runAsNobody({"config", command, "site", "--recursive"});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.err, fault);
        EXPECT_TRUE(result.out.contains("site/b/4.cfg"));
        const ToolResult within = runAsNobody({"config", command, "site/a/1.cfg"});
        EXPECT_EQ(within.exitCode, 2);
        EXPECT_EQ(within.err, "vantero-formats: site/a/1.cfg: Permission denied\n");
    }
    EXPECT_EQ(runAsNobody({"config", "lint", "--recursive", "site"}).exitCode, 2);
    ASSERT_EQ(::chmod(QFile::encodeName(path("site/a"_q)).constData(), 0700), 0);
}

TEST_F(FaultyFolders, withoutTypesAreNotShort)
{
    const Environment untyped("VANTERO_UNTYPED", "1");
    EXPECT_EQ(collected({path("site"_q)}, recursive()).size(), 5);
}

TEST_F(FaultyFolders, withNamesThatCannotBeDecodedAreToldByTheCollector)
{
    // As in a locale of UTF-8; the tool decodes any name.
    QTextCodec *const before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const QByteArray folder = QFile::encodeName(path("site/b"_q));
    ASSERT_EQ(::mkdir((folder + "/\xE4").constData(), 0777), 0);
    ASSERT_EQ(::link((folder + "/4.cfg").constData(), (folder + "/\xFC.cfg").constData()), 0);
    const QStringList lines = collected({path("site/b"_q)}, recursive());
    const auto all = vn::VanteroConfigFile::parseAll({path("site/b"_q)}, true, ""_b);
    ASSERT_EQ(::rmdir((folder + "/\xE4").constData()), 0);
    ASSERT_EQ(::unlink((folder + "/\xFC.cfg").constData()), 0);
    QTextCodec::setCodecForLocale(before);
    const QString reason = "Invalid or incomplete multibyte or wide character"_q;
    EXPECT_EQ(lines, (QStringList{"site/b/4.cfg: configuration: 10.0.0.4"_q,
                                  u8"site/b/\uFFFD: folder unreadable: "_q + reason,
                                  u8"site/b/\uFFFD.cfg: file unreadable: "_q + reason}));
    EXPECT_EQ(all.size(), 1) << "passed over, as Qt does";
}
