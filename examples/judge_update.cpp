// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// judge_update FILE MODEL PACKAGE: whether the camera with the configuration FILE may be updated to
// the firmware PACKAGE. Exit status: 0 safe, 1 not safe, 2 unknown.

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"
#include "version/VanteroSoftwareVersion.h"

#include <cstdio>

using vn::VanteroSoftwareVersion;

int main(int argc, char **argv)
try {
    if (argc != 4)
        qFatal("judge_update FILE MODEL PACKAGE");
    //! [judge an update]
    const auto config =
        vn::VanteroConfigFile::open(QString::fromLocal8Bit(argv[1]), QDateTime::currentDateTime());
    const QString model = QString::fromLocal8Bit(argv[2]);

    // The configuration keeps the version as text; what it means is the business of the version.
    const VanteroSoftwareVersion current = config.getSoftwareVersion();
    const VanteroSoftwareVersion target =
        VanteroSoftwareVersion::fromFwpFile(QString::fromLocal8Bit(argv[3]));
    if (current.isNull() || target.isNull()) {
        std::fprintf(stderr, "the version is not known\n");
        return 2;
    }

    const vn::SafeUpdateVerdict verdict = current.checkUpdate(model, target);
    std::printf("%s to %s: %s\n", qPrintable(current), qPrintable(target),
                verdict.safe ? "safe" : "not safe");
    std::printf("%s: %s\n", qPrintable(verdict.rule), qPrintable(verdict.sentence));
    //! [judge an update]
    return verdict.safe ? 0 : 1;
} catch (const vn::ExceptionQt &e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
}
