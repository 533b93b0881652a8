// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmPlaces_p.h"

#include "alarm/AlarmLint.h"
#include "base/Utf8_p.h"

#include <algorithm>

namespace vn {

namespace internal {

namespace {

constexpr int kBlock = 256;

/** The UTF-16 code units of the bytes: those that go on are none of their own, four bytes are two.
 */
int unitsOf(const char *begin, const char *end)
{
    int units = 0;
    for (; begin != end; ++begin) {
        const auto byte = static_cast<unsigned char>(*begin);
        units += (byte & 0xc0) == 0x80 ? 0 : byte >= 0xf0 ? 2 : 1;
    }
    return units;
}

} // namespace

AlarmPlaces::AlarmPlaces(const QByteArray &text)
    : m_text(text)
    , m_lines{0}
{
    for (int end = text.indexOf('\n'); end >= 0; end = text.indexOf('\n', end + 1))
        m_lines.push_back(end + 1);
    const auto isBeyondAscii = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; };
    if (!std::any_of(text.begin(), text.end(), isBeyondAscii))
        return;
    m_isUtf8 = fromWellFormedUtf8(text).has_value();
    int units = 0;
    for (int start = 0; m_isUtf8 && start < text.size(); start += kBlock) {
        m_units.push_back(units);
        units += unitsOf(text.constData() + start,
                         text.constData() + std::min(start + kBlock, text.size()));
    }
}

int AlarmPlaces::unitsBefore(int offset) const
{
    if (!m_isUtf8 || offset == 0)
        return offset;
    const int block = (offset - 1) / kBlock;
    return m_units[static_cast<std::size_t>(block)] +
           unitsOf(m_text.constData() + block * kBlock, m_text.constData() + offset);
}

AlarmPlaces::Place AlarmPlaces::place(int offset) const
{
    const auto next = std::upper_bound(m_lines.begin(), m_lines.end(), offset);
    return {static_cast<int>(next - m_lines.begin()),
            unitsBefore(offset) - unitsBefore(*(next - 1)) + 1};
}

TextRange AlarmPlaces::range(ByteRange bytes) const
{
    const Place start = place(bytes.start);
    const Place end = place(bytes.end);
    return {start.line, start.column, end.line, end.column, bytes.start, bytes.end - bytes.start};
}

} // namespace internal

TextRange alarmTextRange(const QByteArray &text, int start, int end)
{
    start = qBound(0, start, text.size());
    return internal::AlarmPlaces(text).range({start, qBound(start, end, text.size())});
}

} // namespace vn
