// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BENCHMARKS_CONFIGTEXT_H
#define VN_BENCHMARKS_CONFIGTEXT_H

/** @file Configuration texts of any size, and the same content in the form of other formats. */

#include <QtCore/QByteArray>
#include <QtCore/QString>

constexpr int kEntries = 50; // a section

/** The text of @p sections sections of so many kinds, which have no key in common; the lines around
 * them, with "%" for the name, are the caller's. */
inline QByteArray makeText(int sections, const QByteArray &start, const char *opening,
                           const char *closing, int kinds = 1)
{
    QByteArray text = start;
    for (int s = 0; s < sections; ++s) {
        const QByteArray name = "section" + QByteArray::number(s);
        text += QByteArray(opening).replace("%", name);
        for (int k = 0; k < kEntries; ++k) {
            // Keys in no order, the same in each section of a kind, as cameras write them.
            const int key = s % kinds * kEntries + k * 37 % kEntries;
            text += "recording_timetable_" + QByteArray::number(key) + "=value " +
                    QByteArray::number(s * kEntries + k) + '\n';
        }
        text += QByteArray(closing).replace("%", name);
    }
    return text;
}

inline QString configText(int sections, int kinds = 1)
{
    return QString::fromLatin1(makeText(sections, "#:1.3===\n#:VN-3.0.6.29\n\n", "SECTION %\n",
                                        "ENDSECTION %\n\n", kinds));
}

inline QByteArray iniText(int sections, int kinds = 1)
{
    return makeText(sections, {}, "[%]\n", "\n", kinds);
}

#endif // VN_BENCHMARKS_CONFIGTEXT_H
