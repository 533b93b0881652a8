// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMPLACES_P_H
#define VN_ALARM_ALARMPLACES_P_H

#include "base/Finding.h"

#include <QtCore/QByteArray>

#include <vector>

namespace vn::internal {

/** Bytes of a text from @p start up to @p end. */
struct ByteRange
{
    int start = 0;
    int end = 0;
};

/** Turns byte offsets of a text into lines and columns; the text is looked at once, a place takes
 * the logarithm of the number of lines. */
class AlarmPlaces
{
public:
    explicit AlarmPlaces(const QByteArray &text);

    [[nodiscard]] TextRange range(ByteRange bytes) const;

    /** Whether the text has characters beyond ASCII, all of them in UTF-8. */
    [[nodiscard]] bool isUtf8() const noexcept { return m_isUtf8; }

private:
    struct Place
    {
        int line;
        int column;
    };

    [[nodiscard]] Place place(int offset) const;
    [[nodiscard]] int unitsBefore(int offset) const;

    QByteArray m_text;
    bool m_isUtf8 = false;
    std::vector<int> m_lines; // where they begin
    std::vector<int> m_units; // of UTF-8: UTF-16 code units before each block of bytes
};

} // namespace vn::internal

#endif // VN_ALARM_ALARMPLACES_P_H
