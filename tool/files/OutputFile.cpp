// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/OutputFile.h"

#include "tool/cli/ToolError.h"

#include "base/AtomicFile.h"
#include "base/Exceptions.h"

namespace vn::tool {

namespace {

void warnOfLosses(AtomicFile::Losses losses, const QString &path, Output &out)
{
    for (const QString &text : AtomicFile::describe(losses))
        out.warn(path, text);
}

} // namespace

void writeFileAtomically(const QString &path, const QByteArray &content, Output &out)
{
    try {
        warnOfLosses(AtomicFile::replaceWithReport(path, content), path, out);
    } catch (const FileException &e) {
        throw ToolError(ExitCode::OutputFailed, e.reason()).at(path);
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
        throw ToolError(ExitCode::OutputFailed, e.reason()).at(path);
    }
}

bool writeNewFileAtomically(const QString &path, const QByteArray &content)
{
    try {
        return AtomicFile::create(path, content);
    } catch (const FileException &e) {
        throw ToolError(ExitCode::OutputFailed, e.reason()).at(path);
    }
}

} // namespace vn::tool
