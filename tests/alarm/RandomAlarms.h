// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_RANDOMALARMS_H
#define VN_TESTS_ALARM_RANDOMALARMS_H

/** @file Random alarm lists and updates: rows of pieces, well formed texts, and such with a damage.
 */

#include "support/Literals.h"
#include "support/Random.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>

/** @p text with some of its bytes changed or removed, or pieces added. */
inline QByteArray damaged(Random &random, QByteArray text, const QList<QByteArray> &pieces,
                          unsigned mostDamages = 2)
{
    for (unsigned count = random.below(mostDamages + 1); count > 0 && !text.isEmpty(); --count) {
        const int place = static_cast<int>(random.below(static_cast<unsigned>(text.size())));
        switch (random.below(3)) {
        case 0:
            text[place] = static_cast<char>(random.below(256));
            break;
        case 1:
            text.remove(place, 1);
            break;
        default:
            text.insert(place, random.oneOf(pieces));
        }
    }
    return text;
}

class RandomLists
{
public:
    explicit RandomLists(unsigned seed)
        : m_random(seed)
    {
    }

    Random &random() { return m_random; }

    /** A few pieces in a row. */
    QByteArray ofPieces()
    {
        QByteArray text;
        for (unsigned count = m_random.below(14); count > 0; --count)
            text += m_random.oneOf(m_pieces);
        if (m_random.below(20) == 0)
            text.insert(static_cast<int>(m_random.below(unsigned(text.size()) + 1)), '\0');
        return m_random.below(2) ? text : "[" + text + "]";
    }

    /** A list that is well formed. */
    QByteArray valid(int depth = 4, bool hasComments = true)
    {
        const QList<QByteArray> separators = {"", "", "", " ", "\n", "/* c */", " /***/ "};
        const auto space = [&] { return separators.at(int(m_random.below(hasComments ? 7 : 5))); };
        const bool isObject = m_random.below(2) == 0;
        const QList<QByteArray> keys = {"a",    "b",         "\"b\"",        "'b'",
                                        "\"\"", "cam-1/x.y", "\"\xe4 text\""};
        const QList<QByteArray> scalars = {"0",     "-1.5e3", "12345678901234567890",
                                           "0.1",   "true",   "null",
                                           "false", "on",     "17.25",
                                           "'x'",   "''",     "\"y z\""};
        QByteArray text = isObject ? "{" : "[";
        for (unsigned i = 0, count = m_random.below(6); i < count; ++i) {
            text += i > 0 ? "," : "";
            text += space();
            if (isObject)
                text += m_random.oneOf(keys) + space() + ":" + space();
            text += depth > 1 && m_random.below(3) == 0 ? valid(depth - 1, hasComments)
                                                        : m_random.oneOf(scalars);
            text += space();
        }
        return text + (isObject ? "}" : "]");
    }

    /** A list that is or was well formed, such as cameras write them with @p hasComments false. */
    QByteArray nearlyValid(bool hasComments = true)
    {
        return damaged(m_random, valid(4, hasComments), m_pieces, hasComments ? 2 : 1);
    }

    /** One that needs about the stack that there is. */
    QByteArray deep()
    {
        const QList<QByteArray> openings = {"[", "[", "[1,", "[[1],", "{a:", "{a:1,b:"};
        QByteArray text;
        QByteArray closing;
        for (unsigned levels = 60 + m_random.below(80); levels > 0; --levels) {
            const QByteArray &opening = m_random.oneOf(openings);
            text += opening;
            closing.prepend(opening.startsWith('[') ? ']' : '}');
        }
        return text + "[" + QByteArray("0,").repeated(int(m_random.below(3) * m_random.below(30))) +
               "0]" + closing;
    }

private:
    Random m_random;
    // clang-format off
    const QList<QByteArray> m_pieces = {
        "{", "}", "[", "]", ",", ":", "{", "}", "[", "]", ",", ":", " ", "\n", "\t\r",
        "a", "x1", "_x-./9", "true", "false", "null", "trueish", "{a:1,b:'x'}", "[1,2]",
        "0", "-0", "01", "1", "-1", "1.5", "0.5", "-0.25", "-0.0", ".5", "1.", "1e3", "1.5E-3", "0e5",
        "12e", "-", "+", "1e400", "1e-400", "99999999999999999999", "5e-324", "9007199254740993",
        "1e22", "123456789012345e22", "0.000000000000000000000001",
        "\"", "'", "\"a b\"", "'x'", "''", "\"\\n\"", "'\\u00e4'", "\"\\\"\"", "'\"'", "\"'\"", "\\u12",
        "\\", "'\\", "/", "/*", "*/", "*", "/* c */", "\x01", "\x7f", "\xe4", "'\xe4'", "#",
        "\0"_b, "\'a\0\0b\'"_b, "\"\0"_b, "/*\0c\0\0*/"_b, "/*c\0"_b};
    // clang-format on
};

class RandomUpdates
{
public:
    explicit RandomUpdates(unsigned seed)
        : m_random(seed)
    {
    }

    Random &random() { return m_random; }

    /** A few values and pieces in a row. */
    QByteArray ofPieces()
    {
        QByteArray text = m_random.below(4) ? ""_b : m_random.below(2) ? "x="_b : "#"_b;
        for (unsigned count = m_random.below(8); count > 0; --count)
            text += m_random.below(2) ? m_random.oneOf(m_values) : m_random.oneOf(m_pieces);
        return text;
    }

    /** An update that is or was well formed. */
    QByteArray nearlyValid()
    {
        const QList<QByteArray> keys = {"x", "y", "key ", "a", "\"q\"", "z9"};
        QByteArray text;
        if (m_random.below(10) == 0)
            text = "#Camera offline:" + m_random.oneOf(m_values);
        else
            for (unsigned i = 0, count = 1 + m_random.below(4); i < count; ++i)
                text += QByteArray(i == 0              ? ""
                                   : m_random.below(4) ? ";"
                                                       : ";\n") +
                        m_random.oneOf(keys) + "=" + m_random.oneOf(m_values);
        return damaged(m_random, text, m_pieces);
    }

    /** One that needs about the stack that there is. */
    QByteArray deep()
    {
        QByteArray text;
        for (unsigned count = m_random.below(100); count > 0; --count)
            text += "k" + QByteArray::number(m_random.below(300)) + "=1;";
        text += "last=s";
        for (unsigned count = m_random.below(2) ? 0 : m_random.below(110); count > 0; --count)
            text += ",s";
        return text;
    }

private:
    Random m_random;
    // clang-format off
    const QList<QByteArray> m_values = {
        "1", "-5", "0012", "5 ", " 5", "4294967297", "-99999999999999999999", "2.5", "-.5", "1.", "1.5a",
        "true", "false", "true ", "2010-05-01", "2010-13-45", "12:30:00", "99:99:99", "1234-56",
        "2010-05-011", "text", "a", "a,b", "a,b,c", "\"a;b\"", "\"\"", "\"\n\",x", "[x]\\^/_",
        "2012-02-29", "2011-02-29", "9999-12-31", "99999999999999999999.25"};
    const QList<QByteArray> m_pieces = {
        ";", "=", ",", "#", ":", "-", "\n", " ", "\t", "\r", "\"", "!", "a", "x", "\xe4", "0", ".",
        "\x7f", "`", "\0"_b, "\"a\0\0b\""_b, "\"\0\""_b, "\"a\0"_b, "\"\0b"_b};
    // clang-format on
};

#endif // VN_TESTS_ALARM_RANDOMALARMS_H
