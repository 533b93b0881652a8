// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_EDITTARGET_H
#define VN_TOOL_FILES_EDITTARGET_H

#include "tool/cli/Arguments.h"
#include "tool/cli/Output.h"
#include "tool/files/ConfigTextFile.h"

#include <optional>

namespace vn::tool {

/** Where an edited text goes: the options that all editing commands share. */
class EditTarget
{
public:
    /** Declares --output, --in-place and --dry-run, and says in the help what they do. */
    void declare(Arguments &arguments);

    /** Refuses an input that cannot be replaced; to be called before it is read.
     * @throws ToolError (bad input) */
    void requireReplaceable(const QString &inputName) const;

    /**
     * Hands the text that @p original became to where the options say: standard output, a file, the
     * input itself, or as a unified diff to standard output.
     * @throws ToolError when the file's encoding cannot hold it, or it cannot be written
     */
    void deliver(const ConfigTextFile &original, const QString &edited, Output &out) const;

private:
    std::optional<QString> m_outputName;
    bool m_inPlace = false;
    bool m_dryRun = false;
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_EDITTARGET_H
