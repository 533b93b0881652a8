// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_CSVEXPORT_H
#define BROWSER_CSVEXPORT_H

#include <QtCore/QByteArray>

class QAbstractItemModel;

namespace browser {

/** The headings and cells of a table as they are shown, as CSV by RFC 4180 in UTF-8. */
QByteArray csvOf(const QAbstractItemModel &table);

} // namespace browser

#endif // BROWSER_CSVEXPORT_H
