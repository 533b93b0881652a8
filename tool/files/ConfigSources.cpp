// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigSources.h"

#include "tool/files/Input.h"
#include "tool/files/JpegComment.h"
#include "tool/files/OrderedWork.h"
#include "tool/files/PathList.h"

#include "base/StringUtils.h"

#include <QtCore/QFileInfo>
#include <QtCore/QThread>

#include <algorithm>
#include <iterator>
#include <limits>
#include <mutex>
#include <vector>

namespace vn::tool {

namespace {

using Found = ConfigCollector::Found;
using Status = ConfigCollector::Status;

const QString kConfigSuffix = QStringLiteral("cfg");
const QString kStandardInput = QStringLiteral("-");

/** An option that limits what is read of archives. */
struct LimitOption
{
    const char *option;
    const char *value;
    const char *what;
    qint64 smallest;
    qint64 largest;
};

constexpr qint64 kLargest = std::numeric_limits<qint64>::max();
constexpr qint64 kLargestInt = std::numeric_limits<int>::max();

enum Limit { EntrySize, ArchiveSize, TotalSize, EntryCount, Ratio };

constexpr LimitOption kLimitOptions[] = {
    {"--entry-size-limit", "BYTES", "refuse larger entries of archives; the default is 256 MiB", 0,
     kLargest},
    {"--archive-size-limit", "BYTES",
     "refuse what exceeds this in one archive; the default is 1 GiB", 0, kLargest},
    {"--total-size-limit", "BYTES",
     "refuse what exceeds this in all archives together; no limit unless set, but 4 GiB where an "
     "archive is written, as that is held in memory",
     0, kLargest},
    {"--entry-count-limit", "N", "refuse archives with more entries; the default is 1000000", 0,
     kLargestInt},
    {"--ratio-limit", "N",
     "refuse entries of more than 16 MiB that are compressed more than so many times; the default "
     "is 1000",
     1, kLargestInt},
};

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
    {Status::FileUnreadable, "file-unreadable", "", false},
    {Status::ArchiveUnreadable, "archive-unreadable", "", false},
    {Status::EntryUnreadable, "entry-unreadable", "", false},
};

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

bool isArchive(const QString &path)
{
    return StringUtils::endsWithIgnoreCase(path, QStringLiteral(".zip"));
}

/** Whether an image that nobody has named holds sections; any may have a comment. */
bool holdsSections(const QByteArray &image, const QString &name)
{
    const QByteArray comment = jpegComment(image, name);
    return comment.startsWith("SECTION") || comment.contains("\nSECTION");
}

/** Collectors for threads that read: as many as read at a time. */
class Collectors
{
public:
    explicit Collectors(ConfigCollector::Options options)
        : m_options(std::move(options))
    {
    }

    Found read(const ConfigCollector::Source &source)
    {
        std::unique_ptr<ConfigCollector> collector = take();
        Found found = collector->read(source);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_free.push_back(std::move(collector));
        return found;
    }

private:
    std::unique_ptr<ConfigCollector> take()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_free.empty())
            return std::make_unique<ConfigCollector>(m_options);
        std::unique_ptr<ConfigCollector> collector = std::move(m_free.back());
        m_free.pop_back();
        return collector;
    }

    const ConfigCollector::Options m_options;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<ConfigCollector>> m_free;
};

} // namespace

QString nameOf(const Found &found)
{
    return found.entry.isNull() ? found.path : found.path + QLatin1Char(':') + found.entry;
}

QString inputTakenTwice()
{
    return QStringLiteral("standard input cannot be the list and the password");
}

// ---- Options -----------------------------------------------------------------------------------

void ConfigSources::declare(Arguments &arguments, const char *passwordOption, const char *needed)
{
    constexpr qint64 kMostJobs = 1024;
    m_passwordOption = passwordOption;
    if (!(m_flags & AlwaysRecursive)) {
        arguments.flag("--recursive",
                       (m_flags & Archives) && !(m_flags & Site)
                           ? "look into folders, at any depth, and into archives"
                           : "look into folders, at any depth",
                       m_recursive);
        if (needed)
            arguments.needs("--recursive", needed);
    }
    if (m_flags & Site) {
        arguments.fileOption("--files-from", "FILE",
                             "take further paths from the lines of this file, \"-\" for standard "
                             "input, as they come",
                             m_filesFrom);
        arguments.flag("--null", "with --files-from: paths end with a zero byte, not with a line",
                       m_nullSeparated);
        arguments.needs("--null", "--files-from");
        arguments.choice("--on-error", "stop|skip",
                         "end at the first failure, or pass it over (the default)", m_onError);
        arguments.option("--jobs", "N", "read with so many threads; the default is one a processor",
                         m_jobs, 1, kMostJobs);
    }
    if (holdsArchives())
        declareArchives(arguments, needed);
}

