// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The test vectors of docs/vectors, which others use without this library, hold for it.

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/ZipReader.h"
#include "config/VanteroConfigFile.h"
#include "erdinfo/VanteroErdinfoFile.h"
#include "support/Files.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>
#include <QtScript/QScriptEngine>
#include <QtScript/QScriptValueIterator>

#include <gtest/gtest.h>

#include <functional>

using namespace vn;

namespace {

QJsonDocument jsonOf(const QString &path)
{
    QJsonParseError error = {};
    const QJsonDocument document = QJsonDocument::fromJson(readFile(path), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError)
        << path.toStdString() << ": " << error.errorString().toStdString();
    return document;
}

/** A value as one line. */
std::string shown(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}

/** The vectors of a folder: paths without their endings. A folder that has lost some is an error.
 */
QStringList vectorsOf(const char *folder, const char *ending, int atLeast)
{
    const QDir dir(QLatin1String(VANTERO_VECTORS "/") + QLatin1String(folder));
    QStringList result;
    for (const QString &name : dir.entryList({QLatin1String("*.") + QLatin1String(ending)}))
        result += dir.filePath(name.left(name.lastIndexOf(QLatin1Char('.'))));
    EXPECT_GE(result.size(), atLeast) << folder;
    return result;
}

/** Compares what @p read makes of each input with its NAME.expected.json. */
void expectVectors(
    const char *folder, const char *ending, int atLeast,
    const std::function<QJsonObject(const QString &path, const QJsonObject &expected)> &read)
{
    for (const QString &vector : vectorsOf(folder, ending, atLeast)) {
        SCOPED_TRACE(vector.toStdString());
        const QJsonObject expected = jsonOf(vector + ".expected.json"_q).object();
        EXPECT_FALSE(expected.isEmpty());
        const QString input = vector + QLatin1Char('.') + QLatin1String(ending);
        EXPECT_EQ(shown(read(input, expected)), shown(expected));
    }
}

/** The rows of a table. */
QJsonArray rowsOf(const char *path, int atLeast)
{
    const QJsonArray rows =
        jsonOf(QLatin1String(VANTERO_VECTORS "/") + QLatin1String(path)).array();
    EXPECT_GE(rows.size(), atLeast) << path;
    return rows;
}

QJsonValue textOrNull(const QString &text)
{
    return text.isNull() ? QJsonValue() : QJsonValue(text);
}

QJsonArray entriesOf(const QMultiMap<QString, QString> &section)
{
    QJsonArray entries;
    for (auto it = section.begin(); it != section.end(); ++it)
        entries.append(QJsonArray{it.key(), textOrNull(it.value())});
    return entries;
}

QJsonObject sectionsOf(const VanteroConfigFile &config)
{
    QJsonObject sections;
    for (const QString &name : config.allSectionKeys())
        sections.insert(name, entriesOf(config.section(name)));
    return sections;
}

/** What stands in the comment segments of an image, one after the other. */
QByteArray commentOf(const QByteArray &image)
{
    QByteArray comment;
    int at = 2;
    while (at + 4 <= image.size() && image.at(at) == '\xFF' && image.at(at + 1) != '\xDA') {
        const int size = uchar(image.at(at + 2)) << 8 | uchar(image.at(at + 3));
        if (image.at(at + 1) == '\xFE')
            comment += image.mid(at + 4, size - 2);
        at += 2 + size;
    }
    return comment;
}

QJsonObject errorOf(const ParseException &e)
{
    EXPECT_EQ(e.startLine(), 0);
    EXPECT_EQ(e.endLine(), 0);
    return {{"error"_q, e.message()}, {"start"_q, e.startColumn()}, {"end"_q, e.endColumn()}};
}

QJsonValue alarmOf(const QVariant &value)
{
    if (value.type() == QVariant::Map) {
        QJsonArray members;
        const QVariantMap map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it)
            members.append(QJsonArray{it.key(), alarmOf(it.value())});
        return QJsonObject{{"object"_q, members}};
    }
    if (value.type() == QVariant::List) {
        QJsonArray elements;
        for (const QVariant &element : value.toList())
            elements.append(alarmOf(element));
        return QJsonObject{{"array"_q, elements}};
    }
    switch (int(value.type())) {
    case QVariant::String:
        return value.toString();
    case QVariant::Double:
        return value.toDouble();
    case QVariant::Bool:
        return value.toBool();
    case QVariant::Invalid:
        return {};
    default:
        return QLatin1String("a value of type ") + QLatin1String(value.typeName());
    }
}

