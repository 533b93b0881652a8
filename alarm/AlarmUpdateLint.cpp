// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// All faults of an alarm update; see AlarmListLint.cpp, which does the same for lists.

#include "alarm/AlarmFindings_p.h"
#include "alarm/AlarmLint.h"
#include "alarm/AlarmUpdateReader_p.h"
#include "alarm/AlarmUpdateScan_p.h"
#include "alarm/NumberText_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QSet>

#include <algorithm>

namespace vn {

using namespace internal;

namespace {

using Token = UpdateToken;
using Kind = Token::Kind;

/** The properties that every object of a script has. */
constexpr const char *kKnownToScripts[] = {
    "constructor", "hasOwnProperty", "isPrototypeOf",    "propertyIsEnumerable", "toLocaleString",
    "toString",    "valueOf",        "__defineGetter__", "__defineSetter__",
};

/** What may come next. */
enum class State {
    Begin,
    Key,
    Equals,
    Value,
    ListText,
    BehindText,
    BehindValue,
    ReportText,
    ReportColon,
    ReportNumber,
};

const char *expectedIn(State state)
{
    switch (state) {
    case State::Begin:
        return "a key or #";
    case State::Key:
        return "a key";
    case State::Equals:
        return "=";
    case State::Value:
        return "a value";
    case State::ListText:
        return "a text (lists hold nothing else)";
    case State::BehindText:
        return "a semicolon, a comma or the end";
    case State::BehindValue:
        return "a semicolon or the end";
    case State::ReportText:
        return "the text of an error";
    case State::ReportColon:
        return "a colon";
    case State::ReportNumber:
        return "a number with a point";
    }
    return "";
}

const char *codeIn(State state)
{
    switch (state) {
    case State::Begin:
    case State::Key:
        return "key-expected";
    case State::Equals:
        return "equals-expected";
    case State::Value:
        return "value-expected";
    case State::ListText:
        return "text-expected";
    case State::BehindText:
    case State::BehindValue:
        return "semicolon-expected";
    case State::ReportText:
    case State::ReportColon:
    case State::ReportNumber:
        break;
    }
    return "error-report";
}

/** Reads an update to its end, whatever it meets. */
class Reader
{
public:
    /** @p bytes are those of @p text with their end mark. */
    Reader(const QByteArray &text, const QByteArray &bytes, AlarmFindings &findings)
        : m_text(text)
        , m_findings(findings)
        , m_scanner(bytes.constData(), text.size())
    {
    }

    void read()
    {
        for (;;) {
            const Token token = m_scanner.next();
            const bool isComplete = m_state == State::BehindText || m_state == State::BehindValue;
            if (token.kind == Kind::End) {
                if (!isComplete)
                    fault(token);
                return;
            }
            if (token.kind == Kind::Stray && isComplete && !m_hasFault)
                return m_findings.restIsNotRead(token.start);
            if (!take(token))
                return;
        }
    }

private:
    void fault(const Token &token)
    {
        m_hasFault = true;
        const QString found = token.kind == Kind::End ? QString::fromLatin1("the text ends")
                                                      : quotedBytes(m_text, token);
        const bool isQuote = token.kind == Kind::Stray && token.mark == '"';
        QString message = whereExpected(found, expectedIn(m_state));
        if (isQuote)
            message += QString::fromLatin1(": this quote is never closed");
        else if (token.kind == Kind::Stray)
            message += QString::fromLatin1(": this character can stand in quotes only");
        m_findings.error(isQuote                     ? "quote-not-closed"
                         : token.kind == Kind::Stray ? "unexpected-character"
                                                     : codeIn(m_state),
                         message, token);
    }

    /** Takes a token, or tells a fault and goes on; false at the end of what is read. */
    bool take(const Token &token)
    {
        switch (m_state) {
        case State::Begin:
            if (token.mark == '#') {
                m_state = State::ReportText;
                return true;
            }
            [[fallthrough]];
        case State::Key:
            return key(token);
        case State::Equals:
            if (token.mark == '=') {
                m_state = State::Value;
                return true;
            }
            fault(token);
            m_state = State::BehindText;
            return recover(token);
        case State::Value:
        case State::ListText:
            return value(token);
        case State::BehindText:
        case State::BehindValue:
            if (token.mark == ',' && m_state == State::BehindText) {
                m_state = State::ListText;
                return true;
            }
            if (token.mark != ';')
                fault(token);
            return recover(token);
        case State::ReportText:
        case State::ReportColon:
        case State::ReportNumber:
            return report(token);
        }
        return true;
    }

    /** Behind a fault, the next pair begins behind the next semicolon. */
    bool recover(Token token)
    {
        while (token.mark != ';' && token.kind != Kind::End)
            token = m_scanner.next();
        m_state = State::Key;
        return token.kind != Kind::End;
    }

