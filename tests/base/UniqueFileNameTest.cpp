// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/FileUtils.h"

#include "support/Expect.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QDateTime>

using vn::FileUtils;

namespace {

const QDateTime kMayDay(QDate(2010, 5, 1), QTime(0, 0));

class UniqueFileName : public FolderTest
{
protected:
    void take(const QString &name) const { writeFile(path(name), QByteArray()); }

    QString name(const QString &pattern, bool alwaysCount = false,
                 const QString &counter = "[%i]"_q) const
    {
        return FileUtils::uniqueFileName(dir(), pattern, kMayDay, counter, alwaysCount);
    }
};

} // namespace

TEST_F(UniqueFileName, putsTheDateIntoThePattern)
{
    EXPECT_EQ(name("cam-%d.cfg"_q), "cam-2010-05-01.cfg"_q);
}

TEST_F(UniqueFileName, putsTheDateInEveryPlace)
{
    EXPECT_EQ(name("%d/%d.cfg"_q), "2010-05-01/2010-05-01.cfg"_q);
}

TEST_F(UniqueFileName, takesAPatternWithoutDate)
{
    EXPECT_EQ(name("cam.cfg"_q), "cam.cfg"_q);
}

TEST_F(UniqueFileName, takesTheDateInTheZoneOfTheDateTime)
{
    const QDateTime late(QDate(2010, 12, 31), QTime(23, 59, 59), Qt::UTC); // 2011 in the local zone
    EXPECT_EQ(FileUtils::uniqueFileName(dir(), "%d"_q, late, "[%i]"_q, false), "2010-12-31"_q);
}

TEST_F(UniqueFileName, padsMonthAndDayAndEarlyYears)
{
    const QDateTime early(QDate(7, 3, 9), QTime(0, 0));
    EXPECT_EQ(FileUtils::uniqueFileName(dir(), "%d"_q, early, "[%i]"_q, false), "0007-03-09"_q);
}

TEST_F(UniqueFileName, countsATakenNameFrom2)
{
    take("cam-2010-05-01.cfg"_q);
    EXPECT_EQ(name("cam-%d.cfg"_q), "cam-2010-05-01[2].cfg"_q);
    take("cam-2010-05-01[2].cfg"_q);
    EXPECT_EQ(name("cam-%d.cfg"_q), "cam-2010-05-01[3].cfg"_q);
}

TEST_F(UniqueFileName, countsOnWhereNamesAreTakenInARow)
{
    take("cam.cfg"_q);
    for (int i = 2; i <= 11; ++i)
        take("cam[%1].cfg"_q.arg(i));
    EXPECT_EQ(name("cam.cfg"_q), "cam[12].cfg"_q);
}

TEST_F(UniqueFileName, fillsAGapInTheCount)
{
    take("cam.cfg"_q);
    take("cam[3].cfg"_q);
    EXPECT_EQ(name("cam.cfg"_q), "cam[2].cfg"_q);
}

TEST_F(UniqueFileName, ignoresCountedNamesWhereThePlainOneIsFree)
{
    take("cam[2].cfg"_q);
    EXPECT_EQ(name("cam.cfg"_q), "cam.cfg"_q);
}

TEST_F(UniqueFileName, putsTheCountBeforeTheLastDot)
{
    take("cam.front.cfg"_q);
    EXPECT_EQ(name("cam.front.cfg"_q), "cam.front[2].cfg"_q);
}

TEST_F(UniqueFileName, putsTheCountAtTheEndWithoutADot)
{
    take("cam"_q);
    EXPECT_EQ(name("cam"_q), "cam[2]"_q);
}

TEST_F(UniqueFileName, putsTheCountBeforeADotAtTheStartOrEnd)
{
    take(".cfg"_q);
    EXPECT_EQ(name(".cfg"_q), "[2].cfg"_q);
    take("cam."_q);
    EXPECT_EQ(name("cam."_q), "cam[2]."_q);
}

TEST_F(UniqueFileName, numbersEvenAFreeNameFrom1IfAsked)
{
    EXPECT_EQ(name("cam-%d.cfg"_q, true), "cam-2010-05-01[1].cfg"_q);
    take("cam-2010-05-01[1].cfg"_q);
    EXPECT_EQ(name("cam-%d.cfg"_q, true), "cam-2010-05-01[2].cfg"_q);
}

TEST_F(UniqueFileName, usesTheCounterFormatGiven)
{
    take("cam.cfg"_q);
    EXPECT_EQ(name("cam.cfg"_q, false, " (%i)"_q), "cam (2).cfg"_q);
    EXPECT_EQ(name("cam.cfg"_q, false, "-%i-%i"_q), "cam-2-2.cfg"_q);
}

TEST_F(UniqueFileName, addsTheNumberToACounterFormatWithoutOne)
{
    take("cam.cfg"_q);
    EXPECT_EQ(name("cam.cfg"_q, false, "-"_q), "cam-2.cfg"_q);
    EXPECT_EQ(name("cam.cfg"_q, false, QString()), "cam2.cfg"_q);
    take("cam-2.cfg"_q);
    EXPECT_EQ(name("cam.cfg"_q, false, "-"_q), "cam-3.cfg"_q);
}

TEST_F(UniqueFileName, leavesTheMarksOfTheOtherFormatAlone)
{
    take("%i.cfg"_q);
    EXPECT_EQ(name("%i.cfg"_q), "%i[2].cfg"_q);
    take("a"_q);
    EXPECT_EQ(name("a"_q, false, "%d%i"_q), "a%d2"_q);
}

TEST_F(UniqueFileName, findsFoldersTakingAName)
{
    ASSERT_TRUE(dir().mkdir("cam.cfg"_q));
    EXPECT_EQ(name("cam.cfg"_q), "cam[2].cfg"_q);
}

TEST_F(UniqueFileName, findsADanglingLinkTakingAName)
{
    ASSERT_TRUE(QFile::link(path("nothing"_q), path("cam.cfg"_q)));
    ASSERT_TRUE(QFile::link(path("nothing"_q), path("cam[2].cfg"_q)));
    EXPECT_EQ(name("cam.cfg"_q), "cam[3].cfg"_q);
}

TEST_F(UniqueFileName, seesCaseAsTheFileSystemDoes)
{
    take("CAM.cfg"_q);
    EXPECT_EQ(name("cam.cfg"_q), "cam.cfg"_q);
}

TEST_F(UniqueFileName, findsAllNamesFreeInAFolderThatIsNotThere)
{
    EXPECT_EQ(FileUtils::uniqueFileName(QDir(path("none"_q)), "%d"_q, kMayDay, "[%i]"_q, false),
              "2010-05-01"_q);
}

TEST_F(UniqueFileName, makesNothing)
{
    EXPECT_EQ(name("cam.cfg"_q), "cam.cfg"_q);
    EXPECT_EQ(names(), QStringList());
}
