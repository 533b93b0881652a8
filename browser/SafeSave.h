// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_SAFESAVE_H
#define BROWSER_SAFESAVE_H

#include <QtCore/QString>

namespace browser {

/**
 * Replaces the text of the file at @p path, which was @p before when it was read. Returns why it
 * was not done; a null string when it was.
 *
 * The file is the old or the new one at any time: the text goes to a temporary file beside it,
 * which then takes its name. A file that has changed meanwhile is left alone. Its encoding, UTF-8
 * with or without a byte order mark or Latin-1, stays as it is.
 */
QString replaceText(const QString &path, const QString &before, const QString &text);

/** Writes @p text to a file as UTF-8, in the same way; a file that is there is replaced. */
QString writeText(const QString &path, const QString &text);

} // namespace browser

#endif // BROWSER_SAFESAVE_H
