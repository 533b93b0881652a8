// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/AtomicFile.h"

#include "base/DeviceIo_p.h"
#include "base/Exceptions.h"
#include "base/FileDescriptor_p.h"
#include "base/Utf8_p.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vn {

namespace {

using internal::FileDescriptor;
using internal::retried;

constexpr mode_t kModeOfNewFiles = 0666; // the system takes the mask off
constexpr mode_t kPrivateMode = 0600;    // until the mode of the old file is known to fit

[[noreturn]] void fail(const QString &path, int error)
{
    throw FileException(path, error);
}

/** Raises the error of the latest system call. */
[[noreturn]] void fail(const QString &path)
{
    fail(path, errno); // taken before the exception asks for memory, which may change it
}

/** By the system's random numbers: those of Qt's own generator are the same in forked processes. */
QByteArray temporaryName()
{
    return ".vantero-" + QByteArray::number(QRandomGenerator::system()->generate64(), 36);
}

QByteArray folderOf(const QByteArray &path)
{
    const int slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray("./") : path.left(slash + 1);
}

FileDescriptor openFolder(const QByteArray &path)
{
    return FileDescriptor(
        retried([&] { return ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
}

/** Has the names in a folder survive a power cut. The contents have arrived by then: a folder that
 * cannot be synchronised is no failure of the write. */
void synchronise(const FileDescriptor &folder)
{
    if (folder.isValid())
        (void)::fsync(folder.get());
}

/** Renames in or between folders, but only where nothing is called @p newName; otherwise errno is
 * EEXIST. */
bool renameToNew(int folder, const QByteArray &name, int newFolder, const QByteArray &newName)
{
    const char *from = name.constData();
    const char *to = newName.constData();
    if (::renameat2(folder, from, newFolder, to, RENAME_NOREPLACE) == 0)
        return true;
    // Not every file system knows this; where links are, they do.
    if (errno != EINVAL || ::linkat(folder, from, newFolder, to, 0) != 0)
        return false;
    (void)::unlinkat(folder, from, 0); // the new name is there, which is what counts
    return true;
}

/** The path of the file that Qt finds by @p path in its search paths; @p path for any other. */
QByteArray systemPath(const QString &path)
{
    const QFileInfo file(path);
    const bool isFoundByQt = internal::isQtPath(path) && file.exists();
    const QString found = isFoundByQt ? file.absoluteFilePath() : path;
    if (found.startsWith(QLatin1Char(':')))
        fail(path, EROFS); // a resource
    const QByteArray name = QFile::encodeName(found);
    if (name.contains('\0'))
        fail(path, EINVAL);
    return name;
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
    constexpr int kMostLinks = 40; // as the kernel has it
    for (int i = 0; i < kMostLinks; ++i) {
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
    fail(path, ELOOP);
}

/** Gives the new file the mode and the owner of the one that it replaces. */
bool takeOver(const FileDescriptor &file, const struct stat &old)
{
    mode_t mode = old.st_mode & 07777;
    struct stat current = {};
    if (::fstat(file.get(), &current) != 0)
        return false;
    if (current.st_uid != old.st_uid || current.st_gid != old.st_gid) {
        // Another user's file: without the right to give it away, the group alone may do, and the
        // special bits must not come to work for somebody else.
        if (::fchown(file.get(), old.st_uid, old.st_gid) != 0) {
            mode &= ~mode_t(S_ISUID | S_ISGID);
            if (::fchown(file.get(), uid_t(-1), old.st_gid) != 0)
                mode &= ~mode_t(S_IRWXG);
        }
    }
    return ::fchmod(file.get(), mode) == 0;
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
    void replaceTarget();
    bool takeNewName();

    const QString path;
    QByteArray target;
    QByteArray temporary; // empty where there is none
    FileDescriptor file;
};

/** Opens what is to be written for a target that may be there. */
void AtomicFile::Private::openTarget()
{
    const Target found = resolveLinks(path);
    target = found.path;
    struct stat old = {};
    const bool exists = ::stat(target.constData(), &old) == 0;
    if (!exists && errno != ENOENT)
        fail(path);
    if (exists && S_ISDIR(old.st_mode))
        fail(path, EISDIR);
    if (found.openFile >= 0 || (exists && !S_ISREG(old.st_mode))) {
        file = FileDescriptor(
            found.openFile >= 0 ? ::fcntl(found.openFile, F_DUPFD_CLOEXEC, 0) : retried([&] {
                return ::open(target.constData(), O_WRONLY | O_CLOEXEC);
            }));
        if (!file.isValid())
            fail(path);
        return;
    }
    // A rename asks only the folder; a file marked as not writable is not to be changed.
    if (exists && ::faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0)
        fail(path);
    openTemporary(exists ? kPrivateMode : kModeOfNewFiles);
    if (exists && !takeOver(file, old))
        fail(path);
}

void AtomicFile::Private::openTemporary(mode_t mode)
{
    const QByteArray name = folderOf(target) + temporaryName();
    file = FileDescriptor(retried(
        [&] { return ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); }));
    if (!file.isValid())
        fail(path);
    temporary = name;
}

/** Has a temporary file reach the disk. */
void AtomicFile::Private::finishWriting()
{
    const bool isOnDisk = temporary.isEmpty() || ::fsync(file.get()) == 0;
    if (!isOnDisk || !file.close())
        fail(path);
}

void AtomicFile::Private::replaceTarget()
{
    finishWriting();
    if (temporary.isEmpty())
        return;
    if (::rename(temporary.constData(), target.constData()) != 0)
        fail(path);
    temporary.clear();
    synchronise(openFolder(folderOf(target)));
}

/** The same where nothing is to be replaced; false where something is there. */
bool AtomicFile::Private::takeNewName()
{
    finishWriting();
    if (!renameToNew(AT_FDCWD, temporary, AT_FDCWD, target)) {
        if (errno == EEXIST)
            return false;
        fail(path);
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
        fail(d->path, EBUSY);
    d->openTarget();
}

void AtomicFile::write(const char *data, qint64 size)
{
    if (!internal::writeAll(d->file, data, static_cast<std::size_t>(size)))
        fail(d->path);
}

void AtomicFile::commit()
{
    d->replaceTarget();
}

void AtomicFile::replace(const QString &path, const QByteArray &content)
{
    const SignalsHeldBack signalsHeldBack;
    AtomicFile file(path);
    file.open();
    file.write(content);
    file.commit();
}

void AtomicFile::replaceText(const QString &path, const QString &text)
{
    const SignalsHeldBack signalsHeldBack;
    AtomicFile file(path);
    file.open();
    internal::encodeUtf8(text, [&file](const QByteArray &piece) { file.write(piece); });
    file.commit();
}

bool AtomicFile::create(const QString &path, const QByteArray &content)
{
    const SignalsHeldBack signalsHeldBack;
    AtomicFile file(path);
    file.d->target = systemPath(path);
    file.d->openTemporary(kModeOfNewFiles);
    file.write(content);
    return file.d->takeNewName();
}

class Q_DECL_HIDDEN AtomicFiles::Private
{
public:
    explicit Private(const QString &name)
        : path(name)
    {
    }
    Private(const Private &) = delete; // removes the files once
    Private &operator=(const Private &) = delete;
    ~Private()
    {
        for (const QByteArray &name : names)
            (void)::unlinkat(waiting.get(), name.constData(), 0);
        removeWaitingRoom();
    }

    QString pathOf(const QByteArray &name) const
    {
        return path + QLatin1Char('/') + QFile::decodeName(name);
    }
    QByteArray bareName(const QString &name) const;
    void openFolderOnce()
    {
        if (!folder.isValid())
            folder = openFolder(systemPath(path));
    }
    void makeWaitingRoom();
    void removeWaitingRoom();

    static bool isThere(const FileDescriptor &folder, const QByteArray &name)
    {
        struct stat status = {};
        return folder.isValid() &&
               ::fstatat(folder.get(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    }

    const QString path;
    FileDescriptor folder;
    QByteArray waitingRoom; // the name of the hidden folder; empty where there is none
    FileDescriptor waiting;
    std::vector<QByteArray> names; // of the files in there, in their order
};

QByteArray AtomicFiles::Private::bareName(const QString &name) const
{
    const QByteArray bytes = QFile::encodeName(name);
    if (bytes.isEmpty() || bytes == "." || bytes == ".." || bytes.contains('/') ||
        bytes.contains('\0'))
        fail(path + QLatin1Char('/') + name, EINVAL);
    return bytes;
}

void AtomicFiles::Private::makeWaitingRoom()
{
    if (waiting.isValid())
        return;
    openFolderOnce();
    const QByteArray name = temporaryName();
    if (!folder.isValid() || ::mkdirat(folder.get(), name.constData(), 0700) != 0)
        fail(path);
    waitingRoom = name;
    waiting = FileDescriptor(retried([&] {
        return ::openat(folder.get(), name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    }));
    if (!waiting.isValid()) {
        const int error = errno;
        removeWaitingRoom(); // another call makes another one
        fail(path, error);
    }
}

void AtomicFiles::Private::removeWaitingRoom()
{
    (void)waiting.close(); // only read from
    if (!waitingRoom.isEmpty())
        (void)::unlinkat(folder.get(), waitingRoom.constData(), AT_REMOVEDIR);
    waitingRoom.clear();
}

AtomicFiles::AtomicFiles(const QString &folder)
    : d(std::make_unique<Private>(folder))
{
}

AtomicFiles::~AtomicFiles() = default;

bool AtomicFiles::contains(const QString &name) const
{
    const QByteArray bytes = d->bareName(name);
    d->openFolderOnce(); // without one nothing is taken
    return Private::isThere(d->folder, bytes) || Private::isThere(d->waiting, bytes);
}

bool AtomicFiles::add(const QString &name, const QByteArray &content)
{
    const QByteArray bytes = d->bareName(name);
    d->makeWaitingRoom();
    if (Private::isThere(d->folder, bytes))
        return false;
    if (d->names.size() == d->names.capacity())
        d->names.reserve(2 * d->names.size() + 1); // before there is something to be forgotten
    FileDescriptor file(retried([&] {
        return ::openat(d->waiting.get(), bytes.constData(),
                        O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kModeOfNewFiles);
    }));
    if (!file.isValid() && errno == EEXIST)
        return false;
    if (!file.isValid())
        fail(d->pathOf(bytes));
    d->names.push_back(bytes); // there is room
    if (!internal::writeAll(file, content.constData(), static_cast<std::size_t>(content.size())) ||
        !file.close()) {
        const int error = errno;
        (void)::unlinkat(d->waiting.get(), bytes.constData(), 0); // the error is the one above
        d->names.pop_back();
        fail(d->pathOf(bytes), error);
    }
    return true;
}

bool AtomicFiles::rename(const QString &name, const QString &newName)
{
    const QByteArray from = d->bareName(name);
    const QByteArray to = d->bareName(newName);
    const auto place = std::find(d->names.begin(), d->names.end(), from);
    if (place == d->names.end())
        fail(d->pathOf(from), ENOENT);
    if (Private::isThere(d->folder, to))
        return false;
    if (!renameToNew(d->waiting.get(), from, d->waiting.get(), to)) {
        if (errno == EEXIST)
            return false;
        fail(d->pathOf(from));
    }
    *place = to;
    return true;
}

int AtomicFiles::count() const noexcept
{
    return static_cast<int>(d->names.size());
}

QStringList AtomicFiles::commit()
{
    QStringList taken;
    if (d->names.empty())
        return taken;
    // One look of the disk at all files, where fsync() would be one for each.
    if (::syncfs(d->folder.get()) != 0)
        fail(d->path);
    std::vector<QByteArray> left;
    left.reserve(d->names.size());
    int error = 0;
    QByteArray refused;
    for (const QByteArray &name : std::exchange(d->names, {})) {
        if (error == 0 && renameToNew(d->waiting.get(), name, d->folder.get(), name))
            continue;
        left.push_back(name);
        if (error != 0)
            continue;
        if (errno == EEXIST) {
            taken.append(QFile::decodeName(name));
        } else {
            error = errno;
            refused = name;
        }
    }
    d->names = std::move(left);
    if (d->names.empty())
        d->removeWaitingRoom();
    synchronise(d->folder);
    if (error != 0)
        fail(d->pathOf(refused), error);
    return taken;
}

} // namespace vn
