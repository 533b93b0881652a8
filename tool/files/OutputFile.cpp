// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/OutputFile.h"

#include "tool/cli/FileNameCodec.h"
#include "tool/cli/ToolError.h"

#include <QtCore/QFile>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vn::tool {

namespace {

/** Ends the write with the text of errno. */
[[noreturn]] void fail(const QString &path)
{
    throw ToolError(ExitCode::OutputFailed, QString::fromLocal8Bit(std::strerror(errno))).at(path);
}

/** A file descriptor that is closed when it goes. */
class Descriptor
{
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    Descriptor(const Descriptor &) = delete; // closed once
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }

    int number() const { return m_number; }

    bool write(const QByteArray &bytes) const
    {
        for (int done = 0; done < bytes.size();) {
            const ssize_t written =
                ::write(m_number, bytes.constData() + done, std::size_t(bytes.size() - done));
            if (written < 0 && errno != EINTR)
                return false;
            if (written > 0)
                done += int(written);
        }
        return true;
    }

    bool close()
    {
        const int number = m_number;
        m_number = -1;
        return ::close(number) == 0 || errno == EINTR;
    }

private:
    int m_number;
};

/** Holds back the signals that users end programs with, so that no temporary file stays behind. */
class SignalsHeldBack
{
public:
    SignalsHeldBack()
    {
        sigset_t signalSet;
        sigemptyset(&signalSet);
        for (const int number : {SIGHUP, SIGINT, SIGTERM})
            sigaddset(&signalSet, number);
        sigprocmask(SIG_BLOCK, &signalSet, &m_before);
    }
    SignalsHeldBack(const SignalsHeldBack &) = delete;
    SignalsHeldBack &operator=(const SignalsHeldBack &) = delete;
    ~SignalsHeldBack() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before;
};

/** A new file that is removed when it goes, unless it has taken its final name. */
class TemporaryFile
{
public:
    explicit TemporaryFile(QByteArray pattern)
        : m_path(std::move(pattern))
        , m_descriptor(::mkostemp(m_path.data(), O_CLOEXEC))
        , m_exists(m_descriptor.number() >= 0)
    {
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;
    ~TemporaryFile()
    {
        if (m_exists)
            ::unlink(m_path.constData());
    }

    bool exists() const { return m_exists; }
    Descriptor &descriptor() { return m_descriptor; }

    bool rename(const QByteArray &target)
    {
        if (::rename(m_path.constData(), target.constData()) != 0)
            return false;
        m_exists = false;
        return true;
    }

    /** The same, but only where nothing is called @p target; otherwise errno is EEXIST. */
    bool renameToNew(const QByteArray &target)
    {
        if (::renameat2(AT_FDCWD, m_path.constData(), AT_FDCWD, target.constData(),
                        RENAME_NOREPLACE) == 0) {
            m_exists = false;
            return true;
        }
        // Not every file system knows this; where links are, they do. The old name goes later.
        return errno == EINVAL && ::link(m_path.constData(), target.constData()) == 0;
    }

private:
    QByteArray m_path;
    Descriptor m_descriptor;
    bool m_exists;
};

/** The number of the open file that the kernel's link @p path stands for, as /dev/stdout leads to
 * one; -1 for any other path. */
int openFileNumber(const QByteArray &path)
{
    for (const char *folder : {"/proc/self/fd/", "/dev/fd/"}) {
        bool ok = false;
        const int number = path.mid(int(std::strlen(folder))).toInt(&ok);
        if (path.startsWith(folder) && ok)
            return number;
    }
    return -1;
}

/** Where a path leads to through all symbolic links. */
struct Target
{
    QByteArray path; // need not be there
    int openFile;    // its number where the path is just another name for it, or -1
};

Target resolveLinks(const QString &path)
{
    QByteArray current = QFile::encodeName(path);
    constexpr int kMostLinks = 40; // as the kernel has it
    for (int i = 0; i < kMostLinks; ++i) {
        char target[PATH_MAX];
        const ssize_t length = ::readlink(current.constData(), target, sizeof target);
        if (openFileNumber(current) >= 0)
            return {current, openFileNumber(current)};
        if (length < 0)
            return {current, -1}; // no link
        QByteArray next(target, int(length));
        const int slash = current.lastIndexOf('/');
        if (!next.startsWith('/') && slash >= 0)
            next.prepend(current.left(slash + 1));
        current = next;
    }
    errno = ELOOP;
    fail(path);
}

mode_t modeOfNewFiles()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/** Gives the new file the mode and the owner of the one that it replaces. */
bool takeOver(const Descriptor &file, const struct stat &old)
{
    mode_t mode = old.st_mode & 07777;
    struct stat current = {};
    if (::fstat(file.number(), &current) != 0)
        return false;
    if (current.st_uid != old.st_uid || current.st_gid != old.st_gid) {
        // Another user's file: without the right to give it away, the group alone may do, and the
        // special bits must not come to work for somebody else.
        if (::fchown(file.number(), old.st_uid, old.st_gid) != 0) {
            mode &= mode_t(~(S_ISUID | S_ISGID));
            if (::fchown(file.number(), uid_t(-1), old.st_gid) != 0)
                mode &= mode_t(~S_IRWXG);
        }
    }
    return ::fchmod(file.number(), mode) == 0;
}

void writeThrough(const QString &path, int number, const QByteArray &content)
{
    Descriptor file(number);
    if (file.number() < 0 || !file.write(content) || !file.close())
        fail(path);
}

QByteArray folderOf(const QByteArray &path)
{
    const int slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray("./") : path.left(slash + 1);
}

/** Writes @p content to the disk; the file is closed afterwards. */
bool writeToDisk(Descriptor &file, const QByteArray &content)
{
    return file.write(content) && ::fsync(file.number()) == 0 && file.close();
}

/** The name, too, is to survive a power cut. The content has arrived by now: a folder that cannot
 * be synchronised is no failure of the write. */
void synchronise(const QByteArray &folder)
{
    const Descriptor directory(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.number() >= 0)
        (void)::fsync(directory.number());
}

const char kTemporaryPattern[] = ".vantero-formats-XXXXXX";

} // namespace

