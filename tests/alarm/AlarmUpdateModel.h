// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_ALARMUPDATEMODEL_H
#define VN_TESTS_ALARM_ALARMUPDATEMODEL_H

/** @file Predicts what AlarmUpdateParser does with a text, by a scanner and tables of its own. */

#include "alarm/LalrModel.h"
#include "alarm/Shown.h"
#include "support/Literals.h"

#include <QtCore/QByteArray>
#include <QtCore/QDate>

#include <cstring>
#include <optional>

/** What a parse gives: a value as shown() shows it, or a message with the place. */
struct AlarmUpdateOutcome
{
    int code = 0;
    QString message;
    int errorState = -1;
    int start = 0;
    int end = 0;
    QString value;
};

class AlarmUpdateModel
{
public:
    static AlarmUpdateOutcome parse(const QByteArray &text)
    {
        AlarmUpdateModel model(text);
        AlarmUpdateOutcome outcome;
        const LalrModel::Outcome run = tables().run<Value>(
            [&model](Value &value) { return model.next(value); },
            [&outcome](int production, const std::vector<Value> &right, bool &isAccepted) {
                return reduce(production, right, isAccepted, outcome.value);
            });
        outcome.code = run.code;
        outcome.message = run.message;
        outcome.errorState = run.errorState;
        outcome.start = model.m_start;
        outcome.end = model.m_end;
        return outcome;
    }

    static const LalrModel &tables()
    {
        static const LalrModel model(
            {"$end"_q, "TSTRING"_q, "TINTEGER"_q, "TFLOAT"_q, "TDATE"_q, "TTIME"_q, "TBOOL"_q,
             "';'"_q, "'='"_q, "','"_q, "'#'"_q, "':'"_q, "'a'"_q},
            {
                {"input"_q, {"members"_q}},                                      // 1
                {"input"_q, {"errormessage"_q}},                                 // 2
                {"input"_q, {"emptyimage"_q}},                                   // 3
                {"members"_q, {"pair"_q}},                                       // 4
                {"members"_q, {"pair"_q, "';'"_q, "members"_q}},                 // 5
                {"pair"_q, {"TSTRING"_q, "'='"_q, "value"_q}},                   // 6
                {"stringlist"_q, {"TSTRING"_q}},                                 // 7
                {"stringlist"_q, {"TSTRING"_q, "','"_q, "stringlist"_q}},        // 8
                {"value"_q, {"TINTEGER"_q}},                                     // 9
                {"value"_q, {"TFLOAT"_q}},                                       // 10
                {"value"_q, {"TDATE"_q}},                                        // 11
                {"value"_q, {"TTIME"_q}},                                        // 12
                {"value"_q, {"TBOOL"_q}},                                        // 13
                {"value"_q, {"stringlist"_q}},                                   // 14
                {"errormessage"_q, {"'#'"_q, "TSTRING"_q, "':'"_q, "TFLOAT"_q}}, // 15
                {"emptyimage"_q, {"'a'"_q, "'='"_q}},                            // 16
            });
        return model;
    }

private:
    explicit AlarmUpdateModel(const QByteArray &text)
        : m_text(text)
    {
    }

    /** A value on its way: text as it is shown, a list of strings, or pairs in the object's order.
     */
    struct Value
    {
        QString text;
        QStringList strings;
        QList<QPair<QString, QString>> pairs;
    };

    static QString shownPairs(const QList<QPair<QString, QString>> &pairs)
    {
        QStringList parts;
        for (const auto &pair : pairs)
            parts << pair.first + ": "_q + pair.second;
        return "{"_q + parts.join(", "_q) + "}"_q;
    }

    static Value reduce(int production, const std::vector<Value> &right, bool &isAccepted,
                        QString &result)
    {
        Value value = right[0];
        switch (production) {
        case 1:
            result = shownPairs(right[0].pairs);
            break;
        case 2:
            result = shownPairs(right[0].pairs);
            isAccepted = true;
            break;
        case 3:
            result = "invalid"_q;
            isAccepted = true;
            break;
        case 5: {
            // A name that is there keeps its place and gets the value from the left.
            const auto &left = right[0].pairs.first();
            value = right[2];
            bool isThere = false;
            for (auto &pair : value.pairs) {
                if (pair.first == left.first) {
                    pair.second = left.second;
                    isThere = true;
                }
            }
            if (!isThere)
                value.pairs.append(left);
            break;
        }
        case 6:
            value.pairs = {{right[0].text, right[2].text}};
            break;
        case 7:
            value.strings = QStringList{quoted(right[0].text)};
            break;
        case 8:
            value.strings = right[2].strings + QStringList{quoted(right[0].text)};
            break;
        case 14:
            value.text = right[0].strings.size() == 1
                             ? right[0].strings.first()
                             : "["_q + right[0].strings.join(", "_q) + "]"_q;
            break;
        case 15:
            value.pairs = {{right[1].text, right[3].text}};
            break;
        default:
            break;
        }
        return value;
    }

