// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The parser objects of both languages: forms of input, what stays between two texts, failures.

#include "alarm/Languages.h"
#include "alarm/ZeroMemory.h"
#include "base/Exceptions.h"
#include "support/Devices.h"

#include <QtCore/QBuffer>
#include <QtCore/QMetaObject>
#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <cstring>

using namespace vn;

namespace {

const QString kInitialMessage = "Initialisation Error"_q;

template <typename Language>
class AlarmParser : public LanguageTest<Language>
{
protected:
    const AcceptedText kSimple = Language::simple();
    const AcceptedText kAnother = Language::another();
    const RefusedText kWrong = Language::wrong();
    const RefusedText kEmpty = Language::empty();

    /** Expects that @p device cannot be read; gives the message. */
    QString unreadable(QIODevice &device)
    {
        QString message;
        expectThrows<ParseException>([&] { this->m_parser->parse(&device); },
                                     [&](const ParseException &e) {
                                         message = e.message();
                                         EXPECT_EQ(e.startLine(), 0);
                                         EXPECT_EQ(e.startColumn(), 0);
                                         EXPECT_EQ(e.endLine(), 0);
                                         EXPECT_EQ(e.endColumn(), 0);
                                         ASSERT_NE(e.cause(), nullptr);
                                         EXPECT_NE(dynamic_cast<const IOException *>(e.cause()),
                                                   nullptr);
                                         EXPECT_EQ(message, e.cause()->message());
                                     });
        EXPECT_EQ(this->m_parser->errorMessage(), kInitialMessage);
        return message;
    }
};

} // namespace

TYPED_TEST_SUITE(AlarmParser, LanguageTypes, LanguageNames);

// ---- Forms of input -----------------------------------------------------------------------------

TYPED_TEST(AlarmParser, bufferEndsWithTwoZeroBytes_andIsAsBeforeWhenTheCallReturns)
{
    for (const AcceptedText &row : TypeParam::kAccepted) {
        this->m_parser = this->newParser();
        QByteArray buffer = row.text + "\0\0"_b;
        const QByteArray before(buffer.constData(), buffer.size());
        EXPECT_EQ(shown(this->m_parser->parse(buffer.data(), static_cast<unsigned>(buffer.size()))),
                  row.value);
        EXPECT_EQ(buffer, before);
    }
    for (const RefusedText &row : TypeParam::kRefused) {
        this->m_parser = this->newParser();
        QByteArray buffer = row.text + "\0\0"_b;
        const QByteArray before(buffer.constData(), buffer.size());
        EXPECT_THROW(this->m_parser->parse(buffer.data(), static_cast<unsigned>(buffer.size())),
                     ParseException);
        EXPECT_EQ(buffer, before);
    }
}

TYPED_TEST(AlarmParser, byteArrayKeepsTheTwoZeroBytes)
{
    QByteArray data = this->kSimple.text;
    const QByteArray copy = data;
    EXPECT_EQ(shown(this->m_parser->parse(&data)), this->kSimple.value);
    EXPECT_EQ(data, this->kSimple.text + "\0\0"_b);
    EXPECT_EQ(copy, this->kSimple.text);
    // What was there before is the text, its zero bytes included.
    EXPECT_EQ(shown(this->m_parser->parse(&data)), this->kSimple.value);
    EXPECT_EQ(data, this->kSimple.text + "\0\0\0\0"_b);

    QByteArray wrong = this->kWrong.text;
    EXPECT_THROW(this->m_parser->parse(&wrong), ParseException);
    EXPECT_EQ(wrong, this->kWrong.text + "\0\0"_b);
    QByteArray none;
    EXPECT_THROW(this->m_parser->parse(&none), ParseException);
    EXPECT_EQ(none, "\0\0"_b);
}

TYPED_TEST(AlarmParser, stringIsLatin1)
{
    const QString text = QString::fromLatin1(this->kSimple.text);
    const QChar letter(0xe4);
    EXPECT_EQ(shown(this->m_parser->parse(text)), this->kSimple.value);
    EXPECT_EQ(shown(this->m_parser->parse(QString(text).replace(letter, QChar(0x20ac)))),
              QString(this->kSimple.value).replace(letter, QLatin1Char('?')));
    expectParseError([&] { this->m_parser->parse(QString()); }, this->kEmpty.message, 0, 0, 0);
}

TYPED_TEST(AlarmParser, streamIsReadFromWhereItIs)
{
    QString text = "ignored\n"_q + QString::fromLatin1(this->kSimple.text);
    QTextStream stream(&text);
    (void)stream.readLine();
    EXPECT_EQ(shown(this->m_parser->parse(&stream)), this->kSimple.value);
    EXPECT_TRUE(stream.atEnd());
    const QTextStream *const asConst = &stream;
    EXPECT_THROW(this->m_parser->parse(asConst), ParseException);
}

