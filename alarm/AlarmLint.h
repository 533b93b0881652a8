// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMLINT_H
#define VN_ALARM_ALARMLINT_H

/**
 * @file
 * All faults of an alarm list or an alarm update at once, and what reading one loses or changes.
 *
 * @code
 * for (const vn::Finding &finding : vn::alarmListFindings(text))
 *     show(finding.range.line, finding.range.column, finding.message);
 * @endcode
 * For a text that a new parser object refuses, the first error is the place and the fault of its
 * exception, whose message stands at the end in brackets; what follows is found by going on behind
 * it. For a text that it accepts, none is an error. `docs/findings.md` has a row for each code.
 *
 * Offsets and lengths count bytes. Columns count UTF-16 code units, as an editor shows the text: of
 * UTF-8 where the whole text is UTF-8, else of Latin-1.
 */

#include "base/Export.h"
#include "base/Finding.h"

class QByteArray;

namespace vn {

/**
 * What there is to say of the alarm list @p text, in the order of places; empty when there is
 * nothing. Reports nothing else: every text is examined.
 *
 * Threads: as AlarmListParser: not for texts with quoted strings on two threads at
 * once.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT Findings alarmListFindings(const QByteArray &text);

/**
 * What there is to say of the alarm update @p text, in the order of places; empty when there is
 * nothing. Dates are judged by the time zone of the process. Reports nothing else: every text is
 * examined.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT Findings alarmUpdateFindings(const QByteArray &text);

/**
 * The bytes from @p start up to @p end of an alarm text, which a ParseException of the parsers has
 * as its columns, as a place: lines and columns as in findings. What lies behind @p text is
 * taken for its end, a negative place for its beginning, an end before the start for the start.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT TextRange alarmTextRange(const QByteArray &text, int start, int end);

} // namespace vn

#endif // VN_ALARM_ALARMLINT_H