QJsonValue updateOf(const QScriptValue &value)
{
    if (value.isArray()) {
        QJsonArray elements;
        for (int i = 0; i < value.property("length"_q).toInt32(); ++i)
            elements.append(updateOf(value.property(quint32(i))));
        return elements;
    }
    if (value.isDate()) {
        const QDateTime date = value.toDateTime();
        return QJsonObject{
            {"date"_q, date.isValid() ? QJsonValue(date.toString(Qt::ISODate)) : QJsonValue()}};
    }
    if (value.isNumber())
        return value.toNumber();
    if (value.isBool())
        return value.toBool();
    if (value.isString())
        return value.toString();
    return "another value: "_q + value.toString();
}

VanteroSoftwareVersion versionOf(const QJsonObject &row, const char *name)
{
    return VanteroSoftwareVersion(row.value(QLatin1String(name)).toString());
}

} // namespace

TEST(Vectors, properties)
{
    expectVectors("properties", "txt", 12, [](const QString &path, const QJsonObject &) {
        return QJsonObject{{"entries"_q, entriesOf(VanteroConfigMap::parseProperties(
                                             QString::fromLatin1(readFile(path))))}};
    });
}

TEST(Vectors, configuration)
{
    expectVectors("configuration", "cfg", 25, [](const QString &path, const QJsonObject &expected) {
        VanteroConfigFile config;
        QJsonObject result{{"header"_q, QJsonValue()}, {"error"_q, QJsonValue()}};
        try {
            result["header"_q] =
                config.parse(FileUtils::readText(path), QDateTime::currentDateTime());
        } catch (const ParseException &e) {
            EXPECT_EQ(e.startLine(), -1);
            EXPECT_EQ(e.startColumn(), -1);
            EXPECT_EQ(e.endLine(), -1);
            EXPECT_EQ(e.endColumn(), -1);
            result["error"_q] = e.message();
        }
        result["sections"_q] = sectionsOf(config);
        if (expected.contains("printed"_q))
            result["printed"_q] = config.toString();
        return result;
    });
}

TEST(Vectors, replacedSections)
{
    for (const QJsonValue &value : rowsOf("section-editing/replace.json", 13)) {
        const QJsonObject row = value.toObject();
        SCOPED_TRACE(shown(row));
        EXPECT_EQ(VanteroConfigFile::replaceSection(row.value("target"_q).toString(),
                                                    row.value("source"_q).toString(),
                                                    row.value("section"_q).toString()),
                  row.value("result"_q).toString());
    }
}

TEST(Vectors, removedSections)
{
    for (const QJsonValue &value : rowsOf("section-editing/remove.json", 16)) {
        const QJsonObject row = value.toObject();
        SCOPED_TRACE(shown(row));
        QStringList sections;
        for (const QJsonValue &section : row.value("sections"_q).toArray())
            sections += section.toString();
        EXPECT_EQ(VanteroConfigFile::removeSections(row.value("text"_q).toString(), sections,
                                                    row.value("dropOuterComments"_q).toBool(),
                                                    row.value("dropSectionComments"_q).toBool(),
                                                    row.value("dropEmptyLines"_q).toBool()),
                  row.value("result"_q).toString());
    }
}

TEST(Vectors, jpegComment)
{
    expectVectors("jpeg-comment", "jpg", 10, [](const QString &path, const QJsonObject &) {
        VanteroConfigFile config;
        QJsonObject result{{"error"_q, QJsonValue()}};
        try {
            QByteArray comment = commentOf(readFile(path));
            config.parseJpegComment(&comment);
        } catch (const ParseException &e) {
            result["error"_q] = e.message();
        }
        result["sections"_q] = sectionsOf(config);
        return result;
    });
}

TEST(Vectors, zip)
{
    expectVectors("zip", "zip", 12, [](const QString &path, const QJsonObject &expected) {
        ZipReader archive(path, expected.value("password"_q).toString().toUtf8());
        EXPECT_TRUE(archive.open(QIODevice::ReadOnly)) << archive.errorString().toStdString();
        QJsonArray entries;
        for (const QString &name : archive.fileListBySuffix("cfg"_q)) {
            QJsonObject entry{{"name"_q, name}};
            try {
                EXPECT_TRUE(archive.openFile(name));
                entry["text"_q] = FileUtils::readText(&archive);
            } catch (const IOException &) {
                entry["error"_q] = true;
            }
            entries.append(entry);
        }
        return QJsonObject{{"password"_q, expected.value("password"_q)}, {"entries"_q, entries}};
    });
}

TEST(Vectors, softwareVersionComponents)
{
    for (const QJsonValue &value : rowsOf("software-version/components.json", 24)) {
        const QJsonObject row = value.toObject();
        const VanteroSoftwareVersion version = versionOf(row, "text");
        QJsonArray low;
        QJsonArray high;
        for (int i = 0; i < 6; ++i) {
            low.append(version[i]);
            high.append(version.high(i));
        }
        const QJsonObject read{{"text"_q, QString(version)}, {"low"_q, low}, {"high"_q, high}};
        EXPECT_EQ(shown(read), shown(row));
    }
}

