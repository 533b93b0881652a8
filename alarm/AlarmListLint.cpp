// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// All faults of an alarm list. The parser itself says whether and where a text is refused first;
// the reader here goes on behind a fault as if what was missing had been there.

#include "alarm/AlarmFindings_p.h"
#include "alarm/AlarmLint.h"
#include "alarm/AlarmListReader_p.h"
#include "alarm/Bytes_p.h"

#include <QtCore/QSet>

namespace vn {

using namespace internal;

namespace {

bool isControl(char byte)
{
    return (byte >= 1 && byte < 0x20) || byte == 0x7f;
}

enum class Kind { End, Stray, Mark, Text, Number, Bool, Null };

struct Token : ByteRange
{
    Kind kind = Kind::End;
    char mark = '\0';  // of a mark: itself
    ByteRange content; // of a text: what is between its quotes
};

/** Finds the tokens of a list, and goes on where the parser's scanner would end the text. */
class Scanner
{
public:
    Scanner(const QByteArray &text, AlarmFindings &findings)
        : m_text(text)
        , m_findings(findings)
    {
    }

    Token next()
    {
        Token token;
        while (skip()) {
        }
        token.start = m_at;
        if (!isHere(0)) {
            token.end = m_at;
            return token;
        }
        const char first = at(0);
        if (isIn(first, ",:[]{}")) {
            token.kind = Kind::Mark;
            token.mark = first;
            ++m_at;
        } else if (const int length = numberLength()) {
            token.kind = Kind::Number;
            m_at += length;
        } else if (isIn(first, "\"'")) {
            token.kind = Kind::Text;
            ++m_at;
            readString(token, first);
        } else if (is(WordStart, first)) {
            while (is(Word, at(0)))
                ++m_at;
            token.content = {token.start, m_at};
            const QByteArray word = m_text.mid(token.start, m_at - token.start);
            token.kind = word == "true" || word == "false" ? Kind::Bool
                         : word == "null"                  ? Kind::Null
                                                           : Kind::Text;
        } else {
            token.kind = Kind::Stray;
            ++m_at;
        }
        token.end = m_at;
        return token;
    }

    /** Whether the text ends in a comment whose last byte is a star: that ends the process. */
    [[nodiscard]] bool isJammed() const noexcept { return m_isJammed; }
    /** Where the string or comment begins that the text ends in; -1 where it ends in none. */
    [[nodiscard]] int unclosed() const noexcept { return m_unclosed; }
    [[nodiscard]] bool unclosedIsComment() const noexcept { return m_unclosedIsComment; }
    /** Whether the parser's scanner would have ended the text inside the last string. */
    [[nodiscard]] bool isStringBroken() const noexcept { return m_isStringBroken; }

private:
    [[nodiscard]] bool isHere(int offset) const { return m_at + offset < m_text.size(); }
    [[nodiscard]] char at(int offset) const
    {
        return isHere(offset) ? m_text.at(m_at + offset) : '\0';
    }

    /** Passes over white space or a comment; whether there was any. */
    bool skip()
    {
        const int before = m_at;
        while (is(Space, at(0)))
            ++m_at;
        if (at(0) == '/' && at(1) == '*')
            skipComment();
        return m_at != before;
    }

    void skipComment()
    {
        const int start = m_at;
        m_at += 2;
        while (isHere(0)) {
            if (at(0) != '*') {
                ++m_at;
            } else if (!isHere(1)) {
                m_isJammed = true;
                break;
            } else {
                m_at += 2; // a star and what follows it, whatever it is
                if (m_text.at(m_at - 1) == '/')
                    return;
            }
        }
        m_at = m_text.size();
        m_unclosed = start;
        m_unclosedIsComment = true;
    }

    [[nodiscard]] int digits(int offset) const
    {
        int count = 0;
        while (is(Digit, at(offset + count)))
            ++count;
        return count;
    }

