// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigScan.h"

#include "tool/cli/Interrupt.h"
#include "tool/cli/Progress.h"
#include "tool/files/Input.h"
#include "tool/files/JpegComment.h"
#include "tool/files/OrderedWork.h"
#include "tool/files/PathList.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/StringUtils.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigText.h"

#include <QtCore/QThread>

#include <algorithm>
#include <iterator>
#include <limits>
#include <mutex>
#include <vector>

namespace vn::tool {

namespace {

using Status = ConfigCollector::Status;

/** What one source came to. */
struct Outcome
{
    std::optional<ScannedConfig> config;
    std::any result;
    std::optional<ScanFault> fault;
    qint64 size = 0;
};

const QString kConfigSuffix = QStringLiteral("cfg");

/** What is told of a status: a word, and a sentence where the library has none. */
struct StatusText
{
    Status status;
    const char *reason;
    const char *message;
    bool isWarning;
};

constexpr StatusText kStatusTexts[] = {
    {Status::NoConfiguration, "no-configuration",
     "no configuration: the first two lines do not tell the versions", true},
    {Status::NotFound, "not-found", "No such file or directory", false},
    {Status::NotAFile, "not-a-file", "neither a file nor a folder", false},
    {Status::FolderSkipped, "folder-skipped", "a folder, which only --recursive looks into", true},
    {Status::FolderUnreadable, "folder-unreadable", "the folder cannot be read", false},
    {Status::FileUnreadable, "file-unreadable", nullptr, false},
    {Status::ArchiveUnreadable, "archive-unreadable", nullptr, false},
    {Status::EntryUnreadable, "entry-unreadable", nullptr, false},
};

const StatusText &textOf(Status status)
{
    return *std::find_if(std::begin(kStatusTexts), std::end(kStatusTexts),
                         [status](const StatusText &text) { return text.status == status; });
}

/** A word for each cause, in the order of ArchiveError. */
constexpr const char *kArchiveReasons[] = {
    "none",
    "not-open",
    "cannot-be-opened",
    "read-failed",
    "not-an-archive",
    "truncated",
    "damaged",
    "needs-password",
    "wrong-password",
    "damaged-or-wrong-password",
    "unsupported-method",
    "no-such-entry",
    "over-entry-count-limit",
    "over-directory-size-limit",
    "over-entry-size-limit",
    "over-archive-size-limit",
    "over-ratio-limit",
    "overlapping-entries",
    "split-archive",
    "over-total-size-limit",
};
static_assert(std::size(kArchiveReasons) == std::size_t(ArchiveError::OverCollectionSizeLimit) + 1);

ScanFault makeFault(const ScannedConfig &found, const QString &reason, const QString &message,
                    bool isWarning = false, int line = 0)
{
    const QString where =
        found.entry.isNull() ? message : found.entry + QLatin1String(": ") + message;
    return {found.source(), reason,
            ToolError(isWarning ? ExitCode::Done : ExitCode::BadInput, where).at(found.path, line),
            message};
}

/** How far the sections of @p text can be read, where not all can. */
BrokenSections countSections(const QString &text, VanteroConfigText::Form form)
{
    const VanteroConfigText places(text, form);
    BrokenSections result{0, 0, 0};
    const Findings findings = places.findings();
    const auto first = std::find_if(findings.begin(), findings.end(), [](const Finding &each) {
        return each.severity == Finding::Severity::Error;
    });
    if (first != findings.end())
        result.line = first->range.line;
    const int headerEnd = places.outline().header.range.endLine;
    const QVector<QStringRef> lines = text.splitRef(QLatin1Char('\n'));
    for (int i = form == VanteroConfigText::Form::Configuration ? headerEnd : 0; i < lines.size();
         ++i) {
        result.all += lines.at(i).startsWith(QLatin1String("SECTION")) ? 1 : 0;
        const bool isRead = i + 1 < result.line;
        result.readable += isRead && lines.at(i).startsWith(QLatin1String("ENDSECTION")) ? 1 : 0;
    }
    return result;
}

/** Makes an outcome of what a collector found; used by one thread. */
class Examiner
{
public:
    Examiner(const ConfigScan::Handler &handler, const char *passwordOption)
        : m_handler(handler)
        , m_passwordOption(passwordOption)
    {
    }

