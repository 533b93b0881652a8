// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// read_configuration FILE SECTION KEY: prints what the header of a configuration says, and the
// values of a key.

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"

#include <cstdio>

using vn::VanteroConfigFile;

int main(int argc, char **argv)
try {
    if (argc != 4)
        qFatal("read_configuration FILE SECTION KEY");
    const QString section = argv[2];
    const QString key = argv[3];

    //! [read a configuration]
    const VanteroConfigFile config =
        VanteroConfigFile::open(QString::fromLocal8Bit(argv[1]), QDateTime::currentDateTime());
    std::printf("camera %s, firmware %s\n", qPrintable(config.getFactoryIP()),
                qPrintable(config.getSoftwareVersion()));

    // The newest value, the last one in the file, comes first.
    std::printf("%s is %s\n", qPrintable(key), qPrintable(config.value(section, key)));
    const QMultiMap<QString, QString> entries = config.section(section);
    for (const QString &value : entries.values(key))
        std::printf("- %s\n", qPrintable(value));
    //! [read a configuration]
    return 0;
} catch (const vn::ExceptionQt &e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
}
