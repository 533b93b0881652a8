// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/EncodedText.h"

#include "base/Exceptions.h"
#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Files.h"
#include "support/Random.h"

using namespace vn;

using Encoding = EncodedText::Encoding;
using Fault = EncodedText::Fault;

namespace {

const QString kMark(QChar(0xFEFF));

struct ReadRow
{
    const char *name;
    QByteArray bytes;
    QString text;
    Encoding encoding;
    bool hasMark;
    QString lineEnd;
    bool isMixed;
};

// clang-format off
const ReadRow kReadRows[] = {
    // name                             bytes                       text                 encoding          mark   line end   mixed
    {"empty_isUtf8",                    ""_b,                       ""_q,                Encoding::Utf8,   false, "\n"_q,    false},
    {"ascii_isUtf8",                    "a\nb\n"_b,                 "a\nb\n"_q,          Encoding::Utf8,   false, "\n"_q,    false},
    {"utf8",                            "T\xC3\xBCr\n"_b,           u8"Tür\n"_q,         Encoding::Utf8,   false, "\n"_q,    false},
    {"latin1",                          "T\xFCr\n"_b,               u8"Tür\n"_q,         Encoding::Latin1, false, "\n"_q,    false},
    {"mark_isNotOfTheText",             "\xEF\xBB\xBFT\xC3\xBCr"_b, u8"Tür"_q,           Encoding::Utf8,   true,  "\n"_q,    false},
    {"markBeforeAscii",                 "\xEF\xBB\xBF" "a"_b,       "a"_q,               Encoding::Utf8,   true,  "\n"_q,    false},
    {"markAlone_isAnEmptyText",         "\xEF\xBB\xBF"_b,           ""_q,                Encoding::Utf8,   true,  "\n"_q,    false},
    {"secondMark_isOfTheText",          "\xEF\xBB\xBF\xEF\xBB\xBF"_b, kMark,             Encoding::Utf8,   true,  "\n"_q,    false},
    {"markBeforeLatin1_isThreeLetters", "\xEF\xBB\xBF\xFC"_b,       u8"ï»¿ü"_q,          Encoding::Latin1, false, "\n"_q,    false},
    {"windows",                         "a\r\nb\r\n"_b,             "a\r\nb\r\n"_q,      Encoding::Utf8,   false, "\r\n"_q,  false},
    {"windowsFirst_mixed",              "a\r\nb\n"_b,               "a\r\nb\n"_q,        Encoding::Utf8,   false, "\r\n"_q,  true},
    {"unixFirst_mixed",                 "\nb\r\n"_b,                "\nb\r\n"_q,         Encoding::Utf8,   false, "\n"_q,    true},
    {"emptyWindowsLine",                "\r\n"_b,                   "\r\n"_q,            Encoding::Utf8,   false, "\r\n"_q,  false},
    {"returnAlone_endsNoLine",          "a\rb"_b,                   "a\rb"_q,            Encoding::Utf8,   false, "\n"_q,    false},
    {"zeroByte_isACharacter",           "a\0b"_b,                   "a\0b"_q,            Encoding::Utf8,   false, "\n"_q,    false},
};
// clang-format on

class EncodedTextRead : public testing::TestWithParam<ReadRow>
{
};

struct EncodeRow
{
    const char *name;
    QByteArray file; // that was read
    QString text;    // that is to be written
    QByteArray bytes;
    Fault fault;
    int position;
    QString message;
};

const QString kOtherEncoding = "the result would be read in another encoding than the file's"_q;

// clang-format off
const EncodeRow kEncodeRows[] = {
    // name                              file                     text              bytes                     fault                 place message
    {"utf8",                             "a"_b,                   u8"Tür €"_q,      "T\xC3\xBCr \xE2\x82\xAC"_b, Fault::None,       -1, QString()},
    {"utf8WithMark",                     "\xEF\xBB\xBF" "a"_b,    u8"ü"_q,          "\xEF\xBB\xBF\xC3\xBC"_b, Fault::None,          -1, QString()},
    {"emptyWithMark",                    "\xEF\xBB\xBF" "a"_b,    ""_q,             "\xEF\xBB\xBF"_b,         Fault::None,          -1, QString()},
    {"empty",                            "a"_b,                   ""_q,             ""_b,                     Fault::None,          -1, QString()},
    {"outsideOfThePlane",                "a"_b,                   u8"x\U0001F600"_q, "x\xF0\x9F\x98\x80"_b,   Fault::None,          -1, QString()},
    {"latin1",                           "\xFC"_b,                u8"Tür"_q,        "T\xFCr"_b,               Fault::None,          -1, QString()},
    {"lineEndsAsTheyAre",                "a\r\n"_b,               "a\nb\r\nc\r"_q,  "a\nb\r\nc\r"_b,          Fault::None,          -1, QString()},
    {"latin1WithoutIt",                  "\xFC"_b,                u8"ü€"_q,         QByteArray(),             Fault::NoCharacter,    1, u8"the file is Latin-1, which has no \"€\" (U+20AC)"_q},
    {"latin1WithoutAPair",               "\xFC"_b,                u8"a\U0001F600"_q, QByteArray(),            Fault::NoCharacter,    1, u8"the file is Latin-1, which has no \"\U0001F600\" (U+1F600)"_q},
    {"latin1ThatWouldPassForUtf8",       "\xFC"_b,                u8"Ã¼"_q,         QByteArray(),             Fault::ReadOtherwise, -1, kOtherEncoding},
    {"latin1ThatIsAsciiByNow",           "\xFC"_b,                "ue"_q,           "ue"_b,                   Fault::None,          -1, QString()},
    {"textThatBeginsWithAMark",          "a"_b,                   kMark + "a"_q,    QByteArray(),             Fault::ReadOtherwise, -1, "the text begins with a byte order mark, which reading drops"_q},
    {"textThatBeginsWithASecondMark",    "\xEF\xBB\xBF" "a"_b,    kMark + "a"_q,    "\xEF\xBB\xBF\xEF\xBB\xBF" "a"_b, Fault::None,   -1, QString()},
};
// clang-format on

class EncodedTextEncode : public testing::TestWithParam<EncodeRow>
{
};

class EncodedTextFile : public FolderTest
{
};

} // namespace

