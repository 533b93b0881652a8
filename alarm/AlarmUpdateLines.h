// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATELINES_H
#define VN_ALARM_ALARMUPDATELINES_H

#include "alarm/AlarmUpdateDocument.h"
#include "base/Exceptions.h"
#include "base/Export.h"

#include <QtCore/QByteArray>

#include <optional>

class QIODevice;

namespace vn {

/**
 * Reads alarm updates that come one a line, as from a camera that goes on sending them. A line that
 * is no update costs that line.
 * @code
 * AlarmUpdateLines lines(&socket);
 * while (lines.next())
 *     if (lines.error())
 *         warn(lines.lineNumber(), lines.error()->message());
 *     else
 *         handle(lines.update());
 * @endcode
 * A line ends with "\n" or "\r\n"; the last one may lack it. Empty lines are passed over and
 * counted. Only one line is in memory at a time, of any length.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_EXPORT AlarmUpdateLines
{
public:
    /** Reads @p device, which is open for reading and lives longer than this object, from where it
     * stands. */
    explicit AlarmUpdateLines(QIODevice *device);

    /**
     * Goes to the next line that is not empty; waits for it where the device does. False at the end
     * of the device.
     * @throws FileException where the device is a QFile that cannot be read
     * @throws IOException where another device fails or is not open for reading
     */
    bool next();

    /** The number of the line, counted from 1; 0 before the first next(). */
    [[nodiscard]] qint64 lineNumber() const noexcept { return m_lineNumber; }

    /** The bytes of the line, without its end. */
    [[nodiscard]] const QByteArray &line() const noexcept { return m_line; }

    /** The update; without a value where the line is none. */
    [[nodiscard]] const AlarmUpdateDocument &update() const noexcept { return m_update; }

    /** Why the line is no update; nothing where it is one. Columns count bytes of the line. */
    [[nodiscard]] const std::optional<ParseException> &error() const noexcept { return m_error; }

private:
    QIODevice *m_device;
    qint64 m_lineNumber = 0;
    QByteArray m_line;
    AlarmUpdateDocument m_update;
    std::optional<ParseException> m_error;
};

} // namespace vn

#endif // VN_ALARM_ALARMUPDATELINES_H
