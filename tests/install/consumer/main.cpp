// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A program as users write it: no definitions of ours, and a call or two of each part. Values made
// before main() begins show that the library's constants are ready by then.

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ThreadLocalAlarmListParser.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/StringUtils.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"
#include "base/smart.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigMap.h"
#include "erdinfo/VanteroErdinfoFile.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtScript/QScriptEngine>

#include <cstdio>
#include <typeinfo>

using namespace vn;

namespace {

int failures = 0;

void check(bool ok, const char *what)
{
    if (ok)
        return;
    std::fprintf(stderr, "failed: %s\n", what);
    ++failures;
}

const char *const kText = "#:1.3=======\n#:VN-3.0.6.29\n# Camera IP: 10.14.7.21\n\n"
                          "SECTION image\nquality=70\nENDSECTION image\n";

VanteroConfigFile loaded(const QString &text)
{
    VanteroConfigFile config;
    config.parse(text, QDateTime::currentDateTime());
    return config;
}

// Before main().
const QString headSection = VanteroConfigFile::HEAD_SECTION;
const QStringList headKeys = {VanteroConfigFile::FILE_VERSION, VanteroConfigFile::SOFTWARE_VERSION,
                              VanteroConfigFile::FACTORY_IP, VanteroConfigFile::TYPE_LONG,
                              VanteroConfigFile::TYPE_SHORT};
const QString missing = VanteroConfigMap().value("none", "none", 0);
const QMultiMap<QString, QString> missingSection = EMPTY_MAP;
const VanteroConfigFile config = loaded(kText);
const VanteroSoftwareVersion version("VN-3.0.6.*");

void constants()
{
    check(headSection == "head", "name of the head section");
    check(headKeys.join(",") == "File Version,Software Version,Factory IP,Type Long,Type Short",
          "keys of the head section");
    check(missing.isNull() && EMPTY_STRING.isNull(), "the empty string is null");
    check(missingSection.isEmpty(), "the empty section");
    check(&VanteroConfigMap().value("none", "none", 0) == &EMPTY_STRING, "one empty string");
    check(config.getFactoryIP() == "10.14.7.21", "a configuration loaded before main()");
    check(version == VanteroSoftwareVersion("VN-3.0.6.29"), "a version read before main()");
    check("a-_b" == QString("a b").replace(" ", "-_") &&
              QString("a-_b").split(VanteroSoftwareVersion::splitVersion).size() == 2,
          "the expression that splits versions");
}

// Exceptions cross the border of the library with their class.
void exceptions()
{
    try {
        IOException("no more").raise();
    } catch (const ParseException &) {
        check(false, "an IOException is no ParseException");
    } catch (const ExceptionQt &e) {
        check(e.message() == "no more", "message of the exception");
    }
    try {
        loaded(QString(kText) + "SECTION a\n");
        check(false, "a section without an end is an error");
    } catch (const ExceptionQt &e) {
        check(typeid(e) == typeid(ParseException), "class of the exception");
        check(dynamic_cast<const ParseException *>(&e) != nullptr, "cast of the exception");
    }
}

void configurations(const QDir &folder)
{
    VanteroConfigFile edited = config;
    edited.setValue("image", "quality", "85");
    const QString path = folder.filePath("cam.cfg");
    loaded(VanteroConfigFile::replaceSection(kText, edited.toString("image"), "image")).store(path);
    check(VanteroConfigFile::open(path, QDateTime()).value("image", "quality") == "85",
          "an edited configuration is stored");
    const QObject &object = edited;
    check(dynamic_cast<const VanteroConfigFile *>(&object) == &edited, "cast from QObject");
}

void archives(const QDir &folder)
{
    const QString path = folder.filePath("cams.zip");
    const auto writer = std::make_shared<ZipWriter>(path, "secret");
    writer->open();
    VanteroConfigFile(config).store(writer, "cam.cfg");
    writer->close();

    ZipReader reader(path, "secret");
    check(reader.open(QIODevice::ReadOnly), "an archive is opened");
    check(reader.fileListBySuffix(".CFG") == QStringList("cam.cfg"), "entries of the archive");
    check(reader.openFile("cam.cfg") && FileUtils::readText(&reader) == kText, "an entry is read");
    check(StringUtils::endsWithIgnoreCase(path, ".ZIP"), "suffix of the archive");
}

void otherFormats(const QDir &folder)
{
    check(VanteroSoftwareVersion("VN-3.0.3.7").isSafe("K40D", "VN-3.4.5.4"), "a safe update");
    const QString path = folder.filePath("17.erdinfo");
    VanteroErdinfoFile info(path.toStdWString());
    info.setData(7, -1, 25, 25, 1, 2, L"entrance", L"K40D", L"motion");
    check(info.save() && QFileInfo(path).size() == 488, "an erdinfo file is written");
}

void alarms()
{
    const QVariantMap list =
        ThreadLocalAlarmListParser::instance()->parse(QString("{cams: ['front', 'back']}")).toMap();
    check(list.value("cams").toStringList() == QStringList({"back", "front"}), "an alarm list");
    const QObject *object = ThreadLocalAlarmListParser::instance();
    check(qobject_cast<const AlarmListParser *>(object) != nullptr, "cast by the meta-object");

    QScriptEngine engine;
    AlarmUpdateParser updates(&engine);
    check(updates.parse(QString("state=1")).property("state").toInt32() == 1, "an alarm update");
    try {
        updates.parse(QString("state=1;"));
        check(false, "a semicolon at the end is an error");
    } catch (const ParseException &e) {
        check(e.startColumn() == 7 && e.endColumn() == 8, "place of the error");
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv); // script engines want one
    const QTemporaryDir work;
    const QDir folder(work.path());
    constants();
    exceptions();
    configurations(folder);
    archives(folder);
    otherFormats(folder);
    alarms();
    return failures == 0 ? 0 : 1;
}
