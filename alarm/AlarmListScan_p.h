// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMLISTSCAN_P_H
#define VN_ALARM_ALARMLISTSCAN_P_H

namespace vn::internal {

class AlarmTape;

/** What the plain path has found. */
struct PlainList
{
    bool isRead = false; // else the tape holds nothing of use
    int lastQuoted = -1; // the entry of the last quoted text
};

/**
 * Reads the @p length bytes at @p data, behind which stands a zero byte, into @p tape: alarm lists
 * as cameras write them, without control bytes in texts, without zero bytes, with nothing but white
 * space and comments behind the end, well inside of all limits. Everything else, errors included,
 * is left to the grammar. Where this gives a result, the grammar gives the same one.
 */
PlainList scanPlainList(const char *data, int length, AlarmTape &tape);

} // namespace vn::internal

#endif // VN_ALARM_ALARMLISTSCAN_P_H