    Outcome examine(ConfigCollector::Found found) const
    {
        Outcome outcome;
        outcome.size = found.bytes.size();
        ScannedConfig config;
        config.path = found.path;
        config.entry = found.entry;
        const bool isConfigText =
            found.status == Status::Configuration &&
            (found.entry.isNull() || StringUtils::endsWithIgnoreCase(found.entry, kConfigSuffix));
        try {
            if (isConfigText)
                readText(found, config, outcome);
            else if (isJpeg(found.bytes))
                readImage(found, config, outcome);
            else if (found.status != Status::Configuration) // no entry that is not an image
                outcome.fault = faultOf(found, config);
        } catch (const ToolError &e) {
            outcome.fault = makeFault(config, QStringLiteral("image-damaged"), e.message());
        }
        return outcome;
    }

private:
    std::optional<ScanFault> faultOf(const ConfigCollector::Found &found,
                                     const ScannedConfig &config) const
    {
        const StatusText &text = textOf(found.status);
        const bool isPassedOver =
            !found.isNamed && found.reason.isNull() && found.status != Status::FolderUnreadable;
        if (isPassedOver)
            return std::nullopt;
        const bool isOfArchive = found.archiveError != ArchiveError::None;
        const char *const reason =
            isOfArchive ? kArchiveReasons[int(found.archiveError)] : text.reason;
        QString message = QString::fromLatin1(text.message);
        if (text.message && !found.reason.isNull())
            message += QLatin1String(": ");
        return makeFault(config, QString::fromLatin1(reason),
                         message +
                             withPasswordHint(found.reason, found.archiveError, m_passwordOption),
                         text.isWarning);
    }

    void readText(ConfigCollector::Found &found, ScannedConfig config, Outcome &outcome) const
    {
        config.address = found.factoryIp;
        config.firmware = found.softwareVersion;
        VanteroConfigMap values;
        try {
            (void)m_handler.selection.parse(found.text, values);
        } catch (const ParseException &) {
            // What was read before counts.
            config.broken = countSections(found.text, VanteroConfigText::Form::Configuration);
        }
        finish(found, std::move(config), values, outcome);
    }

    void readImage(ConfigCollector::Found &found, ScannedConfig config, Outcome &outcome) const
    {
        const QString comment = FileUtils::decodeText(jpegComment(found.bytes, found.path));
        VanteroConfigFile file;
        try {
            file.parseJpegComment(comment);
        } catch (const ParseException &) {
            config.broken = countSections(comment, VanteroConfigText::Form::ImageComment);
        }
        if (file.allSectionKeys().isEmpty() && !config.broken) {
            if (found.isNamed)
                outcome.fault = makeFault(config, QStringLiteral("no-configuration"),
                                          QStringLiteral("no configuration: the comment of the "
                                                         "image has no sections"),
                                          true);
            return;
        }
        config.isImage = true;
        config.address = file.getFactoryIP();
        config.firmware = file.getSoftwareVersion();
        finish(found, std::move(config), file.map(), outcome);
    }

    void finish(ConfigCollector::Found &found, ScannedConfig config, const VanteroConfigMap &values,
                Outcome &outcome) const
    {
        if (m_handler.wantsBytes)
            config.bytes = found.bytes;
        outcome.result = m_handler.look(config, values);
        if (config.broken) {
            outcome.fault =
                makeFault(config, QStringLiteral("sections-broken"), config.broken->toString());
        }
        outcome.config = std::move(config);
    }

    const ConfigScan::Handler &m_handler;
    const char *const m_passwordOption;
};

/** Collectors for threads that read: as many as read at a time. */
class Collectors
{
public:
    explicit Collectors(ConfigCollector::Options options)
        : m_options(std::move(options))
    {
    }

    ConfigCollector::Found read(const ConfigCollector::Source &source)
    {
        std::unique_ptr<ConfigCollector> collector = take();
        ConfigCollector::Found found = collector->read(source);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_free.push_back(std::move(collector));
        return found;
    }

private:
    std::unique_ptr<ConfigCollector> take()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_free.empty())
            return std::make_unique<ConfigCollector>(QStringList(), m_options);
        std::unique_ptr<ConfigCollector> collector = std::move(m_free.back());
        m_free.pop_back();
        return collector;
    }

