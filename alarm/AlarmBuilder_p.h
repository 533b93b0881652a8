// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMBUILDER_P_H
#define VN_ALARM_ALARMBUILDER_P_H

/** @file What the scanners and grammars of both languages write to. */

#include "alarm/AlarmTape_p.h"
#include "alarm/SyntaxErrorText_p.h"
#include "alarm/TokenLocation_p.h"

#include <vector>

namespace vn::internal {

/** Where a scanner puts the value of its token. */
struct AlarmToken
{
    using Kind = AlarmEntry::Kind;

    void setNull() { set(Kind::Null); }
    void setBool(bool value) { set(Kind::Bool, value ? 1 : 0); }
    void setNumber(double value) { set(Kind::Number, value); }
    void setInteger(qint32 value)
    {
        set(Kind::Number, value);
        isInteger = true;
    }
    void setDate(double yearMonthDay) { set(Kind::Date, yearMonthDay); }
    void setTime() { set(Kind::Time); }
    /** @p length bytes at @p text, which stand in one piece in the text. */
    void setWord(const char *text, int length) { setBytes(Kind::Word, text, length); }
    void setQuoted(const char *text, int length) { setBytes(Kind::Quoted, text, length); }
    /** A quoted text that was collected piece by piece. */
    void setCollected(const QString &text)
    {
        set(Kind::Quoted);
        isCollected = true;
        collected = text;
    }

    bool throwsFatalErrors = false; // what the scanner does where it cannot go on

    bool hasValue = false;
    Kind kind = Kind::Null;
    bool isInteger = false;
    bool isCollected = false;
    double number = 0;
    QLatin1String bytes;
    QString collected;
    int space = 0; // bytes of white space behind the token, which are no token yet

private:
    void set(Kind newKind, double value = 0)
    {
        hasValue = true;
        kind = newKind;
        number = value;
        isInteger = false;
        isCollected = false;
    }
    void setBytes(Kind newKind, const char *text, int length)
    {
        set(newKind);
        bytes = QLatin1String(text, length);
    }
};

/** Makes the tape of one text at a time. @p Location is where a token stands. */
template <typename Location>
class AlarmBuilder
{
    Q_DISABLE_COPY(AlarmBuilder)

public:
    AlarmBuilder(void *scanner, bool keepsQuotes)
        : m_scanner(scanner)
        , m_tape(keepsQuotes)
    {
    }

    // ---- A parse -------------------------------------------------------------------------------

    /** A parse begins. */
    void reset()
    {
        m_location = {0, 0};
        m_errorMessage = m_initialMessage;
        m_tape.clear();
        m_lastWhole = -1; // a text that is too long never begins
    }
    /** The grammar begins to read. */
    void begin()
    {
        m_open.clear();
        m_lastWhole = -1;
        m_token.space = 0;
    }

    AlarmTape &tape() { return m_tape; }
    Location &location() { return m_location; }
    AlarmToken &token() { return m_token; }
    const QString &errorMessage() const { return m_errorMessage; }
    void setErrorMessage(const char *message) { m_errorMessage = QString::fromLatin1(message); }
    /** The entry of the last quoted text, where that was in one piece; else -1. */
    int lastWhole() const { return m_lastWhole; }

    // ---- For the grammar -----------------------------------------------------------------------

    void *scanner() const { return m_scanner; }

    /** The scanner has found a token. */
    int keep(int code)
    {
        if (m_token.hasValue)
            keepValue();
        else if (code == '{' || code == '[')
            m_open.push_back({m_location.start, m_tape.size()});
        return code;
    }

    /** An array or object of @p count elements or members ends with the token. */
    void array(int count) { close(AlarmEntry::Kind::Array, count); }
    void object(int count) { close(AlarmEntry::Kind::Object, count); }

    /** The last @p count texts, which no brackets are around, are one array. */
    void wrapTexts(int count)
    {
        m_tape.wrap(AlarmEntry::Kind::Array, count, m_tape.size() - count);
    }
    /** All there is, @p count pairs without brackets, is one object. */
    void wrapPairs(int count) { m_tape.wrap(AlarmEntry::Kind::Object, count, 0); }

    /**
     * Reports the @p unexpected symbol and, if they are few, the @p count @p expected ones that the
     * grammar could take; @p name gives the name of each. False where there was no memory.
     */
    template <typename Symbol, typename Name>
    bool reportSyntaxError(Symbol unexpected, const Symbol *expected, int count, Name name)
    {
        const char *names[kMaxExpectedTokens];
        for (int i = 0; i < count; ++i)
            names[i] = name(expected[i]);
        const SyntaxErrorText error(name(unexpected), names, count);
        setErrorMessage(error.text());
        return error.isComplete();
    }

private:
    /** A bracket that is not closed yet. */
    struct Open
    {
        qint32 start;
        int first; // the entry behind those before it
    };

    void keepValue()
    {
        m_token.hasValue = false;
        const auto kind = m_token.kind;
        if (kind == AlarmEntry::Kind::Quoted)
            m_lastWhole = m_token.isCollected ? -1 : m_tape.size();
        if (m_token.isCollected) {
            m_tape.addKept(kind, m_location.start, m_location.end, m_token.collected);
        } else if ((kind == AlarmEntry::Kind::Word || kind == AlarmEntry::Kind::Quoted) &&
                   !m_tape.isTextInMemory()) {
            m_tape.addKept(kind, m_location.start, m_location.end,
                           m_token.bytes.isEmpty() ? QString() : QString(m_token.bytes));
        } else {
            AlarmEntry &entry = m_tape.add(kind, m_location.start, m_location.end);
            entry.number = m_token.number;
            entry.integer = m_token.isInteger;
        }
    }

    void close(AlarmEntry::Kind kind, int count)
    {
        const Open open = m_open.back();
        m_open.pop_back();
        m_tape.addContainer(kind, open.start, m_location.end, count, open.first);
    }

    void *const m_scanner;
    AlarmTape m_tape;
    std::vector<Open> m_open;
    AlarmToken m_token;
    Location m_location = {0, 0};
    QString m_errorMessage;
    const QString m_initialMessage = initialisationError();
    int m_lastWhole = -1;
};

} // namespace vn::internal

#endif // VN_ALARM_ALARMBUILDER_P_H
