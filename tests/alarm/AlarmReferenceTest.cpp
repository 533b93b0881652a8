// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Random texts, each parsed by the library and by the reference.

#include "alarm/Languages.h"
#include "support/Files.h"

#include <gtest/gtest.h>

using namespace vn;

namespace {

template <typename Language>
class AlarmReference : public LanguageTest<Language>
{
protected:
    /** A parser and the reference, which see the same texts, one after another. */
    struct Pair
    {
        std::unique_ptr<typename Language::Parser> parser;
        typename Language::Reference reference = {};
    };

    Pair newPair() { return {this->newParser()}; }

    /** Expects that both give the same; skips a text that would end the process. Says whether the
     * text was accepted. */
    static bool expectSame(Pair &pair, const QByteArray &text)
    {
        SCOPED_TRACE(text.toHex(' ').constData());
        SCOPED_TRACE(text.constData());
        const auto before = pair.reference;
        const reference::Outcome expected = pair.reference.parse(text);
        if (expected.isFatal) {
            pair.reference = before;
            return false;
        }
        QByteArray buffer = text + "\0\0"_b;
        const QByteArray copy(buffer.constData(), buffer.size());
        const QString initial = "Initialisation Error"_q;
        try {
            const auto value =
                pair.parser->parse(buffer.constData(), static_cast<unsigned int>(buffer.size()));
            EXPECT_EQ(expected.message, QString());
            EXPECT_EQ(shown(value), expected.value);
        } catch (const ParseException &e) {
            EXPECT_EQ(e.message(), expected.message);
            EXPECT_EQ(e.startLine(), 0);
            EXPECT_EQ(e.endLine(), 0);
            EXPECT_EQ(e.startColumn(), expected.start);
            EXPECT_EQ(e.endColumn(), expected.end);
            EXPECT_EQ(e.cause(), nullptr);
        }
        EXPECT_EQ(pair.parser->errorMessage(), expected.isAccepted ? initial : expected.message);
        EXPECT_EQ(buffer, copy) << "the buffer is not as before";
        return expected.isAccepted;
    }

    /** As many texts of @p make, each on a pair of its own; how many are accepted. */
    template <typename Make>
    int acceptedOf(int count, Make make)
    {
        int accepted = 0;
        for (int i = 0; i < count && !this->HasFailure(); ++i) {
            Pair pair = newPair();
            accepted += expectSame(pair, make()) ? 1 : 0;
        }
        return accepted;
    }
};

} // namespace

TYPED_TEST_SUITE(AlarmReference, LanguageTypes, LanguageNames);

TYPED_TEST(AlarmReference, agreesOnRowsOfRandomTokens)
{
    typename TypeParam::Random texts(1);
    EXPECT_GT(this->acceptedOf(20000, [&] { return texts.ofPieces(); }), 500);
}

TYPED_TEST(AlarmReference, agreesOnDamagedTexts)
{
    typename TypeParam::Random texts(2);
    EXPECT_GT(this->acceptedOf(20000, [&] { return texts.nearlyValid(); }), 3000);
}

TYPED_TEST(AlarmReference, agreesOnTextsAroundTheDepthOfTheStack)
{
    typename TypeParam::Random texts(4);
    EXPECT_GT(this->acceptedOf(500, [&] { return texts.deep(); }), 20);
}

TYPED_TEST(AlarmReference, agreesOnOneParserAfterAnother_withWhatTheScannersKeep)
{
    typename TypeParam::Random texts(3);
    for (int i = 0; i < 2000 && !this->HasFailure(); ++i) {
        typename TestFixture::Pair pairs[2] = {this->newPair(), this->newPair()};
        for (int j = 0; j < 12; ++j)
            this->expectSame(pairs[texts.random().below(2)],
                             texts.random().below(2) ? texts.ofPieces() : texts.nearlyValid());
    }
}

TYPED_TEST(AlarmReference, agreesOnEveryShortText)
{
    const QByteArray bytes = TypeParam::shortBytes();
    int count = 1;
    for (int i = 0; i < TypeParam::kShortLength; ++i)
        count *= bytes.size();
    for (int number = 0; number < count && !this->HasFailure(); ++number) {
        QByteArray text;
        for (int rest = number; text.size() < TypeParam::kShortLength; rest /= bytes.size())
            text += bytes.at(rest % bytes.size());
        auto pair = this->newPair();
        this->expectSame(pair, text);
    }
}

using AlarmListReference = AlarmReference<Lists>;

TEST_F(AlarmListReference, agreesOnACorpusOfJson)
{
    const QString folder = qEnvironmentVariable("VANTERO_CORPORA");
    if (folder.isEmpty())
        GTEST_SKIP() << "VANTERO_CORPORA names no folder";
    const QDir json(folder + "/json"_q);
    const QStringList names = json.entryList({"*.json"_q}, QDir::Files);
    ASSERT_GT(names.size(), 100);
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        Pair pair = newPair();
        expectSame(pair, readFile(json.filePath(name)));
    }
}
