// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/OutputFile.h"

#include "tool/cli/ToolError.h"

#include "base/AtomicFile.h"
#include "base/Exceptions.h"

#include <cerrno>

namespace vn::tool {

namespace {

void warnOfLosses(AtomicFile::Losses losses, const QString &path, Output &out)
{
    for (const QString &text : AtomicFile::describe(losses))
        out.warn(path, text);
}

ToolError failure(const FileException &e, const QString &path)
{
    return ToolError(ExitCode::OutputFailed,
                     e.systemError() == EISDIR ? QLatin1String(kFolderNotFile) : e.reason())
        .at(path);
}

} // namespace

void writeFileAtomically(const QString &path, const QByteArray &content, Output &out)
{
    try {
        warnOfLosses(AtomicFile::replaceWithReport(path, content), path, out);
    } catch (const FileException &e) {
        throw failure(e, path);
    }
}

void rewriteFileAtomically(const QString &path, const QByteArray &before, const QByteArray &content,
                           Output &out)
{
    try {
        const AtomicFile::Outcome outcome = AtomicFile::replaceUnchanged(path, before, content);
        if (!outcome)
            throw ToolError(ExitCode::OutputFailed,
                            QStringLiteral("changed by another program since it was read, so it "
                                           "stays as it is"))
                .at(path);
        warnOfLosses(outcome.losses, path, out);
    } catch (const FileException &e) {
        throw failure(e, path);
    }
}

bool writeNewFileAtomically(const QString &path, const QByteArray &content)
{
    try {
        return AtomicFile::create(path, content);
    } catch (const FileException &e) {
        throw failure(e, path);
    }
}

} // namespace vn::tool