TEST_P(EncodedTextRead, knowsWhatTheBytesAre)
{
    const ReadRow &row = GetParam();
    const EncodedText text(row.bytes);
    EXPECT_EQ(text.bytes(), row.bytes);
    EXPECT_EQ(text.text(), row.text);
    EXPECT_FALSE(text.text().isNull());
    EXPECT_EQ(text.encoding(), row.encoding);
    EXPECT_EQ(text.hasByteOrderMark(), row.hasMark);
    EXPECT_EQ(text.lineEnd(), row.lineEnd);
    EXPECT_EQ(text.hasMixedLineEnds(), row.isMixed);
    EXPECT_EQ(text.encode(text.text()).bytes, row.bytes);
}

INSTANTIATE_TEST_SUITE_P(Rows, EncodedTextRead, testing::ValuesIn(kReadRows), nameOfRow);

TEST_P(EncodedTextEncode, writesAsTheFileWas)
{
    const EncodeRow &row = GetParam();
    const EncodedText::Result result = EncodedText(row.file).encode(row.text);
    EXPECT_EQ(result.bytes, row.bytes);
    EXPECT_EQ(result.fault, row.fault);
    EXPECT_EQ(bool(result), row.fault == Fault::None);
    EXPECT_EQ(result.bytes.isNull(), row.fault != Fault::None);
    EXPECT_EQ(result.position, row.position);
    EXPECT_EQ(result.message, row.message);
}

INSTANTIATE_TEST_SUITE_P(Rows, EncodedTextEncode, testing::ValuesIn(kEncodeRows), nameOfRow);

