// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Document.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>

#include <algorithm>
#include <utility>

using vn::VanteroConfigFile;

namespace browser {

/** Another text in the place where two texts differ. */
class TextChange : public QUndoCommand
{
public:
    TextChange(Document &document, const QString &before, const QString &after, const QString &name)
        : QUndoCommand(name)
        , m_document(document)
    {
        const auto same = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
        m_offset = int(same.first - before.begin());
        const int most = std::min(before.size(), after.size()) - m_offset;
        int behind = 0;
        while (behind < most &&
               before.at(before.size() - 1 - behind) == after.at(after.size() - 1 - behind))
            ++behind;
        m_before = before.mid(m_offset, before.size() - m_offset - behind);
        m_after = after.mid(m_offset, after.size() - m_offset - behind);
    }

    void undo() override { m_document.splice(m_offset, m_after.size(), m_before); }
    void redo() override { m_document.splice(m_offset, m_before.size(), m_after); }

private:
    Document &m_document;
    int m_offset;
    QString m_before;
    QString m_after;
};

Document::Document(Configuration configuration, QUndoStack &undo, QObject *parent)
    : QObject(parent)
    , m_configuration(std::move(configuration))
    , m_undo(undo)
{
}

QString Document::readOnlyReason() const
{
    if (m_configuration.isArchiveEntry())
        return tr("An entry of an archive cannot be edited. Save a copy of it to edit that.");
    if (m_configuration.isImage())
        return tr("These are the settings in the comment of an image, which cannot be edited.");
    if (!m_configuration.summary().parseError.isEmpty())
        return tr("Only the sections before an error could be read, so nothing can be edited: %1.")
            .arg(m_configuration.summary().parseError);
    return {};
}

bool Document::isEditable(const QString &section) const
{
    // The header is no section of the text.
    return section != VanteroConfigFile::HEAD_SECTION && readOnlyReason().isNull();
}

QString Document::edit(const Edit &edit, const QString &name)
{
    if (const QString reason = readOnlyReason(); !reason.isNull())
        return reason;
    const QString before = text();
    const EditResult result = edit(before);
    if (!result)
        return tr("Not changed: %1.").arg(result.reason);
    if (result.text != before)
        pushChange(before, result.text, name);
    return {};
}

Written Document::save()
{
    const QString edited = text();
    const Replaced replaced = replaceText(m_configuration.path(), m_configuration.bytes(), edited);
    if (!replaced.written.isDone())
        return replaced.written;
    m_configuration =
        Configuration(m_configuration.path(), QString(), 0, replaced.bytes, m_configuration.form());
    m_text.reset();
    Q_EMIT changed();
    return replaced.written;
}

QString Document::reload()
{
    const QString before = text();
    try {
        m_configuration =
            Configuration(m_configuration.path(), QString(), 0,
                          vn::FileUtils::readBytes(m_configuration.path()), m_configuration.form());
    } catch (const vn::ExceptionQt &e) {
        return e.message();
    }
    const QString after = m_configuration.text();
    setText(before);
    if (after != before)
        pushChange(before, after, tr("Reload"));
    else
        Q_EMIT changed();
    return {};
}

Document::Disk Document::disk() const
{
    if (m_configuration.isArchiveEntry() || m_configuration.isImage())
        return Disk::Same;
    try {
        return vn::FileUtils::readBytes(m_configuration.path()) == m_configuration.bytes()
                   ? Disk::Same
                   : Disk::Changed;
    } catch (const vn::ExceptionQt &) {
        return Disk::Missing;
    }
}

QString Document::title() const
{
    const QString &address = summary().address;
    const QString &host = summary().hostName;
    if (address.isEmpty())
        return host.isEmpty() ? m_configuration.sourceName() : host;
    return host.isEmpty() ? address : tr("%1 (%2)").arg(address, host);
}

void Document::splice(int offset, int length, const QString &inserted)
{
    QString changedText = text();
    changedText.replace(offset, length, inserted);
    setText(changedText);
    Q_EMIT changed();
    Q_EMIT edited();
}

void Document::setText(const QString &text)
{
    if (text == m_configuration.text()) {
        m_text.reset();
        return;
    }
    m_text = text;
    m_summary = summaryOf(text, m_configuration.form());
}

void Document::pushChange(const QString &before, const QString &after, const QString &name)
{
    m_undo.push(new TextChange(*this, before, after, name)); // does it
}

} // namespace browser
