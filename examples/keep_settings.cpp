// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// keep_settings NEW PREVIOUS: prints those sections of the configuration NEW in which a camera
// keeps settings of its PREVIOUS one, with what it keeps.

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"

#include <cstdio>

using vn::VanteroConfigFile;

int main(int argc, char **argv)
try {
    if (argc != 3)
        qFatal("keep_settings NEW PREVIOUS");
    const QString newPath = QString::fromLocal8Bit(argv[1]);
    const QString previousPath = QString::fromLocal8Bit(argv[2]);

    //! [keep settings over an update]
    const QDateTime now = QDateTime::currentDateTime();
    const VanteroConfigFile config = VanteroConfigFile::open(newPath, now);
    const VanteroConfigFile previous = VanteroConfigFile::open(previousPath, now);

    vn::VanteroConfigMap result;
    config.preserveIpAddresses(previous, result);
    config.preserveVideoMotion(previous, result);
    config.preserveTimeTableReferences(previous, result);
    std::fputs(qPrintable(result.toString()), stdout);
    //! [keep settings over an update]
    return 0;
} catch (const vn::ExceptionQt &e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
}
