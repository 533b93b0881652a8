// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/**
 * @file Ten times the input, once for each thing that an input may hold many of: what counts is the
 * growth exponent. Configurations have theirs in the benchmarks of their own.
 */

#include "Support.h"

#include "alarm/AlarmLint.h"
#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateLines.h"
#include "base/ZipWriter.h"
#include "config/ConfigCollector.h"
#include "tool/files/CollectTarget.h"
#include "tool/files/JpegComment.h"
#include "version/UpdateAdvisor.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace {

void jpegComments(benchmark::State &state)
{
    QByteArray image("\xFF\xD8", 2);
    for (int64_t i = 0; i < state.range(0); ++i)
        image.append("\xFF\xFE\x00\x03x", 5);
    image += QByteArray::fromHex("ffc0000b080001000101011100ffda0008010100003f00");
    int size = 0;
    for (auto _ : state)
        size = vn::tool::jpegComment(image, QString()).size();
    require(size == state.range(0), "jpeg comments");
}

/** How many files and entries at @p path have this status. */
int count(const QString &path, vn::ConfigCollector::Status status)
{
    vn::ConfigCollector::Options options;
    options.recursive = true;
    vn::ConfigCollector collector({path}, options);
    int found = 0;
    while (const auto place = collector.next())
        found += place->status == status ? 1 : 0;
    return found;
}

const QTemporaryDir &folder()
{
    static const QTemporaryDir folder;
    return folder;
}

void archiveEntries(benchmark::State &state)
{
    const QString path = folder().filePath(QStringLiteral("%1.zip").arg(state.range(0)));
    if (!QFile::exists(path)) {
        vn::ZipWriter zip(path);
        zip.open();
        for (int64_t i = 0; i < state.range(0); ++i) {
            QByteArray text = "#:1.3\n#:VN-3.0.6.29\n\n";
            QBuffer buffer(&text);
            require(buffer.open(QIODevice::ReadOnly), "archive entries");
            zip.appendFile(&buffer, QStringLiteral("%1.cfg").arg(i), QString(), QDateTime());
        }
        zip.close();
    }
    int found = 0;
    for (auto _ : state)
        found = count(path, vn::ConfigCollector::Status::Configuration);
    require(found == state.range(0), "archive entries");
}

void faults(benchmark::State &state)
{
    const QString path = folder().filePath(QStringLiteral("faults%1").arg(state.range(0)));
    if (!QFile::exists(path)) {
        require(QDir().mkdir(path), "faults");
        for (int64_t i = 0; i < state.range(0); ++i) {
            QFile file(QStringLiteral("%1/%2.zip").arg(path).arg(i));
            require(file.open(QIODevice::WriteOnly) && file.write("none") == 4, "faults");
        }
    }
    int found = 0;
    for (auto _ : state)
        found = count(path, vn::ConfigCollector::Status::ArchiveUnreadable);
    require(found == state.range(0), "faults");
}

/** Names for what comes from one camera, of which the first half is there already. */
void namesOfOneAddress(benchmark::State &state)
{
    QString last;
    for (auto _ : state) {
        vn::tool::NewNames names;
        int64_t asked = 0;
        const auto isTaken = [&](const QString &) { return asked++ < state.range(0) / 2; };
        for (int64_t i = 0; i < state.range(0); ++i)
            last = names.next(QStringLiteral("10.0.0.1"), QStringLiteral(".cfg"), isTaken);
    }
    const int64_t number = state.range(0) + state.range(0) / 2;
    require(last.contains(QStringLiteral("[%1]").arg(number)), "names of one address");
}

/** New files of one camera in a folder. */
void filesOfOneAddress(benchmark::State &state)
{
    for (auto _ : state) {
        const QTemporaryDir target;
        const auto files = vn::tool::makeFolderTarget(target.path());
        for (int64_t i = 0; i < state.range(0); ++i)
            files->write(QStringLiteral("10.0.0.1"), QStringLiteral(".cfg"), "x");
        files->finish();
        require(files->names().size() == state.range(0), "files of one address");
    }
}

/** So many times @p element, ten in an array, ten arrays in the next one, and so on. */
QByteArray nested(int64_t number, const QByteArray &element)
{
    QByteArray text = "[";
    for (int i = 0; i < 10; ++i) {
        if (i > 0)
            text += ", ";
        text += number > 10 ? nested(number / 10, element) : element;
    }
    return text + ']';
}

void alarmMembers(benchmark::State &state)
{
    const QByteArray text =
        nested(state.range(0) / 10, "{\"a\": 1, \"b\": \"x\", \"c\": 2, \"d\": 3, \"e\": null, "
                                    "\"f\": \"y\", \"g\": 4, \"h\": 5, \"i\": 6, \"j\": 7}");
    vn::AlarmListParser parser;
    QVariant list;
    for (auto _ : state) {
        QByteArray copy = text;
        list = parser.parse(&copy);
    }
    require(list.toList().size() == 10, "alarm members");
}

void alarmUpdates(benchmark::State &state)
{
    QByteArray text;
    for (int64_t i = 0; i < state.range(0); ++i)
        text += "state=1;name=\"gate\";time=12:30:00\n";
    int found = 0;
    for (auto _ : state) {
        QBuffer buffer(&text);
        require(buffer.open(QIODevice::ReadOnly), "alarm updates");
        vn::AlarmUpdateLines lines(&buffer);
        for (found = 0; lines.next();)
            found += lines.error() ? 0 : 1;
    }
    require(found == state.range(0), "alarm updates");
}

void alarmFindings(benchmark::State &state)
{
    const QByteArray text = nested(state.range(0), "{a: 1, a: 2}");
    int found = 0;
    for (auto _ : state)
        found = vn::alarmListFindings(text).size();
    require(found >= state.range(0), "alarm findings");
}

void planVersions(benchmark::State &state)
{
    const auto version = [](int64_t number) {
        return vn::VanteroSoftwareVersion(
            QStringLiteral("VN-3.0.%1.%2").arg(number / 1000).arg(number % 1000));
    };
    QList<vn::VanteroSoftwareVersion> available;
    for (int64_t i = 0; i < state.range(0); ++i)
        available += version(i);
    bool isReachable = false;
    for (auto _ : state)
        isReachable = vn::UpdateAdvisor::plan(QStringLiteral("H40"), version(0),
                                              version(state.range(0) - 1), available)
                          .reachable;
    require(isReachable, "versions in a plan");
}

const bool s_registered = [] {
    const struct
    {
        const char *name;
        void (*run)(benchmark::State &);
        int64_t size;
    } rows[] = {
        {"jpeg comments/ours", jpegComments, 10000},
        {"archive entries/ours", archiveEntries, 1000},
        {"faults in a collection/ours", faults, 1000},
        {"names of one address/ours", namesOfOneAddress, 10000},
        {"files of one address/ours", filesOfOneAddress, 1000},
        {"alarm members/ours", alarmMembers, 10000},
        {"alarm updates/ours", alarmUpdates, 1000},
        {"alarm findings/ours", alarmFindings, 1000},
        {"versions in a plan/ours", planVersions, 1000},
    };
    for (const auto &row : rows)
        benchmark::RegisterBenchmark(row.name, row.run)->Arg(row.size)->Arg(10 * row.size);
    return true;
}();

} // namespace
