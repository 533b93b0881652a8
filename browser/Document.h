// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_DOCUMENT_H
#define BROWSER_DOCUMENT_H

#include "Configuration.h"

#include "config/VanteroConfigText.h"

#include <QtCore/QObject>

#include <optional>

namespace browser {

/**
 * A configuration that is being looked at and edited.
 *
 * An edit changes the characters of one value in the text, and the map beside it.
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
    QString text() const;
    bool isModified() const { return m_isModified; }
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
    std::optional<vn::VanteroConfigText> m_edited; // from the first edit on
    bool m_isModified = false;
};

} // namespace browser

#endif // BROWSER_DOCUMENT_H
