// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ArchiveJob.h"

#include "Document.h"

#include "base/Exceptions.h"
#include "base/ZipWriter.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <utility>

namespace browser {

namespace {

/** The text in the encoding of its file, or in UTF-8 where that cannot hold it. */
QByteArray bytesOf(const Document &document)
{
    if (document.configuration().isImage())
        return document.text().toUtf8();
    if (!document.isModified())
        return document.configuration().bytes();
    const vn::EncodedText::Result encoded =
        document.configuration().encodedText().encode(document.text());
    return encoded ? encoded.bytes : document.text().toUtf8();
}

} // namespace

std::vector<ArchiveEntry> archiveEntriesOf(const std::vector<Document *> &documents)
{
    std::vector<ArchiveEntry> entries;
    QSet<QString> taken;
    for (const Document *document : documents) {
        const QString base = QFileInfo(document->configuration().fileName()).completeBaseName();
        QString name = base + QStringLiteral(".cfg");
        for (int number = 2; taken.contains(name.toLower()); ++number)
            name = QStringLiteral("%1[%2].cfg").arg(base).arg(number);
        taken.insert(name.toLower());
        entries.push_back({name, bytesOf(*document)});
    }
    return entries;
}

ArchiveJob::ArchiveJob(QString path, QByteArray password, std::vector<ArchiveEntry> entries,
                       QObject *parent)
    : QThread(parent)
    , m_path(std::move(path))
    , m_password(std::move(password))
    , m_entries(std::move(entries))
{
}

ArchiveJob::~ArchiveJob()
{
    stop();
    wait();
}

void ArchiveJob::run()
{
    try {
        vn::ZipWriter zip(m_path, m_password);
        zip.open();
        const QDateTime now = QDateTime::currentDateTime();
        int done = 0;
        for (const ArchiveEntry &entry : m_entries) {
            if (m_isStopped)
                return; // nothing is left of it
            QBuffer content;
            content.setData(entry.bytes);
            content.open(QIODevice::ReadOnly);
            zip.appendFile(&content, entry.name, QString(), now);
            Q_EMIT progressed(++done);
        }
        zip.close();
        m_losses = vn::AtomicFile::describe(zip.losses());
    } catch (const vn::ExceptionQt &e) {
        m_error = e.message();
    }
}

} // namespace browser
