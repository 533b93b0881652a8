// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_PARSERINPUT_P_H
#define VN_ALARM_PARSERINPUT_P_H

/** @file The forms in which texts reach both alarm parsers. */

#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QIODevice;
class QTextStream;

namespace vn::internal {

/** Appends the end mark: the two zero bytes by which a scanner knows the end of its buffer. */
void appendEndMark(QByteArray *data);
/** A copy of @p text with it. */
QByteArray withEndMark(QByteArray text);

/** What remains in @p stream. */
QString readAll(const QTextStream *stream);

/**
 * What remains in @p device, as it is: without an end mark.
 * @throws ParseException at 0 to 0, with an IOException as cause, when the device fails or 30
 * seconds have passed
 */
QByteArray readAll(QIODevice *device);

// ---- The published forms, in terms of parse(const char *, unsigned int) ------------------------

template <typename Parser>
auto parseBytes(Parser &parser, QByteArray *data)
{
    return onlyThrows<ParseException>([&] {
        appendEndMark(data);
        return parser.parse(data->constData(), static_cast<unsigned int>(data->size()));
    });
}

template <typename Parser>
auto parseText(Parser &parser, const QString &text)
{
    return onlyThrows<ParseException>([&] {
        QByteArray bytes = text.toLatin1();
        return parser.parse(&bytes);
    });
}

template <typename Parser>
auto parseStream(Parser &parser, const QTextStream *stream)
{
    return onlyThrows<ParseException>([&] { return parser.parse(readAll(stream)); });
}

template <typename Parser>
auto parseDevice(Parser &parser, QIODevice *device)
{
    return onlyThrows<ParseException>([&] {
        const QByteArray content = readAll(device);
        return parser.parse(content.constData(), static_cast<unsigned int>(content.size()));
    });
}

} // namespace vn::internal

#endif // VN_ALARM_PARSERINPUT_P_H
