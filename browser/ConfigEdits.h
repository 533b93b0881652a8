// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CONFIGEDITS_H
#define BROWSER_CONFIGEDITS_H

/** @file Edits of the text of a configuration. They know no windows and keep every other byte. */

#include <QtCore/QString>

#include <functional>

namespace browser {

/** A text with an edit, or why there is none. */
struct EditResult
{
    QString text;
    QString reason; // null where it was done

    explicit operator bool() const { return reason.isNull(); }
};

/** What makes another text of a text. */
using Edit = std::function<EditResult(const QString &text)>;

namespace edits {

/** @p index counts the values of a key from the newest, the last line of the text. */
Edit setValue(const QString &section, const QString &key, const QString &value, int index = 0);
Edit addValue(const QString &section, const QString &key, const QString &value);
Edit removeValue(const QString &section, const QString &key, int index);
Edit removeKey(const QString &section, const QString &key);
Edit addSection(const QString &section);
Edit removeSection(const QString &section);

/** Exchanges two values of a key. */
Edit swapValues(const QString &section, const QString &key, int index, int otherIndex);

/** Gives all values of a key another key, each in its line. */
Edit renameKey(const QString &section, const QString &key, const QString &newKey);
/** Gives all blocks of a section another name, each in its place. */
Edit renameSection(const QString &section, const QString &newName);

} // namespace edits

} // namespace browser

#endif // BROWSER_CONFIGEDITS_H
