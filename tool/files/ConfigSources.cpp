// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigSources.h"

#include "tool/files/Input.h"
#include "tool/files/JpegComment.h"

#include "base/StringUtils.h"
#include "config/ConfigCollector.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace vn::tool {

namespace {

bool isArchive(const QString &path)
{
    return StringUtils::endsWithIgnoreCase(path, QStringLiteral(".zip"));
}

/** Whether an image that nobody has named holds sections; any may have a comment. */
bool holdsSections(const QByteArray &image, const QString &name)
{
    const QByteArray comment = jpegComment(image, name);
    return comment.startsWith("SECTION") || comment.contains("\nSECTION");
}

} // namespace

void ConfigSources::declare(Arguments &arguments)
{
    if (!(m_flags & AlwaysRecursive))
        arguments.flag("--recursive",
                       m_flags & Archives ? "look into folders, at any depth, and into archives"
                                          : "look into folders, at any depth",
                       m_recursive);
    if (m_flags & Archives)
        arguments.fileOption("--password-file", "FILE",
                             "take the password of all archives from the first line of this file, "
                             "\"-\" for standard input",
                             m_passwordFile);
}

bool ConfigSources::isOne() const
{
    return m_names.size() == 1 && !m_recursive && !isWalked(m_names.first());
}

bool ConfigSources::isWalked(const QString &name) const
{
    if (name == QLatin1String("-"))
        return false;
    if (isArchive(name))
        return (m_flags & NamedArchives) || (m_recursive && (m_flags & Archives));
    return (m_recursive || (m_flags & AlwaysRecursive)) && QFileInfo(name).isDir();
}

void ConfigSources::forEach(Output &out, const std::function<void(const ConfigSource &)> &use)
{
    const QString standardInput(QLatin1Char('-'));
    if (m_names.count(standardInput) + (m_passwordFile == standardInput ? 1 : 0) > 1)
        throw ToolError(ExitCode::BadInput,
                        QStringLiteral("only one of the files can be standard input"));
    if (m_passwordFile)
        m_password = readPassword(*m_passwordFile);
    for (const QString &name : qAsConst(m_names)) {
        if (isWalked(name)) {
            walk(name, out, use);
            continue;
        }
        m_isEmpty = false;
        guard(out, [&] { use({name, readInput(name)}); });
    }
    if (m_isEmpty && m_worst == ExitCode::Done) {
        m_worst = ExitCode::No;
        out.complain(ToolError(ExitCode::No, QStringLiteral("no configurations found")));
    }
}

void ConfigSources::guard(Output &out, const std::function<void()> &action)
{
    try {
        action();
    } catch (const ToolError &e) {
        out.complain(e);
        m_errors.append(errorToJson(e));
        m_worst = std::max(m_worst, e.code());
    }
}

void ConfigSources::walk(const QString &name, Output &out,
                         const std::function<void(const ConfigSource &)> &use)
{
    ConfigCollector::Options options;
    options.recursive = true;
    options.order = ConfigCollector::Order::Name;
    options.password = m_password.value_or(QByteArray());
    if (m_flags & Images)
        options.entrySuffixes << QStringLiteral("jpg") << QStringLiteral("jpeg");
    ConfigCollector collector({name}, options);
    while (const auto place = collector.nextSource()) {
        if (isArchive(place->path) && !(m_flags & Archives))
            continue;
        const ConfigCollector::Found found = collector.read(*place);
        const QString path =
            found.entry.isNull() ? found.path : found.path + QLatin1Char(':') + found.entry;
        guard(out, [&] {
            bool counts = found.status == ConfigCollector::Status::Configuration;
            if (found.status > ConfigCollector::Status::NoConfiguration && !found.reason.isNull())
                throw ToolError(
                    ExitCode::BadInput,
                    withPasswordHint(found.reason, found.archiveError, "--password-file"))
                    .at(path);
            if (isJpeg(found.bytes))
                counts = (m_flags & Images) && holdsSections(found.bytes, path);
            else if (m_flags & WithoutHeader)
                counts = counts || StringUtils::endsWithIgnoreCase(path, QStringLiteral("cfg"));
            if (!counts)
                return;
            m_isEmpty = false;
            use({path, found.bytes});
        });
    }
}

} // namespace vn::tool
