// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/FileHandover_p.h"

#include <QtCore/QList>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace vn {

namespace internal {

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";
constexpr mode_t kAllBits = 07777;
constexpr mode_t kOwnerBits = 07700; // with the special ones

/** Whether errno says that there are no attributes, here or at all. */
bool isNoAttribute()
{
    return errno == ENODATA || errno == ENOTSUP || errno == ENOSYS;
}

/** The extended attributes of a file, which need not be open for reading. */
class Attributes
{
public:
    explicit Attributes(const FileDescriptor &file)
        : m_file(file.get())
    {
        const int flags = ::fcntl(m_file, F_GETFL);
        if (flags >= 0 && (flags & O_PATH))
            m_path = "/proc/self/fd/" + QByteArray::number(m_file);
    }

    /** False, with errno, where they cannot be known. */
    bool names(QList<QByteArray> *result) const
    {
        QByteArray list;
        if (!read(&list, [this](char *to, std::size_t size) {
                return m_path.isNull() ? ::flistxattr(m_file, to, size)
                                       : ::listxattr(m_path.constData(), to, size);
            }))
            return false;
        *result = list.split('\0');
        result->removeAll(QByteArray()); // each name ends with a zero byte
        return true;
    }

    bool value(const QByteArray &name, QByteArray *result) const
    {
        return read(result, [&](char *to, std::size_t size) {
            return m_path.isNull() ? ::fgetxattr(m_file, name.constData(), to, size)
                                   : ::getxattr(m_path.constData(), name.constData(), to, size);
        });
    }

private:
    /** Asks for the size first, and again where it has grown meanwhile. */
    template <typename Call>
    static bool read(QByteArray *result, Call &&call)
    {
        for (;;) {
            ssize_t size = call(nullptr, 0);
            if (size > 0) {
                result->resize(static_cast<int>(size));
                size = call(result->data(), static_cast<std::size_t>(size));
            }
            if (size < 0 && errno == ERANGE)
                continue;
            result->resize(static_cast<int>(size < 0 ? 0 : size));
            return size >= 0;
        }
    }

    int m_file;
    QByteArray m_path; // null for one that is open for reading
};

/** Copies the attribute @p name; false where that is not possible. */
bool copyAttribute(const QByteArray &name, const Attributes &from, const FileDescriptor &to)
{
    QByteArray value;
    if (!from.value(name, &value))
        return isNoAttribute(); // gone meanwhile
    QByteArray present;
    if (Attributes(to).value(name, &present) && present == value)
        return true; // as the label that the system gives each file; to set it may be forbidden
    return ::fsetxattr(to.get(), name.constData(), value.constData(),
                       static_cast<std::size_t>(value.size()), 0) == 0;
}

/** What the system has made of the content, and makes of the new one by itself. */
bool isOfTheContent(const QByteArray &name)
{
    return name == "security.ima" || name == "security.evm";
}

/** Copies what says who may do what beyond the mode; @p names are the attributes of the old file.
 * One that the folder has given the new file goes. */
bool copyAccessLists(const QList<QByteArray> &names, const Attributes &from,
                     const FileDescriptor &to)
{
    if (!names.contains(kAccessList) && ::fremovexattr(to.get(), kAccessList) != 0 &&
        !isNoAttribute())
        return false;
    for (const QByteArray &name : names)
        if (name.startsWith("system.") && !copyAttribute(name, from, to))
            return false;
    return true;
}

} // namespace

FileDescriptor openPredecessor(const QByteArray &path)
{
    const auto opened = [&](int flags) {
        return FileDescriptor(
            retried([&] { return ::open(path.constData(), flags | O_NOFOLLOW | O_CLOEXEC); }));
    };
    FileDescriptor file = opened(O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file.isValid())
        file = opened(O_PATH); // it may be for writing only
    struct stat status = {};
    if (file.isValid() && (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)))
        return FileDescriptor();
    return file;
}

bool handOn(const FileDescriptor &old, const FileDescriptor &file, AtomicFile::Losses *losses)
{
    using Loss = AtomicFile::Loss;
    struct stat before = {};
    struct stat after = {};
    if (::fstat(old.get(), &before) != 0 || ::fstat(file.get(), &after) != 0)
        return false;
    mode_t mode = before.st_mode & kAllBits;

    if ((after.st_uid != before.st_uid || after.st_gid != before.st_gid) &&
        ::fchown(file.get(), before.st_uid, before.st_gid) != 0) {
        // Without the right to give it away, the group alone may do, and the special bits must not
        // come to work for somebody else.
        mode &= ~mode_t(S_ISUID | S_ISGID);
        if (after.st_uid != before.st_uid)
            *losses |= Loss::Owner;
        if (after.st_gid != before.st_gid && ::fchown(file.get(), uid_t(-1), before.st_gid) != 0)
            *losses |= Loss::Group;
    }

    // Nobody else is let in before the end, where the mode and the list of those who may are whole.
    const Attributes attributes(old);
    QList<QByteArray> names;
    const bool areNamesKnown = attributes.names(&names) || isNoAttribute();
    for (const QByteArray &name : qAsConst(names))
        if (!name.startsWith("system.") && !isOfTheContent(name) &&
            !copyAttribute(name, attributes, file))
            *losses |= Loss::Attributes;

    // A list names the group of the file without saying which: for another one it would be wrong.
    const bool isOfAnotherGroup = losses->testFlag(Loss::Group) && names.contains(kAccessList);
    if (isOfAnotherGroup || !areNamesKnown || !copyAccessLists(names, attributes, file)) {
        *losses |= Loss::AccessList;
        mode &= kOwnerBits; // whom the list has kept out is not known any more
    } else if (losses->testFlag(Loss::Group)) {
        // Who was of the group may be among all others now, and the other way round.
        const mode_t both = mode >> 3 & mode & S_IRWXO;
        mode = (mode & kOwnerBits) | both << 3 | both;
    }
    if (::fchmod(file.get(), mode) != 0 || ::fstat(file.get(), &after) != 0)
        return false;
    if ((after.st_mode & kAllBits) != (before.st_mode & kAllBits))
        *losses |= Loss::Mode;
    if (before.st_nlink > 1)
        *losses |= Loss::OtherNames;
    return true;
}

} // namespace internal

} // namespace vn
