// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/EditTarget.h"

#include "tool/cli/FileNameCodec.h"
#include "tool/cli/ToolError.h"
#include "tool/files/OutputFile.h"
#include "tool/files/UnifiedDiff.h"

#include <QtCore/QFileInfo>

namespace vn::tool {

void EditTarget::declare(Arguments &arguments)
{
    arguments.describe(
        "The edited text goes to standard output. Bytes outside the changed lines stay as they "
        "are: encoding (UTF-8 or Latin-1), byte order mark and line ends included.");
    arguments.fileOption("--output", "FILE", "write the text to this file instead", m_outputName);
    arguments.flag("--in-place",
                   "replace the input: the file is the old or the new one at any time, and keeps "
                   "its mode",
                   m_inPlace);
    arguments.flag("--dry-run", "print what would change as a unified diff; write nothing",
                   m_dryRun);
    arguments.exclude("--in-place", "--output");
    arguments.exclude("--dry-run", "--output");
    arguments.exclude("--dry-run", "--in-place");
}

void EditTarget::requireReplaceable(const QString &inputName) const
{
    if (!m_inPlace)
        return;
    if (inputName == QLatin1String("-"))
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("standard input cannot be edited in place"));
    const QFileInfo info(inputName);
    if (info.exists() && !info.isFile())
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("no regular file, so it cannot be edited in place"))
            .at(inputName);
}

void EditTarget::deliver(const ConfigTextFile &original, const QString &edited, Output &out) const
{
    const QByteArray bytes = original.encode(edited);
    if (m_dryRun)
        out.print(unifiedDiff(original.bytes(), bytes, toOutputBytes(original.name())));
    else if (m_inPlace && bytes != original.bytes())
        writeFileAtomically(original.name(), bytes);
    else if (m_outputName && *m_outputName != QLatin1String("-"))
        writeFileAtomically(*m_outputName, bytes);
    else if (!m_inPlace)
        out.print(bytes);
}

} // namespace vn::tool
