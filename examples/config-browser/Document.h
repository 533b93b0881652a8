// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_DOCUMENT_H
#define BROWSER_DOCUMENT_H

#include "Configuration.h"

#include <QtCore/QObject>
#include <QtCore/QSet>

namespace browser {

/**
 * A configuration that is being looked at and edited.
 *
 * An edit changes a value of the map. The text to be saved is made from the text that was read:
 * VanteroConfigFile::replaceSection() puts the changed sections into it and leaves the rest alone.
 * Each edit is tried out at once, by reading that text back.
 */
class Document : public QObject
{
    Q_OBJECT

public:
    explicit Document(Configuration configuration, QObject *parent = nullptr);

    /** As it was read, or saved last. */
    const Configuration &configuration() const { return m_configuration; }
    /** With what was edited since. */
    const vn::VanteroConfigMap &map() const { return m_map; }
    const QString &text() const { return m_text; }
    bool isModified() const { return !m_changedSections.isEmpty(); }
    bool isModified(const QString &section, const QString &key, int index) const;

    /** Why nothing can be edited; a null string where it can. */
    QString readOnlyReason() const;
    /** Whether the values of @p section can be edited. */
    bool isEditable(const QString &section) const;

    /** Changes the @p index-th value of @p key, counted from the newest. Returns why it was not
     * done; a null string when it was. */
    QString setValue(const QString &section, const QString &key, int index, const QString &value);

    /** Replaces the file. Returns why it was not done; a null string when it was. */
    QString save();

    /** Reads the file anew, without what was edited. Returns why it was not done, as above. */
    QString reload();

    /** "10.14.7.21 (gate-south)", or the name of the file where the text tells neither. */
    QString title() const;

Q_SIGNALS:
    void changed();

private:
    void setConfiguration(Configuration configuration);

    Configuration m_configuration;
    vn::VanteroConfigMap m_map;
    QString m_text;
    QSet<QString> m_changedSections;
};

} // namespace browser

#endif // BROWSER_DOCUMENT_H
