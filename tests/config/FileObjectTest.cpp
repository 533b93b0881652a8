// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <QtCore/QMetaObject>
#include <QtCore/QVariant>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <iterator>

#include <dlfcn.h>
#include <link.h>

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

TEST(FileObject, isAQObjectToCasts)
{
    VanteroConfigFile config;
    EXPECT_TRUE(config.inherits("QObject"));
    EXPECT_FALSE(config.inherits("vn::VanteroConfigFile"));
    EXPECT_EQ(config.qt_metacast("vn::VanteroConfigFile"), nullptr);
    EXPECT_EQ(config.qt_metacast("QObject"), &config);
}

/** The table of virtual functions, as the C++ ABI of GCC and Clang lays it out. */
TEST(FileObject, destructorIsTheOnlyVirtualOperation)
{
    const auto tableOf = [](const QObject &object) {
        const void *const *table = nullptr;
        std::memcpy(&table, static_cast<const void *>(&object), sizeof table);
        return table;
    };
    const QObject object;
    const VanteroConfigFile config;
    const void *const *const base = tableOf(object);
    const void *const *const own = tableOf(config);

    struct Slot
    {
        const char *name;
        bool isOverridden;
    };
    const Slot slots[] = {
        {"metaObject", false},  {"qt_metacast", false},        {"qt_metacall", false},
        {"destructor", true},   {"deleting destructor", true}, {"event", false},
        {"eventFilter", false}, {"timerEvent", false},         {"childEvent", false},
        {"customEvent", false}, {"connectNotify", false},      {"disconnectNotify", false},
    };
    constexpr std::size_t count = std::size(slots);
    for (std::size_t i = 0; i < count; ++i)
        EXPECT_EQ(own[i] != base[i], slots[i].isOverridden) << slots[i].name;

    // Two words before the first slot belong to the table, nothing after the last one.
    Dl_info info;
    void *symbol = nullptr;
    ASSERT_NE(dladdr1(own, &info, &symbol, RTLD_DL_SYMENT), 0);
    ASSERT_NE(symbol, nullptr);
    EXPECT_STREQ(info.dli_sname, "_ZTVN2vn17VanteroConfigFileE");
    EXPECT_EQ(static_cast<const ElfW(Sym) *>(symbol)->st_size, (count + 2) * sizeof(void *));
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
