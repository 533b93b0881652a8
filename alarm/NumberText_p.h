// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_NUMBERTEXT_P_H
#define VN_ALARM_NUMBERTEXT_P_H

/** @file Numbers as the scanners find them, read alike under every locale of the process. */

#include <QtCore/qglobal.h>

namespace vn::internal {

/**
 * The value that strtod() gives in the C locale for the @p length bytes at @p text, a decimal
 * number that is followed by a zero byte. Too large a number is an infinity, too small a one a
 * denormal number or a zero, with their sign.
 */
double toDouble(const char *text, int length);

/**
 * The number of an alarm list that begins at @p text, behind which a zero byte ends all; its
 * @p value is that of toDouble(). Returns where it ends, null where none begins or where it is cut:
 * "-0", "0e5" and "1." are more than one token.
 */
const char *readListNumber(const char *text, double &value);

/** The low 32 bits of what a 64-bit strtol() gives: 4294967297 is 1, and what exceeds 64 bits is
 * -1, or 0 where it is negative. */
qint32 toInt32(const char *text);

/** The ISO date @p text, ten bytes, as year * 10000 + month * 100 + day, be there such a day or
 * not. */
int toDayNumber(const char *text);

} // namespace vn::internal

#endif // VN_ALARM_NUMBERTEXT_P_H
