// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_TOOL_RANDOMTEXT_H
#define VN_TESTS_TOOL_RANDOMTEXT_H

/** @file Configurations for properties that hold of all of them. */

#include "support/Random.h"

#include <QtCore/QByteArray>

#include <vector>

/** A configuration text with all that the format allows, of names that often meet. */
inline QByteArray randomText(Random &random, const QByteArray &lineEnd)
{
    static const char *const sections[] = {"s", "t", "head", " s"};
    static const char *const lines[] = {"k=1",  "k=2",     "k", "l=x=y", "l=",     "=v",
                                        " #=1", "#k=note", "",  "ä=ö",   "k =4\r", "SECTIO=N"};
    std::vector<QByteArray> parts = {"#:1.0==", "#:VN-1"};
    if (random.below(2))
        parts.push_back("# Camera IP: 10.0.0." + QByteArray::number(random.below(200)));
    if (random.below(3) == 0)
        parts.push_back("# Configuration of 10.1.0.1 ");
    parts.push_back("");
    for (unsigned block = random.below(5); block > 0; --block) {
        if (random.below(3) == 0)
            parts.push_back(lines[random.below(12)]);
        const QByteArray name = sections[random.below(4)];
        parts.push_back("SECTION " + name);
        for (unsigned line = random.below(6); line > 0; --line)
            parts.push_back(lines[random.below(12)]);
        parts.push_back("ENDSECTION " + name);
    }
    QByteArray text;
    for (const QByteArray &part : parts)
        text += part + lineEnd;
    if (random.below(4) == 0)
        text.chop(lineEnd.size());
    return text;
}

#endif // VN_TESTS_TOOL_RANDOMTEXT_H
