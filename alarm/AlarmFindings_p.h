// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMFINDINGS_P_H
#define VN_ALARM_ALARMFINDINGS_P_H

/** @file Findings of alarm texts as both languages collect them: by byte offsets, shown as places.
 */

#include "alarm/AlarmPlaces_p.h"
#include "alarm/ParserInput_p.h"
#include "base/Exceptions.h"
#include "base/Finding.h"

#include <QtCore/QByteArray>

#include <optional>
#include <vector>

namespace vn::internal {

/** Collects findings while a text is examined. */
class AlarmFindings
{
public:
    explicit AlarmFindings(const QByteArray &text);

    /** A fault of the text. The first one is the parser's own, so it is told in its place. */
    void error(const char *code, const QString &message, ByteRange bytes);
    void warning(const char *code, const QString &message, ByteRange bytes);
    void note(const char *code, const QString &message, ByteRange bytes);

    /** Whether there are characters beyond ASCII in @p bytes, in a text that is UTF-8. */
    [[nodiscard]] bool holdsUtf8(ByteRange bytes) const;
    /** Warns of what both languages do to a value: UTF-8 is taken for Latin-1. */
    void lookAtText(ByteRange bytes);
    /** Warns where the number in @p bytes is not the one that a double holds. */
    void lookAtNumber(ByteRange bytes);
    /** Warns that everything from @p start on is passed over. */
    void restIsNotRead(int start);

    /**
     * The findings in order, once the text was examined. @p refusal is what the parser says:
     * without one there are no errors; one that exhausts the stack is told as @p exhausted says.
     */
    [[nodiscard]] Findings take(const std::optional<ParseException> &refusal,
                                const QString &exhausted);

private:
    struct Entry
    {
        Finding finding;
        ByteRange bytes;
    };

    void add(Finding::Severity severity, const char *code, const QString &message, ByteRange bytes);

    QByteArray m_text;
    AlarmPlaces m_places;
    std::vector<Entry> m_entries;
};

/** What a new parser says to the text in @p bytes, which have their end mark: nothing where it
 * accepts it. */
template <typename Reader>
std::optional<ParseException> refusalOf(const QByteArray &bytes)
{
    try {
        Reader reader(nullptr);
        reader.read(bytes.constData(), static_cast<unsigned int>(bytes.size()));
    } catch (const ParseException &e) {
        return e;
    }
    return std::nullopt;
}

/** `"` and the like around what a message quotes from a text: printable, and not too long. */
[[nodiscard]] QString quotedBytes(const QByteArray &text, ByteRange bytes);

/** "x where a, b or c was expected". */
[[nodiscard]] QString whereExpected(const QString &found, const char *expected);

} // namespace vn::internal

#endif // VN_ALARM_ALARMFINDINGS_P_H
