// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_SAFESAVE_H
#define BROWSER_SAFESAVE_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace browser {

/** What became of a file that was to be written. */
struct Written
{
    QString reason;     // why it was not done; null where it was
    QStringList losses; // what the new file could not keep of the old one, a sentence each

    bool isDone() const { return reason.isNull(); }
};

struct Replaced
{
    QByteArray bytes; // what the file has now
    Written written;
};

/**
 * Replaces the text of the file at @p path, which had the bytes @p before when it was read.
 *
 * The file is the old or the new one at any time: the text goes to a temporary file beside it,
 * which then takes its name. A file that has changed meanwhile is left alone. Its encoding, UTF-8
 * with or without a byte order mark or Latin-1, stays as it is.
 */
Replaced replaceText(const QString &path, const QByteArray &before, const QString &text);

/** Makes @p bytes the content of a file in the same way; a file that is there is replaced. */
Written writeBytes(const QString &path, const QByteArray &bytes);

} // namespace browser

#endif // BROWSER_SAFESAVE_H