    // ---- Scanner -------------------------------------------------------------------------------

    int at(int offset) const
    {
        const int place = m_end + offset;
        return place < m_text.size() ? static_cast<unsigned char>(m_text.at(place)) : -1;
    }
    static bool isDigit(int byte) { return byte >= '0' && byte <= '9'; }
    static bool isIn(int byte, const char *set)
    {
        return byte > 0 && std::strchr(set, byte) != nullptr;
    }
    static bool isWord(int byte)
    {
        return byte == '\t' || byte == ' ' || byte == '_' || (byte >= '.' && byte <= '9') ||
               (byte >= 'A' && byte <= '^') || (byte >= 'a' && byte <= 'z');
    }

    /** The length of a match of @p shape, where 9 stands for a digit; 0 for none. */
    int shape(const char *shape) const
    {
        const int length = static_cast<int>(std::strlen(shape));
        for (int i = 0; i < length; ++i)
            if (shape[i] == '9' ? !isDigit(at(i)) : at(i) != shape[i])
                return 0;
        return length;
    }

    QString next(Value &value)
    {
        for (;;) {
            if (at(0) < 0)
                return "$end"_q;
            // Every rule's length; the longest wins, of equal ones the first.
            int lengths[12] = {};
            while (isIn(at(lengths[1]), "\t \n\r"))
                ++lengths[1];
            lengths[2] = isIn(at(0), "#,;=:-") ? 1 : 0;
            lengths[3] = shape("true");
            lengths[4] = shape("false");
            const int sign = at(0) == '-' ? 1 : 0;
            int digits = 0;
            while (isDigit(at(sign + digits)))
                ++digits;
            lengths[5] = digits ? sign + digits : 0;
            int decimals = 0;
            while (at(sign + digits) == '.' && isDigit(at(sign + digits + 1 + decimals)))
                ++decimals;
            lengths[6] = decimals ? sign + digits + 1 + decimals : 0;
            if (at(0) == '"') {
                const int close = m_text.indexOf('"', m_end + 1);
                lengths[7] = close >= 0 ? close + 1 - m_end : 0;
            }
            while (isWord(at(lengths[8])))
                ++lengths[8];
            lengths[9] = shape("9999-99-99");
            lengths[10] = shape("99:99:99");
            lengths[11] = 1;

            int rule = 1;
            for (int i = 2; i <= 11; ++i)
                if (lengths[i] > lengths[rule])
                    rule = i;
            const QByteArray text = m_text.mid(m_end, lengths[rule]);
            m_start = m_end;
            m_end += lengths[rule];
            const QString string = QString::fromLatin1(text.constData(), text.size());
            switch (rule) {
            case 1:
                continue;
            case 2:
                return text == "-" ? "$undefined"_q : "'%1'"_q.arg(string);
            case 3:
            case 4:
                value.text = string;
                return "TBOOL"_q;
            case 5:
                value.text = QString::number(low32Bits(text));
                return "TINTEGER"_q;
            case 6:
                value.text = shown(numberInC(text));
                return "TFLOAT"_q;
            case 7:
            case 8:
                value.text = string;
                return "TSTRING"_q;
            case 9: {
                const QDate date(text.mid(0, 4).toInt(), text.mid(5, 2).toInt(),
                                 text.mid(8, 2).toInt());
                value.text = date.isValid() ? string + "T00:00:00.000"_q : "invalid date"_q;
                return "TDATE"_q;
            }
            case 10:
                value.text = "invalid date"_q;
                return "TTIME"_q;
            default:
                return "$end"_q;
            }
        }
    }

    /** Decimal digits, held at the ends of 64 bits, then cut to 32. */
    static int low32Bits(const QByteArray &text)
    {
        const bool isNegative = text.startsWith('-');
        const quint64 limit = isNegative ? quint64(1) << 63 : ~quint64(0) >> 1;
        quint64 number = 0;
        for (const char c : isNegative ? text.mid(1) : text) {
            const quint64 digit = static_cast<quint64>(c - '0');
            number = number > (limit - digit) / 10 ? limit : number * 10 + digit;
            if (number == limit)
                break;
        }
        return static_cast<int>(static_cast<quint32>(isNegative ? ~number + 1 : number));
    }

    QByteArray m_text;
    int m_start = 0;
    int m_end = 0;
};

#endif // VN_TESTS_ALARM_ALARMUPDATEMODEL_H