    const ConfigCollector::Options m_options;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<ConfigCollector>> m_free;
};

} // namespace

QString BrokenSections::toString() const
{
    const QString text = QStringLiteral("%1 of %2 sections readable").arg(readable).arg(all);
    return line > 0 ? text + QStringLiteral(", line %1").arg(line) : text;
}

QString ScannedConfig::source() const
{
    return entry.isNull() ? path : path + QLatin1Char(':') + entry;
}

class ConfigScan::Private
{
public:
    ConfigCollector::Options options() const;
    void scan(const QStringList &list, const Handler &handler, Progress &progress);
    void deliver(Outcome &outcome, const Handler &handler, Progress &progress);

    QStringList paths;
    std::optional<QString> filesFrom;
    bool nullSeparated = false;
    bool recursive = false;
    std::optional<qint64> jobs;
    QString onError;
    std::optional<QString> passwordFile;
    const char *passwordOption = nullptr;
    std::optional<qint64> entrySize;
    std::optional<qint64> archiveSize;
    std::optional<qint64> totalSize;
    std::optional<qint64> entryCount;
    std::optional<qint64> ratio;

    QByteArray password;
    bool hasFailed = false;
};

ConfigScan::ConfigScan()
    : d(std::make_unique<Private>())
{
}

ConfigScan::~ConfigScan() = default;

void ConfigScan::declare(Arguments &arguments, const char *passwordOption)
{
    constexpr qint64 kLargest = std::numeric_limits<qint64>::max();
    constexpr qint64 kLargestInt = std::numeric_limits<int>::max();
    constexpr qint64 kMostJobs = 1024;
    arguments.describe(
        "A file counts when its first two lines tell the versions, a camera's JPEG image when its "
        "comment has sections. An archive is what has a name that ends with \".zip\"; of its "
        "entries those count whose names end with \"cfg\", and such images (\"jpg\", \"jpeg\"). "
        "In folders, which are gone through by name, hidden entries and symbolic links are passed "
        "over.");
    arguments.describe(
        "What cannot be read is reported, the rest goes on, and the exit status is 2; so it is for "
        "texts that are not readable to their end. The order of results is that of the sources, "
        "however many threads read. SIGINT ends the work in good order.");
    arguments.files("PATH", "files, archives and folders", d->paths);
    arguments.optional();
    arguments.flag("--recursive", "look into folders, at any depth", d->recursive);
    arguments.fileOption("--files-from", "FILE",
                         "take further paths from the lines of this file, \"-\" for standard "
                         "input, as they come",
                         d->filesFrom);
    arguments.flag("--null", "with --files-from: paths end with a zero byte, not with a line",
                   d->nullSeparated);
    arguments.needs("--null", "--files-from");
    d->passwordOption = passwordOption;
    arguments.fileOption(passwordOption, "FILE",
                         "take the password of all archives that are read from the first line of "
                         "this file, \"-\" for standard input",
                         d->passwordFile);
    arguments.choice("--on-error", "stop|skip",
                     "end at the first failure, or pass it over (the default)", d->onError);
    arguments.option("--jobs", "N", "read with so many threads; the default is one a processor",
                     d->jobs, 1, kMostJobs);
    arguments.option("--entry-size-limit", "BYTES",
                     "refuse larger entries of archives; the default is 256 MiB", d->entrySize, 0,
                     kLargest);
    arguments.option("--archive-size-limit", "BYTES",
                     "refuse what exceeds this in one archive; the default is 1 GiB",
                     d->archiveSize, 0, kLargest);
    arguments.option("--total-size-limit", "BYTES",
                     "refuse what exceeds this in all archives together; no limit unless set, but "
                     "4 GiB where an archive is written, as that is held in memory",
                     d->totalSize, 0, kLargest);
    arguments.option("--entry-count-limit", "N",
                     "refuse archives with more entries; the default is 1000000", d->entryCount, 0,
                     kLargestInt);
    arguments.option("--ratio-limit", "N",
                     "refuse entries of more than 16 MiB that are compressed more than so many "
                     "times; the default is 1000",
                     d->ratio, 1, kLargestInt);
}

void ConfigScan::setTotalSizeLimit(qint64 bytes)
{
    if (!d->totalSize)
        d->totalSize = bytes;
}

void ConfigScan::setPasswordFile(const QString &name)
{
    if (!d->passwordFile)
        d->passwordFile = name;
}

