// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_LANGUAGES_H
#define VN_TESTS_ALARM_LANGUAGES_H

/** @file What tests of both alarm languages need of each: its parser, the reference, its texts. */

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/RandomAlarms.h"
#include "alarm/ScriptTest.h"
#include "reference/AlarmReference.h"
#include "reference/AlarmText.h"
#include "support/Expect.h"
#include "support/Literals.h"

#include <memory>
#include <vector>

/** @p count times @p piece with @p separator between them. */
inline QByteArray repeated(const QByteArray &piece, int count, const QByteArray &separator = {})
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += (i > 0 ? separator : QByteArray()) + piece;
    return text;
}

/** A text and what shown() makes of its value. */
struct AcceptedText
{
    const char *name;
    QByteArray text;
    QString value;
};

/** A text, and the message and place of its refusal. */
struct RefusedText
{
    const char *name;
    QByteArray text;
    QString message;
    int start;
    int end;
};

struct TokenText
{
    const char *name; // in messages
    const char *text; // the end has none
};

/** A state of the parser in which tokens may be unexpected. */
struct ParserState
{
    const char *name;
    const char *text; // leads to the state; the end of the text finds its last token
    int lastTokenStart;
    const char *expected;       // names of tokens in the order of messages
    bool namesExpected;         // there are four at most
    const char *alsoTaken = ""; // by a reduction that leads on
};

struct Lists
{
    using Parser = vn::AlarmListParser;
    using Random = RandomLists;
    static constexpr const char *kClassName = "vn::AlarmListParser";

    static std::unique_ptr<Parser> parser(QScriptEngine *, QObject *parent = nullptr)
    {
        return std::make_unique<Parser>(parent);
    }

    /** The reference beside one parser. */
    class Reference
    {
    public:
        reference::Outcome parse(const QByteArray &text)
        {
            return reference::parseAlarmList(text, m_state, s_pieces);
        }

    private:
        inline static QByteArray s_pieces;
        reference::ListScannerState m_state;
    };

    // In AlarmListRows.cpp.
    static const std::vector<AcceptedText> kAccepted;
    static const std::vector<RefusedText> kRefused;
    static const std::vector<TokenText> kTokens;
    static const std::vector<ParserState> kStates;
    static constexpr int kMessageCount = 146;

    static QByteArray shortBytes() { return "{}[],:\"'a10-.e/*\\u \n\x01\xff#"_b; }
    static constexpr int kShortLength = 3;

    static AcceptedText simple()
    {
        return {"", "[1,'\xe4']", QString::fromLatin1("[\"\xe4\", 1]")};
    }
    static AcceptedText another() { return {"", "{b:2}", "{\"b\": 2}"_q}; }
    static RefusedText wrong()
    {
        return {"", "[1 2]", "syntax error, unexpected TNUMBER, expecting ']'"_q, 3, 4};
    }
    static RefusedText empty()
    {
        return {"", "", "syntax error, unexpected $end, expecting '{' or '['"_q, 0, 0};
    }
};

struct Updates
{
    using Parser = vn::AlarmUpdateParser;
    using Random = RandomUpdates;
    static constexpr const char *kClassName = "vn::AlarmUpdateParser";

    static std::unique_ptr<Parser> parser(QScriptEngine *engine, QObject *parent = nullptr)
    {
        return std::make_unique<Parser>(engine, parent);
    }

    struct Reference
    {
        static reference::Outcome parse(const QByteArray &text)
        {
            return reference::parseAlarmUpdate(text);
        }
    };

    // In AlarmUpdateRows.cpp.
    static const std::vector<AcceptedText> kAccepted;
    static const std::vector<RefusedText> kRefused;
    static const std::vector<TokenText> kTokens;
    static const std::vector<ParserState> kStates;
    static constexpr int kMessageCount = 176;

    static QByteArray shortBytes() { return "xa1=;,#:-. \n\"!\xff"_b; }
    static constexpr int kShortLength = 4;

    static AcceptedText simple()
    {
        return {"", "x=1;y=\"\xe4\"", QString::fromLatin1("{y: \"\"\xe4\"\", x: 1}")};
    }
    static AcceptedText another() { return {"", "z=a,b", "{z: [\"b\", \"a\"]}"_q}; }
    static RefusedText wrong()
    {
        return {"", "x=1,2", "syntax error, unexpected ',', expecting $end"_q, 3, 4};
    }
    static RefusedText empty()
    {
        return {"", "", "syntax error, unexpected $end, expecting TSTRING or '#' or 'a'"_q, 0, 0};
    }
};

/** A test of one language, with a parser. */
template <typename Language>
class LanguageTest : public ScriptTest
{
protected:
    using Parser = typename Language::Parser;

    std::unique_ptr<Parser> newParser() { return Language::parser(&m_engine); }

    /** The value of @p text, as it is shown. */
    QString shownOf(QByteArray text) { return shown(m_parser->parse(&text)); }

    void expectRefused(const RefusedText &row)
    {
        expectParseError([&] { shownOf(row.text); }, row.message, 0, row.start, row.end);
    }

    std::unique_ptr<Parser> m_parser = newParser();
};

using LanguageTypes = testing::Types<Lists, Updates>;

/** Names typed tests after their language. */
struct LanguageNames
{
    template <typename Language>
    static std::string GetName(int)
    {
        return std::is_same_v<Language, Lists> ? "Lists" : "Updates";
    }
};

#endif // VN_TESTS_ALARM_LANGUAGES_H
