// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The header reader over a text, over a stream and written out by cases: the same values, and the
// stream stands at the same place.

#include "Support.h"

#include "config/VanteroConfigFile.h"

#include <QtCore/QTextStream>

using vn::VanteroConfigFile;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QStringList lines = linesOf(text);

    QString file;
    QString software;
    QString address;
    bool hasFile = false;
    bool hasSoftware = false;
    bool hasAddress = false;
    int used = 0;
    for (const QString &line : lines) {
        const bool marked = line.startsWith(QLatin1String("#:"));
        const int number = ++used;
        if (number == 1) {
            if (marked) {
                hasFile = true;
                const int equals = line.indexOf(QLatin1Char('='));
                file = equals < 0 ? line.mid(2) : line.mid(2, equals - 2);
            }
        } else if (number == 2) {
            if (marked) {
                hasSoftware = true;
                software = line.mid(2);
            }
        } else if (line.isEmpty()) {
            break;
        } else if (line.startsWith(QLatin1String("# Camera IP: "))) {
            hasAddress = true;
            address = line.mid(13);
        } else if (line.indexOf(QLatin1String("Configuration of")) > 0) {
            hasAddress = true;
            address = line.mid(line.indexOf(QLatin1String("Configuration of")) + 17).trimmed();
        }
    }
    const bool expected = lines.isEmpty() || (hasFile && (lines.size() < 2 || hasSoftware));

    VanteroConfigFile config;
    FUZZ_CHECK(config.parseHeader(text) == expected);
    FUZZ_EQUAL(config.getFileVersion(), file);
    FUZZ_EQUAL(config.getSoftwareVersion(), software);
    FUZZ_EQUAL(config.getFactoryIP(), address);
    FUZZ_CHECK(config.section(VanteroConfigFile::HEAD_SECTION).size() ==
               int(hasFile) + int(hasSoftware) + int(hasAddress));

    QString copy = text;
    QTextStream stream(&copy, QIODevice::ReadOnly);
    VanteroConfigFile streamed;
    FUZZ_CHECK(streamed.parseHeader(&stream) == expected);
    FUZZ_EQUAL(streamed.toString(), config.toString());
    for (int i = used; i < lines.size(); ++i)
        FUZZ_EQUAL(stream.readLine(), lines.at(i));
    FUZZ_CHECK(stream.atEnd());
    return 0;
}
