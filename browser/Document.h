// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_DOCUMENT_H
#define BROWSER_DOCUMENT_H

#include "ConfigEdits.h"
#include "Configuration.h"
#include "SafeSave.h"

#include <QtCore/QObject>

#include <optional>

class QUndoStack;

namespace browser {

/**
 * A configuration that is being looked at and edited.
 *
 * An edit changes some characters of the text, and is a step of a stack that all documents share.
 */
class Document : public QObject
{
    Q_OBJECT

public:
    /** @p undo must outlive this document. */
    Document(Configuration configuration, QUndoStack &undo, QObject *parent = nullptr);

    /** As it was read, or saved last. */
    const Configuration &configuration() const { return m_configuration; }

    // With what was edited since:
    QString text() const { return m_text ? *m_text : m_configuration.text(); }
    vn::VanteroConfigMap map() const { return mapOf(text(), m_configuration.form()); }
    const Summary &summary() const { return m_text ? m_summary : m_configuration.summary(); }
    bool isModified() const { return m_text.has_value(); }

    /** Why nothing can be edited; a null string where it can. */
    QString readOnlyReason() const;
    /** Whether the values of @p section can be edited. */
    bool isEditable(const QString &section) const;

    /** Does an edit, which is called @p name in menus. Returns why it was not done; a null string
     * when it was. */
    QString edit(const Edit &edit, const QString &name);

    /** Replaces the file. */
    Written save();

    /** Reads the file anew; going back brings what was edited. Returns why it was not done; a null
     * string when it was. */
    QString reload();

    enum class Disk { Same, Changed, Missing };
    /** Whether the file is still as it was read or saved. Takes the reading of the file. */
    Disk disk() const;

    /** "10.14.7.21 (gate-south)", or the name of the file where the text tells neither. */
    QString title() const;

Q_SIGNALS:
    void changed();
    /** An edit was done, undone or done again. */
    void edited();

private:
    friend class TextChange;

    /** Puts @p text into the place of @p length characters at @p offset. */
    void splice(int offset, int length, const QString &text);
    void setText(const QString &text);
    void pushChange(const QString &before, const QString &after, const QString &name);

    Configuration m_configuration;
    QUndoStack &m_undo;
    std::optional<QString> m_text; // while it is not what the configuration has
    Summary m_summary;             // of that
};

} // namespace browser

#endif // BROWSER_DOCUMENT_H
