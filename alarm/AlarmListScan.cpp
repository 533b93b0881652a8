// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmListScan_p.h"

#include "alarm/AlarmTape_p.h"
#include "alarm/Bytes_p.h"
#include "alarm/NumberText_p.h"

#include <array>

namespace vn::internal {

namespace {

using Kind = AlarmEntry::Kind;

/**
 * The stack of the grammar holds 198 symbols, of which a value, with a bracket of its own and the
 * one that closes it, takes three at the most while nothing is inside.
 */
constexpr int kMostSymbols = 198 - 3;

class Scanner
{
public:
    Scanner(const char *data, int length, AlarmTape &tape)
        : m_data(data)
        , m_end(data + length)
        , m_at(data)
        , m_tape(tape)
    {
    }

    bool scan()
    {
        skipSpace();
        if (*m_at != '{' && *m_at != '[')
            return false;
        for (;;) {
            // At the beginning, behind an opening bracket or a comma: an element or a member.
            if (m_depth > 0 && top().closing == '}' && !key())
                return false;
            if (m_symbols > kMostSymbols)
                return false;
            if (*m_at == '{' || *m_at == '[') {
                open();
                if (*m_at != top().closing)
                    continue;
                close();
            } else if (!scalar()) {
                return false;
            }
            // Behind a value.
            for (;;) {
                skipSpace();
                if (m_depth == 0)
                    return m_at == m_end;
                ++top().count;
                if (*m_at == ',')
                    break;
                if (*m_at != top().closing)
                    return false;
                close();
            }
            pass();
            m_symbols = top().symbols + 2 * top().count;
        }
    }

    int lastQuoted() const { return m_lastQuoted; }

private:
    /** An array or object that is not closed yet. */
    struct Open
    {
        char closing;
        int start;
        int first;   // entry
        int symbols; // of the grammar up to its bracket
        int count;
    };

    Open &top() { return m_open[static_cast<std::size_t>(m_depth - 1)]; }
    int offset(const char *at) const { return static_cast<int>(at - m_data); }

    /** Passes over white space and comments; stays before a comment that is not closed, or has a
     * zero byte. */
    void skipSpace()
    {
        do
            m_at = skip(Space, m_at);
        while (*m_at == '/' && skipComment());
    }
    bool skipComment()
    {
        const char *at = m_at + 1;
        if (*at++ != '*')
            return false;
        while (*at != '\0') {
            if (*at++ != '*')
                continue;
            if (*at == '/') {
                m_at = at + 1;
                return true;
            }
            at += *at != '\0' ? 1 : 0; // a star takes what follows with it, another star, too
        }
        return false;
    }
    /** Goes behind a mark. */
    void pass()
    {
        ++m_at;
        skipSpace();
    }

    void open()
    {
        ++m_depth; // at most as many as the grammar has symbols
        top() = {*m_at == '{' ? '}' : ']', offset(m_at), m_tape.size(), ++m_symbols, 0};
        pass();
    }

    void close()
    {
        const Open &open = top();
        ++m_at;
        m_tape.addContainer(open.closing == '}' ? Kind::Object : Kind::Array, open.start,
                            offset(m_at), open.count, open.first);
        --m_depth;
    }

    bool key()
    {
        if (*m_at == '"' || *m_at == '\'') {
            if (!quoted())
                return false;
        } else if (!is(WordStart, *m_at) || word() != Kind::Word) {
            return false;
        }
        skipSpace();
        if (*m_at != ':')
            return false;
        pass();
        m_symbols += 2;
        return true;
    }

    bool scalar()
    {
        if (*m_at == '"' || *m_at == '\'')
            return quoted();
        if (!is(WordStart, *m_at))
            return number();
        word();
        return true;
    }

    bool quoted()
    {
        const char *const start = m_at;
        const ByteClass run = *start == '"' ? DoubleQuoted : SingleQuoted;
        do
            m_at = skip(run, m_at + 1);
        while (*m_at == '\\' && skipEscape(*start));
        if (*m_at != *start)
            return false; // a control byte, a backslash that begins no escape, or the end
        ++m_at;
        m_lastQuoted = m_tape.size();
        m_tape.add(Kind::Quoted, offset(start), offset(m_at));
        return true;
    }

    /** Goes to the last byte of the escape that begins here, if one does. */
    bool skipEscape(char quote)
    {
        int length = 1;
        if (m_at[1] == 'u') {
            do
                ++length;
            while (length < 6 && is(Hex, m_at[length]));
            if (length < 6)
                return false;
            length = 5;
        } else if (m_at[1] != quote && !is(Escaped, m_at[1])) {
            return false;
        }
        m_at += length;
        return true;
    }

    Kind word()
    {
        const char *const start = m_at;
        m_at = skip(Word, m_at + 1);
        const QLatin1String text(start, static_cast<int>(m_at - start));
        const bool isTrue = text == QLatin1String("true");
        const Kind kind = isTrue || text == QLatin1String("false") ? Kind::Bool
                          : text == QLatin1String("null")          ? Kind::Null
                                                                   : Kind::Word;
        m_tape.add(kind, offset(start), offset(m_at)).number = isTrue ? 1 : 0;
        return kind;
    }

    bool number()
    {
        double value = 0;
        const char *const end = readListNumber(m_at, value);
        if (!end)
            return false;
        m_tape.add(Kind::Number, offset(m_at), offset(end)).number = value;
        m_at = end;
        return true;
    }

    const char *const m_data;
    const char *const m_end;
    const char *m_at;
    AlarmTape &m_tape;
    std::array<Open, kMostSymbols + 1> m_open;
    int m_depth = 0;
    int m_symbols = 0;
    int m_lastQuoted = -1;
};

} // namespace

PlainList scanPlainList(const char *data, int length, AlarmTape &tape)
{
    Scanner scanner(data, length, tape);
    PlainList list;
    list.isRead = scanner.scan();
    list.lastQuoted = scanner.lastQuoted();
    return list;
}

} // namespace vn::internal
