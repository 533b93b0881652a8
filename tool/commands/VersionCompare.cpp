// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/VersionWords.h"

#include "version/VersionOrder.h"

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
        arguments.flag("-v", "print the component that decides below, with both ranges", m_verbose);
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
                                        {"decided", decidedToJson(left, right)},
                                        {"warnings", Json::array(warnings)}}));
            return ExitCode::Done;
        }
        for (const QString &warning : warnings)
            out.warn(QString(), warning);
        out.printLine(QLatin1String(order) +
                      (pattern.isNull() ? pattern : QStringLiteral(" (%1)").arg(pattern)));
        if (m_verbose)
            out.printLine(decidedText(left, right));
        return ExitCode::Done;
    }

private:
    /** The first component whose ranges do not overlap; -1 where all do. */
    static int deciding(const VanteroSoftwareVersion &left, const VanteroSoftwareVersion &right)
    {
        for (int i = 0; i < kVersionComponents; ++i) {
            if (left.high(i) < right[i] || left[i] > right.high(i))
                return i;
        }
        return -1;
    }

    static QString rangeText(const VanteroSoftwareVersion &version, int i)
    {
        const QString low = QString::number(version[i]);
        return version[i] == version.high(i)
                   ? low
                   : low + QLatin1String(" to ") + QString::number(version.high(i));
    }

    static QString decidedText(const VanteroSoftwareVersion &left,
                               const VanteroSoftwareVersion &right)
    {
        const int i = deciding(left, right);
        if (i < 0)
            return QStringLiteral("all components overlap");
        return QStringLiteral("%1 decides: %2 is %3 %4")
            .arg(versionComponentName(i), rangeText(left, i),
                 left < right ? QStringLiteral("below") : QStringLiteral("above"),
                 rangeText(right, i));
    }

    static Json decidedToJson(const VanteroSoftwareVersion &left,
                              const VanteroSoftwareVersion &right)
    {
        const int i = deciding(left, right);
        if (i < 0)
            return {};
        return Json::object({{"component", versionComponentName(i)},
                             {"a", Json::array({left[i], left.high(i)})},
                             {"b", Json::array({right[i], right.high(i)})}});
    }

    /** How patterns make the two equal; null where none does. */
    static QString patternText(const VanteroSoftwareVersion &left,
                               const VanteroSoftwareVersion &right)
    {
        const auto coversText = [](const QString &pattern, const QString &version) {
            return pattern + QLatin1String(" covers ") + version;
        };
        if (VersionOrder::isPattern(left) && VersionOrder::covers(left, right))
            return coversText(left, right);
        if (VersionOrder::isPattern(right) && VersionOrder::covers(right, left))
            return coversText(right, left);
        if (VersionOrder::isPattern(left) || VersionOrder::isPattern(right))
            return QStringLiteral("the patterns overlap");
        return {};
    }

    bool m_verbose = false;
    QString m_left;
    QString m_right;
};

} // namespace

std::unique_ptr<Command> makeVersionCompare()
{
    return std::make_unique<VersionCompare>();
}

} // namespace vn::tool
