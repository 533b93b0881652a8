// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What texts of both languages mean: the tables of AlarmListRows.cpp and AlarmUpdateRows.cpp.

#include "alarm/Languages.h"

#include <gtest/gtest.h>

#include <set>

using namespace vn;

template <typename Language>
using AlarmText = LanguageTest<Language>;

TYPED_TEST_SUITE(AlarmText, LanguageTypes, LanguageNames);

TYPED_TEST(AlarmText, isAccepted)
{
    for (const AcceptedText &row : TypeParam::kAccepted) {
        SCOPED_TRACE(row.name);
        this->m_parser = this->newParser();
        EXPECT_EQ(this->shownOf(row.text), row.value);
    }
}

TYPED_TEST(AlarmText, isRefused)
{
    for (const RefusedText &row : TypeParam::kRefused) {
        SCOPED_TRACE(row.name);
        this->m_parser = this->newParser();
        this->expectRefused(row);
    }
}

TYPED_TEST(AlarmText, messageOfEveryTokenInEveryState)
{
    std::set<int> places; // where the reference refuses
    int count = 0;
    for (const ParserState &state : TypeParam::kStates) {
        const QStringList expected = QString::fromLatin1(state.expected).split(" "_q);
        const QStringList taken = expected + QString::fromLatin1(state.alsoTaken).split(" "_q);
        for (const TokenText &token : TypeParam::kTokens) {
            if (taken.contains(QString::fromLatin1(token.name)))
                continue;
            SCOPED_TRACE(std::string(state.name) + ", then " + token.name);
            // A line end keeps tokens apart; it is a skipped run and moves the location.
            const QByteArray prefix = state.text;
            const QByteArray text = prefix + (*token.text ? "\n" : "") + token.text;
            const int start = *token.text ? prefix.size() + 1 : state.lastTokenStart;
            QString message = "syntax error, unexpected "_q + QString::fromLatin1(token.name);
            if (state.namesExpected)
                message += ", expecting "_q + expected.join(" or "_q);
            this->m_parser = this->newParser();
            this->expectRefused({"", text, message, start, text.size()});
            EXPECT_EQ(this->m_parser->errorMessage(), message);
            places.insert(typename TypeParam::Reference().parse(text).place);
            ++count;
        }
    }
    EXPECT_EQ(count, TypeParam::kMessageCount);

    // No state is missing: random texts find no other place.
    typename TypeParam::Random texts(5);
    places.insert(0); // no syntax error
    for (int i = 0; i < 20000; ++i) {
        const QByteArray text = i % 2 ? texts.ofPieces() : texts.nearlyValid();
        EXPECT_EQ(places.count(typename TypeParam::Reference().parse(text).place), 1U)
            << text.constData();
    }
}
