// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/CollectTarget.h"

#include "tool/cli/ToolError.h"
#include "tool/files/OutputFile.h"

#include "base/Exceptions.h"
#include "base/ZipWriter.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QDate>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

namespace vn::tool {

namespace {

ToolError outputError(const QString &message, const QString &path)
{
    return ToolError(ExitCode::OutputFailed, message).at(path);
}

bool isThere(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink(); // a link to nothing does not exist for Qt
}

QString newName(const QDir &folder, const QString &address)
{
    return VanteroConfigFile::newFileName(folder, fileNamePart(address), QDate::currentDate());
}

class FolderTarget : public CollectTarget
{
public:
    explicit FolderTarget(const QString &path)
        : m_folder(path)
    {
    }

    QString write(const QString &address, const QByteArray &bytes) override
    {
        if (!m_folder.exists() && !m_folder.mkpath(QStringLiteral(".")))
            throw outputError(QStringLiteral("the folder cannot be made"), m_folder.path());
        for (;;) {
            const QString name = newName(m_folder, address);
            if (writeNewFileAtomically(m_folder.filePath(name), bytes))
                return name; // otherwise taken by somebody else meanwhile
        }
    }

    void finish() override {}

private:
    QDir m_folder;
};

class ArchiveTarget : public CollectTarget
{
public:
    explicit ArchiveTarget(const QString &path)
        : m_path(path)
        , m_writer(path)
    {
        if (isThere(path))
            throw outputError(QStringLiteral("there already"), path);
    }

    QString write(const QString &address, const QByteArray &bytes) override
    {
        if (!m_names.isValid())
            throw outputError(m_names.errorString(), m_names.path());
        try {
            if (!m_isOpen)
                m_writer.open();
            m_isOpen = true;
            QString name = newName(QDir(m_names.path()), address);
            QFile taken(m_names.filePath(name));
            if (!taken.open(QIODevice::WriteOnly))
                throw outputError(taken.errorString(), taken.fileName());
            QBuffer buffer;
            buffer.setData(bytes);
            buffer.open(QIODevice::ReadOnly);
            m_writer.appendFile(&buffer, name, QStringLiteral("Vantero Configuration File"),
                                QDateTime::currentDateTime());
            return name;
        } catch (const ExceptionQt &e) {
            throw tool::outputError(e, m_path);
        }
    }

    void finish() override
    {
        try {
            if (m_isOpen)
                m_writer.close();
        } catch (const ExceptionQt &e) {
            throw tool::outputError(e, m_path);
        }
    }

private:
    QString m_path;
    ZipWriter m_writer;
    bool m_isOpen = false;
    QTemporaryDir m_names; // a file for each entry, so that names are made as in a folder
};

} // namespace

std::unique_ptr<CollectTarget> makeFolderTarget(const QString &path)
{
    return std::make_unique<FolderTarget>(path);
}

std::unique_ptr<CollectTarget> makeArchiveTarget(const QString &path)
{
    return std::make_unique<ArchiveTarget>(path);
}

QString fileNamePart(const QString &address)
{
    constexpr int kMaxLength = 100; // room for the rest of the name
    QString part = address.trimmed().left(kMaxLength);
    for (QChar &c : part) {
        const bool isPlain = (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
                             (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
                             (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                             QLatin1String("-_.").contains(c);
        if (!isPlain)
            c = QLatin1Char('_');
    }
    part.replace(QLatin1String(".."), QLatin1String("__"));
    if (part.startsWith(QLatin1Char('.')))
        part[0] = QLatin1Char('_');
    return part.isEmpty() ? QStringLiteral("unknown") : part;
}

} // namespace vn::tool
