// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/OutputFile.h"

#include "tool/cli/ToolError.h"

#include "base/AtomicFile.h"
#include "base/Exceptions.h"

namespace vn::tool {

void writeFileAtomically(const QString &path, const QByteArray &content)
{
    try {
        AtomicFile::replace(path, content);
    } catch (const FileException &e) {
        throw outputError(e, path);
    }
}

bool writeNewFileAtomically(const QString &path, const QByteArray &content)
{
    try {
        return AtomicFile::create(path, content);
    } catch (const FileException &e) {
        throw outputError(e, path);
    }
}

} // namespace vn::tool
