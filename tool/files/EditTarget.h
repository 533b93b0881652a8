// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_EDITTARGET_H
#define VN_TOOL_FILES_EDITTARGET_H

#include "tool/cli/Arguments.h"
#include "tool/cli/Output.h"
#include "tool/files/ConfigSources.h"
#include "tool/files/ConfigTextFile.h"

#include "config/VanteroConfigText.h"

#include <QtCore/QVector>

#include <functional>
#include <optional>

namespace vn::tool {

/** Where edited texts go: the options that all editing commands share, and the files they edit. */
class EditTarget
{
public:
    /** What a command makes of a file. */
    struct Edited
    {
        QString text;
        /** Where it differs: places in the original text. */
        QVector<VanteroConfigText::Splice> edits;
        /** What the user should know once it is done; the file is added. */
        QVector<ToolError> notes = {};
    };

    /** The files to be edited; the command declares them as its argument. */
    QStringList &names() { return m_sources.names(); }

    /** Declares --recursive, --output, --in-place and --dry-run, and says in the help what they
     * do. */
    void declare(Arguments &arguments);

    /**
     * Edits each of the files by @p edit and hands the texts to where the options say: standard
     * output, a file, the input itself, or as unified diffs to standard output. Of several files,
     * one that fails stays as it is, and the rest goes on.
     * @throws ToolError of one file: when @p edit throws it, when the file's encoding cannot hold
     *         the text, or when it cannot be written; of several: when nothing says where they go
     */
    ExitCode run(Output &out, const std::function<Edited(const ConfigTextFile &)> &edit);

private:
    void requireReplaceable(const QString &inputName) const;
    void deliver(const ConfigTextFile &original, const Edited &edited, Output &out) const;

    ConfigSources m_sources{0};
    std::optional<QString> m_outputName;
    bool m_inPlace = false;
    bool m_dryRun = false;
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_EDITTARGET_H
