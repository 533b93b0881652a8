// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/AtomicFile.h"

#include "base/AtomicFile_p.h"
#include "base/DeviceIo_p.h"
#include "base/FileHandover_p.h"
#include "base/Utf8_p.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vn {

namespace {

using internal::failOn;
using internal::FileDescriptor;
using internal::kModeOfNewFiles;
using internal::openFolder;
using internal::renameToNew;
using internal::retried;
using internal::synchronise;
using internal::systemPath;

constexpr mode_t kPrivateMode = 0600; // until what the old file allows is known to fit

QByteArray folderOf(const QByteArray &path)
{
    const int slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray("./") : path.left(slash + 1);
}

/** The number of the open file that the kernel's link @p path stands for, as /dev/stdout leads to
 * one; -1 for any other path. */
int openFileNumber(const QByteArray &path)
{
    for (const char *folder : {"/proc/self/fd/", "/dev/fd/"}) {
        bool ok = false;
        const int number = path.mid(static_cast<int>(std::strlen(folder))).toInt(&ok);
        if (path.startsWith(folder) && ok)
            return number;
    }
    return -1;
}

/** Where a path leads to through all symbolic links. */
struct Target
{
    QByteArray path;   // need not be there
    int openFile = -1; // its number where the path is just another name for it
};

Target resolveLinks(const QString &path)
{
    QByteArray current = systemPath(path);
    constexpr int kMostLinks = 40;          // as the kernel has it
    for (int i = 0; i <= kMostLinks; ++i) { // behind the last one there is no link
        const int number = openFileNumber(current);
        char target[PATH_MAX];
        const ssize_t length =
            number < 0 ? ::readlink(current.constData(), target, sizeof target) : -1;
        if (length < 0)
            return {current, number};
        QByteArray next(target, static_cast<int>(length));
        const int slash = current.lastIndexOf('/');
        if (!next.startsWith('/') && slash >= 0)
            next.prepend(current.left(slash + 1));
        current = next;
    }
    failOn(path, ELOOP);
}

/** Opens and locks the file that is at @p path, so that none of those who lock it, too, replaces it
 * before the lock goes; none where nothing is there. */
FileDescriptor openLocked(const QByteArray &path, const QString &name)
{
    constexpr int kMostTries = 500;
    constexpr useconds_t kPause = 10 * 1000; // microseconds: five seconds at the most
    for (int i = 0; i < kMostTries; ++i) {
        FileDescriptor file(retried([&] {
            return ::open(path.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        }));
        if (!file.isValid()) {
            if (errno == ENOENT)
                return file;
            failOn(name);
        }
        struct flock whole = {};
        whole.l_type = F_WRLCK;
        whole.l_whence = SEEK_SET;
        if (::fcntl(file.get(), F_OFD_SETLK, &whole) != 0 && (errno == EAGAIN || errno == EACCES)) {
            ::usleep(kPause);
            continue;
        } // else it is locked, or its file system knows no locks: then a look must do
        struct stat opened = {};
        struct stat present = {};
        if (::fstat(file.get(), &opened) == 0 && ::lstat(path.constData(), &present) == 0 &&
            opened.st_dev == present.st_dev && opened.st_ino == present.st_ino)
            return file;
        // Replaced meanwhile: the lock must be that of the new one.
    }
    failOn(name, EAGAIN);
}

/** Whether @p content is all that the file holds. */
bool holds(const FileDescriptor &file, const QByteArray &content, const QString &name)
{
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0)
        failOn(name);
    if (!S_ISREG(status.st_mode) || status.st_size != content.size())
        return false;
    char piece[internal::kChunkSize];
    for (int at = 0; at < content.size();) {
        const ssize_t count = retried([&] { return ::read(file.get(), piece, sizeof piece); });
        if (count < 0)
            failOn(name);
        if (count == 0 || count > content.size() - at ||
            std::memcmp(piece, content.constData() + at, static_cast<std::size_t>(count)) != 0)
            return false;
        at += static_cast<int>(count);
    }
    return true;
}

/** Holds back the signals that users end programs with. */
class SignalsHeldBack
{
public:
    SignalsHeldBack()
    {
        sigset_t signalSet;
        sigemptyset(&signalSet);
        for (const int number : {SIGHUP, SIGINT, SIGTERM})
            sigaddset(&signalSet, number);
        (void)::pthread_sigmask(SIG_BLOCK, &signalSet, &m_before); // fails for a wrong call only
    }
    SignalsHeldBack(const SignalsHeldBack &) = delete; // restores once
    SignalsHeldBack &operator=(const SignalsHeldBack &) = delete;
    ~SignalsHeldBack() { (void)::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before;
};

} // namespace

class Q_DECL_HIDDEN AtomicFile::Private
{
public:
    explicit Private(const QString &name)
        : path(name)
    {
    }
    Private(const Private &) = delete; // removes the file once
    Private &operator=(const Private &) = delete;
    ~Private()
    {
        if (!temporary.isEmpty())
            (void)::unlink(temporary.constData());
    }

    void openTarget();
    void openTemporary(mode_t mode);
    void finishWriting();
    bool replaceTarget(const QByteArray *before);
    bool takeNewName();

