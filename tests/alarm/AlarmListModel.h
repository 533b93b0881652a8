// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_ALARMLISTMODEL_H
#define VN_TESTS_ALARM_ALARMLISTMODEL_H

/** @file Predicts what AlarmListParser does with a text, by a scanner and tables of its own. */

#include "alarm/LalrModel.h"
#include "alarm/Shown.h"
#include "support/Literals.h"

#include <QtCore/QVariant>

#include <clocale>
#include <cstring>

/** What a parse gives: a value, or a message with the place. */
struct AlarmListOutcome
{
    bool endsProcess = false; // by a "*" as the last byte in a comment
    int code = 0;
    QString message;
    int errorState = -1;
    int start = 0;
    int end = 0;
    QVariant value;
};

/** One parser object: its scanner stays in the string or comment in which a text ends. */
class AlarmListModel
{
public:
    AlarmListOutcome parse(const QByteArray &text)
    {
        m_text = text;
        m_position = 0;
        m_start = 0;
        m_end = 0;
        m_endsProcess = false;
        AlarmListOutcome outcome;
        const LalrModel::Outcome run = tables().run<QVariant>(
            [this](QVariant &value) { return next(value); },
            [&outcome](int production, const std::vector<QVariant> &right, bool &) {
                return reduce(production, right, outcome.value);
            });
        outcome.endsProcess = m_endsProcess;
        outcome.code = run.code;
        outcome.message = run.message;
        outcome.errorState = run.errorState;
        outcome.start = m_start;
        outcome.end = m_end;
        return outcome;
    }

    static const LalrModel &tables()
    {
        static const LalrModel model({"$end"_q, "TSTRING"_q, "TNUMBER"_q, "TBOOL"_q, "TNULL"_q,
                                      "'{'"_q, "'}'"_q, "','"_q, "':'"_q, "'['"_q, "']'"_q},
                                     {
                                         {"input"_q, {"object"_q}},                          // 1
                                         {"input"_q, {"array"_q}},                           // 2
                                         {"object"_q, {"'{'"_q, "'}'"_q}},                   // 3
                                         {"object"_q, {"'{'"_q, "members"_q, "'}'"_q}},      // 4
                                         {"members"_q, {"member"_q}},                        // 5
                                         {"members"_q, {"member"_q, "','"_q, "members"_q}},  // 6
                                         {"member"_q, {"TSTRING"_q, "':'"_q, "value"_q}},    // 7
                                         {"array"_q, {"'['"_q, "']'"_q}},                    // 8
                                         {"array"_q, {"'['"_q, "elements"_q, "']'"_q}},      // 9
                                         {"elements"_q, {"value"_q}},                        // 10
                                         {"elements"_q, {"value"_q, "','"_q, "elements"_q}}, // 11
                                         {"value"_q, {"TSTRING"_q}},
                                         {"value"_q, {"TNUMBER"_q}},
                                         {"value"_q, {"object"_q}},
                                         {"value"_q, {"array"_q}},
                                         {"value"_q, {"TBOOL"_q}},
                                         {"value"_q, {"TNULL"_q}},
                                     });
        return model;
    }

private:
    enum class State { Initial, DoubleQuoted, SingleQuoted, Comment };

    static QVariant reduce(int production, const std::vector<QVariant> &right, QVariant &result)
    {
        switch (production) {
        case 1:
        case 2:
            result = right[0];
            return result;
        case 3:
            return QVariantMap();
        case 4:
        case 9:
            return right[1];
        case 6: {
            // The left member becomes the first of its key; the others keep their order.
            const QVariantMap left = right[0].toMap();
            const QVariantMap others = right[2].toMap();
            QMultiMap<QString, QVariant> all;
            QList<QPair<QString, QVariant>> entries;
            for (auto it = others.begin(); it != others.end(); ++it)
                entries.prepend({it.key(), it.value()});
            entries.append({left.firstKey(), left.first()});
            for (const auto &entry : entries)
                all.insert(entry.first, entry.second);
            return QVariant(QVariantMap(all));
        }
        case 7: {
            QVariantMap member;
            member.insert(right[0].toString(), right[2]);
            return member;
        }
        case 8:
            return QVariantList();
        case 10: {
            QVariantList list;
            list.append(right[0]);
            return list;
        }
        case 11: {
            QVariantList list = right[2].toList();
            list.append(right[0]);
            return list;
        }
        default:
            return right[0];
        }
    }

    // ---- Scanner -------------------------------------------------------------------------------

    /** The byte at @p offset from the position, or -1 at the end. */
    int at(int offset) const
    {
        const int place = m_position + offset;
        return place < m_text.size() ? static_cast<unsigned char>(m_text.at(place)) : -1;
    }
    static bool isIn(int byte, const char *set)
    {
        return byte > 0 && std::strchr(set, byte) != nullptr;
    }
    static bool isDigit(int byte) { return byte >= '0' && byte <= '9'; }
    static bool isHex(int byte) { return isIn(byte, "0123456789abcdefABCDEF"); }
    static bool isLetter(int byte)
    {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
    }
    static bool isControl(int byte) { return (byte >= 1 && byte <= 0x1f) || byte == 0x7f; }