void ConfigSources::declareArchives(Arguments &arguments, const char *needed)
{
    arguments.fileOption(m_passwordOption, "FILE",
                         "take the password of all archives that are read from the first line of "
                         "this file, \"-\" for standard input",
                         m_passwordFile);
    if (needed)
        arguments.needs(m_passwordOption, needed);
    static_assert(std::size(kLimitOptions) == kLimits);
    for (std::size_t i = 0; i < kLimits; ++i) {
        const LimitOption &each = kLimitOptions[i];
        arguments.option(each.option, each.value, each.what, m_limits[i], each.smallest,
                         each.largest);
        if (needed)
            arguments.needs(each.option, needed);
    }
}

void ConfigSources::setTotalSizeLimit(qint64 bytes)
{
    if (!m_limits[TotalSize])
        m_limits[TotalSize] = bytes;
}

void ConfigSources::setPasswordFile(const QString &name)
{
    if (!m_passwordFile)
        m_passwordFile = name;
}

ConfigCollector::Options ConfigSources::options() const
{
    ConfigCollector::Options result;
    result.recursive = m_recursive || !(m_flags & Site); // else folders are walked where it is set
    result.order = ConfigCollector::Order::Name;
    result.password = m_password;
    result.entrySuffixes.clear();
    if (holdsArchives())
        result.entrySuffixes << kConfigSuffix;
    if (holdsArchives() && (m_flags & Images))
        result.entrySuffixes << QStringLiteral("jpg") << QStringLiteral("jpeg");
    result.entrySizeLimit = m_limits[EntrySize];
    result.archiveSizeLimit = m_limits[ArchiveSize];
    result.collectionSizeLimit = m_limits[TotalSize];
    if (m_limits[EntryCount])
        result.entryCountLimit = int(*m_limits[EntryCount]);
    if (m_limits[Ratio])
        result.ratioLimit = int(*m_limits[Ratio]);
    result.stop = &Interrupt::stopped();
    return result;
}

// ---- What counts -------------------------------------------------------------------------------

bool ConfigSources::isOne() const
{
    return m_names.size() == 1 && !m_recursive && !isWalked(m_names.first());
}

bool ConfigSources::isWalked(const QString &name) const
{
    if (m_flags & Site)
        return true;
    if (name == kStandardInput)
        return false;
    if (isArchive(name))
        return (m_flags & NamedArchives) || (m_recursive && (m_flags & Archives));
    return (m_recursive || (m_flags & AlwaysRecursive)) && QFileInfo(name).isDir();
}

std::optional<ToolError> ConfigSources::faultOf(const Found &found) const
{
    const bool isPassedOver =
        (!found.isNamed && found.reason.isNull() && found.status != Status::FolderUnreadable) ||
        (found.status == Status::ArchiveUnreadable && !holdsArchives());
    if (found.status == Status::Configuration || isPassedOver)
        return std::nullopt;
    const StatusText &text =
        *std::find_if(std::begin(kStatusTexts), std::end(kStatusTexts),
                      [&](const StatusText &each) { return each.status == found.status; });
    QString message = QString::fromLatin1(text.message);
    if (!message.isEmpty() && !found.reason.isNull())
        message += QLatin1String(": ");
    message += withPasswordHint(found.reason, found.archiveError, m_passwordOption);
    const char *const reason = found.archiveError == ArchiveError::None
                                   ? text.reason
                                   : kArchiveReasons[int(found.archiveError)];
    return (text.isWarning ? ToolError::warning(message) : ToolError(ExitCode::BadInput, message))
        .because(QString::fromLatin1(reason))
        .at(nameOf(found));
}

/** What counts for commands that take what is named as it is. */
std::optional<ConfigSource> ConfigSources::sourceOf(const Found &found) const
{
    const QString name = nameOf(found);
    bool counts = found.status == Status::Configuration;
    if (isJpeg(found.bytes))
        counts = (m_flags & Images) && holdsSections(found.bytes, name);
    else if (m_flags & WithoutHeader)
        counts = counts || StringUtils::endsWithIgnoreCase(name, kConfigSuffix);
    if (!counts)
        return std::nullopt;
    return ConfigSource{name, found.bytes};
}

// ---- The way -----------------------------------------------------------------------------------

void ConfigSources::forEach(Output &out, const std::function<void(const ConfigSource &)> &use)
{
    Steps steps;
    steps.look = [this](const Found &found) {
        Outcome outcome;
        outcome.fault = faultOf(found);
        if (!outcome.fault)
            if (auto source = sourceOf(found))
                outcome.result = std::move(*source);
        return outcome;
    };
    steps.take = [&](std::any &&result) {
        attempt(out, [&] { use(std::any_cast<const ConfigSource &>(result)); });
    };
    (void)walk(out, steps);
    tellInterruption(out);
    tellEmptiness(out, QStringLiteral("no configurations found"));
}