    const QString path;
    QByteArray target;
    QByteArray temporary; // empty where there is none
    FileDescriptor file;
    FileDescriptor old; // what stood there when writing began; none for a new file
    Losses losses;
    bool isNew = false; // must be
};

/** Opens what is to be written for a target that may be there. */
void AtomicFile::Private::openTarget()
{
    const Target found = resolveLinks(path);
    target = found.path;
    struct stat status = {};
    const bool exists = ::stat(target.constData(), &status) == 0;
    if (!exists && errno != ENOENT)
        failOn(path);
    if (exists && S_ISDIR(status.st_mode))
        failOn(path, EISDIR);
    if (found.openFile >= 0 || (exists && !S_ISREG(status.st_mode))) {
        file = FileDescriptor(
            found.openFile >= 0 ? ::fcntl(found.openFile, F_DUPFD_CLOEXEC, 0) : retried([&] {
                return ::open(target.constData(), O_WRONLY | O_CLOEXEC);
            }));
        if (!file.isValid())
            failOn(path);
        return;
    }
    // A rename asks only the folder; a file marked as not writable is not to be changed.
    if (exists && ::faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0)
        failOn(path);
    if (exists)
        old = internal::openPredecessor(target);
    openTemporary(exists ? kPrivateMode : kModeOfNewFiles);
}

void AtomicFile::Private::openTemporary(mode_t mode)
{
    const QByteArray name = folderOf(target) + internal::temporaryName();
    file = FileDescriptor(retried(
        [&] { return ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); }));
    if (!file.isValid())
        failOn(path);
    temporary = name;
}

/** Has a temporary file reach the disk. */
void AtomicFile::Private::finishWriting()
{
    const bool isOnDisk = temporary.isEmpty() || ::fsync(file.get()) == 0;
    if (!isOnDisk || !file.close())
        failOn(path);
}

/** Gives the new file its place; false where @p before is given, and the file that is there holds
 * something else. */
bool AtomicFile::Private::replaceTarget(const QByteArray *before)
{
    if (temporary.isEmpty()) {
        if (before)
            failOn(path, EINVAL); // no regular file, which holds nothing to look at
        finishWriting();
        return true;
    }
    // As late as can be: rights that have been taken away meanwhile do not come back.
    FileDescriptor present = internal::openPredecessor(target);
    if (present.isValid())
        old = std::move(present);
    if (old.isValid() && !internal::handOn(old, file, &losses))
        failOn(path);
    finishWriting();
    FileDescriptor lock;
    if (before) {
        lock = openLocked(target, path);
        if (!lock.isValid() || !holds(lock, *before, path))
            return false;
    }
    if (::rename(temporary.constData(), target.constData()) != 0)
        failOn(path);
    temporary.clear();
    synchronise(openFolder(folderOf(target)));
    return true;
}

/** The same where nothing is to be replaced; false where something is there. */
bool AtomicFile::Private::takeNewName()
{
    finishWriting();
    if (!renameToNew(AT_FDCWD, temporary, AT_FDCWD, target)) {
        if (errno == EEXIST)
            return false;
        failOn(path);
    }
    temporary.clear();
    synchronise(openFolder(folderOf(target)));
    return true;
}

AtomicFile::AtomicFile(const QString &path)
    : d(std::make_unique<Private>(path))
{
}

AtomicFile::~AtomicFile() = default;

void AtomicFile::open()
{
    if (d->file.isValid())
        failOn(d->path, EBUSY);
    d->openTarget();
}

void AtomicFile::write(const char *data, qint64 size)
{
    if (!internal::writeAll(d->file, data, static_cast<std::size_t>(size)))
        failOn(d->path);
}

void AtomicFile::openNew()
{
    if (d->file.isValid())
        failOn(d->path, EBUSY);
    d->target = systemPath(d->path);
    d->isNew = true;
    d->openTemporary(kModeOfNewFiles);
}

void AtomicFile::commit()
{
    if (!d->isNew)
        (void)d->replaceTarget(nullptr);
    else if (!d->takeNewName())
        failOn(d->path, EEXIST);
}

AtomicFile::Losses AtomicFile::losses() const noexcept
{
    return d->losses;
}

void AtomicFile::replace(const QString &path, const QByteArray &content)
{
    (void)replaceWithReport(path, content);
}

AtomicFile::Losses AtomicFile::replaceWithReport(const QString &path, const QByteArray &content)
{
    const SignalsHeldBack signalsHeldBack;
    AtomicFile file(path);
    file.open();
    file.write(content);
    file.commit();
    return file.losses();
}

AtomicFile::Outcome AtomicFile::replaceUnchanged(const QString &path, const QByteArray &before,
                                                 const QByteArray &content)
{
    const SignalsHeldBack signalsHeldBack;
    AtomicFile file(path);
    file.open();
    file.write(content);
    const bool isReplaced = file.d->replaceTarget(&before);
    return {isReplaced, isReplaced ? file.losses() : Losses()};
}

QStringList AtomicFile::describe(Losses losses)
{
    const struct
    {
        Loss loss;
        const char *text;
    } rows[] = {
        {Loss::Owner, "the file belongs to another owner now"},
        {Loss::Group, "the file belongs to another group now"},
        {Loss::AccessList, "the access list is lost: only the owner has access"},
        {Loss::Attributes, "extended attributes are lost"},
        {Loss::Mode, "the mode allows less than before"},
        {Loss::OtherNames, "other hard links keep the old content"},
    };
    QStringList texts;
    for (const auto &row : rows)
        if (losses.testFlag(row.loss))
            texts += QString::fromLatin1(row.text);
    return texts;
}

AtomicFile::Losses AtomicFile::replaceText(const QString &path, const QString &text)
{
    const SignalsHeldBack signalsHeldBack;
    AtomicFile file(path);
    file.open();
    internal::encodeUtf8(text, [&file](const QByteArray &piece) { file.write(piece); });
    file.commit();
    return file.losses();
}

bool AtomicFile::create(const QString &path, const QByteArray &content)
{
    const SignalsHeldBack signalsHeldBack;
    AtomicFile file(path);
    file.openNew();
    file.write(content);
    return file.d->takeNewName();
}

} // namespace vn
