// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Files of other projects, which are no part of this one: the environment variable VANTERO_CORPORA
// names a folder of them. Each is given to each reader, whatever it is: none crashes, hangs or
// fills memory, and what is told of a text is how it is read.

#include "alarm/AlarmDocument.h"
#include "alarm/AlarmLint.h"
#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateDocument.h"
#include "alarm/AlarmUpdateLines.h"
#include "alarm/AlarmUpdateParser.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "config/ConfigCollector.h"
#include "config/VanteroConfigFile.h"
#include "support/ConfigFindings.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDirIterator>
#include <QtCore/QVariant>
#include <QtScript/QScriptEngine>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iostream>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned kMostSeconds = 10;       // a file
constexpr long kMostKilobytes = 256 * 1024; // a file
constexpr int kFatalEnd = 2;                // of a scanner, as limits tell
constexpr int kTooMuchMemory = 3;
constexpr int kBrokenPromise = 4;
constexpr int kMostPromised = 64 * 1024; // bytes; checking them looks at each line for each finding

long peakKilobytes()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/** Whether @p reading ends without an exception. */
bool read(const std::function<void()> &reading)
{
    try {
        reading();
        return true;
    } catch (const vn::ParseException &) {
    } catch (const vn::IOException &) {
    }
    return false;
}

/** Ends the process unless a promise holds. */
void expectPromise(bool holds)
{
    if (!holds)
        ::_exit(kBrokenPromise);
}

/** Both alarm parsers, which can be used for one file or for many. */
class Parsers
{
public:
    void parse(const QByteArray &bytes)
    {
        read([&] { (void)m_list.parse(QString::fromLatin1(bytes.constData(), bytes.size())); });
        read([&] { (void)m_update.parse(QString::fromLatin1(bytes.constData(), bytes.size())); });
    }

private:
    QScriptEngine m_engine;
    vn::AlarmListParser m_list;
    vn::AlarmUpdateParser m_update{&m_engine};
};

bool hasErrors(const vn::Findings &findings)
{
    return std::any_of(findings.begin(), findings.end(), [](const vn::Finding &finding) {
        return finding.severity == vn::Finding::Severity::Error;
    });
}

/** Alarm documents are read where nothing is told to be wrong. */
void readAlarmDocuments(QByteArray bytes)
{
    expectPromise(read([&] { (void)vn::AlarmDocument::parse(bytes); }) !=
                  hasErrors(vn::alarmListFindings(bytes)));
    expectPromise(read([&] { (void)vn::AlarmUpdateDocument::parse(bytes); }) !=
                  hasErrors(vn::alarmUpdateFindings(bytes)));
    QBuffer buffer(&bytes);
    expectPromise(buffer.open(QIODevice::ReadOnly));
    vn::AlarmUpdateLines lines(&buffer);
    while (lines.next())
        expectPromise(lines.error() ||
                      lines.update().root().kind() == vn::AlarmValue::Kind::Object);
}

void readConfigurationText(const QString &text)
{
    const vn::VanteroConfigText places(text);
    (void)places.findings();
    (void)places.outline();
    if (text.size() <= kMostPromised) {
        expectPromise(brokenPromise(text).isNull());
        expectPromise(brokenPromiseOfComment(text).isNull());
    }
}

/** What a collector finds in a file, whatever its name says. */
void collect(const QString &path)
{
    vn::ConfigCollector::Options options;
    options.recursive = true;
    options.entrySuffixes = QStringList{QString()};
    options.password = "1234";
    vn::ConfigCollector collector({path}, options);
    while (const auto found = collector.next())
        expectPromise(found->status != vn::ConfigCollector::Status::Configuration ||
                      found->text == vn::FileUtils::decodeText(found->bytes));
}

void readByAll(const QString &path)
{
    const QByteArray bytes = readFile(path);
    Parsers().parse(bytes);
    read([&] { (void)vn::VanteroConfigFile::open(path, QDateTime()); });
    QMap<QString, QString> configurations;
    for (const QByteArray &password : {"foofoofoo"_b, "1234"_b, ""_b})
        read([&] { (void)vn::VanteroConfigFile::parseAll({path}, false, password); });
    (void)vn::VanteroSoftwareVersion::fromFwp(bytes);
    readAlarmDocuments(bytes);
    readConfigurationText(vn::FileUtils::decodeText(bytes));
    collect(path);
}

/** Runs @p work(i) for i from @p begin to @p end in a process of its own, with a watchdog for each.
 * @returns the first one that ended it by a scanner's fatal end, or @p end; -1 after a failure */
int inAProcess(int begin, int end, const std::function<std::function<void(int)>()> &prepare)
{
    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0)
        return -1;
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_RDWR), STDERR_FILENO);
        static int argc = 1;
        static char name[] = "corpora";
        static char *argv[] = {name, nullptr};
        const QCoreApplication application(argc, argv);
        const std::function<void(int)> work = prepare();
        for (int i = begin; i < end; ++i) {
            (void)!::write(pipe[1], &i, sizeof i);
            ::alarm(kMostSeconds);
            const long before = peakKilobytes();
            work(i);
            if (peakKilobytes() - before > kMostKilobytes)
                ::_exit(kTooMuchMemory);
        }
        ::_exit(0);
    }
    ::close(pipe[1]);
    int reached = begin;
    for (int i = 0; ::read(pipe[0], &i, sizeof i) == sizeof i;)
        reached = i;
    ::close(pipe[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return end;
    if (WIFEXITED(status) && WEXITSTATUS(status) == kFatalEnd)
        return reached;
    ADD_FAILURE() << "file " << reached << ", status " << status
                  << (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM ? ": hangs" : "")
                  << (WIFEXITED(status) && WEXITSTATUS(status) == kBrokenPromise
                          ? ": told otherwise than it is read"
                          : "");
    return -1;
}

/** All files, each with what it says before this; the number of fatal ends. */
void expectNoHarm(const QStringList &files,
                  const std::function<std::function<void(int)>()> &prepare, int mostFatalEnds)
{
    int fatalEnds = 0;
    for (int i = 0; i < files.size(); ++i) {
        i = inAProcess(i, files.size(), prepare);
        if (i < 0)
            FAIL() << files.join("\n"_q).toStdString();
        if (i < files.size())
            ++fatalEnds;
    }
    EXPECT_LE(fatalEnds, mostFatalEnds);
    std::cout << files.size() << " files, " << fatalEnds << " fatal ends of a scanner\n";
}

/** The files of the corpora, in the order of their paths. */
QStringList corpora()
{
    const QString folder = qEnvironmentVariable("VANTERO_CORPORA");
    QStringList files;
    if (!folder.isEmpty()) {
        QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            files += it.next();
        files.sort();
        EXPECT_FALSE(files.isEmpty());
    } else {
        std::cout << "VANTERO_CORPORA is not set: ran without files of other projects\n";
    }
    return files;
}

} // namespace

TEST(Corpora, harmNoReader)
{
    const QStringList files = corpora();
    expectNoHarm(
        files, [&] { return [&](int i) { readByAll(files.at(i)); }; }, 0);
}

TEST(Corpora, harmNoAlarmParserThatReadsThemInSequence)
{
    const QStringList files = corpora();
    // A comment that a file leaves open goes on in the next one, where a "*" may be the last byte.
    expectNoHarm(
        files,
        [&] {
            const auto parsers = std::make_shared<Parsers>();
            return [&files, parsers](int i) { parsers->parse(readFile(files.at(i))); };
        },
        files.size() / 20);
}
