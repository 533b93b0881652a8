// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmListScan_p.h"

#include "alarm/AlarmTape_p.h"
#include "alarm/NumberText_p.h"

#include <array>

namespace vn::internal {

namespace {

using Kind = AlarmEntry::Kind;

// What a byte may be a part of.
enum : quint8 {
    Space = 1,
    WordStart = 2,
    Word = 4,
    DoubleQuoted = 8,
    SingleQuoted = 16,
};

constexpr std::array<quint8, 256> kClasses = [] {
    std::array<quint8, 256> classes{};
    for (unsigned c = 0x20; c < 256; ++c) {
        if (c == 0x7f || c == '\\')
            continue;
        if (c != '"')
            classes[c] |= DoubleQuoted;
        if (c != '\'')
            classes[c] |= SingleQuoted;
    }
    for (const char c : {' ', '\t', '\r', '\n'})
        classes[static_cast<unsigned char>(c)] |= Space;
    for (unsigned c = 'a'; c <= 'z'; ++c) {
        classes[c] |= WordStart | Word;
        classes[c - 'a' + 'A'] |= WordStart | Word;
    }
    classes['_'] |= WordStart | Word;
    for (unsigned c = '0'; c <= '9'; ++c)
        classes[c] |= Word;
    for (const char c : {'-', '.', '/'})
        classes[static_cast<unsigned char>(c)] |= Word;
    return classes;
}();

bool is(quint8 classOfBytes, char byte)
{
    return kClasses[static_cast<unsigned char>(byte)] & classOfBytes;
}

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

    void skipSpace()
    {
        while (is(Space, *m_at))
            ++m_at;
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
        const quint8 run = *start == '"' ? DoubleQuoted : SingleQuoted;
        do
            ++m_at;
        while (is(run, *m_at));
        if (*m_at != *start)
            return false; // an escape, a control byte, or the end
        ++m_at;
        m_lastQuoted = m_tape.size();
        m_tape.add(Kind::Quoted, offset(start), offset(m_at));
        return true;
    }

    Kind word()
    {
        const char *const start = m_at;
        do
            ++m_at;
        while (is(Word, *m_at));
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
