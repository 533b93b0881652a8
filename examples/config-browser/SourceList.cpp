// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "SourceList.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace browser {

namespace {

Source::Kind kindOf(const QFileInfo &info)
{
    const auto hasSuffix = [&](const char *suffix) {
        return info.suffix().compare(QLatin1String(suffix), Qt::CaseInsensitive) == 0;
    };
    if (hasSuffix("zip"))
        return Source::Kind::Archive;
    return hasSuffix("alarms") ? Source::Kind::AlarmList : Source::Kind::Configuration;
}

class Walk
{
    Q_DECLARE_TR_FUNCTIONS(browser::SourceList)

public:
    Walk(const std::function<void(const Problem &)> &report,
         const std::function<bool()> &isCancelled)
        : m_report(report)
        , m_isCancelled(isCancelled)
    {
    }

    void visit(const QFileInfo &info, bool isNamed)
    {
        if (m_isCancelled())
            return;
        const QString path = info.absoluteFilePath();
        if (info.isDir())
            visitFolder(info);
        else if (info.isFile())
            m_sources.push_back({path, kindOf(info), isNamed});
        else if (isNamed)
            m_report(
                {path, QString(),
                 info.exists() ? tr("neither a file nor a folder") : tr("no such file or folder")});
    }

    std::vector<Source> takeSources() { return std::move(m_sources); }

private:
    void visitFolder(const QFileInfo &info)
    {
        if (!info.isReadable() || !info.isExecutable()) {
            m_report({info.absoluteFilePath(), QString(), tr("the folder cannot be read")});
            return;
        }
        const QFileInfoList entries =
            QDir(info.absoluteFilePath())
                .entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::NoSymLinks,
                               QDir::Name);
        for (const QFileInfo &entry : entries)
            visit(entry, false);
    }

    const std::function<void(const Problem &)> &m_report;
    const std::function<bool()> &m_isCancelled;
    std::vector<Source> m_sources;
};

} // namespace

std::vector<Source> listSources(const QStringList &paths,
                                const std::function<void(const Problem &)> &report,
                                const std::function<bool()> &isCancelled)
{
    Walk walk(report, isCancelled);
    for (const QString &path : paths)
        walk.visit(QFileInfo(path), true);
    return walk.takeSources();
}

} // namespace browser
