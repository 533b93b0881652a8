// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "reference/AlarmReference.h"

#include "reference/AlarmText.h"

#include <QtCore/QDate>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QStringList>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace reference {

namespace {

/** The parser's stack has 200 entries, the first of which is the start. */
constexpr int kFullStack = 199;

struct Refused // thrown to end a parse
{
    QString message;
    int place;
};
struct Fatal // thrown where the process would end
{
};

struct Token
{
    QByteArray name = "$end"; // as messages call it
    QString value;            // of a value, its text; of a string, the string itself
};

bool isIn(char character, const char *set)
{
    return character != '\0' && std::strchr(set, character) != nullptr;
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isHex(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool isControl(char c)
{
    return (c >= 1 && c < 0x20) || c == 0x7f;
}

/** Characters of a text, looked at one by one; a zero stands for all behind the end. */
class Scanner
{
public:
    explicit Scanner(const QByteArray &text)
        : m_text(text)
    {
    }

    int start = 0;
    int end = 0;

protected:
    bool atEnd() const { return m_at >= m_text.size(); }
    char at(int offset) const
    {
        return m_at + offset < m_text.size() ? m_text.at(m_at + offset) : '\0';
    }
    bool isHere(int offset) const { return m_at + offset < m_text.size(); }

    template <typename Predicate>
    int run(int offset, Predicate predicate) const
    {
        int length = 0;
        while (isHere(offset + length) && predicate(at(offset + length)))
            ++length;
        return length;
    }

    /** Goes over @p length bytes, which begin a token. */
    QByteArray begin(int length)
    {
        start = end;
        return extend(length);
    }
    /** Goes over @p length more bytes of a token. */
    QByteArray extend(int length)
    {
        end += length;
        m_at += length;
        return m_text.mid(m_at - length, length);
    }

private:
    QByteArray m_text;
    int m_at = 0;
};

/** Keeps the count of the parser's stack. */
class Parser
{
protected:
    void push()
    {
        if (++m_depth >= kFullStack)
            throw Refused{"memory exhausted"_q, 0};
    }
    void pop(int count) { m_depth -= count; }

    [[noreturn]] static void unexpected(const Token &token, const QList<QByteArray> &expected = {},
                                        int place = __builtin_LINE())
    {
        QByteArray message = "syntax error, unexpected " + token.name;
        for (int i = 0; i < expected.size(); ++i)
            message += (i ? " or " : ", expecting ") + expected.at(i);
        throw Refused{QString::fromLatin1(message), place};
    }

private:
    int m_depth = 0;
};

template <typename Reader>
Outcome outcomeOf(Reader &reader)
{
    Outcome outcome;
    try {
        outcome.value = reader.read();
        outcome.isAccepted = true;
    } catch (const Refused &refused) {
        outcome.message = refused.message;
        outcome.start = reader.start();
        outcome.end = reader.end();
        outcome.place = refused.place;
    } catch (const Fatal &) {
        outcome.isFatal = true;
    }
    return outcome;
}

// ---- Alarm lists -------------------------------------------------------------------------------

class ListScanner : public Scanner
{
public:
    ListScanner(const QByteArray &text, ListScannerState &state, QByteArray &pieces)
        : Scanner(text)
        , m_state(state)
        , m_pieces(pieces)
    {
    }

    Token next()
    {
        while (!atEnd()) {
            Token token;
            bool isToken = false;
            switch (m_state.condition) {
            case ListScannerState::Initial:
                isToken = initial(token);
                break;
            case ListScannerState::DoubleQuoted:
                isToken = quoted(token, '"');
                break;
            case ListScannerState::SingleQuoted:
                isToken = quoted(token, '\'');
                break;
            case ListScannerState::Comment:
                comment();
                break;
            }
            if (isToken)
                return token;
        }
        return Token();
    }

private:
    int exponent(int offset) const
    {
        if (!isIn(at(offset), "eE"))
            return 0;
        const int sign = isIn(at(offset + 1), "+-") ? 1 : 0;
        const int digits = run(offset + 1 + sign, isDigit);
        return digits ? 1 + sign + digits : 0;
    }
    int fraction(int offset) const
    {
        const int digits = at(offset) == '.' ? run(offset + 1, isDigit) : 0;
        return digits ? 1 + digits : 0;
    }
    int number() const
    {
        const int sign = at(0) == '-' ? 1 : 0;
        int length = 0;
        if (at(sign) == '0') {
            length = fraction(sign + 1) ? sign + 1 + fraction(sign + 1) : 0;
            if (!length)
                return sign ? 0 : 1;
        } else {
            const int digits = run(sign, isDigit);
            if (!digits)
                return 0;
            length = sign + digits;
            length += fraction(length);
        }
        return length + exponent(length);
    }

    bool initial(Token &token)
    {
        if (const int blanks = run(0, [](char c) { return isIn(c, " \t\r\n"); })) {
            begin(blanks);
            return false;
        }
        if (isIn(at(0), ",:[]{}")) {
            token.name = '\'' + begin(1) + '\'';
            return true;
        }
        if (const int length = number()) {
            token.name = "TNUMBER";
            token.value = shown(numberInC(begin(length)));
            return true;
        }
        if (isIn(at(0), "\"'")) {
            m_state.condition =
                at(0) == '"' ? ListScannerState::DoubleQuoted : ListScannerState::SingleQuoted;
            m_pieces.clear();
            begin(1);
            return false;
        }
        if (isLetter(at(0)) || at(0) == '_') {
            const QByteArray word =
                begin(run(0, [](char c) { return isLetter(c) || isDigit(c) || isIn(c, "-./_"); }));
            if (word == "true" || word == "false") {
                token.name = "TBOOL";
                token.value = QString::fromLatin1(word);
            } else if (word == "null") {
                token.name = "TNULL";
                token.value = "null"_q;
            } else {
                token.name = "TSTRING";
                token.value = QString::fromLatin1(word);
            }
            return true;
        }
        if (at(0) == '/' && at(1) == '*') {
            m_state.condition = ListScannerState::Comment;
            begin(2);
            return false;
        }
        begin(1);
        return true; // the end
    }

    bool quoted(Token &token, char quote)
    {
        if (at(0) == quote) {
            m_state.condition = ListScannerState::Initial;
            extend(1);
            token.name = "TSTRING";
            token.value = QString::fromLatin1(m_pieces.constData(), m_pieces.size());
            return true;
        }
        const int plain =
            run(0, [quote](char c) { return c != quote && c != '\\' && !isControl(c); });
        if (plain) {
            m_pieces += extend(plain);
            return false;
        }
        if (at(0) == '\\' && at(1) == 'u' && isHex(at(2)) && isHex(at(3)) && isHex(at(4)) &&
            isHex(at(5))) {
            m_pieces += extend(6);
            return false;
        }
        if (at(0) == '\\' && (isIn(at(1), "/\\bfnrt") || (isHere(1) && at(1) == quote))) {
            m_pieces += extend(2);
            return false;
        }
        extend(1);
        return true; // the end
    }

    void comment()
    {
        if (const int length = run(0, [](char c) { return c != '*'; })) {
            begin(length);
            return;
        }
        if (!isHere(1))
            throw Fatal();
        if (at(1) == '/')
            m_state.condition = ListScannerState::Initial;
        begin(2);
    }

    ListScannerState &m_state;
    QByteArray &m_pieces;
};

class ListReader : private Parser
{
public:
    ListReader(const QByteArray &text, ListScannerState &state, QByteArray &pieces)
        : m_scanner(text, state, pieces)
    {
    }

    int start() const { return m_scanner.start; }
    int end() const { return m_scanner.end; }

    QString read()
    {
        const Token token = m_scanner.next();
        if (token.name != "'{'" && token.name != "'['")
            unexpected(token, {"'{'", "'['"});
        const QString result = value(token);
        const Token after = m_scanner.next();
        if (after.name != "$end")
            unexpected(after, {"$end"});
        return result;
    }

private:
    /** The value that begins with @p token; it takes one entry of the stack. */
    QString value(const Token &token)
    {
        if (token.name == "'{'")
            return object();
        if (token.name == "'['")
            return array();
        if (!token.name.startsWith('T'))
            unexpected(token);
        push();
        return token.name == "TSTRING" ? quotedInList(token.value) : token.value;
    }

    QString object()
    {
        push(); // the brace
        QList<QPair<QString, QString>> entries;
        int pushed = 1;
        Token token = m_scanner.next();
        if (token.name != "'}'" && token.name != "TSTRING")
            unexpected(token, {"TSTRING", "'}'"});
        while (token.name != "'}'") {
            if (token.name != "TSTRING")
                unexpected(token, {"TSTRING"});
            const QString key = token.value;
            push(); // the key
            const Token colon = m_scanner.next();
            if (colon.name != "':'")
                unexpected(colon, {"':'"});
            push();
            const QString content = value(m_scanner.next());
            entries.append({key, content});
            pop(2); // the three are one member now
            ++pushed;
            token = m_scanner.next();
            if (token.name == "','") {
                push();
                ++pushed;
                token = m_scanner.next();
                if (token.name != "TSTRING")
                    unexpected(token, {"TSTRING"});
            } else if (token.name != "'}'") {
                unexpected(token, {"'}'"});
            } else {
                pop(pushed - 2); // the members are one
                pushed = 2;
            }
        }
        push(); // the closing brace
        pop(pushed);
        std::stable_sort(entries.begin(), entries.end(),
                         [](const auto &a, const auto &b) { return a.first < b.first; });
        QStringList members;
        for (const auto &entry : entries)
            members << quotedInList(entry.first) + ": "_q + entry.second;
        return "{"_q + members.join(", "_q) + "}"_q;
    }

    QString array()
    {
        push(); // the bracket
        QStringList values;
        int pushed = 1;
        Token token = m_scanner.next();
        if (token.name != "']'") {
            for (;;) {
                values.prepend(value(token));
                ++pushed;
                token = m_scanner.next();
                if (token.name == "']'")
                    break;
                if (token.name != "','")
                    unexpected(token, {"']'"});
                push();
                ++pushed;
                token = m_scanner.next();
            }
            pop(pushed - 2); // the elements are one
            pushed = 2;
        }
        push(); // the closing bracket
        pop(pushed);
        return "["_q + values.join(", "_q) + "]"_q;
    }

    ListScanner m_scanner;
};

// ---- Alarm updates -----------------------------------------------------------------------------

class UpdateScanner : public Scanner
{
public:
    using Scanner::Scanner;

    Token next()
    {
        while (!atEnd()) {
            const int blanks = run(0, [](char c) { return isIn(c, "\t \n\r"); });
            const int word = run(0, isWordCharacter);
            if (blanks > 0 && blanks >= word)
                begin(blanks);
            else
                return token(word);
        }
        return Token();
    }

private:
    static bool isWordCharacter(char c)
    {
        return isLetter(c) || isDigit(c) || isIn(c, "\t ./[]^_\\");
    }

    /** Whether the text here has the form @p form, "9" for any digit. */
    bool hasForm(const char *form) const
    {
        for (int i = 0; form[i]; ++i)
            if (form[i] == '9' ? !isDigit(at(i)) : at(i) != form[i])
                return false;
        return true;
    }

    Token token(int word)
    {
        Token token;
        const int sign = at(0) == '-' ? 1 : 0;
        const int digits = run(sign, isDigit);
        const int decimals = at(sign + digits) == '.' ? run(sign + digits + 1, isDigit) : 0;
        const int integer = digits ? sign + digits : 0;
        const int number = decimals ? sign + digits + 1 + decimals : 0;
        const int date = hasForm("9999-99-99") ? 10 : 0;
        const int time = hasForm("99:99:99") ? 8 : 0;
        const int longest = std::max({word, integer, number, date, time});

        if (at(0) == '"') {
            const int inside = run(1, [](char c) { return c != '"'; });
            if (isHere(1 + inside)) {
                token.name = "TSTRING";
                const QByteArray text = begin(inside + 2);
                token.value = QString::fromLatin1(text.constData(), text.size());
                return token;
            }
        }
        if (longest == 0) {
            const QByteArray character = begin(1);
            if (character == "-")
                token.name = "$undefined";
            else if (isIn(character.at(0), "#,;=:"))
                token.name = '\'' + character + '\'';
            return token;
        }
        const QByteArray text = begin(longest);
        if (text == "true" || text == "false") {
            token.name = "TBOOL";
            token.value = QString::fromLatin1(text);
        } else if (longest == integer) {
            token.name = "TINTEGER";
            token.value =
                QString::number(static_cast<int>(std::strtol(text.constData(), nullptr, 10)));
        } else if (longest == number) {
            token.name = "TFLOAT";
            token.value = shown(numberInC(text));
        } else if (longest == word) {
            token.name = "TSTRING";
            token.value = QString::fromLatin1(text);
        } else {
            // A time has no day, so no script date comes of it.
            token.name = longest == date ? "TDATE" : "TTIME";
            const bool isDay =
                longest == date &&
                QDate(text.mid(0, 4).toInt(), text.mid(5, 2).toInt(), text.mid(8, 2).toInt())
                    .isValid();
            token.value = isDay ? QString::fromLatin1(text) + "T00:00:00.000"_q : "invalid date"_q;
        }
        return token;
    }
};

class UpdateReader : private Parser
{
public:
    explicit UpdateReader(const QByteArray &text)
        : m_scanner(text)
    {
    }

    int start() const { return m_scanner.start; }
    int end() const { return m_scanner.end; }

    QString read()
    {
        Token token = m_scanner.next();
        if (token.name == "'#'")
            return errorReport();
        if (token.name != "TSTRING")
            unexpected(token, {"TSTRING", "'#'", "'a'"});

        QList<QPair<QString, QString>> pairs;
        for (;;) {
            const QString key = token.value;
            push();
            token = m_scanner.next();
            if (token.name != "'='")
                unexpected(token, {"'='"});
            push();
            const QString content = value(token);
            pairs.prepend({key, content});
            pop(2); // key, sign and value are one pair
            if (token.name == "$end")
                break;
            if (token.name != "';'")
                unexpected(token, {"$end"});
            push();
            token = m_scanner.next();
            if (token.name != "TSTRING")
                unexpected(token, {"TSTRING"});
        }
        return object(pairs);
    }

private:
    /** The object that @p pairs make one after another: a name that is there keeps its place. */
    static QString object(const QList<QPair<QString, QString>> &pairs)
    {
        QStringList names;
        QStringList properties;
        for (const auto &pair : pairs) {
            const QString property = pair.first + ": "_q + pair.second;
            const int there = names.indexOf(pair.first);
            if (there >= 0) {
                properties[there] = property;
            } else {
                names << pair.first;
                properties << property;
            }
        }
        return "{"_q + properties.join(", "_q) + "}"_q;
    }

    QString errorReport()
    {
        push();
        const Token message = m_scanner.next();
        if (message.name != "TSTRING")
            unexpected(message, {"TSTRING"});
        const Token colon = m_scanner.next();
        if (colon.name != "':'")
            unexpected(colon, {"':'"});
        const Token number = m_scanner.next();
        if (number.name != "TFLOAT")
            unexpected(number, {"TFLOAT"});
        return object({{message.value, number.value}});
    }

    /** The value behind a sign; @p token becomes the one after the value. */
    QString value(Token &token)
    {
        token = m_scanner.next();
        if (!token.name.startsWith('T'))
            unexpected(token);
        push();
        if (token.name != "TSTRING") {
            const QString result = token.value;
            token = m_scanner.next();
            return result;
        }
        QStringList strings(quoted(token.value));
        int pushed = 0;
        while ((token = m_scanner.next()).name == "','") {
            push();
            token = m_scanner.next();
            if (token.name != "TSTRING")
                unexpected(token, {"TSTRING"});
            push();
            pushed += 2;
            strings.prepend(quoted(token.value));
        }
        pop(pushed);
        return strings.size() == 1 ? strings.first() : "["_q + strings.join(", "_q) + "]"_q;
    }

    UpdateScanner m_scanner;
};

} // namespace

Outcome parseAlarmList(const QByteArray &text, ListScannerState &state, QByteArray &pieces)
{
    ListReader reader(text, state, pieces);
    return outcomeOf(reader);
}

Outcome parseAlarmUpdate(const QByteArray &text)
{
    UpdateReader reader(text);
    return outcomeOf(reader);
}

} // namespace reference
