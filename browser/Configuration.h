// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CONFIGURATION_H
#define BROWSER_CONFIGURATION_H

#include "base/EncodedText.h"
#include "config/VanteroConfigMap.h"
#include "config/VanteroConfigText.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace browser {

/** What a table of cameras tells of a configuration. */
struct Summary
{
    QString address;
    QString hostName;
    QString firmware;
    QString parseError; // empty where all of the text was understood
};

/** One configuration as it was read: where it stands, its bytes and what they say in short. */
class Configuration
{
public:
    using Form = vn::VanteroConfigText::Form;

    /** Reads @p bytes of a file, of the entry @p entry of an archive (null for a file), or the
     * comment of an image. What is understood of a malformed text is kept, beside the error. */
    Configuration(QString path, QString entry, int entryIndex, const QByteArray &bytes, Form form);

    const QString &path() const { return m_path; }   // absolute; of the file or of the archive
    const QString &entry() const { return m_entry; } // of the archive; null for a file
    int entryIndex() const { return m_entryIndex; }  // of the archive, where a name may occur twice
    Form form() const { return m_form; }
    const Summary &summary() const { return m_summary; }

    bool isArchiveEntry() const { return !m_entry.isNull(); }
    bool isImage() const { return m_form == Form::ImageComment; }

    QByteArray bytes() const { return qUncompress(m_packed); }
    vn::EncodedText encodedText() const { return vn::EncodedText(bytes()); }
    QString text() const { return encodedText().text(); }

    /** The name of the file, with the archive's before it where it is an entry. */
    QString sourceName() const;
    /** The same with the whole path. */
    QString sourcePath() const;
    /** The name without folder and archive. */
    QString fileName() const;

private:
    QString m_path;
    QString m_entry;
    int m_entryIndex;
    Form m_form;
    QByteArray m_packed; // a site has many thousand of them
    Summary m_summary;
};

/** The values of @p text. What stands before an error is there; the error goes to @p error. */
vn::VanteroConfigMap mapOf(const QString &text, Configuration::Form form, QString *error = nullptr);

Summary summaryOf(const QString &text, Configuration::Form form);

} // namespace browser

#endif // BROWSER_CONFIGURATION_H
