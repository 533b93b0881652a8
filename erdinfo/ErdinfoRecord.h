// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ERDINFO_ERDINFORECORD_H
#define VN_ERDINFO_ERDINFORECORD_H

#include "base/Export.h"
#include "base/Finding.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <string>

namespace vn {

/**
 * A time as a record holds it. Threads: reentrant, a plain value.
 * @since 1.0.0
 */
struct ErdinfoTime
{
    /** Whole seconds since 1970-01-01 00:00 UTC, their low 32 bits. */
    quint32 seconds = 0;
    /** Milliseconds within the second, 0 to 999 in a valid record. */
    quint32 milliseconds = 0;

    /** The time that @p microseconds become in a record: what is below a millisecond is dropped, of
     * the seconds the low 32 bits are kept. */
    [[nodiscard]] static constexpr ErdinfoTime fromMicroseconds(quint64 microseconds) noexcept
    {
        return {quint32(microseconds / 1000000), quint32(microseconds / 1000 % 1000)};
    }

    /** The time as date and time, in UTC; more than 999 milliseconds count as further seconds. */
    [[nodiscard]] QDateTime toDateTime() const
    {
        return QDateTime::fromMSecsSinceEpoch(qint64(seconds) * 1000 + milliseconds, Qt::UTC);
    }

    /** Whether both are the same time. */
    friend constexpr bool operator==(const ErdinfoTime &a, const ErdinfoTime &b) noexcept
    {
        return a.seconds == b.seconds && a.milliseconds == b.milliseconds;
    }
    /** Whether they are different times. */
    friend constexpr bool operator!=(const ErdinfoTime &a, const ErdinfoTime &b) noexcept
    {
        return !(a == b);
    }
};

/**
 * The values of an erdinfo record, which describes one event recording, as the record holds them:
 * a record that is read and written again has the same bytes, but for what is reserved.
 * Where they stand: erdinfo/ErdinfoFields.h. What they mean is up to the application.
 * @code
 * vn::ErdinfoRecord record = vn::ErdinfoRecord::load(path);
 * record.id1 = 18;
 * record.setText(&vn::ErdinfoRecord::text1, L"south gate, inside");
 * record.save(path);
 * @endcode
 * Threads: reentrant, a plain value.
 * @since 1.0.0
 */
struct VN_EXPORT ErdinfoRecord
{
    /** The flag word: bits 0 to 7 a small field, bit 8 a flag, the rest reserved; 0 as we write. */
    quint32 flags = 0;
    /** What the first text's field holds: up to 32 characters. Set it with setText(). */
    std::u32string text1;
    /** What the second text's field holds: up to 4 characters. */
    std::u32string text2;
    /** What the third text's field holds: up to 8 characters. */
    std::u32string text3;
    /** The first number. */
    qint32 id1 = 0;
    /** The second number. */
    qint32 id2 = 0;
    /** The first unsigned number. */
    quint32 number1 = 0;
    /** The first time. */
    ErdinfoTime time1;
    /** The second unsigned number. */
    quint32 number2 = 0;
    /** The second time. */
    ErdinfoTime time2;

    /**
     * Sets @p member (one of the three texts) to what the format keeps of @p text: as many bytes of
     * its UTF-32 characters as it has characters, at most the size of the field. So a field holds
     * no more than the first quarter of a text, whose last character may be cut.
     *
     * Example: of "ABCDEFGH" the first text keeps "AB".
     */
    void setText(std::u32string ErdinfoRecord::*member, const std::wstring &text);

    /** What a text of a record says, for people: what is no character is U+FFFD. */
    [[nodiscard]] static QString toString(const std::u32string &text);

    /** The 488 bytes of the record. Of a text that is too long for its field the beginning is
     * written. */
    [[nodiscard]] QByteArray toBytes() const;

    /**
     * Reads the record that @p bytes begin with; what stands behind it is not looked at.
     *
     * Reports nothing by itself: values are read as far as there are 488 bytes, whatever is wrong;
     * of fewer bytes the values are those of a new record. What is wrong is appended to
     * @p findings, in the order of the offsets (bytes from 0), one for a field:
     * `docs/findings.md` lists the codes. erdinfoFieldAt() tells the field of an offset.
     * @param bytes    the record
     * @param findings what is wrong; null when nobody wants to know
     */
    [[nodiscard]] static ErdinfoRecord fromBytes(const QByteArray &bytes,
                                                 Findings *findings = nullptr);

    /**
     * Writes the record to the beginning of the file @p path, which is created when it is missing.
     * An existing file is not truncated: what stands behind the record stays.
     * @throws FileException when the file cannot be opened for reading and writing, or does not
     * take all of the record
     */
    void save(const QString &path) const;

    /**
     * Reads the record that the file @p path begins with.
     * @throws FileException  when the file cannot be opened or read
     * @throws ParseException when it begins with no valid record: a finding is an error. The
     * message is that of the first one, the line is 0, the columns are the offsets of its bytes
     */
    [[nodiscard]] static ErdinfoRecord load(const QString &path);

    /** Whether all values are the same. */
    friend bool operator==(const ErdinfoRecord &a, const ErdinfoRecord &b)
    {
        return a.flags == b.flags && a.text1 == b.text1 && a.text2 == b.text2 &&
               a.text3 == b.text3 && a.id1 == b.id1 && a.id2 == b.id2 && a.number1 == b.number1 &&
               a.time1 == b.time1 && a.number2 == b.number2 && a.time2 == b.time2;
    }
    /** Whether some value differs. */
    friend bool operator!=(const ErdinfoRecord &a, const ErdinfoRecord &b) { return !(a == b); }
};

} // namespace vn

#endif // VN_ERDINFO_ERDINFORECORD_H
