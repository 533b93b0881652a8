// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/AtomicFile.h"

#include "base/AtomicFile_p.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vn {

using namespace internal;

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
    std::size_t nextToRename = 0;  // where rename() looks first
};

QByteArray AtomicFiles::Private::bareName(const QString &name) const
{
    const QByteArray bytes = QFile::encodeName(name);
    if (bytes.isEmpty() || bytes == "." || bytes == ".." || bytes.contains('/') ||
        bytes.contains('\0'))
        failOn(path + QLatin1Char('/') + name, EINVAL);
    return bytes;
}

void AtomicFiles::Private::makeWaitingRoom()
{
    if (waiting.isValid())
        return;
    openFolderOnce();
    const QByteArray name = temporaryName();
    if (!folder.isValid() || ::mkdirat(folder.get(), name.constData(), 0700) != 0)
        failOn(path);
    waitingRoom = name;
    waiting = FileDescriptor(retried([&] {
        return ::openat(folder.get(), name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    }));
    if (!waiting.isValid()) {
        const int error = errno;
        removeWaitingRoom(); // another call makes another one
        failOn(path, error);
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
        failOn(d->pathOf(bytes));
    d->names.push_back(bytes); // there is room
    if (!internal::writeAll(file, content.constData(), static_cast<std::size_t>(content.size())) ||
        !file.close()) {
        const int error = errno;
        (void)::unlinkat(d->waiting.get(), bytes.constData(), 0); // the error is the one above
        d->names.pop_back();
        failOn(d->pathOf(bytes), error);
    }
    return true;
}

bool AtomicFiles::rename(const QString &name, const QString &newName)
{
    const QByteArray from = d->bareName(name);
    const QByteArray to = d->bareName(newName);
    // From where the last one was: those that commit() gives back are asked for in their order.
    const auto hint =
        d->names.begin() + static_cast<std::ptrdiff_t>(std::min(d->nextToRename, d->names.size()));
    auto place = std::find(hint, d->names.end(), from);
    if (place == d->names.end()) {
        place = std::find(d->names.begin(), hint, from);
        place = place == hint ? d->names.end() : place;
    }
    if (place == d->names.end())
        failOn(d->pathOf(from), ENOENT);
    d->nextToRename = static_cast<std::size_t>(place - d->names.begin());
    if (Private::isThere(d->folder, to))
        return false;
    if (!renameToNew(d->waiting.get(), from, d->waiting.get(), to)) {
        if (errno == EEXIST)
            return false;
        failOn(d->pathOf(from));
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
        failOn(d->path);
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
        failOn(d->pathOf(refused), error);
    return taken;
}

} // namespace vn
