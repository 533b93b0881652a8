// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_IMAGECOMMENT_H
#define BROWSER_IMAGECOMMENT_H

#include <QtCore/QByteArray>

namespace browser {

/** Whether @p bytes begin as a JPEG image does. */
bool isJpeg(const QByteArray &bytes);

/** The comment segments before the data of the JPEG image @p bytes, joined; empty where there are
 * none. Of an image that is damaged, those before the damage. */
QByteArray imageComment(const QByteArray &bytes);

} // namespace browser

#endif // BROWSER_IMAGECOMMENT_H