    [[nodiscard]] int numberLength() const
    {
        const int sign = at(0) == '-' ? 1 : 0;
        const int whole = at(sign) == '0' ? 1 : digits(sign);
        if (whole == 0)
            return 0;
        int length = sign + whole;
        const int fraction = at(length) == '.' ? digits(length + 1) : 0;
        if (fraction > 0)
            length += 1 + fraction;
        else if (at(sign) == '0')
            return sign ? 0 : 1;
        if (isIn(at(length), "eE")) {
            const int mark = isIn(at(length + 1), "+-") ? 2 : 1;
            if (const int exponent = digits(length + mark))
                length += mark + exponent;
        }
        return length;
    }

    /** Reads up to the closing quote; a line end closes a string that has a fault already. */
    void readString(Token &token, char quote)
    {
        m_isStringBroken = false;
        bool hasEscape = false;
        token.content.start = m_at;
        for (; isHere(0) && at(0) != quote; ++m_at) {
            if (at(0) == '\\' && (is(Escaped, at(1)) || at(1) == quote)) {
                hasEscape = true;
                ++m_at;
            } else if (at(0) == '\\' && at(1) == 'u' && is(Hex, at(2)) && is(Hex, at(3)) &&
                       is(Hex, at(4)) && is(Hex, at(5))) {
                hasEscape = true;
                m_at += 5;
            } else if (at(0) == '\\' || isControl(at(0))) {
                if (!m_isStringBroken)
                    complain(token.start);
                m_isStringBroken = true;
                if (at(0) == '\n')
                    break;
            }
        }
        token.content.end = m_at;
        if (at(0) == quote) {
            ++m_at;
        } else if (!isHere(0) && !m_isStringBroken) {
            m_isStringBroken = true;
            m_unclosed = token.start;
            m_findings.error(
                "string-not-closed",
                QString::fromLatin1("this text is never closed by %1").arg(QLatin1Char(quote)),
                {token.start, m_text.size()});
        }
        if (hasEscape && !m_isStringBroken)
            m_findings.warning("escape-not-decoded",
                               QString::fromLatin1("escapes stay as they are: the value is %1")
                                   .arg(quotedBytes(m_text, token.content)),
                               {token.start, m_at});
    }

    void complain(int start)
    {
        const ByteRange bytes = {start, m_at + 1};
        if (at(0) == '\n' || at(0) == '\r')
            m_findings.error("string-not-closed",
                             QString::fromLatin1("this text is not closed before its line ends"),
                             bytes);
        else if (at(0) == '\\')
            m_findings.error("unknown-escape",
                             QString::fromLatin1("%1 is no escape of this kind of text")
                                 .arg(quotedBytes(m_text, {m_at, qMin(m_at + 2, m_text.size())})),
                             bytes);
        else
            m_findings.error("control-character",
                             QString::fromLatin1("the control character %1 cannot stand in a text")
                                 .arg(quotedBytes(m_text, {m_at, m_at + 1})),
                             bytes);
    }

    QByteArray m_text;
    AlarmFindings &m_findings;
    int m_at = 0;
    int m_unclosed = -1;
    bool m_unclosedIsComment = false;
    bool m_isJammed = false;
    bool m_isStringBroken = false;
};

/** What may come next. */
enum class State {
    Top,
    ArrayBegin,
    ArrayValue,
    ArrayNext,
    ObjectBegin,
    ObjectKey,
    Colon,
    MemberValue,
    ObjectNext,
    Done,
};

/** What is expected in a state, for messages. */
const char *expectedIn(State state)
{
    switch (state) {
    case State::Top:
        return "{ or [";
    case State::ArrayBegin:
        return "a value or ]";
    case State::ArrayNext:
        return "a comma or ]";
    case State::ObjectBegin:
        return "a key or }";
    case State::ObjectKey:
        return "a key";
    case State::Colon:
        return "a colon";
    case State::ObjectNext:
        return "a comma or }";
    case State::Done:
        return "the end";
    case State::ArrayValue:
    case State::MemberValue:
        break;
    }
    return "a value";
}

/** Reads a list to its end, whatever it meets. */
class Reader
{
public:
    Reader(const QByteArray &text, AlarmFindings &findings)
        : m_text(text)
        , m_findings(findings)
        , m_scanner(text, findings)
    {
    }

