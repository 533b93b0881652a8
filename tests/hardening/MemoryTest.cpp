// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Memory that runs out: each allocation of each operation fails once, each time in a process of its
// own. The operation then gives its whole result or ends in one of the ways that it may end in,
// leaves no memory behind and no lock held. Alarm updates are left out: the script engine does not
// survive.

#include "alarm/AlarmListParser.h"
#include "alarm/ThreadLocalAlarmListParser.h"
#include "base/AtomicFile.h"
#include "base/EncodedText.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/StringUtils.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"
#include "config/VanteroConfigFile.h"
#include "erdinfo/VanteroErdinfoFile.h"
#include "hardening/AllocationFaults.h"
#include "support/Literals.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtCore/QVariant>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <ostream>
#include <string>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

using vn::VanteroConfigFile;
using vn::VanteroConfigMap;
using vn::VanteroSoftwareVersion;

namespace {

/** How an operation may end when memory runs out, besides with its result. */
enum Ending : unsigned {
    None = 0,
    BadAlloc = 1,    // std::bad_alloc leaves it
    Error = 2,       // one of our exceptions leaves it
    EndsProcess = 4, // std::terminate, or a scanner's fatal end
    Refuses = 8, // it reports false or an empty result, as it does for files that it cannot open
};

// What the process of one fault says by its exit status.
enum Report {
    NotReached = 10, // the operation needs fewer allocations: all have failed once
    Done,
    GaveBadAlloc,
    GaveError,
    Terminated,
    GaveNothing,
    WrongResult,
    LeftMemory,
    OtherException,
    LeftTheBoundary,
    Elsewhere,
};
/** Files that operations read and write, made once. */
struct World
{
    World()
    {
        text =
            "#:1.3=\n#:VN-3.0.6.29\n# Camera IP: 10.0.0.7\n\nSECTION a\nk=v\nk=w\nENDSECTION a\n"_q;
        configPath = folder.filePath("a.cfg"_q);
        archivePath = folder.filePath("a.zip"_q);
        outPath = folder.filePath("out"_q);
        VanteroConfigFile config;
        config.parse(text, QDateTime());
        config.store(configPath);
        const auto writer = std::make_shared<vn::ZipWriter>(archivePath, "secret");
        writer->open();
        config.store(writer, "a.cfg"_q);
        writer->close();
    }