TEST(Vectors, softwareVersionComparison)
{
    for (const QJsonValue &value : rowsOf("software-version/comparison.json", 20)) {
        const QJsonObject row = value.toObject();
        SCOPED_TRACE(shown(row));
        const VanteroSoftwareVersion a = versionOf(row, "a");
        const VanteroSoftwareVersion b = versionOf(row, "b");
        const QString order = row.value("order"_q).toString();
        EXPECT_TRUE(order == "<"_q || order == "="_q || order == ">"_q);
        EXPECT_EQ(a < b, order == "<"_q);
        EXPECT_EQ(a == b, order == "="_q);
        EXPECT_EQ(a > b, order == ">"_q);
        EXPECT_EQ(b < a, order == ">"_q);
        EXPECT_EQ(b == a, order == "="_q);
        EXPECT_EQ(b > a, order == "<"_q);
    }
}

TEST(Vectors, safeUpdates)
{
    for (const QJsonValue &value : rowsOf("software-version/safe-updates.json", 35)) {
        const QJsonObject row = value.toObject();
        SCOPED_TRACE(shown(row));
        ASSERT_TRUE(row.value("safe"_q).isBool());
        EXPECT_EQ(versionOf(row, "current")
                      .isSafe(row.value("model"_q).toString(), versionOf(row, "target")),
                  row.value("safe"_q).toBool());
    }
}

TEST(Vectors, applicationVersions)
{
    for (const QJsonValue &value : rowsOf("application-version/cases.json", 20)) {
        const QJsonObject row = value.toObject();
        SCOPED_TRACE(shown(row));
        EXPECT_EQ(VanteroSoftwareVersion::applicationVersion(row.value("version"_q).toString(),
                                                             row.value("revision"_q).toString(),
                                                             short(row.value("debug"_q).toInt())),
                  row.value("result"_q).toString());
    }
}

TEST(Vectors, firmwarePackage)
{
    expectVectors("firmware-package", "fwp", 12, [](const QString &path, const QJsonObject &) {
        const VanteroSoftwareVersion version = VanteroSoftwareVersion::fromFwpFile(path);
        return QJsonObject{
            {"version"_q, version.isNull() ? QJsonValue() : QJsonValue(QString(version))}};
    });
}

TEST(Vectors, erdinfo)
{
    const QTemporaryDir folder;
    for (const QString &vector : vectorsOf("erdinfo", "json", 10)) {
        SCOPED_TRACE(vector.toStdString());
        const QJsonObject values = jsonOf(vector + ".json"_q).object();
        const QByteArray expected = QByteArray::fromHex(readFile(vector + ".expected.hex"_q));
        EXPECT_GE(expected.size(), 488);

        const QString path = folder.filePath("record"_q);
        QFile::remove(path);
        if (values.contains("existing"_q))
            writeFile(path, QByteArray::fromHex(values.value("existing"_q).toString().toLatin1()));
        const auto number = [&values](const char *name) {
            return qint64(values.value(QLatin1String(name)).toDouble());
        };
        const auto time = [&values](const char *name) {
            return values.value(QLatin1String(name)).toString().toULongLong();
        };
        const auto text = [&values](const char *name) {
            return values.value(QLatin1String(name)).toString().toStdWString();
        };
        VanteroErdinfoFile info(path.toStdWString());
        info.setData(int(number("id1")), int(number("id2")), unsigned(number("number1")),
                     unsigned(number("number2")), time("time1"), time("time2"), text("text1"),
                     text("text2"), text("text3"));
        EXPECT_TRUE(info.save());
        EXPECT_EQ(readFile(path).toHex(' ').toStdString(), expected.toHex(' ').toStdString());
    }
}

TEST(Vectors, alarmList)
{
    expectVectors("alarm-list", "alarms", 28, [](const QString &path, const QJsonObject &) {
        QByteArray text = readFile(path);
        try {
            return QJsonObject{{"value"_q, alarmOf(AlarmListParser().parse(&text))}};
        } catch (const ParseException &e) {
            return errorOf(e);
        }
    });
}

TEST(Vectors, alarmUpdate)
{
    int argc = 1;
    char name[] = "test";
    char *argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv); // the script engine needs one
    QScriptEngine engine;
    expectVectors("alarm-update", "update", 28, [&](const QString &path, const QJsonObject &) {
        QByteArray text = readFile(path);
        try {
            QJsonObject properties;
            QScriptValueIterator it(AlarmUpdateParser(&engine).parse(&text));
            while (it.hasNext()) {
                it.next();
                properties.insert(it.name(), updateOf(it.value()));
            }
            return QJsonObject{{"properties"_q, properties}};
        } catch (const ParseException &e) {
            return errorOf(e);
        }
    });
}
