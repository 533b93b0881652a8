// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/ParserInput_p.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"

#include <QtCore/QBuffer>
#include <QtCore/QTextStream>

namespace vn::internal {

namespace {

constexpr quint64 kNoSizeLimit = static_cast<quint64>(-1);
constexpr int kTimeLimitMs = 30000;

} // namespace

void appendEndMark(QByteArray *data)
{
    data->append("\0\0", 2);
}

QByteArray withEndMark(QByteArray text)
{
    appendEndMark(&text);
    return text;
}

QString readAll(const QTextStream *stream)
{
    // The parsers take a stream as const, as they publish it; reading moves its position.
    return const_cast<QTextStream *>(stream)->readAll();
}

QByteArray readAll(QIODevice *device)
{
    QByteArray content;
    QBuffer buffer(&content);
    (void)buffer.open(QIODevice::ReadWrite); // a buffer over memory always opens
    try {
        FileUtils::copy(device, &buffer, kNoSizeLimit, kTimeLimitMs);
    } catch (const IOException &e) {
        throw ParseException(e.message(), 0, 0, 0, 0, &e);
    }
    return content;
}

} // namespace vn::internal
