// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/CollectTarget.h"

#include "tool/cli/ToolError.h"

#include "base/AtomicFile.h"
#include "base/Exceptions.h"
#include "base/ZipWriter.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QDate>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace vn::tool {

namespace {

constexpr int kFilesAtOnce = 4096; // that wait for the disk together
constexpr qint64 kBytesAtOnce = qint64(256) * 1024 * 1024;

ToolError outputError(const QString &message, const QString &path)
{
    return ToolError(ExitCode::OutputFailed, message).at(path);
}

bool isOccupied(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink(); // a link to nothing does not exist for Qt
}

class FolderTarget : public CollectTarget
{
public:
    explicit FolderTarget(const QString &path)
        : m_folder(path)
        , m_files(path)
    {
    }

    void write(const QString &address, const QString &suffix, const QByteArray &bytes) override
    {
        if (m_names.isEmpty() && !m_folder.exists() && !m_folder.mkpath(QStringLiteral(".")))
            throw outputError(QStringLiteral("the folder cannot be made"), m_folder.path());
        try {
            QString name = m_newNames.next(address, suffix, m_isTaken);
            while (!m_files.add(name, bytes)) // taken by somebody else meanwhile
                name = m_newNames.instead(name, m_isTaken);
            m_places.insert(name, m_names.size());
            m_names += name;
        } catch (const FileException &e) {
            throw outputError(e.reason(), m_folder.path());
        }
        m_bytes += bytes.size();
        if (m_files.count() >= kFilesAtOnce || m_bytes >= kBytesAtOnce)
            finish();
    }

    void finish() override
    {
        try {
            for (QStringList taken = m_files.commit(); !taken.isEmpty(); taken = m_files.commit())
                for (const QString &name : qAsConst(taken))
                    giveAnotherName(name);
        } catch (const FileException &e) {
            throw outputError(e.reason(), m_folder.path());
        }
        m_bytes = 0;
    }

    bool isUsefulInPart() const override { return true; }

    bool hasWritten(const QString &path) const override
    {
        const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
        return m_places.contains(name) &&
               QFileInfo(path).canonicalPath() == m_folder.canonicalPath();
    }

private:
    void giveAnotherName(const QString &name)
    {
        QString other = m_newNames.instead(name, m_isTaken);
        while (!m_files.rename(name, other))
            other = m_newNames.instead(other, m_isTaken);
        const int place = m_places.take(name);
        m_names[place] = other;
        m_places.insert(other, place);
    }

    QDir m_folder;
    AtomicFiles m_files;
    NewNames m_newNames;
    const NewNames::IsTaken m_isTaken = [this](const QString &name) {
        return m_files.contains(name);
    };
    QHash<QString, int> m_places; // in the names
    qint64 m_bytes = 0;           // that wait
};

class ArchiveTarget : public CollectTarget
{
public:
    ArchiveTarget(const QString &path, const QByteArray &password)
        : m_path(path)
        , m_writer(path, password)
    {
        if (isOccupied(path))
            throw outputError(QStringLiteral("there already"), path);
    }

    void write(const QString &address, const QString &suffix, const QByteArray &bytes) override
    {
        try {
            if (m_names.isEmpty())
                m_writer.openNew();
            const QString name =
                m_newNames.next(address, suffix, [](const QString &) { return false; });
            QBuffer buffer;
            buffer.setData(bytes);
            buffer.open(QIODevice::ReadOnly);
            m_writer.appendFile(&buffer, name, QStringLiteral("Vantero Configuration File"),
                                QDateTime::currentDateTime());
            m_names += name;
        } catch (const IOException &) {
            throw outputError(m_writer.failure(), m_path);
        }
    }

    void finish() override
    {
        try {
            if (!m_names.isEmpty())
                m_writer.close();
        } catch (const IOException &) {
            throw outputError(m_writer.failure(), m_path);
        }
    }

    bool isUsefulInPart() const override { return false; }

    bool hasWritten(const QString &) const override { return false; } // it appears at the end

private:
    QString m_path;
    ZipWriter m_writer;
    NewNames m_newNames;
};

} // namespace

QString NewNames::next(const QString &address, const QString &suffix, const IsTaken &isTaken)
{
    const QDir nowhere(QStringLiteral("/dev/null")); // every name is free there
    return numbered(VanteroConfigFile::newFileName(nowhere, QString(), fileNamePart(address),
                                                   QDate::currentDate(), suffix),
                    isTaken);
}

QString NewNames::instead(const QString &name, const IsTaken &isTaken)
{
    return numbered(m_firsts.value(name, name), isTaken);
}

QString NewNames::numbered(const QString &first, const IsTaken &isTaken)
{
    // The numbers go on from the last one, as there may be a hundred thousand of one name.
    for (int &number = m_given[first];;) {
        ++number;
        QString name = first;
        if (number > 1) {
            name.insert(first.lastIndexOf(QLatin1Char('.')), QStringLiteral("[%1]").arg(number));
            m_firsts.insert(name, first);
        }
        if (!isTaken(name))
            return name;
    }
}

std::unique_ptr<CollectTarget> makeFolderTarget(const QString &path)
{
    return std::make_unique<FolderTarget>(path);
}

std::unique_ptr<CollectTarget> makeArchiveTarget(const QString &path, const QByteArray &password)
{
    return std::make_unique<ArchiveTarget>(path, password);
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
    if (part.startsWith(QLatin1Char('.')) || part.startsWith(QLatin1Char('-')))
        part[0] = QLatin1Char('_');
    return part.isEmpty() ? QStringLiteral("unknown") : part;
}

} // namespace vn::tool
