// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/Exceptions.h"

#include "support/Expect.h"
#include "support/Literals.h"

#include <QtCore/QFile>

#include <cerrno>
#include <memory>
#include <thread>
#include <type_traits>

using namespace vn;

// The hierarchy that callers catch by.
static_assert(std::is_base_of_v<std::exception, ExceptionQt>);
static_assert(std::is_base_of_v<ExceptionQt, ParseException>);
static_assert(std::is_base_of_v<ExceptionQt, IOException>);
static_assert(std::is_base_of_v<IOException, FileException>);
static_assert(std::is_base_of_v<IOException, ArchiveException>);
static_assert(!std::is_base_of_v<IOException, ParseException>);

// What the language copies while it unwinds must not throw.
static_assert(std::is_nothrow_copy_constructible_v<ExceptionQt>);
static_assert(std::is_nothrow_copy_constructible_v<ParseException>);
static_assert(std::is_nothrow_copy_constructible_v<IOException>);
static_assert(std::is_nothrow_copy_constructible_v<FileException>);
static_assert(std::is_nothrow_copy_constructible_v<ArchiveException>);

// A text alone is no exception yet.
static_assert(!std::is_convertible_v<QString, ExceptionQt>);
static_assert(!std::is_convertible_v<QString, IOException>);

namespace {

FileException missingFile()
{
    QFile file(u8"/nowhere/Gerät.cfg"_q);
    EXPECT_FALSE(file.open(QIODevice::ReadOnly));
    return FileException(file);
}

/** Expects that @p exception, known as its base, is copied and raised as what it is. */
template <typename Exception>
void expectKeepsItsClass(const Exception &exception)
{
    const ExceptionQt &base = exception;
    const std::unique_ptr<ExceptionQt> copy(base.clone());
    const ExceptionQt &copied = *copy;
    EXPECT_TRUE(typeid(copied) == typeid(Exception));
    EXPECT_NE(copy.get(), &base);
    EXPECT_EQ(copy->message(), exception.message());
    expectThrows<Exception>([&] { base.raise(); }, exception.message());
    expectThrows<Exception>([&] { copy->raise(); }, exception.message());
}

} // namespace

TEST(Exceptions, keepTheirMessage)
{
    const ExceptionQt exception(u8"Größe 3 €"_q);
    EXPECT_EQ(exception.message(), u8"Größe 3 €"_q);
    EXPECT_EQ(exception.cause(), nullptr);
}

TEST(Exceptions, tellTheMessageInUtf8)
{
    const IOException exception(u8"Größe 3 €"_q);
    const std::exception &standard = exception;
    EXPECT_STREQ(standard.what(), "Gr\xC3\xB6\xC3\x9F"
                                  "e 3 \xE2\x82\xAC");
    const char *const first = exception.what();
    EXPECT_EQ(exception.what(), first) << "the text stays where it is";
}

TEST(Exceptions, ofAnEmptyMessageTellAnEmptyText)
{
    EXPECT_STREQ(ExceptionQt(QString()).what(), "");
    EXPECT_STREQ(ExceptionQt(""_q).what(), "");
}

TEST(Exceptions, copyAndRaiseAsTheClassThatTheyAre)
{
    expectKeepsItsClass(ExceptionQt("a"_q));
    expectKeepsItsClass(ParseException("b"_q, 1, 2, 3, 4));
    expectKeepsItsClass(IOException("c"_q));
    expectKeepsItsClass(missingFile());
    expectKeepsItsClass(ArchiveException("d"_q, "e"_q, ArchiveError::Damaged, "f"_q));
}

TEST(Exceptions, keepTheirPositionsInEveryCopy)
{
    const ParseException exception("unexpected"_q, 0, 7, -1, 12);
    const std::unique_ptr<ParseException> copy(exception.clone());
    ParseException assigned("other"_q, 9, 9, 9, 9);
    assigned = exception;
    for (const ParseException *e : {&exception, const_cast<const ParseException *>(copy.get()),
                                    const_cast<const ParseException *>(&assigned)}) {
        EXPECT_EQ(e->message(), "unexpected"_q);
        EXPECT_STREQ(e->what(), "unexpected");
        EXPECT_EQ(e->startLine(), 0);
        EXPECT_EQ(e->startColumn(), 7);
        EXPECT_EQ(e->endLine(), -1);
        EXPECT_EQ(e->endColumn(), 12);
    }
}

TEST(Exceptions, keepACopyOfTheCauseWithItsClass)
{
    std::unique_ptr<IOException> outer;
    {
        const ParseException inner("inner"_q, 1, 2, 3, 4);
        outer = std::make_unique<IOException>("outer"_q, &inner);
        EXPECT_NE(outer->cause(), &inner);
    } // the cause itself is gone
    const auto *cause = dynamic_cast<const ParseException *>(outer->cause());
    ASSERT_NE(cause, nullptr);
    EXPECT_EQ(cause->message(), "inner"_q);
    EXPECT_EQ(cause->endColumn(), 4);
}

TEST(Exceptions, keepAWholeChainOfCauses)
{
    const FileException first = missingFile();
    const IOException second("second"_q, &first);
    const ParseException third("third"_q, 0, 0, 0, 0, &second);
    const ExceptionQt fourth("fourth"_q, &third);

    const std::unique_ptr<ExceptionQt> copy(fourth.clone());
    const ExceptionQt *cause = copy->cause();
    ASSERT_NE(cause, nullptr);
    EXPECT_TRUE(typeid(*cause) == typeid(ParseException));
    cause = cause->cause();
    ASSERT_NE(cause, nullptr);
    EXPECT_TRUE(typeid(*cause) == typeid(IOException));
    cause = cause->cause();
    ASSERT_NE(cause, nullptr);
    EXPECT_TRUE(typeid(*cause) == typeid(FileException));
    EXPECT_EQ(cause->message(), first.message());
    EXPECT_EQ(cause->cause(), nullptr);
}

