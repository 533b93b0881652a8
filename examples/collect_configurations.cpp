// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// collect_configurations PASSWORD PATH…: lists the cameras whose configurations lie in files,
// folders and archives, by the address that each had when it left the factory.

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"

#include <cstdio>

using vn::VanteroConfigFile;

int main(int argc, char **argv)
try {
    if (argc < 3)
        qFatal("collect_configurations PASSWORD PATH...");
    QStringList paths;
    for (int i = 2; i < argc; ++i)
        paths << QString::fromLocal8Bit(argv[i]);

    //! [collect a folder]
    // Several texts of one camera are all kept, the latest first.
    const QMap<QString, QString> texts = VanteroConfigFile::parseAll(paths, true, argv[1]);
    for (auto it = texts.begin(); it != texts.end(); ++it) {
        VanteroConfigFile config;
        config.parse(it.value(), QDateTime::currentDateTime());
        std::printf("%-12s %-12s %s\n", qPrintable(it.key()),
                    qPrintable(config.getSoftwareVersion()),
                    qPrintable(config.value("ethernet", "HOSTNAME")));
    }
    //! [collect a folder]
    return 0;
} catch (const vn::ExceptionQt &e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
}