void writeFileAtomically(const QString &path, const QByteArray &content)
{
    const auto [target, openFile] = resolveLinks(path);
    struct stat old = {};
    const bool exists = ::stat(target.constData(), &old) == 0;
    if (!exists && errno != ENOENT)
        fail(path);
    if (exists && S_ISDIR(old.st_mode)) {
        errno = EISDIR;
        fail(path);
    }
    if (openFile >= 0) {
        writeThrough(path, ::dup(openFile), content);
        return;
    }
    if (exists && !S_ISREG(old.st_mode)) {
        writeThrough(path, ::open(target.constData(), O_WRONLY | O_CLOEXEC), content);
        return;
    }
    // A rename asks only the folder; a file marked as not writable is not to be changed.
    if (exists && ::faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0)
        fail(path);

    const QByteArray folder = folderOf(target);
    const SignalsHeldBack signalsHeldBack;
    TemporaryFile file(folder + kTemporaryPattern);
    if (!file.exists())
        fail(path);
    const bool ready = exists ? takeOver(file.descriptor(), old)
                              : ::fchmod(file.descriptor().number(), modeOfNewFiles()) == 0;
    if (!ready || !writeToDisk(file.descriptor(), content) || !file.rename(target))
        fail(path);
    synchronise(folder);
}

bool writeNewFileAtomically(const QString &path, const QByteArray &content)
{
    const QByteArray target = QFile::encodeName(path);
    const QByteArray folder = folderOf(target);
    const SignalsHeldBack signalsHeldBack;
    TemporaryFile file(folder + kTemporaryPattern);
    if (!file.exists() || ::fchmod(file.descriptor().number(), modeOfNewFiles()) != 0 ||
        !writeToDisk(file.descriptor(), content))
        fail(path);
    if (!file.renameToNew(target)) {
        if (errno == EEXIST)
            return false;
        fail(path);
    }
    synchronise(folder);
    return true;
}

} // namespace vn::tool