    void read()
    {
        for (;;) {
            const Token token = m_scanner.next();
            m_isTold = false;
            if (token.kind == Kind::End)
                return end(token);
            if (m_state == State::Done)
                return rest(token);
            if (token.kind == Kind::Stray) {
                stray(token);
                continue;
            }
            m_isTold = token.kind == Kind::Text && m_scanner.isStringBroken();
            while (!take(token)) {
            }
            if (m_scanner.unclosed() >= 0 && !m_scanner.unclosedIsComment())
                return; // inside a string: nothing is missing but its end
            m_before = token;
        }
    }

    [[nodiscard]] const Scanner &scanner() const noexcept { return m_scanner; }
    /** What is open where the parser's stack has no room any more; null where it has. */
    [[nodiscard]] const QString &exhausted() const noexcept { return m_exhausted; }

private:
    /** The stack of the parser holds 200 entries, its start among them. */
    static constexpr int kFullStack = 199;
    static constexpr int kNearlyFullStack = 180;

    struct Frame
    {
        char mark;
        int start;             // of the mark
        int pushed;            // entries of the parser's stack that it takes
        int values = 0;        // read inside of it
        QSet<QByteArray> keys; // of an object
    };

    // ---- The parser's stack --------------------------------------------------------------------

    void push(const Token &token, int count = 1)
    {
        if (!m_frames.empty())
            m_frames.back().pushed += count;
        m_depth += count;
        if (m_depth >= kFullStack && m_exhausted.isNull())
            m_exhausted =
                QString::fromLatin1("too much is open here: level %1, value %2 of it; an array "
                                    "holds up to 99 values, an object 98, arrays nest up to 197 "
                                    "deep, and all that is open shares this room")
                    .arg(m_frames.size())
                    .arg(m_frames.empty() ? 0 : m_frames.back().values + 1);
        if (m_depth >= kNearlyFullStack && m_fullest.end == 0)
            m_fullest = token;
    }

    void pop(int count)
    {
        m_depth -= count;
        m_frames.back().pushed -= count;
    }

    // ---- Values --------------------------------------------------------------------------------

    void fault(const char *code, const Token &token)
    {
        if (m_isTold)
            return;
        m_isTold = true;
        QString message = whereExpected(words(token), expectedIn(m_state));
        const bool goesOnANumber = m_before.kind == Kind::Number && m_before.end == token.start;
        if (goesOnANumber && (token.kind == Kind::Number || isIn(m_text.at(token.start), "eE"))) {
            code = "number-form";
            message += QString::fromLatin1(": numbers have no leading zeros, and none is 0 with an "
                                           "exponent");
        }
        m_findings.error(code, message, token);
    }

    [[nodiscard]] QString words(const Token &token) const
    {
        switch (token.kind) {
        case Kind::Text:
            return QString::fromLatin1("the text %1").arg(quotedBytes(m_text, token.content));
        case Kind::Mark:
            if (token.mark == ',')
                return QString::fromLatin1("a comma");
            if (token.mark == ':')
                return QString::fromLatin1("a colon");
            break;
        case Kind::Number:
            return QString::fromLatin1("the number ") + raw(token);
        default:
            break;
        }
        return raw(token);
    }

    [[nodiscard]] QString raw(const Token &token) const
    {
        return QString::fromLatin1(m_text.mid(token.start, qMin(token.end - token.start, 40)));
    }

    void open(const Token &token)
    {
        push(token);
        m_frames.push_back({token.mark, token.start, 0, 0, {}});
        m_openArrays += token.mark == '[' ? 1 : 0;
        m_state = token.mark == '[' ? State::ArrayBegin : State::ObjectBegin;
    }

    void close(const Token &token)
    {
        if (const int inside = m_frames.back().pushed)
            pop(inside - 1); // the values are one
        push(token);
        m_depth -= m_frames.back().pushed + 1; // with the opening mark, which the outer one counts
        m_openArrays -= m_frames.back().mark == '[' ? 1 : 0;
        m_frames.pop_back();
        if (m_frames.empty()) {
            m_state = State::Done;
            return;
        }
        --m_frames.back().pushed;
        value(token);
    }

