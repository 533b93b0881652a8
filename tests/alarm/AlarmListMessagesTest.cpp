// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The message of every token in every state of the parser in which it is not expected.

#include "alarm/AlarmListModel.h"

#include "alarm/AlarmListParser.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

struct Token
{
    const char *name;
    const char *text; // the end has none
};

const Token kTokens[] = {
    {"$end", ""},      {"TSTRING", "'a b'"}, {"TNUMBER", "-1.5"}, {"TBOOL", "false"},
    {"TNULL", "null"}, {"'{'", "{"},         {"'}'", "}"},        {"','", ","},
    {"':'", ":"},      {"'['", "["},         {"']'", "]"},
};

struct State
{
    const char *name;
    const char *text; // leads to the state; the end of the text finds its last token
    int lastTokenStart;
    const char *expected;       // names of tokens in the order of messages
    bool namesExpected;         // there are four at most
    const char *alsoTaken = ""; // by a reduction that leads on
};

// clang-format off
const State kStates[] = {
    {"begin", "", 0, "'{' '['", true},
    {"objectOpened", "{", 0, "TSTRING '}'", true},
    {"key", "{k", 1, "':'", true},
    {"colon", "{k:", 2, "TSTRING TNUMBER TBOOL TNULL '{' '['", false},
    {"members", "{k:1", 3, "'}'", true, "','"},
    {"memberComma", "{k:1,", 4, "TSTRING", true},
    {"membersOfTwo", "{k:1,l:2", 7, "'}'", true, "','"},
    {"arrayOpened", "[", 0, "TSTRING TNUMBER TBOOL TNULL '{' '[' ']'", false},
    {"elements", "[1", 1, "']'", true, "','"},
    {"elementComma", "[1,", 2, "TSTRING TNUMBER TBOOL TNULL '{' '['", false},
    {"elementsOfTwo", "[1,2", 3, "']'", true, "','"},
    {"objectInArray", "[{}", 2, "']'", true, "','"},
    {"arrayInObject", "{k:[]", 4, "'}'", true, "','"},
    {"emptyObject", "{}", 1, "$end", true},
    {"emptyArray", "[]", 1, "$end", true},
    {"object", "{k:1}", 4, "$end", true},
    {"array", "[1]", 2, "$end", true},
};
// clang-format on

QString expectedMessage(const State &state, const Token &token)
{
    QString message = "syntax error, unexpected "_q + QString::fromLatin1(token.name);
    if (state.namesExpected)
        message +=
            ", expecting "_q + QString::fromLatin1(state.expected).split(" "_q).join(" or "_q);
    return message;
}

} // namespace

TEST(AlarmListMessages, everyTokenInEveryState)
{
    std::set<int> reached;
    int count = 0;
    for (const State &state : kStates) {
        const QStringList taken = QString::fromLatin1(state.expected).split(" "_q) +
                                  QStringList{QString::fromLatin1(state.alsoTaken)};
        for (const Token &token : kTokens) {
            if (taken.contains(QString::fromLatin1(token.name)))
                continue;
            SCOPED_TRACE(std::string(state.name) + ", then " + token.name);
            // Space keeps tokens apart; it is a skipped run and moves the location.
            const QByteArray prefix = state.text;
            const QByteArray text = prefix + (*token.text ? " " : "") + token.text;
            const bool isEnd = !*token.text;
            const int start = isEnd ? state.lastTokenStart : prefix.size() + 1;
            AlarmListParser parser;
            expectParseError([&] { parser.parse(QString::fromLatin1(text)); },
                             expectedMessage(state, token), 0, start, text.size());
            EXPECT_EQ(parser.errorMessage(), expectedMessage(state, token));
            reached.insert(AlarmListModel().parse(text).errorState);
            ++count;
        }
    }
    EXPECT_EQ(reached, AlarmListModel::tables().errorStates());
    EXPECT_EQ(count, 146);
}
