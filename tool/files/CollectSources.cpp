// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/CollectSources.h"

#include "base/StringUtils.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace vn::tool {

namespace {

class Walk
{
public:
    Walk(bool recursive, const std::function<void(const ToolError &)> &report)
        : m_recursive(recursive)
        , m_report(report)
    {
    }

    void visit(const QString &path, bool isNamed)
    {
        // As the library has it: a name that ends so is an archive, whatever it leads to.
        if (StringUtils::endsWithIgnoreCase(path, QStringLiteral(".zip"))) {
            m_sources.push_back({path, true, isNamed});
            return;
        }
        const QFileInfo info(path);
        if (info.isDir())
            visitFolder(path, info);
        else if (info.isFile())
            m_sources.push_back({path, false, isNamed});
        else if (isNamed)
            m_report(ToolError(ExitCode::BadInput,
                               info.exists() ? QStringLiteral("neither a file nor a folder")
                                             : QStringLiteral("no such file or folder"))
                         .at(path));
    }

    std::vector<CollectSource> takeSources() { return std::move(m_sources); }

private:
    void visitFolder(const QString &path, const QFileInfo &info)
    {
        if (!m_recursive) {
            m_report(ToolError(ExitCode::Done, QStringLiteral("a folder, which only --recursive "
                                                              "looks into"))
                         .at(path));
            return;
        }
        if (!info.isReadable() || !info.isExecutable()) {
            m_report(ToolError(ExitCode::BadInput, QStringLiteral("the folder cannot be read"))
                         .at(path));
            return;
        }
        const QDir folder(path);
        const auto filters = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::NoSymLinks;
        for (const QString &name : folder.entryList(filters, QDir::Name))
            visit(folder.filePath(name), false);
    }

    bool m_recursive;
    const std::function<void(const ToolError &)> &m_report;
    std::vector<CollectSource> m_sources;
};

} // namespace

std::vector<CollectSource> collectSources(const QStringList &paths, bool recursive,
                                          const std::function<void(const ToolError &)> &report)
{
    Walk walk(recursive, report);
    for (const QString &path : paths)
        walk.visit(path, true);
    return walk.takeSources();
}

} // namespace vn::tool