ConfigCollector::Options ConfigScan::Private::options() const
{
    ConfigCollector::Options result;
    result.recursive = recursive;
    result.order = ConfigCollector::Order::Name;
    result.password = password;
    result.entrySuffixes =
        QStringList{kConfigSuffix, QStringLiteral("jpg"), QStringLiteral("jpeg")};
    result.entrySizeLimit = entrySize;
    result.archiveSizeLimit = archiveSize;
    result.collectionSizeLimit = totalSize;
    if (entryCount)
        result.entryCountLimit = int(*entryCount);
    if (ratio)
        result.ratioLimit = int(*ratio);
    result.stop = &Interrupt::stopped();
    return result;
}

void ConfigScan::Private::deliver(Outcome &outcome, const Handler &handler, Progress &progress)
{
    if (Interrupt::stopped())
        return;
    if (outcome.fault) {
        progress.hide();
        handler.report(*outcome.fault);
        hasFailed = hasFailed || !outcome.fault->isWarning();
        if (!outcome.fault->isWarning() && onError == QLatin1String("stop"))
            return Interrupt::stop();
    }
    if (outcome.config)
        handler.take(std::move(*outcome.config), std::move(outcome.result));
    progress.advance(outcome.size);
}

void ConfigScan::Private::scan(const QStringList &list, const Handler &handler, Progress &progress)
{
    const ConfigCollector::Options collectorOptions = options();
    ConfigCollector collector(list, collectorOptions);
    const auto isOwn = [&](const QString &path, const QString &entry) {
        return entry.isNull() && handler.isOwn && handler.isOwn(path);
    };
    const auto nextSource = [&] {
        auto source = collector.nextSource();
        while (source && isOwn(source->path, source->entry))
            source = collector.nextSource();
        return source;
    };
    if (progress.isPossible() && !filesFrom && collector.measure())
        progress.setTotal(collector.progress().filesLeft, collector.progress().bytesLeft);
    const Examiner examiner(handler, passwordOption);
    const int threads = int(jobs.value_or(QThread::idealThreadCount()));
    if (threads == 1) {
        while (auto found = collector.next()) {
            if (isOwn(found->path, found->entry))
                continue;
            Outcome outcome = examiner.examine(std::move(*found));
            deliver(outcome, handler, progress);
            handler.idle();
        }
        return;
    }
    Collectors collectors(collectorOptions);
    OrderedWork<ConfigCollector::Source, Outcome> work(threads);
    work.run(
        nextSource,
        [&](const ConfigCollector::Source &source) {
            // What is read after a signal nobody takes.
            return Interrupt::stopped() ? Outcome() : examiner.examine(collectors.read(source));
        },
        [&](Outcome &outcome) { deliver(outcome, handler, progress); }, handler.idle,
        [](const Outcome &outcome) { return outcome.config ? outcome.config->bytes.size() : 0; });
    handler.idle();
}

bool ConfigScan::run(Output &out, const Handler &handler)
{
    if (d->paths.isEmpty() && !d->filesFrom)
        throw ToolError(ExitCode::BadInput, QStringLiteral("no PATH and no --files-from"));
    if (readsInput() && d->passwordFile == QLatin1String("-"))
        throw ToolError(ExitCode::BadInput, inputTakenTwice());
    if (d->passwordFile)
        d->password = readPassword(*d->passwordFile);

    std::optional<PathList> list; // opened first: nothing is collected for a list that is not there
    if (d->filesFrom)
        list.emplace(*d->filesFrom, d->nullSeparated ? '\0' : '\n');

    Progress progress(!out.json());
    if (!d->paths.isEmpty())
        d->scan(d->paths, handler, progress);
    if (list)
        for (QStringList some = list->next(); !some.isEmpty() && !Interrupt::stopped();
             some = list->next())
            d->scan(some, handler, progress);
    return !Interrupt::stopped();
}

const QStringList &ConfigScan::paths() const
{
    return d->paths;
}

bool ConfigScan::readsInput() const
{
    return d->filesFrom == QLatin1String("-");
}

QString inputTakenTwice()
{
    return QStringLiteral("standard input cannot be the list and the password");
}

bool ConfigScan::hasFailed() const
{
    return d->hasFailed;
}

} // namespace vn::tool