    QTemporaryDir folder;
    QString text;
    QString configPath;
    QString archivePath;
    QString outPath;
};

World &world()
{
    static auto *world = new World;
    return *world;
}

VanteroConfigFile &configuration()
{
    static auto *config = [] {
        auto *result = new VanteroConfigFile;
        result->parse(world().text, QDateTime());
        return result;
    }();
    return *config;
}

QString textOf(const QMap<QString, QString> &map)
{
    QStringList result;
    for (auto it = map.begin(); it != map.end(); ++it)
        result += it.key() + "="_q + it.value();
    return result.join("|"_q);
}

/** Runs an operation that lets no std::bad_alloc out, whatever is prepared for it around it. */
template <typename Operation>
auto guarded(Operation &&operation)
{
    try {
        return operation();
    } catch (const std::bad_alloc &) {
        AllocationFaults::stop();
        ::_exit(LeftTheBoundary);
    }
}

struct Row
{
    const char *name;
    unsigned endings;
    std::function<QString()> run; // gives what shall be the same as without a fault
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

// clang-format off
const Row kRows[] = {
    // ---- Maps -------------------------------------------------------------------------------------
    {"mapEdits", BadAlloc, [] {
         VanteroConfigMap map;
         map.addValue("s"_q, "k"_q, "1"_q);
         map.setValue("s"_q, "l"_q, "2"_q);
         VanteroConfigMap copy = map;
         copy.section("t"_q).insert("x"_q, "y"_q);
         copy.replaceSection("u"_q, copy.section("s"_q));
         copy.remove("s"_q, "k"_q);
         copy.removeAllSections({"t"_q});
         return map.toString() + copy.toString();
     }},
    {"mapLookups", BadAlloc, [] {
         VanteroConfigMap map;
         map.addValue("s"_q, "k"_q, "1"_q);
         return map.value("s"_q, "k"_q, 0) + map.values("s"_q, "k"_q).join(","_q) +
                map.allSectionKeys().join(","_q) + map.toString("s"_q);
     }},
    {"mapPrint", BadAlloc, [] {
         VanteroConfigMap map;
         map.addValue("s"_q, "k"_q, "1"_q);
         QString text;
         QTextStream stream(&text);
         map.print(stream);
         stream.flush();
         return text;
     }},
    {"parseProperties", BadAlloc | EndsProcess, [] {
         const QString text = "a=1\nb\na=2\n"_q;
         return VanteroConfigMap::toString(
             "s"_q, guarded([&] { return VanteroConfigMap::parseProperties(text); }));
     }},
    // ---- Configurations ---------------------------------------------------------------------------
    {"configurationAccess", BadAlloc, [] {
         VanteroConfigFile config(configuration());
         config.setValue("a"_q, "k"_q, "x"_q);
         config.addValue("b"_q, "k"_q, "y"_q);
         config.setSection("c"_q, config.section("a"_q));
         VanteroConfigFile other;
         other = config;
         return other.toString() + other.makeHeader() + other.value("a"_q, "k"_q) +
                other.getFactoryIP() + other.allSectionKeys().join(","_q);
     }},
    {"replaceSection", BadAlloc, [] {
         return VanteroConfigFile::replaceSection(world().text, world().text, "a"_q);
     }},
    {"removeSections", BadAlloc, [] {
         return VanteroConfigFile::removeSections(world().text, {"b"_q}, false, false, false);
     }},
    {"preserveEntries", BadAlloc, [] {
         VanteroConfigMap result;
         configuration().preserveEntries(configuration(), "a"_q, {"k"_q, "none"_q}, result);
         configuration().preserveIpAddresses(configuration(), result);
         return result.toString();
     }},
    {"newFileName", BadAlloc, [] {
         return VanteroConfigFile::newFileName(QDir(world().folder.path()), "cam"_q,
                                               QDate(2010, 5, 1));
     }},
    {"parseText", BadAlloc | EndsProcess, [] {
         VanteroConfigFile config;
         guarded([&] { return config.parse(world().text, QDateTime()); });
         return config.toString();
     }},
    {"parseMalformedText", BadAlloc | EndsProcess, [] {
         VanteroConfigFile config;
         try {
             const QString text = "#:\n#:\n\nSECTION a\n"_q;
             guarded([&] { return config.parse(text, QDateTime()); });
         } catch (const vn::ParseException &e) {
             return e.message();
         }
         return QString();
     }},
    {"parseDevice", BadAlloc | EndsProcess, [] {
         QByteArray bytes = world().text.toUtf8();
         QBuffer buffer(&bytes);
         buffer.open(QIODevice::ReadOnly);
         VanteroConfigFile config;
         guarded([&] { return config.parse(&buffer, QDateTime()); });
         return config.toString();
     }},
    {"parseStream", BadAlloc | EndsProcess, [] {
         QString text = world().text;
         QTextStream stream(&text, QIODevice::ReadOnly);
         VanteroConfigFile config;
         guarded([&] { return config.parse(&stream, QDateTime()); });
         return config.toString();
     }},
    {"parseHeader", BadAlloc | EndsProcess, [] {
         VanteroConfigFile config;
         guarded([&] { return config.parseHeader(world().text); });
         return config.toString();
     }},
    {"parseJpegComment", BadAlloc | EndsProcess, [] {
         QByteArray bytes = "SECTION a\nk=v\nENDSECTION a\n";
         VanteroConfigFile config;
         const QString text = QString::fromLatin1(bytes);
         guarded([&] { config.parseJpegComment(&bytes); });
         guarded([&] { config.parseJpegComment(text); });
         return config.toString();
     }},
    {"openFile", BadAlloc | Error | EndsProcess, [] {
         return guarded([&] { return VanteroConfigFile::open(world().configPath, QDateTime()); }).toString();
     }},
    {"openMissingFile", BadAlloc | Error | EndsProcess, [] {
         try {
             const QString path = "/none/none"_q;
             (void)guarded([&] { return VanteroConfigFile::open(path, QDateTime()); });
         } catch (const vn::FileException &) {
             return "refused"_q;
         }
         return QString();
     }},
    {"storeFile", BadAlloc | Error | EndsProcess, [] {
         guarded([&] { configuration().store(world().outPath); });
         QFile file(world().outPath);
         return QString::number(file.size());
     }},
    {"parseAll", BadAlloc | Error | EndsProcess, [] {
         const QStringList paths = {world().configPath, world().archivePath};
         const QByteArray password("secret");
         return textOf(guarded([&] { return VanteroConfigFile::parseAll(paths, true, password); }));
     }},
    {"parseAllFolder", BadAlloc | Error | EndsProcess, [] {
         const QStringList paths = {QStringLiteral(VANTERO_EXAMPLE_DATA), world().configPath};
         const QByteArray password;
         return textOf(guarded([&] { return VanteroConfigFile::parseAll(paths, false, password); }));
     }},
    // ---- Archives and texts -----------------------------------------------------------------------
    {"zipReader", BadAlloc | Error | Refuses, [] {
         vn::ZipReader reader(world().archivePath, "secret");
         if (!reader.open(QIODevice::ReadOnly))
             return QString();
         const QStringList names = reader.fileListBySuffix("cfg"_q);
         if (!reader.openFile("a.cfg"_q))
             return QString();
         return names.join(","_q) + vn::FileUtils::readText(&reader);
     }},
    {"zipWriter", BadAlloc | Error, [] {
         const QString path = world().outPath + ".zip"_q;
         QFile::remove(path);
         vn::ZipWriter writer(path);
         writer.open();
         QByteArray bytes(1000, 'x');
         QBuffer buffer(&bytes);
         buffer.open(QIODevice::ReadOnly);
         writer.appendFile(&buffer, "a.cfg"_q, "c"_q, QDateTime(QDate(2010, 5, 1), QTime(1, 2)));
         writer.close();
         return QString::number(QFile(path).size());
     }},
    {"storeInArchive", BadAlloc | Error | EndsProcess, [] {
         const auto writer = std::make_shared<vn::ZipWriter>(world().outPath + "2.zip"_q);
         writer->open();
         configuration().store(writer, "a.cfg"_q);
         writer->close();
         return QString::number(QFile(world().outPath + "2.zip"_q).size());
     }},
    {"texts", BadAlloc | Error, [] {
         QByteArray out;
         QBuffer target(&out);
         target.open(QIODevice::WriteOnly);
         vn::FileUtils::copyText(vn::FileUtils::readText(world().configPath), &target);
         target.close();
         QBuffer source(&out);
         source.open(QIODevice::ReadOnly);
         QByteArray copied;
         QBuffer copy(&copied);
         copy.open(QIODevice::WriteOnly);
         vn::FileUtils::copy(&source, &copy, quint64(-1), 1000);
         return vn::FileUtils::decodeText(copied);
     }},
    {"atomicFiles", BadAlloc | Error, [] {
         const QString path = world().folder.path();
         const QByteArray file = QFile::encodeName(path) + "/atomic";
         (void)::unlink(file.constData());
         vn::AtomicFiles files(path);
         if (!files.add("atomic"_q, "content") || !files.commit().isEmpty())
             return QString();
         return ::access(file.constData(), R_OK) == 0 ? "there"_q : "missing"_q;
     }},
    {"encodedText", BadAlloc | Error, [] {
         const vn::EncodedText text = vn::EncodedText::read(world().configPath);
         const vn::EncodedText::Result result = text.encode(text.text() + u8"\u00FC"_q);
         return QString::fromLatin1(result.bytes) +
                vn::EncodedText("\xFC").encode(u8"\u20AC"_q).message;
     }},
    // ---- Versions and records ---------------------------------------------------------------------
    {"versions", BadAlloc, [] {
         const VanteroSoftwareVersion a("VN-3.0.3.7");
         const VanteroSoftwareVersion b("VN-3.0.6.28"_q);
         const vn::SafeUpdateVerdict verdict = a.checkUpdate("K40"_q, b);
         return QString(a) + (a < b ? "<"_q : ">"_q) + (a.isSafe("K40"_q, b) ? "safe"_q : "unsafe"_q) +
                verdict.rule + verdict.sentence;
     }},
    {"applicationVersion", BadAlloc, [] {
         return VanteroSoftwareVersion::applicationVersion("4.1.1.2"_q, "1:2"_q, 1);
     }},
    {"firmwarePackage", BadAlloc | Refuses, [] {
         const QByteArray bytes("\n# Version: VN-3.0.6.29\n");
         QByteArray content = bytes;
         QBuffer buffer(&content);
         buffer.open(QIODevice::ReadOnly);
         return QString(VanteroSoftwareVersion::fromFwp(bytes)) +
                QString(VanteroSoftwareVersion::fromFwpFile(&buffer));
     }},
    {"erdinfo", BadAlloc | Refuses, [] {
         vn::VanteroErdinfoFile info(world().outPath.toStdWString());
         info.setData(1, 2, 3, 4, 5, 6, std::wstring(50, L'a'), L"b", L"c");
         return info.save() ? "saved"_q : QString();
     }},
    // ---- Alarm lists ------------------------------------------------------------------------------
    {"alarmList", BadAlloc | EndsProcess, [] {
         vn::AlarmListParser parser;
         const QVariantMap map =
             parser.parse("{a: [1, 2.5, true, null, word], 'b': {c: \"text\"}}"_q).toMap();
         return QString::number(map.value("a"_q).toList().size()) +
                map.value("b"_q).toMap().value("c"_q).toString();
     }},
    {"malformedAlarmList", BadAlloc | EndsProcess, [] {
         vn::AlarmListParser parser;
         try {
             (void)parser.parse("{a: [1, 2"_q);
         } catch (const vn::ParseException &e) {
             return e.message();
         }
         return QString();
     }},
    {"alarmListOfTheThread", BadAlloc | EndsProcess, [] {
         const QString text = "[1]"_q;
         const auto size = vn::ThreadLocalAlarmListParser::instance()->parse(text).toList().size();
         vn::ThreadLocalAlarmListParser::deleteInstance();
         return QString::number(size);
     }},
};
// clang-format on

constexpr int kScannerEnd = 2;

/** Where other libraries do not get over a failed allocation: they lose memory, or the process. */
struct Place
{
    const char *library;
    const char *function;
};
constexpr Place kElsewhere[] = {
    {"libarchive.so", nullptr},                         // crashes, or exits with status 1
    {"libzip.so", nullptr},                             // loses what it had begun to write
    {"libQt5Core.so", "QMapDataBase10createNode"},      // a copy of a map loses its nodes
    {"libQt5Core.so", "QObjectPrivate13addConnection"}, // crashes; each text stream connects
    {"libQt5Core.so", "QFileInfo17canonicalFilePath"},  // loses the path
};

bool isElsewhere()
{
    return std::any_of(std::begin(kElsewhere), std::end(kElsewhere), [](const Place &place) {
        return AllocationFaults::wasIn(place.library, place.function);
    });
}

/** Runs the operation with its @p n-th allocation failing. */
[[noreturn]] void runWithFault(const Row &row, const QString &expected, long n)
{
    std::set_terminate([] { ::_exit(Terminated); });
    ::on_exit(
        [](int status, void *) { ::_exit(status == 1 && isElsewhere() ? Elsewhere : status); },
        nullptr);
    std::signal(SIGSEGV, [](int number) {
        if (isElsewhere())
            ::_exit(Elsewhere);
        std::signal(number, SIG_DFL);
        ::raise(number);
    });
    (void)::close(STDERR_FILENO); // Qt warns, scanners tell their end
    Report report = Done;
    AllocationFaults::start(n);
    try {
        const QString result = row.run();
        if (result.isEmpty())
            report = GaveNothing;
        else if (result != expected)
            report = WrongResult;
    } catch (const vn::ExceptionQt &) {
        report = GaveError;
    } catch (const std::bad_alloc &) {
        report = GaveBadAlloc;
    } catch (...) {
        report = OtherException;
    }
    const long left = AllocationFaults::balance();
    if (!AllocationFaults::stop())
        ::_exit(NotReached);
    if (left > 0)
        report = isElsewhere() ? Elsewhere : LeftMemory;
    // A lock that is still held stops this for ever, and the watchdog ends it.
    if (report == GaveBadAlloc || report == GaveError) {
        ::alarm(20);
        std::thread([] { (void)configuration().toString(); }).join();
    }
    ::_exit(report);
}

/** What @p status means for the operation; an empty text where it may be so. */
std::string complaint(const Row &row, int status)
{
    if (!WIFEXITED(status))
        return "ended by signal " + std::to_string(WTERMSIG(status));
    const auto allows = [&row](Ending ending) { return (row.endings & ending) != 0; };
    switch (WEXITSTATUS(status)) {
    case NotReached:
    case Done:
    case Elsewhere:
        return {};
    case GaveBadAlloc:
        return allows(BadAlloc) ? "" : "std::bad_alloc has left it";
    case GaveError:
        return allows(Error) ? "" : "an error has left it";
    case Terminated:
    case kScannerEnd:
        return allows(EndsProcess) ? "" : "it has ended the process";
    case GaveNothing:
        return allows(Refuses) ? "" : "it has given an empty result";
    case WrongResult:
        return "it has given another result";
    case LeftMemory:
        return "it has left memory behind";
    case LeftTheBoundary:
        return "std::bad_alloc has left an operation that ends the process instead";
    case OtherException:
        return "another exception has left it";
    }
    return "ended with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

class MemoryFaults : public testing::TestWithParam<Row>
{
};

TEST_P(MemoryFaults, endAsTheyMay)
{
    const Row &row = GetParam();
    const QString expected = row.run(); // and what is made once exists then
    ASSERT_FALSE(expected.isEmpty());
    ASSERT_EQ(row.run(), expected);

    constexpr long kMost = 5000;
    for (long n = 1;; ++n) {
        ASSERT_LT(n, kMost);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            runWithFault(row, expected, n);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(complaint(row, status), "") << "allocation " << n;
        if (WIFEXITED(status) && WEXITSTATUS(status) == NotReached) {
            EXPECT_GT(n, 1);
            break;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, MemoryFaults, testing::ValuesIn(kRows),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(MemoryOnTrust, staysSmallForADeviceThatPromisesTooMuch)
{
    // As an archive does whose directory says that a stored byte stands for 700 MB.
    class Promising : public QIODevice
    {
    public:
        Promising() { open(ReadOnly | Unbuffered); }
        bool isSequential() const override { return true; }
        qint64 bytesAvailable() const override { return 754974721; }

    protected:
        qint64 readData(char *, qint64) override
        {
            setErrorString("more than the limit"_q);
            return -1;
        }
        qint64 writeData(const char *, qint64) override { return -1; }
    };
    Promising device;
    AllocationFaults::start(0);
    EXPECT_THROW((void)vn::FileUtils::readText(&device), vn::IOException);
    AllocationFaults::stop();
    EXPECT_LT(AllocationFaults::largest(), std::size_t(20) * 1024 * 1024);
}
