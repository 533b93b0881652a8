// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/EditTarget.h"

#include "tool/cli/FileNameCodec.h"
#include "tool/cli/ToolError.h"
#include "tool/files/ConfigInput.h"
#include "tool/files/OutputFile.h"
#include "tool/files/UnifiedDiff.h"

#include <QtCore/QFileInfo>

namespace vn::tool {

void EditTarget::declare(Arguments &arguments)
{
    arguments.describe(
        "The edited text goes to standard output. Bytes outside the changed lines stay as they "
        "are: encoding (UTF-8 or Latin-1), byte order mark and line ends included.");
    arguments.describe(
        "Several files, or a folder with --recursive, are edited with --in-place or --dry-run; "
        "with --in-place the changed ones are listed. One that cannot be edited is told and stays "
        "as it is, the rest goes on, and the exit status is 2. In a folder, a file counts when its "
        "first two lines tell the versions.");
    arguments.describe(
        "Edited in place, a file keeps its owner, group, mode, access list and extended "
        "attributes. What cannot be kept is told, and lets others do less than before, never more; "
        "that other hard links keep the old content is told, too. A file that another program has "
        "changed since it was read stays as it is, and the exit status is 3.");
    m_sources.declare(arguments);
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
    if (info.exists() && !info.isFile() && !info.isDir()) // reading refuses folders
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("not a regular file, so it cannot be edited in place"))
            .at(inputName);
}

ExitCode EditTarget::run(Output &out, const std::function<Edited(const ConfigTextFile &)> &edit)
{
    if (m_sources.isOne()) {
        const QString name = m_sources.names().first();
        requireReplaceable(name);
        const ConfigTextFile file(name);
        warnOfLostSection(file.text(), name, out);
        deliver(file, edit(file), out);
        return ExitCode::Done;
    }
    if (!m_inPlace && !m_dryRun)
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("several files are edited only with --in-place or "
                                       "--dry-run"));
    m_sources.forEach(out, [&](const ConfigSource &source) {
        requireReplaceable(source.name);
        const ConfigTextFile file(source);
        warnOfLostSection(file.text(), source.name, out);
        const Edited edited = edit(file);
        deliver(file, edited, out);
        if (m_inPlace && edited.text != file.text())
            out.printLine(source.name + QLatin1String(": changed"));
    });
    return m_sources.exitCode();
}

void EditTarget::deliver(const ConfigTextFile &original, const Edited &edited, Output &out) const
{
    const QByteArray bytes = original.encode(edited.text);
    const QByteArray name = toOutputBytes(original.name());
    if (m_dryRun)
        out.printDiff(unifiedDiff(original.bytes(), bytes, edited.edits, name));
    else if (m_inPlace && bytes != original.bytes())
        rewriteFileAtomically(original.name(), original.bytes(), bytes, out);
    else if (m_outputName && *m_outputName != QLatin1String("-"))
        writeFileAtomically(*m_outputName, bytes, out);
    else if (!m_inPlace)
        out.print(bytes);
    for (const ToolError &note : edited.notes)
        out.complain(note.at(original.name()));
}

} // namespace vn::tool
