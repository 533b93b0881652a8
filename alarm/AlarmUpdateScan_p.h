// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATESCAN_P_H
#define VN_ALARM_ALARMUPDATESCAN_P_H

/** @file The tokens of alarm updates found by hand: for most texts, and for what is wrong in any.
 */

#include "alarm/AlarmPlaces_p.h"

namespace vn::internal {

class AlarmTape;

struct UpdateToken : ByteRange
{
    enum class Kind { End, Stray, Mark, Text, Quoted, Integer, Float, Date, Time, Bool };

    Kind kind = Kind::End;
    char mark = '\0'; // of a mark, or of a byte that begins no token: itself

    bool isText() const { return kind == Kind::Text || kind == Kind::Quoted; }
};

/** Finds the tokens of an update as the generated scanner does, but goes on behind bytes that begin
 * none, where that one ends the text. */
class UpdateScanner
{
public:
    /** Behind the @p length bytes at @p data stands a zero byte. */
    UpdateScanner(const char *data, int length)
        : m_data(data)
        , m_end(data + length)
        , m_at(data)
    {
    }

    UpdateToken next();

private:
    const char *readWord(UpdateToken &token, const char *end) const;
    const char *readOther(UpdateToken &token) const;

    const char *m_data;
    const char *m_end;
    const char *m_at;
};

/**
 * Reads the @p length bytes at @p data, behind which stands a zero byte, into @p tape: pairs well
 * inside of all limits. Everything else, errors and error reports included, is left to the grammar:
 * false, and the tape holds nothing of use. Where this gives a result, the grammar gives the same
 * one.
 */
bool scanPlainUpdate(const char *data, int length, AlarmTape &tape);

} // namespace vn::internal

#endif // VN_ALARM_ALARMUPDATESCAN_P_H
