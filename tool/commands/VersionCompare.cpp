// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/Versions.h"

#include <memory>

namespace vn::tool {

namespace {

class VersionCompare : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Prints \"<\", \"=\" or \">\". A pattern equals every version that it covers; where "
            "one is the reason, it is named behind the sign.");
        arguments.text("A", "version or pattern", m_left);
        arguments.text("B", "version or pattern", m_right);
        arguments.json();
        arguments.example("vantero-formats version compare VN-3.0.8.4 'VN-3.0.8.*'",
                          "prints \"= (VN-3.0.8.* covers VN-3.0.8.4)\"");
    }

    ExitCode run(Output &out) override
    {
        const VanteroSoftwareVersion left(m_left);
        const VanteroSoftwareVersion right(m_right);
        const char *const order = left < right ? "<" : left > right ? ">" : "=";
        const QString pattern = left == right ? patternText(left, right) : QString();
        const QStringList warnings = versionWarnings(left) + versionWarnings(right);
        if (out.json()) {
            out.setResult(Json::object({{"a", m_left},
                                        {"b", m_right},
                                        {"order", order},
                                        {"pattern", pattern},
                                        {"warnings", Json::array(warnings)}}));
            return ExitCode::Done;
        }
        for (const QString &warning : warnings)
            out.warn(QString(), warning);
        out.printLine(QLatin1String(order) +
                      (pattern.isNull() ? pattern : QStringLiteral(" (%1)").arg(pattern)));
        return ExitCode::Done;
    }

private:
    /** How patterns make the two equal; null where none does. */
    static QString patternText(const VanteroSoftwareVersion &left,
                               const VanteroSoftwareVersion &right)
    {
        const auto coversText = [](const QString &pattern, const QString &version) {
            return pattern + QLatin1String(" covers ") + version;
        };
        if (isPattern(left) && covers(left, right))
            return coversText(left, right);
        if (isPattern(right) && covers(right, left))
            return coversText(right, left);
        if (isPattern(left) || isPattern(right))
            return QStringLiteral("the patterns overlap");
        return {};
    }

    QString m_left;
    QString m_right;
};

} // namespace

std::unique_ptr<Command> makeVersionCompare()
{
    return std::make_unique<VersionCompare>();
}

} // namespace vn::tool