TYPED_TEST(AlarmParser, deviceMustItselfEndWithTwoZeroBytes_andIsReadFromWhereItIs)
{
    const QByteArray content = "ignored" + this->kSimple.text + "\0\0"_b;
    QBuffer device;
    device.setData(content);
    device.open(QIODevice::ReadOnly);
    device.seek(7);
    EXPECT_EQ(shown(this->m_parser->parse(&device)), this->kSimple.value);
    EXPECT_TRUE(device.atEnd());
    EXPECT_EQ(device.data(), content);
}

TYPED_TEST(AlarmParser, deviceMayDeliverInPieces)
{
    const QByteArray text = this->kSimple.text;
    SequentialDevice device({text.left(2), text.mid(2, 3), text.mid(5), "\0\0"_b},
                            SequentialDevice::End::NoMore, 5);
    EXPECT_EQ(shown(this->m_parser->parse(&device)), this->kSimple.value);
}

TYPED_TEST(AlarmParser, unreadableDeviceIsAParseExceptionWithItsCause)
{
    EXPECT_THROW(this->shownOf(this->kWrong.text), ParseException);
    FailingDevice failing(this->kSimple.text + "\0\0"_b, 3);
    EXPECT_TRUE(this->unreadable(failing).contains("the medium is worn out"_q));
    QBuffer closed;
    this->unreadable(closed);
}

TYPED_TEST(AlarmParser, textOf2GiBIsRefused)
{
    constexpr unsigned int kFirstRefused = 0x80000000U + 2;
    ZeroMemory memory(0xffffffffU);
    std::memcpy(memory.data(), this->kSimple.text.constData(),
                static_cast<std::size_t>(this->kSimple.text.size()));
    for (const unsigned int length : {kFirstRefused, 0xffffffffU}) {
        expectParseError([&] { this->m_parser->parse(memory.data(), length); },
                         "text of 2 GiB or more"_q, 0, 0, 0);
        EXPECT_EQ(this->m_parser->errorMessage(), kInitialMessage);
    }
    // One byte less is scanned; the zero byte behind the text ends it.
    EXPECT_EQ(shown(this->m_parser->parse(memory.data(), kFirstRefused - 1)), this->kSimple.value);
}

// ---- What stays between two texts ---------------------------------------------------------------

TYPED_TEST(AlarmParser, isResetForEachText)
{
    EXPECT_TRUE(this->m_parser->errorMessage().isEmpty());
    for (int i = 0; i < 2; ++i) // the second failure counts from 0 again
        this->expectRefused(this->kWrong);
    EXPECT_EQ(this->m_parser->errorMessage(), this->kWrong.message);
    EXPECT_EQ(this->shownOf(this->kSimple.text), this->kSimple.value);
    EXPECT_EQ(this->m_parser->errorMessage(), kInitialMessage);
}

TYPED_TEST(AlarmParser, valuesOfEarlierTextsStay_butNotTheirMemory)
{
    QByteArray text = this->kSimple.text;
    const auto first = this->m_parser->parse(&text);
    text.fill('x');
    text = this->kAnother.text;
    const auto second = this->m_parser->parse(&text);
    EXPECT_THROW(this->shownOf(this->kWrong.text), ParseException);
    this->m_engine.collectGarbage();
    EXPECT_EQ(shown(first), this->kSimple.value);
    EXPECT_EQ(shown(second), this->kAnother.value);
}

// ---- The object ---------------------------------------------------------------------------------

TYPED_TEST(AlarmParser, hasAParent)
{
    QObject parent;
    EXPECT_EQ(TypeParam::parser(&this->m_engine, &parent).release()->parent(), &parent);
    EXPECT_EQ(this->m_parser->parent(), nullptr);
}

TYPED_TEST(AlarmParser, hasNoSignalsSlotsOrProperties)
{
    const QMetaObject &meta = TypeParam::Parser::staticMetaObject;
    EXPECT_STREQ(meta.className(), TypeParam::kClassName);
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(meta.methodCount(), meta.methodOffset());
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
    EXPECT_EQ(meta.enumeratorCount(), 0);
    EXPECT_EQ(meta.constructorCount(), 0);
    EXPECT_EQ(meta.classInfoCount(), 0);
    EXPECT_EQ(this->m_parser->metaObject(), &meta);
    EXPECT_TRUE(this->m_parser->inherits(TypeParam::kClassName));
    EXPECT_EQ(
        qobject_cast<typename TypeParam::Parser *>(static_cast<QObject *>(this->m_parser.get())),
        this->m_parser.get());
}
