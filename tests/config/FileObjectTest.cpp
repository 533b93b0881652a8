// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <QtCore/QMetaObject>
#include <QtCore/QVariant>

#include <gtest/gtest.h>

using namespace vn;

TEST(FileObject, isEmptyAfterConstruction)
{
    const QDateTime before = QDateTime::currentDateTime();
    const VanteroConfigFile config;
    EXPECT_TRUE(config.allSectionKeys().isEmpty());
    EXPECT_GE(config.timeStamp(), before);
    EXPECT_LE(config.timeStamp(), QDateTime::currentDateTime());
    EXPECT_EQ(config.parent(), nullptr);
}

TEST(FileObject, hasNoMetaObjectOfItsOwn)
{
    const VanteroConfigFile config;
    EXPECT_EQ(config.metaObject(), &QObject::staticMetaObject);
    EXPECT_STREQ(config.metaObject()->className(), "QObject");
    EXPECT_EQ(config.metaObject()->methodCount(), QObject::staticMetaObject.methodCount());
    EXPECT_EQ(config.metaObject()->propertyCount(), QObject::staticMetaObject.propertyCount());
}

TEST(FileObject, destructorIsVirtual)
{
    const std::unique_ptr<QObject> object = std::make_unique<VanteroConfigFile>();
    EXPECT_NE(dynamic_cast<VanteroConfigFile *>(object.get()), nullptr);
}

TEST(FileObject, valueIsTheNewestOrNull)
{
    VanteroConfigFile config;
    config.addValue("s"_q, "k"_q, "1"_q);
    config.addValue("s"_q, "k"_q, "2"_q);
    EXPECT_EQ(config.value("s"_q, "k"_q), "2"_q);
    EXPECT_TRUE(config.value("s"_q, "none"_q).isNull());
    EXPECT_TRUE(config.value("none"_q, "k"_q).isNull());
    EXPECT_FALSE(config.containsSection("none"_q));
}

TEST(FileObject, editsReachTheMap)
{
    VanteroConfigFile config;
    config.addValue("s"_q, "k"_q, "1"_q);
    config.addValue("s"_q, "k"_q, "2"_q);
    config.setValue("s"_q, "k"_q, "3"_q);
    config.setValue("t"_q, "k"_q, "4"_q);
    EXPECT_TRUE(config.containsSection("t"_q));
    EXPECT_EQ(config.section("s"_q).values("k"_q), (QStringList{"3"_q, "1"_q}));
    EXPECT_TRUE(config.section("none"_q).isEmpty());
    EXPECT_EQ(config.toString("s"_q), "SECTION s\nk=3\nk=1\nENDSECTION s\n"_q);
    EXPECT_EQ(config.toString(),
              "\nSECTION s\nk=3\nk=1\nENDSECTION s\n\n\nSECTION t\nk=4\nENDSECTION t\n\n"_q);
}

TEST(FileObject, headerValuesAreEntriesOfTheHeadSection)
{
    struct Row
    {
        QString (VanteroConfigFile::*get)() const;
        void (VanteroConfigFile::*set)(const QString &);
        QString key;
    };
    const Row rows[] = {
        {&VanteroConfigFile::getFileVersion, &VanteroConfigFile::setFileVersion, "File Version"_q},
        {&VanteroConfigFile::getSoftwareVersion, &VanteroConfigFile::setSoftwareVersion,
         "Software Version"_q},
        {&VanteroConfigFile::getFactoryIP, &VanteroConfigFile::setFactoryIP, "Factory IP"_q},
        {&VanteroConfigFile::getLongCameraType, &VanteroConfigFile::setLongCameraType,
         "Type Long"_q},
        {&VanteroConfigFile::getShortCameraType, &VanteroConfigFile::setShortCameraType,
         "Type Short"_q},
    };
    VanteroConfigFile config;
    for (const Row &row : rows) {
        EXPECT_TRUE((config.*row.get)().isNull());
        (config.*row.set)("first"_q);
        (config.*row.set)("second"_q);
        EXPECT_EQ((config.*row.get)(), "second"_q);
        EXPECT_EQ(config.section("head"_q).values(row.key), QStringList{"second"_q});
    }
    EXPECT_EQ(config.section("head"_q).size(), 5);
}

TEST(FileObject, copyIsIndependentAndCarriesTheTime)
{
    VanteroConfigFile original;
    original.parse("#:1=\n#:2\n\nSECTION a\nk=v\nENDSECTION a\n"_q, QDateTime());
    original.setObjectName("original"_q);

    VanteroConfigFile copy(original);
    EXPECT_EQ(copy.timeStamp(), original.timeStamp());
    EXPECT_EQ(copy.toString(), original.toString());
    EXPECT_TRUE(copy.objectName().isEmpty()) << "the QObject base is not copied";

    copy.setValue("a"_q, "k"_q, "changed"_q);
    EXPECT_EQ(original.value("a"_q, "k"_q), "v"_q);

    VanteroConfigFile assigned;
    assigned.setObjectName("assigned"_q);
    EXPECT_EQ(&(assigned = original), &assigned);
    EXPECT_EQ(assigned.toString(), original.toString());
    EXPECT_EQ(assigned.objectName(), "assigned"_q);
}

TEST(FileObject, selfAssignmentChangesNothing)
{
    VanteroConfigFile config;
    config.addValue("s"_q, "k"_q, "v"_q);
    VanteroConfigFile &same = config;
    config = same;
    EXPECT_EQ(config.value("s"_q, "k"_q), "v"_q);
}
