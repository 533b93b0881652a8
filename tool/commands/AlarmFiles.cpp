// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/AlarmFiles.h"

#include "tool/cli/FindingsPrinter.h"
#include "tool/files/Input.h"

#include "alarm/AlarmLint.h"
#include "base/Exceptions.h"

namespace vn::tool {

namespace {

/** What reading loses among @p findings. What is shown all the same, as the second value of a key
 * and the backslashes of escapes, is not lost. */
Findings lossesOf(const Findings &findings, bool keepsRepeated)
{
    Findings losses;
    for (const Finding &each : findings)
        if (each.severity == Finding::Severity::Warning &&
            each.code != QLatin1String("escape-not-decoded") &&
            (each.code != QLatin1String("key-repeated") || !keepsRepeated))
            losses += each;
    return losses;
}

Json result(const QString &name, const char *member, const AlarmTree &tree)
{
    QStringList repeated;
    const Json value = tree.toJson(repeated);
    Json json = Json::object({{"file", name}});
    json.insert(QString::fromUtf8(member), value);
    if (!repeated.isEmpty())
        json.insert(QStringLiteral("repeatedKeys"), Json::array(repeated));
    return json;
}

} // namespace

void AlarmFiles::declare(Arguments &arguments, const char *what)
{
    arguments.describe(
        "Of several files each begins with a line \"# FILE\"; what cannot be shown is "
        "told, and the others go on.");
    arguments.files("FILE", what, m_names);
    arguments.json();
}

void AlarmFiles::warnOfLosses(const QByteArray &bytes, const QString &name, qint64 line,
                              Output &out) const
{
    if (out.json()) // which has no place for it
        return;
    Findings losses = m_areUpdates ? lossesOf(alarmUpdateFindings(bytes), false)
                                   : lossesOf(alarmListFindings(bytes), true);
    for (Finding &each : losses)
        each.range.line += int(line) - 1;
    if (const auto warning =
            warningOf(losses, name, m_areUpdates ? "alarms lint --updates" : "alarms lint"))
        out.complain(*warning);
}

AlarmTree AlarmFiles::treeOf(const QString &name, const Read &read, Output &out) const
{
    const QByteArray bytes = readInput(name);
    try {
        const AlarmTree tree = read(bytes);
        warnOfLosses(bytes, name, 1, out);
        return tree;
    } catch (const ParseException &e) {
        throw alarmError(e, name, bytes);
    }
}

ExitCode AlarmFiles::show(Output &out, const char *name, const Read &read)
{
    if (m_names.size() == 1) {
        const AlarmTree tree = treeOf(m_names.first(), read, out);
        if (out.json())
            out.setResult(Json::listed("files", Json::array({result(m_names.first(), name, tree)}),
                                       true, &m_work.errors()));
        else
            out.print(tree.toText());
        return ExitCode::Done;
    }
    Json files = Json::array();
    bool isFirst = true;
    m_work.forEach(out, m_names, [&](const QString &file) {
        const AlarmTree tree = treeOf(file, read, out);
        if (out.json())
            files.append(result(file, name, tree));
        else
            out.print((isFirst ? QString() : QStringLiteral("\n")) + QStringLiteral("# ") + file +
                      QLatin1Char('\n') + tree.toText());
        isFirst = false;
    });
    if (out.json())
        out.setResult(Json::listed("files", files, false, &m_work.errors()));
    return m_work.exitCode();
}

} // namespace vn::tool
