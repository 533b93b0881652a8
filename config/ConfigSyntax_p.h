// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGSYNTAX_P_H
#define VN_CONFIG_CONFIGSYNTAX_P_H

/** @file The marks of configuration texts and the kinds of their lines, for all who read, filter,
 * edit or write them. */

#include "config/TextLines_p.h"

#include <QtCore/QStringView>

namespace vn::internal {

// ---- Lines of the body -------------------------------------------------------------------------

/** The first and the last line of a section begin so; one character, whatever it is, parts the mark
 * from the name. */
constexpr char kStartMark[] = "SECTION";
constexpr char kEndMark[] = "ENDSECTION";

/** The same as they are written, with a blank as that character. */
constexpr char kStartOfLine[] = "SECTION ";
constexpr char kEndOfLine[] = "ENDSECTION ";

constexpr QLatin1Char kCommentMark('#');
constexpr QLatin1Char kValueMark('='); // the first one ends the key

enum class LineKind {
    Empty,
    Comment,
    SectionStart,
    SectionEnd,
    Entry, // outside of sections as well
};

inline LineKind kindOf(QStringView line)
{
    if (line.isEmpty())
        return LineKind::Empty;
    if (line.front() == kCommentMark)
        return LineKind::Comment;
    if (beginsWith(line, kStartMark))
        return LineKind::SectionStart;
    if (beginsWith(line, kEndMark))
        return LineKind::SectionEnd;
    return LineKind::Entry;
}

/** The name in the first line of a section; null where the line ends with the mark. */
inline QStringView nameOfStart(QStringView line)
{
    return textFrom(line, sizeof kStartOfLine - 1);
}

/** The name in the last line of a section; null where the line ends with the mark. */
inline QStringView nameOfEnd(QStringView line)
{
    return textFrom(line, sizeof kEndOfLine - 1);
}

/** The two parts of an entry line: up to the first "=", and after it (null where there is none). */
struct EntryLine
{
    explicit EntryLine(QStringView line)
    {
        const qsizetype equals = line.indexOf(kValueMark);
        key = equals < 0 ? line : line.left(equals);
        if (equals >= 0)
            value = line.mid(equals + 1);
    }

    QStringView key;
    QStringView value;
};

// ---- Lines of the header -----------------------------------------------------------------------

/** The header goes on at least so far, even over empty lines. */
constexpr int kVersionLines = 2;

/** Begins both version lines. */
constexpr char kVersionMark[] = "#:";
/** Begins a line with the address of the camera. */
constexpr char kAddressMark[] = "# Camera IP: ";
/** Stands in a title before the address of the camera. */
constexpr char kTitleMark[] = "Configuration of";

/** What the header holds. */
enum class HeaderField {
    FileVersion,
    SoftwareVersion,
    FactoryIp,
};

/** The file version in a line that begins with kVersionMark. */
inline QStringView fileVersionOf(QStringView line)
{
    return EntryLine(line.mid(sizeof kVersionMark - 1)).key;
}

/** The software version in a line that begins with kVersionMark. */
inline QStringView softwareVersionOf(QStringView line)
{
    return line.mid(sizeof kVersionMark - 1);
}

/** Whether a line behind the version lines holds an address, and which. */
inline bool readAddress(QStringView line, QStringView &address)
{
    if (beginsWith(line, kAddressMark)) {
        // Kept on purpose: this address is not trimmed, that of the title line is.
        address = line.mid(sizeof kAddressMark - 1);
        return true;
    }
    // Kept on purpose: a title at the very start of the line is none.
    const qsizetype title = line.indexOf(QLatin1String(kTitleMark));
    if (title <= 0)
        return false;
    // One character parts the title from the address; it is sizeof's zero byte that is counted.
    address = textFrom(line, title + qsizetype(sizeof kTitleMark)).trimmed();
    return true;
}

} // namespace vn::internal

#endif // VN_CONFIG_CONFIGSYNTAX_P_H
