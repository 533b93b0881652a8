// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/PathList.h"

#include "tool/cli/FileNameCodec.h"
#include "tool/cli/Interrupt.h"
#include "tool/cli/ToolError.h"

#include <QtCore/QFile>

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace vn::tool {

namespace {

constexpr int kPiece = 1 << 16;
constexpr int kLookForSignalsMs = 100;

ToolError failure(const QString &name)
{
    return ToolError(ExitCode::BadInput, errno == EISDIR
                                             ? QLatin1String(kFolderNotFile)
                                             : QString::fromLocal8Bit(std::strerror(errno)))
        .at(name);
}

} // namespace

PathList::PathList(const QString &name, char separator)
    : m_name(name)
    , m_separator(separator)
    , m_descriptor(name == QLatin1String("-")
                       ? STDIN_FILENO
                       : ::open(QFile::encodeName(name).constData(), O_RDONLY | O_CLOEXEC))
{
    if (m_descriptor < 0)
        throw failure(name);
}

PathList::~PathList()
{
    if (m_descriptor > STDIN_FILENO)
        ::close(m_descriptor); // only read from: an error here loses nothing
}

QStringList PathList::next()
{
    QStringList paths;
    bool isAtEnd = false;
    while (paths.isEmpty() && !isAtEnd) {
        // A signal may come just before the waiting begins, or to another thread.
        pollfd input = {m_descriptor, POLLIN, 0};
        if (::poll(&input, 1, kLookForSignalsMs) <= 0) {
            if (Interrupt::stopped())
                return {};
            continue;
        }
        std::array<char, kPiece> piece;
        const ssize_t count = ::read(m_descriptor, piece.data(), piece.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw failure(m_name);
        isAtEnd = count == 0;
        m_rest.append(piece.data(), int(count));
        QList<QByteArray> words = m_rest.split(m_separator);
        m_rest = isAtEnd ? QByteArray() : words.takeLast();
        for (const QByteArray &word : qAsConst(words))
            if (!word.isEmpty())
                paths += fileNameFromArgument(word);
    }
    return paths;
}

} // namespace vn::tool