    /** A value is complete. */
    void value(const Token &token)
    {
        push(token);
        ++m_frames.back().values;
        if (m_frames.back().mark == '{') {
            pop(2); // key, colon and value are one member
            m_state = State::ObjectNext;
        } else {
            m_state = State::ArrayNext;
        }
    }

    void key(const Token &token)
    {
        const ByteRange content = token.kind == Kind::Text ? token.content : ByteRange(token);
        const QByteArray name = m_text.mid(content.start, content.end - content.start);
        if (m_frames.back().keys.contains(name))
            m_findings.warning("key-repeated",
                               QString::fromLatin1("the key %1 stands here once more; looking it "
                                                   "up gives the first one's value")
                                   .arg(quotedBytes(m_text, content)),
                               token);
        m_frames.back().keys.insert(name);
        if (token.kind == Kind::Text)
            m_findings.lookAtText(content);
        push(token);
        m_state = State::Colon;
    }

    void scalar(const Token &token)
    {
        if (token.kind == Kind::Number)
            m_findings.lookAtNumber(token);
        else if (token.kind == Kind::Text)
            m_findings.lookAtText(token.content);
        value(token);
    }

    // ---- Tokens --------------------------------------------------------------------------------

    /** Takes the token in the state at hand; false when it is to be taken in the next one. */
    bool take(const Token &token)
    {
        const char mark = token.mark;
        const bool isValue = token.kind != Kind::Mark;
        switch (m_state) {
        case State::Top:
            if (mark == '{' || mark == '[') {
                open(token);
                return true;
            }
            fault("list-expected", token);
            if (isValue)
                m_state = State::Done;
            return true;
        case State::ArrayBegin:
        case State::ArrayValue:
        case State::MemberValue:
            if (isValue)
                scalar(token);
            else if (mark == '{' || mark == '[')
                open(token);
            else if (mark == ']' && m_state == State::ArrayBegin)
                close(token);
            else
                return missingValue(token);
            return true;
        case State::ArrayNext:
        case State::ObjectNext:
            return next(token);
        case State::ObjectBegin:
        case State::ObjectKey:
            return memberBegins(token);
        case State::Colon:
            if (mark == ':') {
                push(token);
                m_state = State::MemberValue;
                return true;
            }
            fault("colon-expected", token);
            push(token);
            m_state = State::MemberValue;
            return false;
        case State::Done:
            break;
        }
        return true;
    }

    bool missingValue(const Token &token)
    {
        fault("value-expected", token);
        if (token.mark == ':')
            return true;
        value(token);
        return false;
    }

    bool next(const Token &token)
    {
        const bool isArray = m_state == State::ArrayNext;
        if (token.mark == ',') {
            push(token);
            m_state = isArray ? State::ArrayValue : State::ObjectKey;
            return true;
        }
        if (token.mark == (isArray ? ']' : '}')) {
            close(token);
            return true;
        }
        fault("comma-expected", token);
        if (token.mark == ']' || token.mark == '}')
            return mismatch(token);
        if (!isArray && token.kind != Kind::Mark && token.kind != Kind::Text)
            return true; // no key either
        push(token);     // the comma that is missing
        if (token.mark == ':') {
            m_state = isArray ? State::ArrayValue : State::MemberValue;
            if (!isArray)
                push(token, 2);
            return true;
        }
        m_state = isArray ? State::ArrayValue : State::ObjectKey;
        return false;
    }

    bool memberBegins(const Token &token)
    {
        if (token.kind == Kind::Text) {
            key(token);
            return true;
        }
        if (token.mark == '}' && m_state == State::ObjectBegin) {
            close(token);
            return true;
        }
        fault("key-expected", token);
        if (token.mark == '}') {
            close(token);
        } else if (token.mark == ']') {
            return mismatch(token);
        } else if (token.mark == ':') {
            push(token, 2);
            m_state = State::MemberValue;
        } else if (token.mark == '[' || token.mark == '{') {
            push(token, 2);
            open(token);
        } else if (token.kind != Kind::Mark) {
            key(token);
        }
        return true;
    }