TEST(Exceptions, shareTheirCauseWithCopiesThatOutliveThem)
{
    auto exception = std::make_unique<IOException>("outer"_q);
    {
        const IOException cause("cause"_q);
        exception = std::make_unique<IOException>("outer"_q, &cause);
    }
    IOException copy("other"_q);
    copy = *exception;
    exception.reset();
    ASSERT_NE(copy.cause(), nullptr);
    EXPECT_EQ(copy.cause()->message(), "cause"_q);
    EXPECT_EQ(copy.message(), "outer"_q);
}

TEST(Exceptions, areCaughtByTheirBases)
{
    EXPECT_THROW(throw missingFile(), IOException);
    EXPECT_THROW(throw missingFile(), ExceptionQt);
    EXPECT_THROW(throw ParseException(""_q, 0, 0, 0, 0), std::exception);
}

TEST(Exceptions, passFromThreadToThread)
{
    std::unique_ptr<ExceptionQt> carried;
    std::thread([&] {
        try {
            throw ParseException("from afar"_q, 1, 2, 3, 4);
        } catch (const ExceptionQt &e) {
            carried.reset(e.clone());
        }
    }).join();
    expectParseError(
        [&] {
            try {
                carried->raise();
            } catch (const ParseException &e) {
                EXPECT_EQ(e.endLine(), 3);
                throw ParseException(e.message(), 0, e.startColumn(), 0, e.endColumn());
            }
        },
        "from afar"_q, 0, 2, 4);
}

TEST(FileException, tellsTheFileAndTheReason)
{
    const FileException exception = missingFile();
    EXPECT_EQ(exception.fileName(), u8"/nowhere/Gerät.cfg"_q);
    EXPECT_EQ(exception.message(), u8"/nowhere/Gerät.cfg: No such file or directory"_q);
    EXPECT_EQ(exception.cause(), nullptr);
}

TEST(FileException, keepsItsTextWhenTheFileGoesOn)
{
    QFile file("/nowhere/a.cfg"_q);
    ASSERT_FALSE(file.open(QIODevice::ReadOnly));
    const FileException exception(file);
    file.setFileName("/dev/null"_q);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(exception.message(), "/nowhere/a.cfg: No such file or directory"_q);
    const std::unique_ptr<FileException> copy(exception.clone());
    EXPECT_EQ(copy->fileName(), "/nowhere/a.cfg"_q);
    FileException assigned(file);
    assigned = exception;
    EXPECT_EQ(assigned.fileName(), "/nowhere/a.cfg"_q);
    EXPECT_STREQ(assigned.what(), "/nowhere/a.cfg: No such file or directory");
}

TEST(FileException, tellsTheReasonAndTheSystemsNumber)
{
    const FileException missing = missingFile();
    EXPECT_EQ(missing.reason(), "No such file or directory"_q);
    EXPECT_EQ(missing.systemError(), ENOENT);

    const FileException full("a: b"_q, ENOSPC);
    EXPECT_EQ(full.message(), "a: b: No space left on device"_q);
    EXPECT_EQ(full.fileName(), "a: b"_q);
    EXPECT_EQ(full.reason(), "No space left on device"_q);
    EXPECT_EQ(full.systemError(), ENOSPC);
    EXPECT_EQ(full.cause(), nullptr);

    // in every copy
    FileException assigned = missing;
    assigned = full;
    const std::unique_ptr<FileException> copy(assigned.clone());
    EXPECT_EQ(copy->systemError(), ENOSPC);
    expectThrows<FileException>([&] { copy->raise(); },
                                [](const FileException &e) {
                                    EXPECT_EQ(e.systemError(), ENOSPC);
                                    EXPECT_EQ(e.reason(), "No space left on device"_q);
                                });
}

TEST(FileException, tellsNoNumberWhereTheSystemRefusedNothing)
{
    QFile file(":/no/resource"_q);
    ASSERT_FALSE(file.open(QIODevice::ReadOnly | QIODevice::Append));
    errno = ENOSPC; // of something else
    const FileException exception(file);
    EXPECT_EQ(exception.systemError(), 0) << exception.what();
    EXPECT_FALSE(exception.reason().isEmpty());
}

TEST(ArchiveException, tellsNamesAndReason)
{
    const ArchiveException ofEntry("a.zip"_q, "e"_q, ArchiveError::Damaged, "why"_q);
    EXPECT_EQ(ofEntry.message(), "a.zip: e: why"_q);
    ArchiveException exception("b.zip"_q, QString(), ArchiveError::NotAnArchive, "no: such"_q);
    EXPECT_EQ(exception.message(), "b.zip: no: such"_q);
    EXPECT_TRUE(exception.entry().isNull());
    exception = ofEntry;
    const std::unique_ptr<ArchiveException> copy(exception.clone());
    EXPECT_EQ(copy->path(), "a.zip"_q);
    EXPECT_EQ(copy->entry(), "e"_q);
    EXPECT_EQ(copy->error(), ArchiveError::Damaged);
    EXPECT_EQ(copy->reason(), "why"_q);
    EXPECT_EQ(copy->cause(), nullptr);
    // a nameless entry is one all the same
    EXPECT_EQ(ArchiveException("a.zip"_q, ""_q, ArchiveError::Damaged, "why"_q).message(),
              "a.zip: : why"_q);
}
