// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "loading/Plugin.h"

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ThreadLocalAlarmListParser.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/StringUtils.h"
#include "base/ZipReader.h"
#include "base/ZipWriter.h"
#include "config/VanteroConfigFile.h"
#include "erdinfo/VanteroErdinfoFile.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

namespace {

// An exception's own text outlives the class, which goes with the library.
void useExceptions(Kept &kept)
{
    try {
        const vn::ParseException cause(QString::fromLatin1("cause"), 0, 1, 0, 2);
        throw vn::IOException(QString::fromLatin1("no more"), &cause);
    } catch (const vn::ExceptionQt &e) {
        kept.texts << e.message() << e.cause()->message();
    }
}

void useConfiguration(Kept &kept)
{
    const QString text = QString::fromLatin1("# File version: 1.0\n# Software version: R16-2.1.3\n"
                                             "\nSECTION ethernet\nDNS=10.0.0.1\nHOSTNAME\n"
                                             "ENDSECTION ethernet\n");
    vn::VanteroConfigFile config;
    config.parse(text, QDateTime());
    config.setFactoryIP(QString::fromLatin1("10.1.2.3"));
    config.setShortCameraType(QString::fromLatin1("M1"));
    kept.texts << vn::VanteroConfigFile::HEAD_SECTION << vn::VanteroConfigFile::FACTORY_IP
               << vn::EMPTY_STRING << config.value(QStringLiteral("none"), QStringLiteral("none"))
               << config.toString() << config.makeHeader() << config.allSectionKeys()
               << vn::VanteroConfigFile::newFileName(QDir(), QStringLiteral("cam"),
                                                     QDate(2010, 5, 1));
    kept.sections << config.section(vn::VanteroConfigFile::HEAD_SECTION)
                  << config.section(QStringLiteral("ethernet")) << vn::EMPTY_MAP;

    for (const char *broken : {"SECTION a\nSECTION b\n", "SECTION a\n", "a=b\n"}) {
        QString brokenText = QString::fromLatin1(broken);
        QTextStream stream(&brokenText);
        try {
            config.parseSection(&stream, false);
        } catch (const vn::ExceptionQt &e) {
            kept.texts << e.message();
        }
    }
}

void useVersions(Kept &kept)
{
    const char *const models[] = {"K40D", "K30", "H40", "W40", "M1", "50"};
    const char *const versions[] = {"R4-1.0.1",   "R16-2.1.3",   "R16-2.2.1.11", "VN-3.0.3.7",
                                    "VN-3.0.*",   "VN-3.0.6.24", "VN-3.0.6.29",  "VN-3.0.8.4",
                                    "VN-3.4.5.4", "VN-4.0.0.1",  "none"};
    for (const char *model : models) {
        for (const char *from : versions) {
            for (const char *to : versions) {
                const vn::VanteroSoftwareVersion current(QString::fromLatin1(from));
                const vn::SafeUpdateVerdict verdict =
                    current.checkUpdate(QString::fromLatin1(model), to);
                kept.texts << verdict.rule << verdict.sentence;
                if (!kept.everyText)
                    break;
            }
        }
    }
    kept.texts << vn::VanteroSoftwareVersion("VN-3.0.8.*")
               << vn::VanteroSoftwareVersion::splitVersion.pattern()
               << vn::VanteroSoftwareVersion::fromFwp(QByteArray("# Version: VN-3.0.6.29\n"))
               << vn::VanteroSoftwareVersion::applicationVersion(
                      QString::fromLatin1("4.1.1.5"), QString::fromLatin1("1200:1234"), 1)
               << vn::VanteroSoftwareVersion::applicationVersion(QString(), QString(), 0);
    // Qt keeps what was searched for: such a text must not lie in the library.
    kept.patterns << vn::VanteroSoftwareVersion::splitVersion;
    kept.texts << QString::fromLatin1("a-b").split(vn::VanteroSoftwareVersion::splitVersion);
}

void useErdinfo()
{
    const QTemporaryDir folder;
    vn::VanteroErdinfoFile info(folder.filePath(QStringLiteral("17.erdinfo")).toStdWString());
    info.setData(7, -1, 25, 25, 1, 2, L"entrance", L"K40D", L"motion");
    if (!info.save())
        qFatal("the erdinfo file was not written");
}

// An archive with an encrypted entry: what the archive libraries keep for themselves shows, too.
void useArchives(Kept &kept)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cams.zip"));
    const QString text = QString::fromLatin1("SECTION ethernet\nENDSECTION ethernet\n");

    QBuffer buffer;
    buffer.setData(text.toUtf8());
    buffer.open(QIODevice::ReadOnly);
    vn::ZipWriter writer(path, "secret");
    writer.open();
    writer.appendFile(&buffer, QStringLiteral("cam.cfg"), QString(),
                      QDateTime(QDate(2010, 5, 1), QTime(12, 0)));
    writer.close();

    vn::ZipReader reader(path, "secret");
    if (!reader.open(QIODevice::ReadOnly))
        qFatal("%s", qPrintable(reader.errorString()));
    const QStringList names = reader.fileListBySuffix(QStringLiteral(".cfg"));
    kept.texts << names;
    reader.openFile(names.first());
    kept.texts << vn::FileUtils::readText(&reader);

    vn::ZipReader wrong(path, "wrong");
    if (!wrong.open(QIODevice::ReadOnly))
        qFatal("%s", qPrintable(wrong.errorString()));
    wrong.openFile(names.first());
    try {
        vn::FileUtils::readText(&wrong);
    } catch (const vn::IOException &e) {
        kept.texts << e.message() << wrong.errorString();
    }
}

// The parser of this thread is left to the library, which is closed before the thread ends. The
// update needs no engine, because the text has no object.
void useAlarms(Kept &kept)
{
    vn::AlarmListParser *const lists = vn::ThreadLocalAlarmListParser::instance();
    kept.variants << lists->parse(
        QString::fromLatin1("{cams: ['front', back], n: 1e400, z: null}"));
    kept.texts << lists->errorMessage();
    vn::AlarmUpdateParser updates(nullptr);
    for (const char *broken : {"[1 2]", "'", "'"}) {
        try {
            lists->parse(QString::fromLatin1(broken));
        } catch (const vn::ParseException &e) {
            kept.texts << e.message() << lists->errorMessage();
        }
        try {
            updates.parse(QString::fromLatin1(broken));
        } catch (const vn::ParseException &e) {
            kept.texts << e.message() << updates.errorMessage();
        }
    }
}

} // namespace

extern "C" Q_DECL_EXPORT void useList(const char *text, QString &first)
{
    const QVariant list =
        vn::ThreadLocalAlarmListParser::instance()->parse(QString::fromLatin1(text));
    first = list.toList().value(0).toString();
}

extern "C" Q_DECL_EXPORT void use(Kept &kept)
{
    useExceptions(kept);
    useArchives(kept);
    useConfiguration(kept);
    useVersions(kept);
    useErdinfo();
    useAlarms(kept);
}
