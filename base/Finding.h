// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_FINDING_H
#define VN_BASE_FINDING_H

/**
 * @file
 * What is wrong with a text, or worth knowing of it, and where: the one type of all checks of the
 * library. Threads: reentrant, plain values.
 */

#include <QtCore/QList>
#include <QtCore/QString>

namespace vn {

/**
 * A place in a text, for people (line and column) and for programs (offset and length).
 *
 * Lines end with "\n"; lines and columns count from 1, columns in UTF-16 code units. The end is the
 * place behind the last character. Offset and length count from 0 in units of what was checked:
 * UTF-16 code units of a QString, bytes of a QByteArray or a file.
 * @since 1.0.0
 */
struct TextRange
{
    /** The line of the first character. */
    int line = 1;
    /** The column of the first character. */
    int column = 1;
    /** The line of the place behind the last character. */
    int endLine = 1;
    /** The column of the place behind the last character; `column` for an empty range. */
    int endColumn = 1;
    /** Where the range begins. */
    qint64 offset = 0;
    /** How long it is; 0 is a place between two characters. */
    qint64 length = 0;

    /** Whether both name the same place. */
    friend bool operator==(const TextRange &a, const TextRange &b) noexcept
    {
        return a.line == b.line && a.column == b.column && a.endLine == b.endLine &&
               a.endColumn == b.endColumn && a.offset == b.offset && a.length == b.length;
    }
    /** Whether they name different places. */
    friend bool operator!=(const TextRange &a, const TextRange &b) noexcept { return !(a == b); }
};

/**
 * One thing that a check found.
 * @since 1.0.0
 */
struct Finding
{
    /** How bad it is. */
    enum class Severity {
        Error,   ///< The text is refused.
        Warning, ///< The text is read, but something in it is lost, changed or read otherwise.
        Note,    ///< Nothing is lost; worth a look all the same.
    };

    /** How bad it is. */
    Severity severity = Severity::Error;
    /** What kind it is, in words that never change: "section-not-closed". `docs/findings.md` has a
     * row for each. */
    QString code;
    /** What is wrong, in an operator's words; no full stop. */
    QString message;
    /** Where it is. */
    TextRange range;

    /** Whether both say the same of the same place. */
    friend bool operator==(const Finding &a, const Finding &b)
    {
        return a.severity == b.severity && a.code == b.code && a.message == b.message &&
               a.range == b.range;
    }
    /** Whether they differ in anything. */
    friend bool operator!=(const Finding &a, const Finding &b) { return !(a == b); }
};

/** Findings in the order of their places. @since 1.0.0 */
using Findings = QList<Finding>;

} // namespace vn

#endif // VN_BASE_FINDING_H
