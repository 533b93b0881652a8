// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_PARSERINPUT_P_H
#define VN_ALARM_PARSERINPUT_P_H

/** @file The forms in which texts reach both alarm parsers. */

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QIODevice;
class QTextStream;

namespace vn::internal {

/** Appends the end mark: the two zero bytes by which a scanner knows the end of its buffer. */
void appendEndMark(QByteArray *data);

/** What remains in @p stream. */
QString readAll(const QTextStream *stream);

/**
 * What remains in @p device, as it is: without an end mark.
 * @throws ParseException at 0 to 0, with an IOException as cause, when the device fails or 30
 * seconds have passed
 */
QByteArray readAll(QIODevice *device);

} // namespace vn::internal

#endif // VN_ALARM_PARSERINPUT_P_H