    /** A closing mark of the other kind closes what it fits, if anything, and all inside of it. */
    bool mismatch(const Token &token)
    {
        const char wanted = token.mark == ']' ? '[' : '{';
        const int openMarks = static_cast<int>(m_frames.size());
        if ((wanted == '[' ? m_openArrays : openMarks - m_openArrays) == 0)
            return true; // as if it were not there
        while (m_frames.back().mark != wanted)
            close(token);
        close(token);
        return true;
    }

    void stray(const Token &token)
    {
        const bool isPoint = m_text.at(token.start) == '.' && m_before.kind == Kind::Number &&
                             m_before.end == token.start;
        const bool isOfNumber = isPoint || isIn(m_text.at(token.start), "-+");
        QString message = whereExpected(quotedBytes(m_text, token), expectedIn(m_state));
        if (isOfNumber)
            message += QString::fromLatin1(": numbers have digits on both sides of their point, no "
                                           "\"+\", and none is \"-0\"");
        m_findings.error(isOfNumber ? "number-form" : "unexpected-character", message, token);
    }

    /** Behind the list: one character ends the text there, anything else is a fault. */
    void rest(const Token &token)
    {
        if (token.kind == Kind::Stray) {
            m_findings.restIsNotRead(token.start);
        } else if (token.kind == Kind::Text && m_scanner.isStringBroken()) {
            // The parser takes a string that has no end for the end of the text.
            m_findings.warning("string-not-closed",
                               QString::fromLatin1("this text is never closed, and the parser goes "
                                                   "on inside of it with the next list"),
                               token);
            m_findings.restIsNotRead(token.start);
        } else {
            fault("end-expected", token);
        }
    }

    void end(const Token &token)
    {
        if (m_scanner.unclosedIsComment()) {
            const ByteRange comment = {m_scanner.unclosed(), m_text.size()};
            if (m_scanner.isJammed())
                m_findings.error("comment-not-closed",
                                 QString::fromLatin1("this comment is never closed, and ends with "
                                                     "\"*\": a parser ends the process here"),
                                 comment);
            else
                m_findings.warning("comment-not-closed",
                                   QString::fromLatin1("this comment is never closed, and the "
                                                       "parser goes on inside of it with the next "
                                                       "list"),
                                   comment);
        }
        if (m_state == State::Top)
            m_findings.error("list-expected",
                             QString::fromLatin1("the text ends where { or [ was expected"), token);
        else if (m_state != State::Done)
            m_findings.error("not-closed",
                             QString::fromLatin1("the text ends where %1 was expected: the %2 at "
                                                 "byte %3 is not closed")
                                 .arg(QString::fromLatin1(expectedIn(m_state)),
                                      QString(QLatin1Char(m_frames.back().mark)))
                                 .arg(m_frames.back().start),
                             token);
        else if (m_exhausted.isNull() && m_fullest.end > 0)
            m_findings.note("nearly-too-long-or-deep",
                            QString::fromLatin1("much is open here; a little more, and a parser "
                                                "would refuse the list"),
                            m_fullest);
    }

    QByteArray m_text;
    AlarmFindings &m_findings;
    Scanner m_scanner;
    State m_state = State::Top;
    std::vector<Frame> m_frames;
    int m_openArrays = 0; // of the frames
    int m_depth = 0;
    bool m_isTold = false; // of the token at hand
    Token m_before;
    Token m_fullest;
    QString m_exhausted;
};

} // namespace

Findings alarmListFindings(const QByteArray &text)
{
    AlarmFindings findings(text);
    Reader reader(text, findings);
    reader.read();

    const std::optional<ParseException> refusal = refusalOf<AlarmListReader>(withEndMark(text));
    const bool isExhausted = refusal && refusal->message() == QLatin1String("memory exhausted");
    return findings.take(refusal, isExhausted ? reader.exhausted() : QString());
}

} // namespace vn
