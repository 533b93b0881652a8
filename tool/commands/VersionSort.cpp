// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/VersionWords.h"
#include "tool/files/VersionSources.h"

#include "version/VersionOrder.h"

#include <algorithm>
#include <memory>

namespace vn::tool {

namespace {

class VersionSort : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints the versions of a file, one a line, from the lowest to the highest. "
            "A pattern stands behind the lowest version that it covers. Empty lines "
            "are left out.");
        arguments.file("FILE", "a version a line; standard input where it is missing or \"-\"",
                       m_file);
        arguments.optional();
        arguments.json();
        arguments.example("vantero-formats version sort versions.txt",
                          "prints the versions of the file in their order");
    }

    ExitCode run(Output &out) override
    {
        QStringList lines = versionLines(m_file);
        // Each text is read once, not at every comparison.
        QList<VanteroSoftwareVersion> versions;
        for (const QString &line : lines)
            versions.append(line);
        std::sort(versions.begin(), versions.end(), VersionOrder::before);
        std::copy(versions.cbegin(), versions.cend(), lines.begin());
        if (out.json()) {
            out.setResult(Json::object({{"versions", Json::array(lines)}}));
            return ExitCode::Done;
        }
        for (const QString &line : qAsConst(lines)) {
            for (const QString &warning : versionWarnings(line))
                out.warn(m_file, warning);
            out.printLine(line);
        }
        return ExitCode::Done;
    }

private:
    QString m_file = QStringLiteral("-");
};

} // namespace

std::unique_ptr<Command> makeVersionSort()
{
    return std::make_unique<VersionSort>();
}

} // namespace vn::tool