TEST(EncodedText, ofUtf8RefusesHalfACharacter)
{
    const QChar high(0xD83D);
    const QChar low(0xDE00);
    const struct
    {
        QString text;
        int position;
        const char *number;
    } rows[] = {
        {"ab"_q + high, 2, "D83D"},
        {low + "ab"_q, 0, "DE00"},
        {QString(high) + low + high + "x"_q, 2, "D83D"},
        {QString(low) + high, 0, "DE00"},
    };
    for (const auto &row : rows) {
        const EncodedText::Result result = EncodedText("a"_b).encode(row.text);
        EXPECT_EQ(result.fault, Fault::NoCharacter);
        EXPECT_EQ(result.position, row.position);
        EXPECT_TRUE(result.message.startsWith("the file is UTF-8, which has no "_q));
        EXPECT_TRUE(result.message.endsWith(" (U+"_q + QString::fromLatin1(row.number) + ")"_q));
    }
}

TEST(EncodedText, withoutBytesIsAnEmptyOne)
{
    const EncodedText text;
    EXPECT_FALSE(text.bytes().isNull());
    EXPECT_EQ(text.bytes(), ""_b);
    EXPECT_EQ(text.text(), ""_q);
    EXPECT_EQ(text.encode(u8"ü"_q).bytes, "\xC3\xBC"_b);
}

TEST(EncodedText, writesBackAnyBytes)
{
    // Bytes of which many sequences of UTF-8, whole and broken, marks and line ends are made.
    const QByteArray alphabet("\xEF\xBB\xBF\xC3\xBC\xFC\xF0\x9F\x98\x80\xED\xA0\xFF\r\n\0ab", 18);
    Random random(1);
    int latin1 = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes;
        for (auto size = random.below(12); size > 0; --size)
            bytes += alphabet.at(static_cast<int>(random.below(unsigned(alphabet.size()))));
        const EncodedText text(bytes);
        const EncodedText::Result result = text.encode(text.text());
        ASSERT_TRUE(result) << bytes.toHex().constData();
        ASSERT_EQ(result.bytes, bytes);
        latin1 += text.encoding() == Encoding::Latin1 ? 1 : 0;
    }
    EXPECT_GT(latin1, 1000);
    EXPECT_LT(latin1, 19000);
}

TEST(EncodedText, writesNothingThatReadsAsAnotherText)
{
    const QByteArray files[] = {"a"_b, "\xFC"_b, "\xEF\xBB\xBF"_b};
    const ushort alphabet[] = {'a',  0xC3,   0xBC,   0xFC,   0xEF,  0xBB,
                               0xBF, 0xFEFF, 0x20AC, 0xD83D, 0xDE00};
    Random random(2);
    int refused = 0;
    for (int i = 0; i < 20000; ++i) {
        QString text = ""_q;
        for (auto size = random.below(6); size > 0; --size)
            text += QChar(alphabet[random.below(std::size(alphabet))]);
        const EncodedText::Result result = EncodedText(files[i % 3]).encode(text);
        if (result)
            ASSERT_EQ(EncodedText(result.bytes).text(), text);
        else
            ++refused;
    }
    EXPECT_GT(refused, 1000);
    EXPECT_LT(refused, 19000);
}

TEST_F(EncodedTextFile, isReadFromAPathAndFromADevice)
{
    const QByteArray bytes = "\xEF\xBB\xBFT\xC3\xBCr\r\n"_b;
    EXPECT_EQ(EncodedText::read(fileWith(bytes)).bytes(), bytes);
    EXPECT_EQ(EncodedText::read(":/base/resource.txt"_q).bytes(),
              readFile(":/base/resource.txt"_q));
    SequentialDevice device({"\xEF\xBB"_b, "\xBF"
                                           "a"_b},
                            SequentialDevice::End::NoMore);
    EXPECT_EQ(EncodedText::read(&device).text(), "a"_q);
    expectThrows<FileException>([&] { (void)EncodedText::read(path("none"_q)); },
                                path("none"_q) + ": No such file or directory"_q);
    SequentialDevice failing({"a"_b}, SequentialDevice::End::Error);
    expectThrows<IOException>([&] { (void)EncodedText::read(&failing); }, "the line is dead"_q);
}
