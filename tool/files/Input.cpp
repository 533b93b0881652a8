// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/Input.h"

#include "tool/cli/ToolError.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <unistd.h>

namespace vn::tool {

QString readFailure(const QFileDevice &file)
{
    return QFileInfo(file.fileName()).isDir() ? QLatin1String(kFolderNotFile) : file.errorString();
}

QString withPasswordHint(const QString &reason, ArchiveError error, const char *option)
{
    switch (error) {
    case ArchiveError::NeedsPassword:
    case ArchiveError::WrongPassword:
    case ArchiveError::DamagedOrWrongPassword:
        return reason +
               QStringLiteral("; %1 names the file that has it").arg(QLatin1String(option));
    default:
        return reason;
    }
}

QByteArray readInput(const QString &name)
{
    if (name.isEmpty())
        throw ToolError(ExitCode::BadInput, QStringLiteral("the name of a file is empty"));
    QFile file(name);
    const bool opened = name == QLatin1String("-") ? file.open(STDIN_FILENO, QIODevice::ReadOnly)
                                                   : file.open(QIODevice::ReadOnly);
    const auto failure = [&] { return ToolError(ExitCode::BadInput, readFailure(file)).at(name); };
    if (!opened)
        throw failure();

    QByteArray bytes;
    constexpr int kPiece = 1 << 16;
    if (!file.isSequential() && file.size() < kMaxInputSize)
        bytes.reserve(int(file.size()) + kPiece);
    for (;;) {
        const int size = bytes.size();
        bytes.resize(size + kPiece);
        const qint64 read = file.read(bytes.data() + size, kPiece);
        if (read < 0 || (read == 0 && file.error() != QFile::NoError))
            throw failure();
        bytes.resize(size + int(read));
        if (read == 0)
            return bytes;
        if (bytes.size() > kMaxInputSize)
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("larger than %1 MiB").arg(kMaxInputSize >> 20))
                .at(name);
    }
}

QByteArray readPassword(const QString &name)
{
    const QByteArray content = readInput(name);
    QByteArray password = content.mid(0, content.indexOf('\n')); // all of it without a line end
    if (password.endsWith('\r'))
        password.chop(1);
    if (password.isEmpty())
        throw ToolError(ExitCode::BadInput, QStringLiteral("no password in the first line"))
            .at(name);
    return password;
}

} // namespace vn::tool