bool ConfigSources::walk(Output &out, const Steps &steps)
{
    const bool isSite = (m_flags & Site) != 0;
    if (isSite && m_names.isEmpty() && !m_filesFrom)
        throw ToolError(ExitCode::BadInput, QStringLiteral("no PATH and no --files-from"));
    const int readers = (isSite ? int(readsInput()) : m_names.count(kStandardInput)) +
                        int(m_passwordFile == kStandardInput);
    if (readers > 1)
        throw ToolError(ExitCode::BadInput,
                        isSite ? inputTakenTwice()
                               : QStringLiteral("only one of the files can be standard input"));
    if (m_passwordFile && m_password.isNull())
        m_password = readPassword(*m_passwordFile);
    std::optional<PathList> list; // opened first: nothing is collected for a list that is not there
    if (m_filesFrom)
        list.emplace(*m_filesFrom, m_nullSeparated ? '\0' : '\n');

    begin(isSite ? QStringList() : m_names);
    if (!m_first)
        m_first = std::make_unique<ConfigCollector>(options());
    if (out.progress().isPossible() && !list)
        expect(out);
    scan(m_names, out, steps);
    while (list && !Interrupt::stopped()) {
        const QStringList some = list->next();
        if (some.isEmpty())
            break;
        scan(some, out, steps);
    }
    return !Interrupt::stopped();
}

/** Has the progress know how much there is. */
void ConfigSources::expect(Output &out) const
{
    QStringList walked;
    for (const QString &name : m_names) {
        if (isWalked(name))
            walked += name;
        else
            out.progress().expect(1, QFileInfo(name).size());
    }
    ConfigCollector collector(walked, *m_first);
    if (collector.measure())
        out.progress().expect(collector.progress().filesLeft, collector.progress().bytesLeft);
}

void ConfigSources::scan(const QStringList &list, Output &out, const Steps &steps)
{
    const auto isPlain = [this](const QString &name) { return !isWalked(name); };
    for (auto next = list.begin(); next != list.end() && !Interrupt::stopped();) {
        const auto end = std::find_if(next, list.end(), isPlain);
        if (next != end)
            collect(list.mid(int(next - list.begin()), int(end - next)), out, steps);
        else
            readNamed(*next, out, steps);
        next = next == end ? end + 1 : end;
    }
}

/** Takes a file as it is named, whatever it holds. */
void ConfigSources::readNamed(const QString &name, Output &out, const Steps &steps)
{
    Outcome outcome;
    try {
        const ConfigSource source{name, readInput(name)};
        outcome.size = source.bytes.size();
        outcome.result = source;
    } catch (const ToolError &e) {
        outcome.fault = e;
    }
    deliver(outcome, out, steps);
}

void ConfigSources::collect(const QStringList &paths, Output &out, const Steps &steps)
{
    ConfigCollector collector(paths, *m_first);
    const auto nextSource = [&] {
        auto source = collector.nextSource();
        while (source && steps.isOwn && source->entry.isNull() && steps.isOwn(source->path))
            source = collector.nextSource();
        return source;
    };
    const auto look = [&](const Found &found) {
        Outcome outcome;
        try {
            outcome = steps.look(found);
        } catch (const ToolError &e) {
            outcome.fault = e;
        }
        outcome.size = found.bytes.size();
        return outcome;
    };
    const int threads = (m_flags & Site) ? int(m_jobs.value_or(QThread::idealThreadCount())) : 1;
    if (threads == 1) {
        while (const auto found = collector.next()) {
            if (steps.isOwn && found->entry.isNull() && steps.isOwn(found->path))
                continue;
            Outcome outcome = look(*found);
            deliver(outcome, out, steps);
            steps.idle();
        }
        return;
    }
    Collectors collectors(options());
    OrderedWork<ConfigCollector::Source, Outcome> work(threads);
    work.run(
        nextSource,
        [&](const ConfigCollector::Source &source) {
            // What is read after a signal nobody takes.
            return Interrupt::stopped() ? Outcome() : look(collectors.read(source));
        },
        [&](Outcome &outcome) {
            if (!Interrupt::stopped())
                deliver(outcome, out, steps);
        },
        steps.idle, [&](const Outcome &outcome) { return steps.keepsBytes ? outcome.size : 0; });
    steps.idle();
}

void ConfigSources::deliver(Outcome &outcome, Output &out, const Steps &steps)
{
    if (outcome.fault && outcome.fault->isWarning()) {
        const ToolError &warning = *outcome.fault;
        out.complain(warning);
        m_warnings.append(Json::object({{"file", warning.file()},
                                        {"reason", warning.reason()},
                                        {"message", warning.message()}}));
    } else if (outcome.fault) {
        fail(out, *outcome.fault);
        if (m_onError == QLatin1String("stop"))
            return Interrupt::stop();
    }
    if (outcome.result.has_value())
        steps.take(std::move(outcome.result));
    out.progress().advance(outcome.size);
}

} // namespace vn::tool
