// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/AlarmFiles.h"

#include "tool/cli/ToolError.h"
#include "tool/files/Input.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"

#include <algorithm>

namespace vn::tool {

namespace {

/** The tree of the file @p name. */
AlarmTree treeOf(const QString &name, const AlarmFiles::Read &read, Output &out)
{
    const QByteArray bytes = readInput(name);
    try {
        const AlarmTree tree = read(bytes);
        if (FileUtils::decodeText(bytes) != QString::fromLatin1(bytes))
            out.warn(name, QStringLiteral("the text is UTF-8; it is shown as programs get it, each "
                                          "byte of a character as one of Latin-1"));
        return tree;
    } catch (const ParseException &e) {
        throw alarmError(e, name, bytes);
    }
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

ExitCode AlarmFiles::show(Output &out, const char *name, const Read &read) const
{
    if (m_names.size() == 1) {
        const AlarmTree tree = treeOf(m_names.first(), read, out);
        if (out.json())
            out.setResult(result(m_names.first(), name, tree));
        else
            out.print(tree.toText());
        return ExitCode::Done;
    }
    ExitCode worst = ExitCode::Done;
    Json files = Json::array();
    Json errors = Json::array();
    bool isFirst = true;
    for (const QString &file : m_names) {
        try {
            const AlarmTree tree = treeOf(file, read, out);
            if (out.json())
                files.append(result(file, name, tree));
            else
                out.print((isFirst ? QString() : QStringLiteral("\n")) + QStringLiteral("# ") +
                          file + QLatin1Char('\n') + tree.toText());
            isFirst = false;
        } catch (const ToolError &e) {
            out.complain(e);
            errors.append(errorToJson(e));
            worst = std::max(worst, e.code());
        }
    }
    if (out.json())
        out.setResult(Json::object({{"files", std::move(files)}, {"errors", std::move(errors)}}));
    return worst;
}

} // namespace vn::tool