    int digits(int from) const
    {
        int length = 0;
        while (isDigit(at(from + length)))
            ++length;
        return length;
    }
    int exponent(int from) const
    {
        if (!isIn(at(from), "eE"))
            return 0;
        const int sign = isIn(at(from + 1), "+-") ? 1 : 0;
        const int count = digits(from + 1 + sign);
        return count ? 1 + sign + count : 0;
    }
    int fraction(int from) const
    {
        const int count = at(from) == '.' ? digits(from + 1) : 0;
        return count ? 1 + count : 0;
    }
    int numberLength() const
    {
        const int sign = at(0) == '-' ? 1 : 0;
        if (at(sign) == '0') {
            const int part = fraction(sign + 1);
            if (part)
                return sign + 1 + part + exponent(sign + 1 + part);
            return sign ? 0 : 1;
        }
        const int count = digits(sign);
        if (!count)
            return 0;
        const int mantissa = sign + count + fraction(sign + count);
        return mantissa + exponent(mantissa);
    }

    void begin(int length)
    {
        m_start = m_end;
        extend(length);
    }
    void extend(int length)
    {
        m_end += length;
        m_position += length;
    }
    QByteArray take(int length) const { return m_text.mid(m_position, length); }

    QString next(QVariant &value)
    {
        for (;;) {
            if (at(0) < 0)
                return "$end"_q;
            switch (m_state) {
            case State::DoubleQuoted:
            case State::SingleQuoted: {
                const int quote = m_state == State::DoubleQuoted ? '"' : '\'';
                const QString token = inString(quote, value);
                if (!token.isEmpty())
                    return token;
                break;
            }
            case State::Comment:
                if (at(0) != '*') {
                    int length = 1;
                    while (at(length) >= 0 && at(length) != '*')
                        ++length;
                    begin(length);
                } else if (at(1) == '/') {
                    m_state = State::Initial;
                    begin(2);
                } else if (at(1) >= 0) {
                    begin(2);
                } else {
                    m_endsProcess = true;
                    return "$end"_q;
                }
                break;
            case State::Initial: {
                const QString token = inText(value);
                if (!token.isEmpty())
                    return token;
                break;
            }
            }
        }
    }

    QString inString(int quote, QVariant &value)
    {
        if (at(0) == quote) {
            m_state = State::Initial;
            extend(1);
            value = s_collected;
            return "TSTRING"_q;
        }
        int length = 0;
        if (at(0) == '\\') {
            if (at(1) == 'u' && isHex(at(2)) && isHex(at(3)) && isHex(at(4)) && isHex(at(5)))
                length = 6;
            else if (at(1) == quote || isIn(at(1), "/\\bfnrt"))
                length = 2;
        } else if (!isControl(at(0))) {
            length = 1;
        }
        if (length == 0) {
            extend(1);
            return "$end"_q;
        }
        s_collected += QString::fromLatin1(take(length).constData(), length); // zero bytes, too
        extend(length);
        return QString();
    }

    QString inText(QVariant &value)
    {
        if (isIn(at(0), " \t\r\n")) {
            int length = 1;
            while (isIn(at(length), " \t\r\n"))
                ++length;
            begin(length);
            return QString();
        }
        if (isIn(at(0), ",:[]{}")) {
            const QChar character = QLatin1Char(static_cast<char>(at(0)));
            begin(1);
            return "'%1'"_q.arg(character);
        }
        if (const int length = numberLength()) {
            static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
            value = strtod_l(take(length).constData(), nullptr, cLocale);
            begin(length);
            return "TNUMBER"_q;
        }
        if (at(0) == '"' || at(0) == '\'') {
            m_state = at(0) == '"' ? State::DoubleQuoted : State::SingleQuoted;
            s_collected.clear();
            begin(1);
            return QString();
        }
        if (isLetter(at(0))) {
            int length = 1;
            while (isLetter(at(length)) || isDigit(at(length)) || isIn(at(length), "-./"))
                ++length;
            const QByteArray word = take(length);
            begin(length);
            if (word == "true" || word == "false") {
                value = word == "true";
                return "TBOOL"_q;
            }
            if (word == "null")
                return "TNULL"_q;
            value = QString::fromLatin1(word);
            return "TSTRING"_q;
        }
        if (at(0) == '/' && at(1) == '*') {
            m_state = State::Comment;
            begin(2);
            return QString();
        }
        begin(1);
        return "$end"_q;
    }

    inline static QString s_collected; // of the strings of all parsers

    State m_state = State::Initial;
    QByteArray m_text;
    int m_position = 0;
    int m_start = 0;
    int m_end = 0;
    bool m_endsProcess = false;
};

#endif // VN_TESTS_ALARM_ALARMLISTMODEL_H