    bool key(const Token &token)
    {
        if (!token.isText()) {
            fault(token);
            return recover(token);
        }
        const QByteArray name = m_text.mid(token.start, token.end - token.start);
        const QString shown = quotedBytes(m_text, token);
        if (m_keys.contains(name))
            m_findings.warning("key-repeated",
                               QString::fromLatin1("the key %1 stands here once more; the value of "
                                                   "the first one is kept")
                                   .arg(shown),
                               token);
        m_keys.insert(name);
        if (name == "__proto__")
            m_findings.warning(
                "key-known-to-scripts",
                QString::fromLatin1("the key %1 becomes no property: scripts take it "
                                    "for the object's prototype")
                    .arg(shown),
                token);
        else if (std::find(std::begin(kKnownToScripts), std::end(kKnownToScripts), name) !=
                 std::end(kKnownToScripts))
            m_findings.note(
                "key-known-to-scripts",
                QString::fromLatin1("the key %1 hides what every object of a script has "
                                    "under this name")
                    .arg(shown),
                token);
        if (name.trimmed() != name)
            m_findings.note(
                "blanks-kept",
                QString::fromLatin1("blanks at the ends belong to the key %1").arg(shown), token);
        lookAtText(token);
        m_state = State::Equals;
        return true;
    }

    void lookAtText(const Token &token)
    {
        m_findings.lookAtText(token);
        if (token.kind == Kind::Quoted)
            m_findings.note("quotes-kept",
                            QString::fromLatin1("the quotes belong to the text %1")
                                .arg(quotedBytes(m_text, token)),
                            token);
    }

    bool value(const Token &token)
    {
        if (token.isText()) {
            lookAtText(token);
            if (m_state == State::Value)
                lookForNumber(token);
            m_state = State::BehindText;
            return true;
        }
        if (m_state == State::ListText || token.kind == Kind::Mark || token.kind == Kind::Stray) {
            fault(token);
            m_state = State::BehindValue;
            return token.kind != Kind::Mark && token.kind != Kind::Stray ? true : recover(token);
        }
        lookAtValue(token);
        m_state = State::BehindValue;
        return true;
    }

    /** Warns of a text that would be another value without the blanks around it. */
    void lookForNumber(const Token &token)
    {
        const QByteArray text = m_text.mid(token.start, token.end - token.start);
        const QByteArray trimmed = text.trimmed();
        if (trimmed == text || trimmed.isEmpty())
            return;
        const Token other = UpdateScanner(trimmed.constData(), trimmed.size()).next();
        if (!other.isText() && other.end == trimmed.size())
            m_findings.warning("blanks-make-a-text",
                               QString::fromLatin1("%1 is read as a text, because of its blanks")
                                   .arg(quotedBytes(m_text, token)),
                               token);
    }

    void lookAtValue(const Token &token)
    {
        const QByteArray bytes = m_text.mid(token.start, token.end - token.start);
        const QString text = QString::fromLatin1(bytes);
        if (token.kind == Kind::Integer) {
            bool isKept = false;
            (void)text.toInt(&isKept);
            if (!isKept)
                m_findings.warning(
                    "integer-cut",
                    QString::fromLatin1("the number %1 is cut to 32 bits: it becomes "
                                        "%2")
                        .arg(quotedBytes(m_text, token))
                        .arg(toInt32(bytes.constData())),
                    token);
        } else if (token.kind == Kind::Float) {
            m_findings.lookAtNumber(token);
        } else if (token.kind == Kind::Date) {
            const QDate date = QDate::fromString(text, Qt::ISODate);
            if (!date.isValid() || !date.startOfDay().isValid())
                m_findings.warning(
                    "invalid-date",
                    date.isValid() ? QString::fromLatin1("the time zone has no day %1").arg(text)
                                   : QString::fromLatin1("there is no day %1").arg(text),
                    token);
        } else if (token.kind == Kind::Time && !QTime::fromString(text, Qt::ISODate).isValid()) {
            m_findings.warning("invalid-time", QString::fromLatin1("there is no time %1").arg(text),
                               token);
        }
    }

    bool report(const Token &token)
    {
        const bool isRight = m_state == State::ReportText    ? token.isText()
                             : m_state == State::ReportColon ? token.mark == ':'
                                                             : token.kind == Kind::Float;
        if (!isRight) {
            fault(token);
            return false; // nothing of it makes sense
        }
        if (m_state == State::ReportText) {
            lookAtText(token);
            m_state = State::ReportColon;
        } else if (m_state == State::ReportColon) {
            m_state = State::ReportNumber;
        } else {
            m_findings.lookAtNumber(token);
            if (token.end < m_text.size() && !m_text.mid(token.end).trimmed().isEmpty())
                m_findings.warning(
                    "rest-not-read",
                    QString::fromLatin1("an error report ends here: what follows (%1 "
                                        "bytes) is not read")
                        .arg(m_text.size() - token.end),
                    {token.end, m_text.size()});
            return false;
        }
        return true;
    }

    QByteArray m_text;
    AlarmFindings &m_findings;
    UpdateScanner m_scanner;
    State m_state = State::Begin;
    bool m_hasFault = false;
    QSet<QByteArray> m_keys;
};

} // namespace

Findings alarmUpdateFindings(const QByteArray &text)
{
    AlarmFindings findings(text);
    const QByteArray bytes = withEndMark(text);
    Reader(text, bytes, findings).read();
    const std::optional<ParseException> refusal = refusalOf<AlarmUpdateReader>(bytes);
    QString exhausted;
    if (refusal && refusal->message() == QLatin1String("memory exhausted"))
        exhausted = QString::fromLatin1(
            "this is too much: an update holds up to 98 pairs, or 98 texts in its only pair");
    return findings.take(refusal, exhausted);
}

} // namespace vn
